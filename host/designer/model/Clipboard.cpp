#include "host/designer/model/Clipboard.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "host/designer/document/PropertyText.h"
#include "host/designer/model/Controls.h"
#include "host/designer/model/Names.h"
#include "host/designer/model/TabOrder.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

constexpr std::string_view kRecordMark = "'frx ";
constexpr int kMostShifts = 100;

using Offsets = std::map<uint32_t, form::FileReference>;

// The references in a block to a form's own companion, each offset once.
void AddOffsets(const Block& block, const Design& design, Offsets* offsets) {
  for (const Item& item : block.items()) {
    if (item.block) AddOffsets(*item.block, design, offsets);
    const auto property = item.block ? std::nullopt : PropertyOf(item, design.document().text());
    const auto* place = property ? std::get_if<form::FileReference>(&property->value) : nullptr;
    if (place && design.companion().IsName(place->fileName))
      offsets->emplace(place->offset, *place);
  }
}

// A record ends where the next that any line refers to begins: its own length need not be known.
std::string_view RecordAt(const Design& design, uint32_t offset) {
  Offsets all;
  AddOffsets(*design.document().form(), design, &all);
  const std::string_view rest = design.companion().From(offset);
  const auto next = all.upper_bound(offset);
  return next == all.end() ? rest : rest.substr(0, next->first - offset);
}

std::string Hexadecimal(std::string_view bytes) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const char byte : bytes) {
    text += kDigits[static_cast<uint8_t>(byte) >> 4];
    text += kDigits[static_cast<uint8_t>(byte) & 15];
  }
  return text;
}

std::string Bytes(std::string_view hexadecimal) {
  std::string bytes;
  for (; hexadecimal.size() >= 2; hexadecimal.remove_prefix(2)) {
    uint8_t byte = 0;
    std::from_chars(hexadecimal.data(), hexadecimal.data() + 2, byte, 16);
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

// Records of the fragment's companion by the offset they had there.
std::map<uint32_t, std::string> RecordsIn(const std::vector<std::string>& comments) {
  std::map<uint32_t, std::string> records;
  for (const std::string& comment : comments) {
    if (!comment.starts_with(kRecordMark)) continue;
    const char* end = comment.data() + comment.size();
    uint32_t offset = 0;
    const auto digits = std::from_chars(comment.data() + kRecordMark.size(), end, offset, 16);
    if (digits.ec != std::errc() || digits.ptr == end) continue;
    records[offset] = Bytes(std::string_view(digits.ptr + 1, end));
  }
  return records;
}

// Controls of a fragment on their way into a form.
class Pasting {
 public:
  Pasting(Design& design, const FormFragment& fragment, ControlId container)
      : design_(design),
        fragment_(fragment),
        container_(container),
        records_(RecordsIn(fragment.comments)),
        present_(NamesOn(design)) {}

  Refusal Run(const Grid& grid) {
    if (Refusal refusal = TakeLibraries()) return refusal;
    Ids added;
    // The last goes in first, so that they lie behind one another as they did.
    for (auto control = fragment_.controls.rbegin(); control != fragment_.controls.rend();
         ++control) {
      const BlockRef block = Reindented(**control, design_.At(container_).Depth());
      added.insert(added.begin(), block->id());
      design_.PutInFront(container_, block);
    }
    // In the file's order, so that of two equal names the first keeps it.
    for (const ControlId id : added) {
      if (Refusal refusal = Settle(id)) return refusal;
    }
    if (Refusal refusal = SettleTabOrder(added)) return refusal;
    if (Refusal refusal = Shift(added, grid)) return refusal;
    design_.Select(added);
    return {};
  }

 private:
  Refusal TakeLibraries() {
    for (const Item& item : fragment_.head->items()) {
      if (!form::SameWord(item.name, "Object") || !HasModules()) continue;
      form::Mistakes mistakes;
      const FileText& text = design_.document().text();
      const std::string file =
          "VERSION 5.00\n" + text.Decode(item.bytes) + "Begin VB.Form F\nEnd\n";
      const form::FormFile read = form::ReadFormFile("\xEF\xBB\xBF" + file, mistakes);
      for (const form::LibraryReference& library : read.libraries) {
        if (Refusal refusal = design_.NeedLibrary(library)) return refusal;
      }
    }
    return {};
  }

  bool HasModules() const {
    return std::any_of(fragment_.controls.begin(), fragment_.controls.end(),
                       [](const BlockRef& control) { return HoldsModules(*control); });
  }

  static bool HoldsModules(const Block& block) {
    if (!form::SameWord(block.library(), "VB")) return true;
    return std::any_of(block.items().begin(), block.items().end(), [](const Item& item) {
      return item.block && item.block->kind() == BlockKind::Control && HoldsModules(*item.block);
    });
  }

  // Name and records of a control and of all in it.
  Refusal Settle(ControlId id) {
    Refusal refusal = SettleName(id);
    if (!refusal) refusal = SettleRecords(design_.Hold(id));
    for (const ControlId inner : design_.Inside(id)) {
      if (!refusal) refusal = Settle(inner);
    }
    return refusal;
  }

  // Behind all that was there, among themselves as they were.
  Refusal SettleTabOrder(const Ids& added) {
    const auto isNew = [&](ControlId id) {
      return std::any_of(added.begin(), added.end(),
                         [&](ControlId one) { return id == one || design_.LiesIn(id, one); });
    };
    Ids order = TabOrderOf(design_);
    const auto news =
        std::stable_partition(order.begin(), order.end(), [&](ControlId id) { return !isNew(id); });
    const bool alone = news == order.begin();
    int32_t next = alone ? 0 : TabIndexOf(*(news - 1)) + 1;
    for (auto id = news; id != order.end(); ++id) {
      if (Refusal refusal = design_.Put(*id, "TabIndex", next++)) return refusal;
    }
    return {};
  }

  int32_t TabIndexOf(ControlId id) const {
    return std::clamp(static_cast<int32_t>(design_.NumberValue(id, "TabIndex", 0)), -1, 32000);
  }

  Refusal SettleName(ControlId id) {
    const std::string name = design_.Name(id);
    const std::string lower = form::LowerWord(name);
    const bool isElement = design_.Index(id).has_value();
    const bool isFree = !present_.contains(lower) && !JudgeName(name);
    auto& given = given_[lower];
    // Elements of one array go on as one; whatever else shares a name gets another.
    if (!given.empty() && isElement && givenIsArray_.contains(lower)) return Call(id, given);
    const bool keeps = isFree && given.empty();
    const Block& block = design_.At(id);
    const std::string now =
        keeps ? name : NewName(design_, StemOf(design_, block.library(), block.className()));
    if (given.empty()) {
      given = now;
      if (isElement) givenIsArray_.insert(lower);
    }
    return Call(id, now);
  }

  Refusal Call(ControlId id, const std::string& name) {
    if (design_.Name(id) == name) return {};
    const BlockRef control = design_.Hold(id);
    auto item = BeginItem(*control, name, design_.document().text());
    if (!item) return Message{TextId::NotWritable, {name}};
    Splice splice{control, 0, 1, {}};
    splice.items.push_back(std::move(*item));
    design_.Make(std::move(splice));
    return {};
  }

  // References of the fragment's companion become references of the form's.
  Refusal SettleRecords(const BlockRef& block) {
    const FileText& text = design_.document().text();
    for (size_t at = 1; at + 1 < block->items().size(); ++at) {
      const Item& item = block->items()[at];
      if (item.block && item.block->kind() == BlockKind::Group) {
        if (Refusal refusal = SettleRecords(item.block)) return refusal;
      }
      const auto property = item.block ? std::nullopt : PropertyOf(item, text);
      const auto* place = property ? std::get_if<form::FileReference>(&property->value) : nullptr;
      const auto record = place ? records_.find(place->offset) : records_.end();
      if (record == records_.end() || Stands(record->second, *place)) continue;
      const auto moved = Moved(place->offset, record->second, place->isText);
      if (!moved) return Message{TextId::CompanionMissing, {design_.companion().name()}};
      auto line = PropertyItem(property->name, *moved, block->Depth() + 1, text);
      if (!line) return Message{TextId::NotWritable, {moved->fileName}};
      Splice splice{block, at, 1, {}};
      splice.items.push_back(std::move(*line));
      design_.Make(std::move(splice));
    }
    return {};
  }

  // True if the form's own companion has that very record there.
  bool Stands(const std::string& record, const form::FileReference& place) const {
    const Companion& companion = design_.companion();
    return companion.IsName(place.fileName) && companion.From(place.offset).starts_with(record);
  }

  std::optional<form::FileReference> Moved(uint32_t offset, const std::string& record,
                                           bool isText) {
    const auto known = moved_.find(offset);
    if (known != moved_.end())
      return form::FileReference{known->second.fileName, known->second.offset, isText};
    auto place = design_.AddRecord(record, isText);
    if (place) moved_.emplace(offset, *place);
    return place;
  }

  // By the grid, until no control of the container lies where one of these does.
  Refusal Shift(const Ids& added, const Grid& grid) {
    const auto isNew = [&](ControlId id) {
      return std::find(added.begin(), added.end(), id) != added.end();
    };
    const auto isCovered = [&](int32_t across, int32_t down) {
      for (const ControlId other : design_.Inside(container_)) {
        const Place there = PlaceOf(design_, other);
        for (const ControlId id : added) {
          const Place here = PlaceOf(design_, id);
          const bool same = here.left + across == there.left && here.top + down == there.top;
          if (!isNew(other) && same) return true;
        }
      }
      return false;
    };
    int shifts = 0;
    while (shifts < kMostShifts && isCovered(shifts * grid.width, shifts * grid.height)) ++shifts;
    for (const ControlId id : added) {
      if (shifts == 0 || !HasPlace(design_, id)) continue;
      Place place = PlaceOf(design_, id);
      place.left += shifts * grid.width;
      place.top += shifts * grid.height;
      if (Refusal refusal = PutPlace(design_, id, place)) return refusal;
    }
    return {};
  }

  Design& design_;
  const FormFragment& fragment_;
  ControlId container_;
  std::map<uint32_t, std::string> records_;
  std::map<uint32_t, form::FileReference> moved_;
  std::set<std::string> present_;             // before anything was pasted
  std::map<std::string, std::string> given_;  // by the name in the fragment, lower case
  std::set<std::string> givenIsArray_;
};

// A form or a menu has no place among controls.
bool IsForeign(const BlockRef& control) {
  return control->Is("VB", "Menu") || control->Is("VB", "Form") || control->Is("VB", "MDIForm");
}

ControlId TargetOf(const Design& design) {
  const ControlId primary = design.Primary();
  if (primary == 0) return design.form();
  return design.HoldsOthers(primary) ? primary : design.Container(primary);
}

}  // namespace

std::string CopyText(const Design& design, const Ids& ids) {
  const Ids outermost = Outermost(design, ids);
  if (outermost.empty()) return {};
  const FileText& text = design.document().text();
  std::string bytes;
  design.document().head()->Write(&bytes);
  Offsets offsets;
  for (const ControlId id : outermost) {
    const Block& control = design.At(id);
    Reindented(control, 1 - control.Depth())->Write(&bytes);
    AddOffsets(control, design, &offsets);
  }
  for (const auto& [offset, place] : offsets) {
    uint8_t big[] = {static_cast<uint8_t>(offset >> 24), static_cast<uint8_t>(offset >> 16),
                     static_cast<uint8_t>(offset >> 8), static_cast<uint8_t>(offset)};
    bytes += std::string(kRecordMark) +
             Hexadecimal({reinterpret_cast<const char*>(big), sizeof big}) + " " +
             Hexadecimal(RecordAt(design, offset)) + text.lineEnd;
  }
  return text.Decode(bytes);
}

Refusal Cut(Design& design, const Ids& ids, std::string* text) {
  *text = CopyText(design, ids);
  Step step(design, TextId::CutControls);
  return step.Commit(DeleteControls(design, ids));
}

bool LooksLikeControls(std::string_view utf8) noexcept {
  for (const char* start : {"VERSION ", "Object ", "Begin "}) {
    if (form::Trimmed(utf8).starts_with(start)) return true;
  }
  return false;
}

Refusal Paste(Design& design, std::string_view utf8, const Grid& grid) {
  if (!LooksLikeControls(utf8)) return Message{TextId::NoControlsInText, {}};
  form::Mistakes mistakes;
  const FormFragment fragment = ReadFragment(utf8, design.document().text(), mistakes);
  if (mistakes.Any()) {
    const form::Mistake& first = mistakes.List()[0];
    if (first.line == 0) return Message{TextId::NoControlsInText, {}};
    return Message{TextId::TextUnreadable, {std::to_string(first.line), first.reason}};
  }
  if (std::any_of(fragment.controls.begin(), fragment.controls.end(), IsForeign)) {
    return Message{TextId::NoControlsInText, {}};
  }
  Step step(design, TextId::PasteControls);
  return step.Commit(Pasting(design, fragment, TargetOf(design)).Run(grid));
}

}  // namespace qrn::designer
