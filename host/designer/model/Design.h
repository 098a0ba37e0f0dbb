// A form that is being designed: what is on it, what is selected, and every change of it as steps
// that can be undone. Everything else of the model works through this class.
//
// Texts are UTF-8. Controls are told by ids, which stay theirs through every change, undo and redo.
// Menus are kept but are no controls here: they have no place on the form.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/designer/document/FormStore.h"
#include "host/designer/model/ClassInfo.h"
#include "host/designer/model/History.h"
#include "host/designer/model/Texts.h"

namespace qrn::designer {

using ControlId = BlockId;
using Refusal = std::optional<Message>;  // nothing: done

// What a step, an undo or a redo changed.
struct ChangeReport {
  bool structure = false;  // controls came, went, or lie elsewhere or in another order
  bool code = false;
  // Each property once, as written; the name of a control counts as its property "Name".
  std::set<std::pair<ControlId, std::string>> properties;

  bool Any() const noexcept { return structure || code || !properties.empty(); }
};

class Design {
 public:
  // `classes` outlives the design.
  Design(StoredForm stored, const ClassSource& classes);
  Design(const Design&) = delete;
  Design& operator=(const Design&) = delete;

  // --- What is on the form. Ids that name nothing on it are the caller's mistake, but for Has.
  ControlId form() const noexcept { return document_->form()->id(); }
  bool Has(ControlId id) const;
  const std::string& Name(ControlId id) const { return At(id).Name(); }
  // Nothing for a control that stands alone.
  std::optional<int> Index(ControlId id) const;
  // 0 for the form.
  ControlId Container(ControlId id) const;
  bool LiesIn(ControlId id, ControlId outer) const;  // at any depth
  // Null where nothing is known of the class.
  const ClassInfo* Class(ControlId id) const;
  // True for the form and for classes that hold others, or that do so in this file.
  bool HoldsOthers(ControlId id) const;
  // Controls that lie directly in one, front to back, which is the file's order.
  std::vector<ControlId> Inside(ControlId container) const;
  // Every control, a container before what lies in it; the form is not one.
  std::vector<ControlId> All() const;

  // Nothing if the property is not written or cannot be read.
  std::optional<form::PropertyValue> Value(ControlId id, std::string_view property) const;
  // The same, or what a new control has; nothing if neither is known.
  std::optional<form::PropertyValue> ValueOrInitial(ControlId id, std::string_view property) const;
  std::optional<form::Property> Group(ControlId id, std::string_view property) const;
  // A text, wherever it is kept; empty if the property is none.
  std::string TextValue(ControlId id, std::string_view property) const;
  double NumberValue(ControlId id, std::string_view property, double otherwise) const;

  const FormDocument& document() const noexcept { return *document_; }
  const Companion& companion() const noexcept { return *companion_; }
  const ClassSource& classes() const noexcept { return classes_; }

  // --- Selection. The last one is the primary: others align to it. Ids that are not on the form
  // are left out; the form itself is selected alone.
  const Ids& selection() const noexcept { return selection_; }
  ControlId Primary() const noexcept { return selection_.empty() ? 0 : selection_.back(); }
  bool IsSelected(ControlId id) const noexcept;
  void Select(const Ids& ids);

  // --- Changes, within a step.
  // Writes a value as Visual Basic does: a boolean, a colour, an enumeration by what is known of
  // the class; a text that does not fit on a line into the companion; nothing at all for the value
  // that a new control has. The line of an equal value is not touched.
  Refusal Put(ControlId id, std::string_view property, const form::PropertyValue& value);
  // A group (a font) with everything in it, in the place of the one that stands.
  Refusal PutGroup(ControlId id, const form::Property& group);
  // An image file's bytes; empty ones take the picture away.
  Refusal PutPicture(ControlId id, std::string_view property, std::string_view image);
  void Remove(ControlId id, std::string_view property);
  // Adds the block in front of everything in the container.
  void PutInFront(ControlId container, BlockRef control);
  // Takes the control out of the form; the block stays what it is.
  BlockRef TakeOut(ControlId id);
  // Puts it so that it comes before `next` in the file, 0: behind all others of the container.
  void PutBefore(ControlId container, BlockRef control, ControlId next);
  // The library's line at the head of the file, unless it stands.
  Refusal NeedLibrary(const form::LibraryReference& library);
  // A picture or text record as another form's companion has it.
  std::optional<form::FileReference> AddRecord(std::string_view record, bool isText);
  void Make(Splice splice);
  const Block& At(ControlId id) const;
  BlockRef Hold(ControlId id) const;

  // --- Steps.
  bool CanUndo() const noexcept { return history_.CanUndo(); }
  bool CanRedo() const noexcept { return history_.CanRedo(); }
  std::string UndoName(Language language) const;  // empty if there is nothing to undo
  std::string RedoName(Language language) const;
  void Undo();  // nothing happens where there is nothing
  void Redo();
  // What comes next is a step of its own: the user went elsewhere.
  void Seal() noexcept { history_.Seal(); }
  bool IsDirty() const noexcept { return history_.IsDirty(); }
  const History& history() const noexcept { return history_; }

  // Called after each outermost step, undo and redo that changed something, and after selecting
  // (with an empty report). The design must not be changed from there.
  using Observer = std::function<void(const ChangeReport&)>;
  void Observe(Observer observer) { observer_ = std::move(observer); }

  // --- Files. Both empty when done, else the reason; then the old files are as they were.
  std::string Save(const std::string& path);

 private:
  friend class Step;

  void Begin(Message name, std::string key) {
    history_.Begin(std::move(name), std::move(key), selection_);
  }
  void End();
  void OnSplice(const Splice& splice);
  void Report();
  const std::unordered_map<ControlId, BlockRef>& Blocks() const;
  Ids OnForm(const Ids& ids) const;
  Refusal PutLine(ControlId id, std::string_view property, std::optional<Item> item,
                  const std::string& shown);
  size_t PlaceFor(const Block& control, std::string_view property) const;
  Refusal TextRecord(const std::string& text, bool hasSign, form::FileReference* reference);

  std::unique_ptr<FormDocument> document_;
  std::unique_ptr<Companion> companion_;
  // Lines of the form that was opened refer to a companion that is not there: where its records lay
  // is not known, so none are added.
  bool companionIsMissing_;
  const ClassSource& classes_;
  History history_;
  Ids selection_;
  ChangeReport report_;
  Observer observer_;
  mutable std::unordered_map<ControlId, BlockRef> index_;
  mutable bool indexIsStale_ = true;
};

// One step of the user's, open while the object lives. What is not committed is taken back. Within
// another step it is part of that one, and only its own part is taken back.
class Step {
 public:
  Step(Design& design, TextId name, std::vector<std::string> words = {}, std::string key = {});
  Step(const Step&) = delete;
  Step& operator=(const Step&) = delete;
  ~Step();

  void Commit() noexcept { committed_ = true; }
  // Commits unless refused; hands the refusal on.
  Refusal Commit(Refusal refusal) noexcept;

 private:
  Design& design_;
  size_t mark_;
  bool committed_ = false;
};

// A form with nothing on it, as Visual Basic makes one.
StoredForm NewForm(const std::string& name);

}  // namespace qrn::designer
