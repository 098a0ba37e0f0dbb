#include "tools/qrndata/OutputFile.h"

#include <string>
#include <system_error>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;

// A name beside `target` that nothing has yet.
fs::path SideName(const fs::path& target) {
  std::error_code ignored;
  for (int number = 1;; ++number) {
    fs::path side = target;
    side += "." + std::to_string(number) + ".part";
    if (!fs::exists(fs::symlink_status(side, ignored))) return side;
  }
}

// Windows has its devices in every folder, and tells of none that it is there.
bool IsDevice([[maybe_unused]] const fs::path& path) {
#ifdef _WIN32
  const std::string name = PathToUtf8(path.filename());
  return SameName(name, "NUL") || SameName(name, "CON");
#else
  return false;
#endif
}

// A rename would pass over a file's write protection.
bool IsWritable(const fs::path& path) {
  return std::ofstream(path, std::ios::binary | std::ios::app).is_open();
}

}  // namespace

SideFile::SideFile(const fs::path& path) : path_(path), target_(path) {
  std::error_code error;
  const bool isThere = fs::is_regular_file(fs::status(path, error));
  if (isThere) target_ = fs::canonical(path, error);
  if (isThere && (error || !IsWritable(target_))) Fail();
  const bool isNew = !fs::exists(fs::symlink_status(path, error)) && !IsDevice(path);
  if (isThere || isNew) side_ = SideName(target_);
}

SideFile::~SideFile() {
  if (side_.empty()) return;
  std::error_code ignored;
  fs::remove(side_, ignored);
}

void SideFile::KeepPermissions() const noexcept {
  if (side_.empty()) return;
  std::error_code ignored;
  const fs::file_status former = fs::status(target_, ignored);
  if (fs::exists(former)) fs::permissions(side_, former.permissions(), ignored);
}

void SideFile::Finish() {
  if (side_.empty()) return;
  KeepPermissions();
  std::error_code error;
  fs::rename(side_, target_, error);
  if (error) Fail();
  side_.clear();
}

void SideFile::Fail() const {
  throw Failure(kSystem, Say(Message::CannotBeWritten, PathToUtf8(path_)));
}

OutputFile::OutputFile(const fs::path& path)
    : place_(path), file_(place_.Path(), std::ios::binary) {
  if (!file_) place_.Fail();
  place_.KeepPermissions();
}

bool OutputFile::KeepSoFar() {
  if (!file_.flush()) return false;
  kept_ = file_.tellp();
  return true;
}

void OutputFile::FinishKept() {
  if (place_.IsDirect() || file_) return Finish();
  file_.close();
  std::error_code error;
  fs::resize_file(place_.Path(), static_cast<uintmax_t>(kept_), error);
  if (error) place_.Fail();
  place_.Finish();
}

void OutputFile::Finish() {
  file_.close();
  if (!file_) place_.Fail();
  place_.Finish();
}

}  // namespace qrndata
