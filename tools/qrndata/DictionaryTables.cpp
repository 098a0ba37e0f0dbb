#include "tools/qrndata/DictionaryTables.h"

#include <initializer_list>

namespace qrndata {

namespace {

struct FieldRow {
  const char* name;
  int32_t type;
  int32_t size;
};

struct SegmentRow {
  const char* field;
  bool caseInsensitive;
};

struct KeyRow {
  bool duplicates;
  std::initializer_list<SegmentRow> segments;
};

// Numbers are unsigned, as newer dictionaries have them.
constexpr int32_t kNumber = qrn::kUBin, kText = qrn::kString;

Table MakeTable(int id, const char* name, const char* location,
                std::initializer_list<FieldRow> fields, int firstFieldId) {
  Table table;
  table.id = id;
  table.name = name;
  table.location = location;
  table.flags = kOwnTable;
  table.fileFlags = 0;
  for (const FieldRow& row : fields) {
    qrn::DbFieldInfo field = MakeField(row.name, row.type, row.size);
    field.FileId = id;
    field.FieldId = firstFieldId++;
    field.Offset = static_cast<int32_t>(RecordLength(table));
    table.fields.push_back(field);
  }
  return table;
}

void AddKeys(Table& table, std::initializer_list<KeyRow> keys) {
  for (const KeyRow& row : keys) {
    Key key;
    for (const SegmentRow& part : row.segments) {
      Segment segment;
      segment.fieldId = FindField(table, part.field)->FieldId;
      segment.flags = static_cast<uint16_t>(
          kIndexModifiable | kIndexExtendedType | (row.duplicates ? kIndexDuplicates : 0) |
          (part.caseInsensitive ? kIndexCaseInsensitive : 0) |
          (&part + 1 != row.segments.end() ? kIndexContinues : 0));
      key.segments.push_back(segment);
    }
    table.keys.push_back(key);
  }
}

std::vector<Table> MakeTables() {
  Table files = MakeTable(1, "X$File", "file.ddf",
                          {{"Xf$Id", kNumber, 2},
                           {"Xf$Name", kText, 20},
                           {"Xf$Loc", kText, 64},
                           {"Xf$Flags", kNumber, 1},
                           {"Xf$Reserved", kText, 10}},
                          1);
  AddKeys(files, {{false, {{"Xf$Id", false}}}, {false, {{"Xf$Name", true}}}});
  Table fields = MakeTable(2, "X$Field", "field.ddf",
                           {{"Xe$Id", kNumber, 2},
                            {"Xe$File", kNumber, 2},
                            {"Xe$Name", kText, 20},
                            {"Xe$DataType", kNumber, 1},
                            {"Xe$Offset", kNumber, 2},
                            {"Xe$Size", kNumber, 2},
                            {"Xe$Dec", kNumber, 1},
                            {"Xe$Flags", kNumber, 2}},
                           6);
  AddKeys(fields, {{false, {{"Xe$Id", false}}},
                   {true, {{"Xe$File", false}}},
                   {true, {{"Xe$Name", true}}},
                   {false, {{"Xe$File", false}, {"Xe$Name", true}}},
                   {true, {{"Xe$File", false}, {"Xe$Offset", false}, {"Xe$Dec", false}}}});
  Table indexes = MakeTable(3, "X$Index", "index.ddf",
                            {{"Xi$File", kNumber, 2},
                             {"Xi$Field", kNumber, 2},
                             {"Xi$Number", kNumber, 2},
                             {"Xi$Part", kNumber, 2},
                             {"Xi$Flags", kNumber, 2}},
                            14);
  AddKeys(indexes, {{true, {{"Xi$File", false}}},
                    {true, {{"Xi$Field", false}}},
                    {false, {{"Xi$File", false}, {"Xi$Number", false}, {"Xi$Part", false}}}});
  return {files, fields, indexes};
}

}  // namespace

const std::vector<Table>& DictionaryTables() {
  static const std::vector<Table> tables = MakeTables();
  return tables;
}

}  // namespace qrndata
