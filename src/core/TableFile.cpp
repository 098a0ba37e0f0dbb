// File names, open modes, connections.
#include <cstring>
#include <string_view>
#include <utility>

#include "core/Dictionary.h"
#include "core/Gateway.h"
#include "core/ReturnCodes.h"
#include "core/Table.h"
#include "platform/BtrCall.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

namespace qrn {
namespace {

constexpr int32_t kBtrieveModes[] = {0, -1, -2, -3, -4, -32, -64};

constexpr int8_t kLogInKeyNumber = 0;
constexpr int8_t kLogOutKeyNumber = 1;

Status CallLogin(DbLogin& login, int8_t keyNumber) {
  uint32_t dataLength = 0;
  return BtrCall(BtrOpLogin, nullptr, nullptr, &dataLength, login.Text,
                 static_cast<uint8_t>(std::strlen(login.Text)), keyNumber);
}

}  // namespace

int32_t DbMapOpenMode(int32_t openMode) noexcept {
  const bool known = openMode >= 0 && openMode < static_cast<int32_t>(std::size(kBtrieveModes));
  return known ? kBtrieveModes[openMode] : 0;
}

Status DbResolveFileName(const DbTableInfo& table, const char* directory,
                         std::span<char> outPath) noexcept {
  if (IsWholePath(table.Location)) {
    CopyText(outPath, table.Location);
    return kSuccess;
  }
  char shortPath[kPathSize];
  const char* root = GetShortPath(directory, shortPath) ? shortPath : directory;
  const std::string_view location = table.Location;
  const bool hasPoint = location.find('.') != location.npos;
  // What does not fit leaves an empty path, which no record manager opens or creates.
  (void)JoinPath(root, location, hasPoint ? "" : ".btr", outPath);
  return kSuccess;
}

bool HasPlace(const DbTableInfo& table, const char* directory) noexcept {
  return *directory != '\0' || IsWholePath(table.Location);
}

Status DbSetFileName(DbTableInfo& table, const char* location) noexcept {
  if (table.IsOpen != 0) return kAlreadyOpen;
  if (std::strlen(location) > kLocationLength) return kFailure;
  CopyText(table.Location, location);
  return kSuccess;
}

Status DbReset(DbEngine& engine, DbDictionary* dictionary) noexcept {
  if (dictionary != nullptr) DbDictCloseAll(engine, *dictionary);
  char empty[1] = "";
  uint32_t dataLength = 0;
  return BtrCall(BtrOpReset, nullptr, empty, &dataLength, nullptr, 0, 0);
}

Status DbLogIn(DbLogin& login, const char* connectionText) noexcept {
  CopyText(login.Text, connectionText);
  login.LoggedIn = true;
  return CallLogin(login, kLogInKeyNumber);
}

Status DbLogOut(DbLogin& login) noexcept {
  if (!std::exchange(login.LoggedIn, false)) return kSuccess;
  return CallLogin(login, kLogOutKeyNumber);
}

}  // namespace qrn
