#include "host/designer/window/DesignWindow.h"

// clang-format off
#include <commctrl.h>
// clang-format on

#include <algorithm>
#include <stdexcept>

#include "host/container/Counted.h"
#include "host/container/Text.h"
#include "host/designer/document/SafeSave.h"
#include "host/designer/model/Places.h"
#include "host/designer/window/FileDialogs.h"
#include "host/designer/window/WindowTexts.h"
#include "host/runner/WindowClass.h"

namespace qrn::designer {
namespace {

using host::Utf8;
using host::Wide;

constexpr wchar_t kDesignerClass[] = L"QrnDesigner";
// Pixels of a screen with 96 an inch.
constexpr int kPropertiesWidth = 270;
constexpr int kLeastPropertiesWidth = 120;
constexpr int kLeastFormWidth = 160;
constexpr SIZE kUsualSize{1200, 840};
constexpr char kNewName[] = "Form1";

// The library that every toolbox has, found beside the program or registered.
const form::LibraryReference kOwnLibrary{"{0899ACE4-82FE-42E6-A344-54FA80006796}", 1, 0,
                                         "qrnbt350.ocx", 0};

com::GdiFont MessageFont() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  return com::GdiFont(CreateFontIndirectW(&metrics.lfMessageFont));
}

// What a new window takes of the screen: its usual size, or most of a small one.
SIZE NewSize() {
  RECT room{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &room, 0);
  return {std::min<LONG>(Scaled(kUsualSize.cx), (room.right - room.left) * 19 / 20),
          std::min<LONG>(Scaled(kUsualSize.cy), (room.bottom - room.top) * 19 / 20)};
}

std::string FolderHere() {
  std::wstring folder(32768, L'\0');
  folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  return Utf8(folder);
}

std::string WholePath(const std::string& path) {
  std::wstring whole(32768, L'\0');
  whole.resize(GetFullPathNameW(Wide(path).c_str(), static_cast<DWORD>(whole.size()), whole.data(),
                                nullptr));
  return Utf8(whole);
}

std::wstring FolderOf(const std::string& path) {
  return Wide(path.substr(0, path.find_last_of("\\/")));
}

// What the library's line in a form's head says; nothing if it is none.
std::vector<form::LibraryReference> LibrariesOf(const FormDocument& document) {
  std::string head;
  document.head()->Write(&head);
  form::Mistakes passedOver;
  return form::ReadFormFile(head, passedOver).libraries;
}

}  // namespace

DesignWindow::DesignWindow(host::ControlClasses& classes, DesignWindowOptions options)
    : classes_(classes),
      source_(classes),
      options_(options),
      font_(MessageFont()),
      contextMenu_(MakeContextMenu(options.language)),
      globalKeys_(MakeGlobalKeys()),
      formKeys_(MakeFormKeys()),
      propertiesWidth_(Scaled(kPropertiesWidth)) {
  MakeWindow();
}

DesignWindow::~DesignWindow() {
  if (design_) design_->Observe({});
  code_.reset();
  properties_.reset();
  splitter_.reset();
  surface_.reset();
  toolbox_.reset();
  if (!window_) return;
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  DestroyWindow(window_);
}

void DesignWindow::MakeWindow() {
  INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX), ICC_BAR_CLASSES};
  InitCommonControlsEx(&controls);
  host::RegisterWindowClass(kDesignerClass, &DesignWindow::Procedure,
                            GetSysColorBrush(COLOR_BTNFACE));
  com::Menu bar = MakeMenuBar(options_.language);
  const SIZE size = NewSize();
  window_ = CreateWindowExW(0, kDesignerClass, L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                            CW_USEDEFAULT, CW_USEDEFAULT, size.cx, size.cy, nullptr, bar.get(),
                            GetModuleHandleW(nullptr), nullptr);
  if (!window_) throw std::runtime_error("the designer's window cannot be made");
  static_cast<void>(bar.release());  // the window's from here on
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  status_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0,
                            0, 0, window_, nullptr, GetModuleHandleW(nullptr), nullptr);
  SendMessageW(status_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
  ToolboxOwner& tools = *this;
  SurfaceOwner& forms = *this;
  toolbox_ = std::make_unique<Toolbox>(window_, tools, options_.language);
  surface_ = std::make_unique<Surface>(window_, forms, classes_, font_.get());
  splitter_ = std::make_unique<Splitter>(window_, [this](int left) {
    RECT room{};
    GetClientRect(window_, &room);
    PutPropertiesWidth(room.right - left - Splitter::Width());
  });
}

void DesignWindow::PutPropertiesWidth(int width) {
  RECT room{};
  GetClientRect(window_, &room);
  const int most = room.right - toolbox_->Width() - Splitter::Width() - Scaled(kLeastFormWidth);
  propertiesWidth_ = std::max(std::min(width, most), Scaled(kLeastPropertiesWidth));
  Layout();
}

void DesignWindow::Layout() {
  RECT room{};
  RECT bottom{};
  GetClientRect(window_, &room);
  SendMessageW(status_, WM_SIZE, 0, 0);
  GetWindowRect(status_, &bottom);
  room.bottom -= bottom.bottom - bottom.top;
  const int left = toolbox_->Width();
  const int bar = std::max<int>(left, room.right - propertiesWidth_ - Splitter::Width());
  const int right = bar + Splitter::Width();
  const auto put = [&](HWND window, int from, int to, bool shown) {
    SetWindowPos(window, nullptr, from, 0, to - from, room.bottom, SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(window, shown ? SW_SHOWNA : SW_HIDE);
  };
  toolbox_->PutAt({0, 0, left, room.bottom});
  put(surface_->Window(), left, bar, !codeIsShown_);
  put(code_->Window(), left, bar, codeIsShown_);
  put(splitter_->Window(), bar, right, true);
  put(properties_->Window(), right, room.right, true);
}

void DesignWindow::MakePanes() {
  if (code_) return;
  Workplace& place = *this;
  properties_ = std::make_unique<PropertyPane>(place, window_);
  code_ = MakeCodePane(place, window_);
}

std::wstring DesignWindow::FileName() const {
  if (isNew_) return Said(WindowText::TitleNew, options_.language);
  return Wide(path_.substr(path_.find_last_of("\\/") + 1));
}

void DesignWindow::ShowTitle() {
  const std::wstring mark = design_->IsDirty() ? L"*" : L"";
  SetWindowTextW(window_, Said(WindowText::Title, options_.language, {mark + FileName()}).c_str());
}

std::wstring DesignWindow::Status() const {
  if (clickingTabOrder_) return Said(WindowText::TabOrderHelp, options_.language);
  const Ids& ids = design_->selection();
  if (ids.size() > 1) {
    return Said(WindowText::SeveralSelected, options_.language, {std::to_wstring(ids.size())});
  }
  const ControlId id = ids.empty() ? design_->form() : ids.front();
  const Place place = PlaceOf(*design_, id);
  const std::wstring name = Wide(design_->Name(id));
  const auto text = [](int32_t twips) { return std::to_wstring(twips); };
  if (id == design_->form()) {
    return Said(WindowText::FormSize, options_.language,
                {name, text(place.width), text(place.height)});
  }
  return Said(WindowText::ControlPlace, options_.language,
              {name, text(place.left), text(place.top), text(place.width), text(place.height)});
}

void DesignWindow::ShowStatus() {
  SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(Status().c_str()));
}

// A library that cannot be had leaves boxes on the form and no tools.
void DesignWindow::AddLibraries(const FormDocument& document) {
  std::vector<form::LibraryReference> libraries = LibrariesOf(document);
  libraries.push_back(kOwnLibrary);
  for (const form::LibraryReference& library : libraries) {
    try {
      classes_.Add(library, FolderOf(path_));
    } catch (const host::ClassNotFound&) {
      continue;
    }
  }
  toolbox_->Fill(classes_, source_);
}

void DesignWindow::Open(const std::string& path) {
  const std::string whole =
      path.empty() ? FolderHere() + "\\" + kNewName + ".frm" : WholePath(path);
  StoredForm stored = path.empty() ? NewForm(kNewName) : OpenStoredForm(whole);
  isNew_ = path.empty();
  TakeForm(std::move(stored), whole);
}

void DesignWindow::TakeForm(StoredForm stored, const std::string& path) {
  path_ = path;
  AddLibraries(*stored.document);
  auto design = std::make_unique<Design>(std::move(stored), source_);
  design->Select({design->form()});
  surface_->Open(*design, path_);
  if (design_) design_->Observe({});
  design_ = std::move(design);
  // What a relative dictionary counts from: where the form's controls and F5 look for it.
  offers_ = std::make_unique<LiveOffers>(*design_, std::string());
  MakePanes();
  design_->Observe([this](const ChangeReport& report) { OnDesignChanged(report); });
  for (Pane* pane : Panes()) {
    pane->OnOpened();
  }
  OnViewForm();
  ShowTitle();
  ShowStatus();
}

void DesignWindow::OnDesignChanged(const ChangeReport& report) {
  surface_->OnChange(report);
  for (Pane* pane : Panes()) {
    pane->OnChange(report);
  }
  ShowTitle();
  ShowStatus();
}

int DesignWindow::Box(const std::wstring& text, UINT style) const {
  return MessageBoxW(window_, text.c_str(),
                     Said(WindowText::Title, options_.language, {FileName()}).c_str(), style);
}

void DesignWindow::Tell(const Refusal& refusal) {
  if (refusal) Tell(refusal->In(options_.language));
}

void DesignWindow::Tell(const std::string& text) {
  if (!text.empty()) Box(Wide(text), MB_OK | MB_ICONEXCLAMATION);
}

void DesignWindow::OnCannotShow(const std::string& reason) {
  Box(Said(WindowText::CannotShow, options_.language, {Wide(reason)}), MB_OK | MB_ICONEXCLAMATION);
}

bool DesignWindow::Settle() {
  for (Pane* pane : Panes()) {
    if (!pane->Settle()) return false;
  }
  return true;
}

bool DesignWindow::SaveTo(const std::string& path) {
  const std::string reason = design_->Save(path);
  if (!reason.empty()) {
    Box(Said(WindowText::CannotSave, options_.language, {Wide(reason)}), MB_OK | MB_ICONERROR);
    return false;
  }
  path_ = path;
  isNew_ = false;
  surface_->MoveTo(path_);
  ShowTitle();
  return true;
}

bool DesignWindow::AskToLeave() {
  if (!Settle()) return false;
  if (!design_->IsDirty()) return true;
  const int answer = Box(Said(WindowText::AskSave, options_.language, {FileName()}),
                         MB_YESNOCANCEL | MB_ICONQUESTION);
  if (answer == IDYES) OnSave();
  return answer == IDNO || (answer == IDYES && !design_->IsDirty());
}

void DesignWindow::Show() {
  ShowWindow(window_, SW_SHOWDEFAULT);
  SetForegroundWindow(window_);
  UpdateWindow(window_);
}

void DesignWindow::Take(MSG& message) {
  if (PreTranslate(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void DesignWindow::Run() {
  const host::Counted loop(loops_);
  Show();
  MSG message{};
  while (!closed_ && GetMessageW(&message, nullptr, 0, 0) > 0) Take(message);
  ShowWindow(window_, SW_HIDE);
}

void DesignWindow::Quit() {
  if (running_) running_->End();
  closed_ = true;
  PostMessageW(window_, WM_NULL, 0, 0);
}

bool DesignWindow::IsOnForm(HWND focus) const noexcept {
  return focus == surface_->Window() || focus == toolbox_->Window() || focus == window_;
}

bool DesignWindow::PreTranslate(MSG& message) {
  for (Pane* pane : Panes()) {
    if (pane->PreTranslate(message)) return true;
  }
  if (GetAncestor(message.hwnd, GA_ROOT) != window_) return false;
  if (surface_->PreTranslate(message) || toolbox_->PreTranslate(message)) return true;
  if (TranslateAcceleratorW(window_, globalKeys_.get(), &message)) return true;
  return IsOnForm(message.hwnd) && !clickingTabOrder_ &&
         TranslateAcceleratorW(window_, formKeys_.get(), &message);
}

struct DesignWindow::MessageRow {
  UINT message;
  void (*run)(DesignWindow& self, WPARAM wParam, LPARAM lParam);
};

const DesignWindow::MessageRow DesignWindow::kMessages[] = {
    {WM_SIZE, [](DesignWindow& self, WPARAM, LPARAM) { self.Layout(); }},
    {WM_CLOSE, [](DesignWindow& self, WPARAM, LPARAM) { self.OnExit(); }},
    {WM_INITMENUPOPUP, [](DesignWindow& self, WPARAM menu,
                          LPARAM) { self.PrepareMenu(reinterpret_cast<HMENU>(menu)); }},
    {WM_COMMAND, [](DesignWindow& self, WPARAM wParam, LPARAM) { self.OnCommand(LOWORD(wParam)); }},
    {WM_SETFOCUS,
     [](DesignWindow& self, WPARAM, LPARAM) {
       const bool has = IsChild(self.window_, self.lastFocus_) && IsWindowVisible(self.lastFocus_);
       SetFocus(has ? self.lastFocus_ : self.surface_->Window());
     }},
};

LRESULT DesignWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_ACTIVATE && LOWORD(wParam) == WA_INACTIVE) lastFocus_ = GetFocus();
  for (const MessageRow& row : kMessages) {
    if (row.message != message) continue;
    const HRESULT code = host::Guard([&] { return row.run(*this, wParam, lParam), S_OK; });
    if (code == E_OUTOFMEMORY) MessageBeep(MB_ICONERROR);
    return 0;
  }
  return DefWindowProcW(window_, message, wParam, lParam);
}

LRESULT CALLBACK DesignWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<DesignWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!self || !self->design_) return DefWindowProcW(window, message, wParam, lParam);
  return self->OnMessage(message, wParam, lParam);
}

}  // namespace qrn::designer
