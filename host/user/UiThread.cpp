#include "host/user/UiThread.h"

#include <atomic>
#include <exception>
#include <stdexcept>

#include "com/Handles.h"
#include "host/runner/WindowClass.h"

namespace qrn::host {
namespace {

constexpr wchar_t kClass[] = L"QrnUserWork";
constexpr UINT kWork = WM_APP + 1;
constexpr DWORD kIdleLookMs = 15;
constexpr int kQuietLooks = 2;
constexpr int kMostLooks = 200;
constexpr UINT kReadable = QS_INPUT | QS_POSTMESSAGE | QS_PAINT;

using Event = com::Held<HANDLE, &CloseHandle>;

}  // namespace

struct UiThread::Work {
  enum class Progress { Waiting, Running, Done, GivenUp };

  std::function<void()> run;
  std::exception_ptr failure;
  std::atomic<Progress> progress = Progress::Waiting;
  Event done{CreateEventW(nullptr, TRUE, FALSE, nullptr)};

  // False if somebody else took the work on, or gave it up, before.
  bool Take(Progress next) noexcept {
    Progress waiting = Progress::Waiting;
    return progress.compare_exchange_strong(waiting, next);
  }
  void RunHere() noexcept {
    try {
      run();
    } catch (...) {
      failure = std::current_exception();
    }
    run = {};
    progress = Progress::Done;
    SetEvent(done.get());
  }
  void ThrowFailure() {
    if (failure) std::rethrow_exception(std::exchange(failure, nullptr));
  }
};

UiThread::UiThread() {
  RegisterWindowClass(kClass, &UiThread::Procedure);
  window_ = CreateWindowExW(0, kClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                            GetModuleHandleW(nullptr), nullptr);
  if (!window_) throw std::runtime_error("no window for the user script can be made");
}

UiThread::~UiThread() { DestroyWindow(window_); }

LRESULT CALLBACK UiThread::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != kWork) return DefWindowProcW(window, message, wParam, lParam);
  const std::unique_ptr<std::shared_ptr<Work>> held(
      reinterpret_cast<std::shared_ptr<Work>*>(lParam));
  const std::shared_ptr<Work> work = *held;
  if (work->Take(Work::Progress::Running)) work->RunHere();
  return 0;
}

// A message that is sent, not posted: it comes also where nothing but sent ones are looked at.
void UiThread::Hand(const std::shared_ptr<Work>& work) const {
  auto held = std::make_unique<std::shared_ptr<Work>>(work);
  if (SendNotifyMessageW(window_, kWork, 0, reinterpret_cast<LPARAM>(held.get()))) {
    static_cast<void>(held.release());
  }
}

UiThread::Outcome UiThread::Run(std::function<void()> run, const std::function<bool()>& leave,
                                unsigned milliseconds) {
  const auto work = std::make_shared<Work>();
  work->run = std::move(run);
  Hand(work);
  const ULONGLONG end = GetTickCount64() + milliseconds;
  while (WaitForSingleObject(work->done.get(), kIdleLookMs) != WAIT_OBJECT_0) {
    const bool over = GetTickCount64() >= end;
    if (over && work->Take(Work::Progress::GivenUp)) return Outcome::Refused;
    if (!over && !(leave && work->progress == Work::Progress::Running && leave())) continue;
    left_.push_back(work);
    return Outcome::Left;
  }
  work->ThrowFailure();
  return Outcome::Done;
}

void UiThread::ThrowLateFailure() {
  for (const std::shared_ptr<Work>& work : left_) {
    if (work->progress == Work::Progress::Done) work->ThrowFailure();
  }
}

HWND UiThread::Focus() const noexcept {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  const DWORD thread = GetWindowThreadProcessId(window_, nullptr);
  const bool inFront = GetWindowThreadProcessId(GetForegroundWindow(), nullptr) == thread;
  return inFront && GetGUIThreadInfo(thread, &info) ? info.hwndFocus : nullptr;
}

void UiThread::WaitIdle(const std::function<bool()>& over) {
  int quiet = 0;
  for (int look = 0; look < kMostLooks && quiet < kQuietLooks && !(over && over()); ++look) {
    Sleep(kIdleLookMs);
    auto waiting = std::make_shared<DWORD>(0);
    const auto ask = [waiting] { *waiting = HIWORD(GetQueueStatus(kReadable)); };
    if (Run(ask) != Outcome::Done) return;
    quiet = (*waiting & kReadable) == 0 ? quiet + 1 : 0;
  }
}

}  // namespace qrn::host
