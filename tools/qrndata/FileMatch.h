// Whether a data file is what its table's description says it is.
#pragma once

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "btrieve/keys/KeySpec.h"
#include "tools/qrndata/TableModel.h"

namespace qrndata {

enum class Weight {
  Note,    // records and keys are read right all the same
  Key,     // the description has a key that the file has not, or has at another number
  Record,  // values would be read from, or written to, the wrong bytes
};

struct Mismatch {
  Weight weight;
  std::string text;  // UTF-8, one sentence without a full stop
};

struct FileMatch {
  std::vector<Mismatch> mismatches;
  // For each key of the table its slot in the file's keys: a dictionary need not tell all of them.
  std::vector<std::optional<size_t>> slots;

  // The heaviest ones' first; null without one of at least that weight.
  const Mismatch* Heaviest(Weight least) const noexcept;
};

// A variable file may have any fixed part that its keys lie in: programs create it without counting
// null indicators. A key without an extended type says nothing of its fields' types.
FileMatch MatchFile(const Table& table, const btrieve::FileSpec& file);

// Throws Failure (kSystem) with the first of the heaviest mismatches if it has at least that
// weight.
void RequireMatch(const Table& table, const FileMatch& match, Weight refused);

// Writes every mismatch as a line: "warning: table "T": ...".
void WarnOf(const Table& table, const FileMatch& match, std::ostream& warnings);

}  // namespace qrndata
