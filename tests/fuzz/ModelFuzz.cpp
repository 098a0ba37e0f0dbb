// The record manager against the model: the input chooses the file's make-up and the calls.
#include "tests/btrieve/kit/ModelRun.h"
#include "tests/fuzz/FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  btrieve::test::Choices choices(static_cast<uint32_t>(size), {data, size});
  const std::string failure = btrieve::test::RunModel(choices, 300);
  if (failure.empty()) return 0;
  qrn::fuzz::Fail(failure);
}
