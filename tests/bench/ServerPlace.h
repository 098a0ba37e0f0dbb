// Files of the tests' server, which scripts/server.sh starts and names, half a millisecond away.
#pragma once

#include <fstream>

#include "btrieve.h"
#include "btrieve/server/ServerFile.h"
#include "btrieve/server/Transfer.h"
#include "tests/bench/Measure.h"
#include "tests/btrieve/kit/Proxy.h"

namespace bench {

using btrieve::server::ServerLink;

inline constexpr std::chrono::microseconds kWay{500};  // more than without, there and back
inline constexpr char kServerSchema[] = "bench";

inline btrieve::server::ServerAddress DirectAddress() {
  btrieve::server::ServerAddress address;
  const char* server = std::getenv("QRN_SERVER");
  Check(server != nullptr, "to be run by scripts/server.sh");
  Check(btrieve::server::ReadServerWords(server, address).empty(), "QRN_SERVER is no address");
  return address;
}

inline std::string& PortOf(btrieve::server::ServerAddress& address) {
  const auto port =
      std::ranges::find(address.words, "port", &std::pair<std::string, std::string>::first);
  Check(port != address.words.end(), "QRN_SERVER names no port");
  return port->second;
}

inline const btrieve::test::Proxy& TheWay() {
  static const btrieve::test::Proxy proxy = [] {
    auto address = DirectAddress();
    return btrieve::test::Proxy(std::stoi(PortOf(address)), kWay);
  }();
  return proxy;
}

inline btrieve::server::LinkFile Place(const std::string& table) {
  btrieve::server::LinkFile place{DirectAddress(), kServerSchema, table};
  PortOf(place.server) = std::to_string(TheWay().Port());
  return place;
}

// What benchmarks ask for by hand goes the same way.
inline ServerLink& Link() {
  static const std::shared_ptr<ServerLink> link = [] {
    auto made = ServerLink::To(Place("").server);
    made->SetAnswerLimit(btrieve::server::kLongAnswerLimit);
    made->Run("SET statement_timeout = 0; DROP SCHEMA IF EXISTS bench CASCADE");
    btrieve::server::MakeServerSchema(*made, kServerSchema);
    return made;
  }();
  return *link;
}

// The data file goes to the server, and a link file takes its place. Nobody has it open.
inline void MoveToServer(const std::string& path, const std::string& table) {
  Link();
  {
    btrieve::Storage file;
    file.Open(path);
    file.EnterRead();
    btrieve::server::ServerTransaction transaction(ServerLink::To(Place(table).server));
    btrieve::server::CopyToServer(file, Link(), kServerSchema, table);
    transaction.Commit();
    file.Close();
  }
  Link().Run("VACUUM ANALYZE bench." + table);
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  Check(static_cast<bool>(out << btrieve::server::WriteLinkFile(Place(table)) << std::flush),
        "the link file could not be written");
}

// How often something goes to the server and waits for it.
template <class Work>
double TripsOf(const Work& work) {
  const uint64_t before = TheWay().RoundTrips();
  work();
  return static_cast<double>(TheWay().RoundTrips() - before);
}

}  // namespace bench
