#include "host/runner/FormSource.h"

#include "host/form/SourceText.h"

namespace qrn::host {

std::string FormSource::Folder() const {
  const size_t separator = path.find_last_of("\\/");
  return separator == std::string::npos ? "." : path.substr(0, separator);
}

std::shared_ptr<const FormSource> ReadFormSource(const std::string& path) {
  return MakeFormSource(path, form::ReadWholeFile(path), {});
}

std::shared_ptr<const FormSource> MakeFormSource(const std::string& path, std::string_view bytes,
                                                 std::map<std::string, std::string> companions) {
  auto source = std::make_shared<FormSource>();
  source->path = path;
  source->companions = std::move(companions);
  form::Mistakes mistakes;
  source->file = form::ReadFormFile(bytes, mistakes);
  source->code = form::RewriteCode(source->file.code, source->file.codeLine, mistakes);
  if (mistakes.Any()) throw form::FileRefused(path, mistakes);
  return source;
}

}  // namespace qrn::host
