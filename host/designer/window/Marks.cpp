#include "host/designer/window/Marks.h"

#include <stdexcept>

#include "com/Handles.h"
#include "host/runner/WindowClass.h"

namespace qrn::designer {
namespace {

constexpr wchar_t kMarksClass[] = L"QrnDesignMarks";
constexpr int kNumberMargin = 3;

struct LookRow {
  int fill;  // a colour of the system's
  int frame;
};
// By MarkKind.
constexpr LookRow kLooks[] = {
    {COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT}, {COLOR_WINDOW, COLOR_WINDOWTEXT},
    {COLOR_GRAYTEXT, COLOR_GRAYTEXT},       {COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT},
    {COLOR_WINDOW, COLOR_HIGHLIGHT},
};

const LookRow& LookOf(MarkKind kind) { return kLooks[static_cast<size_t>(kind)]; }

bool IsNumber(MarkKind kind) { return kind == MarkKind::Number || kind == MarkKind::TakenNumber; }

// An outline leaves its middle to the form.
com::Region RegionOf(const Mark& mark) {
  com::Region region(CreateRectRgnIndirect(&mark.place));
  RECT inner = mark.place;
  InflateRect(&inner, -1, -1);
  if (mark.kind != MarkKind::Outline || IsRectEmpty(&inner)) return region;
  const com::Region hole(CreateRectRgnIndirect(&inner));
  CombineRgn(region.get(), region.get(), hole.get(), RGN_DIFF);
  return region;
}

void Draw(HDC dc, const Mark& mark) {
  const LookRow& look = LookOf(mark.kind);
  FillRect(dc, &mark.place, GetSysColorBrush(look.fill));
  FrameRect(dc, &mark.place, GetSysColorBrush(look.frame));
  if (!IsNumber(mark.kind)) return;
  RECT place = mark.place;
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, GetSysColor(look.frame));
  DrawTextW(dc, mark.text.c_str(), -1, &place, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

}  // namespace

Marks::Marks(HWND over, HFONT font) : font_(font) {
  host::RegisterWindowClass(kMarksClass, &Marks::Procedure);
  constexpr int kFarEdge = 16384;  // what the form never reaches
  window_ = CreateWindowExW(0, kMarksClass, L"", WS_CHILD | WS_CLIPSIBLINGS, 0, 0, kFarEdge,
                            kFarEdge, over, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (!window_) throw std::runtime_error("the designer's marks cannot be made");
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  Raise();
}

Marks::~Marks() {
  if (!window_) return;
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  DestroyWindow(window_);
}

void Marks::Raise() noexcept {
  SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void Marks::Show(std::vector<Mark> marks) {
  if (marks == marks_) return;
  marks_ = std::move(marks);
  com::Region all(CreateRectRgn(0, 0, 0, 0));
  for (const Mark& mark : marks_) {
    CombineRgn(all.get(), all.get(), RegionOf(mark).get(), RGN_OR);
  }
  // The window has the region from here on.
  if (SetWindowRgn(window_, all.get(), TRUE)) static_cast<void>(all.release());
  ShowWindow(window_, marks_.empty() ? SW_HIDE : SW_SHOWNA);
  InvalidateRect(window_, nullptr, FALSE);
}

SIZE Marks::SizeOf(const std::wstring& text) const {
  const com::WindowDc dc(window_);
  const com::Selected font(dc.get(), font_);
  SIZE size{};
  GetTextExtentPoint32W(dc.get(), text.c_str(), static_cast<int>(text.size()), &size);
  return {size.cx + 2 * kNumberMargin, size.cy + 2};
}

void Marks::Paint() {
  const com::Paint paint(window_);
  const com::Selected font(paint.dc(), font_);
  for (const Mark& mark : marks_) Draw(paint.dc(), mark);
}

LRESULT CALLBACK Marks::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<Marks*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == WM_PAINT && self) return self->Paint(), 0;
  if (message == WM_ERASEBKGND) return 1;
  if (message == WM_NCHITTEST) return HTTRANSPARENT;
  // It goes with the window that it lies over.
  if (message == WM_NCDESTROY && self) self->window_ = nullptr;
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace qrn::designer
