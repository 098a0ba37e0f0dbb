#include "host/user/WindowShot.h"

#include <objidl.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "com/Handles.h"
#include "host/container/Text.h"

// The header counts on these names.
using std::max;
using std::min;

#include <gdiplus.h>

namespace qrn::host {
namespace {

// {557CF406-1A04-11D3-9A73-0000F81EF32E}
constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

class GdiPlusSession {
 public:
  GdiPlusSession() {
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token_, &input, nullptr) != Gdiplus::Ok) {
      throw std::runtime_error("the system saves no pictures");
    }
  }
  GdiPlusSession(const GdiPlusSession&) = delete;
  GdiPlusSession& operator=(const GdiPlusSession&) = delete;
  ~GdiPlusSession() { Gdiplus::GdiplusShutdown(token_); }

 private:
  ULONG_PTR token_ = 0;
};

}  // namespace

void SaveScreen(const RECT& part, const std::string& file) {
  const int width = part.right - part.left;
  const int height = part.bottom - part.top;
  if (width <= 0 || height <= 0)
    throw std::runtime_error(file + ": there is nothing to take a picture of");
  const com::WindowDc screen(nullptr);
  const com::MemoryDc memory(CreateCompatibleDC(screen.get()));
  const com::Bitmap bitmap(CreateCompatibleBitmap(screen.get(), width, height));
  {
    const com::Selected selected(memory.get(), bitmap.get());
    BitBlt(memory.get(), 0, 0, width, height, screen.get(), part.left, part.top, SRCCOPY);
  }
  const GdiPlusSession session;
  const std::unique_ptr<Gdiplus::Bitmap> picture(
      Gdiplus::Bitmap::FromHBITMAP(bitmap.get(), nullptr));
  if (!picture || picture->Save(Wide(file).c_str(), &kPngEncoder, nullptr) != Gdiplus::Ok) {
    throw std::runtime_error(file + ": the picture cannot be saved");
  }
}

RECT ScreenPartOf(HWND window) noexcept {
  RECT part{};
  GetWindowRect(window, &part);
  const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  RECT shown{};
  IntersectRect(&shown, &part, &screen);
  return shown;
}

}  // namespace qrn::host
