// Databases that the data tool makes in a folder.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/RowImporter.h"
#include "tools/qrndata/Schema.h"

namespace qrn::test {

// Dictionary and data files of a schema's text; those that are there are replaced.
inline void MakeDatabase(const std::filesystem::path& folder, const std::string& schema) {
  qrndata::BuildDatabase(qrndata::ParseSchema(schema, "schema", folder), folder,
                         qrndata::Existing::Replace);
}

// So many rows, each made by `row` of its number from 0: qrndata::FieldValues. A row that is
// refused ends the program.
template <class Row>
void FillTable(const std::filesystem::path& folder, const std::string& table, int rows,
               const Row& row) {
  const qrndata::Dictionary dictionary = qrndata::ReadDictionary(folder);
  qrndata::RowImporter importer(folder, dictionary.Find(table), 10000);
  for (int number = 0; number < rows; ++number) {
    qrndata::FieldValues values = row(number);
    if (importer.Put(values)) std::abort();
  }
  importer.Finish();
}

}  // namespace qrn::test
