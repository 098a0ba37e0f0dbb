// One file out of a zip file.
#pragma once

#include <string>

namespace qrndata::test {

// Uncompressed; empty when there is none of that name.
std::string ZipEntry(const std::string& zip, const std::string& name);

}  // namespace qrndata::test
