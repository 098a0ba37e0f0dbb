// QRNEdit: one field of one table as text. It filters keys by the field's type, repairs dates and
// times on leaving, dresses texts through the host's format service and sets the input method.
#pragma once

#include "binding/BoundFaces.h"
#include "binding/FieldBound.h"
#include "binding/InputMethod.h"
#include "controls/text/TextDress.h"

namespace qrn {

class CQRNEdit final : public FieldBound<EditFace> {
 public:
  CQRNEdit();

  // Properties. Those that only store take effect when the window is made anew.
  com::Bstr Text = com::Bstr::Empty();  // as last known: the window's is asked for first
  int16_t MaxLength = 0;                // bytes; 0 lets the window hold 32,000 characters
  com::Bstr PasswordChar = com::Bstr::Empty();
  com::Bstr Format = com::Bstr::Empty();
  int16_t MultiLine = 0;
  int32_t Alignment = 0;
  int16_t ReadOnly = 0;
  int16_t UpperCase = 0;
  int32_t IMEMode = 0;
  int16_t NumericMask = 0;
  int32_t FormatOption = FormatNone;

  HRESULT GetText(com::Bstr& text);
  void PutText(const com::Bstr& text);
  void PutDbField(const com::Bstr& name);
  void PutMaxLength(int16_t bytes);
  void PutPasswordChar(const com::Bstr& text);

  // The selection in characters, at run time alone. Kept so: SelText gives the text from its very
  // start to one byte past the selection, and SelLength is held against the stored `Text`.
  int16_t GetSelStart() const;
  HRESULT PutSelStart(int16_t start);
  int16_t GetSelLength() const;
  HRESULT PutSelLength(int16_t length);
  HRESULT GetSelText(com::Bstr& text);
  void PutSelText(const com::Bstr& text);

  ControlType GetControlType() override { return kTypeEdit; }
  WindowHandle ContainedWindow() override { return contained(); }
  void ShowFieldText(const char* text) override;
  void ClearFieldText() override;

  bool OnWindowMessage(com::Message& message) override;
  bool OnContainedMessage(com::Message& message) override;
  void OnChanged(int32_t id) override;
  void OnFillControlInfo(CONTROLINFO& info) override;

 protected:
  std::optional<ole::ContainedDescription> DescribeContained() override;
  void OnContainedMade() override;
  std::span<const int32_t> RemadeInDesigner() const override;
  ole::Com<IAccessible> MakeAccessible(HWND window) override {
    return ole::Com<IAccessible>(new ole::TextAccessible(window, hwnd(), ROLE_SYSTEM_TEXT));
  }

 private:
  bool OnCommand(com::Message& message);
  bool OnChar(com::Message& message);
  bool OnPaste(com::Message& message);
  bool OnReplaceSelection(com::Message& message);
  bool OnSetText(com::Message& message);
  bool OnFocus(com::Message& message);
  bool OnBlur(com::Message& message);

  // The two halves of CheckChar; true when the character ends here.
  bool Refused(char16_t character);
  bool TakenByFormat(char16_t character);

  TextDress Dress();
  void SetWindow(const com::Bstr& text);
  void TextChanged();
  void LearnFieldType();
  void ProposeFromField();
  int16_t ProposedLength();
  void LimitWindow();
  void ApplyPasswordChar();
  void RepairText();

  static const com::MessageRow<CQRNEdit> kOwnMessages[];
  static const com::MessageRow<CQRNEdit> kContainedMessages[];

  int32_t fieldType_ = -1;  // the bound field's, once it is known; kept when `DbField` changes
  InputMethodOnFocus inputMethod_;
};

}  // namespace qrn
