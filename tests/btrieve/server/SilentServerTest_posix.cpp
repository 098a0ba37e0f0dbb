// A server that takes the connection and says nothing: an end to every wait.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "ServerSite.h"

namespace btrieve::test {
namespace {

using namespace std::chrono_literals;
using server::ServerLink;

class SilentServer : public ServerSite {};

TEST_F(SilentServer, IsWaitedForNoLongerThanItSays) {
  const Folder folder;
  sockaddr_un place{};
  place.sun_family = AF_UNIX;
  const std::string path = folder.Path(".s.PGSQL.1");
  ASSERT_LT(path.size(), sizeof place.sun_path);
  std::copy(path.begin(), path.end(), place.sun_path);
  const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&place), sizeof place), 0);
  ASSERT_EQ(listen(listener, 1), 0);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(StatusOf([&] { ServerLink::To(AddressWith("host", folder.Text(), "1")); }), kNotActive);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, server::kConnectLimit + 3s);
  close(listener);
}

}  // namespace
}  // namespace btrieve::test
