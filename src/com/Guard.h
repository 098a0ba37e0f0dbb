// The boundary of every interface method: no exception leaves it.
#pragma once

#include <windows.h>

#include <new>
#include <utility>

namespace qrn::com {

// A failure that travels as an exception inside the service, and as its code outside.
struct Failure {
  HRESULT code;
};

// Throws for a failed code; successes, S_FALSE among them, pass.
inline void Check(HRESULT code) {
  if (FAILED(code)) throw Failure{code};
}

// Runs a method's body, a callable giving HRESULT, and turns what it throws into a code.
template <class Body>
HRESULT Guard(Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (const Failure& failure) {
    return failure.code;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

// Property failures as hosts know them: Visual Basic shows the low 16 bits as its error number.
inline constexpr HRESULT kInvalidPropertyValue = static_cast<HRESULT>(0x800A017C);  // 380
inline constexpr HRESULT kInvalidArrayIndex = static_cast<HRESULT>(0x800A017D);     // 381
inline constexpr HRESULT kPropertyIsReadOnly = static_cast<HRESULT>(0x800A017F);    // 383
inline constexpr HRESULT kNotAvailableNow = static_cast<HRESULT>(0x800A018A);       // 394
inline constexpr HRESULT kControlOutOfMemory = static_cast<HRESULT>(0x800A0007);    // 7

}  // namespace qrn::com
