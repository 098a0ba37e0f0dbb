// Random calls on a file of random make-up, each compared with what the model expects.
#pragma once

#include <string>

#include "Choices.h"

namespace btrieve::test {

// Runs up to `steps` calls. An empty text when all answers were right, else the make-up of the
// file, the last calls and what differed.
std::string RunModel(Choices& choices, int steps);

}  // namespace btrieve::test
