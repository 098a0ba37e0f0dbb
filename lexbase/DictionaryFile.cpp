#include "lexbase/DictionaryFile.h"

#include <algorithm>

#include "lexbase/Lexbase.h"
#include "platform/BtrCall.h"

namespace qrn::lexbase {

namespace {

constexpr uint16_t kOpen = 0, kClose = 1, kGetNext = 6, kGetFirst = 12, kStat = 15;
constexpr int8_t kReadOnly = -2;
constexpr int kFileNotFound = 12;
constexpr size_t kMaxPathBytes = 254;

#ifdef _WIN32
constexpr char kSeparator = '\\';
#else
constexpr char kSeparator = '/';
#endif

// Ahead of the key specifications in a stat reply.
constexpr size_t kStatHeaderSize = 16, kStatRecordLength = 0, kStatKeyCount = 4, kStatFlags = 10;
constexpr uint8_t kVariableLength = 1;

}  // namespace

int DictionaryFile::OpenPath(const std::string& path) {
  if (path.size() > kMaxPathBytes) return kDdfBadDirectory;
  std::string key = path;
  uint32_t length = 0;
  return BtrCall(kOpen, posBlock_.data(), nullptr, &length, key.data(),
                 static_cast<uint8_t>(key.size() + 1), kReadOnly);
}

int DictionaryFile::Open(const std::string& directory, const DictionaryFileKind& kind) {
  const std::string folder = directory + kSeparator;
  int status = OpenPath(folder + kind.name);
  if (status == kFileNotFound) status = OpenPath(folder + kind.upperName);
  if (status != 0) return status;
  isOpen_ = true;
  kind_ = &kind;
  status = CheckKind();
  if (status != 0) Close();
  return status;
}

int DictionaryFile::CheckKind() {
  std::array<uint8_t, 4096> reply{};
  std::array<char, 255> key{};
  auto length = static_cast<uint32_t>(reply.size());
  const int status = BtrCall(kStat, posBlock_.data(), reply.data(), &length, key.data(), 0, 0);
  if (status != 0) return status;
  const int recordLength = reply[kStatRecordLength] | reply[kStatRecordLength + 1] << 8;
  const bool isKind = length >= kStatHeaderSize && recordLength == kind_->rowSize &&
                      (reply[kStatFlags] & kVariableLength) == 0 &&
                      reply[kStatKeyCount] > kind_->readKey;
  return isKind ? kDdfSuccess : kDdfNotADictionary;
}

int DictionaryFile::ReadNext(std::span<uint8_t> row) {
  if (hasEnded_) return kDdfEndOfFile;
  std::array<uint8_t, 128> record{};
  std::array<char, 255> key{};
  auto length = static_cast<uint32_t>(record.size());
  const int status = BtrCall(hasBegun_ ? kGetNext : kGetFirst, posBlock_.data(), record.data(),
                             &length, key.data(), static_cast<uint8_t>(key.size()), kind_->readKey);
  if (status == 0) {
    hasBegun_ = true;
    std::copy_n(record.begin(), std::min<size_t>(row.size(), kind_->rowSize), row.begin());
  }
  hasEnded_ = status == kDdfEndOfFile;
  return status;
}

int DictionaryFile::Close() {
  if (!isOpen_) return kDdfSuccess;
  isOpen_ = false;
  uint32_t length = 0;
  return BtrCall(kClose, posBlock_.data(), nullptr, &length, nullptr, 0, 0);
}

}  // namespace qrn::lexbase
