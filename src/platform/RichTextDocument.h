#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/rtf/RichText.h"

class QTextCharFormat;
class QTextDocument;

namespace larder {

// A rich text in Qt's document: a unit of the one is a position of the other. A line break is a
// line separator within a block. For the Qt side of the platform layer only.
class RichTextDocument {
  public:
    // The document stays the caller's. `dotsPerInch` is what the screen takes for an inch.
    RichTextDocument(QTextDocument& document, double dotsPerInch);

    // Puts the text in the place of all that the document holds, and of its history.
    void Build(const RichText& text);

    // Changes that the text has undergone already, in its units; each is one step for Undo.
    // Splice tells whether the step ends with the layout of paragraphs.
    bool Splice(const RichText& text, std::size_t from, std::size_t oldTo, std::size_t newTo);
    void FormatCharacters(const RichText& text, std::size_t from, std::size_t to);
    void FormatParagraphs(const RichText& text, std::size_t from, std::size_t to);

    // The document as it stands after the user worked in it. `before` is the text as it was last
    // known: its fonts keep their numbers, and its end the format, which Qt does not know, unless
    // the user has typed there.
    RichText Read(const RichText& before, bool endTyped) const;

    // The format of the break that ends the block at this position, which is how text typed into
    // an empty paragraph appears; nothing in the last block.
    std::optional<QTextCharFormat> BreakFormat(int position) const;
    double DotsPerInch() const { return dotsPerInch_; }

  private:
    class Writer;

    QTextDocument& document_;
    double dotsPerInch_;
    std::vector<RichPicture> pictures_;  // all since the last Build: Undo may bring them back
};

// What text of other programs that names no font or no size has in their place.
struct RichTextBase {
    RichFont font;
    std::uint16_t halfPoints = 24;
};

// Text of other programs: lists with their labels, cells of a table divided by tabs, without
// pictures. Headings and the like are larger or smaller than the base as they are to the default
// font of that document, which is in points.
RichText RichTextOf(const QTextDocument& foreign, const RichTextBase& base, double dotsPerInch);

}  // namespace larder
