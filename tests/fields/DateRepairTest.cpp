#include "FieldCases.h"
#include "fields/DateRepair.h"
#include "platform/LocalDate.h"

namespace qrn {
namespace {

struct RepairCase {
  const char *typed, *repaired;
  int beeps;
};

template <class Repair>
void ExpectRepairs(std::span<const RepairCase> cases, Repair repair) {
  for (const RepairCase& row : cases) {
    const Watch watch;
    char text[kRepairedTextSize];
    repair(row.typed, std::span<char>(text));
    EXPECT_EQ(std::string(text), row.repaired) << row.typed;
    EXPECT_EQ(watch.Beeps(), row.beeps) << row.typed;
  }
}

TEST(DateRepair, FourDigitYears) {
  ReplaceLocalDate([] { return CalendarDate{2031, 7, 9}; });
  const RepairCase cases[] = {
      {"2024/1/5", "2024/01/05", 0}, {"20240230", "2024/02/30", 0},
      {"2024/3/", "2024/03/01", 1},  {"1900/12/31", "1900/12/31", 0},
      {"99/1/1", "2031/01/01", 1},   {"2024/13/32", "2024/01/01", 2},
      {"x", "2031/01/01", 3},        {"/5/6", "2031/05/06", 1},
      {"2024//6", "2024/01/06", 1},
  };
  ExpectRepairs(cases,
                [](const char* typed, std::span<char> text) { RepairDateText({}, typed, text); });
  ReplaceLocalDate(nullptr);
}

TEST(DateRepair, TwoDigitYears) {
  QuorinSettings settings;
  settings.DateStyle = kTwoDigitYears;
  const RepairCase cases[] = {
      {"9913", "99/01/01", 1},       {"24/12/32", "24/01/01", 1}, {"24/13/5", "24/01/01", 1},
      {"2024/1/5", "2024/01/05", 0}, {"24/-1/5", "24/01/01", 1},
  };
  ExpectRepairs(cases, [&](const char* typed, std::span<char> text) {
    RepairDateText(settings, typed, text);
  });
}

TEST(DateRepair, Times) {
  const RepairCase cases[] = {
      {"123456", "12:34:56", 0},   {"12", "12:00:00", 0},       {"24:00:00", "24:00:00", 0},
      {"23:60:60", "23:60:60", 0}, {"25:00:00", "00:00:00", 1}, {"1:61", "00:00:00", 1},
      {"1:2:61", "00:00:00", 1},   {"99", "00:00:00", 1},       {"-1:00", "00:00:00", 1},
  };
  ExpectRepairs(cases, RepairTimeText);
}

#ifndef _WIN32
TEST(DateRepair, TheWindowTakesTheRepairedText) {
  TextWindow window{"2024/1/5"};
  NormaliseDateText({}, &window);
  EXPECT_STREQ(window.text, "2024/01/05");
  window = {"7:08"};
  NormaliseTimeText({}, &window);
  EXPECT_STREQ(window.text, "07:08:00");
  window = {"000000000000001:02"};
  NormaliseTimeText({}, &window);
  EXPECT_STREQ(window.text, "00:00:00") << "only the first 15 bytes count";
}

TEST(DateRepair, AnEmptyWindowIsLeftAlone) {
  const Watch watch;
  TextWindow window;
  NormaliseDateText({}, &window);
  NormaliseTimeText({}, &window);
  NormaliseDateText({}, nullptr);
  EXPECT_STREQ(window.text, "");
  EXPECT_EQ(watch.Beeps(), 0);
}
#endif

}  // namespace
}  // namespace qrn
