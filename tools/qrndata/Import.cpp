// `import`: rows of a CSV file into a table.
#include <algorithm>
#include <fstream>
#include <memory>

#include "tools/qrndata/ColumnMap.h"
#include "tools/qrndata/CsvReader.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/Interrupt.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/OutputFile.h"
#include "tools/qrndata/OutputPlace.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/RowChanger.h"
#include "tools/qrndata/RowImporter.h"
#include "tools/qrndata/Verbs.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;

bool IsStandardInput(const ImportOptions& options) { return options.file == "-"; }

std::string InputName(const ImportOptions& options) {
  return IsStandardInput(options) ? Say(Message::StandardInput) : PathToUtf8(options.file);
}

std::ifstream OpenInput(const ImportOptions& options) {
  if (IsStandardInput(options)) return {};
  std::error_code ignored;
  std::ifstream file(options.file, std::ios::binary);
  if (!file || fs::is_directory(options.file, ignored)) {
    throw Failure(kSystem, Say(Message::CannotBeRead, PathToUtf8(options.file)));
  }
  return file;
}

std::string UnmappableText(const Converted& text, Encoding encoding) {
  const Message message = !text.isBroken                      ? Message::NoneInCodePage
                          : encoding == Encoding::CodePage932 ? Message::NotCodePage
                                                              : Message::NotUtf8;
  return Say(message, text.unmappable, text.unmappableAt + 1);
}

// Files that spreadsheets call "Unicode": two bytes a character.
bool IsWide(std::string_view firstLine) {
  return firstLine.starts_with("\xFF\xFE") || firstLine.starts_with("\xFE\xFF") ||
         firstLine.find('\0') != firstLine.npos;
}

void RequireNarrow(std::string_view firstLine, const std::string& file) {
  if (!IsWide(firstLine)) return;
  throw BadInput(file, {1, 1}, Say(Message::FileIsWide));
}

// A row that is read, but neither stored nor told to be refused yet.
struct PendingRow {
  CsvRow row;
  Refusal refusal;
  uint32_t replaced = 0;  // texts with characters that were replaced or left out
};

class CsvImport {
 public:
  CsvImport(const ImportOptions& options, const Streams& streams, Dictionary dictionary)
      : options_(options),
        streams_(streams),
        fileName_(InputName(options)),
        dictionary_(std::move(dictionary)),
        table_(dictionary_.Find(options.table)),
        file_(OpenInput(options)),
        reader_(IsStandardInput(options) ? *streams.in : file_, options.encoding,
                options.delimiter),
        values_(table_.fields.size()) {}

  ExitCode Run();

 private:
  void MapColumns();
  void ReadHeader(const std::vector<ColumnRule>& rules);
  void OpenStore();
  void ReadRows();
  bool IsWanted(const CsvRow& row) const { return row.line >= options_.first; }
  void Take(PendingRow& pending);
  Refusal TakeCells(PendingRow& pending);
  Refusal TakeCell(const CsvCell& cell, size_t slot, uint32_t& replaced);
  void MakeRoom();
  void Settle(bool isLast);
  void Pass();
  void PassRefused();
  bool IsOverLimit() const;
  void Refuse(const PendingRow& pending);
  Position PlaceOf(const CsvRow& row, const Refusal& refusal) const;
  void KeepRefused(const CsvRow& row);
  [[noreturn]] void Stop(const Failure& failure);
  uint32_t NextLine() const;
  Converted Decode(const std::string& text) const;
  ExitCode Report() const;

  // Rows are kept until they are decided: so many, and so many bytes.
  static constexpr size_t kMostPending = 10000, kMostPendingBytes = 16u << 20;

  const ImportOptions& options_;
  const Streams& streams_;
  std::string fileName_;
  Dictionary dictionary_;
  const Table& table_;
  std::ifstream file_;
  CsvReader reader_;
  std::unique_ptr<RowStore> store_;
  ColumnSlots slots_;  // the field of each column
  std::string header_;
  FieldValues values_;
  std::optional<OutputFile> refusals_;
  std::vector<PendingRow> pending_;  // the first pendingCount_ are in use
  size_t pendingCount_ = 0, decided_ = 0, pendingBytes_ = 0, pendingRefused_ = 0;
  uint32_t nextLine_ = 0;  // where what is not taken yet begins
  uint64_t rows_ = 0, refused_ = 0, replaced_ = 0;
  uint64_t tooLong_ = 0;  // refused, and not kept
};

Converted CsvImport::Decode(const std::string& text) const {
  if (options_.encoding == Encoding::Utf8) return ToCodePage(text, options_.onUnmappable);
  return SoundCodePage(text, options_.onUnmappable, false);
}

void CsvImport::ReadHeader(const std::vector<ColumnRule>& rules) {
  CsvRow row;
  if (!reader_.Next(row)) {
    throw BadInput(fileName_, {1, 1}, Say(Message::HeaderExpected));
  }
  RequireNarrow(row.raw, fileName_);
  if (!row.problem.empty()) throw BadInput(fileName_, row.problemAt, row.problem);
  std::vector<std::string> names;
  std::vector<Position> places;
  for (const CsvCell& cell : row.cells) {
    const Converted name = Decode(cell.text);
    if (name.isBroken) throw BadInput(fileName_, cell.at, UnmappableText(name, options_.encoding));
    names.push_back(options_.encoding == Encoding::Utf8 ? cell.text : Show(name.text));
    places.push_back(cell.at);
  }
  slots_ = MapHeader(table_, names, places, fileName_, rules);
  header_ = row.raw;
}

void CsvImport::MapColumns() {
  const std::vector<ColumnRule> rules = ParseColumnRules(options_.columns, options_.hasHeader);
  if (options_.hasHeader) return ReadHeader(rules);
  slots_ = MapInOrder(table_, rules);
}

void CsvImport::OpenStore() {
  const std::chrono::seconds patience(options_.patience);
  if (options_.changeKey.empty()) {
    store_ = std::make_unique<RowImporter>(options_.directory, table_,
                                           options_.isDryRun ? 0 : options_.batch, patience);
  } else {
    std::vector<size_t> given;
    for (const auto& slot : slots_) {
      if (slot) given.push_back(*slot);
    }
    store_ = std::make_unique<RowChanger>(options_.directory, table_, options_.changeMode,
                                          options_.changeKey, given, patience, options_.isDryRun);
  }
  WarnOf(table_, store_->Match(), streams_.err);
}

Refusal CsvImport::TakeCell(const CsvCell& cell, size_t slot, uint32_t& replaced) {
  values_[slot].reset();
  if (cell.IsMissing()) return {};
  Converted text = Decode(cell.text);
  if (!text.IsExact()) {
    if (options_.onUnmappable == OnUnmappable::Error) {
      return {UnmappableText(text, options_.encoding), slot};
    }
    ++replaced;
  }
  values_[slot] = std::move(text.text);
  return {};
}

Refusal CsvImport::TakeCells(PendingRow& pending) {
  const CsvRow& row = pending.row;
  if (!row.problem.empty()) return {row.problem, {}};
  if (row.cells.size() != slots_.size()) {
    return {Say(options_.hasHeader ? Message::CellsExpected : Message::CellsExpectedBare,
                Counted(slots_.size(), Message::Cells), row.cells.size()),
            {}};
  }
  for (size_t column = 0; column < slots_.size(); ++column) {
    if (!slots_[column]) continue;
    Refusal refusal = TakeCell(row.cells[column], *slots_[column], pending.replaced);
    if (refusal) return refusal;
  }
  return store_->Add(values_);
}

void CsvImport::Take(PendingRow& pending) {
  std::fill(values_.begin(), values_.end(), std::nullopt);
  pending.replaced = 0;
  pending.refusal = TakeCells(pending);
  ++rows_;
  ++pendingCount_;
  pendingBytes_ += pending.row.raw.size();
  if (pending.refusal) ++pendingRefused_;
}

Position CsvImport::PlaceOf(const CsvRow& row, const Refusal& refusal) const {
  if (!row.problem.empty()) return row.problemAt;
  const auto column = std::find(slots_.begin(), slots_.end(), refusal.fieldSlot);
  const bool isCell = refusal.fieldSlot && column != slots_.end();
  return row.cells[isCell ? static_cast<size_t>(column - slots_.begin()) : 0].at;
}

void CsvImport::Refuse(const PendingRow& pending) {
  const Refusal& refusal = pending.refusal;
  if (++refused_ <= options_.shown) {
    std::string text = refusal.problem;
    if (refusal.fieldSlot) {
      text = Say(Message::OfField, Quoted(table_.fields[*refusal.fieldSlot].Name), text);
    }
    streams_.err << AtPlace(fileName_, PlaceOf(pending.row, refusal), text) << '\n';
  } else if (refused_ == options_.shown + 1) {
    streams_.err << Say(Message::FurtherNotListed) << '\n';
  }
  if (!options_.refusals.empty()) KeepRefused(pending.row);
}

void CsvImport::KeepRefused(const CsvRow& row) {
  if (!refusals_) {
    refusals_.emplace(options_.refusals);
    if (options_.hasHeader) refusals_->Stream() << header_ << '\n';
  }
  if (row.raw.size() < kMostRowBytes) {
    refusals_->Stream() << row.raw << '\n';
  } else {
    ++tooLong_;
  }
  if (!refusals_->KeepSoFar()) {
    throw Failure(kSystem, Say(Message::CannotBeWritten, PathToUtf8(options_.refusals)));
  }
}

bool CsvImport::IsOverLimit() const {
  return options_.maxErrors != 0 && refused_ + pendingRefused_ >= options_.maxErrors;
}

// The row is decided: stored, or refused.
void CsvImport::Pass() {
  const PendingRow& pending = pending_[decided_];
  if (!pending.refusal) {
    replaced_ += pending.replaced;
    ++decided_;
    return;
  }
  if (pendingRefused_ != 0) --pendingRefused_;
  Refuse(pending);
  ++decided_;
  if (options_.maxErrors == 0 || refused_ < options_.maxErrors) return;
  throw Failure(kBadInput, Say(Message::MaxErrorsReached, Counted(refused_, Message::Rows)));
}

void CsvImport::PassRefused() {
  while (decided_ < pendingCount_ && pending_[decided_].refusal) Pass();
}

void CsvImport::Settle(bool isLast) {
  decided_ = 0;
  PassRefused();
  while (decided_ < pendingCount_) {
    Outcome outcome = isLast ? store_->StoreLast() : store_->Store();
    for (; outcome.stored != 0; Pass()) {
      if (!pending_[decided_].refusal) --outcome.stored;
    }
    PassRefused();
    if (outcome.failure) throw *outcome.failure;
    if (!outcome.refusal) continue;
    pending_[decided_].refusal = std::move(outcome.refusal);
    ++pendingRefused_;
    PassRefused();
  }
  pendingCount_ = decided_ = pendingBytes_ = 0;
  if (isLast) store_->Close();
}

// The row that has just been read stays as the first.
void CsvImport::MakeRoom() {
  const bool isFull = store_->IsFull() || pendingCount_ >= kMostPending ||
                      pendingBytes_ >= kMostPendingBytes || IsOverLimit();
  if (!isFull) return;
  const size_t read = pendingCount_;
  Settle(false);
  std::swap(pending_[0], pending_[read]);
}

void CsvImport::ReadRows() {
  std::error_code error;
  const uintmax_t size = fs::file_size(options_.file, error);
  Progress progress(streams_.terminal, Show(table_.name), error ? 0 : size);
  const InterruptWatch watch;
  while (true) {
    if (pendingCount_ == pending_.size()) pending_.emplace_back();
    CsvRow& row = pending_[pendingCount_].row;
    if (!reader_.Next(row) || row.line > options_.last) break;
    if (!IsWanted(row)) continue;
    nextLine_ = row.line;
    if (rows_ == 0 && !options_.hasHeader) RequireNarrow(row.raw, fileName_);
    MakeRoom();
    Take(pending_[pendingCount_]);
    nextLine_ = reader_.Line();
    progress.Update(reader_.BytesRead(), rows_);
    if (!InterruptWatch::WasInterrupted()) continue;
    Settle(true);
    throw Failure(kInterrupted, Say(Message::Interrupted));
  }
  Settle(true);
  if (file_.bad()) throw Failure(kSystem, Say(Message::CannotBeReadOn, fileName_));
  if (refusals_) refusals_->Finish();
}

ExitCode CsvImport::Report() const {
  const uint64_t taken = rows_ - refused_;
  streams_.out << Show(table_.name) << ": "
               << Say(options_.isDryRun ? Message::CouldBeTaken : Message::Taken,
                      Counted(taken, Message::Rows));
  if (!options_.changeKey.empty()) {
    streams_.out << Say(Message::ChangedAndNew, Grouped(store_->Changed()),
                        Grouped(taken - store_->Changed()));
  }
  if (refused_ != 0) streams_.out << Say(Message::AndRefused, Grouped(refused_));
  if (replaced_ != 0) {
    const bool isLeftOut = options_.onUnmappable == OnUnmappable::Skip;
    streams_.out << Say(isLeftOut ? Message::TextsLeftOut : Message::TextsReplaced,
                        Counted(replaced_, Message::Texts));
  }
  if (tooLong_ != 0) {
    streams_.out << Say(Message::TooLongToKeep, Grouped(tooLong_), PathToUtf8(options_.refusals));
  }
  streams_.out << '\n';
  return refused_ == 0 ? kDone : kFaultsFound;
}

// Of the first row that is neither stored nor refused.
uint32_t CsvImport::NextLine() const {
  return decided_ < pendingCount_ ? pending_[decided_].row.line : nextLine_;
}

// The rows refused so far are kept: the ones around them are stored.
void CsvImport::Stop(const Failure& failure) {
  std::string text = Say(Message::StoppedBefore, failure.what(), NextLine(), fileName_);
  if (!options_.isDryRun) {
    text += Say(Message::StoredUntilThere, Counted(store_->Stored(), Message::Rows), NextLine());
  }
  try {
    if (refusals_) refusals_->FinishKept();
  } catch (const Failure& another) {
    text.append("; ").append(another.what());
  }
  throw Failure(failure.Code(), text);
}

ExitCode CsvImport::Run() {
  MapColumns();
  OpenStore();
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
  throw Failure(kUsage, Say(Message::IsTheInput, PathToUtf8(options.refusals)));
}

}  // namespace

ExitCode RunImport(const ImportOptions& options, const Streams& streams) {
  Dictionary dictionary = ReadDictionary(options.directory);
  if (!options.refusals.empty()) RefuseRefusalsFile(options, dictionary);
  return CsvImport(options, streams, std::move(dictionary)).Run();
}

}  // namespace qrndata
