// A scroll bar whose thumb is the place of the current record along a key of its table, in
// hundredths of a percent. It moves the record, the controls of its form follow; it follows when
// another control has moved the record.
//
// What a move does is in scroll/BarMove.h; the two orientations are classes of scroll/QRNScroll.h.
#pragma once

#include "binding/FieldBound.h"

namespace qrn {

inline constexpr int32_t kWholePercentage = 10000;

struct BarOrientation {
  DWORD style;
  UINT message;
};
inline constexpr BarOrientation kHorizontalOrientation{SBS_HORZ, WM_HSCROLL};
inline constexpr BarOrientation kVerticalOrientation{SBS_VERT, WM_VSCROLL};

class RecordBar : public Registered<TableBound<BoundControl<ole::VisibleControl>>, kNavControls> {
 public:
  // Properties. Numbers are only stored: none moves the thumb.
  com::Bstr DbIndex = com::Bstr::Empty();
  int32_t LargeChange = 1;
  int32_t SmallChange = 1;  // without effect
  int32_t Max = 32767;      // both become the bar's range once it has found its table
  int32_t Min = 0;
  int32_t Value = 0;
  int16_t AutoFirst = -1;

  // Counts the records anew; then goes to the first one, or with `AutoFirst` off looks where the
  // current one is.
  void Refresh();

  // CQuorin
  std::string GetDbTableRef() override { return NarrowText(DbSource); }
  ControlType GetControlType() override { return kTypeScroll; }
  void OnDataControlReady() override;
  void OnPositionChanged(const std::string& tableName, int32_t indexId) override;

  // Position of `DbIndex`, found when the bar is attached.
  int16_t indexId() const noexcept { return indexId_; }
  void TakeIndexId(int16_t position) noexcept { indexId_ = position; }

  // The bar on the screen; nothing without a window.
  void ShowRange(int32_t least, int32_t most);
  void ShowPlace(int32_t place);

  bool OnWindowMessage(com::Message& message) override;
  void OnChanged(int32_t id) override;

 protected:
  RecordBar(const ole::ControlTable& table, const ole::Binding& binding,
            const BarOrientation& orientation);

  std::optional<ole::ContainedDescription> DescribeContained() override;
  void OnRegister() override;
  KeyEnd OnKeyDown(MSG& message) override;
  LONG AccessibleRole() const override { return ROLE_SYSTEM_SCROLLBAR; }

 private:
  const BarOrientation& orientation_;
  int16_t indexId_ = 0;
};

}  // namespace qrn
