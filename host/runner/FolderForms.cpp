#include "host/runner/FolderForms.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <system_error>

#include "host/form/FilePath.h"
#include "host/form/SourceText.h"
#include "host/form/VbTokens.h"

namespace qrn::host {
namespace {

namespace fs = std::filesystem;

std::set<std::string> WordsOf(const form::FormFile& file) {
  form::Mistakes none;
  std::set<std::string> words;
  for (const form::LogicalLine& line : form::ReadCodeLines(file.code, file.codeLine, none)) {
    for (const form::Token& token : line.tokens) {
      if (token.kind == form::TokenKind::Word) words.insert(form::LowerWord(token.text));
    }
  }
  return words;
}

std::vector<std::string> FormFilesIn(const std::string& folder) {
  std::vector<std::string> paths;
  std::error_code error;
  const fs::path place = form::PathOf(folder);
  for (fs::directory_iterator at(place, error), end; !error && at != end; at.increment(error)) {
    if (form::SameWord(form::Utf8Of(at->path().extension()), ".frm"))
      paths.push_back(form::Utf8Of(at->path()));
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

// As far as it can be made out; the reasons against it are told when the form is wanted.
std::string FormNameIn(const std::string& path) {
  form::Mistakes none;
  try {
    return form::ReadFormFile(form::ReadWholeFile(path), none).Name();
  } catch (const std::runtime_error&) {
    return {};
  }
}

}  // namespace

std::vector<std::string> FormsNamedBy(const FormSource& source,
                                      const std::function<bool(const std::string& name)>& isKnown) {
  const std::set<std::string> words = WordsOf(source.file);
  std::vector<std::string> paths;
  for (const std::string& path : FormFilesIn(source.Folder())) {
    const std::string name = FormNameIn(path);
    if (words.contains(form::LowerWord(name)) && !isKnown(name)) paths.push_back(path);
  }
  return paths;
}

}  // namespace qrn::host
