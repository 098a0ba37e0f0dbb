// Who works on a site's files: other sessions that hold the record manager's locks.
#include "ServerFixture.h"

namespace qrndata::test {
namespace {

class Stations : public OnServer {
 protected:
  void SetUp() override {
    OnServer::SetUp();
    BuildShop();
    ASSERT_EQ(Move().code, 0);
  }
  // Another station with a file open, and what else it locks there.
  std::shared_ptr<server::ServerLink> Station(const char* way, const std::string& name,
                                              const std::vector<int>& locks) const {
    auto link = Link(way);
    link->Run("SET application_name = '" + name + "'");
    const std::string file = "'" + Schema() + ".goods_btr'::regclass::oid::integer";
    link->Run("SELECT pg_advisory_lock_shared(" + file + ", -2)");
    for (const int lock : locks) {
      link->Run("SELECT pg_advisory_lock(" + file + ", " + std::to_string(lock) + ")");
    }
    return link;
  }
  Said Status(const std::vector<std::string>& options = {}) const {
    std::vector<std::string> all = {"status", Path("db")};
    all.insert(all.end(), options.begin(), options.end());
    return Run(all);
  }
  // Without what differs from run to run.
  static std::string Masked(std::string text) {
    for (char& c : text) {
      if (c >= '0' && c <= '9') c = '#';
    }
    return text;
  }
};

TEST_F(Stations, AreToldWithWhatTheyHold) {
  const auto one = Station("prefer", "w64btrv PC7 order form.exe 42", {3, -3});
  const auto two = Station("disable", "w64btrv PC8 qrnform.exe 7", {});
  const Said said = Status();
  ASSERT_EQ(said.code, 0) << said.err;
  EXPECT_NE(said.out.find(": 2 stations\n"), std::string::npos) << said.out;
  EXPECT_NE(Masked(said.out).find("PC#      order form.exe       ##  ####-##-## ##:##:##      #\n"),
            std::string::npos)
      << said.out;
  EXPECT_NE(said.out.find("Goods.btr  PC7           42  the record at position 3  00:00:0"),
            std::string::npos)
      << said.out;
  EXPECT_NE(said.out.find("Goods.btr  PC7           42  the whole file            00:00:0"),
            std::string::npos)
      << said.out;
  EXPECT_NE(said.out.find("sub/orders.dat  orders_dat        2   48 KB"), std::string::npos)
      << said.out;
}

TEST_F(Stations, AreToldInJson) {
  const auto one = Station("prefer", "w64btrv PC7 a \"form\" 42", {3});
  const Said said = Status({"--format", "json"});
  ASSERT_EQ(said.code, 0) << said.err;
  EXPECT_NE(
      said.out.find("{\"machine\": \"PC7\", \"program\": \"a \\\"form\\\"\", \"process\": 42, "),
      std::string::npos)
      << said.out;
  EXPECT_NE(said.out.find("{\"file\": \"Goods.btr\", \"what\": \"record\", \"position\": 3, "
                          "\"waits\": false, \"seconds\": "),
            std::string::npos)
      << said.out;
  EXPECT_NE(said.out.find("{\"file\": \"Goods.btr\", \"table\": \"goods_btr\", \"records\": 5, "),
            std::string::npos)
      << said.out;
}

TEST_F(Stations, KeepFilesFromBeingMovedBack) {
  const auto one = Station("prefer", "w64btrv PC7 form.exe 42", {});
  EXPECT_EQ(
      Line(MoveBack()),
      "code=4 err=qrndata: files are in use: w64btrv PC7 form.exe 42; nothing was moved back\n");
  EXPECT_EQ(Check().code, 0);
}

TEST_F(Stations, AreNoneWithoutAServer) {
  ASSERT_EQ(MoveBack().code, 0);
  const Said said = Status();
  EXPECT_EQ(Line(said), "code=4 err=qrndata: db: no links to a server stand here\n");
}

}  // namespace
}  // namespace qrndata::test
