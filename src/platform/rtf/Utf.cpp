#include "platform/rtf/Utf.h"

#include <cstddef>

namespace larder {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t c) {
    return c >= 0xD800 && c < 0xDC00;
}
bool IsLowSurrogate(char32_t c) {
    return c >= 0xDC00 && c < 0xE000;
}

void AppendEncoded(std::string& out, char32_t c) {
    const auto tail = [&](int shift) { out += static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        tail(0);
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

// The code point at `at`, which moves behind it; behind one byte only when it is malformed.
char32_t DecodeNext(std::string_view utf8, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(utf8[at++]);
    if (lead < 0x80) return lead;
    const int tails = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 ? 1 : 0;
    if (tails == 0 || lead > 0xF4 || utf8.size() - at < static_cast<std::size_t>(tails)) {
        return kReplacement;
    }
    char32_t c = lead & (0x3F >> tails);
    for (int i = 0; i < tails; ++i) {
        const auto byte = static_cast<unsigned char>(utf8[at + static_cast<std::size_t>(i)]);
        if ((byte & 0xC0) != 0x80) return kReplacement;
        c = (c << 6) | (byte & 0x3F);
    }
    constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
    if (c < kLeast[tails] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) return kReplacement;
    at += static_cast<std::size_t>(tails);
    return c;
}

}  // namespace

void AppendUtf8(std::string& out, std::u16string_view units) {
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char32_t c = units[i];
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (IsHighSurrogate(c) && i + 1 < units.size() && IsLowSurrogate(units[i + 1])) {
            AppendEncoded(out, 0x10000 + ((c - 0xD800) << 10) + (units[++i] - 0xDC00u));
        } else {
            AppendEncoded(out, IsHighSurrogate(c) || IsLowSurrogate(c) ? kReplacement : c);
        }
    }
}

std::u16string UnitsOfUtf8(std::string_view utf8) {
    std::u16string units;
    units.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();)
        AppendCodePoint(units, DecodeNext(utf8, at));
    return units;
}

void AppendCodePoint(std::u16string& out, char32_t codePoint) {
    if (codePoint > 0x10FFFF) codePoint = kReplacement;
    if (codePoint < 0x10000) {
        out += static_cast<char16_t>(codePoint);
        return;
    }
    out += static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10));
    out += static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
}

char16_t CapitalOf(char16_t unit) {
    const auto within = [unit](char16_t from, char16_t to) { return unit >= from && unit <= to; };
    const auto minus = [unit](int distance) { return static_cast<char16_t>(unit - distance); };
    if (within(u'a', u'z')) return minus(32);
    if (unit < 0xB5) return unit;
    if (within(0xE0, 0xFE)) return unit == 0xF7 ? unit : minus(32);
    if (unit == 0xB5) return 0x39C;
    if (unit == 0xFF) return 0x178;
    // Latin Extended-A keeps capital and small letter side by side, in two rhythms.
    if (unit == 0x131) return u'I';
    if (within(0x100, 0x137) || within(0x14A, 0x177)) return unit & 1 ? minus(1) : unit;
    if (within(0x139, 0x148) || within(0x179, 0x17E)) return unit & 1 ? unit : minus(1);
    if (unit == 0x3AC) return 0x386;
    if (within(0x3AD, 0x3AF)) return minus(37);
    if (unit == 0x3C2) return 0x3A3;
    if (within(0x3B1, 0x3CB)) return minus(32);
    if (unit == 0x3CC) return 0x38C;
    if (within(0x3CD, 0x3CE)) return minus(63);
    if (within(0x430, 0x44F)) return minus(32);
    if (within(0x450, 0x45F)) return minus(80);
    if (within(0x460, 0x481) || within(0x48A, 0x4BF)) return unit & 1 ? minus(1) : unit;
    return unit;
}

}  // namespace larder
