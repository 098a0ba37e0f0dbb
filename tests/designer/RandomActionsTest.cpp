// Whatever is done in the designer can be undone and redone, and what is saved is read again.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"
#include "tests/support/Setting.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr int kActions = 500;

// What is saved now is read again as the same form.
void ExpectReadAgain(const Design& design) {
  const FormImages saved = Actions::Images(design);
  const auto again = Designed(saved.form, saved.companion.bytes);
  EXPECT_EQ(Actions::Saved(*again), saved.form);
  EXPECT_EQ(Tree(*again), Tree(design));
}

class RandomActions : public testing::Test {
 protected:
  // Does them; the file as it was before each step and after the last.
  std::vector<std::string> Act(Design& design) {
    Actions actions(design, [this](uint32_t limit) { return random_() % limit; });
    std::vector<std::string> states{Actions::Saved(design)};
    for (int i = 0; i < kActions; ++i) {
      const size_t before = design.history().StepCount();
      actions.DoOne();
      // An action that joins the step before it changes what that one leaves.
      if (design.history().StepCount() > before) states.emplace_back();
      states.back() = Actions::Saved(design);
      if (i % 50 == 0) ExpectReadAgain(design);
    }
    return states;
  }

  const uint32_t seed_ = Seed();
  std::mt19937 random_{seed_};
};

TEST_F(RandomActions, AreUndoneOneByOneToTheFileThatWasOpenedAndRedone) {
  for (const FormCase& row : FormCases()) {
    SCOPED_TRACE(std::string(row.what) + ", seed " + std::to_string(seed_));
    const auto design = Designed(row.bytes, row.companion);
    const std::vector<std::string> states = Act(*design);
    EXPECT_GT(states.size(), 50u);
    for (size_t step = states.size(); step-- > 1; design->Undo()) {
      ASSERT_EQ(Actions::Saved(*design), states[step]) << "before undoing step " << step;
    }
    ASSERT_FALSE(design->CanUndo());
    EXPECT_EQ(Actions::Saved(*design), row.bytes);
    EXPECT_FALSE(design->IsDirty());
    while (design->CanRedo()) design->Redo();
    EXPECT_EQ(Actions::Saved(*design), states.back());
  }
}

}  // namespace
}  // namespace qrn::test
