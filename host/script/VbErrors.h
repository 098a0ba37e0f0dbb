// Visual Basic's error numbers as the failures that code sees.
#pragma once

#include <windows.h>

namespace qrn::host {

// The high half of control error values.
inline constexpr unsigned kControlFacility = 0x800A0000u;

// A number from 1 to 65535 as a control error value, which carries it in its low half.
constexpr HRESULT VbError(int number) noexcept {
  return static_cast<HRESULT>(kControlFacility | static_cast<unsigned>(number));
}

inline constexpr HRESULT kInvalidCall = VbError(5);
inline constexpr HRESULT kFileNotFound = VbError(53);
inline constexpr HRESULT kNoElement = VbError(340);
inline constexpr HRESULT kNotAnArray = VbError(343);
inline constexpr HRESULT kObjectGone = VbError(358);
inline constexpr HRESULT kCannotLoad = VbError(360);
inline constexpr HRESULT kObjectRequired = VbError(424);
inline constexpr HRESULT kInvalidPicture = VbError(481);

}  // namespace qrn::host
