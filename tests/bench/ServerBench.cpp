// A walk through a file on a server beside a cursor of the server's that is fetched by fifties. Run
// by scripts/server.sh, which starts the server and names it.
#include "Records.h"
#include "btrieve/server/ServerFile.h"
#include "btrieve/server/Transfer.h"

namespace bench {
namespace {

using namespace btrieve;
using server::ServerLink;

constexpr uint32_t kRecordsThere = 100000;
constexpr char kSchema[] = "bench";
constexpr char kTable[] = "records";

server::LinkFile Place() {
  server::LinkFile place{{}, kSchema, kTable};
  const char* server = std::getenv("QRN_SERVER");
  Check(server != nullptr, "to be run by scripts/server.sh");
  Check(server::ReadServerWords(server, place.server).empty(), "QRN_SERVER is no address");
  return place;
}

ServerLink& Link() {
  static const std::shared_ptr<ServerLink> link = ServerLink::To(Place().server);
  return *link;
}

std::string LinkedFile() {
  std::string path = Workplace() + "/linked.btr";
  { const BtrieveFile local(path, kRecordsThere); }
  BTRCALL(BtrOpReset, nullptr, nullptr, nullptr, nullptr, 0, 0);
  Storage file;
  file.Open(path);
  file.EnterRead();
  Link().Run("DROP SCHEMA IF EXISTS bench CASCADE");
  server::MakeServerSchema(Link(), kSchema);
  server::ServerTransaction transaction(ServerLink::To(Place().server));
  server::CopyToServer(file, Link(), kSchema, kTable);
  transaction.Commit();
  Link().Run("VACUUM ANALYZE bench.records");
  file.Close();
  std::FILE* out = std::fopen(path.c_str(), "wb");
  const std::string text = server::WriteLinkFile(Place());
  Check(out != nullptr && std::fwrite(text.data(), 1, text.size(), out) == text.size(),
        "the link file could not be written");
  std::fclose(out);
  return path;
}

// The linked file, open for the program's length.
class Linked {
 public:
  Linked() {
    std::string path = LinkedFile();
    uint32_t length = 0;
    const int status =
        BTRCALL(BtrOpOpen, block_, nullptr, &length, path.data(), 255, BtrModeNormal);
    Check(status == 0, "the linked file could not be opened");
  }
  int Get(uint16_t operation) {
    uint32_t length = kRecordLength;
    return BTRCALL(operation, block_, record_.data(), &length, key_, 255, 0);
  }
  const Record& Last() const { return record_; }

 private:
  uint8_t block_[BtrPositionBlockSize];
  uint8_t key_[255];
  Record record_;
};

void WalkLinked() {
  static Linked linked;
  uint32_t count = 0;
  uint64_t sum = 0;
  const uint64_t before = Link().RoundTrips();
  for (int status = linked.Get(BtrOpGetFirst); status == 0; status = linked.Get(BtrOpGetNext)) {
    ++count;
    sum += linked.Last()[31];
  }
  Check(count == kRecordsThere && sum != 0, "the walk went wrong");
  static bool told = false;
  if (!std::exchange(told, true)) {
    std::printf("round trips of a walk through %u records: %llu\n", count,
                static_cast<unsigned long long>(Link().RoundTrips() - before));
  }
}

void WalkByHand() {
  uint32_t count = 0;
  uint64_t sum = 0;
  Link().Run("BEGIN; DECLARE walk NO SCROLL CURSOR FOR SELECT data FROM bench.records ORDER BY k1");
  while (true) {
    const server::Rows rows = Link().Ask("FETCH 50 FROM walk");
    if (rows.Count() == 0) break;
    for (int row = 0; row < rows.Count(); ++row, ++count) sum += rows.Bytes(row, 0)[31];
  }
  Link().Run("COMMIT");
  Check(count == kRecordsThere && sum != 0, "the cursor went wrong");
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  Figure("100,000 records along a key on a server, over a cursor fetched by fifties", 2.0,
         WalkLinked, WalkByHand);
  return RunRatios(argc, argv);
}
