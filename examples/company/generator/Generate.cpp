// The made-up company as CSV files, or straight into a new database, and the command line for it.
#include "examples/company/generator/Generate.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "examples/company/generator/CategoryPictures.h"
#include "examples/company/generator/Company.h"
#include "examples/company/generator/CompanyWords.h"
#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/OutputFile.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/RowImporter.h"
#include "tools/qrndata/Schema.h"
#include "tools/qrndata/Text.h"
#include "tools/qrndata/export/RecordWriter.h"

namespace company {

namespace {

namespace fs = std::filesystem;
using namespace qrndata;

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
  streams_.out << Show(table_->name) << ": " << Counted(importer_->Stored(), Message::Rows) << '\n';
  importer_.reset();
}

void WritePictures(const fs::path& directory) {
  MakeDirectory(directory);
  for (size_t category = 0; category < Categories().size(); ++category) {
    OutputFile file(directory / PathFromUtf8(CategoryPictureName(category)));
    file.Stream() << CategoryPicture(category);
    file.Finish();
  }
}

struct Options {
  fs::path schema, directory;
  CompanySize size;
  bool asCsv = false;  // CSV files in `directory` instead of a dictionary with data
};

ExitCode Generate(const Options& options, const Streams& streams) {
  const Schema schema = ReadSchemaFile(options.schema);
  if (options.asCsv) {
    MakeDirectory(options.directory);
    CsvSink sink(options.directory);
    GenerateCompany(options.size, sink);
    sink.Close();
    WritePictures(options.directory / "pictures");
    return kDone;
  }
  BuildDatabase(schema, options.directory, Existing::Refuse,
                "generate writes over nothing: name a new directory");
  DatabaseSink sink(options.directory, streams);
  GenerateCompany(options.size, sink);
  sink.Close();
  return kDone;
}

int ParseAndGenerate(std::vector<std::string> arguments, const Streams& streams) {
  CLI::App app{"Makes a trading company's data of any size, the same for a seed.", "makecompany"};
  app.allow_windows_style_options(false);
  std::string schema, directory;
  Options options;
  app.add_option("SCHEMA", schema, "the company's schema file")->type_name("")->required();
  app.add_option("DIR", directory, "directory for dictionary and data files, or CSV files")
      ->type_name("")
      ->required();
  app.add_option("--orders", options.size.orders,
                 "orders, 1 to 100000000; three lines each on average (standard: 5000)")
      ->type_name("NUMBER")
      ->check(CLI::Range(1, 100000000).description(""));
  app.add_option("--customers", options.size.customers,
                 "customers, 1 to 1000000 (standard: as many as the orders ask for)")
      ->type_name("NUMBER")
      ->check(CLI::Range(1, 1000000).description(""));
  app.add_option("--seed", options.size.seed, "another company for another number (standard: 1)")
      ->type_name("NUMBER");
  app.add_flag("--csv", options.asCsv, "write CSV files and pictures, no data files");
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    return app.exit(error, streams.out, streams.err) == 0 ? kDone : kUsage;
  }
  options.schema = PathFromUtf8(schema);
  options.directory = PathFromUtf8(directory);
  return Generate(options, streams);
}

}  // namespace

int Run(std::vector<std::string> arguments, const Streams& streams) {
  return RunGuarded("makecompany", streams,
                    [&] { return ParseAndGenerate(std::move(arguments), streams); });
}

}  // namespace company
