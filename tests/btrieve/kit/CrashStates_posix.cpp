#include <algorithm>

#include "CrashStates.h"
#include "DamagedFile.h"

namespace btrieve::test {
namespace {

constexpr size_t kSector = 512;

struct CrashFile {
  Bytes stable;
  std::vector<const DiskCall*> since;  // its last sync
};
using Names = std::map<std::string, std::shared_ptr<CrashFile>>;

std::string NameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }
bool IsShared(const std::string& path) { return path.ends_with("-shm"); }

void PutBytes(Bytes& content, const DiskCall& call, size_t from, size_t to) {
  const size_t at = static_cast<size_t>(call.offset);
  content.resize(std::max(content.size(), at + to));
  std::copy(call.bytes.begin() + static_cast<ptrdiff_t>(from),
            call.bytes.begin() + static_cast<ptrdiff_t>(to),
            content.begin() + static_cast<ptrdiff_t>(at + from));
}

void Apply(Bytes& content, const DiskCall& call) {
  if (call.kind == DiskKind::Truncate) {
    content.resize(static_cast<size_t>(call.offset));
  } else {
    PutBytes(content, call, 0, call.bytes.size());
  }
}

// Some of the sectors that the write covers.
void ApplyTorn(Bytes& content, const DiskCall& call, Choices& choices) {
  size_t from = 0;
  while (from < call.bytes.size()) {
    const size_t left = kSector - (static_cast<size_t>(call.offset) + from) % kSector;
    const size_t to = std::min(from + left, call.bytes.size());
    if (choices.Chance(2)) PutBytes(content, call, from, to);
    from = to;
  }
}

// One cut deals with all files in the same way, for it is in the mixtures that faults hide, and in
// the extremes.
enum class Fate { AllKept, NoneKept, EndMissing, AnyMissing, AnyMissingOrTorn };

Bytes ContentAfter(const CrashFile& file, Fate fate, Choices& choices) {
  Bytes content = file.stable;
  size_t kept = file.since.size();
  if (fate == Fate::NoneKept) kept = 0;
  if (fate == Fate::EndMissing) kept = choices.Pick(static_cast<uint32_t>(kept) + 1);
  for (size_t at = 0; at < kept; ++at) {
    const DiskCall& call = *file.since[at];
    const bool torn = fate == Fate::AnyMissingOrTorn && call.kind == DiskKind::Write;
    if (fate >= Fate::AnyMissing && choices.Chance(3)) continue;
    if (torn && choices.Chance(3)) {
      ApplyTorn(content, call, choices);
    } else {
      Apply(content, call);
    }
  }
  if (fate == Fate::EndMissing && kept < file.since.size()) {
    const DiskCall& call = *file.since[kept];
    if (call.kind == DiskKind::Write) ApplyTorn(content, call, choices);
  }
  return content;
}

void ApplyName(Names& names, const DiskCall& call, const std::shared_ptr<CrashFile>& made) {
  const std::string name = NameOf(call.path);
  if (call.kind == DiskKind::Make) names[name] = made;
  if (call.kind == DiskKind::Remove) names.erase(name);
  if (call.kind == DiskKind::Rename) {
    names[NameOf(call.to)] = names[name];
    names.erase(name);
  }
}

}  // namespace

DiskRecording::DiskRecording(const std::filesystem::path& folder) {
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    before_[entry.path().filename().string()] = ReadBytes(entry.path().string());
  }
}

void DiskRecording::Done(const DiskCall& call) {
  const bool changes = call.kind != DiskKind::Read && call.kind != DiskKind::Lock;
  if (!changes || IsShared(call.path)) return;
  const std::lock_guard lock(mutex_);
  calls_.push_back(call);
}

void DiskRecording::Lose(const DiskCall& sync) {
  DiskCall lost = sync;
  lost.fails = true;
  Done(lost);
}

size_t DiskRecording::Length() const {
  const std::lock_guard lock(mutex_);
  return calls_.size();
}

std::map<std::string, Bytes> DiskRecording::StateAfter(size_t length, Choices& choices) const {
  Names now;
  for (const auto& [name, bytes] : before_) {
    now[name] = std::make_shared<CrashFile>(CrashFile{bytes, {}});
  }
  Names stable = now;
  std::vector<std::pair<const DiskCall*, std::shared_ptr<CrashFile>>> renamings;
  for (size_t at = 0; at < length; ++at) {
    const DiskCall& call = calls_[at];
    if (call.kind == DiskKind::SyncFolder) {
      stable = now;
      renamings.clear();
    } else if (call.kind == DiskKind::Sync) {
      CrashFile& file = *now.at(NameOf(call.path));
      if (!call.fails) {
        for (const DiskCall* written : file.since) Apply(file.stable, *written);
      }
      file.since.clear();
    } else if (call.kind == DiskKind::Write || call.kind == DiskKind::Truncate) {
      now.at(NameOf(call.path))->since.push_back(&call);
    } else {
      renamings.emplace_back(&call, std::make_shared<CrashFile>());
      ApplyName(now, call, renamings.back().second);
    }
  }
  const auto fate = static_cast<Fate>(choices.Pick(5));
  size_t named = choices.Pick(static_cast<uint32_t>(renamings.size()) + 1);
  if (fate == Fate::AllKept) named = renamings.size();
  for (size_t at = 0; at < named; ++at) {
    ApplyName(stable, *renamings[at].first, renamings[at].second);
  }
  std::map<std::string, Bytes> state;
  for (const auto& [name, file] : stable) state[name] = ContentAfter(*file, fate, choices);
  return state;
}

}  // namespace btrieve::test
