#include "OldSite.h"

#include "DamagedFile.h"

namespace btrieve::test {
namespace {

constexpr uint16_t kPlain = 0x102;             // unique, modifiable
constexpr uint16_t kRepeats = 0x103;           // duplicates, modifiable
constexpr uint16_t kGoesOn = kAnotherSegment;  // beside one of them

FileSpec Spec(uint16_t recordLength, const std::vector<Seg>& segments) {
  FileSpec spec;
  const Head head{.recordLength = recordLength, .pageSize = 1024};
  if (ParseCreateBlock(CreateBlock(head, segments), spec) != kOk) spec = {};
  return spec;
}

Seg Word(uint16_t position, uint16_t flags) {
  return {.position = position, .length = 2, .flags = flags, .type = 1};
}
Seg Name(uint16_t position, uint16_t flags) {
  return {.position = position, .length = 20, .flags = flags};
}

Bytes Words(std::initializer_list<int> words) {
  Bytes row;
  for (const int word : words) row = std::move(row) + Number(static_cast<uint16_t>(word));
  return row;
}

}  // namespace

OldSite::OldSite(std::filesystem::path folder)
    : folder_(std::move(folder)),
      files_{File("FILE.DDF", Spec(87, {Word(1, kPlain), Name(3, kPlain)})),
             File("FIELD.DDF", Spec(32, {Word(1, kPlain), Word(3, kRepeats), Name(5, kRepeats),
                                         Word(3, kPlain | kGoesOn), Name(5, kPlain)})),
             File("INDEX.DDF", Spec(10, {Word(1, kPlain | kGoesOn), Word(5, kPlain | kGoesOn),
                                         Word(7, kPlain)})),
             File("PEOPLE.DAT", Spec(24, {{.flags = kPlain, .type = 1},
                                          Name(5, kPlain | kGoesOn),
                                          {.flags = kPlain, .type = 1}})),
             File("VISITS.DAT", Spec(20, {{.flags = kRepeats, .type = 1},
                                          {.position = 5, .flags = kRepeats, .type = 1}}))} {
  DescribeTables();
}

void OldSite::DescribeTables() {
  AddTable(1, "X$File", "FILE.DDF");
  AddTable(kPeople, "People", "PEOPLE.DAT");
  AddField(kPeople, "Code", 1, 4);
  AddField(kPeople, "Name", 0, 20);
  AddSegment(kPeople, 1, 1, 1, kModifiable);
  AddSegment(kPeople, 2, 2, 1, kModifiable);
  AddSegment(kPeople, 1, 2, 2, kModifiable);
  AddTable(kVisits, "Visits", "VISITS.DAT");
  AddField(kVisits, "Person", 1, 4);
  AddField(kVisits, "Day", 1, 4);
  AddField(kVisits, "Text", 0, 12);
  AddSegment(kVisits, 3, 1, 1, kDuplicates | kModifiable);
  AddSegment(kVisits, 4, 2, 1, kDuplicates | kModifiable);
}

void OldSite::AddTable(int id, const char* name, const char* location) {
  files_[0].maker.Insert(Words({id}) + Padded(name, 20) + Padded(location, 64) +
                         Bytes{static_cast<uint8_t>(id < 4 ? 16 : 0)});
  nextOffset_ = 0;
}

void OldSite::AddField(int table, const char* name, uint8_t type, int size) {
  files_[1].maker.Insert(Words({nextField_++, table}) + Padded(name, 20) + Bytes{type} +
                         Words({nextOffset_, size}) + Bytes{0, 0, 0});
  nextOffset_ += size;
}

void OldSite::AddSegment(int table, int field, int key, int part, int flags) {
  files_[2].maker.Insert(Words({table, field, key, part, flags}));
}

Bytes OldSite::Person(int32_t code, const char* name) { return Number(code) + Padded(name, 20); }

Bytes OldSite::Visit(int32_t person, int32_t day, const char* text) {
  return Number(person) + Number(day) + Padded(text, 12);
}

void OldSite::Write(bool owned) const {
  for (const File& file : files_) {
    Bytes bytes = file.maker.Build();
    if (owned) bytes[7] = 0xFC;  // the version, negated
    WriteBytes((folder_ / file.name).string(), bytes);
  }
}

}  // namespace btrieve::test
