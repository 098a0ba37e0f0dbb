#include "host/user/StepWords.h"

#include <stdexcept>

#include "host/container/Text.h"
#include "host/user/Dialogs.h"

namespace qrn::host {

void Fail(const std::string& reason) { throw std::runtime_error(reason); }

std::string Quoted(std::wstring_view text) { return "\"" + Utf8(text) + "\""; }

bool Meets(const std::wstring& text, const std::string& sign, const std::wstring& wanted) {
  if (sign == "=") return text == wanted;
  if (sign == "<>") return text != wanted;
  return text.find(wanted) != std::wstring::npos;
}

std::string Described(HWND box) {
  return Quoted(BoxText(box)) + " (title " + Quoted(TextOfWindow(box)) + ")";
}

}  // namespace qrn::host
