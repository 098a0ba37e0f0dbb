// C++ types that carry values of variant types, and how a value moves between the two.
#pragma once

#include <oaidl.h>

#include <concepts>
#include <cstdint>
#include <type_traits>

#include "ole/Kit.h"
#include "ole/tables/Members.h"

namespace qrn::ole {

class Control;

// Carrier<T>::Carries says which variant types a T holds; Take moves a variant's value out of it;
// Store fills an empty variant, whose type the caller has set.
template <class T>
struct Carrier;

template <>
struct Carrier<int16_t> {
  static constexpr bool Carries(VarType type) { return type == vt::kI2 || type == vt::kBool; }
  static int16_t& Place(VARIANT& value) noexcept { return value.iVal; }
  static int16_t Take(VARIANT& value) noexcept { return value.iVal; }
  static void Store(int16_t number, VARIANT& value) noexcept { value.iVal = number; }
};
template <>
struct Carrier<int32_t> {
  static constexpr bool Carries(VarType type) { return type == vt::kI4; }
  static int32_t& Place(VARIANT& value) noexcept { return value.intVal; }
  static int32_t Take(VARIANT& value) noexcept { return value.intVal; }
  static void Store(int32_t number, VARIANT& value) noexcept { value.intVal = number; }
};
template <>
struct Carrier<uint32_t> {
  static constexpr bool Carries(VarType type) { return type == vt::kUI4; }
  static uint32_t& Place(VARIANT& value) noexcept { return value.uintVal; }
  static uint32_t Take(VARIANT& value) noexcept { return value.uintVal; }
  static void Store(uint32_t number, VARIANT& value) noexcept { value.uintVal = number; }
};
template <>
struct Carrier<float> {
  static constexpr bool Carries(VarType type) { return type == vt::kR4; }
  static float& Place(VARIANT& value) noexcept { return value.fltVal; }
  static float Take(VARIANT& value) noexcept { return value.fltVal; }
  static void Store(float number, VARIANT& value) noexcept { value.fltVal = number; }
};
template <>
struct Carrier<Bstr> {
  static constexpr bool Carries(VarType type) { return type == vt::kBstr; }
  static Bstr Take(VARIANT& value) noexcept {
    return Bstr::Take(std::exchange(value.bstrVal, nullptr));
  }
  static void Store(Bstr text, VARIANT& value) noexcept { value.bstrVal = text.detach(); }
};
template <class I>
requires std::derived_from<I, IDispatch>
struct Carrier<Com<I>> {
  static constexpr bool Carries(VarType type) { return type == vt::kDispatch; }
  // An object without the interface counts as none.
  static Com<I> Take(VARIANT& value) noexcept { return Query<I>(value.pdispVal); }
  static void Store(Com<I> object, VARIANT& value) noexcept { value.pdispVal = object.detach(); }
};

// One argument of a call, alive while the call runs. Values and const references are taken from
// the variant; references are out arguments, and what the callee leaves goes back into it.
template <class A>
class Argument {
 public:
  using T = std::remove_cvref_t<A>;
  static constexpr bool Carries(VarType type) { return Carrier<T>::Carries(type); }

  explicit Argument(VARIANT& value) : held_(Carrier<T>::Take(value)) {}
  const T& value() const noexcept { return held_; }

 private:
  T held_;
};
template <class T>
requires(!std::is_const_v<T>) class Argument<T&> {
 public:
  static constexpr bool Carries(VarType type) {
    return (type & vt::kByRef) != 0 && Carrier<T>::Carries(type & ~vt::kByRef);
  }

  explicit Argument(VARIANT& value) : place_(value), held_(Carrier<T>::Take(value)) {}
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;
  ~Argument() { Carrier<T>::Store(std::move(held_), place_); }
  T& value() noexcept { return held_; }

 private:
  VARIANT& place_;
  T held_;
};
// A VARIANT as the host sent it, in place: it may itself be a reference.
template <>
class Argument<VARIANT&> {
 public:
  static constexpr bool Carries(VarType type) { return type == vt::kVariant; }

  explicit Argument(VARIANT& value) noexcept : place_(*value.pvarVal) {}
  VARIANT& value() noexcept { return place_; }

 private:
  VARIANT& place_;
};

}  // namespace qrn::ole
