// The end of tables and dictionaries, and their copies.
#include "core/Dictionary.h"

#include <algorithm>
#include <utility>

#include "core/DictionaryLists.h"
#include "core/FlatState.h"
#include "core/Gateway.h"
#include "core/MemoryFailure.h"
#include "core/RecordBuffer.h"
#include "core/ReturnCodes.h"
#include "fields/Messages.h"
#include "platform/BtrCall.h"
#include "platform/Memory.h"
#include "platform/MessageBox.h"

namespace qrn {
namespace {

// A copy of all `capacity` entries; null, and nothing wrong, for a list that was never made.
template <class Entry>
bool CopyList(const Entry* source, int32_t capacity, Entry*& copy) {
  copy = nullptr;
  if (source == nullptr) return true;
  copy = static_cast<Entry*>(AllocateZeroed(static_cast<size_t>(capacity) * sizeof(Entry)));
  if (copy == nullptr) return false;
  std::copy_n(source, capacity, copy);
  return true;
}

// The copy is closed. The position block comes along, unused until the copy's own open.
bool CopyTable(const DbTableInfo& source, DbTableInfo& copy) {
  copy = source;
  copy.IsOpen = 0;
  copy.IsVariable = 0;
  copy.RecordBuffer = nullptr;
  copy.BufferAllocated = 0;
  const bool fields = CopyList(source.Fields, source.FieldCapacity, copy.Fields);
  const bool segments = CopyList(source.Segments, source.SegmentCapacity, copy.Segments);
  const bool names = CopyList(source.NamedIndexes, source.NamedIndexCapacity, copy.NamedIndexes);
  return fields && segments && names;
}

bool CopyTables(const DbDictionary& source, DbDictionary& copy) {
  for (; copy.TableCount < source.TableCount; ++copy.TableCount) {
    if (CopyTable(source.Tables[copy.TableCount], copy.Tables[copy.TableCount])) continue;
    ++copy.TableCount;
    return false;
  }
  return true;
}

constinit DictionaryWatcher dictionaryWatcher = nullptr;

void Release(DbDictionary* dictionary) {
  for (int32_t slot = 0; slot <= kMaxTables; ++slot) {  // the empty one may have been tried to open
    FreeLists(dictionary->Tables[slot]);
    FreeRecordBuffer(dictionary->Tables[slot]);
  }
  FreeMemory(dictionary->Tables);
  FreeMemory(dictionary);
}

// The dictionaries that ended while a message box was up.
class EndedDictionaries {
 public:
  constexpr EndedDictionaries() = default;
  ~EndedDictionaries() { ReleaseAll(); }
  EndedDictionaries(const EndedDictionaries&) = delete;
  EndedDictionaries& operator=(const EndedDictionaries&) = delete;

  void Add(DbDictionary& dictionary) {
    dictionary.TableCount = 0;
    dictionary.NextEnded = std::exchange(first_, &dictionary);
  }

  void ReleaseAll() {
    while (first_ != nullptr) Release(std::exchange(first_, first_->NextEnded));
  }

 private:
  DbDictionary* first_ = nullptr;
};

constinit EndedDictionaries ended;

}  // namespace

void ReleaseEndedDictionaries() noexcept {
  if (!IsBoxUp()) ended.ReleaseAll();
}

void WatchDictionaryEnds(DictionaryWatcher watcher) noexcept { dictionaryWatcher = watcher; }

Status DbDictCopy(const DbDictionary& source, DbDictionary** copy) noexcept {
  *copy = NewDictionary(source.DdfDir);
  if (*copy != nullptr && CopyTables(source, **copy)) return kSuccess;
  DbDictFree(std::exchange(*copy, nullptr));
  ReportMemoryFailure();
  return kFailure;
}

Status DbTableClose(DbEngine&, DbTableInfo& table) noexcept {
  uint32_t length = 0;
  const Status status = BtrCall(BtrOpClose, table.PosBlock, nullptr, &length, nullptr, 0, 0);
  if (status != 0) return status;
  table.IsOpen = 0;
  FreeRecordBuffer(table);
  return kSuccess;
}

Status DbDictCloseAll(DbEngine& engine, DbDictionary& dictionary) noexcept {
  for (int32_t i = 0; i < dictionary.TableCount; ++i) {
    DbTableInfo& table = dictionary.Tables[i];
    if (table.IsOpen == 0) continue;
    const Status status = DbTableClose(engine, table);
    if (status != 0) ShowMessage(kVE813, table.Name, static_cast<int>(status));
  }
  return kSuccess;
}

Status DbDictFree(DbDictionary* dictionary) noexcept {
  if (dictionary == nullptr) return kFailure;
  if (dictionaryWatcher != nullptr) dictionaryWatcher(*dictionary);
  ForgetFlatDictionary(dictionary);
  ended.Add(*dictionary);
  ReleaseEndedDictionaries();
  return kSuccess;
}

}  // namespace qrn
