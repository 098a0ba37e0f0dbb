// What processes do with the bank: steps, each of which happens wholly or not at all.
#pragma once

#include <random>

#include "Bank.h"

namespace btrieve::test {

// Hears what a step does while it does it.
class BankWitness {
 public:
  virtual ~BankWitness() = default;
  // The step has put a record there, in its own eyes at least.
  virtual void Placed(int file, uint32_t position, int32_t id) = 0;
  // All that the step does, told just before the one call that decides about it. Of a single
  // insert the number assigned is still 0.
  virtual void Deciding(const std::vector<Effect>& effects) = 0;
};

// What no step may meet: a status that has no cause, books that do not agree.
struct BankFault {
  std::string text;
};

// The server with the files is away. Of what the step has told before deciding, all or nothing has
// happened.
struct BankIsAway {};

constexpr uint32_t kAnyStep = UINT32_MAX;
// "transfer in an exclusive transaction", by number from 0; there are so many.
const char* BankStepName(uint32_t kind);
uint32_t BankStepCount();

// One step by chance, or of a kind; `id` names the records it makes and must be new. Gives what it
// has done once that is acknowledged, nothing when a lock or another's change refused it: then it
// has done nothing. Throws BankFault, BankIsAway.
std::optional<std::vector<Effect>> PerformBankStep(Client& client, std::mt19937& random,
                                                   uint32_t kind, int32_t id, BankWitness& witness);

}  // namespace btrieve::test
