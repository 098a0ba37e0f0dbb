// `build`: a dictionary and its data files from a schema.
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/FileMatch.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/TableFile.h"
#include "tools/qrndata/Verbs.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;

void MakeDirectory(const fs::path& directory) {
  std::error_code error;
  fs::create_directories(directory, error);
  if (error) {
    throw Failure(kSystem, Say(Message::CannotBeMade, PathToUtf8(directory), error.message()));
  }
}

// Before anything is written: all or nothing as far as can be foreseen.
void RefuseExisting(const fs::path& directory, const std::vector<Table>& tables,
                    std::string_view advice) {
  std::error_code ignored;
  const auto refuse = [&](const fs::path& path) {
    if (!fs::exists(path, ignored)) return;
    std::string text = Say(Message::ExistsAlready, PathToUtf8(path));
    if (!advice.empty()) text.append("; ").append(advice);
    throw Failure(kSystem, text);
  };
  for (const char* name : {"file.ddf", "field.ddf", "index.ddf"}) refuse(directory / name);
  for (const Table& table : tables) refuse(DataFilePath(directory, table.location));
}

// A dictionary that tells of other records than the files have would have them read as rubbish.
void RefuseOtherMakeUp(const fs::path& directory, const std::vector<Table>& tables,
                       std::ostream& warnings) {
  std::error_code ignored;
  for (const Table& table : tables) {
    const fs::path path = DataFilePath(directory, table.location);
    if (!fs::exists(path, ignored)) continue;
    const FileStat stat = BtrFile(path, Access::ReadOnly).Stat();
    const FileMatch match = MatchFile(table, stat.spec);
    try {
      RequireMatch(table, match, Weight::Key);
    } catch (const Failure& failure) {
      throw Failure(failure.Code(), Say(Message::NothingBuilt, failure.what()));
    }
    WarnOf(table, match, warnings);
  }
}

}  // namespace

void BuildDatabase(const Schema& schema, const fs::path& directory, Existing existing,
                   std::string_view advice) {
  MakeDirectory(directory);
  if (existing == Existing::Refuse) RefuseExisting(directory, schema.tables, advice);
  WriteDictionary(directory, schema.tables, existing != Existing::Refuse);
  for (const Table& table : schema.tables) {
    const fs::path path = DataFilePath(directory, table.location);
    if (path.has_parent_path()) MakeDirectory(path.parent_path());
    const Status status = BtrFile::Create(path, CreateBlock(table), existing == Existing::Replace);
    if (status == btrieve::kFileExists && existing == Existing::KeepData) continue;
    Require(status, PathToUtf8(path));
  }
}

ExitCode RunBuild(const BuildOptions& options, const Streams& streams) {
  const Schema schema = ReadSchemaFile(options.schema);
  for (const std::string& warning : schema.warnings)
    streams.err << Say(Message::Warning, warning) << '\n';
  if (options.keepData) RefuseOtherMakeUp(options.directory, schema.tables, streams.err);
  BuildDatabase(schema, options.directory,
                options.keepData  ? Existing::KeepData
                : options.replace ? Existing::Replace
                                  : Existing::Refuse,
                Say(Message::BuildAdvice));
  size_t fields = 0, keys = 0;
  for (const Table& table : schema.tables) {
    fields += table.fields.size();
    keys += table.keys.size();
  }
  streams.out << PathToUtf8(options.directory) << ": "
              << Counted(schema.tables.size(), Message::Tables) << ", "
              << Counted(fields, Message::Fields) << ", " << Counted(keys, Message::Keys) << '\n';
  return kDone;
}

}  // namespace qrndata
