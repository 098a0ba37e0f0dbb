// How tables belong together, told by the names of their fields and by their keys alone.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "host/newform/Tables.h"

namespace qrn::newform {

// Another table whose records a field of this one names: its only key of one record a value begins
// and ends with a field of that name.
struct Lookup {
  size_t table = 0;
  size_t key = 0;
  size_t field = 0;
  std::optional<size_t> caption;  // the field that says in words what the record is
};

std::optional<Lookup> LookupOf(const Dictionary& dictionary, size_t table, size_t field);

// Records of another table that belong to one of this: those with the same values in `fields`,
// pairs of a position in this table and one in the other, the first ones of the other's key.
struct Detail {
  size_t table = 0;
  size_t key = 0;
  std::vector<std::pair<size_t, size_t>> fields;
};

// The other table as this one's detail, by the key that shares most fields; nothing if none of its
// keys begins with the field that a key of this one begins with.
std::optional<Detail> DetailOf(const Dictionary& dictionary, size_t master, size_t detail);

// All that there are, those first that share most fields.
std::vector<Detail> DetailsOf(const Dictionary& dictionary, size_t master);

}  // namespace qrn::newform
