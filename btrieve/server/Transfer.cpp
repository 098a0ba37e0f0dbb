#include "btrieve/server/Transfer.h"

#include "btrieve/pages/CheckedVfs.h"
#include "btrieve/server/CopyIn.h"
#include "btrieve/server/ServerRanges.h"
#include "btrieve/storage/BaseWalk.h"
#include "btrieve/system/DiskSpace.h"
#include "btrieve/system/HostFile.h"

namespace btrieve::server {
namespace {

// Empty where the key leaves the record out.
void MakeEntry(const Index& index, const Hit& hit, Entry& entry) {
  entry.SetSize(0);
  if (index.order.LeavesOut(hit.data.data())) return;
  index.order.OrderRecord(hit.data.data(), entry.Data());
  entry.SetSize(index.order.OrderedSize());
  if (index.duplicates) entry.AppendNumber(OrderNumberIn(hit.numbers, index.id, hit.position));
}

ServerSpec SpecOf(Storage& file) {
  ServerSpec spec;
  spec.file = file.Spec();
  for (const Index& index : file.Indexes()) spec.keyIds.push_back(index.id);
  spec.nextKeyId = file.NextKeyId();
  spec.owner = file.ReadOwner();
  return spec;
}

// The columns of a file's table that every file has.
constexpr size_t kRecordColumns = 4;
constexpr uint64_t kTogether = 20000;  // records in a write transaction

void CopyRecord(const std::vector<Index>& indexes, const Hit& hit, CopyIn& copy) {
  copy.BeginRow();
  copy.Add(int64_t{hit.position});
  copy.Add(static_cast<int64_t>(hit.version));
  copy.Add(hit.numbers);
  copy.Add(hit.data);
  Entry entry;
  for (const Index& index : indexes) {
    MakeEntry(index, hit, entry);
    entry.Size() == 0 ? copy.AddNull() : copy.Add(entry.View());
  }
}

// A file being filled. Its keys have ids of their own, under which order numbers are stored anew.
class Filling {
 public:
  Filling(Storage& from, const std::string& path) : from_(from) { to_.Open(path); }

  void Run(const WorkWatch& watch) {
    BaseWalk walk;
    walk.Start(from_, kPhysicalSlot, true, {});
    to_.BeginWrite();
    uint64_t done = 0;
    for (Hit hit; walk.Step(hit);) {
      Insert(hit);
      if (++done % kTogether == 0) GoOn();
      if (watch) watch(done);
    }
    Close();
  }

 private:
  void Insert(const Hit& hit) {
    OrderNumbers numbers;
    for (size_t slot = 0; slot < to_.Indexes().size(); ++slot) {
      const uint64_t number = OrderNumberIn(hit.numbers, from_.Indexes()[slot].id, hit.position);
      if (number != FirstOrderNumber(hit.position)) numbers.Set(to_.Indexes()[slot].id, number);
    }
    Hit row = hit;
    row.numbers = numbers.Stored();
    to_.InsertRow(row.position, row.version, row.numbers, row.data);
    Entry entry;
    for (size_t slot = 0; slot < to_.Indexes().size(); ++slot) {
      MakeEntry(to_.Indexes()[slot], row, entry);
      if (entry.Size() == 0) continue;
      const auto added = to_.InsertEntry(static_cast<int>(slot), entry, row.position);
      if (added == EntryTree::Added::Taken) ThrowDamaged();
    }
  }

  void GoOn() {
    to_.CommitWrite();
    to_.CarryLogOver();
    to_.BeginWrite();
  }

  void Close() {
    from_.RenewCounts();
    to_.Counts() = from_.Counts();
    to_.Counts().intents = 0;
    if (const OwnerRecord owner = from_.ReadOwner(); owner.set) to_.WriteOwner(owner);
    to_.CommitWrite();
    to_.CarryLogOver();
    to_.Close();
  }

  Storage& from_;
  Storage to_;
};

}  // namespace

void CopyToServer(Storage& file, ServerLink& link, const std::string& schema,
                  const std::string& table, const WorkWatch& watch) {
  file.RenewCounts();
  const ServerSpec spec = SpecOf(file);
  const RangedFile made{schema, table, MakeServerFile(link, schema, table, spec, file.Counts())};
  const auto& indexes = file.Indexes();
  IgnoreWrites(link, made);
  CopyIn copy(link, TableName(schema, table),
              static_cast<uint16_t>(kRecordColumns + indexes.size()));
  BaseWalk walk;
  walk.Start(file, kPhysicalSlot, true, {});
  uint64_t done = 0;
  for (Hit hit; walk.Step(hit);) {
    CopyRecord(indexes, hit, copy);
    if (watch) watch(++done);
  }
  copy.Finish();
  const ServerLink::LongAnswers patience(link);
  CountRanges(link, made, spec.keyIds);
  FollowWrites(link, made, spec.keyIds);
}

void CopyToFile(Storage& file, const std::string& path, const WorkWatch& watch) {
  if (!RegisterCheckedVfs()) throw Failure{kNoCacheBuffer};
  Storage::Create(path, file.Spec());
  Filling(file, path).Run(watch);
  ForgetLastError();
  if (!SyncFile(path, true)) throw Failure{LastErrorIsDiskFull() ? kDiskFull : kIoError};
}

}  // namespace btrieve::server
