#include "platform/LexbaseCalls.h"

#include <new>
#include <utility>

#include "platform/SystemLibrary.h"

namespace qrn {
namespace {

constexpr LexbaseFunctions kMissing = {
    [](const char*, int32_t) { return kLexbaseMissing; }, [] { return kLexbaseMissing; },
    [](void*) { return kLexbaseMissing; }, [](void*) { return kLexbaseMissing; },
    [](void*) { return kLexbaseMissing; }};

LexbaseFunctions FindAll() {
  const SystemLibrary library("lexbase");
  const LexbaseFunctions found = {
      library.Find<decltype(LexbaseFunctions::Open)>("DDFOpen"),
      library.Find<decltype(LexbaseFunctions::Close)>("DDFClose"),
      library.Find<decltype(LexbaseFunctions::ReadFile)>("DDFReadFile"),
      library.Find<decltype(LexbaseFunctions::ReadField)>("DDFReadField"),
      library.Find<decltype(LexbaseFunctions::ReadIndex)>("DDFReadIndex")};
  const bool complete = found.Open != nullptr && found.Close != nullptr &&
                        found.ReadFile != nullptr && found.ReadField != nullptr &&
                        found.ReadIndex != nullptr;
  return complete ? found : kMissing;
}

constinit const LexbaseFunctions* replacement = nullptr;

// Without memory to look for the library it is missing until the next call.
const LexbaseFunctions& Current() {
  if (replacement != nullptr) return *replacement;
  try {
    static const LexbaseFunctions found = FindAll();
    return found;
  } catch (const std::bad_alloc&) {
    return kMissing;
  }
}

}  // namespace

int32_t DDFOpen(const char* directory, int32_t mode) noexcept {
  return Current().Open(directory, mode);
}
int32_t DDFClose() noexcept { return Current().Close(); }
int32_t DDFReadFile(void* row) noexcept { return Current().ReadFile(row); }
int32_t DDFReadField(void* row) noexcept { return Current().ReadField(row); }
int32_t DDFReadIndex(void* row) noexcept { return Current().ReadIndex(row); }

const LexbaseFunctions* ReplaceLexbase(const LexbaseFunctions* functions) noexcept {
  return std::exchange(replacement, functions);
}

}  // namespace qrn
