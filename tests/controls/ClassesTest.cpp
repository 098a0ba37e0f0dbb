// What holds of every visible control: its stock properties show at once, and all that it saves
// comes back, by a stream, a storage or a bag.
#include "OfficeFixture.h"
#include "PeopleForm.h"
#include "ScreenReader.h"
#include "controls/QRNBtn.h"
#include "controls/list/QRNComboBox.h"
#include "controls/list/QRNExComboBox.h"
#include "controls/list/QRNExListBox.h"
#include "controls/list/QRNListBox.h"
#include "controls/mark/QRNCheck.h"
#include "controls/mark/QRNOptBtn.h"
#include "controls/picture/QRNPic.h"
#include "controls/scroll/QRNScroll.h"
#include "grid/QRNGrid.h"
#include "platform/Utf.h"
#include "tests/ole/SavedBytes.h"
#include "tests/ole/SystemStorage.h"
#include "tests/support/PictureSamples.h"

namespace qrn::test {
namespace {

using MadeControl = Made<ole::VisibleControl>;
using MakeControl = MadeControl (*)(const wchar_t* name, bool runs);
template <class C>
constexpr MakeControl kMake = &test::Make<C, ole::VisibleControl>;

constexpr MakeControl kClasses[] = {
    kMake<CQRNEdit>,     kMake<CQRNBtn>,       kMake<CQRNCheck>,      kMake<CQRNOptBtn>,
    kMake<CQRNPic>,      kMake<CQRNHScroll>,   kMake<CQRNVScroll>,    kMake<CQRNListBox>,
    kMake<CQRNComboBox>, kMake<CQRNExListBox>, kMake<CQRNExComboBox>, kMake<CQRNGrid>};

const char* NameOf(const MadeControl& made) { return made->table().className; }
const ole::PropertyRow* PropertyOf(const MadeControl& made, int32_t id) {
  for (const ole::PropertyRow& row : made->table().properties) {
    if (row.id == id) return &row;
  }
  return nullptr;
}
bool Has(const MadeControl& made, int32_t id) { return PropertyOf(made, id) != nullptr; }

VARIANT Object(IDispatch* object) {
  VARIANT value{};
  value.vt = VT_DISPATCH;
  value.pdispVal = object;
  return value;
}
Com<IDispatch> BoldFont() {
  FONTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.lpstrName = const_cast<LPOLESTR>(L"Tahoma");
  description.cySize.int64 = 142500;
  description.sWeight = FW_BOLD;
  description.sCharset = SHIFTJIS_CHARSET;
  description.fItalic = TRUE;
  Com<IDispatch> font;
  OleCreateFontIndirect(&description, __uuidof(IFontDisp), font.putVoid());
  // Its name is that of the face the system has for it, once it was asked for.
  Bstr settled;
  com::Query<IFont>(font)->get_Name(settled.put());
  return font;
}
Com<IDispatch> IconPicture() {
  const Com<IStream> stream = StreamOf(IconSample());
  Com<IDispatch> picture;
  OleLoadPicture(stream.get(), 0, TRUE, __uuidof(IPictureDisp), picture.putVoid());
  return picture;
}

struct Classes : OfficeFixture {
  // Another value than a new control has.
  VARIANT Another(const ole::PropertyRow& row) {
    if (row.type.alias == ole::Alias::Font) return Object(font_.get());
    if (row.type.alias == ole::Alias::Picture) return Object(icon_.get());
    if (row.type.alias == ole::Alias::Color) return Long(0x112233);
    const std::string_view name = row.name;
    if (name == "Cols" || name == "Rows") return Long(5);  // room for two fixed ones
    switch (row.type.vt) {
      case VT_BSTR:
        return Text(L"値\"1\" &");
      case VT_BOOL:
      case VT_I2:
      case VT_I4:
        return row.type.vt == VT_BOOL ? Bool(true) : row.type.vt == VT_I2 ? Short(7) : Long(2);
      default:
        return Missing();
    }
  }
  // The property as text.
  static std::string Value(const MadeControl& made, const ole::PropertyRow& row) {
    const std::string name(row.name);
    return made.host->Value(std::wstring(name.begin(), name.end()).c_str());
  }
  // Puts another value into everything that is saved. A truth that is there already is denied.
  void Fill(const MadeControl& made, const MadeControl& fresh) {
    for (const ole::PersistRow& row : made->table().persisted) {
      if (row.Raw()) continue;
      const ole::PropertyRow& property = *PropertyOf(made, row.id);
      const std::string name(property.name);
      const std::wstring wide(name.begin(), name.end());
      made.host->Set(wide.c_str(), Another(property));
      if (Value(made, property) == Value(fresh, property)) {
        made.host->Set(wide.c_str(), property.type.vt == VT_BOOL ? Bool(false) : Long(0));
      }
      const bool keptByWindow = property.id == ole::stock::kText && name == "Text" &&
                                std::string_view(NameOf(made)).ends_with("ListBox");
      if (property.type.vt == VT_DISPATCH) continue;
      EXPECT_EQ(Value(made, property) == Value(fresh, property), keptByWindow)
          << NameOf(made) << "." << name;
    }
    SIZEL size{4000, 3000};
    Unknown(made, [&](auto object) { object->SetExtent(DVASPECT_CONTENT, &size); });
  }
  template <class Use>
  static void Unknown(const MadeControl& made, Use use) {
    use(com::Query<IOleObject>(&made->Outer()));
  }

  static FileBytes Saved(const MadeControl& made) { return test::Saved(&made->Outer()); }
  static HRESULT Load(const MadeControl& made, const FileBytes& bytes) {
    return LoadFrom(&made->Outer(), bytes);
  }
  static void ThroughBag(const MadeControl& from, const MadeControl& to) {
    Bag bag;
    EXPECT_EQ(com::Query<IPersistPropertyBag>(&from->Outer())->Save(&bag, FALSE, TRUE), S_OK);
    EXPECT_EQ(com::Query<IPersistPropertyBag>(&to->Outer())->Load(&bag, nullptr), S_OK);
  }

  // Of everything but fonts, pictures and what is none of the state.
  static void ExpectSameValues(const MadeControl& one, const MadeControl& other) {
    for (const ole::PersistRow& row : one->table().persisted) {
      const ole::PropertyRow* property = PropertyOf(one, row.id);
      if (!property || property->type.vt == VT_DISPATCH) continue;
      EXPECT_EQ(Value(one, *property), Value(other, *property)) << property->name;
    }
  }

  Com<IDispatch> font_ = BoldFont();
  Com<IDispatch> icon_ = IconPicture();
};

TEST_F(Classes, EverythingSavedComesBack) {
  for (const MakeControl make : kClasses) {
    const MadeControl fresh = make(L"fresh", false);
    const MadeControl full = make(L"full", false);
    SCOPED_TRACE(NameOf(full));
    Fill(full, fresh);
    const FileBytes saved = Saved(full);
    const MadeControl streamed = make(L"streamed", false);
    EXPECT_EQ(Load(streamed, saved), S_OK);
    EXPECT_EQ(Saved(streamed), saved);
    const MadeControl stored = make(L"stored", false);
    const SystemStorage storage(false);
    EXPECT_EQ(com::Query<IPersistStorage>(&full->Outer())->Save(storage.get(), TRUE), S_OK);
    EXPECT_EQ(com::Query<IPersistStorage>(&stored->Outer())->Load(storage.get()), S_OK);
    EXPECT_EQ(Saved(stored), saved);
    const MadeControl written = make(L"written", false);
    ThroughBag(full, written);
    ExpectSameValues(written, full);
    EXPECT_EQ(Saved(written), saved);
    // Values that are those of a new control come back over others too, null texts among them.
    EXPECT_EQ(Load(streamed, Saved(fresh)), S_OK);
    EXPECT_EQ(Saved(streamed), Saved(fresh));
    if (const auto* list = dynamic_cast<const ListControl*>(streamed.control)) {
      EXPECT_TRUE(list->DbListIndex.null());
    }
    ThroughBag(fresh, written);
    ExpectSameValues(written, fresh);
  }
}

TEST_F(Classes, StockPropertiesShowAtOnce) {
  for (const MakeControl make : kClasses) {
    const MadeControl made = make(L"one", true);
    SCOPED_TRACE(NameOf(made));
    ASSERT_EQ(made.host->Show(), S_OK);
    const HWND window = made->contained() ? made->contained() : made->hwnd();
    for (const wchar_t* color : {L"BackColor", L"ForeColor"}) {
      if (!Has(made, color == std::wstring_view(L"BackColor") ? ole::stock::kBackColor
                                                              : ole::stock::kForeColor)) {
        continue;
      }
      ValidateRect(window, nullptr);
      made.host->Set(color, Long(0x112233));
      EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE)) << "it is to be drawn anew";
    }
    if (made->contained() && Has(made, ole::stock::kForeColor)) {
      const WindowDc dc(window);
      made.host->Set(L"BackColor", Long(0x445566));
      const LRESULT brush =
          SendMessageW(made->hwnd(), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc.get()),
                       reinterpret_cast<LPARAM>(window));
      EXPECT_EQ(brush, reinterpret_cast<LRESULT>(made->BackgroundBrush()));
      LOGBRUSH drawn{};
      GetObjectW(made->BackgroundBrush(), sizeof drawn, &drawn);
      EXPECT_EQ(drawn.lbColor, 0x445566u);
      EXPECT_EQ(GetTextColor(dc.get()), 0x112233u);
      EXPECT_EQ(GetBkColor(dc.get()), 0x445566u);
    }
    if (made->contained() && Has(made, ole::stock::kFont)) {
      made.host->Set(L"Font", Object(font_.get()));
      LOGFONTW face{};
      GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof face,
                 &face);
      EXPECT_EQ(face.lfWeight, FW_BOLD);
    }
    if (Has(made, ole::stock::kTabStop)) {
      for (const bool stops : {false, true}) {
        made.host->Set(L"TabStop", Bool(stops));
        EXPECT_EQ((GetWindowLongW(made->hwnd(), GWL_STYLE) & WS_TABSTOP) != 0, stops);
      }
      EXPECT_TRUE(IsWindowVisible(made->hwnd())) << "the other styles stay";
    }
    made.host->Set(L"Enabled", Bool(false));
    EXPECT_FALSE(IsWindowEnabled(window));
    EXPECT_FALSE(IsWindowEnabled(made->hwnd()));
    made.host->Set(L"Enabled", Bool(true));
    EXPECT_TRUE(IsWindowEnabled(window));
  }
}

// By its role, under the label before it; what has a caption is called so.
TEST_F(Classes, TellScriptsWhatTheyAre) {
  const std::map<std::string_view, int32_t> kRoles = {
      {"QRNEdit", ROLE_SYSTEM_TEXT},           {"QRNBtn", ROLE_SYSTEM_PUSHBUTTON},
      {"QRNCheck", ROLE_SYSTEM_CHECKBUTTON},   {"QRNOptBtn", ROLE_SYSTEM_RADIOBUTTON},
      {"QRNPic", ROLE_SYSTEM_GRAPHIC},         {"QRNHScroll", ROLE_SYSTEM_SCROLLBAR},
      {"QRNVScroll", ROLE_SYSTEM_SCROLLBAR},   {"QRNListBox", ROLE_SYSTEM_LIST},
      {"QRNComboBox", ROLE_SYSTEM_COMBOBOX},   {"QRNExListBox", ROLE_SYSTEM_LIST},
      {"QRNExComboBox", ROLE_SYSTEM_COMBOBOX}, {"QRNGrid", ROLE_SYSTEM_TABLE}};
  for (const MakeControl make : kClasses) {
    const MadeControl made = make(L"one", true);
    SCOPED_TRACE(NameOf(made));
    const bool captioned = Has(made, ole::stock::kCaption);
    if (captioned) made.host->Set(L"Caption", Text(L"Own"));
    const Window form;
    made.host->site.form = form.get();
    ASSERT_EQ(made.host->Show(), S_OK);
    const Label label(L"Before", made->hwnd(), form.get());
    const ScriptReader reader(made->contained() ? made->contained() : made->hwnd());
    EXPECT_EQ(reader.Ask(L"accName"), captioned ? "ok BSTR:Own" : "ok BSTR:Before");
    EXPECT_EQ(reader.Ask(L"accRole"), "ok I4:" + std::to_string(kRoles.at(NameOf(made))));
  }
}

}  // namespace
}  // namespace qrn::test
