// One direction of a grid: its columns from left to right or its rows from top to bottom, tracks in
// a word. A track's place is counted in pixels from the corner inside the grid's frame, which the
// first fixed track touches; tracks that are scrolled away have none.
//
// Walks end with the first track behind the place that they look for, so that what happens on the
// screen costs the same however many tracks there are. Counts that a program has put below zero are
// taken for none.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "grid/model/GridModel.h"

namespace qrn {

inline constexpr int32_t kNoTrack = -1;
inline constexpr int32_t kAnywhere = std::numeric_limits<int32_t>::max();

// A track's pixels: `end` is the first one behind it, where its line is drawn.
struct TrackSpan {
  int32_t start;
  int32_t end;
  bool operator==(const TrackSpan&) const = default;
};
struct PlacedTrack {
  int32_t index;
  TrackSpan span;
  bool operator==(const PlacedTrack&) const = default;
};

struct GridAxis {
  const PixelSizes* sizes;
  int32_t count;        // tracks in use, fixed ones included
  int32_t fixed;        // leading tracks that do not scroll
  int32_t first;        // the first of the others that shows
  int32_t fixedExtent;  // pixels of the fixed tracks, as last measured

  bool IsFixed(int32_t index) const noexcept { return index < fixed; }
  int32_t SizeOf(int32_t index) const noexcept { return sizes->Get(index); }

  // Where a track lies. One that starts behind `limit` is placed somewhere behind it.
  TrackSpan Place(int32_t index, int32_t limit = kAnywhere) const noexcept;
  int32_t StartOf(int32_t index) const noexcept { return Place(index).start; }

  // The end of the last track; somewhere behind `limit` if that is there.
  int32_t End(int32_t limit = kAnywhere) const noexcept;

  // All tracks with a size that start before `limit`, in their order.
  std::vector<PlacedTrack> ShownFixed(int32_t limit) const;
  std::vector<PlacedTrack> ShownScrolling(int32_t limit) const;

  // What lies at a place: a track that scrolls, a fixed one, a track whose end is within a pixel of
  // it. kNoTrack where there is none.
  int32_t ScrollingAt(int32_t place) const noexcept;
  int32_t FixedAt(int32_t place) const noexcept;
  int32_t BorderAt(int32_t place) const noexcept;

  // Whether a track is not scrolled away and lies before `limit`: wholly, or with its start.
  bool IsInView(int32_t index, int32_t limit) const noexcept;
  bool StartsInView(int32_t index, int32_t limit) const noexcept;

  // Pixels of the fixed tracks, and of all.
  int32_t MeasureFixed() const noexcept;
  int32_t MeasureAll() const noexcept;

 private:
  int32_t LastPlusOne() const noexcept;
  int32_t FixedPlusOne() const noexcept;
  int32_t FirstShown() const noexcept;
  int32_t SumOf(int32_t from, int32_t to, int32_t base, int32_t limit = kAnywhere) const noexcept;
  std::vector<PlacedTrack> Shown(int32_t from, int32_t to, int32_t start, int32_t limit) const;
  int32_t IndexAt(int32_t place, int32_t from, int32_t to, int32_t start) const noexcept;
};

// The two directions of a grid as it is now.
GridAxis ColumnsOf(const GridModel& model) noexcept;
GridAxis RowsOf(const GridModel& model) noexcept;

}  // namespace qrn
