#include "host/designer/panes/LiveOffers.h"

#include <algorithm>
#include <chrono>
#include <system_error>

#include "host/designer/model/DatabaseClass.h"
#include "host/form/FilePath.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

namespace fs = std::filesystem;

constexpr const char* kDictionaryFiles[] = {"file.ddf", "field.ddf", "index.ddf"};

bool IsDatabaseControl(const Design& design, ControlId id) {
  return IsDatabaseClass(design.At(id).className());
}

template <class Things>
std::vector<std::string> NamesOf(const Things& things) {
  std::vector<std::string> names;
  for (const auto& thing : things) {
    if (!thing.name.empty()) names.push_back(thing.name);
  }
  return names;
}

// Times of files may count in whole seconds: what was written just now can be written once more
// without a trace.
template <class Stamp>
bool IsSettled(const Stamp& stamp) {
  const auto justNow = fs::file_time_type::clock::now() - std::chrono::seconds(2);
  return std::all_of(stamp.begin(), stamp.end(),
                     [&](const auto& file) { return file.second < justNow; });
}

newform::Dictionary ReadOrNothing(const std::string& directory) {
  try {
    return newform::ReadDictionary(form::EngineBytes(directory));
  } catch (const newform::DictionaryUnreadable&) {
    return {};
  }
}

}  // namespace

LiveOffers::Stamp LiveOffers::StampOf(const fs::path& directory) {
  Stamp stamp{};
  for (size_t at = 0; at < stamp.size(); ++at) {
    const fs::path file = directory / kDictionaryFiles[at];
    std::error_code error;
    stamp[at] = {fs::file_size(file, error), fs::last_write_time(file, error)};
  }
  return stamp;
}

const newform::Dictionary* LiveOffers::DictionaryOf(const std::string& source) const {
  for (const ControlId id : design_.All()) {
    if (!IsDatabaseControl(design_, id) || design_.Name(id) != source) continue;
    const std::string directory = design_.TextValue(id, "DDFDir");
    if (directory.empty()) return nullptr;
    const fs::path place = form::PathOf(folder_) / form::PathOf(directory);
    const std::string path = form::Utf8Of(place);
    const Stamp stamp = StampOf(place);
    Known& known = known_[path];
    if (!known.isSettled || known.stamp != stamp) {
      known = {stamp, ReadOrNothing(path), IsSettled(stamp)};
    }
    return &known.dictionary;
  }
  return nullptr;
}

const newform::Table* LiveOffers::TableOf(const std::string& source,
                                          const std::string& table) const {
  const newform::Dictionary* dictionary = DictionaryOf(source);
  const auto place = dictionary ? dictionary->Find(table) : std::nullopt;
  return place ? &dictionary->tables[*place] : nullptr;
}

std::vector<std::string> LiveOffers::Sources() const {
  std::vector<std::string> names;
  for (const ControlId id : design_.All()) {
    if (IsDatabaseControl(design_, id)) names.push_back(design_.Name(id));
  }
  return names;
}

std::vector<std::string> LiveOffers::Tables(const std::string& source) const {
  const newform::Dictionary* dictionary = DictionaryOf(source);
  return dictionary ? NamesOf(dictionary->tables) : std::vector<std::string>();
}

std::vector<std::string> LiveOffers::Fields(const std::string& source,
                                            const std::string& table) const {
  const newform::Table* known = TableOf(source, table);
  return known ? NamesOf(known->fields) : std::vector<std::string>();
}

std::vector<std::string> LiveOffers::Keys(const std::string& source,
                                          const std::string& table) const {
  const newform::Table* known = TableOf(source, table);
  return known ? NamesOf(known->keys) : std::vector<std::string>();
}

}  // namespace qrn::designer
