#include "ole/Registrar.h"

#include "ole/Kit.h"

namespace qrn::ole {
namespace {

const wchar_t* Chars(const std::u16string& text) { return AsWide(text).data(); }

// The first of two results that is an error.
LSTATUS Either(LSTATUS first, LSTATUS second) { return first != ERROR_SUCCESS ? first : second; }

LSTATUS Forgiving(LSTATUS result) {
  return result == ERROR_FILE_NOT_FOUND || result == ERROR_PATH_NOT_FOUND ? ERROR_SUCCESS : result;
}

LSTATUS DeleteWhole(HKEY parent, const std::u16string& name) {
  return Forgiving(RegDeleteTreeW(parent, Chars(name)));
}

LSTATUS Put(HKEY key, const RegistryValue& value, DWORD type, const void* data, size_t bytes) {
  return RegSetValueExW(key, Chars(value.name), 0, type, static_cast<const BYTE*>(data),
                        static_cast<DWORD>(bytes));
}

LSTATUS Store(HKEY key, const RegistryValue& value) {
  switch (value.kind) {
    case ValueKind::Number:
      return Put(key, value, REG_DWORD, &value.number, sizeof value.number);
    case ValueKind::Bytes:
      return Put(key, value, REG_BINARY, value.bytes.data(), value.bytes.size());
    case ValueKind::Texts:
      return Put(key, value, REG_MULTI_SZ, value.bytes.data(), value.bytes.size());
    default:
      return Put(key, value, REG_SZ, value.text.c_str(),
                 (value.text.size() + 1) * sizeof(char16_t));
  }
}

LSTATUS AddBelow(HKEY key, const RegistryKey& row);

LSTATUS AddKey(HKEY parent, const RegistryKey& row) {
  if (row.rule == KeyRule::ForceRemove || row.rule == KeyRule::Delete) {
    const LSTATUS gone = DeleteWhole(parent, row.name);
    if (gone != ERROR_SUCCESS || row.rule == KeyRule::Delete) return gone;
  }
  Key key;
  const LSTATUS made = RegCreateKeyExW(parent, Chars(row.name), 0, nullptr, 0, KEY_READ | KEY_WRITE,
                                       nullptr, key.put(), nullptr);
  return made != ERROR_SUCCESS ? made : AddBelow(key.get(), row);
}

LSTATUS AddBelow(HKEY key, const RegistryKey& row) {
  LSTATUS result = ERROR_SUCCESS;
  for (const RegistryValue& value : row.values) {
    if (result == ERROR_SUCCESS) result = Store(key, value);
  }
  for (const RegistryKey& below : row.keys) {
    if (result == ERROR_SUCCESS) result = AddKey(key, below);
  }
  return result;
}

bool HasKeys(HKEY key) {
  DWORD count = 0;
  return RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr,
                          nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS ||
         count != 0;
}

LSTATUS RemoveKey(HKEY parent, const RegistryKey& row);

LSTATUS RemoveBelow(HKEY key, const RegistryKey& row) {
  LSTATUS result = ERROR_SUCCESS;
  for (auto below = row.keys.rbegin(); below != row.keys.rend(); ++below) {
    result = Either(result, RemoveKey(key, *below));
  }
  for (const RegistryValue& value : row.values) {
    result = Either(result, Forgiving(RegDeleteValueW(key, Chars(value.name))));
  }
  return result;
}

LSTATUS RemoveKey(HKEY parent, const RegistryKey& row) {
  if (row.rule == KeyRule::Delete) return ERROR_SUCCESS;
  if (row.rule == KeyRule::ForceRemove) return DeleteWhole(parent, row.name);
  Key key;
  const LSTATUS opened = RegOpenKeyExW(parent, Chars(row.name), 0, KEY_READ | KEY_WRITE, key.put());
  if (opened != ERROR_SUCCESS) return Forgiving(opened);
  const LSTATUS emptied = RemoveBelow(key.get(), row);
  if (row.rule == KeyRule::NoRemove || HasKeys(key.get())) return emptied;
  key.reset();
  return Either(emptied, Forgiving(RegDeleteKeyW(parent, Chars(row.name))));
}

}  // namespace

LSTATUS Registrar::Add(const std::vector<RegistryKey>& roots) const {
  LSTATUS result = ERROR_SUCCESS;
  for (const RegistryKey& root : roots) {
    if (result == ERROR_SUCCESS) result = AddBelow(Root(root), root);
  }
  return result;
}

LSTATUS Registrar::Remove(const std::vector<RegistryKey>& roots) const {
  LSTATUS result = ERROR_SUCCESS;
  for (auto root = roots.rbegin(); root != roots.rend(); ++root) {
    result = Either(result, RemoveBelow(Root(*root), *root));
  }
  return result;
}

HKEY Registrar::Root(const RegistryKey& key) const noexcept {
  if (key.name == u"HKCU") return HKEY_CURRENT_USER;
  if (key.name == u"HKLM") return HKEY_LOCAL_MACHINE;
  if (key.name == u"HKU") return HKEY_USERS;
  return classes_;
}

}  // namespace qrn::ole
