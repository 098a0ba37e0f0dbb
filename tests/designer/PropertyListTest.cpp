// The property list of one control and of several.
#include <gtest/gtest.h>

#include "host/designer/model/PropertyList.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr char kListed[] =
    "   Begin VB.TextBox t \n      Enabled         =   0   'False\n      TabIndex        =   0\n"
    "      Text            =   \"表\"\n      Width           =   900\n   End\n"
    "   Begin VB.TextBox u \n      Index           =   3\n      TabIndex        =   1\n"
    "      Text            =   \"ソ\"\n      Width           =   900\n   End\n"
    "   Begin LIB.Box box \n      BackColor       =   255\n      DbListTable     =   \"Orders\"\n"
    "      DbSource        =   \"src\"\n      DbTable         =   \"Customers\"\n"
    "      Mode            =   1\n      Secret          =   \"x\"\n      TabIndex        =   2\n"
    "      Text            =   \"t\"\n      Width           =   600\n      _ExtentX        =   "
    "1058\n"
    "   End\n"
    "   Begin LIB.Box plain \n   End\n"
    "   Begin ODD.Thing odd \n      Zoom            =   2.5  'times\n      TabIndex        =   3\n"
    "   End\n"
    "   Begin VB.CommandButton ok \n      Default         =   -1  'True\n   End\n"
    "   Begin VB.CommandButton no \n   End\n";

class Offers final : public NameOffers {
 public:
  std::vector<std::string> Sources() const override { return {"src"}; }
  std::vector<std::string> Tables(const std::string& source) const override {
    return {"tables of " + source};
  }
  std::vector<std::string> Fields(const std::string& source,
                                  const std::string& table) const override {
    return {"fields of " + source + "." + table};
  }
  std::vector<std::string> Keys(const std::string& source,
                                const std::string& table) const override {
    return {"keys of " + source + "." + table};
  }
};

class List : public testing::Test {
 protected:
  void Select(const std::vector<std::string>& names) {
    Ids ids;
    for (const std::string& name : names) ids.push_back(IdOf(*design_, name));
    design_->Select(ids);
  }
  // "text", "(differs)" or "(none)" if there is no such row.
  std::string Shown(const std::string& property) {
    for (const PropertyRow& row : list_.Rows()) {
      if (row.info->name == property) return row.differs ? "(differs)" : row.text;
    }
    return "(none)";
  }

  Offers offers_;
  std::unique_ptr<Design> design_ = Designed(FormWith(kListed));
  PropertyList list_{*design_, &offers_};
};

TEST_F(List, ShowsValuesAsText) {
  struct Case {
    const char* control;
    const char* property;
    const char* text;
  } const cases[] = {
      {"t", "Name", "t"},
      {"t", "Text", "表"},
      {"t", "Enabled", "False"},
      {"t", "Locked", "False"},
      {"t", "Alignment", "0 - Left Justify"},
      {"t", "BackColor", "&H80000005&"},
      {"t", "Width", "900"},
      {"t", "Index", ""},
      {"t", "Caption", "(none)"},
      {"u", "Index", "3"},
      {"box", "Mode", "1 - On"},
      {"box", "BackColor", "&H000000FF&"},
      {"box", "Secret", "(none)"},
      {"box", "Font", ""},
      // A line that a new control has, and this one has not.
      {"plain", "BackColor", "&H00C0C0C0&"},
      {"odd", "Zoom", "2.5"},
      {"F", "ClientWidth", "9000"},
      {"F", "BorderStyle", "2 - Sizable"},
      {"F", "Left", "(none)"},
  };
  for (const Case& row : cases) {
    Select({row.control});
    EXPECT_EQ(Shown(row.property), row.text) << row.control << "." << row.property;
  }
}

TEST_F(List, ShowsWhatSeveralHaveInCommon) {
  Select({"t", "u"});
  EXPECT_EQ(Shown("Text"), "(differs)");
  EXPECT_EQ(Shown("Width"), "900");
  EXPECT_EQ(Shown("Enabled"), "(differs)");
  EXPECT_EQ(Shown("Name"), "(none)");
  EXPECT_EQ(Shown("Index"), "(none)");
  Select({"t", "box"});
  EXPECT_EQ(Shown("Mode"), "(none)");
  EXPECT_EQ(Shown("Locked"), "(none)");
  EXPECT_EQ(Shown("Text"), "(differs)");
  Select({});
  EXPECT_TRUE(list_.Rows().empty());
}

struct EntryCase {
  const char* control;
  const char* property;
  const char* typed;
  TextId refusal;
  const char* value;  // that the control's line then has; empty: there is no line
};

TEST_F(List, TakesWhatIsTyped) {
  constexpr TextId kDone = TextId::kCount;
  const EntryCase cases[] = {
      {"t", "Text", "a \"b\"", kDone, "\"a \"\"b\"\"\""},
      {"t", "Text", "", kDone, "\"\""},
      {"t", "Text", "\xE2\x82\xAC", TextId::NotWritable, "\"表\""},
      {"t", "Tag", "x", kDone, "\"x\""},
      {"t", "Enabled", "t", kDone, ""},
      {"t", "Enabled", "1", kDone, ""},
      {"t", "Locked", "True", kDone, "-1 'True"},
      {"t", "Locked", "maybe", TextId::TruthExpected, ""},
      {"t", "Locked", "", TextId::TruthExpected, ""},
      {"t", "MaxLength", "12", kDone, "12"},
      {"t", "MaxLength", "&H10&", kDone, "16"},
      {"t", "MaxLength", "1.5", TextId::WholeExpected, ""},
      {"t", "MaxLength", "99999999999", TextId::WholeExpected, ""},
      {"t", "MaxLength", "-1", TextId::RangeExpected, ""},
      {"t", "MaxLength", "65536", TextId::RangeExpected, ""},
      {"t", "Alignment", "2", kDone, "2 'Center"},
      {"t", "Alignment", "right justify", kDone, "1 'Right Justify"},
      {"t", "Alignment", "2 - Center", kDone, "2 'Center"},
      {"t", "Alignment", "3", TextId::ChoiceExpected, ""},
      {"t", "BackColor", " &H00ff00& ", kDone, "&H0000FF00&"},
      {"t", "BackColor", "255", kDone, "&H000000FF&"},
      {"t", "BackColor", "&H80000005&", kDone, ""},
      {"t", "BackColor", "red", TextId::ColourExpected, ""},
      {"t", "BackColor", "vbbuttonface", kDone, "&H8000000F&"},
      {"t", "BackColor", "&H80000018& - vbInfoBackground", kDone, "&H80000018&"},
      {"t", "BackColor", "&H80000018& - vbButtonFace", TextId::ColourExpected, ""},
      {"t", "BackColor", "&H123456789&", TextId::ColourExpected, ""},
      {"t", "Left", "12.5", kDone, "12.5"},
      {"t", "Left", "x", TextId::NumberExpected, ""},
      {"t", "Left", "1e300", TextId::NumberExpected, ""},
      {"t", "Left", "nan", TextId::NumberExpected, ""},
      {"t", "Width", "-1", TextId::RangeExpected, "900"},
      {"t", "Index", "4", kDone, "4"},
      {"t", "Index", "-1", TextId::RangeExpected, ""},
      {"t", "Font", "Tahoma", TextId::SetByDialog, ""},
      {"t", "Name", "Sub", TextId::NameReserved, ""},
      {"t", "Caption", "x", TextId::NoSuchProperty, ""},
      {"u", "Index", " ", kDone, ""},
      {"box", "Mode", "-2", kDone, "-2"},
      {"box", "Mode", "0", kDone, ""},
      {"box", "Version", "2", TextId::ReadOnly, ""},
      {"odd", "Zoom", "3", TextId::SetByDialog, "2.5 'times"},
  };
  for (const EntryCase& row : cases) {
    design_ = Designed(FormWith(kListed));
    PropertyList list(*design_);
    Select({row.control});
    EXPECT_EQ(RefusalOf(list.Enter(row.property, row.typed)), row.refusal)
        << row.property << "=" << row.typed;
    EXPECT_EQ(LineValue(*design_, row.control, row.property), row.value)
        << row.property << "=" << row.typed;
  }
}

TEST_F(List, ChangesAllOrNone) {
  Select({"t", "u", "ok"});
  EXPECT_FALSE(list_.Enter("Enabled", "False"));
  EXPECT_EQ(Shown("Enabled"), "False");
  EXPECT_EQ(design_->history().StepCount(), 1u);
  design_->Undo();
  EXPECT_EQ(Actions::Saved(*design_), FormWith(kListed));
  // The second of them refuses: the first is as it was.
  Select({"t", "u"});
  EXPECT_EQ(RefusalOf(list_.Enter("Width", "-3")), TextId::RangeExpected);
  EXPECT_EQ(Actions::Saved(*design_), FormWith(kListed));
}

TEST_F(List, OffersNames) {
  struct Case {
    const char* property;
    std::vector<std::string> choices;
  } const cases[] = {
      {"DbSource", {"src"}},
      {"DbTable", {"tables of src"}},
      {"DbField", {"fields of src.Customers"}},
      {"DbIndex", {"keys of src.Customers"}},
      {"Mode", {"0 - Off", "1 - On", "-2 - Half"}},
      {"Visible", {"True", "False"}},
      {"Text", {}},
      {"Nothing", {}},
  };
  Select({"box"});
  for (const Case& row : cases) EXPECT_EQ(list_.Choices(row.property), row.choices) << row.property;
}

TEST_F(List, GoesToTheNextChoiceRoundAndRound) {
  struct Case {
    const char* property;
    const char* next;
  } const cases[] = {
      {"Mode", "-2 - Half"},  // 1 - On
      {"Visible", "False"},  {"DbSource", "src"}, {"DbTable", "tables of src"},
      {"BackColor", ""},     {"Text", ""},        {"Nothing", ""},
  };
  Select({"box"});
  for (const Case& row : cases) EXPECT_EQ(list_.NextChoice(row.property), row.next) << row.property;
  EXPECT_FALSE(list_.Enter("Mode", list_.NextChoice("Mode")));
  EXPECT_EQ(list_.NextChoice("Mode"), "0 - Off");
  Select({"t", "u"});  // False and True
  EXPECT_EQ(list_.NextChoice("Enabled"), "False");
}

TEST_F(List, FindsTheNextRowByItsLetter) {
  Select({"t"});
  const std::vector<PropertyRow> rows = list_.Rows();
  const auto next = [&](size_t from, char letter) {
    return rows[NextWithLetter(rows, from, letter)].info->name;
  };
  EXPECT_EQ(next(0, 't'), "TabIndex");
  EXPECT_EQ(next(NextWithLetter(rows, 0, 't'), 'T'), "TabStop");
  EXPECT_EQ(next(rows.size() - 1, 'n'), "Name");
  EXPECT_EQ(next(2, 'q'), rows[2].info->name);
  EXPECT_EQ(NextWithLetter({}, 0, 'a'), 0u);
}

TEST_F(List, BringsWhatGoesWithAProperty) {
  Select({"no"});
  EXPECT_FALSE(list_.Enter("Default", "True"));
  EXPECT_EQ(Lines(*design_, "ok"), "Begin VB.CommandButton ok|End");
  Select({"box"});
  EXPECT_FALSE(list_.Enter("Width", "1200"));
  EXPECT_EQ(design_->NumberValue(IdOf(*design_, "box"), "_ExtentX", 0), 2117);
  EXPECT_FALSE(list_.Enter("TabIndex", "0"));
  EXPECT_EQ(design_->NumberValue(IdOf(*design_, "t"), "TabIndex", 9), 1);
  EXPECT_EQ(design_->NumberValue(IdOf(*design_, "odd"), "TabIndex", 9), 3);
  Select({"F"});
  EXPECT_FALSE(list_.Enter("ClientWidth", "7500"));
  EXPECT_EQ(design_->NumberValue(design_->form(), "ScaleWidth", 0), 7500);
  EXPECT_FALSE(list_.Enter("ScaleMode", "3"));
  EXPECT_EQ(design_->NumberValue(design_->form(), "ScaleWidth", 0), 500);
  EXPECT_EQ(design_->NumberValue(IdOf(*design_, "t"), "Width", 0), 60);
}

TEST_F(List, TakesFontsAndResets) {
  form::Property font{"Font", 0, {}, true, {}, {}};
  font.group = {{"Name", 0, std::string("ＭＳ 明朝"), false, {}, {}},
                {"Size", 0, 10.5, false, {}, {}}};
  Select({"t", "box"});
  EXPECT_FALSE(list_.EnterFont(font));
  EXPECT_EQ(Shown("Font"), "ＭＳ 明朝, 10.5");
  EXPECT_TRUE(Lines(*design_, "t").starts_with("Begin VB.TextBox t|BeginProperty Font"));
  EXPECT_FALSE(list_.Reset("Font"));
  EXPECT_FALSE(list_.Reset("Text"));
  EXPECT_EQ(Lines(*design_, "t"),
            "Begin VB.TextBox t|Enabled = 0 'False|TabIndex = 0|Width = 900|End");
  EXPECT_EQ(RefusalOf(list_.Reset("Name")), TextId::ReadOnly);
}

}  // namespace
}  // namespace qrn::test
