// A process that works in the bank, as its parent drives and hears it.
#pragma once

#include "clients/LineProcess.h"
#include "kit/BankBooks.h"

namespace btrieve::test {

// As the worker's command "go" takes it.
struct Batch {
  uint32_t seed = 0;
  uint32_t steps = 0;
  uint32_t kind = UINT32_MAX;  // any
  uint32_t killAt = 0;         // never
  uint32_t moments = 0;
};

// What it has told since it was last heard.
struct Heard {
  std::vector<Effect> acknowledged;
  std::vector<Effect> open;  // of the step that its death has interrupted while it was decided
  std::vector<std::vector<Effect>> lost;  // of those that the server's absence has interrupted so
  struct Place {
    int file;
    uint32_t position;
    int32_t id;
  };
  std::vector<Place> places;
  uint32_t steps = 0;    // acknowledged
  uint32_t refused = 0;  // likewise told
  uint32_t losses = 0;   // how often the server was away
  std::string view, fault;
  bool begun = false;  // it has run at all
  bool died = false;
  std::string ending;  // how it died
};

class Branch {
 public:
  // The records it makes have ids from `firstId` on. See OtherProcess for the program.
  Branch(int32_t firstId, const std::vector<std::string>& paths,
         const std::vector<std::string>& program = {});

  // Commands begin only; what comes of them is to be heard.
  void Go(const Batch& batch);
  void View() { process_.Say("view"); }
  void Reopen() { process_.Say("reopen"); }
  // It closes its files and ends.
  void Leave() { process_.Dismiss(); }
  void Kill() { process_.Kill(); }
  // Waits until the last command has been carried out, or the process is gone.
  Heard Hear();

 private:
  LineProcess process_;
};

}  // namespace btrieve::test
