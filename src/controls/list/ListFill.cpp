#include "controls/list/ListFill.h"

#include <algorithm>

#include "binding/registry/ControlRegistry.h"
#include "core/DictionaryLookup.h"
#include "core/ReturnCodes.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

constexpr int32_t kFirstRoom = 64;
constexpr size_t kTextOfAnItem = 64;  // bytes, as the window is told

}  // namespace

ListFill::ListFill(ListControl& list)
    : list_(list),
      alive_(&list.Outer()),
      window_(list.contained()),
      form_(list.GetContainerWindow()),
      source_(NarrowText(list.DbListSource)),
      table_(NarrowText(list.DbListTable)) {}

ListFill::~ListFill() {
  if (silent_ && list_.contained() == window_) Redraw(true);
}

std::optional<int16_t> ListFill::Prepare(const std::string& indexName) {
  const DbTableInfo* table = Table();
  if (table == nullptr) return std::nullopt;
  return static_cast<int16_t>(DbFindIndexOrFirst(*table, indexName.c_str()));
}

bool ListFill::Open() {
  DbTableInfo* table = Table();
  if (table == nullptr) return false;
  return table->IsOpen != 0 || TheRegistry().DbOpenOnDemand(*table, form_, source_) == kSuccess;
}

DbTableInfo* ListFill::Table() {
  if (list_.contained() != window_) return nullptr;
  return TheRegistry().ResolveTable(form_, source_, table_);
}

void ListFill::Empty(size_t) {
  list_.Clear();
  Redraw(false);
  silent_ = true;
}

bool ListFill::Format(std::u16string& lineData) { return list_.RaiseFormat(lineData); }

// What the window must grow by is told to it in few large steps: by itself it takes many small
// ones.
bool ListFill::MakeRoom() {
  if (list_.contained() != window_) return false;
  if (added_ == room_) {
    const int32_t more = std::max(room_, kFirstRoom);
    list_.Items().Reserve(more, static_cast<size_t>(more) * kTextOfAnItem);
    room_ += more;
  }
  return true;
}

bool ListFill::AddRow(const char* text) {
  if (!MakeRoom()) return false;
  const std::string_view bytes(text);
  wide_.resize(bytes.size() + 1);
  wide_[WidenText(bytes, wide_)] = u'\0';
  last_ = list_.Items().Add(reinterpret_cast<const wchar_t*>(wide_.c_str()));
  ++added_;
  return last_ >= 0;
}

void ListFill::GivePosition(uint32_t position) {
  if (list_.contained() == window_) list_.Items().SetData(last_, static_cast<int32_t>(position));
}

void ListFill::Redraw(bool on) noexcept {
  SendMessageW(window_, WM_SETREDRAW, on, 0);
  if (on) InvalidateRect(window_, nullptr, TRUE);
}

}  // namespace qrn
