#include "OldFolderWork.h"

#include "kit/OldSite.h"

namespace btrieve::test {

int MakeOldFolder(const std::vector<std::string>& arguments) {
  if (arguments.size() != 1) return 2;
  std::filesystem::create_directories(arguments[0]);
  OldSite site(arguments[0]);
  site.People().Insert(OldSite::Person(2, "Ito"));
  site.People().Insert(OldSite::Person(1, "Abe"));
  site.Visits().Insert(OldSite::Visit(2, 1, "call"));
  site.Write();
  return 0;
}

}  // namespace btrieve::test
