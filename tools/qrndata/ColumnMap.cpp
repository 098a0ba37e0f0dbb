#include "tools/qrndata/ColumnMap.h"

#include <algorithm>
#include <sstream>

#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Names.h"

namespace qrndata {

namespace {

Names FieldNames(const Table& table) {
  Names names;
  for (const qrn::DbFieldInfo& field : table.fields) names.emplace_back(field.Name);
  return names;
}

std::string Listed(const Names& names) {
  std::string all;
  for (const std::string& name : names) all.append(all.empty() ? "" : ", ").append(Show(name));
  return all;
}

// Throws Failure without a place.
size_t FieldSlot(const Table& table, const std::string& name) {
  const Names names = FieldNames(table);
  if (const auto slot = FindName(names, name)) return *slot;
  throw Failure(kBadInput, Say(Message::NoSuchField, name, DidYouMean(names, name), Listed(names)));
}

void RequireFree(const ColumnSlots& slots, size_t slot, const Table& table) {
  if (std::find(slots.begin(), slots.end(), slot) == slots.end()) return;
  throw Failure(kBadInput, Say(Message::HasColumnAlready, Quoted(table.fields[slot].Name)));
}

ColumnRule ParseRule(const std::string& text, bool hasHeader) {
  const size_t equals = text.rfind('=');
  if (!hasHeader && equals == text.npos) return {"", text};
  if (hasHeader && equals != text.npos && equals != 0) {
    return {text.substr(0, equals), text.substr(equals + 1)};
  }
  throw Failure(kUsage,
                Say(hasHeader ? Message::ColumnRuleExpected : Message::ColumnFieldExpected, text));
}

// Parted by commas; an entry with one in it stands in quotes.
std::vector<CsvCell> ListEntries(const std::string& text, const std::string& option) {
  std::istringstream stream(text);
  CsvReader reader(stream);
  CsvRow row;
  if (!reader.Next(row) || !row.problem.empty()) {
    throw Failure(kUsage,
                  option + ": " + (row.problem.empty() ? Say(Message::NoEntry) : row.problem));
  }
  return std::move(row.cells);
}

// A rule's column is named like the file's: exactly, or but for case and blanks.
const ColumnRule* RuleFor(const std::vector<ColumnRule>& rules, const std::string& column) {
  const auto found = std::find_if(rules.begin(), rules.end(), [&](const ColumnRule& rule) {
    const Converted name = ToCodePage(rule.column, OnUnmappable::Replace);
    return rule.column == column || FindName({name.text}, column).has_value();
  });
  return found == rules.end() ? nullptr : &*found;
}

}  // namespace

std::vector<ColumnRule> ParseColumnRules(const std::string& text, bool hasHeader) {
  std::vector<ColumnRule> rules;
  if (text.empty()) return rules;
  for (const CsvCell& cell : ListEntries(text, "--columns")) {
    rules.push_back(ParseRule(cell.text, hasHeader));
  }
  return rules;
}

ColumnSlots MapHeader(const Table& table, const std::vector<std::string>& header,
                      const std::vector<Position>& places, const std::string& file,
                      const std::vector<ColumnRule>& rules) {
  ColumnSlots slots;
  std::vector<const ColumnRule*> used;
  for (size_t column = 0; column < header.size(); ++column) {
    const ColumnRule* rule = RuleFor(rules, header[column]);
    used.push_back(rule);
    if (rule != nullptr && rule->field.empty()) {
      slots.emplace_back();
      continue;
    }
    try {
      const size_t slot = FieldSlot(table, rule != nullptr ? rule->field : header[column]);
      RequireFree(slots, slot, table);
      slots.emplace_back(slot);
    } catch (const Failure& failure) {
      throw BadInput(file, places[column], failure.what());
    }
  }
  for (const ColumnRule& rule : rules) {
    if (std::find(used.begin(), used.end(), &rule) != used.end()) continue;
    throw BadInput(file, places.front(), Say(Message::NoSuchColumn, rule.column));
  }
  return slots;
}

ColumnSlots MapInOrder(const Table& table, const std::vector<ColumnRule>& rules) {
  ColumnSlots slots;
  for (const ColumnRule& rule : rules) {
    if (rule.field.empty()) {
      slots.emplace_back();
      continue;
    }
    const size_t slot = FieldSlot(table, rule.field);
    RequireFree(slots, slot, table);
    slots.emplace_back(slot);
  }
  for (size_t slot = 0; rules.empty() && slot < table.fields.size(); ++slot)
    slots.emplace_back(slot);
  return slots;
}

std::vector<size_t> ParseFieldList(const Table& table, const std::string& text,
                                   const std::string& option) {
  ColumnSlots slots;
  for (const CsvCell& cell : ListEntries(text, option)) {
    try {
      const size_t slot = FieldSlot(table, cell.text);
      RequireFree(slots, slot, table);
      slots.emplace_back(slot);
    } catch (const Failure& failure) {
      throw Failure(failure.Code(), option + ": " + failure.what());
    }
  }
  std::vector<size_t> list;
  for (const auto& slot : slots) list.push_back(*slot);
  return list;
}

}  // namespace qrndata
