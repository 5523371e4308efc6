#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/rtf/RichFormat.h"

namespace larder {

// How a paragraph ends. A line break inside a paragraph (\line) is held as a paragraph that ends
// with Line, so that both kinds of break count the same; it is written back as a line break.
enum class BreakKind : std::uint8_t { Paragraph, Line };

// The unit that stands for either kind of break, and the one that stands for a picture.
inline constexpr char16_t kBreakUnit = u'\u2029';
inline constexpr char16_t kPictureUnit = u'\uFFFC';

// A rich text document without a window.
//
// The content is one string of UTF-16 units. Each break is one unit (kBreakUnit), each picture
// is one unit (kPictureUnit), so an offset of a unit equals a position in a QTextDocument of the
// same content. Two lists divide the units:
//   runs        cover all units, breaks included, end to end; a picture is a run of its own
//   paragraphs  each holds its units and, but for the last, the break unit behind them; there is
//               always at least one, and the last, perhaps empty, one has no break
// Formats are kept once in tables and referred to by index; entries never change or move, so an
// index stays good for the life of the document.
//
// A "position" is a position of a rich text box: it counts from 0, and a break counts two (CR
// LF), as in Text(). A position between CR and LF, as the end of a range, takes the whole break
// in; elsewhere it stands for the place before the break. Positions beyond the end are the end.
class RichText {
  public:
    using FormatIndex = std::uint32_t;

    struct Run {
        std::uint32_t length = 0;  // units, never 0
        FormatIndex format = 0;
        std::int32_t picture = -1;  // index into Pictures(), -1: text
    };
    struct Paragraph {
        std::uint32_t length = 0;              // units without the break
        FormatIndex format = 0;                // index into ParaFormats()
        BreakKind end = BreakKind::Paragraph;  // of no meaning in the last paragraph
    };
    // A stretch of one run within one paragraph, break units left out.
    struct Piece {
        std::size_t paragraph = 0;
        std::size_t start = 0;  // unit
        std::size_t length = 0;
        FormatIndex format = 0;
        std::int32_t picture = -1;
    };

    // An empty document: one empty paragraph, one font, formats 0 as their structs begin.
    explicit RichText(RichFont defaultFont = {});

    // Plain Windows-1252 text: CR LF, CR and LF are a break each; other control characters than
    // the tab become blanks, so that positions in the text stay positions in the document.
    static RichText FromPlain(std::string_view text, CharFormat format = {},
                              RichFont defaultFont = {});

    // Content, to be walked.
    const std::u16string& Units() const { return units_; }
    const std::vector<Run>& Runs() const { return runs_; }
    const std::vector<Paragraph>& Paragraphs() const { return paragraphs_; }
    const std::vector<RichFont>& Fonts() const { return fonts_; }
    const std::vector<CharFormat>& CharFormats() const { return charFormats_; }
    const std::vector<ParaFormat>& ParaFormats() const { return paraFormats_; }
    const std::vector<RichPicture>& Pictures() const { return pictures_; }
    // The format in which text typed behind the last unit would appear.
    FormatIndex EndFormat() const { return endFormat_; }

    // Calls visit(const Piece&) for every piece in order; a paragraph without units has none.
    template <typename Visitor>
    void ForEachPiece(Visitor&& visit) const;

    // The index of an entry in the tables, which is added when it is new. Font numbers beyond
    // the table, sizes and lengths beyond their limits are brought within them.
    std::uint16_t InternFont(const RichFont& font);
    FormatIndex Intern(CharFormat format);
    FormatIndex Intern(ParaFormat format);

    // Building, from the front to the end. Text holds no break, picture or control units but the
    // tab: see CleanUnit.
    void Append(std::u16string_view text, FormatIndex format);
    void AppendPicture(RichPicture picture, FormatIndex format);
    // Ends the paragraph under way with a break and begins the next, of the same format.
    void AppendBreak(BreakKind kind, FormatIndex format);
    // Sets the format of the paragraph under way.
    void SetParagraphFormat(FormatIndex format) { paragraphs_.back().format = format; }
    // A line break ends no paragraph: gives the lines of one the format of its last. For the end of
    // the building.
    void LayLines();
    void SetEndFormat(FormatIndex format) { endFormat_ = format; }
    // Shows another picture in the place of the one with this index in Pictures().
    void SetPicture(std::size_t index, RichPicture picture);
    void Reserve(std::size_t units) { units_.reserve(units); }

    // The unit itself, or a blank for one that must not stand in a text.
    static char16_t CleanUnit(char16_t unit);

    // The text in Windows-1252, each break CR LF, each picture a blank, each unit that the code
    // page lacks '?'. An offset in it is a position.
    std::string Text() const;
    // The text in UTF-8, each break LF, pictures left out.
    std::string PlainUtf8() const;

    std::size_t Length() const { return units_.size() + paragraphs_.size() - 1; }  // positions
    std::size_t UnitAt(std::size_t position) const;  // the unit that a position stands before
    std::size_t PositionAt(std::size_t unit) const;

    // The part [from, to) as a document of its own. Its last paragraph keeps the layout of the
    // paragraph that it was cut from.
    RichText Cut(std::size_t from, std::size_t to) const;
    // Puts a document, or plain Windows-1252 text in the format found at `from`, in the place of
    // [from, to), and returns the position behind it. Paragraph layout belongs to the break that
    // ends a paragraph: it comes with the breaks that are put in, and goes with those that are
    // taken out. Text without a break put into an empty paragraph brings its layout along.
    std::size_t Replace(std::size_t from, std::size_t to, const RichText& with);
    std::size_t ReplaceText(std::size_t from, std::size_t to, std::string_view with);
    void Change(std::size_t from, std::size_t to, const CharChange& change);
    void ChangeParagraphs(std::size_t from, std::size_t to, const ParaChange& change);

    // The different formats in a range; never empty. An empty range has the one in which text
    // typed there would appear: that of the unit before it in its paragraph, else of the unit
    // behind it.
    std::vector<FormatIndex> FormatsIn(std::size_t from, std::size_t to) const;
    std::vector<FormatIndex> ParaFormatsIn(std::size_t from, std::size_t to) const;

  private:
    struct UnitRange {
        std::size_t from = 0;
        std::size_t to = 0;
    };
    struct CharHash {
        std::size_t operator()(const CharFormat& f) const;
    };
    struct ParaHash {
        std::size_t operator()(const ParaFormat& f) const;
    };

    std::size_t UnitFor(std::size_t position, std::size_t past) const;
    UnitRange UnitsOf(std::size_t from, std::size_t to) const;
    FormatIndex InsertionFormat(std::size_t unit) const;
    std::vector<std::size_t> ParagraphsOf(UnitRange range) const;
    void AppendRange(const RichText& from, UnitRange range);
    void AppendRun(std::uint32_t length, FormatIndex format);

    std::u16string units_;
    std::vector<Run> runs_;
    std::vector<Paragraph> paragraphs_{1};
    std::vector<RichFont> fonts_;
    std::vector<CharFormat> charFormats_;
    std::vector<ParaFormat> paraFormats_;
    std::vector<RichPicture> pictures_;
    FormatIndex endFormat_ = 0;
    std::unordered_map<CharFormat, FormatIndex, CharHash> charIndex_;
    std::unordered_map<ParaFormat, FormatIndex, ParaHash> paraIndex_;
};

template <typename Visitor>
void RichText::ForEachPiece(Visitor&& visit) const {
    std::size_t unit = 0;
    std::size_t run = 0;
    std::size_t left = runs_.empty() ? 0 : runs_[0].length;  // units of the run not yet walked
    const auto take = [&](std::size_t count) {
        unit += count;
        left -= count;
        if (left == 0 && ++run < runs_.size()) left = runs_[run].length;
    };
    for (std::size_t p = 0; p < paragraphs_.size(); ++p) {
        const std::size_t end = unit + paragraphs_[p].length;
        while (unit < end) {
            const std::size_t count = std::min(left, end - unit);
            visit(Piece{p, unit, count, runs_[run].format, runs_[run].picture});
            take(count);
        }
        if (p + 1 < paragraphs_.size()) take(1);
    }
}

}  // namespace larder
