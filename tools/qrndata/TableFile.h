// The data file that belongs to a table: its Create block, and whether a file that is there fits.
#pragma once

#include <string>
#include <vector>

#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/TableModel.h"

namespace qrndata {

// The data of a Create for the table: file and key specifications, collating sequences. Every
// segment carries its extended type.
Bytes CreateBlock(const Table& table);

// What of a data file is not as the dictionary has it, one UTF-8 sentence each. A variable file may
// have any fixed part that its keys lie in: programs create it without counting null indicators.
std::vector<std::string> Differences(const Table& table, const btrieve::FileSpec& file);

// "duplicates, modifiable, descending": the flags of an index.ddf row in words.
std::string DescribeKeyFlags(uint16_t indexFlags);

}  // namespace qrndata
