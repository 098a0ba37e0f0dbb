// What a form is going to have, before it is drawn and its code written: controls with their names.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/newform/FieldFit.h"
#include "host/newform/FormChoice.h"
#include "host/newform/Names.h"
#include "host/newform/Words.h"

namespace qrn::newform {

struct CardControl {
  size_t field = 0;
  FieldFit fit;
  std::optional<Lookup> lookup;  // a combo of the other table's records
  std::string control;           // bound to the field; of a Display field a plain text box
  std::string label;             // empty for a mark, which has its caption itself
  std::string said;              // says what the looked-up record is called; empty without one
  std::string picture;           // shows the file that the field names; empty without one
};

struct FormPlan {
  FormPlan(const Dictionary& from, const FormChoice& chosen);

  const Dictionary& dictionary;
  const FormChoice& choice;
  const Table& table;
  const Words words;
  ControlNames names;
  std::string formName;
  std::vector<CardControl> card;

  bool HasKeys() const noexcept { return table.HasKeys(); }
  // Scroll bars read no more than the fixed part of a record. One that is bound while the form is
  // up goes along the table's first key.
  bool HasBar() const noexcept {
    return OrderKey() && OrderKey() == table.keys.data() && !table.IsVariable();
  }
  // A grid is filled along a key.
  bool HasList() const noexcept { return choice.grid && HasKeys(); }
  // Rows of the list lead to their records: read by code, which takes the fixed part alone.
  bool ListLeads() const noexcept { return OrderKey() && !table.IsVariable(); }
  // The key that records are walked along, nothing if none has a name.
  const Key* OrderKey() const noexcept;
  std::vector<size_t> ListColumns() const { return ColumnsOf(table); }
  std::vector<size_t> DetailColumns() const;
  const Table& DetailTable() const { return dictionary.tables[choice.detail->table]; }

  // The fields that a grid shows of a table.
  static std::vector<size_t> ColumnsOf(const Table& table);
};

inline constexpr char kDatabase[] = "dbData";
inline constexpr char kStatus[] = "lblStatus";
inline constexpr char kMove[] = "btnMove";
inline constexpr char kFind[] = "btnFind";
inline constexpr char kBar[] = "barRecord";
inline constexpr char kInsert[] = "btnInsert";
inline constexpr char kUpdate[] = "btnUpdate";
inline constexpr char kDelete[] = "btnDelete";
inline constexpr char kClear[] = "cmdClear";
inline constexpr char kClose[] = "cmdClose";
inline constexpr char kPageButton[] = "cmdPage";
inline constexpr char kPageFrame[] = "fraPage";
inline constexpr char kDetailGrid[] = "grdDetail";
inline constexpr char kListGrid[] = "grdList";
inline constexpr char kFindFrame[] = "fraFind";
inline constexpr char kDetailLabel[] = "lblDetail";
inline constexpr char kListLabel[] = "lblList";

}  // namespace qrn::newform
