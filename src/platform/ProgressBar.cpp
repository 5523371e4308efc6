#include "platform/ProgressBar.h"

#include <QLinearGradient>
#include <QPainter>
#include <QProgressBar>
#include <algorithm>

#include "platform/Native.h"

namespace larder {

namespace {

constexpr int Full = 100;

}  // namespace

class ProgressBar::Widget : public QProgressBar {
  public:
    explicit Widget(QWidget* parent) : QProgressBar(parent) {
        setRange(0, Full);
        setValue(0);
        setTextVisible(false);
    }

  protected:
    // A groove in the paper with a brass rim, and sea in it.
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF groove = QRectF(rect()).adjusted(1, 1, -1, -1);
        const qreal round = groove.height() / 2;
        painter.setPen(QPen(NativeColor(house::Brass), 2));
        painter.setBrush(QColor(0xE9, 0xDD, 0xC2));
        painter.drawRoundedRect(groove, round, round);
        if (value() <= minimum()) return;

        QRectF filled = groove.adjusted(2, 2, -2, -2);
        const qreal end = filled.height() / 2;
        // Never narrower than its round ends.
        filled.setWidth(std::max(filled.height(), filled.width() * value() / Full));
        QLinearGradient sea(filled.topLeft(), filled.bottomLeft());
        sea.setColorAt(0, NativeColor(house::SlateBlue).lighter(135));
        sea.setColorAt(1, NativeColor(house::Navy));
        painter.setPen(Qt::NoPen);
        painter.setBrush(sea);
        painter.drawRoundedRect(filled, end, end);
    }
};

ProgressBar::ProgressBar(Container& container, const std::string& name)
    : Control(container, name, 0, new Widget(ParentFor(container))) {}

ProgressBar::Widget* ProgressBar::Mine() const {
    return static_cast<Widget*>(Native());
}

int ProgressBar::Value() const {
    return Mine()->value();
}

void ProgressBar::SetValue(int value) {
    Mine()->setValue(std::clamp(value, 0, Full));
    Mine()->repaint();
}

}  // namespace larder
