#include <filesystem>
#include <random>

#include "btrieve/locks/SharedBoard.h"
#include "btrieve/system/HostFile.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

// A board of this test alone: two seats of four bytes.
struct TwoSeats : testing::Test {
  using Text = std::array<uint8_t, 8>;

  // Where the system keeps the board as a file, it stays behind.
  ~TwoSeats() override {
    std::error_code none;
    std::filesystem::remove("/dev/shm/" + name_, none);
  }

  BoardShape Shape() const { return {name_.c_str(), 2, 4}; }
  static std::string Read(const SharedBoard& board) {
    Text text{};
    EXPECT_TRUE(board.Read(text));
    return {text.begin(), text.end()};
  }
  static bool Write(SharedBoard& board, const std::string& text) {
    return board.Write({reinterpret_cast<const uint8_t*>(text.data()), text.size()});
  }

 private:
  std::string name_ = "btrieve-test-" + std::to_string(std::random_device{}());
};

TEST_F(TwoSeats, AreOneOwnersEachUntilHeLeaves) {
  const SharedBoard first(Shape());
  ASSERT_TRUE(first);
  EXPECT_FALSE(first.IsTaken(1));
  {
    const SharedBoard second(Shape());
    ASSERT_TRUE(second);
    EXPECT_NE(first.Seat(), second.Seat());
    EXPECT_TRUE(first.IsTaken(second.Seat()));
    EXPECT_TRUE(second.IsTaken(first.Seat()));
    EXPECT_FALSE(SharedBoard(Shape()));
  }
  EXPECT_FALSE(first.IsTaken(1));
  EXPECT_TRUE(SharedBoard(Shape()));
}

TEST_F(TwoSeats, AreReadByAll) {
  SharedBoard first(Shape());
  SharedBoard second(Shape());
  ASSERT_TRUE(first && second);
  EXPECT_EQ(Read(first), std::string(8, '\0'));
  EXPECT_TRUE(Write(first, "abcd"));
  EXPECT_TRUE(Write(second, "efgh"));
  EXPECT_EQ(Read(first), first.Seat() == 0 ? "abcdefgh" : "efghabcd");
  EXPECT_EQ(Read(second), Read(first));
}

}  // namespace
}  // namespace btrieve::test
