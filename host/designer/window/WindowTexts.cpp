#include "host/designer/window/WindowTexts.h"

#include "host/container/Text.h"

namespace qrn::designer {
namespace {

// clang-format off
constexpr TextRow<WindowText> kTexts[] = {
    {WindowText::Title,           "%1 - フォームの設計",          "%1 - Form Designer"},
    {WindowText::TitleNew,        "新しいフォーム",               "New Form"},
    {WindowText::AskSave,         "%1 への変更を保存しますか?",   "Save the changes to %1?"},
    {WindowText::FormFiles,       "フォーム (*.frm)",             "Forms (*.frm)"},
    {WindowText::AllFiles,        "すべてのファイル (*.*)",       "All Files (*.*)"},
    {WindowText::CannotOpen,      "フォームを開けません。\n\n%1",   "The form cannot be opened.\n\n%1"},
    {WindowText::CannotSave,      "フォームを保存できません。\n\n%1", "The form cannot be saved.\n\n%1"},
    {WindowText::CannotShow,      "フォームを表示できません。\n\n%1", "The form cannot be shown.\n\n%1"},
    {WindowText::CannotRun,       "フォームを実行できません。\n\n%1", "The form cannot be run.\n\n%1"},
    {WindowText::NoPages,         "%1 にプロパティ ページはありません。",
                                  "%1 has no property pages."},
    {WindowText::FormSize,        "%1  %2 x %3",                  "%1  %2 x %3"},
    {WindowText::ControlPlace,    "%1  位置 %2, %3  サイズ %4 x %5",
                                  "%1  at %2, %3  size %4 x %5"},
    {WindowText::SeveralSelected, "%1 個のコントロール",          "%1 controls"},
    {WindowText::TabOrderHelp,    "タブ順にクリックしてください。Enter で終わり、Esc で取り消します。",
                                  "Click in the order of the Tab key. Enter ends, Esc takes back."},
    {WindowText::Pointer,         "ポインタ",                     "Pointer"},
    {WindowText::Keys,
     "コントロールを置く\tツールをクリックし、フォームの上でドラッグ\n"
     "\tツールをダブルクリック、またはツールで Enter (中央に置く)\n"
     "選択\tクリック、Shift または Ctrl + クリック、囲む、Tab、Shift+Tab、Esc\n"
     "移動\tドラッグ (Ctrl でグリッドに合わせない)、Ctrl + 矢印\n"
     "サイズ\tハンドルをドラッグ、Shift + 矢印\n"
     "コード\tダブルクリック、Enter、F7 (フォームへは Shift+F7)\n"
     "プロパティ\tF4、プロパティ ページは Shift+F4\n"
     "実行\tF5\n"
     "次の部分へ\tF6",
     "Put a control\tClick a tool and drag on the form\n"
     "\tDouble-click a tool, or Enter on it (in the middle)\n"
     "Select\tClick, Shift or Ctrl + click, a band, Tab, Shift+Tab, Esc\n"
     "Move\tDrag (with Ctrl beside the grid), Ctrl + arrows\n"
     "Size\tDrag a handle, Shift + arrows\n"
     "Code\tDouble-click, Enter, F7 (back to the form: Shift+F7)\n"
     "Properties\tF4, property pages: Shift+F4\n"
     "Run\tF5\n"
     "Next part\tF6"},
};
// clang-format on

static_assert(StandAtTheirIds(kTexts));

}  // namespace

std::wstring Said(WindowText text, form::Language language,
                  const std::vector<std::wstring>& words) {
  return WithWords<wchar_t>(host::Wide(TextOf(kTexts, text, language)), words);
}

}  // namespace qrn::designer
