#include "fields/QuorinSettings.h"

#include <cstdio>

#include "fields/Messages.h"
#include "platform/CodePage.h"
#include "platform/Profile.h"

namespace qrn {
namespace {

constexpr char kFile[] = "quorin.ini";
constexpr char kSection[] = "quorin350";

int ReadNumber(const char* key, int fallback) {
  return ReadProfileInt(kSection, key, fallback, kFile);
}

// Only the word "no" turns it off.
int32_t ReadFillSpace() {
  char value[256];
  const size_t length = ReadProfileText(kSection, "fill_space", "yes", value, kFile);
  return EqualIgnoringCase({value, length}, "no") ? 0 : 1;
}

// The date picture of the file, else that of the system. Its order and separators never matter.
DateStyleCode ReadDateStyle() {
  char picture[32];
  size_t length = ReadProfileText(kSection, "sShortDate", "", picture, kFile);
  if (length == 0) length = ReadProfileText("intl", "sShortDate", "", picture, "win.ini");
  return EqualIgnoringCase({picture, length}, "YY/MM/DD") ? kTwoDigitYears : kFourDigitYears;
}

}  // namespace

void QuorinSettings::Load() {
  fill_space = ReadFillSpace();
  DateStyle = ReadDateStyle();
  std::snprintf(DateFormat, sizeof DateFormat, "%s",
                DateStyle == kTwoDigitYears ? "%02d/%02d/%02d" : "%04d/%02d/%02d");
  float_size = ReadNumber("float_size", 10);
  file_flag = static_cast<uint16_t>(ReadNumber("file_flag", 130));
  form_mode = static_cast<uint16_t>(ReadNumber("form_mode", 3));
  set_max_length = static_cast<int16_t>(ReadNumber("set_max_length", 1));
  fix_str_addr = ReadNumber("fix_str_addr", 0);
  year_2000 = ReadNumber("year_2000", 0);
  sign_nibble = ReadNumber("sign_nibble", 15);
  if (sign_nibble != 15 && sign_nibble != 12) ShowMessage(kVE823);
  delayed_resolve = ReadNumber("delayed_resolve", 0);
  v1fx_unicode = ReadNumber("v1fx_unicode", 1);
}

}  // namespace qrn
