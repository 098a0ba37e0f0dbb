#include "extended/ExFieldText.h"

#include <algorithm>

#include "core/RecordBuffer.h"
#include "fields/FieldText.h"

namespace qrn {
namespace {

constexpr size_t kDescriptorSize = 8;

}  // namespace

void ExFieldText(const QuorinSettings& settings, const DbTableInfo* table, const DbFieldInfo& field,
                 std::span<const uint8_t> data, size_t offset, std::span<char> outText) {
  // Some types store no terminator and unknown ones nothing at all.
  std::fill_n(outText.begin(), std::min<size_t>(outText.size(), 2), '\0');
  if (offset >= data.size()) return;
  const auto value = data.subspan(offset);
  if (field.Type == kBlob && value.size() < kDescriptorSize) return;
  const auto record = table != nullptr ? RecordBytes(*table) : std::span<const uint8_t>{};
  GetDetachedFieldText(settings, outText, value, field, record);
}

}  // namespace qrn
