#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/rtf/RichText.h"

namespace larder {

// What a rich text box holds, without a screen: the document, the selection, and the format of
// what is typed next. All positions are those of Text(), where a break counts two.
//
// The document is made of the RTF when it is first asked for, and the plain text once for each
// state of the document.
class RichTextContent {
  public:
    // What an operation did to the document, in its units.
    struct Change {
        enum class Kind { Nothing, Whole, Text, Characters, Paragraphs };
        Kind kind = Kind::Nothing;
        std::size_t from = 0;
        std::size_t oldTo = 0;  // end of the range before the change
        std::size_t newTo = 0;  // and after it
    };

    // The whole content. What is not RTF is plain text.
    Change SetRtf(std::string rtf);
    Change SetPlain(std::string_view text);
    // The document as the screen has it after the user changed it. The selection is to be set.
    void Refresh(RichText document);

    const RichText& Document() const;
    const std::string& Text() const;
    std::string Rtf() const;

    // The selection, always outside of breaks: a position between CR and LF counts as before the
    // break at the start of the selection and as behind it at the end.
    std::size_t From() const { return from_; }
    std::size_t To() const { return to_; }
    bool HasSelection() const { return from_ < to_; }
    // Keeps both within the text. Forgets the format of what is typed next.
    void Select(std::size_t from, std::size_t to);
    // The format in which the user's next character will appear, where the screen knows better.
    void SetNext(const CharChange& next) { next_ = next; }
    // Selects what is found; a `to` beyond the end is the end. -1 leaves the selection.
    std::ptrdiff_t Find(std::string_view what, std::size_t from, std::size_t to, int options);
    // A break belongs to the characters when either of its two does.
    void Span(std::string characters, bool forward, bool negate);

    std::string SelectedText() const;
    RichText Selected() const;
    // These leave the caret behind what was put in.
    Change ReplaceSelection(std::string_view text);
    Change ReplaceSelection(const RichText& document);
    // Takes text of other programs, which the code page may lack.
    Change ReplaceSelection(std::u16string_view units);

    // On an empty selection, the format of what is typed next: no change of the document.
    Change Format(const CharChange& change);
    // The paragraphs that the selection touches; a line break does not end one.
    Change Lay(const ParaChange& change);
    // Never empty.
    std::vector<CharFormat> Formats() const;
    std::vector<ParaFormat> Layouts() const;
    // The format of what is typed next, at the caret or in the place of the selection.
    CharFormat Next() const { return Formats().front(); }
    RichFont NextFont() const { return next_.font.value_or(Document().Fonts()[Next().font]); }

  private:
    RichText& Editable();
    void Replaced(std::size_t end);
    void GoOnIn(const CharFormat& format, const std::optional<RichFont>& font);

    mutable std::optional<RichText> document_ = RichText();
    mutable std::string rtf_;  // in the place of the document until that is asked for
    mutable std::optional<std::string> text_;
    std::size_t from_ = 0;
    std::size_t to_ = 0;
    CharChange next_;
};

}  // namespace larder
