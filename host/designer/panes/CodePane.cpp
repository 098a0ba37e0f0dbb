#include "host/designer/panes/CodePane.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "com/Text.h"
#include "host/designer/panes/CodeEditor.h"
#include "host/designer/panes/CodeMargin.h"
#include "host/designer/panes/CodeMistakes.h"
#include "host/designer/panes/EventBoxes.h"
#include "host/designer/panes/FindBox.h"
#include "host/designer/panes/PaneTexts.h"
#include "host/designer/panes/PaneWindow.h"

namespace qrn::designer {
namespace {

enum ChildId { kEditorId = 10, kReasonId, kPlaceId };
constexpr UINT_PTR kCheckTimer = 1;
// So long nothing is typed before the code is looked through.
constexpr UINT kCheckDelay = 400;
constexpr int kCodeSpare = 3;
constexpr int kPlaceWidth = 130;
constexpr COLORREF kReasonColour = RGB(192, 0, 0);

class EditingPane final : public CodePane, private PaneWindow {
 public:
  EditingPane(Workplace& place, HWND parent);
  ~EditingPane() override { Close(); }

  HWND Window() const noexcept override { return window(); }
  void TakeFocus() override { SetFocus(editor_.window()); }
  void OnChange(const ChangeReport& report) override;
  void OnOpened() override;
  bool Settle() override;
  bool PreTranslate(MSG& message) override;
  void Go(const std::string& object, const std::string& event) override;
  void GoToLine(int line) override;

 private:
  bool OnMessage(com::Message& message) override;
  void OnCommand(int id, int code);
  void OnTyped();
  void OnMoved();
  void OnSeek();
  void Arrange();

  Design& design() const { return place_.design(); }
  CodePart Code() const { return CodePart(place_.design()); }
  void Load();
  void Survey();
  void Check();
  void ShowReason();
  void ShowCaret();
  std::string Reason() const;

  bool OnKey(UINT key);
  void Undo();
  void Redo();
  void NextMistake();
  void NextProcedure(bool back);
  void Find();

  Workplace& place_;
  EventBoxes boxes_;
  CodeEditor editor_;
  CodeMargin margin_;
  FindBox find_;
  HWND reason_ = nullptr;
  HWND caretPlace_ = nullptr;
  CaretPlace caret_{-1, 0};
  int typedLine_ = -1;  // where the user typed last
  std::vector<CodeProcedure> procedures_;
  CodeMistakes mistakes_;
  Refusal refusal_;  // why the design does not have what the editor shows
};

EditingPane::EditingPane(Workplace& place, HWND parent) : place_(place) {
  Make(parent, WS_VISIBLE);
  boxes_.Make(window(), place.Font(), [this](const EventPlace& chosen) {
    Go(chosen.object, chosen.event);
    TakeFocus();
  });
  editor_.Make(
      window(), kEditorId, [this] { OnMoved(); }, [this] { Undo(); });
  margin_.MakeIn(window(), editor_.font());
  reason_ = MakeControl(window(), L"Static", SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, kReasonId,
                        place.Font());
  caretPlace_ = MakeControl(window(), L"Static", SS_RIGHT | SS_NOPREFIX, kPlaceId, place.Font());
  OnOpened();
}

// --- The design's code.

void EditingPane::OnOpened() {
  refusal_.reset();
  typedLine_ = -1;
  Load();
  Check();
  editor_.GoTo(0);
}

void EditingPane::Load() {
  editor_.PutCode(Code().Text());
  Survey();
}

void EditingPane::OnChange(const ChangeReport& report) {
  if (report.code && !refusal_ && editor_.Code() != Code().Text()) Load();
  if (!report.Any()) return;
  if (report.structure || !report.properties.empty()) Survey();
  SetTimer(window(), kCheckTimer, kCheckDelay, nullptr);
}

// Who has handlers, and where.
void EditingPane::Survey() {
  procedures_ = Code().Procedures();
  boxes_.Show(Code(), procedures_, Said(PaneText::GeneralObject, place_.language()));
  caret_.line = -1;
  OnMoved();
}

// One line's typing is one step.
void EditingPane::OnTyped() {
  if (editor_.IsFilling()) return;
  const int line = editor_.Caret().line;
  if (line != std::exchange(typedLine_, line)) design().Seal();
  refusal_ = Code().PutText(editor_.Code());
  SetTimer(window(), kCheckTimer, kCheckDelay, nullptr);
  OnMoved();
  ShowReason();
}

void EditingPane::Check() {
  KillTimer(window(), kCheckTimer);
  mistakes_.Check(design());
  margin_.Mark(mistakes_.Lines());
  Survey();
  ShowReason();
}

bool EditingPane::Settle() {
  find_.Close();
  design().Seal();
  typedLine_ = -1;
  if (!refusal_) return true;
  place_.Tell(refusal_);
  TakeFocus();
  return false;
}

void EditingPane::Undo() {
  if (refusal_) {
    refusal_.reset();
    Load();
    return ShowReason();
  }
  design().Seal();
  design().Undo();
}

void EditingPane::Redo() {
  if (!refusal_) design().Redo();
}

// --- Where the caret is.

void EditingPane::OnMoved() {
  const CodeMargin::View view{editor_.FirstVisibleLine(), editor_.LineCount(), editor_.Top()};
  const int width = margin_.Width();
  margin_.Show(view);
  if (margin_.Width() != width) Arrange();
  const CaretPlace caret = editor_.Caret();
  if (caret == caret_) return;
  const bool otherLine = caret.line != caret_.line;
  caret_ = caret;
  ShowCaret();
  if (otherLine) ShowReason();
}

void EditingPane::ShowCaret() {
  SetText(caretPlace_, Said(PaneText::LineAndColumn, place_.language(),
                            {std::to_string(caret_.line + 1), std::to_string(caret_.column + 1)}));
  const auto here =
      std::find_if(procedures_.begin(), procedures_.end(), [&](const CodeProcedure& procedure) {
        return caret_.line >= procedure.firstLine && caret_.line <= procedure.lastLine;
      });
  boxes_.PutPlace(Code(), here == procedures_.end() ? std::nullopt : Code().HandledBy(here->name));
}

std::string EditingPane::Reason() const {
  if (refusal_) return Said(PaneText::NotInDesign, place_.language());
  return mistakes_.Reason(caret_.line, place_.language());
}

void EditingPane::ShowReason() {
  const std::string reason = Reason();
  if (TextOf(reason_) != reason) SetText(reason_, reason);
}

void EditingPane::GoToLine(int line) {
  editor_.GoTo(line);
  TakeFocus();
}

void EditingPane::Go(const std::string& object, const std::string& event) {
  if (!Settle()) return;
  int line = 0;
  if (Refusal refusal = Code().FindOrMake(object, event, &line)) return place_.Tell(refusal);
  Survey();
  GoToLine(line);
}

void EditingPane::NextMistake() {
  if (const auto line = mistakes_.NextBehind(caret_.line)) GoToLine(*line);
}

void EditingPane::NextProcedure(bool back) {
  std::optional<int> line;
  for (const CodeProcedure& procedure : procedures_) {
    const bool fits = back ? procedure.firstLine < caret_.line : procedure.firstLine > caret_.line;
    if (fits && (back || !line)) line = procedure.firstLine;
  }
  if (line) GoToLine(*line);
}

// --- Finding.

void EditingPane::Find() {
  const std::u16string text = editor_.Text();
  const size_t start = editor_.SelectionStart();
  const std::u16string chosen = text.substr(start, editor_.SelectionEnd() - start);
  const bool isWord = chosen.find_first_of(u"\r\n") == std::u16string::npos;
  find_.Open(window(), isWord ? std::u16string_view(chosen) : std::u16string_view());
}

void EditingPane::OnSeek() {
  const Sought& sought = find_.sought();
  if (sought.text.empty()) return Find();
  const size_t from = sought.down ? editor_.SelectionEnd() : editor_.SelectionStart();
  const auto at = FindInText(editor_.Text(), sought, from);
  if (at) return editor_.Select(*at, *at + sought.text.size());
  place_.Tell(Said(PaneText::NotFound, place_.language(), {com::Utf8(com::AsWide(sought.text))}));
}

// --- Messages.

void EditingPane::Arrange() {
  const SIZE size = ClientSize();
  const int spare = Scaled(kCodeSpare);
  const int line = LineHeight(place_.Font()) + 2 * spare;
  boxes_.Arrange(0, size.cx);
  const int top = boxes_.Height() + spare;
  const int bottom = std::max<int>(size.cy - line, top);
  const int left = margin_.Width();
  PlaceWindow(margin_.Window(), {0, top, left, bottom});
  PlaceWindow(editor_.window(), {left, top, size.cx, bottom});
  const int right = std::max<int>(size.cx - Scaled(kPlaceWidth), 0);
  PlaceWindow(reason_, {spare, bottom + spare, right, size.cy});
  PlaceWindow(caretPlace_, {right, bottom + spare, size.cx - spare, size.cy});
}

void EditingPane::OnCommand(int id, int code) {
  if (id == kEditorId && code == EN_CHANGE) OnTyped();
  boxes_.OnCommand(Code(), id, code);
}

bool EditingPane::OnMessage(com::Message& message) {
  bool seek = false;
  if (find_.Hears(message.id, message.lParam, &seek)) {
    if (seek) OnSeek();
    if (!find_.window()) TakeFocus();
    return true;
  }
  switch (message.id) {
    case WM_SIZE:
      Arrange();
      return true;
    case WM_TIMER:
      Check();
      return true;
    case WM_SETFOCUS:
      TakeFocus();
      return true;
    case WM_COMMAND:
      OnCommand(LOWORD(message.wParam), HIWORD(message.wParam));
      return true;
    case WM_DRAWITEM:
      message.result = TRUE;
      return boxes_.Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam));
    case WM_MEASUREITEM:
      message.result = TRUE;
      return boxes_.Measure(*reinterpret_cast<MEASUREITEMSTRUCT*>(message.lParam));
    case WM_CTLCOLORSTATIC:
      if (reinterpret_cast<HWND>(message.lParam) != reason_) return false;
      SetTextColor(reinterpret_cast<HDC>(message.wParam), kReasonColour);
      SetBkMode(reinterpret_cast<HDC>(message.wParam), TRANSPARENT);
      message.result = reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
      return true;
    default:
      return false;
  }
}

bool EditingPane::OnKey(UINT key) {
  struct Row {
    UINT key;
    bool control;
    void (*run)(EditingPane& pane);
  };
  static constexpr Row kKeys[] = {
      {VK_TAB, false, [](EditingPane& pane) { pane.editor_.Tab(IsPressed(VK_SHIFT)); }},
      {VK_RETURN, false, [](EditingPane& pane) { pane.editor_.NewLine(); }},
      {VK_F8, false, [](EditingPane& pane) { pane.NextMistake(); }},
      {VK_F3, false, [](EditingPane& pane) { pane.OnSeek(); }},
      {'F', true, [](EditingPane& pane) { pane.Find(); }},
      {'A', true, [](EditingPane& pane) { pane.editor_.SelectAll(); }},
      {'Z', true, [](EditingPane& pane) { pane.Undo(); }},
      {'Y', true, [](EditingPane& pane) { pane.Redo(); }},
      {VK_UP, true, [](EditingPane& pane) { pane.NextProcedure(true); }},
      {VK_DOWN, true, [](EditingPane& pane) { pane.NextProcedure(false); }},
  };
  for (const Row& row : kKeys) {
    if (row.key == key && row.control == IsPressed(VK_CONTROL)) return row.run(*this), true;
  }
  return false;
}

bool EditingPane::PreTranslate(MSG& message) {
  if (find_.Takes(message)) return true;
  if (!LiesIn(message.hwnd, window()) || message.message != WM_KEYDOWN) return false;
  if (message.hwnd == editor_.window()) return OnKey(static_cast<UINT>(message.wParam));
  const bool isBack = message.wParam == VK_ESCAPE || message.wParam == VK_TAB;
  const bool isDropped = SendMessageW(message.hwnd, CB_GETDROPPEDSTATE, 0, 0) != 0;
  if (isBack && !isDropped) return TakeFocus(), true;
  return boxes_.TakesKey(message);
}

}  // namespace

std::unique_ptr<CodePane> MakeCodePane(Workplace& place, HWND parent) {
  return std::make_unique<EditingPane>(place, parent);
}

}  // namespace qrn::designer
