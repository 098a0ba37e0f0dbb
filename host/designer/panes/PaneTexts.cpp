#include "host/designer/panes/PaneTexts.h"

namespace qrn::designer {
namespace {

// clang-format off
constexpr TextRow<PaneText> kPaneTexts[] = {
    {PaneText::CustomRow,     "(カスタム)",                "(Custom)"},
    {PaneText::CustomHint,    "コントロールのプロパティ ページを開きます。", "Opens the control's property pages."},
    {PaneText::NotOne,        "%1 個のコントロール",       "%1 controls"},
    {PaneText::ResetValue,    "既定値に戻す(&R)\tCtrl+Del", "&Reset\tCtrl+Del"},
    {PaneText::NextValue,     "次の値(&N)",                "&Next Value"},
    {PaneText::OpenDialog,    "設定(&S)...\tF2",           "&Set...\tF2"},
    {PaneText::AskPicture,    "ピクチャの読み込み",        "Load Picture"},
    {PaneText::PictureFiles,  "ピクチャ",                  "Pictures"},
    {PaneText::AllFiles,      "すべてのファイル",          "All Files"},
    {PaneText::NoPicture,     "%1 は読み込める画像ではありません。", "%1 is no picture that can be read."},
    {PaneText::LineAndColumn, "%1 行、%2 桁",              "Line %1, Column %2"},
    {PaneText::OneMistake,    "%1 行: %2",                 "Line %1: %2"},
    {PaneText::Mistakes,      "%1 行: %2 (ほか %3 件、F8 で次へ)", "Line %1: %2 (%3 more, F8 goes on)"},
    {PaneText::NotInDesign,   "フォームに書けない文字があるため、入力はまだ反映されていません。",
                              "Not yet in the form: it cannot hold a character that was typed."},
    {PaneText::NotFound,      "'%1' は見つかりません。",   "'%1' was not found."},
    {PaneText::GeneralObject, "(全般)",                    "(General)"},
};
// clang-format on

static_assert(StandAtTheirIds(kPaneTexts));

}  // namespace

std::string Said(PaneText text, Language language, const std::vector<std::string>& words) {
  return qrn::Said(kPaneTexts, text, language, words);
}

}  // namespace qrn::designer
