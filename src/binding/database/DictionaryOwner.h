#pragma once

#include <memory>

#include "core/Dictionary.h"

namespace qrn {

// Frees a dictionary, closing none of its tables.
struct FreeDictionary {
  void operator()(DbDictionary* dictionary) const noexcept { DbDictFree(dictionary); }
};
using OwnedDictionary = std::unique_ptr<DbDictionary, FreeDictionary>;

}  // namespace qrn
