// A bank in four files, for tests in which processes die: accounts in the north and in the south, a
// ledger of transfers, and numbers that a key assigns. What a step does to it is told as effects,
// which come to the same in any order, so that a witness needs no order of what several processes
// have done to know what must stand in the files.
#pragma once

#include <array>
#include <map>
#include <optional>

#include "Calls.h"

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

constexpr int32_t kAccountCount = 8;  // in each of the two files, with ids from 1
constexpr int32_t kOpeningBalance = 1000;

struct Effect {
  enum Kind : char { Put = '+', Add = '~', Remove = '-' };
  Kind kind;
  int file;
  int32_t id;
  Fields fields;  // to put, or to add; nothing for Remove
};

// False when a record to add to or to remove is not there, or one to put is.
bool ApplyEffects(const std::vector<Effect>& effects, BankState& state);

// One line: "+ 2 77 101 205 30 - 2 60 0 0 0".
std::string EffectsText(const std::vector<Effect>& effects);
std::vector<Effect> EffectsOf(const std::string& text);
std::string StateText(const BankState& state);
BankState StateOf(const std::string& text);
// "file 2 id 77: 101,205,30 and not nothing", a line each.
std::string Differences(const BankState& found, const BankState& expected);

// What holds at any moment: the balances' sum, and each balance is the ledger's work. Empty, or
// what is wrong.
std::string AuditText(const BankState& state);

// The files, by calls; file f is opened as block f.
Bytes BankRecord(int file, int32_t id, const Fields& fields);
Bytes BankBlock(int file);
bool OpenBank(Client& client, const std::vector<std::string>& paths);
// Creates the files and opens the accounts.
bool MakeBank(Client& client, const std::vector<std::string>& paths);
std::optional<std::pair<int32_t, Fields>> BankRow(int file, const Bytes& record);

// By place, in any transaction; the bias is for the first read. Gives the first status that is
// neither 0 nor the end.
Status ReadBankFile(Client& client, int file, std::map<int32_t, Fields>& rows, int bias = 0);
// Also along every key and by count; `positions` are those of the records. Empty, or what is wrong.
std::string ReadBankEveryWay(Client& client, BankState& state,
                             std::array<std::map<uint32_t, int32_t>, kBankFiles>& positions);

constexpr size_t kBankRecordSize = 32;

}  // namespace btrieve::test
