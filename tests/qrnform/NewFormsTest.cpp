// Forms made from a dictionary, worked as a user does.
#include <gtest/gtest.h>

#include <filesystem>

#include "host/newform/NewForm.h"
#include "platform/CodePage.h"
#include "tests/qrnform/FormRun.h"
#include "tests/support/TempFolder.h"
#include "tools/qrndata/Builder.h"

namespace qrn::tests {
namespace {

namespace fs = std::filesystem;

// A dictionary without data files.
class DictionaryFolder {
 public:
  explicit DictionaryFolder(const std::string& toml) {
    qrndata::BuildDatabase(qrndata::ParseSchema(toml, "schema", folder_.Root()), folder_.Root(),
                           qrndata::Existing::Refuse);
    for (const auto& file : fs::directory_iterator(folder_.Root())) {
      if (file.path().extension() != ".ddf") fs::remove(file.path());
    }
    dictionary_ = newform::ReadDictionary(Utf8ToCodePage(folder_.Text()));
  }

  std::string Form(size_t table) const {
    newform::FormChoice choice = newform::UsualChoice(dictionary_, table, folder_.Text());
    const auto details = newform::DetailsOf(dictionary_, table);
    if (!details.empty()) choice.detail = details.front();
    return CodePageToUtf8(newform::MakeForm(dictionary_, choice).bytes);
  }

 private:
  test::TempFolder folder_;
  newform::Dictionary dictionary_;
};

// Field types and names of tables that belong together.
constexpr char kTrade[] = R"(
[[table]]
name = "Kinds"
field = [ { name = "KindNo", type = "AutoInc", size = 2 }, { name = "名称", type = "LString", size = 24 } ]
key = [ { name = "ByKind", fields = ["KindNo"] } ]
[[table]]
name = "Goods"
field = [
  { name = "Code", type = "String", size = 8 },
  { name = "KindNo", type = "Integer", size = 2 },
  { name = "Picture", type = "String", size = 24 },
  { name = "Sold", type = "Logical" },
  { name = "Since", type = "Date" },
  { name = "Weight", type = "Float", size = 4 },
  { name = "Tax", type = "Numeric", size = 6, decimals = 2 },
]
key = [ { name = "ByCode", fields = ["Code"] }, { name = "ByKindAndDay", fields = ["KindNo", "Since"], duplicates = true, modifiable = true } ]
)";

struct WorkCase {
  const char* name;
  size_t table;
  const char* script;
};

const WorkCase kWorks[] = {
    {"a number is given, and details follow", 0,
     "key Alt+W\nfocus edtField2\ntype \"文具\"\nkey Alt+A\nexpect edtKindNo.Text = \"1\"\n"
     "key Alt+W\nfocus edtField2\ntype \"食品\"\nkey Alt+A\nexpect edtKindNo.Text = \"2\"\n"
     "expect edtField2.Text = \"食品\"\nexpect grdDetail.Rows = 2\n"},
    {"a code's words, a mark, an empty day, a picture that is not there", 1,
     "expect cboKindNo.ListCount = 2\nkey Alt+W\ntype \"A1\"\nfocus cboKindNo\ntype \"2\"\n"
     "focus edtPicture\ntype \"none.bmp\"\nclick chkSold\nfocus edtSince\nkey Tab\n"
     "type \"1.25\"\nkey Tab\ntype \"1234.5\"\nkey Alt+A\n"
     "expect lblStatus.Caption = \"追加しました。\"\nexpect lblOfKindNo.Caption = \"食品\"\n"
     "expect edtSince.Text = \"\"\nexpect chkSold.Value = True\nexpect edtWeight.Text = \"1.25\"\n"
     "expect edtTax.Text = \"1,234.50\"\nkey Alt+U\n"
     "expect lblStatus.Caption = \"更新しました。\"\nexpect edtTax.Text = \"1,234.50\"\n"
     "expect edtSince.Text = \"\"\n"},
    {"what a field cannot hold is refused, what is declined stays", 1,
     "focus edtTax\nkey Home\nkey Shift+End\ntype \"12345.6\"\nkey Alt+U\n"
     "expect lblStatus.Caption = \"Tax に入らない数値です。\"\nkey Alt+T\n"
     "expect edtTax.Text = \"1,234.50\"\nkey Alt+D\n"
     "message \"このレコードを削除します。よろしいですか。\" Cancel\n"
     "expect lblStatus.Caption = \"削除を取りやめました。\"\nexpect edtCode.Text = \"A1\"\n"},
    {"after a search in vain nothing can be changed", 1,
     "focus edtCode\nkey Home\nkey Shift+End\ntype \"B\"\nkey Alt+1\n"
     "expect lblStatus.Caption = \"見つかりません。\"\nexpect btnUpdate.Enabled = False\n"
     "expect btnDelete.Enabled = False\nkey Alt+T\nexpect btnUpdate.Enabled = True\n"},
};

TEST(NewForms, KeepWhatIsTypedAndRefuseWhatFieldsCannotHold) {
  const DictionaryFolder folder(kTrade);
  for (const WorkCase& row : kWorks) {
    const RunResult result = RunForms({{folder.Form(row.table)}, row.script});
    EXPECT_EQ(result.failure + result.told, "") << row.name;
    EXPECT_EQ(result.left, 0) << row.name;
  }
}

}  // namespace
}  // namespace qrn::tests
