// The list of the form's objects over the properties: name and class of each.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "host/designer/model/Design.h"

namespace qrn::designer {

class ObjectBox {
 public:
  void Make(HWND parent, int id, HFONT font);
  HWND window() const noexcept { return window_; }

  // Lists what is on the form, the form first, and shows what is selected; of several only how many
  // they are.
  void Show(const Design& design, Language language);
  // The one that the user chose; 0 if none.
  ControlId Chosen() const noexcept;

 private:
  struct Line {
    ControlId id;
    std::string text;
    bool operator==(const Line&) const = default;
  };
  static std::vector<Line> LinesOf(const Design& design);

  HWND window_ = nullptr;
  std::vector<Line> lines_;
};

}  // namespace qrn::designer
