// The module's database control and its flat functions on one form: made by the class object, found
// by the exports.
#include <gtest/gtest.h>
#include <ole2.h>

#include "BuiltModule_win.h"
#include "binding/tables/QRNBtrTable.h"
#include "com/Module.h"
#include "ole/SystemGuid.h"
#include "tests/ole/Caller.h"
#include "tests/ole/TestSite.h"
#include "tests/support/Company.h"

namespace qrn::test {
namespace {

template <class Function>
Function* Export(HMODULE module, const char* name) {
  return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

struct ModuleControl : ::testing::Test {
  ModuleControl() : module(LoadModule()) {
    OleInitialize(nullptr);
    auto* find = Export<HRESULT(REFCLSID, REFIID, void**)>(module, "DllGetClassObject");
    Com<IClassFactory> factory;
    find(AsGuid(kQRNBtrTable.classId), __uuidof(IClassFactory), factory.putVoid());
    if (factory) factory->CreateInstance(nullptr, __uuidof(IDispatch), control.putVoid());
    site.RunTime(L"Db1");
  }
  ~ModuleControl() override {
    site.Unhost();
    control.reset();
    EXPECT_EQ(Export<HRESULT()>(module, "DllCanUnloadNow")(), S_OK) << "something is left alive";
    OleUninitialize();
  }

  int32_t Flat(const char* name, int16_t tableId) {
    return Export<int32_t(int16_t)>(module, name)(tableId);
  }

  Company company;
  HMODULE module;
  TestSite site;
  Com<IDispatch> control;
};

TEST_F(ModuleControl, SharesItsDictionaryWithWhoeverAttaches) {
  ASSERT_TRUE(control);
  Put(control.get(), L"DDFDir", {Text(company.Directory())});
  site.Host(Query<IUnknown>(control).get());
  auto* attach = Export<int32_t(const char*, HWND)>(module, "DbAttachControlByHwnd");
  EXPECT_EQ(attach("Db2", TheForm()), -11);
  EXPECT_EQ(Flat("DbTransferToControl", kPeople), -12);
  EXPECT_EQ(attach("DB1", TheForm()), 0);
  EXPECT_EQ(Export<int32_t()>(module, "DbGetNumOfTable")(), kTableCount);
  EXPECT_EQ(Flat("DbTransferToControl", kPeople), 0);
  EXPECT_EQ(Flat("DbTransferFromControl", kPeople), 0);
  EXPECT_EQ(Flat("DbClearControlData", kPeople), 0);
  EXPECT_EQ(Flat("DbTransferToControl", kTableCount), -3);
  EXPECT_EQ(Flat("DbClose", kPeople), 0);
  EXPECT_EQ(CallMethod(control.get(), L"DbIsOpen", {Text(L"People")}).Text(), "ok I2:0")
      << "one dictionary, one set of open tables";
  site.Unhost();
  EXPECT_EQ(Flat("DbTransferToControl", kPeople), -12) << "the form took it along";
}

}  // namespace
}  // namespace qrn::test
