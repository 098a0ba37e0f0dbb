// What the designer knows of the form itself and of the pieces that need no module: labels, frames,
// buttons, text boxes.
#pragma once

#include "host/designer/model/ClassInfo.h"

namespace qrn::designer {

// Null for what is no piece the runner knows.
const ClassInfo* FurnitureInfo(std::string_view className);

// The library VB alone: for forms without controls of modules, and behind a source that has them.
class FurnitureClasses : public ClassSource {
 public:
  const ClassInfo* Find(std::string_view library, std::string_view name) const override;
  std::optional<form::LibraryReference> Library(std::string_view library) const override;
};

}  // namespace qrn::designer
