#include "host/designer/window/Commands.h"

#include <algorithm>
#include <iterator>

#include "host/container/Text.h"
#include "host/form/KeyNames.h"

namespace qrn::designer {
namespace {

using host::Wide;

enum class KeyScope { Global, Form };

struct CommandRow {
  Command command;
  const char* japanese;
  const char* english;
  const char* key;  // empty if it has none
  KeyScope scope;
};

constexpr auto kGlobal = KeyScope::Global;
constexpr auto kForm = KeyScope::Form;

// clang-format off
constexpr CommandRow kRows[] = {
    {kFileNew,        "新しいフォーム(&N)",         "&New Form",            "Ctrl+N",   kGlobal},
    {kFileWizard,     "辞書から新しいフォーム(&D)...", "New Form from &Dictionary...", "", kGlobal},
    {kFileOpen,       "開く(&O)...",                "&Open...",             "Ctrl+O",   kGlobal},
    {kFileSave,       "上書き保存(&S)",             "&Save",                "Ctrl+S",   kGlobal},
    {kFileSaveAs,     "名前を付けて保存(&A)...",    "Save &As...",          "",         kGlobal},
    {kFileExit,       "終了(&X)",                   "E&xit",                "Alt+Q",    kGlobal},
    {kEditUndo,       "元に戻す(&U)",               "&Undo",                "Ctrl+Z",   kForm},
    {kEditRedo,       "やり直し(&R)",               "&Redo",                "Ctrl+Y",   kForm},
    {kEditCut,        "切り取り(&T)",               "Cu&t",                 "Ctrl+X",   kForm},
    {kEditCopy,       "コピー(&C)",                 "&Copy",                "Ctrl+C",   kForm},
    {kEditPaste,      "貼り付け(&P)",               "&Paste",               "Ctrl+V",   kForm},
    {kEditDelete,     "削除(&D)",                   "&Delete",              "Delete",   kForm},
    {kEditSelectAll,  "すべて選択(&A)",             "Select &All",          "Ctrl+A",   kForm},
    {kAlignLeft,      "左(&L)",                     "&Lefts",               "",         kForm},
    {kAlignCentre,    "左右の中心(&C)",             "&Centers",             "",         kForm},
    {kAlignRight,     "右(&R)",                     "&Rights",              "",         kForm},
    {kAlignTop,       "上(&T)",                     "&Tops",                "",         kForm},
    {kAlignMiddle,    "上下の中心(&M)",             "&Middles",             "",         kForm},
    {kAlignBottom,    "下(&B)",                     "&Bottoms",             "",         kForm},
    {kAlignGrid,      "グリッド(&G)",               "To &Grid",             "",         kForm},
    {kSameWidth,      "幅(&W)",                     "&Width",               "",         kForm},
    {kSameHeight,     "高さ(&H)",                   "&Height",              "",         kForm},
    {kSameBoth,       "両方(&B)",                   "&Both",                "",         kForm},
    {kSpaceAcross,    "左右の間隔を均等にする(&H)", "Space Evenly &Across", "",         kForm},
    {kSpaceDown,      "上下の間隔を均等にする(&V)", "Space Evenly &Down",   "",         kForm},
    {kCentreAcross,   "左右の中央に置く(&C)",       "&Center Across",       "",         kForm},
    {kCentreDown,     "上下の中央に置く(&D)",       "Center Do&wn",         "",         kForm},
    {kToFront,        "最前面へ移動(&F)",           "Bring to &Front",      "Ctrl+J",   kForm},
    {kToBack,         "最背面へ移動(&K)",           "Send to Bac&k",        "Ctrl+K",   kForm},
    {kTabOrder,       "タブ順(&T)",                 "&Tab Order",           "Ctrl+D",   kForm},
    {kGridShown,      "グリッドの表示(&S)",         "&Show Grid",           "",         kForm},
    {kGridSnaps,      "グリッドに合わせる(&N)",     "S&nap to Grid",        "",         kForm},
    {kViewCode,       "コード(&C)",                 "&Code",                "F7",       kGlobal},
    {kViewForm,       "フォーム(&B)",               "F&orm",                "Shift+F7", kGlobal},
    {kViewProperties, "プロパティ ウィンドウ(&W)",  "&Properties",          "F4",       kGlobal},
    {kViewToolbox,    "ツールボックス(&X)",         "Toolbo&x",             "",         kGlobal},
    {kViewPages,      "プロパティ ページ(&Y)",      "Property Pa&ges",      "Shift+F4", kGlobal},
    {kViewWider,      "プロパティを広く(&L)",       "&Wider Properties",    "Ctrl+Alt+Left", kGlobal},
    {kViewNarrower,   "プロパティを狭く(&R)",       "Na&rrower Properties", "Ctrl+Alt+Right", kGlobal},
    {kViewNextPane,   "次の部分へ(&N)",             "&Next Part",           "F6",       kGlobal},
    {kRunStart,       "開始(&S)",                   "&Start",               "F5",       kGlobal},
    {kHelpKeys,       "キーとマウス(&K)",           "&Keys and Mouse",      "F1",       kGlobal},
};
// clang-format on

constexpr bool RowsStandAtTheirCommand() {
  for (size_t at = 0; at < std::size(kRows); ++at) {
    if (kRows[at].command != kFileNew + at) return false;
  }
  return kFileNew + std::size(kRows) == kLastCommand;
}
static_assert(RowsStandAtTheirCommand());

const CommandRow& RowOf(Command command) { return kRows[command - kFileNew]; }

enum class Piece { Menu, End, Item, Line };

struct MenuRow {
  Piece piece;
  Command command = kFileNew;
  const char* japanese = "";
  const char* english = "";
};

constexpr MenuRow Menu(const char* japanese, const char* english) {
  return {Piece::Menu, kFileNew, japanese, english};
}
constexpr MenuRow For(Command command) { return {Piece::Item, command}; }
constexpr MenuRow kEnd{Piece::End};
constexpr MenuRow kRule{Piece::Line};

// clang-format off
constexpr MenuRow kBar[] = {
    Menu("ファイル(&F)", "&File"),
      For(kFileNew), For(kFileWizard), For(kFileOpen), kRule, For(kFileSave), For(kFileSaveAs), kRule,
      For(kFileExit), kEnd,
    Menu("編集(&E)", "&Edit"),
      For(kEditUndo), For(kEditRedo), kRule, For(kEditCut), For(kEditCopy), For(kEditPaste),
      For(kEditDelete), kRule, For(kEditSelectAll), kEnd,
    Menu("表示(&V)", "&View"),
      For(kViewCode), For(kViewForm), kRule, For(kViewProperties), For(kViewPages),
      For(kViewToolbox), kRule, For(kViewWider), For(kViewNarrower), kRule, For(kViewNextPane),
      kEnd,
    Menu("書式(&O)", "F&ormat"),
      Menu("整列(&A)", "&Align"),
        For(kAlignLeft), For(kAlignCentre), For(kAlignRight), kRule, For(kAlignTop),
        For(kAlignMiddle), For(kAlignBottom), kRule, For(kAlignGrid), kEnd,
      Menu("同じサイズに揃える(&M)", "&Make Same Size"),
        For(kSameWidth), For(kSameHeight), For(kSameBoth), kEnd,
      kRule, For(kSpaceAcross), For(kSpaceDown), kRule, For(kCentreAcross), For(kCentreDown),
      kRule, For(kToFront), For(kToBack), kRule, For(kTabOrder), kRule, For(kGridShown),
      For(kGridSnaps), kEnd,
    Menu("実行(&R)", "&Run"), For(kRunStart), kEnd,
    Menu("ヘルプ(&H)", "&Help"), For(kHelpKeys), kEnd,
};

constexpr MenuRow kContext[] = {
    For(kViewCode), kRule, For(kEditCut), For(kEditCopy), For(kEditPaste), For(kEditDelete),
    kRule, For(kToFront), For(kToBack), kRule, For(kViewPages), For(kViewProperties),
};
// clang-format on

std::wstring InLanguage(Language language, const char* japanese, const char* english) {
  return Wide(language == Language::Japanese ? japanese : english);
}

void Append(HMENU menu, const MenuRow& row, Language language) {
  if (row.piece == Piece::Line) {
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  } else {
    AppendMenuW(menu, MF_STRING, row.command, ItemText(row.command, language).c_str());
  }
}

template <size_t Count>
com::Menu MakeMenu(HMENU bar, const MenuRow (&rows)[Count], Language language) {
  std::vector<HMENU> open{bar};
  for (const MenuRow& row : rows) {
    if (row.piece == Piece::Menu) {
      open.push_back(CreatePopupMenu());
      AppendMenuW(open[open.size() - 2], MF_POPUP, reinterpret_cast<UINT_PTR>(open.back()),
                  InLanguage(language, row.japanese, row.english).c_str());
    } else if (row.piece == Piece::End) {
      open.pop_back();
    } else {
      Append(open.back(), row, language);
    }
  }
  return com::Menu(bar);
}

Accelerators MakeKeys(KeyScope scope) {
  std::vector<ACCEL> keys;
  for (const CommandRow& row : kRows) {
    if (row.scope != scope || *row.key == 0) continue;
    const form::KeyChord chord = *form::KeyChordOf(row.key);
    BYTE held = FVIRTKEY;
    if (chord.control) held |= FCONTROL;
    if (chord.shift) held |= FSHIFT;
    if (chord.alt) held |= FALT;
    keys.push_back({held, static_cast<WORD>(chord.virtualKey), row.command});
  }
  return Accelerators(CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size())));
}

}  // namespace

com::Menu MakeMenuBar(Language language) { return MakeMenu(CreateMenu(), kBar, language); }

com::Menu MakeContextMenu(Language language) {
  return MakeMenu(CreatePopupMenu(), kContext, language);
}

Accelerators MakeGlobalKeys() { return MakeKeys(KeyScope::Global); }
Accelerators MakeFormKeys() { return MakeKeys(KeyScope::Form); }

std::wstring WordsOf(Command command, Language language) {
  const CommandRow& row = RowOf(command);
  return InLanguage(language, row.japanese, row.english);
}

// A Japanese item has its letter in parentheses at its end; the step's name comes before it.
std::wstring ItemText(Command command, Language language, const std::wstring& step) {
  std::wstring text = WordsOf(command, language);
  if (!step.empty()) {
    const size_t letter = std::min(text.find(L"(&"), text.size());
    text.insert(letter, (letter == text.size() ? L" " : L": ") + step);
  }
  if (const char* key = RowOf(command).key; *key != 0) text += L"\t" + Wide(key);
  return text;
}

}  // namespace qrn::designer
