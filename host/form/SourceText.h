// The text of a source file as lines of UTF-8, whatever the file was written in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qrn::form {

// The lines of a file without their ends (CR LF, LF or CR). Bytes are code page 932, as Visual
// Basic writes them, unless the file begins with the UTF-8 byte order mark. A last line end opens
// no further line. A Ctrl+Z (1A) ends the text.
std::vector<std::string> SourceLines(std::string_view fileBytes);

// `text` without blanks and tabs at both ends.
std::string_view Trimmed(std::string_view text) noexcept;

// Equal but for the case of the letters A to Z.
bool SameWord(std::string_view left, std::string_view right) noexcept;

// Letters A to Z in lower case; other bytes stay.
std::string LowerWord(std::string_view text);

// Takes one sign off the front of `*text`. False, and nothing taken, if another stands there.
bool TakeSign(std::string_view* text, char sign) noexcept;

bool IsDigit(char byte) noexcept;  // 0 to 9

// A name as Visual Basic has them: a letter, then letters, digits and underscores. Bytes from 80
// up count as letters, so Japanese names are names.
bool IsNameStart(char byte) noexcept;
bool IsNamePart(char byte) noexcept;
bool IsName(std::string_view text) noexcept;

// The bytes of a whole file; throws std::runtime_error with a plain reason when it cannot be read.
// `path` is UTF-8.
std::string ReadWholeFile(const std::string& path);

}  // namespace qrn::form
