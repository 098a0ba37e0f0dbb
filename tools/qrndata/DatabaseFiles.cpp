#include "tools/qrndata/DatabaseFiles.h"

#include <algorithm>

#include "btrieve/system/HostFile.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace fs = std::filesystem;

namespace {

bool IsWithin(const fs::path& name) {
  const fs::path normal = name.lexically_normal();
  return normal.is_relative() && *normal.begin() != "..";
}

}  // namespace

std::vector<fs::path> DatabaseFiles(const Dictionary& dictionary, Message outside) {
  std::vector<fs::path> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(dictionary.directory)) {
    const std::string name = PathToUtf8(entry.path().filename());
    for (const char* each : {"file.ddf", "field.ddf", "index.ddf"}) {
      if (SameName(name, each)) names.push_back(entry.path().filename());
    }
  }
  for (const Table& table : dictionary.tables) {
    const fs::path name = DataFilePath({}, table.location);
    if (!IsWithin(name)) {
      throw Failure(kBadInput, Say(outside, Quoted(table.name), PathToUtf8(name)));
    }
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
  }
  return names;
}

std::string WholePath(const fs::path& path) {
  std::string whole;
  Require(btrieve::PathFromCaller(BtrievePath(path).c_str(), whole), PathToUtf8(path));
  return whole;
}

}  // namespace qrndata
