#include "host/designer/classes/SavedState.h"

#include <ocidl.h>
#include <olectl.h>

#include <algorithm>
#include <iterator>
#include <optional>

#include "com/Handles.h"
#include "host/container/ComObject.h"
#include "host/container/Fonts.h"
#include "host/container/Text.h"
#include "host/designer/classes/PlainValue.h"

namespace qrn::designer {
namespace {

using host::Com;
using host::Query;
using host::Utf8;

// A picture saves itself as two words, a mark and the image's length, and the image as its file
// had it.
std::string ImageOf(IUnknown* picture) {
  constexpr size_t kHeader = 8;
  const Com<IPersistStream> persist = Query<IPersistStream>(picture);
  Com<IStream> stream;
  if (!persist || FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put())) ||
      FAILED(persist->Save(stream.get(), FALSE))) {
    return {};
  }
  STATSTG state{};
  if (FAILED(stream->Stat(&state, STATFLAG_NONAME))) return {};
  std::string bytes(static_cast<size_t>(state.cbSize.QuadPart), '\0');
  ULONG read = 0;
  if (FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr)) ||
      FAILED(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read))) {
    return {};
  }
  bytes.resize(read);
  return bytes.size() <= kHeader ? std::string() : bytes.substr(kHeader);
}

bool IsEmpty(IPicture* picture) {
  short type = PICTYPE_NONE;
  return FAILED(picture->get_Type(&type)) || type == PICTYPE_NONE || type == PICTYPE_UNINITIALIZED;
}

// Nothing for an object that is neither a font nor a picture.
std::optional<SavedProperty> ObjectOf(const std::string& name, IUnknown* object) {
  if (const Com<IFont> font = Query<IFont>(object)) {
    return SavedProperty{host::FontGroup(name, host::DescriptionOf(font.get()))};
  }
  const Com<IPicture> picture = Query<IPicture>(object);
  if (!picture && object) return std::nullopt;
  SavedProperty saved{{name, 0, {}, false, {}, {}}, true};
  if (picture && !IsEmpty(picture.get())) saved.image = ImageOf(object);
  return saved;
}

// Collects what a control writes into a form file.
class Collector final : public host::ComObject<IPropertyBag> {
 public:
  STDMETHODIMP Read(LPCOLESTR, VARIANT*, IErrorLog*) override { return E_INVALIDARG; }
  STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override {
    return host::Guard([&] {
      if (!name || !value) return E_POINTER;
      auto taken = Taken(Utf8(name), *value);
      if (taken) properties.push_back(std::move(*taken));
      return S_OK;
    });
  }

  std::vector<SavedProperty> properties;

 private:
  static std::optional<SavedProperty> Taken(const std::string& name, VARIANT& value) {
    if (value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN) return ObjectOf(name, value.punkVal);
    const auto plain = PlainValue(value);
    return plain ? std::optional(SavedProperty{{name, 0, *plain, false, {}, {}}}) : std::nullopt;
  }
};

}  // namespace

std::vector<SavedProperty> SavedStateOf(IUnknown* control) {
  const Com<IPersistPropertyBag> persist = Query<IPersistPropertyBag>(control);
  const Com<Collector> collector = host::MakeCom<Collector>();
  const bool saved = persist && SUCCEEDED(persist->Save(collector.get(), FALSE, FALSE));
  return saved ? std::move(collector->properties) : std::vector<SavedProperty>();
}

std::vector<form::Property> PlainLinesOf(IUnknown* control) {
  std::vector<form::Property> lines;
  for (SavedProperty& saved : SavedStateOf(control)) {
    if (!saved.isPicture && !saved.line.isGroup) lines.push_back(std::move(saved.line));
  }
  return lines;
}

}  // namespace qrn::designer
