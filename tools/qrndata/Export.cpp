// `export`: a table's records as CSV or JSON.
#include <algorithm>
#include <charconv>

#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/FieldInput.h"
#include "tools/qrndata/OutputFile.h"
#include "tools/qrndata/OutputPlace.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/RecordImage.h"
#include "tools/qrndata/RecordScan.h"
#include "tools/qrndata/RecordWriter.h"
#include "tools/qrndata/Verbs.h"

namespace qrndata {

namespace {

// A key by its name, its number, or the name of its first field.
int8_t FindKeyNumber(const Table& table, const std::string& wanted) {
  if (wanted.empty()) return kNoKey;
  const std::string name = ToCodePage(wanted, OnUnmappable::Replace).text;
  size_t asNumber = table.keys.size();
  std::from_chars(wanted.data(), wanted.data() + wanted.size(), asNumber);
  for (size_t number = 0; number < table.keys.size(); ++number) {
    const Key& key = table.keys[number];
    const qrn::DbFieldInfo* first = FindField(table, key.segments.front().fieldId);
    const bool isNamed = key.name == name || (first != nullptr && first->Name == name);
    if (isNamed || number == asNumber) return static_cast<int8_t>(number);
  }
  throw Failure(kBadInput, "table " + Quoted(table.name) + " has no key \"" + wanted + "\"");
}

// A failure to read says what was not written for it.
template <class Body>
auto NamingOutput(const ExportOptions& options, Body body) {
  try {
    return body();
  } catch (const Failure& failure) {
    if (failure.Code() != kSystem || options.output.empty()) throw;
    throw Failure(kSystem, failure.what() + ("; " + PathToUtf8(options.output)) + ": not written");
  }
}

class TableExport {
 public:
  TableExport(const ExportOptions& options, const Streams& streams, Dictionary dictionary)
      : options_(options),
        streams_(streams),
        settings_(FileSettings()),
        dictionary_(std::move(dictionary)),
        table_(dictionary_.Find(options.table)),
        key_(FindKeyNumber(table_, options.key)),
        file_(DataFilePath(options.directory, table_.location), Access::ReadOnly),
        image_(settings_, table_) {}

  ExitCode Run();

 private:
  void WriteAll(std::ostream& out);
  void WriteFile();
  void WriteOutput();
  bool Encode(const FieldValues& values, uint32_t position, TextValues& texts);
  std::vector<std::string> Names() const;

  const ExportOptions& options_;
  const Streams& streams_;
  qrn::QuorinSettings settings_;
  Dictionary dictionary_;
  const Table& table_;
  int8_t key_;
  BtrFile file_;
  RecordImage image_;
  uint64_t written_ = 0, leftOut_ = 0;
};

std::vector<std::string> TableExport::Names() const {
  std::vector<std::string> names;
  for (const qrn::DbFieldInfo& field : table_.fields) {
    names.push_back(options_.encoding == Encoding::Utf8 ? Show(field.Name) : field.Name);
  }
  return names;
}

// False when a value has bytes that are no text and the record is to be left out for it.
bool TableExport::Encode(const FieldValues& values, uint32_t position, TextValues& texts) {
  for (size_t slot = 0; slot < values.size(); ++slot) {
    texts[slot] = values[slot];
    if (!values[slot]) continue;
    Converted text = FromCodePage(*values[slot], options_.onUnmappable);
    if (text.text.find('\0') != std::string::npos && text.IsExact()) text.unmappable = "byte 0x00";
    if (options_.encoding == Encoding::Utf8) texts[slot] = std::move(text.text);
    if (text.IsExact() || options_.onUnmappable != OnUnmappable::Error) continue;
    streams_.err << "record at position " << position << ", field "
                 << Quoted(table_.fields[slot].Name) << ": " << text.unmappable << " (character "
                 << text.unmappableAt + 1 << " of the value) is no text\n";
    return false;
  }
  return true;
}

void TableExport::WriteAll(std::ostream& out) {
  const auto writer =
      options_.isJson ? MakeJsonWriter(out, table_, Names()) : MakeCsvWriter(out, table_, Names());
  Progress progress(streams_.terminal, Show(table_.name), file_.Stat().records);
  RecordScan scan(file_, key_);
  TextValues texts(table_.fields.size());
  writer->Begin();
  while (scan.Next()) {
    const bool isText = Encode(image_.Split(scan.Record()), scan.Position(), texts);
    ++(isText ? written_ : leftOut_);
    if (isText) writer->Write(texts);
    progress.Update(written_ + leftOut_, written_);
  }
  writer->End();
}

void TableExport::WriteOutput() {
  WriteAll(streams_.out);
  if (!streams_.out.flush()) throw Failure(kSystem, "the output: cannot be written");
}

void TableExport::WriteFile() {
  OutputFile file(options_.output);
  NamingOutput(options_, [&] { WriteAll(file.Stream()); });
  file.Finish();
  streams_.out << Show(table_.name) << ": " << Counted(written_, "row") << '\n';
}

ExitCode TableExport::Run() {
  options_.output.empty() ? WriteOutput() : WriteFile();
  if (leftOut_ == 0) return kDone;
  streams_.err << Counted(leftOut_, "record")
               << " left out; --on-unmappable=replace takes every record\n";
  return kFaultsFound;
}

}  // namespace

ExitCode RunExport(const ExportOptions& options, const Streams& streams) {
  Dictionary dictionary = ReadDictionary(options.directory);
  if (!options.output.empty()) RefuseDatabaseFile(options.output, dictionary);
  auto open = [&] { return TableExport(options, streams, std::move(dictionary)); };
  return NamingOutput(options, open).Run();
}

}  // namespace qrndata
