#include "platform/Label.h"

#include <QAccessible>
#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>
#include <QWidget>
#include <algorithm>
#include <vector>

#include "platform/Fonts.h"
#include "platform/Handlers.h"
#include "platform/Native.h"

namespace larder {

namespace {

// Lines as they are drawn, and whether the last had to be cut.
struct Lines {
    std::vector<QString> Texts;
    bool Cut = false;
};

Lines BreakIntoLines(const QString& text, const QFont& font, const QSize& room) {
    const QFontMetrics metrics(font);
    if (!text.contains(QLatin1Char('\n')) && metrics.horizontalAdvance(text) <= room.width()) {
        return {{text}, false};
    }
    const int most = std::max(1, room.height() / std::max(1, metrics.lineSpacing()));
    QString broken = text;
    broken.replace(QLatin1Char('\n'), QChar::LineSeparator);

    QTextLayout layout(broken, font);
    QTextOption option;
    option.setWrapMode(most > 1 ? QTextOption::WordWrap : QTextOption::ManualWrap);
    layout.setTextOption(option);
    Lines lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(room.width());
        const bool last = static_cast<int>(lines.Texts.size()) + 1 == most;
        QString shown = broken.mid(line.textStart(), last ? -1 : line.textLength());
        if (!last) shown.remove(QChar::LineSeparator);
        shown.replace(QChar::LineSeparator, QLatin1Char(' '));
        const QString fitting = metrics.elidedText(shown, Qt::ElideRight, room.width());
        lines.Cut = lines.Cut || fitting != shown;
        lines.Texts.push_back(fitting);
        if (last) break;
    }
    layout.endLayout();
    return lines;
}

QString UnifiedBreaks(const std::string& caption) {
    QString text = NativeText(Showable(caption));
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

}  // namespace

class Label::Widget : public QWidget {
  public:
    Widget(QWidget* parent, Label& label) : QWidget(parent), label_(label) {
        SetAccessibleRole(*this, QAccessible::StaticText);
    }

    // Broken anew only when something has changed that they depend on.
    const Lines& CurrentLines() {
        if (!stale_ && size() == room_) return lines_;
        lines_ = BreakIntoLines(UnifiedBreaks(label_.caption_), font(), size());
        room_ = size();
        stale_ = false;
        return lines_;
    }
    void BreakAnew() { stale_ = true; }

    void SetColor(std::int32_t color) {
        color_ = NativeColor(color);
        update();
    }
    void Align(Qt::Alignment alignment) {
        alignment_ = alignment;
        update();
    }

  protected:
    // What is added for a text that is cut is told and forgotten: the text, the font or the room
    // may be others at any moment after.
    bool event(QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return QWidget::event(event);
        label_.TellToolTip();
        const bool told = QWidget::event(event);
        setToolTip(NativeToolTip(label_.ToolTipText()));
        return told;
    }

    void paintEvent(QPaintEvent*) override {
        const Lines& lines = CurrentLines();
        QPainter painter(this);
        painter.setPen(color_);
        const int lineHeight = fontMetrics().lineSpacing();
        int top = (height() - lineHeight * static_cast<int>(lines.Texts.size())) / 2;
        for (const QString& line : lines.Texts) {
            painter.drawText(QRect(0, top, width(), lineHeight),
                             int(alignment_ | Qt::AlignVCenter | Qt::TextSingleLine), line);
            top += lineHeight;
        }
    }

    void mousePressEvent(QMouseEvent* event) override {
        event->setAccepted(label_.OnClick || label_.OnMouseDown || label_.OnMouseUp);
        FireMouse(label_.OnMouseDown, *event);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }

    void mouseReleaseEvent(QMouseEvent* event) override {
        const bool clicks =
            event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
        FireMouse(label_.OnMouseUp, *event);
        if (clicks) Fire(label_.OnClick);
    }

    void changeEvent(QEvent* event) override {
        if (event->type() == QEvent::FontChange) BreakAnew();
        QWidget::changeEvent(event);
    }

  private:
    Label& label_;
    Lines lines_;
    QSize room_;  // that the lines were broken for
    bool stale_ = true;
    QColor color_ = NativeColor(house::Ink);
    Qt::Alignment alignment_ = Qt::AlignLeft;
};

Label::Label(Container& container, const std::string& name, int index)
    : Control(container, name, index, new Widget(ParentFor(container), *this)) {
    SetFont(font_);
}

Label::Widget* Label::Mine() const {
    return static_cast<Widget*>(Native());
}

// Captions change often while a list grows, and measuring one costs more than all the rest: it
// waits until somebody looks.
void Label::SetCaption(const std::string& caption) {
    if (caption == caption_) return;
    caption_ = caption;
    Mine()->BreakAnew();
    SetShownName(caption);
    Mine()->update();
}

void Label::SetFont(const Font& font) {
    font_ = font;
    Mine()->setFont(NativeFont(font));
}

void Label::SetForeColor(std::int32_t color) {
    Mine()->SetColor(color);
}

void Label::SetAlignment(Alignment alignment) {
    switch (alignment) {
        case Alignment::Left:
            Mine()->Align(Qt::AlignLeft);
            break;
        case Alignment::Right:
            Mine()->Align(Qt::AlignRight);
            break;
        case Alignment::Center:
            Mine()->Align(Qt::AlignHCenter);
            break;
    }
}

void Label::TellToolTip() {
    std::string shown = ToolTipText();
    if (!caption_.empty() && Mine()->CurrentLines().Cut) {
        shown = shown.empty() ? caption_ : caption_ + "\n" + shown;
    }
    Mine()->setToolTip(NativeToolTip(shown));
}

}  // namespace larder
