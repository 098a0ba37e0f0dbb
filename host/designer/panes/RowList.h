// Names and values in two columns, a row a property: the system's list view, which keeps its place
// while rows change.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace qrn::designer {

struct ShownRow {
  std::string name;  // UTF-8, as the value
  std::string value;
  bool operator==(const ShownRow&) const = default;
};

class RowList {
 public:
  // `moved` is called when rows lie elsewhere in the window: scrolled, or another size.
  void Make(HWND parent, int id, HFONT font, std::function<void()> moved);
  HWND window() const noexcept { return window_; }

  // Rows with the same names keep their places, and what says the same is not drawn anew.
  void Show(std::vector<ShownRow> rows);

  // Chooses a row and brings it into view.
  void Choose(size_t row) noexcept;
  // Where a row's value stands, in pixels of the parent; empty while it is scrolled out of view.
  RECT ValuePlace(size_t row) const noexcept;
  // Where a row stands on the screen, once it is scrolled into view.
  RECT ShownPlace(size_t row) const noexcept;
  // Rows that fit in the window.
  size_t PageSize() const noexcept;
  void FitColumns() noexcept;

 private:
  static LRESULT CALLBACK Watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                UINT_PTR id, DWORD_PTR list);
  void Fill();
  void SetCell(size_t row, int column, const std::string& text) noexcept;

  HWND window_ = nullptr;
  std::vector<ShownRow> rows_;
  std::function<void()> moved_;
};

}  // namespace qrn::designer
