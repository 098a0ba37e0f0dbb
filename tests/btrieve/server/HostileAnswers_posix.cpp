#include "HostileAnswers.h"
#include "MessageMarks.h"

namespace btrieve::test {
namespace {

constexpr size_t kEnough = 1 << 16;  // bytes said at once by who never ends

void Append(Bytes& bytes, std::span<const uint8_t> more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

// A row that calls itself as long as the client library takes one to be.
Bytes RowWithoutEnd() {
  Bytes row = {'D', 0x3F, 0xFF, 0xFF, 0xFF};
  row.resize(kEnough);
  return row;
}

std::span<const uint8_t> FirstMessage(std::span<const uint8_t> said) {
  return said.size() < kMessageHead ? said : said.first(std::min(said.size(), MessageSize(said)));
}

}  // namespace

bool HostileAnswers::Take(std::span<const uint8_t> said, Bytes& passed) {
  if (!forEver_.empty()) {
    Append(passed, forEver_);
    return true;
  }
  const size_t before = std::min(said.size(), plan_.behind - std::min(plan_.behind, said_));
  said_ += said.size();
  Append(passed, said.first(before));
  return before == said.size() || TakeHarmed(said.subspan(before), passed);
}

bool HostileAnswers::TakeHarmed(std::span<const uint8_t> said, Bytes& passed) {
  const size_t begin = passed.size();
  switch (plan_.harm) {
    case Harm::Cut:
      return false;
    case Harm::Boundless:
      Append(passed, RowWithoutEnd());
      forEver_.assign(kEnough, 0);
      return true;
    case Harm::Unceasing:
      while (forEver_.size() < kEnough) Append(forEver_, FirstMessage(said));
      return true;
    case Harm::Repeat:
      Append(passed, said);
      break;
    case Harm::Late:
      wait_ = plan_.wait;
      break;
    default:
      break;
  }
  Append(passed, said);
  if (plan_.harm == Harm::Garble) TurnBits(std::span(passed).subspan(begin));
  return true;
}

void HostileAnswers::TurnBits(std::span<uint8_t> bytes) {
  for (uint32_t times = 1 + choices_.Pick(4); times > 0; --times) {
    bytes[choices_.Pick(static_cast<uint32_t>(bytes.size()))] ^=
        static_cast<uint8_t>(1 + choices_.Pick(255));
  }
}

}  // namespace btrieve::test
