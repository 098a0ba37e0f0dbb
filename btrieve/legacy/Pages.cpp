#include "btrieve/legacy/Pages.h"

#include <string>

#include "btrieve/legacy/Damage.h"

namespace btrieve::legacy {

ByteView Pages::Index(uint32_t number) const {
  const std::string name = "page " + std::to_string(number);
  if (number == 0 || number >= Count()) ThrowDamage(name + " of a key is not in the file");
  if (!IsItself(number)) ThrowDamage(name + " bears another number");
  if (IsData(number)) ThrowDamage(name + " of a key holds records");
  return {Start(number), pageSize_};
}

}  // namespace btrieve::legacy
