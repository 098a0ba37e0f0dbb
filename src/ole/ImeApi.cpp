#include "ole/ImeApi.h"

#include <algorithm>
#include <iterator>

namespace qrn::ole {
namespace {

enum ImeFunction : UINT {
  kSetOpen = 4,
  kSetOpenFollowUp = 8,  // sent to the window after a conversion mode
  kSetConversionMode = 16,
  kGetConversionMode = 17,
};

// What a mode asks for, beyond a mode that is applied first.
struct ModeRow {
  int mode;
  int first;  // 0: none
  UINT function;
  WPARAM wParam;
};
// clang-format off
constexpr ModeRow kModes[] = {
    {1, 0, kSetOpen,            1},
    {2, 0, kSetOpen,            0},
    {4, 1, kSetConversionMode, 20},
    {5, 1, kSetConversionMode, 18},
    {6, 1, kSetConversionMode, 10},
    {7, 1, kSetConversionMode, 17},
    {8, 2, kSetConversionMode,  9},
};
// clang-format on
constexpr int kOffFixed = 3;

template <class F>
void Find(HMODULE module, const char* name, F& entry) noexcept {
  entry = reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace

ImeEntries FindImeEntries() noexcept {
  ImeEntries entries;
  const HMODULE user = GetModuleHandleA("USER32.DLL");
  if (!user) return entries;
  Find(user, "WINNLSEnableIME", entries.enable);
  Find(user, "IMPGetIMEA", entries.get);
  Find(user, "IMPSetIMEA", entries.set);
  Find(user, "SendIMEMessageExA", entries.send);
  return entries;
}

ImeApi::ImeApi(const ImeEntries& entries) noexcept
    : entries_(entries), block_(GlobalAlloc(GHND, sizeof(ImeStruct))) {}

// Fills the block and sends it; it is zeroed first.
LRESULT ImeApi::Send(HWND window, UINT function, WPARAM wParam) noexcept {
  auto* request = static_cast<ImeStruct*>(GlobalLock(block_.get()));
  if (!request) return 0;
  *request = ImeStruct{};
  request->fnc = function;
  request->wParam = wParam;
  GlobalUnlock(block_.get());
  return entries_.send(window, reinterpret_cast<LPARAM>(block_.get()));
}

int ImeApi::Apply(HWND window, int mode) noexcept {
  if (!block_ || !entries_.send) return -1;
  if (mode == kOffFixed) {
    Apply(window, 2);
    if (entries_.enable) entries_.enable(nullptr, FALSE);
    return 0;
  }
  const auto* row = std::ranges::find(kModes, mode, &ModeRow::mode);
  if (row == std::end(kModes)) return -1;
  if (mode == 1 && entries_.enable) entries_.enable(nullptr, TRUE);
  if (row->first) Apply(window, row->first);
  Send(nullptr, row->function, row->wParam);
  if (row->function == kSetConversionMode) Send(window, kSetOpenFollowUp, 2);
  return 0;
}

int ImeApi::Read(HWND window, int& mode) noexcept {
  if (!block_ || !entries_.send) return -1;
  const LRESULT conversion = Send(window, kGetConversionMode, 0);
  if (conversion == 0) return -1;
  const bool full = (conversion & 16) != 0;
  if (conversion & 4) mode = 4;
  if (conversion & 2) mode = full ? 5 : 6;
  if (conversion & 1) mode = full ? 7 : 8;
  return 0;
}

}  // namespace qrn::ole
