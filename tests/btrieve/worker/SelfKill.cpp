#include "SelfKill.h"

#include <signal.h>
#include <sqlite3.h>
#include <sys/types.h>
#include <unistd.h>

namespace btrieve::test {
namespace {

uint32_t writesLeft = 0;

void Die() {
  kill(getpid(), SIGKILL);
  pause();
}

ssize_t DyingWrite(int file, const void* bytes, size_t size, off_t offset) {
  if (--writesLeft > 0) return pwrite(file, bytes, size, offset);
  (void)!pwrite(file, bytes, size / 2, offset);
  Die();
  return -1;
}

int DyingTruncate(int file, off_t size) {
  if (--writesLeft == 0) Die();
  return ftruncate(file, size);
}

int DyingUnlink(const char* path) {
  if (--writesLeft == 0) Die();
  return unlink(path);
}

template <class Function>
void Replace(sqlite3_vfs* vfs, const char* name, Function* function) {
  vfs->xSetSystemCall(vfs, name, reinterpret_cast<sqlite3_syscall_ptr>(function));
}

}  // namespace

void KillAtWrite(uint32_t n) {
  if (n == 0) return;
  writesLeft = n;
  sqlite3_vfs* vfs = sqlite3_vfs_find("unix");
  Replace(vfs, "pwrite", DyingWrite);
  Replace(vfs, "pwrite64", DyingWrite);
  Replace(vfs, "ftruncate", DyingTruncate);
  Replace(vfs, "unlink", DyingUnlink);
}

}  // namespace btrieve::test
