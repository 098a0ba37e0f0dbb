// The record manager against the model: the input chooses the file's make-up and the calls.
#include <cstdio>
#include <cstdlib>

#include "tests/btrieve/kit/ModelRun.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  btrieve::test::Choices choices(static_cast<uint32_t>(size), {data, size});
  const std::string failure = btrieve::test::RunModel(choices, 300);
  if (failure.empty()) return 0;
  std::fprintf(stderr, "\n%s\n", failure.c_str());
  std::abort();
}
