// What a server has answered, in the client library's memory. Its columns come in binary: bytes as
// they are, numbers of eight bytes, high byte first.
//
// A server may be any program: whatever is asked of a row is checked, and what cannot be there
// throws Failure (2).
#pragma once

#include <cstdint>
#include <memory>

#include "btrieve/keys/Entry.h"
#include "btrieve/pages/BigEndian.h"
#include "btrieve/pages/Sqlite.h"
#include "btrieve/server/Client.h"

namespace btrieve::server {

class Rows {
 public:
  Rows() = default;
  // `client` stays for the process's length.
  Rows(const Client& client, PgResult* result) : client_(&client), result_(result, Clear{&client}) {
    state_ = client.PQresultStatus(result);
    count_ = client.PQntuples(result);
    columns_ = client.PQnfields(result);
  }

  int Count() const noexcept { return count_; }
  // As the library tells it.
  int State() const noexcept { return state_; }

  bool IsNull(int row, int column) const {
    Check(row, column);
    return client_->PQgetisnull(result_.get(), row, column) != 0;
  }
  // Valid as long as these rows are.
  ByteView Bytes(int row, int column) const {
    if (IsNull(row, column)) ThrowDamaged();
    const auto* bytes = client_->PQgetvalue(result_.get(), row, column);
    const int size = client_->PQgetlength(result_.get(), row, column);
    if (bytes == nullptr || size < 0) ThrowDamaged();
    return {reinterpret_cast<const uint8_t*>(bytes), static_cast<size_t>(size)};
  }
  bool Truth(int row, int column) const {
    const ByteView bytes = Bytes(row, column);
    if (bytes.size() != 1) ThrowDamaged();
    return bytes[0] != 0;
  }
  int64_t Number(int row, int column) const {
    const ByteView bytes = Bytes(row, column);
    if (bytes.size() != sizeof(int64_t)) ThrowDamaged();
    return static_cast<int64_t>(Big64(bytes.data()));
  }

 private:
  struct Clear {
    const Client* client;
    void operator()(PgResult* result) const noexcept { client->PQclear(result); }
  };

  void Check(int row, int column) const {
    if (row < 0 || row >= count_ || column < 0 || column >= columns_) ThrowDamaged();
  }

  const Client* client_ = nullptr;
  std::unique_ptr<PgResult, Clear> result_;
  int state_ = 0;
  int count_ = 0;
  int columns_ = 0;
};

}  // namespace btrieve::server
