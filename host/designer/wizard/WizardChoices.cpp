#include "host/designer/wizard/WizardChoices.h"

#include <algorithm>
#include <utility>

#include "host/form/FilePath.h"
#include "host/form/SourceText.h"
#include "host/newform/Relations.h"

namespace qrn::designer {
namespace {

constexpr std::string_view kNoFileName = "\\/:*?\"<>|";
constexpr char kExtension[] = ".frm";

std::optional<newform::Dictionary> DictionaryIn(const std::string& directory) {
  try {
    return newform::ReadDictionary(form::EngineBytes(directory));
  } catch (const newform::DictionaryUnreadable&) {
    return std::nullopt;
  }
}

std::vector<size_t> UsableTables(const newform::Dictionary& dictionary) {
  std::vector<size_t> usable;
  for (size_t i = 0; i < dictionary.tables.size(); ++i) {
    const newform::Table& table = dictionary.tables[i];
    if (!table.name.empty() && !newform::ShowableFields(table).empty()) usable.push_back(i);
  }
  return usable;
}

std::vector<std::string> ChosenNames(const std::vector<WizardChoices::Item>& items) {
  std::vector<std::string> names;
  for (const WizardChoices::Item& item : items) {
    if (item.chosen) names.push_back(item.name);
  }
  return names;
}

}  // namespace

bool WizardChoices::PutDirectory(const std::string& directory) {
  std::error_code error;
  const std::string whole =
      form::Utf8Of(std::filesystem::absolute(form::PathOf(directory), error).make_preferred());
  if (directory.empty() || error) return false;
  if (whole == directory_) return true;
  auto dictionary = DictionaryIn(whole);
  std::vector<size_t> tables = dictionary ? UsableTables(*dictionary) : std::vector<size_t>();
  if (tables.empty()) return false;
  directory_ = whole;
  dictionary_ = std::move(*dictionary);
  tables_ = std::move(tables);
  chosenTable_.reset();
  PutTable(tables_.front());
  return true;
}

void WizardChoices::PutTable(size_t place) {
  if (chosenTable_ == place) return;
  chosenTable_ = table_ = place;
  fields_.clear();
  for (const size_t field : newform::ShowableFields(Table(place))) {
    fields_.push_back({field, Table(place).fields[field].name, true});
  }
  keys_.clear();
  FindKeys();
  details_.clear();
  for (const newform::Detail& detail : newform::DetailsOf(dictionary_, place)) {
    details_.push_back(Table(detail.table).name);
  }
  detail_.clear();
  grid_ = false;
}

void WizardChoices::ChooseField(size_t at, bool chosen) {
  if (std::exchange(fields_[at].chosen, chosen) != chosen) FindKeys();
}

size_t WizardChoices::MoveField(size_t at, int direction) {
  const size_t to = at + static_cast<size_t>(direction);
  if (at >= fields_.size() || to >= fields_.size()) return at;
  std::swap(fields_[at], fields_[to]);
  return to;
}

// A key that was put aside stays so while it can be chosen.
void WizardChoices::FindKeys() {
  std::vector<size_t> chosen;
  for (const Item& field : fields_) {
    if (field.chosen) chosen.push_back(field.place);
  }
  const std::vector<Item> before = std::exchange(keys_, {});
  for (const size_t key : newform::SeekableKeys(Table(table_), chosen)) {
    const auto known = std::find_if(before.begin(), before.end(),
                                    [&](const Item& item) { return item.place == key; });
    keys_.push_back({key, Table(table_).keys[key].name, known == before.end() || known->chosen});
  }
}

bool WizardChoices::CanHaveGrid() const { return chosenTable_ && Table(table_).HasKeys(); }

void WizardChoices::PutPictures(const std::string& folder) {
  pictures_ = folder.empty() ? std::nullopt : std::optional(folder);
}

std::string WizardChoices::UsualFile() const {
  std::string name = chosenTable_ ? Table(table_).name : std::string();
  for (char& byte : name) {
    if (kNoFileName.find(byte) != std::string_view::npos) byte = '_';
  }
  return WholeFile(name);
}

std::string WizardChoices::WholeFile(const std::string& file) const {
  const std::string name(form::Trimmed(file));
  if (name.empty()) return {};
  const bool hasExtension =
      name.size() > 4 && form::SameWord(std::string_view(name).substr(name.size() - 4), kExtension);
  const std::string whole = hasExtension ? name : name + kExtension;
  return form::Utf8Of((form::PathOf(directory_) / form::PathOf(whole)).make_preferred());
}

newform::FormOrder WizardChoices::Order(const std::string& file, bool replace) const {
  newform::FormOrder order;
  order.directory = directory_;
  order.table = Table(table_).name;
  order.detail = detail_;
  order.fields = ChosenNames(fields_);
  order.keys = ChosenNames(keys_);
  order.grid = grid();
  order.pictures = pictures_;
  order.language = language_;
  order.output = WholeFile(file);
  order.force = replace;
  return order;
}

}  // namespace qrn::designer
