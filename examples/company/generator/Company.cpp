#include "examples/company/generator/Company.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

#include "examples/company/generator/CompanyParts.h"

namespace company {

std::string Padded(uint64_t number, size_t width) {
  std::string text = std::to_string(number);
  if (text.size() < width) text.insert(0, width - text.size(), '0');
  return text;
}

std::string DateText(int64_t day) {
  const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(day))};
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "%04d/%02u/%02u", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  return text.data();
}

std::string SenText(int64_t sen) {
  return std::to_string(sen / 100) + "." + Padded(static_cast<uint64_t>(sen % 100), 2);
}

std::string Sentences(Random& random, std::span<const char* const> sentences, int64_t count) {
  // No list's length is a multiple of it.
  constexpr size_t kStep = 3;
  std::string text;
  size_t at = random.Below(static_cast<uint32_t>(sentences.size()));
  for (; count > 0; --count, at += kStep) text += sentences[at % sentences.size()];
  return text;
}

uint32_t CompanySize::Customers() const noexcept {
  return customers != 0 ? customers : std::clamp<uint32_t>(orders / 12, 10, 20000);
}
uint32_t CompanySize::Products() const noexcept {
  return std::clamp<uint32_t>(orders / 10, 60, 5000);
}
uint32_t CompanySize::Staff() const noexcept { return std::clamp<uint32_t>(orders / 200, 8, 400); }

int64_t Company::FirstDay() noexcept {
  using namespace std::chrono;
  return sys_days(year(2021) / April / 1).time_since_epoch().count();
}

void Company::Begin(std::string_view table, std::initializer_list<const char*> columns) {
  sink_.BeginTable(table, {columns.begin(), columns.size()});
}

void Company::PutAll() {
  PutDepartments();
  PutStaff();
  PutCustomers();
  PutCategories();
  PutProducts();
  PutStock();
  PutOrdersAndLines();
  PutVisits();
  PutClaims();
  PutDocuments();
}

void GenerateCompany(const CompanySize& size, CompanySink& sink) { Company(size, sink).PutAll(); }

}  // namespace company
