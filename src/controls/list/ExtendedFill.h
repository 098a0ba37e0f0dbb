// The fill by extended operations: several fields of the records that a condition keeps, joined in
// one line, many records to a call.
#pragma once

#include "binding/registry/ControlRegistry.h"
#include "controls/list/ListControl.h"
#include "extended/ExFillSettings.h"

namespace qrn {

// `Window` is ListBoxControl or ComboControl.
template <class Window>
class ExtendedFilled : public Window, public ExFillSettings {
 public:
  com::Bstr DbListFields = com::Bstr::Empty();   // names between commas
  com::Bstr DbConditions = com::Bstr::Empty();   // extended/SearchCond.h
  com::Bstr DbDelimitChar = com::Bstr::Empty();  // between fields; read by combo boxes alone
  int16_t DbSavePosition = 0;                    // `ItemData` holds the record's position
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
    ExFill fill = ToFill();
    fill.Kind = fillKind_;
    fill.ListIndexId = DbListIndexID;
    fill.SavePosition = DbSavePosition != 0;
    fill.DbConditions = conditions.c_str();
    fill.DbListFields = fields.c_str();
    fill.Delimiter = delimiter.c_str();
    FillFromExtended(TheEngine(), fill, sink);
  }

 private:
  const FillKind fillKind_;
};

}  // namespace qrn
