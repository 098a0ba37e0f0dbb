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

// Controls may draw over their neighbours unless they are told not to.
void KeepApart(HWND form) {
  for (HWND child = GetWindow(form, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    SetWindowLongPtrW(child, GWL_STYLE, GetWindowLongPtrW(child, GWL_STYLE) | WS_CLIPSIBLINGS);
  }
}

}  // namespace

LiveForm::LiveForm(host::ControlClasses& classes, host::DesignStage& stage)
    : classes_(classes), stage_(stage) {}

LiveForm::~LiveForm() = default;

HWND LiveForm::Window() const noexcept {
  return program_ ? program_->forms().front()->Window() : nullptr;
}

host::FormControl* LiveForm::Find(const Design& design, ControlId id) const {
  if (!program_ || !design.Has(id) || id == design.form()) return nullptr;
  return program_->forms().front()->Find(host::Wide(design.Name(id)),
                                         design.Index(id).value_or(-1));
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

std::string LiveForm::Show(const Design& design, const std::string& path, POINT corner) {
  try {
    std::unique_ptr<host::Program> program = Made(ShownForm(design), design, path);
    HWND window = program->forms().front()->Window();
    KeepApart(window);
    std::swap(program, program_);
    SizeWindow(design);
    PlaceControls(design, design.All());
    SendMessageW(window, WM_NCACTIVATE, TRUE, 0);
    SetWindowPos(window, HWND_TOP, corner.x, corner.y, 0, 0,
                 SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    UpdateWindow(window);
  } catch (const std::exception& error) {
    return error.what();
  }
  return {};
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
    host::FormControl* control = Find(design, id);
    if (control && HasPlace(design, id)) control->PutAt(BoundsOf(PlaceOf(design, id)));
  }
}

bool LiveForm::Carry(const Design& design, const ChangeReport& report) {
  if (!program_ || report.structure) return false;
  Ids moved;
  bool sized = false;
  bool renamed = false;
  for (const auto& [id, line] : report.properties) {
    const bool isForm = id == design.form();
    const Carrying carrying =
        isForm ? CarryingOf(kFormLines, line) : CarryingOf(kControlLines, line);
    if (carrying == Carrying::Anew) return false;
    if (carrying == Carrying::Place && (moved.empty() || moved.back() != id)) moved.push_back(id);
    sized = sized || carrying == Carrying::Size;
    renamed = renamed || carrying == Carrying::Caption;
  }
  PlaceControls(design, moved);
  if (sized) SizeWindow(design);
  if (renamed) {
    SetWindowTextW(Window(), host::Wide(design.TextValue(design.form(), "Caption")).c_str());
  }
  return true;
}

}  // namespace qrn::designer
