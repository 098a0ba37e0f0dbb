// Names for the property list from the dictionaries that the form's own database controls name.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "host/designer/model/Design.h"
#include "host/newform/Tables.h"

namespace qrn::designer {

// Looks at the design each time it is asked: a QRNBtr that came, was renamed or has another DDFDir
// counts at once. A dictionary is read when it is first asked for, and again when one of its files
// is another. What cannot be read has no names.
class LiveOffers final : public NameOffers {
 public:
  // `folder` (UTF-8) is what a relative DDFDir counts from: the form's; empty: the current one. The
  // design outlives the offers.
  LiveOffers(const Design& design, std::string folder)
      : design_(design), folder_(std::move(folder)) {}

  std::vector<std::string> Sources() const override;
  std::vector<std::string> Tables(const std::string& source) const override;
  std::vector<std::string> Fields(const std::string& source,
                                  const std::string& table) const override;
  std::vector<std::string> Keys(const std::string& source, const std::string& table) const override;

 private:
  // Sizes and times of the dictionary's three files.
  using Stamp = std::array<std::pair<uintmax_t, std::filesystem::file_time_type>, 3>;
  struct Known {
    Stamp stamp{};
    newform::Dictionary dictionary;
    bool isSettled = false;  // a later change would show in the stamp
  };

  static Stamp StampOf(const std::filesystem::path& directory);
  // Null for a control that is not there or names no directory.
  const newform::Dictionary* DictionaryOf(const std::string& source) const;
  const newform::Table* TableOf(const std::string& source, const std::string& table) const;

  const Design& design_;
  std::string folder_;
  mutable std::map<std::string, Known> known_;  // by the directory's whole path, UTF-8
};

}  // namespace qrn::designer
