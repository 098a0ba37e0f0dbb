#include "FieldCases.h"
#include "IniFile.h"

namespace qrn {
namespace {

std::string Show(const QuorinSettings& s) {
  std::ostringstream text;
  text << "fill=" << s.fill_space << " date=" << s.DateStyle << " float=" << s.float_size
       << " flag=" << s.file_flag << " form=" << s.form_mode << " max=" << s.set_max_length
       << " fix=" << s.fix_str_addr << " year=" << s.year_2000 << " sign=" << s.sign_nibble
       << " delayed=" << s.delayed_resolve << " unicode=" << s.v1fx_unicode;
  return text.str();
}

std::string LoadAndShow() {
  QuorinSettings settings;
  settings.float_size = settings.fill_space = settings.v1fx_unicode = -77;  // Load sets every key
  settings.Load();
  return Show(settings);
}

constexpr char kDefaults[] =
    "fill=1 date=1 float=10 flag=130 form=3 max=1 fix=0 year=0 sign=15 delayed=0 unicode=1";

TEST(Settings, DefaultsStandWithoutAFile) {
  const IniFile file;
  EXPECT_EQ(Show(QuorinSettings{}), kDefaults);
  EXPECT_EQ(LoadAndShow(), kDefaults);
}

TEST(Settings, EveryKeyIsRead) {
  IniFile file;
  const char* const keys[][2] = {
      {"fill_space", "no"},     {"sShortDate", "YY/MM/DD"}, {"float_size", "7"},
      {"file_flag", "131"},     {"form_mode", "2"},         {"set_max_length", "0"},
      {"fix_str_addr", "1"},    {"year_2000", "1"},         {"sign_nibble", "12"},
      {"delayed_resolve", "1"}, {"v1fx_unicode", "0"},
  };
  for (const auto& key : keys) file.Set(key[0], key[1]);
  EXPECT_EQ(LoadAndShow(),
            "fill=0 date=2 float=7 flag=131 form=2 max=0 fix=1 year=1 sign=12 delayed=1 unicode=0");
}

TEST(Settings, OnlyTheWordNoTurnsFillSpaceOff) {
  struct {
    const char* value;
    int32_t on;
  } const cases[] = {{"no", 0}, {"NO", 0}, {"No", 0},   {"0", 1},  {"yes", 1},
                     {"", 1},   {"n", 1},  {"none", 1}, {"off", 1}};
  for (const auto& row : cases) {
    IniFile file;
    file.Set("fill_space", row.value);
    QuorinSettings settings;
    settings.Load();
    EXPECT_EQ(settings.fill_space, row.on) << row.value;
  }
}

TEST(Settings, OneDatePictureGivesTwoDigitYears) {
  struct {
    const char *own, *system;
    int16_t style;
    const char* format;
  } const cases[] = {
      {"YY/MM/DD", "", 2, "%02d/%02d/%02d"},
      {"yy/mm/dd", "yyyy/MM/dd", 2, "%02d/%02d/%02d"},
      {"YYYY/MM/DD", "yy/mm/dd", 1, "%04d/%02d/%02d"},
      {"YY-MM-DD", "", 1, "%04d/%02d/%02d"},
      {"YY/MM/DD and much more text than 32 bytes", "", 1, "%04d/%02d/%02d"},
      {"", "yy/MM/dd", 2, "%02d/%02d/%02d"},
      {"", "dd.MM.yyyy", 1, "%04d/%02d/%02d"},
  };
  for (const auto& row : cases) {
    IniFile file;
    file.Set("sShortDate", row.own);
    file.SetSystemDate(row.system);
    QuorinSettings settings;
    settings.Load();
    EXPECT_EQ(settings.DateStyle, row.style) << row.own << '|' << row.system;
    EXPECT_STREQ(settings.DateFormat, row.format) << row.own << '|' << row.system;
  }
}

TEST(Settings, NumbersAreCutToTheirWidth) {
  IniFile file;
  file.Set("file_flag", "65666");
  file.Set("form_mode", "-1");
  file.Set("set_max_length", "65535");
  file.Set("float_size", "words");
  EXPECT_EQ(LoadAndShow(),
            "fill=1 date=1 float=0 flag=130 form=65535 max=-1 fix=0 year=0 sign=15 delayed=0 "
            "unicode=1");
}

TEST(Settings, ABadSignNibbleIsReportedAndStays) {
  IniFile file;
  file.Set("sign_nibble", "13");
  file.Set("v1fx_unicode", "5");
  const Watch watch;
  QuorinSettings settings;
  settings.Load();
  EXPECT_EQ(watch.Boxes(), "[2000 VE823 サイン・ニブルの指定が不正です。]");
  EXPECT_EQ(settings.sign_nibble, 13);
  EXPECT_EQ(settings.v1fx_unicode, 5) << "loading goes on";
}

}  // namespace
}  // namespace qrn
