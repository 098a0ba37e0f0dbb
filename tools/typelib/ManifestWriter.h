// Writes the assembly manifest, by which a program finds the module's classes without a
// registration, from the rows that the registration scripts are written from.
#pragma once

#include <filesystem>
#include <string>

namespace qrn {

// UTF-8, lines ended by a line feed. Programs name the assembly "qrnbt350" of this version as one
// that they depend on, and keep the file, as qrnbt350.manifest, with the module beside themselves.
std::string AssemblyManifest();

// Throws std::runtime_error where the file cannot be written.
void WriteManifest(const std::filesystem::path& folder);

}  // namespace qrn
