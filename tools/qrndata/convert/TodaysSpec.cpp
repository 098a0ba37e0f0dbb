#include "tools/qrndata/convert/TodaysSpec.h"

#include <iterator>

#include "btrieve/keys/KeySpecRules.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Messages.h"

namespace qrndata {

namespace {

using btrieve::FileSpec;
using btrieve::KeySegment;
using btrieve::KeySpec;

constexpr uint16_t kPageSizes[] = {512, 1024, 1536, 2048, 2560, 3072, 3584, 4096, 8192, 16384};

// Flags that concern the whole key count in its first segment.
void ShareFlags(KeySpec& key) {
  constexpr uint16_t kShared = btrieve::kDuplicates | btrieve::kModifiable |
                               btrieve::kNullAllSegments | btrieve::kNullAnySegment |
                               btrieve::kRepeating;
  const uint16_t shared = key.segments[0].flags & kShared;
  for (KeySegment& segment : key.segments) {
    segment.flags = static_cast<uint16_t>((segment.flags & ~kShared) | shared);
  }
}

// False when no size will do.
bool ChoosePage(FileSpec& spec) {
  const uint16_t least = spec.pageSize;
  for (const uint16_t size : kPageSizes) {
    if (size < least) continue;
    spec.pageSize = size;
    if (btrieve::CheckSpec(spec) == btrieve::kOk) return true;
  }
  spec.pageSize = least;
  return false;
}

bool CanCount(const KeySpec& key) {
  return key.segments.size() == 1 && !key.AllowsDuplicates() &&
         !key.segments[0].Has(btrieve::kDescending);
}

// Numbers that are given by hand keep their order as unsigned ones. `all`: also where a counter may
// be, but for what other keys are.
void TakeForNumbers(FileSpec& spec, bool all, std::vector<std::string>& notes) {
  for (KeySpec& key : spec.keys) {
    if (CanCount(key) && !all) continue;
    for (KeySegment& segment : key.segments) {
      if (segment.Type() != btrieve::KeyType::AutoIncrement) continue;
      segment.givenType = static_cast<uint8_t>(btrieve::KeyType::UnsignedBinary);
      notes.push_back(Say(Message::OfKey, key.number, Say(Message::CounterGivenUp)));
    }
  }
}

// What the rules refuse for its counters, with as many of them as they take.
bool GiveUpCounters(FileSpec& spec, std::vector<std::string>& notes) {
  for (const bool all : {false, true}) {
    FileSpec changed = spec;
    std::vector<std::string> changes;
    TakeForNumbers(changed, all, changes);
    if (changes.empty() || !ChoosePage(changed)) continue;
    spec = changed;
    notes = changes;
    return true;
  }
  return false;
}

}  // namespace

FileSpec TodaysSpec(const FileSpec& old, std::vector<std::string>& notes) {
  FileSpec spec = old;
  spec.version = btrieve::kDefaultFileVersion;
  for (KeySpec& key : spec.keys) ShareFlags(key);
  if (!ChoosePage(spec) && !GiveUpCounters(spec, notes)) {
    Require(btrieve::CheckSpec(spec), Say(Message::ItsMakeUp));
  }
  if (spec.pageSize != old.pageSize) {
    notes.push_back(Say(Message::OtherPages, spec.pageSize, old.pageSize));
  }
  return spec;
}

}  // namespace qrndata
