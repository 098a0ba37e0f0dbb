#include "tests/support/RandomSchema.h"

#include <algorithm>
#include <set>

namespace qrn::test {
namespace {

struct TypeRow {
  const char* name;
  const char* size;  // how it is given, empty for none
  bool isKey;        // can be in one
  int bytes;
};

constexpr TypeRow kTypes[] = {
    {"String", "size = 20", true, 20},
    {"String", "size = 1", true, 1},
    {"String", "size = 120", false, 120},
    {"String", "size = 1500", false, 1500},
    {"Integer", "size = 1", true, 1},
    {"Integer", "size = 2", true, 2},
    {"Integer", "size = 4", true, 4},
    {"Integer", "size = 8", true, 8},
    {"Float", "size = 4", false, 4},
    {"Float", "size = 8", false, 8},
    {"Date", "", true, 4},
    {"Time", "", true, 4},
    {"Decimal", "size = 5, decimals = 2", true, 5},
    {"Decimal", "size = 10", false, 10},
    {"Money", "size = 6, decimals = 2", true, 6},
    {"Logical", "", false, 1},
    {"Numeric", "size = 9, decimals = 3", true, 9},
    {"BFloat", "size = 4", false, 4},
    {"BFloat", "size = 8", false, 8},
    {"LString", "size = 20", true, 20},
    {"ZString", "size = 20", true, 20},
    {"UBin", "size = 2", true, 2},
    {"UBin", "size = 4", true, 4},
    {"Bit", "", false, 1},
    {"NumericSTS", "size = 8, decimals = 2", false, 8},
    {"NumericSTS", "size = 5", true, 5},
    {"NumericSA", "size = 7, decimals = 2", false, 7},
    {"Currency", "decimals = 2", false, 8},
};

constexpr const char* kLast[] = {"type = \"Note\", size = 1000", "type = \"LVar\", size = 8000",
                                 "type = \"Blob\""};

// clang-format off
constexpr const char* kNames[] = {
    "A", "z", "番", "ｱ", "得意先番号", "得意先の名称と住所録", "ABCDEFGHIJKLMNOPQRST", "Two words",
    "a&b", "50%", "it's", "say \\\"so\\\"", "x/y", "3rd", "7", "@5", "a,b", "End", "Sub", "Next",
    "Me", "Status", "Detail", "List", "Index", "Name", "Text", "Caption", "A_B", "A_Change",
    "theTable", "told", "Short", "Picture", "画像ファイル", "フリガナ", "ソ表示十能",
};
// clang-format on

// What fits a page of the files that forms make, with what else stands there.
constexpr int kLongestRecord = 3200;

class Maker {
 public:
  explicit Maker(std::mt19937& random) : random_(random) {}

  RandomSchema Make(int tables) {
    std::set<std::string> taken;
    for (int i = 0; i < tables; ++i) MakeTable(Name("T", i, taken), i);
    return std::move(schema_);
  }

 private:
  int Pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
  bool Chance(int percent) { return Pick(1, 100) <= percent; }

  // One of the odd names while they last, else a plain one.
  std::string Name(const char* plain, int number, std::set<std::string>& taken) {
    std::string name = kNames[Pick(0, std::size(kNames) - 1)];
    std::string lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    if (Chance(60) && taken.insert(lower).second) return name;
    name = plain + std::to_string(number);
    taken.insert(name);
    return name;
  }

  void MakeTable(const std::string& name, int number) {
    schema_.tables.push_back(name == "say \\\"so\\\"" ? "say \"so\"" : name);
    schema_.toml += "[[table]]\nname = \"" + name + "\"\nfile = \"t" + std::to_string(number) +
                    ".btr\"\nfield = [\n";
    keyed_.clear();
    bytes_ = 0;
    std::set<std::string> taken;
    // A record has four bytes at least.
    Field("Id", R"(type = "Integer", size = 4)", true);
    taken.insert("id");
    const int fields = Chance(5) ? 100 : Pick(0, 14);
    for (int i = 0; i < fields; ++i) RandomField(Name("Field", i, taken));
    if (Chance(15)) Field("Last", kLast[Pick(0, 2)], false);
    schema_.toml += "]\n";
    if (Chance(85)) MakeKeys();
  }

  void RandomField(const std::string& name) {
    const TypeRow& type = kTypes[Pick(0, std::size(kTypes) - 1)];
    const bool tooLong = (bytes_ += type.bytes) > kLongestRecord;
    const std::string size = tooLong ? "" : type.size;
    const std::string kind =
        tooLong ? "type = \"Date\"" : "type = \"" + std::string(type.name) + "\"";
    Field(name, kind + (size.empty() ? "" : ", ") + size + (Chance(10) ? ", nullable = true" : ""),
          type.isKey && !tooLong);
  }

  void Field(const std::string& name, const std::string& rest, bool canBeKey) {
    schema_.toml += "  { name = \"" + name + "\", " + rest + " },\n";
    if (canBeKey) keyed_.push_back(name);
  }

  void MakeKeys() {
    schema_.toml += "key = [\n  { fields = [\"Id\"] },\n";
    for (int i = 0; i < Pick(0, 5); ++i) {
      std::vector<std::string> fields = keyed_;
      std::shuffle(fields.begin(), fields.end(), random_);
      fields.resize(std::min(fields.size(), static_cast<size_t>(Chance(20) ? 8 : Pick(1, 3))));
      schema_.toml += "  { ";
      if (Chance(60)) schema_.toml += "name = \"Key" + std::to_string(i) + "\", ";
      schema_.toml += "duplicates = true, modifiable = true, fields = [";
      for (const std::string& field : fields) schema_.toml += "\"" + field + "\", ";
      schema_.toml += "] },\n";
    }
    schema_.toml += "]\n";
  }

  std::mt19937& random_;
  RandomSchema schema_;
  int bytes_ = 0;                   // of the table's fields so far
  std::vector<std::string> keyed_;  // names of fields that can be in keys
};

}  // namespace

RandomSchema MakeRandomSchema(std::mt19937& random, int tables) {
  return Maker(random).Make(tables);
}

}  // namespace qrn::test
