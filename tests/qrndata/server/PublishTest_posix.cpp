// Views for other programs: every field type as the data tool's own export has it, any bytes
// without an error, rights and others' objects left alone.
#include <bit>
#include <cstring>
#include <map>

#include "ServerFixture.h"
#include "btrieve/server/CopyIn.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/FieldInput.h"
#include "tools/qrndata/RecordImage.h"

namespace qrndata::test {
namespace {

using Stored = std::vector<uint8_t>;

class Views : public OnServer {
 protected:
  void TearDown() override {
    Sql("DROP SCHEMA IF EXISTS \"" + Schema() + "_view\" CASCADE");
    OnServer::TearDown();
  }
  Said Publish() const { return Run({"publish", Path("db")}); }
  std::string View(const std::string& name) const {
    return "\"" + Schema() + "_view\".\"" + name + "\"";
  }
  // A column of a view, a value a line, by the records' order along key 0; "-" for null.
  std::string Column(const std::string& view, const std::string& value) const {
    const auto rows = Link()->Ask("SELECT coalesce((" + value + ")::text, '-') FROM " + View(view));
    std::string lines;
    for (int row = 0; row < rows.Count(); ++row) {
      lines += btrieve::TextOf(rows.Bytes(row, 0)) + "\n";
    }
    return lines;
  }
};

constexpr char kEveryType[] = R"([[table]]
name = "All"
field = [
  { name = "Id", type = "Integer" },
  { name = "I1", type = "Integer", size = 1 }, { name = "I2", type = "Integer", size = 2 },
  { name = "I8", type = "Integer", size = 8 }, { name = "U2", type = "UBin", size = 2 },
  { name = "U4", type = "UBin", size = 4 }, { name = "F4", type = "Float", size = 4 },
  { name = "F8", type = "Float", size = 8 }, { name = "B4", type = "BFloat", size = 4 },
  { name = "B8", type = "BFloat", size = 8 }, { name = "Day", type = "Date" },
  { name = "Hour", type = "Time" }, { name = "Dec", type = "Decimal", size = 6, decimals = 3 },
  { name = "Mon", type = "Money", size = 5, decimals = 2 }, { name = "Yes", type = "Logical" },
  { name = "Num", type = "Numeric", size = 7, decimals = 2 },
  { name = "Sts", type = "NumericSTS", size = 7, decimals = 2 },
  { name = "Sa", type = "NumericSA", size = 7, decimals = 2 },
  { name = "Cur", type = "Currency", decimals = 4 }, { name = "Str", type = "String", size = 12 },
  { name = "LStr", type = "LString", size = 12 }, { name = "ZStr", type = "ZString", size = 12 },
  { name = "Bit", type = "Bit" }, { name = "Maybe", type = "Integer", nullable = true },
  { name = "日本", type = "String", size = 8 }, { name = "Memo", type = "Note", size = 300 },
]
key = [ { fields = ["Id"] } ])";

struct ValueCase {
  const char* field;
  std::vector<const char*> texts;
};
const ValueCase kValues[] = {
    {"I1", {"0", "255", "128"}},
    {"I2", {"-32768", "32767", "-1"}},
    {"I8", {"-9223372036854775808", "9223372036854775807", "-1"}},
    {"U2", {"0", "65535", "32768"}},
    {"U4", {"0", "4294967295", "2147483648"}},
    {"F4", {"1.5", "-0.1", "340282346638528860000000000000000000000"}},
    {"F8", {"0.1", "-2.5", "179769313486231570000000000000000000000"}},
    {"B4", {"12", "-0.5", "0.1"}},
    {"B8", {"12", "-0.1", "123456789.125"}},
    {"Day", {"2024/02/29", "1900/01/01", "9999/12/31"}},
    {"Hour", {"12:34:56", "23:59:59.99", "00:00:01"}},
    {"Dec", {"12.345", "-99999999.999", "-0.001"}},
    {"Mon", {"0.5", "-9999999.99", "1"}},
    {"Yes", {"0", "1", "1"}},
    {"Num", {"12.5", "-99999.99", "0.01"}},
    {"Sts", {"12.5", "-9999.99", "0.01"}},
    {"Sa", {"12.5", "-99999.99", "0.01"}},
    {"Cur", {"123.4567", "-922337203685477.5808", "0.0001"}},
    {"Str", {"AB", "東京 都", "12345678901"}},
    {"LStr", {"AB ", "ｱｲｳ", "①㈱"}},
    {"ZStr", {"AB ", "髙﨑", "~\\"}},
    {"Bit", {"A", "1", "z"}},
    {"Maybe", {"5", "", "-5"}},
    {"日本", {"語", "x", ""}},
    {"Memo", {"a longer text", "二行", ""}},
};

// Numbers, dates and times of a text in the form that the server writes them.
const char* CastFor(const std::string& field) {
  static const std::map<std::string, const char*> kCasts = {
      {"Day", "date"},         {"Hour", "time"},         {"Yes", "boolean"},
      {"F4", "real"},          {"F8", "float8"},         {"B4", "real"},
      {"B8", "float8"},        {"Dec", "numeric(11,3)"}, {"Mon", "numeric(9,2)"},
      {"Num", "numeric(7,2)"}, {"Sts", "numeric(7,2)"},  {"Sa", "numeric(7,2)"},
      {"Cur", "numeric(19,4)"}};
  const auto found = kCasts.find(field);
  return found == kCasts.end() ? "text" : found->second;
}

TEST_F(Views, GiveEveryTypeAsTheExportDoes) {
  Build(kEveryType);
  std::string csv = "Id";
  for (const ValueCase& row : kValues) csv += std::string(",") + row.field;
  for (size_t line = 0; line < 3; ++line) {
    csv += "\n" + std::to_string(line);
    for (const ValueCase& row : kValues) csv += std::string(",") + row.texts[line];
  }
  const Said imported = Import("All", csv + "\n");
  ASSERT_EQ(imported.code, 0) << imported.err;
  ASSERT_EQ(Move().code, 0);
  EXPECT_EQ(Line(Publish()), "code=0 out=db: 1 view in schema " + Schema() + "_view\n");
  EXPECT_EQ(Column("All", "\"Id\""), "0\n1\n2\n");
  for (const ValueCase& row : kValues) {
    const std::string field = row.field;
    std::string expected;
    std::istringstream exported(Export("All", {"--fields", field, "--key", "0"}));
    std::string text;
    std::getline(exported, text);
    while (std::getline(exported, text)) {
      if (text.starts_with('"')) text = text.substr(1, text.size() - 2);
      const bool isNull = text.empty() && field == "Maybe";
      const auto rows = Link()->Ask("SELECT '" + text + "'::" + CastFor(field) + "::text WHERE " +
                                    (isNull ? "false" : "true"));
      expected += (rows.Count() == 0 ? "-" : btrieve::TextOf(rows.Bytes(0, 0))) + "\n";
    }
    EXPECT_EQ(Column("All", "\"" + field + "\""), expected) << field;
  }
}

struct BytesCase {
  const char* call;  // of a function in the views' schema
  Stored bytes;
  const char* value;
};
const BytesCase kBytes[] = {
    {"btrieve_date(d, 0)", {31, 2, 0xE8, 7}, "-"},
    {"btrieve_date(d, 0)", {0, 0, 0, 0}, "-"},
    {"btrieve_date(d, 0)", {1, 13, 0xE8, 7}, "-"},
    {"btrieve_date(d, 0)", {29, 2, 0xE7, 7}, "-"},
    {"btrieve_date(d, 0)", {31, 12, 0xFF, 0xFF}, "65535-12-31"},
    {"btrieve_date(d, 0)", {1, 1, 1}, "-"},
    {"btrieve_time(d, 0)", {0, 0, 0, 0}, "-"},
    {"btrieve_time(d, 0)", {1, 0, 0, 0}, "00:00:00.01"},
    {"btrieve_time(d, 0)", {0, 60, 0, 0}, "-"},
    {"btrieve_time(d, 0)", {0, 0, 0, 24}, "-"},
    {"btrieve_time(d, 0)", {100, 0, 0, 1}, "-"},
    {"btrieve_packed(d, 0, 2, 1)", {0x12, 0x3D}, "-12.3"},
    {"btrieve_packed(d, 0, 2, 1)", {0x1A, 0x3C}, "-"},
    {"btrieve_packed(d, 0, 2, 5)", {0x12, 0x3C}, "0.00123"},
    {"btrieve_packed(d, 0, 3, 1)", {0x12, 0x3C}, "-"},
    {"btrieve_display(d, 0, 3, 0, 'over')", {'0', '1', 'K'}, "-12"},
    {"btrieve_display(d, 0, 3, 0, 'over')", {'0', '1', '{'}, "10"},
    {"btrieve_display(d, 0, 3, 0, 'over')", {'0', '1', 'Z'}, "-"},
    {"btrieve_display(d, 0, 3, 0, 'over')", {' ', '1', '2'}, "-"},
    {"btrieve_display(d, 0, 3, 0, 'over')", {0, 9, 9}, "0"},
    {"btrieve_display(d, 0, 3, 1, 'trailing')", {'1', '2', '-'}, "-1.2"},
    {"btrieve_display(d, 0, 3, 1, 'trailing')", {'1', 0xFF, '-'}, "-"},
    {"btrieve_display(d, 0, 3, 1, 'raised')", {'1', '2', 't'}, "-12.4"},
    {"btrieve_display(d, 0, 3, 1, 'raised')", {'1', '2', '.'}, "-"},
    {"btrieve_float(d, 0, 4)", {0, 0, 0x80, 0x7F}, "Infinity"},
    {"btrieve_float(d, 0, 4)", {1, 0, 0x80, 0xFF}, "NaN"},
    {"btrieve_float(d, 0, 8)", {1, 0, 0, 0, 0, 0, 0, 0}, "5e-324"},
    {"btrieve_float(d, 0, 8)",
     {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xEF, 0x7F},
     "1.7976931348623157e+308"},
    {"btrieve_float(d, 0, 8)", {0, 0, 0, 0, 0, 0, 0xF0, 0xFF}, "-Infinity"},
    {"btrieve_bfloat(d, 0, 4)", {0, 0, 0x40, 0x84}, "12"},
    {"btrieve_bfloat(d, 0, 4)", {0, 0, 0, 0}, "0"},
    {"btrieve_truth(d, 0)", {2}, "-"},
    {"btrieve_truth(d, 0)", {}, "-"},
    {"btrieve_string(d, 0, 4)", {'A', ' ', ' ', ' '}, "A"},
    {"btrieve_string(d, 0, 4)", {'A', ' ', 0, 'x'}, "A "},
    {"btrieve_string(d, 0, 4)", {'A', 0x81, 0x40, ' '}, "A\u3000"},
    {"btrieve_string(d, 0, 4)", {'A', ' ', 0x81}, "-"},
    {"btrieve_string(d, 0, 3)", {'A', 'B', 0x81}, "AB\uFFFD"},
    {"btrieve_counted(d, 0, 4)", {2, 'A', 'B', 'C'}, "AB"},
    {"btrieve_counted(d, 0, 4)", {200, 'A', 'B', 'C', 'D'}, "ABC"},
    {"btrieve_blob(d, 0)", {2, 0, 0, 0, 8, 0, 0, 0, 0xAB, 0xCD}, "\\xabcd"},
    {"btrieve_blob(d, 0)", {3, 0, 0, 0, 8, 0, 0, 0, 0xAB, 0xCD}, "-"},
    {"btrieve_blob(d, 0)", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, "-"},
};

TEST_F(Views, RefuseNoBytes) {
  BuildShop();
  ASSERT_EQ(Move().code, 0);
  ASSERT_EQ(Publish().code, 0);
  for (const BytesCase& row : kBytes) {
    const auto rows = Link()->Ask("SELECT coalesce((\"" + Schema() + "_view\"." + row.call +
                                      ")::text, '-') FROM (SELECT $1::bytea AS d) given",
                                  server::Arguments().Add(btrieve::ByteView(row.bytes)));
    EXPECT_EQ(btrieve::TextOf(rows.Bytes(0, 0)), row.value)
        << row.call << " of " << testing::PrintToString(row.bytes);
  }
}

// One byte, and every two after a first byte that begins a character, as the tool reads them.
TEST_F(Views, KnowEveryCharacterOfTheCodePage) {
  BuildShop();
  ASSERT_EQ(Move().code, 0);
  ASSERT_EQ(Publish().code, 0);
  const auto rows = Link()->Ask(
      "SELECT code, \"" + Schema() +
      "_view\".btrieve_text(code) FROM (SELECT decode(lpad(to_hex(n), 4, '0') || '41', 'hex') AS "
      "code FROM generate_series(33024, 65535) n WHERE n % 256 <> 0 UNION ALL SELECT "
      "decode(lpad(to_hex(n), 2, '0'), 'hex') FROM generate_series(1, 255) n) codes");
  ASSERT_GT(rows.Count(), 30000);
  int differing = 0;
  for (int row = 0; row < rows.Count(); ++row) {
    const std::string code = btrieve::TextOf(rows.Bytes(row, 0));
    const std::string text = btrieve::TextOf(rows.Bytes(row, 1));
    if (text != Show(code) && ++differing < 10) {
      ADD_FAILURE() << testing::PrintToString(code) << " is " << text << ", not " << Show(code);
    }
  }
  EXPECT_EQ(differing, 0);
}

TEST_F(Views, AreMadeAnewWithTheirReaders) {
  BuildShop();
  ASSERT_EQ(Move().code, 0);
  ASSERT_EQ(Publish().code, 0);
  Sql("DROP VIEW IF EXISTS public.of_mine; DROP ROLE IF EXISTS reader; CREATE ROLE reader; GRANT "
      "SELECT ON " +
      View("Goods") + " TO reader; CREATE VIEW " + View("Mine") +
      " AS SELECT 1 AS one; COMMENT ON VIEW " + View("Orders") + " IS 'not ours'");
  Sql("DROP VIEW " + View("Orders") + "; CREATE VIEW " + View("Gone") +
      " AS SELECT 1 AS one; COMMENT ON VIEW " + View("Gone") + " IS 'published by qrndata'");
  Sql("ALTER VIEW " + View("Goods") + " RENAME COLUMN \"Name\" TO \"Former\"");
  EXPECT_EQ(Line(Publish()), "code=0 out=db: 2 views in schema " + Schema() + "_view\n");
  EXPECT_EQ(Column("Goods", "\"Name\""), "Pen\nPad\nPad\n\nInk\n");
  EXPECT_EQ(Ask("SELECT has_table_privilege('reader', '" + View("Goods") +
                "', 'SELECT')::integer::bigint"),
            1);
  EXPECT_EQ(Ask("SELECT count(*) FROM pg_views WHERE schemaname = '" + Schema() + "_view'"), 3);
  EXPECT_EQ(Ask("SELECT count(*) FROM pg_views WHERE viewname = 'Gone'"), 0);
  EXPECT_THROW(Sql("DELETE FROM " + View("Goods")), btrieve::Failure);
  Sql("DROP VIEW " + View("Goods") + "; DROP ROLE reader");
}

TEST_F(Views, GoWithTheFilesUnlessOthersNeedThem) {
  BuildShop();
  ASSERT_EQ(Move().code, 0);
  ASSERT_EQ(Publish().code, 0);
  Sql("CREATE OR REPLACE VIEW public.of_mine AS SELECT * FROM " + View("Goods"));
  const Said refused = MoveBack();
  EXPECT_EQ(refused.code, 4) << Line(refused);
  EXPECT_NE(refused.err.find("depend"), std::string::npos) << refused.err;
  EXPECT_EQ(Check().code, 0);
  Sql("DROP VIEW public.of_mine");
  EXPECT_EQ(MoveBack().code, 0);
  EXPECT_EQ(Changed(), "");
  EXPECT_EQ(Ask("SELECT count(*) FROM pg_namespace WHERE nspname LIKE '" + Schema() + "%'"), 0);
}

TEST_F(Views, LeaveWhatOthersHavePutBesideThem) {
  BuildShop();
  ASSERT_EQ(Move().code, 0);
  ASSERT_EQ(Publish().code, 0);
  const std::string mood = View("mood");
  Sql("DROP TABLE IF EXISTS public.moods; CREATE TYPE " + mood +
      " AS ENUM('good'); CREATE TABLE public.moods(m " + mood + ")");
  ASSERT_EQ(MoveBack().code, 0);
  EXPECT_EQ(Ask("SELECT count(*) FROM pg_attribute WHERE attrelid = 'public.moods'::regclass AND "
                "attnum = 1 AND NOT attisdropped"),
            1);
  EXPECT_EQ(Ask("SELECT (SELECT count(*) FROM pg_proc WHERE pronamespace = n.oid) + (SELECT "
                "count(*) FROM pg_class WHERE relnamespace = n.oid) FROM pg_namespace n WHERE "
                "nspname = '" +
                Schema() + "_view'"),
            0);
  Sql("DROP TABLE public.moods");
}

}  // namespace
}  // namespace qrndata::test
