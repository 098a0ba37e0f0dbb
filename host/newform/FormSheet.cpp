#include "host/newform/FormSheet.h"

#include <algorithm>
#include <utility>

#include "host/newform/CardPlan.h"
#include "host/newform/NewForm.h"

namespace qrn::newform {
namespace {

constexpr int kMargin = 12;
constexpr int kGap = 8;
constexpr int kButtonHeight = 27;
constexpr int kButtonWidth = 84;
constexpr int kLabelDrop = 4;  // from a box's top to its caption's
constexpr int kLabelHeight = 17;
constexpr int kFrameTop = 22;
constexpr int kFrameSide = 12;
constexpr int kFrameBottom = 10;
constexpr int kStatusHeight = 22;
constexpr int kDatabaseSize = 32;
constexpr int kGridHeight = 150;
constexpr int kNarrowestForm = 600;
constexpr int kListWidth = 360;
constexpr int kLowestBeside = 160;
constexpr int kCharacter = 7;
constexpr int kDigit = 8;
constexpr int kBoxMargin = 14;
constexpr int kNoteHeight = 86;
constexpr int kPictureWidth = 160, kPictureHeight = 120;
constexpr int kSaidWidth = 170;
constexpr int kNarrowestSaid = 60;
constexpr int kArrow = 20;
constexpr int kCheckMark = 24;
constexpr size_t kMostPinned = 4;
constexpr unsigned kButtonFace = 0x8000000F, kInfoBack = 0x80000018, kInfoText = 0x80000017;

// Half-width characters that a text takes; each of two or three bytes of UTF-8 counts for two.
int Characters(std::string_view utf8) {
  int count = 0;
  for (size_t i = 0; i < utf8.size();) {
    const auto first = static_cast<unsigned char>(utf8[i]);
    const size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    const bool halfKana =
        utf8.substr(i).starts_with("\xEF\xBD") || utf8.substr(i).starts_with("\xEF\xBE");
    count += length == 1 || halfKana ? 1 : 2;
    i += length;
  }
  return count;
}

int TextWidth(std::string_view utf8) { return Characters(utf8) * kCharacter + 2; }

class Sheet {
 public:
  explicit Sheet(FormPlan& plan)
      : plan_(plan), words_(plan.words), form_("VB.Form", plan.formName, {}) {}

  FormPart Draw() {
    Measure();
    Pinned();
    Pages();
    Moves();
    Finds();
    Operations();
    Grids();
    StatusLine();
    Frame();
    return std::move(form_);
  }

 private:
  using Part = FormPart;

  const Field& FieldOf(const CardControl& control) const {
    return plan_.table.fields[control.field];
  }
  std::string CaptionOf(const CardControl& control) const { return Shown(FieldOf(control).name); }

  Part& Add(std::vector<Part>& to, Part part) {
    part.Number("TabIndex", tabIndex_++);
    to.push_back(std::move(part));
    return to.back();
  }

  Part Bound(const char* kind, const std::string& name, const Box& box, int index = -1) const {
    Part part(std::string("QRNBTRLib.") + kind, name, box, index);
    part.Text("DbSource", kDatabase).Text("DbTable", plan_.table.name).Font();
    return part;
  }

  // --- sizes

  CardItem ItemOf(const CardControl& control) const {
    const bool digits = control.fit.isNumber || control.fit.isMoment;
    const int box = control.fit.characters * (digits ? kDigit : kCharacter) + kBoxMargin;
    CardItem item{TextWidth(CaptionOf(control)), std::max(box, 44), kBoxHeight};
    switch (control.fit.control) {
      case Control::Check:
        item.width = TextWidth(CaptionOf(control)) + kCheckMark;
        item.label = 0;
        break;
      case Control::Note:
        item.height = kNoteHeight;
        break;
      case Control::Display:
        if (!control.fit.isNumber) item.height = kNoteHeight;
        break;
      case Control::Picture:
        item.width = std::max(item.width, kPictureWidth);
        item.height = kBoxHeight + kGap + kPictureHeight;
        break;
      default:
        if (control.lookup) item.width += kArrow;
        if (!control.said.empty()) item.width += kGap + kSaidWidth;
    }
    return item;
  }

  bool IsPinned(const CardControl& control) const {
    const Key* key = plan_.OrderKey();
    return key && key->fields.size() <= kMostPinned &&
           std::find(key->fields.begin(), key->fields.end(), control.field) != key->fields.end();
  }

  int FindRows() const { return static_cast<int>(FindPlaces(nullptr)); }

  int Below() const {
    int height = kButtonHeight + kGap;                                     // moves
    if (!plan_.choice.keys.empty()) height += FindHeight() + kGap;         // finds
    height += kButtonHeight + kGap;                                        // operations
    if (plan_.choice.detail) height += kLabelHeight + kGridHeight + kGap;  // details
    if (plan_.HasList() && !beside_) height += kLabelHeight + kGridHeight + kGap;
    return height + kStatusHeight + kMargin;
  }

  int FindHeight() const { return kFrameTop + FindRows() * (kButtonHeight + 3) + kFrameBottom - 3; }

  // Where the find buttons go in their frame; the number of their rows.
  size_t FindPlaces(std::vector<Box>* places) const {
    int left = kFrameSide, row = 0;
    for (const size_t key : plan_.choice.keys) {
      const int width = std::max(TextWidth(plan_.table.keys[key].name) + 46, kButtonWidth);
      if (left > kFrameSide && left + width > width_ - kFrameSide) {
        left = kFrameSide;
        ++row;
      }
      if (places) {
        places->push_back({left, kFrameTop + row * (kButtonHeight + 3), width, kButtonHeight});
      }
      left += width + 6;
    }
    return static_cast<size_t>(row + 1);
  }

  // How wide the form is, what is pinned above the pages, and where everything on the card goes.
  void Measure() {
    constexpr int kMost = kWidestForm - 2 * kMargin;
    std::vector<CardItem> items;
    for (const CardControl& control : plan_.card) items.push_back(ItemOf(control));
    const CardPlan wide = PlanCard(items, {kMost - 2 * kFrameSide, kHighestForm});
    width_ = std::clamp(wide.width + 2 * kFrameSide, kNarrowestForm - 2 * kMargin, kMost);
    beside_ = plan_.HasList() && !plan_.choice.detail && wide.pages == 1 &&
              wide.height >= kLowestBeside &&
              wide.width + 2 * kFrameSide + kGap + kListWidth <= kMost;
    cardWidth_ = width_;
    if (beside_) {
      cardWidth_ = wide.width + 2 * kFrameSide;
      width_ = std::max(width_, cardWidth_ + kGap + kListWidth);
    }
    PlanPages(items);
  }

  int CardRoomHeight(int above) const {
    return kHighestForm - kMargin - above - kFrameTop - kFrameBottom - kGap - Below();
  }

  void PlanPages(const std::vector<CardItem>& items) {
    const int inner = cardWidth_ - 2 * kFrameSide;
    paged_ = AllOf([](const CardControl&) { return true; });
    pages_ = PlanCard(items, {inner, CardRoomHeight(0)});
    if (pages_.pages > 1) {
      width_ = cardWidth_ = kWidestForm - 2 * kMargin;
      pinned_ = AllOf([this](const CardControl& c) { return IsPinned(c); });
      paged_ = AllOf([this](const CardControl& c) { return !IsPinned(c); });
      pin_ = PlanCard(Items(pinned_), {width_ - 2 * kFrameSide, kHighestForm});
      const int above = (pinned_.empty() ? 0 : pin_.height + kGap) + kButtonHeight + kGap;
      pages_ = PlanCard(Items(paged_), {width_ - 2 * kFrameSide, CardRoomHeight(above)});
    }
    plan_.pages = std::max(pages_.pages, 1);
    for (int page = 0; page < plan_.pages; ++page) plan_.firsts.push_back(FirstOf(page));
  }

  template <class Wanted>
  std::vector<size_t> AllOf(Wanted wanted) const {
    std::vector<size_t> places;
    for (size_t i = 0; i < plan_.card.size(); ++i) {
      if (wanted(plan_.card[i])) places.push_back(i);
    }
    return places;
  }

  std::vector<CardItem> Items(const std::vector<size_t>& places) const {
    std::vector<CardItem> items;
    for (const size_t place : places) items.push_back(ItemOf(plan_.card[place]));
    return items;
  }

  size_t FirstOf(int page) const {
    for (size_t i = 0; i < paged_.size(); ++i) {
      if (pages_.places[i].page == page) return paged_[i];
    }
    return 0;
  }

  // --- the card

  void Pinned() {
    top_ = kMargin;
    for (size_t i = 0; i < pinned_.size(); ++i) {
      DrawItem(form_.parts, plan_.card[pinned_[i]], pin_.places[i], kMargin + kFrameSide, top_);
    }
    if (!pinned_.empty()) top_ += pin_.height + kGap;
  }

  void Pages() {
    if (plan_.pages > 1) PageButtons();
    const int height = kFrameTop + pages_.height + kFrameBottom;
    for (int page = 0; page < plan_.pages; ++page) {
      const Box box{kMargin, top_, cardWidth_, height};
      Part& frame =
          Add(form_.parts, Part("VB.Frame", kPageFrame, box, plan_.pages > 1 ? page : -1));
      frame.Font().Text("Caption", PageCaption(page));
      if (page > 0) frame.Truth("Visible", false);
      for (size_t i = 0; i < paged_.size(); ++i) {
        if (pages_.places[i].page != page) continue;
        DrawItem(frame.parts, plan_.card[paged_[i]], pages_.places[i], kFrameSide, kFrameTop);
      }
    }
    cardHeight_ = height;
    cardTop_ = top_;
    top_ += height + kGap;
  }

  std::string PageCaption(int page) const {
    const std::string name = Shown(plan_.table.name);
    if (plan_.pages == 1) return name;
    return name + "  " + std::to_string(page + 1) + " / " + std::to_string(plan_.pages);
  }

  void PageButtons() {
    constexpr int kGapBetween = 4;
    const int width = std::min((width_ + kGapBetween) / plan_.pages - kGapBetween, 110);
    for (int page = 0; page < plan_.pages; ++page) {
      const Box box{kMargin + page * (width + kGapBetween), top_, width, kButtonHeight};
      const std::string number = std::to_string(page + 1);
      const bool japanese = plan_.choice.language == Language::Japanese;
      const std::string caption =
          japanese ? number + " " + words_.page : std::string(words_.page) + " " + number;
      Add(form_.parts, Part("VB.CommandButton", kPageButton, box, page))
          .Font()
          .Text("Caption", width < kButtonWidth ? number : keys_.Give(caption, 'B'));
    }
    top_ += kButtonHeight + kGap;
  }

  void DrawItem(std::vector<Part>& to, const CardControl& control, const CardPlace& place, int left,
                int top) {
    const Box box{left + place.left, top + place.top, place.width, place.height};
    if (!control.label.empty()) {
      const int width = place.left - place.label - 4;
      Add(to, Part("VB.Label", control.label,
                   {left + place.label, box.top + kLabelDrop, width, kLabelHeight}))
          .Text("Caption", CaptionOf(control));
    }
    switch (control.fit.control) {
      case Control::Check:
        return DrawCheck(to, control, box);
      case Control::Display:
        return DrawDisplay(to, control, box);
      case Control::Picture:
        return DrawPicture(to, control, box);
      default:
        return control.lookup ? DrawCombo(to, control, box) : DrawEdit(to, control, box);
    }
  }

  void DrawEdit(std::vector<Part>& to, const CardControl& control, const Box& box) {
    const FieldFit& fit = control.fit;
    Part& part = Add(to, Bound("QRNEdit", control.control, box));
    part.Text("DbField", FieldOf(control).name).Number("IMEMode", fit.imeMode);
    if (fit.maxLength > 0) part.Number("MaxLength", fit.maxLength);
    if (fit.isNumber) part.Number("Alignment", 1);
    if (fit.isNumber || fit.isMoment) part.Truth("NumericMask", true);
    if (!fit.format.empty()) part.Text("Format", fit.format);
    if (fit.control == Control::Note) part.Truth("MultiLine", true);
  }

  void DrawCheck(std::vector<Part>& to, const CardControl& control, const Box& box) {
    Add(to, Bound("QRNCheck", control.control, box))
        .Text("Caption", CaptionOf(control))
        .Text("DbField", FieldOf(control).name);
  }

  void DrawDisplay(std::vector<Part>& to, const CardControl& control, const Box& box) {
    Part& part = Add(to, Part("VB.TextBox", control.control, box));
    part.Font()
        .Colour("BackColor", kButtonFace)
        .Truth("Locked", true)
        .Text("ToolTipText", words_.display);
    if (control.fit.isNumber) {
      part.Number("Alignment", 1);
    } else {
      part.Truth("MultiLine", true).Number("ScrollBars", 2);
    }
  }

  void DrawPicture(std::vector<Part>& to, const CardControl& control, const Box& box) {
    DrawEdit(to, control, {box.left, box.top, box.width, kBoxHeight});
    const int top = box.top + kBoxHeight + kGap;
    const Box frame{box.left, top, std::min(box.width, kPictureWidth), box.Bottom() - top};
    Part& part = Add(to, Bound("QRNPic", control.picture, frame));
    part.Text("DbField", FieldOf(control).name).Truth("Stretch", true);
    if (!plan_.choice.pictures.empty()) part.Text("BlobPath", plan_.choice.pictures);
  }

  void DrawCombo(std::vector<Part>& to, const CardControl& control, const Box& box) {
    const Lookup& lookup = *control.lookup;
    const Table& other = plan_.dictionary.tables[lookup.table];
    const int wanted = control.fit.characters * kDigit + kBoxMargin + kArrow;
    const int width = std::min(std::max(wanted, 44), box.width);
    Add(to, Bound("QRNComboBox", control.control, {box.left, box.top, width, box.height}))
        .Text("DbField", FieldOf(control).name)
        .Text("DbListField", other.fields[lookup.field].name)
        .Text("DbListIndex", other.keys[lookup.key].name)
        .Text("DbListSource", kDatabase)
        .Text("DbListTable", other.name)
        .Number("DbUpdateOption", 1)
        .Number("IMEMode", control.fit.imeMode)
        .Number("Style", 0);
    if (control.said.empty()) return;
    const int left = box.left + width + kGap;
    Add(to, Part("VB.Label", control.said,
                 {left, box.top + kLabelDrop, std::max(box.Right() - left, 1), kLabelHeight}))
        .Text("Caption", "")
        .Truth("UseMnemonic", false);
  }

  // --- the rest

  Part Button(const char* name, const Box& box, const std::string& caption, int operation,
              int index = -1) const {
    Part part = Bound("QRNBtn", name, box, index);
    part.Text("Caption", caption).Number("DbOperation", operation).Truth("ClearControlData", false);
    if (const Key* key = plan_.OrderKey()) part.Text("DbIndex", key->name);
    return part;
  }

  // Two buttons, the bar, two buttons.
  void Moves() {
    constexpr int kGetOperations[] = {4, 7, 6, 5}, kStepOperations[] = {12, 15, 14, 13};
    const char* const captions[] = {words_.first, words_.previous, words_.next, words_.last};
    constexpr char kKeys[] = {'T', 'P', 'N', 'L'};
    const int right = kMargin + width_;
    const int step = kButtonWidth + 4;
    const int lefts[] = {kMargin, kMargin + step,
                         plan_.HasBar() ? right - 2 * step + 4 : kMargin + 2 * step,
                         plan_.HasBar() ? right - step + 4 : kMargin + 3 * step};
    const auto move = [&](int i) {
      const int operation = plan_.HasKeys() ? kGetOperations[i] : kStepOperations[i];
      Add(form_.parts, Button(kMove, {lefts[i], top_, kButtonWidth, kButtonHeight},
                              keys_.Give(captions[i], kKeys[i]), operation, i));
    };
    move(0);
    move(1);
    if (plan_.HasBar()) Bar({lefts[1] + step, top_ + 3, lefts[2] - lefts[1] - step - 4, 21});
    move(2);
    move(3);
    top_ += kButtonHeight + kGap;
  }

  // Without its table: it would go to the first record while the form comes up, and tell of an
  // empty table by a box. The code binds it.
  void Bar(const Box& box) {
    Add(form_.parts, Part("QRNBTRLib.QRNHScroll", kBar, box))
        .Text("DbIndex", plan_.OrderKey()->name)
        .Text("DbSource", kDatabase)
        .Number("Max", 10000);
  }

  // A key of one record a value is sought exactly, others from the value on.
  void Finds() {
    if (plan_.choice.keys.empty()) return;
    constexpr int kGetEqual = 3, kGetGreaterOrEqual = 10;
    Part& frame =
        Add(form_.parts, Part("VB.Frame", "fraFind", {kMargin, top_, width_, FindHeight()}));
    frame.Font().Text("Caption", words_.find);
    std::vector<Box> places;
    FindPlaces(&places);
    for (size_t i = 0; i < places.size(); ++i) {
      const Key& key = plan_.table.keys[plan_.choice.keys[i]];
      const bool exact = key.unique && key.fields.size() == 1;
      Part button = Bound("QRNBtn", kFind, places[i], static_cast<int>(i));
      button.Text("Caption", keys_.Give(key.name, i < 9 ? static_cast<char>('1' + i) : 'F'))
          .Number("DbOperation", exact ? kGetEqual : kGetGreaterOrEqual)
          .Text("DbIndex", key.name)
          .Text("ToolTipText", KeyFields(key));
      Add(frame.parts, std::move(button));
    }
    top_ += FindHeight() + kGap;
  }

  std::string KeyFields(const Key& key) const {
    std::string text;
    for (const size_t field : key.fields) {
      text += (text.empty() ? "" : " + ") + plan_.table.fields[field].name;
    }
    return text;
  }

  void Command(const char* name, const Box& box, const std::string& caption) {
    Add(form_.parts, Part("VB.CommandButton", name, box)).Font().Text("Caption", caption);
  }

  void Operations() {
    const int step = kButtonWidth + 4;
    const auto place = [&](int i) {
      return Box{kMargin + i * step, top_, kButtonWidth, kButtonHeight};
    };
    Command(kClear, place(0), keys_.Give(words_.clear, 'W'));
    const std::string insert = keys_.Give(words_.insert, 'A');
    const std::string update = keys_.Give(words_.update, 'U');
    if (plan_.HasKeys()) {
      Add(form_.parts, Button(kInsert, place(1), insert, 0));
      Add(form_.parts, Button(kUpdate, place(2), update, 1));
    } else {
      Command(kInsert, place(1), insert);
      Command(kUpdate, place(2), update);
    }
    Part remove = Button(kDelete, place(3), keys_.Give(words_.remove, 'D'), 2);
    remove.Text("ConfirmMsg", words_.removeQuestion);
    Add(form_.parts, std::move(remove));
    Command(kClose, {kMargin + width_ - kButtonWidth, top_, kButtonWidth, kButtonHeight},
            keys_.Give(words_.close, 'C'));
    top_ += kButtonHeight + kGap;
  }

  void Grids() {
    if (plan_.choice.detail) {
      const Table& table = plan_.DetailTable();
      Part grid = Grid(kDetailGrid, Below("lblDetail", table.name), table, plan_.DetailColumns());
      grid.Text("DbListIndex", table.keys[plan_.choice.detail->key].name);
      Add(form_.parts, std::move(grid));
    }
    if (!plan_.HasList()) return;
    const Box beside{kMargin + cardWidth_ + kGap, cardTop_ + 7, width_ - cardWidth_ - kGap,
                     cardHeight_ - 7};
    const Box place = beside_ ? beside : Below("lblList", plan_.table.name + " " + words_.list);
    Part grid = Grid(kListGrid, place, plan_.table, plan_.ListColumns());
    // Rows have their records' positions only where they may be deleted; code forbids that.
    if (plan_.ListLeads()) grid.Truth("AllowDelete", true);
    if (const Key* key = plan_.OrderKey()) grid.Text("DbListIndex", key->name);
    Add(form_.parts, std::move(grid));
  }

  Box Below(const char* name, const std::string& caption) {
    Add(form_.parts, Part("VB.Label", name, {kMargin, top_, width_, kLabelHeight}))
        .Text("Caption", keys_.Give(caption, 'G'));
    const Box box{kMargin, top_ + kLabelHeight, width_, kGridHeight};
    top_ += kLabelHeight + kGridHeight + kGap;
    return box;
  }

  // Names with signs would end a list of fields; their numbers do not.
  static std::string FieldList(const Table& table, const std::vector<size_t>& columns) {
    const auto isPlain = [&](size_t column) {
      const std::string& name = table.fields[column].name;
      return (name[0] < '0' || name[0] > '9') && name.find_first_of(" ,") == std::string::npos;
    };
    const bool byName = std::all_of(columns.begin(), columns.end(), isPlain);
    std::string list;
    for (const size_t column : columns) {
      list +=
          (list.empty() ? "" : ",") + (byName ? table.fields[column].name : std::to_string(column));
    }
    return list;
  }

  static Part Grid(const char* name, const Box& box, const Table& table,
                   const std::vector<size_t>& columns) {
    Part grid("QRNBTRLib.QRNGrid", name, box);
    grid.Font()
        .Number("Cols", static_cast<long>(columns.size()) + 1)
        .Text("DbListFields", FieldList(table, columns))
        .Text("DbListSource", kDatabase)
        .Text("DbListTable", table.name)
        .Number("DbSkipRecords", -1)
        .Number("DbUpdateOption", 0)
        .Truth("AlignFixedCells", true);
    return grid;
  }

  void StatusLine() {
    const int width = width_ - kDatabaseSize - kGap;
    Add(form_.parts, Part("VB.Label", kStatus, {kMargin, top_, width, kStatusHeight}))
        .Colour("BackColor", kInfoBack)
        .Colour("ForeColor", kInfoText)
        .Number("BorderStyle", 1)
        .Text("Caption", "")
        .Truth("UseMnemonic", false);
    Part database("QRNBTRLib.QRNBtr", kDatabase,
                  {kMargin + width + kGap, top_ - 5, kDatabaseSize, kDatabaseSize});
    database.Truth("AllOpen", false).Truth("CacheDDF", true).Text("DDFDir", plan_.choice.directory);
    database.Number("TabIndex", tabIndex_++);
    form_.parts.insert(form_.parts.begin(), std::move(database));
    top_ += kStatusHeight + kMargin;
  }

  void Frame() {
    std::string caption = plan_.table.name;
    if (plan_.choice.detail) caption += " - " + plan_.DetailTable().name;
    Part whole("VB.Form", plan_.formName, {0, 0, width_ + 2 * kMargin, top_});
    whole.parts = std::move(form_.parts);
    whole.Font()
        .Number("BorderStyle", 1)
        .Text("Caption", caption)
        .Number("ClientLeft", 60)
        .Number("ClientTop", 345)
        .Text("LinkTopic", plan_.formName)
        .Truth("MaxButton", false)
        .Number("ScaleHeight", long{top_} * kTwips)
        .Number("ScaleWidth", long{width_ + 2 * kMargin} * kTwips)
        .Number("StartUpPosition", 2);
    form_ = std::move(whole);
  }

  FormPlan& plan_;
  const Words& words_;
  FormPart form_;
  AccessKeys keys_;
  int tabIndex_ = 0;
  int width_ = 0;  // of what stands on the form, between its margins
  int cardWidth_ = 0, cardHeight_ = 0, cardTop_ = 0;
  int top_ = 0;  // of what comes next
  bool beside_ = false;
  std::vector<size_t> pinned_, paged_;  // places in the plan's card
  CardPlan pin_, pages_;
};

}  // namespace

FormPart DrawForm(FormPlan& plan) { return Sheet(plan).Draw(); }

}  // namespace qrn::newform
