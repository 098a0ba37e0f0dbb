// Lists that bind the rows of a control's table to its C++ class.
//
//   constexpr PropertyEntry kEditAccess[] = {
//       {1, Field<&CQRNEdit::DbSource>},
//       {4, Pair<&CQRNEdit::GetMaxLength, &CQRNEdit::PutMaxLength>},
//   };
//   constexpr auto kEditProperties = BindProperties<kQRNEditTable>(kEditAccess, kStockAccess);
//
// A get is `T Get() const` or `HRESULT Get(T&)`, a put `void Put(T)` or `HRESULT Put(T)`; indexed
// ones take their index first. A put that gives S_FALSE has changed nothing. A method gives void
// or HRESULT; after S_FALSE the host's variables stay as they are. T is int16_t, int32_t, uint32_t,
// float, Bstr or Com<interface>; out arguments of a method are references, a VARIANT that goes
// through as the host sent it is `VARIANT&`.
#pragma once

#include <array>
#include <concepts>
#include <utility>

#include "ole/Access.h"
#include "ole/Carrier.h"
#include "ole/tables/MemberChecks.h"

namespace qrn::ole {

namespace detail {

template <class C>
C& Self(Control& control) noexcept {
  return static_cast<C&>(control);
}

// A data member.
template <auto Member>
struct FieldOf;
template <class C, class T, T C::*Member>
struct FieldOf<Member> {
  static HRESULT Get(Control& control, VARIANT*, VARIANT& value) {
    Carrier<T>::Store(Self<C>(control).*Member, value);
    return S_OK;
  }
  static HRESULT Put(Control& control, VARIANT*, VARIANT& value) {
    Self<C>(control).*Member = Carrier<T>::Take(value);
    return S_OK;
  }
  static constexpr PropertyAccess kAccess{&Get, &Put, &Carrier<T>::Carries, 0};
};

// A member function with whatever arguments: calls it with values taken from variants.
template <class C, class R, class... A>
struct Call {
  template <class F, size_t... I>
  static R Run(Control& control, F function, VARIANT* values, std::index_sequence<I...>) {
    return (Self<C>(control).*function)(Argument<A>(values[I]).value()...);
  }
  template <class F>
  static R Run(Control& control, F function, VARIANT* values) {
    return Run(control, function, values, std::index_sequence_for<A...>());
  }
  template <class F>
  static HRESULT Result(Control& control, F function, VARIANT* values) {
    if constexpr (std::is_void_v<R>) {
      Run(control, function, values);
      return S_OK;
    } else {
      return Run(control, function, values);
    }
  }
  static constexpr bool Carries(size_t argument, VarType type) {
    bool (*const each[])(VarType) = {&Argument<A>::Carries..., nullptr};
    return each[argument](type);
  }
  static constexpr size_t kCount = sizeof...(A);
};
template <class F>
struct CallOf;
template <class C, class R, class... A>
struct CallOf<R (C::*)(A...)> : Call<C, R, A...> {};
template <class C, class R, class... A>
struct CallOf<R (C::*)(A...) const> : Call<C, R, A...> {};

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
    return detail::Call<C, R, T>::Result(control, Function, &value);
  }
};
template <class C, class R, class T, R (C::*Function)(int32_t, T)>
struct PutterOf<Function> {
  using Value = std::remove_cvref_t<T>;
  static constexpr size_t kIndexCount = 1;
  static HRESULT Put(Control& control, VARIANT* index, VARIANT& value) {
    VARIANT both[2] = {*index, value};
    value.vt = VT_EMPTY;  // the value moves into the call's own place
    const HRESULT result = detail::Call<C, R, int32_t, T>::Result(control, Function, both);
    VariantClear(&both[1]);
    return result;
  }
};

// Access to a data member.
template <auto Member>
inline constexpr PropertyAccess Field = detail::FieldOf<Member>::kAccess;

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
inline constexpr PropertyAccess FieldAndPut{&detail::FieldOf<Member>::Get, &PutterOf<Put>::Put,
                                            detail::FieldOf<Member>::kAccess.carries, 0};

// Runs a method.
template <auto Function>
struct MethodOf {
  using Call = detail::CallOf<decltype(Function)>;
  static HRESULT Run(Control& control, VARIANT* arguments) {
    return Call::Result(control, Function, arguments);
  }
  static constexpr MethodAccess kAccess{&Run, &Call::Carries, Call::kCount};
};
template <auto Function>
inline constexpr MethodAccess Method = MethodOf<Function>::kAccess;

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
