#include "btrieve/server/Transfer.h"

#include "btrieve/storage/BaseWalk.h"

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

std::string InsertText(const std::string& table, size_t keys) {
  std::string text = "INSERT INTO " + table + " VALUES($1, $2, $3, $4";
  for (size_t key = 0; key < keys; ++key) text += ", $" + std::to_string(5 + key);
  return text + ")";
}

ServerSpec SpecOf(Storage& file) {
  ServerSpec spec;
  spec.file = file.Spec();
  for (const Index& index : file.Indexes()) spec.keyIds.push_back(index.id);
  spec.owner = file.ReadOwner();
  return spec;
}

}  // namespace

void CopyToServer(Storage& file, ServerLink& link, const std::string& schema,
                  const std::string& table) {
  file.RenewCounts();
  MakeServerFile(link, schema, table, SpecOf(file), file.Counts());
  const auto& indexes = file.Indexes();
  const std::string insert = InsertText(TableName(schema, table), indexes.size());
  std::vector<Entry> entries(indexes.size());
  BaseWalk walk;
  walk.Start(file, kPhysicalSlot, true, {});
  for (Hit hit; walk.Step(hit);) {
    Arguments row;
    row.Add(int64_t{hit.position}).Add(static_cast<int64_t>(hit.version));
    row.Add(hit.numbers).Add(hit.data);
    for (size_t slot = 0; slot < indexes.size(); ++slot) {
      MakeEntry(indexes[slot], hit, entries[slot]);
      entries[slot].Size() == 0 ? row.AddNull() : row.Add(entries[slot].View());
    }
    link.Ask(insert, row);
  }
}

}  // namespace btrieve::server
