// A system service whose place tests may take: one function pointer with the real one behind it.
#pragma once

#include <utility>

namespace qrn {

template <class Function>
class Seam {
 public:
  constexpr explicit Seam(Function real) : real_(real) {}

  template <class... Arguments>
  auto operator()(Arguments... arguments) const {
    return (replacement_ != nullptr ? replacement_ : real_)(arguments...);
  }

  // Returns the replacement that stood there, null for the real function.
  Function Replace(Function replacement) { return std::exchange(replacement_, replacement); }

 private:
  Function real_;
  Function replacement_ = nullptr;
};

}  // namespace qrn
