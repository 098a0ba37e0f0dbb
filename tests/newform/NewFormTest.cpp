// Forms of every table, of the sample company and of dictionaries made at random.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "host/newform/FormOrder.h"
#include "host/newform/NewForm.h"
#include "platform/CodePage.h"
#include "tests/newform/MadeForm.h"
#include "tests/support/RandomSchema.h"
#include "tests/support/Setting.h"
#include "tests/support/TempFolder.h"
#include "tools/qrndata/Builder.h"

namespace qrn::tests {
namespace {

namespace fs = std::filesystem;

std::string Bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// A dictionary alone, without data files.
class DictionaryFolder {
 public:
  explicit DictionaryFolder(const qrndata::Schema& schema) {
    qrndata::WriteDictionary(folder_.Root(), schema.tables, false);
    described_ = qrndata::ReadDictionary(folder_.Root());
  }

  const std::string& Path() const { return folder_.Text(); }
  const qrndata::Dictionary& Described() const { return described_; }
  newform::Dictionary Read() const { return newform::ReadDictionary(folder_.Text()); }

 private:
  test::TempFolder folder_;
  qrndata::Dictionary described_;
};

qrndata::Schema CompanySchema() {
  return qrndata::ReadSchemaFile(fs::path(QRN_COMPANY) / "company.toml");
}

// Forms of the tables, of every fifth where there are many, with a list and with details by turns.
void ExpectSoundForms(const DictionaryFolder& folder, const std::string& which) {
  const newform::Dictionary dictionary = folder.Read();
  const size_t step = dictionary.tables.size() > 50 ? 5 : 1;
  for (size_t i = 0; i < dictionary.tables.size(); i += step) {
    newform::FormChoice choice = newform::UsualChoice(dictionary, i, ".");
    choice.grid = i % 3 == 1;
    const auto details = newform::DetailsOf(dictionary, i);
    if (!details.empty() && i % 2 == 0) choice.detail = details.front();
    const newform::NewForm made = newform::MakeForm(dictionary, choice);
    EXPECT_EQ(FaultsOf(made.bytes, folder.Described()), "")
        << which << ", table " << dictionary.tables[i].name;
  }
}

TEST(NewForm, EveryTableOfTheCompanyHasAForm) {
  const DictionaryFolder folder(CompanySchema());
  ExpectSoundForms(folder, "company");
}

TEST(NewForm, EveryDictionaryHasForms) {
  const uint32_t seed = test::Seed();
  std::mt19937 random(seed);
  for (const int tables : {1, 2, 7, 256}) {
    const test::RandomSchema schema = test::MakeRandomSchema(random, tables);
    const test::TempFolder nowhere;
    const DictionaryFolder folder(qrndata::ParseSchema(schema.toml, "random", nowhere.Root()));
    ExpectSoundForms(folder, "seed " + std::to_string(seed));
  }
}

// The lines of a control in the form's text; empty without it.
std::string LinesOf(const std::string& utf8, const std::string& name) {
  const size_t at = utf8.find(" " + name + " \r\n");
  return at == std::string::npos ? "" : utf8.substr(at, utf8.find("End\r\n", at) - at);
}

struct ControlCase {
  const char* table;
  const char* control;
  const char* has;  // a line of it
};

const ControlCase kControls[] = {
    {"Customers", "edtName", "MaxLength       =   40"},
    {"Customers", "edtName", "IMEMode         =   4"},
    {"Customers", "edtKana", "IMEMode         =   5"},
    {"Customers", "edtZip", "IMEMode         =   2"},
    {"Customers", "edtCreditLimit", "Format          =   \"#,##0\""},
    {"Customers", "edtSince", "NumericMask     =   -1  'True"},
    {"Customers", "cboStaffNo", "DbListTable     =   \"Staff\""},
    {"Customers", "cboStaffNo", "DbListIndex     =   \"ByStaff\""},
    {"Customers", "chkActive", "DbField         =   \"Active\""},
    {"Customers", "edtPhone", "MaxLength       =   15"},
    {"Customers", "btnFind", "DbOperation     =   3"},
    {"Customers", "btnDelete",
     "ConfirmMsg      =   \"このレコードを削除します。よろしいですか。\""},
    {"Customers", "barRecord", "DbIndex         =   \"ByCustomer\""},
    {"Products", "picPicture", "DbField         =   \"Picture\""},
    {"Products", "txtTaxPercent", "Locked          =   -1  'True"},
    {"Products", "edtCost", "Format          =   \"#,##0.00\""},
    {"VisitNotes", "edtField6", "MultiLine       =   -1  'True"},
    {"VisitNotes", "edtField2", "DbField         =   \"得意先番号\""},
    {"Documents", "txtBody", "ScrollBars      =   2"},
    {"Orders", "grdDetail",
     "DbListFields    =   "
     "\"LineNo,ProductCode,Quantity,UnitPrice,DiscountPercent,Amount\""},
    {"Orders", "grdDetail", "DbListIndex     =   \"ByLine\""},
};

TEST(NewForm, FieldsHaveTheControlsThatFitThem) {
  const DictionaryFolder folder(CompanySchema());
  const newform::Dictionary dictionary = folder.Read();
  for (const ControlCase& row : kControls) {
    newform::FormChoice choice =
        newform::UsualChoice(dictionary, *dictionary.Find(row.table), "D:\\data");
    if (std::string(row.table) == "Orders") {
      choice.detail = newform::DetailOf(dictionary, choice.table, *dictionary.Find("OrderLines"));
    }
    const std::string text = CodePageToUtf8(newform::MakeForm(dictionary, choice).bytes);
    EXPECT_NE(LinesOf(text, row.control).find(row.has), std::string::npos)
        << row.table << "." << row.control << ": " << row.has << "\n"
        << LinesOf(text, row.control);
    EXPECT_NE(text.find("DDFDir          =   \"D:\\data\""), std::string::npos);
  }
}

// A scroll bar cannot show what runs behind the fixed part; a table without keys has none to seek
// by.
TEST(NewForm, WhatATableCannotDoIsNotOffered) {
  const DictionaryFolder folder(qrndata::ParseSchema(
      "[[table]]\nname = \"Log\"\nfield = [ { name = \"Line\", type = \"String\", size = 40 } ]\n"
      "[[table]]\nname = \"Notes\"\nfield = [ { name = \"Id\", type = \"Integer\", size = 4 }, "
      "{ name = \"Text\", type = \"Note\", size = 100 } ]\nkey = [ { fields = [\"Id\"] } ]\n",
      "test", "."));
  const newform::Dictionary dictionary = folder.Read();
  const auto form = [&](size_t table) {
    return CodePageToUtf8(
        newform::MakeForm(dictionary, newform::UsualChoice(dictionary, table, ".")).bytes);
  };
  const std::string log = form(0), notes = form(1);
  EXPECT_EQ(LinesOf(log, "btnFind"), "");
  EXPECT_EQ(LinesOf(log, "barRecord"), "");
  EXPECT_NE(LinesOf(log, "btnMove").find("DbOperation     =   12"), std::string::npos);
  EXPECT_NE(LinesOf(notes, "btnFind"), "");
  EXPECT_EQ(LinesOf(notes, "barRecord"), "");
}

// --- orders

struct OrderCase {
  const char* name;
  void (*change)(newform::FormOrder& order);
  const char* said;  // in the first message; null where the form is made
};

const OrderCase kOrders[] = {
    {"plain", [](newform::FormOrder&) {}, nullptr},
    {"detail", [](newform::FormOrder& o) { o.detail = "OrderLines"; }, nullptr},
    {"some fields",
     [](newform::FormOrder& o) {
       o.fields = {"Total", "OrderNo"};
     },
     nullptr},
    {"no dictionary", [](newform::FormOrder& o) { o.directory += "/absent"; }, "コード 12"},
    {"no table", [](newform::FormOrder& o) { o.table = "Order"; }, "Order: 辞書にないテーブル"},
    {"an empty name", [](newform::FormOrder& o) { o.table = ""; }, "辞書にないテーブル"},
    {"no field",
     [](newform::FormOrder& o) {
       o.fields = {"OrderNo", "Prise"};
     },
     "Prise: テーブルにないフィールド"},
    {"a field twice",
     [](newform::FormOrder& o) {
       o.fields = {"Tax", "Tax"};
     },
     "Tax: フィールドが 2 回"},
    {"some keys", [](newform::FormOrder& o) { o.keys = {"ByOrder"}; }, nullptr},
    {"no keys", [](newform::FormOrder& o) { o.keys = std::vector<std::string>(); }, nullptr},
    {"no such key", [](newform::FormOrder& o) { o.keys = {"ByPrice"}; }, "ByPrice: 検索のボタン"},
    {"a key without its field",
     [](newform::FormOrder& o) { o.fields = {"Total"}, o.keys = {"ByOrder"}; },
     "ByOrder: 検索のボタン"},
    {"no such detail", [](newform::FormOrder& o) { o.detail = "Lines"; }, "Lines: 辞書にない"},
    {"itself its detail", [](newform::FormOrder& o) { o.detail = "Orders"; },
     "Orders: 明細にできません"},
    {"a detail without its key", [](newform::FormOrder& o) { o.detail = "Staff"; },
     "Staff: 明細にできません"},
    {"another ending", [](newform::FormOrder& o) { o.output += ".txt"; }, ".frm で終わらせて"},
    {"no such folder", [](newform::FormOrder& o) { o.output = o.directory + "/absent/a.frm"; },
     "書き込めません"},
    {"English",
     [](newform::FormOrder& o) { o.table = "x", o.language = newform::Language::English; },
     "x: the dictionary has no such table"},
};

TEST(FormOrder, IsCarriedOutOrRefusedWithAReason) {
  const DictionaryFolder folder(CompanySchema());
  for (const OrderCase& row : kOrders) {
    const test::TempFolder place;
    newform::FormOrder order;
    order.directory = folder.Path();
    order.table = "Orders";
    order.output = place.Path("orders.frm");
    row.change(order);
    const newform::OrderOutcome outcome = newform::CarryOut(order);
    EXPECT_EQ(outcome.done, row.said == nullptr) << row.name;
    EXPECT_EQ(fs::exists(place.Path("orders.frm")), row.said == nullptr) << row.name;
    EXPECT_FALSE(fs::exists(place.Path("orders.frm.part"))) << row.name;
    ASSERT_FALSE(outcome.messages.empty()) << row.name;
    if (row.said) {
      EXPECT_NE(outcome.messages[0].find(row.said), std::string::npos) << outcome.messages[0];
    } else {
      EXPECT_EQ(FaultsOf(Bytes(order.output), folder.Described()), "") << row.name;
    }
  }
}

TEST(FormOrder, LeavesAFormThatIsThereUnlessToldToReplaceIt) {
  const DictionaryFolder folder(CompanySchema());
  const test::TempFolder place;
  newform::FormOrder order;
  order.directory = folder.Path();
  order.table = "Staff";
  order.output = place.Path("staff.frm");
  std::ofstream(order.output) << "mine";
  EXPECT_FALSE(newform::CarryOut(order).done);
  EXPECT_EQ(Bytes(order.output), "mine");
  order.force = true;
  EXPECT_TRUE(newform::CarryOut(order).done);
  EXPECT_EQ(FaultsOf(Bytes(order.output), folder.Described()), "");
}

}  // namespace
}  // namespace qrn::tests
