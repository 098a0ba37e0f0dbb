// Whatever is done in the designer can be undone and redone, and what is saved is read again.
#include <gtest/gtest.h>

#include <random>

#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"
#include "tests/support/Setting.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr int kActions = 500;

class RandomActions : public testing::Test {
 protected:
  Choose Random() {
    return [this](uint32_t limit) { return static_cast<uint32_t>(random_() % limit); };
  }

  const uint32_t seed_ = Seed();
  std::mt19937 random_{seed_};
};

TEST_F(RandomActions, AreUndoneOneByOneToTheFileThatWasOpened) {
  for (const FormCase& row : FormCases()) {
    SCOPED_TRACE(std::string(row.what) + ", seed " + std::to_string(seed_));
    const auto design = Designed(row.bytes, row.companion);
    Actions actions(*design, Random());
    std::vector<std::string> states{Actions::Saved(*design)};
    for (int i = 0; i < kActions; ++i) {
      const size_t before = design->history().StepCount();
      actions.DoOne();
      if (design->history().StepCount() > before) {
        states.push_back(Actions::Saved(*design));
      } else {
        states.back() = Actions::Saved(*design);
      }
    }
    const std::string changed = Actions::Saved(*design);
    for (size_t step = states.size(); step-- > 1;) {
      ASSERT_EQ(Actions::Saved(*design), states[step]) << "before undoing step " << step;
      ASSERT_TRUE(design->CanUndo());
      design->Undo();
    }
    ASSERT_FALSE(design->CanUndo());
    EXPECT_EQ(Actions::Saved(*design), row.bytes);
    EXPECT_FALSE(design->IsDirty());
    for (const std::string& state : states) {
      ASSERT_EQ(Actions::Saved(*design), state);
      design->Redo();
    }
    EXPECT_EQ(Actions::Saved(*design), changed);
  }
}

TEST_F(RandomActions, LeaveAFileThatIsReadTheSame) {
  for (const FormCase& row : FormCases()) {
    SCOPED_TRACE(std::string(row.what) + ", seed " + std::to_string(seed_));
    const auto design = Designed(row.bytes, row.companion);
    Actions actions(*design, Random());
    for (int i = 0; i < kActions; ++i) {
      const std::string done = actions.DoOne();
      if (i % 50 != 0) continue;
      const FormImages saved = Actions::Images(*design);
      const auto again = Designed(saved.form, saved.companion.bytes);
      ASSERT_EQ(Actions::Saved(*again), saved.form) << done;
      ASSERT_EQ(Tree(*again), Tree(*design)) << done;
    }
  }
}

}  // namespace
}  // namespace qrn::test
