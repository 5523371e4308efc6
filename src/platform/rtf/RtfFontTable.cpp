#include "platform/rtf/RtfFontTable.h"

#include <algorithm>

#include "platform/rtf/Utf.h"

namespace larder {

namespace {

constexpr std::size_t kLongestName = 128;  // units; the rest of a name is dropped

}  // namespace

void RtfFontTable::Begin(int number) {
    End();
    number_ = number;
}

void RtfFontTable::AddToName(char16_t unit) {
    if (unit >= 0x20 && name_.size() < kLongestName) name_ += unit;
}

int RtfFontTable::CodePage() const {
    return codePage_ ? *codePage_ : CodePageOfCharset(charset_.value_or(charset::Default));
}

void RtfFontTable::End() {
    if (number_) {
        RtfFont entry;
        const std::size_t first = std::min(name_.find_first_not_of(u' '), name_.size());
        entry.font.name.clear();
        AppendUtf8(entry.font.name, std::u16string_view(name_).substr(first));
        entry.font.family = family_;
        // Fonts of the oldest documents say by their name alone that they are symbols.
        const bool symbols =
            charset_ ? *charset_ == charset::Symbol : family_ == FontFamily::Technical;
        entry.symbol = SymbolFontOf(entry.font.name, symbols);
        entry.font.charset = static_cast<std::uint8_t>(
            symbols ? charset::Ansi : std::clamp(charset_.value_or(charset::Ansi), 0, 255));
        entry.codePage = CodePage();
        fonts_[*number_] = std::move(entry);
    }
    number_.reset();
    charset_.reset();
    codePage_.reset();
    family_ = FontFamily::Nil;
    name_.clear();
}

RtfFont* RtfFontTable::Find(int number) {
    const auto found = fonts_.find(number);
    return found == fonts_.end() ? nullptr : &found->second;
}

}  // namespace larder
