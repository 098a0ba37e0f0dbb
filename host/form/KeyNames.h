// Keys by the names people give them: Tab, F5, Ctrl+Shift+A, Alt+S.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace qrn::form {

// The system's virtual key code and what is held down meanwhile.
struct KeyChord {
  uint16_t virtualKey = 0;
  bool shift = false;
  bool control = false;
  bool alt = false;

  bool operator==(const KeyChord&) const = default;
};

// Nothing if a part between the plus signs is no key. Case does not matter.
std::optional<KeyChord> KeyChordOf(std::string_view text) noexcept;

}  // namespace qrn::form
