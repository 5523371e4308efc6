#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace larder {

// The family class of a font, for choosing a stand-in when the font is not installed.
enum class FontFamily : std::uint8_t {
    Nil,
    Roman,
    Swiss,
    Modern,
    Script,
    Decorative,
    Technical,
    Bidirectional
};

// The character set numbers that the code gives a meaning to; any other value is carried along.
namespace charset {
inline constexpr std::uint8_t Ansi = 0;
inline constexpr std::uint8_t Default = 1;
inline constexpr std::uint8_t Symbol = 2;
}  // namespace charset

struct RichFont {
    std::string name = "Times New Roman";  // UTF-8
    FontFamily family = FontFamily::Roman;
    std::uint8_t charset = charset::Ansi;  // never Symbol: such text is read into plain Unicode

    bool operator==(const RichFont&) const = default;
};

// The colour of text without a colour of its own, and the highlight of text without one.
inline constexpr std::uint32_t kAutomaticColour = 0xFFFFFFFF;

enum class Script : std::uint8_t { Normal, Super, Sub };

// The look of a run of text.
struct CharFormat {
    std::uint16_t font = 0;                      // index into RichText::Fonts()
    std::uint16_t halfPoints = 24;               // size in half-points, 1 to kMostHalfPoints
    std::uint32_t colour = kAutomaticColour;     // red in the low byte
    std::uint32_t highlight = kAutomaticColour;  // red in the low byte
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    Script script = Script::Normal;

    bool operator==(const CharFormat&) const = default;
};

inline constexpr std::uint16_t kMostHalfPoints = 3276;  // 1638 points, the most of a font dialog

enum class Alignment : std::uint8_t { Left, Right, Centre, Justify };
enum class TabKind : std::uint8_t { Left, Right, Centre, Decimal };

struct TabStop {
    std::int32_t position = 0;  // twips from the left edge of the text
    TabKind kind = TabKind::Left;

    bool operator==(const TabStop&) const = default;
};

// The layout of a paragraph. Lengths in twips, at most kMostTwips either way.
struct ParaFormat {
    Alignment alignment = Alignment::Left;
    std::int32_t left = 0;
    std::int32_t right = 0;
    std::int32_t firstLine = 0;  // relative to left; negative hangs
    std::int32_t spaceBefore = 0;
    std::int32_t spaceAfter = 0;
    std::vector<TabStop> tabs;  // at most kMostTabs, by position

    bool operator==(const ParaFormat&) const = default;
};

inline constexpr std::int32_t kMostTwips = 31680;  // 22 inches, the widest page there is
inline constexpr std::size_t kMostTabs = 32;

// Some fields of a character format, to be laid over the formats of a range.
struct CharChange {
    std::optional<RichFont> font = std::nullopt;
    std::optional<std::uint16_t> halfPoints = std::nullopt;
    std::optional<std::uint32_t> colour = std::nullopt;
    std::optional<std::uint32_t> highlight = std::nullopt;
    std::optional<bool> bold = std::nullopt;
    std::optional<bool> italic = std::nullopt;
    std::optional<bool> underline = std::nullopt;
    std::optional<bool> strike = std::nullopt;
    std::optional<Script> script = std::nullopt;
};

// Some fields of a paragraph format, to be laid over the paragraphs that a range touches.
struct ParaChange {
    std::optional<Alignment> alignment = std::nullopt;
    std::optional<std::int32_t> left = std::nullopt;
    std::optional<std::int32_t> right = std::nullopt;
    std::optional<std::int32_t> firstLine = std::nullopt;
    std::optional<std::int32_t> spaceBefore = std::nullopt;
    std::optional<std::int32_t> spaceAfter = std::nullopt;
    std::optional<std::vector<TabStop>> tabs = std::nullopt;
};

// A dib is the bytes of a bitmap file without its file header. An unreadable picture (a metafile,
// damaged data) keeps its place and size, but no bytes.
enum class PictureKind : std::uint8_t { Png, Jpeg, Dib, Placeholder };

struct RichPicture {
    PictureKind kind = PictureKind::Placeholder;
    std::shared_ptr<const std::string> bytes;  // shared by copies of a document; null: none
    std::int32_t goalWidth = 0;                // twips on paper; 0: by the picture itself
    std::int32_t goalHeight = 0;
};

}  // namespace larder
