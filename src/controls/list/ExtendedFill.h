// The fill by extended operations: several fields of the records that a condition keeps, joined in
// one line, many records to a call.
#pragma once

#include "binding/registry/ControlRegistry.h"
#include "controls/list/ListControl.h"
#include "extended/FillFromExtended.h"

namespace qrn {

// `Window` is ListBoxControl or ComboControl.
template <class Window>
class ExtendedFilled : public Window {
 public:
  com::Bstr DbListFields = com::Bstr::Empty();   // names between commas
  com::Bstr DbConditions = com::Bstr::Empty();   // extended/SearchCond.h
  com::Bstr DbDelimitChar = com::Bstr::Empty();  // between fields; read by combo boxes alone
  int16_t DbLeaveResults = 0;                    // keeps the replies for the application
  int16_t DbSavePosition = 0;                    // `ItemData` holds the record's position
  int32_t DbLocks = 0;
  int32_t DbExOperation = OpGetNextEx;
  int32_t DbCompareCase = 0;
  int16_t DbSkipRecords = 100;  // records that one call may reject
  int32_t DbMaxRecords = 300;   // records in one call; the low 16 bits count
  int16_t DbResultID = 0;
  int16_t DbListIndexID = 0;  // position of `DbListIndex`, found anew at every fill

  void TakeResultId(int16_t id) override { DbResultID = id; }

 protected:
  ExtendedFilled(const ole::ControlTable& table, const ole::Binding& binding, FillKind kind)
      : Window(table, binding), fillKind_(kind) {
    this->IntegralHeight = -1;
  }

  // What the separator of a row is made of.
  virtual const com::Bstr& DelimiterText() const { return DbDelimitChar; }

  void TakeIndexPosition(int16_t position) override { DbListIndexID = position; }

  void Fill(RowSink& sink) override {
    const std::string conditions = NarrowText(DbConditions);
    const std::string fields = NarrowText(DbListFields);
    const std::string delimiter = NarrowText(DelimiterText());
    FillFromExtended(TheEngine(),
                     {.Kind = fillKind_,
                      .ListIndexId = DbListIndexID,
                      .DbExOperation = DbExOperation,
                      .DbLocks = DbLocks,
                      .DbCompareCase = DbCompareCase != 0,
                      .DbSkipRecords = static_cast<uint16_t>(DbSkipRecords),
                      .DbMaxRecords = static_cast<uint16_t>(DbMaxRecords),
                      .SavePosition = DbSavePosition != 0,
                      .DbLeaveResults = DbLeaveResults != 0,
                      .DbConditions = conditions.c_str(),
                      .DbListFields = fields.c_str(),
                      .Delimiter = delimiter.c_str()},
                     sink);
  }

 private:
  const FillKind fillKind_;
};

}  // namespace qrn
