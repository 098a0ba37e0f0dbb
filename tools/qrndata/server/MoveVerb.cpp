// `move`: a dictionary and its data files to a server, and back.
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/server/MoveWork.h"
#include "tools/qrndata/server/ServerAccess.h"

namespace qrndata {

ExitCode RunMove(const MoveOptions& options, const Streams& streams) {
  if (options.isBack != options.server.empty()) {
    throw Failure(kUsage, Say(Message::ServerOrBack));
  }
  const bool wasInterrupted = SettleMove(options.directory, streams) == Settled::Made;
  // What the user wants may be what was finished just now.
  const bool isDone = wasInterrupted && HasLinks(options.directory) != options.isBack;
  if (isDone) return kDone;
  return options.isBack ? MoveBack(options, streams) : MoveThere(options, streams);
}

}  // namespace qrndata
