#include "btrieve/server/LinkFile.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace btrieve::server {
namespace {

constexpr size_t kLongestName = 63;  // the server cuts longer ones

// What a received file may say of the way to a server: nothing that reads or runs anything of the
// user's beside what the client library does by itself.
constexpr std::string_view kServerWords[] = {"host", "hostaddr", "port",       "dbname",
                                             "user", "sslmode",  "sslrootcert"};
constexpr std::string_view kTlsModes[] = {"require", "verify-ca", "verify-full"};

constexpr bool IsBlank(char c) noexcept { return c == ' ' || c == '\t'; }

std::string_view Trimmed(std::string_view text) noexcept {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool IsPlain(std::string_view text) noexcept {
  return std::ranges::all_of(text, [](char c) { return (c >= ' ' && c <= '~') || c == '\t'; });
}

template <class Table>
bool Has(const Table& table, std::string_view word) noexcept {
  return std::find(std::begin(table), std::end(table), word) != std::end(table);
}

// Takes "keyword=value" words off the front of a text: a value in quotes may hold blanks, a
// backslash takes the character behind it as it is.
class WordReader {
 public:
  explicit WordReader(std::string_view text) noexcept : rest_(text) {}

  bool AtEnd() noexcept {
    SkipBlanks();
    return rest_.empty();
  }
  // An empty text, or what is wrong.
  std::string Take(std::string& keyword, std::string& value) {
    const size_t equals = rest_.find('=');
    if (equals == rest_.npos) return "\"=\" is missing in the server's address";
    keyword = Trimmed(rest_.substr(0, equals));
    rest_.remove_prefix(equals + 1);
    SkipBlanks();
    return TakeValue(value) ? "" : "a value is not closed";
  }

 private:
  void SkipBlanks() noexcept {
    while (!rest_.empty() && IsBlank(rest_.front())) rest_.remove_prefix(1);
  }
  char TakeCharacter() noexcept {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }
  bool TakeValue(std::string& value) {
    const bool quoted = !rest_.empty() && rest_.front() == '\'';
    if (quoted) TakeCharacter();
    value.clear();
    while (!rest_.empty()) {
      char c = TakeCharacter();
      if (quoted ? c == '\'' : IsBlank(c)) return true;
      if (c == '\\') {
        if (rest_.empty()) return false;
        c = TakeCharacter();
      }
      value.push_back(c);
    }
    return !quoted;
  }

  std::string_view rest_;
};

std::string QuotedValue(const std::string& value) {
  std::string text = "'";
  for (const char c : value) {
    if (c == '\'' || c == '\\') text.push_back('\\');
    text.push_back(c);
  }
  return text + "'";
}

class Reader {
 public:
  explicit Reader(LinkFault& fault) noexcept : fault_(fault) {}

  bool Read(std::string_view text, LinkFile& link) {
    for (fault_.line = 1; !text.empty() || fault_.line == 1; ++fault_.line) {
      const size_t end = text.find('\n');
      std::string_view line = text.substr(0, end);
      text.remove_prefix(end == text.npos ? text.size() : end + 1);
      if (line.ends_with('\r')) line.remove_suffix(1);
      if (!TakeLine(line, link)) return false;
    }
    return Close(link);
  }

 private:
  struct Row {
    std::string_view name;
    bool (Reader::*take)(const std::string& value, LinkFile& link);
  };
  static constexpr size_t kRowCount = 4;
  static const std::array<Row, kRowCount> kRows;

  bool Fail(std::string text) {
    fault_.text = std::move(text);
    return false;
  }

  bool TakeLine(std::string_view line, LinkFile& link) {
    if (!IsPlain(line)) return Fail("a character that is not plain ASCII");
    if (fault_.line == 1) return line == kLinkMark || Fail("this is no link file");
    line = Trimmed(line);
    if (line.empty() || line.front() == '#') return true;
    const size_t equals = line.find('=');
    if (equals == line.npos) return Fail("\"=\" is missing");
    return TakePair(std::string(Trimmed(line.substr(0, equals))),
                    std::string(Trimmed(line.substr(equals + 1))), link);
  }

  bool TakePair(const std::string& name, const std::string& value, LinkFile& link) {
    for (size_t row = 0; row < kRowCount; ++row) {
      if (kRows[row].name != name) continue;
      if (std::exchange(taken_[row], true)) return Fail("\"" + name + "\" stands here twice");
      return (this->*kRows[row].take)(value, link);
    }
    return Fail("\"" + name + "\" is not known");
  }

  bool TakeServer(const std::string& value, LinkFile& link) {
    std::string wrong = ReadServerWords(value, link.server);
    return wrong.empty() || Fail(std::move(wrong));
  }
  bool TakeName(const std::string& value, std::string& name) {
    name = value;
    return IsServerName(value) || Fail("\"" + value + "\" is no name for it");
  }
  bool TakeSchema(const std::string& value, LinkFile& link) { return TakeName(value, link.schema); }
  bool TakeTable(const std::string& value, LinkFile& link) { return TakeName(value, link.table); }
  bool TakeTls(const std::string& value, LinkFile& link) {
    link.server.tlsRequired = true;
    return value == "required" || Fail("tls can only be \"required\"");
  }

  bool Close(const LinkFile& link) {
    for (size_t row = 0; row < kRowCount; ++row) {
      if (!taken_[row] && kRows[row].take != &Reader::TakeTls) {
        return Fail("\"" + std::string(kRows[row].name) + "\" is missing");
      }
    }
    for (const auto& [word, value] : link.server.words) {
      if (link.server.tlsRequired && word == "sslmode" && !Has(kTlsModes, value)) {
        return Fail("TLS is required, and sslmode=" + value + " does without");
      }
    }
    return true;
  }

  LinkFault& fault_;
  std::array<bool, kRowCount> taken_{};
};

const std::array<Reader::Row, Reader::kRowCount> Reader::kRows = {{
    {"server", &Reader::TakeServer},
    {"schema", &Reader::TakeSchema},
    {"table", &Reader::TakeTable},
    {"tls", &Reader::TakeTls},
}};

}  // namespace

std::string ServerAddress::Text() const {
  std::string text;
  for (const auto& [word, value] : words) {
    text += (text.empty() ? "" : " ") + word + "=" + QuotedValue(value);
  }
  return text;
}

bool IsLinkFile(ByteView start) noexcept {
  return start.size() >= kLinkStart && std::memcmp(start.data(), kLinkMark, kLinkStart) == 0;
}

bool IsServerName(const std::string& name) noexcept {
  const auto isPart = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
  };
  return !name.empty() && name.size() <= kLongestName && std::ranges::all_of(name, isPart);
}

std::string ReadServerWords(const std::string& text, ServerAddress& address) {
  address.words.clear();
  for (WordReader reader(text); !reader.AtEnd();) {
    std::string word;
    std::string value;
    if (std::string wrong = reader.Take(word, value); !wrong.empty()) return wrong;
    if (!Has(kServerWords, word)) return "the server's address takes no \"" + word + "\"";
    for (const auto& [other, unused] : address.words) {
      if (other == word) return "\"" + word + "\" stands in the server's address twice";
    }
    address.words.emplace_back(std::move(word), std::move(value));
  }
  return address.words.empty() ? "the server's address is empty" : "";
}

std::optional<LinkFile> ReadLinkFile(ByteView bytes, LinkFault& fault) {
  fault = {};
  if (bytes.size() > kLargestLink) {
    fault = {1, "a link file has at most 4096 bytes"};
    return std::nullopt;
  }
  LinkFile link;
  if (!Reader(fault).Read(TextOf(bytes), link)) return std::nullopt;
  return link;
}

std::string WriteLinkFile(const LinkFile& link) {
  return std::string(kLinkMark) + "\nserver = " + link.server.Text() + "\nschema = " + link.schema +
         "\ntable = " + link.table + "\n" + (link.server.tlsRequired ? "tls = required\n" : "");
}

}  // namespace btrieve::server
