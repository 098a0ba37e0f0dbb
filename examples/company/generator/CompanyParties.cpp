// The company's people and partners: departments, staff, customers, visits.
#include <algorithm>
#include <array>

#include "examples/company/generator/CompanyParts.h"
#include "examples/company/generator/CompanyWords.h"

namespace company {

namespace {

struct Department {
  const char* code;
  const char* name;
  const char* budget;
};

constexpr Department kDepartments[] = {
    {"A100", "総務部", "18000000"},     {"B200", "営業第一部", "64500000"},
    {"B210", "営業第二部", "52000000"}, {"C300", "仕入部", "230000000"},
    {"D400", "物流部", "41200000"},     {"E500", "経理部", "9800000"},
};

std::string PhoneNumber(Random& random, const char* area) {
  return std::string(area) + "-" + std::to_string(random.Between(200, 999)) + "-" +
         Padded(random.Below(10000), 4);
}

struct FullName {
  std::string kanji, kana;
};

FullName PersonName(Random& random) {
  const Word& surname = random.Pick(Surnames());
  const Word& given = random.Pick(GivenNames());
  return {std::string(surname.kanji) + "　" + given.kanji,
          std::string(surname.kana) + "　" + given.kana};
}

FullName ShopName(Random& random) {
  const Word& stem = random.Pick(ShopStems());
  const Word& kind = random.Pick(ShopKinds());
  std::string name = std::string(stem.kanji) + kind.kanji;
  const uint32_t form = random.Below(6);
  if (form == 0) name = "㈱" + name;
  if (form == 1) name = "有限会社" + name;
  if (form > 3) name += "㈱";
  return {name, std::string(stem.kana) + kind.kana};
}

CompanyRow Customer(const Company& company, Random& random) {
  const FullName name = ShopName(random);
  const Town& town = random.Pick(Towns());
  const std::string address =
      std::string(town.city) + random.Pick(Streets()) + std::to_string(random.Between(1, 9)) + "-" +
      std::to_string(random.Between(1, 28)) + "-" + std::to_string(random.Between(1, 15));
  const std::string mail = "info" + std::to_string(random.Between(100, 999)) + "@example.jp";
  const bool hasMail = !random.OneIn(3);
  const int64_t rank = random.Between(1, 5);
  return {"0",
          name.kanji,
          name.kana,
          std::string(town.zip) + "-" + Padded(random.Below(10000), 4),
          town.prefecture,
          address,
          PhoneNumber(random, town.area),
          hasMail ? std::optional(mail) : std::nullopt,
          std::to_string(rank),
          std::to_string(random.Pick(std::array{10, 15, 20, 25, 31})),
          std::to_string(rank * random.Between(2, 40) * 100000),
          std::to_string(random.Between(-50, 400) * 1000 + random.Between(0, 999)),
          std::to_string(random.Between(0, 3)) + (random.OneIn(2) ? ".5" : ".25"),
          DateText(company.FirstDay() - random.Between(30, 9000)),
          std::to_string(random.Between(1, company.Size().Staff())),
          random.OneIn(20) ? "0" : "1"};
}

}  // namespace

void Company::PutDepartments() {
  Begin("Departments", {"DeptCode", "Name", "Phone", "Budget"});
  for (const Department& department : kDepartments) {
    Put({department.code, department.name, PhoneNumber(random_, "03"), department.budget});
  }
}

void Company::PutStaff() {
  Begin("Staff", {"StaffNo", "Name", "Kana", "DeptCode", "Joined", "LeftOn", "Salary", "Commission",
                  "Active", "Grade"});
  for (uint32_t number = 1; number <= size_.Staff(); ++number) {
    const FullName name = PersonName(random_);
    const bool hasLeft = number > 4 && random_.OneIn(9);
    const int64_t joined = FirstDay() - random_.Between(100, 12000);
    Put({std::to_string(number), name.kanji, name.kana, random_.Pick(kDepartments).code,
         DateText(joined),
         hasLeft ? std::optional(DateText(FirstDay() + random_.Between(1, 900))) : std::nullopt,
         std::to_string(random_.Between(205, 620) * 1000), "1." + Padded(random_.Below(100), 2),
         hasLeft ? "0" : "1", std::string(1, static_cast<char>('A' + random_.Below(5)))});
  }
}

void Company::PutCustomers() {
  Begin("Customers",
        {"CustomerNo", "Name", "Kana", "Zip", "Prefecture", "Address", "Phone", "Email", "Rank",
         "ClosingDay", "CreditLimit", "Balance", "Discount", "Since", "StaffNo", "Active"});
  for (uint32_t number = 1; number <= size_.Customers(); ++number) {
    CompanyRow row = Customer(*this, random_);
    row[0] = std::to_string(number);
    Put(row);
  }
}

void Company::PutVisits() {
  Begin("VisitNotes", {"記録番号", "得意先番号", "訪問日", "担当者番号", "用件", "内容"});
  const uint32_t visits = size_.Customers() * 2;
  for (uint32_t number = 1; number <= visits; ++number) {
    std::string text = Sentences(random_, VisitSentences(), random_.Between(1, 3));
    if (random_.OneIn(2)) {
      text += "\n" + Sentences(random_, VisitSentences(), random_.Between(1, 3));
    }
    Put({std::to_string(number), std::to_string(random_.Between(1, size_.Customers())),
         DateText(FirstDay() + random_.Between(0, kDays - 1)),
         std::to_string(random_.Between(1, size_.Staff())), random_.Pick(VisitPurposes()), text});
  }
}

}  // namespace company
