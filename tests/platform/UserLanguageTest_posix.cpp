#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/UserLanguage.h"

namespace qrn::test {
namespace {

struct LocaleCase {
  const char *all, *messages, *lang;
  Language language;
};

const LocaleCase kLocales[] = {
    {"", "", "", Language::English},
    {"", "", "ja_JP.UTF-8", Language::Japanese},
    {"", "", "en_GB.UTF-8", Language::English},
    {"", "ja", "en_GB.UTF-8", Language::Japanese},
    {"", "C", "ja_JP.UTF-8", Language::English},
    {"ja_JP.eucJP", "C", "C", Language::Japanese},
    {"C.UTF-8", "ja_JP.UTF-8", "ja_JP.UTF-8", Language::English},
};

// Puts back what the environment has.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    const char* set = std::getenv(name);
    wasSet_ = set != nullptr;
    if (wasSet_) before_ = set;
    setenv(name, value, 1);
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { wasSet_ ? setenv(name_, before_.c_str(), 1) : unsetenv(name_); }

 private:
  const char* name_;
  std::string before_;
  bool wasSet_;
};

TEST(UserLanguage, IsTheFirstThatTheLocaleSets) {
  for (const LocaleCase& row : kLocales) {
    const Variable all("LC_ALL", row.all), messages("LC_MESSAGES", row.messages),
        lang("LANG", row.lang);
    EXPECT_EQ(UserLanguage(), row.language) << row.all << ' ' << row.messages << ' ' << row.lang;
  }
}

}  // namespace
}  // namespace qrn::test
