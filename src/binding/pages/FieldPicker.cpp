#include "binding/pages/FieldPicker.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/CodePage.h"

namespace qrn {
namespace {

std::string_view WithoutBlanks(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// No second byte of a character is a comma.
NameList NamesIn(std::string_view list) {
  NameList names;
  for (size_t start = 0; start <= list.size();) {
    const size_t comma = std::min(list.find(',', start), list.size());
    const std::string_view name = WithoutBlanks(list.substr(start, comma - start));
    if (!name.empty()) names.emplace_back(name);
    start = comma + 1;
  }
  return names;
}

}  // namespace

std::string CutToBytes(std::string_view text, size_t limit) {
  return std::string(text.substr(0, CutAtCharacter(text, limit)));
}

void FieldPicker::Start(NameList fields, std::string_view list) {
  offered_ = std::move(fields);
  chosen_.clear();
  for (const std::string& name : NamesIn(list)) Move(name);
  text_ = list;
}

bool FieldPicker::Move(std::string_view name) {
  const auto found = std::ranges::find(offered_, name);
  if (found == offered_.end()) return false;
  chosen_.push_back(std::move(*found));
  offered_.erase(found);
  return true;
}

void FieldPicker::Choose(std::string_view name) {
  if (Move(name)) Join();
}

void FieldPicker::ChooseAll(const NameList& asShown) {
  for (const std::string& name : asShown) Move(name);
  Join();
}

void FieldPicker::GiveBack(size_t position) {
  if (position >= chosen_.size()) return;
  const auto at = chosen_.begin() + static_cast<ptrdiff_t>(position);
  offered_.push_back(std::move(*at));
  chosen_.erase(at);
  Join();
}

void FieldPicker::GiveBackAll() {
  std::ranges::move(chosen_, std::back_inserter(offered_));
  chosen_.clear();
  Join();
}

void FieldPicker::Join() {
  text_.clear();
  for (const std::string& name : chosen_) {
    if (!text_.empty()) text_ += ',';
    text_ += name;
  }
}

}  // namespace qrn
