#include <windows.h>

#include "platform/LocalDate.h"
#include "platform/Seam.h"

namespace qrn {
namespace {

CalendarDate SystemDate() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return {now.wYear, now.wMonth, now.wDay};
}

constinit Seam<LocalDateFunction> today{&SystemDate};

}  // namespace

CalendarDate LocalDate() noexcept { return today(); }
LocalDateFunction ReplaceLocalDate(LocalDateFunction function) noexcept {
  return today.Replace(function);
}

}  // namespace qrn
