#include "host/designer/panes/EventBoxes.h"

#include <algorithm>
#include <utility>

#include "com/Text.h"
#include "host/designer/panes/PaneWindow.h"

namespace qrn::designer {
namespace {

constexpr int kListsHeight = 360;
constexpr int kNameSpare = 2;

constexpr WPARAM kNoLine = static_cast<WPARAM>(-1);

size_t ChosenLine(HWND box) noexcept {
  const LRESULT line = SendMessageW(box, CB_GETCURSEL, 0, 0);
  return line < 0 ? kNoLine : static_cast<size_t>(line);
}

void ChooseLine(HWND box, size_t line) noexcept {
  if (ChosenLine(box) != line) SendMessageW(box, CB_SETCURSEL, line, 0);
}

}  // namespace

void EventBoxes::Make(HWND parent, HFONT font, std::function<void(const EventPlace&)> chosen) {
  font_ = font;
  bold_ = BoldOf(font);
  chosen_ = std::move(chosen);
  constexpr DWORD kStyle =
      WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS;
  objects_ = MakeControl(parent, L"ComboBox", kStyle, kObjectsId, font);
  events_ = MakeControl(parent, L"ComboBox", kStyle, kEventsId, font);
}

void EventBoxes::Arrange(int left, int width) noexcept {
  const int half = (left + width) / 2;
  PlaceWindow(objects_, {left, 0, half, Scaled(kListsHeight)});
  PlaceWindow(events_, {half, 0, left + width, Scaled(kListsHeight)});
}

int EventBoxes::Height() const noexcept {
  RECT box{};
  GetWindowRect(objects_, &box);
  return box.bottom - box.top;
}

bool EventBoxes::HasHandler(const std::string& object, const std::string& event) const {
  return std::any_of(handled_.begin(), handled_.end(), [&](const EventPlace& place) {
    return place.object == object && (event.empty() || place.event == event);
  });
}

void EventBoxes::Fill(HWND box, std::vector<Line>& shown, std::vector<Line> lines) {
  if (shown == lines) return;
  const size_t chosen = ChosenLine(box);
  const std::string text = chosen < shown.size() ? shown[chosen].text : std::string();
  shown = std::move(lines);
  SendMessageW(box, CB_RESETCONTENT, 0, 0);
  for (const Line& line : shown) AddLine(box, line.text);
  const auto same =
      std::find_if(shown.begin(), shown.end(), [&](const Line& line) { return line.text == text; });
  if (same != shown.end()) ChooseLine(box, static_cast<size_t>(same - shown.begin()));
}

void EventBoxes::Show(const CodePart& code, const std::vector<CodeProcedure>& procedures,
                      const std::string& general) {
  handled_.clear();
  for (const CodeProcedure& procedure : procedures) {
    if (const auto place = code.HandledBy(procedure.name)) handled_.push_back(*place);
  }
  std::vector<Line> lines{{general, false}};
  for (const std::string& object : code.Objects())
    lines.push_back({object, HasHandler(object, {})});
  Fill(objects_, objectLines_, std::move(lines));
  const size_t chosen = ChosenLine(objects_);
  ShowEvents(code, chosen == 0 || chosen >= objectLines_.size() ? std::string()
                                                                : objectLines_[chosen].text);
}

void EventBoxes::ShowEvents(const CodePart& code, const std::string& object) {
  std::vector<Line> lines;
  for (const std::string& event : code.Events(object)) {
    lines.push_back({event, HasHandler(object, event)});
  }
  Fill(events_, eventLines_, std::move(lines));
}

void EventBoxes::PutPlace(const CodePart& code, const std::optional<EventPlace>& place) {
  const auto lineOf = [](const std::vector<Line>& lines, const std::string& text) {
    const auto found = std::find_if(lines.begin(), lines.end(),
                                    [&](const Line& line) { return line.text == text; });
    return found == lines.end() ? kNoLine : static_cast<size_t>(found - lines.begin());
  };
  if (SendMessageW(objects_, CB_GETDROPPEDSTATE, 0, 0) ||
      SendMessageW(events_, CB_GETDROPPEDSTATE, 0, 0)) {
    return;
  }
  ChooseLine(objects_, place ? lineOf(objectLines_, place->object) : 0);
  ShowEvents(code, place ? place->object : std::string());
  ChooseLine(events_, place ? lineOf(eventLines_, place->event) : kNoLine);
}

void EventBoxes::OnCommand(const CodePart& code, int id, int notice) {
  if (id != kObjectsId && id != kEventsId) return;
  if (notice == CBN_DROPDOWN) isAccepted_ = false;
  if (notice == CBN_SELENDOK) isAccepted_ = true;
  if (notice == CBN_SELENDCANCEL) isAccepted_ = false;
  if (notice == CBN_CLOSEUP && std::exchange(isAccepted_, false)) OnChosen(code, id);
}

// An object leads to its first handler; without one the events are there to choose from.
void EventBoxes::OnChosen(const CodePart& code, int id) {
  const size_t object = ChosenLine(objects_);
  if (object == 0 || object >= objectLines_.size()) return;
  const std::string name = objectLines_[object].text;
  if (id == kObjectsId) {
    ShowEvents(code, name);
    const auto first = std::find_if(eventLines_.begin(), eventLines_.end(),
                                    [](const Line& line) { return line.isBold; });
    if (first != eventLines_.end()) return chosen_({name, first->text});
    SendMessageW(events_, CB_SETCURSEL, kNoLine, 0);
    SetFocus(events_);
    return;
  }
  const size_t event = ChosenLine(events_);
  if (event < eventLines_.size()) chosen_({name, std::string(eventLines_[event].text)});
}

bool EventBoxes::Draw(const DRAWITEMSTRUCT& item) const {
  if (item.CtlID != kObjectsId && item.CtlID != kEventsId) return false;
  const std::vector<Line>& lines = item.CtlID == kObjectsId ? objectLines_ : eventLines_;
  const bool isChosen = (item.itemState & ODS_SELECTED) != 0;
  FillRect(item.hDC, &item.rcItem, GetSysColorBrush(isChosen ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  if (item.itemID < lines.size()) {
    const Line& line = lines[item.itemID];
    const com::Selected selected(item.hDC, line.isBold ? bold_.get() : font_);
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, GetSysColor(isChosen ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    RECT place = item.rcItem;
    place.left += Scaled(kNameSpare);
    DrawTextW(item.hDC, com::Wide(line.text).c_str(), -1, &place,
              DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
  }
  if (item.itemState & ODS_FOCUS) DrawFocusRect(item.hDC, &item.rcItem);
  return true;
}

bool EventBoxes::Measure(MEASUREITEMSTRUCT& item) const noexcept {
  if (item.CtlID != kObjectsId && item.CtlID != kEventsId) return false;
  item.itemHeight = static_cast<UINT>(LineHeight(font_) + 2 * Scaled(kNameSpare));
  return true;
}

bool EventBoxes::TakesKey(const MSG& message) noexcept {
  if (message.hwnd != objects_ && message.hwnd != events_) return false;
  const bool isArrow = message.wParam == VK_UP || message.wParam == VK_DOWN;
  if (!isArrow || SendMessageW(message.hwnd, CB_GETDROPPEDSTATE, 0, 0)) return false;
  SendMessageW(message.hwnd, CB_SHOWDROPDOWN, TRUE, 0);
  return true;
}

}  // namespace qrn::designer
