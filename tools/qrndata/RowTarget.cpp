#include "tools/qrndata/RowTarget.h"

#include <algorithm>
#include <array>

#include "btrieve/keys/KeyOrder.h"
#include "tools/qrndata/FieldInput.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"

namespace qrndata {

namespace {

// The forms' way of finding values behind a variable one ends at the first.
void RequireWritable(const Table& table) {
  const qrn::DbFieldInfo* variable = VariableField(table);
  if (variable == nullptr) return;
  for (const qrn::DbFieldInfo& field : table.fields) {
    const bool isBehind = &field != variable && field.Offset >= variable->Offset;
    if (isBehind || field.Type == qrn::kBlob) {
      throw Failure(kBadInput,
                    Say(Message::VariableNotLast, Quoted(table.name), Quoted(variable->Name)));
    }
  }
}

}  // namespace

RowTarget::RowTarget(const std::filesystem::path& directory, const Table& table, Access access)
    : table_(table),
      settings_(FileSettings()),
      file_(DataFilePath(directory, table.location), access),
      stat_(file_.Stat()),
      match_(MatchFile(table, stat_.spec)),
      image_(settings_, table) {
  RequireWritable(table);
  RequireMatch(table, match_, Weight::Record);
}

Refusal RowTarget::Check(FieldValues& values) const {
  for (size_t slot = 0; slot < values.size(); ++slot) {
    const qrn::DbFieldInfo& field = table_.fields[slot];
    if (!values[slot] && IsNullable(field)) continue;
    CheckedText checked =
        CheckFieldText(field, values[slot] ? std::string_view(*values[slot]) : std::string_view());
    if (!checked.problem.empty()) return {std::move(checked.problem), slot};
    values[slot] = std::move(checked.text);
  }
  return {};
}

Refusal RowTarget::CheckLength(const Bytes& record) {
  if (record.size() <= kMaxFormRecord) return {};
  return {Say(Message::RecordTooLongForForms, record.size(), kMaxFormRecord), {}};
}

Refusal RowTarget::ExplainDuplicate(const Bytes& record, const Bytes* own) {
  using KeyValue = std::array<uint8_t, btrieve::kMaxKeyLength>;
  for (size_t number = 0; number < stat_.spec.keys.size(); ++number) {
    const btrieve::KeySpec& key = stat_.spec.keys[number];
    const btrieve::KeyOrder order(stat_.spec, key);
    if (key.AllowsDuplicates() || order.LeavesOut(record.data())) continue;
    KeyValue value{}, ownValue{};
    order.CopyKey(record.data(), value.data());
    if (own != nullptr) order.CopyKey(own->data(), ownValue.data());
    if (own != nullptr && ownValue == value) continue;
    if (file_.FindKey(static_cast<int8_t>(key.number), value) != btrieve::kOk) continue;
    return RefuseDuplicate(number, Message::ValueIsThere);
  }
  return {Say(Message::SomeKeyHasValue), {}};
}

Refusal RowTarget::RefuseDuplicate(size_t key, Message why) const {
  std::string name = Say(Message::KeyNumber, stat_.spec.keys[key].number);
  const auto told = std::find(match_.slots.begin(), match_.slots.end(), key);
  const Key* inTable =
      told == match_.slots.end() ? nullptr : &table_.keys[told - match_.slots.begin()];
  if (inTable != nullptr && !inTable->name.empty()) name += " " + Quoted(inTable->name);
  const std::string problem = Say(Message::NoDuplicates, name, Say(why));
  if (inTable == nullptr) return {problem, {}};
  const qrn::DbFieldInfo* field = FindField(table_, inTable->segments.front().fieldId);
  if (field == nullptr) return {problem, {}};
  return {problem, static_cast<size_t>(field - table_.fields.data())};
}

void RowTarget::Close() {
  if (const Status status = file_.Close()) throw FailureOf(status);
}

Failure RowTarget::FailureOf(Status status) const {
  return {kSystem, Say(Message::OfTable, Quoted(table_.name), StatusText(status))};
}

}  // namespace qrndata
