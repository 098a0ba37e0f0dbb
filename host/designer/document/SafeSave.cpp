#include "host/designer/document/SafeSave.h"

#include <stdexcept>

#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

constexpr char kNewSuffix[] = ".new";
constexpr char kOldSuffix[] = ".bak";
constexpr char kNewOldSuffix[] = ".bak.new";

// Files on their way; whatever happens, none half way is left.
class Saving {
 public:
  explicit Saving(const std::vector<NewFile>& files) : files_(files) {}
  Saving(const Saving&) = delete;
  Saving& operator=(const Saving&) = delete;
  ~Saving() {
    for (const std::string& path : temporary_) RemoveFile(path);
  }

  std::string Run() {
    for (const NewFile& file : files_) {
      const std::string reason = Prepare(file);
      if (!reason.empty()) return file.path + ": " + reason;
    }
    for (const NewFile& file : files_) {
      const std::string reason = Place(file);
      if (reason.empty()) continue;
      TakeBack();
      return file.path + ": " + reason;
    }
    return {};
  }

 private:
  struct Placed {
    std::string path;
    bool stood;
  };

  std::string Write(std::string path, std::string_view bytes) {
    temporary_.push_back(std::move(path));
    return WriteWholeFile(temporary_.back(), bytes);
  }

  std::string Prepare(const NewFile& file) {
    std::string reason = WhyNotWritable(file.path);
    if (reason.empty() && FileStands(file.path)) {
      reason = Write(file.path + kNewOldSuffix, form::ReadWholeFile(file.path));
    }
    return reason.empty() ? Write(file.path + kNewSuffix, file.bytes) : reason;
  }

  std::string Place(const NewFile& file) {
    const bool stood = FileStands(file.path);
    std::string reason;
    if (stood) reason = RenameFile(file.path + kNewOldSuffix, file.path + kOldSuffix);
    if (reason.empty()) reason = RenameFile(file.path + kNewSuffix, file.path);
    if (reason.empty()) placed_.push_back({file.path, stood});
    return reason;
  }

  void TakeBack() {
    for (; !placed_.empty(); placed_.pop_back()) {
      const Placed& last = placed_.back();
      if (last.stood) {
        RenameFile(last.path + kOldSuffix, last.path);
      } else {
        RemoveFile(last.path);
      }
    }
  }

  const std::vector<NewFile>& files_;
  std::vector<std::string> temporary_;
  std::vector<Placed> placed_;
};

}  // namespace

std::string SaveFiles(const std::vector<NewFile>& files) {
  try {
    return Saving(files).Run();
  } catch (const std::runtime_error& unreadable) {
    return unreadable.what();
  }
}

}  // namespace qrn::designer
