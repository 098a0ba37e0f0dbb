#include "tools/qrndata/server/MoveRecord.h"

#include <charconv>
#include <fstream>
#include <random>
#include <sstream>

#include "btrieve/system/HostFile.h"
#include "tools/qrndata/DatabaseFiles.h"
#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace fs = std::filesystem;
namespace server = btrieve::server;

namespace {

// A line each: a word, a tab, and what belongs to it, parted by tabs. The last line is the end's,
// without which the record was not written whole.
constexpr char kFirstLine[] = "qrndata move 1";
constexpr char kLastLine[] = "end";
constexpr char kThere[] = "there", kBack[] = "back", kNew[] = "new", kOld[] = "old";

fs::path RecordPath(const fs::path& directory) { return OldFiles(directory) / "under-way"; }

std::string TextOf(const MoveRecord& move) {
  std::ostringstream text;
  text << kFirstLine << "\nway\t" << (move.way == MoveRecord::Way::There ? kThere : kBack)
       << "\nmark\t" << move.mark << "\nfiles\t" << move.filesTable << '\t' << move.firstFile
       << "\nserver\t" << move.place.server.Text() << '\t'
       << (move.place.server.tlsRequired ? "tls" : "") << "\nschema\t" << move.place.schema << '\n';
  for (const MovedFile& file : move.files) {
    text << "file\t" << PathToUtf8(file.name) << '\t' << file.table << '\t'
         << (file.isNew ? kNew : kOld) << '\n';
  }
  text << kLastLine << '\n';
  return text.str();
}

using Cells = std::vector<std::string>;

Cells CellsOf(const std::string& line) {
  Cells cells;
  std::istringstream text(line + '\t');
  for (std::string cell; std::getline(text, cell, '\t');) cells.push_back(cell);
  return cells;
}

int64_t NumberOf(const std::string& text) {
  int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

struct LineRow {
  std::string_view word;
  size_t cells;
  void (*take)(const Cells& cells, MoveRecord& move);
};
constexpr LineRow kLines[] = {
    {"way", 2,
     [](const Cells& cells, MoveRecord& move) {
       move.way = cells[1] == kThere ? MoveRecord::Way::There : MoveRecord::Way::Back;
     }},
    {"mark", 2, [](const Cells& cells, MoveRecord& move) { move.mark = cells[1]; }},
    {"files", 3,
     [](const Cells& cells, MoveRecord& move) {
       move.filesTable = NumberOf(cells[1]);
       move.firstFile = NumberOf(cells[2]);
     }},
    {"server", 3,
     [](const Cells& cells, MoveRecord& move) {
       (void)server::ReadServerWords(cells[1], move.place.server);
       move.place.server.tlsRequired = cells[2] == "tls";
     }},
    {"schema", 2, [](const Cells& cells, MoveRecord& move) { move.place.schema = cells[1]; }},
    {"file", 4,
     [](const Cells& cells, MoveRecord& move) {
       move.files.push_back({PathFromUtf8(cells[1]), cells[2], cells[3] == kNew});
     }},
};

bool TakeLine(const std::string& line, MoveRecord& move) {
  const Cells cells = CellsOf(line);
  for (const LineRow& row : kLines) {
    if (row.word != cells[0]) continue;
    if (row.cells != cells.size()) return false;
    row.take(cells, move);
    return true;
  }
  return false;
}

[[noreturn]] void Refuse(const fs::path& path) {
  throw Failure(kSystem, Say(Message::MoveRecordBad, PathToUtf8(path)));
}

}  // namespace

fs::path OldFiles(const fs::path& directory) { return directory / "before-move"; }
fs::path ReadyFiles(const fs::path& directory) { return OldFiles(directory) / "ready"; }

fs::path UnfinishedRecord(const fs::path& directory) {
  fs::path path = RecordPath(directory);
  path += ".part";
  return path;
}

std::string NewMark() {
  std::random_device random;
  std::string mark;
  for (int word = 0; word < 4; ++word) mark += Printed("%08x", random());
  return mark;
}

void WriteMove(const fs::path& directory, const MoveRecord& move) {
  const fs::path path = RecordPath(directory);
  const fs::path aside = UnfinishedRecord(directory);
  std::ofstream file(aside, std::ios::binary);
  file << TextOf(move);
  file.close();
  const std::string from = WholePath(aside), to = WholePath(path);
  const bool isWritten = file && btrieve::SyncFile(from, false) && btrieve::PutInPlace(from, to) &&
                         btrieve::SyncFolderOf(WholePath(OldFiles(directory)));
  if (isWritten) return;
  btrieve::RemoveFile(from);
  throw Failure(kSystem, Say(Message::CannotBeWritten, PathToUtf8(path)));
}

std::optional<MoveRecord> ReadMove(const fs::path& directory) {
  const fs::path path = RecordPath(directory);
  std::error_code ignored;
  if (!fs::exists(path, ignored)) return std::nullopt;
  std::istringstream text(ReadWholeFile(path));
  std::string line;
  if (!std::getline(text, line) || line != kFirstLine) Refuse(path);
  MoveRecord move;
  while (std::getline(text, line) && line != kLastLine) {
    if (!TakeLine(line, move)) Refuse(path);
  }
  if (line != kLastLine || move.files.empty()) Refuse(path);
  return move;
}

void ForgetMove(const fs::path& directory) {
  const std::string path = WholePath(RecordPath(directory));
  btrieve::RemoveFile(path);
  // One that comes back with the power is found to be of a move that was made.
  (void)btrieve::SyncFolderOf(path);
  if (btrieve::FileExists(path)) {
    throw Failure(kSystem, Say(Message::CannotBeWritten, PathToUtf8(RecordPath(directory))));
  }
}

}  // namespace qrndata
