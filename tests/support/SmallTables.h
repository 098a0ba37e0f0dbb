// Tables that small test databases share, as schema text.
#pragma once

namespace qrn::test {

// Records that end in a note.
inline constexpr char kNotesTable[] = R"(
[[table]]
name = "Notes"
field = [
  { name = "Id", type = "AutoInc", size = 4 },
  { name = "Text", type = "Note", size = 4000 },
]
key = [ { name = "ById", fields = ["Id"] } ]
)";

// With a field that may be null.
inline constexpr char kDaysTable[] = R"(
[[table]]
name = "Days"
field = [
  { name = "Day", type = "Date" },
  { name = "Left", type = "Time", nullable = true },
  { name = "Word", type = "String", size = 6 },
]
key = [ { name = "ByDay", fields = ["Day"] } ]
)";

}  // namespace qrn::test
