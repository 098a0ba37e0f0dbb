// What the dictionaries of a form's database controls offer.
#include <gtest/gtest.h>

#include <filesystem>

#include "host/designer/model/Names.h"
#include "host/designer/model/PropertyList.h"
#include "host/designer/panes/LiveOffers.h"
#include "tests/designer/kit/Forms.h"
#include "tests/support/TempFolder.h"
#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Dictionary.h"

namespace qrn::test {
namespace {

using namespace designer;
namespace fs = std::filesystem;
using Names = std::vector<std::string>;

constexpr char kControls[] =
    "   Begin QRNBTRLib.QRNBtr db \n      DDFDir          =   \"data\"\n   End\n"
    "   Begin VB.Frame around \n      Begin QRNBTRLib.QuorinDb none \n      End\n   End\n"
    "   Begin LIB.Box box \n      DbSource        =   \"db\"\n"
    "      DbTable         =   \"Goods\"\n   End\n";

constexpr char kGoods[] = R"(
[[table]]
name = "Goods"
field = [ { name = "Code", type = "String", size = 8 }, { name = "品名", type = "String", size = 24 } ]
key = [ { name = "ByCode", fields = ["Code"] } ]
)";

constexpr char kKinds[] = R"(
[[table]]
name = "Kinds"
field = [ { name = "KindNo", type = "Integer", size = 4 } ]
)";

class LiveOffersTest : public testing::Test {
 protected:
  void Describe(const std::string& toml) {
    const fs::path data = folder_.Root() / "data";
    fs::create_directories(data);
    qrndata::WriteDictionary(data, qrndata::ParseSchema(toml, "schema", data).tables, true);
  }
  // The control's DDFDir becomes another.
  void Put(const std::string& directory) {
    Step step(*design_, TextId::ChangeProperty);
    EXPECT_FALSE(step.Commit(design_->Put(IdOf(*design_, "db"), "DDFDir", directory)));
  }

  TempFolder folder_;
  std::unique_ptr<Design> design_ = Designed(FormWith(kControls));
  LiveOffers offers_{*design_, folder_.Text()};
};

TEST_F(LiveOffersTest, AreTheNamesOfTheDictionary) {
  Describe(kGoods);
  EXPECT_EQ(offers_.Sources(), (Names{"db", "none"}));
  EXPECT_EQ(offers_.Tables("db"), Names{"Goods"});
  EXPECT_EQ(offers_.Fields("db", "Goods"), (Names{"Code", "品名"}));
  EXPECT_EQ(offers_.Keys("db", "Goods"), Names{"ByCode"});
  design_->Select({IdOf(*design_, "box")});
  const PropertyList list(*design_, &offers_);
  EXPECT_EQ(list.Choices("DbField"), (Names{"Code", "品名"}));
}

TEST_F(LiveOffersTest, AreEmptyWhereNothingIsKnown) {
  EXPECT_EQ(offers_.Tables("db"), Names{});  // no dictionary yet
  Describe(kGoods);
  EXPECT_EQ(offers_.Tables("none"), Names{});
  EXPECT_EQ(offers_.Tables("nobody"), Names{});
  EXPECT_EQ(offers_.Fields("db", "Kinds"), Names{});
  EXPECT_EQ(offers_.Keys("db", ""), Names{});
}

TEST_F(LiveOffersTest, FollowTheControlAndTheFiles) {
  Describe(kGoods);
  EXPECT_EQ(offers_.Tables("db"), Names{"Goods"});
  Describe(kGoods + std::string(kKinds));
  EXPECT_EQ(offers_.Tables("db"), (Names{"Goods", "Kinds"}));
  Put((folder_.Root() / "elsewhere").string());
  EXPECT_EQ(offers_.Tables("db"), Names{});
  design_->Undo();
  EXPECT_FALSE(Rename(*design_, IdOf(*design_, "db"), "main"));
  EXPECT_EQ(offers_.Tables("db"), Names{});
  EXPECT_EQ(offers_.Tables("main"), (Names{"Goods", "Kinds"}));
}

}  // namespace
}  // namespace qrn::test
