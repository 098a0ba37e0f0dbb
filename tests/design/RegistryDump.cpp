#include "RegistryDump.h"

#include <vector>

#include "com/Handles.h"

namespace qrn::test {
namespace {

std::wstring Data(DWORD type, const std::vector<uint8_t>& bytes) {
  std::wstring text = std::to_wstring(type) + L":";
  if (type == REG_SZ) {
    const auto* wide = reinterpret_cast<const wchar_t*>(bytes.data());
    return text + std::wstring(wide, bytes.size() / 2);
  }
  for (uint8_t byte : bytes) text += std::to_wstring(byte) + L".";
  return text;
}

void AddValues(HKEY key, const std::wstring& path, RegistryDump& dump) {
  for (DWORD i = 0;; ++i) {
    wchar_t name[1024] = {};
    DWORD nameSize = 1024;
    DWORD type = 0;
    static std::vector<uint8_t> room(65536);
    DWORD size = static_cast<DWORD>(room.size());
    if (RegEnumValueW(key, i, name, &nameSize, nullptr, &type, room.data(), &size) !=
        ERROR_SUCCESS) {
      return;
    }
    dump[path + L"\\" + name] = Data(type, {room.begin(), room.begin() + size});
  }
}

void AddKey(HKEY parent, const std::wstring& name, const std::wstring& path, RegistryDump& dump) {
  com::Key key;
  if (RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ, key.put()) != ERROR_SUCCESS) return;
  dump[path];
  AddValues(key.get(), path, dump);
  for (DWORD i = 0;; ++i) {
    wchar_t below[256] = {};
    DWORD size = 256;
    const LSTATUS result =
        RegEnumKeyExW(key.get(), i, below, &size, nullptr, nullptr, nullptr, nullptr);
    if (result != ERROR_SUCCESS) return;
    AddKey(key.get(), below, path + L"\\" + below, dump);
  }
}

std::string Narrow(const std::wstring& text) {
  std::string narrow(text.size() * 3, '\0');
  narrow.resize(static_cast<size_t>(
      WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), narrow.data(),
                          static_cast<int>(narrow.size()), nullptr, nullptr)));
  return narrow.substr(0, narrow.find('\0'));
}

}  // namespace

RegistryDump Dump(HKEY root, const std::wstring& path) {
  RegistryDump dump;
  AddKey(root, path, path, dump);
  return dump;
}

RegistryDump DumpClasses() {
  RegistryDump dump;
  AddKey(HKEY_LOCAL_MACHINE, L"Software\\Classes", L"machine", dump);
  AddKey(HKEY_CURRENT_USER, L"Software\\Classes", L"user", dump);
  dump.erase(L"user");  // the user's place itself: empty or not there is all one
  return dump;
}

std::string Difference(const RegistryDump& before, const RegistryDump& now) {
  std::string text;
  for (const auto& [name, data] : now) {
    const auto old = before.find(name);
    if (old != before.end() && old->second == data) continue;
    text += "+ " + Narrow(name) + " " + Narrow(data) + "\n";
  }
  for (const auto& [name, data] : before) {
    if (!now.contains(name)) text += "- " + Narrow(name) + " " + Narrow(data) + "\n";
  }
  return text;
}

}  // namespace qrn::test
