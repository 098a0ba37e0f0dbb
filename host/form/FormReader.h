// The reader behind ReadFormFile: one line at a time, the open blocks on a stack.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/form/FormFile.h"

namespace qrn::form {

class FormReader {
 public:
  FormReader(std::vector<std::string> lines, Mistakes& mistakes);

  FormFile Read();

 private:
  bool More() const noexcept { return at_ < lines_.size(); }
  int LineNumber() const noexcept { return static_cast<int>(at_) + 1; }
  std::string_view Line() const noexcept { return lines_[at_]; }
  void Complain(std::string reason) { mistakes_.Add(LineNumber(), std::move(reason)); }

  bool ReadVersion();
  void ReadObjects();
  void ReadObject(std::string_view rest);
  bool ReadForm();
  bool ReadBegin(std::string_view words, ControlNode* control);
  void ReadBody(ControlNode* control, int depth);
  void ReadChild(std::string_view words, ControlNode* parent, int depth);
  void ReadGroup(std::string_view words, std::vector<Property>* into, int depth);
  void ReadGroupHead(std::string_view words, Property* group);
  void ReadProperty(std::vector<Property>* into);
  void ReadAttributes();
  void ReadCode();
  void TakeIndex(ControlNode* control);

  std::vector<std::string> lines_;
  Mistakes& mistakes_;
  size_t at_ = 0;
  FormFile file_;
};

}  // namespace qrn::form
