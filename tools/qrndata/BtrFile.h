// The record manager's calls in the tool's terms: files that close themselves, transactions that
// undo themselves, statuses that say what they mean.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "btrieve/keys/KeySpec.h"
#include "btrieve/system/Status.h"
#include "tools/qrndata/Failure.h"

namespace qrndata {

using Status = btrieve::Status;
using Bytes = std::vector<uint8_t>;

inline constexpr int8_t kNoKey = BtrNoKey;
inline constexpr size_t kMaxRecordSize = BtrLongestRecord;

// "status 12 (file not found)".
std::string StatusText(Status status);

// Throws Failure (kSystem) "what: status 12 (...)" unless the status is 0.
void Require(Status status, const std::string& what);

// What Stat tells about a file.
struct FileStat {
  btrieve::FileSpec spec;
  uint32_t records = 0;
  std::vector<uint32_t> uniqueValues;  // one a key, as the file itself counts them
};

enum class Access : int8_t {
  ReadWrite = BtrModeNormal,
  ReadOnly = BtrModeReadOnly,
  Exclusive = BtrModeExclusive
};

// One open data file and its place in it. The position block stays where it is: not movable.
class BtrFile {
 public:
  // Throws Failure (kSystem) that names the file.
  BtrFile(const std::filesystem::path& path, Access access);
  BtrFile(const BtrFile&) = delete;
  BtrFile& operator=(const BtrFile&) = delete;
  ~BtrFile();

  // Creates a file from a Create block. 59 when it exists and may not be replaced.
  [[nodiscard]] static Status Create(const std::filesystem::path& path,
                                     std::span<const uint8_t> block, bool replace);

  // Says whether all that was written is on stable storage. The file is closed in any case.
  [[nodiscard]] Status Close();

  // The path for messages: UTF-8.
  const std::string& Name() const noexcept { return name_; }

  // Throws Failure when the file does not tell.
  FileStat Stat();

  // The record comes back changed where a number was given to it.
  [[nodiscard]] Status Insert(Bytes& record);

  // Inserts as many records as it can of `block` (a count and, for each record, its length and
  // bytes, all words of 16 bits): the status is that of the first one that could not be. `block` is
  // lost.
  [[nodiscard]] Status InsertMany(Bytes& block, size_t& inserted);
  // The record that was read last.
  [[nodiscard]] Status Update(Bytes& record);

  // Gets: first, last, next (along a key), step first, step next. `record` is cut to the record's
  // length.
  [[nodiscard]] Status GetFirst(int8_t key, Bytes& record);
  [[nodiscard]] Status GetLast(int8_t key, Bytes& record);
  [[nodiscard]] Status GetNext(int8_t key, Bytes& record);
  [[nodiscard]] Status StepFirst(Bytes& record);
  [[nodiscard]] Status StepNext(Bytes& record);

  // The first record with the value.
  [[nodiscard]] Status GetEqual(int8_t key, std::span<const uint8_t> value, Bytes& record);
  // Whether key `key` holds the value; the record is not read.
  [[nodiscard]] Status FindKey(int8_t key, std::span<const uint8_t> value);

  [[nodiscard]] Status Position(uint32_t& position);
  // Whether there is a record at a position; a Failure where that cannot be found out.
  bool HasRecordAt(uint32_t position);

  // An extended read: `request` is replaced by the reply, cut to its length.
  [[nodiscard]] Status ReadExtended(bool alongKey, int8_t key, Bytes& request);

 private:
  Status Call(uint16_t operation, void* data, uint32_t* length, int8_t key);
  void PutKey(std::span<const uint8_t> value);
  Status Read(uint16_t operation, int8_t key, Bytes& record);

  std::string name_;
  bool isOpen_ = true;
  std::array<uint8_t, BtrPositionBlockSize> posBlock_{};
  std::array<uint8_t, BtrKeyBufferSize> keyBuffer_{};
};

// Who else works on the files of a transaction.
enum class Sharing {
  Alone,       // nobody: each file is held whole, which costs least
  WithOthers,  // other programs go on, but for the records and unique values that are written
};

// The process's transaction. Undone at its end unless committed.
class Transaction {
 public:
  explicit Transaction(Sharing sharing = Sharing::Alone);  // throws Failure when none can be begun
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();

  // Whatever the status, the transaction is over.
  [[nodiscard]] Status Commit();

 private:
  bool isOpen_ = true;
};

}  // namespace qrndata
