#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "Proxy.h"
#include "ProxyLane_posix.h"

namespace btrieve::test {
namespace {

using Clock = ProxyLane::Clock;
using namespace std::chrono_literals;

constexpr auto kLook = 20ms;  // for the proxy's end

sockaddr_in PlaceOf(int port) {
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  place.sin_port = htons(static_cast<uint16_t>(port));
  return place;
}

void MakePrompt(int socket) {
  const int on = 1;
  setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  fcntl(socket, F_SETFL, O_NONBLOCK);
}

}  // namespace

class Proxy::Connection : qrn::test::Pinned {
 public:
  Connection(int client, int server, std::unique_ptr<Answers> answers)
      : client_(client), server_(server), answers_(std::move(answers)) {
    MakePrompt(client);
    MakePrompt(server);
  }
  ~Connection() {
    close(client_);
    close(server_);
  }

  std::array<pollfd, 2> Polled() const {
    return {{{client_, static_cast<short>(asked_.Reads() | told_.Writes()), 0},
             {server_, static_cast<short>((ends_ ? 0 : told_.Reads()) | asked_.Writes()), 0}}};
  }
  Clock::time_point Due() const {
    return Speaks() ? Clock::time_point::min() : std::min(asked_.Due(), told_.Due());
  }
  bool IsAsked() const { return wasAsked_; }

  // False at its end.
  bool HandOn(std::span<const pollfd> polled, std::chrono::microseconds delay) {
    wasAsked_ = false;
    constexpr short kAny = POLLIN | POLLHUP | POLLERR;
    if ((polled[0].revents & kAny) != 0 && !TakeQuestion()) return false;
    if (!ends_ && (polled[1].revents & kAny) != 0 && !TakeAnswer(delay)) return false;
    if (Speaks()) Tell({}, delay);
    return asked_.Send() && told_.Send() && !(ends_ && told_.IsEmpty());
  }

 private:
  bool Speaks() const { return !ends_ && answers_ && answers_->GoesOn() && told_.IsEmpty(); }
  bool TakeQuestion() {
    auto question = asked_.Read();
    if (!question) return false;
    wasAsked_ = !question->empty() && std::exchange(wasAnswered_, false);
    asked_.Put(Clock::now(), std::move(*question));
    return true;
  }
  bool TakeAnswer(std::chrono::microseconds delay) {
    const auto answer = told_.Read();
    if (!answer) return false;
    wasAnswered_ = wasAnswered_ || !answer->empty();
    Tell(*answer, delay);
    return true;
  }
  void Tell(const Bytes& answer, std::chrono::microseconds delay) {
    Bytes passed;
    if (!answers_) {
      passed = answer;
    } else {
      ends_ = !answers_->Take(answer, passed);
      delay += answers_->Wait();
    }
    told_.Put(Clock::now() + delay, std::move(passed));
  }

  int client_;
  int server_;
  std::unique_ptr<Answers> answers_;
  ProxyLane asked_{client_, server_};
  ProxyLane told_{server_, client_};
  bool wasAnswered_ = true;  // since it last asked
  bool wasAsked_ = false;    // just now, and had been answered before
  bool ends_ = false;        // with what the client has yet to hear
};

Proxy::Proxy(int serverPort, std::chrono::microseconds delay, Make make)
    : serverPort_(serverPort), delay_(delay), make_(std::move(make)) {
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in place = PlaceOf(0);
  auto* address = reinterpret_cast<sockaddr*>(&place);
  socklen_t size = sizeof place;
  if (bind(listener_, address, size) != 0 || listen(listener_, 64) != 0 ||
      getsockname(listener_, address, &size) != 0) {
    throw std::runtime_error("the proxy has no port");
  }
  port_ = ntohs(place.sin_port);
  thread_ = std::thread([this] { Run(); });
}

Proxy::~Proxy() {
  stops_ = true;
  thread_.join();
  close(listener_);
}

void Proxy::Accept() {
  const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
  if (client < 0) return;
  const int server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in place = PlaceOf(serverPort_);
  auto connection = std::make_unique<Connection>(client, server, make_ ? make_() : nullptr);
  if (connect(server, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0 ||
      errno == EINPROGRESS) {
    connections_.push_back(std::move(connection));
  }
}

void Proxy::Run() {
  prctl(PR_SET_TIMERSLACK, 1000UL);  // nanoseconds: delays are kept to the microsecond
  while (!stops_) {
    std::vector<pollfd> polled = {{listener_, POLLIN, 0}};
    const auto now = Clock::now();
    auto due = now + kLook;
    for (const auto& connection : connections_) {
      for (const pollfd& each : connection->Polled()) polled.push_back(each);
      due = std::min(due, connection->Due());
    }
    const auto left = std::chrono::nanoseconds(std::max(due, now) - now);
    const timespec wait{0, static_cast<long>(left.count())};
    if (ppoll(polled.data(), polled.size(), &wait, nullptr) < 0) continue;
    const std::span<const pollfd> all = polled;
    size_t at = 1;
    std::erase_if(connections_, [&](const auto& connection) {
      const bool lives = connection->HandOn(all.subspan(at, 2), delay_);
      at += 2;
      roundTrips_ += connection->IsAsked();
      return !lives;
    });
    if (polled[0].revents != 0) Accept();
  }
  connections_.clear();
}

}  // namespace btrieve::test
