// The line that tells how far a long verb is.
#include <gtest/gtest.h>

#include "tools/qrndata/Progress.h"

namespace qrndata::test {
namespace {

TEST(ProgressLine, SaysHowFarHowFastAndHowLong) {
  const Progress progress(nullptr, "Orders", 1000);
  EXPECT_EQ(progress.Line(250, 12345, 2.0),
            "Orders  [#####...............]  25 %  12,345 rows  6,172 rows/s  00:06 left");
  const Progress unknown(nullptr, "Orders", 0);
  const std::string line = unknown.Line(250, 100, 2.0);
  EXPECT_EQ(line.find('%'), std::string::npos) << line;
  EXPECT_EQ(line.find("left"), std::string::npos) << line;
}

TEST(ProgressLine, LongNumbersAreGrouped) {
  EXPECT_EQ(Grouped(0), "0");
  EXPECT_EQ(Grouped(999), "999");
  EXPECT_EQ(Grouped(1000), "1,000");
  EXPECT_EQ(Grouped(18446744073709551615u), "18,446,744,073,709,551,615");
}

}  // namespace
}  // namespace qrndata::test
