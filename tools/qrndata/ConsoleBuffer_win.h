// Text to a console of Windows.
#pragma once

#include <windows.h>

#include <streambuf>
#include <string>

namespace qrndata {

// Takes UTF-8 and shows its characters, whatever the console's code page is and however the bytes
// come in.
class ConsoleBuffer : public std::streambuf {
 public:
  // A console's handle; it must outlive the buffer.
  explicit ConsoleBuffer(HANDLE console) : console_(console) {}

 protected:
  int_type overflow(int_type byte) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;
  // What is there of a character that has not wholly come yet is kept.
  int sync() override;

 private:
  HANDLE console_;
  std::string pending_;
};

}  // namespace qrndata
