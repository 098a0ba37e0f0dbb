// Writes the registration scripts of the classes, from the rows that the classes are made by.
#pragma once

#include <filesystem>
#include <string>

#include "binding/tables/AllTables.h"

namespace qrn {

// The scripts' texts, UTF-8, lines ended by a line feed.
std::string ControlScript(const ole::ControlTable& table);
// Of a property page, which has neither ProgID nor toolbox entries.
std::string PageScript(const char* className, const ole::Guid& classId);
std::string ApplicationScript();

// Writes all scripts into a folder, each as NUMBER.rgs in code page 932 with lines as Windows ends
// them, and scripts.rc, which makes resources of them. Throws std::runtime_error where a file
// cannot be written or a text is none of the code page.
void WriteScripts(const std::filesystem::path& folder);

}  // namespace qrn
