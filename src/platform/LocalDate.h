#pragma once

namespace qrn {

struct CalendarDate {
  int year;   // full, such as 2024
  int month;  // 1 to 12
  int day;    // 1 to 31
};

using LocalDateFunction = CalendarDate (*)();

// Today by the local clock.
CalendarDate LocalDate() noexcept;

// Puts another function in the clock's place; null brings the clock back. Returns what stood there.
LocalDateFunction ReplaceLocalDate(LocalDateFunction function) noexcept;

}  // namespace qrn
