#include "tests/designer/panes/PaneHost.h"

#include "com/Text.h"
#include "com/WindowText.h"
#include "host/designer/panes/LiveOffers.h"
#include "host/form/KeyNames.h"
#include "host/user/UserInput.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

constexpr int kWidth = 320;
constexpr int kHeight = 420;
// How long nothing must come until the windows are taken to have all that was sent.
constexpr DWORD kQuiet = 40;

HWND MakeFrame() {
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  kind.lpfnWndProc = DefWindowProcW;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  kind.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
  kind.lpszClassName = L"QrnPaneHost";
  RegisterClassExW(&kind);
  return CreateWindowExW(0, L"QrnPaneHost", L"panes", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 40, 40,
                         kWidth + 20, kHeight + 40, nullptr, nullptr, kind.hInstance, nullptr);
}

}  // namespace

PaneHost::PaneHost(const std::string& controls, const std::string& code)
    : frame_(MakeFrame()), design_(Designed(FormWith(controls, code))) {
  PutFolder("");
  design_->Observe([this](const designer::ChangeReport& report) {
    if (pane_) pane_->OnChange(report);
  });
}

PaneHost::~PaneHost() {
  pane_.reset();
  DestroyWindow(frame_);
  Pump();
}

HFONT PaneHost::Font() const {
  static HFONT font = CreateFontW(-12, 0, 0, 0, FW_NORMAL, 0, 0, 0, SHIFTJIS_CHARSET, 0, 0, 0, 0,
                                  L"ＭＳ Ｐゴシック");
  return font;
}

void PaneHost::Tell(const designer::Refusal& refusal) {
  if (refusal) Tell(refusal->In(language()));
}

bool PaneHost::HasPages(designer::ControlId control) const {
  return design_->At(control).Is("LIB", "Box");
}

void PaneHost::ShowPages(designer::ControlId control) {
  Tell("pages of " + design_->Name(control));
}

void PaneHost::Hold(std::unique_ptr<designer::Pane> pane) {
  pane_ = std::move(pane);
  SetWindowPos(pane_->Window(), nullptr, 0, 0, kWidth, kHeight, SWP_NOZORDER | SWP_SHOWWINDOW);
  ShowWindow(frame_, SW_SHOW);
  SetForegroundWindow(frame_);
  Pump();
}

void PaneHost::Select(const std::vector<std::string>& names) {
  designer::Ids ids;
  for (const std::string& name : names) ids.push_back(IdOf(*design_, name));
  design_->Select(ids);
  Pump();
}

void PaneHost::PutFolder(const std::string& folder) {
  offers_ = std::make_unique<designer::LiveOffers>(*design_, folder);
}

void PaneHost::Pump() {
  MSG message{};
  do {
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      if (pane_ && pane_->PreTranslate(message)) continue;
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  } while (MsgWaitForMultipleObjects(0, nullptr, FALSE, kQuiet, QS_ALLINPUT) == WAIT_OBJECT_0);
}

void PaneHost::Key(const char* chord) {
  host::PressKey(*form::KeyChordOf(chord));
  Pump();
}

void PaneHost::Type(const std::string& text) {
  host::TypeText(com::Wide(text));
  Pump();
}

void PaneHost::Click(POINT onScreen, bool twice) {
  host::ClickKind kind;
  kind.twice = twice;
  host::ClickMouse(onScreen, kind);
  Pump();
}

HWND PaneHost::Child(int id) const { return GetDlgItem(pane_->Window(), id); }

std::string PaneHost::Text(int id) const { return com::Utf8(com::TextOfWindow(Child(id))); }

std::string PaneHost::Saved() const { return Actions::Saved(*design_); }

}  // namespace qrn::test
