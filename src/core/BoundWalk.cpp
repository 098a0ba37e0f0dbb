#include "core/BoundWalk.h"

#include "core/Record.h"
#include "core/RecordBuffer.h"
#include "core/RecordWalk.h"
#include "fields/FieldText.h"

namespace qrn {

int32_t CollectFromControls(DbEngine& engine, DbTableInfo& table, FieldControls& controls) {
  RecordWalk walk(engine.Settings, table);
  while (walk.Next()) {
    std::string text;
    if (controls.ReadControlField(table, walk.Field(), text) > 0) {
      SetFieldText(engine.Settings, walk.Place(), text.c_str(), walk.Field());
      walk.StepAsText(text.c_str());
    } else {
      walk.Step();
    }
  }
  return walk.Offset();
}

void CollectByOffset(DbEngine& engine, DbTableInfo& table, FieldControls& controls) {
  for (int32_t position = 0; position < table.FieldCount; ++position) {
    const DbFieldInfo& field = table.Fields[position];
    std::string text;
    if (controls.ReadControlField(table, field, text) == 0) continue;
    const auto place = RecordBytesFrom(table, field.Offset);
    if (!place.empty()) SetFieldText(engine.Settings, place, text.c_str(), field);
  }
}

void ShowOnControls(DbEngine& engine, BoundCaller& caller) {
  DbTableInfo* table = caller.Table();
  for (int32_t position = 0; table != nullptr && position < table->FieldCount; ++position) {
    // Into an area of its own: a handler may read another field meanwhile.
    char text[sizeof DbEngine::FieldText];
    DbReadFieldInto(engine, *table, position, text);
    caller.Controls().WriteControlField(*table, table->Fields[position], text);
    table = caller.Table();
  }
}

}  // namespace qrn
