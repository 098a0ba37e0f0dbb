// The fill of a list or grid: partial, filtered records, many to a call of the record manager. One
// course for all kinds of lists; in what they differ is data (extended/FillVariant.h).
//
// The table's current record is the same before and after, whatever happens between. The record
// buffer is used on the way.
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/RowSink.h"
#include "extended/ExOperation.h"
#include "extended/FillVariant.h"

namespace qrn {

// The control's properties that steer its fill. Texts are code page 932, NUL-terminated, null
// counting as empty; they must outlive the fill, handlers of its events included.
struct ExFill {
  FillKind Kind = FillKind::ListBox;
  int32_t ListIndexId = 0;              // index position of the key
  int32_t DbExOperation = OpGetNextEx;  // an ExOpCode
  int32_t DbLocks = 0;                  // lock kind, for the batches only
  bool DbCompareCase = false;           // text compares without regard to case
  uint16_t DbSkipRecords = 100;         // records that one call may reject; 0: as many as it likes
  uint16_t DbMaxRecords = 300;          // records in one call; no limit of the fill
  bool SavePosition = false;            // give each row its record's position
  bool DbLeaveResults = false;          // keep the replies for the application
  const char* DbConditions = nullptr;   // extended/SearchCond.h
  const char* DbListFields = nullptr;   // extended/FieldList.h
  const char* Delimiter = nullptr;      // DbDelimitChar or DbTabStops
};

// Fills the sink with the records of its table and gives true. False when nothing was changed in
// the list, it has not even been emptied: no table (or a closed one), VE044 an operation that is
// none of the four, VE804 no such key, VE001, a condition or a field list with a fault (its message
// was shown), or the first record could not be read (the event BtrieveError was raised; an empty
// file too is 9).
//
// Then batches are read until the record manager says that the end is reached, a handler of
// `Format` cancels, or the sink is full. A status that brings no records shows VE039; the rows so
// far stay.
bool FillFromExtended(DbEngine& engine, const ExFill& fill, RowSink& sink);

}  // namespace qrn
