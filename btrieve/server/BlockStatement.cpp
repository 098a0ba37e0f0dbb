#include "btrieve/server/BlockStatement.h"

#include "btrieve/storage/Storage.h"

namespace btrieve::server {
namespace {

constexpr size_t kFirstKeyColumn = 4;

size_t ValueSizeOf(const ServerSpec& spec, size_t slot) {
  return Index(spec.file, spec.file.keys[slot], spec.keyIds[slot]).order.OrderedSize();
}

}  // namespace

ArrayBytes::ArrayBytes(Type type, size_t count) {
  for (const uint32_t value :
       {1u, 1u, static_cast<uint32_t>(type), static_cast<uint32_t>(count), 1u}) {
    Put(value);
  }
}

void ArrayBytes::Put(uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8)
    bytes_.push_back(static_cast<uint8_t>(value >> shift));
}

void ArrayBytes::Add(ByteView element) {
  Put(static_cast<uint32_t>(element.size()));
  bytes_.insert(bytes_.end(), element.begin(), element.end());
}

void ArrayBytes::Add(int64_t element) {
  Put(sizeof element);
  Put(static_cast<uint32_t>(static_cast<uint64_t>(element) >> 32));
  Put(static_cast<uint32_t>(element));
}

void ArrayBytes::AddNull() { Put(UINT32_MAX); }

void BlockStatement::MakeColumns(std::span<const RowChange> changes) {
  using enum ArrayBytes::Type;
  columns_.clear();
  for (const auto type : {Number, Number, Bytes, Bytes})
    columns_.emplace_back(type, changes.size());
  for (size_t slot = 0; slot < spec_.file.keys.size(); ++slot) {
    columns_.emplace_back(Bytes, changes.size());
  }
  for (const RowChange& change : changes) {
    columns_[0].Add(int64_t{change.position});
    columns_[1].Add(static_cast<int64_t>(change.version));
    columns_[2].Add(change.numbers);
    columns_[3].Add(change.data);
    for (size_t slot = 0; slot < change.keys.size(); ++slot) {
      const Entry& entry = change.keys[slot].after;
      ArrayBytes& column = columns_[kFirstKeyColumn + slot];
      entry.Size() != 0 ? column.Add(entry.View()) : column.AddNull();
    }
  }
}

std::string BlockStatement::Array(size_t column, const char* type) {
  question_.arguments.Add(columns_[column].View());
  return "$" + std::to_string(++parameters_) + "::" + type + "[]";
}

std::string BlockStatement::Number(int64_t number) {
  question_.arguments.Add(number);
  return "$" + std::to_string(++parameters_) + "::bigint";
}

// Values that no record has had yet.
std::string BlockStatement::CountText(size_t slot, const std::string& entries) {
  if (!spec_.file.keys[slot].AllowsDuplicates()) {
    return "(SELECT count(e) FROM unnest(" + entries + ") AS e)";
  }
  const std::string key = KeyColumn(spec_.keyIds[slot]);
  const std::string size = std::to_string(ValueSizeOf(spec_, slot));
  const std::string behind = "'\\x" + std::string(2 * kBehindAll, 'f') + "'::bytea";
  return "(SELECT count(*) FROM (SELECT DISTINCT substring(e FROM 1 FOR " + size +
         ") AS v FROM unnest(" + entries +
         ") AS e WHERE e IS NOT NULL ORDER BY 1) AS s WHERE NOT EXISTS "
         "(SELECT 1 FROM " +
         table_ + " WHERE " + key + " >= v AND " + key + " < v || " + behind + "))";
}

std::string BlockStatement::HeadText(const Head& head, const std::string& counts) {
  return "UPDATE " + files_ + " SET next = " + Number(head.nextPosition) +
         ", records = " + Number(head.records) +
         ", version = " + Number(static_cast<int64_t>(head.version)) +
         ", updates = " + Number(head.updateNumber) + ", counts = ARRAY[" + counts +
         "]::bigint[] FROM g WHERE id = " + Number(spec_.id);
}

Question BlockStatement::Make(std::span<const RowChange> changes, const Head* head) {
  MakeColumns(changes);
  std::string names = "pos, ver, num, data";
  std::string arrays = Array(0, "bigint") + ", " + Array(1, "bigint") + ", " + Array(2, "bytea") +
                       ", " + Array(3, "bytea");
  std::string values = "1 AS one";
  std::string counts;
  for (size_t slot = 0; slot < spec_.file.keys.size(); ++slot) {
    const std::string number = std::to_string(slot + 1);
    const std::string entries = Array(kFirstKeyColumn + slot, "bytea");
    names += ", " + KeyColumn(spec_.keyIds[slot]);
    arrays += ", " + entries;
    values += ", " + CountText(slot, entries) + " AS d" + number;
    counts += (slot == 0 ? "counts[" : ", counts[") + number + "] + d" + number;
  }
  question_.text = "WITH g AS MATERIALIZED (SELECT " + values + "), w AS (INSERT INTO " + table_ +
                   "(" + names + ") SELECT * FROM unnest(" + arrays + ") RETURNING 1 AS one)";
  if (head) question_.text += ", h AS (" + HeadText(*head, counts) + " RETURNING 1)";
  question_.text += " SELECT (SELECT count(*) FROM w)";
  if (!head) question_.text += ChangesOfCounts(spec_.file.keys.size());
  return std::move(question_);
}

}  // namespace btrieve::server
