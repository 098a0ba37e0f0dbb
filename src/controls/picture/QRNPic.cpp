#include "controls/picture/QRNPic.h"

#include <olectl.h>

#include "binding/tables/QRNPicTable.h"
#include "com/Extent.h"
#include "controls/picture/FileBytes.h"
#include "controls/picture/PictureLoad.h"
#include "fields/FieldCodecs.h"
#include "fields/Messages.h"
#include "ole/Names.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

using C = CQRNPic;

// clang-format off
constexpr ole::PropertyEntry kAccess[] = {
    {ole::stock::kPicture, ole::Field<&C::Picture>},
    {4, ole::Field<&C::PictureType>},
    {5, ole::Field<&C::Stretch>},
    {6, ole::Field<&C::BlobPath>},
};
// clang-format on
constexpr auto kProperties =
    ole::BindProperties<kQRNPicTable>(kAccess, kFieldAccess<C>, ole::kStockAccess);
constexpr ole::Binding kBinding{kProperties, {}};

constexpr ole::StockDefaults kPictureLook{ole::kButtonLook.backColor, ole::kButtonLook.foreColor, 1,
                                          false};
constexpr size_t kPathSize = 260;  // bytes with the NUL: a longer path is cut
constexpr int kEdge = 2;           // pixels

void DrawFrame(HDC dc, const RECT& rect) {
  const com::Pen pen(CreatePen(PS_SOLID, 1, RGB(0, 0, 0)));
  const com::Selected line(dc, pen.get());
  Rectangle(dc, rect.left, rect.top, rect.right, rect.bottom);
}

}  // namespace

const ole::MessageRow<CQRNPic> CQRNPic::kOwnMessages[] = {
    {WM_LBUTTONUP, &CQRNPic::OnButtonUp},
    {WM_RBUTTONUP, &CQRNPic::OnButtonUp},
    {WM_LBUTTONDBLCLK, &CQRNPic::OnDoubleClick},
};

CQRNPic::CQRNPic() : FieldBound(kQRNPicTable, kBinding, kPictureLook) {}

// The event of the mouse's button comes before what it means.
bool CQRNPic::OnWindowMessage(ole::Message& message) {
  const bool ends = VisibleControl::OnWindowMessage(message);
  return Route(*this, kOwnMessages, message) || ends;
}

bool CQRNPic::OnButtonUp(ole::Message&) {
  ole::Fire<kQRNPicTable, "Click">(*this);
  return false;
}

bool CQRNPic::OnDoubleClick(ole::Message&) {
  ole::Fire<kQRNPicTable, "DblClick">(*this);
  return false;
}

CQRNPic::KeyEnd CQRNPic::OnKeyDown(MSG& message) {
  if (message.wParam != VK_RETURN) return VisibleControl::OnKeyDown(message);
  ole::Fire<kQRNPicTable, "Click">(*this);
  return KeyEnd::Here;
}

void CQRNPic::OnDraw(HDC dc, const RECT& rect) {
  const com::Selected brush(dc, BackgroundBrush());
  FillRect(dc, &rect, BackgroundBrush());
  if (BorderStyle) DrawFrame(dc, rect);
  RECT inner = rect;
  if (Appearance) {
    DrawEdge(dc, &inner, EDGE_SUNKEN, BF_RECT);
    InflateRect(&inner, -kEdge, -kEdge);
  }
  if (Picture && !IsRectEmpty(&inner)) DrawPicture(dc, inner);
}

// The picture's own rectangle counts upwards.
void CQRNPic::DrawPicture(HDC dc, const RECT& rect) const {
  const auto picture = com::Query<IPicture>(Picture);
  OLE_XSIZE_HIMETRIC width = 0;
  OLE_YSIZE_HIMETRIC height = 0;
  if (!picture || FAILED(picture->get_Width(&width)) || FAILED(picture->get_Height(&height))) {
    return;
  }
  const SIZE size = Stretch ? com::SizeOf(rect) : com::HimetricToPixels({width, height});
  const com::Clipped inside(dc, rect);
  picture->Render(dc, rect.left, rect.top, size.cx, size.cy, 0, height - 1, width, -height, &rect);
}

// Names of files stand in character fields alone.
bool CQRNPic::IsCharacterField(const DbTableInfo& table) const {
  const DbFieldInfo* field = FindField(table);
  return field != nullptr && field->Type == kString;
}

std::string CQRNPic::PathOf(const std::string& text) const {
  std::string path = BlobPath.empty() ? text : NarrowText(BlobPath) + "\\" + text;
  path.resize(CutAtCharacter(path, kPathSize - 1));
  return path;
}

void CQRNPic::LoadPictureFromField(const DbTableInfo& table, const char* text) {
  if (!hwnd() || !IsCharacterField(table)) return;
  const ole::Com<IUnknown> alive(&Outer());
  const std::string name = text;
  const std::string path = PathOf(name);
  if (!Exists(WidePath(path))) {
    ShowMessage(kVE819, path.c_str());
    return;
  }
  RECT client{};
  GetClientRect(hwnd(), &client);
  auto loaded = LoadPictureFile(name, path, com::SizeOf(client));
  if (!loaded || *loaded == Picture) return;
  Picture = std::move(*loaded);
  Redraw();
}

}  // namespace qrn
