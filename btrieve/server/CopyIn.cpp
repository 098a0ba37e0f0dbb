#include "btrieve/server/CopyIn.h"

#include <utility>

namespace btrieve::server {
namespace {

constexpr size_t kSendAt = 65536;  // bytes
// The mark, then two words of 32 bits: no flags, no further head.
constexpr char kStart[] = "PGCOPY\n\377\r\n\0\0\0\0\0\0\0\0\0";
constexpr uint16_t kNoMoreRows = 0xFFFF;
constexpr uint32_t kNull = 0xFFFFFFFF;

}  // namespace

CopyIn::CopyIn(ServerLink& link, const std::string& table, uint16_t columns)
    : link_(&link), use_(link.use_), columns_(columns), rows_(kStart, sizeof kStart - 1) {
  const std::string text = "COPY " + table + " FROM STDIN WITH (FORMAT binary)";
  if (!link.IsAlive()) throw Failure{kNotActive};
  if (!link.client_.PQsendQuery(link.connection_, text.c_str())) link.Break();
  ++link.roundTrips_;
  const auto end = link.AnswerEnd();
  link.Flush(end);
  link.TakeAnswer(end, true);
}

CopyIn::~CopyIn() {
  if (!link_ || !link_->IsAlive()) return;
  try {
    End("given up");
  } catch (const Failure&) {  // as it was meant to
  }
}

// The high byte first.
template <class Number>
void CopyIn::Put(Number number) {
  for (int bit = 8 * sizeof number - 8; bit >= 0; bit -= 8) {
    rows_.push_back(static_cast<char>(number >> bit));
  }
}

void CopyIn::BeginRow() {
  if (rows_.size() >= kSendAt) Send();
  Put(columns_);
}

void CopyIn::Add(int64_t number) {
  Put(uint32_t{sizeof number});
  Put(static_cast<uint64_t>(number));
}

void CopyIn::Add(ByteView bytes) {
  Put(static_cast<uint32_t>(bytes.size()));
  rows_.append(bytes.begin(), bytes.end());
}

void CopyIn::AddNull() { Put(kNull); }

// A server that has refused a row takes no more: why stands in its answer.
void CopyIn::Send() {
  const auto end = link_->AnswerEnd();
  int taken = 0;
  while (taken == 0) {
    taken = link_->client_.PQputCopyData(link_->connection_, rows_.data(),
                                         static_cast<int>(rows_.size()));
    if (taken >= 0) link_->Flush(end);
  }
  rows_.clear();
  if (taken > 0) return;
  ServerLink* link = std::exchange(link_, nullptr);
  link->TakeAnswer(end);
  link->Break();
}

void CopyIn::End(const char* fault) {
  ServerLink* link = std::exchange(link_, nullptr);
  const auto end = link->AnswerEnd();
  int taken = 0;
  while (taken == 0) {
    taken = link->client_.PQputCopyEnd(link->connection_, fault);
    if (taken >= 0) link->Flush(end);
  }
  link->TakeAnswer(end);
  if (taken < 0) link->Break();
}

void CopyIn::Finish() {
  Put(kNoMoreRows);
  Send();
  End(nullptr);
}

}  // namespace btrieve::server
