#include "core/FlatText.h"

#include <cstring>
#include <span>

#include "core/DbEngine.h"
#include "core/DictionaryLookup.h"
#include "core/FlatGuard.h"
#include "core/FlatInterface.h"
#include "core/Record.h"
#include "platform/Bstr.h"
#include "platform/CodePage.h"

namespace qrn::flat {
namespace {

void* StoreReturnText(std::string_view text) {
  DbFlatState& state = TheFlatState();
  const size_t length =
      CopyText(std::span(state.ReturnText).first<sizeof state.ReturnText - 1>(), text);
  state.ReturnText[length + 1] = '\0';
  state.ReturnLength = static_cast<int32_t>(length);
  return state.ReturnText;
}

void* OrNothing(BstrText text) { return text != nullptr ? text : ReturnNothing(); }

}  // namespace

void* ReturnBytes(const char* text) noexcept {
  if (TheSettings().fix_str_addr != 0) return StoreReturnText(text);
  return OrNothing(AllocateByteBstr(text));
}

void* ReturnWide(const char* text) noexcept {
  const QuorinSettings& settings = TheSettings();
  if (settings.fix_str_addr != 0 || settings.v1fx_unicode != 1) return ReturnBytes(text);
  char16_t wide[sizeof DbEngine::FieldText];
  const size_t units = WidenText(text, wide);
  return OrNothing(AllocateBstr({wide, units}));
}

void* ReturnNothing() noexcept { return StoreReturnText({}); }

void* DbGetFieldData(int16_t tableId, int16_t fieldPosition) noexcept {
  const CheckedTable found = FindOpenTable(tableId);
  if (found.failure == kBadTableId) return nullptr;
  if (found.failure != 0) return ReturnNothing();
  return ReturnWide(DbReadField(TheEngine(), *found.table, fieldPosition));
}

void* DbGetFieldName(int16_t tableId, int16_t fieldPosition) noexcept {
  const CheckedTable found = FindOpenTable(tableId);
  if (found.failure == kNotOpen) return ReturnNothing();
  if (found.failure != 0) return nullptr;
  const DbFieldInfo* field = DbFieldAt(*found.table, fieldPosition);
  return ReturnBytes(field != nullptr ? field->Name : "");
}

void* DbGetTableName(int16_t tableId) noexcept {
  const CheckedTable found = FindTable(tableId);
  if (found.failure == kNoDictionary) return ReturnNothing();
  if (found.failure != 0) return nullptr;
  return ReturnBytes(found.table->Name);
}

}  // namespace qrn::flat
