#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/rtf/RichText.h"
#include "platform/rtf/RtfCodePages.h"
#include "platform/rtf/RtfFontTable.h"
#include "platform/rtf/RtfPicture.h"
#include "platform/rtf/RtfState.h"
#include "platform/rtf/RtfTokenizer.h"

namespace larder {

// Carries out the control words of a document on a RichText. Made for one document.
class RtfInterpreter {
  public:
    explicit RtfInterpreter(std::string_view rtf);

    RichText Run();

  private:
    // A control word carries out `handler` with the number behind it, or with `value` when there
    // is none or the word is `fixed`.
    struct ControlWord {
        std::string_view name;
        void (RtfInterpreter::*handler)(int);
        int value;
        bool fixed = false;
    };
    struct ControlWords;  // the table of all of them
    static const ControlWord* Find(std::string_view name);

    RtfState& State() { return states_.back(); }

    // Tokens.
    void Take(const RtfToken& token);
    bool SkippedForUnicode(RtfToken& token);
    void OpenGroup();
    void CloseGroup();
    void TakeWord(const RtfToken& token);
    void TakeSymbol(char symbol);
    void TakeBinary(std::string_view bytes);

    // Text, to wherever the group's text goes.
    void TakeText(std::string_view bytes);
    void TakeByte(unsigned char byte);
    void TakeUnits(std::u16string_view units);
    void BodyText(std::string_view bytes);
    void BodyUnit(char16_t unit);
    void FontText(std::string_view bytes);
    void ColourText(std::string_view bytes);
    void EndColour();
    void Emit(std::u16string_view units);
    void EmitBreak(BreakKind kind);
    bool TakesBody() { return State().destination == RtfDestination::Body && !State().hidden; }
    void PrepareText();
    void PrepareParagraph();
    void EndCellBefore();
    void EndPicture();
    void Finish();

    // Handlers: the document.
    void SetDefaultFont(int number);
    void SetCodePage(int codePage);
    void SetUnicodeSkip(int count);
    void Unicode(int number);

    // Handlers: destinations.
    void Skip(int);
    void ReadOn(int);
    void BeginFontTable(int);
    void BeginColourTable(int);
    void BeginPicture(int);
    void BeginAlternatives(int);
    void TakeUnicodeAlternative(int);

    // Handlers: characters and breaks.
    void Character(int unit);
    void Paragraph(int);
    void Line(int);
    void SoftEnd(int);
    void Cell(int);
    void Row(int);

    // Handlers: character formats.
    void PlainFormat(int);
    void Font(int number);
    void Size(int halfPoints);
    void Bold(int on);
    void Italic(int on);
    void Underline(int on);
    void Strike(int on);
    void Hidden(int on);
    void Capitals(int on);
    void Colour(int index);
    void Highlight(int index);
    void Super(int on);
    void Sub(int on);
    void Raise(int halfPoints);
    void Lower(int halfPoints);
    void NormalScript(int);
    void SetScript(Script script);
    std::uint32_t ColourAt(int index) const;

    // Handlers: paragraph formats.
    void PlainParagraph(int);
    void Align(int alignment);
    void LeftIndent(int twips);
    void RightIndent(int twips);
    void FirstIndent(int twips);
    void SpaceBefore(int twips);
    void SpaceAfter(int twips);
    void NextTab(int kind);
    void Tab(int twips);

    // Handlers: entries of the font and colour tables.
    void Family(int family);
    void Charset(int charset);
    void FontCodePage(int codePage);
    void Red(int value);
    void Green(int value);
    void Blue(int value);
    void ColourPart(int shift, int value);

    // Handlers: pictures.
    void Kind(int kind);
    void PictureWidth(int value);
    void PictureHeight(int value);
    void GoalWidth(int twips);
    void GoalHeight(int twips);
    void ScaleX(int percent);
    void ScaleY(int percent);

    RtfTokenizer tokenizer_;
    RichText document_;
    std::vector<RtfState> states_;

    RtfFontTable fonts_;
    std::vector<std::uint32_t> colours_;
    std::uint32_t colour_ = kAutomaticColour;  // the entry under way
    RtfPicture picture_;
    RtfDecoders decoders_;
    int documentPage_ = kCodePageLatin;
    int defaultFont_ = 0;

    // What PrepareText made of the state, good while charsChanged_ is false.
    bool charsChanged_ = true;
    bool paragraphChanged_ = true;
    RichText::FormatIndex format_ = 0;
    RtfDecoder* decoder_ = nullptr;  // of the bytes of the text
    SymbolFont symbol_ = SymbolFont::None;

    int toSkip_ = 0;          // tokens that stand for a \u character in older readers
    bool cellEnded_ = false;  // a tab is due before the next cell of the row
    std::u16string units_;    // room for decoding
};

}  // namespace larder
