// The classes without a registration: a program that has the assembly manifest makes them, and the
// registry knows nothing of them.

#include <fstream>

#include "ModuleCopy.h"

namespace qrn::test {
namespace {

constexpr char kProgramManifest[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n"
    "  <assemblyIdentity type=\"win32\" name=\"program\" version=\"1.0.0.0\"/>\n"
    "  <dependency><dependentAssembly>\n"
    "    <assemblyIdentity type=\"win32\" name=\"qrnbt350\" version=\"3.5.1.0\""
    " processorArchitecture=\"amd64\"/>\n"
    "  </dependentAssembly></dependency>\n"
    "</assembly>\n";

constexpr wchar_t kProgram[] = L"manifest_client.exe";

void WriteProgramManifest(const std::wstring& path) {
  std::ofstream(std::filesystem::path(CopyFolder::Extended(path)), std::ios::binary)
      << kProgramManifest;
}

std::wstring Quoted(const std::wstring& text) { return L"\"" + text + L"\""; }

// COM takes paths of up to 259 characters: a longer one goes by its short names.
std::wstring Reachable(const std::wstring& path) {
  if (path.size() < MAX_PATH) return path;
  wchar_t reached[1024] = {};
  const std::wstring extended = CopyFolder::Extended(path);
  GetShortPathNameW(extended.c_str(), reached, 1024);
  return reached + extended.size() - path.size();
}

struct FolderCase {
  const char* name;
  std::wstring folder;
};

class Manifest : public ::testing::TestWithParam<FolderCase> {};

// The program lies elsewhere, so that only the manifest leads to the module.
TEST_P(Manifest, MakesEveryClassWithoutARegistration) {
  const CopyFolder folder(GetParam().folder, {L"qrnbt350.ocx", L"qrnbt350.manifest"});
  const CopyFolder elsewhere(L"", {kProgram}, L"qrn-else");
  const std::wstring manifest = folder.Place(L"program.manifest");
  WriteProgramManifest(manifest);
  const std::wstring reached = Reachable(manifest);
  const std::wstring module = reached.substr(0, reached.rfind(L'\\')) + L"\\qrnbt350.ocx";
  EXPECT_EQ(
      RunTool(Quoted(elsewhere.Place(kProgram)) + L" " + Quoted(module) + L" " + Quoted(reached)),
      0u)
      << manifest.size() << " characters";
}

INSTANTIATE_TEST_SUITE_P(
    Places, Manifest,
    ::testing::Values(
        FolderCase{"Plain", L"plain"}, FolderCase{"Kanji", L"試験　表 ソ能"},
        FolderCase{"Long", Repeated(L"とても長い名前の フォルダー of a program\\", 10) + L"終"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ManifestProgram, IsStartedWithNothingButItsManifest) {
  const CopyFolder folder(L"表", {L"qrnbt350.ocx", L"qrnbt350.manifest", kProgram});
  const std::wstring program = folder.Place(kProgram);
  const std::wstring run = Quoted(program) + L" " + Quoted(folder.Place(L"qrnbt350.ocx"));
  EXPECT_GT(RunTool(run), 0u) << "without one";
  WriteProgramManifest(program + L".manifest");
  EXPECT_EQ(RunTool(run), 0u);
}

}  // namespace
}  // namespace qrn::test
