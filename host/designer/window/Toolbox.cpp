#include "host/designer/window/Toolbox.h"

#include <algorithm>
#include <stdexcept>

#include "host/container/Text.h"
#include "host/designer/model/DatabaseClass.h"
#include "host/designer/panes/PaneWindow.h"
#include "host/designer/window/Commands.h"
#include "host/designer/window/ToolPictures.h"
#include "host/designer/window/WindowTexts.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

constexpr int kColumns = 3;
constexpr int kToolMargin = 3;
constexpr const char* kFurniture[] = {"Label", "TextBox", "Frame", "CommandButton"};

SIZE PictureSize() { return {Scaled(kToolPicture.cx), Scaled(kToolPicture.cy)}; }

// As large as the screen's resolution asks for; no colour is mixed, for one is seen through.
com::Bitmap Enlarged(HBITMAP picture) {
  const com::WindowDc screen(nullptr);
  const com::MemoryDc from(CreateCompatibleDC(screen.get()));
  const com::MemoryDc to(CreateCompatibleDC(screen.get()));
  const SIZE size = PictureSize();
  com::Bitmap large(CreateCompatibleBitmap(screen.get(), size.cx, size.cy));
  const com::Selected source(from.get(), picture);
  const com::Selected target(to.get(), large.get());
  SetStretchBltMode(to.get(), COLORONCOLOR);
  StretchBlt(to.get(), 0, 0, size.cx, size.cy, from.get(), 0, 0, kToolPicture.cx, kToolPicture.cy,
             SRCCOPY);
  return large;
}

COLORREF CornerOf(HBITMAP picture) {
  const com::WindowDc screen(nullptr);
  const com::MemoryDc dc(CreateCompatibleDC(screen.get()));
  const com::Selected drawn(dc.get(), picture);
  return GetPixel(dc.get(), 0, 0);
}

}  // namespace

Toolbox::Toolbox(HWND parent, ToolboxOwner& owner, form::Language language)
    : owner_(owner), language_(language) {
  constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT |
                           TBSTYLE_TOOLTIPS | TBSTYLE_WRAPABLE | CCS_NOPARENTALIGN | CCS_NORESIZE |
                           CCS_NODIVIDER;
  bar_ = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"", kStyle, 0, 0, 0, 0, parent, nullptr,
                         GetModuleHandleW(nullptr), nullptr);
  if (!bar_) throw std::runtime_error("the toolbox cannot be made");
  SendMessageW(bar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  const SIZE size = PictureSize();
  images_.reset(ImageList_Create(size.cx, size.cy, ILC_COLOR24 | ILC_MASK, 16, 16));
  SendMessageW(bar_, TB_SETBITMAPSIZE, 0, MAKELPARAM(size.cx, size.cy));
  SendMessageW(bar_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images_.get()));
  SendMessageW(bar_, TB_SETMAXTEXTROWS, 0, 0);
}

int Toolbox::Width() const noexcept {
  const LRESULT size = SendMessageW(bar_, TB_GETBUTTONSIZE, 0, 0);
  return kColumns * LOWORD(size) + 2 * Scaled(kToolMargin);
}

void Toolbox::Add(const Button& added, HBITMAP picture) {
  const std::wstring name =
      added.tool.className.empty() ? Said(WindowText::Pointer, language_) : host::Wide(added.name);
  TBBUTTON button{};
  const com::Bitmap large = picture ? Enlarged(picture) : com::Bitmap();
  button.iBitmap =
      large ? ImageList_AddMasked(images_.get(), large.get(), CornerOf(large.get())) : -1;
  button.idCommand = kFirstTool + static_cast<int>(tools_.size());
  button.fsState = TBSTATE_ENABLED;
  button.fsStyle = BTNS_CHECKGROUP;
  button.iString = reinterpret_cast<INT_PTR>(name.c_str());
  tools_.push_back(added);
  SendMessageW(bar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
}

void Toolbox::Fill(host::ControlClasses& classes, const ModuleClassSource& source) {
  while (SendMessageW(bar_, TB_DELETEBUTTON, 0, 0)) continue;
  tools_.clear();
  ImageList_RemoveAll(images_.get());
  Add({{}, "Pointer"}, FurniturePicture("").get());
  for (const char* piece : kFurniture) Add({{"VB", piece}, piece}, FurniturePicture(piece).get());
  for (const host::Com<ITypeLib>& known : classes.Libraries()) {
    com::Bstr name;
    known->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
    const std::string library = host::Utf8(name.view());
    for (const std::string& control : source.ControlsOf(library)) {
      Add({{library, control}, UsersName(control)}, ModulePicture(classes, library, control).get());
    }
  }
  TakePointer();
}

void Toolbox::TakePointer() { SendMessageW(bar_, TB_CHECKBUTTON, kFirstTool, TRUE); }

// The rows break where the bar's width ends.
void Toolbox::PutAt(const RECT& place) noexcept {
  SetWindowPos(bar_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  SendMessageW(bar_, TB_AUTOSIZE, 0, 0);
}

void Toolbox::TakeFocus() noexcept {
  SetFocus(bar_);
  if (HotTool() < 0) SendMessageW(bar_, TB_SETHOTITEM, 0, 0);
}

int Toolbox::HotTool() const noexcept {
  return static_cast<int>(SendMessageW(bar_, TB_GETHOTITEM, 0, 0));
}

void Toolbox::Take(int tool) {
  SendMessageW(bar_, TB_CHECKBUTTON, static_cast<WPARAM>(kFirstTool + tool), TRUE);
  const Tool& taken = tools_[static_cast<size_t>(tool)].tool;
  owner_.OnTool(taken.className.empty() ? std::nullopt : std::optional(taken));
}

void Toolbox::PutInMiddle(int tool) {
  TakePointer();
  owner_.OnTool(std::nullopt);
  const Tool taken = tools_[static_cast<size_t>(tool)].tool;
  if (!taken.className.empty()) owner_.OnToolToMiddle(taken);
}

bool Toolbox::OnCommand(WORD command) {
  const int tool = command - kFirstTool;
  if (tool < 0 || tool >= static_cast<int>(tools_.size())) return false;
  Take(tool);
  return true;
}

bool Toolbox::OnKey(WPARAM key) {
  struct KeyRow {
    WPARAM key;
    int step;
  };
  constexpr KeyRow kSteps[] = {
      {VK_LEFT, -1}, {VK_RIGHT, 1}, {VK_UP, -kColumns}, {VK_DOWN, kColumns}};
  const int count = static_cast<int>(tools_.size());
  const int hot = std::clamp(HotTool(), 0, count - 1);
  if (key == VK_RETURN) return PutInMiddle(hot), true;
  if (key == VK_SPACE) return Take(hot), true;
  for (const KeyRow& row : kSteps) {
    if (row.key != key) continue;
    const int to = hot + row.step;
    if (to >= 0 && to < count) SendMessageW(bar_, TB_SETHOTITEM, static_cast<WPARAM>(to), 0);
    return true;
  }
  return false;
}

bool Toolbox::PreTranslate(const MSG& message) {
  if (message.hwnd != bar_) return false;
  if (message.message == WM_KEYDOWN) return OnKey(message.wParam);
  if (message.message != WM_LBUTTONDBLCLK) return false;
  POINT point{static_cast<short>(LOWORD(message.lParam)),
              static_cast<short>(HIWORD(message.lParam))};
  const auto tool =
      static_cast<int>(SendMessageW(bar_, TB_HITTEST, 0, reinterpret_cast<LPARAM>(&point)));
  if (tool >= 0 && tool < static_cast<int>(tools_.size())) PutInMiddle(tool);
  return true;
}

RECT Toolbox::PlaceOf(const std::string& name) const {
  RECT place{};
  for (size_t at = 0; at < tools_.size(); ++at) {
    if (!form::SameWord(tools_[at].name, name)) continue;
    SendMessageW(bar_, TB_GETITEMRECT, at, reinterpret_cast<LPARAM>(&place));
    MapWindowPoints(bar_, nullptr, reinterpret_cast<POINT*>(&place), 2);
  }
  return place;
}

}  // namespace qrn::designer
