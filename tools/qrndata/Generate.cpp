// `generate`: the made-up company as CSV files, or straight into a new database.
#include <memory>

#include "tools/qrndata/Builder.h"
#include "tools/qrndata/CategoryPictures.h"
#include "tools/qrndata/Company.h"
#include "tools/qrndata/CompanyWords.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/OutputFile.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/RecordWriter.h"
#include "tools/qrndata/RowImporter.h"
#include "tools/qrndata/Schema.h"
#include "tools/qrndata/Verbs.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;

void MakeDirectory(const fs::path& directory) {
  std::error_code error;
  fs::create_directories(directory, error);
  if (error) {
    throw Failure(kSystem, PathToUtf8(directory) + ": cannot be made (" + error.message() + ")");
  }
}

// One file a table, named like it.
class CsvSink : public CompanySink {
 public:
  explicit CsvSink(const fs::path& directory) : directory_(directory) {}

  void BeginTable(std::string_view table, std::span<const char* const> columns) override {
    Close();
    file_ = std::make_unique<OutputFile>(directory_ / PathFromUtf8(std::string(table) + ".csv"));
    Put(CompanyRow(columns.begin(), columns.end()));
  }

  void Put(const CompanyRow& row) override {
    std::ostream& out = file_->Stream();
    for (size_t at = 0; at < row.size(); ++at) {
      out << (at == 0 ? "" : ",") << (row[at] ? CsvText(*row[at], true) : "");
    }
    out << '\n';
  }

  void Close() {
    if (file_) file_->Finish();
    file_.reset();
  }

 private:
  const fs::path& directory_;
  std::unique_ptr<OutputFile> file_;
};

class DatabaseSink : public CompanySink {
 public:
  DatabaseSink(const fs::path& directory, const Streams& streams)
      : streams_(streams), dictionary_(ReadDictionary(directory)) {}

  void BeginTable(std::string_view table, std::span<const char* const> columns) override;
  void Put(const CompanyRow& row) override;
  void Close();

 private:
  static constexpr uint32_t kBatch = 10000;

  const Streams& streams_;
  Dictionary dictionary_;
  const Table* table_ = nullptr;
  std::unique_ptr<RowImporter> importer_;
  std::unique_ptr<Progress> progress_;
  std::vector<size_t> slots_;
  FieldValues values_;
  uint64_t rows_ = 0;
};

void DatabaseSink::BeginTable(std::string_view table, std::span<const char* const> columns) {
  Close();
  table_ = &dictionary_.Find(table);
  importer_ = std::make_unique<RowImporter>(dictionary_.directory, *table_, kBatch);
  progress_ = std::make_unique<Progress>(streams_.terminal, Show(table_->name), 0);
  rows_ = 0;
  slots_.clear();
  for (const char* column : columns) {
    const qrn::DbFieldInfo* field =
        FindField(*table_, ToCodePage(column, OnUnmappable::Replace).text);
    if (field == nullptr) {
      throw Failure(kBadInput, "table " + Quoted(table_->name) + " has no field \"" + column +
                                   "\": this is not the company's schema");
    }
    slots_.push_back(static_cast<size_t>(field - table_->fields.data()));
  }
}

void DatabaseSink::Put(const CompanyRow& row) {
  values_.assign(table_->fields.size(), std::nullopt);
  for (size_t at = 0; at < row.size(); ++at) {
    if (row[at]) values_[slots_[at]] = ToCodePage(*row[at], OnUnmappable::Replace).text;
  }
  if (const Refusal refusal = importer_->Put(values_)) {
    throw Failure(kBadInput, "table " + Quoted(table_->name) + ", row " + Grouped(rows_ + 1) +
                                 ": " + refusal.problem + ": this is not the company's schema");
  }
  ++rows_;
  progress_->Update(rows_, rows_);
}

void DatabaseSink::Close() {
  if (!importer_) return;
  importer_->Finish();
  progress_.reset();
  streams_.out << Show(table_->name) << ": " << Counted(importer_->Stored(), "row") << '\n';
  importer_.reset();
}

void WritePictures(const fs::path& directory) {
  MakeDirectory(directory);
  for (size_t category = 0; category < Categories().size(); ++category) {
    std::string number = std::to_string(category + 1);
    if (number.size() == 1) number.insert(0, "0");
    OutputFile file(directory / PathFromUtf8("category" + number + ".bmp"));
    file.Stream() << CategoryPicture(category);
    file.Finish();
  }
}

}  // namespace

ExitCode RunGenerate(const GenerateOptions& options, const Streams& streams) {
  const Schema schema = ReadSchemaFile(options.schema);
  const CompanySize size{options.orders, options.seed};
  if (options.asCsv) {
    MakeDirectory(options.directory);
    CsvSink sink(options.directory);
    GenerateCompany(size, sink);
    sink.Close();
    WritePictures(options.directory / "pictures");
    return kDone;
  }
  BuildDatabase(schema, options.directory, Existing::Refuse,
                "generate writes over nothing: name a new directory");
  DatabaseSink sink(options.directory, streams);
  GenerateCompany(size, sink);
  sink.Close();
  return kDone;
}

}  // namespace qrndata
