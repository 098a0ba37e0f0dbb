#include <aclapi.h>

#include "ModuleCopy.h"
#include "RegistryDump.h"
#include "ole/Registrar.h"

namespace qrn::test {
namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes";

std::wstring Wide(const std::string& ascii) { return std::wstring(ascii.begin(), ascii.end()); }
std::wstring ClassKey(const Guid& id) { return L"CLSID\\" + Wide(GuidText(id)); }

// The text of the default value of a key of classes, or "(none)".
std::wstring Value(HKEY root, const std::wstring& path, const wchar_t* name = nullptr) {
  wchar_t text[512] = L"(none)";
  DWORD size = sizeof text;
  RegGetValueW(root, (std::wstring(kClasses) + L"\\" + path).c_str(), name, RRF_RT_REG_SZ, nullptr,
               text, &size);
  return text;
}

TEST(Registration, ARoundTripLeavesTheRegistryAsItWas) {
  const RegistryDump before = DumpClasses();
  ASSERT_GT(before.size(), 1000u);
  EXPECT_EQ(RegisterModule(), S_OK);
  EXPECT_NE(Difference(before, DumpClasses()), "");
  EXPECT_EQ(RegisterModule(), S_OK) << "over itself";
  EXPECT_EQ(UnregisterModule(), S_OK);
  EXPECT_EQ(Difference(before, DumpClasses()), "");
  EXPECT_EQ(UnregisterModule(), S_OK) << "with nothing left to remove";
  EXPECT_EQ(Difference(before, DumpClasses()), "");
}

TEST(Registration, TheSystemsToolRegistersTheModuleAndTakesItOut) {
  const RegistryDump before = DumpClasses();
  const std::wstring key = ClassKey(kQRNBtrTable.classId);
  EXPECT_EQ(RunTool(L"regsvr32.exe /s \"" + ModuleFile() + L"\""), 0u);
  EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, key + L"\\InprocServer32"), ModuleFile());
  CLSID found{};
  EXPECT_EQ(CLSIDFromProgID(L"QRNBtr.QRNBtr.1", &found), S_OK);
  Com<IUnknown> made;
  EXPECT_EQ(
      CoCreateInstance(found, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IUnknown), made.putVoid()),
      S_OK);
  made.reset();
  EXPECT_EQ(RunTool(L"regsvr32.exe /s /u \"" + ModuleFile() + L"\""), 0u);
  EXPECT_EQ(Difference(before, DumpClasses()), "");
}

TEST(Registration, AControlStandsAsDesignersLookForIt) {
  const Registered registered;
  ASSERT_EQ(registered.result, S_OK);
  const ControlTable& table = kQRNBtrTable;
  const std::wstring key = ClassKey(table.classId);
  const std::wstring id = Wide(GuidText(table.classId));
  const struct {
    std::wstring path, value;
  } cases[] = {
      {L"QRNBtr.QRNBtr.1", L"QRNBtr Class"},
      {L"QRNBtr.QRNBtr.1\\CLSID", id},
      {L"QRNBtr.QRNBtr", L"QRNBtr Class"},
      {L"QRNBtr.QRNBtr\\CurVer", L"QRNBtr.QRNBtr.1"},
      {key, L"QRNBtr Class"},
      {key + L"\\ProgID", L"QRNBtr.QRNBtr.1"},
      {key + L"\\VersionIndependentProgID", L"QRNBtr.QRNBtr"},
      {key + L"\\InprocServer32", ModuleFile()},
      {key + L"\\ToolboxBitmap32", ModuleFile() + L", 1"},
      {key + L"\\MiscStatus", L"0"},
      {key + L"\\MiscStatus\\1", L"131473"},
      {key + L"\\TypeLib", Wide(GuidText(kLibrary.id))},
      {key + L"\\Version", L"1.0"},
      {key + L"\\Verb\\0", L"ﾌﾟﾛﾊﾟﾃｨ(&P).., 0, 2"},
      {L"TypeLib\\" + Wide(GuidText(kLibrary.id)) + L"\\1.0", L"Quorin Controls for Btrieve"},
      {L"TypeLib\\" + Wide(GuidText(kLibrary.id)) + L"\\1.0\\0\\win64", ModuleFile()},
      {L"AppID\\" + Wide(GuidText(kApplicationId)), L"qrnbt350"},
  };
  for (const auto& row : cases) EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, row.path), row.value);
  EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
  for (const wchar_t* mark : {L"Control", L"Programmable", L"Insertable"}) {
    const std::wstring path = std::wstring(kClasses) + L"\\" + key + L"\\" + mark;
    Key found;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, found.put()),
              ERROR_SUCCESS);
  }
}

// Only what the module makes is registered.
TEST(Registration, ClassesThatCannotBeMadeAreNotRegistered) {
  const Registered registered;
  for (const ControlTable* table : kControls) {
    const bool made = static_cast<bool>(Make(table->classId));
    const std::wstring expected = made ? Wide(table->className) + L" Class" : L"(none)";
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, ClassKey(table->classId)), expected);
  }
  for (const PageRow& page : kPages) {
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, ClassKey(page.classId)), Wide(page.className) + L" Class");
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, ClassKey(page.classId) + L"\\InprocServer32"),
              ModuleFile());
  }
  EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, ClassKey(kCQRNBtrPpg)), L"(none)");
}

// Takes the leave to write to a key of the machine from everybody, until the end of the scope.
class WriteRefused : Pinned {
 public:
  explicit WriteRefused(const wchar_t* path) {
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, READ_CONTROL | WRITE_DAC, key_.put());
    GetSecurityInfo(key_.get(), SE_REGISTRY_KEY, DACL_SECURITY_INFORMATION, nullptr, nullptr, &old_,
                    nullptr, &memory_);
    wchar_t everyone[] = L"EVERYONE";
    EXPLICIT_ACCESSW entry{};
    BuildExplicitAccessWithNameW(&entry, everyone, KEY_READ | READ_CONTROL | WRITE_DAC, SET_ACCESS,
                                 NO_INHERITANCE);
    ACL* list = nullptr;
    if (SetEntriesInAclW(1, &entry, nullptr, &list) == ERROR_SUCCESS) {
      set_ = SetSecurityInfo(key_.get(), SE_REGISTRY_KEY, DACL_SECURITY_INFORMATION, nullptr,
                             nullptr, list, nullptr) == ERROR_SUCCESS;
      LocalFree(list);
    }
    Key write;
    refused =
        RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, KEY_WRITE, write.put()) == ERROR_ACCESS_DENIED;
  }
  ~WriteRefused() {
    if (set_) {
      SetSecurityInfo(key_.get(), SE_REGISTRY_KEY, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                      old_, nullptr);
    }
    LocalFree(memory_);
  }
  bool refused = false;

 private:
  Key key_;
  ACL* old_ = nullptr;
  void* memory_ = nullptr;
  bool set_ = false;
};

TEST(Registration, WithoutLeaveForTheMachineTheUserGetsTheClasses) {
  const RegistryDump before = DumpClasses();
  {
    const WriteRefused classes(L"Software\\Classes\\CLSID");
    ASSERT_TRUE(classes.refused);
    EXPECT_EQ(RegisterModule(), S_OK);
    EXPECT_EQ(Value(HKEY_CURRENT_USER, ClassKey(kQRNBtrTable.classId) + L"\\InprocServer32"),
              ModuleFile());
    EXPECT_EQ(
        Value(HKEY_CURRENT_USER, L"TypeLib\\" + Wide(GuidText(kLibrary.id)) + L"\\1.0\\0\\win64"),
        ModuleFile());
    const std::string made = Difference(before, DumpClasses());
    EXPECT_EQ(made.find("machine"), std::string::npos) << made;
    EXPECT_EQ(UnregisterModule(), S_OK);
    EXPECT_EQ(Difference(before, DumpClasses()), "");
  }
  Key open;
  EXPECT_EQ(
      RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID", 0, KEY_WRITE, open.put()),
      ERROR_SUCCESS);
}

// The module registered for the machine is the one in force, whatever the user had before.
TEST(Registration, ForTheMachineTakesTheUsersPlace) {
  const RegistryDump before = DumpClasses();
  const std::wstring key = ClassKey(kQRNBtrTable.classId) + L"\\InprocServer32";
  {
    const ModuleCopy copy(L"user's 表");
    ASSERT_TRUE(copy.loaded());
    {
      const WriteRefused classes(L"Software\\Classes\\CLSID");
      EXPECT_EQ(copy.Run("DllRegisterServer"), S_OK);
      EXPECT_EQ(Value(HKEY_CURRENT_USER, key), copy.file());
    }
    EXPECT_EQ(RegisterModule(), S_OK);
    EXPECT_EQ(Value(HKEY_CURRENT_USER, key), L"(none)");
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, key), ModuleFile());
    EXPECT_EQ(copy.Run("DllRegisterServer"), S_OK) << "from the other path";
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, key), copy.file());
    EXPECT_EQ(RegisterModule(), S_OK) << "and back";
    EXPECT_EQ(Value(HKEY_LOCAL_MACHINE, key), ModuleFile());
    const std::string made = Difference(before, DumpClasses());
    EXPECT_EQ(made.find("user's"), std::string::npos) << made;
  }
  EXPECT_EQ(UnregisterModule(), S_OK);
  EXPECT_EQ(Difference(before, DumpClasses()), "");
}

TEST(Registration, RemovalLeavesWhatOthersPutThere) {
  Key scratch;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\QrnScratch", 0, nullptr, 0,
                            KEY_ALL_ACCESS, nullptr, scratch.put(), nullptr),
            ERROR_SUCCESS);
  ScriptError error;
  const auto script = *ReadRegistryScript(
      u"HKCR { NoRemove Kept { val V = s x Own = s a { Deep } ForceRemove Whole = d 5 "
      u"{ val B = b 0aFF val M = m 'p\\0q' } } Delete Old }",
      {}, error);
  const auto make = [&](const wchar_t* path) {
    Key key;
    RegCreateKeyExW(scratch.get(), path, 0, nullptr, 0, KEY_WRITE, nullptr, key.put(), nullptr);
  };
  make(L"Kept\\Others");
  make(L"Old\\Below");
  const RegistryDump before = Dump(scratch.get(), L"Kept");
  const Registrar registrar(scratch.get());
  EXPECT_EQ(registrar.Add(script), ERROR_SUCCESS);
  EXPECT_EQ(Difference(before, Dump(scratch.get(), L"Kept")),
            "+ Kept\\Own \n+ Kept\\Own\\ 1:a\n+ Kept\\Own\\Deep \n+ Kept\\V 1:x\n"
            "+ Kept\\Whole \n+ Kept\\Whole\\ 4:5.0.0.0.\n+ Kept\\Whole\\B 3:10.255.\n"
            "+ Kept\\Whole\\M 7:112.0.0.0.113.0.0.0.0.0.\n");
  EXPECT_TRUE(Dump(scratch.get(), L"Old").empty());
  make(L"Kept\\Own\\Theirs");
  make(L"Kept\\Whole\\Theirs");
  EXPECT_EQ(registrar.Remove(script), ERROR_SUCCESS);
  EXPECT_EQ(Difference(before, Dump(scratch.get(), L"Kept")),
            "+ Kept\\Own \n+ Kept\\Own\\Theirs \n");
  scratch.reset();
  RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\QrnScratch");
}

}  // namespace
}  // namespace qrn::test
