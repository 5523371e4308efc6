#include "platform/rtf/RtfInterpreter.h"

#include <algorithm>

#include "platform/rtf/Utf.h"

namespace larder {

namespace {

// Groups within more groups than this are passed over.
constexpr std::size_t kMostDepth = 1000;

// Word processors give the glyphs of symbol fonts as the 256 private characters from here on.
constexpr char16_t kPrivateSymbols = 0xF000;

}  // namespace

RtfInterpreter::RtfInterpreter(std::string_view rtf) : tokenizer_(rtf), states_(1) {
    // Half of an ordinary document is text; a longer one grows, and pages not written cost nothing.
    document_.Reserve(rtf.size() / 2);
}

RichText RtfInterpreter::Run() {
    for (RtfToken token = tokenizer_.Next(); token.kind != RtfToken::Kind::End;
         token = tokenizer_.Next()) {
        const bool endsDocument = token.kind == RtfToken::Kind::GroupClose && states_.size() <= 2;
        if (endsDocument) break;
        if (!SkippedForUnicode(token)) Take(token);
    }
    while (states_.size() > 2)
        CloseGroup();
    Finish();
    return std::move(document_);
}

void RtfInterpreter::Finish() {
    if (document_.Paragraphs().back().length == 0) PrepareParagraph();
    PrepareText();
    document_.LayLines();
    document_.SetEndFormat(format_);
}

void RtfInterpreter::Take(const RtfToken& token) {
    using Kind = RtfToken::Kind;
    const bool isText = token.kind == Kind::Text || token.kind == Kind::HexByte;
    if (!isText && decoder_ && !decoder_->IsSingleByte()) decoder_->Reset();
    switch (token.kind) {
        case Kind::GroupOpen:
            return OpenGroup();
        case Kind::GroupClose:
            return CloseGroup();
        case Kind::Text:
            return TakeText(token.text);
        case Kind::Tab:
            return TakeUnits(u"\t");
        case Kind::Word:
            return TakeWord(token);
        case Kind::Symbol:
            return TakeSymbol(token.text[0]);
        case Kind::HexByte:
            return TakeByte(static_cast<unsigned char>(token.number));
        case Kind::Binary:
            return TakeBinary(token.text);
        case Kind::End:
            return;
    }
}

// Behind a \u character stand one or more characters for readers that do not know \u. Of words,
// only those that are a character can be one of them: a writer that forgot the character must
// not cost a paragraph's end.
bool RtfInterpreter::SkippedForUnicode(RtfToken& token) {
    using Kind = RtfToken::Kind;
    if (toSkip_ == 0) return false;
    switch (token.kind) {
        case Kind::GroupOpen:
        case Kind::GroupClose:
        case Kind::End:
            toSkip_ = 0;
            return false;
        case Kind::Text: {
            const std::size_t skipped =
                std::min(token.text.size(), static_cast<std::size_t>(toSkip_));
            token.text.remove_prefix(skipped);
            toSkip_ -= static_cast<int>(skipped);
            return token.text.empty();
        }
        case Kind::Word: {
            const ControlWord* word = Find(token.text);
            if (!word || word->handler != &RtfInterpreter::Character || word->value == u'\t') {
                toSkip_ = 0;
                return false;
            }
            break;
        }
        default:
            break;
    }
    --toSkip_;
    return true;
}

void RtfInterpreter::OpenGroup() {
    if (states_.size() > kMostDepth) {
        tokenizer_.SkipGroup();
        tokenizer_.Next();  // the brace that closes it
        return;
    }
    states_.push_back(states_.back());
    RtfState& state = State();
    if (state.offersUnicode) state.destination = RtfDestination::Nothing;
    state.offersUnicode = false;
    state.ignorable = false;
}

void RtfInterpreter::CloseGroup() {
    const RtfDestination inner = State().destination;
    states_.pop_back();
    charsChanged_ = true;
    paragraphChanged_ = true;
    if (inner == State().destination) return;
    if (inner == RtfDestination::FontTable) fonts_.End();
    if (inner == RtfDestination::Picture) EndPicture();
}

void RtfInterpreter::TakeWord(const RtfToken& token) {
    const ControlWord* word = Find(token.text);
    const bool ignorable = State().ignorable;
    State().ignorable = false;
    if (word) {
        (this->*word->handler)(token.hasNumber && !word->fixed ? token.number : word->value);
    } else if (ignorable) {
        tokenizer_.SkipGroup();
    }
}

void RtfInterpreter::TakeSymbol(char symbol) {
    switch (symbol) {
        case '\\':
        case '{':
        case '}':
            return TakeText(std::string_view(&symbol, 1));
        case '~':
            return TakeUnits(u"\u00A0");
        case '-':
            return TakeUnits(u"\u00AD");
        case '_':
            return TakeUnits(u"\u2011");
        case '\t':
            return TakeUnits(u"\t");
        case '\r':
        case '\n':
            return Paragraph(0);
        case '*':
            State().ignorable = true;
            return;
        default:
            return;
    }
}

void RtfInterpreter::TakeBinary(std::string_view bytes) {
    if (State().destination == RtfDestination::Picture) picture_.AddBinary(bytes);
}

void RtfInterpreter::TakeText(std::string_view bytes) {
    switch (State().destination) {
        case RtfDestination::Body:
            return BodyText(bytes);
        case RtfDestination::FontTable:
            return FontText(bytes);
        case RtfDestination::ColourTable:
            return ColourText(bytes);
        case RtfDestination::Picture:
            return picture_.AddHex(bytes);
        case RtfDestination::Nothing:
            return;
    }
}

void RtfInterpreter::TakeByte(unsigned char byte) {
    const char c = static_cast<char>(byte);
    if (byte >= 0x20) return TakeText(std::string_view(&c, 1));
    const char16_t unit = byte;
    TakeUnits(std::u16string_view(&unit, 1));
}

void RtfInterpreter::TakeUnits(std::u16string_view units) {
    for (const char16_t unit : units) {
        if (State().destination == RtfDestination::Body) BodyUnit(unit);
        if (State().destination == RtfDestination::FontTable) fonts_.AddToName(unit);
    }
}

void RtfInterpreter::BodyText(std::string_view bytes) {
    if (State().hidden) return;
    PrepareText();
    units_.clear();
    if (symbol_ != SymbolFont::None) {
        for (const char c : bytes)
            units_ += SymbolUnit(symbol_, static_cast<unsigned char>(c));
    } else if (decoder_->IsSingleByte()) {
        units_.resize(bytes.size());
        const auto& table = decoder_->Units();
        std::transform(bytes.begin(), bytes.end(), units_.begin(),
                       [&table](char c) { return table[static_cast<unsigned char>(c)]; });
    } else {
        for (const char c : bytes)
            decoder_->Feed(static_cast<unsigned char>(c), units_);
        std::erase_if(units_, [](char16_t unit) { return RichText::CleanUnit(unit) != unit; });
    }
    if (State().capitals) std::transform(units_.begin(), units_.end(), units_.begin(), CapitalOf);
    Emit(units_);
}

void RtfInterpreter::BodyUnit(char16_t unit) {
    if (!TakesBody()) return;
    PrepareText();
    const bool isSymbol = unit > kPrivateSymbols + 0x1F && unit < kPrivateSymbols + 0x100;
    if (isSymbol) unit = symbol_ == SymbolFont::None ? unit : SymbolUnit(symbol_, unit & 0xFF);
    if (State().capitals) unit = CapitalOf(unit);
    switch (unit) {
        case u'\v':
        case u'\u2028':
            return EmitBreak(BreakKind::Line);
        case u'\r':
        case kBreakUnit:
            return EmitBreak(BreakKind::Paragraph);
        default:
            break;
    }
    if (RichText::CleanUnit(unit) == unit) Emit(std::u16string_view(&unit, 1));
}

void RtfInterpreter::FontText(std::string_view bytes) {
    for (const char c : bytes) {
        if (c == ';') {
            fonts_.End();
            continue;
        }
        const int page = fonts_.CodePage() ? fonts_.CodePage() : documentPage_;
        units_.clear();
        decoders_.Of(page).Feed(static_cast<unsigned char>(c), units_);
        for (const char16_t unit : units_)
            fonts_.AddToName(unit);
    }
}

void RtfInterpreter::ColourText(std::string_view bytes) {
    for (const char c : bytes) {
        if (c != ';') continue;
        colours_.push_back(colour_);
        colour_ = kAutomaticColour;
    }
}

void RtfInterpreter::Emit(std::u16string_view units) {
    if (units.empty()) return;
    EndCellBefore();
    PrepareParagraph();
    document_.Append(units, format_);
}

void RtfInterpreter::EmitBreak(BreakKind kind) {
    if (!TakesBody()) return;
    PrepareText();
    EndCellBefore();
    PrepareParagraph();
    document_.AppendBreak(kind, format_);
}

// The tab that divides cells stands only where a cell follows.
void RtfInterpreter::EndCellBefore() {
    if (cellEnded_) document_.Append(u"\t", format_);
    cellEnded_ = false;
}

void RtfInterpreter::EndPicture() {
    RichPicture picture = picture_.Take();
    if (!TakesBody()) return;
    PrepareText();
    EndCellBefore();
    PrepareParagraph();
    document_.AppendPicture(std::move(picture), format_);
}

void RtfInterpreter::PrepareText() {
    if (!charsChanged_) return;
    charsChanged_ = false;
    RtfFont* font = fonts_.Find(State().font < 0 ? defaultFont_ : State().font);
    if (!font) font = fonts_.Find(defaultFont_);
    CharFormat chars = State().chars;
    chars.font = 0;
    symbol_ = SymbolFont::None;
    int page = documentPage_;
    if (font) {
        if (font->index < 0) font->index = document_.InternFont(font->font);
        chars.font = static_cast<std::uint16_t>(font->index);
        symbol_ = font->symbol;
        if (font->codePage) page = font->codePage;
    }
    format_ = document_.Intern(chars);
    decoder_ = &decoders_.Of(page);
}

void RtfInterpreter::PrepareParagraph() {
    if (!paragraphChanged_) return;
    paragraphChanged_ = false;
    document_.SetParagraphFormat(document_.Intern(State().paragraph));
}

}  // namespace larder
