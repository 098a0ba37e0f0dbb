// Containers that do less than they should, or otherwise: every control lives in them, and nothing
// is left of it.
#include <ocidl.h>
#include <olectl.h>

#include "BuiltModule.h"
#include "tests/ole/SavedBytes.h"
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

INSTANTIATE_TEST_SUITE_P(All, Traps, ::testing::ValuesIn(kControls),
                         [](const auto& row) { return std::string(row.param->className); });

}  // namespace
}  // namespace qrn::test
