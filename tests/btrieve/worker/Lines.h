// How a worker speaks.
#pragma once

#include <iostream>
#include <string>

namespace btrieve::test {

// A line or a letter goes out whole and at once: what was told before death is heard.
inline void Tell(const std::string& line) {
  const std::string whole = line + "\n";
  std::cout.write(whole.data(), static_cast<std::streamsize>(whole.size())).flush();
}

inline void Say(char letter) { std::cout.put(letter).flush(); }

}  // namespace btrieve::test
