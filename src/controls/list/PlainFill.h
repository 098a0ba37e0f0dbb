// The plain fill: one field of every record along a key, one call of the record manager each.
#pragma once

#include "binding/registry/ControlRegistry.h"
#include "controls/list/ListControl.h"
#include "core/ListFill.h"

namespace qrn {

// `Window` is ListBoxControl or ComboControl.
template <class Window>
class PlainFilled : public Window {
 public:
  com::Bstr DbListField = com::Bstr::Empty();

 protected:
  using Window::Window;

  void TakeIndexPosition(int16_t position) override { listKeyNumber_ = position; }

  // Its failures are silent.
  void Fill(RowSink& sink) override {
    const std::string field = NarrowText(DbListField);
    DbFillList(TheEngine(), sink, field.c_str(), listKeyNumber_);
  }

 private:
  int16_t listKeyNumber_ = 0;  // position of `DbListIndex`
};

}  // namespace qrn
