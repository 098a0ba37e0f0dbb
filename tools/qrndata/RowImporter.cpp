#include "tools/qrndata/RowImporter.h"

#include <algorithm>
#include <array>
#include <thread>

#include "btrieve/keys/KeyOrder.h"
#include "tools/qrndata/FieldInput.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

// The forms' way of finding values behind a variable one ends at the first.
void RequireWritable(const Table& table) {
  const qrn::DbFieldInfo* variable = VariableField(table);
  if (variable == nullptr) return;
  for (const qrn::DbFieldInfo& field : table.fields) {
    const bool isBehind = &field != variable && field.Offset >= variable->Offset;
    if (isBehind || field.Type == qrn::kBlob) {
      throw Failure(kBadInput, "table " + Quoted(table.name) + ": field " + Quoted(variable->Name) +
                                   " (a variable text) is not the last: " +
                                   "records of such a table cannot be written");
    }
  }
}

// Between batches others come in: their longest pause between two attempts is shorter than the
// rest.
constexpr std::chrono::milliseconds kRest{25}, kBetweenRests{500};
// A record manager need not wait by itself.
constexpr std::chrono::milliseconds kBetweenAttempts{50};

bool IsHeldElsewhere(Status status) {
  return status == btrieve::kRecordInUse || status == btrieve::kFileInUse ||
         status == btrieve::kDeadlock;
}

}  // namespace

RowImporter::RowImporter(const std::filesystem::path& directory, const Table& table, uint32_t batch,
                         Sharing sharing, std::chrono::seconds patience)
    : table_(table),
      settings_(FileSettings()),
      batch_(batch),
      sharing_(sharing),
      patience_(patience),
      file_(DataFilePath(directory, table.location),
            batch == 0 ? Access::ReadOnly : Access::ReadWrite),
      stat_(file_.Stat()),
      match_(MatchFile(table, stat_.spec)),
      image_(settings_, table) {
  RequireWritable(table);
  RequireMatch(table, match_, Weight::Record);
  if (batch == 0) unique_.emplace(file_, stat_.spec);
}

Refusal RowImporter::Put(FieldValues& values) {
  if (Refusal refusal = Check(values)) return refusal;
  Bytes& record = image_.Build(values);
  if (record.size() > kMaxFormRecord) {
    return {"the record has " + std::to_string(record.size()) + " bytes; forms read " +
                std::to_string(kMaxFormRecord),
            {}};
  }
  return unique_ ? Try(record) : Store(record);
}

Refusal RowImporter::Check(FieldValues& values) const {
  for (size_t slot = 0; slot < values.size(); ++slot) {
    const qrn::DbFieldInfo& field = table_.fields[slot];
    if (!values[slot] && IsNullable(field)) continue;
    CheckedText checked = CheckFieldText(field, values[slot].value_or(""));
    if (!checked.problem.empty()) return {std::move(checked.problem), slot};
    values[slot] = std::move(checked.text);
  }
  return {};
}

Refusal RowImporter::Store(Bytes& record) {
  const Status status = Insert(record);
  if (status == btrieve::kDuplicateKey) return ExplainDuplicate(record);
  if (IsHeldElsewhere(status) && status != btrieve::kFileInUse) return {StatusText(status), {}};
  if (status != btrieve::kOk) {
    transaction_.reset();
    Require(status, "table " + Quoted(table_.name));
  }
  if (++pending_ == batch_) Commit();
  return {};
}

// What the batch holds may be what the other program waits for, so it goes first.
Status RowImporter::Insert(Bytes& record) {
  while (true) {
    if (!transaction_) transaction_.emplace(sharing_);
    const Status status = file_.Insert(record);
    if (!IsHeldElsewhere(status)) {
      waitingSince_.reset();
      return status;
    }
    Commit();
    if (!MayWaitOn()) return status;
    std::this_thread::sleep_for(kBetweenAttempts);
  }
}

bool RowImporter::MayWaitOn() {
  if (!waitingSince_) waitingSince_ = Clock::now();
  return Clock::now() < *waitingSince_ + patience_;
}

Refusal RowImporter::ExplainDuplicate(const Bytes& record) {
  for (size_t number = 0; number < stat_.spec.keys.size(); ++number) {
    const btrieve::KeySpec& key = stat_.spec.keys[number];
    const btrieve::KeyOrder order(stat_.spec, key);
    if (key.AllowsDuplicates() || order.LeavesOut(record.data())) continue;
    std::array<uint8_t, btrieve::kMaxKeyLength> value{};
    order.CopyKey(record.data(), value.data());
    if (file_.FindKey(static_cast<int8_t>(key.number), value) != btrieve::kOk) continue;
    return RefuseDuplicate(number, "there is a record with this value already");
  }
  return {"a key that takes no duplicates has this value already", {}};
}

Refusal RowImporter::RefuseDuplicate(size_t key, const char* why) const {
  std::string problem = "key " + std::to_string(stat_.spec.keys[key].number);
  const auto told = std::find(match_.slots.begin(), match_.slots.end(), key);
  const Key* inTable =
      told == match_.slots.end() ? nullptr : &table_.keys[told - match_.slots.begin()];
  if (inTable != nullptr && !inTable->name.empty()) problem += " " + Quoted(inTable->name);
  problem.append(" takes no duplicates, and ").append(why);
  if (inTable == nullptr) return {problem, {}};
  const qrn::DbFieldInfo* field = FindField(table_, inTable->segments.front().fieldId);
  if (field == nullptr) return {problem, {}};
  return {problem, static_cast<size_t>(field - table_.fields.data())};
}

Refusal RowImporter::Try(Bytes& record) {
  const std::optional<TakenValue> value = unique_->Take(record);
  if (!value) return {};
  return RefuseDuplicate(value->key, value->isStored ? "there is a record with this value already"
                                                     : "a row before has this value");
}

void RowImporter::Commit() {
  if (!transaction_) return;
  const Status status = transaction_->Commit();
  transaction_.reset();
  Require(status, "table " + Quoted(table_.name) + ": a batch of " + Counted(pending_, "row") +
                      " could not be written");
  stored_ += pending_;
  pending_ = 0;
  Rest();
}

// Who waits for the whole file, or for a value of this batch, gets its turn although the next batch
// begins at once.
void RowImporter::Rest() {
  if (sharing_ == Sharing::Alone || Clock::now() < restedAt_ + kBetweenRests) return;
  std::this_thread::sleep_for(kRest);
  restedAt_ = Clock::now();
}

void RowImporter::Finish() { Commit(); }

}  // namespace qrndata
