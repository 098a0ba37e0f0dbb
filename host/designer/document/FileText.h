// How texts stand in a form file: its code page, its line ends, its indentation.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qrn::designer {

// Code page 932 with CR LF, as Visual Basic writes it, unless a file that was read is otherwise.
struct FileText {
  bool isUtf8 = false;
  std::string lineEnd = "\r\n";

  // Bytes of the file as UTF-8.
  std::string Decode(std::string_view bytes) const;
  // Nothing if the file's code page does not have a character of the text.
  std::optional<std::string> Encode(std::string_view utf8) const;
};

// The lines of a file's bytes, each with its end: CR LF, LF or CR. The views lie inside `bytes`.
std::vector<std::string_view> LinesWithEnds(std::string_view bytes);

// A line's bytes without its end.
std::string_view WithoutEnd(std::string_view line) noexcept;

}  // namespace qrn::designer
