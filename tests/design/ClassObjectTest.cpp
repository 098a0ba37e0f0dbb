// What holds of every class that the module makes.
#include <ocidl.h>
#include <olectl.h>

#include <random>

#include "BuiltModule.h"
#include "com/Variant.h"
#include "ole/StreamBytes.h"
#include "ole/tables/MemberChecks.h"
#include "tests/ole/SavedBytes.h"
#include "tests/ole/Sinks.h"
#include "tests/ole/SystemStorage.h"

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

TEST_P(MadeClass, ReadsBackWhatItSavesAndNothingLess) {
  const auto bytes = Saved(control.get());
  const auto other = Make(GetParam()->classId);
  EXPECT_EQ(LoadFrom(other.get(), bytes), S_OK);
  EXPECT_EQ(Saved(other.get()), bytes);
  for (size_t length = 0; length < bytes.size(); ++length) {
    ASSERT_EQ(LoadFrom(other.get(), std::span(bytes).first(length)), E_FAIL) << length;
  }
  EXPECT_EQ(Saved(other.get()), bytes);
  auto newer = bytes;
  newer[0] = 1;
  EXPECT_EQ(LoadFrom(other.get(), newer), E_FAIL);
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

TEST_P(MadeClass, DamagedStreamsLoadOrFail) {
  const auto bytes = Saved(control.get());
  const auto other = Make(GetParam()->classId);
  int failed = 0;
  for (size_t at = 0; at < bytes.size(); ++at) {
    auto damaged = bytes;
    damaged[at] ^= 0x81;
    const HRESULT result = LoadFrom(other.get(), damaged);
    ASSERT_TRUE(result == S_OK || result == E_FAIL) << at;
    failed += result == E_FAIL;
  }
  EXPECT_GT(failed, 5);
  EXPECT_EQ(LoadFrom(other.get(), bytes), S_OK);
  EXPECT_EQ(Saved(other.get()), bytes);
}

// Gives mostly values of the type asked for, now and then one of any other.
class WildBag final : public Counted<IPropertyBag> {
 public:
  WildBag(uint32_t seed, Com<IDispatch> object) : random_(seed), object_(std::move(object)) {}

  STDMETHODIMP Read(LPCOLESTR, VARIANT* value, IErrorLog*) override {
    const VARTYPE asked = value->vt;
    VariantInit(value);
    switch (random_() % 60) {
      case 0:
        value->vt = VT_NULL;
        return S_OK;
      case 1:
        value->vt = VT_R8;
        value->dblVal = random_() % 2 ? 1e300 : -0.5;
        return S_OK;
      case 2:
        value->vt = VT_BSTR;
        value->bstrVal = SysAllocStringByteLen("odd", 3);
        return S_OK;
      case 3:
        value->vt = VT_BSTR;
        value->bstrVal = SysAllocString(std::wstring(random_() % 5000, L'\x8868').c_str());
        return S_OK;
      case 4:
        *value = Variant(object_).release();
        return S_OK;
      case 5:
        value->vt = VT_ARRAY | VT_UI1;
        value->parray = SafeArrayCreateVector(VT_UI1, 0, 7);
        return S_OK;
      case 6:
        value->vt = asked;  // zero, no text, no object
        return S_OK;
      case 7:
        return E_INVALIDARG;
      default: {
        *value = Variant(static_cast<int32_t>(random_())).release();
        const HRESULT changed = VariantChangeType(value, value, 0, asked);
        return SUCCEEDED(changed) ? S_OK : E_INVALIDARG;
      }
    }
  }
  STDMETHODIMP Write(LPCOLESTR, VARIANT*) override { return S_OK; }

 private:
  std::mt19937 random_;
  Com<IDispatch> object_;
};

TEST_P(MadeClass, BagsOfAnyValuesLoadOrFail) {
  const auto bytes = Saved(control.get());
  const auto other = Make(GetParam()->classId);
  const auto persist = Query<IPersistPropertyBag>(other);
  int failed = 0;
  for (uint32_t seed = 0; seed < 1000; ++seed) {
    WildBag bag(seed, Query<IDispatch>(control));
    const HRESULT result = persist->Load(&bag, nullptr);
    ASSERT_TRUE(result == S_OK || result == E_FAIL) << seed;
    failed += result == E_FAIL;
    ASSERT_GE(Saved(other.get()).size(), 12u) << seed;
    ASSERT_EQ(bag.references, 0u) << seed;
  }
  EXPECT_GT(failed, 100);
  // A grid takes no size beyond its capacity: hardly one of the bags is of use to it.
  const int most = GetParam()->classId == kQRNGridTable.classId ? 1000 : 989;
  EXPECT_LE(failed, most);
  EXPECT_EQ(LoadFrom(other.get(), bytes), S_OK);
  EXPECT_EQ(Saved(other.get()), bytes);
}

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

// Every text null, no picture, icon or font: what a control may be that a host made by hand.
void Strip(IUnknown* control, const ControlTable& table) {
  const auto object = Query<IDispatch>(control);
  for (const PersistRow& row : table.persisted) {
    const PropertyRow* property = row.Raw() ? nullptr : FindProperty(table, row.id);
    if (!property || (property->type.vt != VT_DISPATCH && property->type.vt != VT_BSTR)) continue;
    VARIANT nothing{};
    nothing.vt = property->type.vt;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS sent{&nothing, &put, 1, 1};
    EXPECT_EQ(object->Invoke(row.id, IID_NULL, 0, DISPATCH_PROPERTYPUTREF, &sent, nullptr, nullptr,
                             nullptr),
              S_OK)
        << row.name;
  }
}

TEST_P(MadeClass, GoesToTheSystemsStoragesWithoutTextsAndObjects) {
  Strip(control.get(), *GetParam());
  const auto bytes = Saved(control.get());
  for (const bool onDisk : {false, true}) {
    const SystemStorage storage(onDisk);
    ASSERT_TRUE(storage.get());
    EXPECT_EQ(Query<IPersistStorage>(control)->Save(storage.get(), TRUE), S_OK);
    const auto other = Make(GetParam()->classId);
    EXPECT_EQ(Query<IPersistStorage>(other)->Load(storage.get()), S_OK);
    EXPECT_EQ(Saved(other.get()), bytes) << "what is null stays null";
  }
}

// A table of a class that is not made yet goes the same way.
class AnyTable : public ::testing::TestWithParam<const ControlTable*> {};
TEST_P(AnyTable, StoresItselfInTheSystemsStorages) {
  const std::span<const PersistRow> map = GetParam()->persisted;
  std::vector<PersistedItem> items;
  for (const PersistRow& row : map) {
    PersistedItem item;
    item.type = row.Raw() ? vt::kUI4 : FindProperty(*GetParam(), row.id)->type.vt;
    item.nullText = item.type == vt::kBstr;
    items.push_back(item);
  }
  for (const bool onDisk : {false, true}) {
    const SystemStorage storage(onDisk);
    Com<IStream> stream;
    const DWORD mode = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
    ASSERT_EQ(storage.get()->CreateStream(L"Contents", mode, 0, 0, stream.put()), S_OK);
    StreamSink sink(*stream);
    EXPECT_TRUE(WriteItems(sink, map, items)) << sink.failure();
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    StreamSource source(*stream);
    EXPECT_EQ(ReadItems(source, map), items);
  }
}
INSTANTIATE_TEST_SUITE_P(All, AnyTable, ::testing::ValuesIn(kControls),
                         [](const auto& row) { return std::string(row.param->className); });

INSTANTIATE_TEST_SUITE_P(All, MadeClass, ::testing::ValuesIn(kControls),
                         [](const auto& row) { return std::string(row.param->className); });

}  // namespace
}  // namespace qrn::test
