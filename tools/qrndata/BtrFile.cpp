#include "tools/qrndata/BtrFile.h"

#include <algorithm>

#include "btrieve.h"
#include "btrieve/pages/LogExam.h"
#include "btrieve/pages/Sqlite.h"
#include "fields/LittleEndian.h"
#include "platform/BtrCall.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/convert/OldFiles.h"
#include "tools/qrndata/server/ServerAccess.h"

namespace qrndata {

namespace {

struct StatusName {
  Status status;
  Message meaning;
};

// clang-format off
constexpr StatusName kStatusNames[] = {
    {btrieve::kIoError,               Message::StatusIo},
    {btrieve::kDuplicateKey,          Message::StatusDuplicate},
    {btrieve::kInvalidKeyNumber,      Message::StatusNoSuchKey},
    {btrieve::kInvalidFileName,       Message::StatusFileName},
    {btrieve::kFileNotFound,          Message::StatusNoFile},
    {btrieve::kDiskFull,              Message::StatusDiskFull},
    {btrieve::kNotActive,             Message::StatusNotActive},
    {btrieve::kDataBufferLength,      Message::StatusLength},
    {btrieve::kPageSize,              Message::StatusPageSize},
    {btrieve::kCreateError,           Message::StatusCreate},
    {btrieve::kNumberOfKeys,          Message::StatusKeys},
    {btrieve::kKeyPosition,           Message::StatusKeyPosition},
    {btrieve::kRecordLength,          Message::StatusRecordLength},
    {btrieve::kKeyLength,             Message::StatusKeyLength},
    {btrieve::kNotABtrieveFile,       Message::StatusNoDataFile},
    {btrieve::kDirectoryError,        Message::StatusDirectory},
    {btrieve::kTransactionActive,     Message::StatusTransaction},
    {btrieve::kTransactionNotWritten, Message::StatusNotWritten},
    {btrieve::kInconsistentKeyFlags,  Message::StatusKeyFlags},
    {btrieve::kAccessDenied,          Message::StatusDenied},
    {btrieve::kCollatingSequence,     Message::StatusSequence},
    {btrieve::kKeyType,               Message::StatusKeyType},
    {btrieve::kOwnerInvalid,          Message::StatusOwner},
    {btrieve::kAutoIncrement,         Message::StatusAutoInc},
    {btrieve::kFileExists,            Message::StatusExists},
    {btrieve::kRecordInUse,           Message::StatusRecordInUse},
    {btrieve::kFileInUse,             Message::StatusFileInUse},
    {btrieve::kIncompatibleMode,      Message::StatusMode},
    {btrieve::kPermissionError,       Message::StatusPermission},
};
// clang-format on

FileStat ReadStat(const std::string& name, std::span<const uint8_t> reply) {
  FileStat stat;
  stat.records = qrn::LoadLittle<BtrFileSpec>(reply).recordCount;
  const Status parsed = btrieve::ParseCreateBlock(reply, stat.spec);
  if (parsed != btrieve::kOk && !ReadOldSpec(PathFromUtf8(name), stat.spec)) {
    Require(parsed, Say(Message::FileDescriptionBad, name));
  }
  size_t segment = 0;
  for (const btrieve::KeySpec& key : stat.spec.keys) {
    const auto first = reply.subspan((segment + 1) * BtrSpecSize);
    stat.uniqueValues.push_back(uint32_t{qrn::LoadLittle<BtrKeySpec>(first).uniqueValues});
    segment += key.segments.size();
  }
  return stat;
}

// Empty for a file that stands here.
std::string FaultOfLink(Status status, const std::filesystem::path& place) {
  return IsLink(place) ? WhyNotReached(ReadLink(place), status) : "";
}

// Such a file is not opened; where it is opened and fails, others may be writing to its log.
std::string FaultOfOpen(Status status, const std::filesystem::path& place,
                        const std::string& path) try {
  if (const std::string fault = FaultOfLink(status, place); !fault.empty()) return fault;
  const std::string words = WhyNotOpened(place, status);
  if (!words.empty()) return StatusText(status) + ": " + words;
  const bool isLog = status == btrieve::kIoError && !btrieve::LogIsSound(path + "-wal");
  return StatusText(status) + (isLog ? ": " + Say(Message::LogDamaged) : "");
} catch (const btrieve::Failure&) {
  return StatusText(status) + ": " + Say(Message::LogUnreadable);
}

}  // namespace

std::string StatusText(Status status) {
  const auto* row = std::find_if(std::begin(kStatusNames), std::end(kStatusNames),
                                 [&](const StatusName& name) { return name.status == status; });
  if (row == std::end(kStatusNames)) return Say(Message::StatusAlone, status);
  return Say(Message::StatusMeaning, status, Say(row->meaning));
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
  if (isOpen_) (void)Close();
}

Status BtrFile::Close() {
  uint32_t length = 0;
  isOpen_ = false;
  return Call(BtrOpClose, nullptr, &length, 0);
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
  Require(Call(BtrOpStat, reply.data(), &length, 0), Say(Message::ReadingDescription, name_));
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

bool BtrFile::HasRecordAt(uint32_t position) {
  Bytes record(kMaxRecordSize);
  qrn::StoreLittle(std::span(record), position);
  auto length = static_cast<uint32_t>(record.size());
  const Status status = Call(BtrOpGetDirect, record.data(), &length, kNoKey);
  if (status != BtrStatusInvalidAddress) Require(status, name_);
  return status == btrieve::kOk;
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
          Say(Message::NoTransactionBegun));
}

Transaction::~Transaction() {
  if (isOpen_) qrn::BtrCall(BtrOpAbortTransaction, nullptr, nullptr, nullptr, nullptr, 0, 0);
}

Status Transaction::Commit() {
  isOpen_ = false;
  return qrn::BtrCall(BtrOpEndTransaction, nullptr, nullptr, nullptr, nullptr, 0, 0);
}

}  // namespace qrndata
