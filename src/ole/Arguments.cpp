#include "ole/Arguments.h"

#include "ole/Convert.h"

namespace qrn::ole {
namespace {

bool IsMissing(const VARIANT* sent) {
  return !sent || (sent->vt == VT_ERROR && sent->scode == DISP_E_PARAMNOTFOUND);
}

}  // namespace

HRESULT Arguments::Collect(bool lastIsResult, UINT* badArgument) {
  HRESULT result = Place(badArgument);
  for (size_t i = 0; SUCCEEDED(result) && i < rows_.size(); ++i) {
    result = Convert(i, rows_[i].optional || (lastIsResult && i + 1 == rows_.size()));
    if (FAILED(result) && badArgument && places_[i]) {
      *badArgument = static_cast<UINT>(places_[i] - sent_.rgvarg);
    }
  }
  return result;
}

// What was sent by position stands last and in reverse; what was sent by name stands first, in the
// order of the names' numbers.
HRESULT Arguments::Place(UINT* badArgument) {
  if (sent_.cNamedArgs > sent_.cArgs || rows_.size() > kMost) return DISP_E_BADPARAMCOUNT;
  const UINT byPosition = sent_.cArgs - sent_.cNamedArgs;
  if (byPosition > rows_.size()) return DISP_E_BADPARAMCOUNT;
  for (UINT i = 0; i < byPosition; ++i) places_[i] = &sent_.rgvarg[sent_.cArgs - 1 - i];
  for (UINT i = skipped_; i < sent_.cNamedArgs; ++i) {
    const DISPID name = sent_.rgdispidNamedArgs[i];
    if (name < 0 || static_cast<size_t>(name) >= rows_.size() || places_[name]) {
      if (badArgument) *badArgument = i;
      return DISP_E_PARAMNOTFOUND;
    }
    places_[name] = &sent_.rgvarg[i];
  }
  return S_OK;
}

HRESULT Arguments::Convert(size_t row, bool mayMiss) {
  const ValueType& type = rows_[row].type;
  const VARIANT* sent = places_[row];
  VARIANT& value = *values_[row].get();
  if (IsMissing(sent) && !mayMiss) return sent ? DISP_E_PARAMNOTOPTIONAL : DISP_E_BADPARAMCOUNT;
  if (type.vt == vt::kVariant) return ConvertAny(sent, value);
  if (IsMissing(sent)) {
    value.vt = static_cast<VARTYPE>(type.vt & ~VT_BYREF);
    places_[row] = nullptr;
    return S_OK;
  }
  if (type.vt & VT_BYREF) return OpenOutArgument(*sent, type, locale_, values_[row]);
  return ConvertValue(*sent, type, locale_, values_[row]);
}

// Goes through as sent, but for references to a VARIANT.
HRESULT Arguments::ConvertAny(const VARIANT* sent, VARIANT& value) {
  if (IsMissing(sent)) {
    missing_->vt = VT_ERROR;
    missing_->scode = DISP_E_PARAMNOTFOUND;
    sent = missing_.get();
  }
  const bool reference = sent->vt == (VT_BYREF | VT_VARIANT) && sent->pvarVal;
  value.vt = VT_BYREF | VT_VARIANT;
  value.pvarVal = reference ? sent->pvarVal : const_cast<VARIANT*>(sent);
  return S_OK;
}

bool Arguments::LastSaysFailure() noexcept {
  const Variant& last = values_[rows_.size() - 1];
  return last.type() == VT_I2 && last->iVal != 0;
}

// The host's variable would still enter the call with this value.
bool Arguments::Untouched(size_t row) {
  Variant entered;
  return SUCCEEDED(OpenOutArgument(*places_[row], rows_[row].type, locale_, entered)) &&
         VarCmp(entered.get(), values_[row].get(), locale_, 0) == VARCMP_EQ;
}

HRESULT Arguments::StoreAnswers(bool lastIsResult) {
  const bool failed = lastIsResult && LastSaysFailure();
  HRESULT result = S_OK;
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (!(rows_[i].type.vt & VT_BYREF) || !places_[i]) continue;
    if (failed && i + 1 < rows_.size() && Untouched(i)) continue;
    const HRESULT stored = StoreAnswer(*places_[i], values_[i], locale_);
    if (FAILED(stored)) result = stored;
  }
  return result;
}

void Arguments::GiveLastAsResult(VARIANT& result) {
  if (rows_.empty()) return;
  values_[rows_.size() - 1].moveTo(result);
}

}  // namespace qrn::ole
