// Goes through one order of a file on a server, a batch of rows at a round trip.
#pragma once

#include <chrono>

#include "btrieve/server/ServerFile.h"
#include "btrieve/storage/RowRules.h"
#include "btrieve/storage/ScanDemand.h"

namespace btrieve::server {

class ServerWalk final : public ForeignWalk {
 public:
  ServerWalk(ServerFile& file, int slot, bool forward, ByteView bound);

  bool Step(Hit& hit) override { return Go(hit, nullptr); }
  bool Search(Hit& hit, ScanDemand& demand) override { return Go(hit, &demand); }

 private:
  using Clock = std::chrono::steady_clock;

  // What stands behind the rows of the batch: nothing any more, a record that has come as well, or
  // what has to be asked for.
  enum class Behind : uint8_t { Nothing, Beyond, More };

  // Step has no demand.
  bool Go(Hit& hit, ScanDemand* demand);
  bool BatchHolds(const ScanDemand* demand) const;
  bool FindRow(const ScanDemand* demand);
  bool PassOver(ScanDemand* demand);
  void Pass(const Hit& hit);

  int Grown() const;
  uint32_t FirstBatch() const noexcept;
  void ReadOn(const ScanDemand* demand);
  void ReadFor(const ScanDemand& demand);
  void ReadRows(int64_t rows);
  void ReadStretch(const ScanDemand& demand, const ScanFilter& filter,
                   const std::optional<Entry>& end);
  void TakeBeyond();
  bool IsAtOrBehind(const Entry& end) const noexcept;
  int64_t RowsWanted(const ScanDemand& demand) const noexcept;
  int64_t RowsThatFit(int64_t rows, size_t bytes) const noexcept;

  ServerFile& file_;
  int slot_;
  bool forward_;
  bool ended_ = false;
  Entry place_;  // where to go on
  Onward onward_;

  Rows rows_;
  int next_ = 0;
  Behind behind_ = Behind::More;
  Rows beyond_;
  bool isStretch_ = false;
  int64_t examined_ = 0;            // rows of the stretch up to the one given last
  std::vector<uint8_t> condition_;  // by which rows have been left out; empty: none have
  int64_t asked_ = 0;               // rows of the batch
  int grown_ = 0;                   // by so many powers of two over a first one
  size_t lastSize_ = 0;             // bytes of the last record given; 0 before the first
  uint64_t changes_ = 0;            // the file's, before the batch was asked for
  Clock::time_point read_;          // when it was
};

}  // namespace btrieve::server
