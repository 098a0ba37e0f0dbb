// Code as it is written: procedures of indented lines.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace qrn::newform {

class CodeText {
 public:
  void Line(std::string_view line);
  void Blank() { Line({}); }
  void Remark(std::string_view words);

  // Sub or Function with its parameters, up to End, and a blank line before it.
  void Begin(std::string_view head);
  void End();
  // A procedure of these lines.
  void Procedure(std::string_view head, std::initializer_list<std::string> lines);

  // Lines between are a step further in.
  void Open(std::string_view line);
  void Close(std::string_view line);
  void Turn(std::string_view line);  // Else

  const std::string& Text() const noexcept { return text_; }

 private:
  std::string text_;
  std::string ending_;
  int depth_ = 0;
};

}  // namespace qrn::newform
