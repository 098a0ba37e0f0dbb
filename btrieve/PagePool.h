// Pages held for scans that come back to the same pages again and again, out of any order: finding
// one here costs one look instead of several scattered ones. A page that has got in stays until
// Clear, so what points into it stays good; when its place is taken, a page is not let in.
#pragma once

#include <utility>
#include <vector>

#include "btrieve/PageRef.h"

namespace btrieve {

class PagePool {
 public:
  static constexpr size_t kPlaces = 8192;  // well below what SQLite's cache is given

  // Null for a page that is not held.
  const uint8_t* Find(uint32_t number) const noexcept {
    if (places_.empty()) return nullptr;
    const Place& place = places_[number % kPlaces];
    return place.number == number ? place.page.Bytes() : nullptr;
  }
  // Takes the page in if there is room, leaving `page` empty.
  void Offer(uint32_t number, PageRef& page) {
    if (places_.empty()) places_.resize(kPlaces);
    Place& place = places_[number % kPlaces];
    if (place.number != 0) return;
    place.number = number;
    std::swap(place.page, page);
    held_.push_back(number);
  }
  // Before the transaction ends and before anything is written.
  void Clear() noexcept {
    for (const uint32_t number : held_) places_[number % kPlaces] = Place();
    held_.clear();
  }

 private:
  struct Place {
    uint32_t number = 0;
    PageRef page;
  };
  std::vector<Place> places_;
  std::vector<uint32_t> held_;
};

}  // namespace btrieve
