// Pages held for reads that come back to the same pages again and again, out of any order: finding
// one here costs one look instead of several scattered ones. A page that has got in stays until
// Clear, so what points into it stays good; when its place is taken, a page is not let in.
//
// Held pages cannot make room for others in the page cache, so all pools of the process together
// hold only so many. One call at a time is inside, so nothing here is guarded.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "btrieve/pages/CheckedVfs.h"
#include "btrieve/pages/PageCache.h"
#include "btrieve/pages/PageRef.h"

namespace btrieve {

class PagePool {
 public:
  static constexpr size_t kMostHeld = 4096;  // 16 MB; at most half of the cache

  PagePool() = default;
  ~PagePool() { Clear(); }
  PagePool(const PagePool&) = delete;
  PagePool& operator=(const PagePool&) = delete;

  static size_t HeldByAll() noexcept { return heldByAll_; }

  // Null for a page that is not held.
  const uint8_t* Find(uint32_t number) const noexcept {
    if (places_.empty()) return nullptr;
    const Place& place = places_[number % places_.size()];
    return place.number == number ? place.page.Bytes() : nullptr;
  }
  // Takes the page in if there is room, leaving `page` empty.
  void Offer(uint32_t number, PageRef& page) {
    if (IsFull()) return;
    if (2 * held_.size() >= places_.size() && places_.size() < kMostPlaces) Grow();
    held_.reserve(held_.size() + 1);
    Place& place = places_[number % places_.size()];
    if (place.number != 0) return;
    place.number = number;
    std::swap(place.page, page);
    held_.push_back(number);
    ++heldByAll_;
  }
  // Before the transaction ends and before anything is written.
  void Clear() noexcept {
    for (const uint32_t number : held_) places_[number % places_.size()] = Place();
    heldByAll_ -= held_.size();
    held_.clear();
  }
  // For a file that nobody reads for some time: the places, too, are given up.
  void Release() noexcept {
    Clear();
    places_ = std::vector<Place>();
  }
  // No file's pool lets a page in any more.
  static bool IsFull() noexcept {
    return heldByAll_ >= std::min(kMostHeld, PageCacheBound() / (2 * kStoragePageSize));
  }

 private:
  static constexpr size_t kFirstPlaces = 64;
  static constexpr size_t kMostPlaces = 2 * kMostHeld;

  struct Place {
    uint32_t number = 0;
    PageRef page;
  };

  // Pages that had places of their own have them still: the new number of places is a multiple.
  void Grow() {
    std::vector<Place> grown(std::max(kFirstPlaces, 2 * places_.size()));
    for (const uint32_t number : held_) {
      std::swap(grown[number % grown.size()], places_[number % places_.size()]);
    }
    places_ = std::move(grown);
  }

  std::vector<Place> places_;
  std::vector<uint32_t> held_;
  inline static size_t heldByAll_ = 0;
};

}  // namespace btrieve
