// A link file stands where a data file would and says which table of which server holds its
// records. It is a short text in ASCII, a line each, in any order but for the first:
//
//   qrnbt link file 1
//   server = host=db.example dbname=company user=sales
//   schema = company
//   table  = customers
//   tls    = required
//
// Lines end in LF or CR LF; blanks round the words do not count; empty lines and lines that begin
// with # are passed over. `server` is what the client library takes as "keyword=value" words, of
// which only those that tell the way are known: a password has no place here. `tls` may be missing.
// Names of schemas and tables are lower-case letters, digits and _, at most 63.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "btrieve/keys/Entry.h"

namespace btrieve::server {

inline constexpr char kLinkMark[] = "qrnbt link file 1";
inline constexpr size_t kLinkStart = sizeof kLinkMark - 1;
inline constexpr size_t kLargestLink = 4096;  // bytes

// Where a server is and how to get there, word by word as the client library takes them.
struct ServerAddress {
  std::vector<std::pair<std::string, std::string>> words;
  bool tlsRequired = false;

  // The same text, and nothing else, means the same server and the same way to it.
  std::string Text() const;
  bool operator==(const ServerAddress&) const = default;
};

struct LinkFile {
  ServerAddress server;
  std::string schema;
  std::string table;

  bool operator==(const LinkFile&) const = default;
};

// What is wrong with a link file, and in which line (from 1).
struct LinkFault {
  int line = 0;
  std::string text;
};

// True for the first kLinkStart bytes of a link file.
bool IsLinkFile(ByteView start) noexcept;

// Null, with `fault` told, for what is no right link file.
std::optional<LinkFile> ReadLinkFile(ByteView bytes, LinkFault& fault);
std::string WriteLinkFile(const LinkFile& link);

// The words of a server's address ("host=... dbname='...'"); an empty text is none wrong, else what
// is.
std::string ReadServerWords(const std::string& text, ServerAddress& address);
// A name that a schema or a table may have.
bool IsServerName(const std::string& name) noexcept;

}  // namespace btrieve::server
