// Functions of Visual Basic that script engines do not have, or not all of them. Texts are UTF-16;
// the ...B functions count the bytes a text holds, which need not be an even number.
#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string>
#include <vector>

#include "host/container/ComObject.h"

namespace qrn::host {

inline constexpr LCID kJapanese = 0x411;  // whose forms texts, numbers and dates take

// A number as Print and Str show it: a blank or minus sign in front.
std::wstring NumberText(double number);

// The number a text begins with, blanks ignored, &H and &O taken; 0 if it begins with none.
double LeadingNumber(std::wstring_view text);

// StrConv: 1 upper, 2 lower, 3 each word's first letter, 4 wide, 8 narrow, 16 katakana, 32 hiragana
// (these add up), 64 bytes to text, 128 text to bytes, both by code page 932.
Bstr ConvertText(const Bstr& text, int conversion);

// The part of the text's bytes from `start` (0-based), at most `count` of them.
Bstr BytesOf(const Bstr& text, size_t start, size_t count);

// An interval's count between two dates (VT_DATE values), by Visual Basic's names: yyyy, q, m, y,
// d, w, ww, h, n, s. Weeks begin on Sunday. Throws ScriptError (5) for another name.
double DateDifference(const std::wstring& interval, DATE from, DATE to);
int DatePartOf(const std::wstring& interval, DATE date);

// One line of Print from items and separators, which alternate: ";" joins, "," goes to the next
// print zone of 14 columns. `*openEnd` tells that the line ends with a separator and goes on.
std::wstring PrintLine(const std::vector<Variant>& parts, size_t columnsBefore, bool* openEnd);

}  // namespace qrn::host
