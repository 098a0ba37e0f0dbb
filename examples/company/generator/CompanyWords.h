// What the generated company's names and texts are made of: UTF-8.
#pragma once

#include <span>

namespace company {

struct Word {
  const char* kanji;
  const char* kana;
};

struct Town {
  const char* prefecture;
  const char* city;
  const char* zip;   // its first three digits
  const char* area;  // of telephone numbers
};

struct CategoryWords {
  const char* name;
  bool isFood;            // taxed at the lower rate
  int cheapest, dearest;  // yen
  std::span<const Word> goods;
};

std::span<const Word> Surnames();
std::span<const Word> GivenNames();
std::span<const Word> ShopStems();
std::span<const Word> ShopKinds();
std::span<const Town> Towns();
std::span<const char* const> Streets();
std::span<const Word> Makers();
std::span<const Word> Variants();
std::span<const CategoryWords> Categories();
std::span<const char* const> Remarks();
std::span<const char* const> VisitPurposes();
std::span<const char* const> VisitSentences();
std::span<const char* const> ClaimSentences();
std::span<const char* const> DocumentTitles();
std::span<const char* const> DocumentSentences();

}  // namespace company
