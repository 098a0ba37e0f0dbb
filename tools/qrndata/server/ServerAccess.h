// The tool at a server: link files, connections, and refusals in words.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "btrieve/server/ServerLink.h"
#include "tools/qrndata/BtrFile.h"

namespace qrndata {

// Whether a link file stands there.
bool IsLink(const std::filesystem::path& path);
// Throws Failure (kSystem) for what is no right link file.
btrieve::server::LinkFile ReadLink(const std::filesystem::path& path);

// Whether any stands in the folder.
bool HasLinks(const std::filesystem::path& directory);

// Where the tables of a folder are: its first link file says it. Throws Failure (kSystem) where
// none stands.
btrieve::server::LinkFile ServerOf(const std::filesystem::path& directory);

// The address that the user has given. Throws Failure (kUsage).
btrieve::server::ServerAddress AddressOf(const std::string& words, bool tlsRequired);

// "host db.example, schema company": for messages.
std::string ServerName(const btrieve::server::LinkFile& place);

// "status 171 (the server does not let this user in): ..." with what the server itself has said.
std::string ServerStatusText(Status status);

// Why the record manager could not open what a link leads to, in the server's words: it is asked
// once more. Empty for a status that tells all.
std::string WhyNotReached(const btrieve::server::LinkFile& link, Status status);

// Runs work on a server or on files of the record manager; a refusal becomes a Failure (kSystem)
// about `what`.
template <class Work>
auto Asking(const std::string& what, Work work) {
  btrieve::server::ServerLink::ForgetRefusal();
  try {
    return work();
  } catch (const btrieve::Failure& failure) {
    throw Failure(kSystem, what + ": " + ServerStatusText(failure.status));
  }
}

// A connection for work on whole files, which takes its time. It is one with those that ServerFile
// opens while this is held.
std::shared_ptr<btrieve::server::ServerLink> ConnectFor(
    const btrieve::server::ServerAddress& address);

}  // namespace qrndata
