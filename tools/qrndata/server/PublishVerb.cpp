// `publish`: a view of every table of the dictionary, for programs that speak SQL.
#include <algorithm>

#include "btrieve/server/CopyIn.h"
#include "btrieve/server/ServerLayout.h"
#include "platform/CodePage.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/Text.h"
#include "tools/qrndata/Verbs.h"
#include "tools/qrndata/server/OwnSchema.h"
#include "tools/qrndata/server/ServerAccess.h"
#include "tools/qrndata/server/ViewColumns.h"
#include "tools/qrndata/server/ViewFunctions.h"
#include "tools/qrndata/server/Views.h"

namespace qrndata {

namespace fs = std::filesystem;
namespace server = btrieve::server;
using btrieve::ViewOf;
using server::Arguments;
using server::Rows;

namespace {

class Publishing {
 public:
  Publishing(const PublishOptions& options, const Streams& streams)
      : options_(options),
        streams_(streams),
        place_(ServerOf(options.directory)),
        schema_(ViewSchema(place_.schema)) {}

  ExitCode Run() {
    const Dictionary dictionary = ReadDictionary(options_.directory);
    const std::string what = ServerName(place_);
    link_ = Asking(what, [&] { return ConnectFor(place_.server); });
    Asking(what, [&] { Publish(dictionary); });
    streams_.out << PathToUtf8(options_.directory) << ": "
                 << Say(Message::Published, Counted(made_.size(), Message::Views), schema_) << '\n';
    return left_ == 0 ? kDone : kFaultsFound;
  }

 private:
  void Publish(const Dictionary& dictionary) {
    server::ServerTransaction transaction(link_);
    MakeSchema();
    for (const Table& table : dictionary.tables) PublishTable(table);
    DropOthers();
    transaction.Commit();
  }
  void MakeSchema();
  void FillCharacters();
  void PublishTable(const Table& table);
  void MakeView(const std::string& name, const std::string& select);
  void DropOthers();
  std::vector<std::string> ReadersOf(const std::string& name);

  const PublishOptions& options_;
  const Streams& streams_;
  server::LinkFile place_;
  std::string schema_;
  std::shared_ptr<server::ServerLink> link_;
  ViewNames names_;
  std::vector<std::string> made_;  // in quotes
  uint64_t left_ = 0;
};

void Publishing::MakeSchema() {
  const Rows encoding = link_->Ask("SELECT getdatabaseencoding()::text");
  if (btrieve::TextOf(encoding.Bytes(0, 0)) != "UTF8") {
    throw Failure(kSystem, Say(Message::DatabaseNotUtf8));
  }
  MakeOwnSchema(*link_, schema_);
  link_->Run(ViewFunctions(schema_));
  FillCharacters();
}

// Every character of the module's code page, by one byte or two.
void Publishing::FillCharacters() {
  const std::string table = server::TableName(schema_, kCharacters);
  link_->Run("DELETE FROM " + table);
  server::CopyIn copy(*link_, table, 2);
  const auto add = [&](const std::string& bytes) {
    const Converted character = FromCodePage(bytes, OnUnmappable::Error);
    if (!character.IsExact() || CharacterLength(character.text) != character.text.size()) return;
    copy.BeginRow();
    copy.Add(ViewOf(bytes));
    copy.Add(ViewOf(character.text));
  };
  for (int first = 1; first < 256; ++first) {
    const std::string one(1, static_cast<char>(first));
    add(one);
    if (!qrn::IsLeadByte(static_cast<uint8_t>(first))) continue;
    for (int second = 0x40; second < 0xFD; ++second) add(one + static_cast<char>(second));
  }
  copy.Finish();
}

void Publishing::PublishTable(const Table& table) {
  const fs::path path = DataFilePath(options_.directory, table.location);
  const bool isLinked = IsLink(path);
  const server::LinkFile link = isLinked ? ReadLink(path) : server::LinkFile();
  if (link.server != place_.server) {
    ++left_;
    streams_.out << Say(Message::NotPublished, Show(table.name), PathToUtf8(path)) << '\n';
    return;
  }
  // No row is changed through a view: keys and counters would not follow.
  MakeView(names_.Take(Show(table.name)), "SELECT " + ViewColumns(table, schema_) + " FROM " +
                                              server::TableName(link.schema, link.table) +
                                              " OFFSET 0");
}

// Others' rights stay: a view that has the columns it had, and new ones behind them, is replaced,
// another one is made anew with the readers it had.
void Publishing::MakeView(const std::string& name, const std::string& select) {
  const std::string view = server::Quoted(schema_) + "." + name;
  const std::string text = "VIEW " + view + " AS " + select;
  made_.push_back(name);
  link_->Run("SAVEPOINT view");
  try {
    link_->Run("CREATE OR REPLACE " + text);
  } catch (const btrieve::Failure&) {
    if (!link_->IsAlive()) throw;
    link_->Run("ROLLBACK TO SAVEPOINT view");
    const std::vector<std::string> readers = ReadersOf(name);
    link_->Run("DROP VIEW IF EXISTS " + view);
    link_->Run("CREATE " + text);
    const std::string grant = "GRANT SELECT ON " + view + " TO ";
    for (const std::string& reader : readers) link_->Run(grant + reader);
  }
  link_->Run("RELEASE SAVEPOINT view; COMMENT ON VIEW " + view + " IS '" + kOurView + "'");
}

std::vector<std::string> Publishing::ReadersOf(const std::string& name) {
  const std::string view = server::Quoted(schema_) + "." + name;
  const Rows rows = link_->Ask(
      "SELECT CASE a.grantee WHEN 0 THEN 'PUBLIC' ELSE quote_ident(pg_get_userbyid(a.grantee)) END "
      "FROM pg_class c, aclexplode(c.relacl) a WHERE c.oid = "
      "to_regclass(convert_from($1::bytea, 'UTF8')) AND a.privilege_type = 'SELECT' AND a.grantee "
      "<> c.relowner",
      Arguments().Add(ViewOf(view)));
  return TextsOf(rows);
}

void Publishing::DropOthers() {
  for (const std::string& name : OurViews(*link_, schema_)) {
    if (std::ranges::find(made_, name) != made_.end()) continue;
    link_->Run("DROP VIEW " + server::Quoted(schema_) + "." + name);
  }
}

}  // namespace

ExitCode RunPublish(const PublishOptions& options, const Streams& streams) {
  return Publishing(options, streams).Run();
}

}  // namespace qrndata
