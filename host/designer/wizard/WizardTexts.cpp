#include "host/designer/wizard/WizardTexts.h"

#include "com/Text.h"

namespace qrn::designer {
namespace {

// clang-format off
constexpr TextRow<WizardText> kWizardTexts[] = {
    {WizardText::None,            "", ""},
    {WizardText::Title,           "辞書から新しいフォーム", "New Form from a Dictionary"},
    {WizardText::Browse,          "参照(&R)...", "B&rowse..."},
    {WizardText::DirectoryTitle,  "辞書", "Dictionary"},
    {WizardText::DirectoryHint,   "file.ddf、field.ddf、index.ddf のあるフォルダを選びます。データ ファイルは必要ありません。",
                                  "The folder of file.ddf, field.ddf and index.ddf. No data file is needed."},
    {WizardText::Directory,       "辞書のフォルダ(&D):", "&Dictionary's folder:"},
    {WizardText::BrowseDirectory, "辞書のフォルダを選んでください。", "Choose the dictionary's folder."},
    {WizardText::NoDictionary,    "%1\n\nこのフォルダには、フォームを作れる辞書がありません。",
                                  "%1\n\nThis folder has no dictionary that a form can be made of."},
    {WizardText::TableTitle,      "テーブル", "Table"},
    {WizardText::TableHint,       "フォームで扱うテーブルを選びます。", "The table whose records the form shows."},
    {WizardText::Table,           "テーブル(&T):", "&Table:"},
    {WizardText::TableLine,       "%1   (フィールド %2、キー %3)", "%1   (%2 fields, %3 keys)"},
    {WizardText::FieldsTitle,     "フィールド", "Fields"},
    {WizardText::FieldsHint,      "フォームに置くフィールドと、その順序を決めます。", "The fields on the form, and their order."},
    {WizardText::Fields,          "フィールド(&L):", "Fie&lds:"},
    {WizardText::Up,              "上へ(&U)", "&Up"},
    {WizardText::Down,            "下へ(&O)", "D&own"},
    {WizardText::All,             "すべて(&A)", "&All"},
    {WizardText::Nothing,         "なし(&E)", "Non&e"},
    {WizardText::NoField,         "フィールドを 1 つ以上選んでください。", "Choose at least one field."},
    {WizardText::KeysTitle,       "検索と一覧", "Finding and Lists"},
    {WizardText::KeysHint,        "検索のボタンを付けるキーと、一覧を決めます。", "The keys that get a button to find by, and the lists."},
    {WizardText::Keys,            "検索するキー(&K):", "&Keys to find by:"},
    {WizardText::Detail,          "明細のテーブル(&M):", "Detail ta&ble:"},
    {WizardText::NoDetail,        "(なし)", "(none)"},
    {WizardText::Grid,            "レコードの一覧を付ける(&G)", "A &grid of the table's own records"},
    {WizardText::FileTitle,       "フォームのファイル", "The Form's File"},
    {WizardText::FileHint,        "[完了] を押すと、フォームを作って開きます。", "Finish makes the form and opens it."},
    {WizardText::File,            "ファイル名(&F):", "&File name:"},
    {WizardText::FormFiles,       "フォーム", "Forms"},
    {WizardText::Pictures,        "画像のフォルダ(&P) (空: 辞書のフォルダの pictures):", "&Pictures' folder (empty: pictures in the dictionary's):"},
    {WizardText::BrowsePictures,  "画像のフォルダを選んでください。", "Choose the pictures' folder."},
    {WizardText::Speaks,          "フォームの言語:", "The form speaks:"},
    {WizardText::Japanese,        "日本語(&J)", "&Japanese"},
    {WizardText::English,         "英語(&N)", "E&nglish"},
    {WizardText::NoFile,          "ファイル名を入力してください。", "A file name is missing."},
    {WizardText::Replace,         "%1 はすでにあります。置き換えますか。", "%1 is there already. Replace it?"},
};
// clang-format on

static_assert(StandAtTheirIds(kWizardTexts));

}  // namespace

std::wstring Said(WizardText text, Language language, const std::vector<std::string>& words) {
  return com::Wide(qrn::Said(kWizardTexts, text, language, words));
}

}  // namespace qrn::designer
