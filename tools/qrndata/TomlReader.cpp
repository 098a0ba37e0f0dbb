#include "tools/qrndata/TomlReader.h"

#include <algorithm>

#include "tools/qrndata/Messages.h"

namespace qrndata {

namespace {

std::string Joined(std::initializer_list<std::string_view> names) {
  std::string text;
  for (const std::string_view name : names) text.append(text.empty() ? "" : ", ").append(name);
  return text;
}

}  // namespace

Position PositionOf(const toml::node& node) {
  return {node.source().begin.line, node.source().begin.column};
}

void TomlReader::AllowOnly(std::initializer_list<std::string_view> names) const {
  for (const auto& [key, value] : table_) {
    if (std::find(names.begin(), names.end(), key.str()) != names.end()) continue;
    throw BadInput(file_, {key.source().begin.line, key.source().begin.column},
                   Say(Message::NoSuchEntry, Say(what_), key.str(), Joined(names)));
  }
}

std::string TomlReader::RequiredText(std::string_view name) const {
  std::optional<std::string> text = Text(name);
  if (!text) Refuse(name, Say(Message::EntryNeeded, Say(what_), name));
  return *std::move(text);
}

std::optional<std::string> TomlReader::Text(std::string_view name) const {
  const toml::node* node = table_.get(name);
  if (node == nullptr) return std::nullopt;
  if (!node->is_string()) Refuse(name, Say(Message::TextExpected, name));
  return node->as_string()->get();
}

std::optional<int64_t> TomlReader::Integer(std::string_view name, int64_t least,
                                           int64_t most) const {
  const toml::node* node = table_.get(name);
  if (node == nullptr) return std::nullopt;
  const auto value = node->is_integer() ? node->value<int64_t>() : std::nullopt;
  if (!value || *value < least || *value > most) {
    Refuse(name, Say(Message::EntryWholeExpected, name, least, most));
  }
  return value;
}

bool TomlReader::Flag(std::string_view name, bool standard) const {
  const toml::node* node = table_.get(name);
  if (node == nullptr) return standard;
  if (!node->is_boolean()) Refuse(name, Say(Message::TruthExpected, name));
  return node->as_boolean()->get();
}

const toml::array* TomlReader::Array(std::string_view name) const {
  const toml::node* node = table_.get(name);
  if (node == nullptr) return nullptr;
  if (!node->is_array()) Refuse(name, Say(Message::ArrayExpected, name));
  return node->as_array();
}

void TomlReader::Refuse(std::string_view name, const std::string& text) const {
  const toml::node* node = table_.get(name);
  throw BadInput(file_, PositionOf(node != nullptr ? *node : table_), text);
}

void TomlReader::Refuse(const std::string& text) const {
  throw BadInput(file_, PositionOf(table_), text);
}

}  // namespace qrndata
