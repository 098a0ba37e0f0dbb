// Random property puts, texts, fills, edits and deletions of a small grid, beside a plain model of
// its store: no cell lies outside, every copy is freed once (the sanitizer's part), sizes stay as
// far as they are checked, and every cell has the text that the model says.
#include <cstring>

#include "grid/data/GridFill.h"
#include "platform/BtrCall.h"
#include "tests/core/Support.h"
#include "tests/fuzz/ExtendedFuzz.h"
#include "tests/grid/PlayedGrid.h"

using namespace qrn;
using namespace qrn::fuzz;

namespace {

constexpr GridCapacity kCapacity{.maxRows = 7, .maxCols = 5};
constexpr int64_t kEntries = int64_t{kCapacity.maxRows} * kCapacity.maxCols;
constexpr int32_t kNumbers[] = {
    INT32_MIN, -100, -1, 0, 1, 1, 2, 2, 3, 3, 4, 5, 6, 7, 8, 9, 70000, INT32_MAX - 1, INT32_MAX};
// clang-format off
constexpr const char* kTexts[] = {
    "", "a", "b\tc", "\t", "d\t\te", "\tf\t", "g\th\ti", "\x83\x5C", "j\tk\tl\tm\tn\to",
    "\t\t\tp", "long text ", "that no string keeps in itself",
};
// clang-format on

class Choices : public Input {
 public:
  using Input::Input;
  int32_t Size() { return kNumbers[Byte() % std::size(kNumbers)]; }
  std::string Word() { return kTexts[Byte() % std::size(kTexts)]; }
  bool Bit() { return Byte() % 2 != 0; }
};

// What a record manager answers: positions as they were asked for, statuses as the input says.
std::vector<int16_t> statuses;
int32_t currentPosition = 0;

int16_t BTR_CALL Answer(uint16_t operation, void*, void* data, uint32_t*, void*, uint8_t, int8_t) {
  if (operation == BtrOpGetPosition) std::memcpy(data, &currentPosition, sizeof currentPosition);
  if (operation == BtrOpGetDirect) std::memcpy(&currentPosition, data, sizeof currentPosition);
  if (statuses.empty()) return 0;
  const int16_t status = statuses.back();
  statuses.pop_back();
  return status;
}

class Course {
 public:
  explicit Course(Choices choices) : choices_(choices), cells_(kEntries) {
    grid_.names = {.source = "D", .table = "T", .index = "", .fields = "f1,f2", .conditions = ""};
    grid_.findTable = [this](const GridNames&) { return &*table_; };
    grid_.formats["<>"] = [](const std::string& text) { return "<" + text + ">"; };
    grid_.model.AllowUpdate = grid_.model.AllowDelete = -1;
    grid_.model.Create();
  }

  void Run() {
    static constexpr void (Course::*kSteps[])() = {
        &Course::PutCounts, &Course::PutSizes, &Course::Go,     &Course::Select,
        &Course::PutText,   &Course::PutLine,  &Course::Format, &Course::PutArrays,
        &Course::Clear,     &Course::Fill,     &Course::Edit,   &Course::Delete,
        &Course::PutText,   &Course::PutLine,  &Course::Go,
    };
    while (!choices_.IsOver()) {
      (this->*kSteps[choices_.Byte() % std::size(kSteps)])();
      CheckCells();
    }
  }

 private:
  GridModel& grid() { return grid_.model; }

  void PutCounts() {
    const int32_t value = choices_.Size();
    switch (choices_.Byte() % 4) {
      case 0:
        grid().PutCols(value);
        break;
      case 1:
        grid().PutRows(value);
        break;
      case 2:
        grid().PutFixedCols(value);
        break;
      default:
        grid().PutFixedRows(value);
        break;
    }
    Require(grid().FixedCols <= kCapacity.maxCols && grid().FixedRows <= kCapacity.maxRows,
            "more fixed than there can be");
    Require(grid().Rows <= kCapacity.maxRows, "more rows than there can be");
  }

  void PutSizes() {
    const int32_t index = choices_.Size();
    const int32_t twips = choices_.Size();
    int32_t got = 0;
    const bool col = choices_.Bit();
    const GridResult put =
        col ? grid().PutColWidth(index, twips) : grid().PutRowHeight(index, twips);
    const GridResult get = col ? grid().GetColWidth(index, got) : grid().GetRowHeight(index, got);
    Require(put == get, "an index taken once and refused once");
    const bool own = index >= 0 && index < (col ? kCapacity.maxCols : kCapacity.maxRows);
    if (get == GridResult::Done && own) Require(got == twips / 15 * 15, "another size");
  }

  void Go() {
    grid().Row = choices_.Size();
    grid().Col = choices_.Size();
    std::string text;
    grid().GetText(text);
    grid().KeepEditText();
  }

  void Select() {
    grid().FillStyle = choices_.Bit() ? kFillSelection : kFillCell;
    grid().SelStartRow = choices_.Size();
    grid().SelEndRow = choices_.Size();
    grid().SelStartCol = choices_.Size();
    grid().SelEndCol = choices_.Size();
  }

  void PutText() { WriteText(choices_.Word()); }

  void WriteText(const std::string& text) {
    Expect(text);
    grid_.model.PutText(text);
  }

  // What a text does to the cells.
  void Expect(const std::string& text) {
    if (grid().FillStyle == kFillSelection) return ExpectInSelection(text);
    if (grid().Row < 0 || grid().Col < 0) return;
    const std::string dressed = Dressed(text, grid().Col);
    if (dressed.find('\t') == std::string::npos) return Set(grid().Row, grid().Col, dressed);
    int64_t row = grid().Row;
    int64_t col = grid().Col;
    for (const std::string& field : Split(dressed)) {
      if (field.empty()) continue;
      const int64_t entry = (row * grid().Cols + col) & 0xFFFF;
      if (entry == 0xFFFF) break;
      SetEntry(entry, field);
      Advance(row, col);
    }
  }

  void ExpectInSelection(const std::string& text) {
    const GridModel& g = grid();
    if (g.SelStartRow < g.FixedRows || g.SelStartCol < g.FixedCols) return;
    for (int64_t r = std::max(g.SelStartRow, 0); r <= std::min(g.SelEndRow, kCapacity.maxRows);
         ++r) {
      for (int64_t c = std::max(g.SelStartCol, 0); c <= std::min(g.SelEndCol, std::max(g.Cols, 5));
           ++c) {
        Set(r, c, text);
      }
    }
  }

  void PutLine() {
    const int32_t row = choices_.Size();
    const int32_t col = choices_.Size();
    const std::string text = choices_.Word();
    ExpectLine(row, col, text);
    bool memory = true;
    grid().SetRowText(row, col, text, memory);
    Require(memory, "no memory");
  }

  void ExpectLine(int64_t row, int64_t col, const std::string& text) {
    if (row < 0 || col < 0) return;
    const auto fields = Split(text);
    if (fields.empty()) Set(row, col, "");
    for (const std::string& field : fields) {
      Set(row, col, Dressed(field, col));
      Advance(row, col);
    }
  }

  void Format() {
    const int32_t col = choices_.Size();
    const bool formats = choices_.Bit();
    grid().PutFormatString(col, formats ? "<>" : "");
    if (col >= 0 && col < kCapacity.maxCols) formatted_[static_cast<size_t>(col)] = formats;
  }

  void PutArrays() {
    const int32_t index = choices_.Size();
    grid().PutTextAlign(index, 2);
    grid().PutIMEMode(index, 3);
    grid().PutCellMaxLength(index, 4);
    if (index >= 0 && index < 100) {
      Require(grid().GetTextAlign(index) == 2 && grid().GetIMEMode(index) == 3, "another element");
    }
    int16_t length = 0;
    grid().GetCellMaxLength(index, length);
  }

  void Clear() {
    grid().Clear();
    cells_.assign(kEntries, "");
  }

  // As the engine does it, with rows from the input.
  void Fill() {
    GridFill fill(grid(), engine_);
    const auto fields = static_cast<size_t>(choices_.Byte() % 8);
    fill.Empty(fields);
    cells_.assign(kEntries, "");
    Require(grid().positions.Size() == 0, "positions of another fill");
    int64_t row = grid().FixedRows;
    const int rows = choices_.Byte() % 12;
    for (int32_t record = 0; record < rows; ++record) {
      const std::string text = choices_.Word();
      fill.GivePosition(static_cast<uint32_t>(record + 1));
      const bool room = row != grid().Rows || grid().Rows < kCapacity.maxRows;
      const bool more = fill.AddRow(text.c_str());
      Require(room || !more, "a row more than there can be");
      if (room) ExpectLine(row++, grid().FixedCols, text);
      if (!more) break;
    }
    Require(grid().Rows <= kCapacity.maxRows, "more rows than there can be");
    Require(static_cast<int64_t>(grid().positions.Size()) == row - grid().FixedRows,
            "a position for each row shown");
  }

  void Edit() {
    grid().editActive = 1;
    grid_.edit = CodePageToUtf8(choices_.Word());
    grid_.cancel = choices_.Bit() ? "BeforeUpdate" : "";
    TakeStatuses();
    const std::string text = grid_.EditText();
    if (text != grid().savedEditText) Expect(text);
    grid_.data.CommitCell();
    grid_.data.CommitRow(choices_.Size());
  }

  void Delete() {
    grid().rowSelected = 1;
    grid_.cancel = choices_.Bit() ? "BeforeDelete" : "";
    TakeStatuses();
    const size_t before = grid().positions.Size();
    const int64_t row = std::max(grid().Row, 0);
    const int64_t first = std::max(grid().FixedCols, 0);
    grid_.data.DeleteCurrentRow();
    if (grid().positions.Size() == before) return;
    Require(grid().positions.Size() + 1 == before, "more than one position gone");
    for (int64_t c = first; c < grid().Cols; ++c) Set(row, c, "");
    for (int64_t r = row; r + 1 < grid().Rows; ++r) {
      for (int64_t c = first; c < grid().Cols; ++c) {
        Set(r, c, At(r + 1, c));
        Set(r + 1, c, "");
      }
    }
  }

  void TakeStatuses() {
    statuses.clear();
    for (int i = choices_.Byte() % 4; i > 0; --i) statuses.push_back(choices_.Byte() % 3 ? 0 : 43);
  }

  std::string Dressed(const std::string& text, int64_t col) const {
    const bool formats =
        col >= 0 && col < kCapacity.maxCols && formatted_[static_cast<size_t>(col)];
    return formats && !text.empty() ? "<" + text + ">" : text;
  }
  static std::vector<std::string> Split(const std::string& text) {
    std::vector<std::string> fields;
    for (const char byte : text) {
      if (fields.empty()) fields.emplace_back();
      if (byte == '\t') {
        fields.emplace_back();
      } else {
        fields.back() += byte;
      }
    }
    if (!fields.empty() && fields.back().empty()) fields.pop_back();
    return fields;
  }
  void Advance(int64_t& row, int64_t& col) {
    if (++col < grid().Cols) return;
    col = grid().FixedCols;
    ++row;
  }

  int64_t EntryOf(int64_t row, int64_t col) { return row * grid().Cols + col; }
  void Set(int64_t row, int64_t col, const std::string& text) { SetEntry(EntryOf(row, col), text); }
  void SetEntry(int64_t entry, const std::string& text) {
    if (entry >= 0 && entry < kEntries) cells_[static_cast<size_t>(entry)] = text;
  }
  std::string At(int64_t row, int64_t col) {
    const int64_t entry = EntryOf(row, col);
    return entry >= 0 && entry < kEntries ? cells_[static_cast<size_t>(entry)] : "";
  }
  void CheckCells() {
    for (int64_t entry = 0; entry < kEntries; ++entry) {
      const char* text = grid().CellText(0, entry);
      Require(cells_[static_cast<size_t>(entry)] == (text != nullptr ? text : ""), "another text");
    }
    Require(grid().CellText(0, -1) == nullptr && grid().CellText(0, kEntries) == nullptr,
            "a cell outside the store");
  }

  Choices choices_;
  std::vector<std::string> cells_;
  bool formatted_[kCapacity.maxCols] = {};
  QuorinSettings settings_;
  DbEngine engine_{settings_};
  test::OpenTable table_{
      {test::MakeField("f1", kString, 0, 4), test::MakeField("f2", kString, 4, 4)},
      {test::MakeSegment(0, 4, 0)},
      8};
  test::PlayedGrid grid_{kCapacity, &engine_};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ReplaceShowBox(CountMessage);
  ReplaceBtrCall(&Answer);
  Course(Choices(data, size)).Run();
  return 0;
}
