#include "tools/qrndata/RecordImage.h"

#include <algorithm>
#include <numeric>

#include "fields/LittleEndian.h"
#include "tools/qrndata/FieldInput.h"
#include "tools/qrndata/FieldOutput.h"

namespace qrndata {

namespace {

// Room for the byte that display numbers put behind the last field.
constexpr size_t kSlack = 1;

size_t OffsetOf(const qrn::DbFieldInfo& field) {
  return static_cast<size_t>(std::max(field.Offset, 0));
}

}  // namespace

RecordImage::RecordImage(const qrn::QuorinSettings& settings, const Table& table)
    : settings_(settings), table_(table), byOffset_(table.fields.size()) {
  std::iota(byOffset_.begin(), byOffset_.end(), size_t{0});
  std::stable_sort(byOffset_.begin(), byOffset_.end(), [&](size_t left, size_t right) {
    return table.fields[left].Offset < table.fields[right].Offset;
  });
  fixedLength_ = RecordLength(table);
  if (const qrn::DbFieldInfo* variable = VariableField(table)) fixedLength_ = OffsetOf(*variable);
}

Bytes& RecordImage::Build(const FieldValues& values) {
  record_.assign(fixedLength_ + kSlack, 0);
  for (const size_t slot : byOffset_) {
    if (table_.fields[slot].Type != qrn::kBlob) Put(table_.fields[slot], values[slot]);
  }
  if (VariableField(table_) == nullptr) record_.resize(fixedLength_);
  for (const size_t slot : byOffset_) {
    const qrn::DbFieldInfo& field = table_.fields[slot];
    if (field.Type == qrn::kBlob) Put(field, values[slot]);
  }
  return record_;
}

// Display numbers put a byte behind themselves, which here is another field's.
void RecordImage::ChangeFixed(const qrn::DbFieldInfo& field,
                              const std::optional<std::string>& value) {
  const size_t behind = OffsetOf(field) + static_cast<size_t>(std::max(field.Size, 0));
  const uint8_t kept = record_.at(behind);
  Put(field, value);
  record_[behind] = kept;
}

Bytes& RecordImage::Change(std::span<const uint8_t> record, const FieldValues& values,
                           const std::vector<size_t>& slots) {
  FieldValues blobs(values.size());
  const auto isChanged = [&](size_t slot) { return std::ranges::find(slots, slot) != slots.end(); };
  const auto isBlob = [&](size_t slot) { return table_.fields[slot].Type == qrn::kBlob; };
  for (const size_t slot : byOffset_) {
    if (!isBlob(slot)) continue;
    blobs[slot] = isChanged(slot) ? values[slot] : Take(table_.fields[slot], record);
  }
  record_.assign(record.begin(), record.end());
  record_.resize(std::max(record.size(), fixedLength_) + kSlack);
  for (const size_t slot : slots) {
    const qrn::DbFieldInfo& field = table_.fields[slot];
    if (!isBlob(slot) && !IsVariableText(field)) ChangeFixed(field, values[slot]);
  }
  record_.resize(record.size());
  const bool hasBlobs = std::ranges::any_of(byOffset_, isBlob);
  if (hasBlobs) record_.resize(fixedLength_);
  for (const size_t slot : byOffset_) {
    const qrn::DbFieldInfo& field = table_.fields[slot];
    if (isBlob(slot)) {
      std::fill_n(record_.begin() + static_cast<ptrdiff_t>(OffsetOf(field)), field.Size,
                  uint8_t{0});
      Put(field, blobs[slot]);
    } else if (IsVariableText(field) && isChanged(slot)) {
      Put(field, values[slot]);
    }
  }
  return record_;
}

void RecordImage::Put(const qrn::DbFieldInfo& field, const std::optional<std::string>& value) {
  const size_t offset = OffsetOf(field);
  if (IsNullable(field) && offset > 0) record_[offset - 1] = value ? 0 : 1;
  const std::string text = value ? *value : CheckFieldText(field, {}).text;
  if (field.Type == qrn::kBlob) {
    PutBlob(field, text);
  } else if (IsVariableText(field)) {
    record_.resize(offset);
    record_.insert(record_.end(), text.begin(), text.end());
    record_.push_back(0);
  } else {
    PutFieldText(settings_, field, text, std::span(record_).subspan(offset));
  }
}

void RecordImage::PutBlob(const qrn::DbFieldInfo& field, const std::string& value) {
  if (value.empty()) return;
  const std::span<uint8_t> descriptor = std::span(record_).subspan(OffsetOf(field));
  qrn::StoreLittle(descriptor, static_cast<uint32_t>(value.size()));
  qrn::StoreLittle(descriptor.subspan(4), static_cast<uint32_t>(record_.size()));
  record_.insert(record_.end(), value.begin(), value.end());
}

FieldValues RecordImage::Split(std::span<const uint8_t> record) const {
  FieldValues values;
  values.reserve(table_.fields.size());
  for (const qrn::DbFieldInfo& field : table_.fields) values.push_back(Take(field, record));
  return values;
}

std::optional<std::string> RecordImage::Take(const qrn::DbFieldInfo& field,
                                             std::span<const uint8_t> record) const {
  const size_t offset = OffsetOf(field);
  if (IsNullable(field) && offset > 0 && offset <= record.size() && record[offset - 1] != 0) {
    return std::nullopt;
  }
  return FieldValueText(settings_, field, record, offset);
}

}  // namespace qrndata
