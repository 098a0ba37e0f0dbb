// `convert`: files of an older record manager into today's format, and the comparison of both.
#include <algorithm>
#include <system_error>

#include "btrieve/legacy/Damage.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Verbs.h"
#include "tools/qrndata/convert/FileConversion.h"
#include "tools/qrndata/convert/OldFiles.h"
#include "tools/qrndata/convert/OldFolder.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;
using btrieve::kPhysicalSlot;
using btrieve::legacy::Damage;
using btrieve::legacy::OldFile;

using Texts = std::vector<std::string>;

bool LiesIn(const fs::path& inner, const fs::path& outer) {
  std::error_code ignored;
  const fs::path whole = fs::weakly_canonical(fs::absolute(outer, ignored), ignored);
  fs::path path = fs::weakly_canonical(fs::absolute(inner, ignored), ignored);
  for (; path != path.root_path() && path.has_parent_path(); path = path.parent_path()) {
    if (path == whole || fs::equivalent(path, whole, ignored)) return true;
  }
  return false;
}

class FolderConversion {
 public:
  FolderConversion(const ConvertOptions& options, const Streams& streams)
      : options_(options), streams_(streams), folder_(ReadOldFolder(options.directory)) {}

  ExitCode Run() {
    RefuseTarget();
    for (const OldFolderFile& file : folder_.files) Convert(file);
    for (const std::string& text : folder_.missing) Refuse(text);
    streams_.out << Counted(converted_, "file") << " converted, " << Counted(records_, "record");
    if (refused_ != 0) streams_.out << "; " << Counted(refused_, "fault");
    streams_.out << '\n';
    return refused_ == 0 ? kDone : kFaultsFound;
  }

 private:
  // Before anything is written.
  void RefuseTarget() const {
    if (LiesIn(options_.target, options_.directory)) {
      throw Failure(kUsage, PathToUtf8(options_.target) +
                                ": the old files are there, beside which nothing is written; name "
                                "another directory");
    }
    std::error_code ignored;
    for (const OldFolderFile& file : folder_.files) {
      const fs::path path = options_.target / file.location;
      if (fs::exists(path, ignored)) {
        throw Failure(kSystem, PathToUtf8(path) + ": exists already; nothing was converted");
      }
    }
  }

  void Refuse(const std::string& text) {
    ++refused_;
    streams_.out << text << '\n';
  }

  void List(const std::string& name, const Texts& texts) const {
    for (size_t at = 0; at < texts.size() && at < options_.shown; ++at) {
      streams_.out << name << ": " << texts[at] << '\n';
    }
    if (texts.size() > options_.shown) {
      streams_.out << name << ": and " << Grouped(texts.size() - options_.shown) << " more\n";
    }
  }

  void Convert(const OldFolderFile& file) {
    Texts faults;
    try {
      OldFile old(ReadFileBytes(options_.directory / file.location), &faults);
      if (old.IsOwned() && !options_.unlock) {
        Refuse(file.name +
               ": not converted: it has an owner name, which cannot be compared; "
               "--unlock takes it all the same");
      } else if (!faults.empty() && !options_.salvage) {
        Refuse(file.name + ": not converted: it is damaged; " + ReadOf(old) +
               " can be read (--salvage takes them)");
        List(file.name, faults);
      } else {
        Write(file, old, faults);
      }
    } catch (const Damage& damage) {
      Refuse(file.name + ": not converted: " + damage.text);
    } catch (const Failure& failure) {
      Refuse(file.name + ": not converted: " + failure.what());
    }
  }

  static std::string ReadOf(const OldFile& old) {
    return Grouped(old.Total(kPhysicalSlot)) + " of " + Counted(old.AnnouncedRecords(), "record");
  }

  void Write(const OldFolderFile& file, OldFile& old, const Texts& faults) {
    const fs::path path = options_.target / file.location;
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    Conversion conversion;
    conversion.isSalvage = !faults.empty();
    {
      Progress progress(streams_.terminal, file.name, WorkOf(old));
      WriteTodays(old, path, progress, conversion);
      Compare(old, path, progress, conversion);
    }
    ++converted_;
    records_ += conversion.records;
    Tell(file.name, old, faults, conversion);
  }

  void Tell(const std::string& name, const OldFile& old, const Texts& faults,
            const Conversion& conversion) {
    const std::string count =
        Counted(conversion.records, "record") + ", " + Counted(old.Spec().keys.size(), "key");
    if (!conversion.differences.empty()) {
      Refuse(name + ": " + count + ": DIFFERENT from the old file");
      List(name, conversion.differences);
    } else if (conversion.isSalvage) {
      Refuse(name + ": " + count + ": all that can be read of " +
             Counted(old.AnnouncedRecords(), "record") + " in a damaged file");
    } else {
      streams_.out << name << ": " << count << ": alike by place and along every key\n";
    }
    List(name, faults);
    List(name, TextsOf(conversion.left));
    List(name, conversion.notes);
  }

  static Texts TextsOf(const std::vector<uint32_t>& left) {
    Texts texts;
    for (const uint32_t address : left) {
      texts.push_back("the record at " + std::to_string(address) +
                      " is left out: a unique key has its value already");
    }
    return texts;
  }

  const ConvertOptions& options_;
  const Streams& streams_;
  OldFolder folder_;
  uint64_t converted_ = 0, records_ = 0, refused_ = 0;
};

}  // namespace

ExitCode RunConvert(const ConvertOptions& options, const Streams& streams) {
  return FolderConversion(options, streams).Run();
}

}  // namespace qrndata
