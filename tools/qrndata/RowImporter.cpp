#include "tools/qrndata/RowImporter.h"

#include <algorithm>
#include <utility>

#include "fields/LittleEndian.h"
#include "tools/qrndata/Interrupt.h"
#include "tools/qrndata/Messages.h"

namespace qrndata {

namespace {

// A client of another machine's record manager takes no larger block; the local one does, and is
// faster for it: each page is written once a block.
constexpr size_t kLargeBlock = 4u << 20, kCustomaryBlock = 60000;

constexpr size_t kLengthSize = sizeof(uint16_t), kCountSize = sizeof(uint16_t);

}  // namespace

RowImporter::RowImporter(const std::filesystem::path& directory, const Table& table, uint32_t batch,
                         std::chrono::seconds patience)
    : target_(directory, table, batch == 0 ? Access::ReadOnly : Access::ReadWrite),
      batch_(batch),
      patience_(patience),
      mostBytes_(kLargeBlock),
      mostRows_(batch) {
  if (batch == 0) unique_.emplace(target_.File(), target_.Stat().spec);
}

Refusal RowImporter::Add(FieldValues& values) {
  if (Refusal refusal = target_.Check(values)) return refusal;
  Bytes& record = target_.Image().Build(values);
  if (Refusal refusal = RowTarget::CheckLength(record)) return refusal;
  if (unique_) {
    const std::optional<TakenValue> value = unique_->Take(record);
    if (!value) {
      ++tried_;
      return {};
    }
    return target_.RefuseDuplicate(
        value->key, value->isStored ? Message::ValueIsThere : Message::ValueIsBefore);
  }
  const size_t end = queue_.size();
  queue_.resize(end + kLengthSize + record.size());
  qrn::StoreLittle(std::span(queue_).subspan(end), static_cast<uint16_t>(record.size()));
  std::copy(record.begin(), record.end(),
            queue_.begin() + static_cast<ptrdiff_t>(end + kLengthSize));
  ends_.push_back(queue_.size());
  return {};
}

bool RowImporter::IsFull() const noexcept {
  return !unique_ && (Queued() >= batch_ || queue_.size() >= kLargeBlock);
}

Bytes RowImporter::RecordAt(size_t row) const {
  return {queue_.begin() + static_cast<ptrdiff_t>(BeginOf(row) + kLengthSize),
          queue_.begin() + static_cast<ptrdiff_t>(ends_[row])};
}

size_t RowImporter::BlockSize(size_t most) const {
  size_t count = 1;
  const size_t begin = BeginOf(first_);
  while (count < most && count < mostRows_ &&
         ends_[first_ + count] - begin + kCountSize <= mostBytes_) {
    ++count;
  }
  return count;
}

Bytes RowImporter::BlockOf(size_t count) const {
  const size_t begin = BeginOf(first_), end = ends_[first_ + count - 1];
  Bytes block(kCountSize + end - begin);
  qrn::StoreLittle(std::span(block), static_cast<uint16_t>(count));
  std::copy(queue_.begin() + static_cast<ptrdiff_t>(begin),
            queue_.begin() + static_cast<ptrdiff_t>(end), block.begin() + kCountSize);
  return block;
}

// After a refusal blocks are small, and grow again: what stands behind the row is sent once more.
Status RowImporter::InsertBlock(size_t most, size_t& inserted) {
  constexpr size_t kSmallBlock = 16;
  Bytes block = BlockOf(BlockSize(most));
  const Status status = target_.File().InsertMany(block, inserted);
  mostRows_ = status == btrieve::kOk ? std::min<size_t>(mostRows_ * 2, batch_)
                                     : std::min<size_t>(kSmallBlock, batch_);
  if (inserted != 0) patience_.Renew();
  return status;
}

// The end of a transaction brings all that was written to stable storage, and says whether it did;
// where it did not, the record may be there all the same.
Status RowImporter::InsertSynced(bool& isThere) {
  Transaction transaction(Sharing::WithOthers);
  Bytes record = RecordAt(first_);
  uint32_t position = 0;
  Status status = target_.File().Insert(record);
  if (status != btrieve::kOk) return status;
  const bool isKnown = target_.File().Position(position) == btrieve::kOk;
  status = transaction.Commit();
  isThere = status == btrieve::kOk || (isKnown && target_.File().HasRecordAt(position));
  return status;
}

bool RowImporter::MakeBlocksSmaller(Status status) {
  const bool isTooLarge =
      status == btrieve::kDataBufferLength || status == btrieve::kInsertDescriptor;
  if (!isTooLarge || mostBytes_ == kCustomaryBlock) return false;
  mostBytes_ = kCustomaryBlock;
  return true;
}

void RowImporter::Drop(size_t count) {
  first_ += count;
  if (first_ == ends_.size()) Clear();
}

void RowImporter::Clear() {
  queue_.clear();
  ends_.clear();
  first_ = 0;
}

Refusal RowImporter::DropFirst(Refusal refusal) {
  Drop(1);
  patience_.Renew();
  return refusal;
}

Outcome RowImporter::Judge(Status status, Outcome outcome) {
  if (IsHeldElsewhere(status) && InterruptWatch::WasInterrupted()) {
    outcome.failure = Failure(kInterrupted, Say(Message::Interrupted));
    Clear();
  } else if (status == btrieve::kDuplicateKey) {
    outcome.refusal = DropFirst(target_.ExplainDuplicate(RecordAt(first_)));
  } else if (IsHeldElsewhere(status) && status != btrieve::kFileInUse) {
    outcome.refusal = DropFirst({StatusText(status), {}});
  } else {
    outcome.failure = target_.FailureOf(status);
    Clear();
  }
  return outcome;
}

Outcome RowImporter::StoreDownTo(size_t left) {
  Outcome outcome;
  while (Queued() > left) {
    size_t inserted = 0;
    const Status status = InsertBlock(Queued() - left, inserted);
    outcome.stored += inserted;
    stored_ += inserted;
    Drop(inserted);
    if (status == btrieve::kOk || MakeBlocksSmaller(status)) continue;
    if (IsHeldElsewhere(status) && patience_.WaitOn()) continue;
    return Judge(status, std::move(outcome));
  }
  return outcome;
}

Outcome RowImporter::Store() {
  if (unique_) return {std::exchange(tried_, 0), {}, {}};
  Outcome outcome = StoreDownTo(0);
  patience_.Rest();
  return outcome;
}

Outcome RowImporter::StoreLast() {
  if (unique_) return Store();
  Outcome outcome = StoreDownTo(1);
  if (outcome.failure || outcome.refusal) return outcome;
  while (Queued() == 1) {
    bool isThere = false;
    const Status status = InsertSynced(isThere);
    if (isThere) {
      ++outcome.stored;
      ++stored_;
      Drop(1);
    }
    const bool goesOn = status == btrieve::kOk || (IsHeldElsewhere(status) && patience_.WaitOn());
    if (!goesOn) return Judge(status, std::move(outcome));
  }
  return outcome;
}

namespace {

void RequireTaken(const Outcome& outcome) {
  if (outcome.failure) throw *outcome.failure;
  if (outcome.refusal) throw Failure(kBadInput, outcome.refusal.problem);
}

}  // namespace

Refusal RowImporter::Put(FieldValues& values) {
  if (IsFull()) RequireTaken(Store());
  return Add(values);
}

void RowImporter::Finish() { RequireTaken(StoreLast()); }

}  // namespace qrndata
