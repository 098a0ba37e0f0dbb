#include "extended/FillFromExtended.h"

#include <algorithm>
#include <new>
#include <optional>

#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/KeyBuffer.h"
#include "core/RecordBuffer.h"
#include "core/RecordPlace.h"
#include "core/ReturnCodes.h"
#include "core/RowHook.h"
#include "extended/ExExchange.h"
#include "extended/ExMemoryFailure.h"
#include "extended/ExReply.h"
#include "extended/ExResultKeeper.h"
#include "extended/ExRow.h"
#include "extended/ExRowText.h"
#include "extended/FirstRecord.h"
#include "extended/SearchCond.h"
#include "fields/Messages.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

constexpr Status kFilterLimit = 64;

// How showing the rows of a batch ended.
enum class RowsEnd { AllShown, Cancelled, Full };

class ExtendedFill {
 public:
  ExtendedFill(DbEngine& engine, const ExFill& fill, const ExOperation& operation, RowSink& sink)
      : engine_(engine),
        fill_(fill),
        operation_(operation),
        variant_(VariantOf(fill.Kind)),
        sink_(sink),
        hook_(sink, variant_.eventText) {}

  bool Run() {
    DbTableInfo* table = OpenTable();
    if (table == nullptr) return false;
    CopyText(tableName_, table->Name);
    const RecordPlace place(engine_, *table);
    ReadGuarded(*table);
    GoBackTo(place);
    return emptied_;
  }

 private:
  // The sink's table as it is now; null when it is gone or closed.
  DbTableInfo* OpenTable() {
    DbTableInfo* table = sink_.Table();
    return table != nullptr && table->IsOpen != 0 ? table : nullptr;
  }

  void ReadGuarded(DbTableInfo& table) {
    try {
      if (!BuildKey(table) || !GoToFirst(table) || !PrepareRequest(table)) return;
      sink_.Empty(fields_->Fields.size());
      emptied_ = true;
      while (ReadBatch()) exchange_->SetSignature(kBeginAfterCurrent);
    } catch (const std::bad_alloc&) {
      ReportExMemoryFailure();
    }
  }

  // The record buffer is emptied first: the key of a first or last record has no value.
  bool BuildKey(DbTableInfo& table) {
    const auto record = RecordBytes(table);
    std::fill_n(record.begin(), BoundedLength(table, int64_t{table.RecordLength} + 1), uint8_t{0});
    hasKey_ = DbBuildKey(table, fill_.ListIndexId, keyBuffer_);
    if (hasKey_ && operation_.alongKey) {
      key_ = {keyBuffer_.Bytes(), keyBuffer_.Length(),
              static_cast<int8_t>(DbSegmentToKey(table, fill_.ListIndexId))};
    }
    return hasKey_;
  }

  bool GoToFirst(DbTableInfo& table) {
    const Status status = GoToFirstRecord(operation_, table, key_);
    if (status > 0) sink_.BtrieveError(tableName_, status);
    return status == 0;
  }

  bool PrepareRequest(const DbTableInfo& table) {
    const auto condition = ParseSearchCond(engine_, table, fill_.DbConditions, fill_.DbCompareCase);
    if (!condition) return false;
    fields_ = ParseFieldList(engine_, table, fill_.DbListFields);
    if (!fields_) return false;
    exchange_ = ExExchange::Make(ExRequest(kBeginWithCurrent, fill_.DbSkipRecords, *condition,
                                           fill_.DbMaxRecords, *fields_));
    const char* delimiter = fill_.Delimiter != nullptr ? fill_.Delimiter : "";
    row_.emplace(engine_.Settings, fields_->Fields, DelimiterOf(variant_, delimiter));
    return exchange_.has_value();
  }

  // False when it was the last one.
  bool ReadBatch() {
    DbTableInfo* table = OpenTable();
    if (table == nullptr) return false;
    const Status status =
        exchange_->Call(DbAddLock(operation_.extended, fill_.DbLocks), *table, key_);
    if (!BringsRecords(status)) {
      ShowMessage(kVE039, static_cast<int>(status));
      return false;
    }
    const RowsEnd end = ShowRows();
    if (end == RowsEnd::Cancelled || status == BtrStatusEndOfFile) return false;
    if (status != 0 && variant_.limitsEnd) {
      sink_.BtrieveError(tableName_, status);
      return false;
    }
    if (StandsStill(status)) return false;
    KeepReply();
    return end == RowsEnd::AllShown;
  }

  // Without a record these leave the place where it was: the next batch would be the same.
  bool StandsStill(Status status) const {
    const bool none = !ExReplyReader(exchange_->Reply()).Next();
    return none && (status == 0 || status == BtrStatusDataBufferLength || status == kFilterLimit);
  }

  RowsEnd ShowRows() {
    ExReplyReader reader(exchange_->Reply());
    RowsEnd end = RowsEnd::AllShown;
    while (end == RowsEnd::AllShown) {
      const auto record = reader.Next();
      if (!record) break;
      end = ShowRow(*record);
    }
    return end;
  }

  RowsEnd ShowRow(const ExReplyRecord& record) {
    if (variant_.positionFirst) GivePosition(record);
    const auto line = row_->Text(BlobTable(), record.Data);
    const char* text = hook_.Format(BeginExRowText(), line);
    if (text == nullptr) return RowsEnd::Cancelled;
    const bool more = sink_.AddRow(text);
    if (!variant_.positionFirst) GivePosition(record);
    return more ? RowsEnd::AllShown : RowsEnd::Full;
  }

  void GivePosition(const ExReplyRecord& record) {
    if (fill_.SavePosition) sink_.GivePosition(record.Position);
  }

  // Looked up for each row, but only where a row needs it.
  const DbTableInfo* BlobTable() {
    const bool needed = std::any_of(fields_->Fields.begin(), fields_->Fields.end(),
                                    [](const ExField& field) { return field.Info.Type == kBlob; });
    return needed ? OpenTable() : nullptr;
  }

  void KeepReply() {
    if (!fill_.DbLeaveResults) return;
    const DbTableInfo* table = OpenTable();
    if (table == nullptr) return;
    keeper_.Keep(sink_, *table, fill_.DbListFields, *fields_, exchange_->Reply());
  }

  void GoBackTo(const RecordPlace& place) {
    DbTableInfo* table = OpenTable();
    if (table != nullptr) place.GoBack(*table, hasKey_ ? fill_.ListIndexId : kNoIndexPosition);
  }

  DbEngine& engine_;
  const ExFill& fill_;
  const ExOperation& operation_;
  const FillVariant& variant_;
  RowSink& sink_;
  RowHook hook_;
  char tableName_[sizeof DbTableInfo::Name] = {};  // the table may go before an event
  KeyBuffer keyBuffer_;
  bool hasKey_ = false;
  ExKey key_;
  std::optional<FieldList> fields_;
  std::optional<ExExchange> exchange_;
  std::optional<ExRow> row_;
  ExResultKeeper keeper_;
  bool emptied_ = false;
};

}  // namespace

bool FillFromExtended(DbEngine& engine, const ExFill& fill, RowSink& sink) {
  const ExOperation* operation = FindExOperation(fill.DbExOperation);
  if (operation == nullptr) {
    ShowMessage(kVE044, static_cast<int>(fill.DbExOperation));
    return false;
  }
  return ExtendedFill(engine, fill, *operation, sink).Run();
}

}  // namespace qrn
