// What forms and the designer need to run within a test: the apartment, the module that was built,
// the steps of a user script.
#pragma once

#include <ole2.h>

#include <filesystem>
#include <string>
#include <vector>

#include "com/Module.h"
#include "host/form/SourceText.h"
#include "host/form/UserScript.h"

namespace qrn::tests {

inline constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

class Apartment {
 public:
  Apartment() { OleInitialize(nullptr); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { OleUninitialize(); }
};

inline std::wstring ModuleBeside() {
  return std::filesystem::path(com::PathOf(nullptr)).replace_filename(L"qrnbt350.ocx").wstring();
}

// Throws form::FileRefused. The script is UTF-8.
inline std::vector<form::UserStep> StepsOf(const std::string& script) {
  form::Mistakes mistakes;
  auto steps = form::ReadUserScript(form::SourceLines(kByteOrderMark + script), mistakes);
  if (mistakes.Any()) throw form::FileRefused("script", mistakes);
  return steps;
}

}  // namespace qrn::tests
