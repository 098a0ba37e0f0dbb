// What the engine sees of the screen: the controls that show a field, and the button that starts an
// operation. Controls implement it, tests stand in for it; the engine knows no window.
#pragma once

#include <cstdint>
#include <string>

#include "core/DbTypes.h"

namespace qrn {

// The controls of one form. Texts are code page 932. Writing and clearing raise the controls'
// `Change` events, whose handlers may do anything, so that a table has to be asked for again.
class FieldControls {
 public:
  virtual ~FieldControls() = default;

  // How many controls of the field were read; `text` is the last one's, untouched for none.
  virtual int32_t ReadControlField(const DbTableInfo& table, const DbFieldInfo& field,
                                   std::string& text) = 0;
  virtual void WriteControlField(const DbTableInfo& table, const DbFieldInfo& field,
                                 const char* text) = 0;
  virtual void ClearControlField(const DbTableInfo& table, const DbFieldInfo& field) = 0;
};

// Who runs a bound operation: an operation button or a record scroll bar.
class BoundCaller {
 public:
  virtual ~BoundCaller() = default;

  // The open table to work on, looked up by its names at each call; null when it is gone.
  virtual DbTableInfo* Table() = 0;
  virtual FieldControls& Controls() = 0;
  virtual int32_t IndexID() const = 0;  // index position of the key
};

class BoundButton : public BoundCaller {
 public:
  // Clears the button's `Abort`, raises `SetData`, and says what became of `Abort`: true when the
  // handler refuses the operation.
  virtual bool RefusedBySetData() = 0;
  virtual int32_t DbLocks() const = 0;  // a LockKind
};

}  // namespace qrn
