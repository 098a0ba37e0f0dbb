// Old files among several processes, and where nothing may be written.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "clients/Remote.h"
#include "kit/DamagedFile.h"
#include "kit/OldFileMaker.h"

namespace btrieve::test {
namespace {

class SharedOldFile : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(ParseCreateBlock(PairBlock(), spec_), 0);
    OldFileMaker maker(spec_, {});
    for (const int32_t id : {1, 2}) maker.Insert(Pair(id));
    WriteBytes(path_, maker.Build());
  }
  void TearDown() override { chmod(folder_.Root().c_str(), 0777); }
  Status Open(Client& client) { return client.Call(kOpen, 0, {.key = PathKey(path_)}).status; }
  static Status First(Client& client, int lock) {
    return client.Call(kGetFirst + lock, 0, {.room = 8}).status;
  }

  FileSpec spec_;
  Folder folder_;
  std::string path_ = folder_.Path("old.dat");
  ThisProcess here_;
};

TEST_F(SharedOldFile, LocksItsRecords) {
  OtherProcess there;
  ASSERT_EQ(Open(here_), 0);
  ASSERT_EQ(Open(there), 0);
  ASSERT_EQ(First(there, 100), 0);
  EXPECT_EQ(First(here_, 0), 0);
  EXPECT_EQ(First(here_, 200), kRecordInUse);
  there.Kill();
  EXPECT_EQ(First(here_, 200), 0);
}

TEST_F(SharedOldFile, IsReadWhereNothingMayBeWritten) {
  chmod(path_.c_str(), 0444);
  chmod(folder_.Root().c_str(), 0555);
  OtherProcess user({"unprivileged"});
  ASSERT_EQ(Open(user), 0);
  EXPECT_EQ(First(user, 0), 0);
  EXPECT_EQ(user.Call(kDelete, 0, {}).status, kAccessDenied);
}

}  // namespace
}  // namespace btrieve::test
