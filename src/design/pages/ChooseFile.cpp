#include "design/pages/ChooseFile.h"

// clang-format off
#include <windows.h>
#include <commdlg.h>
// clang-format on

namespace qrn::design {

static_assert(sizeof(OPENFILENAMEA) == 152);

std::optional<std::string> ChooseDictionaryFile(HWND owner) {
  constexpr char kFilter[] = "*.DDF\0*.DDF\0";
  char path[260] = "*.DDF";
  OPENFILENAMEA question{};
  question.lStructSize = sizeof question;
  question.hwndOwner = owner;
  question.lpstrFilter = kFilter;
  question.lpstrFile = path;
  question.nMaxFile = sizeof path;
  // The program's current folder is not the page's to move.
  question.Flags = OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  if (!GetOpenFileNameA(&question)) return std::nullopt;
  return path;
}

}  // namespace qrn::design
