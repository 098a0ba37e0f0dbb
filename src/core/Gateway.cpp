#include "core/Gateway.h"

#include <cstdio>
#include <span>

#include "core/ReturnCodes.h"
#include "platform/BtrCall.h"
#include "platform/CodePage.h"
#include "platform/SystemLibrary.h"

namespace qrn {
namespace {

struct StatusRow {
  int32_t status;
  const char* utf8;
};

// The dash is the full-width minus sign: texts that applications search for.
constexpr StatusRow kStatusTexts[] = {
    {BtrStatusNotOpen, "ファイルがオ－プンされてません。(rc=3)"},
    {BtrStatusKeyNotFound, "該当レコ－ドがみつかりません。"},
    {BtrStatusDuplicateKey, "キ－の値が重複しています。"},
    {BtrStatusInvalidPositioning, "現在レコ－ドがありません。"},
    {BtrStatusEndOfFile, "ファイルの先頭または最後です。"},
    {BtrStatusDiskFull, "ディスクが満杯。"},
};
constexpr char kAnyStatus[] = "Btrieve エラ－(rc=%d)";

constexpr uint32_t kVersionSize = BtrVersionSize;
constexpr size_t kModulePathSize = 256;

// The name of the client that callers ask for, whatever library is really in use.
constexpr char kAskedModule[] = "WBTRV32.DLL";

}  // namespace

uint16_t DbAddLock(uint16_t operation, int32_t lockKind) noexcept {
  if (lockKind < kLockSingleWait || lockKind > kLockMultiNoWait) return operation;
  return static_cast<uint16_t>(operation + 100 * lockKind);
}

const char* DbStatusText(int32_t status) noexcept {
  static char text[128];
  for (const StatusRow& row : kStatusTexts) {
    if (row.status != status) continue;
    CopyUtf8(text, row.utf8);
    return text;
  }
  // The format's own percent sign is no second byte of any character in it.
  char format[64];
  CopyUtf8(format, kAnyStatus);
  std::snprintf(text, sizeof text, format, status);
  return text;
}

Status DbGetVersion(DbEngine&, void* version) noexcept {
  uint32_t length = version != nullptr ? kVersionSize : 0;
  return BtrCall(BtrOpVersion, nullptr, version, &length, nullptr, 0, 0);
}

Status DbGetModulePath(char* outPath) noexcept {
  return LoadedModulePath(kAskedModule, std::span(outPath, kModulePathSize)) ? kSuccess : kFailure;
}

}  // namespace qrn
