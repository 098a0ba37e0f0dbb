// One dictionary file, open for reading along one of its keys.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "lexbase.h"

namespace qrn::lexbase {

// What tells one of the three files from the others.
struct DictionaryFileKind {
  const char* name;       // in lower case
  const char* upperName;  // how older tools wrote it; tried where file names keep their case
  uint16_t rowSize;
  uint16_t oldRowSize;  // of older tools, whose rows lack the reserved bytes at the end
  int8_t readKey;       // the key whose order the rows are delivered in
  bool orderIsIndexes;  // older tools made another key of that order: table, key number, segment
};

inline constexpr DictionaryFileKind kFileDdf = {
    "file.ddf", "FILE.DDF", LexbaseFileRowSize, offsetof(LexbaseFileRow, reserved), 0, false};
inline constexpr DictionaryFileKind kFieldDdf = {
    "field.ddf", "FIELD.DDF", LexbaseFieldRowSize, LexbaseFieldRowSize, 0, false};
inline constexpr DictionaryFileKind kIndexDdf = {
    "index.ddf", "INDEX.DDF", LexbaseIndexRowSize, LexbaseIndexRowSize, 2, true};

// Closes itself when it goes. Not movable: the record manager may remember the block's address.
class DictionaryFile {
 public:
  DictionaryFile() = default;
  DictionaryFile(const DictionaryFile&) = delete;
  DictionaryFile& operator=(const DictionaryFile&) = delete;
  ~DictionaryFile() { Close(); }

  // Opens the file of that kind in `directory` and checks that it is one. A status of the record
  // manager, LexbaseBadDirectory or LexbaseNotADictionary.
  [[nodiscard]] int Open(const std::string& directory, const DictionaryFileKind& kind);

  // The next row of the key's order into `row` (rowSize bytes; blanks in place of what an older
  // tool's row lacks), 9 behind the last one.
  [[nodiscard]] int ReadNext(std::span<uint8_t> row);

  // Status of the close; 0 for a file that is not open.
  int Close();

 private:
  [[nodiscard]] int OpenPath(const std::string& path);
  [[nodiscard]] int CheckKind();
  // False without a key of the rows' order.
  [[nodiscard]] bool ChooseKey(std::span<const uint8_t> reply);

  std::array<uint8_t, BtrPositionBlockSize> posBlock_{};
  const DictionaryFileKind* kind_ = nullptr;
  size_t storedSize_ = 0;  // of a row in the file
  int8_t readKey_ = 0;
  bool isOpen_ = false;
  bool hasBegun_ = false;
  bool hasEnded_ = false;
};

}  // namespace qrn::lexbase
