// What a process has of the system's memory.
#pragma once

#include <objidl.h>
#include <windows.h>

#include "Sinks.h"
#include "tests/support/DrawingObjects.h"

// Of the system's oleaut32: texts are freed at once from then on.
extern "C" void WINAPI SetOaNoCache(void);

namespace qrn::test {

// What the system may keep for itself over many lives of controls: device contexts and fonts in its
// caches. A control that leaves one thing behind leaves hundreds.
inline constexpr long long kSystemsOwn = 4;

// Counts the blocks of the task allocator and of texts. A block that a later spy did not see made
// counts for nothing.
class TaskBlocks final : public Counted<IMallocSpy> {
 public:
  TaskBlocks() { CoRegisterMallocSpy(this); }
  long long live = 0;

  STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
  STDMETHODIMP_(void*) PostAlloc(void* block) override {
    live += block ? 1 : 0;
    return block;
  }
  STDMETHODIMP_(void*) PreFree(void* block, BOOL spied) override {
    live -= block && spied ? 1 : 0;
    return block;
  }
  STDMETHODIMP_(void) PostFree(BOOL) override {}
  STDMETHODIMP_(SIZE_T)
  PreRealloc(void* block, SIZE_T size, void** next, BOOL spied) override {
    live += !block ? 1 : size == 0 && spied ? -1 : 0;
    *next = block;
    return size;
  }
  STDMETHODIMP_(void*) PostRealloc(void* block, BOOL) override { return block; }
  STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
  STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
  STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
  STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int yes) override { return yes; }
  STDMETHODIMP_(void) PreHeapMinimize() override {}
  STDMETHODIMP_(void) PostHeapMinimize() override {}
};

}  // namespace qrn::test
