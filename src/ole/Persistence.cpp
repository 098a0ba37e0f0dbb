#include "ole/Persistence.h"

#include <olectl.h>

#include <string>

#include "ole/Control.h"
#include "ole/PersistedValue.h"
#include "ole/StreamBytes.h"
#include "ole/SystemGuid.h"
#include "ole/tables/MemberChecks.h"

namespace qrn::ole {
namespace {

constexpr wchar_t kContents[] = L"Contents";

void ReportTo(IErrorLog* log, const std::wstring& name, HRESULT result) {
  if (!log) return;
  EXCEPINFO exception{};
  exception.scode = result;
  log->AddError(name.c_str(), &exception);
}

}  // namespace

template <class Body>
HRESULT Persistence::Loading(Body body) {
  return Run([&] {
    loading_ = true;
    const HRESULT result = Guard(body);
    loading_ = false;
    if (FAILED(result)) return result;
    dirty_ = false;
    control().OnLoaded();
    control().Redraw();
    return S_OK;
  });
}

// The items of the map as they are now.
std::vector<PersistedItem> Persistence::Collect() {
  const SIZE extent = control().oleObject().extent();
  std::vector<PersistedItem> items;
  for (const PersistRow& row : table_.persisted) {
    Variant value;
    if (row.Raw()) {
      items.push_back({vt::kUI4,
                       static_cast<uint32_t>(row.id == kRawWidth ? extent.cx : extent.cy),
                       {},
                       false,
                       {},
                       {}});
      continue;
    }
    Check(control().dispatch().Read(row.id, *value.get()));
    items.push_back(ItemOf(*value.get()));
  }
  return items;
}

void Persistence::Apply(const std::vector<PersistedItem>& items) {
  std::vector<Variant> values;
  for (const PersistedItem& item : items) values.push_back(ValueOf(item));
  SIZE extent = control().oleObject().extent();
  for (size_t i = 0; i < items.size(); ++i) {
    if (FAILED(Store(table_.persisted[i], *values[i].get(), extent))) throw Failure{E_FAIL};
  }
  control().oleObject().LoadExtent(extent);
}

HRESULT Persistence::Store(const PersistRow& row, VARIANT& value, SIZE& extent) {
  if (row.id == kRawWidth) extent.cx = static_cast<LONG>(value.ulVal);
  if (row.id == kRawHeight) extent.cy = static_cast<LONG>(value.ulVal);
  return row.Raw() ? S_OK : control().dispatch().Load(row.id, value);
}

STDMETHODIMP Persistence::GetClassID(CLSID* id) {
  if (!id) return E_POINTER;
  *id = AsGuid(table_.classId);
  return S_OK;
}

STDMETHODIMP Persistence::IsDirty() { return dirty_ ? S_OK : S_FALSE; }

STDMETHODIMP Persistence::InitNew() { return S_OK; }

STDMETHODIMP Persistence::Load(IStream* stream) {
  if (!stream) return E_POINTER;
  return Loading([&] {
    StreamSource source(*stream);
    const auto items = ReadItems(source, table_.persisted);
    if (!items) return E_FAIL;
    Apply(*items);
    return S_OK;
  });
}

STDMETHODIMP Persistence::Save(IStream* stream, BOOL clearDirty) {
  if (!stream) return E_POINTER;
  return Run([&] {
    StreamSink sink(*stream);
    if (!WriteItems(sink, table_.persisted, Collect())) return sink.failure();
    if (clearDirty) dirty_ = false;
    return S_OK;
  });
}

STDMETHODIMP Persistence::GetSizeMax(ULARGE_INTEGER* size) {
  if (!size) return E_POINTER;
  return Run([&] {
    CountingSink sink;
    if (!WriteItems(sink, table_.persisted, Collect())) return E_FAIL;
    size->QuadPart = sink.count();
    return S_OK;
  });
}

STDMETHODIMP Persistence::InitNew(IStorage*) { return InitNew(); }

STDMETHODIMP Persistence::Load(IStorage* storage) {
  if (!storage) return E_POINTER;
  Com<IStream> stream;
  const HRESULT result = storage->OpenStream(
      kContents, nullptr, STGM_DIRECT | STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.put());
  return FAILED(result) ? result : Load(stream.get());
}

STDMETHODIMP Persistence::Save(IStorage* storage, BOOL sameAsLoad) {
  if (!storage) return E_POINTER;
  Com<IStream> stream;
  const DWORD mode = STGM_DIRECT | STGM_WRITE | STGM_SHARE_EXCLUSIVE | STGM_CREATE;
  const HRESULT result = storage->CreateStream(kContents, mode, 0, 0, stream.put());
  return FAILED(result) ? result : Save(stream.get(), sameAsLoad);
}

STDMETHODIMP Persistence::SaveCompleted(IStorage*) { return S_OK; }
STDMETHODIMP Persistence::HandsOffStorage() { return S_OK; }

HRESULT Persistence::LoadFromBag(IPropertyBag& bag, const PersistRow& row) {
  const PropertyRow* property = row.Raw() ? nullptr : FindProperty(table_, row.id);
  const VARTYPE type = property ? property->type.vt : vt::kUI4;
  SIZE extent = control().oleObject().extent();
  Variant value;
  value->vt = type;
  // A form written by hand may use the property's own name where the entry's differs.
  if (FAILED(bag.Read(Wide(row.name).c_str(), value.get(), nullptr))) {
    value.put();
    value->vt = type;
    if (!property || FAILED(bag.Read(Wide(property->name).c_str(), value.get(), nullptr))) {
      return S_OK;
    }
  }
  if (row.Raw()) Check(value.as(VT_UI4, value));
  const HRESULT result = Store(row, *value.get(), extent);
  if (row.Raw()) control().oleObject().LoadExtent(extent);
  return result;
}

STDMETHODIMP Persistence::Load(IPropertyBag* bag, IErrorLog* log) {
  if (!bag) return E_POINTER;
  return Loading([&] {
    for (const PersistRow& row : table_.persisted) {
      const HRESULT result = Guard([&] { return LoadFromBag(*bag, row); });
      if (SUCCEEDED(result)) continue;
      ReportTo(log, Wide(row.name), result);
      return E_FAIL;
    }
    return S_OK;
  });
}

STDMETHODIMP Persistence::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) {
  if (!bag) return E_POINTER;
  return Run([&] {
    const SIZE extent = control().oleObject().extent();
    for (const PersistRow& row : table_.persisted) {
      Variant value(static_cast<int32_t>(row.id == kRawWidth ? extent.cx : extent.cy));
      if (row.Raw()) {
        value->vt = VT_UI4;
      } else {
        Check(control().dispatch().Read(row.id, *value.put()));
      }
      Check(bag->Write(Wide(row.name).c_str(), value.get()));
    }
    if (clearDirty) dirty_ = false;
    return S_OK;
  });
}

}  // namespace qrn::ole
