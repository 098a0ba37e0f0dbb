// One attempt to write to one file, as the running transaction, or its absence, has it done:
// straight into the file, into the file's open write transaction, or into the changes of a
// concurrent one. Unless committed it leaves nothing behind but, of a concurrent transaction, the
// locks of what it has carried.
#pragma once

#include <optional>
#include <vector>

#include "btrieve/files/RecordWriter.h"
#include "btrieve/session/Session.h"

namespace btrieve {

class WriteScope {
 public:
  // `record`: the one to be changed; 0 for new ones, with `wantsBlocks` many. Throws Failure: 41
  // for a file that has another home than what the transaction has changed. See Blocked.
  WriteScope(Session& session, DataFile& file, uint32_t record = 0, bool wantsBlocks = false);
  ~WriteScope();
  WriteScope(const WriteScope&) = delete;
  WriteScope& operator=(const WriteScope&) = delete;

  // What a dead process has left in the file, or what another one is deciding, comes first: 85 to
  // wait, kLookAgain when it has just been settled. Nothing may be planned upon such a state.
  Status Unsettled() const noexcept { return unsettled_; }
  // 84 or 85 when another process's transaction keeps the file from being written. What is wrong
  // with the write itself comes first, so the caller plans, and only then gives this up.
  Status Blocked() const noexcept { return blocked_; }
  bool IsDirect() const noexcept { return kind_ != TransactionKind::Concurrent; }
  RecordWriter Writer() noexcept { return RecordWriter(file_, IsDirect()); }
  // Carry itself finds out whether a new record's values are taken.
  bool RefusesTaken() const noexcept { return IsDirect() && blocked_ == kOk; }
  // A changed one's, too.
  bool RefusesAllTaken() const noexcept { return RefusesTaken() && file_.Base().Foreign(); }
  // For a new record: 0, 18 when all numbers are taken, or as Unsettled.
  [[nodiscard]] Status NewPosition(uint32_t& position);

  // After planning: 84 while others hold the record or add the same unique value.
  [[nodiscard]] Status HoldRecord(uint32_t position);
  // `now`: where Carry could do it, too.
  [[nodiscard]] Status ClaimKeys(const WritePlan& plan, bool now = false);
  // For many new records, before the first: one lock in place of one a value, where nobody else
  // adds any; and whether the scope has as many locks as it had better have: each is looked for
  // among all.
  void ClaimAllKeys() noexcept;
  bool IsFull() const noexcept { return brief_.size() >= kManyLocks; }
  // kLookAgain when what was planned upon may no longer hold; `version` that of the record as it
  // was.
  [[nodiscard]] Status Confirm(const WritePlan& plan, uint64_t version);
  // As RecordWriter::Carry. After `last` comes nothing but Commit.
  [[nodiscard]] Status Carry(const WritePlan& plan, ByteView image, uint64_t& version,
                             bool last = false);
  // Whether new records can be carried together, without claims: see RecordWriter::CarryBlock;
  // `last` as with Carry.
  bool TakesBlocks() const noexcept;
  [[nodiscard]] Status CarryBlock(std::span<const WritePlan> plans,
                                  std::span<const ByteView> images, uint64_t& version,
                                  bool last = false);
  void Commit();

 private:
  // A write outside of transactions in a file that is kept elsewhere: one round trip begins it.
  bool IsLone() const noexcept {
    return kind_ == TransactionKind::None && file_.Base().Foreign() != nullptr;
  }
  void CheckHome() const;
  bool BePresent() noexcept;
  void NoteClaims() noexcept;
  template <class Action>
  Status Guarded(Action action);
  Status Recheck(const WritePlan& plan, uint64_t version);
  void EnterPlain();
  void EnterExclusive();
  void EnterConcurrent();
  void OpenExclusively(bool follows);
  bool BeginSettled();
  void Settle();
  bool ReserveForOne();
  bool Claim(uint64_t hash);
  void GiveBack() noexcept;

  Session& session_;
  DataFile& file_;
  TransactionKind kind_;
  std::optional<FileLocks::Activity> activity_;  // none for a lone write
  LoneWrite lone_;
  std::vector<uint64_t> carried_;  // claims, for Carry
  Status unsettled_ = kOk;
  Status blocked_ = kOk;
  static constexpr size_t kManyLocks = 256;

  HeldByte everyValue_;
  std::vector<HeldByte> brief_;
  // Got for a concurrent transaction by a write that is not carried yet: claims, and the last ones
  // of the records that the transaction holds.
  std::vector<uint64_t> newClaims_;
  size_t newRecords_ = 0;
};

}  // namespace btrieve
