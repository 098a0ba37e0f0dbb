// Declarations: variables with their types and bounds, parameters.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/form/Mistakes.h"
#include "host/form/VbTokens.h"
#include "host/form/VbTypes.h"

namespace qrn::form {

struct ArrayBound {
  Tokens lower;  // empty: the module's Option Base
  Tokens upper;
};

// One name of a Dim, Private, Public, Static, ReDim or parameter list.
struct Declared {
  std::string name;
  const VbType* type = &VariantType();
  bool isArray = false;
  std::vector<ArrayBound> bounds;  // as written; empty for a dynamic array
  bool isDynamic = false;          // its size comes with ReDim
  bool byValue = false;            // a parameter passed ByVal
  // Lower bounds as code, one a dimension, for arrays whose bounds are known.
  std::vector<std::string> lowerBounds;
};

// Reads `name[(bounds)] [As Type]` entries between commas, from `begin` to before `end`. What is no
// such entry is a mistake and left out.
std::vector<Declared> ReadDeclared(const Tokens& tokens, size_t begin, size_t end, int line,
                                   Mistakes& mistakes);

// The same for a parameter list, with ByVal and ByRef. Optional and ParamArray are refused.
std::vector<Declared> ReadParameters(const Tokens& tokens, size_t begin, size_t end, int line,
                                     Mistakes& mistakes);

// Names by their lower case.
class Scope {
 public:
  void Add(const Declared& declared);
  const Declared* Find(std::string_view name) const;

 private:
  std::map<std::string, Declared, std::less<>> names_;
};

}  // namespace qrn::form
