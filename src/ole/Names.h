// Members of a table by name, looked up where the code is compiled: a name that no row has, and
// arguments that are not its row's, do not compile.
//
//   ole::Fire<kQRNBtnTable, "BtrieveError">(control, table.get(), &status);
//   Change(ole::IdOf<kQRNEditTable, "MaxLength">, [&] { ... });
#pragma once

#include <array>

#include "ole/Control.h"
#include "ole/Marshal.h"

namespace qrn::ole {

namespace detail {

// A literal as a template's argument.
template <size_t N>
struct Name {
  consteval Name(const char (&literal)[N]) { std::copy_n(literal, N, text); }
  constexpr std::string_view view() const { return {text, N - 1}; }
  char text[N];
};

constexpr std::span<const EventRow> EventsOf(const ControlTable& table) { return table.events; }
template <size_t N>
constexpr std::span<const EventRow> EventsOf(const std::array<EventRow, N>& rows) {
  return rows;
}

template <class Row>
consteval Row Named(std::span<const Row> rows, std::string_view name) {
  for (const Row& row : rows) {
    if (row.name == name) return row;
  }
  throw "no row has that name";
}

// What an event's argument is in C++: numbers and texts by value, pointers for those that handlers
// may change.
template <class A>
inline constexpr VarType kEventType = vt::kEmpty;
template <>
inline constexpr VarType kEventType<int16_t> = vt::kI2;
template <>
inline constexpr VarType kEventType<int32_t> = vt::kI4;
template <>
inline constexpr VarType kEventType<float> = vt::kR4;
template <>
inline constexpr VarType kEventType<BSTR> = vt::kBstr;
template <>
inline constexpr VarType kEventType<int16_t*> = vt::kI2 | vt::kByRef;
template <>
inline constexpr VarType kEventType<int32_t*> = vt::kI4 | vt::kByRef;
template <>
inline constexpr VarType kEventType<Bstr*> = vt::kBstr | vt::kByRef;

template <class... A>
consteval bool AreArgumentsOf(const EventRow& row) {
  if (row.arguments.size() != sizeof...(A)) return false;
  const std::array<VarType, sizeof...(A)> sent{kEventType<A>...};
  for (size_t i = 0; i < sent.size(); ++i) {
    if (sent[i] != row.arguments[i].type.vt) return false;
  }
  return true;
}

}  // namespace detail

// The id of a property. `Table` is a ControlTable.
template <const ControlTable& Table, detail::Name Property>
inline constexpr int32_t IdOf = detail::Named(Table.properties, Property.view()).id;

// Raises an event of `Table`: a ControlTable, or an array of the event rows that several have
// alike. Numbers and texts go by value; pointers to int16_t, int32_t and Bstr by reference, and
// handlers leave their answers there. Nothing is raised while the container has frozen events.
// Handlers may do anything, also let the control go.
template <const auto& Table, detail::Name Event, class... A>
void Fire(Control& control, A... arguments) {
  constexpr EventRow kRow = detail::Named(detail::EventsOf(Table), Event.view());
  static_assert(detail::AreArgumentsOf<A...>(kRow), "the arguments are not the event's");
  control.events().Raise(kRow.id, arguments...);
}

}  // namespace qrn::ole
