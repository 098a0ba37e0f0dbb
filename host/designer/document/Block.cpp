#include "host/designer/document/Block.h"

#include <algorithm>
#include <atomic>
#include <iterator>

#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

constexpr size_t kBlanksPerLevel = 3;

BlockId NextId() noexcept {
  static std::atomic<BlockId> last{0};
  return ++last;
}

std::string Shifted(const std::string& line, int levels) {
  const size_t blanks = kBlanksPerLevel * static_cast<size_t>(std::abs(levels));
  if (levels >= 0) return std::string(blanks, ' ') + line;
  const size_t own = std::min(line.find_first_not_of(' '), line.size());
  return line.substr(std::min(blanks, own));
}

}  // namespace

Block::Block(BlockKind kind, std::string library, std::string className)
    : kind_(kind), id_(NextId()), library_(std::move(library)), className_(std::move(className)) {}

bool Block::Is(std::string_view libraryName, std::string_view name) const noexcept {
  return form::SameWord(library_, libraryName) && form::SameWord(className_, name);
}

const std::string& Block::Name() const noexcept {
  static const std::string none;
  return kind_ == BlockKind::Lines || items_.empty() ? none : items_.front().name;
}

int Block::Depth() const noexcept {
  int depth = 0;
  for (const Block* outer = parent_; outer; outer = outer->parent_) ++depth;
  return depth;
}

size_t Block::Find(std::string_view property) const noexcept {
  for (size_t at = kind_ == BlockKind::Lines ? 0 : 1; at < items_.size(); ++at) {
    const Item& item = items_[at];
    if (item.block && item.block->kind() == BlockKind::Control) continue;
    if (form::SameWord(item.block ? item.block->Name() : item.name, property)) return at;
  }
  return kNowhere;
}

size_t Block::Find(const Block& child) const noexcept {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&](const Item& item) { return item.block.get() == &child; });
  return found == items_.end() ? kNowhere : static_cast<size_t>(found - items_.begin());
}

void Block::Append(Item item) {
  if (item.block) item.block->parent_ = this;
  items_.push_back(std::move(item));
}

void Block::Write(std::string* fileBytes) const {
  for (const Item& item : items_) {
    if (item.block) {
      item.block->Write(fileBytes);
    } else {
      *fileBytes += item.bytes;
    }
  }
}

size_t Block::LineCount() const noexcept {
  size_t count = 0;
  for (const Item& item : items_) count += item.block ? item.block->LineCount() : 1;
  return count;
}

void Splice::Swap() {
  std::vector<Item>& all = block->items_;
  std::vector<Item> removed;
  removed.reserve(count);
  if (items.size() > count) all.reserve(all.size() + items.size() - count);
  // From here on nothing allocates.
  const auto begin = all.begin() + static_cast<std::ptrdiff_t>(at);
  const auto end = begin + static_cast<std::ptrdiff_t>(count);
  std::move(begin, end, std::back_inserter(removed));
  all.erase(begin, end);
  for (Item& item : items) {
    if (item.block) item.block->parent_ = block.get();
  }
  for (Item& item : removed) {
    if (item.block) item.block->parent_ = nullptr;
  }
  all.insert(all.begin() + static_cast<std::ptrdiff_t>(at), std::make_move_iterator(items.begin()),
             std::make_move_iterator(items.end()));
  count = items.size();
  items = std::move(removed);
}

BlockRef Reindented(const Block& block, int levels) {
  auto copy = std::make_shared<Block>(block.kind_, block.library_, block.className_);
  copy->id_ = block.id_;
  for (const Item& item : block.items_) {
    copy->Append(item.block ? Item{{}, {}, Reindented(*item.block, levels)}
                            : Item{Shifted(item.bytes, levels), item.name, nullptr});
  }
  return copy;
}

}  // namespace qrn::designer
