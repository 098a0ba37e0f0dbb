#include "controls/picture/PictureLoad.h"

#include <olectl.h>
#include <shellapi.h>

#include <array>
#include <vector>

#include "com/Handles.h"
#include "com/Module.h"
#include "controls/picture/FileBytes.h"
#include "controls/picture/files/PictureFile.h"
#include "fields/Messages.h"

namespace qrn {
namespace {

using Picture = com::Com<IPictureDisp>;
using Loaded = std::optional<Picture>;

// The picture owns the handles of `description`; without one they stay the caller's.
Picture MakePicture(PICTDESC& description) {
  Picture picture;
  description.cbSizeofstruct = sizeof description;
  const HRESULT made =
      OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE, picture.putVoid());
  return SUCCEEDED(made) ? picture : Picture();
}

// The hourglass, and after it the arrow.
class Waiting {
 public:
  Waiting() noexcept { SetCursor(LoadCursorA(nullptr, IDC_WAIT)); }
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;
  ~Waiting() { SetCursor(LoadCursorA(nullptr, IDC_ARROW)); }
};

// A screen of more than 256 colours has no use for a palette, and not every system deletes one with
// its picture.
bool TakesPalettes() noexcept {
  const com::WindowDc screen(nullptr);
  return (GetDeviceCaps(screen.get(), RASTERCAPS) & RC_PALETTE) != 0;
}

com::Palette MakePalette(const BitmapFile& file) {
  constexpr size_t kHeader = 40;
  if (file.colors == 0 || !TakesPalettes()) return {};
  std::vector<PALETTEENTRY> block(file.colors + 1);  // a LOGPALETTE's head is as long as an entry
  auto* palette = reinterpret_cast<LOGPALETTE*>(block.data());
  palette->palVersion = 0x300;
  palette->palNumEntries = static_cast<WORD>(file.colors);
  for (size_t i = 0; i < file.colors; ++i) {
    const uint8_t* color = file.info.data() + kHeader + i * 4;
    block[i + 1] = {color[2], color[1], color[0], 0};
  }
  return com::Palette(CreatePalette(palette));
}

// As the screen keeps pixels.
com::Bitmap MakeBitmap(const BitmapFile& file, HPALETTE palette) {
  const com::WindowDc screen(nullptr);
  const HPALETTE before = palette ? SelectPalette(screen.get(), palette, FALSE) : nullptr;
  if (palette) RealizePalette(screen.get());
  const auto* info = reinterpret_cast<const BITMAPINFO*>(file.info.data());
  com::Bitmap bitmap(CreateDIBitmap(screen.get(), &info->bmiHeader, CBM_INIT, file.rows.data(),
                                    info, DIB_RGB_COLORS));
  if (before) SelectPalette(screen.get(), before, FALSE);
  return bitmap;
}

Picture PictureOf(const BitmapFile& file) {
  com::Palette palette = MakePalette(file);
  com::Bitmap bitmap = MakeBitmap(file, palette.get());
  if (!bitmap) return {};
  PICTDESC description{};
  description.picType = PICTYPE_BITMAP;
  description.bmp = {bitmap.get(), palette.get()};
  Picture picture = MakePicture(description);
  if (picture) {
    (void)bitmap.release();
    (void)palette.release();
  }
  return picture;
}

Loaded BitmapPicture(const std::wstring& path, SIZE) {
  const Waiting waiting;
  const auto bytes = ReadFileBytes(path);
  const auto file = bytes ? ReadBitmapFile(*bytes) : std::nullopt;
  Picture picture = file ? PictureOf(*file) : Picture();
  if (!picture) ShowMessage(kVE015);
  return picture;
}

com::Icon FirstIcon(const std::wstring& path) {
  const auto bytes = ReadFileBytes(path);
  if (!bytes || !IsIconFile(*bytes)) return {};
  const HICON icon = ExtractIconW(com::ModuleInstance(), path.c_str(), 0);
  const bool isOne = reinterpret_cast<UINT_PTR>(icon) > 1;  // 1: a file without icons
  return com::Icon(isOne ? icon : nullptr);
}

Loaded IconPicture(const std::wstring& path, SIZE) {
  com::Icon icon = FirstIcon(path);
  PICTDESC description{};
  description.picType = PICTYPE_ICON;
  description.icon.hicon = icon.get();
  Picture picture = icon ? MakePicture(description) : Picture();
  if (!picture) ShowMessage(kVE020);
  if (!icon) return std::nullopt;
  if (picture) (void)icon.release();
  return picture;
}

int MessageOf(MetafileFault fault) {
  if (fault == MetafileFault::PlaceableCut) return kVE023;
  return fault == MetafileFault::TooLarge ? kVE001 : kVE019;
}

void ShowFault(MetafileFault fault) {
  const int id = MessageOf(fault);
  id == kVE001 ? ShowMessage(id, "QRNPic", __LINE__) : ShowMessage(id);
}

// Kept so: the size of the picture is that of the control less two, in pixels, where hundredths of
// a millimetre are meant. Stretched it fills the control.
Loaded PictureOf(com::Metafile metafile, SIZE client) {
  PICTDESC description{};
  description.picType = PICTYPE_METAFILE;
  description.wmf = {metafile.get(), client.cx - 2, client.cy - 2};
  Picture picture = MakePicture(description);
  if (picture) {
    (void)metafile.release();
  } else {
    ShowMessage(kVE019);
  }
  return picture;
}

Loaded MetafilePicture(const std::wstring& path, SIZE client) {
  const auto bytes = ReadFileBytes(path);
  const MetafileFile file =
      bytes ? ReadMetafileFile(*bytes) : MetafileFile{MetafileFault::Unreadable, {}};
  com::Metafile metafile(
      file.bits.empty() ? nullptr
                        : SetMetaFileBitsEx(static_cast<UINT>(file.bits.size()), file.bits.data()));
  if (metafile) return PictureOf(std::move(metafile), client);
  ShowFault(file.fault);
  return std::nullopt;
}

Loaded NoPicture(const std::wstring&, SIZE) { return Picture(); }

}  // namespace

Loaded LoadPictureFile(const std::string& name, const std::string& path, SIZE client) {
  using Load = Loaded (*)(const std::wstring& path, SIZE client);
  // By PictureFileKind.
  constexpr std::array<Load, 4> kLoads{&NoPicture, &BitmapPicture, &IconPicture, &MetafilePicture};
  return kLoads[static_cast<size_t>(PictureFileKindOf(name))](WidePath(path), client);
}

}  // namespace qrn
