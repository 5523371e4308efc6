#include "platform/RichTextWidget.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/Native.h"

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
        case QEvent::DragEnter: return true;
        default: return false;
    }
}

}  // namespace

RichTextWidget::RichTextWidget(QWidget* parent, std::shared_ptr<Host> host)
    : QTextEdit(parent), host_(std::move(host)) {
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setPalette(HousePalette());
    setTabStopDistance(kTabPixels);
    connect(document(), &QTextDocument::contentsChange, this, [this] { lines_.clear(); });
    connect(this, &QTextEdit::textChanged, this, [this] { host_->UserChangedText(); });
    connect(this, &QTextEdit::cursorPositionChanged, this, [this] { host_->UserMovedCaret(); });
    connect(this, &QTextEdit::selectionChanged, this, [this] { host_->UserMovedCaret(); });
}

void RichTextWidget::SetLocked(bool locked) {
    constexpr auto reads = Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;
    setTextInteractionFlags(locked ? reads : reads | Qt::TextEditable);
    setTabChangesFocus(locked);
}

void RichTextWidget::SetTransparent(bool transparent) {
    viewport()->setAutoFillBackground(!transparent);
    viewport()->update();
}

void RichTextWidget::SetHideSelection(bool hide) {
    hideSelection_ = hide;
    if (hide && !hasFocus()) markGone_ = true;
    viewport()->update();
}

void RichTextWidget::Awaits() {
    if (awaited_ || !isVisible()) return;
    awaited_ = true;
    // Ahead of the drawing, which then finds the text laid out and is not asked for again.
    QApplication::postEvent(this, new QEvent(AwaitsEvent()), Qt::HighEventPriority);
}

void RichTextWidget::SetSelection(int from, int to) {
    markGone_ = hideSelection_;
    const int scrolled = verticalScrollBar()->value();
    QTextCursor cursor(document());
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    verticalScrollBar()->setValue(scrolled);
}

bool RichTextWidget::event(QEvent* event) {
    if (event->type() == AwaitsEvent()) {
        awaited_ = false;
        host_->BringUpToDate();
        return true;
    }
    if (NeedsText(event->type())) host_->BringUpToDate();
    return QTextEdit::event(event);
}

bool RichTextWidget::viewportEvent(QEvent* event) {
    if (NeedsText(event->type())) host_->BringUpToDate();
    return QTextEdit::viewportEvent(event);
}

bool RichTextWidget::DrawsSelection() const {
    return hasFocus() || !(hideSelection_ || markGone_);
}

void RichTextWidget::paintEvent(QPaintEvent* event) {
    host_->BringUpToDate();
    if (DrawsSelection()) return QTextEdit::paintEvent(event);
    QPainter painter(viewport());
    painter.translate(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette = palette();
    context.clip = QRectF(event->rect())
                       .translated(horizontalScrollBar()->value(), verticalScrollBar()->value());
    painter.setClipRect(context.clip);
    document()->documentLayout()->draw(&painter, context);
}

void RichTextWidget::keyPressEvent(QKeyEvent* event) {
    if (host_->ConsumesKey(*event)) {
        event->accept();
    } else {
        QTextEdit::keyPressEvent(event);
    }
}

void RichTextWidget::focusInEvent(QFocusEvent* event) {
    host_->BringUpToDate();
    markGone_ = false;
    QTextEdit::focusInEvent(event);
}

void RichTextWidget::showEvent(QShowEvent* event) {
    QTextEdit::showEvent(event);
    host_->BringUpToDate();
}

void RichTextWidget::resizeEvent(QResizeEvent* event) {
    lines_.clear();
    QTextEdit::resizeEvent(event);
}

void RichTextWidget::scrollContentsBy(int dx, int dy) {
    QTextEdit::scrollContentsBy(dx, dy);
    host_->Scrolled();
}

// A widget that has not been shown at its present size has not laid its text out for it.
void RichTextWidget::TakeSize() {
    for (QWidget* widget : {static_cast<QWidget*>(this), viewport()}) {
        if (!widget->testAttribute(Qt::WA_PendingResizeEvent)) continue;
        widget->setAttribute(Qt::WA_PendingResizeEvent, false);
        QResizeEvent resized(widget->size(), QSize());
        QApplication::sendEvent(widget, &resized);
    }
}

const std::vector<RichTextWidget::Line>& RichTextWidget::Lines() {
    TakeSize();
    if (!lines_.empty()) return lines_;
    document()->documentLayout()->documentSize();  // which lays the document out to its end
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
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

int RichTextWidget::LineCount() { return static_cast<int>(Lines().size()); }

int RichTextWidget::ScrollValueOf(int line) {
    return line <= 0 ? 0 : Lines()[static_cast<std::size_t>(line)].top;
}

int RichTextWidget::FirstVisibleLine() {
    const std::vector<Line>& lines = Lines();
    const int value = verticalScrollBar()->value();
    const auto above = [value](const Line& line) { return line.top < value; };
    const auto first = std::partition_point(lines.begin(), lines.end(), above);
    const auto line = static_cast<int>(first - lines.begin());
    return std::min(line, LineCount() - 1);
}

void RichTextWidget::ScrollToLine(int line) {
    verticalScrollBar()->setValue(ScrollValueOf(std::clamp(line, 0, LineCount() - 1)));
}

void RichTextWidget::ScrollTo(int position) {
    const std::vector<Line>& lines = Lines();
    const auto before = [position](const Line& line) { return line.start <= position; };
    const auto behind = std::partition_point(lines.begin() + 1, lines.end(), before);
    const auto line = static_cast<int>(behind - lines.begin()) - 1;
    QScrollBar& bar = *verticalScrollBar();
    if (line == LineCount() - 1) {
        bar.setValue(bar.maximum());
    } else if (ScrollValueOf(line) < bar.value()) {
        ScrollToLine(line);
    } else if (const int lacks = (behind - 1)->bottom - viewport()->height(); lacks > bar.value()) {
        const auto cutOff = [lacks](const Line& other) { return other.top < lacks; };
        const auto first = std::partition_point(lines.begin(), lines.end(), cutOff);
        ScrollToLine(std::min(line, static_cast<int>(first - lines.begin())));
    }
}

int RichTextWidget::LineOfPage(bool up) {
    const std::vector<Line>& lines = Lines();
    const int page = viewport()->height();
    const int value = verticalScrollBar()->value();
    const int wanted = up ? value - page : value + page;
    // Down, the line that the page cuts off at its foot comes to the top.
    const auto above = [&](const Line& line) {
        return up ? line.top < wanted : line.bottom <= wanted;
    };
    const auto first = std::partition_point(lines.begin(), lines.end(), above);
    return std::min(static_cast<int>(first - lines.begin()), LineCount() - 1);
}

int RichTextWidget::StartOfLine(int line) { return Lines()[static_cast<std::size_t>(line)].start; }

}  // namespace larder
