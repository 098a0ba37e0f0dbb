#include <gtest/gtest.h>

#include <thread>

#include "clients/Together.h"
#include "kit/Descriptor.h"

namespace btrieve::test {
namespace {

constexpr size_t kPersonSize = 20;
constexpr std::chrono::milliseconds kTurn{60};

struct Verb {
  const char* name;
  int operation;
  CallIn (*input)(const std::string& id);
};

CallIn Nothing(const std::string&) { return {}; }
CallIn Room(const std::string&) { return {.room = kPersonSize}; }
CallIn ById(const std::string& id) { return {.room = kPersonSize, .key = PersonKey(kById, id)}; }
CallIn Record(const std::string& id) { return {.data = Person(id), .keyNumber = -1}; }
CallIn Records(const std::string& id) {
  return {.data = Number(uint16_t{1}) + Number(uint16_t{kPersonSize}) + Person(id),
          .keyNumber = -1};
}
CallIn Current(const std::string&) {
  return {.data = DescriptorBytes({.signature = "UC"}), .room = 200, .keyNumber = kById};
}
CallIn StatRoom(const std::string&) { return {.room = 500, .keyNumber = -1}; }
CallIn AllMultiple(const std::string&) { return {.keyNumber = -2}; }

// clang-format off
constexpr Verb kVerbs[] = {
    {"eq",     kGetEqual,            ById},
    {"next",   kGetNext,             Room},
    {"ext",    kGetNextExtended,     Current},
    {"stat",   kStat,                StatRoom},
    {"ins",    kInsert,              Record},
    {"insx",   kInsertExtended,      Records},
    {"upd",    kUpdate,              Record},
    {"del",    kDelete,              Nothing},
    {"unlock", kUnlock,              AllMultiple},
    {"begin",  kBegin,               Nothing},
    {"cbegin", kConcurrent + kBegin, Nothing},
    {"end",    kEnd,                 Nothing},
    {"abort",  kAbort,               Nothing},
};
// clang-format on

const Verb& VerbOf(const std::string& name) {
  for (const Verb& verb : kVerbs) {
    if (name == verb.name) return verb;
  }
  throw std::invalid_argument("no verb " + name);
}

}  // namespace

struct Together::Word {
  explicit Word(const std::string& text) : process(text.at(0)) {
    const size_t colon = text.find(':');
    const size_t bias = text.find('+');
    const std::string body = text.substr(colon + 1, bias - colon - 1);
    const size_t digits = std::min(body.find_first_of("0123456789"), body.size());
    const Verb& verb = VerbOf(body.substr(0, digits));
    if (colon > 1) block = text[1] - '1';
    operation = verb.operation + (bias == std::string::npos ? 0 : std::stoi(text.substr(bias)));
    in = verb.input(body.substr(digits));
  }

  char process;
  int block = 0;
  int operation;
  CallIn in;
};

Together::Together(int processes, int files) : files_(files) {
  for (int i = 0; i < processes; ++i) processes_.push_back(std::make_unique<OtherProcess>());
  for (int file = 0; file < files; ++file) {
    const Bytes path = PathKey(folder_.Path("file" + std::to_string(file) + ".dat"));
    EXPECT_EQ(Process('a').Call(kCreate, file, {.data = PeopleBlock(), .key = path}).status, 0);
    for (const auto& process : processes_) {
      EXPECT_EQ(process->Call(kOpen, file, {.key = path}).status, 0);
    }
    const std::string place = "a" + std::to_string(file + 1);
    for (const char* id : {"1", "2", "3", "4", "5"}) EXPECT_EQ(Run(place + ":ins" + id), "0");
  }
}

std::string Together::Run(const std::string& words) {
  std::string answers;
  for (const std::string& text : Split(words, ' ')) {
    Begin(text);
    answers += (answers.empty() ? "" : " ") + std::to_string(Finish(text.at(0)));
  }
  return answers;
}

void Together::Begin(const std::string& text) {
  const Word word(text);
  Process(word.process).Begin(word.operation, word.block, word.in);
}

void Together::BeginInTurn(const std::vector<std::string>& words) {
  for (const std::string& word : words) {
    if (&word != &words.front()) std::this_thread::sleep_for(kTurn);
    Begin(word);
  }
}

void Together::Release(char process) {
  Run(std::string(1, process) + ":abort");
  for (int file = 1; file <= files_; ++file) {
    for (const int kind : {0, -2}) Process(process).Call(kUnlock, file - 1, {.keyNumber = kind});
  }
}

}  // namespace btrieve::test
