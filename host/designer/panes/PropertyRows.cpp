#include "host/designer/panes/PropertyRows.h"

#include <algorithm>
#include <utility>

#include "host/designer/panes/PaneTexts.h"

namespace qrn::designer {
namespace {

// A row has one line.
std::string OnOneLine(std::string text) {
  for (size_t at = text.find_first_of("\r\n"); at != std::string::npos;
       at = text.find_first_of("\r\n")) {
    text.replace(at, text.compare(at, 2, "\r\n") == 0 ? 2 : 1, "\xC2\xB6");
  }
  return text;
}

auto FindIn(const std::vector<PropertyRow>& rows, const std::string& property) {
  return std::find_if(rows.begin(), rows.end(),
                      [&](const PropertyRow& row) { return row.info->name == property; });
}

}  // namespace

void PropertyRows::Put(std::vector<PropertyRow> rows, bool hasPages) {
  rows_ = std::move(rows);
  hasPages_ = hasPages;
  chosen_ = hasPages && wanted_.empty() ? 0 : Of(wanted_);
}

const PropertyRow* PropertyRows::At(size_t row) const noexcept {
  return row < First() || row >= Count() ? nullptr : &rows_[row - First()];
}

bool PropertyRows::Has(const std::string& property) const noexcept {
  return FindIn(rows_, property) != rows_.end();
}

size_t PropertyRows::Of(const std::string& property) const noexcept {
  const auto found = FindIn(rows_, property);
  return First() + (found == rows_.end() ? 0 : static_cast<size_t>(found - rows_.begin()));
}

std::vector<ShownRow> PropertyRows::Shown(Language language) const {
  std::vector<ShownRow> shown;
  if (hasPages_) shown.push_back({Said(PaneText::CustomRow, language), {}});
  for (const PropertyRow& row : rows_) shown.push_back({row.info->name, OnOneLine(row.text)});
  return shown;
}

void PropertyRows::Choose(size_t row) {
  chosen_ = row;
  const PropertyRow* property = At(row);
  wanted_ = property ? property->info->name : std::string();
}

void PropertyRows::Want(const std::string& property) {
  wanted_ = property;
  chosen_ = Of(property);
}

size_t PropertyRows::NextWith(char letter) const noexcept {
  if (rows_.empty()) return chosen_;
  const size_t from = chosen_ < First() ? rows_.size() - 1 : chosen_ - First();
  return First() + NextWithLetter(rows_, from, letter);
}

}  // namespace qrn::designer
