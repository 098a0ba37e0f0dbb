// Window messages of a control, and the tables that say which function handles which.
//
//   constexpr MessageRow<CQRNEdit> kEditWindow[] = {{WM_COMMAND, &CQRNEdit::OnCommand}};
//   bool CQRNEdit::OnWindowMessage(Message& m) {
//     return Route(*this, kEditWindow, m) || VisibleControl::OnWindowMessage(m);
//   }
#pragma once

#include <windows.h>

#include <span>

namespace qrn::com {

struct Message {
  HWND window;
  UINT id;
  WPARAM wParam;
  LPARAM lParam;
  LRESULT result = 0;  // what the handler answers
};

// A handler gives true when the message ends with it, false to let it go on to who stands behind.
template <class C>
struct MessageRow {
  UINT id;
  bool (C::*handle)(Message&);
};

// Hands the message to its row's handler; false when there is no row, or the handler lets it pass.
template <class C>
bool Route(C& control, std::span<const MessageRow<C>> rows, Message& message) {
  for (const MessageRow<C>& row : rows) {
    if (row.id == message.id) return (control.*row.handle)(message);
  }
  return false;
}
template <class C, size_t N>
bool Route(C& control, const MessageRow<C> (&rows)[N], Message& message) {
  return Route<C>(control, std::span<const MessageRow<C>>(rows), message);
}

}  // namespace qrn::com
