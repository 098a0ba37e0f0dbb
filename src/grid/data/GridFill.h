// One fill of a grid under way, as the engine sees it. Handlers of the application run in it and
// may do anything, close the form included: without its window the fill ends.
#pragma once

#include "core/DbEngine.h"
#include "core/FillTurn.h"
#include "core/RowSink.h"
#include "grid/model/GridModel.h"

namespace qrn {

class GridFill final : public RowSink {
 public:
  GridFill(GridModel& model, DbEngine& engine);
  GridFill(const GridFill&) = delete;
  GridFill& operator=(const GridFill&) = delete;

  void Run();

  DbTableInfo* Table() override;
  void Empty(size_t fieldCount) override;
  bool Format(std::u16string& lineData) override;
  bool AddRow(const char* text) override;
  void GivePosition(uint32_t position) override;
  void TakeResultId(int16_t id) override { model_.DbResultID = id; }
  void BtrieveError(const char* tableName, Status status) override;

 private:
  bool Prepare();
  bool Read();
  bool MakeRow();
  void WriteNames();
  void WriteNumbers();
  void TakeLengths();

  const FillTurn turn_;
  GridModel& model_;
  DbEngine& engine_;
  const WindowHandle window_;  // the one that is filled: another may take its place meanwhile
  const GridNames names_;
  const bool keepsPositions_;
  int64_t row_ = 0;     // the next one
  bool placed_ = true;  // the position of the record under way is kept, if any are
  bool memory_ = true;  // false once a copy found none
};

}  // namespace qrn
