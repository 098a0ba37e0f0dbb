#include "tools/qrndata/convert/OldFolder.h"

#include <algorithm>
#include <system_error>

#include "btrieve/legacy/Damage.h"
#include "btrieve/legacy/OldFile.h"
#include "lexbase.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"
#include "tools/qrndata/convert/OldFiles.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;
using btrieve::legacy::OldFile;

constexpr const char* kDictionaryFile = "file.ddf";

struct ListedTable {
  std::string name;      // code page of the dictionary
  std::string location;  // the same
};

std::string Trimmed(const uint8_t* bytes, size_t size) {
  std::string text(bytes, bytes + size);
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

// What a damaged dictionary lists is taken as far as it can be read: here it only gives names.
std::vector<ListedTable> TablesIn(const fs::path& path) try {
  std::vector<std::string> faults;
  OldFile file(ReadFileBytes(path), &faults);
  std::vector<ListedTable> tables;
  if (file.Spec().recordLength < offsetof(LexbaseFileRow, reserved)) return tables;
  for (uint32_t rank = 0; rank < file.Total(btrieve::kPhysicalSlot); ++rank) {
    btrieve::Hit hit;
    file.Read(btrieve::kPhysicalSlot, rank, hit);
    const uint8_t* row = hit.data.data();
    if ((row[offsetof(LexbaseFileRow, flags)] & LexbaseFileOwn) != 0) continue;
    tables.push_back({Trimmed(row + offsetof(LexbaseFileRow, name), LexbaseNameSize),
                      Trimmed(row + offsetof(LexbaseFileRow, location), LexbaseLocationSize)});
  }
  return tables;
} catch (const btrieve::legacy::Damage&) {
  return {};
}

bool SameLocation(const fs::path& left, const fs::path& right) {
  return SameName(PathToUtf8(left.lexically_normal()), PathToUtf8(right.lexically_normal()));
}

class FolderReader {
 public:
  explicit FolderReader(const fs::path& directory) : directory_(directory) {}

  OldFolder Read() {
    TakeFiles();
    const auto dictionary = Find(kDictionaryFile);
    if (dictionary != folder_.files.end()) {
      for (const ListedTable& table : TablesIn(directory_ / dictionary->location)) TakeTable(table);
    }
    if (folder_.files.empty()) {
      throw Failure(kSystem, Say(Message::NoOldFile, PathToUtf8(directory_)));
    }
    std::sort(folder_.files.begin(), folder_.files.end(), [](const auto& left, const auto& right) {
      return std::tie(left.isTable, left.name) < std::tie(right.isTable, right.name);
    });
    return std::move(folder_);
  }

 private:
  using Place = std::vector<OldFolderFile>::iterator;

  Place Find(const fs::path& location) {
    return std::find_if(folder_.files.begin(), folder_.files.end(),
                        [&](const auto& file) { return SameLocation(file.location, location); });
  }

  void TakeFiles() {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory_, error)) {
      if (!entry.is_regular_file(error) || !IsOldFile(entry.path())) continue;
      const fs::path location = entry.path().filename();
      folder_.files.push_back({PathToUtf8(location), location});
    }
    if (error) {
      throw Failure(kSystem,
                    Say(Message::CannotBeReadWhy, PathToUtf8(directory_), error.message()));
    }
  }

  void TakeTable(const ListedTable& table) {
    const fs::path path = DataFilePath(directory_, table.location);
    const fs::path location = path.lexically_relative(directory_);
    auto file = Find(location);
    if (file == folder_.files.end() && IsOldFile(path) && !location.empty() &&
        *location.begin() != "..") {
      file = folder_.files.insert(file, {PathToUtf8(location), location});
    }
    if (file == folder_.files.end()) {
      folder_.missing.push_back(
          Say(Message::OldFileMissing, Show(table.name), Show(table.location)));
    } else if (!file->isTable) {
      file->isTable = true;
      file->name = Show(table.name);
    }
  }

  fs::path directory_;
  OldFolder folder_;
};

}  // namespace

OldFolder ReadOldFolder(const fs::path& directory) { return FolderReader(directory).Read(); }

}  // namespace qrndata
