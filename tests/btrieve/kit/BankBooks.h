// What must stand in the bank's files, by what the processes have told: every acknowledged step,
// and of the steps under way when their processes died each wholly or not at all.
#pragma once

#include <set>

#include "Bank.h"

namespace btrieve::test {

using BankPositions = std::array<std::map<uint32_t, int32_t>, kBankFiles>;

class BankBooks {
 public:
  // The state to begin with.
  explicit BankBooks(BankState state) : state_(std::move(state)) {}

  void Acknowledged(const std::vector<Effect>& effects);
  void LeftOpen(const std::vector<Effect>& effects) { open_.push_back(effects); }
  // Empty, or who else had the position.
  std::string Placed(int file, uint32_t position, int32_t id);

  // Compares a state in which nothing is under way; from then on what was open is decided. Empty,
  // or what differs.
  std::string Judge(const BankState& found);
  // No position has ever been another record's.
  std::string JudgePositions(const BankPositions& positions);
  uint32_t KeptOpen() const { return keptOpen_; }

 private:
  bool Explains(uint32_t chosen, const BankState& found, BankState& state) const;
  std::string NumberFaults() const;

  BankState state_;
  std::vector<Effect> done_;               // since the last judgement
  std::vector<std::vector<Effect>> open_;  // likewise
  BankPositions positions_;                // of all times
  int32_t highestNumber_ = 0;              // that had been acknowledged by the last judgement
  std::map<int32_t, int32_t> numbers_;     // with their records, of all times
  uint32_t keptOpen_ = 0;
};

}  // namespace btrieve::test
