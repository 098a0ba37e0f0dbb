#include "SampleFixture.h"
#include "com/Extent.h"

namespace qrn::test {
namespace {

class ActivationTest : public SampleFixture {};

TEST_F(ActivationTest, InPlaceActivationMakesTheWindowWhereTheContainerSays) {
  EXPECT_EQ(site.Host(unknown()), S_OK);
  EXPECT_EQ(site.log, "in show ");
  EXPECT_EQ(sample().log, "sited made ");
  RECT at{};
  GetWindowRect(sample().hwnd(), &at);
  MapWindowPoints(nullptr, site.window(), reinterpret_cast<POINT*>(&at), 2);
  EXPECT_TRUE(EqualRect(&at, &site.place));
  EXPECT_TRUE(IsWindowVisible(sample().contained()));
  EXPECT_EQ(GetParent(sample().contained()), sample().hwnd());
}

TEST_F(ActivationTest, UiActivationMakesItTheActiveOneOfTheFrame) {
  EXPECT_EQ(site.Host(unknown(), OLEIVERB_UIACTIVATE), S_OK);
  EXPECT_EQ(site.log, "in ui active focus show ");
  EXPECT_EQ(GetFocus(), sample().contained());
  EXPECT_EQ(site.object()->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &site, 0, nullptr, nullptr), S_OK);
  site.log.clear();
  const auto inPlace = Query<IOleInPlaceObject>(control);
  EXPECT_EQ(inPlace->UIDeactivate(), S_OK);
  EXPECT_EQ(site.log, "inactive ui-out ");
  EXPECT_EQ(inPlace->UIDeactivate(), S_OK);
  EXPECT_EQ(site.log, "inactive ui-out ");
}

// As containers do after a message box and on return from another form.
TEST_F(ActivationTest, UiActivationAskedForAgainGivesTheFocusAndNothingElse) {
  site.Host(unknown(), OLEIVERB_UIACTIVATE);
  const auto activate = [&] {
    site.log.clear();
    return site.object()->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &site, 0, nullptr, nullptr);
  };
  SetFocus(site.window());
  EXPECT_EQ(activate(), S_OK);
  EXPECT_EQ(GetFocus(), sample().contained());
  EXPECT_EQ(site.log, "focus ");
  EXPECT_EQ(activate(), S_OK);
  EXPECT_EQ(site.log, "");
  ShowWindow(sample().hwnd(), SW_HIDE);
  EXPECT_EQ(activate(), S_OK);
  EXPECT_TRUE(IsWindowVisible(sample().hwnd())) << "the container had hidden it";
  EXPECT_EQ(GetFocus(), sample().contained());
}

TEST_F(ActivationTest, AClickActivatesOnce) {
  site.RunTime();
  site.Host(unknown());
  const auto click = [&] {
    site.log.clear();
    SendMessageW(sample().contained(), WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(site.window()),
                 MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN));
    return site.log;
  };
  EXPECT_EQ(click(), "ui active focus show ");
  EXPECT_EQ(click(), "");
}

TEST_F(ActivationTest, AContainerThatHandsTheFocusBackDoesNotStopItsControlFromLeaving) {
  site.RunTime();
  site.Host(unknown(), OLEIVERB_UIACTIVATE);
  site.log.clear();
  site.onFocus = [&](bool has) {
    if (!has) site.object()->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &site, 0, nullptr, nullptr);
  };
  Query<IOleInPlaceObject>(control)->InPlaceDeactivate();
  site.onFocus = {};
  EXPECT_EQ(site.log, "inactive ui-out blur out ");
  EXPECT_EQ(sample().hwnd(), nullptr);
}

TEST_F(ActivationTest, DeactivationTakesTheWindowAway) {
  site.Host(unknown(), OLEIVERB_UIACTIVATE);
  site.log.clear();
  const HWND window = sample().hwnd();
  EXPECT_EQ(Query<IOleInPlaceObject>(control)->InPlaceDeactivate(), S_OK);
  EXPECT_EQ(site.log, "inactive ui-out blur out ");
  EXPECT_FALSE(IsWindow(window));
  HWND gone = window;
  EXPECT_EQ(Query<IOleWindow>(control)->GetWindow(&gone), E_FAIL);
  EXPECT_EQ(gone, nullptr);
}

TEST_F(ActivationTest, AContainerThatRefusesIsLeftAlone) {
  site.mayActivate = S_FALSE;
  EXPECT_EQ(site.Host(unknown()), E_FAIL);
  EXPECT_EQ(site.log, "");
  EXPECT_EQ(sample().hwnd(), nullptr);
  site.mayActivate = S_OK;
  EXPECT_EQ(site.Host(unknown()), S_OK);
}

TEST_F(ActivationTest, RegistrationIsForRunTime) {
  site.RunTime();
  site.Host(unknown());
  EXPECT_EQ(sample().log, "sited made registered ");
  sample().log.clear();
  site.ambients.clear();  // the container forgets: what was registered still leaves
  Query<IOleInPlaceObject>(control)->InPlaceDeactivate();
  EXPECT_EQ(sample().log, "unregistered ");
}

TEST_F(ActivationTest, ThePrimaryVerbDependsOnTheMode) {
  site.ambients[DISPID_AMBIENT_USERMODE] = Variant::Bool(false);
  EXPECT_EQ(site.Host(unknown(), OLEIVERB_PRIMARY), S_OK);
  EXPECT_EQ(site.log, "pages ");
  site.RunTime();
  EXPECT_EQ(site.object()->DoVerb(OLEIVERB_PRIMARY, nullptr, &site, 0, nullptr, nullptr), S_OK);
  EXPECT_EQ(site.log, "pages in show ");
  EXPECT_EQ(site.object()->DoVerb(7, nullptr, &site, 0, nullptr, nullptr), OLEOBJ_S_INVALIDVERB);
  EXPECT_EQ(site.object()->DoVerb(-99, nullptr, &site, 0, nullptr, nullptr), E_NOTIMPL);
}

TEST_F(ActivationTest, AVerbThatHidesKeepsTheControlActive) {
  site.Host(unknown());
  EXPECT_EQ(site.object()->DoVerb(OLEIVERB_HIDE, nullptr, &site, 0, nullptr, nullptr), S_OK);
  EXPECT_FALSE(IsWindowVisible(sample().hwnd()));
  EXPECT_EQ(site.object()->DoVerb(OLEIVERB_SHOW, nullptr, &site, 0, nullptr, nullptr), S_OK);
  EXPECT_TRUE(IsWindowVisible(sample().hwnd()));
}

TEST_F(ActivationTest, VerbsAreNamedEvenUnregistered) {
  const auto object = Query<IOleObject>(control);
  Com<IEnumOLEVERB> verbs;
  ASSERT_EQ(object->EnumVerbs(verbs.put()), S_OK);
  OLEVERB verb{};
  ULONG count = 0;
  ASSERT_EQ(verbs->Next(1, &verb, &count), S_OK);
  EXPECT_EQ(verb.lVerb, 0);
  EXPECT_STREQ(verb.lpszVerbName, L"ﾌﾟﾛﾊﾟﾃｨ(&P)..");
  CoTaskMemFree(verb.lpszVerbName);
  EXPECT_EQ(verbs->Next(1, &verb, &count), S_FALSE);
  DWORD status = 0;
  EXPECT_EQ(object->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
  EXPECT_EQ(status, 131473u);
  LPOLESTR type = nullptr;
  ASSERT_EQ(object->GetUserType(USERCLASSTYPE_FULL, &type), S_OK);
  EXPECT_STREQ(type, L"Sample Class");
  CoTaskMemFree(type);
}

TEST_F(ActivationTest, ObjectRectsMoveAndClip) {
  site.Host(unknown());
  const RECT place{20, 30, 120, 90};
  const RECT clip{20, 30, 70, 90};
  EXPECT_EQ(Query<IOleInPlaceObject>(control)->SetObjectRects(&place, &clip), S_OK);
  RECT at{};
  GetClientRect(sample().contained(), &at);
  EXPECT_EQ(SizeOf(at).cx, 100);
  EXPECT_EQ(SizeOf(at).cy, 60);
  RECT shown{};
  EXPECT_NE(GetWindowRgnBox(sample().hwnd(), &shown), ERROR);
  EXPECT_EQ(shown.right, 50);
  EXPECT_EQ(Query<IOleInPlaceObject>(control)->SetObjectRects(nullptr, &clip), E_POINTER);
}

TEST_F(ActivationTest, ExtentsAreHimetric) {
  const auto object = Query<IOleObject>(control);
  SIZEL size{};
  EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, &size), S_OK);
  EXPECT_EQ(size.cx, 2540);  // 96 pixels at 96 an inch
  EXPECT_EQ(size.cy, 1270);
  size = {1000, 500};
  EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &size), S_OK);
  size = {};
  EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, &size), S_OK);
  EXPECT_EQ(size.cx, 1000);
  EXPECT_EQ(object->SetExtent(DVASPECT_ICON, &size), DV_E_DVASPECT);
  EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, nullptr), E_POINTER);
}

TEST_F(ActivationTest, AControlOfFixedSizeTakesOnlyThatSize) {
  sample().fixedSize = true;
  const auto object = Query<IOleObject>(control);
  SIZEL size{1000, 500};
  EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &size), E_FAIL);
  size = {2540, 1270};
  EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &size), S_OK);
  DVEXTENTINFO info{sizeof info, DVEXTENT_CONTENT, {}};
  EXPECT_EQ(Query<IViewObjectEx>(control)->GetNaturalExtent(DVASPECT_CONTENT, -1, nullptr, nullptr,
                                                            &info, &size),
            S_OK);
}

TEST_F(ActivationTest, QuickActivationTakesTheWholeOffer) {
  EventSink events;
  PropertySink properties;
  QACONTAINER offer{};
  offer.cbSize = sizeof offer;
  offer.pClientSite = &site;
  offer.pUnkEventSink = &events;
  offer.pPropertyNotifySink = &properties;
  QACONTROL state{};
  state.cbSize = sizeof state;
  auto quick = Query<IQuickActivate>(control);
  ASSERT_EQ(quick->QuickActivate(&offer, &state), S_OK);
  EXPECT_NE(state.dwEventCookie, 0u);
  EXPECT_NE(state.dwPropNotifyCookie, 0u);
  EXPECT_EQ(state.dwMiscStatus, 131473u);
  EXPECT_EQ(sample().log, "sited ");
  Put(object(), L"Name", {Text(L"n")});
  EXPECT_EQ(properties.log, "ask(1) changed(1) ");
  SIZEL size{3000, 2000};
  EXPECT_EQ(quick->SetContentExtent(&size), S_OK);
  offer.cbSize = 4;
  EXPECT_EQ(quick->QuickActivate(&offer, &state), E_INVALIDARG);
  Query<IOleObject>(control)->SetClientSite(nullptr);
  quick.reset();
  control.reset();
  EXPECT_EQ(events.references, 0u);
  EXPECT_EQ(properties.references, 0u);
}

TEST_F(ActivationTest, ClosingSavesWhatIsDirtyIfAsked) {
  site.Host(unknown());
  Put(object(), L"Name", {Text(L"n")});
  site.log.clear();
  const auto ole = Query<IOleObject>(control);
  ole->Close(OLECLOSE_NOSAVE);
  EXPECT_EQ(site.log, "out ");
  ole->Close(OLECLOSE_SAVEIFDIRTY);
  EXPECT_EQ(site.log, "out save ");
}

TEST_F(ActivationTest, DrawsIntoAnyDeviceWithAndWithoutAWindow) {
  const auto view = Query<IViewObject>(control);
  const WindowDc screen(nullptr);
  const MemoryDc dc(CreateCompatibleDC(screen.get()));
  const Bitmap bitmap(CreateCompatibleBitmap(screen.get(), 50, 50));
  const Selected selected(dc.get(), bitmap.get());
  Put(object(), L"BackColor", {Long(0x0000FF)});
  const RECTL bounds{5, 5, 45, 45};
  EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc.get(), &bounds, nullptr,
                       nullptr, 0),
            S_OK);
  EXPECT_EQ(GetPixel(dc.get(), 25, 25), RGB(255, 0, 0));
  EXPECT_EQ(GetPixel(dc.get(), 2, 2), RGB(0, 0, 0));
  site.Host(unknown());
  EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc.get(), &bounds, nullptr,
                       nullptr, 0),
            S_OK);
  EXPECT_EQ(view->Draw(DVASPECT_ICON, -1, nullptr, nullptr, nullptr, dc.get(), &bounds, nullptr,
                       nullptr, 0),
            DV_E_DVASPECT);
}

}  // namespace
}  // namespace qrn::test
