#include "platform/RichTextWidget.h"

#include <QAbstractTextDocumentLayout>
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cmath>
#include <utility>
#include <variant>

#include "platform/Native.h"
#include "platform/RichTextClipboard.h"

namespace larder {

namespace {

constexpr double kTabPixels = 48.0;  // half an inch, where a paragraph sets no tabs

QEvent::Type AwaitsEvent() {
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

QPalette HousePalette() {
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Text, NativeColor(house::Ink));
    palette.setColor(QPalette::Base, NativeColor(house::Paper));
    palette.setColor(QPalette::Highlight, NativeColor(house::SlateBlue));
    palette.setColor(QPalette::HighlightedText, NativeColor(house::Paper));
    palette.setColor(QPalette::Inactive, QPalette::Highlight, NativeColor(house::PaleBar));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, NativeColor(house::Ink));
    return palette;
}

// What the user does in the text, or asks of it, and so must find it up to date.
bool NeedsText(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::InputMethod:
        case QEvent::ContextMenu:
        case QEvent::DragEnter:
        case QEvent::Drop:
            return true;
        default:
            return false;
    }
}

// What a key puts in the text; nothing for a command.
QString TypedText(const QKeyEvent& event) {
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return {};
    const bool ends = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (ends && !(event.modifiers() & Qt::ShiftModifier)) return QStringLiteral("\r");
    const QString text = event.text();
    return !text.isEmpty() && text[0].isPrint() ? text : QString();
}

// Both keys by which editors bring back what was undone; Qt takes one or the other by the desktop.
bool IsRedo(const QKeyEvent& event) {
    const auto keys = event.modifiers() & ~Qt::KeypadModifier;
    return (event.key() == Qt::Key_Y && keys == Qt::ControlModifier) ||
           (event.key() == Qt::Key_Z && keys == (Qt::ControlModifier | Qt::ShiftModifier));
}

}  // namespace

class RichTextWidget::Widget : public QTextEdit {
  public:
    Widget(QWidget* parent, RichTextWidget& owner, std::shared_ptr<Host> host);
    // What Qt takes apart afterwards concerns nobody.
    ~Widget() override {
        document()->disconnect(this);
        disconnect(this, nullptr, this, nullptr);
    }

    void TakeSize();
    void KeepOneLine();

  protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

  private:
    bool TypesByHost(const QString& typed) const;

    RichTextWidget& owner_;  // lives as long as the host
    const std::shared_ptr<Host> host_;
    bool addedAtEnd_ = false;  // since the host was last told
    bool oneLine_ = false;
};

RichTextWidget::Widget::Widget(QWidget* parent, RichTextWidget& owner, std::shared_ptr<Host> host)
    : QTextEdit(parent), owner_(owner), host_(std::move(host)) {
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setPalette(HousePalette());
    setTabStopDistance(kTabPixels);
    connect(document(), &QTextDocument::contentsChange, this, [this](int at, int, int added) {
        owner_.lines_.clear();
        addedAtEnd_ = addedAtEnd_ || (added > 0 && at + added >= document()->characterCount() - 1);
    });
    connect(this, &QTextEdit::textChanged, this,
            [this] { host_->UserChangedText(std::exchange(addedAtEnd_, false)); });
    connect(document(), &QTextDocument::undoCommandAdded, this, [this] { host_->StepDone(); });
    connect(this, &QTextEdit::cursorPositionChanged, this, [this] { host_->UserMovedCaret(); });
    connect(this, &QTextEdit::selectionChanged, this, [this] { host_->UserMovedCaret(); });
}

RichTextWidget::RichTextWidget(QWidget* parent, const std::shared_ptr<Host>& host)
    : widget_(new Widget(parent, *this, host)) {}

QTextEdit& RichTextWidget::Edit() const {
    return *widget_;
}

void RichTextWidget::SetLocked(bool locked) {
    constexpr auto reads = Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;
    widget_->setTextInteractionFlags(locked ? reads : reads | Qt::TextEditable);
    widget_->setTabChangesFocus(locked);
}

void RichTextWidget::SetTransparent(bool transparent) {
    widget_->viewport()->setAutoFillBackground(!transparent);
    widget_->viewport()->update();
}

void RichTextWidget::SetTabStop(bool stops) {
    widget_->setFocusPolicy(stops ? Qt::StrongFocus : Qt::ClickFocus);
}

void RichTextWidget::SetScrollBar(bool shown) {
    widget_->setVerticalScrollBarPolicy(shown ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    // A brass rod on whatever ground shows through, without arrows.
    widget_->verticalScrollBar()->setStyleSheet(QStringLiteral(
        "QScrollBar:vertical { background: transparent; width: 12px; margin: 0; }"
        "QScrollBar::handle:vertical { background: #C89B3C; border: 1px solid #84601C;"
        " border-radius: 3px; min-height: 28px; margin: 1px 2px; }"
        "QScrollBar::handle:vertical:hover { background: #E0B659; }"
        "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }"
        "QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: none; }"));
}

void RichTextWidget::Widget::KeepOneLine() {
    oneLine_ = true;
    setWordWrapMode(QTextOption::NoWrap);
}

void RichTextWidget::KeepOneLine(QWidget& widget) {
    static_cast<Widget&>(widget).KeepOneLine();
}

void RichTextWidget::SetHideSelection(bool hide) {
    hideSelection_ = hide;
    if (hide && !widget_->hasFocus()) markGone_ = true;
    widget_->viewport()->update();
}

void RichTextWidget::Awaits() {
    if (awaited_ || !widget_->isVisible()) return;
    awaited_ = true;
    // Ahead of the drawing, which then finds the text laid out and is not asked for again.
    QApplication::postEvent(widget_, new QEvent(AwaitsEvent()), Qt::HighEventPriority);
}

void RichTextWidget::SetSelection(int from, int to) {
    markGone_ = hideSelection_;
    const int scrolled = widget_->verticalScrollBar()->value();
    QTextCursor cursor(widget_->document());
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    widget_->setTextCursor(cursor);
    widget_->verticalScrollBar()->setValue(scrolled);
}

bool RichTextWidget::Widget::event(QEvent* event) {
    if (event->type() == AwaitsEvent()) {
        owner_.awaited_ = false;
        host_->BringUpToDate();
        return true;
    }
    if (NeedsText(event->type())) host_->BringUpToDate();
    return QTextEdit::event(event);
}

bool RichTextWidget::Widget::viewportEvent(QEvent* event) {
    if (NeedsText(event->type())) host_->BringUpToDate();
    return QTextEdit::viewportEvent(event);
}

bool RichTextWidget::DrawsSelection() const {
    return widget_->hasFocus() || !(hideSelection_ || markGone_);
}

void RichTextWidget::Widget::paintEvent(QPaintEvent* event) {
    host_->BringUpToDate();
    if (owner_.DrawsSelection()) return QTextEdit::paintEvent(event);
    QPainter painter(viewport());
    painter.translate(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette = palette();
    context.clip = QRectF(event->rect())
                       .translated(horizontalScrollBar()->value(), verticalScrollBar()->value());
    painter.setClipRect(context.clip);
    document()->documentLayout()->draw(&painter, context);
}

void RichTextWidget::Widget::keyPressEvent(QKeyEvent* event) {
    if (host_->ConsumesKey(*event)) {
        event->accept();
    } else if (!isReadOnly() && event->matches(QKeySequence::Undo)) {
        host_->Undo();
    } else if (IsRedo(*event)) {
        if (textInteractionFlags() & Qt::TextEditable) host_->Redo();
    } else if (const QString typed = TypedText(*event); TypesByHost(typed)) {
        host_->Insert(typed.toStdU16String());
        ensureCursorVisible();
    } else {
        QTextEdit::keyPressEvent(event);
    }
}

// Text in the place of a selection looks like the beginning of what it replaces, where Qt would
// take the end; and Return in an empty paragraph makes another, where Qt would take its layout
// away.
bool RichTextWidget::Widget::TypesByHost(const QString& typed) const {
    if (!(textInteractionFlags() & Qt::TextEditable) || typed.isEmpty()) return false;
    return textCursor().hasSelection() || typed == QLatin1String("\r");
}

// Qt's menu, but for the two entries that the host sees to.
void RichTextWidget::Widget::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* menu = createStandardContextMenu(event->pos());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto leaveTo = [this, menu](const QString& name, void (Host::*act)()) {
        auto* entry = menu->findChild<QAction*>(name);
        if (entry == nullptr) return;
        entry->disconnect(SIGNAL(triggered(bool)));
        connect(entry, &QAction::triggered, this, [this, act] { ((*host_).*act)(); });
    };
    leaveTo(QStringLiteral("edit-undo"), &Host::Undo);
    leaveTo(QStringLiteral("edit-redo"), &Host::Redo);
    menu->popup(event->globalPos());
}

void RichTextWidget::Widget::focusInEvent(QFocusEvent* event) {
    host_->BringUpToDate();
    owner_.markGone_ = false;
    QTextEdit::focusInEvent(event);
}

void RichTextWidget::Widget::showEvent(QShowEvent* event) {
    QTextEdit::showEvent(event);
    host_->BringUpToDate();
}

void RichTextWidget::Widget::resizeEvent(QResizeEvent* event) {
    owner_.lines_.clear();
    QTextEdit::resizeEvent(event);
}

void RichTextWidget::Widget::scrollContentsBy(int dx, int dy) {
    QTextEdit::scrollContentsBy(dx, dy);
    host_->Scrolled();
}

// A widget that has not been shown at its present size has not laid its text out for it.
void RichTextWidget::Widget::TakeSize() {
    for (QWidget* widget : {static_cast<QWidget*>(this), viewport()}) {
        if (!widget->testAttribute(Qt::WA_PendingResizeEvent)) continue;
        widget->setAttribute(Qt::WA_PendingResizeEvent, false);
        QResizeEvent resized(widget->size(), QSize());
        QApplication::sendEvent(widget, &resized);
    }
}

const std::vector<RichTextWidget::Line>& RichTextWidget::Lines() {
    widget_->TakeSize();
    if (!lines_.empty()) return lines_;
    widget_->document()
        ->documentLayout()
        ->documentSize();  // which lays the document out to its end
    for (QTextBlock block = widget_->document()->begin(); block.isValid(); block = block.next()) {
        const QTextLayout& layout = *block.layout();
        const double top = layout.position().y();
        for (int i = 0; i < layout.lineCount(); ++i) {
            const QTextLine line = layout.lineAt(i);
            lines_.push_back({static_cast<int>(std::floor(top + line.y())),
                              static_cast<int>(std::ceil(top + line.y() + line.height())),
                              block.position() + line.textStart()});
        }
    }
    if (lines_.empty()) lines_.push_back({});
    return lines_;
}

int RichTextWidget::LineCount() {
    return static_cast<int>(Lines().size());
}

int RichTextWidget::ScrollValueOf(int line) {
    return line <= 0 ? 0 : Lines()[static_cast<std::size_t>(line)].top;
}

int RichTextWidget::FirstVisibleLine() {
    const std::vector<Line>& lines = Lines();
    const int value = widget_->verticalScrollBar()->value();
    const auto above = [value](const Line& line) { return line.top < value; };
    const auto first = std::partition_point(lines.begin(), lines.end(), above);
    const auto line = static_cast<int>(first - lines.begin());
    return std::min(line, LineCount() - 1);
}

void RichTextWidget::ScrollToLine(int line) {
    widget_->verticalScrollBar()->setValue(ScrollValueOf(std::clamp(line, 0, LineCount() - 1)));
}

void RichTextWidget::ScrollTo(int position) {
    const std::vector<Line>& lines = Lines();
    const auto before = [position](const Line& line) { return line.start <= position; };
    const auto behind = std::partition_point(lines.begin() + 1, lines.end(), before);
    const auto line = static_cast<int>(behind - lines.begin()) - 1;
    QScrollBar& bar = *widget_->verticalScrollBar();
    if (line == LineCount() - 1) {
        bar.setValue(bar.maximum());
    } else if (ScrollValueOf(line) < bar.value()) {
        ScrollToLine(line);
    } else if (const int lacks = (behind - 1)->bottom - widget_->viewport()->height();
               lacks > bar.value()) {
        const auto cutOff = [lacks](const Line& other) { return other.top < lacks; };
        const auto first = std::partition_point(lines.begin(), lines.end(), cutOff);
        ScrollToLine(std::min(line, static_cast<int>(first - lines.begin())));
    }
}

int RichTextWidget::LineOfPage(bool up) {
    const std::vector<Line>& lines = Lines();
    const int page = widget_->viewport()->height();
    const int value = widget_->verticalScrollBar()->value();
    const int wanted = up ? value - page : value + page;
    // Down, the line that the page cuts off at its foot comes to the top.
    const auto above = [&](const Line& line) {
        return up ? line.top < wanted : line.bottom <= wanted;
    };
    const auto first = std::partition_point(lines.begin(), lines.end(), above);
    return std::min(static_cast<int>(first - lines.begin()), LineCount() - 1);
}

int RichTextWidget::StartOfLine(int line) {
    return Lines()[static_cast<std::size_t>(line)].start;
}

QMimeData* RichTextWidget::Widget::createMimeDataFromSelection() const {
    return MimeOf(host_->SelectedText(), textCursor());
}

bool RichTextWidget::Widget::canInsertFromMimeData(const QMimeData* source) const {
    return CanTake(*source);
}

void RichTextWidget::Widget::insertFromMimeData(const QMimeData* source) {
    if (!(textInteractionFlags() & Qt::TextEditable)) return;
    host_->TakesMime();
    auto incoming = IncomingFrom(*source, host_->BaseOfIncoming(), logicalDpiY());
    if (!incoming) return;
    if (oneLine_) incoming = InOneLine(*incoming);
    std::visit([this](const auto& text) { host_->Insert(text); }, *incoming);
}

}  // namespace larder
