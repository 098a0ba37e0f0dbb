// A good file and ways to make a bad one of it whose page checksums are right, so that the damage
// gets past them.
#pragma once

#include "Calls.h"

namespace btrieve::test {

// 300 records of 40 bytes: id (key 0, unique), id modulo 10 (key 1, duplicates), a text.
constexpr uint16_t kGoodRecord = 40;
constexpr int32_t kGoodRecords = 300;
Bytes GoodRecord(int32_t id);
bool IsGoodRecord(const Bytes& record);
// Its bytes, made once.
const Bytes& GoodFile();

void WriteBytes(const std::string& path, const Bytes& bytes);
Bytes ReadBytes(const std::string& path);
// Gives every whole page the checksum of what it holds now.
void RenewPageSums(Bytes& file);

}  // namespace btrieve::test
