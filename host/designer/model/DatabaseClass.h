// The database control: its class has one name in the module's type library, which is what Visual
// Basic writes, and another that everybody knows it by. Forms may have either.
#pragma once

#include <string>
#include <string_view>

#include "host/form/SourceText.h"

namespace qrn::designer {

inline constexpr std::string_view kDatabaseClass = "QuorinDb";
inline constexpr std::string_view kDatabaseName = "QRNBtr";

inline bool IsDatabaseClass(std::string_view className) noexcept {
  return form::SameWord(className, kDatabaseClass) || form::SameWord(className, kDatabaseName);
}

// What users call a module's class.
inline std::string UsersName(std::string_view className) {
  return std::string(form::SameWord(className, kDatabaseClass) ? kDatabaseName : className);
}

}  // namespace qrn::designer
