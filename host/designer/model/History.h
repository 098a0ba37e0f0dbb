// Steps that were made and can be undone and redone without limit. A step is a list of splices,
// each of which holds what it replaced: memory grows with what was changed, not with the form.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/designer/document/Block.h"
#include "host/designer/model/Texts.h"

namespace qrn::designer {

using Ids = std::vector<BlockId>;

class History {
 public:
  // Of the splice just made or unmade; it holds what stood there before.
  using Watcher = std::function<void(const Splice&)>;

  explicit History(Watcher watcher) : watcher_(std::move(watcher)) {}

  // A step is open from Begin to End; every change is made through Make in between. Steps within a
  // step are part of it. A step with a key joins the one before it if that has the same key and
  // Seal was not called since: typing in one property is one step.
  void Begin(Message name, std::string key, const Ids& selection);
  void Make(Splice splice);
  void End(const Ids& selection);
  // How far the open step is; TakeBack unmakes all from there on.
  size_t Mark() const noexcept { return open_.splices.size(); }
  void TakeBack(size_t mark);
  bool IsOpen() const noexcept { return depth_ > 0; }

  void Seal() noexcept { sealed_ = true; }

  bool CanUndo() const noexcept { return at_ > 0; }
  bool CanRedo() const noexcept { return at_ < steps_.size(); }
  // Of the step that would be undone or redone; there must be one.
  const Message& UndoName() const noexcept { return steps_[at_ - 1].name; }
  const Message& RedoName() const noexcept { return steps_[at_].name; }
  // The controls that were selected before the step, or after it.
  Ids Undo();
  Ids Redo();

  // What stands now is what is saved.
  void MarkSaved() noexcept;
  bool IsDirty() const noexcept { return savedAt_ != at_; }

  size_t StepCount() const noexcept { return steps_.size(); }
  // Splices and lines kept, for whoever measures what the history costs.
  size_t KeptItems() const noexcept;

 private:
  struct Step {
    Message name{TextId::ChangeProperty, {}};
    std::string key;
    std::vector<Splice> splices;
    Ids before;
    Ids after;
  };

  void Join(Step& last);
  static void AddJoined(std::vector<Splice>& splices, Splice splice);

  Watcher watcher_;
  std::vector<Step> steps_;
  size_t at_ = 0;  // steps made and not undone
  size_t savedAt_ = 0;
  Step open_;
  int depth_ = 0;
  bool sealed_ = true;
};

}  // namespace qrn::designer
