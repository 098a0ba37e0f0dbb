#include "clients/FaultsOf.h"
#include "tools/qrndata/TableChecks.h"

namespace btrieve::test {

std::string FaultsOf(const std::string& path) {
  qrndata::BtrFile file(path, qrndata::Access::ReadOnly);
  qrndata::Progress silent(nullptr, "", 0);
  std::string text;
  for (const std::string& fault : qrndata::CheckRecords(file, file.Stat(), silent)) {
    text += fault + "\n";
  }
  return text;
}

}  // namespace btrieve::test
