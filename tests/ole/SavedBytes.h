// What controls keep: in a stream, as bytes, or in a bag.
#pragma once

#include <ocidl.h>

#include "Sinks.h"
#include "com/Com.h"
#include "tests/support/Test.h"

namespace qrn::test {

// At its beginning.
inline com::Com<IStream> StreamOf(std::span<const uint8_t> bytes) {
  com::Com<IStream> stream;
  CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
  stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  return stream;
}

inline std::vector<uint8_t> BytesOf(IStream& stream) {
  STATSTG state{};
  stream.Stat(&state, STATFLAG_NONAME);
  stream.Seek({}, STREAM_SEEK_SET, nullptr);
  std::vector<uint8_t> bytes(state.cbSize.QuadPart);
  ULONG read = 0;
  stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read);
  bytes.resize(read);
  return bytes;
}

// Values under names. Gives a null text as one.
class Bag final : public Counted<IPropertyBag> {
 public:
  std::map<std::wstring, Variant> values;

  STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
    const auto found = values.find(name);
    if (found == values.end()) return E_INVALIDARG;
    const VARTYPE type = value->vt;
    VariantInit(value);
    const bool null = found->second->vt == VT_BSTR && !found->second->bstrVal;
    const HRESULT result = VariantCopy(value, found->second.get());
    if (null) SysFreeString(std::exchange(value->bstrVal, nullptr));
    const bool converts = type != VT_EMPTY && type != VT_DISPATCH && !null;
    return FAILED(result) || !converts ? result : VariantChangeType(value, value, 0, type);
  }
  STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override {
    Variant& kept = values[name];
    const HRESULT result = VariantCopy(kept.put(), value);
    if (value->vt == VT_BSTR && !value->bstrVal)
      SysFreeString(std::exchange(kept->bstrVal, nullptr));
    return result;
  }
};

inline std::vector<uint8_t> Saved(IUnknown* control) {
  const auto stream = StreamOf({});
  EXPECT_EQ(com::Query<IPersistStreamInit>(control)->Save(stream.get(), TRUE), S_OK);
  return BytesOf(*stream);
}

inline HRESULT LoadFrom(IUnknown* control, std::span<const uint8_t> bytes) {
  return com::Query<IPersistStreamInit>(control)->Load(StreamOf(bytes).get());
}

}  // namespace qrn::test
