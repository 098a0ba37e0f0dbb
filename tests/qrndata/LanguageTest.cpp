// Both languages of what the tool says, and which of them it speaks.
#include <algorithm>
#include <set>
#include <sstream>

#include "ToolFixture.h"
#include "tools/qrndata/Verbs.h"

namespace qrndata::test {
namespace {

std::set<std::string> PlacesIn(std::string_view text) {
  std::set<std::string> places;
  for (size_t at = text.find('%'); at != text.npos; at = text.find('%', at + 1)) {
    places.insert(std::string(text.substr(at, 2)));
  }
  return places;
}

TEST(Messages, HaveBothLanguagesWithTheSamePlaces) {
  for (uint16_t id = 0; id < static_cast<uint16_t>(Message::kCount); ++id) {
    const auto message = static_cast<Message>(id);
    const std::string_view japanese = TextOf(message, Language::Japanese);
    std::string_view english = TextOf(message, Language::English);
    EXPECT_FALSE(japanese.empty()) << english;
    while (true) {
      const size_t bar = std::min(english.find('|'), english.size());
      EXPECT_EQ(PlacesIn(english.substr(0, bar)), PlacesIn(japanese)) << english;
      EXPECT_GT(bar, 0U) << japanese;
      if (bar == english.size()) break;
      english.remove_prefix(bar + 1);
    }
  }
}

bool IsJapanese(const std::string& text) {
  return std::ranges::any_of(text, [](char c) { return (c & 0x80) != 0; });
}

class Languages : public ToolTest {
 protected:
  // As on the system of such a user.
  static std::string SaidTo(Language user, std::vector<std::string> arguments) {
    std::ostringstream out, err;
    RunTool(std::move(arguments), {out, err, nullptr, nullptr, user});
    return out.str() + err.str();
  }
};

TEST_F(Languages, AreTheUsersOrTheOneAskedFor) {
  const struct {
    Language user;
    std::vector<std::string> arguments;
    bool isJapanese;
  } kCases[] = {
      {Language::English, {"show", "none"}, false},
      {Language::Japanese, {"show", "none"}, true},
      {Language::English, {"--lang", "ja", "show", "none"}, true},
      {Language::English, {"show", "--lang=ja", "none"}, true},
      {Language::Japanese, {"show", "none", "--lang", "en"}, false},
      {Language::Japanese, {"--lang", "en"}, false},
      {Language::English, {"--lang", "ja"}, true},
      {Language::Japanese, {"--help"}, true},
      {Language::Japanese, {"import", "--help", "--lang=en"}, false},
  };
  for (const auto& row : kCases) {
    const std::string said = SaidTo(row.user, row.arguments);
    EXPECT_EQ(IsJapanese(said), row.isJapanese) << said;
  }
  EXPECT_EQ(SaidTo(Language::English, {"show", "none", "--lang", "fr"}),
            "--lang: expected ja or en, not \"fr\"\nRun with --help for more information.\n");
}

// Also where another library words them.
TEST_F(Languages, WordEveryMistakeOfACommandLine) {
  const std::vector<std::string> kMistakes[] = {
      {"foo"},
      {"import", "db", "T"},
      {"import", "db", "T", "f", "g"},
      {"import", "db", "T", "f", "g", "h"},
      {"import", "db", "T", "f", "--batch"},
      {"import", "db", "T", "f", "--batch", "0"},
      {"import", "db", "T", "f", "--first", "x"},
      {"import", "db", "T", "f", "--update", "a", "--replace", "b"},
      {"export", "db", "T", "--format", "xml"},
  };
  for (const std::vector<std::string>& arguments : kMistakes) {
    const std::string said = SaidTo(Language::Japanese, arguments);
    const std::string first = said.substr(0, said.find('\n'));
    EXPECT_TRUE(IsJapanese(first)) << first;
    EXPECT_FALSE(IsJapanese(SaidTo(Language::English, arguments)));
  }
}

TEST_F(Languages, CountInBoth) {
  Build("[[table]]\nname = \"T\"\nfield = [ { name = \"Id\", type = \"Integer\" } ]\n");
  Write("in.csv", "Id\n1\nx\n");
  const Said said = Run({"--lang", "ja", "import", Path("db"), "T", Path("in.csv")});
  EXPECT_EQ(said.out, "T: 1 行を取り込みました、拒否 1\n");
  EXPECT_TRUE(IsJapanese(said.err)) << said.err;
}

}  // namespace
}  // namespace qrndata::test
