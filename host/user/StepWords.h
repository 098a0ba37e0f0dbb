// What steps of a user script say and compare.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace qrn::host {

// How often a waiting step looks, and how long.
constexpr DWORD kLookMs = 30;
constexpr DWORD kPatienceMs = 10000;

// Ends a step: throws std::runtime_error.
[[noreturn]] void Fail(const std::string& reason);

std::string Quoted(std::wstring_view text);

// Whether a text meets "= x", "<> x" or "contains x".
bool Meets(const std::wstring& text, const std::string& sign, const std::wstring& wanted);

// What a box shows, for those who did not see it.
std::string Described(HWND box);

}  // namespace qrn::host
