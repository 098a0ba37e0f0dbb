// The data tool as its user runs it: command lines in, exit code, output and messages out, in a
// folder of its own. The folder's path is cut out of what is said, so that texts compare.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <istream>
#include <string>
#include <vector>

#include "tests/support/TempFolder.h"
#include "tools/qrndata/Program.h"

namespace qrndata::test {

struct Said {
  int code = 0;
  std::string out;
  std::string err;
};

// "code=1 out=... err=..." without the parts that are empty: a failed comparison shows it whole.
std::string Line(const Said& said);

class ToolTest : public ::testing::Test {
 protected:
  std::string Path(const std::string& name) const;
  void Write(const std::string& name, const std::string& bytes) const;
  std::string Read(const std::string& name) const;

  Said Run(std::vector<std::string> arguments) const;
  Said RunProgram(ProgramBody program, std::vector<std::string> arguments) const;

  // The verbs over the database in the folder "db".
  void Build(const std::string& schema) const;
  Said Import(const std::string& table, const std::string& csv,
              const std::vector<std::string>& options = {}) const;
  std::string Export(const std::string& table, const std::vector<std::string>& options = {}) const;
  Said Check() const { return Run({"check", Path("db")}); }

  // What the program reads from its standard input.
  void SetInput(std::istream& in) { in_ = &in; }

  const std::filesystem::path& Folder() const { return folder_.Root(); }

 private:
  qrn::test::TempFolder folder_;
  std::istream* in_ = nullptr;
};

}  // namespace qrndata::test
