// Link files: what is read out of a text, what is refused and in which line.
#include <gtest/gtest.h>

#include "btrieve/server/LinkFile.h"

namespace btrieve::server {
namespace {

std::string Told(const std::string& text) {
  LinkFault fault;
  const auto link = ReadLinkFile(ViewOf(text), fault);
  if (!link) return std::to_string(fault.line) + ": " + fault.text;
  return link->server.Text() + " | " + link->schema + " | " + link->table +
         (link->server.tlsRequired ? " | tls" : "");
}

const std::string kMark = std::string(kLinkMark) + "\n";
const std::string kRest = "schema=s\ntable=t\n";

struct LinkCase {
  const char* what;
  std::string text;
  const char* told;
};

const LinkCase kGood[] = {
    {"plain", kMark + "server=host=h user=u\n" + kRest, "host='h' user='u' | s | t"},
    {"blanks, comments, another order, no last line end",
     kMark + "\n# here\n table\t= t_2 \n  schema = s1\n server = dbname = d  host=h",
     "dbname='d' host='h' | s1 | t_2"},
    {"lines end in CR LF", std::string(kLinkMark) + "\r\nserver=host=h\r\nschema=s\r\ntable=t\r\n",
     "host='h' | s | t"},
    {"quotes and backslashes",
     kMark + R"(server=host='a b' dbname='it\'s' user=x\ y)" + "\n" + kRest,
     R"(host='a b' dbname='it\'s' user='x y' | s | t)"},
    {"an empty value", kMark + "server=host='' user=u\n" + kRest, "host='' user='u' | s | t"},
    {"TLS", kMark + "server=host=h sslmode=verify-full\ntls=required\n" + kRest,
     "host='h' sslmode='verify-full' | s | t | tls"},
};

TEST(LinkFile, IsReadAsItWasMeant) {
  for (const LinkCase& row : kGood) EXPECT_EQ(Told(row.text), row.told) << row.what;
}

const LinkCase kBad[] = {
    {"empty", "", "1: this is no link file"},
    {"another version", "qrnbt link file 2\n", "1: this is no link file"},
    {"nothing else", kMark, "2: \"server\" is missing"},
    {"no table", kMark + "server=host=h\nschema=s\n", "4: \"table\" is missing"},
    {"twice", kMark + "schema=s\nschema=s\n", "3: \"schema\" stands here twice"},
    {"unknown", kMark + "sever=host=h\n", "2: \"sever\" is not known"},
    {"no value", kMark + "\nserver\n", "3: \"=\" is missing"},
    {"a password", kMark + "server=host=h password=x\n" + kRest,
     "2: the server's address takes no \"password\""},
    {"a file of passwords", kMark + "server=passfile=/x host=h\n",
     "2: the server's address takes no \"passfile\""},
    {"options", kMark + "server=host=h options=-c\n",
     "2: the server's address takes no \"options\""},
    {"an address with a password in it", kMark + "server=postgresql://u:p@h/d\n",
     "2: \"=\" is missing in the server's address"},
    {"a word twice", kMark + "server=host=h host=i\n",
     "2: \"host\" stands in the server's address twice"},
    {"no address", kMark + "server=\n", "2: the server's address is empty"},
    {"an open quote", kMark + "server=host='h\n", "2: a value is not closed"},
    {"a backslash at the end", kMark + "server=host=h\\\n", "2: a value is not closed"},
    {"SQL for a name", kMark + "schema=s\"; drop\n", "2: \"s\"; drop\" is no name for it"},
    {"upper case", kMark + "table=T\n", "2: \"T\" is no name for it"},
    {"64 letters", kMark + "table=" + std::string(64, 'x') + "\n",
     "2: \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\" is no name for it"},
    {"tls in other words", kMark + "tls=yes\n", "2: tls can only be \"required\""},
    {"TLS that may be left out", kMark + "tls=required\nserver=host=h sslmode=prefer\n" + kRest,
     "6: TLS is required, and sslmode=prefer does without"},
    {"a byte above ASCII", kMark + "# \x83\n", "2: a character that is not plain ASCII"},
    {"a NUL", kMark + std::string("# \0\n", 4), "2: a character that is not plain ASCII"},
    {"too large", kMark + std::string(kLargestLink, '\n'), "1: a link file has at most 4096 bytes"},
};

TEST(LinkFile, TellsWhatIsWrongAndWhere) {
  for (const LinkCase& row : kBad) EXPECT_EQ(Told(row.text), row.told) << row.what;
}

TEST(LinkFile, IsReadAsItWasWritten) {
  LinkFile link;
  link.server.words = {{"host", "a' \\b"}, {"user", ""}};
  link.server.tlsRequired = true;
  link.schema = "s";
  link.table = std::string(63, 'x');
  LinkFault fault;
  EXPECT_EQ(ReadLinkFile(ViewOf(WriteLinkFile(link)), fault), link) << fault.text;
}

}  // namespace
}  // namespace btrieve::server
