#include "binding/registry/FieldKinds.h"

#include <algorithm>
#include <span>

#include "binding/BoundFaces.h"
#include "binding/registry/ControlRegistry.h"

namespace qrn {
namespace {

constexpr size_t kEditTextSize = 4097;  // with its NUL

// States of a mark; a check box that its user marked holds -1, which is none of them.
constexpr int32_t kClear = 0;
constexpr int32_t kMarked = 1;
constexpr int32_t kIndeterminate = 2;

EditFace& Edit(CQuorin& control) { return static_cast<EditFace&>(control); }
MarkFace& Mark(CQuorin& control) { return static_cast<MarkFace&>(control); }
ListFace& List(CQuorin& control) { return static_cast<ListFace&>(control); }

bool ReadEdit(CQuorin& control, std::string& text) {
  text.resize(kEditTextSize);
  text.resize(ReadWindowText(Edit(control).ContainedWindow(), text));
  return true;
}

void WriteEdit(CQuorin& control, const DbTableInfo&, const char* text) {
  Edit(control).ShowFieldText(text);
}

void ClearEdit(CQuorin& control) { Edit(control).ClearFieldText(); }

bool ReadCheck(CQuorin& control, std::string& text) {
  MarkFace& mark = Mark(control);
  switch (mark.GetValue()) {
    case kClear:
      text = mark.GetValueFalse();
      return true;
    case kMarked:
      text = mark.GetValueTrue();
      return true;
    case kIndeterminate:
      text = mark.GetValueIndeterminate();
      return true;
    default:
      return false;
  }
}

bool ReadOption(CQuorin& control, std::string& text) {
  MarkFace& mark = Mark(control);
  text = mark.GetValue() != kClear ? mark.GetValueTrue() : mark.GetValueFalse();
  return true;
}

void SetMark(MarkFace& mark, int32_t state) {
  mark.SetValue(state);
  mark.ShowMark(state);
}

// Equal texts: the later state wins.
void WriteCheck(CQuorin& control, const DbTableInfo&, const char* text) {
  MarkFace& mark = Mark(control);
  if (mark.GetValueTrue() == text) SetMark(mark, kMarked);
  if (mark.GetValueFalse() == text) SetMark(mark, kClear);
  if (mark.GetValueIndeterminate() == text) SetMark(mark, kIndeterminate);
}

void WriteOption(CQuorin& control, const DbTableInfo&, const char* text) {
  MarkFace& mark = Mark(control);
  if (mark.GetValueTrue() == text) SetMark(mark, kMarked);
  if (mark.GetValueFalse() == text) SetMark(mark, kClear);
}

// Kept so: `Value` stays.
void ClearMark(CQuorin& control) { Mark(control).ShowMark(kClear); }

void WritePicture(CQuorin& control, const DbTableInfo& table, const char* text) {
  if (!TheRegistry().IsAlive(table)) return;
  static_cast<PictureFace&>(control).LoadPictureFromField(table, text);
}

bool ReadList(CQuorin& control, std::string& text) {
  text = List(control).SelectedText();
  return true;
}

void WriteList(CQuorin& control, const DbTableInfo&, const char* text) {
  List(control).SelectText(text);
}

void ClearList(CQuorin& control) { List(control).ClearSelection(); }

// clang-format off
constexpr FieldKind kFieldKinds[] = {
    {kTypeEdit,   ReadEdit,   WriteEdit,    ClearEdit},
    {kTypeCheck,  ReadCheck,  WriteCheck,   ClearMark},
    {kTypeOptBtn, ReadOption, WriteOption,  ClearMark},
    {kTypePic,    nullptr,    WritePicture, nullptr},
};
constexpr FieldKind kListKinds[] = {
    {kTypeListBox,    ReadList, WriteList, ClearList},
    {kTypeComboBox,   ReadList, WriteList, ClearList},
    {kTypeExListBox,  ReadList, WriteList, ClearList},
    {kTypeExComboBox, ReadList, WriteList, ClearList},
};
// clang-format on

const FieldKind* RowOf(std::span<const FieldKind> rows, ControlType type) noexcept {
  const auto row = std::ranges::find(rows, type, &FieldKind::type);
  return row != rows.end() ? &*row : nullptr;
}

}  // namespace

const FieldKind* FieldKindOf(ControlType type) noexcept { return RowOf(kFieldKinds, type); }
const FieldKind* ListKindOf(ControlType type) noexcept { return RowOf(kListKinds, type); }

}  // namespace qrn
