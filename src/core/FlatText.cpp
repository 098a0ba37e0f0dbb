#include "core/FlatText.h"

#include <span>

#include "core/DbEngine.h"
#include "core/DictionaryLookup.h"
#include "core/FlatGuard.h"
#include "core/Record.h"
#include "platform/Bstr.h"
#include "platform/CodePage.h"
#include "platform/PlainText.h"
#include "qrnbt350.h"

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

// Apart from its caller, whose usual way needs no area on the stack.
[[gnu::noinline]] void* ReturnConverted(std::string_view text) {
  char16_t wide[sizeof DbEngine::FieldText];
  const size_t units = WidenText(text, wide);
  return OrNothing(AllocateBstr({wide, units}));
}

// The text of the last field read; UTF-16 where the settings ask for it.
void* ReturnFieldText(const DbEngine& engine) {
  const std::span<const char> area = engine.FieldText;
  const QuorinSettings& settings = engine.Settings;
  if (settings.fix_str_addr != 0) return StoreReturnText(area.data());
  if (settings.v1fx_unicode != 1) return OrNothing(AllocateByteBstr(area.data()));
  const auto [length, plain] = ScanText(area);
  const std::string_view text(area.data(), length);
  return plain ? OrNothing(AllocatePlainBstr(text)) : ReturnConverted(text);
}

}  // namespace

void* ReturnBytes(const char* text) noexcept {
  if (TheSettings().fix_str_addr != 0) return StoreReturnText(text);
  return OrNothing(AllocateByteBstr(text));
}

void* ReturnNothing() noexcept { return StoreReturnText({}); }

extern "C" {

void* DbGetFieldData(int16_t tableId, int16_t fieldPosition) noexcept {
  const CheckedTable found = FindOpenTable(tableId);
  if (found.failure == kBadTableId) return nullptr;
  if (found.failure != 0) return ReturnNothing();
  DbEngine& engine = TheEngine();
  DbReadField(engine, *found.table, fieldPosition);
  return ReturnFieldText(engine);
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

}  // extern "C"

}  // namespace qrn::flat
