#include "core/FlatState.h"

#include "platform/CodePage.h"

namespace qrn {

DbFlatState& TheFlatState() noexcept {
  static constinit DbFlatState state;
  return state;
}

void AttachFlatState(AttachedDatabase& control, DbDictionary* dictionary,
                     const char* name) noexcept {
  DbFlatState& state = TheFlatState();
  state.AttachedControl = &control;
  state.CurrentDictionary = dictionary;
  state.AttachedDictionary = dictionary;
  CopyText(state.AttachedName, name);
}

void ForgetFlatDictionary(const DbDictionary* dictionary) noexcept {
  DbFlatState& state = TheFlatState();
  if (state.CurrentDictionary == dictionary) state.CurrentDictionary = nullptr;
  if (state.AttachedDictionary == dictionary) state.AttachedDictionary = nullptr;
}

void ForgetAttachedDatabase(const AttachedDatabase* control) noexcept {
  DbFlatState& state = TheFlatState();
  if (state.AttachedControl != control) return;
  state.AttachedControl = nullptr;
  state.FormWindow = nullptr;
}

}  // namespace qrn
