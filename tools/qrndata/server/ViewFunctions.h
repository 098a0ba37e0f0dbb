// The functions that views call: stored bytes of a field as a value of the server's. They stand in
// the views' schema.
#pragma once

#include <string>

namespace qrndata {

// SQL that makes them all, anew where they are. `schema` is the schema's name. Which character each
// byte or pair of bytes is stands in a table there, filled by whoever makes them.
std::string ViewFunctions(const std::string& schema);
// SQL that drops them, the table, too.
std::string DropViewFunctions(const std::string& schema);

inline constexpr char kCharacters[] = "btrieve_characters";

}  // namespace qrndata
