// A small database on disk, made by the data tool: what the flat functions are walked over.
#pragma once

#include "tests/support/TempFolder.h"

namespace qrn::test {

// Tables by id.
enum CompanyTable : int16_t { kPeople, kNotes, kDays, kTableCount };

// Index positions of People: ByCode (Code), ByPlace (Town, Code), its second segment, ByName
// (Name).
enum PeopleIndex : int16_t { kByCode = 0, kByPlace = 1, kByPlaceCode = 2, kByName = 3 };

class Company {
 public:
  Company();

  std::string Directory() const { return folder_.Text(); }

 private:
  TempFolder folder_;
};

}  // namespace qrn::test
