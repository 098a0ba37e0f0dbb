#include "grid/data/RowCommit.h"

#include "core/DictionaryLookup.h"
#include "core/RecordWalk.h"
#include "fields/FieldText.h"
#include "grid/data/FieldNames.h"

namespace qrn {

// What a handler may have done is looked at behind its event: the table is found again, and a grid
// that was filled anew gives the row the record that it stands for now.
void RowCommit::Run() {
  if (model_.AllowUpdate == 0 || model_.rowDirty == 0 || !record_.PositionOf(row_)) return;
  DbTableInfo* table = record_.Table();
  if (table == nullptr) return;
  const RecordPlace place(record_.engine(), *table);
  if (record_.host().RaiseBeforeUpdate()) return;
  const auto position = record_.PositionOf(row_);
  table = record_.Table();
  if (table == nullptr || !position) return;
  const bool stored = Store(*table, *position);
  // The form's record is current again in any case: its next update must find it in the buffer.
  table = record_.Table();
  if (table == nullptr) return;
  const Status back =
      table->IsOpen != 0 ? place.GoBack(*table, model_.listKeyNumber) : Status{BtrStatusNotOpen};
  if (!stored || Ended(back, kVE822)) return;
  model_.rowDirty = 0;
  record_.host().Raise(GridEvent::AfterUpdate);
}

// True when the record holds the row. Kept so: a row without any text is not written and stays
// changed.
bool RowCommit::Store(DbTableInfo& table, int32_t position) {
  const Texts texts = TextsFor(table);
  if (Ended(record_.Read(table, position), kVE820) || !texts.any) return false;
  PutIntoRecord(table, texts);
  return !Ended(record_.Call(table, BtrOpUpdate), kVE821);
}

// A failure that was told ends the row's being changed: the next fill shows the record as stored.
bool RowCommit::Ended(Status status, MessageId message) {
  const bool failed = record_.Failed(status, message);
  if (failed) model_.rowDirty = 0;
  return failed;
}

RowCommit::Texts RowCommit::TextsFor(const DbTableInfo& table) const {
  Texts texts;
  texts.byField.resize(static_cast<size_t>(table.FieldCount));
  int64_t col = model_.FixedCols;
  for (const std::string& name : FieldNames(record_.names().fields)) {
    const char* text = model_.CellText(row_, col++);
    texts.any |= text != nullptr;
    const int32_t field = DbFindField(table, name.c_str());
    if (field >= 0) texts.byField[static_cast<size_t>(field)] = text != nullptr ? text : "";
  }
  return texts;
}

// Fields are reached by walking the record, as it is when the walk comes by. A Blob is left alone:
// its cell shows no more than its beginning.
void RowCommit::PutIntoRecord(DbTableInfo& table, const Texts& texts) const {
  const QuorinSettings& settings = record_.engine().Settings;
  RecordWalk walk(settings, table);
  while (walk.Next()) {
    const char* text = texts.byField[static_cast<size_t>(walk.Position())];
    if (text != nullptr) SetFieldText(settings, walk.Place(), text, walk.Field());
    walk.Step();
  }
}

}  // namespace qrn
