// Where a cursor stands after each call, and what the next one finds.
#include <gtest/gtest.h>

#include "clients/People.h"

namespace btrieve::test {
namespace {

const std::vector<std::string> kNobody;

struct PeopleCase {
  const char* name;
  const std::vector<std::string>& people;
  const char *words, *answers;
};

void RunAll(std::initializer_list<PeopleCase> cases) {
  for (const PeopleCase& row : cases) {
    SCOPED_TRACE(row.name);
    const Folder folder;
    ThisProcess process;
    Script script(process, folder.Path("people.dat"));
    script.Create(row.people);
    EXPECT_EQ(script.Run(row.words), row.answers);
  }
}

TEST(Currency, ReadsAlongAKey) {
  RunAll({
      {"each order", kFive, "walk0 walk1 walk2 walk3", "1,2,3,4,5 1,3,2,5,4 1,3,2,4,5 -"},
      {"each order back", kFive, "back0 back1 back2 back3", "5,4,3,2,1 4,5,2,3,1 5,4,2,3,1 -"},
      {"equal finds the oldest", kFive, "eq0=3 eq1=Ito eq2=3/Ito eq1=Itp", "3 2 2 #4"},
      {"greater", kFive, "gt0=3 gt1=Abe gt1=Abf gt1=Ueda gt0=-5 gt0=5", "4 2 2 #9 1 #9"},
      {"greater or equal", kFive, "ge0=3 ge1=Ito ge1=Abf ge1=Z ge0=6", "3 2 2 #9 #9"},
      {"less finds the last of a value", kFive, "lt0=3 lt1=Ueda lt1=Ito lt1=Abe lt0=1",
       "2 5 3 #9 #9"},
      {"less or equal", kFive, "le0=3 le1=Ito le1=Abz le1=Aba le0=0", "3 5 3 #9 #9"},
      {"greater on a descending segment", kFive, "gt2=5/Abe gt2=3/Abe gt2=3/Ueda gt2=1/Ito gt2=9/A",
       "3 2 5 #9 1"},
      {"less on a descending segment", kFive, "lt2=3/Abe lt2=1/Ito lt2=5/Abe lt2=0/A", "1 4 #9 5"},
      {"or equal on a descending segment", kFive, "ge2=4/A ge2=3/Ito le2=3/Ito le2=4/A le2=9/A",
       "3 2 2 1 #9"},
      {"end, twice, and back", kFive, "last0 next0 next0 prev0", "5 #9 #9 4"},
      {"beginning, twice, and on", kFive, "first0 prev0 prev0 next0", "1 #9 #9 2"},
      {"next from what a search found", kFive, "ge1=B next1 prev1 prev1", "2 5 2 3"},
      {"failed searches leave the place", kFive, "eq0=2 eq0=77 gt0=77 lt0=-1 next0",
       "2 #4 #9 #9 3"},
      {"no such key", kFive, "first5 eq9=1 first-1 next125", "#6 #6 #6 #6"},
      {"an empty file", kNobody, "first0 last1 stepf stepl stepn eq0=1 next0",
       "#9 #9 #9 #9 #9 #4 #8"},
  });
}

TEST(Currency, OtherCursorsNeverStrandThisOne) {
  RunAll({
      {"neighbour deleted", kFive, "b:open first1 b:direct0=3 b:del next1", "ok 1 3 ok 2"},
      {"neighbour, then the record", kFive,
       "b:open first1 b:direct0=3 b:del b:direct0=1 b:del next1 prev1", "ok 1 3 ok 1 ok 2 #9"},
      {"neighbour moved away", kFive, "b:open first1 b:direct0=3 b:upd0=3,Zed next1",
       "ok 1 3 ok 2"},
      {"new neighbour", kFive, "b:open first1 b:ins-=6,Abf next1 next1 next1", "ok 1 ok 3 6 2"},
      {"changed since read", kFive,
       "b:open eq0=2 b:eq0=2 b:upd0=2,New upd0=2,Old del eq0=2 upd0=2,Old",
       "ok 2 2 ok #80 #80 2 ok"},
      {"deleted since read", kFive, "b:open eq0=2 b:eq0=2 b:del upd0=2 del next0",
       "ok 2 2 ok #80 #80 3"},
      {"own update refreshes", kFive, "b:open eq0=2 upd0=2,A upd0=2,B b:eq0=2 b:upd0=2,C upd0=2,D",
       "ok 2 ok ok 2 ok #80"},
      {"each its own place", kFive, "b:open first0 b:last0 next0 b:prev0 close b:prev0",
       "ok 1 5 2 4 ok 3"},
  });
}

}  // namespace
}  // namespace btrieve::test
