// How values move between the variants of a call and C++: one way for the members of controls and
// for functions of the engine.
//
//   Carrier<T>    a property's value, or one of a member's arguments, in a T
//   Argument<P>   one parameter of a function, alive while the call runs
//   Result<R>     what a function gives, where that is an answer
#pragma once

#include <oaidl.h>

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

#include "ole/Kit.h"
#include "ole/tables/Members.h"

namespace qrn::ole {

// Carrier<T>::Carries says which variant types a T holds. Take moves a variant's value out of it,
// Copy leaves it there; Store fills a variant whose type the caller has set, and frees what stood
// in it.
template <class T>
struct Carrier;

namespace detail {

// A number that stands in the variant itself.
template <class T, auto Member>
struct PlainCarrier {
  static T Copy(const VARIANT& value) noexcept { return static_cast<T>(value.*Member); }
  static T Take(VARIANT& value) noexcept { return Copy(value); }
  static void Store(T number, VARIANT& value) noexcept {
    value.*Member = static_cast<std::remove_reference_t<decltype(value.*Member)>>(number);
  }
};

constexpr bool IsNumber(VarType type) {
  return type == vt::kI2 || type == vt::kI4 || type == vt::kBool;
}
constexpr bool IsOut(VarType type) { return (type & vt::kByRef) != 0; }
constexpr VarType Behind(VarType type) { return static_cast<VarType>(type & ~vt::kByRef); }

// A number in the width of the variant's own type.
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

}  // namespace detail

template <>
struct Carrier<int16_t> : detail::PlainCarrier<int16_t, &VARIANT::iVal> {
  static constexpr bool Carries(VarType type) { return type == vt::kI2 || type == vt::kBool; }
};
template <>
struct Carrier<int32_t> : detail::PlainCarrier<int32_t, &VARIANT::lVal> {
  static constexpr bool Carries(VarType type) { return type == vt::kI4; }
};
template <>
struct Carrier<uint32_t> : detail::PlainCarrier<uint32_t, &VARIANT::ulVal> {
  static constexpr bool Carries(VarType type) { return type == vt::kUI4; }
};
template <>
struct Carrier<float> : detail::PlainCarrier<float, &VARIANT::fltVal> {
  static constexpr bool Carries(VarType type) { return type == vt::kR4; }
};
template <>
struct Carrier<Bstr> {
  static constexpr bool Carries(VarType type) { return type == vt::kBstr; }
  static Bstr Copy(const VARIANT& value) { return Bstr::Copy(value.bstrVal); }
  static Bstr Take(VARIANT& value) noexcept {
    return Bstr::Take(std::exchange(value.bstrVal, nullptr));
  }
  static void Store(Bstr text, VARIANT& value) noexcept { text.moveTo(value.bstrVal); }
};
template <class I>
requires std::derived_from<I, IDispatch>
struct Carrier<Com<I>> {
  static constexpr bool Carries(VarType type) { return type == vt::kDispatch; }
  // An object without the interface counts as none.
  static Com<I> Copy(const VARIANT& value) noexcept { return Query<I>(value.pdispVal); }
  static Com<I> Take(VARIANT& value) noexcept { return Copy(value); }
  static void Store(Com<I> object, VARIANT& value) noexcept {
    Com<IDispatch>::Take(std::exchange(value.pdispVal, object.detach()));
  }
};

// A parameter that is a value or a const reference.
template <class P>
class Argument {
 public:
  using T = std::remove_cvref_t<P>;
  static constexpr bool Carries(VarType type) { return Carrier<T>::Carries(type); }

  explicit Argument(VARIANT& value) : held_(Carrier<T>::Take(value)) {}
  const T& value() const noexcept { return held_; }
  void Answer(VARIANT&) noexcept {}

 private:
  T held_;
};
// A reference is an out argument; Answer stores what the function left there.
template <class T>
requires(!std::is_const_v<T> && !std::integral<T>) class Argument<T&> {
 public:
  static constexpr bool Carries(VarType type) {
    return detail::IsOut(type) && Carrier<T>::Carries(detail::Behind(type));
  }

  explicit Argument(VARIANT& value) : held_(Carrier<T>::Copy(value)) {}
  T& value() noexcept { return held_; }
  void Answer(VARIANT& value) { Carrier<T>::Store(std::move(held_), value); }

 private:
  T held_;
};
// Numbers of a call may be wider than the row says.
template <std::integral N>
class Argument<N> {
 public:
  static constexpr bool Carries(VarType type) { return detail::IsNumber(type); }

  explicit Argument(VARIANT& value) noexcept : held_(static_cast<N>(detail::NumberIn(value))) {}
  N value() const noexcept { return held_; }
  void Answer(VARIANT&) noexcept {}

 private:
  N held_;
};
template <std::integral N>
requires(!std::is_const_v<N>) class Argument<N&> {
 public:
  static constexpr bool Carries(VarType type) {
    return detail::IsOut(type) && detail::IsNumber(detail::Behind(type));
  }

  explicit Argument(VARIANT& value) noexcept : held_(static_cast<N>(detail::NumberIn(value))) {}
  N& value() noexcept { return held_; }
  void Answer(VARIANT& value) noexcept { detail::StoreNumber(static_cast<int32_t>(held_), value); }

 private:
  N held_;
};
// Texts as the engine takes and gives them: code page 932.
template <>
class Argument<const char*> {
 public:
  static constexpr bool Carries(VarType type) { return type == vt::kBstr; }

  explicit Argument(VARIANT& value) : held_(NarrowText(Carrier<Bstr>::Take(value))) {}
  const char* value() const noexcept { return held_.c_str(); }
  void Answer(VARIANT&) noexcept {}

 private:
  std::string held_;
};
// Empty when the call begins.
template <>
class Argument<std::string&> {
 public:
  static constexpr bool Carries(VarType type) { return type == (vt::kBstr | vt::kByRef); }

  explicit Argument(VARIANT&) {}
  std::string& value() noexcept { return held_; }
  void Answer(VARIANT& value) { Carrier<Bstr>::Store(WidenToBstr(held_), value); }

 private:
  std::string held_;
};
// A VARIANT as the host sent it, in place: it may itself be a reference.
template <>
class Argument<VARIANT&> {
 public:
  static constexpr bool Carries(VarType type) { return type == vt::kVariant; }

  explicit Argument(VARIANT& value) noexcept : place_(*value.pvarVal) {}
  VARIANT& value() noexcept { return place_; }
  void Answer(VARIANT&) noexcept {}

 private:
  VARIANT& place_;
};

// What a function gives goes into the row's last argument, but for void and HRESULT, which are the
// call's own. Out arguments are answered only when the result is a success.
template <class R>
struct Result {
  static constexpr bool kIsAnswer = true;
  static constexpr bool Carries(VarType type) { return Argument<R&>::Carries(type); }
  static bool Succeeded(R result) noexcept { return result == 0; }
  static void Store(R result, VARIANT& value) noexcept { detail::StoreNumber(result, value); }
};
template <>
struct Result<void> {
  static constexpr bool kIsAnswer = false;
};
template <>
struct Result<HRESULT> {
  static constexpr bool kIsAnswer = false;
};
template <>
struct Result<bool> {
  static constexpr bool kIsAnswer = true;
  static constexpr bool Carries(VarType type) { return type == (vt::kBool | vt::kByRef); }
  static bool Succeeded(bool) noexcept { return true; }
  static void Store(bool result, VARIANT& value) noexcept {
    value.boolVal = result ? VARIANT_TRUE : VARIANT_FALSE;
  }
};
// Code page 932; nothing gives a null text.
template <>
struct Result<std::optional<std::string>> {
  static constexpr bool kIsAnswer = true;
  static constexpr bool Carries(VarType type) { return type == (vt::kBstr | vt::kByRef); }
  static bool Succeeded(const std::optional<std::string>&) noexcept { return true; }
  static void Store(const std::optional<std::string>& result, VARIANT& value) {
    Carrier<Bstr>::Store(result ? WidenToBstr(*result) : Bstr(), value);
  }
};

}  // namespace qrn::ole
