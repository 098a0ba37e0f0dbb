// One old file written anew in today's format, and both compared.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "btrieve/legacy/OldFile.h"
#include "tools/qrndata/Progress.h"

namespace qrndata {

// What became of the records.
struct Conversion {
  bool isSalvage = false;                // the old file is damaged
  uint32_t records = 0;                  // written
  std::vector<std::string> notes;        // what is another way now
  std::vector<uint32_t> left;            // addresses of records whose unique values are taken
  std::vector<std::string> differences;  // found by the comparison
};

// Work that WriteTodays and Compare do together, in the units of Progress.
uint64_t WorkOf(const btrieve::legacy::OldFile& old);

// Makes `path`, where no file may be: every record in the order of its place; duplicates in the
// order that each key has them in. The file comes into being whole or not at all. Throws Failure
// (kSystem).
void WriteTodays(btrieve::legacy::OldFile& old, const std::filesystem::path& path,
                 Progress& progress, Conversion& conversion);

// Reads the file that WriteTodays has made through the record manager, by place and along every
// key, and compares it with the old one.
void Compare(btrieve::legacy::OldFile& old, const std::filesystem::path& path, Progress& progress,
             Conversion& conversion);

}  // namespace qrndata
