#include "host/newform/Names.h"

#include <algorithm>

#include "host/form/SourceText.h"

namespace qrn::newform {
namespace {

constexpr char kFirstOfTwoBytes = '\x7F';

bool IsPlain(char byte) noexcept {
  return static_cast<unsigned char>(byte) < static_cast<unsigned char>(kFirstOfTwoBytes);
}

}  // namespace

std::string Identifier(std::string_view name, std::string_view otherwise, size_t number) {
  const bool usable = form::IsName(name) && std::all_of(name.begin(), name.end(), IsPlain);
  if (!usable) return std::string(otherwise) + std::to_string(number + 1);
  // An underscore separates a control's name from its event.
  std::string letters(name);
  std::erase(letters, '_');
  return letters;
}

std::string ControlNames::Take(const std::string& wanted) {
  std::string name = wanted;
  for (int number = 2; !taken_.insert(form::LowerWord(name)).second; ++number) {
    name = wanted + "N" + std::to_string(number);
  }
  return name;
}

std::string Shown(std::string_view text) {
  std::string shown;
  for (const char byte : text) shown += byte == '&' ? "&&" : std::string(1, byte);
  return shown;
}

std::string AccessKeys::Give(std::string_view caption, char wanted) {
  const size_t found = free_.find(wanted);
  const size_t place = found == std::string::npos ? 0 : found;
  if (free_.empty()) return Shown(caption);
  const std::string key(1, free_[place]);
  free_.erase(place, 1);
  return Shown(caption) + "(&" + key + ")";
}

}  // namespace qrn::newform
