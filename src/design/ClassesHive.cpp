#include "design/ClassesHive.h"

namespace qrn::design {
namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes";
// The keys below the classes that registration writes to. New users have none of them.
constexpr const wchar_t* kCommonKeys[] = {L"AppID", L"CLSID", L"Interface", L"TypeLib"};

bool MayWrite(HKEY parent, const wchar_t* name) {
  com::Key key;
  const LSTATUS result = RegOpenKeyExW(parent, name, 0, KEY_READ | KEY_WRITE, key.put());
  return result == ERROR_SUCCESS || result == ERROR_FILE_NOT_FOUND;
}

com::Key OpenMachine() {
  com::Key classes;
  RegOpenKeyExW(HKEY_LOCAL_MACHINE, kClasses, 0, KEY_READ | KEY_WRITE, classes.put());
  for (const wchar_t* name : kCommonKeys) {
    if (classes && !MayWrite(classes.get(), name)) classes.reset();
  }
  return classes;
}

com::Key OpenUser(Purpose purpose) {
  com::Key classes;
  constexpr REGSAM kAccess = KEY_READ | KEY_WRITE;
  if (purpose == Purpose::Add) {
    RegCreateKeyExW(HKEY_CURRENT_USER, kClasses, 0, nullptr, 0, kAccess, nullptr, classes.put(),
                    nullptr);
  } else {
    RegOpenKeyExW(HKEY_CURRENT_USER, kClasses, 0, kAccess, classes.put());
  }
  return classes;
}

// The system refuses to delete a key that holds others; one with a value is kept.
void DeleteWhenEmpty(HKEY parent, const wchar_t* name) {
  DWORD values = 0;
  com::Key key;
  RegOpenKeyExW(parent, name, 0, KEY_READ, key.put());
  if (!key || RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               &values, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
    return;
  }
  key.reset();
  if (values == 0) RegDeleteKeyW(parent, name);
}

}  // namespace

ClassesHive::ClassesHive(Hive hive, Purpose purpose) noexcept
    : hive_(hive), classes_(hive == Hive::Machine ? OpenMachine() : OpenUser(purpose)) {}

ClassesHive::~ClassesHive() {
  if (hive_ != Hive::User || !classes_) return;
  for (const wchar_t* name : kCommonKeys) DeleteWhenEmpty(classes_.get(), name);
  classes_.reset();
  DeleteWhenEmpty(HKEY_CURRENT_USER, kClasses);
}

}  // namespace qrn::design
