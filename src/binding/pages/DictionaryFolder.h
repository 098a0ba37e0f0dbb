// The directory that a designer means by the file that he chose.
#pragma once

#include <string>
#include <string_view>

namespace qrn {

// The longest path that a page reads, in bytes.
inline constexpr size_t kLongestDirectory = 260;

// Without the last backslash and what follows where `path` (code page 932) is one of the three
// files of a dictionary, case ignored; any other path as it stands.
std::string DictionaryFolder(std::string_view path);

}  // namespace qrn
