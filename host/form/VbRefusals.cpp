#include "host/form/VbRefusals.h"

namespace qrn::form {
namespace {

struct Refusal {
  std::string_view word;
  std::string_view reason;
};

constexpr std::string_view kFileHint =
    "file statements cannot be had: use CreateObject(\"Scripting.FileSystemObject\")";
constexpr std::string_view kJumpHint =
    "jumps cannot be had: use If, Do, Exit Do, Exit For or Exit Sub";
constexpr std::string_view kEventHint = "a form here has no events of its own";
constexpr std::string_view kDefHint = "give each variable its type with As";

// clang-format off
constexpr Refusal kStatements[] = {
    {"GoTo",       kJumpHint},
    {"GoSub",      kJumpHint},
    {"Return",     kJumpHint},
    {"Resume",     "Resume cannot be had: use On Error Resume Next and look at Err.Number"},
    {"Open",       kFileHint},
    {"Close",      kFileHint},
    {"Get",        kFileHint},
    {"Put",        kFileHint},
    {"Input",      kFileHint},
    {"Write",      kFileHint},
    {"Seek",       kFileHint},
    {"Lock",       kFileHint},
    {"Unlock",     kFileHint},
    {"Reset",      kFileHint},
    {"Kill",       kFileHint},
    {"FileCopy",   kFileHint},
    {"MkDir",      kFileHint},
    {"RmDir",      kFileHint},
    {"ChDir",      kFileHint},
    {"ChDrive",    kFileHint},
    {"SetAttr",    kFileHint},
    {"Line",       "drawing and reading by Line cannot be had"},
    {"Circle",     "drawing on the form cannot be had"},
    {"PSet",       "drawing on the form cannot be had"},
    {"LSet",       "LSet cannot be had: use Left and Space"},
    {"RSet",       "RSet cannot be had: use Right and Space"},
    {"Error",      "use Err.Raise"},
    {"Type",       "a type of one's own cannot be had: use single variables or an array"},
    {"Declare",    "functions of other libraries cannot be declared: use the methods of a control"},
    {"Property",   "a form here has no properties of its own: use a Function or a Public variable"},
    {"Event",      kEventHint},
    {"RaiseEvent", kEventHint},
    {"Implements", "a form here implements no interfaces of its own"},
    {"DefBool",    kDefHint},
    {"DefByte",    kDefHint},
    {"DefInt",     kDefHint},
    {"DefLng",     kDefHint},
    {"DefCur",     kDefHint},
    {"DefSng",     kDefHint},
    {"DefDbl",     kDefHint},
    {"DefDate",    kDefHint},
    {"DefStr",     kDefHint},
    {"DefObj",     kDefHint},
    {"DefVar",     kDefHint},
    {"SavePicture", "pictures cannot be saved from a form's code"},
};

constexpr Refusal kWords[] = {
    {"Like",      "Like cannot be had: use InStr, Left, Mid or Right"},
    {"AddressOf", "AddressOf cannot be had: a script has no addresses"},
    {"TypeOf",    "TypeOf cannot be had: use TypeName"},
    {"New",       "New cannot be had: use CreateObject"},
    {":=",        "an argument by name cannot be had: give it at its place"},
    {"!",         "'!' between names cannot be had: write the member with a dot"},
    {"?",         "'?' is not understood: write Print"},
    {";",         "';' stands only in Print"},
    {"{",         "'{' has no meaning in code"},
    {"}",         "'}' has no meaning in code"},
};
// clang-format on

template <size_t N>
std::string_view Look(const Refusal (&table)[N], const Token& token) noexcept {
  for (const Refusal& row : table) {
    if (token.Is(row.word)) return row.reason;
  }
  return {};
}

bool IsSomebodysName(const Statement& statement) noexcept {
  return statement.Has(1, "=") || statement.Has(1, ".");
}

bool AssignsToMid(const Statement& statement) noexcept {
  if (!statement.Starts("Mid", "(") && !statement.Starts("MidB", "(")) return false;
  const size_t behind = BehindParenthesis(statement.tokens, 1);
  return statement.Has(behind, "=");
}

}  // namespace

std::string_view WhyStatementRefused(const Statement& statement) noexcept {
  if (IsSomebodysName(statement)) return {};
  if (statement.Starts("#")) {
    return "lines with # (conditional compiling) cannot be had";
  }
  if (statement.Starts("Name") && FindOutside(statement.tokens, "As") < statement.tokens.size()) {
    return kFileHint;
  }
  if (statement.Starts("Print", "#")) return kFileHint;
  if (AssignsToMid(statement)) {
    return "Mid on the left of '=' cannot be had: put the text together with Left, Mid and '&'";
  }
  return Look(kStatements, statement.tokens[0]);
}

std::string_view WhyWordRefused(const Tokens& tokens, size_t at) noexcept {
  if (at > 0 && tokens[at - 1].Is(".")) return {};
  return Look(kWords, tokens[at]);
}

}  // namespace qrn::form
