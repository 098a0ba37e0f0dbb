// Where a cursor stands after each call, and what the next one finds.
#include <gtest/gtest.h>

#include "clients/People.h"

namespace btrieve::test {
namespace {

const std::vector<std::string> kNobody;
const std::vector<std::string> kThree = {"1", "2", "5"};
const std::vector<std::string> kNoted = {"1,Abe,1,b,ab", "2,Ito,2", "3,Abe,3,a", "4,Ueda,4,b,c"};

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

TEST(Currency, KeyNumbersMustAgree) {
  RunAll({
      {"none after open", kFive, "close open next0 prev0 pos del upd0=1 stepp stepn",
       "ok ok #8 #8 #8 #8 #8 #9 1"},
      {"other key", kFive, "first0 next1 prev2 next0", "1 #7 #7 2"},
      {"change of key", kFive, "first0 pos direct1=1 next1", "1 1 1 3"},
      {"step destroys logical", kFive, "first0 stepn next0 prev0 next1", "1 2 #8 #8 #8"},
      {"direct without key does too", kFive, "first0 direct-=3 next0", "1 3 #8"},
      {"other key after delete", kFive, "eq0=3 del next1 next0", "3 ok #7 4"},
  });
}

TEST(Currency, Inserts) {
  RunAll({
      {"on a key", kFive, "first0 ins0=7 prev0 next0 next0", "1 ok 5 7 #9"},
      {"on a key with duplicates", kFive, "ins1=7,Abe next1", "ok 2"},
      {"without change", kFive, "first0 ins-=9 pos next0", "1 ok 9 2"},
      {"without change, in front", kFive, "first0 ins-=9 del next0", "1 ok ok 2"},
      {"physical is the new one", kFive, "eq0=2 ins0=9 stepp stepn stepn", "2 ok 5 9 #9"},
      {"left out of its key", kFive, "first0 ins3=9 pos next3 next0", "1 ok 9 #8 #8"},
      {"then update and delete it", kFive, "ins0=9 upd0=8 del prev0", "ok ok ok 5"},
      {"refused", kFive, "eq0=2 ins0=4 next0", "2 #5 3"},
  });
}

TEST(Currency, Updates) {
  RunAll({
      {"key unchanged", kFive, "first0 upd0=1,Xyz next0", "1 ok 2"},
      {"moved on its key", kThree, "first0 upd0=4 next0", "1 ok 5"},
      {"moved without change", kThree, "first0 upd-=4 next0 next0 next0", "1 ok 2 4 5"},
      {"another key number breaks", kFive, "first0 upd1=1,Abe,9 next0 next1 first0 next0",
       "1 ok #7 #7 1 2"},
      {"broken until set by direct", kFive, "first0 upd1=1,Abe,9 direct1=1 next1", "1 ok 1 3"},
      {"broken until set by insert", kFive, "first0 upd1=1,Abe,9 ins0=9 prev0", "1 ok ok 5"},
      {"no logical, none set", kFive, "stepf upd0=1,Abe,9 next0 stepn", "1 ok #8 2"},
      {"after direct without key", kFive, "direct-=3 upd-=3,New next0 stepn", "3 ok #8 4"},
      {"twice without reading", kFive, "first0 upd0=1,A upd0=1,B upd0=1,C eq1=C", "1 ok ok ok 1"},
      {"refused", kFive, "eq0=2 upd0=4 next0 eq0=2 upd0=2,Y", "2 #5 3 2 ok"},
      {"out of the key", kNoted, "first3 upd3=3,Abe,3 next3 walk3", "3 ok 1 1,4"},
  });
}

TEST(Currency, Deletes) {
  RunAll({
      {"next", kFive, "eq0=3 del next0", "3 ok 4"},
      {"previous", kFive, "eq0=3 del prev0", "3 ok 2"},
      {"the first", kFive, "first0 del prev0 next0", "1 ok #9 2"},
      {"the last", kFive, "last0 del next0 prev0", "5 ok #9 4"},
      {"twice", kFive, "eq0=3 del del pos upd0=3", "3 ok #8 #8 #8"},
      {"steps", kFive, "eq0=3 del stepn stepp", "3 ok 4 2"},
      {"steps back", kFive, "eq0=3 del stepp", "3 ok 2"},
      {"all along duplicates", kFive,
       "first1 del next1 del next1 del next1 del next1 del next1 first1",
       "1 ok 3 ok 2 ok 5 ok 4 ok #9 #9"},
      {"after direct without key", kFive, "direct-=3 del next0 stepn", "3 ok #8 4"},
      {"neighbours that go later", kFive, "eq0=2 del b:open b:eq0=3 b:del b:eq0=1 b:del next0",
       "2 ok ok 3 ok 1 ok 4"},
  });
}

TEST(Currency, Positions) {
  RunAll({
      {"steps in order of insertion", kThree, "steps stepl stepp stepp stepp", "1,2,5 5 2 1 #9"},
      {"step after get", kFive, "eq1=Abe stepn stepn", "1 2 3"},
      {"direct on a key", kFive, "direct2=4 next2 direct0=4 next0", "4 5 4 5"},
      {"dead position", kFive, "eq0=3 del direct0=3 ins-=9 direct0=3 direct-=3",
       "3 ok #43 ok #43 #43"},
      {"dead position leaves the place", kFive, "eq0=3 del first0 direct0=3 next0", "3 ok 1 #43 2"},
      {"key leaves the record out", kNoted, "eq0=1 direct3=2 next0 pos", "1 #44 2 2"},
      {"no such key", kFive, "direct5=2 direct-3=2", "#6 #6"},
      {"parts of a record are not given", kFive, "eq0=3 direct-2=2 direct-2=2+200 next0",
       "3 #41 #41 4"},
      {"stable over updates", kFive, "eq0=2 upd0=9,Zed direct0=2", "2 ok 9"},
  });
}

TEST(Currency, GetKey) {
  RunAll({
      {"values once", kFive, "kfirst1 knext1 knext1 knext1", "Abe Ito Ueda #9"},
      {"values once, back", kFive, "klast1 kprev1 kprev1 kprev1", "Ueda Ito Abe #9"},
      {"searches", kFive, "keq1=Ito kgt1=Ito kge1=Ito klt1=Ito kle1=Ito keq1=X kgt1=Z",
       "Ito Ueda Ito Abe Ito #4 #9"},
      {"get next goes by value", kFive, "keq1=Abe next1", "Abe 2"},
      {"get previous goes by value", kFive, "keq1=Ito prev1", "Ito 3"},
      {"from a record within its value", kFive, "eq1=Abe knext1 pos", "1 Ito 2"},
      {"no update, no delete", kFive, "keq1=Abe upd-=1 del pos", "Abe #8 #8 1"},
      {"position is the first of the value", kFive, "kle1=Ito pos stepn", "Ito 2 3"},
      {"on a unique key", kFive, "keq0=3 next0 keq0=3 knext0", "3 4 3 4"},
      {"other key", kFive, "keq1=Abe next0 knext0", "Abe #7 #7"},
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

TEST(Keys, DuplicatesStandInTheOrderTheyCame) {
  RunAll({
      {"update of other fields keeps the place", kFive, "eq0=1 upd0=1,Abe,9,x walk1",
       "1 ok 1,3,2,5,4"},
      {"change of key goes to the end", kFive, "eq0=1 upd0=1,Ito walk1", "1 ok 3,2,5,1,4"},
      {"and back again too", kFive, "eq0=1 upd0=1,Ito upd0=1,Abe walk1", "1 ok ok 3,1,2,5,4"},
      {"inserted last", kFive, "ins-=0,Abe ins-=9,Ito walk1", "ok ok 1,3,0,2,5,9,4"},
      {"without change of currency too", kFive, "eq0=1 upd-=1,Ito walk1", "1 ok 3,2,5,1,4"},
  });
}

TEST(Keys, UniqueAndNullValues) {
  RunAll({
      {"unique", kNoted, "ins0=1 ins0=3 ins0=5 walk0", "#5 #5 ok 1,2,3,4,5"},
      {"unique without case", kNoted, "ins0=9,Z,1,n,AB ins0=9,Z,1,n,Ab", "#5 #5"},
      {"refused in the last key, no trace in the others", kNoted,
       "ins0=9,Aaa,9,aa,AB walk0 walk1 walk2 walk3 walk4 steps",
       "#5 1,2,3,4 1,3,2,4 4,3,2,1 3,1,4 1,4 1,2,3,4"},
      {"not modifiable", kNoted,
       "eq0=1 upd0=1,Abe,1,b,xy upd0=1,Abe,1,b upd0=1,Abe,1,b,AB upd0=1,New,1,b,ab",
       "1 #10 #10 #10 ok"},
      {"refused update, no trace", kNoted, "eq0=1 upd0=4,Zzz,9,zz,ab walk0 walk1 walk2 walk3",
       "1 #5 1,2,3,4 1,3,2,4 4,3,2,1 3,1,4"},
      {"null values are not found", kNoted, "walk3 walk4 back3", "3,1,4 1,4 4,1,3"},
      {"into the key by an update", kNoted, "eq0=2 upd0=2,Ito,2,aa walk3", "2 ok 3,2,1,4"},
      {"searches pass them by", kNoted, "ge3=a gt3=a le4=b lt4=ab", "3 1 1 #9"},
      {"delete frees the value", kNoted, "eq0=1 del ins0=1,New,1,n,AB walk4", "1 ok ok 1,4"},
  });
}

}  // namespace
}  // namespace btrieve::test
