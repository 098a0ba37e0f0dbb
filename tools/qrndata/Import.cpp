// `import`: rows of a CSV file into a table.
#include <algorithm>
#include <fstream>

#include "tools/qrndata/CsvReader.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/OutputFile.h"
#include "tools/qrndata/OutputPlace.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/RowImporter.h"
#include "tools/qrndata/Verbs.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;

std::ifstream OpenInput(const fs::path& path) {
  std::error_code ignored;
  std::ifstream file(path, std::ios::binary);
  if (!file || fs::is_directory(path, ignored)) {
    throw Failure(kSystem, PathToUtf8(path) + ": cannot be read");
  }
  return file;
}

std::string UnmappableText(const Converted& text, Encoding encoding) {
  const std::string place =
      " (character " + std::to_string(text.unmappableAt + 1) + " of the text)";
  if (!text.isBroken) return "code page 932 has no " + text.unmappable + place;
  if (encoding == Encoding::CodePage932) {
    return "not code page 932: " + text.unmappable + place +
           "; without --encoding a file is read as UTF-8";
  }
  return "not UTF-8: " + text.unmappable + place +
         "; --encoding cp932 reads a file in code page 932";
}

// Files that spreadsheets call "Unicode": two bytes a character.
bool IsWide(std::string_view firstLine) {
  return firstLine.starts_with("\xFF\xFE") || firstLine.starts_with("\xFE\xFF") ||
         firstLine.find('\0') != firstLine.npos;
}

class CsvImport {
 public:
  CsvImport(const ImportOptions& options, const Streams& streams, Dictionary dictionary)
      : options_(options),
        streams_(streams),
        fileName_(PathToUtf8(options.file)),
        dictionary_(std::move(dictionary)),
        table_(dictionary_.Find(options.table)),
        importer_(options.directory, table_, options.isDryRun ? 0 : options.batch,
                  Sharing::WithOthers, std::chrono::seconds(options.patience)),
        input_(OpenInput(options.file)),
        reader_(input_, options.encoding),
        values_(table_.fields.size()) {
    WarnOf(table_, importer_.Match(), streams.err);
  }

  ExitCode Run();

 private:
  void ReadHeader();
  void MapColumn(const CsvCell& cell);
  void ReadRows();
  Refusal TakeRow(const CsvRow& row, Position& at);
  Refusal TakeCell(const CsvCell& cell, size_t slot);
  void Refuse(const CsvRow& row, Position at, const std::string& problem);
  void KeepRefused(const CsvRow& row);
  [[noreturn]] void Stop(const Failure& failure);
  Converted Decode(const std::string& text) const;
  std::string FieldName(size_t slot) const;
  ExitCode Report() const;

  const ImportOptions& options_;
  const Streams& streams_;
  std::string fileName_;
  Dictionary dictionary_;
  const Table& table_;
  RowImporter importer_;
  std::ifstream input_;
  CsvReader reader_;
  std::vector<size_t> slots_;  // the field of each column
  std::string header_;
  FieldValues values_;
  std::optional<OutputFile> refusals_;
  uint64_t rows_ = 0, refused_ = 0, replaced_ = 0, replacedInRow_ = 0;
};

Converted CsvImport::Decode(const std::string& text) const {
  if (options_.encoding == Encoding::Utf8) return ToCodePage(text, options_.onUnmappable);
  return SoundCodePage(text, options_.onUnmappable, false);
}

std::string CsvImport::FieldName(size_t slot) const {
  return "field " + Quoted(table_.fields[slot].Name) + ": ";
}

void CsvImport::MapColumn(const CsvCell& cell) {
  const Converted name = Decode(cell.text);
  if (name.isBroken) throw BadInput(fileName_, cell.at, UnmappableText(name, options_.encoding));
  const qrn::DbFieldInfo* field = name.IsExact() ? FindField(table_, name.text) : nullptr;
  if (field == nullptr) {
    std::string all;
    for (const qrn::DbFieldInfo& each : table_.fields) {
      all.append(all.empty() ? "" : ", ").append(Show(each.Name));
    }
    throw BadInput(fileName_, cell.at,
                   "the table has no field \"" + Show(name.text) + "\"; expected one of " + all);
  }
  const auto slot = static_cast<size_t>(field - table_.fields.data());
  if (std::find(slots_.begin(), slots_.end(), slot) != slots_.end()) {
    throw BadInput(fileName_, cell.at, "field " + Quoted(field->Name) + " has a column already");
  }
  slots_.push_back(slot);
}

void CsvImport::ReadHeader() {
  CsvRow row;
  if (!reader_.Next(row)) {
    throw BadInput(fileName_, {1, 1}, "expected a first line with the fields' names");
  }
  if (IsWide(row.raw)) {
    throw BadInput(fileName_, {1, 1},
                   "the file is in UTF-16; expected UTF-8, or code page 932 with "
                   "--encoding cp932");
  }
  if (!row.problem.empty()) throw BadInput(fileName_, row.problemAt, row.problem);
  for (const CsvCell& cell : row.cells) MapColumn(cell);
  header_ = row.raw;
}

Refusal CsvImport::TakeCell(const CsvCell& cell, size_t slot) {
  values_[slot].reset();
  if (cell.IsMissing()) return {};
  Converted text = Decode(cell.text);
  if (!text.IsExact()) {
    if (options_.onUnmappable == OnUnmappable::Error) {
      return {UnmappableText(text, options_.encoding), slot};
    }
    ++replacedInRow_;
  }
  values_[slot] = std::move(text.text);
  return {};
}

Refusal CsvImport::TakeRow(const CsvRow& row, Position& at) {
  at = row.problemAt;
  if (!row.problem.empty()) return {row.problem, {}};
  at = row.cells.front().at;
  if (row.cells.size() != slots_.size()) {
    return {"expected " + Counted(slots_.size(), "cell") + " as in the first line, found " +
                std::to_string(row.cells.size()),
            {}};
  }
  Refusal refusal;
  replacedInRow_ = 0;
  for (size_t column = 0; column < slots_.size() && !refusal; ++column) {
    refusal = TakeCell(row.cells[column], slots_[column]);
  }
  if (!refusal) refusal = importer_.Put(values_);
  if (!refusal) replaced_ += replacedInRow_;
  if (refusal.fieldSlot) {
    const auto column = std::find(slots_.begin(), slots_.end(), *refusal.fieldSlot);
    if (column != slots_.end()) {
      at = row.cells[static_cast<size_t>(column - slots_.begin())].at;
    }
    refusal.problem.insert(0, FieldName(*refusal.fieldSlot));
  }
  return refusal;
}

void CsvImport::Refuse(const CsvRow& row, Position at, const std::string& problem) {
  if (++refused_ <= options_.shown) {
    streams_.err << AtPlace(fileName_, at, problem) << '\n';
  } else if (refused_ == options_.shown + 1) {
    streams_.err << "further refusals are not listed (--show-refused takes their number)\n";
  }
  if (!options_.refusals.empty()) KeepRefused(row);
}

void CsvImport::KeepRefused(const CsvRow& row) {
  if (!refusals_) {
    refusals_.emplace(options_.refusals);
    refusals_->Stream() << header_ << '\n';
  }
  refusals_->Stream() << row.raw << '\n';
  if (!refusals_->Stream().flush()) {
    throw Failure(kSystem, PathToUtf8(options_.refusals) + ": cannot be written");
  }
}

void CsvImport::ReadRows() {
  std::error_code error;
  const uintmax_t size = fs::file_size(options_.file, error);
  Progress progress(streams_.terminal, Show(table_.name), error ? 0 : size);
  CsvRow row;
  while (reader_.Next(row)) {
    ++rows_;
    std::fill(values_.begin(), values_.end(), std::nullopt);
    Position at;
    if (const Refusal refusal = TakeRow(row, at)) Refuse(row, at, refusal.problem);
    progress.Update(reader_.BytesRead(), rows_);
  }
  importer_.Finish();
  if (refusals_) refusals_->Finish();
}

ExitCode CsvImport::Report() const {
  const uint64_t taken = rows_ - refused_;
  streams_.out << Show(table_.name) << ": " << Counted(taken, "row") << ' '
               << (options_.isDryRun ? "could be taken" : "taken");
  if (refused_ != 0) streams_.out << ", " << Grouped(refused_) << " refused";
  if (replaced_ != 0) {
    streams_.out << ", " << Counted(replaced_, "text") << " with characters "
                 << (options_.onUnmappable == OnUnmappable::Skip ? "left out" : "replaced");
  }
  streams_.out << '\n';
  return refused_ == 0 ? kDone : kFaultsFound;
}

// The rows refused so far are kept: the ones around them are stored.
void CsvImport::Stop(const Failure& failure) {
  std::string text = std::string(failure.what()) + "; stopped at row " + Grouped(rows_) + " of " +
                     fileName_ + "; stored before it: " + Counted(importer_.Stored(), "row") +
                     ", later ones are not";
  try {
    if (refusals_ && refusals_->Stream().good()) refusals_->Finish();
  } catch (const Failure& another) {
    text.append("; ").append(another.what());
  }
  throw Failure(failure.Code(), text);
}

ExitCode CsvImport::Run() {
  ReadHeader();
  try {
    ReadRows();
  } catch (const Failure& failure) {
    Stop(failure);
  }
  return Report();
}

void RefuseRefusalsFile(const ImportOptions& options, const Dictionary& dictionary) {
  RefuseDatabaseFile(options.refusals, dictionary);
  if (!IsSameFile(options.refusals, options.file)) return;
  throw Failure(kUsage, PathToUtf8(options.refusals) +
                            ": this is the file that the rows come from; name another file");
}

}  // namespace

ExitCode RunImport(const ImportOptions& options, const Streams& streams) {
  Dictionary dictionary = ReadDictionary(options.directory);
  if (!options.refusals.empty()) RefuseRefusalsFile(options, dictionary);
  return CsvImport(options, streams, std::move(dictionary)).Run();
}

}  // namespace qrndata
