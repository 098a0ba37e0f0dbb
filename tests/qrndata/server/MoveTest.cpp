// A database to a server and back: nothing is lost on the way, and what cannot be done changes
// nothing.
#include "ServerFixture.h"

namespace qrndata::test {
namespace {

namespace fs = std::filesystem;

class Moves : public OnServer {};

TEST_F(Moves, TakeTheCompanyThereAndBackByteForByte) {
  ASSERT_EQ(Run({"build", QRN_COMPANY "/company.toml", Path("db")}).code, 0);
  for (const auto& csv : fs::directory_iterator(QRN_COMPANY "/data")) {
    if (csv.path().extension() != ".csv") continue;
    ASSERT_EQ(
        Run({"import", Path("db"), PathToUtf8(csv.path().stem()), PathToUtf8(csv.path())}).code, 0)
        << csv.path();
  }
  Remember();
  const std::string orders = Export("Orders", {"--key", "0"});
  const Said moved = Move();
  ASSERT_EQ(moved.code, 0) << moved.err;
  EXPECT_EQ(moved.out.substr(0, 27), "db: 14 files, 23,173 record");
  EXPECT_EQ(Line(Check()), "code=0 out=11 tables, 22,971 records: no faults\n");
  EXPECT_EQ(Export("Orders", {"--key", "0"}), orders);
  EXPECT_EQ(Line(MoveBack()),
            "code=0 out=db: 14 files, 23,173 records moved back (0 of them changed meanwhile)\n");
  EXPECT_EQ(Changed(), "");
}

TEST_F(Moves, LeaveLinksInTheFilesPlaces) {
  BuildShop();
  EXPECT_EQ(Line(Move()), "code=0 out=db: 6 files, 57 records moved to schema " + Schema() +
                              " of the server 127.0.0.1; the old files are in " +
                              Told("db/before-move") + "\n");
  for (const char* name : {"file.ddf", "Goods.btr", "sub/orders.dat", "other.bin"}) {
    EXPECT_EQ(Read(std::string("db/") + name).substr(0, 18), "qrnbt link file 1\n") << name;
    EXPECT_EQ(Read(std::string("db/before-move/") + name), Read(std::string("kept/") + name));
  }
  EXPECT_EQ(Read("db/readme.txt"), "no data file");
  EXPECT_EQ(Ask("SELECT count(*) FROM " + Schema() + ".orders_dat"), 2);
  EXPECT_FALSE(fs::exists(Folder() / "db/before-move/under-way"));
  EXPECT_EQ(Check().code, 0);
}

TEST_F(Moves, BringBackWhatHasChangedAsNewFiles) {
  BuildShop();
  ASSERT_EQ(Move().code, 0);
  const std::string table = Schema() + ".goods_btr";
  Sql("UPDATE " + table +
      " SET data = overlay(data PLACING '\\x51' FROM 5), ver = ver + 1, k2 = "
      "overlay(k2 PLACING '\\x51' FROM 1) WHERE pos = 5");
  const std::string goods = Export("Goods", {"--key", "1"});
  EXPECT_NE(goods.find("5,Qnk"), std::string::npos) << goods;
  EXPECT_EQ(Check().code, 0);
  Sql("UPDATE " + Schema() + ".btrieve_ranges SET n = n + 1 WHERE key = 1");
  EXPECT_NE(Check().out.find("Goods: 1 range of the server's counts otherwise"), std::string::npos);
  EXPECT_EQ(Line(MoveBack()),
            "code=0 out=db: 6 files, 57 records moved back (1 of them changed meanwhile)\n" +
                Told("db/before-move") + " keeps 1 file as before the move\n");
  EXPECT_EQ(Export("Goods", {"--key", "1"}), goods);
  EXPECT_EQ(Check().code, 0);
  EXPECT_EQ(Changed(), "Goods.btr before-move/Goods.btr ");
  EXPECT_EQ(Read("db/before-move/Goods.btr"), Read("kept/Goods.btr"));
  EXPECT_EQ(Ask("SELECT count(*) FROM pg_namespace WHERE nspname = '" + Schema() + "'"), 0);
}

TEST_F(Moves, TryWithoutDoing) {
  BuildShop();
  EXPECT_EQ(Line(Move({"--dry-run"})),
            "code=0 out=db: 6 files, 57 records could be moved to schema " + Schema() +
                " of the server 127.0.0.1\n");
  EXPECT_EQ(Changed(), "");
  EXPECT_EQ(Ask("SELECT count(*) FROM pg_namespace WHERE nspname = '" + Schema() + "'"), 0);
  ASSERT_EQ(Move().code, 0);
  EXPECT_EQ(
      Line(MoveBack({"--dry-run"})),
      "code=0 out=db: 6 files, 57 records could be moved back (0 of them changed meanwhile)\n");
  EXPECT_EQ(Check().code, 0);
  ASSERT_EQ(MoveBack().code, 0);
  EXPECT_EQ(Changed(), "");
}

TEST_F(Moves, KeepTablesThatAreFilesNoMore) {
  BuildShop();
  ASSERT_EQ(Move().code, 0);
  const std::string link = Read("db/Goods.btr");
  ASSERT_EQ(MoveBack({"--keep"}).code, 0);
  EXPECT_EQ(Changed(), "");
  EXPECT_EQ(Ask("SELECT count(*) FROM " + Schema() + ".goods_btr"), 5);
  EXPECT_EQ(
      Ask("SELECT count(*) FROM pg_trigger WHERE tgrelid = '" + Schema() + ".goods_btr'::regclass"),
      0);
  // A station that has the link still finds no file any more.
  Write("db/Goods.btr", link);
  EXPECT_NE(Check().out.find("status 12"), std::string::npos) << Check().out;
  fs::remove(Folder() / "db/Goods.btr");
  fs::copy_file(Folder() / "kept/Goods.btr", Folder() / "db/Goods.btr");
  const Said again = Move();
  EXPECT_NE(again.err.find("--keep has left: field_ddf, file_ddf, goods_btr, "), std::string::npos)
      << again.err;
  EXPECT_EQ(Changed(), "");
}

// What others have put beside the files, here and elsewhere. $ stands for the schema.
struct OthersCase {
  const char* schema;  // where another than the test's
  const char* before;  // before the move
  const char* after;
  const char* stays;  // 1 before and after the way back
};
const OthersCase kOthers[] = {
    {"public",
     "DROP SCHEMA IF EXISTS web CASCADE; DROP TYPE IF EXISTS public.mood; DROP DOMAIN IF EXISTS "
     "public.price; CREATE SCHEMA web; CREATE TYPE public.mood AS ENUM('good', 'bad'); CREATE "
     "DOMAIN public.price AS numeric; CREATE TABLE web.orders(id int, m public.mood, p "
     "public.price)",
     "",
     "SELECT count(*) / 3 FROM pg_attribute WHERE attrelid = to_regclass('web.orders') AND "
     "attnum > 0 AND NOT attisdropped"},
    {"", "CREATE SCHEMA $", "", "SELECT count(*) FROM pg_namespace WHERE nspname = '$'"},
    {"", "", "CREATE TYPE $.mood AS ENUM('good')",
     "SELECT count(*) FROM pg_type WHERE oid = to_regtype('$.mood')"},
    {"", "", "CREATE TABLE $.btrieve_import_log AS SELECT 1 AS one",
     "SELECT count(*) FROM pg_class WHERE oid = to_regclass('$.btrieve_import_log')"},
};

TEST_F(Moves, LeaveWhatIsNotTheirs) {
  BuildShop();
  for (const OthersCase& row : kOthers) {
    const std::string schema = *row.schema ? row.schema : Schema();
    const auto filled = [&](std::string text) {
      for (size_t at = text.find('$'); at != text.npos; at = text.find('$')) {
        text.replace(at, 1, schema);
      }
      return text;
    };
    Sql(filled(row.before));
    const Said moved = Run({"move", Path("db"), "--server", Words(), "--schema", schema});
    ASSERT_EQ(moved.code, 0) << Line(moved);
    Sql(filled(row.after));
    EXPECT_EQ(Ask(filled(row.stays)), 1) << row.stays;
    ASSERT_EQ(MoveBack().code, 0) << row.stays;
    EXPECT_EQ(Ask(filled(row.stays)), 1) << row.stays;
    EXPECT_EQ(Ask(filled("SELECT count(*) FROM pg_class c, pg_namespace n WHERE n.oid = "
                         "relnamespace AND nspname = '$' AND relname = 'btrieve_files'")),
              0);
    Sql("DROP SCHEMA IF EXISTS \"" + Schema() + "\" CASCADE");
  }
}

TEST_F(Moves, NameTheFileWhoseTableHasGone) {
  BuildShop();
  ASSERT_EQ(Move().code, 0);
  Sql("DROP TABLE " + Schema() + ".orders_dat");
  const Said said = MoveBack();
  EXPECT_EQ(said.code, 4);
  const std::string file = PathToUtf8(fs::path("sub") / "orders.dat");
  EXPECT_NE(said.err.find(file + ": status 12"), std::string::npos) << said.err;
  EXPECT_EQ(Ask("SELECT count(*) FROM " + Schema() + ".goods_btr"), 5);
}

// Rows through the record manager, a copy in files, and what was changed on the way back.
TEST_F(Moves, AreWorkedOnByTheOtherVerbs) {
  BuildShop();
  ASSERT_EQ(Move().code, 0);
  EXPECT_EQ(Line(Import("Goods", "Id,Name\n7,Cap\n2,Cup\n", {"--replace", "0"})),
            "code=0 out=Goods: 2 rows taken (1 changed, 1 new)\n");
  const std::string goods = Export("Goods", {"--key", "1"});
  EXPECT_EQ(goods, "Id,Name\n4,\n7,Cap\n2,Cup\n5,Ink\n3,Pad\n1,Pen\n");
  EXPECT_EQ(Line(Check()), "code=0 out=2 tables, 8 records: no faults\n");
  EXPECT_EQ(Line(Run({"copy", Path("db"), Path("copy")})), "code=0 out=copy: 2 tables, 5 files\n");
  ASSERT_EQ(MoveBack().code, 0);
  for (const char* folder : {"copy", "db"}) {
    EXPECT_EQ(Line(Run({"check", Path(folder)})), "code=0 out=2 tables, 8 records: no faults\n");
    EXPECT_EQ(Run({"export", Path(folder), "Goods", "--key", "1"}).out, goods);
  }
}

// Each leaves the folder and the server as they were.
struct RefusalCase {
  const char* server;  // words that differ
  std::vector<std::string> options;
  const char* says;
};
const RefusalCase kRefusals[] = {
    {"port=1", {}, "status 20"},
    {"user=nobody_at_all", {}, "status 171"},
    {"dbname=nothing_at_all", {}, "status 172"},
    {"sslmode=require", {}, "status 20"},
    {"", {"--tls"}, "status 20"},
    {"sslmode=disable", {"--tls"}, "TLS is required"},
    {"password=x", {}, "takes no \"password\""},
    {"", {"--schema", "No Name"}, "is no name for it"},
    {"", {"--schema", "taken_schema"}, "holds files already"},
    {"", {"--schema", "information_schema"}, "is the server's own"},
    {"", {"--schema", "pg_catalog"}, "is the server's own"},
    {"user=powerless", {}, "status 94"},
};

TEST_F(Moves, ChangeNothingWhereTheServerRefuses) {
  BuildShop();
  Sql("DROP ROLE IF EXISTS powerless; CREATE ROLE powerless LOGIN PASSWORD '" +
      std::string(std::getenv("PGPASSWORD")) + "'; DROP SCHEMA IF EXISTS taken_schema CASCADE");
  server::MakeServerSchema(*Link(), "taken_schema");
  server::MakeServerFile(*Link(), "taken_schema", "goods", {}, {});
  for (const RefusalCase& row : kRefusals) {
    std::vector<std::string> words = {"move", Path("db"), "--server", With(row.server)};
    if (row.options.empty() || row.options[0] != "--schema") {
      words.insert(words.end(), {"--schema", Schema()});
    }
    words.insert(words.end(), row.options.begin(), row.options.end());
    const Said said = Run(words);
    EXPECT_NE(said.code, 0) << row.says;
    EXPECT_NE(said.err.find(row.says), std::string::npos) << row.says << ": " << Line(said);
    EXPECT_EQ(Changed(), "") << row.says;
  }
  EXPECT_EQ(Ask("SELECT count(*) FROM pg_namespace WHERE nspname = '" + Schema() + "'"), 0);
}

// Every table of that name that comes finds no room for its records.
constexpr char kFillUp[] = R"(
CREATE FUNCTION public.refuse() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN RAISE SQLSTATE '53100' USING MESSAGE = 'no space left on device'; END $$;
CREATE FUNCTION public.fill_up() RETURNS event_trigger LANGUAGE plpgsql AS $$
DECLARE made text;
BEGIN
  FOR made IN SELECT object_identity FROM pg_event_trigger_ddl_commands()
              WHERE object_type = 'table' AND object_identity LIKE '%goods%' LOOP
    EXECUTE 'CREATE TRIGGER is_full AFTER INSERT ON ' || made || ' EXECUTE FUNCTION public.refuse()';
  END LOOP;
END $$;
CREATE EVENT TRIGGER fill_up ON ddl_command_end EXECUTE FUNCTION public.fill_up())";

TEST_F(Moves, LeaveEverythingAsItWasOnAServerThatFillsUp) {
  BuildShop();
  Sql(kFillUp);
  const Said said = Move();
  Sql("DROP EVENT TRIGGER fill_up; DROP FUNCTION public.fill_up(); DROP FUNCTION public.refuse()");
  EXPECT_NE(said.code, 0);
  EXPECT_NE(said.err.find("status 18"), std::string::npos) << Line(said);
  EXPECT_EQ(Changed(), "");
  EXPECT_EQ(Ask("SELECT count(*) FROM pg_namespace WHERE nspname = '" + Schema() + "'"), 0);
  EXPECT_EQ(Move().code, 0) << "once there is room";
}

}  // namespace
}  // namespace qrndata::test
