#include "platform/LexbaseCalls.h"

#include <new>
#include <utility>

#include "platform/SystemLibrary.h"

namespace qrn {
namespace {

constexpr auto Missing = [](auto...) -> int32_t { return LexbaseMissing; };
constexpr LexbaseFunctions kMissing = {Missing, Missing, Missing, Missing, Missing};

// One that lacks a function is no dictionary library.
LexbaseFunctions FindAll() {
  const SystemLibrary library("lexbase");
  LexbaseFunctions found;
#define QRN_FIND(result, name, arguments)                             \
  found.name = library.Find<decltype(LexbaseFunctions::name)>(#name); \
  if (found.name == nullptr) return kMissing;
  LEXBASE_FUNCTIONS(QRN_FIND)
#undef QRN_FIND
  return found;
}

constinit const LexbaseFunctions* standIn = nullptr;

// Without memory to look for the library it is missing until the next call.
const LexbaseFunctions& Current() {
  if (standIn != nullptr) return *standIn;
  try {
    static const LexbaseFunctions found = FindAll();
    return found;
  } catch (const std::bad_alloc&) {
    return kMissing;
  }
}

}  // namespace

int32_t DDFOpen(const char* directory, int32_t mode) noexcept {
  return Current().DDFOpen(directory, mode);
}
int32_t DDFClose() noexcept { return Current().DDFClose(); }
int32_t DDFReadFile(void* row) noexcept { return Current().DDFReadFile(row); }
int32_t DDFReadField(void* row) noexcept { return Current().DDFReadField(row); }
int32_t DDFReadIndex(void* row) noexcept { return Current().DDFReadIndex(row); }

const LexbaseFunctions* ReplaceLexbase(const LexbaseFunctions* functions) noexcept {
  return std::exchange(standIn, functions);
}

}  // namespace qrn
