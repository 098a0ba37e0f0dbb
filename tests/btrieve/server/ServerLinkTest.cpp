// The connection to a server: values on their way, refusals as statuses.
#include "ServerSite.h"
#include "btrieve/server/ServerStatus.h"
#include "btrieve/system/StationName.h"

namespace btrieve::test {
namespace {

using server::Arguments;
using server::Rows;
using server::ServerLink;

class ServerLinkTest : public ServerSite {};

TEST_F(ServerLinkTest, BringsValuesThereAndBack) {
  const Bytes bytes = {0, 1, 0x5C, 0x27, 0xFF};
  const Bytes none;
  for (const int64_t number : {int64_t{0}, int64_t{-1}, INT64_MIN, INT64_MAX}) {
    const Rows rows =
        Link()->Ask("SELECT $1::bytea, $2::bigint, $3::bytea, $4::bytea",
                    Arguments().Add(ByteView(bytes)).Add(number).Add(ByteView(none)).AddNull());
    ASSERT_EQ(rows.Count(), 1);
    EXPECT_TRUE(BytesEqual(rows.Bytes(0, 0), bytes));
    EXPECT_EQ(rows.Number(0, 1), number);
    EXPECT_EQ(rows.Bytes(0, 2).size(), 0u);
    EXPECT_TRUE(rows.IsNull(0, 3));
  }
}

TEST_F(ServerLinkTest, TakesNoValueForWhatItIsNot) {
  const Rows rows = Link()->Ask("SELECT 'abc'::bytea, null::bigint, 1::integer");
  const std::pair<int, int> kPlaces[] = {{0, 0}, {0, 1}, {0, 2}, {0, 3}, {1, 0}, {0, -1}, {-1, 0}};
  for (const auto& place : kPlaces) {
    EXPECT_EQ(StatusOf([&] { rows.Number(place.first, place.second); }), kIoError)
        << place.first << "," << place.second;
  }
  EXPECT_EQ(StatusOf([&] { rows.Bytes(0, 1); }), kIoError);
}

TEST_F(ServerLinkTest, SaysWhoItIs) {
  const Rows rows = Link()->Ask("SELECT current_setting('application_name')");
  const std::string name = TextOf(rows.Bytes(0, 0));
  EXPECT_EQ(name, StationName());
  EXPECT_EQ(name.substr(0, 8), "w64btrv ");
  EXPECT_NE(name.find(" test_btrieve_server"), name.npos) << name;
  EXPECT_EQ(name.substr(name.rfind(' ') + 1), std::to_string(ProcessNumber()));
}

struct RefusalCase {
  const char* sql;
  Status status;
};
const RefusalCase kRefusals[] = {
    {"SELECT 1 FROM nowhere.nothing", kFileNotFound},
    {"SELECT pg_catalog.pg_sleep(30)", kFileInUse},
    {"COPY (SELECT 1) TO STDOUT", kNotActive},
    {"not SQL", kIoError},
    {"DO 'BEGIN RAISE unique_violation; END'", kDuplicateKey},
    {"DO 'BEGIN RAISE disk_full; END'", kDiskFull},
    {"DO 'BEGIN RAISE deadlock_detected; END'", kDeadlock},
    {"DO 'BEGIN RAISE insufficient_privilege; END'", kPermissionError},
    {"DO 'BEGIN RAISE admin_shutdown; END'", kNotActive},
};

TEST_F(ServerLinkTest, TellsRefusalsByStatus) {
  for (const RefusalCase& row : kRefusals) {
    if (row.status == kFileInUse) Link()->Run("SET statement_timeout = 100");
    EXPECT_EQ(StatusOf([&] { Link()->Run(row.sql); }), row.status) << row.sql;
    EXPECT_EQ(Link()->Ask("SELECT 1::bigint").Number(0, 0), 1) << "after " << row.sql;
  }
}

TEST_F(ServerLinkTest, TellsWhyItIsNotLetIn) {
  const struct {
    const char* word;
    std::string value;
    Status status;
  } kCases[] = {{"port", "1", kNotActive},
                {"dbname", "nothing", kNoSuchDatabase},
                {"dbname", "shut_database", kNotActive},
                {"user", "nobody", kLoginFailed},
                {"user", "crowded", kNotActive},
                {"user", "passerby", kPermissionError}};
  const std::string password = std::getenv("PGPASSWORD");
  for (const std::string& sql : {
           std::string("DROP DATABASE IF EXISTS shut_database"),
           std::string("CREATE DATABASE shut_database ALLOW_CONNECTIONS false"),
           std::string("DROP ROLE IF EXISTS crowded; DROP ROLE IF EXISTS passerby"),
           "CREATE ROLE crowded LOGIN CONNECTION LIMIT 0 PASSWORD '" + password + "'",
           "CREATE ROLE passerby LOGIN PASSWORD '" + password + "'",
           std::string("REVOKE CONNECT ON DATABASE postgres FROM PUBLIC"),
       }) {
    Link()->Run(sql);
  }
  for (const auto& row : kCases) {
    EXPECT_EQ(StatusOf([&] { ServerLink::To(AddressWith(row.word, row.value)); }), row.status)
        << row.value;
  }
  Link()->Run("GRANT CONNECT ON DATABASE postgres TO PUBLIC");
}

struct MessageCase {
  const char* message;
  Status status;
};
const MessageCase kMessages[] = {
    {"", kNotActive},
    {"could not translate host name \"database \"", kNotActive},
    {"致命的エラー:  28P01: ユーザー \"sales\" のパスワード認証に失敗しました", kLoginFailed},
    {"FATAL:  3D000: \nLOCATION:  InitPostgres, postinit.c:885\n", kNoSuchDatabase},
    {"FATAL:  53300: too many\nFATAL:  28000: no entry\n", kLoginFailed},
    {":  28000: first\n:  28000", kLoginFailed},
    {":  280P: short", kNotActive},
    {":  28p01: small", kNotActive},
    {":  28", kNotActive},
    {":  99999: unknown", kNotActive},
};

TEST(ServerStatus, IsToldByTheStateInAnyLanguage) {
  for (const MessageCase& row : kMessages) {
    EXPECT_EQ(server::StatusOfRefusal(row.message), row.status) << row.message;
  }
}

TEST_F(ServerLinkTest, GoesNowhereWithoutTlsThatIsRequired) {
  server::ServerAddress address = Address();
  address.tlsRequired = true;
  EXPECT_EQ(StatusOf([&] { ServerLink::To(address); }), kNotActive);
}

TEST_F(ServerLinkTest, IsOneForAllFilesAndAnotherOnceItBroke) {
  const auto first = Link();
  EXPECT_EQ(first, Link());
  const int64_t process = first->Ask("SELECT pg_catalog.pg_backend_pid()::bigint").Number(0, 0);
  OtherLink()->Ask("SELECT pg_catalog.pg_terminate_backend($1::bigint::integer)",
                   Arguments().Add(process));
  EXPECT_EQ(StatusOf([&] { first->Ask("SELECT 1::bigint"); }), kNotActive);
  EXPECT_FALSE(first->IsAlive());
  EXPECT_EQ(StatusOf([&] { first->Run("SELECT 1"); }), kNotActive);
  EXPECT_EQ(StatusOf([&] { first->NoticesOf("any"); }), kNotActive);
  EXPECT_EQ(Link()->Ask("SELECT 1::bigint").Number(0, 0), 1);
}

TEST_F(ServerLinkTest, UndoesATransactionThatIsNotCommitted) {
  for (const bool commits : {false, true}) {
    {
      server::ServerTransaction transaction(Link());
      Link()->Run("CREATE TABLE \"" + Schema() + "\".kept()");
      if (commits) transaction.Commit();
    }
    const Status there =
        StatusOf([&] { OtherLink()->Run("SELECT FROM \"" + Schema() + "\".kept"); });
    EXPECT_EQ(there, commits ? kOk : kFileNotFound);
  }
}

}  // namespace
}  // namespace btrieve::test
