// Random calls on a file of random make-up, each compared with what the model expects.
#pragma once

#include <functional>
#include <string>

#include "Choices.h"
#include "ModelFile.h"
#include "ModelMakeUp.h"

namespace btrieve::test {

// Runs up to `steps` calls. An empty text when all answers were right, else the make-up of the
// file, the last calls and what differed.
std::string RunModel(Choices& choices, int steps);

// The same on a file that is there and is only read; `file` is what it holds.
std::string RunReadModel(Choices& choices, int steps, const MakeUp& makeUp, const ModelFile& file,
                         const std::string& path);

// Runs `writes` calls, closes the file, lets `between` do with it what it likes, and then only
// reads what is there in its place.
std::string RunModelThenRead(Choices& choices, int writes, int reads,
                             const std::function<void(const std::string& path)>& between);

}  // namespace btrieve::test
