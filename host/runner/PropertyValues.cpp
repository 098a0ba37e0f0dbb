#include "host/runner/PropertyValues.h"

#include <stdexcept>

#include "host/container/Text.h"

namespace qrn::host {
namespace {

[[noreturn]] void Needs(const form::Property& property, const std::string& what) {
  throw std::runtime_error(property.name + " needs " + what);
}

}  // namespace

std::wstring TextOf(const form::Property& property) {
  if (const std::string* text = std::get_if<std::string>(&property.value)) return Wide(*text);
  Needs(property, "a text in quotes");
}

double NumberOf(const form::Property& property) {
  if (property.isGroup) Needs(property, "a number");
  if (const int32_t* whole = std::get_if<int32_t>(&property.value)) return *whole;
  if (const double* real = std::get_if<double>(&property.value)) return *real;
  Needs(property, "a number");
}

int WholeOf(const form::Property& property) {
  if (const int32_t* whole = std::get_if<int32_t>(&property.value)) return *whole;
  Needs(property, "a whole number");
}

int WholeOf(const form::Property& property, int least, int most) {
  const int number = WholeOf(property);
  if (number < least || number > most) {
    Needs(property, "a whole number from " + std::to_string(least) + " to " + std::to_string(most));
  }
  return number;
}

bool TruthOf(const form::Property& property) { return WholeOf(property) != 0; }

}  // namespace qrn::host
