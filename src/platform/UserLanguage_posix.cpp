#include <cstdlib>
#include <string_view>

#include "platform/UserLanguage.h"

namespace qrn {

Language UserLanguage() noexcept {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* set = std::getenv(name);
    if (set == nullptr || *set == '\0') continue;
    return std::string_view(set).starts_with("ja") ? Language::Japanese : Language::English;
  }
  return Language::English;
}

}  // namespace qrn
