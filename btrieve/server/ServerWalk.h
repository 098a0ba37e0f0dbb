// Goes through one order of a file on a server, a batch of rows at a round trip.
#pragma once

#include <chrono>

#include "btrieve/server/ServerFile.h"
#include "btrieve/storage/RowRules.h"

namespace btrieve::server {

class ServerWalk final : public ForeignWalk {
 public:
  ServerWalk(ServerFile& file, int slot, bool forward, ByteView bound);

  bool Step(Hit& hit) override;

 private:
  using Clock = std::chrono::steady_clock;

  bool BatchHolds() const;
  int64_t RowsToAsk();
  void ReadOn();
  void Pass(const Hit& hit);

  ServerFile& file_;
  int slot_;
  bool forward_;
  bool ended_ = false;
  Entry place_;  // where to go on
  Onward onward_;
  Rows rows_;
  int next_ = 0;
  int64_t asked_ = 0;       // rows of the batch
  int doubled_ = 0;         // how often it has doubled
  size_t lastSize_ = 0;     // bytes of the last record given; 0 before the first
  uint64_t changes_ = 0;    // the file's, before the batch was asked for
  Clock::time_point read_;  // when it was
};

}  // namespace btrieve::server
