// Types of a library and rows of tables in one wording, so that the two can be compared.
#pragma once

#include <oaidl.h>

#include <string>
#include <vector>

#include "ole/tables/Members.h"

namespace qrn::test {

// One line a member: "get 1 DbSource() 8", "fn 20 DbOpen(TableName 8, rc 2*) 24 hidden". Types go
// by number, or by name where they have one.
std::vector<std::string> MembersOf(ITypeInfo& type);

std::vector<std::string> MembersOf(const ole::ControlTable& table);
std::vector<std::string> EventsOf(const ole::ControlTable& table);

// "Name = 1 (text)" for each constant.
std::vector<std::string> ConstantsOf(ITypeInfo& type);
std::vector<std::string> ConstantsOf(const ole::EnumTable& table);

std::string Utf8(std::wstring_view text);

}  // namespace qrn::test
