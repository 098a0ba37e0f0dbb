// What the wizard for a new form asks, and what it makes of the answers.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/designer/wizard/WizardChoices.h"
#include "tests/support/TempFolder.h"
#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Dictionary.h"

namespace qrn::test {
namespace {

using designer::WizardChoices;
using form::Language;
namespace fs = std::filesystem;
using Names = std::vector<std::string>;

std::string BytesOf(const std::string& path) {
  std::ifstream file(fs::path(std::u8string(path.begin(), path.end())), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class WizardChoicesTest : public testing::Test {
 protected:
  WizardChoicesTest() {
    const auto schema = qrndata::ReadSchemaFile(fs::path(QRN_COMPANY) / "company.toml");
    qrndata::WriteDictionary(folder_.Root(), schema.tables, true);
  }

  void Begin(const std::string& table) {
    ASSERT_TRUE(choices_.PutDirectory(folder_.Text()));
    for (const size_t place : choices_.tables()) {
      if (choices_.Table(place).name == table) choices_.PutTable(place);
    }
    ASSERT_EQ(choices_.Table(choices_.table()).name, table);
  }
  size_t FieldAt(const std::string& name) const {
    size_t at = 0;
    while (choices_.fields()[at].name != name) ++at;
    return at;
  }
  Names KeyNames() const {
    Names names;
    for (const auto& key : choices_.keys()) names.push_back(key.name + (key.chosen ? "" : "-"));
    return names;
  }

  TempFolder folder_;
  WizardChoices choices_{Language::Japanese};
};

TEST_F(WizardChoicesTest, BeginWithAllThatTheTableHas) {
  EXPECT_FALSE(choices_.PutDirectory(""));
  EXPECT_FALSE(choices_.PutDirectory(folder_.Path("nowhere")));
  Begin("Orders");
  // The same as the command without a word about fields and keys.
  newform::FormOrder plain;
  plain.directory = folder_.Text();
  plain.table = "Orders";
  plain.output = folder_.Path("plain.frm");
  ASSERT_TRUE(newform::CarryOut(plain).done);
  ASSERT_TRUE(newform::CarryOut(choices_.Order("chosen", false)).done);
  EXPECT_EQ(BytesOf(folder_.Path("chosen.frm")), BytesOf(plain.output));
  EXPECT_NE(BytesOf(plain.output), "");
}

TEST_F(WizardChoicesTest, MakeWhatTheCommandMakesOfTheSame) {
  Begin("Orders");
  ASSERT_FALSE(choices_.details().empty());
  choices_.PutDetail(choices_.details().front());
  choices_.PutGrid(true);
  choices_.PutLanguage(Language::English);
  choices_.PutPictures("photos");
  const size_t last = choices_.fields().size() - 1;
  const std::string moved = choices_.fields()[last].name;
  EXPECT_EQ(choices_.MoveField(last, -1), last - 1);
  EXPECT_EQ(choices_.MoveField(0, -1), 0u);
  EXPECT_EQ(choices_.MoveField(last, 1), last);
  newform::FormOrder order;
  order.directory = folder_.Text();
  order.table = "Orders";
  order.detail = choices_.detail();
  for (const auto& field : choices_.fields()) order.fields.push_back(field.name);
  EXPECT_EQ(order.fields[last - 1], moved);
  order.grid = true;
  order.pictures = "photos";
  order.language = Language::English;
  order.output = folder_.Path("command.frm");
  ASSERT_TRUE(newform::CarryOut(order).done);
  ASSERT_TRUE(newform::CarryOut(choices_.Order("wizard.FRM", false)).done);
  EXPECT_EQ(BytesOf(folder_.Path("wizard.FRM")), BytesOf(order.output));
}

TEST_F(WizardChoicesTest, OfferKeysOfTheChosenFieldsAlone) {
  Begin("Orders");
  const Names all = KeyNames();
  ASSERT_GE(all.size(), 2u);
  choices_.ChooseKey(1, false);
  const auto& key = choices_.Table(choices_.table()).keys[choices_.keys()[0].place];
  const std::string field = choices_.Table(choices_.table()).fields[key.fields[0]].name;
  choices_.ChooseField(FieldAt(field), false);
  EXPECT_LT(KeyNames().size(), all.size());
  choices_.ChooseField(FieldAt(field), true);
  EXPECT_EQ(KeyNames()[0], all[0]);
  EXPECT_EQ(KeyNames()[1], all[1] + "-");
  const std::string file = folder_.Path("keys.frm");
  const newform::FormOrder order = choices_.Order(file, false);
  EXPECT_EQ(order.keys->size(), all.size() - 1);
  ASSERT_TRUE(newform::CarryOut(order).done);
  choices_.PutTable(choices_.table());  // once more: what was chosen stays
  EXPECT_EQ(KeyNames()[1], all[1] + "-");
}

TEST_F(WizardChoicesTest, NameTheFile) {
  Begin("Orders");
  EXPECT_EQ(choices_.UsualFile(), folder_.Path("Orders.frm"));
  EXPECT_EQ(choices_.WholeFile("  "), "");
  EXPECT_EQ(choices_.WholeFile("a.b"), folder_.Path("a.b.frm"));
  EXPECT_EQ(choices_.WholeFile(folder_.Path("x.Frm")), folder_.Path("x.Frm"));
}

}  // namespace
}  // namespace qrn::test
