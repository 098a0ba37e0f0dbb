// What the company's customers order, and what went wrong with it.
#include <algorithm>
#include <optional>

#include "examples/company/generator/CompanyParts.h"
#include "examples/company/generator/CompanyWords.h"

namespace company {

namespace {

constexpr uint32_t kFirstOrder = 100001;
constexpr uint32_t kMostLines = 5;  // three on average

enum OrderStatus { kReceived = 1, kPacked = 2, kShipped = 3, kCancelled = 9 };

struct OrderLine {
  uint32_t order;
  uint32_t number;
  uint32_t product;
  int64_t quantity;
  int64_t discountPercent;

  int64_t Amount(const Product& sold) const {
    return sold.priceSen * quantity * (100 - discountPercent) / 10000;
  }
};

struct Order {
  std::vector<OrderLine> lines;
  int64_t subtotal = 0;
  int64_t tax = 0;
};

// Its own seed for each order: heads and lines are two tables, and are made in two passes.
Random RandomOf(uint64_t seed, uint32_t order) { return Random(seed * 0x2545F4914F6CDD1D + order); }

Order MakeOrder(Random& random, uint32_t number, const std::vector<Product>& products) {
  Order order;
  const uint32_t count = random.Below(kMostLines) + 1;
  for (uint32_t at = 1; at <= count; ++at) {
    OrderLine line{number, at, random.Favoured(static_cast<uint32_t>(products.size())),
                   random.Between(1, 24), random.OneIn(6) ? random.Between(1, 3) * 5 : 0};
    const Product& product = products[line.product];
    order.subtotal += line.Amount(product);
    order.tax += line.Amount(product) * (product.isFood ? 8 : 10) / 100;
    order.lines.push_back(line);
  }
  return order;
}

// Almost all orders but the latest are shipped.
OrderStatus StatusOf(Random& random, uint32_t age) {
  if (random.OneIn(50)) return kCancelled;
  if (age > 60) return kShipped;
  return age > 25 ? kPacked : kReceived;
}

}  // namespace

void Company::PutOrdersAndLines() {
  Begin("Orders", {"OrderNo", "CustomerNo", "StaffNo", "OrderDate", "OrderTime", "DueDate",
                   "ShippedOn", "Status", "Lines", "Subtotal", "Tax", "Total", "Remark"});
  for (uint32_t at = 0; at < size_.orders; ++at) {
    Random random = RandomOf(size_.seed, at);
    const Order order = MakeOrder(random, kFirstOrder + at, products_);
    const int64_t day = FirstDay() + int64_t{at} * kDays / size_.orders;
    const OrderStatus status = StatusOf(random, size_.orders - at);
    const int64_t shipped = day + random.Between(1, 5);
    const std::string time = Padded(random.Below(9) + 9, 2) + ":" + Padded(random.Below(60), 2) +
                             ":" + Padded(random.Below(60), 2);
    const bool hasRemark = random.OneIn(5);
    Put({std::to_string(kFirstOrder + at), std::to_string(random.Favoured(size_.Customers()) + 1),
         std::to_string(random.Between(1, size_.Staff())), DateText(day), time, DateText(day + 7),
         status == kShipped ? std::optional(DateText(shipped)) : std::nullopt,
         std::to_string(status), std::to_string(order.lines.size()), std::to_string(order.subtotal),
         std::to_string(order.tax), std::to_string(order.subtotal + order.tax),
         hasRemark ? std::optional(std::string(random.Pick(Remarks()))) : std::nullopt});
  }
  Begin("OrderLines",
        {"OrderNo", "LineNo", "ProductCode", "Quantity", "UnitPrice", "DiscountPercent", "Amount"});
  for (uint32_t at = 0; at < size_.orders; ++at) {
    Random random = RandomOf(size_.seed, at);
    for (const OrderLine& line : MakeOrder(random, kFirstOrder + at, products_).lines) {
      const Product& product = products_[line.product];
      Put({std::to_string(line.order), std::to_string(line.number), product.code,
           std::to_string(line.quantity), SenText(product.priceSen),
           std::to_string(line.discountPercent), std::to_string(line.Amount(product))});
    }
  }
}

void Company::PutClaims() {
  Begin("Claims", {"ClaimNo", "OrderNo", "Received", "Settled", "Amount", "Detail"});
  const uint32_t claims = std::min(size_.orders / 80 + 1, 30000U);
  for (uint32_t number = 1; number <= claims; ++number) {
    const uint32_t order = random_.Below(size_.orders);
    const int64_t received = FirstDay() + int64_t{order} * kDays / size_.orders + 9;
    const std::string detail = Sentences(random_, ClaimSentences(), random_.Between(1, 4));
    Put({std::to_string(number), std::to_string(kFirstOrder + order), DateText(received),
         random_.OneIn(4) ? std::nullopt
                          : std::optional(DateText(received + random_.Between(1, 20))),
         std::to_string(random_.Between(1, 80) * 100), detail});
  }
}

}  // namespace company
