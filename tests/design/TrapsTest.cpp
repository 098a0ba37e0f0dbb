// Containers that do less than they should, or otherwise: every control lives in them, and nothing
// is left of it.
#include <ocidl.h>
#include <olectl.h>

#include "BuiltModule.h"
#include "tests/ole/SavedBytes.h"
#include "tests/ole/Sinks.h"
#include "tests/ole/TestSite.h"

namespace qrn::test {
namespace {

struct Traps : ::testing::TestWithParam<const ControlTable*> {
  void SetUp() override {
    control = Make(GetParam()->classId);
    if (!control) GTEST_SKIP() << "the module has no such class";
  }
  void TearDown() override {
    if (!control) return;
    site.Unhost();
    EXPECT_EQ(control.detach()->Release(), 0u) << "somebody still holds it";
    EXPECT_EQ(site.references, 0u);
    EXPECT_EQ(GetWindow(TheForm(), GW_CHILD), nullptr);
  }

  HRESULT Draw() const {
    const WindowDc dc(TheForm());
    const RECTL place{5, 5, 60, 40};
    return Query<IViewObject>(control)->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr,
                                             dc.get(), &place, nullptr, nullptr, 0);
  }
  bool HasWindow() const {
    HWND window = nullptr;
    const auto inPlace = Query<IOleInPlaceObject>(control);
    return SUCCEEDED(inPlace->GetWindow(&window)) && IsWindow(window);
  }

  Com<IUnknown> control;
  TestSite site;
};

// Nothing told counts as designing; a name of the wrong type as none.
TEST_P(Traps, AmbientPropertiesThatAreErrorsNothingOrNonsense) {
  using Answer = std::function<Variant()>;
  const Answer answers[] = {
      [] { return Variant(); },
      [] { return Variant(Bstr(L"maybe")); },
      [] { return Variant(Bstr()); },
      [] { return Variant(int32_t{-1}); },
      [] { return Variant(Com<IDispatch>()); },
  };
  EXPECT_EQ(site.Host(control.get()), S_OK) << "errors for all";
  EXPECT_EQ(Draw(), S_OK);
  site.Unhost();
  for (const Answer& answer : answers) {
    for (DISPID id = -732; id <= -701; ++id) site.ambients[id] = answer();
    EXPECT_EQ(site.Host(control.get()), S_OK);
    EXPECT_TRUE(HasWindow());
    EXPECT_EQ(Query<IOleControl>(control)->OnAmbientPropertyChange(DISPID_UNKNOWN), S_OK);
    EXPECT_EQ(Draw(), S_OK);
    site.Unhost();
  }
}

TEST_P(Traps, NoSiteAtAll) {
  const auto object = Query<IOleObject>(control);
  EXPECT_EQ(Draw(), S_OK);
  const auto bytes = Saved(control.get());
  EXPECT_EQ(LoadFrom(control.get(), bytes), S_OK);
  EXPECT_EQ(Saved(control.get()), bytes);
  for (const LONG verb : {OLEIVERB_INPLACEACTIVATE, OLEIVERB_UIACTIVATE, OLEIVERB_HIDE,
                          OLEIVERB_SHOW, OLEIVERB_PRIMARY, LONG{7}}) {
    object->DoVerb(verb, nullptr, nullptr, 0, TheForm(), &site.place);
    EXPECT_FALSE(HasWindow()) << verb;
  }
  EXPECT_EQ(object->Close(OLECLOSE_SAVEIFDIRTY), S_OK);
  EXPECT_EQ(Query<IOleControl>(control)->OnAmbientPropertyChange(DISPID_UNKNOWN), S_OK);
}

TEST_P(Traps, ASiteThatComesLateAndGoesEarly) {
  const auto bytes = Saved(control.get());
  EXPECT_EQ(LoadFrom(control.get(), bytes), S_OK);
  const auto object = Query<IOleObject>(control);
  object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, nullptr, 0, TheForm(), &site.place);
  site.RunTime();
  EXPECT_EQ(site.Host(control.get()), S_OK);
  EXPECT_TRUE(HasWindow());
  EXPECT_EQ(object->SetClientSite(nullptr), S_OK) << "while it is active";
  EXPECT_FALSE(HasWindow());
  EXPECT_EQ(Saved(control.get()), bytes);
}

TEST_P(Traps, ActivationIsRefused) {
  site.RunTime();
  site.mayActivate = S_FALSE;
  EXPECT_NE(site.Host(control.get()), S_OK);
  EXPECT_NE(site.Host(control.get(), OLEIVERB_UIACTIVATE), S_OK);
  EXPECT_FALSE(HasWindow());
  EXPECT_EQ(Draw(), S_OK);
  site.mayActivate = S_OK;
  EXPECT_EQ(site.Host(control.get()), S_OK);
  EXPECT_TRUE(HasWindow());
}

TEST_P(Traps, PlacesOfNoSize) {
  const RECT places[] = {{10, 10, 10, 10}, {10, 10, 5, 5}, {0, 0, 0, 0}, {-50, -50, -10, -10}};
  const auto object = Query<IOleObject>(control);
  SIZEL nothing{0, 0};
  object->SetExtent(DVASPECT_CONTENT, &nothing);
  for (const RECT& place : places) {
    site.place = place;
    EXPECT_EQ(site.Host(control.get()), S_OK);
    EXPECT_EQ(Draw(), S_OK);
    for (const RECT& other : places) {
      EXPECT_EQ(Query<IOleInPlaceObject>(control)->SetObjectRects(&other, &other), S_OK);
    }
    UpdateWindow(TheForm());
    site.Unhost();
  }
  const WindowDc dc(TheForm());
  const RECTL empty{};
  EXPECT_EQ(Query<IViewObject>(control)->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr,
                                              dc.get(), &empty, nullptr, nullptr, 0),
            S_OK);
}

TEST_P(Traps, ASecondLoadIntoTheSameObject) {
  auto bytes = Saved(control.get());
  const auto other = Make(GetParam()->classId);
  SIZEL size{3000, 2000};
  Query<IOleObject>(other)->SetExtent(DVASPECT_CONTENT, &size);
  const auto second = Saved(other.get());
  for (const bool active : {false, true}) {
    if (active) {
      EXPECT_EQ(site.Host(control.get()), S_OK);
    }
    EXPECT_EQ(LoadFrom(control.get(), second), S_OK);
    EXPECT_EQ(Saved(control.get()), second);
    EXPECT_EQ(LoadFrom(control.get(), bytes), S_OK);
    EXPECT_EQ(Saved(control.get()), bytes);
  }
}

TEST_P(Traps, AStreamOfAnotherVersion) {
  const auto bytes = Saved(control.get());
  const struct {
    uint8_t version[4];
    HRESULT result;
  } cases[] = {{{0xFF, 0x0D, 0, 0}, S_OK},   {{0, 0, 0, 0}, S_OK},
               {{0x00, 0x0E, 0, 0}, S_OK},   {{0x01, 0x0E, 0, 0}, E_FAIL},
               {{0, 0x0E, 0, 0x80}, E_FAIL}, {{0xFF, 0xFF, 0xFF, 0xFF}, E_FAIL}};
  for (const auto& row : cases) {
    auto changed = bytes;
    std::copy(row.version, row.version + 4, changed.begin());
    EXPECT_EQ(LoadFrom(control.get(), changed), row.result)
        << int{row.version[0]} << " " << int{row.version[3]};
    EXPECT_EQ(Saved(control.get()), bytes) << "and is written as ever";
  }
}

// Has more than was asked for, and texts that no form has.
class HugeBag final : public Counted<IPropertyBag> {
 public:
  STDMETHODIMP Read(LPCOLESTR, VARIANT* value, IErrorLog*) override {
    if (value->vt != VT_BSTR) return E_INVALIDARG;
    *value = Variant(Bstr(std::wstring(1 << 20, L'\x8868'))).release();
    return S_OK;
  }
  STDMETHODIMP Write(LPCOLESTR, VARIANT*) override { return E_OUTOFMEMORY; }
};

TEST_P(Traps, ABagOfHugeTextsAndOneThatTakesNothing) {
  const auto bytes = Saved(control.get());
  HugeBag bag;
  const auto persist = Query<IPersistPropertyBag>(control);
  EXPECT_EQ(persist->Load(&bag, nullptr), S_OK);
  EXPECT_EQ(Draw(), S_OK);
  // A database control would look for its directory, and tell that there is none.
  if (GetParam() != &kQRNBtrTable) {
    EXPECT_EQ(site.Host(control.get()), S_OK);
    EXPECT_TRUE(HasWindow());
    site.Unhost();
  }
  EXPECT_EQ(persist->Save(&bag, TRUE, TRUE), E_OUTOFMEMORY);
  EXPECT_EQ(LoadFrom(control.get(), bytes), S_OK);
  EXPECT_EQ(Saved(control.get()), bytes);
  EXPECT_EQ(bag.references, 0u);
}

// What is thawed more often than frozen is not frozen.
TEST_P(Traps, EventsFrozenAndThawedOutOfTurn) {
  const auto face = Query<IOleControl>(control);
  EventSink sink;
  const auto points = Query<IConnectionPointContainer>(control);
  Com<IConnectionPoint> point;
  ASSERT_EQ(points->FindConnectionPoint(AsGuid(GetParam()->eventsId), point.put()), S_OK);
  DWORD cookie = 0;
  ASSERT_EQ(point->Advise(&sink, &cookie), S_OK);
  EXPECT_EQ(face->FreezeEvents(FALSE), S_OK);
  EXPECT_EQ(face->FreezeEvents(TRUE), S_OK);
  EXPECT_EQ(face->FreezeEvents(TRUE), S_OK);
  site.RunTime();
  EXPECT_EQ(site.Host(control.get(), OLEIVERB_UIACTIVATE), S_OK);
  HWND window = nullptr;
  Query<IOleInPlaceObject>(control)->GetWindow(&window);
  const HWND inner = GetWindow(window, GW_CHILD) ? GetWindow(window, GW_CHILD) : window;
  const auto move = [&] { SendMessageW(inner, WM_MOUSEMOVE, 0, MAKELPARAM(3, 3)); };
  move();
  EXPECT_EQ(sink.log, "");
  EXPECT_EQ(face->FreezeEvents(FALSE), S_OK);
  move();
  EXPECT_EQ(sink.log, "") << "frozen twice";
  EXPECT_EQ(face->FreezeEvents(FALSE), S_OK);
  move();
  // A grid declares the events of the pointer and never raises them.
  const bool hasMouse = GetParam()->classId != kQRNGridTable.classId &&
                        std::ranges::any_of(GetParam()->events, [](const EventRow& row) {
                          return row.id == stock::kMouseMove;
                        });
  EXPECT_EQ(!sink.log.empty(), hasMouse) << sink.log;
  EXPECT_EQ(point->Unadvise(cookie), S_OK);
}

INSTANTIATE_TEST_SUITE_P(All, Traps, ::testing::ValuesIn(kControls),
                         [](const auto& row) { return std::string(row.param->className); });

}  // namespace
}  // namespace qrn::test
