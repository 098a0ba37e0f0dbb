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

struct OrderWords {
  const char* noDictionary;
  const char* badDirectory;
  const char* noTable;
  const char* tables;
  const char* noField;
  const char* fields;
  const char* unshown;
  const char* twice;
  const char* noKey;
  const char* keys;
  const char* nothingToShow;
  const char* noDetail;
  const char* details;
  const char* none;
  const char* notAForm;
  const char* isThere;
  const char* notWritten;
  const char* displayed;
  const char* left;
  const char* noKeys;
  const char* made;
};

constexpr OrderWords kJapanese = {
    .noDictionary = ": 辞書を読めません。コード ",
    .badDirectory = ": フォームに書けないディレクトリ名です。",
    .noTable = ": 辞書にないテーブルです。",
    .tables = "辞書にあるテーブル: ",
    .noField = ": テーブルにないフィールドです。",
    .fields = "テーブルにあるフィールド: ",
    .unshown = ": コントロールで表示できない型のフィールドです。",
    .twice = ": フィールドが 2 回指定されています。",
    .noKey = ": 検索のボタンを付けられるキーではありません。",
    .keys = "ボタンを付けられるキー: ",
    .nothingToShow = ": 表示できるフィールドがありません。",
    .noDetail = ": 明細にできません。マスタのキーと同じフィールドで始まるキーがありません。",
    .details = "明細にできるテーブル: ",
    .none = "なし",
    .notAForm = ": フォームのファイル名は .frm で終わらせてください。",
    .isThere = ": ファイルがあります。置き換えるには --force を付けてください。",
    .notWritten = ": 書き込めません。",
    .displayed = ": 更新すると値が変わるおそれがあるため、表示だけにしました。",
    .left = ": 表示できるコントロールがないため、フォームにありません。",
    .noKeys = ": キーがないため、検索のボタン、スクロール・バー、一覧はありません。",
    .made = ": フォームを作成しました。",
};

constexpr OrderWords kEnglish = {
    .noDictionary = ": no readable dictionary, code ",
    .badDirectory = ": a form cannot hold the name of this directory",
    .noTable = ": the dictionary has no such table",
    .tables = "it has: ",
    .noField = ": the table has no such field",
    .fields = "it has: ",
    .unshown = ": no control shows a field of this type",
    .twice = ": the field is given twice",
    .noKey = ": no key that a button can find by",
    .keys = "those that it can: ",
    .nothingToShow = ": the table has no field that a control shows",
    .noDetail = ": no detail: none of its keys begins with the field of a key of the master",
    .details = "tables that can be its detail: ",
    .none = "none",
    .notAForm = ": the form's file must end in .frm",
    .isThere = ": the file is there; --force replaces it",
    .notWritten = ": cannot be written",
    .displayed = ": only shown, since an update could change its value",
    .left = ": not on the form, no control shows it",
    .noKeys = ": no key, so there are no buttons that find, no scroll bar and no grid",
    .made = ": made",
};

struct Refused {
  std::vector<std::string> messages;
};

const OrderWords& OrderWordsOf(Language language) {
  return language == Language::English ? kEnglish : kJapanese;
}

[[noreturn]] void Refuse(std::string message, std::string more = {}) {
  Refused refused{{std::move(message)}};
  if (!more.empty()) refused.messages.push_back(std::move(more));
  throw refused;
}

template <class Things>
std::string NamesOf(const Things& things, const char* none) {
  std::string names;
  for (const auto& thing : things) {
    if (!thing.name.empty()) names += (names.empty() ? "" : ", ") + thing.name;
  }
  return names.empty() ? none : names;
}

class Carrying {
 public:
  explicit Carrying(const FormOrder& order) : order_(order), words_(OrderWordsOf(order.language)) {}

  std::vector<std::string> Run() {
    CheckOutput();
    const Dictionary dictionary = Read();
    const size_t table = TableNamed(dictionary, order_.table);
    FormChoice choice = UsualChoice(dictionary, table, FormDirectory());
    choice.language = order_.language;
    choice.grid = order_.grid;
    if (!order_.fields.empty()) Pick(dictionary.tables[table], choice);
    if (order_.keys) choice.keys = KeysNamed(dictionary.tables[table], choice.keys);
    if (choice.fields.empty()) Refuse(order_.table + words_.nothingToShow);
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
    if (!isForm) Refuse(file + words_.notAForm);
    std::error_code error;
    if (!order_.force && fs::exists(fs::symlink_status(PathOf(file), error))) {
      Refuse(file + words_.isThere);
    }
  }

  Dictionary Read() const {
    try {
      return ReadDictionary(form::EngineBytes(order_.directory));
    } catch (const DictionaryUnreadable& failure) {
      Refuse(order_.directory + words_.noDictionary + std::to_string(failure.code));
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
      Refuse(order_.directory + words_.badDirectory);
    }
    return text;
  }

  size_t TableNamed(const Dictionary& dictionary, const std::string& name) const {
    if (const auto found = dictionary.Find(name)) return *found;
    Refuse(name + words_.noTable, words_.tables + NamesOf(dictionary.tables, words_.none));
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
      Refuse(name + words_.noField, words_.fields + NamesOf(table.fields, words_.none));
    }
    const auto place = static_cast<size_t>(found - table.fields.begin());
    if (FitOf(table, place).control == Control::None) Refuse(name + words_.unshown);
    if (std::find(choice.fields.begin(), choice.fields.end(), place) != choice.fields.end()) {
      Refuse(name + words_.twice);
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
        Refuse(name + words_.noKey, words_.keys + NamesOf(able, words_.none));
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
    Refuse(order_.detail + words_.noDetail, words_.details + NamesOf(tables, words_.none));
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
    Refuse(order_.output + words_.notWritten);
  }

  std::vector<std::string> Remarks(const Table& table, const NewForm& made) const {
    std::vector<std::string> remarks;
    for (const std::string& field : made.displayed) remarks.push_back(field + words_.displayed);
    for (const std::string& field : made.left) remarks.push_back(field + words_.left);
    if (!table.HasKeys()) remarks.push_back(table.name + words_.noKeys);
    remarks.push_back(order_.output + words_.made);
    return remarks;
  }

  const FormOrder& order_;
  const OrderWords& words_;
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
