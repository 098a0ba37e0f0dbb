#include "fields/PointedDigits.h"

namespace qrn {
namespace {

// The digits from `first` up to `end`, over both runs.
void PutRange(TextSink& text, const DigitRun& digits, size_t first, size_t end) {
  const size_t seam = digits.body.size();
  if (first < seam) text.Put(digits.body.substr(first, std::min(end, seam) - first));
  if (end > seam) text.Put(digits.last.substr(std::max(first, seam) - seam, end - seam));
}

}  // namespace

void PutPointedDigits(TextSink& text, const DigitRun& digits, size_t decimals) noexcept {
  const size_t length = digits.Length();
  const size_t point = length > decimals ? length - decimals : 0;
  if (point == 0 && decimals != 0) text.Put('0');
  PutRange(text, digits, 0, point);
  if (decimals == 0) return;
  text.Put('.');
  PutRange(text, digits, point, length);
}

}  // namespace qrn
