// What the flat interface keeps between calls, once per process: the dictionary it works on, what
// it is attached to, the settings of the next open, the area of text results.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/DbTypes.h"
#include "platform/WindowText.h"

namespace qrn {

// What the flat interface asks of a database control it is attached to. Texts are code page 932 and
// live until the control changes them.
class AttachedDatabase {
 public:
  virtual const char* DdfDirText() const noexcept = 0;
  virtual const char* OwnerNameText() const noexcept = 0;
  virtual int32_t OpenModeValue() const noexcept = 0;  // as stored, not mapped

  // A flat caller ends the control's dictionary: it is no longer the control's, who has none now.
  virtual void DictionaryIsTaken() noexcept = 0;

 protected:
  ~AttachedDatabase() = default;
};

struct DbFlatState {
  DbDictionary* CurrentDictionary = nullptr;
  AttachedDatabase* AttachedControl = nullptr;
  DbDictionary* AttachedDictionary = nullptr;  // what the attached control owned when attached
  int32_t OpenMode = 0;                        // handed to Btrieve as it stands
  char AttachedName[256] = {};
  WindowHandle FormWindow = nullptr;  // set by the attach by form name only
  char DdfDir[260] = {};              // of the last successful DbInitialize, else empty
  char OwnerName[128] = {};

  // The length stands right in front of the text, so that a caller who takes the area for a string
  // of automation reads its length there. Texts end in two NULs for the same reason.
  int32_t ReturnLength = 0;  // bytes
  char ReturnText[32000] = {};
};
static_assert(offsetof(DbFlatState, ReturnText) - offsetof(DbFlatState, ReturnLength) == 4);

DbFlatState& TheFlatState() noexcept;

// Makes a control's dictionary the current one, leaving the former as it is; copies the name (cut
// to 255 bytes). For the attach functions.
void AttachFlatState(AttachedDatabase& control, DbDictionary* dictionary,
                     const char* name) noexcept;

// The dictionary is about to be freed: the flat interface has none if it was this one.
void ForgetFlatDictionary(const DbDictionary* dictionary) noexcept;

// The control is about to go: the flat interface is attached to none if it was this one.
void ForgetAttachedDatabase(const AttachedDatabase* control) noexcept;

}  // namespace qrn
