// The generator's state between the tables, and small ways of writing values. Used by the Company
// sources alone.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "examples/company/generator/Company.h"
#include "examples/company/generator/Random.h"

namespace company {

// "0042".
std::string Padded(uint64_t number, size_t width);
// "2021/04/01"; days count from 1970-01-01.
std::string DateText(int64_t day);
// Hundredths of a yen as "123.45".
std::string SenText(int64_t sen);

// `count` different ones of the sentences, in a row.
std::string Sentences(Random& random, std::span<const char* const> sentences, int64_t count);

struct Product {
  std::string code;
  int64_t priceSen;
  bool isFood;
};

class Company {
 public:
  static constexpr int64_t kDays = 3 * 365;  // of trading

  Company(const CompanySize& size, CompanySink& sink)
      : size_(size), sink_(sink), random_(size.seed) {}

  void PutAll();

  const CompanySize& Size() const noexcept { return size_; }
  static int64_t FirstDay() noexcept;  // 2021-04-01

 private:
  void Begin(std::string_view table, std::initializer_list<const char*> columns);
  void Put(const CompanyRow& row) { sink_.Put(row); }

  void PutDepartments();
  void PutStaff();
  void PutCustomers();
  void PutVisits();
  void PutCategories();
  void PutProducts();
  void PutProduct(uint32_t number);
  void PutStock();
  void PutOrdersAndLines();
  void PutClaims();
  void PutDocuments();

  CompanySize size_;
  CompanySink& sink_;
  Random random_;
  std::vector<Product> products_;
};

}  // namespace company
