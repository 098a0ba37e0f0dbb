#include <algorithm>
#include <iterator>

#include "controls/picture/files/PictureFile.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

struct EndingRow {
  std::string_view ending;
  PictureFileKind kind;
};
constexpr EndingRow kEndings[] = {{".WMF", PictureFileKind::Metafile},
                                  {".ICO", PictureFileKind::Icon},
                                  {".BMP", PictureFileKind::Bitmap}};
constexpr size_t kEndingSize = 4;

}  // namespace

PictureFileKind PictureFileKindOf(std::string_view name) noexcept {
  if (name.size() <= kEndingSize) return PictureFileKind::Bitmap;
  const std::string_view ending = name.substr(name.size() - kEndingSize);
  const auto* row = std::ranges::find_if(
      kEndings, [&](const EndingRow& each) { return EqualIgnoringCase(each.ending, ending); });
  return row != std::end(kEndings) ? row->kind : PictureFileKind::None;
}

}  // namespace qrn
