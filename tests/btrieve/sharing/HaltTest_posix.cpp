// A process stands still inside a write, as under a debugger or on a machine without memory left,
// while another one reads. The file is not damaged, and nobody may say that it is.
#include <gtest/gtest.h>
#include <unistd.h>

#include "clients/Remote.h"
#include "clients/TestFile.h"

namespace btrieve::test {
namespace {

TEST(HaltedWriter, IsInTheWayAndNoDamage) {
  TestFile file(PairBlock());
  ASSERT_EQ(file.Insert(Pair(0)), 0);
  uint32_t waits = 0;
  int32_t moment = 1;
  for (bool halted = true; halted; ++moment) {
    SCOPED_TRACE(moment);
    OtherProcess writer({"halt", file.Path(), std::to_string(moment), ToHex(Pair(moment))});
    halted = writer.AwaitHalt();
    EXPECT_EQ(file.Close(), 0);  // what this process knows of the log goes with it
    Status status = file.Open();
    if (status == 0) status = file.Call(kGetLast, {.room = 8}).status;
    EXPECT_TRUE(status == kOk || (halted && status == kFileInUse)) << status;
    if (!halted) break;
    writer.Resume();
    EXPECT_FALSE(writer.AwaitHalt());
    char said = 0;
    EXPECT_EQ(read(writer.Output(), &said, 1), 1);
    EXPECT_EQ(said, '.');
    if (status != kOk) {
      ++waits;
      EXPECT_EQ(file.Open(), 0);
    }
    const CallOut last = file.Call(kGetLast, {.room = 8});
    EXPECT_EQ(last.status, 0);
    EXPECT_EQ(last.data, Pair(moment));
  }
  EXPECT_GT(moment, 10);
  EXPECT_EQ(waits, 1u) << "between the two copies of the log's head, and nowhere else";
}

}  // namespace
}  // namespace btrieve::test
