// The module in places that installers do not choose: long paths, Japanese letters, blanks, signs
// that mean something in registration scripts.
#include <olectl.h>

#include "ModuleCopy.h"
#include "RegistryDump.h"

namespace qrn::test {
namespace {

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

TEST_P(ModuleCopies, TellTheirTypesAndAreRegisteredWholeOrNotAtAll) {
  const RegistryDump before = DumpClasses();
  const ModuleCopy copy(GetParam().folder);
  ASSERT_TRUE(copy.loaded());
  // Whoever loads the module finds the types of its controls in it, registered or not.
  if (const auto control = Query<IProvideClassInfo>(copy.Make(kQRNBtrTable.classId))) {
    Com<ITypeInfo> type;
    EXPECT_EQ(control->GetClassInfo(type.put()), S_OK) << copy.file().size() << " characters";
  } else {
    ADD_FAILURE() << "it makes no control";
  }
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

INSTANTIATE_TEST_SUITE_P(
    Places, ModuleCopies,
    ::testing::Values(PlaceCase{"JapaneseWithSignsOfScripts",
                                L"試験　フォルダー 表 ソ能 O'Neil 50% %MODULE% {x} 's' = v"},
                      PlaceCase{"NotOfTheCodePage", L"\x00E9\xD83D\xDE00"},
                      PlaceCase{"VeryLong", Repeated(L"long folder\\", 80) + L"end"}),
    [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace qrn::test
