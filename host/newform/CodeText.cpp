#include "host/newform/CodeText.h"

namespace qrn::newform {

void CodeText::Line(std::string_view line) {
  if (!line.empty()) text_.append(static_cast<size_t>(depth_) * 4, ' ').append(line);
  text_ += "\r\n";
}

void CodeText::Remark(std::string_view words) { Line("' " + std::string(words)); }

void CodeText::Open(std::string_view line) {
  Line(line);
  ++depth_;
}

void CodeText::Close(std::string_view line) {
  --depth_;
  Line(line);
}

void CodeText::Turn(std::string_view line) {
  Close(line);
  ++depth_;
}

void CodeText::Begin(std::string_view head) {
  Open("Private " + std::string(head));
  ending_ = head.starts_with("Function") ? "End Function" : "End Sub";
}

void CodeText::End() {
  Close(ending_);
  Blank();
}

void CodeText::Procedure(std::string_view head, std::initializer_list<std::string> lines) {
  Begin(head);
  for (const std::string& line : lines) Line(line);
  End();
}

}  // namespace qrn::newform
