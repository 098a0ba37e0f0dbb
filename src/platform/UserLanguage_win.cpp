#include <windows.h>

#include "platform/UserLanguage.h"

namespace qrn {

Language UserLanguage() noexcept {
  const bool isJapanese = PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_JAPANESE;
  return isJapanese ? Language::Japanese : Language::English;
}

}  // namespace qrn
