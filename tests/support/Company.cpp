#include "tests/support/Company.h"

#include "tests/support/MadeDatabase.h"
#include "tests/support/SmallTables.h"

namespace qrn::test {
namespace {

constexpr char kPeopleTable[] = R"(
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
)";

// Making files takes longer than copying them.
struct Built {
  Built() { MakeDatabase(folder.Root(), std::string(kPeopleTable) + kNotesTable + kDaysTable); }
  TempFolder folder;
};

}  // namespace

Company::Company() {
  static const Built built;
  // File by file: a copy into a folder that is there takes any two folders for one where the system
  // has no file numbers.
  for (const auto& file : std::filesystem::directory_iterator(built.folder.Root())) {
    std::filesystem::copy_file(file.path(), folder_.Root() / file.path().filename());
  }
}

}  // namespace qrn::test
