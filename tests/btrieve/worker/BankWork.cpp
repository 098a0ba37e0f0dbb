#include "BankWork.h"

#include <chrono>
#include <sstream>
#include <thread>

#include "../kit/BankSteps.h"
#include "Lines.h"
#include "SelfKill.h"

namespace btrieve::test {
namespace {

constexpr std::chrono::seconds kLongestAbsence{40};

struct Batch {
  uint32_t seed = 0;
  uint32_t steps = 0;
  uint32_t kind = kAnyStep;
  uint32_t killAt = 0;
  uint32_t moments = 0;
};

class TellingWitness : public BankWitness {
 public:
  explicit TellingWitness(const Batch& batch) : batch_(batch) {}

  void Placed(int file, uint32_t position, int32_t id) override {
    Tell("p " + std::to_string(file) + " " + std::to_string(position) + " " + std::to_string(id));
  }
  void Deciding(const std::vector<Effect>& effects) override {
    Tell("e" + EffectsText(effects));
    if (batch_.moments == 2) KillAt(batch_.killAt, Moments::All);
  }

 private:
  const Batch& batch_;
};

class Teller {
 public:
  Teller(int32_t firstId, std::vector<std::string> paths)
      : nextId_(firstId), paths_(std::move(paths)) {}

  void Open() {
    if (!OpenBank(process_, paths_)) throw BankFault{"the files cannot be opened"};
  }

  void Obey(std::istream& words) {
    std::string verb;
    words >> verb;
    if (verb == "go") {
      Batch batch;
      words >> batch.seed >> batch.steps >> batch.kind >> batch.killAt >> batch.moments;
      Go(batch);
    } else if (verb == "view") {
      View();
    } else if (verb == "reopen") {
      process_.Call(kReset, 0, {});
      Open();
    } else {
      throw BankFault{"unknown command " + verb};
    }
    Tell("d");
  }

 private:
  void Go(const Batch& batch) {
    std::mt19937 random(batch.seed);
    TellingWitness witness(batch);
    if (batch.moments < 2) KillAt(batch.killAt, batch.moments ? Moments::All : Moments::Writes);
    for (uint32_t i = 0; i < batch.steps; ++i) {
      Tell(StepText(random, batch.kind, witness));
    }
    KillAt(0);
  }

  std::string StepText(std::mt19937& random, uint32_t kind, BankWitness& witness) try {
    const auto done = PerformBankStep(process_, random, kind, nextId_++, witness);
    return done ? "a" + EffectsText(*done) : "r";
  } catch (const BankIsAway&) {
    AwaitBank();
    return "l";
  }

  void AwaitBank() {
    const auto end = std::chrono::steady_clock::now() + kLongestAbsence;
    do {
      process_.Call(kReset, 0, {});
      if (OpenBank(process_, paths_)) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    } while (std::chrono::steady_clock::now() < end);
    throw BankFault{"the server stays away"};
  }

  void View() {
    BankState state;
    for (int file = 0; file < kBankFiles; ++file) {
      const Status status = ReadBankFile(process_, file, state[static_cast<size_t>(file)]);
      if (status != kOk) throw BankFault{"viewing gave " + std::to_string(status)};
    }
    Tell("s " + StateText(state));
  }

  ThisProcess process_;
  int32_t nextId_;
  std::vector<std::string> paths_;
};

}  // namespace

int BankWork(const std::vector<std::string>& arguments) try {
  Tell("b");
  Teller teller(std::stoi(arguments.at(0)), {arguments.begin() + 1, arguments.end()});
  teller.Open();
  Tell("d");
  std::string line;
  while (std::getline(std::cin, line)) {
    std::istringstream words(line);
    teller.Obey(words);
  }
  return 0;
} catch (const BankFault& fault) {
  Tell("x " + fault.text);
  return 1;
}

}  // namespace btrieve::test
