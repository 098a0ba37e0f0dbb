#include "ole/MousePointer.h"

#include <algorithm>
#include <iterator>

#include "ole/Kit.h"

namespace qrn::ole {
namespace {

struct PointerRow {
  int pointer;
  LPCSTR cursor;
};
// 6 and 8 show the cursor of the other diagonal than their names say, and forms are used to it.
// clang-format off
const PointerRow kPointers[] = {
    { 1, IDC_ARROW},    { 2, IDC_CROSS},       { 3, IDC_IBEAM},    { 4, IDC_ARROW},
    { 5, IDC_SIZEALL},  { 6, IDC_SIZENWSE},    { 7, IDC_SIZENS},   { 8, IDC_SIZENESW},
    { 9, IDC_SIZEWE},   {10, IDC_UPARROW},     {11, IDC_WAIT},     {12, IDC_NO},
    {13, IDC_APPSTARTING}, {14, IDC_HELP},     {15, IDC_SIZEALL},
};
// clang-format on

HCURSOR CursorOf(IPictureDisp* icon) noexcept {
  const auto picture = Query<IPicture>(icon);
  OLE_HANDLE handle = 0;
  if (!picture || FAILED(picture->get_Handle(&handle))) return nullptr;
  return reinterpret_cast<HCURSOR>(static_cast<ULONG_PTR>(handle));
}

HCURSOR CursorFor(int pointer, IPictureDisp* icon) noexcept {
  if (pointer == kPointerUserDefined) return CursorOf(icon);
  const auto* row = std::ranges::find(kPointers, pointer, &PointerRow::pointer);
  return row == std::end(kPointers) ? nullptr : LoadCursorA(nullptr, row->cursor);
}

}  // namespace

bool MapMousePointer(int pointer, IPictureDisp* icon) noexcept {
  const HCURSOR cursor = CursorFor(pointer, icon);
  if (!cursor) return false;
  SetCursor(cursor);
  return true;
}

}  // namespace qrn::ole
