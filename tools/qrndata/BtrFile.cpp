#include "tools/qrndata/BtrFile.h"

#include <algorithm>

#include "btrieve.h"
#include "btrieve/pages/LogExam.h"
#include "btrieve/pages/Sqlite.h"
#include "fields/LittleEndian.h"
#include "platform/BtrCall.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/convert/OldFiles.h"

namespace qrndata {

namespace {

struct StatusName {
  Status status;
  const char* meaning;
};

// clang-format off
constexpr StatusName kStatusNames[] = {
    {btrieve::kIoError,               "read or write failed, or the file is damaged"},
    {btrieve::kDuplicateKey,          "duplicate key value"},
    {btrieve::kInvalidKeyNumber,      "no such key"},
    {btrieve::kInvalidFileName,       "file name not valid"},
    {btrieve::kFileNotFound,          "file not found"},
    {btrieve::kDiskFull,              "disk full"},
    {btrieve::kNotActive,             "no record manager found: w64btrv is not installed"},
    {btrieve::kDataBufferLength,      "record length"},
    {btrieve::kPageSize,              "page size not valid"},
    {btrieve::kCreateError,           "cannot be created: directory missing or file in use"},
    {btrieve::kNumberOfKeys,          "too many key segments for the page size"},
    {btrieve::kKeyPosition,           "a key lies outside the record's fixed part"},
    {btrieve::kRecordLength,          "record too long for the page size, or shorter than 4 bytes"},
    {btrieve::kKeyLength,             "key length not valid for its type"},
    {btrieve::kNotABtrieveFile,       "not a file of the record manager"},
    {btrieve::kDirectoryError,        "directory not valid"},
    {btrieve::kTransactionActive,     "a transaction is active already"},
    {btrieve::kTransactionNotWritten, "the transaction could not be written"},
    {btrieve::kInconsistentKeyFlags,  "a key's segments disagree in their flags"},
    {btrieve::kAccessDenied,          "access denied"},
    {btrieve::kCollatingSequence,     "collating sequence missing or of another form"},
    {btrieve::kKeyType,               "type cannot be a key"},
    {btrieve::kOwnerInvalid,          "the file asks for an owner name"},
    {btrieve::kAutoIncrement,         "an AutoInc field is a unique, ascending key by itself and in no other key"},
    {btrieve::kFileExists,            "file exists"},
    {btrieve::kRecordInUse,           "record in use by another program"},
    {btrieve::kFileInUse,             "file in use by another program"},
    {btrieve::kIncompatibleMode,      "file open elsewhere in another mode"},
    {btrieve::kPermissionError,       "permission denied by the system"},
};
// clang-format on

FileStat ReadStat(const std::string& name, std::span<const uint8_t> reply) {
  FileStat stat;
  stat.records = qrn::LoadLittle<BtrFileSpec>(reply).recordCount;
  const Status parsed = btrieve::ParseCreateBlock(reply, stat.spec);
  if (parsed != btrieve::kOk && !ReadOldSpec(PathFromUtf8(name), stat.spec)) {
    Require(parsed, name + ": its own description is not valid");
  }
  size_t segment = 0;
  for (const btrieve::KeySpec& key : stat.spec.keys) {
    const auto first = reply.subspan((segment + 1) * BtrSpecSize);
    stat.uniqueValues.push_back(uint32_t{qrn::LoadLittle<BtrKeySpec>(first).uniqueValues});
    segment += key.segments.size();
  }
  return stat;
}

// Such a file is not opened; where it is opened and fails, others may be writing to its log.
std::string FaultOfOpen(Status status, const std::filesystem::path& place,
                        const std::string& path) try {
  const std::string words = WhyNotOpened(place, status);
  if (!words.empty()) return StatusText(status) + ": " + words;
  const bool isLog = status == btrieve::kIoError && !btrieve::LogIsSound(path + "-wal");
  return StatusText(status) + (isLog ? ": its log, with \"-wal\" behind the name, is damaged" : "");
} catch (const btrieve::Failure&) {
  return StatusText(status) + ": its log, with \"-wal\" behind the name, cannot be read";
}

}  // namespace

std::string StatusText(Status status) {
  const auto* row = std::find_if(std::begin(kStatusNames), std::end(kStatusNames),
                                 [&](const StatusName& name) { return name.status == status; });
  std::string text = "status " + std::to_string(status);
  if (row != std::end(kStatusNames)) text.append(" (").append(row->meaning).append(")");
  return text;
}

void Require(Status status, const std::string& what) {
  if (status != btrieve::kOk) throw Failure(kSystem, what + ": " + StatusText(status));
}

BtrFile::BtrFile(const std::filesystem::path& path, Access access) : name_(PathToUtf8(path)) {
  std::string key = BtrievePath(path);
  uint32_t length = 0;
  const auto keyLength = static_cast<uint8_t>(std::min<size_t>(key.size() + 1, BtrKeyBufferSize));
  const Status status = qrn::BtrCall(BtrOpOpen, posBlock_.data(), nullptr, &length, key.data(),
                                     keyLength, static_cast<int8_t>(access));
  if (status != btrieve::kOk) throw Failure(kSystem, name_ + ": " + FaultOfOpen(status, path, key));
}

BtrFile::~BtrFile() {
  uint32_t length = 0;
  Call(BtrOpClose, nullptr, &length, 0);
}

Status BtrFile::Create(const std::filesystem::path& path, std::span<const uint8_t> block,
                       bool replace) {
  std::array<uint8_t, BtrPositionBlockSize> posBlock{};
  std::string key = BtrievePath(path);
  Bytes data(block.begin(), block.end());
  auto length = static_cast<uint32_t>(data.size());
  const auto keyLength = static_cast<uint8_t>(std::min<size_t>(key.size() + 1, BtrKeyBufferSize));
  return qrn::BtrCall(BtrOpCreate, posBlock.data(), data.data(), &length, key.data(), keyLength,
                      replace ? int8_t{0} : int8_t{-1});
}

Status BtrFile::Call(uint16_t operation, void* data, uint32_t* length, int8_t key) {
  return qrn::BtrCall(operation, posBlock_.data(), data, length, keyBuffer_.data(),
                      static_cast<uint8_t>(keyBuffer_.size()), key);
}

FileStat BtrFile::Stat() {
  Bytes reply(kMaxRecordSize);
  auto length = static_cast<uint32_t>(reply.size());
  Require(Call(BtrOpStat, reply.data(), &length, 0), name_ + ": reading its description");
  reply.resize(length);
  return ReadStat(name_, reply);
}

Status BtrFile::Insert(Bytes& record) {
  auto length = static_cast<uint32_t>(record.size());
  return Call(BtrOpInsert, record.data(), &length, kNoKey);
}

// Who refuses the block itself writes no reply, which is always shorter than the block.
Status BtrFile::InsertMany(Bytes& block, size_t& inserted) {
  const auto whole = static_cast<uint32_t>(block.size());
  uint32_t length = whole;
  const Status status = Call(BtrOpInsertExtended, block.data(), &length, kNoKey);
  inserted = length < whole ? qrn::LoadLittle<uint16_t>(block) : 0;
  return status;
}

Status BtrFile::Update(Bytes& record) {
  auto length = static_cast<uint32_t>(record.size());
  return Call(BtrOpUpdate, record.data(), &length, kNoKey);
}

Status BtrFile::Read(uint16_t operation, int8_t key, Bytes& record) {
  record.resize(kMaxRecordSize);
  auto length = static_cast<uint32_t>(record.size());
  const Status status = Call(operation, record.data(), &length, key);
  record.resize(status == btrieve::kOk ? length : 0);
  return status;
}

Status BtrFile::GetFirst(int8_t key, Bytes& record) { return Read(BtrOpGetFirst, key, record); }
Status BtrFile::GetLast(int8_t key, Bytes& record) { return Read(BtrOpGetLast, key, record); }
Status BtrFile::GetNext(int8_t key, Bytes& record) { return Read(BtrOpGetNext, key, record); }
Status BtrFile::StepFirst(Bytes& record) { return Read(BtrOpStepFirst, 0, record); }
Status BtrFile::StepNext(Bytes& record) { return Read(BtrOpStepNext, 0, record); }

void BtrFile::PutKey(std::span<const uint8_t> value) {
  std::copy_n(value.begin(), std::min(value.size(), keyBuffer_.size()), keyBuffer_.begin());
}

Status BtrFile::GetEqual(int8_t key, std::span<const uint8_t> value, Bytes& record) {
  PutKey(value);
  return Read(BtrOpGetEqual, key, record);
}

Status BtrFile::FindKey(int8_t key, std::span<const uint8_t> value) {
  PutKey(value);
  uint32_t length = 0;
  return Call(BtrBiasGetKey + BtrOpGetEqual, nullptr, &length, key);
}

Status BtrFile::Position(uint32_t& position) {
  std::array<uint8_t, 4> data{};
  auto length = static_cast<uint32_t>(data.size());
  const Status status = Call(BtrOpGetPosition, data.data(), &length, 0);
  position = qrn::LoadLittle<uint32_t>(data);
  return status;
}

Status BtrFile::ReadExtended(bool alongKey, int8_t key, Bytes& request) {
  request.resize(kMaxRecordSize);
  auto length = static_cast<uint32_t>(request.size());
  const Status status =
      Call(alongKey ? BtrOpGetNextExtended : BtrOpStepNextExtended, request.data(), &length, key);
  request.resize(std::min<size_t>(length, request.size()));
  return status;
}

Transaction::Transaction(Sharing sharing) {
  const uint16_t begin =
      sharing == Sharing::Alone ? BtrOpBeginTransaction : BtrOpBeginConcurrentTransaction;
  Require(qrn::BtrCall(begin, nullptr, nullptr, nullptr, nullptr, 0, 0),
          "a transaction cannot be begun");
}

Transaction::~Transaction() {
  if (isOpen_) qrn::BtrCall(BtrOpAbortTransaction, nullptr, nullptr, nullptr, nullptr, 0, 0);
}

Status Transaction::Commit() {
  isOpen_ = false;
  return qrn::BtrCall(BtrOpEndTransaction, nullptr, nullptr, nullptr, nullptr, 0, 0);
}

}  // namespace qrndata
