// A disk that fails at the n-th call of a kind: then alone, or from then on until it is mended.
#pragma once

#include "DiskTap.h"

namespace btrieve::test {

inline bool Grows(const DiskCall& call) {
  return call.kind == DiskKind::Make || (call.kind == DiskKind::Write && call.grows);
}
inline bool Writes(const DiskCall& call) {
  return call.kind == DiskKind::Write || call.kind == DiskKind::Truncate;
}
inline bool Reads(const DiskCall& call) { return call.kind == DiskKind::Read; }
inline bool Syncs(const DiskCall& call) {
  return call.kind == DiskKind::Sync || call.kind == DiskKind::SyncFolder;
}

struct Fault {
  const char* name;
  bool (*meets)(const DiskCall& call);
  int error;
  bool lasts;
};

class FaultyDisk : public DiskListener {
 public:
  FaultyDisk(const Fault& fault, int at) : fault_(fault), left_(at) {}
  int Allow(const DiskCall& call) override {
    if (works_ || !fault_.meets(call)) return 0;
    if (left_ > 0) --left_;
    if (left_ != 0) return 0;
    met_ = true;
    if (!fault_.lasts) works_ = true;
    return fault_.error;
  }
  void Mend() { works_ = true; }
  bool Met() const { return met_; }

 private:
  Fault fault_;
  int left_;
  bool works_ = false;
  bool met_ = false;
};

}  // namespace btrieve::test
