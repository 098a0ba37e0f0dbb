#include "host/newform/Words.h"

namespace qrn::newform {
namespace {

// clang-format off
constexpr TextRow<Word> kWords[] = {
    {Word::First,          "先頭", "First"},
    {Word::Previous,       "前へ", "Previous"},
    {Word::Next,           "次へ", "Next"},
    {Word::Last,           "末尾", "Last"},
    {Word::Clear,          "新規", "New"},
    {Word::Insert,         "追加", "Insert"},
    {Word::Update,         "更新", "Update"},
    {Word::Remove,         "削除", "Delete"},
    {Word::Close,          "閉じる", "Close"},
    {Word::Find,           "検索", "Find"},
    {Word::Page,           "ページ", "Page"},
    {Word::Display,        "表示のみです。", "Shown only."},
    {Word::List,           "一覧", "list"},
    {Word::RemoveQuestion, "このレコードを削除します。よろしいですか。", "Delete this record?"},
    {Word::Empty,          "レコードがありません。入力して「追加」を押してください。",
                           "There is no record. Fill the boxes, then press Insert."},
    {Word::Ready,          "入力して「追加」を押してください。", "Fill the boxes, then press Insert."},
    {Word::Seek,           "「先頭」か検索のボタンを押してください。",
                           "Press First, or a button that finds."},
    {Word::Inserted,       "追加しました。", "Inserted."},
    {Word::Updated,        "更新しました。", "Updated."},
    {Word::Removed,        "削除しました。", "Deleted."},
    {Word::Kept,           "削除を取りやめました。", "Not deleted."},
    {Word::NotFound,       "見つかりません。", "Not found."},
    {Word::Duplicate,      "同じキーのレコードがあります。",
                           "There is a record with this key already."},
    {Word::NoRecord,       "先にレコードを表示してください。", "Show a record first."},
    {Word::End,            "これより先にレコードはありません。", "There is no further record."},
    {Word::KeyFixed,       "このキーの値は変更できません。", "This key's value cannot be changed."},
    {Word::TooLong,        "長さの変わるレコードは、キーがないと表示できません。",
                           "Records of changing length cannot be shown without a key."},
    {Word::ChangedByOther, "他の人が先に更新しました。もう一度検索してください。",
                           "Somebody else changed it meanwhile. Find it again."},
    {Word::InUse,          "他の人が使用中です。", "Somebody else is using it."},
    {Word::Failed,         "処理できませんでした。状態コード ", "Failed with status "},
    {Word::Partly,         "一部だけを表示しています。", "Only some of them are shown."},
    {Word::BadText,        " に入らない値です。", " cannot hold this."},
    {Word::BadNumber,      " に入らない数値です。", " cannot hold this number."},
    {Word::About,          "辞書から作成したフォームです。", "Made from the dictionary."},
    {Word::Opening,        "データ・ファイルがなければ空のファイルを作ります。",
                           "A table whose data file is missing gets an empty one."},
    {Word::Course,         "操作の結果は Failed が told に書き、Click で表示します。",
                           "What came of an operation stands in told, by Failed; Click shows it."},
    {Word::Judging,        "入力した値とレコードに入る値を比べます。入らない分は黙って切り捨てられるためです。",
                           "What was typed is compared with what would be stored: fields cut without a word."},
    {Word::Pictures,       "ファイルがないとメッセージが出るので、あるときだけ項目に結び付けます。",
                           "Bound only while its file is there: any other is told by a box."},
};
// clang-format on

static_assert(StandAtTheirIds(kWords));

}  // namespace

const char* Words::operator[](Word word) const noexcept { return TextOf(kWords, word, language_); }

}  // namespace qrn::newform
