// COM for the whole test program, and the sample's type library, read back from a file.
#include <gtest/gtest.h>
#include <ole2.h>

#include <filesystem>

#include "SampleTable.h"
#include "TestSite.h"
#include "com/Module.h"
#include "typelib/TypeLibraryWriter.h"

namespace qrn::test {
namespace {

class Environment final : public ::testing::Environment {
 public:
  void SetUp() override {
    ASSERT_EQ(OleInitialize(nullptr), S_OK);
    path_ = std::filesystem::temp_directory_path() / "qrn_ole_sample.tlb";
    WriteTypeLibrary(kSampleLibrary, path_.wstring().c_str());
    UseTypeLibrary(path_.wstring().c_str());
  }
  void TearDown() override {
    EXPECT_TRUE(ModuleIsIdle()) << "objects are left alive";
    DestroyWindow(TheForm());
    ModuleEnd();
    OleUninitialize();
    std::filesystem::remove(path_);
  }

 private:
  std::filesystem::path path_;
};

[[maybe_unused]] const auto* const kEnvironment =
    ::testing::AddGlobalTestEnvironment(new Environment);

}  // namespace
}  // namespace qrn::test
