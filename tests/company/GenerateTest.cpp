// The made-up company: the same for a seed, and sound at any size.
#include <algorithm>
#include <filesystem>
#include <map>
#include <span>

#include "controls/picture/files/PictureFile.h"
#include "examples/company/generator/Generate.h"
#include "tests/qrndata/ToolFixture.h"

namespace company::test {
namespace {

using qrndata::test::Line;
using qrndata::test::Said;

class Generating : public qrndata::test::ToolTest {
 protected:
  Said Generate(const std::string& to, const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {QRN_COMPANY_SCHEMA, Path(to)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunProgram(&company::Run, arguments);
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
  EXPECT_NE(ToolTest::Run({"show", Path("db")}).out.find("orders.btr        13     5      300\n"),
            std::string::npos);
  const std::string orders = Export("Orders");
  ASSERT_EQ(Generate("csv", {"--csv", "--orders", "300"}).code, 0);
  EXPECT_EQ(orders, Read("csv/Orders.csv"));
  EXPECT_EQ(Export("VisitNotes"), Read("csv/VisitNotes.csv"));
}

TEST_F(Generating, PicturesAreBitmapsIconsAndMetafiles) {
  ASSERT_EQ(Generate("csv", {"--csv", "--orders", "5"}).code, 0);
  std::map<std::string, int> kinds;
  for (const auto& entry : std::filesystem::directory_iterator(Path("csv/pictures"))) {
    const std::string name = entry.path().filename().string();
    const std::string text = Read("csv/pictures/" + name);
    const std::span bytes(reinterpret_cast<const uint8_t*>(text.data()), text.size());
    const std::string kind = entry.path().extension().string();
    const bool sound = kind == ".bmp"   ? qrn::ReadBitmapFile(bytes).has_value()
                       : kind == ".ico" ? qrn::IsIconFile(bytes)
                                        : qrn::ReadMetafileFile(bytes).bits.size() == bytes.size();
    EXPECT_TRUE(sound) << name;
    EXPECT_NE(Read("csv/Products.csv").find("," + name + ","), std::string::npos) << name;
    ++kinds[kind];
  }
  EXPECT_EQ(kinds, (std::map<std::string, int>{{".bmp", 4}, {".ico", 4}, {".wmf", 4}}));
}

TEST_F(Generating, AsManyCustomersAsAskedFor) {
  ASSERT_EQ(Generate("csv", {"--csv", "--orders", "5", "--customers", "1234"}).code, 0);
  EXPECT_EQ(std::ranges::count(Read("csv/Customers.csv"), '\n'), 1235);
}

TEST_F(Generating, ACommandLineThatIsNoneIsNamed) {
  EXPECT_EQ(Generate("db", {"--orders", "0"}).code, 2);
  EXPECT_EQ(RunProgram(&company::Run, {"schema"}).code, 2);
  EXPECT_NE(RunProgram(&company::Run, {"--help"}).out.find("(standard: 5000)"), std::string::npos);
}

TEST_F(Generating, NothingThatIsThereIsWrittenOver) {
  ASSERT_EQ(Generate("db", {"--orders", "5"}).code, 0);
  EXPECT_EQ(Line(Generate("db", {"--orders", "5"})),
            "code=4 err=makecompany: " + (std::filesystem::path("db") / "file.ddf").string() +
                ": exists already; generate writes over nothing: name a new directory\n");
  EXPECT_EQ(Check().code, 0);
}

}  // namespace
}  // namespace company::test
