#include "BankSteps.h"

#include <algorithm>
#include <functional>

namespace btrieve::test {
namespace {

constexpr int kNoWait = 400;
constexpr size_t kCarriedAtOnce = 6;
constexpr size_t kFewestNumbers = 6;

struct Refused {};

// One step under way.
class Step {
 public:
  Step(Client& client, std::mt19937& random, int32_t id, BankWitness& witness)
      : client_(client), random_(random), id_(id), witness_(witness) {}

  std::vector<Effect> Run(int begin, void (Step::*body)(), bool keep);

  void Transfer();
  void Carry();
  void Note();
  void Memo();
  void TakeNumber();
  void Forget();
  void Audit();

 private:
  int32_t Pick(int32_t count) {
    return static_cast<int32_t>(random_() % static_cast<uint32_t>(count));
  }
  CallOut Call(int operation, int file, const CallIn& in);
  [[noreturn]] void Fail(int operation, int file, Status status);
  // A single step may also wait for a lock, or do without one: it holds nothing that others want.
  int LockBias() { return begin_ != 0 || Pick(2) == 0 ? kNoWait : 0; }
  size_t CountOf(int file) { return NumberAt<uint32_t>(Call(kStat, file, {.room = 500}).data, 6); }
  // In a transaction its effects are told before End, else before the one write.
  void Does(const Effect& effect);

  void Move(int file, int32_t account, int32_t amount);
  void Put(int file, const Fields& fields);
  // Removes up to `most` records, the oldest ones, while more than `keep` are left, and gives them
  // back. Of the numbers those are the lowest: the highest must stay to be counted on from.
  std::vector<std::pair<int32_t, Fields>> RemoveOldest(int file, size_t most, size_t keep);
  void AddTo(int file, int32_t account, const Fields& change);
  void UnlockAll();

  Client& client_;
  std::mt19937& random_;
  int32_t id_;
  BankWitness& witness_;
  int begin_ = 0;
  std::vector<Effect> effects_;
};

[[noreturn]] void Step::Fail(int operation, int file, Status status) {
  throw BankFault{"operation " + std::to_string(operation) + " on file " + std::to_string(file) +
                  " of step " + std::to_string(id_) + " gave " + std::to_string(status)};
}

// Locks of others and their changes since a record was read are met everywhere. On a machine with
// far too much to do an End may not come to its turn in time, and then has undone everything.
CallOut Step::Call(int operation, int file, const CallIn& in) {
  constexpr Status kRefusals[] = {kDeadlock, kConflict, kRecordInUse, kFileInUse,
                                  kTransactionNotWritten};
  CallOut out = client_.Call(operation, file, in);
  if (std::ranges::find(kRefusals, out.status) != std::end(kRefusals)) throw Refused();
  if (out.status == kNotActive) throw BankIsAway();
  if (out.status != kOk && out.status != kEndOfFile) Fail(operation, file, out.status);
  return out;
}

void Step::Does(const Effect& effect) {
  effects_.push_back(effect);
  if (begin_ == 0) witness_.Deciding(effects_);
}

void Step::AddTo(int file, int32_t account, const Fields& change) {
  const CallIn find{.room = kBankRecordSize, .key = Number(account)};
  const auto row = BankRow(file, Call(kGetEqual + LockBias(), file, find).Returned());
  if (!row) throw BankFault{"account " + std::to_string(account) + " is damaged"};
  Fields fields = row->second;
  for (size_t i = 0; i < fields.size(); ++i) fields[i] += change[i];
  Does({Effect::Add, file, account, change});
  Call(kUpdate + kNoWait, file, {.data = BankRecord(file, account, fields), .keyNumber = -1});
}

// Of a record that was read to be changed, and then was not.
void Step::UnlockAll() {
  for (int file = 0; file < kBankFiles; ++file) client_.Call(kUnlock, file, {.keyNumber = -2});
}

void Step::Put(int file, const Fields& fields) {
  Does({Effect::Put, file, id_, fields});
  const CallOut out =
      Call(kInsert + kNoWait, file, {.data = BankRecord(file, id_, fields), .keyNumber = -1});
  effects_.back().fields[0] = NumberAt<int32_t>(out.data, 4);
  const CallOut place = Call(kGetPosition, file, {.room = 4});
  witness_.Placed(file, NumberAt<uint32_t>(place.data, 0), id_);
}

std::vector<std::pair<int32_t, Fields>> Step::RemoveOldest(int file, size_t most, size_t keep) {
  std::vector<std::pair<int32_t, Fields>> removed;
  const CallIn in{.room = kBankRecordSize, .keyNumber = file == kNumbers ? kByField : kByBankId};
  while (removed.size() < most) {
    const CallOut out = Call(kGetFirst + LockBias(), file, in);
    if (out.status == kEndOfFile || CountOf(file) <= keep) break;
    const auto row = BankRow(file, out.Returned());
    if (!row) throw BankFault{"file " + std::to_string(file) + " holds " + ToHex(out.data)};
    removed.push_back(*row);
    Does({Effect::Remove, file, row->first, {}});
    Call(kDelete + kNoWait, file, {});
  }
  return removed;
}

// From one account to another, in any order of the files, so that each of them comes to lead.
void Step::Transfer() {
  const int from = Pick(2);
  const int to = Pick(4) == 0 ? from : 1 - from;
  const int32_t payer = 1 + Pick(kAccountCount);
  const int32_t payee = 1 + (payer + Pick(kAccountCount - 1)) % kAccountCount;
  const int32_t amount = 1 + Pick(50);
  std::vector<std::function<void()>> parts = {
      [&] {
        AddTo(from, payer, {-amount, 0, 0});
      },
      [&] {
        AddTo(to, payee, {amount, 0, 0});
      },
      [&] {
        Put(kLedger, {100 * from + payer, 100 * to + payee, amount});
      },
  };
  if (Pick(2) == 0) parts.emplace_back([&] { Put(kNumbers, {0, amount, payer}); });
  std::shuffle(parts.begin(), parts.end(), random_);
  for (const auto& part : parts) part();
}

// Entries leave the ledger for the accounts; with them old numbers go.
void Step::Carry() {
  for (const auto& [id, entry] : RemoveOldest(kLedger, kCarriedAtOnce, 0)) {
    AddTo(entry[0] / 100, entry[0] % 100, {0, -entry[2], 0});
    AddTo(entry[1] / 100, entry[1] % 100, {0, entry[2], 0});
  }
  RemoveOldest(kNumbers, kCarriedAtOnce, kFewestNumbers);
}

void Step::Note() { AddTo(Pick(2), 1 + Pick(kAccountCount), {0, 0, 1}); }
void Step::Memo() { Put(kLedger, {1 + Pick(kAccountCount), 101 + Pick(kAccountCount), 0}); }
void Step::TakeNumber() { Put(kNumbers, {0, Pick(1000), Pick(1000)}); }
void Step::Forget() { RemoveOldest(kNumbers, 1, kFewestNumbers); }

void Step::Audit() {
  BankState state;
  for (int file = 0; file < kBankFiles; ++file) {
    const Status status = ReadBankFile(client_, file, state[static_cast<size_t>(file)], kNoWait);
    if (status == kFileInUse || status == kRecordInUse) throw Refused();
    if (status == kNotActive) throw BankIsAway();
    if (status != kOk) Fail(kStepNext, file, status);
  }
  const std::string faults = AuditText(state);
  if (!faults.empty()) throw BankFault{"audit: " + faults + " in " + StateText(state)};
}

std::vector<Effect> Step::Run(int begin, void (Step::*body)(), bool keep) {
  begin_ = begin;
  if (begin_ != 0) Call(begin_, 0, {});
  try {
    (this->*body)();
  } catch (const Refused&) {
    if (begin_ != 0) Call(kAbort, 0, {});
    UnlockAll();
    throw;
  }
  if (begin_ == 0) {
    UnlockAll();
    return effects_;
  }
  if (!keep) {
    Call(kAbort, 0, {});
    throw Refused();
  }
  witness_.Deciding(effects_);
  Call(kEnd, 0, {});
  return effects_;
}

struct StepRow {
  const char* name;
  int begin;
  void (Step::*body)();
  bool keep;
  uint32_t weight;
};

// Reads lock, and nothing waits.
constexpr int kExclusive = kBegin + kNoWait;
constexpr int kLocking = kConcurrent + kBegin + kNoWait;

// clang-format off
constexpr StepRow kSteps[] = {
    {"transfer, exclusive",   kExclusive, &Step::Transfer,   true,  6},
    {"transfer, concurrent",  kLocking,   &Step::Transfer,   true,  8},
    {"carry, exclusive",      kExclusive, &Step::Carry,      true,  2},
    {"carry, concurrent",     kLocking,   &Step::Carry,      true,  2},
    {"single update",         0,          &Step::Note,       true,  3},
    {"single insert",         0,          &Step::Memo,       true,  1},
    {"single number",         0,          &Step::TakeNumber, true,  2},
    {"single delete",         0,          &Step::Forget,     true,  1},
    {"aborted, exclusive",    kExclusive, &Step::Transfer,   false, 1},
    {"aborted, concurrent",   kLocking,   &Step::Transfer,   false, 1},
    {"audit",                 kExclusive, &Step::Audit,      true,  2},
};
// clang-format on

uint32_t ByChance(std::mt19937& random) {
  uint32_t sum = 0;
  for (const StepRow& row : kSteps) sum += row.weight;
  uint32_t left = random() % sum;
  uint32_t kind = 0;
  while (left >= kSteps[kind].weight) left -= kSteps[kind++].weight;
  return kind;
}

}  // namespace

const char* BankStepName(uint32_t kind) {
  return kind < BankStepCount() ? kSteps[kind].name : "any";
}
uint32_t BankStepCount() { return static_cast<uint32_t>(std::size(kSteps)); }

std::optional<std::vector<Effect>> PerformBankStep(Client& client, std::mt19937& random,
                                                   uint32_t kind, int32_t id,
                                                   BankWitness& witness) {
  const StepRow& row = kSteps[kind == kAnyStep ? ByChance(random) : kind];
  try {
    return Step(client, random, id, witness).Run(row.begin, row.body, row.keep);
  } catch (const Refused&) {
    return std::nullopt;
  }
}

}  // namespace btrieve::test
