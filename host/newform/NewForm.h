// A form made from a dictionary: its cards, buttons, bars and grids in place, and the code behind
// them. It runs as it is, whether data files are there or not.
#pragma once

#include <string>
#include <vector>

#include "host/newform/FormChoice.h"

namespace qrn::newform {

struct NewForm {
  std::string bytes;  // of the form file: code page 932, lines end with CR LF
  std::string name;   // of the form
  // Fields of the choice that are only shown, and fields of the table that no control shows: what
  // the user should hear of. UTF-8 names.
  std::vector<std::string> displayed;
  std::vector<std::string> left;
};

// The largest form that a screen of 1024 by 768 pixels shows whole, without its frame.
inline constexpr int kWidestForm = 1000;
inline constexpr int kHighestForm = 690;

// `choice` names what is in the dictionary and can be shown, sought, or joined.
NewForm MakeForm(const Dictionary& dictionary, const FormChoice& choice);

}  // namespace qrn::newform
