#include "btrieve/server/RowStatement.h"

#include "btrieve/server/ServerLocks.h"

namespace btrieve::server {
namespace {

constexpr size_t kBoundsOfKey = 4;  // two groups, two ends each

size_t ValueSizeOf(const KeySpec& key, const Entry& entry) noexcept {
  return entry.Size() - (key.AllowsDuplicates() ? kOrderNumberSize : 0);
}

int64_t ThereIs(const Entry& entry) noexcept { return entry.Size() != 0 ? 1 : 0; }

}  // namespace

std::string RowStatement::Number(int64_t number) {
  question_.arguments.Add(number);
  return "$" + std::to_string(++parameters_) + "::bigint";
}

std::string RowStatement::NumberOrNull(int64_t number, bool isThere) {
  if (isThere) return Number(number);
  question_.arguments.AddNull();
  return "$" + std::to_string(++parameters_) + "::bigint";
}

std::string RowStatement::Bytes(ByteView bytes) {
  question_.arguments.Add(bytes);
  return "$" + std::to_string(++parameters_) + "::bytea";
}

std::string RowStatement::BytesOrNull(const Entry& entry) {
  if (entry.Size() != 0) return Bytes(entry.View());
  question_.arguments.AddNull();
  return "$" + std::to_string(++parameters_) + "::bytea";
}

// No other process is adding one of the values.
std::string RowStatement::FreeText(const CarryTerms& terms, int32_t object) {
  std::string first;
  std::string text = "true";
  for (size_t slot = 0; slot < spec_.file.keys.size(); ++slot) {
    if (spec_.file.keys[slot].AllowsDuplicates()) continue;
    if (first.empty()) first = Number(object);
    const uint64_t claim = slot < terms.claims.size() ? terms.claims[slot] : 0;
    const std::string second = NumberOrNull(ServerClaim(claim), claim != 0);
    text.append(" AND (").append(second).append(" IS NULL OR pg_try_advisory_xact_lock(");
    text.append(first).append("::int, ").append(second).append("::int))");
  }
  return text;
}

// Entries that a changed record gets are not another one's. A new one's are refused by the indexes.
std::string RowStatement::TakenText(const RowChange& change) {
  if (!change.existed || !change.remains) return "";
  std::string text;
  for (size_t slot = 0; slot < spec_.file.keys.size(); ++slot) {
    if (spec_.file.keys[slot].AllowsDuplicates()) continue;
    text += " AND NOT EXISTS (SELECT 1 FROM " + table_ + " WHERE " + KeyName(slot) + " = " +
            after_[slot] + " AND pos <> " + position_ + ")";
  }
  return text;
}

// 1 where no other record has the value of an entry, else 0; 0 without an entry.
std::string RowStatement::GroupText(size_t slot, const Entry& entry) {
  Entry& from = bounds_.emplace_back();
  Entry& behind = bounds_.emplace_back();
  if (entry.Size() != 0) {
    from.Assign(entry.View().first(ValueSizeOf(spec_.file.keys[slot], entry)));
    behind = from;
    behind.Fill(0xFF, kBehindAll);
  }
  const std::string low = BytesOrNull(from);
  const std::string high = BytesOrNull(behind);
  return "CASE WHEN " + low + " IS NULL OR EXISTS (SELECT 1 FROM " + table_ + " WHERE " +
         KeyName(slot) + " >= " + low + " AND " + KeyName(slot) + " < " + high + " AND pos <> " +
         position_ + ") THEN 0 ELSE 1 END";
}

// By how much the key's number of different values changes.
std::string RowStatement::CountText(size_t slot, const KeyChange& key) {
  if (!spec_.file.keys[slot].AllowsDuplicates()) {
    return Number(ThereIs(key.after) - ThereIs(key.before));
  }
  const std::string comes = GroupText(slot, key.after);
  return comes + " - " + GroupText(slot, key.before);
}

std::string RowStatement::RowText(const RowChange& change) {
  if (!change.remains) return "DELETE FROM " + table_ + " USING g WHERE pos = " + position_;
  std::string names = "ver, num, data";
  std::string values = Number(static_cast<int64_t>(change.version)) + ", " + Bytes(change.numbers) +
                       ", " + Bytes(change.data);
  for (size_t slot = 0; slot < after_.size(); ++slot) {
    names += ", " + KeyName(slot);
    values += ", " + after_[slot];
  }
  if (!change.existed) {
    return "INSERT INTO " + table_ + "(pos, " + names + ") SELECT " + position_ + ", " + values +
           " FROM g ON CONFLICT DO NOTHING";
  }
  return "UPDATE " + table_ + " SET (" + names + ") = ROW(" + values +
         ") FROM g WHERE pos = " + position_;
}

std::string RowStatement::HeadText(const Head& head) {
  std::string counts;
  for (size_t slot = 1; slot <= spec_.file.keys.size(); ++slot) {
    const std::string number = std::to_string(slot);
    counts.append(slot == 1 ? "counts[" : ", counts[")
        .append(number)
        .append("] + d")
        .append(number);
  }
  return "UPDATE " + files_ + " SET next = " + Number(head.nextPosition) +
         ", records = " + Number(head.records) +
         ", version = " + Number(static_cast<int64_t>(head.version)) +
         ", updates = " + Number(head.updateNumber) + ", counts = ARRAY[" + counts +
         "]::bigint[] FROM g, w WHERE id = " + Number(spec_.id);
}

// f: whether the values are free; g: a row if the change may be; w: a row if it was; h: the
// counters.
Question RowStatement::Make(const RowChange& change, const Head* head, const CarryTerms& terms,
                            int32_t object) {
  bounds_.reserve(kBoundsOfKey * change.keys.size());  // they stay where they are
  position_ = Number(change.position);
  for (const KeyChange& key : change.keys) {
    if (change.remains) after_.push_back(BytesOrNull(key.after));
  }
  std::string text = "WITH f AS MATERIALIZED (SELECT " + FreeText(terms, object) +
                     " AS ok), g AS MATERIALIZED (SELECT 1 AS one";
  for (size_t slot = 0; slot < change.keys.size(); ++slot) {
    text += ", " + CountText(slot, change.keys[slot]) + " AS d" + std::to_string(slot + 1);
  }
  text += " FROM f WHERE ok" + TakenText(change) + "), w AS (" + RowText(change) +
          " RETURNING 1 AS one)";
  if (head) text += ", h AS (" + HeadText(*head) + " RETURNING 1)";
  text += " SELECT (SELECT count(*) FROM f WHERE ok), (SELECT count(*) FROM w)";
  text += head ? ", (SELECT count(*) FROM h)" : ChangesOfCounts(change.keys.size());
  question_.text = std::move(text);
  return std::move(question_);
}

Status RowStatement::StatusOf(const Rows& answer, const RowChange& change, bool writesHead) {
  if (answer.Number(0, 0) == 0) return kRecordInUse;
  if (answer.Number(0, 1) == 0 && change.remains) return kDuplicateKey;
  if (answer.Number(0, 1) != 1 || (writesHead && answer.Number(0, 2) != 1)) ThrowDamaged();
  return kOk;
}

}  // namespace btrieve::server
