#include "tools/qrndata/Progress.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "tools/qrndata/Messages.h"

namespace qrndata {

namespace {

constexpr auto kBetweenDraws = std::chrono::milliseconds(100);
// Back to the line's start, and clear to its end.
constexpr const char* kRestart = "\r\x1b[K";

std::string Bar(uint64_t done, uint64_t total) {
  constexpr uint64_t kWidth = 20;
  const uint64_t filled = std::min(done * kWidth / total, kWidth);
  return "[" + std::string(filled, '#') + std::string(kWidth - filled, '.') + "]";
}

std::string MinutesAndSeconds(double seconds) {
  constexpr double kMost = 359999;
  const auto whole = static_cast<unsigned>(std::clamp(seconds, 0.0, kMost));
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%02u:%02u", whole / 60, whole % 60);
  return text.data();
}

}  // namespace

Progress::Progress(std::ostream* terminal, std::string label, uint64_t total)
    : terminal_(terminal), label_(std::move(label)), total_(total) {}

Progress::~Progress() {
  if (isDrawn_) *terminal_ << kRestart << std::flush;
}

void Progress::Update(uint64_t done, uint64_t rows) {
  if (terminal_ == nullptr) return;
  const auto now = Clock::now();
  if (now < nextDraw_) return;
  nextDraw_ = now + kBetweenDraws;
  isDrawn_ = true;
  const double seconds = std::chrono::duration<double>(now - begun_).count();
  *terminal_ << kRestart << Line(done, rows, seconds) << std::flush;
}

std::string Progress::Line(uint64_t done, uint64_t rows, double seconds) const {
  std::string line = label_;
  if (total_ != 0) {
    const uint64_t percent = std::min<uint64_t>(done * 100 / total_, 100);
    line += "  " + Bar(done, total_) + "  " + std::to_string(percent) + " %";
  }
  line += "  " + Counted(rows, Message::Rows);
  if (seconds <= 0) return line;
  const auto speed = static_cast<uint64_t>(static_cast<double>(rows) / seconds);
  line += "  " + Say(Message::RowsASecond, Counted(speed, Message::Rows));
  if (total_ != 0 && done != 0) {
    const double left = static_cast<double>(total_) / static_cast<double>(done) - 1;
    line += "  " + Say(Message::TimeLeft, MinutesAndSeconds(seconds * left));
  }
  return line;
}

std::string Grouped(uint64_t number) {
  std::string text = std::to_string(number);
  for (size_t at = text.size(); at > 3; at -= 3) text.insert(at - 3, 1, ',');
  return text;
}

std::string Counted(uint64_t number, Message what) {
  const std::string_view forms = TextOf(what);
  const size_t bar = std::min(forms.find('|'), forms.size());
  const bool isOne = number == 1 || bar == forms.size();
  return qrn::WithWords(isOne ? forms.substr(0, bar) : forms.substr(bar + 1), {Grouped(number)});
}

}  // namespace qrndata
