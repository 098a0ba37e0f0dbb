#include "Sinks.h"

namespace qrn::test {
namespace {

std::string Narrow(BSTR text) {
  if (!text) return "(null)";
  return std::string(text, text + SysStringLen(text));
}

const char* TypeName(VARTYPE type) {
  switch (type) {
    case VT_I2:
      return "I2";
    case VT_I4:
      return "I4";
    case VT_R4:
      return "R4";
    case VT_BSTR:
      return "BSTR";
    case VT_BOOL:
      return "BOOL";
    case VT_UI4:
      return "UI4";
    case VT_DISPATCH:
      return "OBJECT";
    case VT_EMPTY:
      return "EMPTY";
    default:
      return "?";
  }
}

}  // namespace

std::string Show(const VARIANT& value) {
  Variant text;
  const VARTYPE plain = value.vt & ~VT_BYREF;
  std::string shown = TypeName(plain);
  if (value.vt & VT_BYREF) shown += "&";
  if (plain == VT_DISPATCH || plain == VT_EMPTY) return shown;
  VariantCopyInd(text.put(), const_cast<VARIANT*>(&value));
  VariantChangeType(text.get(), text.get(), 0, VT_BSTR);
  return shown + ":" + Narrow(text->bstrVal);
}

STDMETHODIMP EventSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* sent, VARIANT*,
                               EXCEPINFO*, UINT*) {
  if (!hears) return S_OK;
  log += std::to_string(id) + "(";
  for (UINT i = sent->cArgs; i-- > 0;) log += Show(sent->rgvarg[i]) + (i ? "," : "");
  log += ") ";
  if (answer) answer(id, *sent);
  return S_OK;
}

STDMETHODIMP PropertySink::OnChanged(DISPID id) {
  log += "changed(" + std::to_string(id) + ") ";
  return S_OK;
}

STDMETHODIMP PropertySink::OnRequestEdit(DISPID id) {
  log += "ask(" + std::to_string(id) + ") ";
  return id == refuses ? S_FALSE : S_OK;
}

Connection::Connection(IUnknown* control, const GUID& outgoing, IUnknown* sink) {
  const auto container = Query<IConnectionPointContainer>(control);
  if (!container || FAILED(container->FindConnectionPoint(outgoing, point_.put()))) return;
  result = point_->Advise(sink, &cookie_);
  if (FAILED(result)) point_.reset();
}

void Connection::Leave() {
  if (point_) point_->Unadvise(cookie_);
  point_.reset();
}

}  // namespace qrn::test
