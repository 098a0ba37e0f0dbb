#include "ole/Captioned.h"

namespace qrn::ole {
namespace {

// The virtual key that types a character; 0 for one that no key types.
WORD KeyTyping(wchar_t character) {
  const SHORT key = VkKeyScanW(character);
  return key != -1 ? WORD{LOBYTE(key)} : WORD{0};
}

WORD KeyBehindMark(std::wstring_view caption) {
  for (size_t i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != L'&') continue;
    const wchar_t next = caption[++i];
    if (next != L'&') return KeyTyping(next);
  }
  return 0;
}

}  // namespace

void Mnemonic::Tell(std::wstring_view caption, CONTROLINFO& info) noexcept {
  ACCEL key{FALT | FVIRTKEY, KeyBehindMark(caption), 0};
  keys_.reset(key.key != 0 ? CreateAcceleratorTableW(&key, 1) : nullptr);
  info.hAccel = keys_.get();
  info.cAccel = keys_ ? 1 : 0;
}

}  // namespace qrn::ole
