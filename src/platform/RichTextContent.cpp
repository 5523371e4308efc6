#include "platform/RichTextContent.h"

#include <algorithm>
#include <utility>

#include "platform/rtf/Rtf.h"
#include "platform/rtf/TextSearch.h"

namespace larder {

namespace {

using Change = RichTextContent::Change;

bool WithinBreak(const std::string& text, std::size_t position) {
    return position > 0 && position < text.size() && text[position - 1] == '\r' &&
           text[position] == '\n';
}

}  // namespace

Change RichTextContent::SetRtf(std::string rtf) {
    rtf_ = std::move(rtf);
    document_.reset();
    text_.reset();
    from_ = to_ = 0;
    next_ = {};
    return {Change::Kind::Whole, 0, 0, 0};
}

Change RichTextContent::SetPlain(std::string_view text) {
    const Change change = SetRtf({});
    document_ = RichText::FromPlain(text);
    return change;
}

void RichTextContent::Refresh(RichText document) {
    SetRtf({});
    document_ = std::move(document);
}

const RichText& RichTextContent::Document() const {
    if (!document_) {
        document_ = ReadRtf(rtf_);
        if (!document_) document_ = RichText::FromPlain(rtf_);
        rtf_ = {};
    }
    return *document_;
}

RichText& RichTextContent::Editable() {
    Document();
    text_.reset();
    return *document_;
}

const std::string& RichTextContent::Text() const {
    if (!text_) text_ = Document().Text();
    return *text_;
}

std::string RichTextContent::Rtf() const {
    return WriteRtf(Document());
}

void RichTextContent::Select(std::size_t from, std::size_t to) {
    next_ = {};
    from_ = to_ = 0;
    if (from == 0 && to == 0) return;  // so that a box nobody looks into reads no RTF
    const std::string& text = Text();
    from_ = std::min(from, text.size());
    if (WithinBreak(text, from_)) --from_;
    to_ = from;
    if (to <= from) {
        to_ = from_;
        return;
    }
    to_ = std::min(to, text.size());
    if (WithinBreak(text, to_)) ++to_;
}

std::ptrdiff_t RichTextContent::Find(std::string_view what, std::size_t from, std::size_t to,
                                     int options) {
    const std::ptrdiff_t found = FindInText(Text(), what, from, to, options);
    if (found < 0) return found;
    Select(static_cast<std::size_t>(found), static_cast<std::size_t>(found) + what.size());
    return static_cast<std::ptrdiff_t>(from_);
}

void RichTextContent::Span(std::string characters, bool forward, bool negate) {
    if (characters.find_first_of("\r\n") != std::string::npos) characters += "\r\n";
    const TextRange range = SpanOf(Text(), forward ? from_ : to_, characters, forward, negate);
    Select(range.from, range.to);
}

std::string RichTextContent::SelectedText() const {
    return HasSelection() ? Text().substr(from_, to_ - from_) : std::string();
}

RichText RichTextContent::Selected() const {
    return Document().Cut(from_, to_);
}

Change RichTextContent::ReplaceSelection(std::string_view text) {
    const CharChange next = next_;
    const CharFormat format = Next();
    RichText& document = Editable();
    Change change{Change::Kind::Text, document.UnitAt(from_), document.UnitAt(to_), 0};
    const std::size_t end = document.ReplaceText(from_, to_, text);
    document.Change(from_, end, next);
    Replaced(end);
    change.newTo = document.UnitAt(end);
    if (!text.empty()) GoOnIn(format, next.font);
    return change;
}

// In a new paragraph without text, typing goes on as in the one before.
void RichTextContent::GoOnIn(const CharFormat& format, const std::optional<RichFont>& font) {
    const std::string& text = Text();
    const bool behindBreak = from_ > 0 && text[from_ - 1] == '\n';
    const bool beforeBreak = from_ == text.size() || text[from_] == '\r';
    if (!behindBreak || !beforeBreak) return;
    next_ = {font ? font : Document().Fonts()[format.font],
             format.halfPoints,
             format.colour,
             format.highlight,
             format.bold,
             format.italic,
             format.underline,
             format.strike,
             format.script};
}

Change RichTextContent::ReplaceSelection(const RichText& with) {
    RichText& document = Editable();
    Change change{Change::Kind::Text, document.UnitAt(from_), document.UnitAt(to_), 0};
    const std::size_t end = document.Replace(from_, to_, with);
    Replaced(end);
    change.newTo = document.UnitAt(end);
    return change;
}

Change RichTextContent::ReplaceSelection(std::u16string_view units) {
    CharFormat format = Formats().front();
    RichText text(NextFont());
    format.font = 0;
    const RichText::FormatIndex index = text.Intern(format);
    text.SetEndFormat(index);
    text.SetParagraphFormat(text.Intern(Layouts().front()));
    const CharFormat next = Next();
    const std::optional<RichFont> font = text.Fonts().front();
    for (std::size_t i = 0; i < units.size(); ++i) {
        const bool pair = units[i] == u'\r' && i + 1 < units.size() && units[i + 1] == u'\n';
        if (pair) ++i;
        if (units[i] == u'\r' || units[i] == u'\n' || units[i] == kBreakUnit) {
            text.AppendBreak(BreakKind::Paragraph, index);
        } else {
            const char16_t unit = RichText::CleanUnit(units[i]);
            text.Append({&unit, 1}, index);
        }
    }
    const Change change = ReplaceSelection(text);
    if (!units.empty()) GoOnIn(next, font);
    return change;
}

void RichTextContent::Replaced(std::size_t end) {
    from_ = to_ = end;
    next_ = {};
}

Change RichTextContent::Format(const CharChange& change) {
    if (!HasSelection()) {
        const auto lay = [](auto& field, const auto& with) {
            if (with) field = with;
        };
        lay(next_.font, change.font);
        lay(next_.halfPoints, change.halfPoints);
        lay(next_.colour, change.colour);
        lay(next_.highlight, change.highlight);
        lay(next_.bold, change.bold);
        lay(next_.italic, change.italic);
        lay(next_.underline, change.underline);
        lay(next_.strike, change.strike);
        lay(next_.script, change.script);
        return {};
    }
    Document();
    document_->Change(from_, to_, change);
    const std::size_t to = document_->UnitAt(to_);
    return {Change::Kind::Characters, document_->UnitAt(from_), to, to};
}

Change RichTextContent::Lay(const ParaChange& change) {
    Document();
    document_->ChangeParagraphs(from_, to_, change);
    const std::size_t to = document_->UnitAt(to_);
    return {Change::Kind::Paragraphs, document_->UnitAt(from_), to, to};
}

std::vector<CharFormat> RichTextContent::Formats() const {
    const RichText& document = Document();
    std::vector<CharFormat> formats;
    for (const RichText::FormatIndex index : document.FormatsIn(from_, to_)) {
        formats.push_back(document.CharFormats()[index]);
    }
    if (HasSelection()) return formats;
    // What is to come next, laid over what stands at the caret.
    CharFormat& format = formats.front();
    format.halfPoints = next_.halfPoints.value_or(format.halfPoints);
    format.colour = next_.colour.value_or(format.colour);
    format.highlight = next_.highlight.value_or(format.highlight);
    format.bold = next_.bold.value_or(format.bold);
    format.italic = next_.italic.value_or(format.italic);
    format.underline = next_.underline.value_or(format.underline);
    format.strike = next_.strike.value_or(format.strike);
    format.script = next_.script.value_or(format.script);
    return formats;
}

std::vector<ParaFormat> RichTextContent::Layouts() const {
    const RichText& document = Document();
    std::vector<ParaFormat> formats;
    for (const RichText::FormatIndex index : document.ParaFormatsIn(from_, to_)) {
        formats.push_back(document.ParaFormats()[index]);
    }
    return formats;
}

}  // namespace larder
