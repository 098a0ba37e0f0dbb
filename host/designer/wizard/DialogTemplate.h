// A dialog's template made at run time from rows, so that its texts can be in either language.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace qrn::designer {

// Places are dialog units: a quarter of a character across, an eighth down.
struct DialogPiece {
  const wchar_t* className;  // Edit, Button, Static, a list view's ...
  DWORD style;               // besides WS_CHILD and WS_VISIBLE
  short left, top, width, height;
  WORD id;
  std::wstring text;
};

class DialogTemplate {
 public:
  DialogTemplate(short width, short height, const std::vector<DialogPiece>& pieces);
  const DLGTEMPLATE* get() const noexcept {
    return reinterpret_cast<const DLGTEMPLATE*>(words_.data());
  }

 private:
  void Add(const DialogPiece& piece);
  void AddNumber(DWORD number);
  void AddText(const std::wstring& text);

  std::vector<WORD> words_;
};

}  // namespace qrn::designer
