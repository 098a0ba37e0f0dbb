// COM for the whole test program.
#include <gtest/gtest.h>
#include <ole2.h>

#include "binding/registry/ControlRegistry.h"
#include "com/Module.h"
#include "tests/ole/TestSite.h"

namespace qrn::test {
namespace {

class Environment final : public ::testing::Environment {
 public:
  void SetUp() override {
    ASSERT_EQ(OleInitialize(nullptr), S_OK);
    TheRegistry();
  }
  void TearDown() override {
    EXPECT_TRUE(ModuleIsIdle()) << "objects are left alive";
    DestroyWindow(TheForm());
    ModuleEnd();
    OleUninitialize();
  }
};

[[maybe_unused]] const auto* const kEnvironment =
    ::testing::AddGlobalTestEnvironment(new Environment);

}  // namespace
}  // namespace qrn::test
