// The module in places that installers do not choose: long paths, Japanese letters, blanks, signs
// that mean something in registration scripts.
#include <gtest/gtest.h>
#include <olectl.h>

#include <filesystem>
#include <utility>

#include "BuiltModule.h"
#include "RegistryDump.h"
#include "binding/tables/AllTables.h"
#include "com/Module.h"
#include "ole/SystemGuid.h"

namespace qrn::test {
namespace {

// A copy of the module in a folder of its own below the temporary one, loaded; both go at the end.
class ModuleCopy {
 public:
  explicit ModuleCopy(const std::wstring& folder)
      : root_(std::filesystem::temp_directory_path().wstring() + L"qrn-copy"),
        file_(root_ + L"\\" + folder + L"\\qrnbt350.ocx") {
    Remove();
    for (size_t at = root_.size(); at != file_.npos; at = file_.find(L'\\', at + 1)) {
      CreateDirectoryW(Extended(file_.substr(0, at)).c_str(), nullptr);
    }
    CopyFileW(ModuleFile().c_str(), Extended(file_).c_str(), FALSE);
    module_ = LoadLibraryW(file_.c_str());
    if (!module_) module_ = LoadLibraryW(Extended(file_).c_str());
  }
  ModuleCopy(const ModuleCopy&) = delete;
  ModuleCopy& operator=(const ModuleCopy&) = delete;
  ~ModuleCopy() {
    if (module_) FreeLibrary(module_);
    Remove();
  }

  const std::wstring& file() const { return file_; }
  bool loaded() const { return module_ != nullptr; }
  HRESULT Run(const char* entry) const {
    auto* const found = reinterpret_cast<void (*)()>(GetProcAddress(module_, entry));
    return reinterpret_cast<HRESULT(WINAPI*)()>(found)();
  }
  Com<IUnknown> Make(const Guid& classId) const {
    using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    auto* const found = reinterpret_cast<void (*)()>(GetProcAddress(module_, "DllGetClassObject"));
    Com<IClassFactory> factory;
    Com<IUnknown> made;
    reinterpret_cast<GetClassObject>(found)(AsGuid(classId), __uuidof(IClassFactory),
                                            factory.putVoid());
    if (factory) factory->CreateInstance(nullptr, __uuidof(IUnknown), made.putVoid());
    return made;
  }

 private:
  // The form of a path that has no limit of 259 characters.
  static std::wstring Extended(const std::wstring& path) { return L"\\\\?\\" + path; }
  void Remove() const { RemoveFolder(root_); }
  static void RemoveFolder(const std::wstring& folder) {
    WIN32_FIND_DATAW entry{};
    const HANDLE search = FindFirstFileW(Extended(folder + L"\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
      const std::wstring name = entry.cFileName;
      if (name == L"." || name == L"..") continue;
      const std::wstring path = folder + L"\\" + name;
      const bool below = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
      below ? RemoveFolder(path) : static_cast<void>(DeleteFileW(Extended(path).c_str()));
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    RemoveDirectoryW(Extended(folder).c_str());
  }

  std::wstring root_;
  std::wstring file_;
  HMODULE module_ = nullptr;
};

std::wstring Repeated(const std::wstring& text, size_t times) {
  std::wstring all;
  for (size_t i = 0; i < times; ++i) all += text;
  return all;
}

// How many texts of the registry name the file, the machine's and the user's.
std::pair<int, int> Naming(const std::wstring& file) {
  std::pair<int, int> found;
  for (const auto& [path, value] : DumpClasses()) {
    if (value.find(file) == value.npos) continue;
    ++(path.starts_with(L"machine") ? found.first : found.second);
  }
  return found;
}

struct PlaceCase {
  const char* name;
  std::wstring folder;
};

class ModuleCopies : public ::testing::TestWithParam<PlaceCase> {};

TEST_P(ModuleCopies, AreRegisteredWholeOrNotAtAll) {
  const RegistryDump before = DumpClasses();
  const ModuleCopy copy(GetParam().folder);
  ASSERT_TRUE(copy.loaded());
  Com<ITypeLib> library;
  const bool readable = SUCCEEDED(LoadTypeLibEx(copy.file().c_str(), REGKIND_NONE, library.put()));
  EXPECT_TRUE(readable || copy.file().size() >= MAX_PATH);
  library.reset();
  EXPECT_EQ(copy.Run("DllRegisterServer"), readable ? S_OK : SELFREG_E_TYPELIB);
  if (readable) {
    const auto [machine, user] = Naming(copy.file());
    EXPECT_GT(machine, 0);
    EXPECT_EQ(user, 0);
    Com<IUnknown> made;
    EXPECT_EQ(CoCreateInstance(AsGuid(kQRNBtrTable.classId), nullptr, CLSCTX_INPROC_SERVER,
                               __uuidof(IUnknown), made.putVoid()),
              S_OK);
    EXPECT_EQ(copy.Run("DllCanUnloadNow"), S_FALSE) << "the copy made it";
    EXPECT_EQ(LoadRegTypeLib(AsGuid(kLibrary.id), kLibrary.major, kLibrary.minor, 0, library.put()),
              S_OK);
    made.reset();
    library.reset();
    EXPECT_EQ(copy.Run("DllUnregisterServer"), S_OK);
  }
  EXPECT_EQ(Difference(before, DumpClasses()), "");
}

// Whoever loads the module finds the types of its controls in it, registered or not.
TEST_P(ModuleCopies, TellTheirControlsTypes) {
  const ModuleCopy copy(GetParam().folder);
  ASSERT_TRUE(copy.loaded());
  const auto control = Query<IProvideClassInfo>(copy.Make(kQRNBtrTable.classId));
  ASSERT_TRUE(control);
  Com<ITypeInfo> type;
  EXPECT_EQ(control->GetClassInfo(type.put()), S_OK) << copy.file().size() << " characters";
}

INSTANTIATE_TEST_SUITE_P(
    Places, ModuleCopies,
    ::testing::Values(PlaceCase{"JapaneseWithBlanks", L"試験　フォルダー 表 ソ能"},
                      PlaceCase{"NotOfTheCodePage", L"\x00E9\xD83D\xDE00"},
                      PlaceCase{"SignsOfScripts", L"O'Neil 50% %MODULE% {x} 's' = v"},
                      PlaceCase{"Long", Repeated(L"長い 名前\\", 45) + L"終"},
                      PlaceCase{"VeryLong", Repeated(L"long folder\\", 80) + L"end"}),
    [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace qrn::test
