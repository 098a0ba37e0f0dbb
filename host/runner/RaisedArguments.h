// The parameters of an event that the runner raises itself.
#pragma once

#include <oaidl.h>

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace qrn::host {

// A parameter the handler may change.
inline VARIANT ByReference(int16_t& number) noexcept {
  VARIANT value{};
  value.vt = VT_BYREF | VT_I2;
  value.piVal = &number;
  return value;
}

inline VARIANT ByValue(int16_t number) noexcept {
  VARIANT value{};
  value.vt = VT_I2;
  value.iVal = number;
  return value;
}

inline VARIANT ByValue(float number) noexcept {
  VARIANT value{};
  value.vt = VT_R4;
  value.fltVal = number;
  return value;
}

// Takes parameters in the order they are declared and holds them as the system passes them. None
// of them owns anything.
class RaisedArguments {
 public:
  RaisedArguments(std::initializer_list<VARIANT> declared) : list_(declared) {
    std::reverse(list_.begin(), list_.end());
    parameters_.rgvarg = list_.data();
    parameters_.cArgs = static_cast<UINT>(list_.size());
  }
  RaisedArguments(const RaisedArguments&) = delete;
  RaisedArguments& operator=(const RaisedArguments&) = delete;

  DISPPARAMS& get() noexcept { return parameters_; }

 private:
  std::vector<VARIANT> list_;
  DISPPARAMS parameters_{};
};

}  // namespace qrn::host
