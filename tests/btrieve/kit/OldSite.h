// A folder as a program of the nineties left it: dictionary files with shorter rows and fewer keys
// than usual, numbers counted from 1, and two tables whose files are of version 5.
#pragma once

#include <filesystem>

#include "OldFileMaker.h"

namespace btrieve::test {

class OldSite {
 public:
  explicit OldSite(std::filesystem::path folder);
  OldSite(const OldSite&) = delete;
  OldSite& operator=(const OldSite&) = delete;

  // All files anew, owned or not.
  void Write(bool owned = false) const;

  static constexpr int kPeople = 10;
  static constexpr int kVisits = 11;
  // A person has a code (key 0), and a name with the code (key 1); a visit has a person's code (key
  // 0, duplicates), a day (key 1, duplicates) and a text.
  static Bytes Person(int32_t code, const char* name);
  static Bytes Visit(int32_t person, int32_t day, const char* text);

  OldFileMaker& People() { return files_[3].maker; }
  OldFileMaker& Visits() { return files_[4].maker; }

 private:
  struct File {
    File(const char* fileName, FileSpec fileSpec)
        : name(fileName), spec(std::move(fileSpec)), maker(spec, {}) {}
    const char* name;
    FileSpec spec;
    OldFileMaker maker;
  };

  void AddTable(int id, const char* name, const char* location);
  void AddField(int table, const char* name, uint8_t type, int size);
  void AddSegment(int table, int field, int key, int part, int flags);
  void DescribeTables();

  std::filesystem::path folder_;
  std::array<File, 5> files_;
  int nextField_ = 1;
  int nextOffset_ = 0;
};

}  // namespace btrieve::test
