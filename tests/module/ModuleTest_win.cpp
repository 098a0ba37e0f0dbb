// The module file itself: what it exports, needs and says of itself.

#include "BuiltModule_win.h"
#include "qrnbt350.h"
#include "tests/support/Test.h"

namespace qrn::test {
namespace {

// Tables inside a loaded module, by its own headers.
class Image {
 public:
  explicit Image(HMODULE module) : base_(reinterpret_cast<const uint8_t*>(module)) {
    const auto* dos = At<IMAGE_DOS_HEADER>(0);
    headers_ = At<IMAGE_NT_HEADERS64>(static_cast<DWORD>(dos->e_lfanew));
  }

  std::set<std::string> Exports() const {
    const auto* table = Directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT);
    const auto* names = At<DWORD>(table->AddressOfNames);
    std::set<std::string> found;
    for (DWORD i = 0; i < table->NumberOfNames; ++i) found.insert(At<char>(names[i]));
    return found;
  }

  std::string InternalName() const {
    return At<char>(Directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT)->Name);
  }

  std::set<std::string> Imports() const {
    std::set<std::string> found;
    for (const auto* each = Directory<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT);
         each->Name != 0; ++each) {
      std::string name = At<char>(each->Name);
      for (char& letter : name) letter = static_cast<char>(std::tolower(letter));
      found.insert(name);
    }
    return found;
  }

 private:
  template <class Item>
  const Item* At(DWORD offset) const {
    return reinterpret_cast<const Item*>(base_ + offset);
  }
  template <class Item>
  const Item* Directory(int which) const {
    return At<Item>(headers_->OptionalHeader.DataDirectory[which].VirtualAddress);
  }

  const uint8_t* base_;
  const IMAGE_NT_HEADERS64* headers_;
};

TEST(Module, ExportsWhatItsHeaderDeclaresAndNoMore) {
  std::set<std::string> declared = {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer",
                                    "DllUnregisterServer"};
#define QRN_NAME(result, name, arguments) declared.insert(#name);
  QRN_FUNCTIONS(QRN_NAME)
#undef QRN_NAME
  const Image image(LoadModule());
  EXPECT_EQ(image.InternalName(), "qrnbt350.ocx");
  EXPECT_EQ(image.Exports(), declared);
  EXPECT_EQ(declared.size(), 4 + 40u);
}

TEST(Module, NeedsNothingThatWindowsDoesNotHave) {
  const std::set<std::string> system = {
      "kernel32.dll", "user32.dll",   "gdi32.dll",    "advapi32.dll", "ole32.dll",
      "oleaut32.dll", "comdlg32.dll", "comctl32.dll", "shell32.dll",  "imm32.dll",
      "olepro32.dll", "msvcrt.dll",   "version.dll",  "oleacc.dll"};
  for (const std::string& name : Image(LoadModule()).Imports()) {
    EXPECT_TRUE(system.contains(name)) << name;
  }
}

TEST(Module, TellsItsVersionInJapanese) {
  DWORD ignored = 0;
  std::vector<uint8_t> block(GetFileVersionInfoSizeW(ModulePath(), &ignored));
  ASSERT_FALSE(block.empty());
  ASSERT_TRUE(GetFileVersionInfoW(ModulePath(), 0, static_cast<DWORD>(block.size()), block.data()));
  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT size = 0;
  ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &size));
  EXPECT_EQ(fixed->dwFileVersionMS, 0x00030005u);
  EXPECT_EQ(fixed->dwFileVersionLS, 0x00010000u);
  WORD* translation = nullptr;
  ASSERT_TRUE(VerQueryValueW(block.data(), L"\\VarFileInfo\\Translation",
                             reinterpret_cast<void**>(&translation), &size));
  EXPECT_EQ(translation[0], 1041);
  EXPECT_EQ(translation[1], 1200);
  wchar_t* text = nullptr;
  EXPECT_TRUE(VerQueryValueW(block.data(), L"\\StringFileInfo\\041104B0\\FileVersion",
                             reinterpret_cast<void**>(&text), &size));
  EXPECT_STREQ(text, L"3.5.1.0");
}

TEST(Module, CarriesTheMessages) {
  const HMODULE module = LoadModule();
  struct {
    UINT id;
    const wchar_t* text;
  } const cases[] = {
      {101, L"VE001"},
      {119, L"VE011 データ型が不正です。"},
      {123, L"VE015 ｲﾒ-ｼﾞ･ｺﾝﾄﾛ-ﾙにﾋﾞｯﾄﾏｯﾌﾟを読み込めません"},
      {193, L"VE823 サイン・ニブルの指定が不正です。"},
  };
  for (const auto& row : cases) {
    wchar_t text[128] = L"";
    LoadStringW(module, row.id, text, 128);
    EXPECT_STREQ(text, row.text);
  }
}

}  // namespace
}  // namespace qrn::test
