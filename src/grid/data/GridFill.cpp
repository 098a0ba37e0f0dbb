#include "grid/data/GridFill.h"

#include <algorithm>
#include <charconv>

#include "core/DictionaryLookup.h"
#include "extended/FillFromExtended.h"
#include "grid/data/FieldNames.h"
#include "grid/model/GridMemory.h"

namespace qrn {
namespace {

// Right in four places, or as wide as it is.
class RecordNumber {
 public:
  std::string_view Text(int32_t number) noexcept {
    char digits[12];
    const auto length =
        static_cast<size_t>(std::to_chars(digits, std::end(digits), number).ptr - digits);
    const size_t blanks = length < kWidth ? kWidth - length : 0;
    std::fill_n(text_, blanks, ' ');
    std::copy_n(digits, length, text_ + blanks);
    return {text_, blanks + length};
  }

 private:
  static constexpr size_t kWidth = 4;
  char text_[16];
};

}  // namespace

GridFill::GridFill(GridModel& model, DbEngine& engine)
    : model_(model),
      engine_(engine),
      window_(model.host().Window()),
      names_(model.host().Names()),
      keepsPositions_(model.AllowUpdate != 0 || model.AllowDelete != 0) {}

void GridFill::Run() {
  if (!Prepare() || !Read()) return;
  if (model_.host().Window() != window_) return;
  WriteNames();
  WriteNumbers();
  TakeLengths();
  if (!memory_) ReportGridMemoryFailure();
  model_.host().ShowFilled();
}

DbTableInfo* GridFill::Table() {
  GridHost& host = model_.host();
  return host.Window() == window_ ? host.FindTable(names_) : nullptr;
}

bool GridFill::Prepare() {
  DbTableInfo* table = Table();
  if (table == nullptr) return false;
  model_.listKeyNumber = static_cast<int16_t>(DbFindIndexOrFirst(*table, names_.index.c_str()));
  return table->IsOpen != 0 || model_.host().OpenTable(*table, names_);
}

bool GridFill::Read() {
  ExFill fill = model_.ToFill();
  fill.Kind = FillKind::Grid;
  fill.ListIndexId = model_.listKeyNumber;
  fill.SavePosition = keepsPositions_;
  fill.DbConditions = names_.conditions.c_str();
  fill.DbListFields = names_.fields.c_str();
  return FillFromExtended(engine_, fill, *this);
}

void GridFill::Empty(size_t fieldCount) {
  model_.ClearCells();
  model_.positions.Clear();
  row_ = model_.FixedRows;
  const int64_t wanted = int64_t{model_.FixedCols} + static_cast<int64_t>(fieldCount);
  if (model_.Cols < wanted) model_.Cols = static_cast<int32_t>(wanted);
}

bool GridFill::Format(std::u16string& lineData) {
  model_.Abort = 0;
  model_.host().RaiseFormat(lineData);
  return model_.Abort == 0;
}

void GridFill::GivePosition(uint32_t position) {
  const size_t next = model_.positions.Size();
  placed_ = model_.positions.Set(next, static_cast<int32_t>(position));
  memory_ &= placed_;
}

// False when the row that is next cannot be: the grid is full.
bool GridFill::MakeRow() {
  if (row_ != model_.Rows) return true;
  if (model_.Rows >= model_.maxRows()) return false;
  ++model_.Rows;
  return true;
}

// A record whose position was not kept would move the rows below it onto other records: the fill
// ends. One beyond the last row leaves no position behind either, for no row stands for it.
bool GridFill::AddRow(const char* text) {
  if (!placed_) return false;
  if (!MakeRow()) {
    model_.positions.Remove(model_.positions.Size() - 1);
    return false;
  }
  model_.SetRowText(row_, model_.FixedCols, text, memory_);
  return ++row_ <= model_.Rows;
}

void GridFill::BtrieveError(const char* tableName, Status status) {
  model_.host().RaiseBtrieveError(tableName, status);
}

// Kept so: the names stand in a row, but it is a fixed column that they need.
void GridFill::WriteNames() {
  if (model_.FixedCols < 1 || model_.SetColNames == 0) return;
  int32_t col = model_.FixedCols;
  for (const std::string& name : FieldNames(names_.fields)) {
    memory_ &= model_.SetCellText(0, col, name);
    if (model_.SetColWidth != 0) model_.SetColWidthPx(col, model_.host().NameWidthPx(name));
    ++col;
  }
}

// Kept so: with more than one fixed row the last rows have no number.
void GridFill::WriteNumbers() {
  if (model_.FixedRows < 1 || model_.SetRecordNumbers == 0) return;
  const int32_t last = model_.Rows - model_.FixedRows;
  RecordNumber number;
  for (int32_t row = model_.FixedRows, count = 1; row <= last; ++row, ++count) {
    memory_ &= model_.SetCellText(row, 0, number.Text(count));
  }
}

// What the edit box takes at most is the stored size of the column's field, for numbers too.
void GridFill::TakeLengths() {
  const DbTableInfo* table = Table();
  if (model_.AllowUpdate == 0 || table == nullptr || table->FieldCount == 0) return;
  model_.CellMaxLength.Clear();
  size_t index = 0;
  for (const std::string& name : FieldNames(names_.fields)) {
    const DbFieldInfo* field = DbFieldAt(*table, DbFindField(*table, name.c_str()));
    const int32_t size = field != nullptr ? field->Size : 0;
    memory_ &= model_.CellMaxLength.Set(index++, static_cast<int16_t>(size));
  }
}

}  // namespace qrn
