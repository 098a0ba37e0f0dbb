// `export`: tables' records into files that other programs read.
#include <algorithm>

#include "tools/qrndata/Messages.h"
#include "tools/qrndata/OutputPlace.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/export/TableExport.h"

namespace qrndata {

namespace {

bool IsText(ExportFormat format) {
  return format != ExportFormat::Sqlite && format != ExportFormat::Xlsx;
}

// A failure to read says what was not written for it.
template <class Body>
void NamingOutput(const std::filesystem::path& output, Body body) {
  try {
    body();
  } catch (const Failure& failure) {
    const std::string what = failure.what(), name = PathToUtf8(output);
    if (failure.Code() != kSystem || output.empty() || what.starts_with(name)) throw;
    throw Failure(kSystem, Say(Message::NotWritten, what, name));
  }
}

class Export {
 public:
  Export(const ExportOptions& options, const Streams& streams)
      : options_(options), streams_(streams), dictionary_(ReadDictionary(options.directory)) {}

  ExitCode Run();

 private:
  void ChooseTables();
  void RequireOptions() const;
  std::vector<ExportedTable> OpenTables();
  void WriteTables(ExportPlace& place, const std::vector<ExportedTable>& described);
  std::unique_ptr<ExportPlace> MakePlace(const std::vector<ExportedTable>& described) const;
  ExitCode Report() const;

  const ExportOptions& options_;
  const Streams& streams_;
  Dictionary dictionary_;
  std::vector<const Table*> tables_;
  std::vector<std::unique_ptr<TableExport>> exports_;
};

void Export::ChooseTables() {
  for (const std::string& name : options_.tables) {
    const Table* table = &dictionary_.Find(name);
    if (std::ranges::find(tables_, table) == tables_.end()) tables_.push_back(table);
  }
  if (!options_.tables.empty()) return;
  for (const Table& table : dictionary_.tables) tables_.push_back(&table);
}

void Export::RequireOptions() const {
  const bool isOfOne = !options_.fields.empty() || !options_.where.empty() || !options_.key.empty();
  if (isOfOne && tables_.size() != 1) {
    throw Failure(kUsage, Say(Message::OneTableOnly, tables_.size()));
  }
  if (IsText(options_.format)) {
    if (tables_.size() == 1 || !options_.output.empty()) return;
    throw Failure(kUsage, Say(Message::FolderNeeded));
  }
  if (options_.encoding != Encoding::Utf8) {
    throw Failure(kUsage, Say(Message::EncodingOfText));
  }
  if (options_.output.empty()) {
    throw Failure(kUsage, Say(Message::FileNeeded));
  }
}

std::vector<ExportedTable> Export::OpenTables() {
  std::vector<ExportedTable> described;
  for (const Table* table : tables_) {
    exports_.push_back(std::make_unique<TableExport>(options_, streams_, dictionary_, *table));
    described.push_back(exports_.back()->Described());
  }
  return described;
}

void Export::WriteTables(ExportPlace& place, const std::vector<ExportedTable>& described) {
  for (size_t at = 0; at < described.size(); ++at) {
    exports_[at]->WriteTo(place.Next(described[at]));
  }
}

std::unique_ptr<ExportPlace> Export::MakePlace(const std::vector<ExportedTable>& described) const {
  if (options_.format == ExportFormat::Sqlite) return MakeSqlitePlace(options_, streams_);
  if (options_.format == ExportFormat::Xlsx) return MakeWorkbookPlace(options_, described);
  return MakeTextPlace(options_, streams_, described);
}

ExitCode Export::Report() const {
  ExitCode code = kDone;
  for (size_t at = 0; at < exports_.size(); ++at) {
    if (!options_.output.empty()) {
      streams_.out << Show(tables_[at]->name) << ": "
                   << Counted(exports_[at]->Written(), Message::Rows) << '\n';
    }
    code = std::max(code, exports_[at]->Report());
  }
  return code;
}

ExitCode Export::Run() {
  ChooseTables();
  RequireOptions();
  NamingOutput(options_.output, [&] {
    const std::vector<ExportedTable> described = OpenTables();
    for (const auto& output : OutputsOf(options_, described)) {
      RefuseDatabaseFile(output, dictionary_);
    }
    const auto place = MakePlace(described);
    WriteTables(*place, described);
    place->Finish();
  });
  return Report();
}

}  // namespace

ExitCode RunExport(const ExportOptions& options, const Streams& streams) {
  return Export(options, streams).Run();
}

}  // namespace qrndata
