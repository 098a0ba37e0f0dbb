#include "tools/qrndata/convert/OldFiles.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>

#include "btrieve/legacy/Damage.h"
#include "btrieve/legacy/OldFile.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"

namespace qrndata {

namespace {

namespace legacy = btrieve::legacy;
namespace fs = std::filesystem;

using Start = std::array<uint8_t, legacy::kOldStart>;

// False when there are not so many bytes to read.
bool ReadStart(const fs::path& path, Start& start) {
  std::ifstream file(path, std::ios::binary);
  file.read(reinterpret_cast<char*>(start.data()), start.size());
  return static_cast<bool>(file);
}

// Empty for a file that is whole.
std::string WhatIsWrong(const fs::path& path) {
  std::error_code error;
  if (fs::file_size(path, error) > legacy::kLargestOldFile) {
    return Say(Message::WhichIsNotRead, legacy::kTooLargeOldFile);
  }
  try {
    (void)legacy::OldFile(ReadFileBytes(path));
    return {};
  } catch (const legacy::Damage& damage) {
    return damage.text;
  }
}

}  // namespace

Bytes ReadFileBytes(const fs::path& path) {
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  Bytes bytes;
  if (file) bytes.resize(static_cast<size_t>(std::max<std::streamoff>(file.tellg(), 0)));
  file.seekg(0);
  if (!bytes.empty()) {
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  }
  if (!file) {
    throw Failure(kSystem, Say(Message::CannotBeReadWhy, PathToUtf8(path), std::strerror(errno)));
  }
  return bytes;
}

bool IsOldFile(const fs::path& path) {
  Start start{};
  return ReadStart(path, start) && legacy::IsOldFile(start);
}

bool ReadOldSpec(const fs::path& path, btrieve::FileSpec& spec) try {
  if (!IsOldFile(path)) return false;
  spec = legacy::ReadHead(ReadFileBytes(path)).spec;
  return true;
} catch (const btrieve::Failure&) {
  return false;
}

std::string WhyNotOpened(const fs::path& path, Status status) try {
  Start start{};
  if (!ReadStart(path, start)) return {};
  if (status == btrieve::kNotABtrieveFile) {
    return legacy::IsLikeOldFile(start) ? WhatIsWrong(path) : "";
  }
  if (!legacy::IsOldFile(start)) return {};
  if (status == btrieve::kIoError) return Say(Message::OldFileFault, WhatIsWrong(path));
  if (status != btrieve::kOwnerInvalid) return {};
  return Say(Message::OwnerNotCompared);
} catch (const Failure&) {
  return {};
}

}  // namespace qrndata
