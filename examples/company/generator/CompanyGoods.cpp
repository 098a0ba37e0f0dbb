// What the company sells: categories, products, stock, documents.
#include <algorithm>
#include <array>
#include <optional>

#include "examples/company/generator/CategoryPictures.h"
#include "examples/company/generator/CompanyParts.h"
#include "examples/company/generator/CompanyWords.h"

namespace company {

void Company::PutCategories() {
  Begin("Categories", {"CategoryNo", "Name", "Markup"});
  for (size_t number = 0; number < Categories().size(); ++number) {
    Put({std::to_string(number + 1), Categories()[number].name,
         "1." + Padded(random_.Below(60) + 15, 2)});
  }
}

void Company::PutProducts() {
  Begin("Products", {"ProductCode", "Name", "Kana", "CategoryNo", "Price", "Cost", "TaxPercent",
                     "Weight", "PackSize", "Picture", "Discontinued"});
  for (uint32_t number = 0; number < size_.Products(); ++number) PutProduct(number);
}

void Company::PutProduct(uint32_t number) {
  const auto categories = static_cast<uint32_t>(Categories().size());
  const uint32_t category = number % categories;
  const CategoryWords& words = Categories()[category];
  const Word& maker = random_.Pick(Makers());
  const Word& goods = random_.Pick(words.goods);
  const Word& variant = random_.Pick(Variants());
  Product product;
  product.code =
      std::string(1, static_cast<char>('A' + category)) + Padded(1001 + number / categories, 5);
  product.priceSen = random_.Between(words.cheapest, words.dearest) * 100;
  if (random_.OneIn(4)) product.priceSen += 50;
  product.isFood = words.isFood;
  const int64_t cost = product.priceSen * random_.Between(52, 81) / 100;
  const int64_t grams = random_.Between(5, 4000);
  Put({product.code, std::string(maker.kanji) + " " + goods.kanji + " " + variant.kanji,
       std::string(maker.kana) + goods.kana + variant.kana, std::to_string(category + 1),
       SenText(product.priceSen), SenText(cost), product.isFood ? "8" : "10",
       std::to_string(grams / 1000) + "." + Padded(static_cast<uint64_t>(grams % 1000), 3),
       std::to_string(random_.Pick(std::array{1, 1, 6, 10, 12, 24, 100})),
       CategoryPictureName(category), random_.OneIn(25) ? "1" : "0"});
  products_.push_back(std::move(product));
}

void Company::PutStock() {
  Begin("Stock",
        {"ProductCode", "Warehouse", "Quantity", "Reserved", "Shelf", "CountedOn", "CountedAt"});
  for (const Product& product : products_) {
    const int64_t warehouses = random_.Between(1, 3);
    for (int64_t warehouse = 1; warehouse <= warehouses; ++warehouse) {
      const int64_t quantity = random_.Between(0, 900);
      const std::string shelf = std::string(1, static_cast<char>('A' + random_.Below(8))) + "-" +
                                Padded(random_.Below(60) + 1, 2);
      Put({product.code, std::to_string(warehouse), std::to_string(quantity),
           std::to_string(random_.Between(0, quantity)),
           random_.OneIn(8) ? std::nullopt : std::optional(shelf),
           DateText(FirstDay() + kDays - random_.Between(1, 90)),
           Padded(random_.Below(9) + 9, 2) + ":" + Padded(random_.Below(60), 2) + ":00"});
    }
  }
}

void Company::PutDocuments() {
  Begin("Documents", {"DocNo", "Title", "Written", "Body"});
  for (uint32_t number = 0; number < 3 * DocumentTitles().size(); ++number) {
    std::string body;
    const int64_t paragraphs = random_.Between(1, 12);
    for (int64_t paragraph = 1; paragraph <= paragraphs; ++paragraph) {
      body += std::to_string(paragraph) + ". " +
              Sentences(random_, DocumentSentences(), random_.Between(1, 4));
      body += "\n";
    }
    const std::string title = DocumentTitles()[number % DocumentTitles().size()];
    Put({std::to_string(9001 + number), title + " 第" + std::to_string(number / 8 + 1) + "版",
         DateText(FirstDay() + random_.Between(0, kDays - 1)), body});
  }
}

}  // namespace company
