#include "host/user/UiThread.h"

#include <atomic>
#include <exception>
#include <memory>
#include <stdexcept>

namespace qrn::host {
namespace {

constexpr wchar_t kClass[] = L"QrnUserWork";
constexpr UINT kWork = WM_APP + 1;
constexpr DWORD kLookMs = 15;
constexpr int kQuietLooks = 2;
constexpr int kMostLooks = 200;
constexpr UINT kReadable = QS_INPUT | QS_POSTMESSAGE | QS_PAINT;

enum class Progress { Waiting, Running, Done, GivenUp };

struct Work {
  std::function<void()> run;
  std::exception_ptr failure;
  std::atomic<Progress> progress = Progress::Waiting;

  // False if somebody else took the work on, or gave it up, before.
  bool Take(Progress next) noexcept {
    Progress waiting = Progress::Waiting;
    return progress.compare_exchange_strong(waiting, next);
  }
};

}  // namespace

UiThread::UiThread() {
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  kind.lpfnWndProc = &UiThread::Procedure;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.lpszClassName = kClass;
  RegisterClassExW(&kind);  // a second time it is there already
  window_ = CreateWindowExW(0, kClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                            GetModuleHandleW(nullptr), nullptr);
  if (!window_) throw std::runtime_error("no window for the user script can be made");
}

UiThread::~UiThread() { DestroyWindow(window_); }

LRESULT CALLBACK UiThread::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != kWork) return DefWindowProcW(window, message, wParam, lParam);
  const auto work = *reinterpret_cast<std::shared_ptr<Work>*>(lParam);
  if (!work->Take(Progress::Running)) return 0;
  try {
    work->run();
  } catch (...) {
    work->failure = std::current_exception();
  }
  work->progress = Progress::Done;
  return 1;
}

bool UiThread::Run(const std::function<void()>& work, unsigned milliseconds) {
  const auto own = std::make_shared<Work>();
  own->run = work;
  // Left behind when the thread does not answer in time: it may still come to the message.
  auto held = std::make_unique<std::shared_ptr<Work>>(own);
  DWORD_PTR answer = 0;
  if (!SendMessageTimeoutW(window_, kWork, 0, reinterpret_cast<LPARAM>(held.get()), SMTO_NORMAL,
                           milliseconds, &answer)) {
    static_cast<void>(held.release());
    if (own->Take(Progress::GivenUp)) return false;
    while (own->progress != Progress::Done) Sleep(kLookMs);
  }
  if (own->failure) std::rethrow_exception(own->failure);
  return true;
}

void UiThread::WaitIdle() {
  int quiet = 0;
  for (int look = 0; look < kMostLooks && quiet < kQuietLooks; ++look) {
    Sleep(kLookMs);
    auto waiting = std::make_shared<DWORD>(0);
    if (!Run([waiting] { *waiting = HIWORD(GetQueueStatus(kReadable)); })) return;
    quiet = (*waiting & kReadable) == 0 ? quiet + 1 : 0;
  }
}

}  // namespace qrn::host
