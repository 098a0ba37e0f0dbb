// What holds of every class that the module makes.
#include <ocidl.h>
#include <olectl.h>

#include "BuiltModule.h"
#include "com/Variant.h"
#include "tests/ole/SavedBytes.h"

namespace qrn::test {
namespace {

TEST(ClassObject, UnknownClassesAreRefused) {
  Com<IUnknown> object;
  EXPECT_EQ(ClassObjectOf(kCQRNBtrPpg, __uuidof(IClassFactory), object.putVoid()),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(ClassObjectOf(kQRNBtrTable.classId, __uuidof(IOleObject), object.putVoid()),
            E_NOINTERFACE);
  EXPECT_FALSE(object);
  EXPECT_EQ(ClassObjectOf(kQRNBtrTable.classId, __uuidof(IClassFactory), nullptr), E_POINTER);
}

TEST(ClassObject, TheModuleStaysWhileAnythingHoldsIt) {
  EXPECT_TRUE(ModuleMayUnload());
  Com<IClassFactory> factory;
  ASSERT_EQ(ClassObjectOf(kQRNBtrTable.classId, __uuidof(IClassFactory), factory.putVoid()), S_OK);
  EXPECT_FALSE(ModuleMayUnload());
  factory->LockServer(TRUE);
  Com<IUnknown> object;
  EXPECT_EQ(factory->CreateInstance(nullptr, __uuidof(IUnknown), object.putVoid()), S_OK);
  factory->LockServer(FALSE);
  factory.reset();
  EXPECT_FALSE(ModuleMayUnload());
  object.reset();
  EXPECT_TRUE(ModuleMayUnload());
}

struct MadeClass : ::testing::TestWithParam<const ControlTable*> {
  void SetUp() override {
    control = Make(GetParam()->classId);
    if (!control) GTEST_SKIP() << "the module has no such class";
  }
  Com<IUnknown> control;
};

TEST_P(MadeClass, IsAControlInEveryRespect) {
  const IID* const interfaces[] = {&__uuidof(IDispatch),
                                   &__uuidof(IOleObject),
                                   &__uuidof(IOleInPlaceObject),
                                   &__uuidof(IOleInPlaceActiveObject),
                                   &__uuidof(IOleControl),
                                   &__uuidof(IViewObjectEx),
                                   &__uuidof(IPersistStreamInit),
                                   &__uuidof(IPersistStorage),
                                   &__uuidof(IPersistPropertyBag),
                                   &__uuidof(IConnectionPointContainer),
                                   &__uuidof(IProvideClassInfo2),
                                   &__uuidof(ISpecifyPropertyPages),
                                   &__uuidof(IQuickActivate),
                                   &__uuidof(ISupportErrorInfo),
                                   &AsGuid(GetParam()->interfaceId)};
  for (const IID* id : interfaces) {
    Com<IUnknown> found;
    Com<IUnknown> identity;
    EXPECT_EQ(control->QueryInterface(*id, found.putVoid()), S_OK) << GuidText(FromGuid(*id));
    ASSERT_TRUE(found);
    identity = Query<IUnknown>(found);
    EXPECT_EQ(identity, control);
  }
}

TEST_P(MadeClass, TellsItsTypeEventsAndPages) {
  const auto info = Query<IProvideClassInfo2>(control);
  Com<ITypeInfo> type;
  ASSERT_EQ(info->GetClassInfo(type.put()), S_OK);
  TYPEATTR* attributes = nullptr;
  type->GetTypeAttr(&attributes);
  EXPECT_EQ(FromGuid(attributes->guid), GetParam()->classId);
  type->ReleaseTypeAttr(attributes);
  GUID events{};
  EXPECT_EQ(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);
  EXPECT_EQ(FromGuid(events), GetParam()->eventsId);
  CAUUID pages{};
  ASSERT_EQ(Query<ISpecifyPropertyPages>(control)->GetPages(&pages), S_OK);
  EXPECT_EQ(pages.cElems, GetParam()->pages.size());
  CoTaskMemFree(pages.pElems);
  DWORD status = 0;
  EXPECT_EQ(Query<IOleObject>(control)->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
  EXPECT_EQ(status, GetParam()->registration.miscStatus);
}

// The worked example of docs/persisted-state.md.
class NewControl : public MadeClass {};
TEST_P(NewControl, OfADatabaseStoresTheDocumentedBytes) {
  const std::vector<uint8_t> expected = {
      0x00, 0x0E, 0x00, 0x00,                          // version
      0x4F, 0x03, 0x00, 0x00, 0x4F, 0x03, 0x00, 0x00,  // _cx, _cy
      0x08, 0x00, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00,  // DDFDir
      0x08, 0x00, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00,  // OwnerName
      0x03, 0x00, 0x00, 0x00, 0x00, 0x00,              // OpenMode
      0x0B, 0x00, 0xFF, 0xFF,                          // AllOpen
      0x08, 0x00, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00,  // DistName
      0x0B, 0x00, 0xFF, 0xFF,                          // CacheDDF
  };
  EXPECT_EQ(Saved(control.get()), expected);
}
INSTANTIATE_TEST_SUITE_P(Database, NewControl, ::testing::Values(&kQRNBtrTable));

TEST_P(MadeClass, AnswersEveryPropertyWithoutAContainer) {
  const auto object = Query<IDispatch>(control);
  for (const PropertyRow& row : GetParam()->properties) {
    if (!row.index.empty()) continue;
    DISPPARAMS none{};
    Variant value;
    EXCEPINFO exception{};
    const HRESULT result =
        object->Invoke(row.id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                       value.get(), &exception, nullptr);
    SysFreeString(exception.bstrSource);
    EXPECT_TRUE(result == S_OK || result == DISP_E_EXCEPTION) << row.name << " " << result;
    if (result == S_OK) {
      EXPECT_EQ(value.type(), row.type.vt) << row.name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, MadeClass, ::testing::ValuesIn(kControls),
                         [](const auto& row) { return std::string(row.param->className); });

}  // namespace
}  // namespace qrn::test
