// Verbs for tables of field cases: bytes stand as hex, text as UTF-8.
#pragma once

#include "core/DbTypes.h"
#include "fields/FieldText.h"
#include "fields/QuorinSettings.h"
#include "tests/support/Test.h"

namespace qrn {

using Bytes = std::vector<uint8_t>;

// "05 1C" and so on; blanks may stand anywhere between the pairs.
Bytes FromHex(std::string_view hex);
std::string ToHex(std::span<const uint8_t> bytes);

DbFieldInfo Field(int32_t type, int32_t size, int32_t decimals = 0);

// The text that `hex` reads as, where the record ends with these bytes.
std::string ReadAs(const QuorinSettings& settings, const DbFieldInfo& field, std::string_view hex);

// What writing `text` (UTF-8) changes in a record of `room` bytes, as hex: a byte that keeps what
// it held shows as "..", and such bytes at the end are left out. A byte changed behind them fails
// the test.
std::string WrittenAs(const QuorinSettings& settings, const DbFieldInfo& field,
                      std::string_view text, size_t room = 64);

// One case of either direction: read tables go from `hex` to `text`, write tables back.
struct FieldCase {
  const char* name;
  int32_t type, size, decimals;
  const char *hex, *text;
};

void ExpectReads(std::span<const FieldCase> cases, const QuorinSettings& settings = {});
void ExpectWrites(std::span<const FieldCase> cases, const QuorinSettings& settings = {});

// Message boxes and beeps since the object was made.
class Watch : test::Pinned {
 public:
  Watch();
  ~Watch();

  // The boxes' texts in UTF-8, each with its flags in hex: "[2000 VE011 ...]".
  std::string Boxes() const;
  int Beeps() const;
};

}  // namespace qrn
