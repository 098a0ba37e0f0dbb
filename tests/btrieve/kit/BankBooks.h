// What must stand in the bank's files, by what the processes have told: every acknowledged step,
// and of the steps under way when their processes died each wholly or not at all.
#pragma once

#include <set>

#include "Bank.h"

namespace btrieve::test {

// The number of a single insert that nobody lived to tell stands in the file alone.
inline std::vector<Effect> WithNumbers(std::vector<Effect> effects, const BankState& found) {
  for (Effect& effect : effects) {
    if (effect.file != kNumbers || effect.kind != Effect::Put || effect.fields[0] != 0) continue;
    const auto row = found[kNumbers].find(effect.id);
    if (row != found[kNumbers].end()) effect.fields[0] = row->second[0];
  }
  return effects;
}

inline std::string NumberFault(const Effect& effect, const std::string& what) {
  return "number " + std::to_string(effect.fields[0]) + " of step " + std::to_string(effect.id) +
         " " + what + "\n";
}

using BankPositions = std::array<std::map<uint32_t, int32_t>, kBankFiles>;

class BankBooks {
 public:
  // The state to begin with.
  explicit BankBooks(BankState state) : state_(std::move(state)) {}

  void Acknowledged(const std::vector<Effect>& effects) {
    done_.insert(done_.end(), effects.begin(), effects.end());
  }
  void LeftOpen(const std::vector<Effect>& effects) { open_.push_back(effects); }
  // Empty, or who else had the position.
  std::string Placed(int file, uint32_t position, int32_t id) {
    const auto [place, isNew] = positions_[static_cast<size_t>(file)].emplace(position, id);
    if (isNew || place->second == id) return "";
    return "position " + std::to_string(position) + " of file " + std::to_string(file) +
           " was given to " + std::to_string(place->second) + " and is now " + std::to_string(id) +
           "'s\n";
  }

  // Compares a state in which nothing is under way; from then on what was open is decided. Empty,
  // or what differs.
  std::string Judge(const BankState& found) {
    std::string faults = NumberFaults();
    const uint32_t choices = 1u << open_.size();
    BankState state;
    uint32_t chosen = 0;
    while (chosen < choices && !Explains(chosen, found, state)) ++chosen;
    if (chosen == choices) {
      for (const uint32_t each : {0u, choices - 1}) {
        Explains(each, found, state);
        faults += (each ? "with" : "without") + std::string(" what was under way:\n") +
                  Differences(found, state);
      }
      return faults + AuditText(found);
    }
    for (size_t i = 0; i < open_.size(); ++i) keptOpen_ += chosen >> i & 1;
    for (const auto& [id, row] : found[kNumbers]) {
      numbers_.emplace(row[0], id);
      highestNumber_ = std::max(highestNumber_, row[0]);
    }
    for (const Effect& effect : done_) {
      if (effect.file == kNumbers && effect.kind == Effect::Put) {
        numbers_.emplace(effect.fields[0], effect.id);
      }
    }
    state_ = found;
    done_.clear();
    open_.clear();
    return faults + AuditText(found);
  }
  // No position has ever been another record's.
  std::string JudgePositions(const BankPositions& positions) {
    std::string faults;
    for (int file = 0; file < kBankFiles; ++file) {
      for (const auto& [position, id] : positions[static_cast<size_t>(file)]) {
        faults += Placed(file, position, id);
      }
    }
    return faults;
  }
  uint32_t KeptOpen() const { return keptOpen_; }

 private:
  bool Explains(uint32_t chosen, const BankState& found, BankState& state) const {
    std::vector<Effect> effects = done_;
    for (size_t i = 0; i < open_.size(); ++i) {
      if ((chosen >> i & 1) == 0) continue;
      const std::vector<Effect> more = WithNumbers(open_[i], found);
      effects.insert(effects.end(), more.begin(), more.end());
    }
    state = state_;
    return ApplyEffects(effects, state) && state == found;
  }
  // Acknowledged numbers grow and none comes twice.
  std::string NumberFaults() const {
    std::string faults;
    std::set<int32_t> now;
    for (const Effect& effect : done_) {
      if (effect.file != kNumbers || effect.kind != Effect::Put) continue;
      if (numbers_.contains(effect.fields[0]) || !now.insert(effect.fields[0]).second) {
        faults += NumberFault(effect, "was given before");
      } else if (effect.fields[0] <= highestNumber_) {
        faults += NumberFault(effect, "is below older ones");
      }
    }
    return faults;
  }

  BankState state_;
  std::vector<Effect> done_;               // since the last judgement
  std::vector<std::vector<Effect>> open_;  // likewise
  BankPositions positions_;                // of all times
  int32_t highestNumber_ = 0;              // that had been acknowledged by the last judgement
  std::map<int32_t, int32_t> numbers_;     // with their records, of all times
  uint32_t keptOpen_ = 0;
};

}  // namespace btrieve::test
