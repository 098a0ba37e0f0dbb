#include "host/designer/panes/ObjectBox.h"

#include <algorithm>

#include "com/Text.h"
#include "host/designer/model/DatabaseClass.h"
#include "host/designer/panes/PaneTexts.h"
#include "host/designer/panes/PaneWindow.h"

namespace qrn::designer {
namespace {

constexpr int kObjectsHeight = 320;

std::string NameOf(const Design& design, ControlId id) {
  const auto index = id == design.form() ? std::nullopt : design.Index(id);
  return design.Name(id) + (index ? "(" + std::to_string(*index) + ")" : std::string());
}

}  // namespace

void ObjectBox::Make(HWND parent, int id, HFONT font) {
  window_ = MakeControl(parent, L"ComboBox", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, id, font);
  PlaceWindow(window_, {0, 0, 100, Scaled(kObjectsHeight)});
}

std::vector<ObjectBox::Line> ObjectBox::LinesOf(const Design& design) {
  std::vector<Line> lines;
  for (const ControlId id : design.All()) {
    lines.push_back({id, NameOf(design, id) + "  " + UsersName(design.At(id).className())});
  }
  std::stable_sort(lines.begin(), lines.end(),
                   [](const Line& one, const Line& other) { return one.text < other.text; });
  lines.insert(lines.begin(), {design.form(), design.Name(design.form()) + "  Form"});
  return lines;
}

void ObjectBox::Show(const Design& design, Language language) {
  std::vector<Line> lines = LinesOf(design);
  const Ids& selected = design.selection();
  if (selected.size() > 1) {
    lines.insert(lines.begin(),
                 {0, Said(PaneText::NotOne, language, {std::to_string(selected.size())})});
  }
  if (lines != lines_) {
    lines_ = std::move(lines);
    SendMessageW(window_, CB_RESETCONTENT, 0, 0);
    for (const Line& line : lines_) AddLine(window_, line.text);
  }
  const ControlId shown = selected.size() == 1 ? selected.front() : 0;
  const auto line = std::find_if(lines_.begin(), lines_.end(),
                                 [&](const Line& each) { return each.id == shown; });
  SendMessageW(
      window_, CB_SETCURSEL,
      line == lines_.end() ? static_cast<WPARAM>(-1) : static_cast<WPARAM>(line - lines_.begin()),
      0);
}

ControlId ObjectBox::Chosen() const noexcept {
  const LRESULT line = SendMessageW(window_, CB_GETCURSEL, 0, 0);
  return line < 0 || static_cast<size_t>(line) >= lines_.size()
             ? 0
             : lines_[static_cast<size_t>(line)].id;
}

}  // namespace qrn::designer
