#include "platform/RichTextBoxContent.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <algorithm>
#include <string>
#include <utility>

#include "platform/Handlers.h"
#include "platform/Native.h"
#include "platform/RichTextFormats.h"
#include "platform/RichTextPictureView.h"

namespace larder {

using Kind = RichTextContent::Change::Kind;

// While it lives, what happens in the document is not the user's doing.
class RichTextBox::Content::Own {
  public:
    explicit Own(Content& content) : content_(content) { ++content_.own_; }
    ~Own() { --content_.own_; }
    Own(const Own&) = delete;
    Own& operator=(const Own&) = delete;

  private:
    Content& content_;
};

RichTextBox::Content::Content() = default;
RichTextBox::Content::~Content() = default;

QWidget* RichTextBox::Content::MakeWidget(QWidget* parent, const std::shared_ptr<Content>& self) {
    widget_ = std::make_unique<RichTextWidget>(parent, self);
    QTextEdit& edit = widget_->Edit();
    document_.emplace(*edit.document(), edit.logicalDpiY());
    FitPicturesInto(*edit.document());
    return &edit;
}

RichTextContent& RichTextBox::Content::Text() {
    if (textBehind_) {
        textBehind_ = false;
        selectionBehind_ = true;
        text_.Refresh(document_->Read(text_.Document(), std::exchange(endTyped_, false)));
    }
    if (selectionBehind_) TakeSelection();
    return text_;
}

void RichTextBox::Content::TakeSelection() {
    selectionBehind_ = false;
    const QTextCursor cursor = widget_->Edit().textCursor();
    const RichText& text = text_.Document();
    text_.Select(text.PositionAt(static_cast<std::size_t>(cursor.selectionStart())),
                 text.PositionAt(static_cast<std::size_t>(cursor.selectionEnd())));
    if (cursor.hasSelection()) return;
    RichText table;
    const CharFormat format =
        CharFormatOf(widget_->Edit().currentCharFormat(), table, document_->DotsPerInch());
    text_.SetNext({table.Fonts()[format.font], format.halfPoints, format.colour, format.highlight,
                   format.bold, format.italic, format.underline, format.strike, format.script});
}

bool RichTextBox::Content::CaretIsTheUsers() const {
    return textBehind_ && !widget_->Edit().textCursor().hasSelection();
}

std::vector<CharFormat> RichTextBox::Content::Formats() {
    if (!CaretIsTheUsers()) return Text().Formats();
    RichText table;
    return {CharFormatOf(widget_->Edit().currentCharFormat(), table, document_->DotsPerInch())};
}

std::vector<ParaFormat> RichTextBox::Content::Layouts() {
    if (!CaretIsTheUsers()) return Text().Layouts();
    return {ParaFormatOf(widget_->Edit().textCursor().blockFormat())};
}

// A change that is as cheap to make by building the document anew. What a user who can type was
// given by a button he can take back.
bool RichTextBox::Content::Wholesale(const RichTextContent::Change& change) const {
    if (change.kind == Kind::Whole) return true;
    if (widget_->Edit().document()->isUndoAvailable()) return false;
    if (updates_ == 0 && box_ && !box_->Locked()) return false;
    const std::size_t touched = change.newTo - change.from;
    return updates_ > 0 || touched * 2 > text_.Document().Units().size();
}

void RichTextBox::Content::Changed(const RichTextContent::Change& change) {
    if (change.kind == Kind::Nothing) return;
    if (change.kind == Kind::Whole) {
        EndStep();
        textBehind_ = endTyped_ = selectionBehind_ = caretSought_ = false;
        fromTop_ = true;
    }
    if (!screenBehind_ && !Wholesale(change)) {
        Repeat(change);
    } else {
        screenBehind_ = true;
        widget_->Awaits();
    }
    if (box_) Fire(box_->OnChange);
}

void RichTextBox::Content::Format(const CharChange& change) {
    const RichTextContent::Change done = Text().Format(change);
    if (done.kind == Kind::Nothing && !screenBehind_) ShowSelection();
    Changed(done);
}

// Makes a change of the text in the document.
void RichTextBox::Content::Repeat(const RichTextContent::Change& change) {
    const Own own(*this);
    QTextDocument& document = *widget_->Edit().document();
    auto step = std::make_unique<QTextCursor>(&document);
    step->setPosition(static_cast<int>(change.from));
    step->beginEditBlock();
    const int steps = document.availableUndoSteps();
    const std::optional<int> end = MakeInDocument(change);
    if (document.availableUndoSteps() != steps) {
        carets_.Changes(static_cast<int>(change.oldTo), end);
    }
    if (updates_ > 0 && !step_) {
        step_ = std::move(step);
    } else {
        step->endEditBlock();
    }
    revision_ = document.revision();
}

// Returns where the change ends, if Qt will not know it.
std::optional<int> RichTextBox::Content::MakeInDocument(const RichTextContent::Change& change) {
    const RichText& text = text_.Document();
    bool told = true;
    switch (change.kind) {
        case Kind::Text:
            told = document_->Splice(text, change.from, change.oldTo, change.newTo);
            break;
        case Kind::Characters:
            document_->FormatCharacters(text, change.from, change.newTo);
            break;
        case Kind::Paragraphs:
            document_->FormatParagraphs(text, change.from, change.newTo);
            break;
        default:
            break;
    }
    return told ? std::optional(static_cast<int>(change.newTo)) : std::nullopt;
}

void RichTextBox::Content::EndStep() {
    if (!step_) return;
    const Own own(*this);
    step_->endEditBlock();
    step_.reset();
    revision_ = widget_->Edit().document()->revision();
}

void RichTextBox::Content::EndUpdate() {
    if (--updates_ == 0) EndStep();
}

void RichTextBox::Content::Selected(RichTextLook look) {
    caretSought_ = caretSought_ || look == RichTextLook::AtCaret;
    if (!screenBehind_) {
        ShowSelection();
        if (updates_ == 0) ShowCaret();
    }
    TellSelection();
}

void RichTextBox::Content::TellSelection() {
    if (text_.From() == toldFrom_ && text_.To() == toldTo_) return;
    toldFrom_ = text_.From();
    toldTo_ = text_.To();
    userPlace_ = {-1, -1};
    if (box_) Fire(box_->OnSelChange);
}

void RichTextBox::Content::ShowSelection() {
    const Own own(*this);
    const RichText& text = text_.Document();
    widget_->SetSelection(static_cast<int>(text.UnitAt(text_.From())),
                          static_cast<int>(text.UnitAt(text_.To())));
    if (!text_.HasSelection()) {
        const RichText table(text_.NextFont());
        CharFormat next = text_.Next();
        next.font = 0;
        widget_->Edit().setCurrentCharFormat(NativeFormat(table, next, document_->DotsPerInch()));
    }
}

void RichTextBox::Content::ShowCaret() {
    if (!caretSought_) return;
    caretSought_ = false;
    const Own own(*this);
    widget_->ScrollTo(static_cast<int>(text_.Document().UnitAt(text_.From())));
}

void RichTextBox::Content::BringUpToDate() {
    EndStep();
    if (!screenBehind_ || own_ > 0) {
        if (own_ == 0 && !textBehind_ && !selectionBehind_) ShowCaret();
        return;
    }
    const Own own(*this);
    QScrollBar& bar = *widget_->Edit().verticalScrollBar();
    const int scrolled = fromTop_ ? 0 : bar.value();
    document_->Build(text_.Document());
    carets_.Clear();
    screenBehind_ = false;
    revision_ = widget_->Edit().document()->revision();
    ShowSelection();
    if (!fromTop_) widget_->LineCount();  // lays out, so that there is something to scroll
    bar.setValue(scrolled);
    fromTop_ = false;
    // At the start of new text there is nothing to scroll to, and no need to lay out all of it.
    if (text_.From() == 0 && scrolled == 0) caretSought_ = false;
    ShowCaret();
}

std::int32_t RichTextBox::Content::FirstVisibleLine() {
    // New text begins at its top unless the caret has been sent further down.
    if (screenBehind_ && fromTop_ && (!caretSought_ || text_.From() == 0)) return 0;
    BringUpToDate();
    return widget_->FirstVisibleLine();
}

void RichTextBox::Content::TurnPage(bool up) {
    BringUpToDate();
    const int line = widget_->LineOfPage(up);
    widget_->ScrollToLine(line);
    const auto start = static_cast<std::size_t>(widget_->StartOfLine(line));
    const std::size_t position = Text().Document().PositionAt(start);
    text_.Select(position, position);
    Selected(RichTextLook::Stay);
}

bool RichTextBox::Content::ConsumesKey(QKeyEvent& event) {
    const int code = KeyCodeOf(event);
    int left = code;
    if (box_) Fire(box_->OnKeyDown, left, ShiftOf(event));
    return code != 0 && left == 0;
}

void RichTextBox::Content::StepDone() {
    carets_.Done(widget_->Edit().document()->availableUndoSteps());
}

void RichTextBox::Content::Walk(bool back) {
    BringUpToDate();
    QTextEdit& edit = widget_->Edit();
    QTextDocument& document = *edit.document();
    if (!(back ? document.isUndoAvailable() : document.isRedoAvailable())) return;
    QTextCursor caret = edit.textCursor();
    back ? document.undo(&caret) : document.redo(&caret);
    const auto place = carets_.WalkedTo(document.availableUndoSteps());
    if (place) caret.setPosition(*place);
    userPlace_ = {-1, -1};  // the formats there may be others now
    edit.setTextCursor(caret);
    edit.ensureCursorVisible();
    UserMovedCaret();
}

void RichTextBox::Content::UserChangedText(bool atEnd) {
    if (own_ > 0) return;
    textBehind_ = true;
    endTyped_ = endTyped_ || atEnd;
    if (box_) Fire(box_->OnChange);
}

void RichTextBox::Content::UserMovedCaret() {
    if (own_ > 0 || screenBehind_) return;
    selectionBehind_ = true;
    TypeAsBreak();
    const QTextCursor cursor = widget_->Edit().textCursor();
    const auto place = std::pair(cursor.anchor(), cursor.position());
    if (place == userPlace_) return;  // Qt tells of the caret and of the selection
    userPlace_ = place;
    toldFrom_ = std::string::npos;  // reading the text for every key would be slow in a long one
    if (box_) Fire(box_->OnSelChange);
}

// A caret that the user puts into an empty paragraph types in the format of that paragraph's own
// break; Qt would take that of the break before.
void RichTextBox::Content::TypeAsBreak() {
    const int revision = widget_->Edit().document()->revision();
    const bool moved = revision == revision_;
    revision_ = revision;
    const QTextCursor cursor = widget_->Edit().textCursor();
    if (!moved || cursor.hasSelection() || cursor.block().length() > 1) return;
    const auto format = document_->BreakFormat(cursor.position());
    if (!format) return;
    const Own own(*this);
    widget_->Edit().setCurrentCharFormat(*format);
}

void RichTextBox::Content::Scrolled() {
    if (own_ == 0 && box_) Fire(box_->OnScroll);
}

void RichTextBox::Content::TakesMime() {
    textBehind_ = !screenBehind_;
    const bool dragged = widget_->Edit().document()->availableUndoSteps() != carets_.Steps();
    if (dragged) carets_.Changes(EndOfSelection(), std::nullopt);
}

// As it was last told.
int RichTextBox::Content::EndOfSelection() const {
    if (selectionBehind_) return std::max(userPlace_.first, userPlace_.second);
    return static_cast<int>(text_.Document().UnitAt(text_.To()));
}

RichTextBase RichTextBox::Content::BaseOfIncoming() {
    const RichTextContent& text = Text();
    return {text.NextFont(), text.Next().halfPoints};
}

void RichTextBox::Content::Insert(const RichText& text) {
    Inserted(Text().ReplaceSelection(text));
}

void RichTextBox::Content::Insert(std::u16string_view plain) {
    Inserted(Text().ReplaceSelection(plain));
}

// What the user put in he can undo, however much it is.
void RichTextBox::Content::Inserted(const RichTextContent::Change& change) {
    Repeat(change);
    if (box_) Fire(box_->OnChange);
    Selected(RichTextLook::Stay);
}

}  // namespace larder
