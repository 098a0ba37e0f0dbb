#include "host/runner/design/FramePages.h"

#include <algorithm>
#include <utility>

namespace qrn::host {
namespace {

std::vector<GUID> PagesOf(IUnknown* object) {
  const Com<ISpecifyPropertyPages> specify = Query<ISpecifyPropertyPages>(object);
  CAUUID ids{};
  if (!specify || FAILED(specify->GetPages(&ids))) return {};
  const com::TaskMemory<GUID> memory(ids.pElems);
  return {ids.pElems, ids.pElems + ids.cElems};
}

std::vector<GUID> CommonPages(std::span<IUnknown* const> objects) {
  std::vector<GUID> common;
  for (IUnknown* object : objects) {
    const std::vector<GUID> own = PagesOf(object);
    if (object == objects.front()) common = own;
    std::erase_if(common, [&](const GUID& id) {
      return std::none_of(own.begin(), own.end(), [&](const GUID& each) { return each == id; });
    });
  }
  return common;
}

std::vector<HWND> ChildrenOf(HWND window) {
  std::vector<HWND> children;
  for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    children.push_back(child);
  }
  return children;
}

}  // namespace

FramePages::FramePages(std::span<IUnknown* const> objects, ControlClasses& classes,
                       const std::function<void()>& changed) {
  for (const GUID& id : CommonPages(objects)) Add(objects, classes, id, changed);
}

void FramePages::Close() noexcept {
  for (const Page& page : std::exchange(pages_, {})) {
    page.site->Detach();
    if (page.active) page.page->Deactivate();
    page.page->SetObjects(0, nullptr);
    page.page->SetPageSite(nullptr);
  }
}

void FramePages::Add(std::span<IUnknown* const> objects, ControlClasses& classes, const GUID& id,
                     const std::function<void()>& changed) {
  Page entry;
  entry.page = Query<IPropertyPage>(classes.Make(id));
  if (!entry.page) return;
  entry.site = MakeCom<PropertyPageSite>(changed);
  entry.page->SetPageSite(entry.site.get());
  entry.page->SetObjects(static_cast<ULONG>(objects.size()),
                         const_cast<IUnknown**>(objects.data()));
  PROPPAGEINFO info{};
  info.cb = sizeof info;
  if (FAILED(entry.page->GetPageInfo(&info))) {
    entry.page->SetPageSite(nullptr);
    return;
  }
  const com::TaskMemory<OLECHAR> title(info.pszTitle);
  const com::TaskMemory<OLECHAR> doc(info.pszDocString);
  const com::TaskMemory<OLECHAR> help(info.pszHelpFile);
  entry.title = info.pszTitle ? info.pszTitle : L"";
  entry.size = info.size;
  pages_.push_back(std::move(entry));
}

SIZE FramePages::Room(SIZE least) const noexcept {
  for (const Page& page : pages_) {
    least.cx = std::max(least.cx, page.size.cx);
    least.cy = std::max(least.cy, page.size.cy);
  }
  return least;
}

void FramePages::Activate(Page& page, HWND frame, const RECT& area) {
  const std::vector<HWND> before = ChildrenOf(frame);
  page.active = SUCCEEDED(page.page->Activate(frame, &area, FALSE));
  if (!page.active) return;
  page.page->Move(&area);
  for (HWND child : ChildrenOf(frame)) {
    if (std::find(before.begin(), before.end(), child) != before.end()) continue;
    SetWindowPos(child, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
}

void FramePages::Show(size_t place, HWND frame, const RECT& area) {
  if (place >= pages_.size()) return;
  if (place != shown_ && pages_[shown_].active) pages_[shown_].page->Show(SW_HIDE);
  shown_ = place;
  Page& page = pages_[place];
  if (!page.active) Activate(page, frame, area);
  if (page.active) page.page->Show(SW_SHOWNORMAL);
}

bool FramePages::Dirty() const noexcept {
  return std::any_of(pages_.begin(), pages_.end(), [](const Page& page) {
    return page.active && page.page->IsPageDirty() == S_OK;
  });
}

bool FramePages::Apply() {
  bool all = true;
  for (const Page& page : pages_) {
    if (!page.active || page.page->IsPageDirty() != S_OK) continue;
    all = SUCCEEDED(page.page->Apply()) && all;
  }
  return all;
}

bool FramePages::TakesKey(MSG& message) {
  return pages_[shown_].active && pages_[shown_].page->TranslateAccelerator(&message) == S_OK;
}

}  // namespace qrn::host
