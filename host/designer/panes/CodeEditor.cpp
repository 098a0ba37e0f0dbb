#include "host/designer/panes/CodeEditor.h"

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <algorithm>
#include <utility>

#include "com/Text.h"
#include "com/WindowText.h"
#include "host/designer/panes/PaneWindow.h"

namespace qrn::designer {
namespace {

constexpr UINT_PTR kWatchId = 1;
constexpr double kPoints = 10;
// A quarter of a character each.
constexpr UINT kTabUnits = 4 * kTabStop;
constexpr int kLeftSpare = 4;

// After these the caret or the view may be elsewhere.
constexpr UINT kMoving[] = {
    WM_KEYDOWN,    WM_CHAR,   WM_VSCROLL,     WM_MOUSEWHEEL, WM_LBUTTONDOWN, WM_LBUTTONUP,
    WM_MOUSEMOVE,  WM_TIMER,  WM_SIZE,        WM_PASTE,      WM_CUT,         WM_CLEAR,
    EM_REPLACESEL, EM_SETSEL, EM_SCROLLCARET, EM_LINESCROLL, WM_IME_CHAR};

bool IsMoving(UINT message) {
  return std::find(std::begin(kMoving), std::end(kMoving), message) != std::end(kMoving);
}

const wchar_t* WideOf(const std::u16string& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

}  // namespace

void CodeEditor::Make(HWND parent, int id, std::function<void()> moved,
                      std::function<void()> undo) {
  moved_ = std::move(moved);
  undo_ = std::move(undo);
  com::FontDescription look;
  look.name = L"ＭＳ ゴシック";
  look.points = kPoints;
  font_ = com::FontInUse(com::MakeFont(look));
  window_ = MakeControl(parent, L"Edit",
                        WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_AUTOHSCROLL |
                            ES_AUTOVSCROLL | ES_WANTRETURN | ES_NOHIDESEL,
                        id, font_.get());
  SendMessageW(window_, EM_SETLIMITTEXT, 0, 0);
  SendMessageW(window_, EM_SETMARGINS, EC_LEFTMARGIN, MAKELPARAM(Scaled(kLeftSpare), 0));
  const UINT stop = kTabUnits;
  SendMessageW(window_, EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&stop));
  SetWindowSubclass(window_, &CodeEditor::Watch, kWatchId, reinterpret_cast<DWORD_PTR>(this));
}

LRESULT CALLBACK CodeEditor::Watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR, DWORD_PTR self) {
  auto& editor = *reinterpret_cast<CodeEditor*>(self);
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, &CodeEditor::Watch, kWatchId);
  if (message == WM_UNDO || message == EM_UNDO) return editor.undo_(), TRUE;
  const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
  if (IsMoving(message)) editor.moved_();
  return result;
}

std::string CodeEditor::Code() const {
  std::string code = com::Utf8(com::TextOfWindow(window_));
  std::erase(code, '\r');
  return code;
}

void CodeEditor::PutCode(const std::string& code) {
  const std::wstring wide = com::Wide(code);
  std::u16string text;
  for (const char16_t unit : com::AsUtf16(wide)) {
    if (unit == u'\n') text += u'\r';
    text += unit;
  }
  PutText(text);
}

std::u16string CodeEditor::Text() const {
  const std::wstring text = com::TextOfWindow(window_);
  return std::u16string(com::AsUtf16(text));
}

void CodeEditor::Replace(const std::u16string& text) noexcept {
  SendMessageW(window_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(WideOf(text)));
}

void CodeEditor::PutText(const std::u16string& text) {
  const std::u16string stands = Text();
  if (stands == text) return;
  const TextChange change = ChangeBetween(stands, text);
  const bool filling = std::exchange(isFilling_, true);
  Select(change.at, change.at + change.count);
  Replace(change.text);
  isFilling_ = filling;
}

size_t CodeEditor::SelectionStart() const noexcept {
  DWORD start = 0;
  SendMessageW(window_, EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
  return start;
}

size_t CodeEditor::SelectionEnd() const noexcept {
  DWORD end = 0;
  SendMessageW(window_, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
  return end;
}

void CodeEditor::Select(size_t start, size_t end) noexcept {
  SendMessageW(window_, EM_SETSEL, start, static_cast<LPARAM>(end));
  SendMessageW(window_, EM_SCROLLCARET, 0, 0);
}

void CodeEditor::SelectAll() noexcept { SendMessageW(window_, EM_SETSEL, 0, -1); }

size_t CodeEditor::LineStart(int line) const noexcept {
  return static_cast<size_t>(SendMessageW(window_, EM_LINEINDEX, static_cast<WPARAM>(line), 0));
}

CaretPlace CodeEditor::Caret() const noexcept {
  const size_t at = SelectionEnd();
  const auto line = static_cast<int>(SendMessageW(window_, EM_LINEFROMCHAR, at, 0));
  return {line, static_cast<int>(at - LineStart(line))};
}

int CodeEditor::LineCount() const noexcept {
  return static_cast<int>(SendMessageW(window_, EM_GETLINECOUNT, 0, 0));
}

int CodeEditor::FirstVisibleLine() const noexcept {
  return static_cast<int>(SendMessageW(window_, EM_GETFIRSTVISIBLELINE, 0, 0));
}

int CodeEditor::Top() const noexcept {
  RECT text{};
  SendMessageW(window_, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&text));
  return text.top;
}

std::u16string CodeEditor::Line(int line) const {
  const size_t start = LineStart(line);
  const auto size = static_cast<size_t>(SendMessageW(window_, EM_LINELENGTH, start, 0));
  return Text().substr(start, size);
}

void CodeEditor::GoTo(int line) noexcept {
  const int wanted = std::clamp(line, 0, LineCount() - 1);
  RECT client{};
  GetClientRect(window_, &client);
  const int shown = std::max<int>(client.bottom / std::max(LineHeight(font_.get()), 1), 1);
  const bool inView = wanted >= FirstVisibleLine() && wanted < FirstVisibleLine() + shown;
  const size_t at = LineStart(wanted) + IndentOf(Line(wanted)).size();
  Select(at, at);
  if (!inView) {
    SendMessageW(window_, EM_LINESCROLL, 0, std::max(wanted - 1, 0) - FirstVisibleLine());
  }
}

void CodeEditor::Shift(bool back) {
  const auto first = static_cast<int>(SendMessageW(window_, EM_LINEFROMCHAR, SelectionStart(), 0));
  const size_t start = LineStart(first);
  // A line that the selection only touches with its end stays.
  const size_t last = std::max(SelectionEnd(), start + 1) - 1;
  const auto lastLine = static_cast<int>(SendMessageW(window_, EM_LINEFROMCHAR, last, 0));
  const std::u16string text = Text();
  const size_t end = lastLine + 1 < LineCount() ? LineStart(lastLine + 1) : text.size();
  const std::u16string lines = text.substr(start, end - start);
  const std::u16string shifted = back ? ShiftedLeft(lines) : ShiftedRight(lines);
  if (shifted == lines) return;
  Select(start, end);
  Replace(shifted);
  Select(start, start + shifted.size());
}

void CodeEditor::Tab(bool back) {
  const bool several = SendMessageW(window_, EM_LINEFROMCHAR, SelectionStart(), 0) !=
                       SendMessageW(window_, EM_LINEFROMCHAR, SelectionEnd(), 0);
  if (several || back) return Shift(back);
  Select(SelectionStart(), SelectionEnd());
  const size_t column = SelectionStart() - LineStart(Caret().line);
  Replace(std::u16string(BlanksToStop(column), u' '));
}

void CodeEditor::NewLine() {
  const CaretPlace caret = Caret();
  const std::u16string line = Line(caret.line);
  const std::u16string_view indent =
      IndentOf(std::u16string_view(line).substr(0, static_cast<size_t>(caret.column)));
  Replace(u"\r\n" + std::u16string(indent));
}

}  // namespace qrn::designer
