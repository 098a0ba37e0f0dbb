// An extended read's condition as the server judges it, over the column "data".
//
// It holds for every record that the request accepts, and may hold for others: a term that the
// server cannot judge as Judge does, and what such a term leaves open, counts as true, and one of a
// record that is too short for it as it falls. So whoever uses it judges what comes once more.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "btrieve/scans/ExtendedRequest.h"
#include "btrieve/server/ServerLink.h"

namespace btrieve::server {

class ScanFilter {
 public:
  // Without a request it holds for every record. The condition's parameters are numbered from
  // `first` on: offsets and lengths stand in the text, constants are arguments.
  ScanFilter(const ExtendedRequest* request, const FileSpec& file, int first);

  // False: it holds for every record.
  bool LeavesOut() const noexcept { return !text_.empty(); }
  std::string Text() const { return text_.empty() ? "true" : text_; }
  // The arguments of its parameters, in their order; bytes stay this object's.
  void AddTo(Arguments& arguments) const;

 private:
  // Of an integer, or bytes.
  struct Constant {
    bool isNumber = false;
    int64_t number = 0;
    std::vector<uint8_t> bytes = {};
  };
  // One term: the parameter stands between `before` and `after`.
  struct Judgement {
    std::string before;
    Constant constant;
    std::string after = {};
  };
  using Term = ExtendedRequest::Term;

  std::optional<Judgement> Judge(const Term& term, ByteView constant) const;
  Judgement JudgeInteger(const Term& term, ByteView constant, bool isSigned) const;
  std::string ByteAt(const Term& term, size_t at) const;
  void Put(Judgement judgement, const char* connector);

  const FileSpec& file_;
  int next_;
  std::string text_;  // of the terms from one on to the last; empty where that is not known
  std::vector<Constant> constants_;
};

}  // namespace btrieve::server
