// CSV and JSON: a table to a file.
#include <array>
#include <deque>
#include <set>
#include <system_error>

#include "tools/qrndata/Messages.h"
#include "tools/qrndata/OutputFile.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"
#include "tools/qrndata/export/ExportPlace.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;

using MakeWriter = std::unique_ptr<RecordWriter> (*)(std::ostream&, const Table&,
                                                     std::vector<std::string>);

struct TextFormat {
  ExportFormat format;
  const char* extension;
  MakeWriter make;
};

constexpr std::array<TextFormat, 3> kTextFormats = {{
    {ExportFormat::Csv, ".csv", &MakeCsvWriter},
    {ExportFormat::Json, ".json", &MakeJsonWriter},
    {ExportFormat::JsonLines, ".jsonl", &MakeJsonLinesWriter},
}};

const TextFormat& FormatOf(const ExportOptions& options) {
  return kTextFormats.at(static_cast<size_t>(options.format));
}

// A table's name with what no file name has taken out, on any system.
std::string FileNameOf(const Table& table) {
  std::string name = Show(table.name);
  for (char& c : name) {
    const bool isBarred = static_cast<uint8_t>(c) < ' ' ||
                          std::string_view("<>:\"/\\|?*").find(c) != std::string_view::npos;
    if (isBarred) c = '_';
  }
  const bool isNone = name.empty() || name.back() == '.' || name.front() == '.';
  return isNone ? "table" + std::to_string(table.id) : name;
}

bool GoesIntoFolder(const ExportOptions& options, size_t tables) {
  std::error_code ignored;
  return tables != 1 || fs::is_directory(options.output, ignored) || !options.output.has_filename();
}

class TextPlace : public ExportPlace {
 public:
  TextPlace(const ExportOptions& options, const Streams& streams,
            const std::vector<ExportedTable>& tables)
      : options_(options), streams_(streams), outputs_(OutputsOf(options, tables)) {
    if (outputs_.empty() || !GoesIntoFolder(options, tables.size())) return;
    std::error_code error;
    isNewFolder_ = fs::create_directories(options.output, error);
    if (error)
      throw Failure(kSystem,
                    Say(Message::CannotBeMade, PathToUtf8(options.output), error.message()));
  }

  // A folder that was made for nothing goes; files in the making are gone before it.
  ~TextPlace() override {
    files_.clear();
    std::error_code ignored;
    if (isNewFolder_) fs::remove(options_.output, ignored);
  }
  TextPlace(const TextPlace&) = delete;
  TextPlace& operator=(const TextPlace&) = delete;

  RecordWriter& Next(const ExportedTable& table) override {
    std::ostream* out = &streams_.out;
    if (!outputs_.empty()) {
      out = &files_.emplace_back(outputs_[files_.size()]).Stream();
    }
    writer_ = FormatOf(options_).make(*out, table.table, table.names);
    return *writer_;
  }

  void Finish() override {
    if (outputs_.empty() && !streams_.out.flush()) {
      throw Failure(kSystem, Say(Message::CannotBeWritten, Say(Message::TheOutput)));
    }
    for (OutputFile& file : files_) file.Finish();
    isNewFolder_ = false;
  }

 private:
  const ExportOptions& options_;
  const Streams& streams_;
  std::vector<fs::path> outputs_;
  std::deque<OutputFile> files_;
  std::unique_ptr<RecordWriter> writer_;
  bool isNewFolder_ = false;
};

}  // namespace

std::vector<fs::path> OutputsOf(const ExportOptions& options,
                                const std::vector<ExportedTable>& tables) {
  if (options.output.empty()) return {};
  const bool isOne = options.format == ExportFormat::Sqlite || options.format == ExportFormat::Xlsx;
  if (isOne || !GoesIntoFolder(options, tables.size())) return {options.output};
  std::vector<fs::path> outputs;
  std::set<std::string> taken;
  for (const ExportedTable& table : tables) {
    std::string name = FileNameOf(table.table);
    if (!taken.insert(Lowered(name)).second) name += "_" + std::to_string(table.table.id);
    taken.insert(Lowered(name));
    outputs.push_back(options.output / PathFromUtf8(name + FormatOf(options).extension));
  }
  return outputs;
}

std::unique_ptr<ExportPlace> MakeTextPlace(const ExportOptions& options, const Streams& streams,
                                           const std::vector<ExportedTable>& tables) {
  return std::make_unique<TextPlace>(options, streams, tables);
}

}  // namespace qrndata
