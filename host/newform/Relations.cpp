#include "host/newform/Relations.h"

#include <algorithm>

#include "core/DbTypes.h"
#include "host/form/SourceText.h"
#include "host/newform/FieldFit.h"

namespace qrn::newform {
namespace {

// Fractions are told apart by more digits than their text has, notes cannot be asked for.
constexpr int32_t kNotCompared[] = {kFloat, kBFloat, kNote, kLVar, kBlob, kLogical, kBit};

bool CanLink(const Field& one, const Field& other) {
  const auto isCompared = [](const Field& field) {
    return std::find(std::begin(kNotCompared), std::end(kNotCompared), field.type) ==
           std::end(kNotCompared);
  };
  return !one.name.empty() && one.name == other.name && IsText(one) == IsText(other) &&
         isCompared(one) && isCompared(other);
}

bool NamesOneRecord(const Key& key) {
  return key.unique && key.fields.size() == 1 && !key.name.empty();
}

// Its own only key: the field is what the record is known by, and nobody else's.
bool IsOwnNumber(const Table& table, size_t field) {
  return std::any_of(table.keys.begin(), table.keys.end(), [field](const Key& key) {
    return NamesOneRecord(key) && key.fields.front() == field;
  });
}

constexpr std::string_view kCaptionNames[] = {"name", "title", "名", "称"};

// A text whose name says that it is one, else the first text.
std::optional<size_t> CaptionOf(const Table& table, size_t but) {
  std::optional<size_t> first;
  for (size_t i = 0; i < table.fields.size(); ++i) {
    const Field& field = table.fields[i];
    if (i == but || field.name.empty() || !IsText(field)) continue;
    if (!first) first = i;
    for (const std::string_view part : kCaptionNames) {
      if (form::LowerWord(field.name).find(part) != std::string::npos) return i;
    }
  }
  return first;
}

// How far both keys go along together.
std::vector<std::pair<size_t, size_t>> Shared(const Table& master, const Key& own,
                                              const Table& detail, const Key& other) {
  std::vector<std::pair<size_t, size_t>> fields;
  for (size_t i = 0; i < std::min(own.fields.size(), other.fields.size()); ++i) {
    if (!CanLink(master.fields[own.fields[i]], detail.fields[other.fields[i]])) break;
    fields.emplace_back(own.fields[i], other.fields[i]);
  }
  return fields;
}

}  // namespace

std::optional<Lookup> LookupOf(const Dictionary& dictionary, size_t table, size_t field) {
  const Field& own = dictionary.tables[table].fields[field];
  if (IsOwnNumber(dictionary.tables[table], field)) return std::nullopt;
  for (size_t i = 0; i < dictionary.tables.size(); ++i) {
    const Table& other = dictionary.tables[i];
    if (i == table || other.name.empty()) continue;
    for (size_t k = 0; k < other.keys.size(); ++k) {
      if (!NamesOneRecord(other.keys[k])) continue;
      const size_t named = other.keys[k].fields.front();
      if (CanLink(own, other.fields[named])) return Lookup{i, k, named, CaptionOf(other, named)};
    }
  }
  return std::nullopt;
}

std::optional<Detail> DetailOf(const Dictionary& dictionary, size_t master, size_t detail) {
  const Table& own = dictionary.tables[master];
  const Table& other = dictionary.tables[detail];
  Detail best{detail, 0, {}};
  for (const Key& key : own.keys) {
    if (key.name.empty()) continue;
    for (size_t k = 0; k < other.keys.size(); ++k) {
      if (other.keys[k].name.empty()) continue;
      auto fields = Shared(own, key, other, other.keys[k]);
      if (fields.size() > best.fields.size()) best = {detail, k, std::move(fields)};
    }
    // The first key says what a record is; others only where it leads to nothing.
    if (!best.fields.empty()) return best;
  }
  return std::nullopt;
}

std::vector<Detail> DetailsOf(const Dictionary& dictionary, size_t master) {
  std::vector<Detail> details;
  for (size_t i = 0; i < dictionary.tables.size(); ++i) {
    if (i == master || dictionary.tables[i].name.empty()) continue;
    if (auto detail = DetailOf(dictionary, master, i)) details.push_back(std::move(*detail));
  }
  std::stable_sort(details.begin(), details.end(), [](const Detail& one, const Detail& other) {
    return one.fields.size() > other.fields.size();
  });
  return details;
}

}  // namespace qrn::newform
