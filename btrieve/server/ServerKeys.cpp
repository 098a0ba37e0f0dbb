// Keys that come and go in a file on a server.
#include "btrieve/server/ServerFile.h"

namespace btrieve::server {
namespace {

constexpr uint16_t kNoKeyIdLeft = UINT16_MAX;
constexpr int64_t kRowsTogether = 200;  // of the longest less than an answer may have

// What a key that has just come has of a record; false where it leaves it out.
bool MakeFirstEntry(const Index& index, uint32_t position, ByteView data, Entry& entry) {
  if (index.order.LeavesOut(data.data())) return false;
  index.order.OrderRecord(data.data(), entry.Data());
  entry.SetSize(index.order.OrderedSize());
  if (index.duplicates) entry.AppendNumber(FirstOrderNumber(position));
  return true;
}

// Entries of a key's column, as many records to a round trip as stand in `rows`.
void FillSome(ServerLink& link, const std::string& update, const Index& index, const Rows& rows) {
  std::vector<Question> questions;
  std::vector<Entry> entries(static_cast<size_t>(rows.Count()));
  for (int row = 0; row < rows.Count(); ++row) {
    Entry& entry = entries[static_cast<size_t>(row)];
    const uint32_t position = CheckedPosition(rows.Number(row, 0));
    if (!MakeFirstEntry(index, position, rows.Bytes(row, 1), entry)) continue;
    questions.push_back({update, Arguments().Add(int64_t{position}).Add(entry.View())});
  }
  if (!questions.empty()) link.AskAll(questions);
}

void FillKey(ServerLink& link, const std::string& table, const Index& index) {
  const std::string read = "SELECT pos, data FROM " + table +
                           " WHERE pos > $1 ORDER BY pos LIMIT " + std::to_string(kRowsTogether);
  const std::string update =
      "UPDATE " + table + " SET " + KeyColumn(index.id) + " = $2 WHERE pos = $1";
  for (int64_t last = 0; true;) {
    const Rows rows = link.Ask(read, Arguments().Add(last));
    if (rows.Count() == 0) return;
    FillSome(link, update, index, rows);
    last = rows.Number(rows.Count() - 1, 0);
  }
}

uint32_t CountValues(ServerLink& link, const std::string& table, const Index& index) {
  const std::string value = "substring(" + KeyColumn(index.id) + " FROM 1 FOR $1::bigint::int)";
  const Rows rows = link.Ask("SELECT count(DISTINCT " + value + ") FROM " + table,
                             Arguments().Add(static_cast<int64_t>(index.order.OrderedSize())));
  return static_cast<uint32_t>(rows.Number(0, 0));
}

}  // namespace

// The file's make-up from now on.
void ServerFile::Follow(ServerSpec spec) {
  spec_ = std::move(spec);
  MakeOrders();
  ForgetRead();
}

Status ServerFile::AddKey(const FileSpec& changed, size_t slot, Head& head) {
  if (spec_.nextKeyId == kNoKeyIdLeft) return kNumberOfKeys;
  const ServerLink::LongAnswers patience(*link_);
  const std::string table = TableName(place_.schema, place_.table);
  ServerSpec spec = spec_;
  const uint16_t id = spec.nextKeyId++;
  spec.file = changed;
  spec.keyIds.insert(spec.keyIds.begin() + static_cast<ptrdiff_t>(slot), id);
  const Index index(changed, changed.keys[slot], id);
  IgnoreWrites(*link_, Ranged());
  link_->Run("ALTER TABLE " + table + " ADD COLUMN " + KeyColumn(id) + " bytea");
  FillKey(*link_, table, index);
  link_->Run("CREATE UNIQUE INDEX ON " + table + "(" + KeyColumn(id) + ")");
  CountRanges(*link_, Ranged(), id);
  FollowWrites(*link_, Ranged(), spec.keyIds);
  head.distinct.insert(head.distinct.begin() + static_cast<ptrdiff_t>(slot),
                       CountValues(*link_, table, index));
  WriteServerSpec(*link_, place_.schema, spec, head);
  specBefore_ = spec_;
  respecified_ = true;
  Follow(std::move(spec));
  return kOk;
}

void ServerFile::RemoveKey(const FileSpec& changed, size_t slot, Head& head) {
  ServerSpec spec = spec_;
  const uint16_t id = spec.keyIds[slot];
  spec.file = changed;
  spec.keyIds.erase(spec.keyIds.begin() + static_cast<ptrdiff_t>(slot));
  IgnoreWrites(*link_, Ranged());  // its trigger looks at the column
  DropRanges(*link_, Ranged(), id);
  link_->Run("ALTER TABLE " + TableName(place_.schema, place_.table) + " DROP COLUMN " +
             KeyColumn(id));
  FollowWrites(*link_, Ranged(), spec.keyIds);
  head.distinct.erase(head.distinct.begin() + static_cast<ptrdiff_t>(slot));
  WriteServerSpec(*link_, place_.schema, spec, head);
  specBefore_ = spec_;
  respecified_ = true;
  Follow(std::move(spec));
}

}  // namespace btrieve::server
