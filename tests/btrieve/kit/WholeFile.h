// A whole file read in every way there is, which must all give the same.
#pragma once

#include <set>

#include "Calls.h"

namespace btrieve::test {

// The records that a first and a next operation reach, as hex; a last status other than 9 stands
// among them as "status 2".
std::multiset<std::string> Reached(Client& client, int block, int first, int next, int key,
                                   size_t room);

// All records, by place; along each of the keys 0..keys-1, and by Stat's count, there must be the
// same. The result is empty, or says what differs.
std::string ReadEveryWay(Client& client, int block, int keys, size_t room,
                         std::multiset<std::string>& records);

}  // namespace btrieve::test
