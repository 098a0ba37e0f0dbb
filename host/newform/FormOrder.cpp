#include "host/newform/FormOrder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "host/form/FilePath.h"
#include "host/form/SourceText.h"
#include "host/newform/FieldFit.h"
#include "host/newform/NewForm.h"
#include "platform/CodePage.h"

namespace qrn::newform {
namespace {

namespace fs = std::filesystem;
using form::PathOf;
using form::Utf8Of;

// The database control takes so many bytes of a path.
constexpr size_t kLongestDirectory = 250;

enum class OrderText {
  NoDictionary,
  BadDirectory,
  NoTable,
  Tables,
  NoField,
  Fields,
  Unshown,
  Twice,
  NoKey,
  Keys,
  NothingToShow,
  NoDetail,
  Details,
  None,
  NotAForm,
  IsThere,
  NotWritten,
  Displayed,
  Left,
  NoKeys,
  Made,
  kCount
};

// clang-format off
constexpr TextRow<OrderText> kTexts[] = {
    {OrderText::NoDictionary,  "%1: 辞書を読めません。コード %2", "%1: no readable dictionary, code %2"},
    {OrderText::BadDirectory,  "%1: フォームに書けないディレクトリ名です。",
                               "%1: a form cannot hold the name of this directory"},
    {OrderText::NoTable,       "%1: 辞書にないテーブルです。", "%1: the dictionary has no such table"},
    {OrderText::Tables,        "辞書にあるテーブル: %1", "it has: %1"},
    {OrderText::NoField,       "%1: テーブルにないフィールドです。", "%1: the table has no such field"},
    {OrderText::Fields,        "テーブルにあるフィールド: %1", "it has: %1"},
    {OrderText::Unshown,       "%1: コントロールで表示できない型のフィールドです。",
                               "%1: no control shows a field of this type"},
    {OrderText::Twice,         "%1: フィールドが 2 回指定されています。", "%1: the field is given twice"},
    {OrderText::NoKey,         "%1: 検索のボタンを付けられるキーではありません。",
                               "%1: no key that a button can find by"},
    {OrderText::Keys,          "ボタンを付けられるキー: %1", "those that it can: %1"},
    {OrderText::NothingToShow, "%1: 表示できるフィールドがありません。",
                               "%1: the table has no field that a control shows"},
    {OrderText::NoDetail,      "%1: 明細にできません。マスタのキーと同じフィールドで始まるキーがありません。",
                               "%1: no detail: none of its keys begins with the field of a key of the master"},
    {OrderText::Details,       "明細にできるテーブル: %1", "tables that can be its detail: %1"},
    {OrderText::None,          "なし", "none"},
    {OrderText::NotAForm,      "%1: フォームのファイル名は .frm で終わらせてください。",
                               "%1: the form's file must end in .frm"},
    {OrderText::IsThere,       "%1: ファイルがあります。置き換えるには --force を付けてください。",
                               "%1: the file is there; --force replaces it"},
    {OrderText::NotWritten,    "%1: 書き込めません。", "%1: cannot be written"},
    {OrderText::Displayed,     "%1: 更新すると値が変わるおそれがあるため、表示だけにしました。",
                               "%1: only shown, since an update could change its value"},
    {OrderText::Left,          "%1: 表示できるコントロールがないため、フォームにありません。",
                               "%1: not on the form, no control shows it"},
    {OrderText::NoKeys,        "%1: キーがないため、検索のボタン、スクロール・バー、一覧はありません。",
                               "%1: no key, so there are no buttons that find, no scroll bar and no grid"},
    {OrderText::Made,          "%1: フォームを作成しました。", "%1: made"},
};
// clang-format on

static_assert(StandAtTheirIds(kTexts));

struct Refused {
  std::vector<std::string> messages;
};

[[noreturn]] void Refuse(std::string message, std::string more = {}) {
  Refused refused{{std::move(message)}};
  if (!more.empty()) refused.messages.push_back(std::move(more));
  throw refused;
}

class Carrying {
 public:
  explicit Carrying(const FormOrder& order) : order_(order) {}

  std::vector<std::string> Run() {
    CheckOutput();
    const Dictionary dictionary = Read();
    const size_t table = TableNamed(dictionary, order_.table);
    FormChoice choice = UsualChoice(dictionary, table, FormDirectory());
    choice.language = order_.language;
    choice.grid = order_.grid;
    if (!order_.fields.empty()) Pick(dictionary.tables[table], choice);
    if (order_.keys) choice.keys = KeysNamed(dictionary.tables[table], choice.keys);
    if (choice.fields.empty()) Refuse(Say(OrderText::NothingToShow, {order_.table}));
    if (!order_.detail.empty()) choice.detail = DetailNamed(dictionary, table);
    choice.pictures = Pictures(choice.directory);
    const NewForm made = MakeForm(dictionary, choice);
    Put(made.bytes);
    return Remarks(dictionary.tables[table], made);
  }

 private:
  void CheckOutput() const {
    const std::string& file = order_.output;
    const bool isForm = file.size() > 4 && form::SameWord(file.substr(file.size() - 4), ".frm");
    if (!isForm) Refuse(Say(OrderText::NotAForm, {file}));
    std::error_code error;
    if (!order_.force && fs::exists(fs::symlink_status(PathOf(file), error))) {
      Refuse(Say(OrderText::IsThere, {file}));
    }
  }

  Dictionary Read() const {
    try {
      return ReadDictionary(form::EngineBytes(order_.directory));
    } catch (const DictionaryUnreadable& failure) {
      Refuse(Say(OrderText::NoDictionary, {order_.directory, std::to_string(failure.code)}));
    }
  }

  // The present folder stays it; any other is found from everywhere.
  std::string FormDirectory() const {
    if (order_.directory == ".") return ".";
    std::error_code error;
    const fs::path whole = fs::absolute(PathOf(order_.directory), error);
    std::string text = Utf8Of(fs::path(whole).make_preferred());
    const std::string bytes = Utf8ToCodePage(text);
    if (error || bytes.size() > kLongestDirectory || CodePageToUtf8(bytes) != text) {
      Refuse(Say(OrderText::BadDirectory, {order_.directory}));
    }
    return text;
  }

  size_t TableNamed(const Dictionary& dictionary, const std::string& name) const {
    if (const auto found = dictionary.Find(name)) return *found;
    Refuse(Say(OrderText::NoTable, {name}), Say(OrderText::Tables, {NamesOf(dictionary.tables)}));
  }

  void Pick(const Table& table, FormChoice& choice) const {
    choice.fields.clear();
    for (const std::string& name : order_.fields)
      choice.fields.push_back(FieldNamed(table, name, choice));
    choice.keys = SeekableKeys(table, choice.fields);
  }

  size_t FieldNamed(const Table& table, const std::string& name, const FormChoice& choice) const {
    const auto found = std::find_if(table.fields.begin(), table.fields.end(),
                                    [&](const Field& field) { return field.name == name; });
    if (name.empty() || found == table.fields.end()) {
      Refuse(Say(OrderText::NoField, {name}), Say(OrderText::Fields, {NamesOf(table.fields)}));
    }
    const auto place = static_cast<size_t>(found - table.fields.begin());
    if (FitOf(table, place).control == Control::None) Refuse(Say(OrderText::Unshown, {name}));
    if (std::find(choice.fields.begin(), choice.fields.end(), place) != choice.fields.end()) {
      Refuse(Say(OrderText::Twice, {name}));
    }
    return place;
  }

  std::vector<size_t> KeysNamed(const Table& table, const std::vector<size_t>& seekable) const {
    std::vector<Key> able;
    for (const size_t place : seekable) able.push_back(table.keys[place]);
    std::vector<size_t> keys;
    for (const std::string& name : *order_.keys) {
      const auto found =
          std::find_if(able.begin(), able.end(), [&](const Key& key) { return key.name == name; });
      if (found == able.end())
        Refuse(Say(OrderText::NoKey, {name}), Say(OrderText::Keys, {NamesOf(able)}));
      keys.push_back(seekable[static_cast<size_t>(found - able.begin())]);
    }
    return keys;
  }

  Detail DetailNamed(const Dictionary& dictionary, size_t master) const {
    const size_t table = TableNamed(dictionary, order_.detail);
    if (auto detail = table == master ? std::nullopt : DetailOf(dictionary, master, table)) {
      return *detail;
    }
    std::vector<Table> tables;
    for (const Detail& able : DetailsOf(dictionary, master)) {
      tables.push_back(dictionary.tables[able.table]);
    }
    Refuse(Say(OrderText::NoDetail, {order_.detail}), Say(OrderText::Details, {NamesOf(tables)}));
  }

  // Without a word of the user, the folder of that name beside the dictionary.
  std::string Pictures(const std::string& directory) const {
    constexpr char kFolder[] = "pictures";
    if (order_.pictures) return *order_.pictures;
    std::error_code error;
    if (!fs::is_directory(PathOf(order_.directory) / kFolder, error)) return {};
    return directory == "." ? kFolder : Utf8Of((PathOf(directory) / kFolder).make_preferred());
  }

  // Under another name first: what was there stays until the new file is whole.
  void Put(const std::string& bytes) const {
    const fs::path target = PathOf(order_.output);
    fs::path side = target;
    side += ".part";
    std::error_code error;
    std::ofstream file(side, std::ios::binary | std::ios::trunc);
    file << bytes;
    file.close();
    if (file) fs::rename(side, target, error);
    if (file && !error) return;
    fs::remove(side, error);
    Refuse(Say(OrderText::NotWritten, {order_.output}));
  }

  std::vector<std::string> Remarks(const Table& table, const NewForm& made) const {
    std::vector<std::string> remarks;
    for (const std::string& field : made.displayed)
      remarks.push_back(Say(OrderText::Displayed, {field}));
    for (const std::string& field : made.left) remarks.push_back(Say(OrderText::Left, {field}));
    if (!table.HasKeys()) remarks.push_back(Say(OrderText::NoKeys, {table.name}));
    remarks.push_back(Say(OrderText::Made, {order_.output}));
    return remarks;
  }

  std::string Say(OrderText text, const std::vector<std::string>& words = {}) const {
    return Said(kTexts, text, order_.language, words);
  }

  template <class Things>
  std::string NamesOf(const Things& things) const {
    std::string names;
    for (const auto& thing : things) {
      if (!thing.name.empty()) names += (names.empty() ? "" : ", ") + thing.name;
    }
    return names.empty() ? Say(OrderText::None) : names;
  }

  const FormOrder& order_;
};

}  // namespace

OrderOutcome CarryOut(const FormOrder& order) {
  try {
    return {true, Carrying(order).Run()};
  } catch (Refused& refused) {
    return {false, std::move(refused.messages)};
  }
}

}  // namespace qrn::newform
