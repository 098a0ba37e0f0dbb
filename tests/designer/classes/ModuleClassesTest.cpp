// What the designer learns of the module's controls from their type information, and the forms that
// it makes with them.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>

#include "com/Module.h"
#include "host/designer/classes/ModuleClassSource.h"
#include "host/designer/model/Controls.h"
#include "host/designer/model/PropertyList.h"
#include "host/form/SourceText.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr char kLibrary[] = "QRNBTRLib";

class ModuleClassesTest : public testing::Test {
 protected:
  ModuleClassesTest() {
    OleInitialize(nullptr);
    classes_ = std::make_unique<host::ModuleClasses>();
    const std::filesystem::path own(com::PathOf(nullptr));
    classes_->AddModule((own.parent_path() / L"qrnbt350.ocx").wstring());
    source_ = std::make_unique<ModuleClassSource>(*classes_);
  }
  ~ModuleClassesTest() override {
    source_.reset();
    classes_.reset();
    OleUninitialize();
  }

  const ClassInfo& Class(const char* name) const { return *source_->Find(kLibrary, name); }

  std::unique_ptr<host::ModuleClasses> classes_;
  std::unique_ptr<ModuleClassSource> source_;
};

TEST_F(ModuleClassesTest, ArePropertiesWithTheirKinds) {
  struct Case {
    const char* control;
    const char* property;
    PropertyKind kind;
    Offer offer;
    size_t members;
  } const cases[] = {
      {"QRNEdit", "DbSource", PropertyKind::Text, Offer::Source, 0},
      {"QRNEdit", "dbfield", PropertyKind::Text, Offer::Field, 0},
      {"QRNEdit", "MaxLength", PropertyKind::Whole, Offer::None, 0},
      {"QRNEdit", "MultiLine", PropertyKind::Boolean, Offer::None, 0},
      {"QRNEdit", "Alignment", PropertyKind::Enumeration, Offer::None, 3},
      {"QRNEdit", "BackColor", PropertyKind::Colour, Offer::None, 0},
      {"QRNEdit", "Font", PropertyKind::Font, Offer::None, 0},
      {"QRNEdit", "MouseIcon", PropertyKind::Picture, Offer::None, 0},
      {"QRNEdit", "Left", PropertyKind::Fraction, Offer::None, 0},
      {"QRNBtr", "DDFDir", PropertyKind::Text, Offer::None, 0},
      {"QRNListBox", "DbListField", PropertyKind::Text, Offer::Fields, 0},
      {"QRNExListBox", "DbListFields", PropertyKind::Text, Offer::Fields, 0},
  };
  for (const Case& row : cases) {
    const PropertyInfo* info = Class(row.control).Property(row.property);
    ASSERT_TRUE(info) << row.property;
    EXPECT_EQ(info->kind, row.kind) << row.property;
    EXPECT_EQ(info->offer, row.offer) << row.property;
    EXPECT_EQ(info->members.size(), row.members) << row.property;
    EXPECT_FALSE(info->readOnly) << row.property;
  }
  EXPECT_TRUE(Class("QRNEdit").Property("SelStart")->hidden);
  EXPECT_EQ(Class("QRNEdit").properties[0].name, "Name");
}

TEST_F(ModuleClassesTest, AreEventsWithTheirArguments) {
  const EventInfo* move = Class("QRNEdit").Event("MouseMove");
  ASSERT_TRUE(move);
  std::string text;
  for (const EventParameter& parameter : move->parameters) {
    text += parameter.name + " As " + parameter.type + (parameter.byValue ? " by value; " : "; ");
  }
  EXPECT_EQ(text,
            "Button As Integer by value; Shift As Integer by value; X As Single by value; "
            "Y As Single by value; ");
  EXPECT_TRUE(Class("QRNEdit").Event("Change"));
  EXPECT_FALSE(Class("QRNEdit").usualEvent.empty());
}

TEST_F(ModuleClassesTest, AreUnknownWithoutHarm) {
  EXPECT_EQ(source_->Find(kLibrary, "Nothing"), nullptr);
  EXPECT_EQ(source_->Find("Nobody", "Nothing"), nullptr);
  EXPECT_FALSE(source_->Library("Nobody"));
  EXPECT_EQ(source_->Library(kLibrary)->fileName, "qrnbt350.ocx");
  EXPECT_EQ(source_->ControlsOf(kLibrary).size(), 13u);
  EXPECT_TRUE(Class("QRNEdit").hasSize);
}

TEST_F(ModuleClassesTest, PutEveryControlOnAFormThatIsReadAgain) {
  form::Mistakes mistakes;
  StoredForm stored = NewForm("frmAll");
  Design design(std::move(stored), *source_);
  const std::string before = Actions::Saved(design);
  for (const std::string& name : source_->ControlsOf(kLibrary)) {
    const ClassInfo& info = Class(name.c_str());
    EXPECT_FALSE(
        AddControl(design, {kLibrary, name, design.form(), {0, 0, info.width, info.height}}))
        << name;
    EXPECT_GT(info.width, 0) << name;
  }
  const std::string saved = Actions::Saved(design);
  const form::FormFile file = form::ReadFormFile(saved, mistakes);
  EXPECT_FALSE(mistakes.Any()) << mistakes.Text("form");
  EXPECT_EQ(file.form.children.size(), 13u);
  // By the name of its class, as Visual Basic writes it, but called as everybody calls it.
  EXPECT_EQ(Lines(design, "QRNBtr1").find("Begin QRNBTRLib.QuorinDb QRNBtr1|"), 0u);
  ASSERT_EQ(file.libraries.size(), 1u);
  EXPECT_EQ(file.libraries[0].fileName, "qrnbt350.ocx");
  EXPECT_EQ(Lines(design, "QRNBtn1").find("Begin QRNBTRLib.QRNBtn QRNBtn1|_ExtentX "), 0u)
      << Lines(design, "QRNBtn1");
  while (design.CanUndo()) design.Undo();
  EXPECT_EQ(Actions::Saved(design), before);
}

// The extended lists save the fields that they show under a name of their own.
TEST_F(ModuleClassesTest, WriteLinesUnderTheNamesThatControlsRead) {
  Design design(NewForm("frmList"), *source_);
  ASSERT_FALSE(AddControl(design, {kLibrary, "QRNExListBox", design.form(), {0, 0, 960, 960}}));
  PropertyList list(design);
  EXPECT_FALSE(list.Enter("DbListFields", "Code,Name"));
  const std::string lines = Lines(design, "QRNExListBox1");
  EXPECT_NE(lines.find("|DbListField = \"Code,Name\"|"), std::string::npos) << lines;
  EXPECT_EQ(lines.find("DbListFields"), std::string::npos);
  for (const PropertyRow& row : list.Rows()) {
    EXPECT_TRUE(row.info->name != "DbListFields" || row.text == "Code,Name") << row.text;
  }
}

}  // namespace
}  // namespace qrn::test
