#include "tools/qrndata/OutputPlace.h"

#include <array>
#include <string>
#include <system_error>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;

// What stands behind a data file's name while it is open.
constexpr std::array<const char*, 3> kDataFileTails = {"", "-wal", "-shm"};

[[noreturn]] void Refuse(const fs::path& output, const std::string& what) {
  throw Failure(kUsage, Say(Message::NameAnotherFile, PathToUtf8(output), what));
}

std::string WholeName(const fs::path& path) {
  std::error_code error;
  const fs::path whole = fs::weakly_canonical(fs::absolute(path, error), error);
  return PathToUtf8(error ? path.lexically_normal() : whole);
}

// Whatever the case of its letters.
void RefuseDictionaryFile(const fs::path& output, const fs::path& directory) {
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(directory, ignored)) {
    const bool isDictionary = SameName(PathToUtf8(entry.path().extension()), ".ddf");
    if (isDictionary && IsSameFile(output, entry.path())) {
      Refuse(output, Say(Message::ADictionaryFile));
    }
  }
}

}  // namespace

bool IsSameFile(const fs::path& left, const fs::path& right) {
  std::error_code ignored;
  return fs::equivalent(left, right, ignored) || SameName(WholeName(left), WholeName(right));
}

void RefuseDatabaseFile(const fs::path& output, const Dictionary& dictionary) {
  RefuseDictionaryFile(output, dictionary.directory);
  for (const Table& table : dictionary.tables) {
    for (const char* tail : kDataFileTails) {
      fs::path file = DataFilePath(dictionary.directory, table.location);
      file += tail;
      if (!IsSameFile(output, file)) continue;
      Refuse(output, Say(Message::ADataFile, Quoted(table.name)));
    }
  }
}

}  // namespace qrndata
