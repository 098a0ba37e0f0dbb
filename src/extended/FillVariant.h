// In what the fills of the three kinds of lists differ. The fill itself is one
// (extended/FillFromExtended.h).
#pragma once

#include <cstddef>
#include <string_view>

namespace qrn {

enum class FillKind { ComboBox, ListBox, Grid };

// What stands between the fields of a row.
enum class Delimiter {
  Text,       // the control's delimiter text, a blank if it is empty
  TabIfText,  // a tab if the control's tab stops are not empty, otherwise a blank; never parsed
  Tab,
};

struct FillVariant {
  FillKind kind;
  Delimiter delimiter;
  size_t eventText;  // UTF-16 units of a row that the event `Format` gets
  // The grid takes a record's position before the row's event: a row that the handler cancels
  // leaves its position behind. Lists take it for the item that was added.
  bool positionFirst;
  // What 22, 60, 64 and 65 mean. Lists raise `BtrieveError` and end there, and do not keep that
  // reply; the grid reads on.
  bool limitsEnd;
};

const FillVariant& VariantOf(FillKind kind);

// `text` is the combo box's delimiter text or the list box's tab stops.
std::string_view DelimiterOf(const FillVariant& variant, std::string_view text);

}  // namespace qrn
