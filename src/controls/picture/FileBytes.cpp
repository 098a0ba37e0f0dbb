#include "controls/picture/FileBytes.h"

#include <io.h>

#include <cstdio>

#include "com/Handles.h"
#include "com/Text.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

constexpr size_t kMostBytes = size_t{256} << 20;
constexpr size_t kPiece = size_t{64} << 10;

using File = com::Held<FILE*, &fclose>;

}  // namespace

std::wstring WidePath(const std::string& path) {
  return std::wstring(com::AsWide(CodePageToUtf16(path)));
}

bool Exists(const std::wstring& path) noexcept { return _waccess(path.c_str(), 0) == 0; }

std::optional<std::vector<uint8_t>> ReadFileBytes(const std::wstring& path) {
  const File file(_wfopen(path.c_str(), L"rb"));
  if (!file) return std::nullopt;
  std::vector<uint8_t> bytes;
  for (size_t got = kPiece; got == kPiece && bytes.size() <= kMostBytes;) {
    const size_t before = bytes.size();
    bytes.resize(before + kPiece);
    got = fread(bytes.data() + before, 1, kPiece, file.get());
    bytes.resize(before + got);
  }
  if (bytes.size() > kMostBytes || ferror(file.get())) return std::nullopt;
  return bytes;
}

}  // namespace qrn
