#include "HistoryWork.h"

#include <algorithm>
#include <random>
#include <sstream>

#include "../kit/Registers.h"
#include "Lines.h"

namespace btrieve::test {
namespace {

struct Unexplained {
  std::string text;
};

class Caller {
 public:
  Caller(Value firstValue, const std::vector<std::string>& paths) : nextValue_(firstValue) {
    if (!OpenRegisters(process_, paths)) throw Unexplained{"the files cannot be opened"};
  }

  void Go(uint32_t seed, uint32_t steps) {
    random_.seed(seed);
    for (uint32_t i = 0; i < steps; ++i) random_() % 3 == 0 ? Transaction() : (void)AnyCall();
  }

 private:
  bool AnyCall();
  bool Write(ToldCall::Verb verb, uint32_t reg);
  void Transaction();
  Status Call(const ToldCall& call, Value& seen);

  ThisProcess process_;
  std::mt19937 random_;
  Value nextValue_;
  bool inTransaction_ = false;
};

Status Caller::Call(const ToldCall& call, Value& seen) {
  constexpr Status kExpected[] = {kOk,       kKeyNotFound, kDuplicateKey, kDeadlock,
                                  kConflict, kRecordInUse, kFileInUse};
  Tell(CalledText(call, Now()));
  const Status status = Perform(process_, call, inTransaction_, seen);
  Tell(AnsweredText(status, seen, Now()));
  if (std::ranges::find(kExpected, status) == std::end(kExpected)) {
    throw Unexplained{"status " + std::to_string(status) + " from " + CalledText(call, 0)};
  }
  return status;
}

bool IsRefusal(Status status) {
  return status == kRecordInUse || status == kFileInUse || status == kDeadlock;
}

// Reads the record before it is updated or deleted. False when a lock refused it.
bool Caller::Write(ToldCall::Verb verb, uint32_t reg) {
  Value seen = 0;
  ToldCall call{verb, reg, 0, verb == ToldCall::Delete ? 0 : nextValue_++};
  if (verb == ToldCall::Insert) return !IsRefusal(Call(call, seen));
  const Status read = Call({inTransaction_ ? ToldCall::LockingGet : ToldCall::Get, reg}, call.old);
  if (read != kOk) return !IsRefusal(read);
  return !IsRefusal(Call(call, seen));
}

bool Caller::AnyCall() {
  constexpr ToldCall::Verb kVerbs[] = {ToldCall::Get,        ToldCall::Get,    ToldCall::LockingGet,
                                       ToldCall::Insert,     ToldCall::Insert, ToldCall::Update,
                                       ToldCall::Update,     ToldCall::Delete, ToldCall::Get,
                                       ToldCall::LockingGet, ToldCall::Update};
  const ToldCall::Verb verb = kVerbs[random_() % std::size(kVerbs)];
  const uint32_t reg = static_cast<uint32_t>(random_()) % kRegisters;
  Value seen = 0;
  if (verb != ToldCall::Get && verb != ToldCall::LockingGet) return Write(verb, reg);
  return !IsRefusal(Call({verb, reg}, seen));
}

// A refused one is given up, and of the others one in five.
void Caller::Transaction() {
  constexpr ToldCall::Verb kKinds[] = {ToldCall::BeginExclusive, ToldCall::BeginLocking,
                                       ToldCall::BeginLocking, ToldCall::BeginPlain};
  Value seen = 0;
  Call({kKinds[random_() % std::size(kKinds)]}, seen);
  inTransaction_ = true;
  bool granted = true;
  for (uint32_t left = 2 + random_() % 4; granted && left > 0; --left) granted = AnyCall();
  inTransaction_ = false;
  const bool keep = granted && random_() % 5 != 0;
  Call({keep ? ToldCall::End : ToldCall::Abort}, seen);
}

}  // namespace

int HistoryWork(const std::vector<std::string>& arguments) try {
  Caller caller(static_cast<Value>(std::stoul(arguments.at(0))),
                {arguments.begin() + 1, arguments.end()});
  Tell("d");
  std::string line;
  while (std::getline(std::cin, line)) {
    std::istringstream words(line);
    std::string verb;
    uint32_t seed = 0;
    uint32_t steps = 0;
    words >> verb >> seed >> steps;
    caller.Go(seed, steps);
    Tell("d");
  }
  return 0;
} catch (const Unexplained& fault) {
  Tell("x " + fault.text);
  return 1;
}

}  // namespace btrieve::test
