#include "Bank.h"

#include <sstream>

#include "WholeFile.h"

namespace btrieve::test {
namespace {

bool Apply(const Effect& effect, std::map<int32_t, Fields>& rows) {
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

std::string FieldsText(const Fields& fields) {
  return std::to_string(fields[0]) + "," + std::to_string(fields[1]) + "," +
         std::to_string(fields[2]);
}

std::string RowText(const std::map<int32_t, Fields>& rows, int32_t id) {
  const auto row = rows.find(id);
  return row == rows.end() ? "nothing" : FieldsText(row->second);
}

void AddDifference(int file, int32_t id, const BankState& found, const BankState& expected,
                   std::map<std::pair<int, int32_t>, std::string>& lines) {
  const auto at = static_cast<size_t>(file);
  const std::string is = RowText(found[at], id);
  const std::string shouldBe = RowText(expected[at], id);
  if (is == shouldBe) return;
  lines[{file, id}] = "file " + std::to_string(file) + " id " + std::to_string(id) + ": " + is +
                      " and not " + shouldBe + "\n";
}

}  // namespace

// What is removed may have been put by another of them.
bool ApplyEffects(const std::vector<Effect>& effects, BankState& state) {
  bool fits = true;
  for (const bool removing : {false, true}) {
    for (const Effect& effect : effects) {
      if ((effect.kind == Effect::Remove) != removing) continue;
      fits = Apply(effect, state[static_cast<size_t>(effect.file)]) && fits;
    }
  }
  return fits;
}

std::string EffectsText(const std::vector<Effect>& effects) {
  std::ostringstream text;
  for (const Effect& effect : effects) {
    text << ' ' << static_cast<char>(effect.kind) << ' ' << effect.file << ' ' << effect.id;
    for (const int32_t field : effect.fields) text << ' ' << field;
  }
  return text.str();
}

std::vector<Effect> EffectsOf(const std::string& text) {
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

// "7 101 205 30 8 1 102 5 | " and so on, file by file.
std::string StateText(const BankState& state) {
  std::ostringstream text;
  for (const auto& rows : state) {
    for (const auto& [id, fields] : rows) {
      text << id << ' ' << fields[0] << ' ' << fields[1] << ' ' << fields[2] << ' ';
    }
    text << "| ";
  }
  return text.str();
}

BankState StateOf(const std::string& text) {
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

std::string Differences(const BankState& found, const BankState& expected) {
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

std::string AuditText(const BankState& state) {
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

Bytes BankRecord(int file, int32_t id, const Fields& fields) {
  const std::string text =
      "file " + std::to_string(file) + " " + std::to_string((fields[1] + fields[2]) % 5);
  return Number(id) + Number(fields[0]) + Number(fields[1]) + Number(fields[2]) + Padded(text, 16);
}

// Keys: id; the first field, which in the numbers is assigned; the text.
Bytes BankBlock(int file) {
  const Seg first = file == kNumbers ? Seg{.position = 5, .flags = 0x100, .type = 15}
                                     : Seg{.position = 5, .flags = 0x103, .type = 1};
  return CreateBlock({.recordLength = kBankRecordSize},
                     {{.position = 1, .flags = 0x100, .type = 1},
                      first,
                      {.position = 17, .length = 16, .flags = 0x103}});
}

bool OpenBank(Client& client, const std::vector<std::string>& paths) {
  for (int file = 0; file < kBankFiles; ++file) {
    const CallIn in{.key = PathKey(paths[static_cast<size_t>(file)])};
    if (client.Call(kOpen, file, in).status != 0) return false;
  }
  return true;
}

bool MakeBank(Client& client, const std::vector<std::string>& paths) {
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

std::optional<std::pair<int32_t, Fields>> BankRow(int file, const Bytes& record) {
  const auto id = NumberAt<int32_t>(record, 0);
  const Fields fields = {NumberAt<int32_t>(record, 4), NumberAt<int32_t>(record, 8),
                         NumberAt<int32_t>(record, 12)};
  if (record != BankRecord(file, id, fields)) return std::nullopt;
  return std::pair{id, fields};
}

Status ReadBankFile(Client& client, int file, std::map<int32_t, Fields>& rows, int bias) {
  rows.clear();
  const CallIn in{.room = kBankRecordSize};
  CallOut out = client.Call(kStepFirst + bias, file, in);
  for (; out.status == 0; out = client.Call(kStepNext, file, in)) {
    const auto row = BankRow(file, out.Returned());
    if (!row || !rows.insert(*row).second) return kIoError;
  }
  return out.status == kEndOfFile ? kOk : out.status;
}

std::string ReadBankEveryWay(Client& client, BankState& state,
                             std::array<std::map<uint32_t, int32_t>, kBankFiles>& positions) {
  for (int file = 0; file < kBankFiles; ++file) {
    std::multiset<std::string> records;
    const std::string differs = ReadEveryWay(client, file, kBankKeys, kBankRecordSize, records);
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
