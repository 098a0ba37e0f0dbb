// The one routine that shows a failure to the user: a numbered text of the string table, formatted
// and shown in a message box. It decides nothing; the caller goes on to return its own code.
#pragma once

#include <cstdarg>

namespace qrn {

// clang-format off
// Ids of the string table (resources/Messages.inc), by the code that the text begins with.
enum MessageId : int {
  kVE001 = 115, kVE011 = 119, kVE007 = 120, kVE015 = 123, kVE019 = 127, kVE020 = 128, kVE023 = 131,
  kVE025 = 140, kVE028 = 143, kVE029 = 144, kVE030 = 145, kVE031 = 146, kVE039 = 147, kVE040 = 148,
  kVE041 = 149, kVE042 = 150, kVE043 = 151, kVE044 = 152, kVE046 = 154, kVE801 = 171, kVE802 = 172,
  kVE803 = 173, kVE804 = 174, kVE806 = 176, kVE807 = 177, kVE808 = 178, kVE809 = 179, kVE810 = 180,
  kVE811 = 181, kVE812 = 182, kVE813 = 183, kVE814 = 184, kVE816 = 186, kVE817 = 187, kVE818 = 188,
  kVE819 = 189, kVE820 = 190, kVE821 = 191, kVE822 = 192, kVE823 = 193,
};
// clang-format on

// Shows text `id` with its %s (const char*) and %d (int) filled in, owned by nobody, task modal.
// Returns the box's answer. An id of no row shows an empty box. Long arguments are cut: the
// formatted text is at most 1,023 bytes.
int ShowMessage(int id, ...) noexcept;

// The same text shown by the system as the process ends: what the export QuorinFatalAppExit does
// with its arguments. Returns only where a test stands in the exit's place.
void ExitWithMessage(int id, va_list arguments) noexcept;

}  // namespace qrn
