// Files that a user may read and not write, alone and beside one who may. The user is a process
// without rights where the tests have them all.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "btrieve/pages/LogFormat.h"
#include "clients/Remote.h"
#include "kit/DamagedFile.h"
#include "kit/Descriptor.h"

namespace btrieve::test {
namespace {

namespace fs = std::filesystem;

struct ReadOnlyFile : testing::Test {
  void SetUp() override {
    ASSERT_EQ(process_.Call(kCreate, 1, {.data = PairBlock(), .key = PathKey(path_)}).status, 0);
    ASSERT_EQ(Owner(kOpen), 0);
    for (const int32_t id : {1, 2, 3}) ASSERT_EQ(OwnerInserts(id), 0);
  }
  void TearDown() override { fs::permissions(folder_.Root(), fs::perms::all); }

  Status Owner(int operation) {
    return process_.Call(operation, 0, {.key = PathKey(path_)}).status;
  }
  Status OwnerInserts(int32_t id) {
    return process_.Call(kInsert, 0, {.data = Pair(id), .keyNumber = -1}).status;
  }
  // A sync under way behind the calls keeps a file for its length.
  void OwnerCloses() {
    ASSERT_EQ(Owner(kClose), 0);
    for (int tries = 0; tries < 200 && fs::exists(path_ + "-wal"); ++tries) usleep(20000);
    ASSERT_FALSE(fs::exists(path_ + "-wal"));
  }
  void Protect(mode_t folder, mode_t file) {
    chmod(path_.c_str(), file);
    chmod(folder_.Root().c_str(), folder);
  }

  Status Opens(int mode = 0) {
    return user_.Call(kOpen, 0, {.key = PathKey(path_), .keyNumber = mode}).status;
  }
  // "1 2 3 #9": the ids that the user reads, and the status that ends it.
  std::string Reads() {
    std::string text;
    CallOut out = user_.Call(kGetFirst, 0, {.room = 8});
    for (; out.status == 0; out = user_.Call(kGetNext, 0, {.room = 8})) {
      text += std::to_string(NumberAt<int32_t>(out.data, 0)) + " ";
    }
    return text + "#" + std::to_string(out.status);
  }
  Status Inserts() { return user_.Call(kInsert, 0, {.data = Pair(9), .keyNumber = -1}).status; }

  Folder folder_;
  std::string path_ = folder_.Path("a.dat");
  ThisProcess process_;
  OtherProcess user_{{"unprivileged"}};
};

struct RightsCase {
  const char* what;
  mode_t folder, file;
};
constexpr RightsCase kRights[] = {
    {"neither folder nor file", 0555, 0444},
    {"the folder alone", 0777, 0444},
    {"the file alone", 0555, 0666},
};

TEST_F(ReadOnlyFile, IsReadInEveryModeButTheExclusiveOne) {
  OwnerCloses();
  for (const RightsCase& row : kRights) {
    SCOPED_TRACE(std::string("may write ") + row.what);
    Protect(row.folder, row.file);
    for (const int mode : {0, -1, -2}) {
      ASSERT_EQ(Opens(mode), 0) << mode;
      EXPECT_EQ(Reads(), "1 2 3 #9");
      EXPECT_EQ(Inserts(), kAccessDenied);
      EXPECT_EQ(user_.Call(kGetFirst + 200, 0, {.room = 8}).status, 0) << "with a lock";
      EXPECT_EQ(user_.Call(kDelete, 0, {}).status, kAccessDenied);
      ASSERT_EQ(user_.Call(kClose, 0, {}).status, 0);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Root()), {}), 1) << "no log is left";
  }
  Protect(0555, 0444);
  EXPECT_EQ(Opens(-4), kPermissionError);
}

// Nobody may begin to write what others read as it stands.
TEST_F(ReadOnlyFile, KeepsOutWhoWouldWrite) {
  OwnerCloses();
  Protect(0555, 0444);
  ASSERT_EQ(Opens(), 0);
  OtherProcess another({"unprivileged"});
  EXPECT_EQ(another.Call(kOpen, 0, {.key = PathKey(path_)}).status, 0) << "readers share it";
  if (geteuid() == 0) {
    EXPECT_EQ(Owner(kOpen), kFileInUse);
    EXPECT_EQ(process_.Call(kCreate, 1, {.data = PairBlock(), .key = PathKey(path_)}).status,
              kCreateError);
  }
  EXPECT_EQ(Reads(), "1 2 3 #9");
  another.Kill();
  user_.Kill();
  EXPECT_EQ(Owner(kOpen), 0);
}

TEST_F(ReadOnlyFile, ShowsWhatAnotherWritesMeanwhile) {
  Protect(0555, 0444);
  if (geteuid() != 0) GTEST_SKIP() << "takes another user";
  ASSERT_EQ(Opens(), 0);
  EXPECT_EQ(Reads(), "1 2 3 #9");
  ASSERT_EQ(OwnerInserts(4), 0);
  EXPECT_EQ(Reads(), "1 2 3 4 #9");
  EXPECT_EQ(Inserts(), kAccessDenied);
  // With locks, which are sure only where it is seen that nobody has committed meanwhile.
  ASSERT_EQ(user_.Call(kGetFirst, 0, {.room = 8}).status, 0);
  Bytes search = DescriptorBytes({.wanted = 3});
  search.resize(500);
  user_.Begin(kGetNextExtended + 200, 0, {.data = search});
  for (int tries = 0; tries < 500 && !user_.IsAnswered(); ++tries) usleep(10000);
  ASSERT_TRUE(user_.IsAnswered());
  EXPECT_EQ(user_.Finish().status, 0);
}

// SQLite takes what does not fit for the log's end, whoever opens the file.
TEST_F(ReadOnlyFile, WithADamagedLogIsDamaged) {
  const std::string copy = folder_.Path("b.dat");
  for (const bool withIndex : {false, true}) {
    SCOPED_TRACE(withIndex);
    WriteBytes(copy, ReadBytes(path_));
    Bytes log = ReadBytes(path_ + "-wal");
    log[kLogHeadSize + FrameOffset(3) + kFrameHeaderSize] ^= 1;
    WriteBytes(copy + "-wal", log);
    if (withIndex) fs::copy_file(path_ + "-shm", copy + "-shm");
    for (const char* tail : {"-wal", withIndex ? "-shm" : "-wal"})
      chmod((copy + tail).c_str(), 0666);
    chmod(copy.c_str(), 0444);
    chmod(folder_.Root().c_str(), 0777);
    EXPECT_EQ(user_.Call(kOpen, 0, {.key = PathKey(copy)}).status, kIoError);
    user_.Call(kReset, 0, {});
    chmod(copy.c_str(), 0666);
  }
}

// What was copied, or left by a killed process, has a log: with its index it is read, without it
// the file's newest state cannot be told.
TEST_F(ReadOnlyFile, WithALogIsReadIfTheLogsIndexIsThere) {
  const std::string copy = folder_.Path("b.dat");
  for (const char* tail : {"", "-wal", "-shm"}) fs::copy_file(path_ + tail, copy + tail);
  ASSERT_EQ(Owner(kClose), 0);
  path_ = copy;
  for (const char* tail : {"", "-wal", "-shm"}) chmod((copy + tail).c_str(), 0444);
  Protect(0555, 0444);
  ASSERT_EQ(Opens(), 0);
  EXPECT_EQ(Reads(), "1 2 3 #9");
  ASSERT_EQ(user_.Call(kClose, 0, {}).status, 0);
  user_.Call(kReset, 0, {});
  chmod(folder_.Root().c_str(), 0755);
  fs::remove(copy + "-shm");
  Protect(0555, 0444);
  EXPECT_EQ(Opens(), kPermissionError);
}

}  // namespace
}  // namespace btrieve::test
