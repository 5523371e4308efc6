#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "platform/Failure.h"

namespace larder {

namespace {

// The 32 bytes from 0x80 on are the only ones whose Unicode value differs from their own.
constexpr std::array<char16_t, 32> upperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ByteOrQuestionMark(char32_t character) {
    return static_cast<char>(ByteOf(character).value_or('?'));
}

unsigned char LowerByte(unsigned char c) {
    if ((c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) return c + 0x20;
    if (c == 0x8A || c == 0x8C || c == 0x8E) return c + 0x10;
    return c == 0x9F ? 0xFF : c;
}

unsigned char UpperByte(unsigned char c) {
    if ((c >= 'a' && c <= 'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7)) return c - 0x20;
    if (c == 0x9A || c == 0x9C || c == 0x9E) return c - 0x10;
    return c == 0xFF ? 0x9F : c;
}

struct Decoded {
    char32_t Character;
    std::size_t Length;  // bytes taken, at least 1
    bool Valid;
};

// One character of UTF-8 from the front of a text that is not empty. What is malformed is taken
// together up to the byte that spoils it.
Decoded DecodeUtf8(std::string_view utf8) {
    const auto first = static_cast<unsigned char>(utf8[0]);
    if (first < 0x80) return {first, 1, true};
    const std::size_t wanted = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4) return {0, 1, false};
    char32_t character = first & (0xFF >> (wanted + 1));
    for (std::size_t i = 1; i < wanted; ++i) {
        const auto next = i < utf8.size() ? static_cast<unsigned char>(utf8[i]) : 0;
        if ((next & 0xC0) != 0x80) return {0, i, false};
        character = (character << 6) | (next & 0x3F);
    }
    static constexpr std::array<char32_t, 5> least = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    const bool valid = character >= least[wanted] && character <= 0x10FFFF && !surrogate;
    return {character, wanted, valid};
}

void AppendUtf8(std::string& out, char16_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::size_t SkipDigits(std::string_view text, std::size_t from) {
    while (from < text.size() && IsDigit(text[from]))
        ++from;
    return from;
}

// The length of the number that the text begins with, sign included; 0 when it begins with none.
std::size_t NumberLength(std::string_view text) {
    const std::size_t digits = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    std::size_t end = SkipDigits(text, digits);
    std::size_t count = end - digits;
    if (end < text.size() && text[end] == '.') {
        const std::size_t fractionEnd = SkipDigits(text, end + 1);
        count += fractionEnd - end - 1;
        if (count > 0) end = fractionEnd;
    }
    if (count == 0) return 0;
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        std::size_t exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) ++exponent;
        const std::size_t exponentEnd = SkipDigits(text, exponent);
        if (exponentEnd > exponent) end = exponentEnd;
    }
    return end;
}

// The decimal place of the first digit other than 0, to tell a number too large for the type from
// one too small for it. Positive for a number of 1 and above.
double Magnitude(std::string_view number) {
    const std::size_t exponentMark = number.find_first_of("eE");
    const std::string_view mantissa = number.substr(0, exponentMark);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = std::min(mantissa.find_first_of("123456789"), mantissa.size());
    double exponent = 0;
    if (exponentMark != std::string_view::npos) {
        std::string_view digits = number.substr(exponentMark + 1);
        const bool negative = digits.front() == '-';
        if (negative || digits.front() == '+') digits.remove_prefix(1);
        for (const char c : digits)
            exponent = std::min(exponent * 10 + (c - '0'), 1e18);
        if (negative) exponent = -exponent;
    }
    return exponent + static_cast<double>(point) - static_cast<double>(first);
}

struct Parsed {
    double Value;
    bool Overflow;
};

// `number` is what NumberLength has found.
Parsed Parse(std::string_view number) {
    if (number.front() == '+') number.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec != std::errc::result_out_of_range) return {value, false};
    if (Magnitude(number) <= 0) return {0, false};
    const double largest = std::numeric_limits<double>::max();
    return {number.front() == '-' ? -largest : largest, true};
}

// Halves go to the even neighbour because that is the rounding mode the process starts in and
// nothing here changes it.
template <typename Whole>
Whole RoundTo(double value, const char* source) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<Whole>::min() &&
          rounded <= std::numeric_limits<Whole>::max())) {
        throw Failure(failure::Overflow, source);
    }
    return static_cast<Whole>(rounded);
}

}  // namespace

char16_t UnicodeOf(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? upperControls[byte - 0x80] : byte;
}

std::optional<unsigned char> ByteOf(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return static_cast<unsigned char>(character);
    }
    const auto found = std::find(upperControls.begin(), upperControls.end(), character);
    if (found == upperControls.end()) return std::nullopt;
    return static_cast<unsigned char>(0x80 + (found - upperControls.begin()));
}

std::string FromUtf8(std::string_view utf8) {
    std::string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const Decoded decoded = DecodeUtf8(utf8);
        text += decoded.Valid ? ByteOrQuestionMark(decoded.Character) : '?';
        utf8.remove_prefix(decoded.Length);
    }
    return text;
}

std::string FromUtf16(std::u16string_view utf16) {
    std::string text;
    text.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        const bool high = utf16[i] >= 0xD800 && utf16[i] <= 0xDBFF;
        const char16_t next = i + 1 < utf16.size() ? utf16[i + 1] : u'\0';
        text += ByteOrQuestionMark(utf16[i]);
        if (high && next >= 0xDC00 && next <= 0xDFFF) ++i;
    }
    return text;
}

std::string ToUtf8(std::string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (const char c : text)
        AppendUtf8(utf8, UnicodeOf(static_cast<unsigned char>(c)));
    return utf8;
}

std::u16string ToUtf16(std::string_view text) {
    std::u16string utf16;
    utf16.reserve(text.size());
    for (const char c : text)
        utf16 += UnicodeOf(static_cast<unsigned char>(c));
    return utf16;
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = static_cast<char>(LowerByte(static_cast<unsigned char>(c)));
    return lower;
}

std::string UpperCase(std::string_view text) {
    std::string upper(text);
    for (char& c : upper)
        c = static_cast<char>(UpperByte(static_cast<unsigned char>(c)));
    return upper;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return UpperByte(static_cast<unsigned char>(x)) == UpperByte(static_cast<unsigned char>(y));
    });
}

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool IsNumeric(std::string_view text) {
    const std::string_view number = TrimBlanks(text);
    return !number.empty() && NumberLength(number) == number.size();
}

double ToDouble(std::string_view text) {
    if (!IsNumeric(text)) throw Failure(failure::TypeMismatch, "ToDouble");
    const Parsed parsed = Parse(TrimBlanks(text));
    if (parsed.Overflow) throw Failure(failure::Overflow, "ToDouble");
    return parsed.Value;
}

std::int32_t ToLong(std::string_view text) {
    return RoundToLong(ToDouble(text));
}

std::int16_t ToInteger(std::string_view text) {
    return RoundToInteger(ToDouble(text));
}

double Val(std::string_view text) {
    const std::string_view number = TrimBlanks(text);
    const std::size_t length = NumberLength(number);
    return length == 0 ? 0 : Parse(number.substr(0, length)).Value;
}

std::int16_t RoundToInteger(double value) {
    return RoundTo<std::int16_t>(value, "RoundToInteger");
}

std::int32_t RoundToLong(double value) {
    return RoundTo<std::int32_t>(value, "RoundToLong");
}

}  // namespace larder
