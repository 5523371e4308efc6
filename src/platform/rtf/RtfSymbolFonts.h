#pragma once

#include <cstdint>
#include <string_view>

namespace larder {

// Fonts that show other characters than the code page has at its bytes.
enum class SymbolFont : std::uint8_t { None, Symbol, Wingdings, Other };

// The kind of a font by its name (UTF-8) and whether its character set is the symbol one. A font
// that says that it has another set is None, whatever its name.
SymbolFont SymbolFontOf(std::string_view name, bool symbolCharset);

// The character that a byte of a symbol font shows; one of the private characters U+F020 to
// U+F0FF, which stand for the glyph itself, when there is none like it. Bytes below 0x20 are
// themselves.
char16_t SymbolUnit(SymbolFont font, unsigned char byte);

}  // namespace larder
