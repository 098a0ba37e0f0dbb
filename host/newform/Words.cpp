#include "host/newform/Words.h"

namespace qrn::newform {
namespace {

constexpr Words kJapanese = {
    .first = "先頭",
    .previous = "前へ",
    .next = "次へ",
    .last = "末尾",
    .clear = "新規",
    .insert = "追加",
    .update = "更新",
    .remove = "削除",
    .close = "閉じる",
    .find = "検索",
    .page = "ページ",
    .display = "表示のみです。",
    .list = "一覧",
    .removeQuestion = "このレコードを削除します。よろしいですか。",
    .empty = "レコードがありません。入力して「追加」を押してください。",
    .ready = "入力して「追加」を押してください。",
    .seek = "「先頭」か検索のボタンを押してください。",
    .inserted = "追加しました。",
    .updated = "更新しました。",
    .removed = "削除しました。",
    .kept = "削除を取りやめました。",
    .notFound = "見つかりません。",
    .duplicate = "同じキーのレコードがあります。",
    .noRecord = "先にレコードを表示してください。",
    .end = "これより先にレコードはありません。",
    .keyFixed = "このキーの値は変更できません。",
    .tooLong = "長さの変わるレコードは、キーがないと表示できません。",
    .changedByOther = "他の人が先に更新しました。もう一度検索してください。",
    .inUse = "他の人が使用中です。",
    .failed = "処理できませんでした。状態コード ",
    .partly = "一部だけを表示しています。",
    .badText = " に入らない値です。",
    .badNumber = " に入らない数値です。",
    .about = "辞書から作成したフォームです。",
    .opening = "データ・ファイルがなければ空のファイルを作ります。",
    .course = "操作の結果は Failed が told に書き、Click で表示します。",
    .judging = "入力した値とレコードに入る値を比べます。入らない分は黙って切り捨てられるためです。",
    .pictures = "ファイルがないとメッセージが出るので、あるときだけ項目に結び付けます。",
};

constexpr Words kEnglish = {
    .first = "First",
    .previous = "Previous",
    .next = "Next",
    .last = "Last",
    .clear = "New",
    .insert = "Insert",
    .update = "Update",
    .remove = "Delete",
    .close = "Close",
    .find = "Find",
    .page = "Page",
    .display = "Shown only.",
    .list = "list",
    .removeQuestion = "Delete this record?",
    .empty = "There is no record. Fill the boxes, then press Insert.",
    .ready = "Fill the boxes, then press Insert.",
    .seek = "Press First, or a button that finds.",
    .inserted = "Inserted.",
    .updated = "Updated.",
    .removed = "Deleted.",
    .kept = "Not deleted.",
    .notFound = "Not found.",
    .duplicate = "There is a record with this key already.",
    .noRecord = "Show a record first.",
    .end = "There is no further record.",
    .keyFixed = "This key's value cannot be changed.",
    .tooLong = "Records of changing length cannot be shown without a key.",
    .changedByOther = "Somebody else changed it meanwhile. Find it again.",
    .inUse = "Somebody else is using it.",
    .failed = "Failed with status ",
    .partly = "Only some of them are shown.",
    .badText = " cannot hold this.",
    .badNumber = " cannot hold this number.",
    .about = "Made from the dictionary.",
    .opening = "A table whose data file is missing gets an empty one.",
    .course = "What came of an operation stands in told, by Failed; Click shows it.",
    .judging = "What was typed is compared with what would be stored: fields cut without a word.",
    .pictures = "Bound only while its file is there: any other is told by a box.",
};

}  // namespace

const Words& WordsOf(Language language) noexcept {
  return language == Language::English ? kEnglish : kJapanese;
}

}  // namespace qrn::newform
