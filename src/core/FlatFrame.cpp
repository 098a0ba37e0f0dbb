// The frame of the flat interface: dictionary, settings of the next open, what the dictionary
// knows.
#include <cstdarg>
#include <utility>

#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "core/FlatGuard.h"
#include "core/Gateway.h"
#include "fields/Messages.h"
#include "platform/CodePage.h"
#include "qrnbt350.h"

namespace qrn::flat {
namespace {

const char* OrEmpty(const char* text) { return text != nullptr ? text : ""; }

// Takes the current dictionary away from everybody; an attached control that owned it learns of it.
DbDictionary* TakeCurrentDictionary() {
  DbFlatState& state = TheFlatState();
  DbDictionary* taken = state.CurrentDictionary;
  const bool attached = state.AttachedControl != nullptr && state.AttachedDictionary == taken;
  if (taken != nullptr && attached) state.AttachedControl->DictionaryIsTaken();
  ForgetFlatDictionary(taken);
  return taken;
}

// Closes and frees the current dictionary. Nobody finds it meanwhile: a message of a close may let
// others run, who may load one of their own.
void DropCurrentDictionary() {
  DbDictionary* dropped = TakeCurrentDictionary();
  if (dropped == nullptr) return;
  DbDictCloseAll(TheEngine(), *dropped);
  DbDictFree(dropped);
}

template <class Member>
int32_t OfField(int16_t tableId, int16_t fieldPosition, Member member) noexcept {
  return OnOpenTable(tableId, [&](const DbTableInfo& table) {
    const DbFieldInfo* field = DbFieldAt(table, fieldPosition);
    return field != nullptr ? field->*member : int32_t{kBadFieldId};
  });
}

Status Initialize(const char* directory) {
  if (OrEmpty(directory)[0] == '\0') return kNoDirectory;
  DbFlatState& state = TheFlatState();
  DropCurrentDictionary();
  DbDictionary* loaded = nullptr;
  const Status status = DbDictLoad(TheSettings(), directory, &loaded);
  while (state.CurrentDictionary != nullptr) DropCurrentDictionary();
  state.CurrentDictionary = loaded;
  CopyText(state.DdfDir, status == 0 ? directory : "");
  return status;
}

}  // namespace

extern "C" {

// Callers rely on the code's 16 bits going out without their sign.
int32_t DbInitialize(const char* directory) noexcept {
  return static_cast<uint16_t>(Initialize(directory));
}

int32_t DbTerminate() noexcept {
  DropCurrentDictionary();
  return kSuccess;
}

int32_t DbSetOpenMode(int16_t, int16_t mode) noexcept {
  TheFlatState().OpenMode = mode;
  return kSuccess;
}

int32_t DbSetOwnerName(int16_t ignored, const char* ownerName, int16_t mode) noexcept {
  CopyText(TheFlatState().OwnerName, OrEmpty(ownerName));
  return DbSetOpenMode(ignored, mode);
}

int32_t DbGetNumOfTable() noexcept {
  const DbDictionary* dictionary = TheFlatState().CurrentDictionary;
  return dictionary != nullptr ? dictionary->TableCount : int32_t{kNoDictionary};
}

int32_t DbGetNumOfField(int16_t tableId) noexcept {
  return OnTable(tableId, [](const DbTableInfo& table) { return table.FieldCount; });
}

int32_t DbGetDataSize(int16_t tableId, int16_t fieldPosition) noexcept {
  return OfField(tableId, fieldPosition, &DbFieldInfo::Size);
}

int32_t DbGetDataType(int16_t tableId, int16_t fieldPosition) noexcept {
  return OfField(tableId, fieldPosition, &DbFieldInfo::Type);
}

int32_t DbGetVersion(void* version) noexcept { return qrn::DbGetVersion(TheEngine(), version); }

// Outside a fill the text goes where the last fill left it, or nowhere.
int32_t DbSetFormattedString(const char* text) noexcept {
  if (FormattedTarget == nullptr) return kSuccess;
  CopyText({FormattedTarget, sizeof TheEngine().FormattedText}, OrEmpty(text));
  return kSuccess;
}

void QuorinFatalAppExit(int id, ...) noexcept {
  va_list arguments;
  va_start(arguments, id);
  ExitWithMessage(id, arguments);
  va_end(arguments);
}

}  // extern "C"

}  // namespace qrn::flat
