#include "host/designer/wizard/DialogTemplate.h"

namespace qrn::designer {
namespace {

constexpr WORD kPoints = 9;
constexpr wchar_t kFace[] = L"ＭＳ Ｐゴシック";

}  // namespace

DialogTemplate::DialogTemplate(short width, short height, const std::vector<DialogPiece>& pieces) {
  AddNumber(WS_CHILD | WS_CAPTION | DS_SETFONT | DS_CONTROL);
  AddNumber(0);
  words_.push_back(static_cast<WORD>(pieces.size()));
  for (const short number : {short{0}, short{0}, width, height}) {
    words_.push_back(static_cast<WORD>(number));
  }
  words_.insert(words_.end(), {0, 0});  // no menu, the usual class
  AddText({});
  words_.push_back(kPoints);
  AddText(kFace);
  for (const DialogPiece& piece : pieces) Add(piece);
}

void DialogTemplate::AddNumber(DWORD number) {
  words_.push_back(LOWORD(number));
  words_.push_back(HIWORD(number));
}

void DialogTemplate::AddText(const std::wstring& text) {
  words_.insert(words_.end(), text.begin(), text.end());
  words_.push_back(0);
}

// Each begins at a multiple of four bytes.
void DialogTemplate::Add(const DialogPiece& piece) {
  if (words_.size() % 2 != 0) words_.push_back(0);
  AddNumber(piece.style | WS_CHILD | WS_VISIBLE);
  AddNumber(0);
  for (const short number : {piece.left, piece.top, piece.width, piece.height}) {
    words_.push_back(static_cast<WORD>(number));
  }
  words_.push_back(piece.id);
  AddText(piece.className);
  AddText(piece.text);
  words_.push_back(0);  // no data of its own
}

}  // namespace qrn::designer
