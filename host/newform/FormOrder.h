// An order for a new form as a command line gives it, checked and carried out.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/newform/FormChoice.h"

namespace qrn::newform {

// Texts and paths are UTF-8.
struct FormOrder {
  std::string directory;  // of the dictionary
  std::string table;
  std::string detail;               // empty for none
  std::vector<std::string> fields;  // empty for all
  // With a button that finds by them; nothing: all of which each field has a box.
  std::optional<std::vector<std::string>> keys;
  bool grid = false;
  std::optional<std::string> pictures;  // folder of the pictures; nothing: one of that name there
  Language language = Language::Japanese;
  std::string output;  // a file that ends in .frm
  bool force = false;  // replaces a file that is there
};

struct OrderOutcome {
  bool done = false;
  // What went wrong, or what the user should know of the form that was made; a line each, UTF-8.
  std::vector<std::string> messages;
};

// Reads the dictionary, makes the form and puts its file in place whole. On failure nothing has
// changed.
OrderOutcome CarryOut(const FormOrder& order);

}  // namespace qrn::newform
