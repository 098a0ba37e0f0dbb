#include "tests/qrndata/ToolFixture.h"

#include <fstream>
#include <iterator>
#include <sstream>

#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Verbs.h"

namespace qrndata::test {

namespace fs = std::filesystem;

namespace {

std::string Without(std::string text, const std::string& part) {
  for (size_t at = text.find(part); at != text.npos; at = text.find(part)) {
    text.erase(at, part.size());
  }
  return text;
}

}  // namespace

std::string Line(const Said& said) {
  std::string line = "code=" + std::to_string(said.code);
  if (!said.out.empty()) line += " out=" + said.out;
  if (!said.err.empty()) line += " err=" + said.err;
  return line;
}

std::string ToolTest::Path(const std::string& name) const {
  return PathToUtf8(Folder() / PathFromUtf8(name));
}

void ToolTest::Write(const std::string& name, const std::string& bytes) const {
  std::ofstream(Folder() / PathFromUtf8(name), std::ios::binary) << bytes;
}

std::string ToolTest::Read(const std::string& name) const {
  std::ifstream file(Folder() / PathFromUtf8(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

Said ToolTest::Run(std::vector<std::string> arguments) const {
  return RunProgram(&RunTool, std::move(arguments));
}

Said ToolTest::RunProgram(ProgramBody program, std::vector<std::string> arguments) const {
  std::ostringstream out, err;
  const int code = program(std::move(arguments), {out, err, nullptr, in_});
  const std::string prefix =
      PathToUtf8(Folder()) + static_cast<char>(fs::path::preferred_separator);
  return {code, Without(out.str(), prefix), Without(err.str(), prefix)};
}

void ToolTest::Build(const std::string& schema) const {
  Write("schema.toml", schema);
  const Said said = Run({"build", Path("schema.toml"), Path("db"), "--replace"});
  ASSERT_EQ(said.code, 0) << said.err;
}

Said ToolTest::Import(const std::string& table, const std::string& csv,
                      const std::vector<std::string>& options) const {
  Write("in.csv", csv);
  std::vector<std::string> arguments = {"import", Path("db"), table, Path("in.csv")};
  arguments.insert(arguments.end(), options.begin(), options.end());
  return Run(arguments);
}

std::string ToolTest::Export(const std::string& table,
                             const std::vector<std::string>& options) const {
  std::vector<std::string> arguments = {"export", Path("db"), table};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Said said = Run(arguments);
  return said.code == 0 && said.err.empty() ? said.out : Line(said);
}

}  // namespace qrndata::test
