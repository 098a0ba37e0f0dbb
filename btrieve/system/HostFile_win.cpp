#include "btrieve/system/HostFile_win.h"

#include <cstring>

#include "btrieve/system/HostPath.h"

namespace btrieve {
namespace {

struct WindowsErrorRow {
  DWORD error;
  Status status;
};
constexpr WindowsErrorRow kWindowsErrors[] = {
    {ERROR_FILE_NOT_FOUND, kFileNotFound},       {ERROR_PATH_NOT_FOUND, kFileNotFound},
    {ERROR_INVALID_DRIVE, kDirectoryError},      {ERROR_BAD_NETPATH, kDirectoryError},
    {ERROR_BAD_NET_NAME, kDirectoryError},       {ERROR_NOT_READY, kDirectoryError},
    {ERROR_DIRECTORY, kDirectoryError},          {ERROR_INVALID_NAME, kInvalidFileName},
    {ERROR_BAD_PATHNAME, kInvalidFileName},      {ERROR_FILENAME_EXCED_RANGE, kInvalidFileName},
    {ERROR_ACCESS_DENIED, kPermissionError},     {ERROR_WRITE_PROTECT, kPermissionError},
    {ERROR_SHARING_VIOLATION, kFileInUse},       {ERROR_LOCK_VIOLATION, kFileInUse},
    {ERROR_TOO_MANY_OPEN_FILES, kFileTableFull},
};

class FileHandle {
 public:
  FileHandle(const std::string& path, DWORD access) noexcept
      : handle_(CreateFileW(WidePath(path).c_str(), access,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr)) {}
  ~FileHandle() {
    if (*this) CloseHandle(handle_);
  }
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  explicit operator bool() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const noexcept { return handle_; }

 private:
  HANDLE handle_;
};

std::string NarrowPath(const std::wstring& path, UINT codePage) {
  const int size = WideCharToMultiByte(codePage, 0, path.data(), static_cast<int>(path.size()),
                                       nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(codePage, 0, path.data(), static_cast<int>(path.size()), text.data(), size,
                      nullptr, nullptr);
  return text;
}

std::wstring Absolute(const std::wstring& path) {
  const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  std::wstring absolute(size, L'\0');
  absolute.resize(GetFullPathNameW(path.c_str(), size, absolute.data(), nullptr));
  return absolute.empty() ? path : absolute;
}

DWORD Attributes(const std::string& path) noexcept {
  return GetFileAttributesW(WidePath(path).c_str());
}

}  // namespace

std::wstring WidePath(const std::string& path) {
  const int size =
      MultiByteToWideChar(CP_ACP, 0, path.data(), static_cast<int>(path.size()), nullptr, 0);
  std::wstring wide(static_cast<size_t>(size), L'\0');
  MultiByteToWideChar(CP_ACP, 0, path.data(), static_cast<int>(path.size()), wide.data(), size);
  return wide;
}

Status StatusOfWindowsError(DWORD error) noexcept {
  for (const WindowsErrorRow& row : kWindowsErrors) {
    if (row.error == error) return row.status;
  }
  return kIoError;
}

FileIdentity IdentityOfHandle(HANDLE file) noexcept {
  BY_HANDLE_FILE_INFORMATION found{};
  if (!GetFileInformationByHandle(file, &found)) return {};
  return {found.dwVolumeSerialNumber, (uint64_t{found.nFileIndexHigh} << 32) | found.nFileIndexLow};
}

namespace {

bool RunsUnderWine() noexcept {
  const HMODULE system = GetModuleHandleW(L"ntdll.dll");
  return system && GetProcAddress(system, "wine_get_version");
}

}  // namespace

void GuardLocks(HANDLE file) noexcept {
  constexpr uint64_t kPlace = INT64_MAX - 0xFF;
  static const bool needed = RunsUnderWine();
  if (!needed) return;
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(kPlace);
  place.OffsetHigh = static_cast<DWORD>(kPlace >> 32);
  LockFileEx(file, LOCKFILE_FAIL_IMMEDIATELY, 0, 2, 0, &place);  // as it was, where it cannot be
}

Status PathFromCaller(const void* key, std::string& path) {
  if (!key) return kInvalidFileName;
  const auto* text = static_cast<const char*>(key);
  size_t length = strnlen(text, kMaxPathLength + 1);
  if (length > kMaxPathLength) return kInvalidFileName;
  while (length > 0 && text[length - 1] == ' ') --length;
  if (length == 0 || std::string_view(text, length).starts_with("btrv://")) return kInvalidFileName;
  path = NarrowPath(Absolute(WidePath(std::string(text, length))), CP_ACP);
  return kOk;
}

Status Identify(const std::string& path, FileIdentity& identity) {
  if (path.empty()) return kDirectoryError;
  const FileHandle file(path, 0);
  if (!file) return StatusOfWindowsError(GetLastError());
  BY_HANDLE_FILE_INFORMATION found{};
  if (!GetFileInformationByHandle(file.Get(), &found)) return StatusOfWindowsError(GetLastError());
  if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return kInvalidFileName;
  identity = IdentityOfHandle(file.Get());
  return kOk;
}

size_t DirectoryLength(const std::string& path) {
  const std::wstring wide = WidePath(path);
  return NarrowPath(wide.substr(0, wide.find_last_of(L"\\/:") + 1), CP_ACP).size();
}

bool DirectoryExists(const std::string& path) {
  const DWORD attributes = Attributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool FileExists(const std::string& path) { return Attributes(path) != INVALID_FILE_ATTRIBUTES; }

uint64_t SizeOfFile(const std::string& path) {
  WIN32_FILE_ATTRIBUTE_DATA found{};
  if (!GetFileAttributesExW(WidePath(path).c_str(), GetFileExInfoStandard, &found)) return 0;
  return (uint64_t{found.nFileSizeHigh} << 32) | found.nFileSizeLow;
}

std::string SqliteName(const std::string& path) { return NarrowPath(WidePath(path), CP_UTF8); }

bool PutInPlace(const std::string& from, const std::string& to) {
  return MoveFileExW(WidePath(from).c_str(), WidePath(to).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

Status PutAsNew(const std::string& from, const std::string& to) {
  if (MoveFileExW(WidePath(from).c_str(), WidePath(to).c_str(), MOVEFILE_WRITE_THROUGH)) return kOk;
  const DWORD error = GetLastError();
  return error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS ? kFileExists : kCreateError;
}

// "C:\dir\file".
bool IsDrivePath(const std::string& path) {
  const std::wstring wide = WidePath(path);
  const bool hasDrive = wide.size() > 3 && ((wide[0] | 0x20) >= L'a' && (wide[0] | 0x20) <= L'z') &&
                        wide[1] == L':' && (wide[2] == L'\\' || wide[2] == L'/');
  return hasDrive && wide.find(L':', 2) == std::wstring::npos;
}

// The system takes "C:\dir\NUL" for "\\.\NUL".
bool IsDevice(const std::string& path) { return Absolute(WidePath(path)).starts_with(L"\\\\.\\"); }

// The drive's kind is known without asking the other machine. "\\?\C:" is a drive, too.
bool SystemSaysRemote(const std::string& path) {
  std::wstring wide = WidePath(path);
  if (wide.starts_with(L"\\\\?\\") && wide.size() > 5 && wide[5] == L':') wide.erase(0, 4);
  if (wide.starts_with(L"\\\\") || wide.starts_with(L"//")) return true;
  return GetDriveTypeW((wide.substr(0, 2) + L"\\").c_str()) == DRIVE_REMOTE;
}

void RemoveFile(const std::string& path) noexcept { DeleteFileW(WidePath(path).c_str()); }

// The system keeps its folders by itself.
bool SyncFolderBySystem(const std::string&) noexcept { return true; }

bool SyncBySystem(const std::string& path, bool) noexcept {
  const FileHandle file(path, GENERIC_READ | GENERIC_WRITE);
  if (!file) return GetLastError() == ERROR_FILE_NOT_FOUND;
  return FlushFileBuffers(file.Get()) != 0;
}

}  // namespace btrieve
