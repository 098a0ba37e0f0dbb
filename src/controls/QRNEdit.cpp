// The edit control: members, window, registration, texts that come and go.
#include "controls/QRNEdit.h"

#include <algorithm>

#include "binding/tables/QRNEditTable.h"
#include "com/WindowText.h"
#include "controls/EditWindow.h"
#include "controls/HostFormat.h"
#include "ole/Names.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

using com::Bstr;

constexpr int kNoLimit = 32000;  // what the window takes where `MaxLength` is 0

// clang-format off
constexpr ole::PropertyEntry kEditAccess[] = {
    {ole::stock::kText, ole::Pair<&CQRNEdit::GetText, &CQRNEdit::PutText>},
    { 3, ole::FieldAndPut<&CQRNEdit::DbField, &CQRNEdit::PutDbField>},
    { 4, ole::FieldAndPut<&CQRNEdit::MaxLength, &CQRNEdit::PutMaxLength>},
    { 5, ole::FieldAndPut<&CQRNEdit::PasswordChar, &CQRNEdit::PutPasswordChar>},
    { 6, ole::Field<&CQRNEdit::Format>},
    { 7, ole::Field<&CQRNEdit::MultiLine>},
    { 8, ole::Field<&CQRNEdit::Alignment>},
    { 9, ole::Field<&CQRNEdit::ReadOnly>},
    {10, ole::Field<&CQRNEdit::UpperCase>},
    {11, ole::Field<&CQRNEdit::IMEMode>},
    {12, ole::Pair<&CQRNEdit::GetSelStart, &CQRNEdit::PutSelStart>},
    {13, ole::Pair<&CQRNEdit::GetSelLength, &CQRNEdit::PutSelLength>},
    {14, ole::Pair<&CQRNEdit::GetSelText, &CQRNEdit::PutSelText>},
    {15, ole::Field<&CQRNEdit::NumericMask>},
    {16, ole::Field<&CQRNEdit::FormatOption>},
};
// clang-format on
constexpr auto kEditProperties =
    ole::BindProperties<kQRNEditTable>(kEditAccess, kFieldAccess<CQRNEdit>, ole::kStockAccess);
constexpr ole::Binding kEditBinding{kEditProperties, {}};

enum AlignmentCode : int32_t { kAlignRight = 1, kAlignCenter = 2 };

bool IsCharacterType(int32_t type) {
  return type == kString || type == kLString || type == kZString;
}

}  // namespace

CQRNEdit::CQRNEdit() : FieldBound(kQRNEditTable, kEditBinding, ole::kWindowLook) {}

std::optional<ole::ContainedDescription> CQRNEdit::DescribeContained() {
  DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | ES_AUTOHSCROLL;
  if (MultiLine) style |= ES_MULTILINE | ES_AUTOVSCROLL;
  if (ReadOnly) style |= ES_READONLY;
  if (UpperCase) style |= ES_UPPERCASE;
  if (Alignment == kAlignRight) style |= ES_RIGHT;
  if (Alignment == kAlignCenter) style |= ES_CENTER;
  ole::ContainedDescription description{L"Edit", style, 0, std::wstring(Text.view())};
  AddBorder(description);
  return description;
}

void CQRNEdit::OnContainedMade() {
  if (!UserMode()) return;
  LearnFieldType();
  if (MaxLength != 0) LimitWindow();
  if (!PasswordChar.empty()) ApplyPasswordChar();
}

std::span<const int32_t> CQRNEdit::RemadeInDesigner() const {
  static constexpr int32_t kIds[] = {ole::stock::kAppearance, ole::stock::kBorderStyle};
  return kIds;
}

void CQRNEdit::LearnFieldType() {
  if (fieldType_ == -1) fieldType_ = FieldType();
}

void CQRNEdit::LimitWindow() {
  const int limit = MaxLength > 0 ? MaxLength : kNoLimit;
  SendMessageW(contained(), EM_LIMITTEXT, static_cast<WPARAM>(limit), 0);
}

void CQRNEdit::ApplyPasswordChar() {
  const std::u16string shown = CodePageToUtf16(NarrowText(PasswordChar).substr(0, 1));
  SendMessageW(contained(), EM_SETPASSWORDCHAR, shown.empty() ? 0 : shown[0], 0);
  InvalidateRect(contained(), nullptr, TRUE);
}

void CQRNEdit::PutMaxLength(int16_t bytes) {
  MaxLength = bytes;
  if (contained() && UserMode()) LimitWindow();
}

void CQRNEdit::PutPasswordChar(const Bstr& text) {
  PasswordChar = text;
  if (contained()) ApplyPasswordChar();
}

// A designer who names the field of a fresh control sees its name on the form, and its length.
void CQRNEdit::PutDbField(const Bstr& name) {
  const bool fresh = DbField.empty();
  DbField = name;
  if (fresh && !name.empty() && !UserMode() && !persistence().loading()) ProposeFromField();
}

void CQRNEdit::ProposeFromField() {
  const Bstr name = DbField;
  Change(ole::stock::kText, [&] { PutText(name); });
  if (MaxLength != 0) return;
  const int16_t length = ProposedLength();
  if (length != 0) Change(ole::IdOf<kQRNEditTable, "MaxLength">, [&] { PutMaxLength(length); });
}

// The bytes of a character field; 0 for others and for names that lead nowhere.
int16_t CQRNEdit::ProposedLength() {
  if (DbSource.empty() || DbTable.empty()) return 0;
  const DbTableInfo* table = ResolveTable();
  if (table == nullptr) return 0;
  const DbFieldInfo* field = FindField(*table);
  if (field == nullptr || !IsCharacterType(field->Type)) return 0;
  return static_cast<int16_t>(std::clamp(field->Size, 0, 0x7FFF));
}

TextDress CQRNEdit::Dress() {
  TextDress dress{FormatOption, static_cast<size_t>(std::max<int16_t>(MaxLength, 0)), nullptr};
  if (!Format.empty()) {
    dress.format = [this](const std::string& text) {
      return FormatThroughHost(site(), text, Format);
    };
  }
  return dress;
}

void CQRNEdit::SetWindow(const Bstr& text) {
  if (contained()) SetWindowTextW(contained(), text.c_str());
}

void CQRNEdit::ShowFieldText(const char* text) {
  if (!contained()) return;
  const com::Com<IUnknown> alive(&Outer());
  Text = WidenToBstr(Dress().OfField(text));
  SetWindow(Bstr(Text));
}

void CQRNEdit::ClearFieldText() {
  if (!contained()) return;
  const com::Com<IUnknown> alive(&Outer());
  Text = Bstr();
  SetWindow(Text);
}

HRESULT CQRNEdit::GetText(Bstr& text) {
  if (contained()) Text = Bstr(com::TextOfWindow(contained()));
  text = Text;
  return S_OK;
}

void CQRNEdit::PutText(const Bstr& text) {
  Text = text;
  SetWindow(text);
}

void CQRNEdit::TextChanged() {
  if (!contained() || !UserMode()) return;
  const TextDress dress = Dress();
  if (!dress.RightAligned() && !dress.format) return;
  Text = WidenToBstr(dress.OfProperty(NarrowText(Text)));
  SetWindow(Bstr(Text));
}

// The window keeps the lines that it was made with.
void CQRNEdit::OnFillControlInfo(CONTROLINFO& info) {
  const bool ofLines =
      contained() ? (GetWindowLongW(contained(), GWL_STYLE) & ES_MULTILINE) != 0 : MultiLine != 0;
  if (ofLines) info.dwFlags = CTRLINFO_EATS_RETURN;
}

void CQRNEdit::OnChanged(int32_t id) {
  FieldBound::OnChanged(id);
  if (id == ole::stock::kText) TextChanged();
}

}  // namespace qrn
