// A file of 200 pairs on the tests' server, reached through whoever does harm to the answers.
#pragma once

#include "HostileAnswers.h"
#include "ServerSite.h"
#include "clients/TestFile.h"

namespace btrieve::test {

class HostileServer : public ServerSite {
 protected:
  static constexpr size_t kLength = 8;

  void SetUp() override {
    ServerSite::SetUp();
    file_.Make(PairBlock());
    for (int32_t id = 0; id < 200; ++id) ASSERT_EQ(file_.Insert(Pair(id)), 0);
    ASSERT_EQ(file_.Close(), 0);
    Move(file_.Path(), "pairs");
  }
  int ServerPort() const {
    for (const auto& [word, value] : Address().words) {
      if (word == "port") return std::stoi(value);
    }
    return 0;
  }
  void LinkThrough(int port) {
    server::LinkFile link = LinkTo("pairs");
    link.server = AddressWith("port", std::to_string(port));
    link.server.words.emplace_back("sslmode", "disable");
    WriteText(file_.Path(), server::WriteLinkFile(link));
  }
  // The records read without harm; whatever a call did wrong is a failed test.
  int ReadEverything() {
    int good = 0;
    if (Try(kOpen, {.key = PathKey(file_.Path())}) != 0) return good;
    for (const int operation : {kGetFirst, kGetLast, kStepFirst, kGetByPercentage, kStat}) {
      const bool forward = operation != kGetLast;
      const int next = operation == kStepFirst ? kStepNext : forward ? kGetNext : kGetPrevious;
      const CallIn in{.data = Bytes(2), .room = operation == kStat ? 200u : kLength};
      if (Try(operation, in) != 0 || operation == kStat) continue;
      while (Try(next, {.room = kLength}) == 0) ++good;
    }
    Try(kClose, {});
    return good;
  }

  // One call, which must end in time; what it reads has a record's length.
  Status Try(int operation, const CallIn& in) {
    const auto begin = std::chrono::steady_clock::now();
    const CallOut out = file_.Call(operation, in);
    EXPECT_LT(std::chrono::steady_clock::now() - begin,
              server::kAnswerLimit + std::chrono::seconds(5))
        << operation;
    if (out.status == 0 && in.room == kLength) {
      EXPECT_EQ(out.length, kLength) << operation;
    }
    return out.status;
  }

  TestFile file_;
};

}  // namespace btrieve::test
