// How the parts of one table's schema entry are read. Used by Schema.cpp alone.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/qrndata/TableModel.h"
#include "tools/qrndata/TomlReader.h"

namespace qrndata {

// A name of up to `limit` bytes in code page 932, without blanks at its ends. Throws Failure.
std::string ReadSchemaName(const TomlReader& reader, std::string_view entry, size_t limit);

// Reads [[table.field]] and lays the record out: fields follow each other without gaps, a null
// indicator in front of its value, unless the schema gives an offset. Field ids count from 1 until
// the dictionary's are given.
void ReadSchemaFields(const TomlReader& tableReader, Table& table,
                      std::vector<std::string>& warnings);

// Reads [[table.key]]; segments refer to fields by those ids.
void ReadSchemaKeys(const TomlReader& tableReader, Table& table,
                    const std::filesystem::path& directory);

}  // namespace qrndata
