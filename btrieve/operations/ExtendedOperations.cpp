// Extended reads: many records in one call, judged where they lie in the storage's pages.
#include <optional>

#include "btrieve/operations/Reading.h"
#include "btrieve/scans/ExtendedRequest.h"
#include "btrieve/storage/ScanDemand.h"

namespace btrieve {
namespace {

// A record examined, remembered in case the search has to end on it.
struct Examined {
  bool any = false;
  uint32_t position = 0;
  uint64_t version = 0;
  Entry entry;

  void Take(const Hit& hit) noexcept {
    any = true;
    position = hit.position;
    version = hit.version;
    entry.Assign(hit.entry);
  }
  void TakePassed(const Hit& hit) noexcept {
    Take(hit);
    version = kStaleVersion;
  }
};

class ExtendedRead {
 public:
  ExtendedRead(Call& call, bool forward, bool along, const ExtendedRequest& request)
      : call_(call),
        cursor_(*call.cursor),
        request_(request),
        writer_({call.data, call.room}, request.Fields()),
        demand_{&request, RecordsAtMost(), request.RejectCount(), call.lock.kind != LockKind::None},
        forward_(forward),
        along_(along) {}

  Status Run() {
    Begin();
    Status status = Search();
    if (last_.any) StandOnLast();
    call_.ReturnLength(writer_.Finish());
    return status;
  }

 private:
  enum class Next : uint8_t { Go, Stop };

  int Slot() const noexcept { return along_ ? call_.slot : kPhysicalSlot; }

  // With the one for which there is no room.
  uint32_t RecordsAtMost() const noexcept {
    const size_t bytes = request_.BytesReplied(call_.File().Spec().recordLength);
    return static_cast<uint32_t>(
        std::min<size_t>(request_.RecordsWanted(), call_.room / bytes + 1));
  }

  void Begin() {
    // Behind a Delete there is nothing to begin with: an entry that is gone is not found again,
    // while one that the Delete has not touched, after an insert without currency change, is.
    const bool withCurrent =
        request_.BeginsWithCurrent() && (along_ || cursor_.place == Cursor::Place::On);
    const bool goesOn = !withCurrent && cursor_.walkIsHere && cursor_.walk.IsLive(Slot(), forward_);
    cursor_.walkIsHere = false;
    if (goesOn) return;
    const Entry bound = along_ ? FirstBoundAlong(withCurrent) : FirstBoundByPlace(withCurrent);
    cursor_.walk.Start(call_.File(), Slot(), forward_, bound.View());
  }

  // A walk with the current entry begins where one in the other direction would go on without it.
  Entry FirstBoundAlong(bool withCurrent) const noexcept {
    const size_t valueSize = call_.Key().order.OrderedSize();
    return BoundAlong(cursor_, valueSize, forward_ != withCurrent, false);
  }

  Entry FirstBoundByPlace(bool withCurrent) const noexcept {
    if (cursor_.place == Cursor::Place::BeforeFirst) {
      return forward_ ? Entry() : PositionEntry(UINT32_MAX);
    }
    Entry bound = PositionEntry(cursor_.position);
    if (forward_ != withCurrent) bound.MoveBehind();
    return bound;
  }

  // The walk has met a change of the file: it goes on behind the last record examined.
  Status BeginAgain() {
    Session& session = call_.session;
    const Status status = session.Retry(call_.File(), call_.lock.wait,
                                        [&] { return session.SettleIntents(call_.File()); });
    if (status != kOk) return status;
    if (!last_.any) {
      Begin();
      return kOk;
    }
    Entry bound = along_ ? last_.entry : PositionEntry(last_.position);
    if (forward_) bound.MoveBehind();
    cursor_.walk.Start(call_.File(), Slot(), forward_, bound.View());
    return kOk;
  }

  // A file of our own has every record met, in a loop that knows of nothing else.
  Status Search() {
    Walk& walk = cursor_.walk;
    if (!call_.File().Base().Foreign()) {
      return SearchBy([&walk](Hit& hit) { return walk.Step(hit); });
    }
    return SearchBy([this, &walk](Hit& hit) {
      if (!walk.Search(hit, demand_)) return false;
      if (demand_.passed.position != 0) last_.TakePassed(demand_.passed);
      return true;
    });
  }

  template <class Meet>
  Status SearchBy(Meet meet) {
    Status status = kOk;
    Hit hit;
    while (meet(hit)) {
      if (Examine(hit, status) == Next::Stop) return status;
    }
    cursor_.walkIsHere = false;
    return kEndOfFile;
  }

  Next Examine(const Hit& hit, Status& status) {
    switch (request_.Judge(hit.data.data(), hit.data.size())) {
      case Verdict::Accept:
        return Accept(hit, status);
      case Verdict::RejectAtEnd:
        status = kFilterLimit;
        return StopOn(hit);
      case Verdict::Reject:
        last_.Take(hit);
        if (--demand_.rejects > 0) return Next::Go;
        status = kRejectCount;
        return StopOn(hit);
    }
    return Next::Stop;
  }

  Next StopOn(const Hit& hit) noexcept {
    last_.Take(hit);
    cursor_.walkIsHere = true;
    return Next::Stop;
  }

  Next Accept(const Hit& hit, Status& status) {
    const ReplyWriter before = writer_;
    status = writer_.Add(hit.position, hit.data.data(), hit.data.size());
    if (status == kFieldOffset) return StopOn(hit);
    if (status != kOk) return Next::Stop;
    if (call_.lock.kind != LockKind::None) {
      status = Lock(hit);
      if (status != kOk) writer_ = before;
      if (status == kLookAgain) {
        status = BeginAgain();
        return status == kOk ? Next::Go : Next::Stop;
      }
      if (status != kOk) return Next::Stop;
    }
    if (writer_.Count() == request_.RecordsWanted()) return StopOn(hit);
    if (demand_.wanted > 1) --demand_.wanted;
    last_.Take(hit);
    return Next::Go;
  }

  // kLookAgain when the record may have changed before it was locked.
  Status Lock(const Hit& hit) {
    FileLocks& locks = call_.File().Locks();
    std::optional<ComingLock> lock;
    const Status status = call_.session.Retry(call_.File(), call_.lock.wait, [&]() -> Status {
      const FileLocks::Activity activity(locks);
      if (!activity) return kFileInUse;
      return lock.emplace(call_, hit.position) ? kOk : kRecordInUse;
    });
    if (status != kOk) return status;
    // The wait may have let go of the state in which the record was found. What the client has
    // changed itself is nowhere else.
    DataFile& file = call_.File();
    Storage& base = file.Base();
    const Overlay* changes = file.Uncommitted();
    const bool isOwn = changes && changes->Find(hit.position);
    const bool isKnown = isOwn || (lock->WasHeld() && (base.IsReading() || base.IsWriting()));
    const bool isStill = isKnown || base.IsStill(hit.position, hit.version);
    if (!isStill || !(isKnown || call_.session.IsSettled(file))) return kLookAgain;
    lock->Keep();
    return kOk;
  }

  void StandOnLast() noexcept {
    cursor_.StandOn({last_.position, last_.version, {}, {}, {}}, false);
    if (along_) {
      cursor_.StandAlong(call_.Key().number, last_.entry.View());
    } else {
      cursor_.LeaveKey();
    }
  }

  Call& call_;
  Cursor& cursor_;
  const ExtendedRequest& request_;
  ReplyWriter writer_;
  ScanDemand demand_;
  bool forward_;
  bool along_;
  Examined last_;
};

Status ReadExtended(Call& call, bool forward, bool along) {
  if (along) {
    if (const Status status = CheckAlong(call)) return status;
  }
  ExtendedRequest request;
  const FileSpec& spec = call.File().Spec();
  if (const Status status = request.Compile({call.data, call.room}, spec)) return status;
  if (call.lock.kind != LockKind::None) {
    if (const Status status = CheckLockKind(call)) return status;
  }
  if (along) request.BindLimit(spec.keys[call.slot], forward);
  if (const Status status = call.session.PrepareRead(call.File(), call.lock.wait)) return status;
  return ExtendedRead(call, forward, along, request).Run();
}

}  // namespace

Status GetNextExtended(Call& call) { return ReadExtended(call, true, true); }
Status GetPreviousExtended(Call& call) { return ReadExtended(call, false, true); }
Status StepNextExtended(Call& call) { return ReadExtended(call, true, false); }
Status StepPreviousExtended(Call& call) { return ReadExtended(call, false, false); }

}  // namespace btrieve
