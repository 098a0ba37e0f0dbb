// The type library inside the module, read back as a designer reads it.

#include "BuiltModule.h"
#include "TypeText.h"
#include "com/Bstr.h"

namespace qrn::test {
namespace {

struct TypeLibrary : ::testing::Test {
  void SetUp() override {
    ASSERT_EQ(LoadTypeLibEx(ModuleFile().c_str(), REGKIND_NONE, library.put()), S_OK);
  }
  Com<ITypeInfo> Type(const Guid& id) {
    Com<ITypeInfo> type;
    EXPECT_EQ(library->GetTypeInfoOfGuid(AsGuid(id), type.put()), S_OK) << GuidText(id);
    return type;
  }
  static std::string Name(ITypeInfo& type) {
    Bstr name;
    type.GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
    return Utf8(name.view());
  }
  static std::vector<std::string> Missing(const std::vector<std::string>& all,
                                          const std::vector<std::string>& some) {
    std::vector<std::string> missing;
    for (const std::string& line : all) {
      if (std::ranges::find(some, line) == some.end()) missing.push_back(line);
    }
    return missing;
  }

  Com<ITypeLib> library;
};

TEST_F(TypeLibrary, HasItsNameVersionAndTexts) {
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
  EXPECT_EQ(FromGuid(attributes->guid), kLibrary.id);
  EXPECT_EQ(attributes->wMajorVerNum, 1);
  EXPECT_EQ(attributes->wMinorVerNum, 0);
  EXPECT_EQ(attributes->syskind, SYS_WIN64);
  library->ReleaseTLibAttr(attributes);
  Bstr name;
  Bstr description;
  Bstr help;
  library->GetDocumentation(-1, name.put(), description.put(), nullptr, help.put());
  EXPECT_EQ(name.view(), L"QRNBTRLib");
  EXPECT_EQ(description.view(), L"Quorin Controls for Btrieve");
  EXPECT_TRUE(help.view().ends_with(L"qrnbt340.hlp")) << Utf8(help.view());
  EXPECT_EQ(library->GetTypeInfoCount(), std::size(kEnumerations) + 3 * std::size(kControls));
}

TEST_F(TypeLibrary, SaysWhatTheTablesSay) {
  using Lines = std::vector<std::string>;
  for (const ControlTable* table : kControls) {
    SCOPED_TRACE(table->className);
    const auto members = Type(table->interfaceId);
    const auto events = Type(table->eventsId);
    ASSERT_TRUE(members && events);
    EXPECT_EQ(Name(*members), table->interfaceName);
    EXPECT_EQ(Name(*events), table->eventsName);
    EXPECT_EQ(Missing(MembersOf(*table), MembersOf(*members)), Lines());
    EXPECT_EQ(Missing(MembersOf(*members), MembersOf(*table)), Lines());
    EXPECT_EQ(MembersOf(*events), EventsOf(*table));
  }
  for (const EnumTable* table : kEnumerations) {
    EXPECT_EQ(ConstantsOf(*Type(table->id)), ConstantsOf(*table)) << table->name;
  }
}

// What people see, written down here a second time.
TEST_F(TypeLibrary, IsWhatApplicationsWereWrittenAgainst) {
  EXPECT_EQ(Name(*Type(kQRNBtrTable.classId)), "QuorinDb");
  EXPECT_EQ(Name(*Type(kQRNExComboBoxTable.classId)), "QRNExComboBox");
  const struct {
    const Guid& type;
    const char* line;
  } members[] = {
      {kQRNEditTable.interfaceId, "get -501 backcolor() ole_color"},
      {kQRNEditTable.interfaceId, "set -512 font(font*) 24"},
      {kQRNEditTable.interfaceId, "get -515 hwnd() ole_handle hidden"},
      {kQRNEditTable.interfaceId, "put -504 borderstyle(_enumborderstyle) 24"},
      {kQRNBtnTable.interfaceId, "put -523 picture(picture*) 24"},
      {kQRNBtrTable.interfaceId, "fn -552 about() 24"},
      {kQRNEditTable.eventsId, "fn -602 keydown(keycode 2*, shift 2) 24"},
      {kQRNEditTable.eventsId, "fn -605 mousedown(button 2, shift 2, x 4, y 4) 24"},
  };
  for (const auto& row : members) {
    const auto lines = MembersOf(*Type(row.type));
    EXPECT_NE(std::ranges::find(lines, row.line), lines.end()) << row.line;
  }
  const struct {
    const Guid& type;
    const char* line;
  } constants[] = {
      {kEnumBorderStyle.id, "BorderSingleLine = 1 (実線)"},
      {kEnumMousePointer.id, "mpArrowAndHousrGlass = 13 (矢印と砂時計)"},
      {kEnumMousePointer.id, "mpSizeLeftRight = 9 (ｻｲｽﾞ(左右))"},
  };
  for (const auto& row : constants) {
    const auto lines = ConstantsOf(*Type(row.type));
    EXPECT_NE(std::ranges::find(lines, row.line), lines.end()) << row.line;
  }
}

}  // namespace
}  // namespace qrn::test
