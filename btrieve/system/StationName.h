// What a server is told of this process, for people who look who works there.
#pragma once

#include <string>

namespace btrieve {

// "w64btrv MACHINE PROGRAM PROCESS" in plain ASCII, at most 63 characters; other characters are ?,
// and no blank stands in the machine's name.
std::string StationName();

// The system's parts of it; empty where it does not tell.
std::string MachineName();
std::string ProgramName();  // without its folder
unsigned long ProcessNumber() noexcept;

}  // namespace btrieve
