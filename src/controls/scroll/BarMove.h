// One piece of work of a record scroll bar, from the lookup of its table to the notices. Handlers
// of the application run in it and may do anything, close the form included: the control stays
// alive as long as the work, and without its window the work ends in silence.
#pragma once

#include <string>

#include "binding/registry/FormControls.h"
#include "controls/scroll/RecordBar.h"
#include "core/DbEngine.h"

namespace qrn {

class BarMove final : public BoundCaller {
 public:
  // The names are the bar's of now.
  explicit BarMove(RecordBar& bar);
  BarMove(const BarMove&) = delete;
  BarMove& operator=(const BarMove&) = delete;

  // Finds the key, opens the table and takes its number of records for the range; with `AutoFirst`
  // goes to the first record. Silent when the names lead to no table.
  void Attach();
  void Refresh();
  // A notice of the bar (SB_LINEUP and so on); `thumb` is where the thumb was let go.
  void Run(WORD notice, int16_t thumb);

  // BoundCaller
  DbTableInfo* Table() override;
  FieldControls& Controls() override { return controls_; }
  int32_t IndexID() const override { return bar_.indexId(); }

 private:
  struct NoticeRow {
    WORD notice;
    void (BarMove::*run)();
  };
  static const NoticeRow kNotices[];

  void LineUp();
  void LineDown();
  void PageUp();
  void PageDown();
  void ToThumb();
  void ToTop();
  void ToBottom();

  // Steps.
  bool IsThere() const noexcept { return bar_.contained() == window_; }
  DbTableInfo* Named() const;
  Status Closed() const;
  void CountRecords();
  Status Read(int32_t operation);
  Status AskPlace(int32_t& place);
  int32_t Place();  // 0 after VE816
  Status GoTo(int64_t place);
  Status Jump(int64_t place);

  // Ends.
  void ToFirstOnAttach();
  void FindOwnPlace();
  void BackToFirst();
  void BeforeFirst(Status result);
  void BehindLast();
  void End(Status result);
  void Fail(Status result);
  void RaiseBtrieveError(Status& result);

  RecordBar& bar_;
  const com::Com<IUnknown> alive_;
  const HWND window_;
  const WindowHandle form_;
  const std::string source_;
  const std::string table_;
  FormControls controls_;
  int16_t thumb_ = 0;
};

}  // namespace qrn
