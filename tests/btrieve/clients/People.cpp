#include "clients/People.h"

#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

constexpr size_t kSize = 20;

std::string Trimmed(Bytes bytes) {
  while (!bytes.empty() && bytes.back() == ' ') bytes.pop_back();
  return {bytes.begin(), bytes.end()};
}

Bytes Slice(const Bytes& bytes, size_t at, size_t size) {
  const auto from = bytes.begin() + static_cast<std::ptrdiff_t>(at);
  return {from, from + static_cast<std::ptrdiff_t>(size)};
}

}  // namespace

std::vector<Seg> PeopleKeys() {
  return {{.position = 1, .length = 4, .flags = 0x102, .type = 1},
          {.position = 5, .length = 4, .flags = 0x103, .type = 0},
          {.position = 9, .length = 4, .flags = 0x153, .type = 1},
          {.position = 5, .length = 4, .flags = 0x103, .type = 0},
          {.position = 13, .length = 4, .flags = 0x10B, .type = 0, .nullValue = ' '},
          {.position = 17, .length = 2, .flags = 0x508, .type = 0, .nullValue = ' '}};
}

Bytes PeopleBlock() { return CreateBlock({.recordLength = kSize}, PeopleKeys()); }

Bytes Person(const std::string& text) {
  auto parts = Split(text, ',');
  const char* defaults[] = {"1", "n", "0", "", ""};
  for (size_t i = parts.size(); i < 5; ++i) parts.emplace_back(defaults[i]);
  return Number(static_cast<int32_t>(std::stoi(parts[0]))) + Padded(parts[1], 4) +
         Number(static_cast<int32_t>(std::stoi(parts[2]))) + Padded(parts[3], 4) +
         Padded(parts[4], 2) + Bytes{'.', '.'};
}

std::string PersonText(const Bytes& record) {
  return std::to_string(NumberAt<int32_t>(record, 0)) + "," + Trimmed(Slice(record, 4, 4)) + "," +
         std::to_string(NumberAt<int32_t>(record, 8)) + "," + Trimmed(Slice(record, 12, 4)) + "," +
         Trimmed(Slice(record, 16, 2));
}

Bytes PersonKey(int key, const std::string& text) {
  const auto parts = Split(text, '/');
  switch (key) {
    case kById:
      return Number(static_cast<int32_t>(std::stoi(text)));
    case kByRank:
      return Number(static_cast<int32_t>(std::stoi(parts.at(0)))) + Padded(parts.at(1), 4);
    case kByCode:
      return Padded(text, 2);
    default:
      return Padded(text, 4);
  }
}

Bytes KeyOf(int key, const Bytes& record) {
  switch (key) {
    case kById:
      return Slice(record, 0, 4);
    case kByName:
      return Slice(record, 4, 4);
    case kByRank:
      return Slice(record, 8, 4) + Slice(record, 4, 4);
    case kByNote:
      return Slice(record, 12, 4);
    default:
      return Slice(record, 16, 2);
  }
}

// clang-format off
const Script::Verb Script::kVerbs[] = {
    {"first",  kGetFirst,                       &Script::Read},
    {"last",   kGetLast,                        &Script::Read},
    {"next",   kGetNext,                        &Script::Read},
    {"prev",   kGetPrevious,                    &Script::Read},
    {"eq",     kGetEqual,                       &Script::Read},
    {"keq",    kGetKey + kGetEqual,             &Script::ReadKey},
    {"stepf",  kStepFirst,                      &Script::Step},
    {"stepn",  kStepNext,                       &Script::Step},
    {"walk",   kGetFirst,                       &Script::Walk},
    {"back",   kGetLast,                        &Script::Walk},
    {"direct", kGetDirect,                      &Script::Direct},
    {"pos",    kGetPosition,                    &Script::Position},
    {"pct",    kGetByPercentage,                &Script::Percent},
    {"ins",    kInsert,                         &Script::Insert},
    {"upd",    kUpdate,                         &Script::Update},
    {"del",    kDelete,                         &Script::Plain},
    {"unlock", kUnlock,                         &Script::Unlock},
    {"begin",  kBegin,                          &Script::Plain},
    {"cbegin", kConcurrent + kBegin,            &Script::Plain},
    {"end",    kEnd,                            &Script::Plain},
    {"abort",  kAbort,                          &Script::Plain},
    {"reset",  kReset,                          &Script::Plain},
    {"close",  kClose,                          &Script::Plain},
    {"open",   kOpen,                           &Script::Open},
};
// clang-format on

Script::Script(Client& client, std::string path) : path_(std::move(path)) {
  for (int i = 0; i < 8; ++i) Assign(static_cast<char>('a' + i), client, i);
}

void Script::Assign(char cursor, Client& client, int block) { cursors_[cursor] = {&client, block}; }

int Script::Word::KeyNumber() const { return key.empty() ? 0 : key == "-" ? -1 : std::stoi(key); }

// [cursor:]verb[key][=value][+bias]
Script::Word Script::Parse(const std::string& text) {
  Word word;
  size_t at = 0;
  if (text.size() > 1 && text[1] == ':') {
    word.cursor = text[0];
    at = 2;
  }
  const size_t bias = text.find('+', at);
  const size_t value = text.find('=', at);
  const std::string name = text.substr(at, std::min(bias, value) - at);
  const size_t digits = name.find_first_of("0123456789-*");
  word.verb = name.substr(0, digits);
  if (digits != std::string::npos) word.key = name.substr(digits);
  if (value != std::string::npos) word.value = text.substr(value + 1, bias - value - 1);
  if (bias != std::string::npos) word.bias = std::stoi(text.substr(bias + 1));
  return word;
}

std::string Script::Run(const std::string& words) {
  std::string answers;
  for (const std::string& text : Split(words, ' ')) {
    if (text.empty()) continue;
    SCOPED_TRACE(text);
    if (!answers.empty()) answers += ' ';
    answers += RunWord(Parse(text));
  }
  return answers;
}

std::string Script::RunWord(const Word& word) {
  for (const Verb& verb : kVerbs) {
    if (word.verb == verb.name) return (this->*verb.handler)(word, verb.operation + word.bias);
  }
  return "?" + word.verb;
}

CallOut Script::Call(const Word& word, int operation, const CallIn& in) {
  const Cursor& cursor = cursors_.at(word.cursor);
  return cursor.client->Call(operation, cursor.block, in);
}

// `key` -1: no key value is expected.
std::string Script::Shown(const Word& word, const CallOut& out, int key) {
  if (out.status != 0) return "#" + std::to_string(out.status);
  EXPECT_EQ(out.length, kSize);
  const Bytes record = out.Returned();
  if (record.size() != kSize) return "?";
  if (key >= 0) {
    const Bytes value = KeyOf(key, record);
    EXPECT_EQ(ToHex(Slice(out.key, 0, value.size())), ToHex(value));
    for (size_t i = value.size(); i < out.key.size(); ++i) EXPECT_EQ(out.key[i], kUnused) << i;
  } else {
    EXPECT_FALSE(out.keyTouched);
  }
  const auto position = Call(word, kGetPosition, {.room = 4});
  EXPECT_EQ(position.status, 0);
  const auto& known = written_[NumberAt<uint32_t>(position.data, 0)];
  EXPECT_NE(std::find(known.begin(), known.end(), record), known.end()) << PersonText(record);
  return std::to_string(NumberAt<int32_t>(record, 0));
}

std::string Script::Read(const Word& word, int operation) {
  const int key = word.KeyNumber();
  CallIn in{.room = kSize, .keyNumber = key};
  if (!word.value.empty()) in.key = PersonKey(key, word.value);
  return Shown(word, Call(word, operation, in), key);
}

// Get Key leaves the data alone; the value itself is the answer.
std::string Script::ReadKey(const Word& word, int operation) {
  const int key = word.KeyNumber();
  CallIn in{.room = kSize, .keyNumber = key};
  if (!word.value.empty()) in.key = PersonKey(key, word.value);
  const CallOut out = Call(word, operation, in);
  EXPECT_FALSE(out.dataTouched);
  if (out.status != 0) return "#" + std::to_string(out.status);
  if (key == kById) return std::to_string(NumberAt<int32_t>(out.key, 0));
  if (key != kByRank) return Trimmed(Slice(out.key, 0, key == kByCode ? 2 : 4));
  return std::to_string(NumberAt<int32_t>(out.key, 0)) + "/" + Trimmed(Slice(out.key, 4, 4));
}

std::string Script::Step(const Word& word, int operation) {
  return Shown(word, Call(word, operation, {.room = kSize}), -1);
}

std::string Script::Direct(const Word& word, int operation) {
  const int key = word.KeyNumber();
  const Bytes position = Number(PositionOf(std::stoi(word.value)));
  return Shown(word, Call(word, operation, {.data = position, .room = kSize, .keyNumber = key}),
               key);
}

std::string Script::Position(const Word& word, int operation) {
  const CallOut out = Call(word, operation, {.room = 4});
  if (out.status != 0) return "#" + std::to_string(out.status);
  const auto known = written_.find(NumberAt<uint32_t>(out.data, 0));
  if (known == written_.end()) return "?";
  return std::to_string(NumberAt<int32_t>(known->second.back(), 0));
}

std::string Script::Percent(const Word& word, int operation) {
  const int key = word.KeyNumber();
  const Bytes percent = Number(static_cast<uint16_t>(std::stoi(word.value)));
  return Shown(word, Call(word, operation, {.data = percent, .room = kSize, .keyNumber = key}),
               key);
}

std::string Script::Walk(const Word& word, int operation) {
  const int further = operation == kGetFirst ? kGetNext : kGetPrevious;
  std::string ids;
  std::string id = Read(word, operation);
  for (; id != "#9"; id = Read(word, further)) {
    ids += (ids.empty() ? "" : ",") + id;
    if (id[0] == '#') break;
  }
  return ids.empty() ? "-" : ids;
}

void Script::Remember(const Word& word, const Bytes& record) {
  const CallOut out = Call(word, kGetPosition, {.room = 4});
  EXPECT_EQ(out.status, 0);
  written_[NumberAt<uint32_t>(out.data, 0)].push_back(record);
}

std::string Script::Insert(const Word& word, int operation) {
  const Bytes record = Person(word.value);
  const CallOut out = Call(word, operation, {.data = record, .keyNumber = word.KeyNumber()});
  if (out.status != 0) return "#" + std::to_string(out.status);
  if (word.KeyNumber() >= 0) {
    const Bytes value = KeyOf(word.KeyNumber(), record);
    EXPECT_EQ(ToHex(Slice(out.key, 0, value.size())), ToHex(value));
  } else {
    EXPECT_FALSE(out.keyTouched);
  }
  Remember(word, record);
  return "ok";
}

std::string Script::Update(const Word& word, int operation) { return Insert(word, operation); }

std::string Script::Plain(const Word& word, int operation) {
  const CallOut out = Call(word, operation, {});
  return out.status == 0 ? "ok" : "#" + std::to_string(out.status);
}

std::string Script::Unlock(const Word& word, int operation) {
  CallIn in;
  if (word.key == "*") in.keyNumber = -2;
  if (!word.value.empty()) {
    in.keyNumber = -1;
    in.data = Number(PositionOf(std::stoi(word.value)));
  }
  const CallOut out = Call(word, operation, in);
  return out.status == 0 ? "ok" : "#" + std::to_string(out.status);
}

std::string Script::Open(const Word& word, int operation) {
  const int mode = word.value.empty() ? 0 : std::stoi(word.value);
  const CallOut out = Call(word, operation, {.key = PathKey(path_), .keyNumber = mode});
  return out.status == 0 ? "ok" : "#" + std::to_string(out.status);
}

void Script::Create(const std::vector<std::string>& people) {
  const Word a;
  ASSERT_EQ(Call(a, kCreate, {.data = PeopleBlock(), .key = PathKey(path_)}).status, 0);
  ASSERT_EQ(Run("open"), "ok");
  for (const std::string& person : people) ASSERT_EQ(Run("ins-=" + person), "ok") << person;
}

// A deleted or renumbered record keeps the place it was last seen at.
uint32_t Script::PositionOf(int id) const {
  uint32_t position = 0;
  for (const auto& [place, records] : written_) {
    for (const Bytes& record : records) {
      if (NumberAt<int32_t>(record, 0) == id) position = place;
    }
  }
  EXPECT_NE(position, 0u) << "no record was ever written with id " << id;
  return position;
}

}  // namespace btrieve::test
