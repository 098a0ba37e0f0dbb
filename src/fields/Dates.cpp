#include "fields/Dates.h"

#include "fields/LittleEndian.h"
#include "fields/NumberText.h"
#include "fields/Sinks.h"

namespace qrn {
namespace {

constexpr size_t kStoredSize = 4;
constexpr size_t kTimeTextLength = 8;

void StoreDate(std::span<uint8_t> out, int year, int month, int day) {
  const auto date = static_cast<uint32_t>(day & 0xFF) | static_cast<uint32_t>(month & 0xFF) << 8 |
                    static_cast<uint32_t>(year) << 16;
  StoreLittle(out, date);
}

}  // namespace

void ReadDate(const FieldSource& field, std::span<char> outText) {
  const auto date = LoadLittle<uint32_t>(field.value);
  int year = static_cast<int16_t>(date >> 16);
  if (field.settings.DateStyle == kTwoDigitYears) year -= year < 2000 ? 1900 : 2000;
  // DateFormat is "%04d/%02d/%02d" or "%02d/%02d/%02d": only the year's width differs.
  const int yearWidth = field.settings.DateFormat[2] - '0';
  TextSink text(outText);
  text.PutPadded(year, yearWidth);
  text.Put('/');
  text.PutPadded(static_cast<int>(date >> 8 & 0xFF), 2);
  text.Put('/');
  text.PutPadded(static_cast<int>(date & 0xFF), 2);
}

void WriteDate(const FieldTarget& field) {
  const std::string_view text = field.text;
  if (field.settings.DateStyle == kTwoDigitYears) {
    const int century = field.settings.year_2000 != 0 ? 2000 : 1900;
    return StoreDate(field.out, ParseInt32At(text, 0, 2) + century, ParseInt32At(text, 3, 2),
                     ParseInt32At(text, 6, 2));
  }
  const bool shortMonth = text.size() > 6 && text[6] == '/';
  StoreDate(field.out, ParseInt32At(text, 0, 4), ParseInt32At(text, 5, 2),
            ParseInt32At(text, shortMonth ? 7 : 8, 2));
}

void ReadTime(const FieldSource& field, std::span<char> outText) {
  const auto time = LoadLittle<uint32_t>(field.value);
  TextSink text(outText);
  text.PutPadded(static_cast<int>(time >> 24), 2);
  text.Put(':');
  text.PutPadded(static_cast<int>(time >> 16 & 0xFF), 2);
  text.Put(':');
  text.PutPadded(static_cast<int>(time >> 8 & 0xFF), 2);
}

void WriteTime(const FieldTarget& field) {
  uint8_t stored[kStoredSize] = {};
  if (field.text.size() == kTimeTextLength) {
    for (size_t part = 0; part < 3; ++part) {
      stored[3 - part] = static_cast<uint8_t>(ParseInt32At(field.text, part * 3, 2));
    }
  }
  StoreLittle(field.out, LoadLittle<uint32_t>(stored));
}

}  // namespace qrn
