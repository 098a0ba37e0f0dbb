// Runs a fuzzer without libFuzzer, for the sanitizer build: on the files given, and on random
// inputs made from a printed seed.
//   fuzz_NAME [--seconds N] [--seed S] [--size BYTES] [FILE or FOLDER...]
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "tests/support/Setting.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

using Clock = std::chrono::steady_clock;

struct Options {
  double seconds = 0;
  uint64_t seed = qrn::test::Seed();
  size_t size = 4096;
  std::vector<std::filesystem::path> paths;
};

using Input = std::vector<uint8_t>;

Input ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<Input> ReadCorpus(const std::vector<std::filesystem::path>& paths) {
  std::vector<Input> corpus;
  for (const auto& path : paths) {
    if (!std::filesystem::is_directory(path)) {
      corpus.push_back(ReadFile(path));
      continue;
    }
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
      if (entry.is_regular_file()) corpus.push_back(ReadFile(entry.path()));
    }
  }
  return corpus;
}

Input RandomInput(std::mt19937_64& random, size_t largest) {
  Input input(random() % (largest + 1));
  for (uint8_t& byte : input) byte = static_cast<uint8_t>(random());
  return input;
}

// A few bytes set, put in or taken out.
void Mutate(Input& input, std::mt19937_64& random) {
  static constexpr uint8_t kEdges[] = {0, 1, 0x7F, 0x80, 0xFE, 0xFF};
  for (uint64_t changes = 1 + random() % 8; changes > 0; --changes) {
    const size_t at = input.empty() ? 0 : random() % input.size();
    const auto place = input.begin() + static_cast<std::ptrdiff_t>(at);
    const auto value = random() % 2 ? static_cast<uint8_t>(random()) : kEdges[random() % 6];
    switch (input.empty() ? 0 : random() % 4) {
      case 0:
        input.insert(place, value);
        break;
      case 1:
        input.erase(place);
        break;
      default:
        *place = value;
        break;
    }
  }
}

Input NextInput(const std::vector<Input>& corpus, std::mt19937_64& random, size_t largest) {
  if (corpus.empty() || random() % 8 == 0) return RandomInput(random, largest);
  Input input = corpus[random() % corpus.size()];
  Mutate(input, random);
  return input;
}

// Each input has a seed of its own, so that one alone can be run again.
void RunFor(const Options& options, const std::vector<Input>& corpus) {
  const auto end = Clock::now() + std::chrono::duration<double>(options.seconds);
  uint64_t runs = 0;
  for (; Clock::now() < end; ++runs) {
    std::mt19937_64 random(options.seed + runs);
    const Input input = NextInput(corpus, random, options.size);
    std::fprintf(stderr, "\r%" PRIu64 " ", options.seed + runs);
    LLVMFuzzerTestOneInput(input.data(), input.size());
  }
  std::fprintf(stderr, "\n%llu random inputs\n", static_cast<unsigned long long>(runs));
}

Options ReadOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const char* value = i + 1 < argc ? argv[i + 1] : "0";
    if (argument == "--seconds") {
      options.seconds = std::atof(value), ++i;
    } else if (argument == "--seed") {
      options.seed = std::strtoull(value, nullptr, 10), ++i;
    } else if (argument == "--size") {
      options.size = std::strtoull(value, nullptr, 10), ++i;
    } else {
      options.paths.emplace_back(argument);
    }
  }
  return options;
}

}  // namespace

int main(int argc, char** argv) {
  const Options options = ReadOptions(argc, argv);
  const auto corpus = ReadCorpus(options.paths);
  for (const Input& input : corpus) LLVMFuzzerTestOneInput(input.data(), input.size());
  std::fprintf(stderr, "%zu files of the corpus\n", corpus.size());
  if (options.seconds > 0) RunFor(options, corpus);
  return 0;
}
