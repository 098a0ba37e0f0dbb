#include "tools/qrndata/Interrupt.h"

#include <csignal>

namespace qrndata {

namespace {

volatile std::sig_atomic_t wasInterrupted = 0;

void NoteInterrupt(int) {
  wasInterrupted = 1;
  std::signal(SIGINT, SIG_DFL);
}

}  // namespace

InterruptWatch::InterruptWatch() noexcept {
  wasInterrupted = 0;
  before_ = std::signal(SIGINT, &NoteInterrupt);
}

InterruptWatch::~InterruptWatch() { std::signal(SIGINT, before_ == SIG_ERR ? SIG_DFL : before_); }

bool InterruptWatch::WasInterrupted() noexcept { return wasInterrupted != 0; }

}  // namespace qrndata
