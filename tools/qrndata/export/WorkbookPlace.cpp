// Tables into one Excel workbook, row by row, in memory for one row.
#include <xlsxwriter.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <new>

#include "tools/qrndata/Listing.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/OutputFile.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/Text.h"
#include "tools/qrndata/export/ExportPlace.h"
#include "tools/qrndata/export/TypedValue.h"

namespace qrndata {

namespace {

constexpr uint64_t kMostRows = LXW_ROW_MAX - 1;  // below the names
constexpr size_t kMostColumns = LXW_COL_MAX;
constexpr size_t kMostCharacters = 32767;        // of a cell, as UTF-16 counts them
constexpr int64_t kMostExact = 999999999999999;  // a cell shows 15 digits

size_t Utf16Units(const std::string& utf8) {
  const auto begins = [](char c) { return (c & 0xC0) != 0x80; };
  const auto isPair = [](char c) { return static_cast<uint8_t>(c) >= 0xF0; };
  return static_cast<size_t>(std::ranges::count_if(utf8, begins) +
                             std::ranges::count_if(utf8, isPair));
}

void RequireRoom(const ExportedTable& table) {
  const std::string name = Quoted(table.table.name);
  if (table.names.size() > kMostColumns) {
    throw Failure(kBadInput,
                  Say(Message::TooManyColumns, name, Counted(table.names.size(), Message::Fields),
                      Grouped(kMostColumns)));
  }
  if (table.most <= kMostRows) return;
  throw Failure(kBadInput, Say(Message::TooManyRows, name, Counted(table.most, Message::Records),
                               Grouped(kMostRows)));
}

// Formats of cells, each made once.
class Formats {
 public:
  explicit Formats(lxw_workbook* workbook) : workbook_(workbook), head_(Make()) {
    format_set_bold(head_);
  }

  lxw_format* Head() const noexcept { return head_; }
  lxw_format* Numbers(const std::string& pattern) {
    lxw_format*& format = byPattern_[pattern];
    if (format == nullptr) {
      format = Make();
      format_set_num_format(format, pattern.c_str());
    }
    return format;
  }

 private:
  lxw_format* Make() {
    lxw_format* format = workbook_add_format(workbook_);
    if (format == nullptr) throw std::bad_alloc();
    return format;
  }

  lxw_workbook* workbook_;
  lxw_format* head_;
  std::map<std::string, lxw_format*> byPattern_;
};

constexpr const char* kDatePattern = "yyyy/mm/dd";
constexpr const char* kTimePattern = "hh:mm:ss";
constexpr const char* kHundredthsPattern = "hh:mm:ss.00";

// How the numbers of a field look; null: as they are.
lxw_format* LookOf(const qrn::DbFieldInfo& field, Formats& formats) {
  if (field.Type == qrn::kDate) return formats.Numbers(kDatePattern);
  if (field.Type == qrn::kTime) return formats.Numbers(kTimePattern);
  if (DecimalPlaces(field) == 0 || field.Decimals <= 0) return nullptr;
  return formats.Numbers("0." + std::string(static_cast<size_t>(field.Decimals), '0'));
}

// Days as a sheet counts them, in whose calendar 1900 has a 29th of February.
std::optional<double> SerialOf(const DateValue& date) {
  using namespace std::chrono;
  constexpr sys_days kDayZero = sys_days(1899y / December / 31),
                     kAfterGap = sys_days(1900y / March / 1);
  if (!date.IsInCalendar() || date.year < 1900) return std::nullopt;
  const sys_days day = year(date.year) / date.month / date.day;
  return (day - kDayZero).count() + (day >= kAfterGap ? 1 : 0);
}

std::optional<double> SerialOf(const TimeValue& time) {
  constexpr double kDay = 24 * 60 * 60;
  if (time.hours > 23 || time.minutes > 59 || time.seconds > 59) return std::nullopt;
  return (time.hours * 3600 + time.minutes * 60 + time.seconds + time.hundredths / 100.0) / kDay;
}

// A cell. What a sheet cannot show as a number or moment is the text that it was.
struct Cell {
  lxw_worksheet* sheet;
  lxw_row_t row;
  lxw_col_t column;
  lxw_format* format;
  Formats& formats;
  const std::string& text;

  lxw_error operator()(NoValue) const { return LXW_NO_ERROR; }
  lxw_error operator()(int64_t number) const {
    if (number > kMostExact || number < -kMostExact) return (*this)(text);
    return (*this)(static_cast<double>(number));
  }
  lxw_error operator()(double number) const {
    return worksheet_write_number(sheet, row, column, number, format);
  }
  lxw_error operator()(bool truth) const {
    return worksheet_write_boolean(sheet, row, column, truth ? 1 : 0, nullptr);
  }
  lxw_error operator()(const DateValue& date) const { return Moment(SerialOf(date), format); }
  lxw_error operator()(const TimeValue& time) const {
    return Moment(SerialOf(time),
                  time.hundredths == 0 ? format : formats.Numbers(kHundredthsPattern));
  }
  lxw_error operator()(const std::string& words) const {
    if (words.empty()) return LXW_NO_ERROR;
    return worksheet_write_string(sheet, row, column, words.c_str(), nullptr);
  }

 private:
  lxw_error Moment(std::optional<double> serial, lxw_format* look) const {
    return serial ? worksheet_write_number(sheet, row, column, *serial, look) : (*this)(text);
  }
};

void RequireCell(lxw_error error) {
  if (error != LXW_NO_ERROR) throw Failure(kSystem, lxw_strerror(error));
}

class SheetWriter : public RecordWriter {
 public:
  SheetWriter(lxw_worksheet* sheet, Formats& formats, const ExportedTable& table)
      : sheet_(sheet), formats_(formats), table_(table.table), names_(table.names) {
    for (const qrn::DbFieldInfo& field : table_.fields) looks_.push_back(LookOf(field, formats));
  }

  void Begin() override {
    worksheet_freeze_panes(sheet_, 1, 0);
    for (size_t slot = 0; slot < names_.size(); ++slot) {
      const auto column = static_cast<lxw_col_t>(slot);
      worksheet_set_column(sheet_, column, column, WidthOf(slot), nullptr);
    }
    for (size_t slot = 0; slot < names_.size(); ++slot) {
      RequireCell(worksheet_write_string(sheet_, 0, static_cast<lxw_col_t>(slot),
                                         names_[slot].c_str(), formats_.Head()));
    }
  }

  std::string Write(const TextValues& values) override {
    for (size_t slot = 0; slot < values.size(); ++slot) {
      if (values[slot] && Utf16Units(*values[slot]) > kMostCharacters) {
        return Say(Message::CellIsFull, Quoted(table_.fields[slot].Name), Grouped(kMostCharacters));
      }
    }
    if (row_ > kMostRows) {
      throw Failure(kBadInput, Say(Message::SheetIsFull, Quoted(table_.name), Grouped(kMostRows)));
    }
    for (size_t slot = 0; slot < values.size(); ++slot) {
      if (!values[slot]) continue;
      const Cell cell{sheet_,
                      static_cast<lxw_row_t>(row_),
                      static_cast<lxw_col_t>(slot),
                      looks_[slot],
                      formats_,
                      *values[slot]};
      RequireCell(std::visit(cell, TypedValueOf(table_.fields[slot], values[slot])));
    }
    ++row_;
    return {};
  }

 private:
  // Characters: what the field takes at most, the name, and some room.
  double WidthOf(size_t slot) const {
    constexpr int32_t kWidest = 40, kDateWidth = 10;
    const qrn::DbFieldInfo& field = table_.fields[slot];
    const bool isMoment = field.Type == qrn::kDate || field.Type == qrn::kTime;
    const int32_t value = isMoment ? kDateWidth : std::clamp(field.Size, 0, kWidest);
    return std::max<double>(value, static_cast<double>(DisplayWidth(names_[slot]))) + 2;
  }

  lxw_worksheet* sheet_;
  Formats& formats_;
  const Table& table_;
  std::vector<std::string> names_;
  std::vector<lxw_format*> looks_;
  uint64_t row_ = 1;
};

// Whether a part of it may pass the 4 GiB of plain zip files, whose extension not every program
// reads.
bool MayBeLarge(const std::vector<ExportedTable>& tables) {
  constexpr uint64_t kPlain = 1u << 30, kCellFrame = 50;
  uint64_t bytes = 0;
  for (const ExportedTable& table : tables) {
    bytes += table.most * (RecordLength(table.table) + table.names.size() * kCellFrame);
  }
  return bytes > kPlain;
}

struct CloseWorkbook {
  void operator()(lxw_workbook* workbook) const noexcept { lxw_workbook_free(workbook); }
};

class WorkbookPlace : public ExportPlace {
 public:
  WorkbookPlace(const ExportOptions& options, bool isLarge)
      : file_(options.output), workbook_(Open(isLarge)), formats_(workbook_.get()) {}

  RecordWriter& Next(const ExportedTable& table) override {
    const std::string name = SheetName(table.table);
    lxw_worksheet* sheet = workbook_add_worksheet(workbook_.get(), name.c_str());
    if (sheet == nullptr) throw std::bad_alloc();
    sheets_.push_back(sheet);
    writer_ = std::make_unique<SheetWriter>(sheet, formats_, table);
    return *writer_;
  }

  void Finish() override {
    for (lxw_worksheet* sheet : sheets_) {
      std::FILE* rows = sheet->optimize_tmpfile;
      if (rows != nullptr && (std::fflush(rows) != 0 || std::ferror(rows) != 0)) {
        throw Failure(kSystem, Say(Message::NoRoomForTemporary));
      }
    }
    if (workbook_close(workbook_.release()) != LXW_NO_ERROR) file_.Fail();
    file_.Finish();
  }

 private:
  lxw_workbook* Open(bool isLarge) const {
    if (file_.IsDirect()) file_.Fail();
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    options.use_zip64 = isLarge ? LXW_TRUE : LXW_FALSE;
    lxw_workbook* workbook = workbook_new_opt(PathToUtf8(file_.Path()).c_str(), &options);
    if (workbook == nullptr) throw std::bad_alloc();
    return workbook;
  }

  // A table's name with what no sheet's name has taken out; each stands once.
  std::string SheetName(const Table& table) {
    std::string name = Show(table.name);
    std::ranges::replace_if(
        name,
        [](char c) { return std::string_view("[]:*?/\\'").find(c) != std::string_view::npos; },
        '_');
    const auto isFree = [&] {
      return workbook_validate_sheet_name(workbook_.get(), name.c_str()) == LXW_NO_ERROR;
    };
    if (!isFree()) name += "_" + std::to_string(table.id);
    return name;
  }

  SideFile file_;
  std::unique_ptr<lxw_workbook, CloseWorkbook> workbook_;
  Formats formats_;
  std::vector<lxw_worksheet*> sheets_;
  std::unique_ptr<SheetWriter> writer_;
};

}  // namespace

std::unique_ptr<ExportPlace> MakeWorkbookPlace(const ExportOptions& options,
                                               const std::vector<ExportedTable>& tables) {
  if (options.where.empty()) std::ranges::for_each(tables, &RequireRoom);
  return std::make_unique<WorkbookPlace>(options, MayBeLarge(tables));
}

}  // namespace qrndata
