// Runs a fuzzer without libFuzzer, for the sanitizer build: on the files given, or on random inputs
// made from a printed seed.
//   fuzz_NAME [--seconds N] [--seed S] [FILE...]
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "tests/support/Setting.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

using Clock = std::chrono::steady_clock;
using Input = std::vector<uint8_t>;

constexpr size_t kLargest = 4096;

Input RandomInput(uint64_t seed) {
  std::mt19937_64 random(seed);
  Input input(random() % (kLargest + 1));
  for (uint8_t& byte : input) byte = static_cast<uint8_t>(random());
  return input;
}

// Each input has a seed of its own, so that one alone can be run again.
void RunFor(double seconds, uint64_t seed) {
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  uint64_t runs = 0;
  for (; Clock::now() < end; ++runs) {
    const Input input = RandomInput(seed + runs);
    std::fprintf(stderr, "\r%" PRIu64 " ", seed + runs);
    LLVMFuzzerTestOneInput(input.data(), input.size());
  }
  std::fprintf(stderr, "\n%" PRIu64 " random inputs\n", runs);
}

}  // namespace

int main(int argc, char** argv) {
  double seconds = 0;
  uint64_t seed = qrn::test::Seed();
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const char* value = i + 1 < argc ? argv[i + 1] : "0";
    if (argument == "--seconds") {
      seconds = std::atof(value), ++i;
    } else if (argument == "--seed") {
      seed = std::strtoull(value, nullptr, 10), ++i;
    } else {
      std::ifstream file(argument, std::ios::binary);
      const Input input{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
      LLVMFuzzerTestOneInput(input.data(), input.size());
    }
  }
  RunFor(seconds, seed);
  return 0;
}
