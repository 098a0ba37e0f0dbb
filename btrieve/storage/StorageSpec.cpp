// What a data file tells of itself: making a file, reading it back, adding and dropping indexes.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <set>

#include "btrieve/storage/Layout.h"
#include "btrieve/storage/OwnerName.h"
#include "btrieve/storage/Storage.h"
#include "btrieve/system/DiskSpace.h"
#include "btrieve/system/HostFile.h"

namespace btrieve {
namespace {

// The next id when all have been given: none is given twice, for records keep numbers under it.
constexpr uint16_t kNoKeyIdLeft = UINT16_MAX;

std::vector<uint8_t> StoreIds(const std::vector<uint16_t>& ids) {
  std::vector<uint8_t> bytes(2 * ids.size());
  if (!ids.empty()) std::memcpy(bytes.data(), ids.data(), bytes.size());
  return bytes;
}

// The next free id, then those of the keys: each lower than that, none twice.
std::vector<uint16_t> LoadIds(ByteView bytes, size_t keys) {
  if (bytes.size() != 2 * (keys + 1)) ThrowDamaged();
  std::vector<uint16_t> ids(keys + 1);
  std::memcpy(ids.data(), bytes.data(), bytes.size());
  const std::set<uint16_t> used(ids.begin() + 1, ids.end());
  if (used.size() != keys) ThrowDamaged();
  if (keys != 0 && (*used.begin() == 0 || *used.rbegin() >= ids[0])) ThrowDamaged();
  return ids;
}

bool IsTableText(const std::string& name, const std::string& text) {
  if (std::find(std::begin(kTables), std::end(kTables), text) != std::end(kTables)) return true;
  const unsigned long id = name.starts_with('k') ? std::strtoul(name.c_str() + 1, nullptr, 10) : 0;
  return id > 0 && id <= UINT16_MAX && text == EntryTableText(static_cast<uint16_t>(id));
}

void MakeTables(const Connection& connection, const FileSpec& spec) {
  for (const char* table : kTables) connection.Run(table);
  connection.Run("INSERT INTO range VALUES(0, x'', 0)");
  std::vector<uint16_t> ids = {static_cast<uint16_t>(spec.keys.size() + 1)};
  for (size_t id = 1; id <= spec.keys.size(); ++id) {
    ids.push_back(static_cast<uint16_t>(id));
    connection.Run(MakeEntryTable(ids.back()).c_str());
  }
  Statement insert = connection.Prepare("INSERT INTO spec(id, body, ids) VALUES(1, ?, ?)");
  const std::vector<uint8_t> body = StoreSpec(spec);
  const std::vector<uint8_t> idBytes = StoreIds(ids);
  insert.Bind(1, body);
  insert.Bind(2, idBytes);
  insert.Step();
  Head head;
  head.distinct.resize(spec.keys.size());
  std::vector<uint8_t> headBytes;
  head.Store(headBytes);
  Statement counters = connection.Prepare("INSERT INTO head(id, n) VALUES(1, ?)");
  counters.Bind(1, headBytes);
  counters.Step();
}

// An index being built over all records.
struct Filling {
  const Index* index;
  size_t recordLength;
};

// Gives the index's entry for a record, null for a record it leaves out.
void EntryFunction(sqlite3_context* context, int, sqlite3_value** values) {
  const auto* filling = static_cast<const Filling*>(sqlite3_user_data(context));
  const Index* index = filling->index;
  const auto* record = static_cast<const uint8_t*>(sqlite3_value_blob(values[0]));
  const auto size = static_cast<size_t>(sqlite3_value_bytes(values[0]));
  const int64_t position = sqlite3_value_int64(values[1]);
  if (!record || size < filling->recordLength || position < 1 || position > kHighestPosition) {
    return sqlite3_result_error_code(context, SQLITE_CORRUPT);
  }
  if (index->order.LeavesOut(record)) return sqlite3_result_null(context);
  Entry entry;
  index->order.OrderRecord(record, entry.Data());
  entry.SetSize(index->order.OrderedSize());
  if (index->duplicates) entry.AppendNumber(FirstOrderNumber(static_cast<uint32_t>(position)));
  sqlite3_result_blob64(context, entry.View().data(), entry.Size(), SQLITE_TRANSIENT);
}

class FunctionInScope {
 public:
  FunctionInScope(sqlite3* connection, Filling& filling) : connection_(connection) {
    const int result =
        sqlite3_create_function_v2(connection, kName, 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                   &filling, EntryFunction, nullptr, nullptr, nullptr);
    if (result != SQLITE_OK) ThrowResult(result);
  }
  ~FunctionInScope() {
    sqlite3_create_function_v2(connection_, kName, 2, SQLITE_UTF8, nullptr, nullptr, nullptr,
                               nullptr, nullptr);
  }
  FunctionInScope(const FunctionInScope&) = delete;
  FunctionInScope& operator=(const FunctionInScope&) = delete;
  static constexpr const char* kName = "entry_of";

 private:
  sqlite3* connection_;
};

}  // namespace

void Storage::Create(const std::string& path, const FileSpec& spec) {
  Connection connection(SqliteName(path), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  int reserved = kPageSumSize;
  sqlite3_file_control(connection.Get(), "main", SQLITE_FCNTL_RESERVE_BYTES, &reserved);
  const std::string marks = "PRAGMA page_size=" + std::to_string(kStoragePageSize) +
                            "; PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; BEGIN;"
                            "PRAGMA application_id=" +
                            std::to_string(kFileMark) +
                            "; PRAGMA user_version=" + std::to_string(kFileFormat) + ";";
  connection.Run(marks.c_str());
  MakeTables(connection, spec);
  connection.Run("COMMIT; PRAGMA journal_mode=WAL");
  connection.Close();
  ForgetLastError();
  if (!SyncFile(path, false)) throw Failure{LastErrorIsDiskFull() ? kDiskFull : kIoError};
}

// A table of another form, a view or a trigger would have the statements do what is not meant, and
// trees that share a page would take each other's rows.
void Storage::CheckTables() {
  std::set<int64_t> roots;
  Statement rows = connection_.Prepare("SELECT name, sql, rootpage FROM sqlite_schema");
  while (rows.Step()) {
    if (!IsTableText(TextOf(rows.Bytes(0)), TextOf(rows.Bytes(1)))) ThrowDamaged();
    if (rows.Number(2) <= 1 || !roots.insert(rows.Number(2)).second) ThrowDamaged();
  }
}

void Storage::LoadSpecification() {
  if (foreign_) return TakeForeignSpecification();
  Statement read = connection_.Prepare("SELECT body, ids FROM spec WHERE id=1");
  if (!read.Step() || !LoadSpec(read.Bytes(0), spec_)) ThrowDamaged();
  const std::vector<uint16_t> ids = LoadIds(read.Bytes(1), spec_.keys.size());
  nextKeyId_ = ids[0];
  indexes_.clear();
  for (size_t slot = 0; slot < spec_.keys.size(); ++slot) {
    indexes_.emplace_back(spec_, spec_.keys[slot], ids[slot + 1]);
  }
  NumberSlots();
}

// After a change that was not committed. Where even reading fails there is nothing right to go on
// with: without keys every call on one is refused.
void Storage::RestoreSpecification() noexcept {
  try {
    LoadSpecification();
    if (foreign_) return;
    for (Index& index : indexes_) PrepareIndex(index);
  } catch (...) {
    indexes_.clear();
    NumberSlots();
  }
}

void Storage::StoreSpecification() {
  std::vector<uint16_t> ids = {nextKeyId_};
  for (const Index& index : indexes_) ids.push_back(index.id);
  const std::vector<uint8_t> body = StoreSpec(spec_);
  const std::vector<uint8_t> idBytes = StoreIds(ids);
  Statement update = connection_.Prepare("UPDATE spec SET body=?, ids=? WHERE id=1");
  update.Bind(1, body);
  update.Bind(2, idBytes);
  update.Step();
}

void Storage::TakeForeignSpecification() {
  spec_ = foreign_->Spec();
  indexes_.clear();
  for (size_t slot = 0; slot < spec_.keys.size(); ++slot) {
    indexes_.emplace_back(spec_, spec_.keys[slot], foreign_->KeyId(slot));
  }
  NumberSlots();
}

Status Storage::AddIndexElsewhere(const FileSpec& changed, size_t slot) {
  respecified_ = wrote_ = true;
  const Status status = foreign_->AddKey(changed, slot, head_);
  if (status == kOk) TakeForeignSpecification();
  return status;
}

Status Storage::AddIndex(const FileSpec& changed, uint8_t number) {
  const auto key = std::find_if(changed.keys.begin(), changed.keys.end(),
                                [&](const KeySpec& each) { return each.number == number; });
  const size_t slot = static_cast<size_t>(key - changed.keys.begin());
  if (foreign_) return AddIndexElsewhere(changed, slot);
  if (nextKeyId_ == kNoKeyIdLeft) return kNumberOfKeys;
  EndWalks();
  wrote_ = true;
  Index index(changed, *key, nextKeyId_);
  connection_.Run(MakeEntryTable(index.id).c_str());
  PrepareIndex(index);
  {
    Filling filling{&index, changed.recordLength};
    const FunctionInScope function(connection_.Get(), filling);
    Statement fill = connection_.Prepare("INSERT INTO " + EntryTable(index.id) +
                                         "(e, pos) SELECT * FROM (SELECT entry_of(data, pos) AS e, "
                                         "pos FROM rec) WHERE e IS NOT NULL ORDER BY e");
    if (!fill.TryInsert()) return kDuplicateKey;
  }
  spec_ = changed;
  respecified_ = true;
  ++nextKeyId_;
  head_.distinct.insert(head_.distinct.begin() + static_cast<ptrdiff_t>(slot), 0);
  indexes_.insert(indexes_.begin() + static_cast<ptrdiff_t>(slot), std::move(index));
  NumberSlots();
  BuildIndex(indexes_[slot], slot);
  StoreSpecification();
  return kOk;
}

// Counts what the filled table holds.
void Storage::BuildIndex(Index& index, size_t slot) {
  uint32_t entries = 0;
  uint32_t distinct = 0;
  Entry last;
  Statement walk = connection_.Prepare("SELECT e FROM " + EntryTable(index.id) + " ORDER BY e");
  for (; walk.Step(); ++entries) {
    const ByteView value = walk.Bytes(0).first(index.order.OrderedSize());
    if (entries == 0 || !BytesEqual(value, last.View())) ++distinct;
    last.Assign(value);
  }
  head_.distinct[slot] = distinct;
  if (entries != 0) index.ranks->Count({}, static_cast<int>(entries));
}

void Storage::RemoveIndex(const FileSpec& changed, uint8_t number) {
  EndWalks();
  wrote_ = true;
  const auto index = std::find_if(indexes_.begin(), indexes_.end(),
                                  [&](const Index& each) { return each.number == number; });
  const uint16_t id = index->id;
  respecified_ = true;
  if (foreign_) {
    foreign_->RemoveKey(changed, static_cast<size_t>(index - indexes_.begin()), head_);
    return TakeForeignSpecification();
  }
  head_.distinct.erase(head_.distinct.begin() + (index - indexes_.begin()));
  indexes_.erase(index);
  spec_ = changed;
  for (size_t slot = 0; slot < indexes_.size(); ++slot) {
    indexes_[slot].number = spec_.keys[slot].number;
  }
  NumberSlots();
  connection_.Run(("DROP TABLE " + EntryTable(id)).c_str());
  connection_.Run(("DELETE FROM range WHERE k=" + std::to_string(id)).c_str());
  StoreSpecification();
}

OwnerRecord Storage::ReadOwner() {
  if (foreign_) return foreign_->Owner();
  Statement read = connection_.Prepare("SELECT owner FROM spec WHERE id=1");
  if (!read.Step()) ThrowDamaged();
  const ByteView bytes = read.Bytes(0);
  if (bytes.empty()) return {};
  if (bytes[0] > kHighestOwnerMode || bytes.size() > 1 + kLongOwnerNameSize) ThrowDamaged();
  return {true, bytes[0], std::string(bytes.begin() + 1, bytes.end())};
}

void Storage::WriteOwner(const OwnerRecord& owner) {
  if (foreign_) return foreign_->WriteOwner(owner);
  wrote_ = true;
  std::vector<uint8_t> bytes;
  if (owner.set) bytes.push_back(owner.mode);
  bytes.insert(bytes.end(), owner.name.begin(), owner.name.end());
  Statement update = connection_.Prepare("UPDATE spec SET owner=? WHERE id=1");
  update.Bind(1, bytes);
  update.Step();
}

}  // namespace btrieve
