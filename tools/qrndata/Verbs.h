// The verbs of the tool. Each throws Failure when it cannot go on, and returns kFaultsFound when it
// did its work but refused rows or found faults.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Program.h"
#include "tools/qrndata/RowChanger.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

struct BuildOptions {
  std::filesystem::path schema, directory;
  bool replace = false;   // existing dictionary and data files are replaced
  bool keepData = false;  // existing data files stay; only the dictionary is replaced
};
ExitCode RunBuild(const BuildOptions& options, const Streams& streams);

struct ImportOptions {
  std::filesystem::path directory, file;  // "-": the standard input
  std::string table;                      // UTF-8
  OnUnmappable onUnmappable = OnUnmappable::Error;
  Encoding encoding = Encoding::Utf8;
  char delimiter = ',';
  bool hasHeader = true;
  std::string columns;         // as ColumnMap.h reads it; UTF-8
  uint32_t first = 0;          // rows that begin before this line are left out,
  uint32_t last = UINT32_MAX;  // and those that begin behind this one
  uint64_t maxErrors = 0;      // refused rows that stop the import; 0: none do
  std::string changeKey;       // records with a row's value in this key are changed; empty: none
  ChangeMode changeMode = ChangeMode::Update;
  uint32_t batch = 10000;          // rows stored at once
  uint32_t patience = 10;          // seconds that a row waits for other programs
  uint32_t shown = 50;             // refusals that are listed
  std::filesystem::path refusals;  // where refused rows go as they stood; empty: nowhere
  bool isDryRun = false;           // rows are checked, none is stored
};
ExitCode RunImport(const ImportOptions& options, const Streams& streams);

enum class ExportFormat { Csv, Json, JsonLines, Sqlite, Xlsx };

struct ExportOptions {
  std::filesystem::path directory;
  std::vector<std::string> tables;  // UTF-8; none: all
  std::string fields;               // of one table, as FieldChoice.h reads it
  std::string where;                // records of one table, as RecordFilter.h reads it
  std::string key;  // name or number of the key that gives one table's order; empty: by place
  ExportFormat format = ExportFormat::Csv;
  OnUnmappable onUnmappable = OnUnmappable::Replace;
  uint32_t shown = 50;  // texts with odd bytes that are listed
  Encoding encoding = Encoding::Utf8;
  std::filesystem::path output;  // empty: the standard output; a folder for several files of text
};
ExitCode RunExport(const ExportOptions& options, const Streams& streams);

// `place` is a dictionary's directory or a data file.
ExitCode RunShow(const std::filesystem::path& place, const std::string& table,
                 const Streams& streams);

struct CheckOptions {
  std::filesystem::path directory;
  std::string table;    // empty: all
  uint32_t shown = 20;  // faults that are listed for each table
};
ExitCode RunCheck(const CheckOptions& options, const Streams& streams);

struct ConvertOptions {
  std::filesystem::path directory, target;
  bool unlock = false;   // files with an owner name too
  bool salvage = false;  // of damaged files what can be read
  uint32_t shown = 20;   // faults that are listed for each file
};
ExitCode RunConvert(const ConvertOptions& options, const Streams& streams);

struct SchemaOptions {
  std::filesystem::path directory;
  std::filesystem::path output;  // empty: the standard output
};
// kFaultsFound where a build of the schema would make something else.
ExitCode RunSchema(const SchemaOptions& options, const Streams& streams);

struct CopyOptions {
  std::filesystem::path directory, target;  // nothing, or an empty folder, stands at the target
  uint32_t patience = 30;                   // seconds that a moment is looked for
};
ExitCode RunCopy(const CopyOptions& options, const Streams& streams);

struct MoveOptions {
  std::filesystem::path directory;
  std::string server;        // its address, as a link file has it; empty on the way back
  std::string schema;        // empty: named like the directory
  bool tlsRequired = false;  // the links demand it
  bool isBack = false;
  bool keep = false;      // back: the tables stay on the server, as nobody's files
  bool isDryRun = false;  // everything is copied and compared, and nothing stays of it
};
ExitCode RunMove(const MoveOptions& options, const Streams& streams);

struct PublishOptions {
  std::filesystem::path directory;
};
// kFaultsFound where a table has no link to the server.
ExitCode RunPublish(const PublishOptions& options, const Streams& streams);

struct StatusOptions {
  std::filesystem::path directory;
  bool isJson = false;  // else lists
};
ExitCode RunStatus(const StatusOptions& options, const Streams& streams);

// The whole program: `arguments` are UTF-8, without the program's name.
int RunTool(std::vector<std::string> arguments, const Streams& streams);

}  // namespace qrndata
