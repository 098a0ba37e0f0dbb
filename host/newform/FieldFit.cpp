#include "host/newform/FieldFit.h"

#include <algorithm>
#include <string_view>

#include "core/DbTypes.h"
#include "host/form/SourceText.h"

namespace qrn::newform {
namespace {

// A field's text is held in 4,096 bytes; whoever stores a longer one cuts it.
constexpr int kLongestText = 4000;
constexpr int kNoteCharacters = 44;
constexpr int kWidestLine = 60;
constexpr int kWidestNumber = 14;
constexpr int kDateLength = 10, kTimeLength = 8;

enum ImeMode {
  kImeAsIs = 0,
  kImeOff = 2,
  kImeHiragana = 4,
  kImeKatakana = 5,
  kImeHalfKatakana = 6
};

struct NameRow {
  std::string_view part;  // of the field's name, letters in lower case
  int imeMode;
};

// The first row whose part stands in the name.
constexpr NameRow kImeModes[] = {
    {"ｶﾅ", kImeHalfKatakana},   {"ﾌﾘｶﾞﾅ", kImeHalfKatakana},
    {"kana", kImeKatakana},     {"カナ", kImeKatakana},
    {"フリガナ", kImeKatakana}, {"ヨミ", kImeKatakana},
    {"よみ", kImeHiragana},     {"ふりがな", kImeHiragana},
    {"zip", kImeOff},           {"post", kImeOff},
    {"郵便", kImeOff},          {"phone", kImeOff},
    {"tel", kImeOff},           {"fax", kImeOff},
    {"電話", kImeOff},          {"mail", kImeOff},
    {"メール", kImeOff},        {"url", kImeOff},
    {"code", kImeOff},          {"コード", kImeOff},
    {"番号", kImeOff},          {"picture", kImeOff},
    {"image", kImeOff},         {"photo", kImeOff},
};
constexpr int kShortestProse = 10;

constexpr std::string_view kPictureNames[] = {"picture", "image",    "photo",   "画像",
                                              "写真",    "ピクチャ", "イメージ"};

bool Holds(const Field& field, std::string_view part) {
  return form::LowerWord(field.name).find(part) != std::string::npos;
}

bool NamesPicture(const Field& field) {
  return field.type == kString &&
         std::any_of(std::begin(kPictureNames), std::end(kPictureNames),
                     [&](std::string_view part) { return Holds(field, part); });
}

int ImeModeOf(const Field& field) {
  for (const NameRow& row : kImeModes) {
    if (Holds(field, row.part)) return row.imeMode;
  }
  return field.size >= kShortestProse ? kImeHiragana : kImeAsIs;
}

FieldFit TextFit(const Field& field, int spare, bool) {
  FieldFit fit;
  fit.control = NamesPicture(field) ? Control::Picture : Control::Edit;
  fit.judged = Judged::AsText;
  fit.maxLength = std::max(field.size - spare, 1);
  fit.characters = fit.maxLength;
  fit.imeMode = ImeModeOf(field);
  if (field.size > kLongestText) fit.control = Control::Display;
  return fit;
}

FieldFit NoteFit(const Field& field, int spare, bool inKey) {
  FieldFit fit = TextFit(field, spare, inKey);
  if (fit.control != Control::Display) fit.control = Control::Note;
  fit.characters = kNoteCharacters;
  fit.imeMode = kImeHiragana;
  return fit;
}

FieldFit NumberFit(int digits, Judged judged) {
  FieldFit fit;
  fit.control = Control::Edit;
  fit.judged = judged;
  fit.maxLength = digits;
  fit.characters = std::min(digits, kWidestNumber);
  fit.imeMode = kImeOff;
  fit.isNumber = true;
  return fit;
}

// With separators every three digits. A key is sought by what its box shows: it stays as it is.
void Dress(FieldFit& fit, const Field& field, bool inKey) {
  if (inKey || field.decimals < 0) return;
  fit.format = "#,##0";
  if (field.decimals > 0) fit.format += "." + std::string(static_cast<size_t>(field.decimals), '0');
  fit.maxLength += fit.maxLength / 3;
  fit.characters = std::min(fit.maxLength, kWidestNumber);
}

// The most characters of a binary number by its bytes, with its sign.
int WholeDigits(const Field& field) {
  const bool isSigned = field.type == kInteger && field.size > 1;
  const int digits = field.size >= 8 ? 19 : field.size >= 4 ? 10 : field.size >= 2 ? 5 : 3;
  return digits + (isSigned ? 1 : 0);
}

// What has numbers of whole things; a number that names something has no separators.
bool CountsThings(const Field& field) {
  constexpr std::string_view kNames[] = {"no",   "code",   "year", "day", "id",
                                         "番号", "コード", "年",   "日",  "区分"};
  return field.type == kInteger && field.size >= 4 &&
         std::none_of(std::begin(kNames), std::end(kNames),
                      [&](std::string_view part) { return Holds(field, part); });
}

FieldFit WholeFit(const Field& field, int, bool inKey) {
  FieldFit fit = NumberFit(WholeDigits(field), Judged::AsNumber);
  if (field.type == kAutoInc) fit.judged = Judged::No;
  if (CountsThings(field)) Dress(fit, field, inKey);
  return fit;
}

// Digits, a sign and a point.
FieldFit PackedFit(const Field& field, int, bool inKey) {
  FieldFit fit = NumberFit(2 * field.size + 1, Judged::AsNumber);
  Dress(fit, field, inKey);
  return fit;
}

bool LosesZeros(const Field& field) noexcept {
  return (field.type == kNumericSTS || field.type == kNumericSA) && field.decimals > 0;
}

FieldFit PrintedFit(const Field& field, int, bool inKey) {
  constexpr int kCurrencyDigits = 20;
  const int digits = field.type == kCurrency ? kCurrencyDigits : field.size + 2;
  FieldFit fit = NumberFit(digits, Judged::AsNumber);
  Dress(fit, field, inKey);
  fit.isDressed = !fit.format.empty();
  if (LosesZeros(field)) fit.control = Control::Display;
  return fit;
}

// Without a format: what is shown is stored, and small numbers have many digits.
FieldFit FractionFit(const Field&, int, bool) {
  constexpr int kSeen = 12;
  FieldFit fit = NumberFit(kSeen, Judged::AsFraction);
  fit.maxLength = 0;
  return fit;
}

template <int Length>
FieldFit MomentFit(const Field&, int, bool) {
  FieldFit fit = NumberFit(Length, Judged::AsText);
  fit.isNumber = false;
  fit.isMoment = true;
  return fit;
}

FieldFit LetterFit(const Field&, int, bool) {
  FieldFit fit = NumberFit(1, Judged::AsText);
  fit.isNumber = false;
  return fit;
}

FieldFit MarkFit(const Field&, int, bool) {
  FieldFit fit;
  fit.control = Control::Check;
  return fit;
}

FieldFit LongFit(const Field&, int, bool) {
  FieldFit fit;
  fit.control = Control::Display;
  fit.characters = kNoteCharacters;
  return fit;
}

struct TypeRow {
  int32_t type;
  FieldFit (*fit)(const Field& field, int spare, bool inKey);
  int spare;  // bytes of the field that hold no character
};

// clang-format off
constexpr TypeRow kTypes[] = {
    {kString,     TextFit, 0},
    {kInteger,    WholeFit, 0},
    {kFloat,      FractionFit, 0},
    {kDate,       MomentFit<kDateLength>, 0},
    {kTime,       MomentFit<kTimeLength>, 0},
    {kDecimal,    PackedFit, 0},
    {kMoney,      PackedFit, 0},
    {kLogical,    MarkFit, 0},
    {kNumeric,    PrintedFit, 0},
    {kBFloat,     FractionFit, 0},
    {kLString,    TextFit, 1},
    {kZString,    TextFit, 1},
    {kNote,       NoteFit, 1},
    {kLVar,       NoteFit, 1},
    {kUBin,       WholeFit, 0},
    {kAutoInc,    WholeFit, 0},
    {kBit,        LetterFit, 0},
    {kNumericSTS, PrintedFit, 0},
    {kNumericSA,  PrintedFit, 0},
    {kCurrency,   PrintedFit, 0},
    {kBlob,       LongFit, 0},
};
// clang-format on

const TypeRow* RowOf(int32_t type) noexcept {
  const auto* row = std::find_if(std::begin(kTypes), std::end(kTypes),
                                 [type](const TypeRow& known) { return known.type == type; });
  return row == std::end(kTypes) ? nullptr : row;
}

}  // namespace

FieldFit FitOf(const Table& table, size_t field) {
  const Field& described = table.fields[field];
  const TypeRow* row = RowOf(described.type);
  if (!row || described.name.empty()) return {};
  FieldFit fit = row->fit(described, row->spare, table.IsInKey(field));
  fit.characters = std::min(fit.characters, kWidestLine);
  return fit;
}

bool IsText(const Field& field) noexcept {
  const TypeRow* row = RowOf(field.type);
  return row && row->fit == TextFit;
}

}  // namespace qrn::newform
