#pragma once

#include <string>
#include <string_view>

namespace larder {

// UTF-16 to UTF-8, added to the end of `out`; a surrogate without its partner becomes U+FFFD.
void AppendUtf8(std::string& out, std::u16string_view units);

// UTF-8 to UTF-16; a malformed byte becomes U+FFFD.
std::u16string UnitsOfUtf8(std::string_view utf8);

// Adds a code point to UTF-16; one that does not exist becomes U+FFFD.
void AppendCodePoint(std::u16string& out, char32_t codePoint);

// The capital of a letter of the Latin, Greek and Cyrillic alphabets, if one unit can hold it;
// any other unit is its own.
char16_t CapitalOf(char16_t unit);

}  // namespace larder
