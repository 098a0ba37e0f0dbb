#include "FormLines.h"

#include <ole2.h>
#include <olectl.h>

#include <cstdio>

#include "com/Bstr.h"
#include "com/Com.h"
#include "com/Variant.h"
#include "platform/Utf.h"

namespace qrn::test {
namespace {

using com::Com;

std::string Utf8(const wchar_t* text) {
  return text ? Utf16ToUtf8(reinterpret_cast<const char16_t*>(text)) : std::string();
}

std::string Line(const std::string& name, const std::string& value) {
  return "      " + name + " = " + value + "\n";
}

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char each : text) quoted += each == '"' ? "\"\"" : std::string(1, each);
  return quoted + "\"";
}

}  // namespace

STDMETHODIMP FormLines::Write(LPCOLESTR name, VARIANT* value) {
  text += Lines(Utf8(name), *value);
  return S_OK;
}

std::string FormLines::Lines(const std::string& name, VARIANT& value) {
  if (value.vt == VT_BSTR) return Line(name, Quoted(Utf8(value.bstrVal)));
  if (value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN) {
    const Com<IUnknown> object(value.punkVal);
    if (const auto font = com::Query<IFont>(object)) return FontLines(*font);
    const auto picture = com::Query<IPicture>(object);
    return picture ? Line(name, PictureReference(*picture)) : std::string();
  }
  com::Variant number;
  if (FAILED(VariantChangeType(number.get(), &value, 0, VT_I4))) return {};
  return Line(name, std::to_string(number->lVal) + (value.vt == VT_BOOL ? "   'a truth" : ""));
}

std::string FormLines::FontLines(IFont& font) {
  com::Bstr name;
  CY size{};
  SHORT weight = 0;
  SHORT charset = 0;
  BOOL italic = FALSE;
  font.get_Name(name.put());
  font.get_Size(&size);
  font.get_Weight(&weight);
  font.get_Charset(&charset);
  font.get_Italic(&italic);
  char points[16] = {};
  std::snprintf(points, sizeof points, "%.2f", static_cast<double>(size.int64) / 10000);
  return "      BeginProperty Font\n" + Line("Name", Quoted(Utf8(name.c_str()))) +
         Line("Size", points) + Line("Charset", std::to_string(charset)) +
         Line("Weight", std::to_string(weight)) + Line("Underline", "0") +
         Line("Italic", italic ? "-1" : "0") + Line("Strikethrough", "0") + "      EndProperty\n";
}

// Where it stands: the length of what follows, then the picture as it saves itself.
std::string FormLines::PictureReference(IPicture& picture) {
  Com<IStream> stream;
  CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
  const auto persist = com::Query<IPersistStream>(&picture);
  if (!persist || FAILED(persist->Save(stream.get(), FALSE))) return "not saved";
  STATSTG state{};
  stream->Stat(&state, STATFLAG_NONAME);
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  const auto size = static_cast<uint32_t>(state.cbSize.QuadPart);
  const size_t start = companion.size();
  for (int i = 0; i < 4; ++i) companion.push_back(static_cast<uint8_t>(size >> (8 * i)));
  companion.resize(companion.size() + size);
  stream->Read(companion.data() + start + 4, size, nullptr);
  char reference[40] = {};
  std::snprintf(reference, sizeof reference, "\"form.frx\":%04X", static_cast<unsigned>(start));
  return reference;
}

}  // namespace qrn::test
