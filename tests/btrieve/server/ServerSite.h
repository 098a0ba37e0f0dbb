// The tests' server, which scripts/server.sh starts and names, with a schema for each test.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>

#include "btrieve/server/ServerFile.h"
#include "btrieve/server/Transfer.h"
#include "btrieve/system/HostFile.h"
#include "kit/DamagedFile.h"

namespace btrieve::test {

class ServerSite : public testing::Test {
 protected:
  void SetUp() override {
    const char* server = std::getenv("QRN_SERVER");
    ASSERT_NE(server, nullptr) << "to be run by scripts/server.sh";
    ASSERT_EQ(server::ReadServerWords(server, address_), "");
    held_ = Link();
    server::MakeServerSchema(*held_, Schema());
  }

  const server::ServerAddress& Address() const { return address_; }
  server::ServerAddress AddressWith(const std::string& word, const std::string& value,
                                    const std::string& port = "") const {
    server::ServerAddress address = address_;
    for (auto& [each, held] : address.words) {
      if (each == word) held = value;
      if (each == "port" && !port.empty()) held = port;
    }
    return address;
  }
  std::shared_ptr<server::ServerLink> Link() const { return server::ServerLink::To(address_); }
  // Another connection to the same server, as another station has it.
  std::shared_ptr<server::ServerLink> OtherLink() const {
    server::ServerAddress other = address_;
    other.words.emplace_back("sslmode", "disable");
    return server::ServerLink::To(other);
  }
  static std::string Schema() {
    return "test_" + std::to_string(testing::UnitTest::GetInstance()->random_seed()) + "_" +
           Lower(testing::UnitTest::GetInstance()->current_test_info()->name());
  }
  server::LinkFile LinkTo(const std::string& table) const { return {address_, Schema(), table}; }
  // The file goes to the server, and a link takes its place.
  void Move(const std::string& path, const std::string& table) const {
    Storage file;
    file.Open(path);
    file.EnterRead();
    server::ServerTransaction transaction(Link());
    server::CopyToServer(file, *Link(), Schema(), table);
    transaction.Commit();
    file.Close();
    RemoveFile(path);
    WriteText(path, server::WriteLinkFile(LinkTo(table)));
  }
  static void WriteText(const std::string& path, const std::string& text) {
    WriteBytes(path, Bytes(text.begin(), text.end()));
  }

 private:
  static std::string Lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text.substr(0, 40);
  }
  server::ServerAddress address_;
  std::shared_ptr<server::ServerLink> held_;  // so that it is one for the test's length
};

// The status that something ends with.
template <class Action>
Status StatusOf(Action action) {
  try {
    action();
    return kOk;
  } catch (const Failure& failure) {
    return failure.status;
  }
}

}  // namespace btrieve::test
