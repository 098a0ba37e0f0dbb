#include "host/designer/model/TabOrder.h"

#include <algorithm>

namespace qrn::designer {
namespace {

constexpr char kTabIndex[] = "TabIndex";

std::optional<int32_t> TabIndexOf(const Design& design, ControlId id) {
  const auto value = design.Value(id, kTabIndex);
  const int32_t* number = value ? std::get_if<int32_t>(&*value) : nullptr;
  return number ? std::optional(*number) : std::nullopt;
}

Refusal Number(Design& design, const std::vector<ControlId>& order) {
  int32_t index = 0;
  for (const ControlId id : order) {
    if (Refusal refusal = design.Put(id, kTabIndex, index++)) return refusal;
  }
  return {};
}

}  // namespace

std::vector<ControlId> TabOrderOf(const Design& design) {
  std::vector<std::pair<int32_t, ControlId>> numbered;
  for (const ControlId id : design.All()) {
    if (const auto index = TabIndexOf(design, id)) numbered.emplace_back(*index, id);
  }
  std::stable_sort(numbered.begin(), numbered.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<ControlId> order;
  for (const auto& [index, id] : numbered) order.push_back(id);
  return order;
}

int32_t NextTabIndex(const Design& design) {
  int32_t next = 0;
  for (const ControlId id : design.All()) {
    const auto index = TabIndexOf(design, id);
    if (index && *index >= next && *index < 32767) next = *index + 1;
  }
  return next;
}

Refusal PutTabOrder(Design& design, const std::vector<ControlId>& clicked) {
  Step step(design, TextId::ChangeTabOrder);
  std::vector<ControlId> order = TabOrderOf(design);
  auto place = order.begin();
  for (const ControlId id : clicked) {
    const auto found = std::find(place, order.end(), id);
    if (found == order.end()) continue;
    std::rotate(place, found, found + 1);
    ++place;
  }
  return step.Commit(Number(design, order));
}

Refusal PutTabIndex(Design& design, ControlId id, int32_t index) {
  std::vector<ControlId> order = TabOrderOf(design);
  std::erase(order, id);
  const auto place = std::clamp<std::ptrdiff_t>(index, 0, std::ssize(order));
  order.insert(order.begin() + place, id);
  return Number(design, order);
}

Refusal CloseTabOrder(Design& design, const std::vector<int32_t>& gone) {
  for (const ControlId id : design.All()) {
    const auto index = TabIndexOf(design, id);
    if (!index) continue;
    const auto before =
        std::count_if(gone.begin(), gone.end(), [&](int32_t number) { return number < *index; });
    if (before == 0) continue;
    const auto moved = static_cast<int32_t>(*index - before);
    if (Refusal refusal = design.Put(id, kTabIndex, moved)) return refusal;
  }
  return {};
}

}  // namespace qrn::designer
