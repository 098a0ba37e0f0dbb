#include "host/designer/model/Design.h"

#include <algorithm>

#include "host/designer/document/PropertyText.h"
#include "host/form/FrxFile.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

bool IsMenu(const Block& block) { return block.Is("VB", "Menu"); }

bool IsControl(const Item& item) {
  return item.block && item.block->kind() == BlockKind::Control && !IsMenu(*item.block);
}

void Enter(std::unordered_map<ControlId, BlockRef>& index, const BlockRef& block) {
  index.emplace(block->id(), block);
  for (const Item& item : block->items()) {
    if (item.block && item.block->kind() == BlockKind::Control) Enter(index, item.block);
  }
}

void List(const Block& block, std::vector<ControlId>* ids) {
  for (const Item& item : block.items()) {
    if (!IsControl(item)) continue;
    ids->push_back(item.block->id());
    List(*item.block, ids);
  }
}

bool RefersTo(const Block& block, const Companion& companion, const FileText& text) {
  for (const Item& item : block.items()) {
    if (item.block && RefersTo(*item.block, companion, text)) return true;
    const auto property = PropertyOf(item, text);
    if (!property || property->isGroup) continue;
    const auto* place = std::get_if<form::FileReference>(&property->value);
    if (place && companion.IsName(place->fileName)) return true;
  }
  return false;
}

}  // namespace

Design::Design(StoredForm stored, const ClassSource& classes)
    : document_(std::move(stored.document)),
      companion_(std::move(stored.companion)),
      companionIsMissing_(companion_->bytes().empty() &&
                          RefersTo(*document_->form(), *companion_, document_->text())),
      classes_(classes),
      history_([this](const Splice& splice) { OnSplice(splice); }) {}

const std::unordered_map<ControlId, BlockRef>& Design::Blocks() const {
  if (indexIsStale_) {
    index_.clear();
    Enter(index_, document_->form());
    indexIsStale_ = false;
  }
  return index_;
}

bool Design::Has(ControlId id) const { return Blocks().contains(id); }

const Block& Design::At(ControlId id) const { return *Blocks().at(id); }

BlockRef Design::Hold(ControlId id) const { return Blocks().at(id); }

std::optional<int> Design::Index(ControlId id) const {
  const auto value = Value(id, "Index");
  const int32_t* number = value ? std::get_if<int32_t>(&*value) : nullptr;
  return number ? std::optional<int>(*number) : std::nullopt;
}

ControlId Design::Container(ControlId id) const {
  const Block* outer = At(id).parent();
  return outer ? outer->id() : 0;
}

bool Design::LiesIn(ControlId id, ControlId outer) const {
  for (ControlId at = Container(id); at != 0; at = Container(at)) {
    if (at == outer) return true;
  }
  return false;
}

const ClassInfo* Design::Class(ControlId id) const {
  return classes_.Find(At(id).library(), At(id).className());
}

bool Design::HoldsOthers(ControlId id) const {
  const ClassInfo* info = Class(id);
  return id == form() || (info && info->holdsOthers) || !Inside(id).empty();
}

std::vector<ControlId> Design::Inside(ControlId container) const {
  std::vector<ControlId> ids;
  for (const Item& item : At(container).items()) {
    if (IsControl(item)) ids.push_back(item.block->id());
  }
  return ids;
}

std::vector<ControlId> Design::All() const {
  std::vector<ControlId> ids;
  List(*document_->form(), &ids);
  return ids;
}

std::optional<form::PropertyValue> Design::Value(ControlId id, std::string_view property) const {
  const Block& block = At(id);
  const size_t at = block.Find(property);
  if (at == kNowhere) return std::nullopt;
  auto read = PropertyOf(block.items()[at], document_->text());
  if (!read || read->isGroup) return std::nullopt;
  return std::move(read->value);
}

std::optional<form::PropertyValue> Design::ValueOrInitial(ControlId id,
                                                          std::string_view property) const {
  auto value = Value(id, property);
  const ClassInfo* info = value ? nullptr : Class(id);
  const PropertyInfo* row = info ? info->Property(property) : nullptr;
  if (row && !row->initial) return info->FirstValue(property);
  return row ? row->initial : value;
}

std::optional<form::Property> Design::Group(ControlId id, std::string_view property) const {
  const Block& block = At(id);
  const size_t at = block.Find(property);
  if (at == kNowhere || !block.items()[at].block) return std::nullopt;
  return PropertyOf(block.items()[at], document_->text());
}

std::string Design::TextValue(ControlId id, std::string_view property) const {
  const auto value = ValueOrInitial(id, property);
  if (!value) return {};
  if (const auto* text = std::get_if<std::string>(&*value)) return *text;
  const auto* place = std::get_if<form::FileReference>(&*value);
  if (!place || !companion_->IsName(place->fileName)) return {};
  return form::TextAt(companion_->bytes(), place->offset).value_or("");
}

double Design::NumberValue(ControlId id, std::string_view property, double otherwise) const {
  const auto value = Value(id, property);
  if (!value) return otherwise;
  if (const auto* whole = std::get_if<int32_t>(&*value)) return *whole;
  const auto* fraction = std::get_if<double>(&*value);
  return fraction ? *fraction : otherwise;
}

bool Design::IsSelected(ControlId id) const noexcept {
  return std::find(selection_.begin(), selection_.end(), id) != selection_.end();
}

Ids Design::OnForm(const Ids& ids) const {
  Ids kept;
  for (const ControlId id : ids) {
    const bool isNew = std::find(kept.begin(), kept.end(), id) == kept.end();
    if (isNew && Has(id) && (id != form() || ids.size() == 1)) kept.push_back(id);
  }
  return kept;
}

void Design::Select(const Ids& ids) {
  Ids kept = OnForm(ids);
  if (kept == selection_) return;
  selection_ = std::move(kept);
  if (!history_.IsOpen()) Report();
}

void Design::Make(Splice splice) { history_.Make(std::move(splice)); }

void Design::OnSplice(const Splice& splice) {
  const Block& block = *splice.block;
  report_.code |= splice.block == document_->code();
  const auto note = [&](const Item& item, size_t at) {
    const bool isControl = item.block && item.block->kind() == BlockKind::Control;
    report_.structure |= isControl;
    if (isControl || block.kind() == BlockKind::Lines) return;
    const bool isHead = at == 0 && !item.block;
    const std::string& name = item.block ? item.block->Name() : item.name;
    if (!name.empty()) report_.properties.emplace(block.id(), isHead ? "Name" : name);
  };
  for (size_t at = 0; at < splice.items.size(); ++at) note(splice.items[at], splice.at + at);
  for (size_t at = 0; at < splice.count; ++at) {
    note(block.items()[splice.at + at], splice.at + at);
  }
  indexIsStale_ |= report_.structure;
}

void Design::Report() {
  const ChangeReport report = std::exchange(report_, {});
  if (observer_) observer_(report);
}

void Design::End() {
  selection_ = OnForm(selection_);
  history_.End(selection_);
  if (!history_.IsOpen() && report_.Any()) Report();
}

std::string Design::UndoName(Language language) const {
  return CanUndo() ? history_.UndoName().In(language) : std::string();
}

std::string Design::RedoName(Language language) const {
  return CanRedo() ? history_.RedoName().In(language) : std::string();
}

void Design::Undo() {
  if (!CanUndo()) return;
  selection_ = OnForm(history_.Undo());
  Report();
}

void Design::Redo() {
  if (!CanRedo()) return;
  selection_ = OnForm(history_.Redo());
  Report();
}

std::string Design::Save(const std::string& path) {
  std::string reason = SaveStoredForm(path, *document_, *companion_);
  if (reason.empty()) history_.MarkSaved();
  return reason;
}

Step::Step(Design& design, TextId name, std::vector<std::string> words, std::string key)
    : design_(design), mark_(0) {
  design_.Begin({name, std::move(words)}, std::move(key));
  mark_ = design_.history_.Mark();
}

Step::~Step() {
  if (!committed_) design_.history_.TakeBack(mark_);
  design_.End();
}

Refusal Step::Commit(Refusal refusal) noexcept {
  committed_ = !refusal;
  return refusal;
}

StoredForm NewForm(const std::string& name) {
  const std::string text = "VERSION 5.00\r\nBegin VB.Form " + name +
                           " \r\n"
                           "   Caption         =   \"" +
                           name +
                           "\"\r\n"
                           "   ClientHeight    =   3195\r\n"
                           "   ClientLeft      =   60\r\n"
                           "   ClientTop       =   345\r\n"
                           "   ClientWidth     =   4680\r\n"
                           "   LinkTopic       =   \"" +
                           name +
                           "\"\r\n"
                           "   ScaleHeight     =   3195\r\n"
                           "   ScaleWidth      =   4680\r\n"
                           "   StartUpPosition =   3  'Windows Default\r\n"
                           "End\r\n"
                           "Attribute VB_Name = \"" +
                           name +
                           "\"\r\n"
                           "Attribute VB_GlobalNameSpace = False\r\n"
                           "Attribute VB_Creatable = False\r\n"
                           "Attribute VB_PredeclaredId = True\r\n"
                           "Attribute VB_Exposed = False\r\n";
  form::Mistakes mistakes;
  return {FormDocument::Read(text, mistakes), std::make_unique<Companion>(name + ".frx")};
}

}  // namespace qrn::designer
