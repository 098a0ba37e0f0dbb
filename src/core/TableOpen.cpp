#include <algorithm>
#include <cstring>

#include "core/Dictionary.h"
#include "core/Gateway.h"
#include "core/MemoryFailure.h"
#include "core/RecordBuffer.h"
#include "core/ReturnCodes.h"
#include "core/Table.h"
#include "fields/LittleEndian.h"
#include "fields/Messages.h"
#include "platform/BtrCall.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

namespace qrn {
namespace {

struct FileStat {
  int16_t recordLength;
  bool variable;
};

Status ReadStat(DbTableInfo& table, FileStat& stat) {
  uint8_t reply[2048] = {};
  uint8_t key[256] = {};
  uint32_t length = sizeof reply;
  const Status status = BtrCall(BtrOpStat, table.PosBlock, reply, &length, key, 0, 0);
  if (status != 0) return status;
  const auto head = LoadLittle<BtrFileSpec>(reply);
  stat.recordLength = static_cast<int16_t>(head.recordLength);
  stat.variable = (head.flags & BtrFileVariable) != 0;
  return kSuccess;
}

constexpr size_t kOwnerNameSize = 256;

// The owner's name goes in a buffer of its own: the record manager's parameters are not constant.
Status OpenFile(DbTableInfo& table, const char* ownerName, char* path, int32_t mode) {
  char owner[kOwnerNameSize];
  const size_t ownerLength = CopyText(owner, ownerName);
  auto dataLength = static_cast<uint32_t>(ownerLength == 0 ? 0 : ownerLength + 1);
  return BtrCall(BtrOpOpen, table.PosBlock, owner, &dataLength, path,
                 static_cast<uint8_t>(std::strlen(path)), static_cast<int8_t>(mode));
}

// `BufferSize` stays the fixed part's length on purpose: it grows when a long record needs it.
Status FinishVariable(DbTableInfo& table) {
  table.IsOpen = 1;
  table.IsVariable = 1;
  if (AllocateRecordBuffer(table, std::max(kLongRecordSize, table.RecordLength + 1))) {
    return kSuccess;
  }
  ReportMemoryFailure();
  return kFailure;
}

// Kept so: a difference is no failure to the caller, and the table just does not count as open.
Status FinishFixed(DbTableInfo& table, int32_t fileRecordLength) {
  if (fileRecordLength == table.RecordLength) {
    table.IsOpen = 1;
  } else {
    ShowMessage(kVE806, table.Name, static_cast<int>(fileRecordLength),
                static_cast<int>(table.RecordLength));
  }
  return kSuccess;
}

// Without a directory nothing is looked for: the open that follows says why.
bool IsMissing(const DbTableInfo& table, const char* directory) {
  char path[kFilePathSize];
  DbResolveFileName(table, directory, path);
  return HasPlace(table, directory) && IsMissingFile(path);
}

}  // namespace

Status DbTableOpen(DbEngine& engine, DbTableInfo& table, const char* directory,
                   const char* ownerName, int32_t mode) noexcept {
  if (table.Fields == nullptr) {
    if (const Status status = DbDictLoadTable(engine.Settings, table); status != 0) return status;
  }
  char shortPath[kPathSize];
  if (!GetShortPath(directory, shortPath)) return kNoShortPath;
  char path[kFilePathSize];
  DbResolveFileName(table, directory, path);
  table.BufferSize = table.RecordLength;
  if (!AllocateRecordBuffer(table, table.RecordLength + 1)) {
    ReportMemoryFailure();
    return kFailure;
  }
  if (const Status status = OpenFile(table, ownerName, path, mode); status != 0) return status;
  FileStat stat{};
  if (const Status status = ReadStat(table, stat); status != 0) return status;
  return stat.variable ? FinishVariable(table) : FinishFixed(table, stat.recordLength);
}

Status DbOpenOrCreate(DbEngine& engine, DbTableInfo& table, const char* directory,
                      const char* ownerName, int32_t mode) noexcept {
  if (IsMissing(table, directory)) {
    const Status status = DbTableCreateIn(engine, table, directory);
    if (status != 0) return status;
  }
  const Status status = DbTableOpen(engine, table, directory, ownerName, mode);
  if (status != 0) ShowMessage(kVE803, table.Name, static_cast<int>(status));
  return status;
}

Status DbOpenAllTables(DbEngine& engine, DbDictionary& dictionary, const char* directory,
                       const char* ownerName, int32_t mode) noexcept {
  for (int32_t i = 0; i < dictionary.TableCount; ++i) {
    DbTableInfo& table = dictionary.Tables[i];
    if (table.IsOpen != 0) continue;
    const Status status = DbOpenOrCreate(engine, table, directory, ownerName, mode);
    if (status != 0) return status;
  }
  return kSuccess;
}

}  // namespace qrn
