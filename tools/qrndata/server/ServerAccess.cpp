#include "tools/qrndata/server/ServerAccess.h"

#include <algorithm>
#include <fstream>

#include "btrieve/server/ServerFile.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"

namespace qrndata {

namespace fs = std::filesystem;
namespace server = btrieve::server;

namespace {

// An index over a large table, the end of a large copy.
constexpr std::chrono::minutes kAnswerLimit{10};

struct ServerStatusRow {
  Status status;
  Message meaning;
};
constexpr ServerStatusRow kServerStatuses[] = {
    {btrieve::kNotActive, Message::ServerAway},
    {btrieve::kLoginFailed, Message::ServerLogin},
    {btrieve::kNoSuchDatabase, Message::ServerNoDatabase},
    {btrieve::kFileNotFound, Message::ServerNoTable},
    {btrieve::kFileExists, Message::ServerHasTable},
    {btrieve::kPermissionError, Message::ServerNoRight},
    {btrieve::kDiskFull, Message::ServerFull},
    {btrieve::kFileInUse, Message::ServerBusy},
    {btrieve::kDeadlock, Message::ServerBusy},
    {btrieve::kIoError, Message::ServerFault},
};

// Of an Open.
constexpr Status kOfTheServer[] = {btrieve::kNotActive, btrieve::kLoginFailed,
                                   btrieve::kNoSuchDatabase, btrieve::kFileNotFound,
                                   btrieve::kPermissionError};

std::string FirstLine(const std::string& text) {
  return text.substr(0, text.find_first_of("\r\n"));
}

std::vector<fs::path> LinksIn(const fs::path& directory) {
  std::vector<fs::path> links;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(directory, error)) {
    if (entry.is_regular_file(error) && IsLink(entry.path())) links.push_back(entry.path());
  }
  return links;
}

}  // namespace

bool IsLink(const fs::path& path) {
  std::string start(server::kLinkStart, '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  return file && server::IsLinkFile(btrieve::ViewOf(start));
}

server::LinkFile ReadLink(const fs::path& path) {
  const std::string text = ReadWholeFile(path);
  server::LinkFault fault;
  const auto link = server::ReadLinkFile(btrieve::ViewOf(text), fault);
  if (!link) {
    const auto line = static_cast<uint32_t>(fault.line);
    throw Failure(kSystem, AtPlace(PathToUtf8(path), {line, 0}, fault.text));
  }
  return *link;
}

bool HasLinks(const fs::path& directory) { return !LinksIn(directory).empty(); }

server::LinkFile ServerOf(const fs::path& directory) {
  const std::vector<fs::path> links = LinksIn(directory);
  if (links.empty()) throw Failure(kSystem, Say(Message::NotOnAServer, PathToUtf8(directory)));
  return ReadLink(*std::ranges::min_element(links));
}

server::ServerAddress AddressOf(const std::string& words, bool tlsRequired) {
  server::ServerAddress address;
  const std::string wrong = server::ReadServerWords(words, address);
  if (!wrong.empty()) throw Failure(kUsage, "--server: " + wrong);
  address.tlsRequired = tlsRequired;
  server::LinkFault fault;
  const std::string link = server::WriteLinkFile({address, "s", "t"});
  if (!server::ReadLinkFile(btrieve::ViewOf(link), fault)) {
    throw Failure(kUsage, "--server: " + fault.text);
  }
  return address;
}

std::string ServerName(const server::LinkFile& place) {
  std::string host;
  for (const auto& [word, value] : place.server.words) {
    if (host.empty() && word.starts_with("host")) host = value;
  }
  return Say(Message::ServerPlace, host.empty() ? "localhost" : host, place.schema);
}

std::string ServerStatusText(Status status) {
  const auto* row = std::ranges::find(kServerStatuses, status, &ServerStatusRow::status);
  std::string text = row == std::end(kServerStatuses)
                         ? StatusText(status)
                         : Say(Message::StatusMeaning, status, Say(row->meaning));
  const std::string words = FirstLine(server::ServerLink::LastRefusal());
  return words.empty() ? text : text + ": " + words;
}

std::string WhyNotReached(const server::LinkFile& link, Status status) {
  if (std::ranges::find(kOfTheServer, status) == std::end(kOfTheServer)) return "";
  server::ServerLink::ForgetRefusal();
  try {
    const server::ServerFile file(link);
  } catch (const btrieve::Failure& failure) {
    status = failure.status;
  }
  return ServerStatusText(status);
}

std::shared_ptr<server::ServerLink> ConnectFor(const server::ServerAddress& address) {
  auto link = server::ServerLink::To(address);
  link->SetAnswerLimit(kAnswerLimit);
  link->Run("SET statement_timeout = 0");
  return link;
}

}  // namespace qrndata
