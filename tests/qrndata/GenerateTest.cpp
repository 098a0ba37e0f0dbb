// The made-up company: the same for a seed, and sound at any size.
#include "ToolFixture.h"
#include "tools/qrndata/Progress.h"

namespace qrndata::test {
namespace {

class Generating : public ToolTest {
 protected:
  Said Generate(const std::string& to, const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"generate", QRN_COMPANY_SCHEMA, Path(to)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return Run(arguments);
  }
};

TEST_F(Generating, ASeedGivesTheSameCompany) {
  ASSERT_EQ(Generate("one", {"--csv", "--orders", "40"}).code, 0);
  ASSERT_EQ(Generate("two", {"--csv", "--orders", "40"}).code, 0);
  ASSERT_EQ(Generate("other", {"--csv", "--orders", "40", "--seed", "2"}).code, 0);
  for (const char* file : {"/Customers.csv", "/Orders.csv", "/OrderLines.csv", "/Documents.csv"}) {
    const std::string rows = Read(std::string("one") + file);
    EXPECT_GT(rows.size(), 100u) << file;
    EXPECT_EQ(rows, Read(std::string("two") + file));
    EXPECT_NE(rows, Read(std::string("other") + file));
  }
}

TEST_F(Generating, DataFilesHoldWhatTheCsvFilesDo) {
  ASSERT_EQ(Generate("db", {"--orders", "300"}).code, 0);
  const Said checked = Check();
  EXPECT_EQ(checked.code, 0) << checked.out;
  EXPECT_EQ(checked.out.substr(0, 11), "11 tables, ");
  EXPECT_NE(Run({"show", Path("db")}).out.find("orders.btr        13     5      300\n"),
            std::string::npos);
  const std::string orders = Export("Orders");
  ASSERT_EQ(Generate("csv", {"--csv", "--orders", "300"}).code, 0);
  EXPECT_EQ(orders, Read("csv/Orders.csv"));
  EXPECT_EQ(Export("VisitNotes"), Read("csv/VisitNotes.csv"));
}

TEST_F(Generating, NothingThatIsThereIsWrittenOver) {
  ASSERT_EQ(Generate("db", {"--orders", "5"}).code, 0);
  EXPECT_EQ(Line(Generate("db", {"--orders", "5"})),
            "code=4 err=qrndata: " + (std::filesystem::path("db") / "file.ddf").string() +
                ": exists already; generate writes over nothing: name a new directory\n");
  EXPECT_EQ(Check().code, 0);
}

TEST(ProgressLine, SaysHowFarHowFastAndHowLong) {
  const Progress progress(nullptr, "Orders", 1000);
  EXPECT_EQ(progress.Line(250, 12345, 2.0),
            "Orders  [#####...............]  25 %  12,345 rows  6,172 rows/s  00:06 left");
  const Progress unknown(nullptr, "Orders", 0);
  const std::string line = unknown.Line(250, 100, 2.0);
  EXPECT_EQ(line.find('%'), std::string::npos) << line;
  EXPECT_EQ(line.find("left"), std::string::npos) << line;
}

TEST(ProgressLine, LongNumbersAreGrouped) {
  EXPECT_EQ(Grouped(0), "0");
  EXPECT_EQ(Grouped(999), "999");
  EXPECT_EQ(Grouped(1000), "1,000");
  EXPECT_EQ(Grouped(18446744073709551615u), "18,446,744,073,709,551,615");
}

}  // namespace
}  // namespace qrndata::test
