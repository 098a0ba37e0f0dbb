#include "extended/FillVariant.h"

#include <iterator>
#include <limits>

namespace qrn {
namespace {

constexpr size_t kWholeRow = std::numeric_limits<size_t>::max();

// clang-format off
constexpr FillVariant kVariants[] = {
    // kind              delimiter             event      position first  limits end
    {FillKind::ComboBox, Delimiter::Text,      kWholeRow, false,          true},
    {FillKind::ListBox,  Delimiter::TabIfText, kWholeRow, false,          true},
    {FillKind::Grid,     Delimiter::Tab,       512,       true,           false},
};
// clang-format on

constexpr bool RowsStandAtTheirKind() {
  for (size_t row = 0; row < std::size(kVariants); ++row) {
    if (static_cast<size_t>(kVariants[row].kind) != row) return false;
  }
  return true;
}
static_assert(RowsStandAtTheirKind());

}  // namespace

const FillVariant& VariantOf(FillKind kind) { return kVariants[static_cast<size_t>(kind)]; }

std::string_view DelimiterOf(const FillVariant& variant, std::string_view text) {
  const bool tab = variant.delimiter == Delimiter::Tab ||
                   (variant.delimiter == Delimiter::TabIfText && !text.empty());
  if (tab) return "\t";
  return variant.delimiter == Delimiter::Text && !text.empty() ? text : " ";
}

}  // namespace qrn
