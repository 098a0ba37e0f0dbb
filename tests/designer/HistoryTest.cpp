// Steps, what they are called, what they tell, what they cost.
#include <gtest/gtest.h>

#include "host/designer/model/Arrange.h"
#include "host/designer/model/Controls.h"
#include "host/designer/model/PropertyList.h"
#include "host/designer/model/Texts.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr char kTwo[] =
    "   Begin VB.Label a \n      Left            =   0\n      Top             =   0\n   End\n"
    "   Begin VB.Label b \n      Left            =   0\n      Top             =   0\n   End\n";

class Steps : public testing::Test {
 protected:
  void Move(const char* name, int by) {
    EXPECT_FALSE(Nudge(*design_, {IdOf(*design_, name)}, by, 0, Grid{}));
    design_->Seal();
  }

  std::unique_ptr<Design> design_ = Designed(FormWith(kTwo));
};

TEST(SavedSteps, AreNeverReachedAgainOnceThrownAway) {
  History history([](const Splice&) {});
  const auto lines = std::make_shared<Block>(BlockKind::Lines);
  const auto make = [&] {
    history.Begin({TextId::ChangeCode, {}}, "key", {});
    history.Make({lines, 0, 0, {{"x", {}, nullptr}}});
    history.End({});
  };
  make();
  history.MarkSaved();
  make();  // does not join the saved step
  EXPECT_EQ(history.StepCount(), 2u);
  EXPECT_TRUE(history.IsDirty());
  history.Undo();
  EXPECT_FALSE(history.IsDirty());
  history.Undo();
  make();
  EXPECT_TRUE(history.IsDirty());
  history.Undo();
  EXPECT_TRUE(history.IsDirty());
}

TEST_F(Steps, GiveTheSelectionBack) {
  design_->Select({IdOf(*design_, "a")});
  const Ids before = design_->selection();
  EXPECT_FALSE(AddControl(*design_, {"VB", "Label", design_->form(), {}}));
  const Ids after = design_->selection();
  EXPECT_FALSE(DeleteControls(*design_, after));
  EXPECT_TRUE(design_->selection().empty());
  design_->Undo();
  EXPECT_EQ(design_->selection(), after);
  design_->Undo();
  EXPECT_EQ(design_->selection(), before);
  design_->Redo();
  EXPECT_EQ(design_->selection(), after);
  design_->Redo();
  EXPECT_TRUE(design_->selection().empty());
}

TEST_F(Steps, CostWhatTheyChangeAndNotWhatTheFormHolds) {
  std::string lines;
  for (int i = 0; i < 300; ++i) lines += "   Begin VB.Label l" + std::to_string(i) + " \n   End\n";
  design_ = Designed(FormWith(lines + kTwo));
  for (int i = 0; i < 1000; ++i) Move("a", 1);
  EXPECT_EQ(design_->history().StepCount(), 1000u);
  EXPECT_EQ(design_->history().KeptItems(), 1000u);
  for (int i = 0; i < 1000; ++i) {
    EXPECT_FALSE(Nudge(*design_, {IdOf(*design_, "a"), IdOf(*design_, "b")}, 1, 1, Grid{}));
  }
  EXPECT_EQ(design_->history().StepCount(), 1001u);
  EXPECT_EQ(design_->history().KeptItems(), 1004u);
}

TEST(Texts, AreSaidInBothLanguages) {
  for (int id = 0; id < static_cast<int>(TextId::kCount); ++id) {
    for (const Language language : {Language::Japanese, Language::English}) {
      const std::string text = Said(static_cast<TextId>(id), language, {"one", "two"});
      EXPECT_FALSE(text.empty()) << id;
      EXPECT_EQ(text.find('%'), std::string::npos) << text;
    }
  }
  EXPECT_EQ(Said(TextId::RangeExpected, Language::English, {"%2", "5"}),
            "The value lies between %2 and 5.");
  EXPECT_EQ(Said(TextId::RangeExpected, Language::Japanese, {"1"}), "値は 1 から  までです。");
}

}  // namespace
}  // namespace qrn::test
