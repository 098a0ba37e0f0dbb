// Insert, Update, Delete, Insert Extended.
#include <cstring>

#include "btrieve/operations/Call.h"
#include "btrieve/scans/ExtendedRequest.h"
#include "btrieve/session/WriteScope.h"

namespace btrieve {
namespace {

// Values of an autoincrement that other processes' transactions may hold before it is given up.
constexpr uint64_t kMostSkipped = 4096;

// A record being written: the caller's bytes, with autoincrement values filled in.
struct Image {
  std::vector<uint8_t> bytes;
  bool assigned = false;
};

// Fixed-length files take the surplus of a longer buffer for nothing.
Status TakeImage(const DataFile& file, ByteView given, ByteView& image) noexcept {
  const FileSpec& spec = file.Spec();
  const size_t length = spec.IsVariable() ? given.size() : spec.recordLength;
  if (given.size() < spec.recordLength || length > kLongestRecord) return kDataBufferLength;
  image = given.first(length);
  return kOk;
}

uint64_t HighestOf(DataFile& file, int slot) {
  Entry bound;
  bound.Fill(0xFF, file.IndexAt(slot).EntrySize() + 1);
  Walk walk;
  walk.Start(file, slot, false, bound.View());
  Hit hit;
  return walk.Step(hit) ? file.IndexAt(slot).order.AutoIncrementOf(hit.entry.data()) : 0;
}

// 5 when the highest value is used up.
Status AssignAutoIncrement(DataFile& file, ByteView given, uint64_t skip, Image& image) {
  image.bytes.assign(given.begin(), given.end());
  image.assigned = false;
  for (int slot = 0; slot < file.KeyCount(); ++slot) {
    const Index& index = file.IndexAt(slot);
    if (!index.autoIncrement || !index.order.WantsAutoIncrement(given.data())) continue;
    const uint64_t highest = HighestOf(file, slot);
    if (highest == UINT64_MAX ||
        !index.order.PutAutoIncrement(highest + 1 + skip, image.bytes.data())) {
      return kDuplicateKey;
    }
    image.assigned = true;
  }
  return kOk;
}

bool Waits(const Call& call) noexcept {
  const Transaction& running = call.session.Running();
  const bool mayWait = call.bias != 200 && call.bias != 400;
  return mayWait && running.retriesWrites;
}

// Once more when the disk is full: the log in which the write found no room may be carried over.
template <class Attempt>
Status TryWriting(Call& call, Attempt attempt) {
  try {
    return call.session.Retry(call.File(), Waits(call), attempt);
  } catch (const Failure& failure) {
    if (failure.status != kDiskFull || !call.File().Base().CarryLogOver()) throw;
  }
  return call.session.Retry(call.File(), Waits(call), attempt);
}

// A block of more is inserted under one claim of every value.
constexpr size_t kFewImages = 16;

// What an Insert or Update came to.
struct Written {
  Image image;
  WritePlan plan;
  uint64_t version = 0;
};

// A value that is taken comes before what another process holds.
Status OfTaken(WriteScope& scope, const Written& written, Status status) {
  const Status taken = scope.Writer().FindTaken(written.plan);
  return taken != kOk ? taken : status;
}

Status CarryWritten(WriteScope& scope, Written& written, bool last) {
  const Status status = scope.Carry(written.plan, written.image.bytes, written.version, last);
  return status == kRecordInUse ? OfTaken(scope, written, status) : status;
}

Status PlanInsert(WriteScope& scope, uint32_t position, Written& written) {
  RecordWriter writer = scope.Writer();
  writer.PlanInsert(written.image.bytes, position, written.plan);
  Status status = scope.RefusesTaken() ? kOk : writer.FindTaken(written.plan);
  if (status == kOk) status = scope.Blocked();
  if (status == kOk) status = scope.ClaimKeys(written.plan, written.image.assigned);
  if (status != kRecordInUse || !scope.RefusesTaken()) return status;
  return OfTaken(scope, written, status);
}

// The value that was the next one has been another process's since: where a file is kept elsewhere
// each look at it is at a newer state.
bool HasGrown(const WriteScope& scope, DataFile& file, ByteView given, uint64_t skip,
              const Written& written) {
  if (!written.image.assigned || scope.RefusesTaken() || !file.Base().Foreign()) return false;
  Image now;
  return AssignAutoIncrement(file, given, skip, now) == kOk && now.bytes != written.image.bytes;
}

Status InsertOne(WriteScope& scope, DataFile& file, ByteView given, Written& written,
                 bool last = false) {
  Status status = scope.Unsettled();
  uint32_t position = 1;
  if (status == kOk && scope.Blocked() == kOk) status = scope.NewPosition(position);
  if (status != kOk) return status;
  uint64_t skip = 0;
  for (; skip < kMostSkipped; ++skip) {
    status = AssignAutoIncrement(file, given, skip, written.image);
    if (status != kOk) return status;
    status = PlanInsert(scope, position, written);
    if (status != kRecordInUse || !written.image.assigned || scope.Blocked()) break;
  }
  if (status == kDuplicateKey && HasGrown(scope, file, given, skip, written)) return kLookAgain;
  if (status == kOk) status = scope.Confirm(written.plan, 0);
  return status != kOk ? status : CarryWritten(scope, written, last);
}

void StandOnWritten(Call& call, const Written& written) {
  Cursor& cursor = *call.cursor;
  cursor.StandOn({written.plan.position, written.version, {}, {}, {}}, true);
  cursor.walkIsHere = false;
}

void StandAlongInserted(Call& call, const Written& written) {
  StandOnWritten(call, written);
  if (call.slot < 0) return;
  const Entry& entry = written.plan.keys[call.slot].after;
  if (entry.Size() == 0) return call.cursor->LeaveKey();
  call.cursor->StandAlong(call.Key().number, entry.View());
}

void ReturnKey(Call& call, const Written& written) {
  if (call.slot < 0 || !call.key) return;
  call.Key().order.CopyKey(written.image.bytes.data(), call.key);
}

void ReturnWritten(Call& call, const Written& written) {
  if (written.image.assigned) {
    std::memcpy(call.data, written.image.bytes.data(), written.image.bytes.size());
  }
  ReturnKey(call, written);
}

// The record the cursor would write to, 80 if it is no more what the cursor has read.
Status FetchForWrite(const Cursor& cursor, Hit& hit) {
  const bool unchanged = cursor.file->Fetch(cursor.position, hit) && hit.version == cursor.version;
  return unchanged ? kOk : kConflict;
}

Status UpdateOnce(Call& call, ByteView given, Written& written) {
  DataFile& file = call.File();
  WriteScope scope(call.session, file, call.cursor->position);
  Hit old;
  Status status = scope.Unsettled();
  if (status == kOk) status = FetchForWrite(*call.cursor, old);
  if (status == kOk) status = AssignAutoIncrement(file, given, 0, written.image);
  if (status == kOk) status = FetchForWrite(*call.cursor, old);
  if (status == kOk) {
    status = scope.Writer().PlanUpdate(old, written.image.bytes, written.plan);
  }
  if (status == kOk && !scope.RefusesAllTaken()) status = scope.Writer().FindTaken(written.plan);
  if (status == kDuplicateKey && HasGrown(scope, file, given, 0, written)) return kLookAgain;
  if (status == kOk) status = scope.Blocked();
  if (status == kOk) status = scope.HoldRecord(call.cursor->position);
  if (status == kRecordInUse && scope.RefusesAllTaken()) status = OfTaken(scope, written, status);
  if (status == kOk) status = scope.ClaimKeys(written.plan);
  if (status == kOk) status = scope.Confirm(written.plan, call.cursor->version);
  if (status != kOk) return status;
  status = CarryWritten(scope, written, true);
  if (status == kOk) scope.Commit();
  return status;
}

Status DeleteOnce(Call& call) {
  DataFile& file = call.File();
  WriteScope scope(call.session, file, call.cursor->position);
  Hit old;
  WritePlan plan;
  Status status = scope.Unsettled();
  if (status == kOk) status = FetchForWrite(*call.cursor, old);
  if (status == kOk) scope.Writer().PlanDelete(old, plan);
  if (status == kOk) status = scope.Blocked();
  if (status == kOk) status = scope.HoldRecord(call.cursor->position);
  if (status == kOk) status = scope.Confirm(plan, call.cursor->version);
  uint64_t version = 0;
  if (status == kOk) status = scope.Carry(plan, {}, version, true);
  if (status == kOk) scope.Commit();
  return status;
}

// Naming the key the cursor goes along, an Update takes the cursor to the record's new place;
// naming another one it leaves no key to go on along. A record that the key now leaves out has no
// new place: the neighbours of the old one stay, as they do behind a Delete.
void FollowUpdate(Call& call, const WritePlan& plan) {
  Cursor& cursor = *call.cursor;
  if (call.slot < 0 || cursor.along != Cursor::Along::On) return;
  if (cursor.keyNumber != call.Key().number) {
    cursor.along = Cursor::Along::Broken;
    return;
  }
  const Entry& entry = plan.keys[call.slot].after;
  if (entry.Size() != 0) cursor.StandAlong(cursor.keyNumber, entry.View());
}

void ReleaseRecord(Cursor& cursor) noexcept {
  if (cursor.locks.erase(cursor.position) == 0) return;
  cursor.file->Locks().Drop(cursor.position);
  if (cursor.locks.empty()) cursor.lockKind = LockKind::None;
}

Status CheckWritable(const Cursor& cursor) noexcept {
  return cursor.place == Cursor::Place::On && cursor.writable ? kOk : kInvalidPositioning;
}

// A block on its way to a file that is kept elsewhere takes about as much room there as an answer.
constexpr size_t kBlockRecords = 4096;
constexpr size_t kBlockBytes = 1u << 20;

bool WantsAutoIncrement(const DataFile& file, ByteView image) {
  return std::ranges::any_of(file.Base().Indexes(), [&](const Index& index) {
    return index.autoIncrement && index.order.WantsAutoIncrement(image.data());
  });
}

// As many of the images as go together: none when that is not worth it, or must be looked at one by
// one.
std::span<const ByteView> BlockOf(const WriteScope& scope, const DataFile& file,
                                  std::span<const ByteView> images) {
  if (!scope.TakesBlocks()) return {};
  size_t count = 0;
  for (size_t bytes = 0; count < std::min(images.size(), kBlockRecords); ++count) {
    bytes += images[count].size();
    if (bytes > kBlockBytes || WantsAutoIncrement(file, images[count])) break;
  }
  return images.first(count > 1 ? count : 0);
}

// 5, with none of them inserted, when one of them cannot be.
Status InsertBlock(WriteScope& scope, std::span<const ByteView> images, Written& written,
                   std::vector<uint32_t>& positions, bool last) {
  uint32_t position = 0;
  if (const Status status = scope.NewPosition(position)) return status;
  if (images.size() > kHighestPosition - position) return kDuplicateKey;
  std::vector<WritePlan> plans(images.size());
  for (size_t at = 0; at < images.size(); ++at) {
    scope.Writer().PlanInsert(images[at], position + static_cast<uint32_t>(at), plans[at]);
  }
  if (const Status status = scope.CarryBlock(plans, images, written.version, last)) return status;
  for (const WritePlan& plan : plans) positions.push_back(plan.position);
  written.plan = std::move(plans.back());
  written.image.bytes.assign(images.back().begin(), images.back().end());
  written.image.assigned = false;
  return kOk;
}

// Stops at the first record that cannot be inserted, or not in this scope, or for which it has no
// room; those before it stay, the last in `written`.
Status InsertAll(WriteScope& scope, DataFile& file, const std::vector<ByteView>& images,
                 Written& written, std::vector<uint32_t>& positions) {
  Written next;
  size_t alone = 0;  // up to here one by one, for one of them cannot be inserted
  while (positions.size() < images.size() && !scope.IsFull()) {
    const size_t done = positions.size();
    const auto block = done < alone ? std::span<const ByteView>()
                                    : BlockOf(scope, file, std::span(images).subspan(done));
    if (!block.empty()) {
      const bool last = done + block.size() == images.size();
      const Status status = InsertBlock(scope, block, written, positions, last);
      if (status != kOk && status != kDuplicateKey) return status;
      if (status == kDuplicateKey) alone = done + block.size();
      continue;
    }
    const Status status = InsertOne(scope, file, images[positions.size()], next);
    if (status != kOk) return status;
    std::swap(written, next);
    positions.push_back(written.plan.position);
  }
  return kOk;
}

// Another scope may get further: it looks anew, and waits for who holds a value.
bool MayPass(Status stopped) noexcept {
  return stopped == kLookAgain || stopped == kRecordInUse || stopped == kFileInUse;
}

// Within a transaction a record that has been carried stays, whatever comes of those behind it.
bool KeepsCarried(const Call& call) noexcept {
  return call.session.Running().kind != TransactionKind::None;
}

// As many records as one scope takes. What has been inserted is not inserted again, so a reason to
// wait or to look anew only ends the scope.
Status InsertSome(Call& call, const std::vector<ByteView>& images, Written& written,
                  std::vector<uint32_t>& positions) {
  Status stopped = kOk;
  const size_t before = positions.size();
  const Status status = TryWriting(call, [&]() -> Status {
    if (!KeepsCarried(call)) positions.resize(before);
    WriteScope scope(call.session, call.File(), 0, images.size() - before > kFewImages);
    if (images.size() - before > kFewImages) scope.ClaimAllKeys();
    stopped = InsertAll(scope, call.File(), images, written, positions);
    if (positions.size() == before) return stopped;
    scope.Commit();
    return kOk;
  });
  if (status != kOk) return status;
  return MayPass(stopped) ? Status{kOk} : stopped;
}

// The records of the block up to the first of a wrong length, whose status is the result.
Status TakeImages(const DataFile& file, const std::vector<ByteView>& pieces,
                  std::vector<ByteView>& images) {
  for (const ByteView piece : pieces) {
    ByteView image;
    if (const Status status = TakeImage(file, piece, image)) return status;
    images.push_back(image);
  }
  return kOk;
}

void ReturnPositions(Call& call, const std::vector<uint32_t>& positions) {
  const uint16_t count = static_cast<uint16_t>(positions.size());
  std::memcpy(call.data, &count, sizeof count);
  if (count != 0) std::memcpy(call.data + sizeof count, positions.data(), 4 * positions.size());
  call.ReturnLength(static_cast<uint32_t>(sizeof count + 4 * positions.size()));
}

}  // namespace

Status Insert(Call& call) {
  DataFile& file = call.File();
  ByteView given;
  if (const Status status = TakeImage(file, {call.data, call.room}, given)) return status;
  if (call.cursor->readOnly) return kAccessDenied;
  Written written;
  const Status status = TryWriting(call, [&]() -> Status {
    WriteScope scope(call.session, file);
    const Status inserted = InsertOne(scope, file, given, written, true);
    if (inserted == kOk) scope.Commit();
    return inserted;
  });
  if (status != kOk) return status;
  StandAlongInserted(call, written);
  ReturnWritten(call, written);
  return kOk;
}

Status Update(Call& call) {
  if (const Status status = CheckWritable(*call.cursor)) return status;
  ByteView given;
  if (const Status status = TakeImage(call.File(), {call.data, call.room}, given)) return status;
  if (call.cursor->readOnly) return kAccessDenied;
  Written written;
  const Status status = TryWriting(call, [&] { return UpdateOnce(call, given, written); });
  if (status != kOk) return status;
  StandOnWritten(call, written);
  FollowUpdate(call, written.plan);
  if (call.cursor->lockKind == LockKind::Single) ReleaseRecord(*call.cursor);
  ReturnWritten(call, written);
  return kOk;
}

Status Delete(Call& call) {
  if (const Status status = CheckWritable(*call.cursor)) return status;
  if (call.cursor->readOnly) return kAccessDenied;
  const Status status = TryWriting(call, [&] { return DeleteOnce(call); });
  if (status != kOk) return status;
  Cursor& cursor = *call.cursor;
  ReleaseRecord(cursor);
  cursor.place = Cursor::Place::Gone;
  cursor.writable = false;
  cursor.walkIsHere = false;
  return kOk;
}

Status InsertExtended(Call& call) {
  DataFile& file = call.File();
  std::vector<ByteView> pieces;
  if (const Status status = ParseInsertExtended({call.data, call.room}, pieces)) return status;
  if (call.cursor->readOnly) return kAccessDenied;
  std::vector<ByteView> images;
  const Status shape = TakeImages(file, pieces, images);
  std::vector<uint32_t> positions;
  positions.reserve(images.size());
  Written written;
  Status status = kOk;
  bool isWritten = true;
  while (status == kOk && positions.size() < images.size()) {
    const size_t before = positions.size();
    try {
      status = InsertSome(call, images, written, positions);
    } catch (...) {  // what is there in spite of it is told
      isWritten = KeepsCarried(call);
      if (!isWritten) positions.resize(before);
      if (positions.empty()) throw;
      status = CaughtStatus();
    }
  }
  if (status == kOk) status = shape;
  if (!positions.empty() && isWritten) StandAlongInserted(call, written);
  if (status == kOk) ReturnKey(call, written);
  ReturnPositions(call, positions);
  return status;
}

}  // namespace btrieve
