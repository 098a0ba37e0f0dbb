#include <algorithm>

#include "btrieve/Layout.h"
#include "btrieve/Storage.h"

namespace btrieve {
namespace {

// The record may be missing only in a damaged file; an inner join would pass over it in silence.
std::string WalkAlongKey(uint16_t id, bool forward) {
  return "SELECT k.pos, r.ver, r.num, r.data, k.e FROM " + EntryTable(id) +
         " AS k LEFT JOIN rec AS r ON r.pos=k.pos WHERE k.e" +
         (forward ? ">=? ORDER BY k.e" : "<? ORDER BY k.e DESC");
}

constexpr const char* kStepForward =
    "SELECT pos, ver, num, data FROM rec WHERE pos>=? ORDER BY pos";
constexpr const char* kStepBackward =
    "SELECT pos, ver, num, data FROM rec WHERE pos<? ORDER BY pos DESC";

}  // namespace

Statement Storage::TakeWalk(int slot, bool forward) {
  auto& pool = slot == kPhysicalSlot ? (forward ? stepForward_ : stepBackward_)
                                     : (forward ? indexes_[slot].forward : indexes_[slot].backward);
  if (!pool.empty()) {
    Statement statement = std::move(pool.back());
    pool.pop_back();
    return statement;
  }
  if (slot == kPhysicalSlot) return connection_.Prepare(forward ? kStepForward : kStepBackward);
  return connection_.Prepare(WalkAlongKey(indexes_[slot].id, forward));
}

void Storage::ReturnWalk(int slot, bool forward, Statement statement) noexcept {
  auto& pool = slot == kPhysicalSlot ? (forward ? stepForward_ : stepBackward_)
                                     : (forward ? indexes_[slot].forward : indexes_[slot].backward);
  pool.push_back(std::move(statement));
}

void BaseWalk::Start(Storage& storage, int slot, bool forward, ByteView bound) {
  if (!IsLive(slot, forward) || storage_ != &storage) {
    End();
    statement_ = storage.TakeWalk(slot, forward);
    storage.walks_.push_back(this);
    storage_ = &storage;
    slot_ = slot;
    forward_ = forward;
  } else {
    statement_.Reset();
  }
  atEnd_ = false;
  bound_.Assign(bound);
  if (slot == kPhysicalSlot) {
    statement_.Bind(1, BoundPosition(bound));
    onward_.Begin(forward, BoundPosition(bound));
  } else {
    statement_.Bind(1, bound_.View());
    onward_.Begin(forward, bound);
  }
}

bool BaseWalk::Step(Hit& hit) {
  if (!storage_ || atEnd_) return false;
  if (!statement_.Step()) {
    atEnd_ = true;
    return false;
  }
  if (statement_.IsNull(1)) ThrowDamaged();
  hit.position = CheckedPosition(statement_.Number(0));
  hit.version = static_cast<uint64_t>(statement_.Number(1));
  hit.numbers = statement_.Bytes(2);
  hit.data = statement_.Bytes(3);
  hit.entry = slot_ == kPhysicalSlot ? ByteView() : statement_.Bytes(4);
  CheckRecord(storage_->spec_, hit.data, hit.numbers);
  if (slot_ == kPhysicalSlot) {
    onward_.Meet(hit.position);
  } else {
    CheckEntry(hit.entry, storage_->indexes_[slot_].EntrySize());
    onward_.Meet(hit.entry);
  }
  return true;
}

void BaseWalk::End() noexcept {
  if (!storage_) return;
  statement_.Reset();
  auto& walks = storage_->walks_;
  walks.erase(std::find(walks.begin(), walks.end(), this));
  storage_->ReturnWalk(slot_, forward_, std::move(statement_));
  storage_ = nullptr;
}

}  // namespace btrieve
