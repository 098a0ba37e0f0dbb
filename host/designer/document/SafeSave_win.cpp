#include <windows.h>

#include <algorithm>

#include "host/designer/document/SafeSave.h"
#include "platform/Utf.h"

namespace qrn::designer {
namespace {

std::wstring Wide(const std::string& path) {
  const std::u16string wide = Utf8ToUtf16(path);
  return {wide.begin(), wide.end()};
}

// The system's words for the last failure.
std::string Reason(DWORD error = GetLastError()) {
  wchar_t text[512] = L"";
  DWORD size = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                              error, 0, text, 512, nullptr);
  while (size > 0 && (text[size - 1] == L'\r' || text[size - 1] == L'\n')) --size;
  if (size == 0) return "error " + std::to_string(error);
  return Utf16ToUtf8(std::u16string(text, text + size));
}

class FileHandle {
 public:
  explicit FileHandle(const std::string& path) noexcept
      : handle_(CreateFileW(Wide(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ~FileHandle() {
    if (*this) CloseHandle(handle_);
  }
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  explicit operator bool() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const noexcept { return handle_; }

 private:
  HANDLE handle_;
};

constexpr size_t kLargestWrite = 1u << 20;

}  // namespace

std::string WriteWholeFile(const std::string& path, std::string_view bytes) {
  const FileHandle file(path);
  if (!file) return Reason();
  while (!bytes.empty()) {
    DWORD done = 0;
    const auto size = static_cast<DWORD>(std::min(bytes.size(), kLargestWrite));
    if (!WriteFile(file.get(), bytes.data(), size, &done, nullptr)) return Reason();
    bytes.remove_prefix(done);
  }
  return FlushFileBuffers(file.get()) ? std::string() : Reason();
}

std::string RenameFile(const std::string& from, const std::string& to) {
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  return MoveFileExW(Wide(from).c_str(), Wide(to).c_str(), kHow) ? std::string() : Reason();
}

void RemoveFile(const std::string& path) noexcept { DeleteFileW(Wide(path).c_str()); }

bool FileStands(const std::string& path) noexcept {
  return GetFileAttributesW(Wide(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string WhyNotWritable(const std::string& path) {
  constexpr DWORD kNotToWrite = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  const bool refused = attributes != INVALID_FILE_ATTRIBUTES && (attributes & kNotToWrite) != 0;
  return refused ? Reason(ERROR_ACCESS_DENIED) : std::string();
}

}  // namespace qrn::designer
