// Typed access to a TOML table: every failure names file, line, column and what was expected.
#pragma once

#include <toml++/toml.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Messages.h"

namespace qrndata {

Position PositionOf(const toml::node& node);

class TomlReader {
 public:
  // Both must outlive the reader. `what` names the kind of entry in messages: AField, AKey.
  TomlReader(std::string_view file, const toml::table& table, Message what)
      : file_(file), table_(table), what_(what) {}

  // Throws unless all entries are among these.
  void AllowOnly(std::initializer_list<std::string_view> names) const;

  bool Has(std::string_view name) const { return table_.contains(name); }
  std::string RequiredText(std::string_view name) const;
  std::optional<std::string> Text(std::string_view name) const;
  std::optional<int64_t> Integer(std::string_view name, int64_t least, int64_t most) const;
  bool Flag(std::string_view name, bool standard = false) const;

  // The array `name`; null when it is missing.
  const toml::array* Array(std::string_view name) const;

  // Throws, at the entry or, where it is missing, at the table.
  [[noreturn]] void Refuse(std::string_view name, const std::string& text) const;
  [[noreturn]] void Refuse(const std::string& text) const;

  std::string_view File() const noexcept { return file_; }
  const toml::table& Table() const noexcept { return table_; }

 private:
  std::string_view file_;
  const toml::table& table_;
  Message what_;
};

}  // namespace qrndata
