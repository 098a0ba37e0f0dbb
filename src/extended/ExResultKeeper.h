// The result that a fill leaves behind: its replies, one after another, under one id.
#pragma once

#include <cstdint>
#include <span>

#include "core/DbTypes.h"
#include "core/RowSink.h"
#include "extended/ExResultStore.h"
#include "extended/FieldList.h"

namespace qrn {

class ExResultKeeper {
 public:
  // Keeps a reply and, with the first one, tells the sink its result id. A full store, no memory
  // (after VE001) and a result that the application has freed meanwhile end the keeping: what was
  // kept stays, later replies are dropped, the fill goes on.
  void Keep(RowSink& sink, const DbTableInfo& table, const char* fields, const FieldList& plan,
            std::span<const uint8_t> reply);

 private:
  bool KeepFirst(RowSink& sink, const DbTableInfo& table, const char* fields, const FieldList& plan,
                 std::span<const uint8_t> reply);

  int16_t id_ = kNoResult;
  uint32_t serial_ = 0;
  bool ended_ = false;
};

}  // namespace qrn
