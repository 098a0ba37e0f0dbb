// A transaction over several files, in the files themselves. The first file written to coordinates:
// its commit holds, beside its own changes, a redo of what happens to every other file, and decides
// the transaction. Before that each other file gets an intent, naming transaction and coordinator,
// so that whoever finds it after a crash knows where to look. docs/durability.md tells the whole.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "btrieve/files/DataFile.h"
#include "btrieve/files/RecordWriter.h"

namespace btrieve {

using TransactionNumber = std::vector<uint8_t>;  // 16 random bytes

TransactionNumber NewTransactionNumber();
// Its lock bytes in each file that has its intent; see lockbyte.
uint64_t OwnerByteOf(ByteView number) noexcept;
uint64_t SettlerByteOf(ByteView number) noexcept;

struct Intent {
  TransactionNumber number;
  std::string coordinator;  // as RelativeTo gives it
};
std::vector<Intent> ReadIntents(DataFile& file);
// Within a write transaction.
void AddIntent(DataFile& file, const Intent& intent);
// False when somebody has settled it meanwhile.
bool RemoveIntent(DataFile& file, const TransactionNumber& number);

// What the coordinator says counts only once it cannot change any more: neither by a commit that
// is in its log and not yet published, nor by a power cut after the decision has been acted upon.
// Then it is the state being read there. Throws.
void MakeDecisionFinal(DataFile& coordinator);

struct RedoPart {
  TransactionNumber number;
  std::string file;  // as RelativeTo gives it
};
std::vector<RedoPart> ReadRedoParts(DataFile& coordinator);
void AddRedo(DataFile& coordinator, const RedoPart& part, const LoggedRecord& record);
void RemoveRedo(DataFile& coordinator, const RedoPart& part);
void ForEachRedo(DataFile& coordinator, const RedoPart& part,
                 const std::function<void(const LoggedRecord&)>& action);

}  // namespace btrieve
