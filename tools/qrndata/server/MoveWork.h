// What both ways of a move have in common.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "btrieve/server/ServerLink.h"
#include "btrieve/session/SoleFile.h"
#include "btrieve/storage/Comparison.h"
#include "tools/qrndata/Interrupt.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/Verbs.h"
#include "tools/qrndata/server/MoveRecord.h"

namespace qrndata {

using SoleFiles = std::vector<std::unique_ptr<btrieve::SoleFile>>;

// A data file for this program alone. Throws Failure (kSystem).
std::unique_ptr<btrieve::SoleFile> HoldFile(const std::filesystem::path& path);
// All closed, so that they can be given other names; still nobody else gets at them.
void RestFiles(const SoleFiles& files);

// A table on the server as storage reads it. Throws btrieve::Failure.
std::unique_ptr<btrieve::Storage> OpenTable(const btrieve::server::LinkFile& place,
                                            const std::string& table);

// Throws Failure (kSystem) that tells the first difference between what was copied and its copy.
void RequireAlike(btrieve::Storage& from, btrieve::Storage& to, const std::string& name,
                  const btrieve::WorkWatch& watch);

// Records gone through, over all parts of the work; ends it by Failure (kInterrupted) when the user
// wants it ended.
class MoveProgress {
 public:
  MoveProgress(const Streams& streams, const std::string& label, uint64_t total)
      : progress_(streams.terminal, label, total) {}

  // For the next part of the work.
  btrieve::WorkWatch NextPart();

 private:
  Progress progress_;
  uint64_t before_ = 0, done_ = 0;
};

// What a way works with.
struct Moving {
  Moving(const MoveOptions& given, const Streams& told, MoveRecord::Way way);
  // As messages name it.
  std::string Place() const;
  // To the place's server.
  void Connect();

  const MoveOptions& options;
  const Streams& streams;
  MoveRecord move;
  std::shared_ptr<btrieve::server::ServerLink> link;
  SoleFiles files;  // of the folder, held by this program
  uint64_t records = 0;
};

// Finishes or undoes what an interrupted move of the folder has left, and says so.
enum class Settled : uint8_t { NothingWas, Made, Undone };
Settled SettleMove(const std::filesystem::path& directory, const Streams& streams);

ExitCode MoveThere(const MoveOptions& options, const Streams& streams);
ExitCode MoveBack(const MoveOptions& options, const Streams& streams);

}  // namespace qrndata
