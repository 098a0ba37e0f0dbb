// Lists that bind the rows of a control's table to its C++ class.
//
//   constexpr PropertyEntry kEditAccess[] = {
//       {1, Field<&CQRNEdit::DbSource>},
//       {4, Pair<&CQRNEdit::GetMaxLength, &CQRNEdit::PutMaxLength>},
//   };
//   constexpr auto kEditProperties = BindProperties<kQRNEditTable>(kEditAccess, kStockAccess);
//
// A get is `T Get() const` or `HRESULT Get(T&)`, a put `void Put(T)` or `HRESULT Put(T)`; indexed
// ones take their index first. A put that gives S_FALSE has changed nothing. T is int16_t, int32_t,
// uint32_t, float, Bstr or Com<interface>.
//
// A method is a member function of the control or, with the control's class as second argument, of
// one of its bases, or a free function. One that gives void or HRESULT finds all arguments of its
// row; after S_FALSE the host's variables stay as they are. What any other gives goes into the last
// argument (Marshal.h). Out arguments are references; a VARIANT that goes through as the host sent
// it is `VARIANT&`; texts may be `const char*` and `std::string&`, code page 932.
#pragma once

#include <array>
#include <concepts>
#include <tuple>
#include <utility>

#include "ole/Access.h"
#include "ole/Marshal.h"
#include "ole/tables/MemberChecks.h"

namespace qrn::ole {

namespace detail {

template <class C>
C& Self(Control& control) noexcept {
  return static_cast<C&>(control);
}

// A data member; `As` is the control's class, where the member is of a base that is no Control.
template <auto Member, class As>
struct FieldOf;
template <class C, class T, T C::*Member, class As>
struct FieldOf<Member, As> {
  using Class = std::conditional_t<std::is_void_v<As>, C, As>;
  static HRESULT Get(Control& control, VARIANT*, VARIANT& value) {
    Carrier<T>::Store(Self<Class>(control).*Member, value);
    return S_OK;
  }
  static HRESULT Put(Control& control, VARIANT*, VARIANT& value) {
    Self<Class>(control).*Member = Carrier<T>::Take(value);
    return S_OK;
  }
  static constexpr PropertyAccess kAccess{&Get, &Put, &Carrier<T>::Carries, 0};
};

// Calls `function` with values taken from variants, and stores its answers there.
template <class R, class... A>
struct Call {
  static constexpr size_t kCount = sizeof...(A) + (Result<R>::kIsAnswer ? 1 : 0);

  template <class F, size_t... I>
  static HRESULT Run(F function, VARIANT* values, std::index_sequence<I...>) {
    std::tuple<Argument<A>...> arguments{values[I]...};
    const auto answer = [&] { (std::get<I>(arguments).Answer(values[I]), ...); };
    if constexpr (std::is_void_v<R>) {
      function(std::get<I>(arguments).value()...);
      answer();
      return S_OK;
    } else if constexpr (std::is_same_v<R, HRESULT>) {
      const HRESULT result = function(std::get<I>(arguments).value()...);
      if (SUCCEEDED(result)) answer();
      return result;
    } else {
      const R result = function(std::get<I>(arguments).value()...);
      if (Result<R>::Succeeded(result)) answer();
      Result<R>::Store(result, values[sizeof...(A)]);
      return S_OK;
    }
  }
  template <class F>
  static HRESULT Run(F function, VARIANT* values) {
    return Run(function, values, std::index_sequence_for<A...>());
  }
  static constexpr bool Carries(size_t argument, VarType type) {
    if constexpr (Result<R>::kIsAnswer) {
      if (argument == sizeof...(A)) return Result<R>::Carries(type);
    }
    bool (*const each[])(VarType) = {&Argument<A>::Carries..., nullptr};
    return each[argument](type);
  }
};

// A member function of whatever arguments, or a free one.
template <auto Function, class As>
struct CallOf;
template <class C, class R, class... A, R (C::*Function)(A...), class As>
struct CallOf<Function, As> : Call<R, A...> {
  static HRESULT Invoke(Control& control, VARIANT* values) {
    using Class = std::conditional_t<std::is_void_v<As>, C, As>;
    C& object = Self<Class>(control);
    return Call<R, A...>::Run(
        [&object](auto&&... each) -> R { return (object.*Function)(each...); }, values);
  }
};
template <class C, class R, class... A, R (C::*Function)(A...) const, class As>
struct CallOf<Function, As> : Call<R, A...> {
  static HRESULT Invoke(Control& control, VARIANT* values) {
    using Class = std::conditional_t<std::is_void_v<As>, C, As>;
    const C& object = Self<Class>(control);
    return Call<R, A...>::Run(
        [&object](auto&&... each) -> R { return (object.*Function)(each...); }, values);
  }
};
template <class R, class... A, R (*Function)(A...) noexcept, class As>
struct CallOf<Function, As> : Call<R, A...> {
  static HRESULT Invoke(Control&, VARIANT* values) { return Call<R, A...>::Run(Function, values); }
};

}  // namespace detail

// Getter that returns the value: `T Get() const`.
template <auto Get>
struct GetterOf;
template <class C, class T, T (C::*Function)() const>
struct GetterOf<Function> {
  using Value = T;
  static constexpr size_t kIndexCount = 0;
  static HRESULT Get(Control& control, VARIANT*, VARIANT& value) {
    Carrier<T>::Store((detail::Self<C>(control).*Function)(), value);
    return S_OK;
  }
};
template <class C, class T, HRESULT (C::*Function)(T&)>
struct GetterOf<Function> {
  using Value = T;
  static constexpr size_t kIndexCount = 0;
  static HRESULT Get(Control& control, VARIANT*, VARIANT& value) {
    T got{};
    const HRESULT result = (detail::Self<C>(control).*Function)(got);
    if (SUCCEEDED(result)) Carrier<T>::Store(got, value);
    return result;
  }
};
template <class C, class T, HRESULT (C::*Function)(int32_t, T&)>
struct GetterOf<Function> {
  using Value = T;
  static constexpr size_t kIndexCount = 1;
  static HRESULT Get(Control& control, VARIANT* index, VARIANT& value) {
    T got{};
    const HRESULT result = (detail::Self<C>(control).*Function)(index->lVal, got);
    if (SUCCEEDED(result)) Carrier<T>::Store(got, value);
    return result;
  }
};

template <auto Put>
struct PutterOf;
template <class C, class R, class T, R (C::*Function)(T)>
struct PutterOf<Function> {
  using Value = std::remove_cvref_t<T>;
  static constexpr size_t kIndexCount = 0;
  static HRESULT Put(Control& control, VARIANT*, VARIANT& value) {
    const auto put = [&](const Value& taken) {
      return (detail::Self<C>(control).*Function)(taken);
    };
    return detail::Call<R, const Value&>::Run(put, &value);
  }
};
template <class C, class R, class T, R (C::*Function)(int32_t, T)>
struct PutterOf<Function> {
  using Value = std::remove_cvref_t<T>;
  static constexpr size_t kIndexCount = 1;
  static HRESULT Put(Control& control, VARIANT* index, VARIANT& value) {
    const auto put = [&](const Value& taken) {
      return (detail::Self<C>(control).*Function)(index->lVal, taken);
    };
    return detail::Call<R, const Value&>::Run(put, &value);
  }
};

// Access to a data member of the control, or of the base of control class `As`.
template <auto Member, class As = void>
inline constexpr PropertyAccess Field = detail::FieldOf<Member, As>::kAccess;

// Access by a getter alone.
template <auto Get>
inline constexpr PropertyAccess Getter{&GetterOf<Get>::Get, nullptr,
                                       &Carrier<typename GetterOf<Get>::Value>::Carries,
                                       GetterOf<Get>::kIndexCount};

// Access by two functions of one type.
template <auto Get, auto Put>
requires std::same_as < typename GetterOf<Get>::Value,
typename PutterOf<Put>::Value >
    inline constexpr PropertyAccess Pair{&GetterOf<Get>::Get, &PutterOf<Put>::Put,
                                         &Carrier<typename GetterOf<Get>::Value>::Carries,
                                         GetterOf<Get>::kIndexCount};

// Access to a data member for gets, by a function for puts.
template <auto Member, auto Put>
inline constexpr PropertyAccess FieldAndPut{&detail::FieldOf<Member, void>::Get,
                                            &PutterOf<Put>::Put,
                                            detail::FieldOf<Member, void>::kAccess.carries, 0};

// Runs a method.
template <auto Function, class As = void>
inline constexpr MethodAccess Method{&detail::CallOf<Function, As>::Invoke,
                                     &detail::CallOf<Function, As>::Carries,
                                     detail::CallOf<Function, As>::kCount};

namespace detail {

template <class Access, class Entry, size_t N, class... More>
constexpr const Access* FindAccess(int32_t id, const Entry (&entries)[N], const More&... more) {
  for (const Entry& entry : entries) {
    if (entry.id == id) return &entry.access;
  }
  if constexpr (sizeof...(more) > 0) {
    return FindAccess<Access>(id, more...);
  } else {
    return nullptr;
  }
}

constexpr bool Suits(const PropertyRow& row, const PropertyAccess& access) {
  const bool put = !(row.rules & (kReadOnly | kPutFails));
  return access.get && (!put || access.put) && access.indexCount == row.index.size() &&
         access.carries(row.type.vt);
}
constexpr bool Suits(const MethodRow& row, const MethodAccess& access) {
  if (access.argumentCount != row.arguments.size()) return false;
  for (size_t i = 0; i < row.arguments.size(); ++i) {
    if (!access.carries(i, row.arguments[i].type.vt)) return false;
  }
  return true;
}

template <const ControlTable& Table, class... Lists>
consteval auto BindPropertyRows(const Lists&... lists) {
  std::array<PropertyAccess, Table.properties.size()> bound{};
  for (size_t i = 0; i < bound.size(); ++i) {
    const PropertyRow& row = Table.properties[i];
    const auto* access = FindAccess<PropertyAccess>(row.id, lists...);
    if (!access) throw "a property has no access";
    if (!Suits(row, *access)) throw "a property's access does not suit its row";
    bound[i] = *access;
  }
  return bound;
}

template <const ControlTable& Table, class... Lists>
consteval auto BindMethodRows(const Lists&... lists) {
  std::array<MethodAccess, Table.methods.size()> bound{};
  for (size_t i = 0; i < bound.size(); ++i) {
    const MethodRow& row = Table.methods[i];
    const auto* access = FindAccess<MethodAccess>(row.id, lists...);
    if (!access) throw "a method has no function";
    if (!Suits(row, *access)) throw "a method's function does not suit its row";
    bound[i] = *access;
  }
  return bound;
}

}  // namespace detail

// Accesses of a table's properties: each row takes the first entry of its id. Does not compile
// when a row has none, or one of another type.
template <const ControlTable& Table, class... Lists>
consteval auto BindProperties(const Lists&... lists) {
  return detail::BindPropertyRows<Table>(lists...);
}
template <const ControlTable& Table, class... Lists>
consteval auto BindMethods(const Lists&... lists) {
  return detail::BindMethodRows<Table>(lists...);
}

}  // namespace qrn::ole
