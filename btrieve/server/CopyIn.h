// Rows on their way into a table by the server's COPY, in its binary form.
//
// Goes with a transaction of the server's: after a failure, or without Finish, that can only be
// undone. Throws as ServerLink does.
#pragma once

#include <string>

#include "btrieve/server/ServerLink.h"

namespace btrieve::server {

class CopyIn {
 public:
  // `table` as it stands in SQL; each row fills its first `columns` columns.
  CopyIn(ServerLink& link, const std::string& table, uint16_t columns);
  ~CopyIn();
  CopyIn(const CopyIn&) = delete;
  CopyIn& operator=(const CopyIn&) = delete;

  // A row, then its columns one after the other.
  void BeginRow();
  void Add(int64_t number);
  void Add(ByteView bytes);
  void AddNull();

  // Returns when the server has taken everything.
  void Finish();

 private:
  template <class Number>
  void Put(Number number);
  void Send();
  void End(const char* fault);

  ServerLink* link_;  // null once the copy is over
  std::unique_lock<std::recursive_mutex> use_;
  uint16_t columns_;
  std::string rows_;  // not sent yet
};

}  // namespace btrieve::server
