// A trading company made up from a seed: its rows, table by table, for the schema in
// examples/company.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace company {

// UTF-8, nothing for null.
using CompanyRow = std::vector<std::optional<std::string>>;

class CompanySink {
 public:
  virtual ~CompanySink() = default;

  // Rows that follow belong to this table and have these columns.
  virtual void BeginTable(std::string_view table, std::span<const char* const> columns) = 0;
  virtual void Put(const CompanyRow& row) = 0;
};

struct CompanySize {
  uint32_t orders = 5000;
  uint64_t seed = 1;

  uint32_t customers = 0;  // 0: as the orders ask for

  // The rest grows with the orders, more slowly.
  uint32_t Customers() const noexcept;
  uint32_t Products() const noexcept;
  uint32_t Staff() const noexcept;
};

// Every table's rows in full, parents before children. The same size and seed give the same rows on
// every system.
void GenerateCompany(const CompanySize& size, CompanySink& sink);

}  // namespace company
