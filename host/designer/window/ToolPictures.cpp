#include "host/designer/window/ToolPictures.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "com/Module.h"
#include "host/container/Text.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

// "module.ocx, 12": a file and the number of a bitmap in it.
struct PicturePlace {
  std::wstring file;
  int number = 0;
};

PicturePlace PlaceOf(const std::wstring& text) {
  const size_t comma = std::min(text.rfind(L','), text.size());
  if (comma == text.size()) return {};
  return {text.substr(0, comma), static_cast<int>(wcstol(text.c_str() + comma + 1, nullptr, 10))};
}

std::wstring ClassId(const GUID& id) {
  wchar_t text[40] = L"";
  StringFromGUID2(id, text, 40);
  return text;
}

PicturePlace RegisteredPlace(const GUID& id) {
  const std::wstring key = L"CLSID\\" + ClassId(id) + L"\\ToolboxBitmap32";
  wchar_t text[1024] = L"";
  LONG size = sizeof text;
  if (RegQueryValueW(HKEY_CLASSES_ROOT, key.c_str(), text, &size) != ERROR_SUCCESS) return {};
  return PlaceOf(text);
}

BOOL CALLBACK AddName(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR names) {
  reinterpret_cast<std::vector<std::wstring>*>(names)->push_back(
      IS_INTRESOURCE(name) ? L"#" + std::to_wstring(reinterpret_cast<ULONG_PTR>(name)) : name);
  return TRUE;
}

std::vector<std::string> RegistrationScripts(HMODULE module) {
  std::vector<std::wstring> names;
  EnumResourceNamesW(module, L"REGISTRY", AddName, reinterpret_cast<LONG_PTR>(&names));
  std::vector<std::string> scripts;
  for (const std::wstring& name : names) {
    HRSRC place = FindResourceW(module, name.c_str(), L"REGISTRY");
    HGLOBAL block = place ? LoadResource(module, place) : nullptr;
    const void* bytes = block ? LockResource(block) : nullptr;
    if (bytes) scripts.emplace_back(static_cast<const char*>(bytes), SizeofResource(module, place));
  }
  return scripts;
}

// What the script would register: the number behind the comma of ToolboxBitmap32.
int NumberInScript(const std::string& script, const std::string& classId) {
  const std::string lower = form::LowerWord(script);
  size_t at = lower.find(form::LowerWord(classId));
  if (at == std::string::npos) return 0;
  at = lower.find("toolboxbitmap32", at);
  if (at == std::string::npos) return 0;
  const std::string line = lower.substr(at, lower.find_first_of("\r\n", at) - at);
  const size_t comma = line.rfind(',');
  return comma == std::string::npos ? 0 : atoi(line.c_str() + comma + 1);
}

com::Bitmap LoadPicture(HMODULE module, int number) {
  return com::Bitmap(static_cast<HBITMAP>(LoadImageW(module, MAKEINTRESOURCEW(number), IMAGE_BITMAP,
                                                     kToolPicture.cx, kToolPicture.cy, 0)));
}

com::Bitmap ScriptedPicture(const std::string& file, const GUID& id) {
  HMODULE module = file.empty() ? nullptr : GetModuleHandleW(host::Wide(file).c_str());
  if (!module) return {};
  for (const std::string& script : RegistrationScripts(module)) {
    if (const int number = NumberInScript(script, host::Utf8(ClassId(id)))) {
      return LoadPicture(module, number);
    }
  }
  return {};
}

std::string FileOf(host::ControlClasses& classes, ITypeInfo* type) {
  host::Com<ITypeLib> library;
  UINT at = 0;
  if (!type || FAILED(type->GetContainingTypeLib(library.put(), &at))) return {};
  for (const host::Com<ITypeLib>& known : classes.Libraries()) {
    if (known.get() == library.get()) return classes.FileOf(known.get());
  }
  return {};
}

using Painter = void (*)(HDC dc, RECT place);

void PaintPointer(HDC dc, RECT) {
  DrawIconEx(dc, 0, -1, LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW)), 0, 0, 0,
             nullptr, DI_NORMAL);
}

void PaintText(HDC dc, RECT place, const wchar_t* text) {
  SetBkMode(dc, TRANSPARENT);
  DrawTextW(dc, text, -1, &place, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

void PaintLabel(HDC dc, RECT place) { PaintText(dc, place, L"A"); }

void PaintTextBox(HDC dc, RECT place) {
  FillRect(dc, &place, GetSysColorBrush(COLOR_WINDOW));
  DrawEdge(dc, &place, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
  PaintText(dc, place, L"ab");
}

void PaintFrame(HDC dc, RECT place) {
  RECT box{place.left, place.top + 3, place.right, place.bottom};
  DrawEdge(dc, &box, EDGE_ETCHED, BF_RECT);
  const RECT caption{place.left + 3, place.top, place.left + 10, place.top + 6};
  FillRect(dc, &caption, GetSysColorBrush(COLOR_WINDOWTEXT));
}

void PaintButton(HDC dc, RECT place) {
  InflateRect(&place, 0, -2);
  DrawFrameControl(dc, &place, DFC_BUTTON, DFCS_BUTTONPUSH);
}

struct PieceRow {
  const char* className;
  Painter paint;
};
constexpr PieceRow kPieces[] = {{"", PaintPointer},
                                {"Label", PaintLabel},
                                {"TextBox", PaintTextBox},
                                {"Frame", PaintFrame},
                                {"CommandButton", PaintButton}};

}  // namespace

com::Bitmap ModulePicture(host::ControlClasses& classes, const std::string& library,
                          const std::string& className) {
  const host::ControlClass found = classes.Find(library, className);
  com::Bitmap scripted = ScriptedPicture(FileOf(classes, found.type.get()), found.id);
  if (scripted) return scripted;
  const PicturePlace place = RegisteredPlace(found.id);
  const com::Library module(
      place.number == 0 ? nullptr
                        : LoadLibraryExW(place.file.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
  return module ? LoadPicture(module.get(), place.number) : com::Bitmap();
}

com::Bitmap FurniturePicture(const std::string& className) {
  const com::WindowDc screen(nullptr);
  const com::MemoryDc dc(CreateCompatibleDC(screen.get()));
  com::Bitmap picture(CreateCompatibleBitmap(screen.get(), kToolPicture.cx, kToolPicture.cy));
  const com::Selected drawn(dc.get(), picture.get());
  const com::Selected font(dc.get(), GetStockObject(DEFAULT_GUI_FONT));
  RECT place{0, 0, kToolPicture.cx, kToolPicture.cy};
  // What letters shade into. The corner stays: it tells what is seen through.
  FillRect(dc.get(), &place, GetSysColorBrush(COLOR_BTNFACE));
  InflateRect(&place, -1, -1);
  const auto* piece =
      std::find_if(std::begin(kPieces), std::end(kPieces),
                   [&](const PieceRow& row) { return form::SameWord(row.className, className); });
  if (piece != std::end(kPieces)) piece->paint(dc.get(), place);
  return picture;
}

}  // namespace qrn::designer
