// A form while it is designed: which messages it keeps from its controls.
#include <gtest/gtest.h>
#include <windows.h>

#include "host/runner/Form.h"
#include "host/runner/design/Designer.h"
#include "tests/qrnform/FormRun.h"

namespace qrn::tests {
namespace {

struct MessageCase {
  const char* name;
  UINT message;
  WPARAM wParam;
  bool taken;  // kept from the window that it was sent to
};

constexpr MessageCase kMessages[] = {
    {"a key", WM_KEYDOWN, VK_SPACE, true},
    {"a key let go", WM_KEYUP, VK_SPACE, true},
    {"a character", WM_CHAR, 'x', true},
    {"the key of the pages", WM_KEYDOWN, VK_F4, true},
    {"a caption's key", WM_SYSCHAR, 's', true},
    {"a click", WM_LBUTTONDOWN, MK_LBUTTON, true},
    {"its end", WM_LBUTTONUP, 0, true},
    {"a wheel", WM_MOUSEWHEEL, 0, true},
    {"a click on a control's border", WM_NCLBUTTONDOWN, HTBORDER, true},
    {"a painting", WM_PAINT, 0, false},
    {"a timer", WM_TIMER, 1, false},
};

TEST(DesignedForm, KeepsKeysAndMouseFromItsControls) {
  OpenForms forms({FormText(Piece("QRNBTRLib.QRNBtn btnGo", 0), "")}, true);
  const host::FormControl* button = forms.first().Find(L"btnGo");
  ASSERT_NE(button, nullptr);
  for (const MessageCase& given : kMessages) {
    MSG message{button->Window(), given.message, given.wParam, 0, 0, {}};
    EXPECT_EQ(forms.first().PreTranslate(message), given.taken) << given.name;
  }
}

// The window's own: title bar and menu stay the user's.
TEST(DesignedForm, KeepsItsWindowUsable) {
  OpenForms forms({FormText("", "")}, true);
  host::Form& form = forms.first();
  MSG caption{form.Window(), WM_NCLBUTTONDOWN, HTCAPTION, 0, 0, {}};
  EXPECT_FALSE(form.PreTranslate(caption));
  MSG close{form.Window(), WM_SYSKEYDOWN, VK_F4, 1 << 29, 0, {}};
  EXPECT_TRUE(form.PreTranslate(close));
  MSG command{};
  ASSERT_TRUE(PeekMessageW(&command, form.Window(), WM_SYSCOMMAND, WM_SYSCOMMAND, PM_REMOVE));
  EXPECT_EQ(command.wParam & 0xFFF0, static_cast<WPARAM>(SC_CLOSE));
}

TEST(RunningForm, LetsItsControlsHaveTheMouse) {
  OpenForms forms({FormText(Piece("VB.TextBox txtOne", 0), "")}, false);
  MSG click{forms.first().Find(L"txtOne")->Window(), WM_LBUTTONDOWN, MK_LBUTTON, 0, 0, {}};
  EXPECT_FALSE(forms.first().PreTranslate(click));
}

struct KeyCase {
  const char* key;
  bool isDesigners;
};

constexpr KeyCase kKeys[] = {
    {"F4", true},   {"Shift+F4", true}, {"Alt+F4", true}, {"Alt+Space", true}, {"F10", true},
    {"Tab", false}, {"Space", false},   {"Alt+S", false}, {"Enter", false},    {"Ctrl+A", false}};

TEST(DesignerKeys, AreThoseOfThePagesAndTheWindow) {
  for (const KeyCase& given : kKeys) {
    EXPECT_EQ(host::IsDesignerKey(*form::KeyChordOf(given.key)), given.isDesigners) << given.key;
  }
}

}  // namespace
}  // namespace qrn::tests
