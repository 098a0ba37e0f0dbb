// Malformed calls: garbage position blocks, missing pointers, any operation with any data. Whatever
// comes, the answer is a status, and a file that was good stays good.
#include <filesystem>
#include <set>

#include "tests/btrieve/kit/Calls.h"
#include "tests/btrieve/kit/Choices.h"
#include "tests/btrieve/kit/Descriptor.h"
#include "tests/fuzz/FuzzInput.h"

using namespace btrieve::test;
using namespace qrn::fuzz;

namespace {

Bytes RandomBytes(Choices& choices, uint32_t most) {
  Bytes bytes(choices.Pick(most + 1));
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(choices.Pick(256));
  return bytes;
}

Bytes FileBlock() {
  return CreateBlock({.recordLength = 16, .flags = 1},
                     {{.flags = 0x102, .type = 1},
                      {.position = 5, .length = 6, .flags = 0x503},
                      {.position = 11, .length = 4, .flags = 0x343, .type = 5},
                      {.position = 1, .length = 1, .flags = 0x109, .type = 14}});
}

// A good descriptor with a few bytes changed.
Bytes NearDescriptor(Choices& choices) {
  Descriptor descriptor{.signature = choices.Chance(2) ? "EG" : "UC", .wanted = 3};
  for (uint32_t terms = choices.Pick(3), i = 0; i < terms; ++i) {
    descriptor.terms.push_back({1, 4, static_cast<uint16_t>(choices.Pick(20)),
                                static_cast<int>(choices.Pick(8)),
                                i + 1 == terms ? kLastTerm : kAndNext, RandomBytes(choices, 4)});
  }
  Bytes bytes = DescriptorBytes(descriptor);
  for (uint32_t changes = choices.Pick(3); changes > 0; --changes) {
    bytes[choices.Pick(static_cast<uint32_t>(bytes.size()))] =
        static_cast<uint8_t>(choices.Pick(256));
  }
  return bytes;
}

Bytes NearBlock(Choices& choices) {
  Bytes bytes = FileBlock();
  for (uint32_t changes = choices.Pick(4); changes > 0; --changes) {
    bytes[choices.Pick(static_cast<uint32_t>(bytes.size()))] =
        static_cast<uint8_t>(choices.Pick(256));
  }
  return bytes;
}

int SomeOperation(Choices& choices) {
  static constexpr int kKnown[] = {0,  1,  2,  2,  2,  3,  4,  5,  6,  7,  8,    9,
                                   10, 11, 12, 13, 14, 15, 19, 20, 21, 22, 23,   24,
                                   26, 27, 29, 30, 31, 32, 33, 34, 35, 36, 37,   38,
                                   39, 40, 44, 45, 55, 56, 57, 60, 62, 78, 1019, 17029};
  if (choices.Chance(30)) return static_cast<int>(choices.Pick(65536));
  return choices.Of(std::span<const int>(kKnown)) +
         static_cast<int>(choices.Chance(4) ? 100 * choices.Pick(5) : 0);
}

bool TakesText(int operation) {
  const int base = operation % 100;
  return base == 0 || base == 14 || base == 29 || base == 78;
}

// Names made of any bytes are taken from the current folder: a passing one, for as long as this
// lives.
class WorkingFolder {
 public:
  explicit WorkingFolder(const Folder& folder) : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder.Path(""));
  }
  WorkingFolder(const WorkingFolder&) = delete;
  ~WorkingFolder() {
    std::error_code ignored;
    std::filesystem::current_path(before_, ignored);
  }

 private:
  std::filesystem::path before_;
};

class Calls {
 public:
  explicit Calls(Choices& choices) : choices_(choices) {
    CallIn create{.data = FileBlock(), .key = PathKey(folder_.Path("fuzz.dat"))};
    Require(process_.Call(kCreate, 0, create).status == 0, "Create");
    for (int block : {0, 1}) Open(block);
  }

  void Run(int calls) {
    for (int i = 0; i < calls; ++i) One();
    process_.Call(kReset, 0, {});
    Open(9);
    Walk();
  }

 private:
  void Open(int block) {
    const CallIn in{.key = PathKey(folder_.Path("fuzz.dat"))};
    const auto status = process_.Call(kOpen, block, in).status;
    Require(status == 0 || status == 51 || status == 88, "Open");
  }

  void One() {
    const int block = static_cast<int>(choices_.Pick(3));
    if (choices_.Chance(40)) process_.Block(block)[choices_.Pick(128)] ^= 1 << choices_.Pick(8);
    CallIn in;
    const int operation = SomeOperation(choices_);
    switch (choices_.Pick(4)) {
      case 0:
        in.data = RandomBytes(choices_, 80);
        break;
      case 1:
        in.data = operation % 100 == 14 || operation % 100 == 31 ? NearBlock(choices_)
                                                                 : NearDescriptor(choices_);
        break;
      case 2:
        in.data = Number(choices_.Pick(20)) + RandomBytes(choices_, 30);
        break;
      default:
        in.data =
            Number(static_cast<int32_t>(choices_.Pick(40))) + Bytes(12 + choices_.Pick(40), 'a');
        break;
    }
    in.room = choices_.Chance(3) ? 0 : choices_.Pick(300);
    in.key = choices_.Chance(2)
                 ? PathKey(folder_.Path(choices_.Chance(3) ? "other.dat" : "fuzz.dat"))
                 : RandomBytes(choices_, 40);
    in.keyLength = choices_.Chance(4) ? static_cast<int>(choices_.Pick(256)) : -1;
    // Where the key is a text its length may be told as 0: it ends at its NUL.
    if (TakesText(operation)) in.keyLength = -1;
    in.keyNumber = choices_.Chance(3) ? static_cast<int>(choices_.Pick(256))
                                      : static_cast<int>(choices_.Pick(5)) - 1;
    in.noBlock = choices_.Chance(30);
    in.noData = choices_.Chance(30);
    in.noLength = choices_.Chance(30);
    in.noKey = choices_.Chance(30);
    const CallOut out = process_.Call(operation, block, in);
    Require(out.status >= 0 && out.status <= 175, "a status that is none");
    if (!in.noLength && out.status == 0) Require(out.length <= 0xFFFF + 1, "length");
  }

  // Every key holds the records that the count tells.
  void Walk() {
    const CallOut stat = process_.Call(kStat, 9, {.room = 5000});
    if (stat.status != 0) return;
    const auto records = NumberAt<uint32_t>(stat.data, 6);
    uint32_t steps = 0;
    CallOut out = process_.Call(kStepFirst, 9, {.room = 70000});
    for (; out.status == 0 && steps <= records; ++steps)
      out = process_.Call(kStepNext, 9, {.room = 70000});
    Require(steps == records, "count of records");
  }

  Choices& choices_;
  Folder folder_;
  WorkingFolder here_{folder_};
  ThisProcess process_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Choices choices(static_cast<uint32_t>(size), {data, size});
  Calls(choices).Run(150);
  return 0;
}
