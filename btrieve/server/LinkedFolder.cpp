#include "btrieve/server/LinkedFolder.h"

#include <array>

#include "btrieve/locks/LockSpace.h"
#include "btrieve/server/ServerLayout.h"
#include "btrieve/server/ServerLocks.h"
#include "btrieve/server/ServerRanges.h"
#include "btrieve/system/HostFile.h"

namespace btrieve::server {
namespace {

constexpr const char* kDictionaries[] = {"file.ddf", "FILE.DDF"};
constexpr size_t kLongestTable = 48;  // bytes; room for a number behind it

// Numbers tried in turn before one is chosen that others do not try, too.
constexpr uint64_t kMostNumbers = 9;

uint64_t RandomNumber() {
  uint32_t number = 0;
  sqlite3_randomness(sizeof number, &number);
  return uint64_t{number} + kMostNumbers + 1;
}

// Nobody else has the table open, nor opens it, to the end of the scope.
class NobodyElse {
 public:
  NobodyElse(std::shared_ptr<ServerLink> link, int32_t object)
      : locks_(std::move(link), object),
        gate_(HeldByte::Exclusive(locks_, lockbyte::kGate)),
        open_(gate_ ? HeldByte::Exclusive(locks_, lockbyte::kOpen) : HeldByte()) {}
  explicit operator bool() const noexcept { return static_cast<bool>(open_); }

 private:
  ServerLocks locks_;
  HeldByte gate_;
  HeldByte open_;
};

// Beside the connection of this process's files: what happens here is no part of their transaction,
// and finds their locks as another station does.
std::shared_ptr<ServerLink> OwnLink(const LinkFile& place) {
  return ServerLink::To(place.server)->Beside();
}

ServerSpec EmptySpec(const FileSpec& file) {
  ServerSpec spec;
  spec.file = file;
  for (size_t slot = 0; slot < file.keys.size(); ++slot) spec.keyIds.push_back(spec.nextKeyId++);
  return spec;
}

Head EmptyHead(const FileSpec& file) {
  Head head;
  head.distinct.resize(file.keys.size());
  return head;
}

void Drop(ServerLink& link, const LinkFile& place) {
  DropAllRanges(link, place.schema, ReadServerSpec(link, place.schema, place.table).id);
  link.Run("DROP TABLE " + TableName(place.schema, place.table));
  link.Ask("DELETE FROM " + FilesTable(place.schema) + " WHERE name = $1",
           Arguments().Add(ViewOf(place.table)));
}

// False where the name is taken.
bool TryMake(const std::shared_ptr<ServerLink>& link, const LinkFile& place, const FileSpec& spec) {
  ServerTransaction transaction(link);
  try {
    MakeServerFile(*link, place.schema, place.table, EmptySpec(spec), EmptyHead(spec));
  } catch (const Failure& failure) {
    if (failure.status != kFileExists) throw;
    return false;
  }
  transaction.Commit();
  return true;
}

// Runs an action within a transaction, with nobody else there.
template <class Action>
Status Alone(const LinkFile& place, Action action) {
  const std::shared_ptr<ServerLink> link = OwnLink(place);
  const NobodyElse nobody(link, ObjectOf(*link, TableName(place.schema, place.table)));
  if (!nobody) return kCreateError;
  ServerTransaction transaction(link);
  action(*link);
  transaction.Commit();
  return kOk;
}

}  // namespace

std::optional<LinkFile> LinkAt(const std::string& path) {
  LockSpace space;
  if (IsRemote(path) || space.OpenToRead(path) != kOk) return std::nullopt;
  std::array<uint8_t, kLargestLink + 1> bytes{};
  const ByteView text(bytes.data(), space.ReadAt(0, bytes));
  LinkFault fault;
  return IsLinkFile(text) ? ReadLinkFile(text, fault) : std::nullopt;
}

std::optional<LinkFile> LinkBeside(const std::string& path) {
  for (const char* name : kDictionaries) {
    if (auto link = LinkAt(DirectoryOf(path) + name)) return link;
  }
  return std::nullopt;
}

std::string ServerNameOf(const std::string& path) {
  std::string name;
  for (const char each : path.substr(DirectoryLength(path))) {
    const char small = each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
    const bool isPlain = (small >= 'a' && small <= 'z') || (small >= '0' && small <= '9');
    name.push_back(isPlain ? small : '_');
  }
  name.resize(std::min(name.size(), kLongestTable));
  return name.empty() ? "_" : name;
}

std::string TableNameOf(const std::string& path) {
  const std::string name = ServerNameOf(path);
  return name.starts_with("btrieve_") ? "_" + name : name;
}

LinkFile MakeLinkedTable(const LinkFile& beside, const std::string& path, const FileSpec& spec) {
  const std::shared_ptr<ServerLink> link = OwnLink(beside);
  const std::string name = TableNameOf(path);
  LinkFile place = beside;
  place.table = name;
  for (uint64_t number = 2; !TryMake(link, place, spec); ++number) {
    if (number > kMostNumbers) number = RandomNumber();
    place.table = name + "_" + std::to_string(number);
  }
  return place;
}

Status DropLinkedTable(const LinkFile& link) {
  return Alone(link, [&](ServerLink& server) { Drop(server, link); });
}

Status EmptyLinkedTable(const LinkFile& link, const FileSpec& spec) {
  return Alone(link, [&](ServerLink& server) {
    Drop(server, link);
    MakeServerFile(server, link.schema, link.table, EmptySpec(spec), EmptyHead(spec));
  });
}

}  // namespace btrieve::server
