// The file that most tests use, and scripts that drive cursors on it.
//
// A record has 20 bytes: i32 id, 4 characters name, i32 rank, 4 characters note, 2 characters code,
// 2 bytes that no key covers. A value stands in a script as "id,name,rank,note,code"; what is left
// out is 1, "n", 0, blanks, blanks.
#pragma once

#include <map>

#include "kit/Calls.h"

namespace btrieve::test {

enum Key : int {
  kById = 0,    // unique
  kByName = 1,  // duplicates
  kByRank = 2,  // rank descending, then name; duplicates
  kByNote = 3,  // duplicates, blank notes left out
  kByCode = 4,  // unique, without case, not modifiable, blank codes left out
};

std::vector<Seg> PeopleKeys();
Bytes PeopleBlock();
Bytes Person(const std::string& text);
std::string PersonText(const Bytes& record);
// The raw value of a key: "5", "Abe", "3/Abe", as they stand in a script.
Bytes PersonKey(int key, const std::string& text);
Bytes KeyOf(int key, const Bytes& record);

// By name: 1 3 (Abe), 2 5 (Ito), 4 (Ueda). By rank: 1 (5), 3 2 4 (3, by name), 5 (1).
inline const std::vector<std::string> kFive = {"1,Abe,5", "2,Ito,3", "3,Abe,3", "4,Ueda,3",
                                               "5,Ito,1"};

// What a script is to answer.
struct ScriptCase {
  const char *name, *words, *answers;
};

// Runs words on named cursors and tells what each answered, all separated by blanks:
//   reads          first0 last1 next2 prev0, eq0=5 eq2=3/Abe: the key number, and the value looked
//                  for; keq0=5 is Get Key
//                  stepf stepn, direct0=5 direct-=5 (the record whose id was 5)
//                  pos: Get Position; pct0=2500 pct-=2500
//                  walk1 back1: all ids along a key, "1,3,2", until status 9
//   writes         ins0=7,Abe ins-=7,Abe upd1=7,Abe upd-=7,Abe del
//   locks          unlock, unlock=5 (multiple lock of that record), unlock*; first0+200 and so on
//   transactions   begin cbegin end abort reset
//   files          open open=-4 close
// "b:" in front of a word takes another cursor than "a". A read answers with the record's id,
// everything else with "ok"; a status that is not 0 reads "#9".
//
// Checked at every read on the way: the record is one that was written, the key buffer holds its
// key value and nothing behind it is touched.
class Script {
 public:
  // Cursors "a".."h" belong to `client` with blocks 0..7, until Assign gives one to another.
  Script(Client& client, std::string path);

  void Assign(char cursor, Client& client, int block);
  std::string Run(const std::string& words);

  // Records of a new file, in this order, inserted through "a"; left open there.
  void Create(const std::vector<std::string>& people);
  uint32_t PositionOf(int id) const;

 private:
  struct Cursor {
    Client* client;
    int block;
  };
  struct Word {
    char cursor = 'a';
    std::string verb;
    std::string key;  // digits, "-" or nothing
    std::string value;
    int bias = 0;

    int KeyNumber() const;
  };
  using Handler = std::string (Script::*)(const Word& word, int operation);
  struct Verb {
    const char* name;
    int operation;
    Handler handler;
  };

  static const Verb kVerbs[];
  static Word Parse(const std::string& text);
  std::string RunWord(const Word& word);
  CallOut Call(const Word& word, int operation, const CallIn& in);

  std::string Read(const Word& word, int operation);
  std::string ReadKey(const Word& word, int operation);
  std::string Step(const Word& word, int operation);
  std::string Direct(const Word& word, int operation);
  std::string Position(const Word& word, int operation);
  std::string Percent(const Word& word, int operation);
  std::string Insert(const Word& word, int operation);
  std::string Update(const Word& word, int operation);
  std::string Walk(const Word& word, int operation);
  std::string Plain(const Word& word, int operation);
  std::string Unlock(const Word& word, int operation);
  std::string Open(const Word& word, int operation);
  std::string Shown(const Word& word, const CallOut& out, int key);
  void Remember(const Word& word, const Bytes& record);

  std::map<char, Cursor> cursors_;
  std::string path_;
  std::map<uint32_t, std::vector<Bytes>> written_;  // by position, the latest last
};

}  // namespace btrieve::test
