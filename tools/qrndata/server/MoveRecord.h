// What a move has to do to the files of a folder. It is written down before the first file is
// touched and goes when all are in their places, so that whoever comes after a death can finish or
// undo it. Which of both the server decides: the move is what its one transaction has become.
//
//   there   each data file goes to the folder for old files and a link takes its place, then the
//           server commits. Links lead to nothing before, so nobody works on half a move.
//   back    files are made ready in that folder, the server gives its tables up and commits, then
//           each file takes its link's place.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "btrieve/server/LinkFile.h"

namespace qrndata {

struct MovedFile {
  std::filesystem::path name;  // below the folder
  std::string table;           // on the server
  bool isNew = false;          // back: made from the server's records, not the old file itself
};

struct MoveRecord {
  enum class Way : uint8_t { There, Back };

  Way way = Way::There;
  std::string mark;        // of this move alone; the server's transaction holds a lock named by it
  int64_t filesTable = 0;  // back: the number that the server has for the table of files
  int64_t firstFile = 0;   // back: the first file's id there
  btrieve::server::LinkFile place;  // without a table
  std::vector<MovedFile> files;
};

// The folder for old files, and the one in it for files that are made ready.
std::filesystem::path OldFiles(const std::filesystem::path& directory);
std::filesystem::path ReadyFiles(const std::filesystem::path& directory);

// Where a record is while it is being written.
std::filesystem::path UnfinishedRecord(const std::filesystem::path& directory);

// A mark that no other move has.
std::string NewMark();

// All throw Failure (kSystem). Written means: on stable storage.
void WriteMove(const std::filesystem::path& directory, const MoveRecord& move);
std::optional<MoveRecord> ReadMove(const std::filesystem::path& directory);
void ForgetMove(const std::filesystem::path& directory);

}  // namespace qrndata
