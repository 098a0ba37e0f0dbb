// The classes of a form that is being designed: the furniture, and those of modules, read from
// their type information when they are first asked for.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "host/container/ControlClasses.h"
#include "host/designer/model/FurnitureInfo.h"

namespace qrn::designer {

class ModuleClassSource final : public FurnitureClasses {
 public:
  // `classes` knows the libraries of the form and of the toolbox, and outlives this.
  explicit ModuleClassSource(host::ControlClasses& classes) : classes_(classes) {}

  const ClassInfo* Find(std::string_view library, std::string_view name) const override;
  std::optional<form::LibraryReference> Library(std::string_view library) const override;

  // The names of a library's classes that can be put on a form, in its order.
  std::vector<std::string> ControlsOf(std::string_view library) const;

 private:
  host::ControlClasses& classes_;
  // By "library.name" in lower case; null for a class that cannot be had.
  mutable std::map<std::string, std::unique_ptr<ClassInfo>> known_;
};

}  // namespace qrn::designer
