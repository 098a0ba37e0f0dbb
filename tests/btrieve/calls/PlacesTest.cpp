// Which places on this machine and elsewhere are touched: by callers' paths, and by names that
// stand in files.
#include <gtest/gtest.h>

#include "btrieve/files/Intents.h"
#include "clients/TestFile.h"

namespace btrieve::test {
namespace {

#ifdef _WIN32
const std::string kHere = "C:\\data\\a.dat", kBeside = "C:\\data\\b.dat";
#else
const std::string kHere = "/data/a.dat", kBeside = "/data/b.dat";
#endif

bool IsShare(const std::string& path) { return path.find("share") != std::string::npos; }

struct Places : testing::Test {
  ~Places() override { ReplaceIsRemote(nullptr); }
};

TEST_F(Places, ANameInAFileLeadsBesideItOrToADriveOfThisMachine) {
  EXPECT_EQ(ResolvedFrom(kHere, "b.dat"), kBeside);
  EXPECT_EQ(ResolvedFrom(kHere, RelativeTo(kHere, kBeside)), kBeside);
#ifdef _WIN32
  const char* const followed[] = {"C:\\other\\c.dat", "d:\\c.dat", "C:/other/c.dat"};
  const char* const refused[] = {"\\\\server\\share\\c.dat",
                                 "//server/share/c.dat",
                                 "..\\c.dat",
                                 "\\\\?\\UNC\\server\\share\\c.dat",
                                 "\\\\.\\COM1",
                                 "sub\\c.dat",
                                 "\\c.dat",
                                 "C:c.dat",
                                 "c.dat:stream",
                                 "C:\\c.dat:stream",
                                 "",
                                 "NUL"};
#else
  const char* const followed[] = {"/other/c.dat"};
  const char* const refused[] = {
      "//server/share/c.dat", "../c.dat", "sub/c.dat", "", "/dev/null", "/dev"};
#endif
  for (const std::string name : followed) EXPECT_EQ(ResolvedFrom(kHere, name), name);
  for (const std::string name : refused) EXPECT_EQ(ResolvedFrom(kHere, name), "") << name;
  EXPECT_EQ(ResolvedFrom(kHere, std::string("b.dat\0c", 7)), "");
  ReplaceIsRemote(IsShare);
  const std::string mounted = std::string(followed[0]) + "share";
  EXPECT_EQ(ResolvedFrom(kHere, mounted), "");
}

// The transaction's coordinator may have decided: what cannot be asked is not taken for "never
// was".
TEST_F(Places, AFileThatNamesAnotherMachineIsNotOpened) {
  TestFile file(PairBlock());
  ASSERT_EQ(file.Insert(Number(1) + Number(0)), 0);
  ASSERT_EQ(file.Close(), 0);
  file.Process().Call(kReset, 0, {});
  for (const char* name : {"//server/share/c.dat", "../c.dat"}) {
    {
      FileIdentity identity;
      DataFile planted(file.Path(), identity);
      planted.Base().Open(file.Path());
      planted.Base().BeginWrite();
      AddIntent(planted, {NewTransactionNumber(), name});
      planted.Base().CommitWrite();
    }
    EXPECT_EQ(file.Open(), kDirectoryError) << name;
  }
}

TEST_F(Places, AnotherMachinesDriveIsRefused) {
  TestFile file(PairBlock());
  ASSERT_EQ(file.Close(), 0);
  file.Process().Call(kReset, 0, {});
  ReplaceIsRemote([](const std::string&) { return true; });
  EXPECT_EQ(file.Open(), kDirectoryError);
  EXPECT_EQ(file.Open(-2), kDirectoryError);
  EXPECT_EQ(file.Create(PairBlock()), kDirectoryError);
  ReplaceIsRemote(nullptr);
  EXPECT_EQ(file.Open(), 0);
}

}  // namespace
}  // namespace btrieve::test
