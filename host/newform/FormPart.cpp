#include "host/newform/FormPart.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace qrn::newform {
namespace {

constexpr int kIndent = 3;
constexpr size_t kNameWidth = 16;
constexpr char kLineEnd[] = "\r\n";

constexpr std::string_view kFont[] = {"Name            =   \"ＭＳ Ｐゴシック\"",
                                      "Size            =   9.75",
                                      "Charset         =   128",
                                      "Weight          =   400",
                                      "Underline       =   0   'False",
                                      "Italic          =   0   'False",
                                      "Strikethrough   =   0   'False"};

// Hundredths of a millimetre.
long Himetric(int pixels) { return (pixels * 2540L + 48) / 96; }

std::string Padded(std::string_view name) {
  std::string padded(name);
  padded.resize(std::max(kNameWidth, name.size() + 1), ' ');
  return padded;
}

void WriteFont(std::string& text, const std::string& indent) {
  text += indent + "BeginProperty Font " + kLineEnd;
  for (const std::string_view line : kFont) {
    text += indent + std::string(kIndent, ' ') + std::string(line) + kLineEnd;
  }
  text += indent + "EndProperty" + kLineEnd;
}

}  // namespace

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char byte : text) quoted += byte == '"' ? "\"\"" : std::string(1, byte);
  return quoted + "\"";
}

FormPart::FormPart(std::string kind, std::string name, const Box& box, int index)
    : kind_(std::move(kind)), name_(std::move(name)), box_(box), index_(index) {}

FormPart& FormPart::Set(std::string_view property, std::string text) {
  values_.push_back({std::string(property), std::move(text)});
  return *this;
}

FormPart& FormPart::Text(std::string_view property, std::string_view text) {
  return Set(property, Quoted(text));
}

FormPart& FormPart::Number(std::string_view property, long number) {
  return Set(property, std::to_string(number));
}

FormPart& FormPart::Truth(std::string_view property, bool truth) {
  return Set(property, truth ? "-1  'True" : "0   'False");
}

FormPart& FormPart::Colour(std::string_view property, unsigned colour) {
  std::array<char, 16> digits{};
  snprintf(digits.data(), digits.size(), "&H%08X&", colour);
  return Set(property, digits.data());
}

FormPart& FormPart::Font() {
  hasFont_ = true;
  return *this;
}

// By name, as designers write them; the extents of a module's control come first.
std::vector<FormPart::Value> FormPart::AllValues(int depth) const {
  std::vector<Value> values = values_;
  const auto number = [&](const char* name, long value) {
    values.push_back({name, std::to_string(value)});
  };
  const bool isForm = depth == 0;
  if (!isForm) {
    number("Left", long{box_.left} * kTwipsPerPixel);
    number("Top", long{box_.top} * kTwipsPerPixel);
  }
  const char* const prefix = isForm ? "Client" : "";
  number((prefix + std::string("Height")).c_str(), long{box_.height} * kTwipsPerPixel);
  number((prefix + std::string("Width")).c_str(), long{box_.width} * kTwipsPerPixel);
  if (index_ >= 0) number("Index", index_);
  std::stable_sort(values.begin(), values.end(),
                   [](const Value& one, const Value& other) { return one.name < other.name; });
  if (!IsModules()) return values;
  return values.insert(values.begin(), {{"_ExtentX", std::to_string(Himetric(box_.width))},
                                        {"_ExtentY", std::to_string(Himetric(box_.height))},
                                        {"_Version", "65537"}}),
         values;
}

void FormPart::Write(std::string& text, int depth) const {
  const std::string outer(static_cast<size_t>(depth * kIndent), ' ');
  const std::string inner(static_cast<size_t>((depth + 1) * kIndent), ' ');
  text += outer + "Begin " + kind_ + " " + name_ + " " + kLineEnd;
  if (hasFont_) WriteFont(text, inner);
  for (const Value& value : AllValues(depth)) {
    text += inner + Padded(value.name) + "=   " + value.text + kLineEnd;
  }
  for (const FormPart& part : parts) part.Write(text, depth + 1);
  text += outer + "End" + kLineEnd;
}

}  // namespace qrn::newform
