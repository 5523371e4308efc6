#include "platform/rtf/RtfSymbolFonts.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace larder {

namespace {

constexpr char16_t kPrivate = 0xF000;

// Symbol, bytes 0x20 to 0x7E.
constexpr std::u16string_view kSymbolLow =
    u" !\u2200#\u2203%&\u220B()\u2217+,\u2212./0123456789:;<=>?"
    u"\u2245\u0391\u0392\u03A7\u0394\u0395\u03A6\u0393\u0397\u0399\u03D1\u039A\u039B\u039C\u039D"
    u"\u039F\u03A0\u0398\u03A1\u03A3\u03A4\u03A5\u03C2\u03A9\u039E\u03A8\u0396[\u2234]\u22A5_"
    u"\uF060\u03B1\u03B2\u03C7\u03B4\u03B5\u03C6\u03B3\u03B7\u03B9\u03D5\u03BA\u03BB\u03BC\u03BD"
    u"\u03BF\u03C0\u03B8\u03C1\u03C3\u03C4\u03C5\u03D6\u03C9\u03BE\u03C8\u03B6{|}\u223C";
static_assert(kSymbolLow.size() == 0x7F - 0x20);

// Symbol, bytes 0xA0 to 0xFE.
constexpr std::u16string_view kSymbolHigh =
    u"\u20AC\u03D2\u2032\u2264\u2044\u221E\u0192\u2663\u2666\u2665\u2660\u2194\u2190\u2191\u2192"
    u"\u2193\u00B0\u00B1\u2033\u2265\u00D7\u221D\u2202\u2022\u00F7\u2260\u2261\u2248\u2026\uF0BD"
    u"\uF0BE\u21B5\u2135\u2111\u211C\u2118\u2297\u2295\u2205\u2229\u222A\u2283\u2287\u2284\u2282"
    u"\u2286\u2208\u2209\u2220\u2207\u00AE\u00A9\u2122\u220F\u221A\u22C5\u00AC\u2227\u2228\u21D4"
    u"\u21D0\u21D1\u21D2\u21D3\u25CA\u2329\u00AE\u00A9\u2122\u2211\uF0E6\uF0E7\uF0E8\uF0E9\uF0EA"
    u"\uF0EB\uF0EC\uF0ED\uF0EE\uF0EF\uF0F0\u232A\u222B\u2320\uF0F4\u2321\uF0F6\uF0F7\uF0F8\uF0F9"
    u"\uF0FA\uF0FB\uF0FC\uF0FD\uF0FE";
static_assert(kSymbolHigh.size() == 0xFF - 0xA0);

struct Glyph {
    unsigned char byte;
    char16_t unit;
};
// The marks of Wingdings that stand before list lines and in running text.
constexpr Glyph kWingdings[] = {
    {0x20, u' '},      {0x22, u'\u2702'}, {0x28, u'\u260E'}, {0x2A, u'\u2709'}, {0x46, u'\u261E'},
    {0x4A, u'\u263A'}, {0x4C, u'\u2639'}, {0x6C, u'\u25CF'}, {0x6D, u'\u274D'}, {0x6E, u'\u25A0'},
    {0x6F, u'\u25A1'}, {0x71, u'\u2751'}, {0x73, u'\u2B27'}, {0x74, u'\u29EB'}, {0x75, u'\u25C6'},
    {0x76, u'\u2756'}, {0x9F, u'\u2022'}, {0xA0, u'\u25AA'}, {0xA1, u'\u25CB'}, {0xA7, u'\u25AA'},
    {0xA8, u'\u25FB'}, {0xB2, u'\u2727'}, {0xD8, u'\u27A2'}, {0xDC, u'\u27B2'}, {0xDF, u'\u2190'},
    {0xE0, u'\u2192'}, {0xE8, u'\u2794'}, {0xF0, u'\u21E8'}, {0xFB, u'\u2718'}, {0xFC, u'\u2714'},
    {0xFD, u'\u2612'}, {0xFE, u'\u2611'},
};

bool BeginsWith(std::string_view name, std::string_view start) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return name.size() >= start.size() && std::equal(start.begin(), start.end(), name.begin(),
                                                     [&](char a, char b) { return a == lower(b); });
}

char16_t WingdingsUnit(unsigned char byte) {
    const auto* found = std::find_if(std::begin(kWingdings), std::end(kWingdings),
                                     [byte](const Glyph& g) { return g.byte == byte; });
    return found == std::end(kWingdings) ? static_cast<char16_t>(kPrivate + byte) : found->unit;
}

}  // namespace

SymbolFont SymbolFontOf(std::string_view name, bool symbolCharset) {
    if (!symbolCharset) return SymbolFont::None;
    if (BeginsWith(name, "symbol")) return SymbolFont::Symbol;
    if (BeginsWith(name, "wingdings") && name.size() == 9) return SymbolFont::Wingdings;
    return SymbolFont::Other;
}

char16_t SymbolUnit(SymbolFont font, unsigned char byte) {
    if (byte < 0x20 || font == SymbolFont::None) return byte;
    if (font == SymbolFont::Wingdings) return WingdingsUnit(byte);
    if (font == SymbolFont::Symbol && byte < 0x7F) return kSymbolLow[byte - 0x20u];
    if (font == SymbolFont::Symbol && byte >= 0xA0 && byte < 0xFF) return kSymbolHigh[byte - 0xA0u];
    return byte == 0x20 ? u' ' : static_cast<char16_t>(kPrivate + byte);
}

}  // namespace larder
