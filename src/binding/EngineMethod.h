// Functions of the engine as methods of a control: wide texts become code page bytes and back,
// numbers take the width of the row, and what the function gives goes into the last argument.
//
//   constexpr MethodEntry kBtrMethods[] = {{6, EngineMethod<CQRNBtr, &Database::DbOpen>}, ...};
//
// Out arguments are answered only with a result of 0.
#pragma once

#include <tuple>
#include <utility>

#include "binding/BoundControl.h"
#include "core/DbTypes.h"
#include "ole/Access.h"

namespace qrn {

namespace engine_method {

using ole::VarType;
namespace vt = ole::vt;

inline int32_t NumberIn(const VARIANT& value) noexcept {
  return value.vt == VT_I4 ? value.lVal : value.iVal;
}
inline void StoreNumber(int32_t number, VARIANT& value) noexcept {
  if (value.vt == VT_I4) {
    value.lVal = number;
  } else {
    value.iVal = static_cast<int16_t>(number);
  }
}
inline void StoreText(std::string_view text, VARIANT& value) {
  BSTR made = WidenToBstr(text).detach();
  SysFreeString(std::exchange(value.bstrVal, made));
}
constexpr bool IsNumber(VarType type) {
  return type == vt::kI2 || type == vt::kI4 || type == vt::kBool;
}
constexpr bool IsNumberOut(VarType type) {
  return (type & vt::kByRef) != 0 && IsNumber(type & ~vt::kByRef);
}

// One parameter of the function.
template <class P>
class Parameter;

template <>
class Parameter<const char*> {
 public:
  static constexpr bool Carries(VarType type) { return type == vt::kBstr; }
  explicit Parameter(VARIANT& value) : text_(NarrowText(com::Bstr::Copy(value.bstrVal))) {}
  const char* value() const noexcept { return text_.c_str(); }
  void Answer(VARIANT&) {}

 private:
  std::string text_;
};

template <std::integral N>
class Parameter<N> {
 public:
  static constexpr bool Carries(VarType type) { return IsNumber(type); }
  explicit Parameter(VARIANT& value) : number_(static_cast<N>(NumberIn(value))) {}
  N value() const noexcept { return number_; }
  void Answer(VARIANT&) {}

 private:
  N number_;
};

template <std::integral N>
class Parameter<N&> {
 public:
  static constexpr bool Carries(VarType type) { return IsNumberOut(type); }
  explicit Parameter(VARIANT& value) : number_(static_cast<N>(NumberIn(value))) {}
  N& value() noexcept { return number_; }
  void Answer(VARIANT& value) noexcept { StoreNumber(static_cast<int32_t>(number_), value); }

 private:
  N number_;
};

template <>
class Parameter<std::string&> {
 public:
  static constexpr bool Carries(VarType type) { return type == (vt::kBstr | vt::kByRef); }
  explicit Parameter(VARIANT&) {}
  std::string& value() noexcept { return text_; }
  void Answer(VARIANT& value) { StoreText(text_, value); }

 private:
  std::string text_;
};

// What the function gives.
template <class R>
struct Result {
  static constexpr bool Carries(VarType type) { return IsNumberOut(type); }
  static bool Succeeded(R result) noexcept { return result == 0; }
  static void Store(R result, VARIANT& value) noexcept { StoreNumber(result, value); }
};
template <>
struct Result<bool> {
  static constexpr bool Carries(VarType type) { return type == (vt::kBool | vt::kByRef); }
  static bool Succeeded(bool) noexcept { return true; }
  static void Store(bool result, VARIANT& value) noexcept {
    value.boolVal = result ? VARIANT_TRUE : VARIANT_FALSE;
  }
};
template <>
struct Result<NullableText> {
  static constexpr bool Carries(VarType type) { return type == (vt::kBstr | vt::kByRef); }
  static bool Succeeded(const NullableText&) noexcept { return true; }
  static void Store(const NullableText& result, VARIANT& value) {
    if (result) {
      StoreText(*result, value);
    } else {
      SysFreeString(std::exchange(value.bstrVal, nullptr));
    }
  }
};

template <class R, class... P>
struct Call {
  template <class F, size_t... I>
  static HRESULT Run(F function, VARIANT* values, std::index_sequence<I...>) {
    std::tuple<Parameter<P>...> parameters{values[I]...};
    const R result = function(std::get<I>(parameters).value()...);
    if (Result<R>::Succeeded(result)) (std::get<I>(parameters).Answer(values[I]), ...);
    Result<R>::Store(result, values[sizeof...(P)]);
    return S_OK;
  }
  template <class F>
  static HRESULT Run(F function, VARIANT* values) {
    return Run(function, values, std::index_sequence_for<P...>());
  }
  static constexpr bool Carries(size_t argument, VarType type) {
    bool (*const each[])(VarType) = {&Parameter<P>::Carries..., &Result<R>::Carries};
    return each[argument](type);
  }
  static constexpr size_t kCount = sizeof...(P) + 1;
};

template <class C, auto Function>
struct Of;
template <class C, class D, class R, class... P, R (D::*Function)(P...)>
struct Of<C, Function> : Call<R, P...> {
  static HRESULT Invoke(ole::Control& control, VARIANT* values) {
    D& object = static_cast<C&>(control);
    return Call<R, P...>::Run([&object](auto&&... each) { return (object.*Function)(each...); },
                              values);
  }
};
template <class C, class R, class... P, R (*Function)(P...) noexcept>
struct Of<C, Function> : Call<R, P...> {
  static HRESULT Invoke(ole::Control&, VARIANT* values) {
    return Call<R, P...>::Run(Function, values);
  }
};

}  // namespace engine_method

// `C` is the control's class; `Function` a member of one of its bases, or a free function.
template <class C, auto Function>
inline constexpr ole::MethodAccess EngineMethod{&engine_method::Of<C, Function>::Invoke,
                                                &engine_method::Of<C, Function>::Carries,
                                                engine_method::Of<C, Function>::kCount};

}  // namespace qrn
