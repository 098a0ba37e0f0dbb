#include "controls/scroll/BarMove.h"

#include <algorithm>
#include <limits>

#include "binding/registry/TableTransfer.h"
#include "binding/tables/QRNScrollTables.h"
#include "core/ButtonOperations.h"
#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/Record.h"
#include "core/RecordPosition.h"
#include "core/ReturnCodes.h"
#include "fields/Messages.h"
#include "ole/Names.h"
#include "platform/BtrCall.h"

namespace qrn {
namespace {

// Btrieve takes a place in 16 bits and goes to an end for what lies outside.
uint16_t PlaceToSend(int64_t place) {
  using Limits = std::numeric_limits<int16_t>;
  return static_cast<uint16_t>(std::clamp<int64_t>(place, Limits::min(), Limits::max()));
}

}  // namespace

const BarMove::NoticeRow BarMove::kNotices[] = {
    {SB_LINEUP, &BarMove::LineUp},         {SB_LINEDOWN, &BarMove::LineDown},
    {SB_PAGEUP, &BarMove::PageUp},         {SB_PAGEDOWN, &BarMove::PageDown},
    {SB_THUMBPOSITION, &BarMove::ToThumb}, {SB_TOP, &BarMove::ToTop},
    {SB_BOTTOM, &BarMove::ToBottom},
};

BarMove::BarMove(RecordBar& bar)
    : bar_(bar),
      alive_(&bar.Outer()),
      window_(bar.contained()),
      form_(bar.GetContainerWindow()),
      source_(NarrowText(bar.DbSource)),
      table_(NarrowText(bar.DbTable)),
      controls_(form_) {}

DbTableInfo* BarMove::Named() const {
  return IsThere() ? TheRegistry().ResolveTable(form_, source_, table_) : nullptr;
}

DbTableInfo* BarMove::Table() {
  DbTableInfo* table = Named();
  return table != nullptr && table->IsOpen != 0 ? table : nullptr;
}

void BarMove::Attach() {
  DbTableInfo* table = Named();
  if (table == nullptr) return;
  const std::string index = NarrowText(bar_.DbIndex);
  bar_.TakeIndexId(static_cast<int16_t>(DbFindIndexOrFirst(*table, index.c_str())));
  const bool open =
      table->IsOpen != 0 || TheRegistry().DbOpenOnDemand(*table, form_, source_) == kSuccess;
  if (!open || !IsThere()) return;
  CountRecords();
  bar_.Max = kWholePercentage;
  bar_.ShowRange(bar_.Min, kWholePercentage);
  if (bar_.AutoFirst != 0) ToFirstOnAttach();
}

void BarMove::ToFirstOnAttach() {
  Status result = Read(BtrOpGetFirst);
  if (result != 0) RaiseBtrieveError(result);
  if (IsThere()) bar_.ShowPlace(Place());
}

void BarMove::Refresh() {
  if (Named() == nullptr) {
    ShowMessage(kVE802);
    return;
  }
  CountRecords();
  bar_.ShowRange(bar_.Min, bar_.Max);
  bar_.AutoFirst != 0 ? BackToFirst() : FindOwnPlace();
}

void BarMove::FindOwnPlace() {
  int32_t place = 0;
  Status result = AskPlace(place);
  if (result == 0) {
    bar_.ShowPlace(place);
  } else {
    const auto status = static_cast<int>(result);
    RaiseBtrieveError(result);
    if (result != 0 && IsThere()) ShowMessage(kVE816, status);
  }
  bar_.Value = place;
}

void BarMove::BackToFirst() {
  Status result = Read(BtrOpGetFirst);
  if (result != 0) return RaiseBtrieveError(result);
  bar_.Value = bar_.Min;
  bar_.ShowPlace(bar_.Min);
}

void BarMove::Run(WORD notice, int16_t thumb) {
  const auto* row = std::ranges::find(kNotices, notice, &NoticeRow::notice);
  if (row == std::end(kNotices)) return;
  if (Named() == nullptr) {
    ShowMessage(kVE802);
    return;
  }
  thumb_ = thumb;
  (this->*row->run)();
}

void BarMove::LineUp() {
  const Status result = Read(BtrOpGetPrevious);
  result == BtrStatusEndOfFile ? BeforeFirst(result) : End(result);
}

void BarMove::LineDown() {
  const Status result = Read(BtrOpGetNext);
  if (result == BtrStatusEndOfFile) BehindLast();
  End(result);
}

void BarMove::PageUp() {
  const int64_t before = Place();
  Status result = Read(BtrOpGetPrevious);
  if (result == BtrStatusEndOfFile) return BeforeFirst(result);
  const int64_t pages = bar_.LargeChange;
  if (pages > 1) result = Jump(before - (before - Place()) * pages);
  End(result);
}

void BarMove::PageDown() {
  const int64_t before = Place();
  Status result = Read(BtrOpGetNext);
  if (result == BtrStatusEndOfFile) {
    BehindLast();
    return Fail(result);
  }
  const int64_t pages = bar_.LargeChange;
  if (pages > 1) result = Jump((Place() - before) * pages + before);
  End(result);
}

// Kept so: other bars hear nothing of it, and `Change` is not raised.
void BarMove::ToThumb() {
  if (Jump(thumb_) != 0 || !IsThere()) return;
  bar_.ShowPlace(thumb_);
  ole::Fire<scroll::kEvents, "Scroll">(bar_);
}

void BarMove::ToTop() { End(Read(BtrOpGetFirst)); }
void BarMove::ToBottom() { End(Read(BtrOpGetLast)); }

// Kept so: the end of a table is told as a failure, when the bar stands on the record there again.
void BarMove::BeforeFirst(Status result) {
  (void)Read(BtrOpGetFirst);
  Fail(result);
}

void BarMove::BehindLast() {
  bar_.ShowPlace(kWholePercentage);
  (void)Read(BtrOpGetLast);
}

// What a table gives that is not open, without a call.
Status BarMove::Closed() const {
  return Named() != nullptr ? Status{BtrStatusNotOpen} : Status{kNotOpen};
}

void BarMove::CountRecords() {
  int32_t count = 0;
  DbTableInfo* table = Table();
  if (table == nullptr || DbCountRecords(TheEngine(), *table, &count) != 0) count = 0;
  bar_.Min = count > 0 ? static_cast<int16_t>(kWholePercentage / count) : 0;
}

Status BarMove::Read(int32_t operation) {
  return Table() != nullptr ? DbScrollCall(TheEngine(), operation, *this) : Closed();
}

Status BarMove::AskPlace(int32_t& place) {
  DbTableInfo* table = Table();
  if (table == nullptr) return Closed();
  uint16_t found = 0;
  const Status result = DbFindPercentageAt(TheEngine(), *table, IndexID(), 0, &found);
  if (result == 0) place = found;
  return result;
}

int32_t BarMove::Place() {
  int32_t place = 0;
  const Status result = AskPlace(place);
  if (result != 0 && IsThere()) ShowMessage(kVE816, static_cast<int>(result));
  return place;
}

Status BarMove::GoTo(int64_t place) {
  DbTableInfo* table = Table();
  if (table == nullptr) return Closed();
  return DbGetByPercentageAt(TheEngine(), *table, IndexID(), PlaceToSend(place));
}

// By percentage; shows the record there.
Status BarMove::Jump(int64_t place) {
  const Status result = GoTo(place);
  if (result == 0) {
    TransferToControls(bar_, [this] { return Table(); });
    bar_.Value = static_cast<int32_t>(place);
  } else if (IsThere()) {
    ShowMessage(kVE817, static_cast<int>(result));
  }
  return result;
}

// Kept so: a table that is not open counts as success and reports no status.
void BarMove::End(Status result) {
  if (result != 0 && result != BtrStatusNotOpen) return Fail(result);
  if (!IsThere()) return;
  int32_t place = 0;
  const Status asked = AskPlace(place);
  if (asked == 0) bar_.ShowPlace(place);
  if (asked != 0) ShowMessage(kVE816, static_cast<int>(asked));
  bar_.Value = place;
  ole::Fire<scroll::kEvents, "Change">(bar_);
  if (IsThere()) TheRegistry().NotifyPositionChanged(&bar_, source_, table_, IndexID());
}

// A handler that makes the status 0 has dealt with it.
void BarMove::Fail(Status result) {
  if (!IsThere()) return;
  RaiseBtrieveError(result);
  if (result == 0 || !IsThere()) return;
  const com::Bstr text = WidenToBstr(DbStatusText(result));
  MessageBoxW(bar_.hwnd(), text.c_str(), L"", MB_OK);
}

void BarMove::RaiseBtrieveError(Status& result) {
  const com::Bstr table = WidenToBstr(table_);
  ole::Fire<scroll::kEvents, "BtrieveError">(bar_, table.get(), &result);
}

}  // namespace qrn
