// What is wrong with a file, told to the one who wrote it: which file, which line, and why.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace qrn::form {

// `line` counts from 1; 0 speaks of the file as a whole. `reason` is one sentence in UTF-8 without
// a full stop.
struct Mistake {
  int line = 0;
  std::string reason;
};

// Mistakes in the order found. Reading goes on after a mistake where it can, so that one run shows
// them all; past `kMost` no more are kept, since what follows is mostly consequence.
class Mistakes {
 public:
  static constexpr size_t kMost = 50;

  void Add(int line, std::string reason);

  bool Any() const noexcept { return !list_.empty(); }
  const std::vector<Mistake>& List() const noexcept { return list_; }

  // One line a mistake: "customers.frm:12: reason". A mistake of the whole file has no number.
  std::string Text(const std::string& fileName) const;

 private:
  std::vector<Mistake> list_;
};

// Ends the reading of a file that cannot be read on. `what()` is the text of all its mistakes.
class FileRefused : public std::runtime_error {
 public:
  FileRefused(const std::string& fileName, const Mistakes& mistakes)
      : std::runtime_error(mistakes.Text(fileName)),
        mistakes_(std::make_shared<const Mistakes>(mistakes)) {}

  const Mistakes& mistakes() const noexcept { return *mistakes_; }

 private:
  std::shared_ptr<const Mistakes> mistakes_;
};

}  // namespace qrn::form
