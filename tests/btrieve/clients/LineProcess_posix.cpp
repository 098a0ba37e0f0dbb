#include <poll.h>
#include <unistd.h>

#include "clients/LineProcess.h"

namespace btrieve::test {

namespace {
constexpr int kLongestSilence = 60000;  // milliseconds
}

void LineProcess::Say(const std::string& line) {
  const std::string whole = line + "\n";
  (void)!write(process_.Input(), whole.data(), whole.size());
}

std::optional<std::string> LineProcess::Hear() {
  size_t end;
  while ((end = unread_.find('\n')) == std::string::npos) {
    pollfd ready{process_.Output(), POLLIN, 0};
    if (poll(&ready, 1, kLongestSilence) != 1) return "x hangs";
    char buffer[4096];
    const ssize_t got = read(process_.Output(), buffer, sizeof buffer);
    if (got <= 0) return std::nullopt;
    unread_.append(buffer, static_cast<size_t>(got));
  }
  std::string line = unread_.substr(0, end);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  unread_.erase(0, end + 1);
  return line;
}

}  // namespace btrieve::test
