// A bank in four files, for tests in which processes die: accounts in the north and in the south, a
// ledger of transfers, and numbers that a key assigns. What a step does to it is told as effects,
// which come to the same in any order, so that a witness needs no order of what several processes
// have done to know what must stand in the files.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <sstream>

#include "Calls.h"
#include "WholeFile.h"

namespace btrieve::test {

// The first field of the numbers is the one assigned.
enum BankKey : int { kByBankId, kByField, kByText, kBankKeys };
enum BankFile : int { kNorth, kSouth, kLedger, kNumbers, kBankFiles };

// A record without its key: 12 of its 32 bytes. By file:
//   accounts  balance, what has been carried over from the ledger, notes
//   ledger    account from, account to, amount; an account stands as 100 * file + id
//   numbers   the number assigned, two values of the step's own
using Fields = std::array<int32_t, 3>;

// The records of each file by id: of an account, or of the step that has made the record.
using BankState = std::array<std::map<int32_t, Fields>, kBankFiles>;

constexpr size_t kBankRecordSize = 32;
constexpr int32_t kAccountCount = 8;  // in each of the two files, with ids from 1
constexpr int32_t kOpeningBalance = 1000;

struct Effect {
  enum Kind : char { Put = '+', Add = '~', Remove = '-' };
  Kind kind;
  int file;
  int32_t id;
  Fields fields;  // to put, or to add; nothing for Remove
};

inline bool Apply(const Effect& effect, std::map<int32_t, Fields>& rows) {
  if (effect.kind == Effect::Put) return rows.emplace(effect.id, effect.fields).second;
  const auto row = rows.find(effect.id);
  if (row == rows.end()) return false;
  if (effect.kind == Effect::Remove) {
    rows.erase(row);
  } else {
    for (size_t i = 0; i < effect.fields.size(); ++i) row->second[i] += effect.fields[i];
  }
  return true;
}

inline std::string FieldsText(const Fields& fields) {
  return std::to_string(fields[0]) + "," + std::to_string(fields[1]) + "," +
         std::to_string(fields[2]);
}

inline std::string RowText(const std::map<int32_t, Fields>& rows, int32_t id) {
  const auto row = rows.find(id);
  return row == rows.end() ? "nothing" : FieldsText(row->second);
}

inline void AddDifference(int file, int32_t id, const BankState& found, const BankState& expected,
                          std::map<std::pair<int, int32_t>, std::string>& lines) {
  const auto at = static_cast<size_t>(file);
  const std::string is = RowText(found[at], id);
  const std::string shouldBe = RowText(expected[at], id);
  if (is == shouldBe) return;
  lines[{file, id}] = "file " + std::to_string(file) + " id " + std::to_string(id) + ": " + is +
                      " and not " + shouldBe + "\n";
}

// False when a record to add to or to remove is not there, or one to put is.
inline bool ApplyEffects(const std::vector<Effect>& effects, BankState& state) {
  bool fits = true;
  for (const bool removing : {false, true}) {
    for (const Effect& effect : effects) {
      if ((effect.kind == Effect::Remove) != removing) continue;
      fits = Apply(effect, state[static_cast<size_t>(effect.file)]) && fits;
    }
  }
  return fits;
}

// One line: "+ 2 77 101 205 30 - 2 60 0 0 0".
inline std::string EffectsText(const std::vector<Effect>& effects) {
  std::ostringstream text;
  for (const Effect& effect : effects) {
    text << ' ' << static_cast<char>(effect.kind) << ' ' << effect.file << ' ' << effect.id;
    for (const int32_t field : effect.fields) text << ' ' << field;
  }
  return text.str();
}
inline std::vector<Effect> EffectsOf(const std::string& text) {
  std::istringstream words(text);
  std::vector<Effect> effects;
  char kind;
  while (words >> kind) {
    Effect effect{static_cast<Effect::Kind>(kind), 0, 0, {}};
    words >> effect.file >> effect.id;
    for (int32_t& field : effect.fields) words >> field;
    effects.push_back(effect);
  }
  return effects;
}
inline std::string StateText(const BankState& state) {
  std::ostringstream text;
  for (const auto& rows : state) {
    for (const auto& [id, fields] : rows) {
      text << id << ' ' << fields[0] << ' ' << fields[1] << ' ' << fields[2] << ' ';
    }
    text << "| ";
  }
  return text.str();
}
inline BankState StateOf(const std::string& text) {
  std::istringstream words(text);
  BankState state;
  for (auto& rows : state) {
    for (std::string word; words >> word && word != "|";) {
      Fields& fields = rows[std::stoi(word)];
      for (int32_t& field : fields) words >> field;
    }
  }
  return state;
}
// "file 2 id 77: 101,205,30 and not nothing", a line each.
inline std::string Differences(const BankState& found, const BankState& expected) {
  std::map<std::pair<int, int32_t>, std::string> lines;
  for (int file = 0; file < kBankFiles; ++file) {
    const auto at = static_cast<size_t>(file);
    for (const auto& row : found[at]) AddDifference(file, row.first, found, expected, lines);
    for (const auto& row : expected[at]) AddDifference(file, row.first, found, expected, lines);
  }
  std::string text;
  for (const auto& line : lines) text += line.second;
  return text;
}

// What holds at any moment: the balances' sum, and each balance is the ledger's work. Empty, or
// what is wrong.
inline std::string AuditText(const BankState& state) {
  std::map<int32_t, int32_t> byLedger;
  for (const auto& [id, entry] : state[kLedger]) {
    byLedger[entry[0]] -= entry[2];
    byLedger[entry[1]] += entry[2];
  }
  int32_t sum = 0;
  std::string faults;
  for (const int file : {kNorth, kSouth}) {
    for (const auto& [id, account] : state[static_cast<size_t>(file)]) {
      sum += account[0];
      if (account[0] == kOpeningBalance + account[1] + byLedger[100 * file + id]) continue;
      faults += "account " + std::to_string(100 * file + id) + " is not the ledger's; ";
    }
  }
  if (sum != 2 * kAccountCount * kOpeningBalance) faults += "the sum is " + std::to_string(sum);
  return faults;
}

// The files, by calls; file f is opened as block f.
inline Bytes BankRecord(int file, int32_t id, const Fields& fields) {
  const std::string text =
      "file " + std::to_string(file) + " " + std::to_string((fields[1] + fields[2]) % 5);
  return Number(id) + Number(fields[0]) + Number(fields[1]) + Number(fields[2]) + Padded(text, 16);
}
inline Bytes BankBlock(int file) {
  const Seg first = file == kNumbers ? Seg{.position = 5, .flags = 0x100, .type = 15}
                                     : Seg{.position = 5, .flags = 0x103, .type = 1};
  return CreateBlock({.recordLength = kBankRecordSize},
                     {{.position = 1, .flags = 0x100, .type = 1},
                      first,
                      {.position = 17, .length = 16, .flags = 0x103}});
}
inline bool OpenBank(Client& client, const std::vector<std::string>& paths) {
  for (int file = 0; file < kBankFiles; ++file) {
    const CallIn in{.key = PathKey(paths[static_cast<size_t>(file)])};
    if (client.Call(kOpen, file, in).status != 0) return false;
  }
  return true;
}
// Creates the files and opens the accounts.
inline bool MakeBank(Client& client, const std::vector<std::string>& paths) {
  for (int file = 0; file < kBankFiles; ++file) {
    const CallIn in{.data = BankBlock(file), .key = PathKey(paths[static_cast<size_t>(file)])};
    if (client.Call(kCreate, kBlocks - 1, in).status != 0) return false;
  }
  if (!OpenBank(client, paths)) return false;
  for (int32_t id = 1; id <= kAccountCount; ++id) {
    for (const int file : {kNorth, kSouth}) {
      const CallIn in{.data = BankRecord(file, id, {kOpeningBalance, 0, 0}), .keyNumber = -1};
      if (client.Call(kInsert, file, in).status != 0) return false;
    }
  }
  return true;
}
inline std::optional<std::pair<int32_t, Fields>> BankRow(int file, const Bytes& record) {
  const auto id = NumberAt<int32_t>(record, 0);
  const Fields fields = {NumberAt<int32_t>(record, 4), NumberAt<int32_t>(record, 8),
                         NumberAt<int32_t>(record, 12)};
  if (record != BankRecord(file, id, fields)) return std::nullopt;
  return std::pair{id, fields};
}

// By place, in any transaction; the bias is for the first read. Gives the first status that is
// neither 0 nor the end.
inline Status ReadBankFile(Client& client, int file, std::map<int32_t, Fields>& rows,
                           int bias = 0) {
  rows.clear();
  const CallIn in{.room = kBankRecordSize};
  CallOut out = client.Call(kStepFirst + bias, file, in);
  for (; out.status == 0; out = client.Call(kStepNext, file, in)) {
    const auto row = BankRow(file, out.Returned());
    if (!row || !rows.insert(*row).second) return kIoError;
  }
  return out.status == kEndOfFile ? kOk : out.status;
}
// Also along every key and by count; `positions` are those of the records. Empty, or what is wrong.
inline std::string ReadBankEveryWay(
    Client& client, BankState& state,
    std::array<std::map<uint32_t, int32_t>, kBankFiles>& positions) {
  for (int file = 0; file < kBankFiles; ++file) {
    std::multiset<std::string> records;
    std::string differs = ReadEveryWay(client, file, kBankKeys, kBankRecordSize, records);
    if (!differs.empty()) return differs;
    auto& rows = state[static_cast<size_t>(file)];
    rows.clear();
    for (const std::string& hex : records) {
      const auto row = BankRow(file, Hex(hex));
      if (!row || !rows.insert(*row).second) return "file " + std::to_string(file) + ": " + hex;
      const CallIn find{.room = kBankRecordSize, .key = Number(row->first)};
      if (client.Call(kGetEqual, file, find).status != 0) return "not found again: " + hex;
      const CallOut place = client.Call(kGetPosition, file, {.room = 4});
      positions[static_cast<size_t>(file)][NumberAt<uint32_t>(place.data, 0)] = row->first;
    }
  }
  return "";
}

}  // namespace btrieve::test
