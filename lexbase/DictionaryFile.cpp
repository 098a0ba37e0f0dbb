#include "lexbase/DictionaryFile.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "lexbase.h"
#include "platform/BtrCall.h"

namespace qrn::lexbase {

namespace {

#ifdef _WIN32
constexpr char kSeparator = '\\';
#else
constexpr char kSeparator = '/';
#endif

// Where the parts of an index row's order stand, counted from 1, each of two bytes.
constexpr uint16_t kIndexOrder[] = {1, 5, 7};

// Whether the key whose first segment is `first` of those that Stat told is that order.
bool IsIndexOrder(std::span<const BtrKeySpec> segments, size_t first) {
  for (const uint16_t position : kIndexOrder) {
    if (first == segments.size()) return false;
    const BtrKeySpec& segment = segments[first++];
    const bool isLast = position == kIndexOrder[2];
    const bool isPart = segment.position == position && segment.length == sizeof position &&
                        ((segment.flags & BtrKeyAnotherSegment) == 0) == isLast;
    if (!isPart) return false;
  }
  return true;
}

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

bool DictionaryFile::ChooseKey(std::span<const uint8_t> reply) {
  BtrFileSpec head;
  std::memcpy(&head, reply.data(), sizeof head);
  readKey_ = kind_->readKey;
  if (head.keyCount > readKey_) return true;
  if (!kind_->orderIsIndexes) return false;
  std::vector<BtrKeySpec> segments((reply.size() - sizeof head) / sizeof(BtrKeySpec));
  if (!segments.empty()) {
    std::memcpy(segments.data(), reply.data() + sizeof head, segments.size() * sizeof segments[0]);
  }
  bool begins = true;
  for (size_t at = 0; at < segments.size(); ++at) {
    readKey_ = static_cast<int8_t>(segments[at].keyNumber);
    if (begins && IsIndexOrder(segments, at)) return true;
    begins = (segments[at].flags & BtrKeyAnotherSegment) == 0;
  }
  return false;
}

int DictionaryFile::CheckKind() {
  std::array<uint8_t, 4096> reply{};
  std::array<char, BtrKeyBufferSize> key{};
  auto length = static_cast<uint32_t>(reply.size());
  const int status = BtrCall(BtrOpStat, posBlock_.data(), reply.data(), &length, key.data(), 0, 0);
  if (status != 0) return status;
  BtrFileSpec head;
  std::memcpy(&head, reply.data(), sizeof head);
  storedSize_ = head.recordLength;
  const bool isKind = length >= sizeof head && length <= reply.size() &&
                      (storedSize_ == kind_->rowSize || storedSize_ == kind_->oldRowSize) &&
                      (head.flags & BtrFileVariable) == 0 &&
                      ChooseKey(std::span(reply).first(length));
  return isKind ? LexbaseSuccess : LexbaseNotADictionary;
}

int DictionaryFile::ReadNext(std::span<uint8_t> row) {
  if (hasEnded_) return LexbaseEndOfFile;
  std::array<uint8_t, 128> record{};
  std::array<char, BtrKeyBufferSize> key{};
  auto length = static_cast<uint32_t>(record.size());
  const int status =
      BtrCall(hasBegun_ ? BtrOpGetNext : BtrOpGetFirst, posBlock_.data(), record.data(), &length,
              key.data(), static_cast<uint8_t>(key.size()), readKey_);
  if (status == 0) {
    hasBegun_ = true;
    std::fill(record.begin() + static_cast<ptrdiff_t>(storedSize_), record.end(), uint8_t{' '});
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
