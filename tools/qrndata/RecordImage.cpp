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
