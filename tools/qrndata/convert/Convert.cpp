// `convert`: files of an older record manager into today's format, and the comparison of both.
#include <algorithm>
#include <system_error>

#include "btrieve/legacy/Damage.h"
#include "btrieve/system/HostFile.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Messages.h"
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
    streams_.out << Say(Message::FilesConverted, Counted(converted_, Message::Files),
                        Counted(records_, Message::Records));
    if (refused_ != 0) streams_.out << "; " << Counted(refused_, Message::Faults);
    streams_.out << '\n';
    return refused_ == 0 ? kDone : kFaultsFound;
  }

 private:
  // Before anything is written.
  void RefuseTarget() const {
    if (LiesIn(options_.target, options_.directory)) {
      throw Failure(kUsage, Say(Message::OldFilesAreThere, PathToUtf8(options_.target)));
    }
    std::error_code ignored;
    if (fs::exists(options_.target, ignored) && !fs::is_directory(options_.target, ignored)) {
      throw Failure(kSystem, Say(Message::CannotBeWritten, PathToUtf8(options_.target)));
    }
    for (const OldFolderFile& file : folder_.files) {
      const fs::path path = options_.target / file.location;
      std::string whole;
      Require(btrieve::PathFromCaller(BtrievePath(path).c_str(), whole), PathToUtf8(path));
      if (fs::exists(path, ignored)) {
        throw Failure(kSystem, Say(Message::NothingConverted, PathToUtf8(path)));
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
      streams_.out << name << ": " << Say(Message::AndMore, Grouped(texts.size() - options_.shown))
                   << '\n';
    }
  }

  void Convert(const OldFolderFile& file) {
    Texts faults;
    try {
      OldFile old(ReadFileBytes(options_.directory / file.location), &faults);
      if (old.IsOwned() && !options_.unlock) {
        Refuse(Say(Message::NotConverted, file.name, Say(Message::HasOwner)));
      } else if (!faults.empty() && !options_.salvage) {
        const std::string text = Say(Message::IsDamaged, Grouped(old.Total(kPhysicalSlot)),
                                     Counted(old.AnnouncedRecords(), Message::Records));
        Refuse(Say(Message::NotConverted, file.name, text));
        List(file.name, faults);
      } else {
        Write(file, old, faults);
      }
    } catch (const Damage& damage) {
      Refuse(Say(Message::NotConverted, file.name, damage.text));
    } catch (const Failure& failure) {
      Refuse(Say(Message::NotConverted, file.name, failure.what()));
    }
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
    const std::string head = name + ": " + Counted(conversion.records, Message::Records) + ", " +
                             Counted(old.Spec().keys.size(), Message::Keys) + ": ";
    if (!conversion.differences.empty()) {
      Refuse(head + Say(Message::DiffersFromOld));
      List(name, conversion.differences);
    } else if (conversion.isSalvage) {
      Refuse(head +
             Say(Message::AllThatCanBeRead, Counted(old.AnnouncedRecords(), Message::Records)));
    } else {
      streams_.out << head << Say(Message::Alike) << '\n';
    }
    List(name, faults);
    List(name, TextsOf(conversion.left));
    List(name, conversion.notes);
  }

  static Texts TextsOf(const std::vector<uint32_t>& left) {
    Texts texts;
    for (const uint32_t address : left) {
      texts.push_back(Say(Message::RecordLeft, address));
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
