#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <stdexcept>

#include "HostileProxy.h"

namespace btrieve::test {
namespace {

constexpr int kLookMilliseconds = 20;

sockaddr_in PlaceOf(int port) {
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  place.sin_port = htons(static_cast<uint16_t>(port));
  return place;
}

bool SendAll(int to, const uint8_t* bytes, size_t size) {
  while (size > 0) {
    const ssize_t sent = send(to, bytes, size, MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes += sent;
    size -= static_cast<size_t>(sent);
  }
  return true;
}

}  // namespace

HostileProxy::HostileProxy(int serverPort, Harm harm, size_t behind, uint32_t seed)
    : serverPort_(serverPort), harm_(harm), behind_(behind), choices_(seed) {
  listener_ = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in place = PlaceOf(0);
  auto* address = reinterpret_cast<sockaddr*>(&place);
  socklen_t size = sizeof place;
  if (bind(listener_, address, size) != 0 || listen(listener_, 4) != 0 ||
      getsockname(listener_, address, &size) != 0) {
    throw std::runtime_error("the proxy has no port");
  }
  port_ = ntohs(place.sin_port);
  thread_ = std::thread([this] { Run(); });
}

HostileProxy::~HostileProxy() {
  stops_ = true;
  thread_.join();
  close(listener_);
}

void HostileProxy::Run() {
  while (!stops_) {
    pollfd waited{listener_, POLLIN, 0};
    if (poll(&waited, 1, kLookMilliseconds) <= 0) continue;
    const int client = accept(listener_, nullptr, nullptr);
    if (client < 0) continue;
    Serve(client);
    close(client);
  }
}

void HostileProxy::Serve(int client) {
  const int server = socket(AF_INET, SOCK_STREAM, 0);
  const sockaddr_in place = PlaceOf(serverPort_);
  bool lives = connect(server, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0;
  while (lives && !stops_) {
    std::array<pollfd, 2> waited{{{client, POLLIN, 0}, {server, POLLIN, 0}}};
    if (poll(waited.data(), waited.size(), kLookMilliseconds) <= 0) continue;
    if (waited[0].revents != 0) lives = HandOn(client, server);
    if (lives && waited[1].revents != 0) lives = HandOnHarmed(server, client);
  }
  close(server);
}

bool HostileProxy::HandOn(int from, int to) {
  std::array<uint8_t, 4096> bytes;
  const ssize_t size = recv(from, bytes.data(), bytes.size(), 0);
  return size > 0 && SendAll(to, bytes.data(), static_cast<size_t>(size));
}

void HostileProxy::TurnBits(uint8_t* bytes, size_t size) {
  for (uint32_t times = 1 + choices_.Pick(4); times > 0; --times) {
    bytes[choices_.Pick(static_cast<uint32_t>(size))] ^=
        static_cast<uint8_t>(1 + choices_.Pick(255));
  }
}

bool HostileProxy::HandOnHarmed(int from, int to) {
  std::array<uint8_t, 4096> bytes;
  const ssize_t got = recv(from, bytes.data(), bytes.size(), 0);
  if (got <= 0) return false;
  const auto size = static_cast<size_t>(got);
  const size_t before = std::min(size, behind_ - std::min(behind_, said_));
  said_ += size;
  if (before == size || harm_ == Harm::None) return SendAll(to, bytes.data(), size);
  if (harm_ == Harm::Cut) {
    SendAll(to, bytes.data(), before);
    return false;
  }
  if (harm_ == Harm::Repeat)
    return SendAll(to, bytes.data(), size) && SendAll(to, bytes.data(), size);
  TurnBits(bytes.data() + before, size - before);
  return SendAll(to, bytes.data(), size);
}

}  // namespace btrieve::test
