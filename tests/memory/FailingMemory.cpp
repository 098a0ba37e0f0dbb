#include "FailingMemory.h"

#include <cstdlib>
#include <new>

#include "platform/BtrCall.h"
#include "platform/LexbaseCalls.h"
#include "platform/Memory.h"

namespace qrn::test {
namespace {

constexpr int kNever = -1;

// Of the test's own thread: the record manager has one too, which is not what is tried here.
thread_local int left = kNever;  // allocations that still succeed
thread_local int suspended = 0;
bool hasHappened = false;

bool FailsNow() {
  if (left == kNever || suspended != 0) return false;
  if (left-- != 0) return false;
  hasHappened = true;
  return true;
}

void* Zeroed(size_t size) { return FailsNow() ? nullptr : std::calloc(1, size); }

int16_t BTR_CALL ForeignBtrCall(uint16_t operation, void* posBlock, void* data, uint32_t* length,
                                void* key, uint8_t keyLength, int8_t keyNumber) {
  const NotCounted foreign;
  ReplaceBtrCall(nullptr);
  const int16_t status = BtrCall(operation, posBlock, data, length, key, keyLength, keyNumber);
  ReplaceBtrCall(&ForeignBtrCall);
  return status;
}

extern const LexbaseFunctions kForeignLexbase;

template <class Call>
int32_t Foreign(Call call) {
  const NotCounted foreign;
  ReplaceLexbase(nullptr);
  const int32_t code = call();
  ReplaceLexbase(&kForeignLexbase);
  return code;
}

const LexbaseFunctions kForeignLexbase = {
    [](const char* directory, int32_t mode) {
      return Foreign([=] { return DDFOpen(directory, mode); });
    },
    [] { return Foreign([] { return DDFClose(); }); },
    [](void* row) { return Foreign([=] { return DDFReadFile(row); }); },
    [](void* row) { return Foreign([=] { return DDFReadField(row); }); },
    [](void* row) { return Foreign([=] { return DDFReadIndex(row); }); }};

}  // namespace

void* AllocateOrNull(size_t size) noexcept {
  return FailsNow() ? nullptr : std::malloc(size != 0 ? size : 1);
}

void* Allocate(size_t size) {
  void* memory = AllocateOrNull(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

FailingMemory::FailingMemory(int failing) {
  ReplaceAllocate(&Zeroed);
  ReplaceBtrCall(&ForeignBtrCall);
  ReplaceLexbase(&kForeignLexbase);
  hasHappened = false;
  left = failing;
}

FailingMemory::~FailingMemory() {
  left = kNever;
  ReplaceLexbase(nullptr);
  ReplaceBtrCall(nullptr);
  ReplaceAllocate(nullptr);
}

bool FailingMemory::Happened() const { return hasHappened; }

NotCounted::NotCounted() { ++suspended; }
NotCounted::~NotCounted() { --suspended; }

void FailEachInTurn(const std::function<bool(int failing)>& round) {
  constexpr int kMost = 3000;
  int failing = 0;
  for (bool fails = true; fails && failing < kMost && !testing::Test::HasFailure(); ++failing) {
    SCOPED_TRACE("allocation " + std::to_string(failing));
    fails = round(failing);
  }
  EXPECT_LT(failing, kMost) << "it fails for ever";
}

}  // namespace qrn::test

void* operator new(size_t size) { return qrn::test::Allocate(size); }
void* operator new[](size_t size) { return qrn::test::Allocate(size); }
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return qrn::test::AllocateOrNull(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
  return qrn::test::AllocateOrNull(size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
