// The edit control's messages: what is typed and pasted, the focus.
#include "binding/tables/QRNEditTable.h"
#include "com/WindowText.h"
#include "controls/EditWindow.h"
#include "controls/QRNEdit.h"
#include "controls/text/CharacterMask.h"
#include "fields/DateRepair.h"
#include "ole/Names.h"

namespace qrn {
namespace {

constexpr UINT kRefusalBeep = MB_ICONHAND;
constexpr char16_t kFirstPrintable = 32;

}  // namespace

const com::MessageRow<CQRNEdit> CQRNEdit::kOwnMessages[] = {{WM_COMMAND, &CQRNEdit::OnCommand}};

const com::MessageRow<CQRNEdit> CQRNEdit::kContainedMessages[] = {
    {WM_CHAR, &CQRNEdit::OnChar},      {WM_PASTE, &CQRNEdit::OnPaste},
    {WM_SETFOCUS, &CQRNEdit::OnFocus}, {EM_REPLACESEL, &CQRNEdit::OnReplaceSelection},
    {WM_KILLFOCUS, &CQRNEdit::OnBlur}, {WM_SETTEXT, &CQRNEdit::OnSetText},
};

bool CQRNEdit::OnWindowMessage(com::Message& message) {
  return Route(*this, kOwnMessages, message) || FieldBound::OnWindowMessage(message);
}

bool CQRNEdit::OnContainedMessage(com::Message& message) {
  return Route(*this, kContainedMessages, message) || FieldBound::OnContainedMessage(message);
}

bool CQRNEdit::OnCommand(com::Message& message) {
  if (HIWORD(message.wParam) != EN_CHANGE) return false;
  ole::Fire<kQRNEditTable, "Change">(*this);
  return true;
}

bool CQRNEdit::OnChar(com::Message& message) {
  const auto character = static_cast<char16_t>(message.wParam);
  return Refused(character) || TakenByFormat(character) ||
         editwindow::RefusesTyped(contained(), static_cast<wchar_t>(character), MaxLength);
}

bool CQRNEdit::Refused(char16_t character) {
  if (!NumericMask || MaskAllows(character, fieldType_)) return false;
  MessageBeep(kRefusalBeep);
  return true;
}

// Shows the whole text anew with the character in it.
bool CQRNEdit::TakenByFormat(char16_t character) {
  if (character < kFirstPrintable && character != kBackspace) return false;
  if (editwindow::IsReadOnly(contained())) return false;
  const TextDress dress = Dress();
  if (!dress.EveryChar() || !dress.format) return false;
  const std::wstring shown = com::TextOfWindow(contained());
  const auto text = dress.OfTyping(NarrowText(com::Bstr(shown)), character);
  if (!text) return false;
  const com::Bstr result = WidenToBstr(*text);
  SetWindow(result);
  if (contained()) editwindow::PutCaretLast(contained());
  Text = result;
  return true;
}

bool CQRNEdit::OnPaste(com::Message&) { return editwindow::PastesWithin(contained(), MaxLength); }

bool CQRNEdit::OnReplaceSelection(com::Message& message) {
  const auto replace = [&](const wchar_t* fits) {
    message.result =
        CallOriginal({message.window, message.id, message.wParam, reinterpret_cast<LPARAM>(fits)});
  };
  return editwindow::ReplacesWithin(contained(), reinterpret_cast<const wchar_t*>(message.lParam),
                                    MaxLength, replace);
}

// A window of several lines sends no notice of a text that is set, whoever sets it.
bool CQRNEdit::OnSetText(com::Message& message) {
  const bool silent = editwindow::IsMultiLine(message.window);
  message.result = CallOriginal(message);
  if (silent) ole::Fire<kQRNEditTable, "Change">(*this);
  return true;
}

bool CQRNEdit::OnFocus(com::Message&) {
  LearnFieldType();
  if (Dress().RightAligned()) editwindow::PutCaretLast(contained());
  inputMethod_.Enter(contained(), IMEMode);
  return false;
}

bool CQRNEdit::OnBlur(com::Message& message) {
  if (Format.empty()) RepairText();
  inputMethod_.Leave(message.window, IMEMode);
  return false;
}

void CQRNEdit::RepairText() {
  LearnFieldType();
  if (fieldType_ == kDate) NormaliseDateText(TheRegistry(), contained());
  if (fieldType_ == kTime) NormaliseTimeText(TheRegistry(), contained());
}

}  // namespace qrn
