// The system's few global behaviours, from section `quorin350` of quorin.ini, read once per
// process. The control registry derives from this object, so that there is one of both.
#pragma once

#include <cstdint>

namespace qrn {

enum DateStyleCode : int16_t { kFourDigitYears = 1, kTwoDigitYears = 2 };

struct QuorinSettings {
  int32_t fill_space = 1;  // String fields are padded with blanks on writing
  int16_t DateStyle = kFourDigitYears;
  char DateFormat[20] = "%04d/%02d/%02d";
  int32_t year_2000 = 0;    // non-zero: two-digit years count from 2000
  int32_t float_size = 10;  // significant digits of float text
  uint16_t file_flag = 130;
  int32_t sign_nibble = 15;  // positive sign of packed fields; a bad value is used as it stands
  int32_t fix_str_addr = 0;  // non-zero: exported string getters use one fixed area
  uint16_t form_mode = 3;
  int32_t delayed_resolve = 0;  // non-zero: a table's fields are read at its first open
  int32_t v1fx_unicode = 1;
  int32_t set_max_length = 1;        // kept; nothing depends on it
  char DeferredDirectory[260] = {};  // directory of the last deferred dictionary load

  // Reads every key in its order; a bad sign_nibble shows VE823 and stays in force.
  void Load();
};

}  // namespace qrn
