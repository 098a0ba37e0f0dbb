// The record manager's own allocations fail, one after the other, while two files are changed: a
// step is done wholly or not at all, alone and in both kinds of transactions, the files stay right
// along every key, and nothing stays locked. Reads that fail leave the cursor where it is.

#include <filesystem>
#include <thread>

#include "FailingMemory.h"
#include "platform/BtrCall.h"
#include "tests/support/Test.h"

namespace qrn::test {
namespace {

constexpr int8_t kKeys = 3;  // of People: by code, unique; by town and code; by name
constexpr int8_t kByPlace = -1;
constexpr uint32_t kPersonSize = 45;

using Person = std::array<char, kPersonSize>;

Person PersonOf(int32_t code) {
  Person person{};
  std::memcpy(person.data(), &code, sizeof code);
  std::strcpy(person.data() + 4, "somebody");
  return person;
}

std::string BlockOf(int32_t first, int32_t end) {
  const NotCounted own;
  constexpr uint16_t kSize = kPersonSize;
  const auto count = static_cast<uint16_t>(end - first);
  std::string block(reinterpret_cast<const char*>(&count), sizeof count);
  for (int32_t code = first; code < end; ++code) {
    const Person person = PersonOf(code);
    block.append(reinterpret_cast<const char*>(&kSize), sizeof kSize);
    block.append(person.data(), person.size());
  }
  return block;
}

class File {
 public:
  int Open(const std::string& path, int8_t mode = BtrModeNormal) {
    std::array<char, 256> key{};
    path.copy(key.data(), key.size() - 1);
    return Run(BtrOpOpen, nullptr, 0, key.data(), mode);
  }
  int Close() { return Run(BtrOpClose); }
  int Run(int operation, void* data = nullptr, uint32_t length = 0, void* key = nullptr,
          int8_t keyNumber = 0) {
    return BtrCall(static_cast<uint16_t>(operation), block_, data, &length, key, 255, keyNumber);
  }
  int Get(int operation, int8_t key, int32_t& code) {
    Person person{};
    const int status =
        Run(operation, person.data(), kPersonSize, key_.data(), std::max<int8_t>(key, 0));
    std::memcpy(&code, person.data(), sizeof code);
    return status;
  }
  int Insert(int32_t code) {
    Person person = PersonOf(code);
    return Run(BtrOpInsert, person.data(), kPersonSize, nullptr, -1);
  }
  // Records `first` to `end` - 1 at once; `told` is how many the answer says there are.
  int InsertBlock(int32_t first, int32_t end, int& told) {
    std::string block = BlockOf(first, end);
    auto length = static_cast<uint32_t>(block.size());
    const int status = BtrCall(BtrOpInsertExtended, block_, block.data(), &length, nullptr, 0, -1);
    const bool isAnswer = length < block.size();
    told = isAnswer ? static_cast<uint8_t>(block[0]) : 0;
    return status;
  }
  int Find(int32_t code) {
    std::memcpy(key_.data(), &code, sizeof code);
    return Get(BtrOpGetEqual, 0, code);
  }
  // Every key gets another value but the first.
  int Change(int32_t code) {
    Person person = PersonOf(code);
    if (const int status = Find(code)) return status;
    std::strcpy(person.data() + 4, "another");
    std::strcpy(person.data() + 24, "Nara");
    return Run(BtrOpUpdate, person.data(), kPersonSize, nullptr, -1);
  }
  int Erase(int32_t code) {
    const int status = Find(code);
    return status != 0 ? status : Run(BtrOpDelete);
  }
  // Codes as a walk meets them, then the status that ended it.
  std::string Walk(int8_t key) {
    std::string met;
    int operation = key == kByPlace ? BtrOpStepFirst : BtrOpGetFirst;
    int32_t code = 0;
    for (int status = 0;; operation = key == kByPlace ? BtrOpStepNext : BtrOpGetNext) {
      status = Get(operation, key, code);
      met += std::to_string(status != 0 ? status : code) + " ";
      if (status != 0) return met;
    }
  }
  // The same along every key, and the names that stand there.
  std::string Content() {
    const std::string content = Walk(0);
    for (int8_t key = 1; key < kKeys; ++key) EXPECT_EQ(Sorted(Walk(key)), Sorted(content)) << key;
    EXPECT_EQ(Sorted(Walk(kByPlace)), Sorted(content)) << "by place";
    return content;
  }

 private:
  static std::multiset<std::string> Sorted(const std::string& walk) {
    std::istringstream words(walk);
    return {std::istream_iterator<std::string>(words), {}};
  }

  std::array<uint8_t, 256> key_{};
  uint8_t block_[128] = {};
};

// What the record manager asks for counts here.
template <class Work>
bool FailsInManager(int failing, Work work) {
  return FailsIn(failing, [&] {
    ReplaceBtrCall(nullptr);
    work();
  });
}

struct Kind {
  const char* name;
  int begin;  // 0 without a transaction
};

struct RecordManagerWithoutMemory : ::testing::TestWithParam<Kind> {
  void SetUp() override {
    const std::string path = company_.Directory() + "/People.btr";
    const std::string other = company_.Directory() + "/Others.btr";
    std::filesystem::copy_file(path, other);
    ASSERT_EQ(file_.Open(path), 0);
    ASSERT_EQ(other_.Open(other), 0);
  }
  void TearDown() override {
    EXPECT_EQ(file_.Close(), 0);
    EXPECT_EQ(other_.Close(), 0);
  }
  bool Within() const { return GetParam().begin != 0; }

  // One step in both files, or without a transaction in one. The status of what failed first.
  template <class Step>
  int Both(Step step) {
    if (!Within()) return step(file_);
    if (const int status = file_.Run(GetParam().begin)) return status;
    int status = step(file_);
    if (status != 0) return EndAfterFailure(status);
    status = step(other_);
    const int end = file_.Run(status == 0 ? BtrOpEndTransaction : BtrOpAbortTransaction);
    return status != 0 ? status : end;
  }

  // A transaction in which a write has failed goes on as if that had never been tried, or cannot be
  // ended but by being undone.
  int EndAfterFailure(int status) {
    const bool concurrent = GetParam().begin == BtrOpBeginConcurrentTransaction;
    if (concurrent) file_.Content();
    const int end = file_.Run(BtrOpEndTransaction);
    EXPECT_TRUE(end == 0 || (!concurrent && end == BtrStatusTransactionNotWritten)) << end;
    return status;
  }

  // With one allocation after another failing until all succeed. What `undo` does with memory makes
  // the step possible again.
  template <class Step, class Undo>
  void FailEach(Step step, Undo undo) {
    const std::string before = file_.Content();
    ASSERT_EQ(Both(step), 0);
    const std::string after = file_.Content();
    ASSERT_EQ(Both(undo), 0);
    ASSERT_EQ(file_.Content(), before);
    FailEachInTurn([&](int failing) {
      int status = 0;
      const bool happened = FailsInManager(failing, [&] { status = Both(step); });
      if (Within()) file_.Run(BtrOpAbortTransaction);  // should its end itself have failed
      EXPECT_TRUE(status == 0 || happened) << status;
      EXPECT_EQ(file_.Content(), status == 0 ? after : before) << status;
      if (Within()) {
        EXPECT_EQ(other_.Content(), file_.Content());
      }
      if (status == 0) {
        EXPECT_EQ(Both(undo), 0);
      }
      EXPECT_EQ(file_.Content(), before);
      return happened;
    });
  }

  Company company_;
  File file_;
  File other_;
};

TEST_P(RecordManagerWithoutMemory, InsertsWhollyOrNotAtAll) {
  FailEach([](File& file) { return file.Insert(7); }, [](File& file) { return file.Erase(7); });
}

// Of a block, what is told to be there is there, and no more.
TEST_P(RecordManagerWithoutMemory, InsertsAsManyAsItTells) {
  FailEachInTurn([&](int failing) {
    if (Within()) {
      EXPECT_EQ(file_.Run(GetParam().begin), 0);
    }
    int told = 0, status = 0;
    const bool happened =
        FailsInManager(failing, [&] { status = file_.InsertBlock(20, 25, told); });
    EXPECT_EQ(status == 0, told == 5) << status;
    const int end = Within() ? file_.Run(BtrOpEndTransaction) : 0;
    std::string expected;
    for (int32_t code = 20; end == 0 && code < 20 + told; ++code) {
      expected += std::to_string(code) + " ";
    }
    EXPECT_EQ(file_.Content(), expected + "9 ") << end;
    for (int32_t code = 20; code < 25; ++code) file_.Erase(code);
    return happened;
  });
}

TEST_P(RecordManagerWithoutMemory, DeletesWhollyOrNotAtAll) {
  for (const int32_t code : {1, 2, 3})
    ASSERT_EQ(Both([&](File& file) { return file.Insert(code); }), 0);
  FailEach([](File& file) { return file.Erase(2); }, [](File& file) { return file.Insert(2); });
}

TEST_P(RecordManagerWithoutMemory, ChangesWhollyOrNotAtAll) {
  ASSERT_EQ(Both([](File& file) { return file.Insert(1); }), 0);
  FailEach([](File& file) { return file.Change(1); },
           [](File& file) { return file.Erase(1) + file.Insert(1); });
}

// Inside a transaction that has changed both files, so that changes lie over what is stored.
TEST_P(RecordManagerWithoutMemory, ReadsGoOnWhereTheyFailed) {
  for (int32_t code = 10; code < 20; ++code) {
    ASSERT_EQ(Both([&](File& file) { return file.Insert(code); }), 0);
  }
  if (Within()) {
    ASSERT_EQ(file_.Run(GetParam().begin), 0);
    EXPECT_EQ(file_.Insert(15 + 100), 0);
    EXPECT_EQ(file_.Erase(15), 0);
  }
  for (int8_t key = kByPlace; key < kKeys; ++key) {
    const std::string whole = file_.Walk(key);
    FailEachInTurn([&](int failing) {
      bool happened = false;
      std::string met;
      int operation = key == kByPlace ? BtrOpStepFirst : BtrOpGetFirst;
      for (int status = 0; status == 0 || status == BtrStatusNoCacheBuffer;) {
        int32_t code = 0;
        const auto get = [&] { status = file_.Get(operation, key, code); };
        happened |= FailsInManager(failing, get);
        if (status == BtrStatusNoCacheBuffer) get();
        met += std::to_string(status != 0 ? status : code) + " ";
        operation = key == kByPlace ? BtrOpStepNext : BtrOpGetNext;
      }
      EXPECT_EQ(met, whole) << "key " << int{key};
      return happened;
    });
  }
  if (Within()) {
    EXPECT_EQ(file_.Run(BtrOpAbortTransaction), 0);
  }
}

size_t ThreadCount() {
  const std::filesystem::directory_iterator threads("/proc/self/task");
  return static_cast<size_t>(std::distance(begin(threads), end(threads)));
}

// Its own thread ends when no file is open any more, and is begun by the next call, if it can be.
TEST(RecordManagerFiles, AreLeftAloneWhereNoThreadCanBeBegun) {
  File none;
  std::array<char, 15> versions{};
  ASSERT_EQ(none.Run(BtrOpVersion, versions.data(), versions.size()), 0);
  for (int look = 0; ThreadCount() > 1 && look < 500; ++look) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  ASSERT_EQ(ThreadCount(), 1U);
  EXPECT_TRUE(FailsInManager(
      0, [&] { EXPECT_EQ(none.Run(BtrOpVersion, versions.data(), versions.size()), 0); }));
  EXPECT_EQ(none.Run(BtrOpVersion, versions.data(), versions.size()), 0);
  EXPECT_EQ(ThreadCount(), 2U);
}

// One allocation after another fails in a process that has called nothing before: 20 until the
// library is found, 100 until it has what it needs, then 0. The number of 100s, or -1.
int RefusedAtFirst() {
  File none;
  std::array<char, 15> versions{};
  int refused = 0;
  for (int call = 0; call < 100; ++call) {
    int status = 0;
    FailsInManager(call,
                   [&] { status = none.Run(BtrOpVersion, versions.data(), versions.size()); });
    if (status == 0) return refused;
    if (status == BtrStatusNoCacheBuffer)
      ++refused;
    else if (status != BtrStatusNotActive)
      return -1;
  }
  return -1;
}

TEST(RecordManagerDeathTest, TheVeryFirstCallIsRefusedWithoutMemory) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_EXIT(std::_Exit(RefusedAtFirst() > 0 ? 7 : 1), ::testing::ExitedWithCode(7), "");
}

TEST(RecordManagerFiles, OpenOrStayClosedWithoutMemory) {
  FailEachInTurn([](int failing) {
    const Company company;
    const std::string path = company.Directory() + "/People.btr";
    bool happened = false;
    {
      File file;
      int status = 0;
      happened = FailsInManager(failing, [&] { status = file.Open(path); });
      EXPECT_EQ(status, happened && status != 0 ? BtrStatusNoCacheBuffer : 0);
      EXPECT_EQ(file.Insert(1), status != 0 ? BtrStatusNotOpen : 0);
      if (status == 0) {
        EXPECT_EQ(file.Close(), 0);
      }
    }
    File alone;  // nothing of it is left open
    EXPECT_EQ(alone.Open(path, BtrModeExclusive), 0);
    EXPECT_EQ(alone.Close(), 0);
    return happened;
  });
}

INSTANTIATE_TEST_SUITE_P(Within, RecordManagerWithoutMemory,
                         ::testing::Values(Kind{"NoTransaction", 0},
                                           Kind{"AnExclusiveOne", BtrOpBeginTransaction},
                                           Kind{"AConcurrentOne", BtrOpBeginConcurrentTransaction}),
                         [](const auto& tried) { return tried.param.name; });

}  // namespace
}  // namespace qrn::test
