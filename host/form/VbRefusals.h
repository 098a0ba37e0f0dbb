// What Visual Basic has and the script engine has not, refused in plain words instead of by a
// syntax error: statements by their first word, and words that no expression can hold.
#pragma once

#include <string_view>

#include "host/form/VbStatements.h"

namespace qrn::form {

// Why the statement cannot be had; empty if nothing is known against it. A word of the table that
// is assigned to or has a member is somebody's name and not refused.
std::string_view WhyStatementRefused(const Statement& statement) noexcept;

// Why the word or sign at `at` cannot be had; empty if nothing is known against it. What follows a
// dot is a member's name and never refused.
std::string_view WhyWordRefused(const Tokens& tokens, size_t at) noexcept;

}  // namespace qrn::form
