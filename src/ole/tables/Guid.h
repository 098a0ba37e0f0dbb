// Identifiers of classes and interfaces, without a system header: the tables that carry them are
// read by tools and tests on every system.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace qrn::ole {

// Laid out as the system's GUID: 4 + 2 + 2 little-endian numbers, then 8 bytes. 16 bytes in all.
struct Guid {
  uint32_t data1 = 0;
  uint16_t data2 = 0;
  uint16_t data3 = 0;
  std::array<uint8_t, 8> data4{};

  constexpr bool operator==(const Guid&) const = default;
};
static_assert(sizeof(Guid) == 16);

namespace detail {
consteval uint64_t HexNumber(std::string_view digits) {
  uint64_t number = 0;
  for (char c : digits) {
    const bool digit = c >= '0' && c <= '9';
    if (!digit && !(c >= 'A' && c <= 'F')) throw "an identifier is written in capital hex digits";
    number = number * 16 + static_cast<uint64_t>(digit ? c - '0' : c - 'A' + 10);
  }
  return number;
}
}  // namespace detail

// The identifier written as "0BE35203-8F91-11CE-9DE3-00AA004BB851"; anything else does not compile.
consteval Guid MakeGuid(std::string_view text) {
  if (text.size() != 36) throw "an identifier has 36 characters";
  Guid made;
  made.data1 = static_cast<uint32_t>(detail::HexNumber(text.substr(0, 8)));
  made.data2 = static_cast<uint16_t>(detail::HexNumber(text.substr(9, 4)));
  made.data3 = static_cast<uint16_t>(detail::HexNumber(text.substr(14, 4)));
  for (size_t i = 0; i < 8; ++i) {
    made.data4[i] =
        static_cast<uint8_t>(detail::HexNumber(text.substr(i < 2 ? 19 + i * 2 : 20 + i * 2, 2)));
  }
  return made;
}

// "{0BE35203-8F91-11CE-9DE3-00AA004BB851}", as the registry writes it.
std::string GuidText(const Guid& id);

}  // namespace qrn::ole
