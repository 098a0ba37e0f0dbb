// Wide characters throughout: an installation path need not fit the code page.
#include <windows.h>

#include <string>
#include <string_view>

#include "platform/SystemLibrary.h"

namespace qrn {
namespace {

bool IsAbsolute(std::wstring_view path) {
  const bool drive = path.size() > 2 && path[1] == L':' && (path[2] == L'\\' || path[2] == L'/');
  return drive || path.starts_with(L"\\\\");
}

// A text of a system call that takes a buffer and its size and gives the length, or the size
// needed.
template <class Call>
std::wstring SystemText(Call call) {
  std::wstring text(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = call(text.data(), static_cast<DWORD>(text.size()));
    if (length < text.size()) {
      text.resize(length);
      return text;
    }
    text.resize(text.size() * 2);
  }
}

// Null for the program.
std::wstring DirectoryOf(HMODULE module) {
  const std::wstring path = SystemText(
      [module](wchar_t* out, DWORD size) { return GetModuleFileNameW(module, out, size); });
  return path.substr(0, path.find_last_of(L'\\'));
}

std::wstring OwnDirectory() {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCWSTR>(&OwnDirectory), &module);
  return DirectoryOf(module);
}

void* LoadFrom(std::wstring directory, const std::wstring& file) {
  if (!directory.ends_with(L'\\')) directory += L'\\';
  return LoadLibraryExW((directory + file).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

std::wstring SearchPath() {
  return SystemText(
      [](wchar_t* out, DWORD size) { return GetEnvironmentVariableW(L"PATH", out, size); });
}

// A directory may stand in quotes.
std::wstring NextDirectory(std::wstring& rest) {
  const size_t end = rest.find(L';');
  std::wstring directory = rest.substr(0, end);
  rest.erase(0, end == rest.npos ? end : end + 1);
  std::erase(directory, L'"');
  return directory;
}

void* LoadFromPath(const std::wstring& file) {
  std::wstring rest = SearchPath();
  while (!rest.empty()) {
    const std::wstring directory = NextDirectory(rest);
    if (!IsAbsolute(directory)) continue;
    if (void* handle = LoadFrom(directory, file); handle != nullptr) return handle;
  }
  return nullptr;
}

void* Load(const char* name) {
  const std::string_view text = name;
  const std::wstring file = std::wstring(text.begin(), text.end()) + L".dll";
  if (void* handle = LoadFrom(SystemText(GetSystemDirectoryW), file); handle != nullptr) {
    return handle;
  }
  if (void* handle = LoadFromPath(file); handle != nullptr) return handle;
  if (void* handle = LoadFrom(DirectoryOf(nullptr), file); handle != nullptr) return handle;
  return LoadFrom(OwnDirectory(), file);
}

}  // namespace

SystemLibrary::SystemLibrary(const char* name) : handle_(Load(name)) {}

SystemLibrary::AnyFunction SystemLibrary::FindAddress(const char* functionName,
                                                      unsigned ordinal) const noexcept {
  if (handle_ == nullptr) return nullptr;
  const char* which = ordinal != 0 ? MAKEINTRESOURCEA(ordinal) : functionName;
  return reinterpret_cast<AnyFunction>(GetProcAddress(static_cast<HMODULE>(handle_), which));
}

bool LoadedModulePath(const char* name, std::span<char> out) noexcept {
  const HMODULE module = GetModuleHandleA(name);
  if (module == nullptr || out.empty()) return false;
  return GetModuleFileNameA(module, out.data(), static_cast<DWORD>(out.size())) != 0;
}

}  // namespace qrn
