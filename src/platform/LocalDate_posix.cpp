#include <ctime>

#include "platform/LocalDate.h"
#include "platform/Seam.h"

namespace qrn {
namespace {

CalendarDate SystemDate() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday};
}

constinit Seam<LocalDateFunction> today{&SystemDate};

}  // namespace

CalendarDate LocalDate() noexcept { return today(); }
LocalDateFunction ReplaceLocalDate(LocalDateFunction function) noexcept {
  return today.Replace(function);
}

}  // namespace qrn
