// Forms made from dictionaries that nobody would think of, each worked by the keyboard alone.
#include <gtest/gtest.h>

#include <filesystem>

#include "host/newform/NewForm.h"
#include "platform/CodePage.h"
#include "tests/qrnform/FormRun.h"
#include "tests/support/RandomSchema.h"
#include "tests/support/Setting.h"
#include "tests/support/TempFolder.h"
#include "tools/qrndata/Builder.h"

namespace qrn::tests {
namespace {

namespace fs = std::filesystem;

// A dictionary of random tables without data files.
class RandomFolder {
 public:
  RandomFolder(std::mt19937& random, int tables) {
    const test::RandomSchema schema = test::MakeRandomSchema(random, tables);
    qrndata::BuildDatabase(qrndata::ParseSchema(schema.toml, "random", folder_.Root()),
                           folder_.Root(), qrndata::Existing::Refuse);
    for (const auto& file : fs::directory_iterator(folder_.Root())) {
      if (file.path().extension() != ".ddf") fs::remove(file.path());
    }
    dictionary_ = newform::ReadDictionary(Utf8ToCodePage(folder_.Text()));
  }

  const newform::Dictionary& dictionary() const { return dictionary_; }
  std::string Form(size_t table, bool grid) const {
    newform::FormChoice choice = newform::UsualChoice(dictionary_, table, folder_.Text());
    choice.grid = grid;
    const auto details = newform::DetailsOf(dictionary_, table);
    if (!details.empty()) choice.detail = details.front();
    return CodePageToUtf8(newform::MakeForm(dictionary_, choice).bytes);
  }

 private:
  test::TempFolder folder_;
  newform::Dictionary dictionary_;
};

std::string Said(const std::string& words) {
  return "expect lblStatus.Caption = \"" + words + "\"\n";
}

// Two records are added, walked and stored again, one is deleted. The first field of every table is
// a number, which the card has first.
std::string Work(const std::string& number) {
  const std::string shows = "expect " + number + ".Text = ";
  return "key Alt+W\ntype \"5\"\nkey Alt+A\n" + Said("追加しました。") +
         "key Alt+W\ntype \"7\"\nkey Alt+A\n" + Said("追加しました。") + "key Alt+T\n" + shows +
         "\"5\"\nkey Alt+N\n" + shows + "\"7\"\nkey Alt+N\n" +
         Said("これより先にレコードはありません。") + "key Alt+U\n" + Said("更新しました。") +
         "key Alt+P\n" + shows +
         "\"5\"\nkey Alt+D\n"
         "message \"このレコードを削除します。よろしいですか。\" OK\n" +
         Said("削除しました。") + "key Alt+L\n" + shows + "\"7\"\n";
}

TEST(NewForms, AreWorkedByTheKeyboardWhateverTheDictionary) {
  const uint32_t seed = test::Seed();
  std::mt19937 random(seed);
  const RandomFolder folder(random, static_cast<int>(test::Setting("QRN_NEW_FORMS", 8)));
  for (size_t i = 0; i < folder.dictionary().tables.size(); ++i) {
    const newform::Table& table = folder.dictionary().tables[i];
    // Long records are read along keys alone.
    if (!table.HasKeys() && table.IsVariable()) continue;
    const std::string form = folder.Form(i, i % 2 == 1);
    const bool combo = form.find(" cboId ") != std::string::npos;
    const RunResult result = RunForms({{form}, Work(combo ? "cboId" : "edtId")});
    EXPECT_EQ(result.failure + result.told, "")
        << "seed " << seed << ", table " << i << " " << table.name;
    EXPECT_EQ(result.left, 0);
  }
}

}  // namespace
}  // namespace qrn::tests
