// Writing files so that a full disk, a write protection or a power failure never costs the old
// ones: new files are written beside them and flushed, and only when all are whole put in their
// places.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qrn::designer {

struct NewFile {
  std::string path;  // UTF-8
  std::string_view bytes;
};

// Writes all files, put in place in the order given, each old one kept beside as PATH.bak instead
// of the one kept before. Empty, or the path and the system's reason, UTF-8: then every file is as
// it was, but for a PATH.bak where the very last step failed, and nothing half written is left.
std::string SaveFiles(const std::vector<NewFile>& files);

// The system's part; each gives the system's reason, UTF-8, empty when done.
//
// Writes a file anew and returns when its bytes are on the disk.
std::string WriteWholeFile(const std::string& path, std::string_view bytes);
// Gives a file another name in one step; a file that has it gives way.
std::string RenameFile(const std::string& from, const std::string& to);
void RemoveFile(const std::string& path) noexcept;
bool FileStands(const std::string& path) noexcept;
// A file or, while there is none, nothing but its folder: what the system says of writing it.
std::string WhyNotWritable(const std::string& path);

}  // namespace qrn::designer
