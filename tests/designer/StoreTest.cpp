// Forms are opened and saved with their companions, and old files are never lost.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "host/designer/document/FormStore.h"
#include "host/designer/document/SafeSave.h"
#include "host/designer/model/PropertyList.h"
#include "host/form/SourceText.h"
#include "tests/designer/kit/Forms.h"
#include "tests/support/TempFolder.h"

#ifndef _WIN32
#include <sys/resource.h>

#include <csignal>
#endif

namespace qrn::test {
namespace {

using namespace designer;

class Store : public testing::Test {
 protected:
  std::string Path(const char* name) const { return folder_.Path(name); }
  std::string Bytes(const char* name) const { return form::ReadWholeFile(Path(name)); }
  void Write(const char* name, const std::string& bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
  }
  void WriteForm() const {
    Write("main.frm", FormCases()[0].bytes);
    Write("main.frx", FormCases()[0].companion);
  }
  std::unique_ptr<Design> Open(const char* name) const {
    return std::make_unique<Design>(OpenStoredForm(Path(name)), Classes());
  }
  static Refusal PutPicture(Design& design, const std::string& image) {
    design.Select({design.form()});
    return PropertyList(design).EnterPicture("Icon", image);
  }
  std::string Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Root())) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
    return text;
  }

  TempFolder folder_;
};

TEST_F(Store, SavesAnUntouchedFormUnchanged) {
  for (const std::string& path : RepositoryForms()) {
    const std::string bytes = form::ReadWholeFile(path);
    Write("f.frm", bytes);
    EXPECT_EQ(Open("f.frm")->Save(Path("f.frm")), "") << path;
    EXPECT_EQ(Bytes("f.frm"), bytes) << path;
    EXPECT_EQ(Bytes("f.frm.bak"), bytes) << path;
  }
  EXPECT_EQ(Names(), "f.frm f.frm.bak");
}

TEST_F(Store, KeepsTheOldFilesBeside) {
  WriteForm();
  const auto design = Open("main.frm");
  EXPECT_FALSE(PutPicture(*design, "BM-new"));
  EXPECT_TRUE(design->IsDirty());
  EXPECT_EQ(design->Save(Path("main.frm")), "");
  EXPECT_FALSE(design->IsDirty());
  EXPECT_EQ(Names(), "main.frm main.frm.bak main.frx main.frx.bak");
  EXPECT_EQ(Bytes("main.frm.bak"), FormCases()[0].bytes);
  EXPECT_EQ(Bytes("main.frx.bak"), FormCases()[0].companion);
  EXPECT_TRUE(Bytes("main.frx").starts_with(FormCases()[0].companion));
  design->Undo();
  EXPECT_TRUE(design->IsDirty());
  EXPECT_EQ(design->Save(Path("main.frm")), "");
  EXPECT_EQ(Bytes("main.frm"), FormCases()[0].bytes);
  EXPECT_EQ(Bytes("main.frx"), FormCases()[0].companion);
}

TEST_F(Store, SavesUnderAnotherNameWithTheCompanion) {
  WriteForm();
  const auto design = Open("main.frm");
  EXPECT_FALSE(PutPicture(*design, "BM-new"));
  EXPECT_EQ(design->Save(Path("other.frm")), "");
  EXPECT_EQ(Bytes("main.frm"), FormCases()[0].bytes);
  const auto again = Open("other.frm");
  EXPECT_EQ(again->TextValue(IdOf(*again, "txtMany"), "Text"), "line\r\n12");
  EXPECT_NE(Bytes("other.frm").find("\"other.frx\":0018"), std::string::npos);
  EXPECT_EQ(Bytes("other.frm").find("main.frx"), std::string::npos);
  // What is undone now still names the file that it came from; it goes with the form all the same.
  design->Undo();
  EXPECT_EQ(design->Save(Path("other.frm")), "");
  EXPECT_EQ(Bytes("other.frx"), FormCases()[0].companion);
}

TEST_F(Store, LeavesACompanionAloneThatIsNotMeant) {
  Write("f.frm", FormWith(""));
  Write("f.frx", "of someone else");
  EXPECT_EQ(Open("f.frm")->Save(Path("f.frm")), "");
  EXPECT_EQ(Bytes("f.frx"), "of someone else");
}

TEST_F(Store, TellsWhyAFormCannotBeOpened) {
  Write("bad.frm", "VERSION 5.00\r\nBegin VB.Form F\r\n");
  EXPECT_THROW(Open("bad.frm"), form::FileRefused);
  EXPECT_THROW(Open("none.frm"), std::runtime_error);
}

TEST_F(Store, TellsWhyAFormCannotBeSavedAndLosesNothing) {
  WriteForm();
  std::filesystem::create_directory(Path("folder.frm"));
  const auto design = Open("main.frm");
  EXPECT_FALSE(PutPicture(*design, "BM-new"));
  for (const char* path : {"folder.frm", "none/main.frm"}) {
    const std::string reason = design->Save(Path(path));
    EXPECT_TRUE(reason.starts_with(Path(path).substr(0, Path(path).size() - 4))) << reason;
    EXPECT_TRUE(design->IsDirty());
  }
  EXPECT_EQ(Names(), "folder.frm main.frm main.frx");
}

TEST_F(Store, PutsBackWhatStoodWhenTheLastFileFails) {
  Write("a", "old a");
  std::filesystem::create_directories(Path("b.new/x"));
  EXPECT_NE(SaveFiles({{Path("a"), "new a"}, {Path("b"), "new b"}}), "");
  EXPECT_EQ(Bytes("a"), "old a");
  std::filesystem::remove_all(Path("b.new"));
  EXPECT_EQ(Names(), "a");
}

#ifndef _WIN32
// A disk that is full from the n-th byte of a file on.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : old_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &limit_);
    const rlimit small{bytes, limit_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &limit_);
    std::signal(SIGXFSZ, old_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit limit_{};
  void (*old_)(int);
};

TEST_F(Store, LeavesTheOldFilesWhenTheDiskIsFull) {
  WriteForm();
  const auto design = Open("main.frm");
  EXPECT_FALSE(PutPicture(*design, std::string(100, 'x')));
  const size_t most = FormCases()[0].bytes.size() + 200;
  for (size_t size = 0; size < most; size += 97) {
    std::string reason;
    {
      const FullDisk full(size);
      reason = design->Save(Path("main.frm"));
    }
    if (reason.empty()) break;
    ASSERT_EQ(Bytes("main.frm"), FormCases()[0].bytes) << size;
    ASSERT_EQ(Bytes("main.frx"), FormCases()[0].companion) << size;
    ASSERT_EQ(Names(), "main.frm main.frx") << size;
    ASSERT_TRUE(design->IsDirty());
  }
  EXPECT_EQ(design->Save(Path("main.frm")), "");
}
#endif

}  // namespace
}  // namespace qrn::test
