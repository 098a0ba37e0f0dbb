// Which records an export takes: a search condition as forms have them, judged as the record
// manager judges it.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "btrieve/scans/ExtendedRequest.h"
#include "fields/QuorinSettings.h"
#include "tools/qrndata/TableModel.h"

namespace qrndata {

class RecordFilter {
 public:
  // `condition` is UTF-8; empty: every record. Throws Failure (kUsage) that names the place in it.
  RecordFilter(const qrn::QuorinSettings& settings, const Table& table,
               const btrieve::FileSpec& file, const std::string& condition);

  bool Takes(std::span<const uint8_t> record) const noexcept {
    return takesAll_ || request_.Judge(record.data(), record.size()) == btrieve::Verdict::Accept;
  }
  bool TakesAll() const noexcept { return takesAll_; }

 private:
  bool takesAll_;
  btrieve::ExtendedRequest request_;
};

}  // namespace qrndata
