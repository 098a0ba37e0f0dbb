#include "tests/newform/MadeForm.h"

#include <algorithm>
#include <set>

#include "host/form/FormFile.h"
#include "host/form/SourceText.h"
#include "host/form/VbCode.h"
#include "platform/CodePage.h"

namespace qrn::tests {
namespace {

using form::ControlNode;

constexpr int kTwips = 15;
constexpr int kScreenWidth = 1000 * kTwips, kScreenHeight = 690 * kTwips;
constexpr int kFrameCaption = 14 * kTwips;

int Number(const ControlNode& control, const char* name, int otherwise = 0) {
  const form::Property* property = control.Find(name);
  const auto* value = property ? std::get_if<int32_t>(&property->value) : nullptr;
  return value ? *value : otherwise;
}

std::string Text(const ControlNode& control, const char* name) {
  const form::Property* property = control.Find(name);
  const auto* value = property ? std::get_if<std::string>(&property->value) : nullptr;
  return value ? *value : std::string();
}

std::string NameOf(const ControlNode& control) {
  return control.name + (control.index < 0 ? "" : "(" + std::to_string(control.index) + ")");
}

struct Place {
  int left, top, right, bottom;

  explicit Place(const ControlNode& control)
      : left(Number(control, "Left")),
        top(Number(control, "Top")),
        right(left + Number(control, "Width")),
        bottom(top + Number(control, "Height")) {}
  bool Meets(const Place& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
};

class Inspection {
 public:
  explicit Inspection(const qrndata::Dictionary& dictionary) : dictionary_(dictionary) {}

  std::string Inspect(const std::string& bytes) {
    form::Mistakes mistakes;
    const form::FormFile file = form::ReadFormFile(bytes, mistakes);
    form::RewriteCode(file.code, file.codeLine, mistakes);
    faults_ += mistakes.Text("form");
    const int width = Number(file.form, "ClientWidth"), height = Number(file.form, "ClientHeight");
    if (width > kScreenWidth || height > kScreenHeight) Fault(file.form, "is larger than a screen");
    Holder(file.form, width, height);
    Handlers(file);
    return faults_;
  }

 private:
  void Fault(const ControlNode& control, const std::string& what) {
    faults_ += NameOf(control) + " " + what + "\n";
  }

  void Holder(const ControlNode& holder, int width, int height) {
    const int top = holder.Is("VB", "Frame") ? kFrameCaption : 0;
    for (size_t i = 0; i < holder.children.size(); ++i) {
      const ControlNode& child = holder.children[i];
      const Place place(child);
      if (place.left < 0 || place.top < top || place.right > width || place.bottom > height ||
          place.right <= place.left || place.bottom <= place.top) {
        Fault(child, "lies outside");
      }
      for (size_t k = 0; k < i; ++k) Meeting(child, holder.children[k]);
      Control(child);
      Holder(child, place.right - place.left, place.bottom - place.top);
    }
  }

  // Pages take each other's place.
  void Meeting(const ControlNode& one, const ControlNode& other) {
    const bool pages = one.Is("VB", "Frame") && one.name == other.name;
    if (!pages && Place(one).Meets(Place(other))) Fault(one, "lies over " + NameOf(other));
    if (pages && Number(one, "Visible", -1) != 0 && Number(other, "Visible", -1) != 0) {
      Fault(one, "is shown with " + NameOf(other));
    }
  }

  void Control(const ControlNode& control) {
    if (!names_.insert(form::LowerWord(NameOf(control))).second) Fault(control, "is there twice");
    if (!tabs_.insert(Number(control, "TabIndex", -1)).second)
      Fault(control, "shares its TabIndex");
    Binding(control, "DbTable", {"DbField"}, "DbIndex");
    Binding(control, "DbListTable", {"DbListField", "DbListFields"}, "DbListIndex");
  }

  void Binding(const ControlNode& control, const char* tableName,
               std::initializer_list<const char*> fieldNames, const char* indexName) {
    const std::string table = Text(control, tableName);
    if (table.empty()) return;
    const auto found = std::find_if(
        dictionary_.tables.begin(), dictionary_.tables.end(),
        [&](const qrndata::Table& known) { return CodePageToUtf8(known.name) == table; });
    if (found == dictionary_.tables.end()) return Fault(control, "names no table");
    for (const char* name : fieldNames) Fields(control, *found, Text(control, name));
    Index(control, *found, Text(control, indexName));
  }

  // A name, or a list of names or of numbers.
  void Fields(const ControlNode& control, const qrndata::Table& table, const std::string& list) {
    if (list.empty() || HasField(table, list)) return;
    for (size_t at = 0; at <= list.size();) {
      const size_t end = std::min(list.find(',', at), list.size());
      const std::string item = list.substr(at, end - at);
      const bool number = item.find_first_not_of("0123456789") == std::string::npos;
      const bool known = number ? std::stoul("0" + item) < table.fields.size() && !item.empty()
                                : HasField(table, item);
      if (!known) Fault(control, "names no field " + item);
      at = end + 1;
    }
  }

  static bool HasField(const qrndata::Table& table, const std::string& name) {
    return qrndata::FindField(table, Utf8ToCodePage(name)) != nullptr;
  }

  void Index(const ControlNode& control, const qrndata::Table& table, const std::string& name) {
    if (name.empty()) return;
    const bool known =
        std::any_of(table.keys.begin(), table.keys.end(), [&](const qrndata::Key& key) {
          const auto* first = qrndata::FindField(table, key.segments.front().fieldId);
          return CodePageToUtf8(key.name) == name || (first && CodePageToUtf8(first->Name) == name);
        });
    if (!known) Fault(control, "names no key " + name);
  }

  // A handler of nothing never runs.
  void Handlers(const form::FormFile& file) {
    for (const std::string& line : file.code) {
      constexpr std::string_view kSub = "Private Sub ";
      const size_t bar = line.find('_');
      const size_t parenthesis = line.find('(');
      if (!line.starts_with(kSub) || bar == std::string::npos || bar > parenthesis) continue;
      const std::string control = form::LowerWord(line.substr(kSub.size(), bar - kSub.size()));
      const auto known = names_.lower_bound(control);
      const bool found =
          known != names_.end() && (*known == control || known->starts_with(control + "("));
      if (control != "form" && !found) faults_ += "no control for " + line + "\n";
    }
  }

  const qrndata::Dictionary& dictionary_;
  std::string faults_;
  std::set<std::string> names_;
  std::set<int> tabs_;
};

}  // namespace

std::string FaultsOf(const std::string& bytes, const qrndata::Dictionary& dictionary) {
  return Inspection(dictionary).Inspect(bytes);
}

}  // namespace qrn::tests
