#include "extended/ExFieldText.h"

#include <algorithm>
#include <vector>

#include "core/RecordBuffer.h"
#include "fields/FieldText.h"

namespace qrn {
namespace {

constexpr size_t kDescriptorSize = 8;

// Blobs want one record around descriptor and data: the table's, with the descriptor behind it.
void BlobText(const QuorinSettings& settings, const DbTableInfo& table, const DbFieldInfo& field,
              std::span<const uint8_t> descriptor, std::span<char> outText) {
  const std::span<const uint8_t> held = RecordBytes(table);
  std::vector<uint8_t> record(held.begin(), held.end());
  record.insert(record.end(), descriptor.begin(), descriptor.end());
  GetFieldText(settings, outText, record.data() + held.size(), field, record);
}

}  // namespace

void ExFieldText(const QuorinSettings& settings, const DbTableInfo* table, const DbFieldInfo& field,
                 std::span<const uint8_t> data, size_t offset, std::span<char> outText) {
  // Some types store no terminator and unknown ones nothing at all.
  std::fill_n(outText.begin(), std::min<size_t>(outText.size(), 2), '\0');
  if (offset >= data.size()) return;
  if (field.Type != kBlob) {
    GetFieldText(settings, outText, data.data() + offset, field, data);
    return;
  }
  if (data.size() - offset < kDescriptorSize) return;
  if (table == nullptr || RecordBytes(*table).empty()) return;
  BlobText(settings, *table, field, data.subspan(offset, kDescriptorSize), outText);
}

}  // namespace qrn
