// The rows of the property list: what the selected controls have in common and, before it, one for
// the property pages of a control that has some. One row is chosen; it is kept by its name while
// others are selected.
#pragma once

#include <string>
#include <vector>

#include "host/designer/model/PropertyList.h"
#include "host/designer/panes/RowList.h"

namespace qrn::designer {

class PropertyRows {
 public:
  void Put(std::vector<PropertyRow> rows, bool hasPages);

  size_t Count() const noexcept { return rows_.size() + First(); }
  // Null for the row of the pages, and where there is none.
  const PropertyRow* At(size_t row) const noexcept;
  // Of a property; the first one's if it is not here.
  size_t Of(const std::string& property) const noexcept;
  bool Has(const std::string& property) const noexcept;
  std::vector<ShownRow> Shown(Language language) const;

  void Choose(size_t row);
  // Though what is selected may have no such property.
  void Want(const std::string& property);
  size_t chosen() const noexcept { return chosen_; }
  const PropertyRow* Chosen() const noexcept { return At(chosen_); }
  bool IsOnPages() const noexcept { return hasPages_ && chosen_ == 0; }
  // The next one behind the chosen one, round and round, whose name begins with the letter.
  size_t NextWith(char letter) const noexcept;

 private:
  size_t First() const noexcept { return hasPages_ ? 1 : 0; }

  std::vector<PropertyRow> rows_;
  bool hasPages_ = false;
  size_t chosen_ = 0;
  std::string wanted_ = "Name";  // empty: the pages
};

}  // namespace qrn::designer
