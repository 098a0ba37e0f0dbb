// Environment: QRN_POWER_STATES, how many states are looked at (300); QRN_SEED.
//
// The power goes while two files are worked on: single operations, both kinds of transactions over
// both files, logs carried over, files closed, opened and made anew. Each state that the disk may
// then be in opens, and holds what was promised: single operations each whole, the newest at most
// missing, and all that an End or a Close came after; transactions whole, in both files or in none.
#include <gtest/gtest.h>

#include <random>

#include "btrieve/session/Session.h"
#include "kit/CrashStates.h"
#include "kit/DamagedFile.h"
#include "kit/Plan.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

// The files after so many steps, and from which call of the recording on.
struct Milestone {
  PlanState state;
  bool transaction;     // the step that led here
  size_t begun;         // calls recorded when it began
  size_t acknowledged;  // and when it was acknowledged
  size_t stable;        // and when it was promised to survive; never
};
constexpr size_t kNever = SIZE_MAX;

struct PowerCut : testing::Test {
  void SetUp() override;
  // Empty, or what promise a state breaks.
  std::string Judge(size_t cut, Choices& choices) const;

  void Record();
  void Between(Client& process, uint32_t step);
  void NotePromise(size_t upTo);

  const uint32_t seed_ = qrn::test::Seed();
  static constexpr uint32_t kSteps = 120;
  Folder folder_;
  std::vector<std::string> names_ = {"a.dat", "b.dat"};
  std::vector<std::string> paths_ = {folder_.Path("a.dat"), folder_.Path("b.dat")};
  std::unique_ptr<DiskRecording> recording_;
  std::vector<Milestone> milestones_;
};

void PowerCut::SetUp() {
  {
    ThisProcess process;
    for (const std::string& path : paths_) {
      ASSERT_EQ(process.Call(kCreate, 31, {.data = PlanBlock(), .key = PathKey(path)}).status, 0);
    }
  }
  recording_ = std::make_unique<DiskRecording>(folder_.Root());
  const DiskTap tap(folder_.Root(), *recording_);
  Record();
}

void PowerCut::NotePromise(size_t upTo) {
  for (size_t at = 0; at <= upTo; ++at) {
    size_t& stable = milestones_[at].stable;
    stable = std::min(stable, recording_->Length());
  }
}

void PowerCut::Record() {
  ThisProcess process;
  ASSERT_TRUE(OpenPlanFiles(process, paths_));
  milestones_.push_back({{}, false, 0, 0, 0});
  for (uint32_t step = 0; step < kSteps; ++step) {
    const PlanState& before = milestones_.back().state;
    const PlanStep plan = PlanOf(seed_, step, before);
    Milestone next{before, plan.begin != 0, recording_->Length(), 0, kNever};
    ASSERT_TRUE(PerformStep(process, plan));
    ApplyStep(plan, next.state);
    next.acknowledged = recording_->Length();
    milestones_.push_back(next);
    if (plan.begin != 0) NotePromise(milestones_.size() - 1);
    Between(process, step);
  }
}

void PowerCut::Between(Client& process, uint32_t step) {
  if (step % 13 == 12) {
    for (const auto& file : Session::Get().OpenFiles()) file->Base().CarryLogOver();
  }
  if (step % 17 == 16) {  // carried over, and the log begun anew over what it held
    for (const auto& file : Session::Get().OpenFiles()) {
      file->Base().LeaveRead();
      file->Base().Link().Run("PRAGMA wal_checkpoint(PASSIVE)");
    }
  }
  if (step % 29 == 28) {
    for (int block = 0; block < 2; ++block) ASSERT_EQ(process.Call(kClose, block, {}).status, 0);
    NotePromise(milestones_.size() - 1);
    const Bytes other = PathKey(folder_.Path("other.dat"));
    ASSERT_EQ(process.Call(kCreate, 5, {.data = PlanBlock(), .key = other}).status, 0);
    ASSERT_TRUE(OpenPlanFiles(process, paths_));
  }
}

std::string PowerCut::Judge(size_t cut, Choices& choices) const {
  const Folder after;
  for (const auto& [name, bytes] : recording_->StateAfter(cut, choices)) {
    WriteBytes(after.Path(name), bytes);
  }
  size_t least = 0;
  size_t most = 0;
  for (size_t at = 0; at < milestones_.size(); ++at) {
    if (milestones_[at].stable <= cut) least = at;
    if (milestones_[at].begun < cut) most = at;
  }
  ThisProcess process;
  if (!OpenPlanFiles(process, {after.Path(names_[0]), after.Path(names_[1])})) return "Open failed";
  PlanState found;
  if (const std::string fault = ReadPlanFiles(process, found); !fault.empty()) return fault;
  // Each file has a log of its own: single operations on one may be kept where older ones on the
  // other are lost. A transaction in flight is the newest and in both files or in none.
  for (size_t a = least; a <= most; ++a) {
    for (size_t b = least; b <= most; ++b) {
      const bool split = a != b && milestones_[std::max(a, b)].transaction;
      if (!split && found[0] == milestones_[a].state[0] && found[1] == milestones_[b].state[1]) {
        return "";
      }
    }
  }
  return "neither of the states from " + std::to_string(least) + " to " + std::to_string(most);
}

TEST_F(PowerCut, LeavesWhatWasPromised) {
  SCOPED_TRACE("seed " + std::to_string(seed_));
  const uint32_t states = qrn::test::Setting("QRN_POWER_STATES", 300);
  const size_t length = recording_->Length();
  ASSERT_GT(length, kSteps);
  Choices choices(seed_);
  for (uint32_t state = 0; state < states; ++state) {
    const size_t cut = choices.Pick(static_cast<uint32_t>(length) + 1);
    ASSERT_EQ(Judge(cut, choices), "")
        << "state " << state << ", cut at " << cut << " of " << length;
  }
  std::printf("%u states of %zu calls\n", states, length);
}

}  // namespace
}  // namespace btrieve::test
