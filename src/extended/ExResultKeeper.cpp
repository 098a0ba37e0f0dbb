#include "extended/ExResultKeeper.h"

#include <new>

#include "extended/ExMemoryFailure.h"

namespace qrn {

void ExResultKeeper::Keep(RowSink& sink, const DbTableInfo& table, const char* fields,
                          const FieldList& plan, std::span<const uint8_t> reply) {
  if (ended_) return;
  try {
    const bool first = id_ == kNoResult;
    ended_ = !(first ? KeepFirst(sink, table, fields, plan, reply)
                     : TheExResults().Append(id_, serial_, reply));
  } catch (const std::bad_alloc&) {
    ReportExMemoryFailure();
    ended_ = true;
  }
}

bool ExResultKeeper::KeepFirst(RowSink& sink, const DbTableInfo& table, const char* fields,
                               const FieldList& plan, std::span<const uint8_t> reply) {
  id_ = TheExResults().Keep(table, fields, plan, reply);
  if (id_ == kNoResult) return false;
  serial_ = TheExResults().Find(id_)->Serial;
  sink.TakeResultId(id_);
  return true;
}

}  // namespace qrn
