// The reader behind FormDocument: one line at a time, the open blocks on the call stack.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/designer/document/FormDocument.h"

namespace qrn::designer {

class DocumentReader {
 public:
  // `bytes` outlives the reader.
  DocumentReader(std::string_view bytes, form::Mistakes& mistakes);
  DocumentReader(std::string_view bytes, FileText text, form::Mistakes& mistakes);

  std::unique_ptr<FormDocument> ReadDocument();
  FormFragment ReadFragment();

 private:
  bool More() const noexcept { return at_ < lines_.size(); }
  std::string_view Line() const noexcept { return lines_[at_]; }
  int LineNumber() const noexcept { return static_cast<int>(at_) + 1; }
  void TakeInto(Block& block, std::string name = {});
  bool Complain(int line, std::string reason);

  bool ReadVersion(Block& head);
  void ReadHead(Block& head);
  BlockRef ReadControl(int depth);
  BlockRef ReadGroup(int depth);
  bool ReadBody(Block& block, std::string_view endWord, int depth);
  bool ReadInner(Block& block, int depth);
  void ReadAttributes(Block& attributes);

  FileText text_;
  std::string_view mark_;
  std::string_view tail_;
  std::vector<std::string_view> lines_;
  form::Mistakes& mistakes_;
  size_t at_ = 0;
};

}  // namespace qrn::designer
