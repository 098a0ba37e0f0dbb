// Names of controls and access keys, each given once on a form.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace qrn::newform {

// Letters and digits of a name that code can use, as most names of fields are; another one of
// those, "Field7", where the name has other characters or begins with a digit.
std::string Identifier(std::string_view name, std::string_view otherwise, size_t number);

// Case does not tell names apart.
class ControlNames {
 public:
  // `wanted` if it is free, else with the first number behind it that makes it so.
  std::string Take(const std::string& wanted);

 private:
  std::set<std::string> taken_;
};

// A text that is shown with "&" before its access key: those in it are doubled.
std::string Shown(std::string_view text);

class AccessKeys {
 public:
  // The caption with "(&K)" behind it: K is `wanted` if that is free, else the first free letter or
  // digit; without any the caption alone.
  std::string Give(std::string_view caption, char wanted);

 private:
  std::string free_ = "BEFGHIJKMOQRSVXYZ123456789TPNLWAUDC";
};

}  // namespace qrn::newform
