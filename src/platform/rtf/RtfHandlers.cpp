// What the control words do.

#include <algorithm>

#include "platform/rtf/RtfInterpreter.h"
#include "platform/rtf/Utf.h"

namespace larder {

// The document

void RtfInterpreter::SetDefaultFont(int number) {
    defaultFont_ = number;
    charsChanged_ = true;
}

void RtfInterpreter::SetCodePage(int codePage) {
    documentPage_ = codePage > 0 ? codePage : kCodePageLatin;
    charsChanged_ = true;
}

void RtfInterpreter::SetUnicodeSkip(int count) {
    State().unicodeSkip = std::max(count, 0);
}

void RtfInterpreter::Unicode(int number) {
    toSkip_ = State().unicodeSkip;
    std::u16string units;
    AppendCodePoint(units, static_cast<char32_t>(number < 0 ? number + 0x10000 : number));
    TakeUnits(units);
}

// Destinations

void RtfInterpreter::Skip(int) {
    tokenizer_.SkipGroup();
}

void RtfInterpreter::ReadOn(int) {}

void RtfInterpreter::BeginFontTable(int) {
    State().destination = RtfDestination::FontTable;
}

void RtfInterpreter::BeginColourTable(int) {
    State().destination = RtfDestination::ColourTable;
}

void RtfInterpreter::BeginPicture(int) {
    State().destination = RtfDestination::Picture;
    picture_ = RtfPicture();
}

void RtfInterpreter::BeginAlternatives(int) {
    State().offersUnicode = true;
}

void RtfInterpreter::TakeUnicodeAlternative(int) {
    State().destination = states_[states_.size() - 2].destination;
}

// Characters and breaks

void RtfInterpreter::Character(int unit) {
    const auto only = static_cast<char16_t>(unit);
    TakeUnits(std::u16string_view(&only, 1));
}

void RtfInterpreter::Paragraph(int) {
    EmitBreak(BreakKind::Paragraph);
}

void RtfInterpreter::Line(int) {
    EmitBreak(BreakKind::Line);
}

// A page, column or section ends a paragraph that is under way, but makes no empty one.
void RtfInterpreter::SoftEnd(int) {
    if (document_.Paragraphs().back().length > 0) EmitBreak(BreakKind::Paragraph);
}

void RtfInterpreter::Cell(int) {
    if (!TakesBody()) return;
    PrepareText();
    if (cellEnded_) PrepareParagraph();
    EndCellBefore();
    cellEnded_ = true;
}

void RtfInterpreter::Row(int) {
    if (!TakesBody()) return;
    cellEnded_ = false;
    EmitBreak(BreakKind::Paragraph);
}

// Character formats

void RtfInterpreter::PlainFormat(int) {
    RtfState& state = State();
    state.font = -1;
    state.chars = CharFormat();
    state.hidden = false;
    state.capitals = false;
    charsChanged_ = true;
}

void RtfInterpreter::Font(int number) {
    if (State().destination == RtfDestination::FontTable) return fonts_.Begin(number);
    State().font = number;
    charsChanged_ = true;
}

void RtfInterpreter::Size(int halfPoints) {
    const int usual = CharFormat().halfPoints;
    State().chars.halfPoints = static_cast<std::uint16_t>(
        halfPoints > 0 ? std::min<int>(halfPoints, kMostHalfPoints) : usual);
    charsChanged_ = true;
}

void RtfInterpreter::Bold(int on) {
    State().chars.bold = on != 0;
    charsChanged_ = true;
}

void RtfInterpreter::Italic(int on) {
    State().chars.italic = on != 0;
    charsChanged_ = true;
}

void RtfInterpreter::Underline(int on) {
    State().chars.underline = on != 0;
    charsChanged_ = true;
}

void RtfInterpreter::Strike(int on) {
    State().chars.strike = on != 0;
    charsChanged_ = true;
}

void RtfInterpreter::Hidden(int on) {
    State().hidden = on != 0;
}

void RtfInterpreter::Capitals(int on) {
    State().capitals = on != 0;
}

void RtfInterpreter::Colour(int index) {
    State().chars.colour = ColourAt(index);
    charsChanged_ = true;
}

void RtfInterpreter::Highlight(int index) {
    State().chars.highlight = ColourAt(index);
    charsChanged_ = true;
}

std::uint32_t RtfInterpreter::ColourAt(int index) const {
    const bool known = index >= 0 && static_cast<std::size_t>(index) < colours_.size();
    return known ? colours_[static_cast<std::size_t>(index)] : kAutomaticColour;
}

void RtfInterpreter::Super(int on) {
    SetScript(on != 0 ? Script::Super : Script::Normal);
}

void RtfInterpreter::Sub(int on) {
    SetScript(on != 0 ? Script::Sub : Script::Normal);
}

void RtfInterpreter::Raise(int halfPoints) {
    SetScript(halfPoints > 0 ? Script::Super : Script::Normal);
}

void RtfInterpreter::Lower(int halfPoints) {
    SetScript(halfPoints > 0 ? Script::Sub : Script::Normal);
}

void RtfInterpreter::NormalScript(int) {
    SetScript(Script::Normal);
}

void RtfInterpreter::SetScript(Script script) {
    State().chars.script = script;
    charsChanged_ = true;
}

// Paragraph formats

void RtfInterpreter::PlainParagraph(int) {
    State().paragraph = ParaFormat();
    State().nextTab = TabKind::Left;
    paragraphChanged_ = true;
}

void RtfInterpreter::Align(int alignment) {
    State().paragraph.alignment = static_cast<Alignment>(alignment);
    paragraphChanged_ = true;
}

void RtfInterpreter::LeftIndent(int twips) {
    State().paragraph.left = twips;
    paragraphChanged_ = true;
}

void RtfInterpreter::RightIndent(int twips) {
    State().paragraph.right = twips;
    paragraphChanged_ = true;
}

void RtfInterpreter::FirstIndent(int twips) {
    State().paragraph.firstLine = twips;
    paragraphChanged_ = true;
}

void RtfInterpreter::SpaceBefore(int twips) {
    State().paragraph.spaceBefore = twips;
    paragraphChanged_ = true;
}

void RtfInterpreter::SpaceAfter(int twips) {
    State().paragraph.spaceAfter = twips;
    paragraphChanged_ = true;
}

void RtfInterpreter::NextTab(int kind) {
    State().nextTab = static_cast<TabKind>(kind);
}

void RtfInterpreter::Tab(int twips) {
    RtfState& state = State();
    if (state.paragraph.tabs.size() < kMostTabs) {
        state.paragraph.tabs.push_back({twips, state.nextTab});
    }
    state.nextTab = TabKind::Left;
    paragraphChanged_ = true;
}

// Entries of the font and colour tables

void RtfInterpreter::Family(int family) {
    fonts_.SetFamily(static_cast<FontFamily>(family));
}

void RtfInterpreter::Charset(int charset) {
    fonts_.SetCharset(charset);
}

void RtfInterpreter::FontCodePage(int codePage) {
    fonts_.SetCodePage(codePage);
}

void RtfInterpreter::Red(int value) {
    ColourPart(0, value);
}

void RtfInterpreter::Green(int value) {
    ColourPart(8, value);
}

void RtfInterpreter::Blue(int value) {
    ColourPart(16, value);
}

void RtfInterpreter::ColourPart(int shift, int value) {
    if (colour_ == kAutomaticColour) colour_ = 0;
    const auto part = static_cast<std::uint32_t>(std::clamp(value, 0, 255));
    colour_ = (colour_ & ~(0xFFu << shift)) | part << shift;
}

// Pictures

void RtfInterpreter::Kind(int kind) {
    picture_.SetKind(static_cast<PictureKind>(kind));
}

void RtfInterpreter::PictureWidth(int value) {
    picture_.Set(RtfPicture::Measure::Width, value);
}

void RtfInterpreter::PictureHeight(int value) {
    picture_.Set(RtfPicture::Measure::Height, value);
}

void RtfInterpreter::GoalWidth(int twips) {
    picture_.Set(RtfPicture::Measure::GoalWidth, twips);
}

void RtfInterpreter::GoalHeight(int twips) {
    picture_.Set(RtfPicture::Measure::GoalHeight, twips);
}

void RtfInterpreter::ScaleX(int percent) {
    picture_.Set(RtfPicture::Measure::ScaleX, percent);
}

void RtfInterpreter::ScaleY(int percent) {
    picture_.Set(RtfPicture::Measure::ScaleY, percent);
}

}  // namespace larder
