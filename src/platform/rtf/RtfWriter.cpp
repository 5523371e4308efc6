#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/Text.h"
#include "platform/rtf/Rtf.h"
#include "platform/rtf/Utf.h"

namespace larder {

namespace {

constexpr std::size_t kPictureBytesInALine = 64;

constexpr std::array kFamilies = {"nil",    "roman", "swiss", "modern",
                                  "script", "decor", "tech",  "bidi"};
constexpr std::array kAlignments = {"", "qr", "qc", "qj"};
constexpr std::array kTabKinds = {"", "tqr", "tqc", "tqdec"};
constexpr std::array kPictureKinds = {"pngblip", "jpegblip", "dibitmap0", "wmetafile8"};

template <typename Names, typename Value>
std::string_view NameOf(const Names& names, Value value) {
    return names[static_cast<std::size_t>(value)];
}

// Numbers the values that a document uses in the order in which it uses them, so that what is
// written does not depend on how the document came about.
template <typename Value>
class Numbering {
  public:
    std::size_t Of(const Value& value) {
        const auto [entry, isNew] = numbers_.try_emplace(value, values_.size());
        if (isNew) values_.push_back(value);
        return entry->second;
    }
    const std::vector<Value>& Values() const { return values_; }

  private:
    std::vector<Value> values_;
    std::unordered_map<Value, std::size_t> numbers_;
};

class Writer {
  public:
    explicit Writer(const RichText& document) : document_(document) {}

    std::string Write();

  private:
    void Body();
    void ParagraphFormat(const ParaFormat& format);
    void Break(BreakKind kind);
    void Look(const CharFormat& format);
    void Text(std::u16string_view units);
    void Unit(char16_t unit);
    void PictureData(const RichPicture& picture);
    std::string Header();

    void Word(std::string_view word);
    void Word(std::string_view word, std::int64_t number);
    void Switch(std::string_view word, bool& now, bool wanted);
    void Plain(char c);
    void Escaped(char16_t unit, bool latin);

    const RichText& document_;
    std::string out_;
    bool wordOpen_ = false;  // a control word is last, and text needs a blank before it
    bool first_ = true;      // no look was written yet
    bool latin_ = true;      // the font's character set is that of the document
    CharFormat look_;        // what is in force in out_
    Numbering<std::uint16_t> fonts_;
    Numbering<std::uint32_t> colours_;
};

void Writer::Word(std::string_view word) {
    out_ += '\\';
    out_ += word;
    wordOpen_ = true;
}

void Writer::Word(std::string_view word, std::int64_t number) {
    Word(word);
    out_ += std::to_string(number);
}

void Writer::Switch(std::string_view word, bool& now, bool wanted) {
    if (now == wanted) return;
    now = wanted;
    Word(word);
    if (!wanted) out_ += '0';
}

void Writer::Plain(char c) {
    if (wordOpen_) out_ += ' ';
    wordOpen_ = false;
    out_ += c;
}

// A character beyond ASCII: a byte of the code page where the font's character set is the same,
// else its number and a substitute for old readers.
void Writer::Escaped(char16_t unit, bool latin) {
    constexpr char kDigits[] = "0123456789abcdef";
    wordOpen_ = false;
    if (const auto byte = latin ? ByteOf(unit) : std::nullopt) {
        out_ += "\\'";
        out_ += kDigits[*byte >> 4];
        out_ += kDigits[*byte & 15];
        return;
    }
    Word("u", static_cast<std::int16_t>(unit));
    out_ += '?';
    wordOpen_ = false;
}

void Writer::Unit(char16_t unit) {
    const auto symbol = [this](char c) {
        wordOpen_ = false;
        out_ += '\\';
        out_ += c;
    };
    switch (unit) {
        case u'\\':
        case u'{':
        case u'}':
            return symbol(static_cast<char>(unit));
        case u'\t':
            return Word("tab");
        case u'\u00A0':
            return symbol('~');
        case u'\u00AD':
            return symbol('-');
        case u'\u2011':
            return symbol('_');
        default:
            break;
    }
    if (unit >= 0x7F) return Escaped(unit, latin_);
    Plain(unit < 0x20 ? ' ' : static_cast<char>(unit));
}

void Writer::Text(std::u16string_view units) {
    for (const char16_t unit : units)
        Unit(unit);
}

void Writer::Look(const CharFormat& format) {
    if (first_ || look_.font != format.font) {
        Word("f", static_cast<std::int64_t>(fonts_.Of(format.font)));
        const std::uint8_t set = document_.Fonts()[format.font].charset;
        latin_ = set == charset::Ansi || set == charset::Default;
    }
    if (first_ || look_.halfPoints != format.halfPoints) Word("fs", format.halfPoints);
    const auto colour = [this](std::uint32_t value) {
        return value == kAutomaticColour ? 0 : static_cast<std::int64_t>(colours_.Of(value) + 1);
    };
    if (look_.colour != format.colour) Word("cf", colour(format.colour));
    if (look_.highlight != format.highlight) Word("highlight", colour(format.highlight));
    Switch("b", look_.bold, format.bold);
    Switch("i", look_.italic, format.italic);
    if (look_.underline != format.underline) Word(format.underline ? "ul" : "ulnone");
    Switch("strike", look_.strike, format.strike);
    if (look_.script != format.script) {
        constexpr std::array kScripts = {"nosupersub", "super", "sub"};
        Word(NameOf(kScripts, format.script));
    }
    look_ = format;
    first_ = false;
}

void Writer::ParagraphFormat(const ParaFormat& format) {
    Word("pard");
    if (format.alignment != Alignment::Left) Word(NameOf(kAlignments, format.alignment));
    const auto length = [this](std::string_view word, std::int32_t twips) {
        if (twips != 0) Word(word, twips);
    };
    length("fi", format.firstLine);
    length("li", format.left);
    length("ri", format.right);
    length("sb", format.spaceBefore);
    length("sa", format.spaceAfter);
    for (const TabStop& tab : format.tabs) {
        if (tab.kind != TabKind::Left) Word(NameOf(kTabKinds, tab.kind));
        Word("tx", tab.position);
    }
}

void Writer::Break(BreakKind kind) {
    Word(kind == BreakKind::Line ? "line" : "par");
    out_ += "\r\n";
    wordOpen_ = false;
}

void Writer::PictureData(const RichPicture& picture) {
    out_ += '{';
    Word("pict");
    Word(NameOf(kPictureKinds, picture.kind));
    if (picture.goalWidth > 0) Word("picwgoal", picture.goalWidth);
    if (picture.goalHeight > 0) Word("pichgoal", picture.goalHeight);
    constexpr char kDigits[] = "0123456789abcdef";
    const std::string_view bytes = picture.bytes ? std::string_view(*picture.bytes) : "";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i % kPictureBytesInALine == 0) out_ += "\r\n";
        const auto byte = static_cast<unsigned char>(bytes[i]);
        out_ += kDigits[byte >> 4];
        out_ += kDigits[byte & 15];
    }
    out_ += '}';
    wordOpen_ = false;
}

void Writer::Body() {
    std::size_t paragraph = 0;
    const auto& paragraphs = document_.Paragraphs();
    const auto& layouts = document_.ParaFormats();
    ParagraphFormat(layouts[paragraphs[0].format]);
    std::size_t unit = 0;
    for (const RichText::Run& run : document_.Runs()) {
        Look(document_.CharFormats()[run.format]);
        if (run.picture >= 0) {
            PictureData(document_.Pictures()[static_cast<std::size_t>(run.picture)]);
            ++unit;
            continue;
        }
        for (const std::size_t end = unit + run.length; unit < end; ++unit) {
            if (document_.Units()[unit] != kBreakUnit) {
                Unit(document_.Units()[unit]);
                continue;
            }
            Break(paragraphs[paragraph].end);
            const bool same = paragraphs[paragraph + 1].format == paragraphs[paragraph].format;
            ++paragraph;
            if (!same) ParagraphFormat(layouts[paragraphs[paragraph].format]);
        }
    }
    Look(document_.CharFormats()[document_.EndFormat()]);
}

std::string Writer::Header() {
    std::string body = std::move(out_);
    out_.clear();
    latin_ = false;  // names of fonts are not in any font's character set
    out_ = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl";
    for (std::size_t i = 0; i < fonts_.Values().size(); ++i) {
        const RichFont& font = document_.Fonts()[fonts_.Values()[i]];
        out_ += '{';
        Word("f", static_cast<std::int64_t>(i));
        Word("f" + std::string(NameOf(kFamilies, font.family)));
        Word("fcharset", font.charset);
        Text(UnitsOfUtf8(font.name));
        out_ += ";}";
    }
    out_ += "}\r\n";
    if (!colours_.Values().empty()) out_ += "{\\colortbl ;";
    for (const std::uint32_t colour : colours_.Values()) {
        Word("red", colour & 0xFF);
        Word("green", colour >> 8 & 0xFF);
        Word("blue", colour >> 16 & 0xFF);
        out_ += ';';
    }
    if (!colours_.Values().empty()) out_ += "}\r\n";
    out_ += "\\viewkind4\\uc1";
    return out_ + body + '}';
}

std::string Writer::Write() {
    out_.reserve(document_.Units().size() + document_.Units().size() / 8 + 256);
    Body();
    return Header();
}

}  // namespace

std::string WriteRtf(const RichText& document) {
    return Writer(document).Write();
}

}  // namespace larder
