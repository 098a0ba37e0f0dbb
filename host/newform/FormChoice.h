// What is chosen of a dictionary for a form, in a shape that a dialog can show and change.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/form/Language.h"
#include "host/newform/Relations.h"

namespace qrn::newform {

using form::Language;

struct FormChoice {
  std::string directory;         // for DDFDir, UTF-8
  size_t table = 0;              // of the dictionary
  std::vector<size_t> fields;    // in the order of the card; positions in the table
  std::vector<size_t> keys;      // with a button that finds by them; the first one gives the order
  std::optional<Detail> detail;  // whose records stand in a grid below
  bool grid = false;             // a grid of the table's own records, which takes a key
  std::string pictures;          // folder of the pictures that fields name; empty: none
  Language language = Language::Japanese;
};

// At most so many keys have a button of their own.
inline constexpr size_t kMostKeys = 12;

// Every field that a control can show, every key that can be named and sought, no grid.
FormChoice UsualChoice(const Dictionary& dictionary, size_t table, std::string directory);

// The fields that a control can show, in the table's order.
std::vector<size_t> ShowableFields(const Table& table);

// The keys that a button can find by, in the table's order: each of their fields has a box.
std::vector<size_t> SeekableKeys(const Table& table, const std::vector<size_t>& fields);

}  // namespace qrn::newform
