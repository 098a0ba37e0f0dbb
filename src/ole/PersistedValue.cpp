#include "ole/PersistedValue.h"

#include <ocidl.h>
#include <olectl.h>

#include "com/Module.h"
#include "ole/Kit.h"
#include "ole/SystemGuid.h"

namespace qrn::ole {
namespace {

// A font of any other class goes as a system font of the same description.
Com<IPersistStream> AsSystemFont(IUnknown* object) {
  const auto font = Query<IFont>(object);
  if (!font) throw Failure{E_FAIL};
  Bstr name;
  FONTDESC description{};
  description.cbSizeofstruct = sizeof description;
  Check(font->get_Name(name.put()));
  description.lpstrName = name.get();
  Check(font->get_Size(&description.cySize));
  Check(font->get_Weight(&description.sWeight));
  Check(font->get_Charset(&description.sCharset));
  Check(font->get_Italic(&description.fItalic));
  Check(font->get_Underline(&description.fUnderline));
  Check(font->get_Strikethrough(&description.fStrikethrough));
  Com<IPersistStream> copy;
  Check(OleCreateFontIndirect(&description, __uuidof(IPersistStream), copy.putVoid()));
  return copy;
}

Com<IPersistStream> Persistable(IUnknown* object, Guid& classId) {
  auto persist = Query<IPersistStream>(object);
  CLSID id{};
  if (persist) Check(persist->GetClassID(&id));
  classId = FromGuid(id);
  if (classId == kFontClass || classId == kPictureClass) return persist;
  classId = kFontClass;
  return AsSystemFont(object);
}

std::vector<uint8_t> AllBytes(IStream& stream) {
  STATSTG state{};
  Check(stream.Stat(&state, STATFLAG_NONAME));
  Check(stream.Seek({}, STREAM_SEEK_SET, nullptr));
  std::vector<uint8_t> bytes(state.cbSize.QuadPart);
  ULONG read = 0;
  Check(stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read));
  if (read != bytes.size()) throw Failure{E_FAIL};
  return bytes;
}

Com<IStream> MemoryStream() {
  Com<IStream> stream;
  Check(CreateStreamOnHGlobal(nullptr, TRUE, stream.put()));
  return stream;
}

void PutObject(IUnknown* object, PersistedItem& item) {
  if (!object) return;
  const auto persist = Persistable(object, item.classId);
  const auto stream = MemoryStream();
  Check(persist->Save(stream.get(), FALSE));
  item.object = AllBytes(*stream);
}

Com<IDispatch> ObjectOf(const PersistedItem& item) {
  if (item.classId == Guid{}) return nullptr;
  const auto stream = MemoryStream();
  Check(stream->Write(item.object.data(), static_cast<ULONG>(item.object.size()), nullptr));
  Check(stream->Seek({}, STREAM_SEEK_SET, nullptr));
  Com<IPersistStream> object;
  Check(CoCreateInstance(AsGuid(item.classId), nullptr, CLSCTX_INPROC_SERVER,
                         __uuidof(IPersistStream), object.putVoid()));
  Check(object->Load(stream.get()));
  return Query<IDispatch>(object);
}

Bstr TextOf(const PersistedItem& item) { return item.nullText ? Bstr() : Bstr(AsWide(item.text)); }

}  // namespace

PersistedItem ItemOf(const VARIANT& value) {
  PersistedItem item;
  item.type = value.vt;
  if (value.vt == VT_BSTR) {
    item.nullText = !value.bstrVal;
    if (value.bstrVal) item.text = AsUtf16({value.bstrVal, SysStringLen(value.bstrVal)});
  } else if (value.vt == VT_DISPATCH) {
    PutObject(value.pdispVal, item);
  } else {
    item.number = value.vt == VT_BOOL || value.vt == VT_I2 ? value.uiVal : value.ulVal;
  }
  return item;
}

Variant ValueOf(const PersistedItem& item) {
  if (item.type == vt::kBstr) return Variant(TextOf(item));
  if (item.type == vt::kDispatch) return Variant(ObjectOf(item));
  Variant value(static_cast<int32_t>(item.number));
  value->vt = item.type;
  return value;
}

}  // namespace qrn::ole
