#include "lexbase/DictionaryFile.h"

#include <algorithm>
#include <cstring>

#include "lexbase.h"
#include "platform/BtrCall.h"

namespace qrn::lexbase {

namespace {

#ifdef _WIN32
constexpr char kSeparator = '\\';
#else
constexpr char kSeparator = '/';
#endif

}  // namespace

int DictionaryFile::OpenPath(const std::string& path) {
  if (path.size() > BtrLongestPath) return LexbaseBadDirectory;
  std::string key = path;
  uint32_t length = 0;
  return BtrCall(BtrOpOpen, posBlock_.data(), nullptr, &length, key.data(),
                 static_cast<uint8_t>(key.size() + 1), BtrModeReadOnly);
}

int DictionaryFile::Open(const std::string& directory, const DictionaryFileKind& kind) {
  const std::string folder = directory + kSeparator;
  int status = OpenPath(folder + kind.name);
  if (status == BtrStatusFileNotFound) status = OpenPath(folder + kind.upperName);
  if (status != 0) return status;
  isOpen_ = true;
  kind_ = &kind;
  status = CheckKind();
  if (status != 0) Close();
  return status;
}

int DictionaryFile::CheckKind() {
  std::array<uint8_t, 4096> reply{};
  std::array<char, BtrKeyBufferSize> key{};
  auto length = static_cast<uint32_t>(reply.size());
  const int status = BtrCall(BtrOpStat, posBlock_.data(), reply.data(), &length, key.data(), 0, 0);
  if (status != 0) return status;
  BtrFileSpec head;
  std::memcpy(&head, reply.data(), sizeof head);
  const bool isKind = length >= sizeof head && head.recordLength == kind_->rowSize &&
                      (head.flags & BtrFileVariable) == 0 && head.keyCount > kind_->readKey;
  return isKind ? LexbaseSuccess : LexbaseNotADictionary;
}

int DictionaryFile::ReadNext(std::span<uint8_t> row) {
  if (hasEnded_) return LexbaseEndOfFile;
  std::array<uint8_t, 128> record{};
  std::array<char, BtrKeyBufferSize> key{};
  auto length = static_cast<uint32_t>(record.size());
  const int status =
      BtrCall(hasBegun_ ? BtrOpGetNext : BtrOpGetFirst, posBlock_.data(), record.data(), &length,
              key.data(), static_cast<uint8_t>(key.size()), kind_->readKey);
  if (status == 0) {
    hasBegun_ = true;
    std::copy_n(record.begin(), std::min<size_t>(row.size(), kind_->rowSize), row.begin());
  }
  hasEnded_ = status == LexbaseEndOfFile;
  return status;
}

int DictionaryFile::Close() {
  if (!isOpen_) return LexbaseSuccess;
  isOpen_ = false;
  uint32_t length = 0;
  return BtrCall(BtrOpClose, posBlock_.data(), nullptr, &length, nullptr, 0, 0);
}

}  // namespace qrn::lexbase
