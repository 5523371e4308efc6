#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Text of the program: Windows-1252, one byte a character.
namespace larder {

// The Unicode value of a byte, and back. The five bytes that the code page leaves open stand for
// the control characters of the same value, so that every byte survives a round trip.
char16_t UnicodeOf(unsigned char byte);
std::optional<unsigned char> ByteOf(char32_t character);  // nothing when the code page lacks it

// UTF-8 or UTF-16 to the code page ('?' for what it lacks; malformed input too), and back.
std::string FromUtf8(std::string_view utf8);
std::string FromUtf16(std::u16string_view utf16);
std::string ToUtf8(std::string_view text);
std::u16string ToUtf16(std::string_view text);

// Case folding within the code page; accents are kept.
std::string LowerCase(std::string_view text);
std::string UpperCase(std::string_view text);
bool EqualNoCase(std::string_view a, std::string_view b);

std::string_view TrimBlanks(std::string_view text);  // blanks (0x20) of both ends

// Numbers in text. A number is an optional sign and decimal digits with blanks around it, or a
// decimal fraction or exponent; anything else is failure 13 (type mismatch), and a value that the
// type can't hold is failure 6 (overflow). Fractions are rounded with halves to even.
bool IsNumeric(std::string_view text);
std::int32_t ToLong(std::string_view text);
std::int16_t ToInteger(std::string_view text);
double ToDouble(std::string_view text);
// The number at the beginning of the text, blanks skipped; 0 when there is none. Never fails.
double Val(std::string_view text);

// To the nearest whole number, halves to the even neighbour. Failure 6 outside 16 (32) bits.
std::int16_t RoundToInteger(double value);
std::int32_t RoundToLong(double value);

}  // namespace larder
