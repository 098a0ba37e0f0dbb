// What the wizard for a new form has been told so far, and what can be chosen next. Texts and paths
// are UTF-8.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/newform/FormOrder.h"

namespace qrn::designer {

using form::Language;

class WizardChoices {
 public:
  // A field or key that can be chosen, in the order of the form.
  struct Item {
    size_t place = 0;  // in the table
    std::string name;
    bool chosen = true;
    bool operator==(const Item&) const = default;
  };

  explicit WizardChoices(Language language) : language_(language) {}

  // Reads a folder's dictionary; false, and what was chosen stays, if there is none that has a
  // table a form can be made of. The same folder again changes nothing.
  bool PutDirectory(const std::string& directory);
  const std::string& directory() const noexcept { return directory_; }

  // Tables that have a field which a control shows; places in the dictionary.
  const std::vector<size_t>& tables() const noexcept { return tables_; }
  const newform::Table& Table(size_t place) const { return dictionary_.tables[place]; }
  // Begins with all that the table has, and no detail. The same table again changes nothing.
  void PutTable(size_t place);
  size_t table() const noexcept { return table_; }

  const std::vector<Item>& fields() const noexcept { return fields_; }
  void ChooseField(size_t at, bool chosen);
  // One up (-1) or down (1); the place where it lies then.
  size_t MoveField(size_t at, int direction);

  // Keys whose every field is chosen and has a box.
  const std::vector<Item>& keys() const noexcept { return keys_; }
  void ChooseKey(size_t at, bool chosen) { keys_[at].chosen = chosen; }

  // Names of the tables whose records can follow this one's, those that share most first.
  const std::vector<std::string>& details() const noexcept { return details_; }
  void PutDetail(const std::string& name) { detail_ = name; }  // empty: none
  const std::string& detail() const noexcept { return detail_; }

  bool CanHaveGrid() const;
  void PutGrid(bool grid) { grid_ = grid; }
  bool grid() const noexcept { return grid_ && CanHaveGrid(); }

  // Nothing: the folder of that name in the dictionary's, if there is one.
  void PutPictures(const std::string& folder);
  void PutLanguage(Language language) { language_ = language; }
  Language language() const noexcept { return language_; }

  // TABLE.frm in the dictionary's folder, without characters that no file name has.
  std::string UsualFile() const;
  // A name alone goes into the dictionary's folder; .frm is added where it is missing. Empty for an
  // empty name.
  std::string WholeFile(const std::string& file) const;

  // Ready to be carried out: the same as `qrnform --new` makes of the same choices.
  newform::FormOrder Order(const std::string& file, bool replace) const;

 private:
  void FindKeys();

  Language language_;
  std::string directory_;
  newform::Dictionary dictionary_;
  std::vector<size_t> tables_;
  std::optional<size_t> chosenTable_;
  size_t table_ = 0;
  std::vector<Item> fields_;
  std::vector<Item> keys_;
  std::vector<std::string> details_;
  std::string detail_;
  bool grid_ = false;
  std::optional<std::string> pictures_;
};

}  // namespace qrn::designer
