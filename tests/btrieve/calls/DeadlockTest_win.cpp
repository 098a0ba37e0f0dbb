// Two programs that wait for each other; the other one is this program again, told by the
// environment which file to work on.
#include <windows.h>

#include "clients/People.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

constexpr char kFileVariable[] = "QRN_TEST_DEADLOCK_FILE";

struct CloseObject {
  void operator()(void* object) const noexcept { CloseHandle(object); }
};
using Object = std::unique_ptr<void, CloseObject>;

Object StartOther(const std::string& file) {
  SetEnvironmentVariableA(kFileVariable, file.c_str());
  char program[MAX_PATH] = {};
  GetModuleFileNameA(nullptr, program, sizeof program);
  std::string command = "\"" + std::string(program) +
                        "\" --gtest_also_run_disabled_tests --gtest_filter=OtherProgram.*";
  STARTUPINFOA start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION made{};
  EXPECT_TRUE(CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &start, &made));
  const Object thread(made.hThread);
  return Object(made.hProcess);
}

// Holds record 2 and wants record 1, which it gets in the end.
TEST(OtherProgram, DISABLED_WaitsForTheFirst) {
  char file[MAX_PATH] = {};
  if (GetEnvironmentVariableA(kFileVariable, file, sizeof file) == 0) GTEST_SKIP();
  ThisProcess process;
  const CallIn path{.key = PathKey(file)};
  ASSERT_EQ(process.Call(kOpen, 0, path).status, 0);
  for (const char* id : {"2", "1"}) {
    const CallIn person{.room = 20, .key = PersonKey(kById, id)};
    ASSERT_EQ(process.Call(kGetEqual + 300, 0, person).status, 0) << id;
  }
}

TEST(Deadlock, TheLastOfTwoProgramsGivesWay) {
  Folder folder;
  ThisProcess process;
  const std::string path = folder.Path("people.dat");
  Script script(process, path);
  script.Create({"1,Abe", "2,Ito"});
  ASSERT_EQ(script.Run("eq0=1+300"), "1");
  const Object other = StartOther(path);
  for (int i = 0; i < 2000 && script.Run("eq0=2+400") == "2"; ++i) {
    ASSERT_EQ(script.Run("unlock=2"), "ok");
    Sleep(5);
  }
  Sleep(100);
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(script.Run("eq0=2+300"), "#78");
  EXPECT_LT(GetTickCount64() - start, 1500u);
  EXPECT_EQ(script.Run("unlock*"), "ok");
  EXPECT_EQ(WaitForSingleObject(other.get(), 30000), WAIT_OBJECT_0);
  DWORD ended = 99;
  GetExitCodeProcess(other.get(), &ended);
  EXPECT_EQ(ended, 0u);
}

}  // namespace
}  // namespace btrieve::test
