#include "host/newform/FormSheet.h"

#include <algorithm>
#include <utility>

#include "host/newform/Drawing.h"
#include "host/newform/Metrics.h"

namespace qrn::newform {
namespace {

constexpr unsigned kInfoBack = 0x80000018, kInfoText = 0x80000017;

class Sheet {
 public:
  Sheet(const FormPlan& plan, const FormLayout& layout)
      : plan_(plan),
        words_(plan.words),
        layout_(layout),
        d_(plan),
        form_("VB.Form", plan.formName, {}) {}

  FormPart Draw() {
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

  void Pinned() {
    top_ = kMargin;
    for (size_t i = 0; i < layout_.pinned.size(); ++i) {
      DrawField(d_, form_.parts, plan_.card[layout_.pinned[i]], layout_.pin.places[i],
                kMargin + kFrameSide, top_);
    }
    if (!layout_.pinned.empty()) top_ += layout_.pin.height + kGap;
  }

  void Pages() {
    if (layout_.pageCount() > 1) PageButtons();
    const int height = kFrameTop + layout_.pages.height + kFrameBottom;
    for (int page = 0; page < layout_.pageCount(); ++page) {
      const Box box{kMargin, top_, layout_.cardWidth, height};
      Part& frame = d_.Add(form_.parts,
                           Part("VB.Frame", kPageFrame, box, layout_.pageCount() > 1 ? page : -1));
      frame.Font().Text("Caption", PageCaption(page));
      if (page > 0) frame.Truth("Visible", false);
      for (size_t i = 0; i < layout_.paged.size(); ++i) {
        if (layout_.pages.places[i].page != page) continue;
        DrawField(d_, frame.parts, plan_.card[layout_.paged[i]], layout_.pages.places[i],
                  kFrameSide, kFrameTop);
      }
    }
    cardHeight_ = height;
    cardTop_ = top_;
    top_ += height + kGap;
  }

  std::string PageCaption(int page) const {
    std::string name = Shown(plan_.table.name);
    if (layout_.pageCount() == 1) return name;
    return name + "  " + std::to_string(page + 1) + " / " + std::to_string(layout_.pageCount());
  }

  void PageButtons() {
    constexpr int kGapBetween = 4;
    const int width =
        std::min((layout_.width + kGapBetween) / layout_.pageCount() - kGapBetween, 110);
    for (int page = 0; page < layout_.pageCount(); ++page) {
      const Box box{kMargin + page * (width + kGapBetween), top_, width, kButtonHeight};
      const std::string number = std::to_string(page + 1);
      const bool japanese = plan_.choice.language == Language::Japanese;
      const std::string caption = japanese ? number + " " + words_[Word::Page]
                                           : std::string(words_[Word::Page]) + " " + number;
      d_.Add(form_.parts, Part("VB.CommandButton", kPageButton, box, page))
          .Font()
          .Text("Caption", width < kButtonWidth ? number : d_.keys.Give(caption, 'B'));
    }
    top_ += kButtonHeight + kGap;
  }

  // --- the rest

  Part Button(const char* name, const Box& box, const std::string& caption, int operation,
              int index = -1) const {
    Part part = d_.Bound("QRNBtn", name, box, index);
    part.Text("Caption", caption).Number("DbOperation", operation).Truth("ClearControlData", false);
    if (const Key* key = plan_.OrderKey()) part.Text("DbIndex", key->name);
    return part;
  }

  // Two buttons, the bar, two buttons.
  void Moves() {
    constexpr int kGetOperations[] = {4, 7, 6, 5}, kStepOperations[] = {12, 15, 14, 13};
    const char* const captions[] = {words_[Word::First], words_[Word::Previous], words_[Word::Next],
                                    words_[Word::Last]};
    constexpr char kKeys[] = {'T', 'P', 'N', 'L'};
    const int right = kMargin + layout_.width;
    const int step = kButtonWidth + 4;
    const int lefts[] = {kMargin, kMargin + step,
                         plan_.HasBar() ? right - 2 * step + 4 : kMargin + 2 * step,
                         plan_.HasBar() ? right - step + 4 : kMargin + 3 * step};
    const auto move = [&](int i) {
      const int operation = plan_.HasKeys() ? kGetOperations[i] : kStepOperations[i];
      d_.Add(form_.parts, Button(kMove, {lefts[i], top_, kButtonWidth, kButtonHeight},
                                 d_.keys.Give(captions[i], kKeys[i]), operation, i));
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
    d_.Add(form_.parts, Part("QRNBTRLib.QRNHScroll", kBar, box))
        .Text("DbIndex", plan_.OrderKey()->name)
        .Text("DbSource", kDatabase)
        .Number("Max", 10000);
  }

  // A key of one record a value is sought exactly, others from the value on.
  void Finds() {
    if (plan_.choice.keys.empty()) return;
    constexpr int kGetEqual = 3, kGetGreaterOrEqual = 10;
    Part& frame = d_.Add(form_.parts, Part("VB.Frame", kFindFrame,
                                           {kMargin, top_, layout_.width, layout_.findHeight}));
    frame.Font().Text("Caption", words_[Word::Find]);
    const std::vector<Box>& places = layout_.finds;
    for (size_t i = 0; i < places.size(); ++i) {
      const Key& key = plan_.table.keys[plan_.choice.keys[i]];
      const bool exact = key.unique && key.fields.size() == 1;
      Part button = d_.Bound("QRNBtn", kFind, places[i], static_cast<int>(i));
      button.Text("Caption", d_.keys.Give(key.name, i < 9 ? static_cast<char>('1' + i) : 'F'))
          .Number("DbOperation", exact ? kGetEqual : kGetGreaterOrEqual)
          .Text("DbIndex", key.name)
          .Text("ToolTipText", KeyFields(key));
      d_.Add(frame.parts, std::move(button));
    }
    top_ += layout_.findHeight + kGap;
  }

  std::string KeyFields(const Key& key) const {
    std::string text;
    for (const size_t field : key.fields) {
      text += (text.empty() ? "" : " + ") + plan_.table.fields[field].name;
    }
    return text;
  }

  void Command(const char* name, const Box& box, const std::string& caption) {
    d_.Add(form_.parts, Part("VB.CommandButton", name, box)).Font().Text("Caption", caption);
  }

  void Operations() {
    const int step = kButtonWidth + 4;
    const auto place = [&](int i) {
      return Box{kMargin + i * step, top_, kButtonWidth, kButtonHeight};
    };
    Command(kClear, place(0), d_.keys.Give(words_[Word::Clear], 'W'));
    const std::string insert = d_.keys.Give(words_[Word::Insert], 'A');
    const std::string update = d_.keys.Give(words_[Word::Update], 'U');
    if (plan_.HasKeys()) {
      d_.Add(form_.parts, Button(kInsert, place(1), insert, 0));
      d_.Add(form_.parts, Button(kUpdate, place(2), update, 1));
    } else {
      Command(kInsert, place(1), insert);
      Command(kUpdate, place(2), update);
    }
    Part remove = Button(kDelete, place(3), d_.keys.Give(words_[Word::Remove], 'D'), 2);
    remove.Text("ConfirmMsg", words_[Word::RemoveQuestion]);
    d_.Add(form_.parts, std::move(remove));
    Command(kClose, {kMargin + layout_.width - kButtonWidth, top_, kButtonWidth, kButtonHeight},
            d_.keys.Give(words_[Word::Close], 'C'));
    top_ += kButtonHeight + kGap;
  }

  void Grids() {
    if (plan_.choice.detail) {
      const Table& table = plan_.DetailTable();
      Part grid = Grid(kDetailGrid, Below(kDetailLabel, table.name), table, plan_.DetailColumns());
      grid.Text("DbListIndex", table.keys[plan_.choice.detail->key].name);
      d_.Add(form_.parts, std::move(grid));
    }
    if (!plan_.HasList()) return;
    const Box beside{kMargin + layout_.cardWidth + kGap, cardTop_ + 7,
                     layout_.width - layout_.cardWidth - kGap, cardHeight_ - 7};
    const Box place =
        layout_.beside ? beside : Below(kListLabel, plan_.table.name + " " + words_[Word::List]);
    Part grid = Grid(kListGrid, place, plan_.table, plan_.ListColumns());
    // Rows have their records' positions only where they may be deleted; code forbids that.
    if (plan_.ListLeads()) grid.Truth("AllowDelete", true);
    if (const Key* key = plan_.OrderKey()) grid.Text("DbListIndex", key->name);
    d_.Add(form_.parts, std::move(grid));
  }

  Box Below(const char* name, const std::string& caption) {
    d_.Add(form_.parts, Part("VB.Label", name, {kMargin, top_, layout_.width, kLabelHeight}))
        .Text("Caption", d_.keys.Give(caption, 'G'));
    const Box box{kMargin, top_ + kLabelHeight, layout_.width, kGridHeight};
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
    const int width = layout_.width - kDatabaseSize - kGap;
    d_.Add(form_.parts, Part("VB.Label", kStatus, {kMargin, top_, width, kStatusHeight}))
        .Colour("BackColor", kInfoBack)
        .Colour("ForeColor", kInfoText)
        .Number("BorderStyle", 1)
        .Text("Caption", "")
        .Truth("UseMnemonic", false);
    Part database("QRNBTRLib.QRNBtr", kDatabase,
                  {kMargin + width + kGap, top_ - 5, kDatabaseSize, kDatabaseSize});
    database.Truth("AllOpen", false).Truth("CacheDDF", true).Text("DDFDir", plan_.choice.directory);
    database.Number("TabIndex", d_.tabIndex++);
    form_.parts.insert(form_.parts.begin(), std::move(database));
    top_ += kStatusHeight + kMargin;
  }

  void Frame() {
    std::string caption = plan_.table.name;
    if (plan_.choice.detail) caption += " - " + plan_.DetailTable().name;
    Part whole("VB.Form", plan_.formName, {0, 0, layout_.width + 2 * kMargin, top_});
    whole.parts = std::move(form_.parts);
    whole.Font()
        .Number("BorderStyle", 1)
        .Text("Caption", caption)
        .Number("ClientLeft", 60)
        .Number("ClientTop", 345)
        .Text("LinkTopic", plan_.formName)
        .Truth("MaxButton", false)
        .Number("ScaleHeight", long{top_} * kTwipsPerPixel)
        .Number("ScaleWidth", long{layout_.width + 2 * kMargin} * kTwipsPerPixel)
        .Number("StartUpPosition", 2);
    form_ = std::move(whole);
  }

  const FormPlan& plan_;
  const Words& words_;
  const FormLayout& layout_;
  Drawing d_;
  FormPart form_;
  int cardHeight_ = 0, cardTop_ = 0;
  int top_ = 0;  // of what comes next
};

}  // namespace

FormPart DrawForm(const FormPlan& plan, const FormLayout& layout) {
  return Sheet(plan, layout).Draw();
}

}  // namespace qrn::newform
