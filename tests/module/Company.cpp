#include "Company.h"

#include <random>

#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Schema.h"

namespace qrn::test {
namespace {

constexpr char kSchema[] = R"(
[[table]]
name = "People"
field = [
  { name = "Code", type = "Integer", size = 4 },
  { name = "Name", type = "String", size = 20 },
  { name = "Town", type = "String", size = 12 },
  { name = "Born", type = "Date" },
  { name = "Pay", type = "Decimal", size = 5, decimals = 2 },
]
key = [
  { name = "ByCode", fields = ["Code"] },
  { name = "ByPlace", fields = ["Town", "Code"], modifiable = true },
  { name = "ByName", fields = ["Name"], duplicates = true, modifiable = true },
]

[[table]]
name = "Notes"
field = [
  { name = "Id", type = "AutoInc", size = 4 },
  { name = "Text", type = "Note", size = 4000 },
]
key = [ { name = "ById", fields = ["Id"] } ]

[[table]]
name = "Days"
field = [
  { name = "Day", type = "Date" },
  { name = "Left", type = "Time", nullable = true },
  { name = "Word", type = "String", size = 6 },
]
key = [ { name = "ByDay", fields = ["Day"] } ]
)";

}  // namespace

Company::Company() {
  directory_ = std::filesystem::temp_directory_path() /
               ("qrn-flat-" + std::to_string(std::random_device()()));
  std::filesystem::create_directories(directory_);
  qrndata::BuildDatabase(qrndata::ParseSchema(kSchema, "test", directory_), directory_,
                         qrndata::Existing::Replace);
}

Company::~Company() {
  std::error_code ignored;
  std::filesystem::remove_all(directory_, ignored);
}

}  // namespace qrn::test
