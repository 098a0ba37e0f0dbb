// The data file that belongs to a table, as it is created.
#pragma once

#include <string>

#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/TableModel.h"

namespace qrndata {

// The data of a Create for the table: file and key specifications, collating sequences. Every
// segment carries its extended type.
Bytes CreateBlock(const Table& table);

// The flags of an index.ddf row as a key specification of the record manager has them.
uint16_t FileKeyFlags(uint16_t indexFlags);

// "duplicates, modifiable, descending": the flags of an index.ddf row in words.
std::string DescribeKeyFlags(uint16_t indexFlags);

}  // namespace qrndata
