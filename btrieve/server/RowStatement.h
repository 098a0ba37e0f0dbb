// The statement that carries out a change of one record of a file on a server: the record with its
// entries, and the file's counters, those of different values counted from the entries that stand
// beside it. Nothing of it happens where a value is taken, or kept by another process.
#pragma once

#include <string>
#include <vector>

#include "btrieve/server/ServerLayout.h"
#include "btrieve/storage/ForeignFile.h"

namespace btrieve::server {

class RowStatement {
 public:
  // All stay until the statement has been sent, as do the change and the terms.
  RowStatement(const ServerSpec& spec, std::string table, std::string files)
      : spec_(spec), table_(std::move(table)), files_(std::move(files)) {}

  // One text for each kind of change. Without a head the file's counters stay, and the answer tells
  // from column kCountsColumn on, by slot, how many different values come. `object` is the first
  // key of the file's locks.
  Question Make(const RowChange& change, const Head* head, const CarryTerms& terms, int32_t object);
  static constexpr int kCountsColumn = 2;

  // 0, 5, 84 of its answer.
  static Status StatusOf(const Rows& answer, const RowChange& change, bool writesHead);

 private:
  std::string Number(int64_t number);
  std::string NumberOrNull(int64_t number, bool isThere);
  std::string Bytes(ByteView bytes);
  std::string BytesOrNull(const Entry& entry);
  std::string FreeText(const CarryTerms& terms, int32_t object);
  std::string TakenText(const RowChange& change);
  std::string CountText(size_t slot, const KeyChange& key);
  std::string GroupText(size_t slot, const Entry& entry);
  std::string RowText(const RowChange& change);
  std::string HeadText(const Head& head);
  std::string KeyName(size_t slot) const { return KeyColumn(spec_.keyIds[slot]); }

  const ServerSpec& spec_;
  std::string table_;
  std::string files_;
  Question question_;
  int parameters_ = 0;
  std::string position_;
  std::vector<std::string> after_;  // by slot: what stands for the entry that comes
  std::vector<Entry> bounds_;       // of groups of values
};

}  // namespace btrieve::server
