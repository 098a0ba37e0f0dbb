// Moves that die, or meet a disk that refuses, at any of their steps on files: whoever comes next
// finds files or links, all of one kind, once a move was run again.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "ServerFixture.h"
#include "btrieve/system/HostFile.h"
#include "tests/support/Setting.h"
#include "tools/qrndata/Verbs.h"

namespace qrndata::test {
namespace {

int stepsLeft = 0;

bool DieAtStep(const std::string&) {
  if (stepsLeft-- == 0) kill(getpid(), SIGKILL);
  return true;
}
bool FailAtStep(const std::string&) { return stepsLeft-- != 0; }

// The record manager's own thread goes some time after the last file is closed, and what it holds
// would stay held in a child.
void AwaitSingleThread() {
  const auto threads = [] {
    const std::filesystem::directory_iterator all("/proc/self/task");
    return std::distance(begin(all), end(all));
  };
  for (int looks = 0; looks < 1000 && threads() > 1; ++looks) usleep(10000);
  EXPECT_EQ(threads(), 1);
}

class DyingMoves : public OnServer {
 protected:
  void SetUp() override {
    OnServer::SetUp();
    BuildShop();
  }

  // Whether it died.
  bool RunInChild(int step, const std::function<Said()>& run) {
    AwaitSingleThread();
    const pid_t child = fork();
    if (child == 0) {
      constexpr unsigned kSeconds = 60;
      alarm(kSeconds);
      stepsLeft = step;
      btrieve::SetSyncHook(&DieAtStep);
      _exit(run().code);
    }
    int status = 0;
    waitpid(child, &status, 0);
    const bool hasDied = WIFSIGNALED(status);
    EXPECT_TRUE(hasDied ? WTERMSIG(status) == SIGKILL : WEXITSTATUS(status) == 0)
        << "step " << step << " status " << status;
    return hasDied;
  }

  void ExpectOnServer(int step) const {
    EXPECT_EQ(Check().code, 0) << "step " << step << ": " << Check().out;
    for (const char* name : {"file.ddf", "Goods.btr", "sub/orders.dat", "other.bin"}) {
      EXPECT_EQ(Read(std::string("db/") + name).substr(0, 5), "qrnbt") << name << " " << step;
    }
    EXPECT_FALSE(std::filesystem::exists(Folder() / "db/before-move/under-way")) << step;
  }
  void ExpectFiles(int step) const {
    EXPECT_EQ(Changed(), "") << "step " << step;
    EXPECT_EQ(Ask("SELECT count(*) FROM pg_namespace WHERE nspname = '" + Schema() + "'"), 0)
        << "step " << step;
  }
  void ChangeARecord() const {
    Sql("UPDATE " + Schema() + ".orders_dat SET ver = ver + 1 WHERE pos = 1");
  }
};

constexpr int kFewestSteps = 12, kMostSteps = 60;

// Every day some of the steps; QRN_MOVE_STRIDE=1 takes all.
int Stride() { return static_cast<int>(qrn::test::Setting("QRN_MOVE_STRIDE", 10)); }
int FirstStep() { return static_cast<int>(qrn::test::Seed() % static_cast<uint32_t>(Stride())); }

// Also by a death behind the last step, which has left nothing to do.
bool IsThere(const Said& said) {
  return said.code == 0 || said.err.find("is a link to a server already") != said.err.npos;
}
bool IsBack(const Said& said) {
  return said.code == 0 || said.err.find("no links to a server") != said.err.npos;
}

TEST_F(DyingMoves, ThereAreFinishedOrUndoneByTheNextOne) {
  int step = FirstStep();
  for (; step < kMostSteps && RunInChild(step, [&] { return Move(); }); step += Stride()) {
    const Said again = Move();
    ASSERT_TRUE(IsThere(again)) << "step " << step << ": " << again.err;
    ExpectOnServer(step);
    ASSERT_EQ(MoveBack().code, 0);
    ExpectFiles(step);
  }
  EXPECT_GT(step, kFewestSteps);
  ExpectOnServer(step);
}

TEST_F(DyingMoves, ThereAreUndoneByTheWayBackToo) {
  for (int step = FirstStep(); step < kMostSteps && RunInChild(step, [&] { return Move(); });
       step += Stride()) {
    const Said back = MoveBack();
    EXPECT_TRUE(IsBack(back)) << "step " << step << ": " << Line(back);
    ExpectFiles(step);
  }
}

TEST_F(DyingMoves, BackAreFinishedOrUndoneByTheNextOne) {
  int step = FirstStep();
  ASSERT_EQ(Move().code, 0);
  for (; step < kMostSteps && RunInChild(step, [&] { return MoveBack(); }); step += Stride()) {
    const Said again = MoveBack();
    ASSERT_TRUE(IsBack(again)) << "step " << step << ": " << again.err;
    ExpectFiles(step);
    ASSERT_EQ(Move().code, 0) << step;
  }
  EXPECT_GT(step, kFewestSteps);
  ExpectFiles(step);
}

TEST_F(DyingMoves, BackWithNewFilesLoseNothing) {
  int step = FirstStep();
  bool hasDied = true;
  for (; step < kMostSteps && hasDied; step += Stride()) {
    ASSERT_EQ(Move().code, 0) << step;
    ChangeARecord();
    const std::string orders = Export("Orders");
    hasDied = RunInChild(step, [&] { return MoveBack(); });
    if (hasDied) {
      const Said again = MoveBack();
      ASSERT_TRUE(IsBack(again)) << "step " << step << ": " << again.err;
    }
    EXPECT_EQ(Check().code, 0) << "step " << step;
    EXPECT_EQ(Export("Orders"), orders) << "step " << step;
    EXPECT_EQ(Changed(), "before-move/sub/orders.dat sub/orders.dat ");
    std::filesystem::remove_all(Folder() / "db/before-move");
    std::filesystem::copy_file(Folder() / "kept/sub/orders.dat", Folder() / "db/sub/orders.dat",
                               std::filesystem::copy_options::overwrite_existing);
  }
  EXPECT_GT(step, kFewestSteps);
}

// The record manager's own syncs are among the steps; then nothing is moved at all.
TEST_F(DyingMoves, ADiskThatRefusesUndoesThemAtOnce) {
  int step = FirstStep();
  for (; step < kMostSteps; step += Stride()) {
    stepsLeft = step;
    btrieve::SetSyncHook(&FailAtStep);
    const Said said = Move();
    btrieve::SetSyncHook(nullptr);
    if (stepsLeft >= 0) break;
    if (said.code != 0) {
      EXPECT_EQ(said.code, 4) << "step " << step;
      const Said again = Move();
      ASSERT_EQ(again.code, 0) << "step " << step << ": " << again.err << said.err;
    }
    ExpectOnServer(step);
    ASSERT_EQ(MoveBack().code, 0);
    ExpectFiles(step);
  }
  EXPECT_GT(step, kFewestSteps);
}

}  // namespace
}  // namespace qrndata::test
