#include "tools/qrndata/Failure.h"

namespace qrndata {

std::string AtPlace(std::string_view file, Position position, std::string_view text) {
  std::string whole(file);
  if (position.line != 0) whole += ":" + std::to_string(position.line);
  if (position.column != 0) whole += ":" + std::to_string(position.column);
  return whole.append(": ").append(text);
}

Failure BadInput(std::string_view file, Position position, std::string_view text) {
  return {kBadInput, AtPlace(file, position, text)};
}

}  // namespace qrndata
