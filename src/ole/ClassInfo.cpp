#include "ole/ClassInfo.h"

#include <olectl.h>

#include <algorithm>

#include "ole/Control.h"
#include "ole/SystemGuid.h"
#include "ole/tables/MemberChecks.h"

namespace qrn::ole {
namespace {

std::span<const EnumRow> ChoicesOf(const ControlTable& table, DISPID id) {
  const PropertyRow* row = FindProperty(table, id);
  return row ? row->choices : std::span<const EnumRow>();
}

// Where a page stands in the list of its control: own pages come first, then the stock pages.
constexpr Guid kStockPages[] = {MakeGuid("7EBDAAE1-8120-11CF-899F-00AA00688B10"),
                                MakeGuid("7EBDAAE0-8120-11CF-899F-00AA00688B10"),
                                MakeGuid("7EBDAAE2-8120-11CF-899F-00AA00688B10")};

const Guid* PageId(const ControlTable& table, Page page) {
  if (page == Page::None) return nullptr;
  if (page >= Page::Color)
    return &kStockPages[static_cast<int>(page) - static_cast<int>(Page::Color)];
  const size_t slot = page == Page::Second ? 1 : 0;
  return slot < table.pages.size() ? &table.pages[slot] : nullptr;
}

}  // namespace

STDMETHODIMP ClassInfo::GetClassInfo(ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = TypeInfoOf(AsGuid(table_.classId)).detach();
  return *info ? S_OK : E_UNEXPECTED;
}

STDMETHODIMP ClassInfo::GetGUID(DWORD kind, GUID* id) {
  if (!id) return E_POINTER;
  *id = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? AsGuid(table_.eventsId) : GUID_NULL;
  return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
}

STDMETHODIMP ClassInfo::GetPages(CAUUID* pages) {
  if (!pages) return E_POINTER;
  *pages = CAUUID{};
  TaskMemory<GUID> ids(static_cast<GUID*>(CoTaskMemAlloc(table_.pages.size_bytes())));
  if (!ids) return E_OUTOFMEMORY;
  std::ranges::transform(table_.pages, ids.get(), AsGuid);
  pages->cElems = static_cast<ULONG>(table_.pages.size());
  pages->pElems = ids.release();
  return S_OK;
}

STDMETHODIMP ClassInfo::InterfaceSupportsErrorInfo(REFIID id) {
  return id == AsGuid(table_.interfaceId) ? S_OK : S_FALSE;
}

STDMETHODIMP ClassInfo::GetDisplayString(DISPID id, BSTR* text) {
  if (!text) return E_POINTER;
  *text = nullptr;
  return Run([&] {
    Variant value;
    const auto choices = ChoicesOf(table_, id);
    if (choices.empty()) return S_FALSE;
    Check(control().dispatch().Read(id, *value.get()));
    Check(value.as(VT_I4, value));
    const auto found = std::ranges::find(choices, value->intVal, &EnumRow::value);
    if (found == choices.end()) return S_FALSE;
    *text = Bstr(AsWide(found->text)).detach();
    return S_OK;
  });
}

STDMETHODIMP ClassInfo::MapPropertyToPage(DISPID id, CLSID* page) {
  if (!page) return E_POINTER;
  *page = GUID_NULL;
  const PersistRow* row = FindRow(table_.persisted, id);
  const Guid* found = row ? PageId(table_, row->page) : nullptr;
  if (!found) return PERPROP_E_NOPAGEAVAILABLE;
  *page = AsGuid(*found);
  return S_OK;
}

STDMETHODIMP ClassInfo::GetPredefinedStrings(DISPID id, CALPOLESTR* texts, CADWORD* cookies) {
  if (!texts || !cookies) return E_POINTER;
  *texts = CALPOLESTR{};
  *cookies = CADWORD{};
  const auto choices = ChoicesOf(table_, id);
  if (choices.empty()) return S_FALSE;
  const size_t count = choices.size();
  TaskMemory<LPOLESTR> names(static_cast<LPOLESTR*>(CoTaskMemAlloc(count * sizeof(LPOLESTR))));
  TaskMemory<DWORD> numbers(static_cast<DWORD*>(CoTaskMemAlloc(count * sizeof(DWORD))));
  if (!names || !numbers) return E_OUTOFMEMORY;
  for (size_t i = 0; i < count; ++i) {
    names.get()[i] = CopyToTaskMemory(AsWide(choices[i].text).data());
    numbers.get()[i] = static_cast<DWORD>(choices[i].value);
  }
  *texts = {static_cast<ULONG>(count), names.release()};
  *cookies = {static_cast<ULONG>(count), numbers.release()};
  return S_OK;
}

STDMETHODIMP ClassInfo::GetPredefinedValue(DISPID id, DWORD cookie, VARIANT* value) {
  if (!value) return E_POINTER;
  const auto choices = ChoicesOf(table_, id);
  const auto found = std::ranges::find(choices, static_cast<int32_t>(cookie), &EnumRow::value);
  if (found == choices.end()) return E_INVALIDARG;
  return Guard([&] {
    Variant chosen(found->value);
    Check(chosen.as(FindProperty(table_, id)->type.vt, chosen));
    *value = chosen.release();
    return S_OK;
  });
}

}  // namespace qrn::ole
