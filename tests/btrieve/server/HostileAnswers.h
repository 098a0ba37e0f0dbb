// A server's answers with harm done to them: cut off, with turned bits, said twice, without an end,
// too late.
#pragma once

#include "kit/Choices.h"
#include "kit/Proxy.h"

namespace btrieve::test {

enum class Harm : uint8_t {
  None,
  Cut,
  Garble,
  Repeat,     // everything is said twice
  Unceasing,  // one thing is said for ever
  Boundless,  // one row goes on for ever
  Late,       // everything comes later
};

// Harm begins behind so many bytes of a connection's answers.
struct HarmPlan {
  Harm harm = Harm::None;
  size_t behind = 0;
  uint32_t seed = 0;
  std::chrono::milliseconds wait{0};  // of what comes late
};

class HostileAnswers final : public Answers {
 public:
  explicit HostileAnswers(const HarmPlan& plan) : plan_(plan), choices_(plan.seed) {}

  bool Take(std::span<const uint8_t> said, Bytes& passed) override;
  bool GoesOn() const override { return !forEver_.empty(); }
  std::chrono::microseconds Wait() const override { return wait_; }

 private:
  // False when the connection ends.
  bool TakeHarmed(std::span<const uint8_t> said, Bytes& passed);
  void TurnBits(std::span<uint8_t> bytes);

  HarmPlan plan_;
  Choices choices_;
  size_t said_ = 0;
  Bytes forEver_;
  std::chrono::microseconds wait_{0};
};

inline Proxy::Make Doing(const HarmPlan& plan) {
  return [plan] { return std::make_unique<HostileAnswers>(plan); };
}

}  // namespace btrieve::test
