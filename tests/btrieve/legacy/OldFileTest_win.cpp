// Beside a program that keeps others from writing, as an older record manager may.
#include <gtest/gtest.h>
#include <windows.h>

#include "kit/DamagedFile.h"
#include "kit/OldFileMaker.h"

namespace btrieve::test {
namespace {

struct ShareCase {
  const char* what;
  DWORD share;
  Status status;
};
constexpr ShareCase kShares[] = {
    {"everything", FILE_SHARE_READ | FILE_SHARE_WRITE, kOk},
    {"reading", FILE_SHARE_READ, kOk},
    {"nothing", 0, kFileInUse},
};

TEST(OldFileInUse, IsReadBesideWhoDeniesWriting) {
  FileSpec spec;
  ASSERT_EQ(ParseCreateBlock(PairBlock(), spec), 0);
  OldFileMaker maker(spec, {});
  maker.Insert(Pair(7));
  const Folder folder;
  const std::string path = folder.Path("old.dat");
  WriteBytes(path, maker.Build());
  for (const ShareCase& row : kShares) {
    SCOPED_TRACE(std::string("who shares ") + row.what);
    HANDLE other = CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, row.share, nullptr,
                               OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    ThisProcess process;
    EXPECT_EQ(process.Call(kOpen, 0, {.key = PathKey(path)}).status, row.status);
    if (row.status == kOk) {
      EXPECT_EQ(process.Call(kGetFirst, 0, {.room = 8}).Returned(), Pair(7));
    }
    CloseHandle(other);
  }
}

}  // namespace
}  // namespace btrieve::test
