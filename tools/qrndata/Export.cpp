// `export`: a table's records as CSV or JSON.

#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/FieldInput.h"
#include "tools/qrndata/FileMatch.h"
#include "tools/qrndata/KeyChoice.h"
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
        file_(DataFilePath(options.directory, table_.location), Access::ReadOnly),
        stat_(file_.Stat()),
        match_(MatchFile(table_, stat_.spec)),
        image_(settings_, table_) {
    RequireMatch(table_, match_, Weight::Record);
    WarnOf(table_, match_, streams.err);
    if (options.key.empty()) return;
    key_ = static_cast<int8_t>(
        KeyInFile(table_, ChooseKey(table_, options.key), stat_.spec, match_).number);
  }

  ExitCode Run();

 private:
  void WriteAll(std::ostream& out);
  void WriteFile();
  void WriteOutput();
  bool Encode(const FieldValues& values, uint32_t position, TextValues& texts);
  Converted Encoded(const std::string& stored) const;
  void Tell(const Converted& text, uint32_t position, size_t slot);
  ExitCode Report() const;
  std::vector<std::string> Names() const;

  const ExportOptions& options_;
  const Streams& streams_;
  qrn::QuorinSettings settings_;
  Dictionary dictionary_;
  const Table& table_;
  BtrFile file_;
  FileStat stat_;
  FileMatch match_;
  int8_t key_ = kNoKey;
  RecordImage image_;
  uint64_t written_ = 0, leftOut_ = 0, broken_ = 0;
};

std::vector<std::string> TableExport::Names() const {
  std::vector<std::string> names;
  for (const qrn::DbFieldInfo& field : table_.fields) {
    names.push_back(options_.encoding == Encoding::Utf8 ? Show(field.Name) : field.Name);
  }
  return names;
}

Converted TableExport::Encoded(const std::string& stored) const {
  return options_.encoding == Encoding::Utf8 ? FromCodePage(stored, options_.onUnmappable)
                                             : SoundCodePage(stored, options_.onUnmappable, true);
}

void TableExport::Tell(const Converted& text, uint32_t position, size_t slot) {
  if (++broken_ <= options_.shown) {
    streams_.err << "record at position " << position << ", field "
                 << Quoted(table_.fields[slot].Name) << ": " << text.unmappable << " (character "
                 << text.unmappableAt + 1 << " of the value) is no text\n";
  } else if (broken_ == options_.shown + 1) {
    streams_.err << "further ones are not listed\n";
  }
}

// False when a value has bytes that are no text and the record is to be left out for it.
bool TableExport::Encode(const FieldValues& values, uint32_t position, TextValues& texts) {
  for (size_t slot = 0; slot < values.size(); ++slot) {
    texts[slot] = std::nullopt;
    if (!values[slot]) continue;
    Converted text = Encoded(*values[slot]);
    if (!text.IsExact()) Tell(text, position, slot);
    if (!text.IsExact() && options_.onUnmappable == OnUnmappable::Error) return false;
    texts[slot] = std::move(text.text);
  }
  return true;
}

void TableExport::WriteAll(std::ostream& out) {
  const auto writer =
      options_.isJson ? MakeJsonWriter(out, table_, Names()) : MakeCsvWriter(out, table_, Names());
  Progress progress(streams_.terminal, Show(table_.name), stat_.records);
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

// Whoever reads the text alone must not take it for all that is stored.
ExitCode TableExport::Report() const {
  if (broken_ == 0) return kDone;
  if (leftOut_ != 0) {
    streams_.err << Counted(leftOut_, "record")
                 << " left out; --on-unmappable=replace takes every record\n";
  } else {
    const char* instead = options_.onUnmappable == OnUnmappable::Skip  ? "left out"
                          : options_.encoding == Encoding::CodePage932 ? "written as ?"
                                                                       : "written as U+FFFD";
    streams_.err << Counted(broken_, "text") << " with bytes that are no characters: these are "
                 << instead << '\n';
  }
  return kFaultsFound;
}

ExitCode TableExport::Run() {
  options_.output.empty() ? WriteOutput() : WriteFile();
  return Report();
}

}  // namespace

ExitCode RunExport(const ExportOptions& options, const Streams& streams) {
  Dictionary dictionary = ReadDictionary(options.directory);
  if (!options.output.empty()) RefuseDatabaseFile(options.output, dictionary);
  auto open = [&] { return TableExport(options, streams, std::move(dictionary)); };
  return NamingOutput(options, open).Run();
}

}  // namespace qrndata
