#include "host/newform/FormChoice.h"

#include <algorithm>
#include <utility>

#include "host/newform/FieldFit.h"

namespace qrn::newform {
namespace {

bool Has(const std::vector<size_t>& list, size_t element) {
  return std::find(list.begin(), list.end(), element) != list.end();
}

bool HasBox(const Table& table, size_t field) {
  const Control control = FitOf(table, field).control;
  return control != Control::None && control != Control::Display;
}

}  // namespace

std::vector<size_t> ShowableFields(const Table& table) {
  std::vector<size_t> fields;
  for (size_t i = 0; i < table.fields.size(); ++i) {
    if (FitOf(table, i).control != Control::None) fields.push_back(i);
  }
  return fields;
}

std::vector<size_t> SeekableKeys(const Table& table, const std::vector<size_t>& fields) {
  std::vector<size_t> keys;
  for (size_t i = 0; i < table.keys.size() && keys.size() < kMostKeys; ++i) {
    const Key& key = table.keys[i];
    const bool seekable =
        !key.name.empty() && std::all_of(key.fields.begin(), key.fields.end(), [&](size_t field) {
          return Has(fields, field) && HasBox(table, field);
        });
    if (seekable) keys.push_back(i);
  }
  return keys;
}

FormChoice UsualChoice(const Dictionary& dictionary, size_t table, std::string directory) {
  FormChoice choice;
  choice.directory = std::move(directory);
  choice.table = table;
  choice.fields = ShowableFields(dictionary.tables[table]);
  choice.keys = SeekableKeys(dictionary.tables[table], choice.fields);
  return choice;
}

}  // namespace qrn::newform
