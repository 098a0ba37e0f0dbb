#include "btrieve/files/Walk.h"

#include "btrieve/files/DataFile.h"
#include "btrieve/storage/ScanDemand.h"

namespace btrieve {
namespace {

// The element at or above the place, or the last one below it; `end` without one.
template <class Map, class Key>
auto Nearest(const Map& map, const Key& place, bool forward) {
  auto at = map.lower_bound(place);
  if (forward) return at;
  return at == map.begin() ? map.end() : std::prev(at);
}

}  // namespace

void Walk::Start(DataFile& file, int slot, bool forward, ByteView bound) {
  overlay_ = file.Uncommitted();
  slot_ = slot;
  forward_ = forward;
  ahead_ = Ahead::Unknown;
  if (overlay_) place_.Assign(bound);
  base_.Start(file.Base(), slot, forward, bound);
}

bool Walk::Step(Hit& hit) { return overlay_ ? StepMerged(hit, nullptr) : base_.Step(hit); }

// With changes of one's own every record of the file is to be met: what has been changed may be
// among them, and what is passed over could not be counted between the changes.
bool Walk::Search(Hit& hit, ScanDemand& demand) {
  if (!overlay_) return base_.Search(hit, demand);
  ScanDemand all{nullptr, demand.wanted, demand.rejects, demand.oneByOne};
  return StepMerged(hit, &all);
}

void Walk::AdvanceBase(ScanDemand* demand) {
  if (ahead_ != Ahead::Unknown) return;
  while (demand ? base_.Search(baseHit_, *demand) : base_.Step(baseHit_)) {
    if (overlay_->Find(baseHit_.position)) continue;
    ahead_ = Ahead::Read;
    return;
  }
  ahead_ = Ahead::None;
}

bool Walk::FindOverlaidEntry(Hit& hit) const {
  const auto& entries = overlay_->Added(slot_);
  const auto found = Nearest(entries, place_.View(), forward_);
  if (found == entries.end()) return false;
  hit.position = found->second;
  hit.entry = found->first;
  return true;
}

bool Walk::FindOverlaidPosition(Hit& hit) const {
  const auto& records = overlay_->All();
  const int64_t bound = std::min<int64_t>(BoundPosition(place_.View()), UINT32_MAX);
  auto found = Nearest(records, static_cast<uint32_t>(bound), forward_);
  while (found != records.end() && found->second.deleted) {
    if (!forward_ && found == records.begin()) return false;
    forward_ ? ++found : --found;
  }
  if (found == records.end()) return false;
  hit.position = found->first;
  hit.entry = {};
  return true;
}

bool Walk::FindOverlaid(Hit& hit) const {
  if (slot_ == kPhysicalSlot ? !FindOverlaidPosition(hit) : !FindOverlaidEntry(hit)) return false;
  const OverlayRecord* record = overlay_->Find(hit.position);
  hit.version = record->version;
  hit.data = record->data;
  hit.numbers = record->numbers.Stored();
  return true;
}

bool Walk::BaseComesFirst(const Hit& overlaid) const noexcept {
  const bool less = slot_ == kPhysicalSlot ? baseHit_.position < overlaid.position
                                           : BytesLess(baseHit_.entry, overlaid.entry);
  return less == forward_;
}

void Walk::PassOverlaid(const Hit& hit) {
  place_ = slot_ == kPhysicalSlot ? PositionEntry(hit.position) : Entry(hit.entry);
  if (forward_) place_.MoveBehind();
}

bool Walk::StepMerged(Hit& hit, ScanDemand* demand) {
  AdvanceBase(demand);
  Hit overlaid;
  const bool found = FindOverlaid(overlaid);
  if (ahead_ != Ahead::None && (!found || BaseComesFirst(overlaid))) {
    if (ahead_ == Ahead::Kept) base_.ReadAgain(baseHit_);
    hit = baseHit_;
    ahead_ = Ahead::Unknown;
    return true;
  }
  if (!found) return false;
  if (ahead_ == Ahead::Read) ahead_ = Ahead::Kept;
  hit = overlaid;
  PassOverlaid(overlaid);
  return true;
}

}  // namespace btrieve
