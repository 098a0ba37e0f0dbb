#include "SystemCalls.h"

#include <utility>

// Where the program's import table holds the functions.
extern "C" {
extern decltype(&MessageBoxW) __imp_MessageBoxW;
extern decltype(&MessageBeep) __imp_MessageBeep;
}

namespace qrn::test {
namespace {

// Puts a function into a slot of the import table; gives the former.
template <class Function>
Function Exchange(Function& slot, Function function) {
  DWORD before = 0;
  VirtualProtect(&slot, sizeof slot, PAGE_READWRITE, &before);
  const Function former = std::exchange(slot, function);
  VirtualProtect(&slot, sizeof slot, before, &before);
  return former;
}

PlayedMessageBox* playing = nullptr;
decltype(&MessageBoxW) realBox = nullptr;
decltype(&MessageBeep) realBeep = nullptr;
std::string beeps;

BOOL WINAPI NoteBeep(UINT kind) {
  beeps += std::to_string(kind) + " ";
  return TRUE;
}

}  // namespace

PlayedMessageBox::PlayedMessageBox(int answer) : answer_(answer) {
  playing = this;
  realBox = Exchange(__imp_MessageBoxW, &Show);
}

PlayedMessageBox::~PlayedMessageBox() { Exchange(__imp_MessageBoxW, realBox); }

int WINAPI PlayedMessageBox::Show(HWND owner, LPCWSTR text, LPCWSTR title, UINT kind) {
  playing->owner = owner;
  playing->text = text;
  playing->title = title;
  playing->kind = kind;
  ++playing->calls;
  if (playing->onShow) playing->onShow();
  return playing->answer_;
}

PlayedBeep::PlayedBeep() {
  beeps.clear();
  realBeep = Exchange(__imp_MessageBeep, &NoteBeep);
}

PlayedBeep::~PlayedBeep() { Exchange(__imp_MessageBeep, realBeep); }

std::string PlayedBeep::Take() { return std::exchange(beeps, {}); }

}  // namespace qrn::test
