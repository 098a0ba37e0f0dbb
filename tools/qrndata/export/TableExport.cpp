#include "tools/qrndata/export/TableExport.h"

#include "tools/qrndata/FieldInput.h"
#include "tools/qrndata/FileMatch.h"
#include "tools/qrndata/KeyChoice.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/export/FieldChoice.h"

namespace qrndata {

TableExport::TableExport(const ExportOptions& options, const Streams& streams,
                         const Dictionary& dictionary, const Table& table)
    : options_(options),
      streams_(streams),
      settings_(FileSettings()),
      file_(DataFilePath(dictionary.directory, table.location), Access::ReadOnly),
      stat_(file_.Stat()),
      chosen_(WithFields(table, options.fields)),
      filter_(settings_, table, stat_.spec, options.where),
      image_(settings_, chosen_),
      texts_(chosen_.fields.size()) {
  const FileMatch match = MatchFile(table, stat_.spec);
  RequireMatch(table, match, Weight::Record);
  WarnOf(table, match, streams.err);
  if (options.key.empty()) return;
  const size_t slot = ChooseKey(table, options.key);
  key_ = static_cast<int8_t>(KeyInFile(table, slot, stat_.spec, match).number);
}

ExportedTable TableExport::Described() const {
  ExportedTable described{chosen_, {}, stat_.records};
  for (const qrn::DbFieldInfo& field : chosen_.fields) {
    described.names.push_back(options_.encoding == Encoding::Utf8 ? Show(field.Name) : field.Name);
  }
  return described;
}

Converted TableExport::Encoded(const std::string& stored) const {
  return options_.encoding == Encoding::Utf8 ? FromCodePage(stored, options_.onUnmappable)
                                             : SoundCodePage(stored, options_.onUnmappable, true);
}

void TableExport::Tell(const std::string& problem) {
  if (++told_ <= options_.shown) {
    streams_.err << problem << '\n';
  } else if (told_ == options_.shown + 1) {
    streams_.err << Say(Message::FurtherOnes) << '\n';
  }
}

void TableExport::TellBroken(const Converted& text, uint32_t position, size_t slot) {
  ++broken_;
  Tell(Say(Message::BrokenText, position, Quoted(chosen_.fields[slot].Name), text.unmappable,
           text.unmappableAt + 1));
}

// False when a value has bytes that are no text and the record is to be left out for it.
bool TableExport::Encode(const FieldValues& values, TextValues& texts, uint32_t position) {
  for (size_t slot = 0; slot < values.size(); ++slot) {
    texts[slot] = std::nullopt;
    if (!values[slot]) continue;
    Converted text = Encoded(*values[slot]);
    if (!text.IsExact()) TellBroken(text, position, slot);
    if (!text.IsExact() && options_.onUnmappable == OnUnmappable::Error) return false;
    texts[slot] = std::move(text.text);
  }
  return true;
}

bool TableExport::WriteRecord(RecordWriter& writer, const RecordScan& scan) {
  if (!Encode(image_.Split(scan.Record()), texts_, scan.Position())) return false;
  const std::string problem = writer.Write(texts_);
  if (!problem.empty()) Tell(Say(Message::RecordAt, scan.Position(), problem));
  return problem.empty();
}

void TableExport::WriteTo(RecordWriter& writer) {
  Progress progress(streams_.terminal, Show(chosen_.name), stat_.records);
  RecordScan scan(file_, key_);
  writer.Begin();
  for (uint64_t read = 0; scan.Next();) {
    progress.Update(++read, written_);
    if (filter_.Takes(scan.Record())) ++(WriteRecord(writer, scan) ? written_ : leftOut_);
  }
  writer.End();
}

// Whoever reads the text alone must not take it for all that is stored.
ExitCode TableExport::Report() const {
  if (told_ == 0) return kDone;
  if (leftOut_ != 0) {
    streams_.err << Say(broken_ != 0 ? Message::ReplaceTakesAll : Message::RecordsLeftOut,
                        Counted(leftOut_, Message::Records))
                 << '\n';
  } else {
    const Message told = options_.onUnmappable == OnUnmappable::Skip  ? Message::BrokenLeftOut
                         : options_.encoding == Encoding::CodePage932 ? Message::BrokenAsMark
                                                                      : Message::BrokenAsFffd;
    streams_.err << Say(told, Counted(broken_, Message::Texts)) << '\n';
  }
  return kFaultsFound;
}

}  // namespace qrndata
