// Imports on a disk that fails: what is told to be taken is on stable storage, and the line to go
// on from leaves no row out and takes none twice.
#include <sys/resource.h>

#include <csignal>

#include "ToolFixture.h"
#include "btrieve/system/HostFile.h"
#include "platform/BtrCall.h"

namespace qrndata::test {
namespace {

int syncsLeft = 0;

bool MaySync(const std::string&) { return syncsLeft > 0 && syncsLeft-- > 0; }

// The record manager in this process, with so many syncs that go well.
class FailingSyncs {
 public:
  explicit FailingSyncs(int left) {
    syncsLeft = left;
    qrn::ReplaceBtrCall(&BTRCALL);
    btrieve::SetSyncHook(&MaySync);
  }
  ~FailingSyncs() {
    BTRCALL(BtrOpReset, nullptr, nullptr, nullptr, nullptr, 0, 0);
    btrieve::SetSyncHook(nullptr);
    qrn::ReplaceBtrCall(nullptr);
  }
  FailingSyncs(const FailingSyncs&) = delete;
  FailingSyncs& operator=(const FailingSyncs&) = delete;
};

constexpr char kPlainSchema[] = R"([[table]]
name = "T"
field = [ { name = "Id", type = "Integer" }, { name = "Name", type = "String", size = 6 } ]
key = [ { name = "ById", fields = ["Id"] } ]
[[table]]
name = "Loose"
field = [ { name = "Id", type = "Integer" } ]
key = [ { fields = ["Id"], duplicates = true } ])";

std::string RowsOf(int count) {
  std::string csv = "Id\n";
  for (int id = 1; id <= count; ++id) csv += std::to_string(id) + "\n";
  return csv;
}

class OnAFailingDisk : public ToolTest {
 protected:
  void SetUp() override { Build(kPlainSchema); }
};

TEST_F(OnAFailingDisk, NothingIsTakenThatIsNotStable) {
  const struct {
    const char* name;
    std::string csv;
    std::vector<std::string> options;
  } cases[] = {{"rows", RowsOf(20), {}},
               {"a last row that is refused", RowsOf(20) + "20\n", {}},
               {"replacing", RowsOf(20), {"--replace", "ById"}}};
  for (const auto& tried : cases) {
    SCOPED_TRACE(tried.name);
    const FailingSyncs disk(0);
    const Said said = Import("T", tried.csv, tried.options);
    EXPECT_EQ(said.code, kSystem) << Line(said);
    EXPECT_EQ(said.out, "");
  }
}

TEST_F(OnAFailingDisk, TheLineToGoOnFromTakesNoRowTwice) {
  for (int left = 0; left < 4; ++left) {
    SCOPED_TRACE(left);
    Build(kPlainSchema);
    std::string line;
    {
      const FailingSyncs disk(left);
      const std::string told = Import("Loose", RowsOf(20)).err;
      const size_t at = told.find("--first ");
      if (at == told.npos) continue;
      line = std::to_string(std::stoi(told.substr(at + 8)));
    }
    EXPECT_EQ(Import("Loose", RowsOf(20), {"--first", line}).code, kDone) << line;
    EXPECT_EQ(Export("Loose"), RowsOf(20)) << line;
  }
}

// Room for so many bytes in each file.
class SmallFiles {
 public:
  explicit SmallFiles(rlim_t bytes) : before_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &room_);
    const rlimit less{bytes, room_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &less);
  }
  ~SmallFiles() {
    setrlimit(RLIMIT_FSIZE, &room_);
    std::signal(SIGXFSZ, before_);
  }
  SmallFiles(const SmallFiles&) = delete;
  SmallFiles& operator=(const SmallFiles&) = delete;

 private:
  rlimit room_{};
  void (*before_)(int);
};

TEST_F(OnAFailingDisk, RefusedRowsAreKeptUpToTheLineToGoOnFrom) {
  constexpr int kLong = 3000, kMany = 400;
  std::string csv = "Id\n";
  for (int row = 0; row < kMany; ++row) csv += std::string(kLong, 'x') + "\n";
  Said said;
  {
    const SmallFiles disk(600000);
    said = Import("T", csv, {"--refused", Path("refused.csv"), "--show-refused", "0"});
  }
  EXPECT_EQ(said.code, kSystem) << Line(said);
  const size_t at = said.err.find("--first ");
  ASSERT_NE(at, said.err.npos) << said.err;
  const int line = std::stoi(said.err.substr(at + 8));
  EXPECT_GT(line, 100);
  EXPECT_EQ(Read("refused.csv"), csv.substr(0, csv.find('\n') + 1 + (line - 2) * (kLong + 1)));
}

}  // namespace
}  // namespace qrndata::test
