// Schemas made at random, of all that a dictionary can hold: names of one byte and of twenty, with
// blanks, signs and kanji, words of programming languages; every field type; no keys, keys of one
// field to eight.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace qrn::test {

struct RandomSchema {
  std::string toml;                 // as the data tool reads it
  std::vector<std::string> tables;  // their names, UTF-8
};

// `tables` from 1 to 256.
RandomSchema MakeRandomSchema(std::mt19937& random, int tables);

}  // namespace qrn::test
