#include "host/designer/window/LiveForm.h"

#include <algorithm>

#include "host/container/Text.h"
#include "host/designer/model/Places.h"
#include "host/designer/model/ShownForm.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

// What a changed line asks of what is shown.
enum class Carrying { Anew, Place, Size, Caption, Nothing };

struct LineRow {
  const char* name;
  Carrying carrying;
};

constexpr LineRow kFormLines[] = {
    {"ClientWidth", Carrying::Size},    {"ClientHeight", Carrying::Size},
    {"ScaleWidth", Carrying::Nothing},  {"ScaleHeight", Carrying::Nothing},
    {"Caption", Carrying::Caption},     {"ClientLeft", Carrying::Nothing},
    {"ClientTop", Carrying::Nothing},   {"StartUpPosition", Carrying::Nothing},
    {"WindowState", Carrying::Nothing}, {"KeyPreview", Carrying::Nothing},
    {"Tag", Carrying::Nothing},
};

constexpr LineRow kControlLines[] = {
    {"Left", Carrying::Place},       {"Top", Carrying::Place},
    {"Width", Carrying::Place},      {"Height", Carrying::Place},
    {"_ExtentX", Carrying::Nothing}, {"_ExtentY", Carrying::Nothing},
    {"_cx", Carrying::Nothing},      {"_cy", Carrying::Nothing},
    {"TabIndex", Carrying::Nothing}, {"TabStop", Carrying::Nothing},
    {"Tag", Carrying::Nothing},      {"ToolTipText", Carrying::Nothing},
    {"Visible", Carrying::Nothing},
};

template <size_t Count>
Carrying CarryingOf(const LineRow (&rows)[Count], std::string_view line) {
  const auto* row = std::find_if(std::begin(rows), std::end(rows), [&](const LineRow& known) {
    return form::SameWord(known.name, line);
  });
  return row == std::end(rows) ? Carrying::Anew : row->carrying;
}

host::Bounds BoundsOf(const Place& place) {
  return {double(place.left), double(place.top), double(place.width), double(place.height)};
}

}  // namespace

LiveForm::LiveForm(host::ControlClasses& classes, host::DesignStage& stage)
    : classes_(classes), stage_(stage) {}

LiveForm::~LiveForm() = default;

HWND LiveForm::Window() const noexcept {
  return program_ ? program_->forms().front()->Window() : nullptr;
}

host::FormControl* LiveForm::Find(ControlId id) const {
  const auto found = shown_.find(id);
  return found == shown_.end() ? nullptr : found->second.control;
}

std::unique_ptr<host::Program> LiveForm::Made(form::FormFile file, const Design& design,
                                              const std::string& path) {
  const host::ProgramOptions options{true, false, &stage_};
  for (;;) {
    auto source = std::make_shared<host::FormSource>();
    source->path = path;
    source->file = file;
    source->companions[design.companion().name()] = design.companion().bytes();
    auto program = std::make_unique<host::Program>(classes_, options);
    try {
      program->Add(source);
      program->forms().front()->Load();
      return program;
    } catch (const form::FileRefused& refused) {
      // Less and less is left, down to the form alone.
      if (!TakeOut(&file, refused.mistakes())) throw;
    }
  }
}

// The new form comes up behind the old one, which goes when all stands.
std::string LiveForm::Show(const Design& design, const std::string& path, POINT corner) {
  std::map<ControlId, Shown> shownBefore;
  std::unique_ptr<host::Program> before;
  try {
    form::FormFile file = ShownForm(design);
    file.form.children.clear();
    before = std::exchange(program_, Made(std::move(file), design, path));
    std::swap(shown_, shownBefore);
    SizeWindow(design);
    AddMissing(design);
    SendMessageW(Window(), WM_NCACTIVATE, TRUE, 0);
    SetWindowPos(Window(), HWND_TOP, corner.x, corner.y, 0, 0,
                 SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    UpdateWindow(Window());
    before.reset();
  } catch (const std::exception& error) {
    before.reset();
    return error.what();
  }
  return {};
}

bool LiveForm::StillFits(const Design& design, ControlId id, const Shown& shown) const {
  return design.Has(id) && design.Name(id) == shown.name && design.Index(id) == shown.index &&
         design.Container(id) == shown.container;
}

// What is gone, is called otherwise, lies elsewhere or has changed, with all that lies in it.
void LiveForm::Remove(const Design& design, const Ids& changed) {
  std::vector<host::FormControl*> gone;
  for (const auto& [id, shown] : shown_) {
    const bool isChanged = std::find(changed.begin(), changed.end(), id) != changed.end();
    if (isChanged || !StillFits(design, id, shown)) gone.push_back(shown.control);
  }
  const auto goes = [&](const host::FormControl& control) {
    return std::any_of(gone.begin(), gone.end(), [&](const host::FormControl* other) {
      return other == &control || control.LiesIn(*other);
    });
  };
  std::vector<std::map<ControlId, Shown>::node_type> nodes;
  std::vector<host::Com<host::FormControl>> alive;
  for (auto at = shown_.begin(); at != shown_.end();) {
    const auto next = std::next(at);
    if (goes(*at->second.control)) {
      alive.emplace_back(at->second.control);
      nodes.push_back(shown_.extract(at));
    }
    at = next;
  }
  for (const auto& control : alive) {
    if (control->HasForm()) form().RemoveControl(*control);
  }
}

void LiveForm::Add(const Design& design, ControlId id) {
  const ControlId container = design.Container(id);
  Shown& shown = shown_[id];
  shown.name = design.Name(id);
  shown.index = design.Index(id);
  shown.container = container;
  shown.nodes = {ShownControl(design, id)};
  host::FormControl* holder = container == design.form() ? nullptr : Find(container);
  // Not even a box can be had: it stays unseen, and what lies in it.
  const auto giveUp = [&] { shown_.erase(id); };
  if (container != design.form() && !holder) return giveUp();
  while (!shown.control) {
    try {
      shown.control = &form().AddControl(shown.nodes, holder);
    } catch (const form::FileRefused& refused) {
      if (!TakeOut(&shown.nodes.front(), refused.mistakes())) return giveUp();
    }
  }
  if (HWND window = shown.control->Window()) {
    // Controls may draw over their neighbours unless they are told not to.
    SetWindowLongPtrW(window, GWL_STYLE, GetWindowLongPtrW(window, GWL_STYLE) | WS_CLIPSIBLINGS);
  }
  PlaceControls(design, {id});
}

void LiveForm::AddMissing(const Design& design) {
  for (const ControlId id : design.All()) {
    if (!shown_.contains(id)) Add(design, id);
  }
  Arrange(design);
}

void LiveForm::Arrange(const Design& design) {
  std::vector<host::FormControl*> order;
  for (const ControlId id : design.All()) {
    if (host::FormControl* control = Find(id)) order.push_back(control);
  }
  form().ArrangeControls(order);
}

void LiveForm::SizeWindow(const Design& design) {
  const Place place = PlaceOf(design, design.form());
  RECT window{};
  RECT client{};
  GetWindowRect(Window(), &window);
  GetClientRect(Window(), &client);
  SetWindowPos(Window(), nullptr, 0, 0,
               host::ToPixels(place.width) + (window.right - window.left) - client.right,
               host::ToPixels(place.height) + (window.bottom - window.top) - client.bottom,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void LiveForm::PlaceControls(const Design& design, const Ids& ids) {
  for (const ControlId id : ids) {
    host::FormControl* control = Find(id);
    if (control && HasPlace(design, id)) control->PutAt(BoundsOf(PlaceOf(design, id)));
  }
}

bool LiveForm::Carry(const Design& design, const ChangeReport& report) {
  if (!program_) return false;
  Ids moved;
  Ids changed;
  bool sized = false;
  for (const auto& [id, line] : report.properties) {
    const bool isForm = id == design.form();
    const Carrying carrying =
        isForm ? CarryingOf(kFormLines, line) : CarryingOf(kControlLines, line);
    if (isForm && carrying == Carrying::Anew) return false;
    if (carrying == Carrying::Anew) changed.push_back(id);
    if (carrying == Carrying::Place && design.Has(id)) moved.push_back(id);
    sized = sized || carrying == Carrying::Size;
    if (carrying == Carrying::Caption) {
      SetWindowTextW(Window(), host::Wide(design.TextValue(id, "Caption")).c_str());
    }
  }
  if (report.structure || !changed.empty()) {
    Remove(design, changed);
    AddMissing(design);
  }
  PlaceControls(design, moved);
  if (sized) SizeWindow(design);
  return true;
}

}  // namespace qrn::designer
