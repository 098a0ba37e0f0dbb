// The pages in a property frame: made for the objects that they edit, shown one at a time.
#pragma once

#include <ocidl.h>

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "host/container/ControlClasses.h"
#include "host/runner/design/PropertyPageSite.h"

namespace qrn::host {

class FramePages {
 public:
  // Makes the pages that all objects name; what cannot be made is left out. `changed` is called
  // when a page says that it holds something to apply, or no longer does.
  FramePages(std::span<IUnknown* const> objects, ControlClasses& classes,
             const std::function<void()>& changed);
  FramePages(const FramePages&) = delete;
  FramePages& operator=(const FramePages&) = delete;
  ~FramePages() { Close(); }

  // Lets the pages go, while the frame's window still stands.
  void Close() noexcept;

  size_t count() const noexcept { return pages_.size(); }
  size_t shown() const noexcept { return shown_; }
  const std::wstring& Title(size_t place) const { return pages_[place].title; }
  // Room for the largest page, in pixels.
  SIZE Room(SIZE least) const noexcept;

  // Shows a page in an area of `frame` in the place of the one shown. A page gets its window when
  // it is shown first, and is the first of the frame's children, above the tabs around it.
  void Show(size_t place, HWND frame, const RECT& area);
  bool Dirty() const noexcept;
  // False if a page fails.
  bool Apply();
  // True for a key that the page shown takes.
  bool TakesKey(MSG& message);

 private:
  struct Page {
    Com<IPropertyPage> page;
    Com<PropertyPageSite> site;
    std::wstring title;
    SIZE size{};
    bool active = false;
  };

  void Add(std::span<IUnknown* const> objects, ControlClasses& classes, const GUID& id,
           const std::function<void()>& changed);
  static void Activate(Page& page, HWND frame, const RECT& area);

  std::vector<Page> pages_;
  size_t shown_ = 0;
};

}  // namespace qrn::host
