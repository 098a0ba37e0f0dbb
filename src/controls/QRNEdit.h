// QRNEdit: one field of one table as text. It filters keys by the field's type, repairs dates and
// times on leaving, dresses texts through the host's format service and sets the input method.
#pragma once

#include "binding/BoundControl.h"
#include "binding/BoundFaces.h"
#include "controls/text/TextDress.h"
#include "ole/VisibleControl.h"

namespace qrn {

class CQRNEdit final : public BoundControl<ole::VisibleControl, EditFace> {
 public:
  CQRNEdit();

  // Properties. Those that only store take effect when the window is made anew.
  ole::Bstr DbSource = ole::Bstr::Empty();
  ole::Bstr DbTable = ole::Bstr::Empty();
  ole::Bstr DbField = ole::Bstr::Empty();
  ole::Bstr Text = ole::Bstr::Empty();  // as last known: the window's is asked for first
  int16_t MaxLength = 0;                // bytes; 0 lets the window hold 32,000 characters
  ole::Bstr PasswordChar = ole::Bstr::Empty();
  ole::Bstr Format = ole::Bstr::Empty();
  int16_t MultiLine = 0;
  int32_t Alignment = 0;
  int16_t ReadOnly = 0;
  int16_t UpperCase = 0;
  int32_t IMEMode = 0;
  int16_t NumericMask = 0;
  int32_t FormatOption = FormatNone;

  HRESULT GetText(ole::Bstr& text);
  void PutText(const ole::Bstr& text);
  void PutDbField(const ole::Bstr& name);
  void PutMaxLength(int16_t bytes);
  void PutPasswordChar(const ole::Bstr& text);

  // The selection in characters, at run time alone. Kept so: SelText gives the text from its very
  // start to one byte past the selection, and SelLength is held against the stored `Text`.
  int16_t GetSelStart() const;
  HRESULT PutSelStart(int16_t start);
  int16_t GetSelLength() const;
  HRESULT PutSelLength(int16_t length);
  HRESULT GetSelText(ole::Bstr& text);
  void PutSelText(const ole::Bstr& text);

  ControlType GetControlType() override { return kTypeEdit; }
  NullableText GetBoundField() override { return NarrowNullable(DbField); }
  NullableText GetBoundTable() override { return NarrowNullable(DbTable); }
  WindowHandle ContainedWindow() override { return contained(); }
  void ShowFieldText(const char* text) override;
  void ClearFieldText() override;

  bool OnWindowMessage(ole::Message& message) override;
  bool OnContainedMessage(ole::Message& message) override;
  void OnChanged(int32_t id) override;
  void OnDraw(HDC dc, const RECT& rect) override;

 protected:
  std::optional<ole::ContainedDescription> DescribeContained() override;
  void OnContainedMade() override;
  void OnRegister() override;
  void OnUnregister() override;

 private:
  bool OnCommand(ole::Message& message);
  bool OnChar(ole::Message& message);
  bool OnPaste(ole::Message& message);
  bool OnReplaceSelection(ole::Message& message);
  bool OnSetText(ole::Message& message);
  bool OnFocus(ole::Message& message);
  bool OnBlur(ole::Message& message);

  // The two halves of CheckChar and the limit; true when the character ends here.
  bool Refused(char16_t character);
  bool TakenByFormat(char16_t character);
  bool BeyondLimit(char16_t character);

  TextDress Dress();
  void SetWindow(const ole::Bstr& text);
  void TextChanged();
  void LearnFieldType();
  void ProposeFromField();
  int16_t ProposedLength();
  void LimitWindow();
  void ApplyPasswordChar();
  void RepairText();

  static const ole::MessageRow<CQRNEdit> kOwnMessages[];
  static const ole::MessageRow<CQRNEdit> kContainedMessages[];

  int32_t fieldType_ = -1;  // the bound field's, once it is known; kept when `DbField` changes
  int imeOutside_ = 0;      // the input method's mode before the focus came
};

}  // namespace qrn
