// The statement that adds many records to a file on a server: their columns as arrays, and the
// file's counters. A value that is taken refuses it.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "btrieve/server/ServerLayout.h"
#include "btrieve/storage/RowChange.h"

namespace btrieve::server {

// An array of the server's, of one dimension, in its binary form: dimensions, whether there are
// nulls, type, count and lower bound, then each element behind its length, high bytes first.
class ArrayBytes {
 public:
  enum class Type : uint32_t { Bytes = 17, Number = 20 };  // the server's numbers for its types
  explicit ArrayBytes(Type type, size_t count);

  void Add(ByteView element);
  void Add(int64_t element);
  void AddNull();
  ByteView View() const noexcept { return bytes_; }

 private:
  void Put(uint32_t value);
  std::vector<uint8_t> bytes_;
};

class BlockStatement {
 public:
  // All stay until the statement has been sent, as do the changes.
  BlockStatement(const ServerSpec& spec, std::string table, std::string files)
      : spec_(spec), table_(std::move(table)), files_(std::move(files)) {}

  // Its answer is a row with the number of records added; `head` and its lack as in RowStatement.
  Question Make(std::span<const RowChange> changes, const Head* head);
  static constexpr int kCountsColumn = 1;

 private:
  void MakeColumns(std::span<const RowChange> changes);
  std::string Array(size_t column, const char* type);
  std::string CountText(size_t slot, const std::string& entries);
  std::string Number(int64_t number);
  std::string HeadText(const Head& head, const std::string& counts);

  const ServerSpec& spec_;
  std::string table_;
  std::string files_;
  Question question_;
  int parameters_ = 0;
  std::vector<ArrayBytes> columns_;  // pos, ver, num, data, then by slot
};

}  // namespace btrieve::server
