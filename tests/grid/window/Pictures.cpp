#include "Pictures.h"

#include <objidl.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include "com/Handles.h"
#include "com/Text.h"
#include "tests/support/Pinned.h"

// The header counts on these names.
using std::max;
using std::min;

#include <gdiplus.h>

namespace qrn::test {
namespace {

constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr int kTrace = 24;      // of 255, for a colour's part
constexpr size_t kOneIn = 200;  // pixels that may differ

class GdiPlusSession : Pinned {
 public:
  GdiPlusSession() {
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token_, &input, nullptr);
  }
  ~GdiPlusSession() { Gdiplus::GdiplusShutdown(token_); }

 private:
  ULONG_PTR token_ = 0;
};

using Picture = std::unique_ptr<Gdiplus::Bitmap>;

// A path of the build machine as the system takes it.
std::wstring FileOf(const std::string& folder, const std::string& name) {
  const std::string drive = folder.starts_with('/') ? "Z:" : "";
  return com::Wide(drive + folder + "/" + name + ".png");
}

Picture Take(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  const com::WindowDc screen(nullptr);
  const com::MemoryDc memory(CreateCompatibleDC(screen.get()));
  const com::Bitmap bitmap(CreateCompatibleBitmap(screen.get(), width, height));
  {
    const com::Selected into(memory.get(), bitmap.get());
    BitBlt(memory.get(), 0, 0, width, height, screen.get(), place.left, place.top, SRCCOPY);
  }
  return Picture(Gdiplus::Bitmap::FromHBITMAP(bitmap.get(), nullptr));
}

void Save(Gdiplus::Bitmap& picture, const std::string& folder, const std::string& name) {
  CreateDirectoryW(FileOf(folder, "").substr(0, FileOf(folder, "").size() - 5).c_str(), nullptr);
  picture.Save(FileOf(folder, name).c_str(), &kPngEncoder, nullptr);
}

bool Differ(const Gdiplus::Color& one, const Gdiplus::Color& other) {
  const auto apart = [](int a, int b) { return std::abs(a - b) > kTrace; };
  return apart(one.GetR(), other.GetR()) || apart(one.GetG(), other.GetG()) ||
         apart(one.GetB(), other.GetB());
}

// Counts the pixels that differ and marks them in a picture of their own.
size_t Compare(Gdiplus::Bitmap& shown, Gdiplus::Bitmap& wanted, Gdiplus::Bitmap& difference) {
  size_t count = 0;
  for (UINT y = 0; y < shown.GetHeight(); ++y) {
    for (UINT x = 0; x < shown.GetWidth(); ++x) {
      Gdiplus::Color is, should;
      shown.GetPixel(static_cast<INT>(x), static_cast<INT>(y), &is);
      wanted.GetPixel(static_cast<INT>(x), static_cast<INT>(y), &should);
      const bool differs = Differ(is, should);
      count += differs ? 1 : 0;
      difference.SetPixel(static_cast<INT>(x), static_cast<INT>(y),
                          differs ? Gdiplus::Color(255, 0, 0) : Gdiplus::Color(255, 255, 255));
    }
  }
  return count;
}

}  // namespace

std::string CompareWithPicture(HWND window, const std::string& name) {
  const GdiPlusSession session;
  const Picture shown = Take(window);
  if (std::getenv("QRN_KEEP_PICTURES") != nullptr) {
    Save(*shown, QRN_PICTURES, name);
    return {};
  }
  const Picture wanted(Gdiplus::Bitmap::FromFile(FileOf(QRN_PICTURES, name).c_str(), FALSE));
  if (!wanted || wanted->GetLastStatus() != Gdiplus::Ok) return "there is no picture " + name;
  const bool sameSize =
      wanted->GetWidth() == shown->GetWidth() && wanted->GetHeight() == shown->GetHeight();
  Gdiplus::Bitmap difference(static_cast<INT>(shown->GetWidth()),
                             static_cast<INT>(shown->GetHeight()), PixelFormat24bppRGB);
  const size_t pixels = size_t{shown->GetWidth()} * shown->GetHeight();
  const size_t wrong = sameSize ? Compare(*shown, *wanted, difference) : pixels;
  if (wrong <= pixels / kOneIn) return {};
  Save(*shown, QRN_PICTURE_FAILURES, name);
  Save(*wanted, QRN_PICTURE_FAILURES, name + "-wanted");
  Save(difference, QRN_PICTURE_FAILURES, name + "-difference");
  return name + " differs in " + std::to_string(wrong) + " of " + std::to_string(pixels) +
         " pixels: see " + QRN_PICTURE_FAILURES;
}

}  // namespace qrn::test
