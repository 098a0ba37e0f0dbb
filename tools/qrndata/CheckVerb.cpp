// `check`: a dictionary against its data files, and every key against its records.
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/FileMatch.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/TableChecks.h"
#include "tools/qrndata/Verbs.h"
#include "tools/qrndata/convert/OldFiles.h"
#include "tools/qrndata/server/RangesCheck.h"

namespace qrndata {

namespace {

class DatabaseCheck {
 public:
  DatabaseCheck(const CheckOptions& options, const Streams& streams)
      : options_(options), streams_(streams), dictionary_(ReadDictionary(options.directory)) {}

  ExitCode Run();

 private:
  void CheckTable(const Table& table);
  Faults Compare(const Table& table, const btrieve::FileSpec& file);
  Faults CheckDataFile(const Table& table);
  void Tell(const std::string& name, const Faults& faults);

  const CheckOptions& options_;
  const Streams& streams_;
  Dictionary dictionary_;
  uint64_t faults_ = 0, records_ = 0, tables_ = 0;
};

void DatabaseCheck::Tell(const std::string& name, const Faults& faults) {
  faults_ += faults.size();
  for (size_t at = 0; at < faults.size() && at < options_.shown; ++at) {
    streams_.out << name << ": " << faults[at] << '\n';
  }
  if (faults.size() > options_.shown) {
    streams_.out << name << ": " << Say(Message::AndMore, Grouped(faults.size() - options_.shown))
                 << '\n';
  }
}

// What does not keep forms from reading right is told, but is no fault.
Faults DatabaseCheck::Compare(const Table& table, const btrieve::FileSpec& file) {
  Faults faults;
  for (const Mismatch& each : MatchFile(table, file).mismatches) {
    if (each.weight == Weight::Note) {
      streams_.out << Show(table.name) << ": " << Say(Message::Warning, each.text) << '\n';
    } else {
      faults.push_back(each.text);
    }
  }
  return faults;
}

Faults DatabaseCheck::CheckDataFile(const Table& table) {
  try {
    BtrFile file(DataFilePath(options_.directory, table.location), Access::ReadOnly);
    const FileStat stat = file.Stat();
    if (IsOldFile(DataFilePath(options_.directory, table.location))) {
      streams_.out << Show(table.name) << ": " << Say(Message::OldFileNote) << '\n';
    }
    Faults faults = Compare(table, stat.spec);
    const uint64_t passes = stat.spec.keys.size() + 1;
    Progress progress(streams_.terminal, Show(table.name), stat.records * passes);
    const Faults more = CheckRecords(file, stat, progress);
    faults.insert(faults.end(), more.begin(), more.end());
    const Faults ranges = CheckRanges(DataFilePath(options_.directory, table.location));
    faults.insert(faults.end(), ranges.begin(), ranges.end());
    records_ += stat.records;
    return faults;
  } catch (const Failure& failure) {
    return {failure.what()};
  }
}

void DatabaseCheck::CheckTable(const Table& table) {
  Faults faults = CheckDescription(table);
  const Faults more = CheckDataFile(table);
  faults.insert(faults.end(), more.begin(), more.end());
  Tell(Show(table.name), faults);
  ++tables_;
}

ExitCode DatabaseCheck::Run() {
  if (options_.table.empty()) {
    Tell(Say(Message::TheDictionaryShort), dictionary_.oddities);
    if (dictionary_.tables.size() > static_cast<size_t>(qrn::kMaxTables)) {
      Tell(Say(Message::TheDictionaryShort),
           {Say(Message::TooManyForForms, dictionary_.tables.size())});
    }
    for (const Table& table : dictionary_.tables) CheckTable(table);
  } else {
    CheckTable(dictionary_.Find(options_.table));
  }
  streams_.out << Counted(tables_, Message::Tables) << ", " << Counted(records_, Message::Records)
               << ": "
               << (faults_ == 0 ? Say(Message::NoFaults) : Counted(faults_, Message::Faults))
               << '\n';
  return faults_ == 0 ? kDone : kFaultsFound;
}

}  // namespace

ExitCode RunCheck(const CheckOptions& options, const Streams& streams) {
  return DatabaseCheck(options, streams).Run();
}

}  // namespace qrndata
