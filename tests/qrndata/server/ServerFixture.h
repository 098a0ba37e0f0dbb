// The data tool beside the tests' server, with a schema for each test.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <set>

#include "btrieve/server/ServerLayout.h"
#include "tests/qrndata/ToolFixture.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"

namespace qrndata::test {

namespace server = btrieve::server;

inline constexpr char kShop[] = R"([[table]]
name = "Goods"
field = [ { name = "Id", type = "Integer" }, { name = "Name", type = "String", size = 8 } ]
key = [ { fields = ["Id"] }, { fields = ["Name"], duplicates = true, modifiable = true } ]
[[table]]
name = "Orders"
file = "sub\\orders.dat"
field = [ { name = "Number", type = "AutoInc" }, { name = "Good", type = "Integer" } ]
key = [ { fields = ["Number"] } ])";

class OnServer : public ToolTest {
 protected:
  void SetUp() override {
    const char* words = std::getenv("QRN_SERVER");
    ASSERT_NE(words, nullptr) << "to be run by scripts/server.sh";
    words_ = words;
    ASSERT_EQ(server::ReadServerWords(words_, address_), "");
    Sql("DROP SCHEMA IF EXISTS \"" + Schema() + "\" CASCADE");
  }
  void TearDown() override { Sql("DROP SCHEMA IF EXISTS \"" + Schema() + "\" CASCADE"); }

  static std::string Schema() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    return Lowered(std::string("t_") + test->name()).substr(0, 40);
  }
  const std::string& Words() const { return words_; }
  // With "word=value" in the place of what the address has of it, or behind it.
  std::string With(const std::string& pair) const {
    const std::string word = pair.substr(0, pair.find('=') + 1);
    const size_t at = pair.empty() ? words_.npos : words_.find(word);
    if (at == words_.npos) return words_ + " " + pair;
    const size_t end = std::min(words_.find(' ', at), words_.size());
    return words_.substr(0, at) + pair + words_.substr(end);
  }
  // Another session than the tool's, which ends with the last copy.
  std::shared_ptr<server::ServerLink> Link(const char* way = "allow") const {
    server::ServerAddress other = address_;
    other.words.emplace_back("sslmode", way);
    return server::ServerLink::To(other);
  }
  void Sql(const std::string& sql) const {
    if (!sql.empty()) Link()->Run(sql);
  }
  int64_t Ask(const std::string& sql) const { return Link()->Ask(sql).Number(0, 0); }

  // A small database in "db", with a file beside it that no table has.
  void BuildShop() const {
    std::filesystem::create_directories(Folder() / "db/sub");
    Build(kShop);
    ASSERT_EQ(Import("Goods", "Id,Name\n1,Pen\n2,Pad\n3,Pen\n4,\n5,Ink\n").code, 0);
    ASSERT_EQ(Import("Goods", "Id,Name\n3,Pad\n", {"--update", "0"}).code, 0);
    ASSERT_EQ(Import("Orders", "Good\n3\n1\n").code, 0);
    std::filesystem::copy_file(Folder() / "db/Goods.btr", Folder() / "db/other.bin");
    Write("db/readme.txt", "no data file");
    Remember();
  }
  // What stands in "db", and whether it is the same still.
  void Remember() const {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Folder() / "db")) {
      const auto to = Folder() / "kept" / entry.path().lexically_relative(Folder() / "db");
      std::filesystem::create_directories(to.parent_path());
      if (!entry.is_directory()) std::filesystem::copy_file(entry.path(), to);
    }
  }
  // "name name ..." of the files that are not as they were remembered, or are new. What a dead
  // process leaves of a log's index is the record manager's care.
  std::string Changed() const {
    std::set<std::string> names;
    for (const char* root : {"db", "kept"}) {
      for (const auto& entry : std::filesystem::recursive_directory_iterator(Folder() / root)) {
        if (entry.is_directory()) continue;
        const std::string name =
            PathToUtf8(entry.path().lexically_relative(Folder() / root).generic_string());
        if (name.ends_with("-shm")) continue;
        if (Read("db/" + name) != Read("kept/" + name)) names.insert(name);
      }
    }
    std::string all;
    for (const std::string& name : names) all += name + " ";
    return all;
  }

  // A path below the test's folder as the tool says it.
  static std::string Told(const std::string& path) {
    return PathToUtf8(PathFromUtf8(path).make_preferred());
  }

  Said Move(const std::vector<std::string>& options = {}) const {
    std::vector<std::string> all = {"move", Path("db"), "--server", Words(), "--schema", Schema()};
    all.insert(all.end(), options.begin(), options.end());
    return Run(all);
  }
  Said MoveBack(const std::vector<std::string>& options = {}) const {
    std::vector<std::string> all = {"move", Path("db"), "--back"};
    all.insert(all.end(), options.begin(), options.end());
    return Run(all);
  }

 private:
  std::string words_;
  server::ServerAddress address_;
};

}  // namespace qrndata::test
