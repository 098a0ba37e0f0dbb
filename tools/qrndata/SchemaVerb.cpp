// `schema`: a dictionary written back as the schema that it could have been built from.
#include <algorithm>

#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/FileMatch.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/OutputFile.h"
#include "tools/qrndata/OutputPlace.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/Schema.h"
#include "tools/qrndata/SchemaWriter.h"
#include "tools/qrndata/TableFile.h"
#include "tools/qrndata/Verbs.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;

class SchemaVerb {
 public:
  SchemaVerb(const SchemaOptions& options, const Streams& streams)
      : options_(options), streams_(streams), dictionary_(ReadDictionary(options.directory)) {}

  ExitCode Run();

 private:
  void TakeFromFile(Table& table);
  void TakeKeys(Table& table, const btrieve::FileSpec& file);
  void WriteCollations();
  void WriteText(const std::string& text);
  void Compare(const std::string& text);
  void CompareTable(const Table& table, const Table& built);
  void Tell(const std::string& what);

  const SchemaOptions& options_;
  const Streams& streams_;
  Dictionary dictionary_;
  std::map<int, std::string> collations_;
  uint64_t told_ = 0;
};

void SchemaVerb::Tell(const std::string& what) {
  ++told_;
  streams_.err << Say(Message::Warning, what) << '\n';
}

// The dictionary does not keep what a key counts as null.
void SchemaVerb::TakeKeys(Table& table, const btrieve::FileSpec& file) {
  const FileMatch match = MatchFile(table, file);
  for (size_t number = 0; number < table.keys.size(); ++number) {
    if (!match.slots[number]) continue;
    const auto& inFile = file.keys[*match.slots[number]].segments;
    std::vector<Segment>& segments = table.keys[number].segments;
    for (size_t at = 0; at < segments.size(); ++at) segments[at].nullValue = inFile[at].nullValue;
  }
}

void SchemaVerb::TakeFromFile(Table& table) {
  try {
    const fs::path path = DataFilePath(options_.directory, table.location);
    const btrieve::FileSpec file = BtrFile(path, Access::ReadOnly).Stat().spec;
    table.pageSize = file.pageSize;
    table.fileFlags = static_cast<uint16_t>(
        HasVariableRecords(table) ? file.flags & ~btrieve::kVariableRecords : file.flags);
    if (!file.sequences.empty()) table.sequence = file.sequences.front();
    if (file.sequences.size() > 1) {
      Tell(Say(Message::OneSequenceATable, Quoted(table.name)));
    }
    TakeKeys(table, file);
  } catch (const Failure& failure) {
    Tell(Say(Message::StandardsTaken, Quoted(table.name), failure.what()));
  }
}

void SchemaVerb::WriteCollations() {
  for (const Table& table : dictionary_.tables) {
    if (!table.sequence) continue;
    const std::string name = "table" + std::to_string(table.id) + ".seq";
    collations_[table.id] = name;
    if (options_.output.empty()) continue;
    OutputFile file(options_.output.parent_path() / name);
    const auto* bytes = reinterpret_cast<const char*>(table.sequence->block.data());
    file.Stream().write(bytes, static_cast<std::streamsize>(table.sequence->block.size()));
    file.Finish();
  }
}

void SchemaVerb::WriteText(const std::string& text) {
  if (options_.output.empty()) {
    if (!(streams_.out << text).flush())
      throw Failure(kSystem, Say(Message::CannotBeWritten, Say(Message::TheOutput)));
    return;
  }
  OutputFile file(options_.output);
  file.Stream() << text;
  file.Finish();
  streams_.out << PathToUtf8(options_.output) << ": "
               << Counted(dictionary_.tables.size(), Message::Tables) << '\n';
}

bool SameField(const qrn::DbFieldInfo& left, const qrn::DbFieldInfo& right) {
  return std::string_view(left.Name) == right.Name && left.Type == right.Type &&
         left.Size == right.Size && left.Offset == right.Offset &&
         left.Decimals == right.Decimals && left.Flags == right.Flags;
}

bool SameKey(const Key& left, const Key& right) {
  const auto sameSegment = [](const Segment& one, const Segment& other) {
    return one.fieldId == other.fieldId && one.flags == other.flags &&
           one.nullValue == other.nullValue;
  };
  return left.name == right.name &&
         std::equal(left.segments.begin(), left.segments.end(), right.segments.begin(),
                    right.segments.end(), sameSegment);
}

void SchemaVerb::CompareTable(const Table& table, const Table& built) {
  const auto tell = [&](const std::string& text) {
    Tell(Say(Message::OfTable, Quoted(table.name), text));
  };
  if (table.flags != built.flags) tell(Say(Message::OtherFlags));
  for (size_t at = 0; at < table.fields.size(); ++at) {
    const bool isSame = at < built.fields.size() && SameField(table.fields[at], built.fields[at]);
    if (!isSame) tell(Say(Message::OtherField, Quoted(table.fields[at].Name)));
  }
  const bool isNumbered =
      std::equal(table.fields.begin(), table.fields.end(), built.fields.begin(), built.fields.end(),
                 [](const auto& left, const auto& right) { return left.FieldId == right.FieldId; });
  if (!isNumbered) return tell(Say(Message::OtherFieldIds));
  for (size_t number = 0; number < table.keys.size(); ++number) {
    const bool isSame =
        number < built.keys.size() && SameKey(table.keys[number], built.keys[number]);
    if (!isSame) tell(Say(Message::OtherKey, number));
  }
}

// What a build of the text makes, beside what there is.
void SchemaVerb::Compare(const std::string& text) {
  const fs::path folder = options_.output.parent_path();
  const std::string name =
      options_.output.empty() ? Say(Message::TheSchema) : PathToUtf8(options_.output);
  if (options_.output.empty() && !collations_.empty()) {
    return Tell(Say(Message::SequencesNeedFile));
  }
  try {
    const Schema schema = ParseSchema(text, name, folder);
    for (size_t at = 0; at < dictionary_.tables.size(); ++at) {
      CompareTable(dictionary_.tables[at], schema.tables.at(at));
    }
  } catch (const Failure& failure) {
    Tell(Say(Message::BuildWouldRefuse, failure.what()));
  }
}

ExitCode SchemaVerb::Run() {
  if (!options_.output.empty()) RefuseDatabaseFile(options_.output, dictionary_);
  for (const std::string& oddity : dictionary_.oddities) Tell(Say(Message::LeftOut, oddity));
  for (Table& table : dictionary_.tables) TakeFromFile(table);
  WriteCollations();
  const std::string text = SchemaText(dictionary_.tables, collations_);
  WriteText(text);
  Compare(text);
  return told_ == 0 ? kDone : kFaultsFound;
}

}  // namespace

ExitCode RunSchema(const SchemaOptions& options, const Streams& streams) {
  return SchemaVerb(options, streams).Run();
}

}  // namespace qrndata
