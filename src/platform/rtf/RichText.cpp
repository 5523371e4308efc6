#include "platform/rtf/RichText.h"

#include <iterator>
#include <limits>
#include <utility>

#include "platform/Text.h"
#include "platform/rtf/Utf.h"

namespace larder {

namespace {

// Tables of real documents hold a handful; the limits keep a hostile one from costing more
// memory, or time in looking fonts up, than its size justifies. Beyond them entry 0 serves.
constexpr std::size_t kMostFonts = 256;
constexpr std::size_t kMostParaFormats = 8192;
constexpr std::size_t kMostNameUnits = 64;

void Mix(std::size_t& hash, std::uint64_t value) {
    hash ^= static_cast<std::size_t>((value + 0x9E3779B97F4A7C15ull) * 0xBF58476D1CE4E5B9ull);
    hash = (hash << 27) | (hash >> 37);
}

std::int32_t Within(std::int32_t value, std::int32_t least, std::int32_t most) {
    return std::min(std::max(value, least), most);
}

// Font names end at a semicolon in RTF and hold no control characters.
std::string CleanFontName(std::string_view name) {
    std::u16string units = UnitsOfUtf8(name);
    std::erase_if(units, [](char16_t c) { return c < 0x20 || c == 0x7F || c == u';'; });
    units = units.substr(0, kMostNameUnits);
    const std::size_t first = std::min(units.find_first_not_of(u' '), units.size());
    const std::size_t last = units.find_last_not_of(u' ');
    std::string clean;
    AppendUtf8(clean, std::u16string_view(units).substr(first, last - first + 1));
    return clean.empty() ? RichFont{}.name : clean;
}

char LatinOf(char16_t unit) {
    return static_cast<char>(unit < 0x80 ? static_cast<unsigned char>(unit)
                                         : ByteOf(unit).value_or('?'));
}

// How many of the units from `at` on are ASCII. Looks at a block of them in one go, since nearly
// all are, and whole collections of recipes are read for a search.
std::size_t PlainStretch(std::u16string_view units, std::size_t at) {
    constexpr std::size_t kBlock = 16;
    const std::size_t start = at;
    for (; at + kBlock <= units.size(); at += kBlock) {
        unsigned seen = 0;
        for (std::size_t i = 0; i < kBlock; ++i)
            seen |= units[at + i];
        if (seen >= 0x80) break;
    }
    while (at < units.size() && units[at] < 0x80)
        ++at;
    return at - start;
}

}  // namespace

std::size_t RichText::CharHash::operator()(const CharFormat& f) const {
    std::size_t hash = 0;
    Mix(hash, f.font | std::uint64_t{f.halfPoints} << 16 | std::uint64_t{f.colour} << 32);
    Mix(hash, f.highlight | std::uint64_t{f.bold} << 32 | std::uint64_t{f.italic} << 33 |
                  std::uint64_t{f.underline} << 34 | std::uint64_t{f.strike} << 35 |
                  static_cast<std::uint64_t>(f.script) << 36);
    return hash;
}

std::size_t RichText::ParaHash::operator()(const ParaFormat& f) const {
    std::size_t hash = static_cast<std::size_t>(f.alignment);
    for (const std::int32_t length : {f.left, f.right, f.firstLine, f.spaceBefore, f.spaceAfter}) {
        Mix(hash, static_cast<std::uint32_t>(length));
    }
    for (const TabStop& tab : f.tabs) {
        Mix(hash, static_cast<std::uint32_t>(tab.position) | static_cast<std::uint64_t>(tab.kind)
                                                                 << 32);
    }
    return hash;
}

RichText::RichText(RichFont defaultFont) {
    InternFont(defaultFont);
    Intern(CharFormat{});
    Intern(ParaFormat{});
}

RichText RichText::FromPlain(std::string_view text, CharFormat format, RichFont defaultFont) {
    RichText document(std::move(defaultFont));
    const FormatIndex index = document.Intern(format);
    document.SetEndFormat(index);
    document.Reserve(text.size());
    std::u16string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c != '\r' && c != '\n') {
            line += CleanUnit(UnicodeOf(static_cast<unsigned char>(c)));
            continue;
        }
        document.Append(line, index);
        document.AppendBreak(BreakKind::Paragraph, index);
        line.clear();
        if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    }
    document.Append(line, index);
    return document;
}

std::uint16_t RichText::InternFont(const RichFont& font) {
    RichFont clean = font;
    clean.name = CleanFontName(font.name);
    if (clean.charset == charset::Symbol) clean.charset = charset::Ansi;
    const auto found = std::find(fonts_.begin(), fonts_.end(), clean);
    const auto index = static_cast<std::uint16_t>(found - fonts_.begin());
    if (found != fonts_.end()) return index;
    if (fonts_.size() == kMostFonts) return 0;
    fonts_.push_back(std::move(clean));
    return index;
}

RichText::FormatIndex RichText::Intern(CharFormat format) {
    if (format.font >= fonts_.size()) format.font = 0;
    format.halfPoints = std::clamp<std::uint16_t>(format.halfPoints, 1, kMostHalfPoints);
    if (format.colour != kAutomaticColour) format.colour &= 0xFFFFFF;
    if (format.highlight != kAutomaticColour) format.highlight &= 0xFFFFFF;
    const auto next = static_cast<FormatIndex>(charFormats_.size());
    const auto [entry, isNew] = charIndex_.try_emplace(format, next);
    if (isNew) charFormats_.push_back(format);
    return entry->second;
}

RichText::FormatIndex RichText::Intern(ParaFormat format) {
    for (std::int32_t* length : {&format.left, &format.right, &format.firstLine}) {
        *length = Within(*length, -kMostTwips, kMostTwips);
    }
    format.spaceBefore = Within(format.spaceBefore, 0, kMostTwips);
    format.spaceAfter = Within(format.spaceAfter, 0, kMostTwips);
    for (TabStop& tab : format.tabs)
        tab.position = Within(tab.position, 0, kMostTwips);
    const auto byPosition = [](const TabStop& a, const TabStop& b) {
        return a.position < b.position;
    };
    std::stable_sort(format.tabs.begin(), format.tabs.end(), byPosition);
    const auto samePosition = [](const TabStop& a, const TabStop& b) {
        return a.position == b.position;
    };
    format.tabs.erase(std::unique(format.tabs.begin(), format.tabs.end(), samePosition),
                      format.tabs.end());
    if (format.tabs.size() > kMostTabs) format.tabs.resize(kMostTabs);

    if (const auto found = paraIndex_.find(format); found != paraIndex_.end()) {
        return found->second;
    }
    if (paraFormats_.size() == kMostParaFormats) return 0;
    const auto index = static_cast<FormatIndex>(paraFormats_.size());
    paraFormats_.push_back(format);
    paraIndex_.emplace(std::move(format), index);
    return index;
}

char16_t RichText::CleanUnit(char16_t unit) {
    const bool control = unit < 0x20 && unit != u'\t';
    const bool structure = unit == u'\u2028' || unit == kBreakUnit || unit == kPictureUnit ||
                           (unit >= u'\uFDD0' && unit <= u'\uFDEF');
    return control || structure ? u' ' : unit;
}

void RichText::AppendRun(std::uint32_t length, FormatIndex format) {
    if (length == 0) return;
    if (!runs_.empty() && runs_.back().format == format && runs_.back().picture < 0) {
        runs_.back().length += length;
    } else {
        runs_.push_back({length, format, -1});
    }
}

void RichText::Append(std::u16string_view text, FormatIndex format) {
    units_.append(text);
    AppendRun(static_cast<std::uint32_t>(text.size()), format);
    paragraphs_.back().length += static_cast<std::uint32_t>(text.size());
}

void RichText::SetPicture(std::size_t index, RichPicture picture) {
    picture.goalWidth = Within(picture.goalWidth, 0, kMostTwips);
    picture.goalHeight = Within(picture.goalHeight, 0, kMostTwips);
    if (!picture.bytes || picture.bytes->empty()) picture.kind = PictureKind::Placeholder;
    if (picture.kind == PictureKind::Placeholder) picture.bytes.reset();
    pictures_[index] = std::move(picture);
}

void RichText::AppendPicture(RichPicture picture, FormatIndex format) {
    runs_.push_back({1, format, static_cast<std::int32_t>(pictures_.size())});
    pictures_.emplace_back();
    SetPicture(pictures_.size() - 1, std::move(picture));
    units_ += kPictureUnit;
    ++paragraphs_.back().length;
}

void RichText::AppendBreak(BreakKind kind, FormatIndex format) {
    units_ += kBreakUnit;
    AppendRun(1, format);
    paragraphs_.back().end = kind;
    paragraphs_.push_back({0, paragraphs_.back().format, BreakKind::Paragraph});
}

std::string RichText::Text() const {
    std::string text(Length(), '\0');
    char* out = text.data();
    std::size_t at = 0;
    while (at < units_.size()) {
        const std::size_t plain = PlainStretch(units_, at);
        std::transform(units_.data() + at, units_.data() + at + plain, out,
                       [](char16_t unit) { return static_cast<char>(unit); });
        out += plain;
        at += plain;
        if (at == units_.size()) break;
        const char16_t unit = units_[at++];
        if (unit == kBreakUnit) *out++ = '\r';
        *out++ = unit == kBreakUnit ? '\n' : unit == kPictureUnit ? ' ' : LatinOf(unit);
    }
    return text;
}

std::string RichText::PlainUtf8() const {
    std::string text;
    text.reserve(units_.size() + units_.size() / 16);
    std::u16string_view rest = units_;
    while (!rest.empty()) {
        std::size_t plain = 0;
        while (plain < rest.size() && rest[plain] < 0x80)
            ++plain;
        const std::size_t at = text.size();
        text.resize(at + plain);
        std::transform(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(plain),
                       text.begin() + static_cast<std::ptrdiff_t>(at),
                       [](char16_t unit) { return static_cast<char>(unit); });
        rest.remove_prefix(plain);

        std::size_t other = 0;
        const auto isText = [](char16_t u) {
            return u >= 0x80 && u != kBreakUnit && u != kPictureUnit;
        };
        while (other < rest.size() && isText(rest[other]))
            ++other;
        AppendUtf8(text, rest.substr(0, other));
        rest.remove_prefix(other);
        if (rest.empty() || rest[0] < 0x80) continue;
        if (rest[0] == kBreakUnit) text += '\n';
        rest.remove_prefix(1);
    }
    return text;
}

}  // namespace larder
