#include "host/designer/model/History.h"

namespace qrn::designer {
namespace {

constexpr size_t kNever = static_cast<size_t>(-1);

bool IsLineForLine(const Splice& splice) noexcept {
  return splice.count == 1 && splice.items.size() == 1 && !splice.items[0].block;
}

}  // namespace

void History::Begin(Message name, std::string key, const Ids& selection) {
  if (depth_++ > 0) return;
  open_ = Step{std::move(name), std::move(key), {}, selection, {}};
}

void History::Make(Splice splice) {
  open_.splices.push_back(std::move(splice));
  try {
    open_.splices.back().Swap();
  } catch (...) {
    open_.splices.pop_back();
    throw;
  }
  watcher_(open_.splices.back());
}

void History::TakeBack(size_t mark) {
  while (open_.splices.size() > mark) {
    open_.splices.back().Swap();
    watcher_(open_.splices.back());
    open_.splices.pop_back();
  }
}

// Two changes of the same lines are one: what stood there in between is forgotten. Changes of one
// line for one leave all others where they are, so those in between do not matter.
void History::AddJoined(std::vector<Splice>& splices, Splice splice) {
  for (auto last = splices.rbegin(); last != splices.rend(); ++last) {
    if (last->block == splice.block && last->at == splice.at &&
        last->count == splice.items.size()) {
      last->count = splice.count;
      return;
    }
    if (!IsLineForLine(splice) || !IsLineForLine(*last)) break;
  }
  splices.push_back(std::move(splice));
}

void History::Join(Step& last) {
  for (Splice& splice : open_.splices) AddJoined(last.splices, std::move(splice));
  last.after = std::move(open_.after);
}

void History::End(const Ids& selection) {
  if (--depth_ > 0 || open_.splices.empty()) return;
  open_.after = selection;
  if (savedAt_ != kNever && savedAt_ > at_) savedAt_ = kNever;
  steps_.resize(at_);
  const bool joins = !sealed_ && at_ > 0 && !open_.key.empty() && steps_[at_ - 1].key == open_.key;
  if (joins) {
    Join(steps_[at_ - 1]);
  } else {
    steps_.push_back(std::move(open_));
    ++at_;
  }
  open_ = {};
  sealed_ = false;
}

Ids History::Undo() {
  Step& step = steps_[--at_];
  for (auto splice = step.splices.rbegin(); splice != step.splices.rend(); ++splice) {
    splice->Swap();
    watcher_(*splice);
  }
  Seal();
  return step.before;
}

Ids History::Redo() {
  Step& step = steps_[at_++];
  for (Splice& splice : step.splices) {
    splice.Swap();
    watcher_(splice);
  }
  Seal();
  return step.after;
}

void History::MarkSaved() noexcept {
  savedAt_ = at_;
  Seal();
}

size_t History::KeptItems() const noexcept {
  size_t count = 0;
  for (const Step& step : steps_) {
    for (const Splice& splice : step.splices) {
      for (const Item& item : splice.items) count += item.block ? item.block->LineCount() : 1;
    }
  }
  return count;
}

}  // namespace qrn::designer
