// A data file that stands on a server, as storage reads it.
//
// Walks read ahead: the first step asks for one record, the following ones for a batch of at most
// kFirstBatch records or about kBatchBytes (kFirstOfAnyLength where records have any length), which
// grows while the walk goes on, by powers of two: kGrowth at a time for somebody who turns pages,
// kGrowthOfPrograms for who used the last one up in kInPassing a record. A batch is dropped once
// the server has told that the file was written, and when it is older than kOldestAnswer: then the
// walk goes on from where it stood. So an answer is never older than that, and seldom older than
// the way from the server. An extended read tells how much it wants; that is asked for at once, by
// its condition.
//
// Who writes has the file's row of btrieve_files locked from the beginning to the end, so writers
// of one file come one after another. A record's write is two round trips: one begins the
// transaction, takes the locks, reads the counters and the record; the other changes the record
// with its entries and the counters in one statement, and commits.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "btrieve/locks/LockSpace.h"
#include "btrieve/server/ScanStatement.h"
#include "btrieve/server/ServerLayout.h"
#include "btrieve/server/ServerRanges.h"
#include "btrieve/storage/ForeignFile.h"
#include "btrieve/storage/Storage.h"

namespace btrieve::server {

inline constexpr uint32_t kFirstBatch = 400;
inline constexpr uint32_t kFirstOfAnyLength = 50;
inline constexpr int kGrowth = 3;
inline constexpr int kGrowthOfPrograms = 6;
inline constexpr int kMostGrown = 9;
inline constexpr std::chrono::microseconds kInPassing{100};
inline constexpr size_t kBatchBytes = 65536;
inline constexpr size_t kMostBatchBytes = size_t{4} << 20;
inline constexpr std::chrono::milliseconds kOldestAnswer{2000};
// Records that the server goes through for one answer, at most.
inline constexpr int64_t kMostExamined = 20000;

// The statements that read one order of a file.
struct OrderTexts {
  std::string forward;   // from $1 on, at most $2 rows
  std::string backward;  // below $1
  std::string total;
  std::string rank;   // of $1
  std::string entry;  // number $1
};

class ServerFile final : public ForeignFile {
 public:
  // Throws as ServerLink does; 12 and 30 of ReadServerSpec.
  explicit ServerFile(const LinkFile& link);

  const FileSpec& Spec() const noexcept override { return spec_.file; }
  OwnerRecord Owner() override;
  uint16_t KeyId(size_t slot) const noexcept override { return spec_.keyIds[slot]; }
  void Refresh() override;
  bool IsCurrent() noexcept override;
  void TakeInNews() noexcept override { link_->TakeInNews(); }
  bool IsLost() const noexcept override { return !link_->IsAlive(); }
  bool IsInPlace() override;
  Head Counts() override;
  uint64_t Total(int slot) const override;
  uint64_t RankOf(int slot, ByteView bound) override;
  Entry EntryAt(int slot, uint64_t rank) override;
  bool Fetch(uint32_t position, Hit& hit) override;
  std::unique_ptr<ForeignWalk> Walk(int slot, bool forward, ByteView bound) override;

  bool IsWritable() const noexcept override { return true; }
  const void* Home() const noexcept override { return link_.get(); }
  int64_t Number() const noexcept override { return object_; }
  std::unique_ptr<LockBytes> MakeLocks() override;
  void ForgetRead() noexcept override;
  [[nodiscard]] Status BeginWrite(Head& head, LoneWrite* lone) override;
  [[nodiscard]] Status Carry(const RowChange& change, const Head& head,
                             const CarryTerms& terms) override;
  uint32_t PutPositionsAside(uint32_t count) override;
  [[nodiscard]] Status CarryBlock(std::span<const RowChange> changes, const Head& head,
                                  bool commits) override;
  void CommitWrite(const Head& head) override;
  void RollbackWrite() noexcept override;
  uint32_t FindFreePosition() override;
  void WriteOwner(const OwnerRecord& owner) override;
  [[nodiscard]] Status AddKey(const FileSpec& changed, size_t slot, Head& head) override;
  void RemoveKey(const FileSpec& changed, size_t slot, Head& head) override;

  // For walks: a batch of an order from the bound on.
  Rows ReadBatch(int slot, bool forward, ByteView bound, int64_t rows);
  // A stretch of it, as ScanStatement tells, and where it has an end the record there, that is the
  // first one from the end on: in one round trip, but each from the newest state.
  struct Stretch {
    Rows rows;
    Rows beyond;
  };
  Stretch ReadStretch(int slot, bool forward, ByteView bound, const std::optional<Entry>& end,
                      const StretchLimits& limits, const ScanFilter& filter);
  int64_t NumberInStretch(const Rows& rows, int row, int slot) const;
  bool IsLastOfStretch(const Rows& rows, int row, int slot) const;
  // The record that the stretch has before a row which is not its first: position and entry.
  Hit BeforeInStretch(const Rows& rows, int row, int slot) const;
  // A record of a batch; the views are the batch's. Throws for rows that nobody could have written.
  void TakeRow(const Rows& rows, int row, int slot, Hit& hit) const;
  // Raised whenever the server tells of a commit to the file, and by changes of one's own.
  uint64_t Changes() const noexcept { return changes_; }

 private:
  // In texts_ and totals_.
  static size_t PlaceOf(int slot) noexcept {
    const int place = slot - kPhysicalSlot;
    return static_cast<size_t>(place);
  }
  const OrderTexts& TextsOf(int slot) const noexcept { return texts_[PlaceOf(slot)]; }
  // What orders it on the server.
  std::string OrderColumn(int slot) const;
  Entry FarthestBound(int slot, bool forward) const;
  Rows AskPlace(const std::string& text, const Arguments& arguments) const;
  RangedFile Ranged() const { return {place_.schema, place_.table, spec_.id}; }
  size_t EntrySizeOf(int slot) const noexcept;

  void MakeOrders();
  void Follow(ServerSpec spec);
  void TakeBackKeys() noexcept;
  void Begun(const Rows& heads, Head& head);
  // Nothing of a commit among them that has been made though the answers to it were lost.
  std::vector<Rows> AskToEnd(const std::vector<Question>& questions, bool commits);
  void Leave() noexcept;
  void Keep(const Head& head, const Rows& answer, int counts);
  bool HasChanged(const Head& head) const noexcept;
  Question HeadUpdate(const Head& head) const;

  LinkFile place_;
  std::shared_ptr<ServerLink> link_;
  ServerSpec spec_;
  std::vector<size_t> entrySizes_;  // by slot
  std::string channel_;
  std::vector<OrderTexts> texts_;  // the physical order's, then by slot
  std::string fetch_;
  Rows fetched_;
  int32_t object_ = 0;  // of the table, as the locks' first key
  bool writes_ = false;
  bool later_ = false;        // its ranges and counters are brought up when it ends
  bool respecified_ = false;  // keys came or went in this write transaction
  ServerSpec specBefore_;
  Head stored_;          // as the server has them in it
  Head counted_;         // as they are then
  bool isHere_ = false;  // fetched_ is still what the transaction has begun with:
  uint32_t fetchedPosition_ = 0;
  uint64_t changes_ = 0;
  uint64_t notices_ = 0;
  struct KnownTotal {
    uint64_t entries;
    std::chrono::steady_clock::time_point read;
  };
  mutable std::vector<std::optional<KnownTotal>> totals_;  // as texts_; known until the next change
};

// Whether the file is a link file.
bool IsLink(const LockSpace& space);
// What a link file leads to. 30 for a text that is no right link file.
std::unique_ptr<ForeignFile> OpenLinked(ByteView link);

}  // namespace btrieve::server
