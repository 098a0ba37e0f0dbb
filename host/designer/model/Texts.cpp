#include "host/designer/model/Texts.h"

namespace qrn::designer {
namespace {

// clang-format off
constexpr TextRow<TextId> kTexts[] = {
    {TextId::AddControl,       "%1 の追加",                    "Add %1"},
    {TextId::DeleteControls,   "削除",                         "Delete"},
    {TextId::MoveControls,     "移動",                         "Move"},
    {TextId::SizeControls,     "サイズの変更",                 "Size"},
    {TextId::AlignControls,    "整列",                         "Align"},
    {TextId::SizeAlike,        "同じサイズ",                   "Make Same Size"},
    {TextId::SpaceEvenly,      "間隔を均等にする",             "Space Evenly"},
    {TextId::BringToFront,     "最前面へ移動",                 "Bring to Front"},
    {TextId::SendToBack,       "最背面へ移動",                 "Send to Back"},
    {TextId::ChangeTabOrder,   "タブ順の変更",                 "Tab Order"},
    {TextId::MoveInto,         "%1 への移動",                  "Move into %1"},
    {TextId::CutControls,      "切り取り",                     "Cut"},
    {TextId::PasteControls,    "貼り付け",                     "Paste"},
    {TextId::ChangeProperty,   "%1 の変更",                    "Change %1"},
    {TextId::ChangeCode,       "コードの入力",                 "Typing"},
    {TextId::AddProcedure,     "%1 の追加",                    "Add %1"},
    {TextId::RenameControl,    "名前の変更",                   "Rename"},
    {TextId::SizeForm,         "フォームのサイズの変更",       "Size Form"},

    {TextId::NameMissing,      "名前を入力してください。",     "A name is missing."},
    {TextId::NameNoName,
     "'%1' は名前として使えません。文字で始まり、文字、数字、下線だけからなる名前にしてください。",
     "'%1' is no name: a name begins with a letter and has letters, digits and underscores only."},
    {TextId::NameTooLong,      "名前は %1 文字までです。",     "A name has up to %1 characters."},
    {TextId::NameReserved,     "'%1' は予約語です。",          "'%1' is a word of the language."},
    {TextId::NameTaken,        "名前 '%1' はすでに使われています。",
                               "The name '%1' is taken already."},
    {TextId::ArrayNeedsIndex,
     "'%1' は配列の要素です。名前を変えるか、ほかの要素を先に変更してください。",
     "'%1' has other elements: change their names first, or this one's."},
    {TextId::IndexTaken,       "'%1' の要素 %2 はすでにあります。",
                               "'%1' has an element %2 already."},
    {TextId::IndexRange,       "Index は 0 から 32767 までの整数です。",
                               "Index is a whole number from 0 to 32767."},
    {TextId::NotWritable,      "フォーム ファイルに書けない文字があります: %1",
                               "The form's file cannot hold a character of: %1"},
    {TextId::WholeExpected,    "%1 には整数を入力してください。", "%1 needs a whole number."},
    {TextId::RangeExpected,    "値は %1 から %2 までです。",   "The value lies between %1 and %2."},
    {TextId::NumberExpected,   "%1 には数値を入力してください。", "%1 needs a number."},
    {TextId::TruthExpected,    "%1 には True か False を入力してください。",
                               "%1 is True or False."},
    {TextId::ColourExpected,   "%1 には &H00BBGGRR& の形の色を入力してください。",
                               "%1 needs a colour as &H00BBGGRR&."},
    {TextId::ChoiceExpected,   "%1 には一覧の値を入力してください。",
                               "%1 takes one of the values listed."},
    {TextId::SetByDialog,      "%1 はダイアログで設定してください。", "%1 is set by its dialog."},
    {TextId::ReadOnly,         "%1 は変更できません。",        "%1 cannot be changed."},
    {TextId::TextTooLong,      "文字列は 65535 バイトまでです。", "A text has up to 65535 bytes."},
    {TextId::CompanionMissing, "%1 がないため、画像や長い文字列を保存できません。",
                               "Pictures and long texts have no place to go: %1 is missing."},
    {TextId::NoControlsInText, "クリップボードにコントロールがありません。",
                               "There are no controls on the clipboard."},
    {TextId::TextUnreadable,   "クリップボードの %1 行目が読めません: %2",
                               "Line %1 of the clipboard's text: %2"},
    {TextId::ContainerExpected, "%1 にはコントロールを置けません。", "%1 holds no controls."},
    {TextId::NoSuchProperty,   "%1 にプロパティ %2 はありません。", "%1 has no property %2."},
    {TextId::NoSuchEvent,      "%1 にイベント %2 はありません。", "%1 has no event %2."},
    {TextId::PictureMissing,   "画像のデータがありません。",   "The picture has no data."},
};
// clang-format on

static_assert(StandAtTheirIds(kTexts));

}  // namespace

std::string Said(TextId text, Language language, const std::vector<std::string>& words) {
  return qrn::Said(kTexts, text, language, words);
}

}  // namespace qrn::designer
