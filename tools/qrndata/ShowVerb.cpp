// `show`: what a dictionary, a table or a data file is made of.
#include <algorithm>

#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/FileMatch.h"
#include "tools/qrndata/Listing.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/TableFile.h"
#include "tools/qrndata/Verbs.h"
#include "tools/qrndata/convert/OldFiles.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;

// Told beside what is shown of both: which of them is right, its reader must know.
ExitCode TellMismatches(const Table& table, const btrieve::FileSpec& file, std::ostream& out) {
  const FileMatch match = MatchFile(table, file);
  WarnOf(table, match, out);
  return match.Heaviest(Weight::Key) == nullptr ? kDone : kFaultsFound;
}

std::string RecordCount(const fs::path& directory, const Table& table, const Streams& streams,
                        ExitCode& code) {
  try {
    const FileStat stat = BtrFile(DataFilePath(directory, table.location), Access::ReadOnly).Stat();
    code = std::max(code, TellMismatches(table, stat.spec, streams.err));
    return Grouped(stat.records);
  } catch (const Failure& failure) {
    const std::string text = failure.what();
    code = kFaultsFound;
    return "(" + text.substr(text.rfind(": ") + 2) + ")";
  }
}

ExitCode ShowTables(const Dictionary& dictionary, const Streams& streams) {
  ExitCode code = kDone;
  Listing listing({{Message::HeadId, true},
                   {Message::HeadTable},
                   {Message::HeadFile},
                   {Message::HeadFields, true},
                   {Message::HeadKeys, true},
                   {Message::HeadRecords, true}});
  for (const Table& table : dictionary.tables) {
    listing.Add({std::to_string(table.id), Show(table.name), Show(table.location),
                 std::to_string(table.fields.size()), std::to_string(table.keys.size()),
                 RecordCount(dictionary.directory, table, streams, code)});
  }
  listing.Write(streams.out);
  return code;
}

void ShowFields(const Table& table, std::ostream& out) {
  Listing listing({{Message::HeadId, true},
                   {Message::HeadField},
                   {Message::HeadType},
                   {Message::HeadOffset, true},
                   {Message::HeadSize, true},
                   {Message::HeadDecimals, true},
                   {Message::HeadNull}});
  for (const qrn::DbFieldInfo& field : table.fields) {
    listing.Add({std::to_string(field.FieldId), Show(field.Name), FieldTypeName(field.Type),
                 std::to_string(field.Offset), std::to_string(field.Size),
                 field.Decimals == 0 ? "" : std::to_string(field.Decimals),
                 IsNullable(field) ? Say(Message::Yes) : ""});
  }
  listing.Write(out);
}

void ShowKeys(const Table& table, std::ostream& out) {
  Listing listing(
      {{Message::HeadKey, true}, {Message::HeadName}, {Message::HeadField}, {Message::HeadFlags}});
  for (size_t number = 0; number < table.keys.size(); ++number) {
    const Key& key = table.keys[number];
    for (const Segment& segment : key.segments) {
      const bool isFirst = &segment == &key.segments.front();
      const qrn::DbFieldInfo* field = FindField(table, segment.fieldId);
      listing.Add(
          {isFirst ? std::to_string(number) : "", isFirst ? Show(key.name) : "",
           field == nullptr ? Say(Message::FieldIdOnly, segment.fieldId) : Show(field->Name),
           DescribeKeyFlags(segment.flags)});
    }
  }
  listing.Write(out);
}

void ShowFileKeys(const FileStat& stat, std::ostream& out) {
  Listing listing({{Message::HeadKey, true},
                   {Message::HeadOffset, true},
                   {Message::HeadLength, true},
                   {Message::HeadType},
                   {Message::HeadFlags, true},
                   {Message::HeadNull, true},
                   {Message::HeadUnique, true}});
  for (size_t slot = 0; slot < stat.spec.keys.size(); ++slot) {
    const btrieve::KeySpec& key = stat.spec.keys[slot];
    for (const btrieve::KeySegment& segment : key.segments) {
      const bool isFirst = &segment == &key.segments.front();
      listing.Add({isFirst ? std::to_string(key.number) : "", std::to_string(segment.offset),
                   std::to_string(segment.length),
                   FieldTypeName(static_cast<int32_t>(segment.Type())),
                   std::to_string(segment.flags), std::to_string(segment.nullValue),
                   isFirst ? Grouped(stat.uniqueValues[slot]) : ""});
    }
  }
  if (!stat.spec.keys.empty()) listing.Write(out);
}

FileStat ShowFile(const fs::path& path, std::ostream& out) {
  FileStat stat = BtrFile(path, Access::ReadOnly).Stat();
  out << Say(stat.spec.IsVariable() ? Message::ShownVariableFile : Message::ShownFile,
             PathToUtf8(path), Grouped(stat.records), stat.spec.recordLength, stat.spec.pageSize,
             stat.spec.flags, stat.spec.keys.size())
      << '\n';
  if (IsOldFile(path)) out << Say(Message::OldFileNote) << '\n';
  ShowFileKeys(stat, out);
  return stat;
}

ExitCode ShowTable(const Dictionary& dictionary, const Table& table, const Streams& streams) {
  std::ostream& out = streams.out;
  out << Say(HasVariableRecords(table) ? Message::ShownVariableTable : Message::ShownTable,
             Show(table.name), table.id, RecordLength(table))
      << '\n';
  ShowFields(table, out);
  out << '\n';
  ShowKeys(table, out);
  out << '\n';
  const FileStat stat = ShowFile(DataFilePath(dictionary.directory, table.location), out);
  return TellMismatches(table, stat.spec, streams.err);
}

}  // namespace

ExitCode RunShow(const fs::path& place, const std::string& table, const Streams& streams) {
  std::error_code ignored;
  if (fs::is_regular_file(place, ignored)) {
    ShowFile(place, streams.out);
    return kDone;
  }
  const Dictionary dictionary = ReadDictionary(place);
  return table.empty() ? ShowTables(dictionary, streams)
                       : ShowTable(dictionary, dictionary.Find(table), streams);
}

}  // namespace qrndata
