#include "platform/Image.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QWidget>
#include <optional>
#include <utility>

#include "platform/ButtonPress.h"
#include "platform/ElasticPicture.h"
#include "platform/Handlers.h"
#include "platform/Keys.h"
#include "platform/Native.h"
#include "platform/Painting.h"
#include "platform/PictureButton.h"

namespace larder {

class Image::Widget : public QWidget {
  public:
    class Accessible;

    Widget(QWidget* parent, Image& image) : QWidget(parent), image_(image) {
        setMouseTracking(true);
    }

    bool IsButton() const { return focusPolicy() != Qt::NoFocus; }

    void SetElastic(Elastic elastic) {
        elastic_ = std::move(elastic);
        kept_ = {};
        update();
    }

    // A whole press of a button at once, as assistive technology makes it.
    void PressAndRelease() {
        if (!press_.BeginByProgram()) return;
        const QPointer<Widget> alive(this);
        FireMouseDown(0);
        if (!alive.isNull() && press_.EndByProgram()) FireUpAndClick();
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        if (elastic_) {
            PaintElastic(painter);
        } else {
            PaintPart(painter, image_.picture_, rect(), event->rect());
        }
        if (hasFocus()) PaintFocusRing(painter, rect());
    }

    void mousePressEvent(QMouseEvent* event) override {
        event->setAccepted(image_.OnClick || image_.OnMouseDown || image_.OnMouseUp);
        const bool left = event->button() == Qt::LeftButton;
        if (IsButton() && !(left && press_.BeginByMouse(*event))) return;
        FireMouse(image_.OnMouseDown, *event);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void mouseMoveEvent(QMouseEvent* event) override { FireMouse(image_.OnMouseMove, *event); }

    void mouseReleaseEvent(QMouseEvent* event) override {
        const bool left = event->button() == Qt::LeftButton;
        const bool clicks = left && rect().contains(event->position().toPoint());
        if (IsButton() && !press_.EndByMouse(*event)) return;
        const QPointer<Widget> alive(this);
        FireMouse(image_.OnMouseUp, *event);
        if (clicks && !alive.isNull()) Fire(image_.OnClick);
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (!IsButton() || event->key() != Qt::Key_Space) return QWidget::keyPressEvent(event);
        if (!event->isAutoRepeat() && press_.BeginBySpace()) FireMouseDown(ShiftOf(*event));
    }
    void keyReleaseEvent(QKeyEvent* event) override {
        if (!IsButton() || event->key() != Qt::Key_Space) return QWidget::keyReleaseEvent(event);
        if (!event->isAutoRepeat() && press_.EndBySpace()) FireUpAndClick();
    }
    void focusOutEvent(QFocusEvent*) override { update(); }

  private:
    void PaintElastic(QPainter& painter) {
        const double ratio = devicePixelRatioF();
        const QSize size(qRound(width() * ratio), qRound(height() * ratio));
        if (image_.picture_.IsEmpty() || size.isEmpty()) return;
        if (kept_.size() != size || keptOf_.Shared() != image_.picture_.Shared()) {
            kept_ = ElasticPixmapOf(image_.picture_, *elastic_, size, ratio);
            keptOf_ = image_.picture_;
        }
        painter.drawPixmap(rect(), kept_);
    }
    void FireUpAndClick() {
        const QPointer<Widget> alive(this);
        FireMouseUp();
        if (!alive.isNull()) Fire(image_.OnClick);
    }
    void FireMouseDown(int shift) {
        Fire(image_.OnMouseDown, mouse::LeftButton, shift, CentreX(), CentreY());
    }
    void FireMouseUp() { Fire(image_.OnMouseUp, mouse::LeftButton, 0, CentreX(), CentreY()); }
    float CentreX() const { return image_.Width() / 2; }
    float CentreY() const { return image_.Height() / 2; }

    Image& image_;
    std::optional<Elastic> elastic_;
    QPixmap kept_;  // its rendering at the present size
    Picture keptOf_;
    ButtonPress press_{this, [this](int) { FireMouseUp(); }};  // of a button alone
};

// What a screen reader sees of a picture: a graphic, or a button to be pressed.
class Image::Widget::Accessible : public QAccessibleWidget {
  public:
    explicit Accessible(Widget& widget)
        : QAccessibleWidget(&widget, QAccessible::Graphic), widget_(widget) {}

    static QAccessibleInterface* Make(const QString&, QObject* object) {
        auto* image = dynamic_cast<Widget*>(object);
        return image == nullptr ? nullptr : new Accessible(*image);
    }

    QAccessible::Role role() const override {
        return widget_.IsButton() ? QAccessible::PushButton : QAccessible::Graphic;
    }

    QStringList actionNames() const override {
        const QStringList names = QAccessibleWidget::actionNames();
        return CanBePressed() ? QStringList{pressAction()} + names : names;
    }

    void doAction(const QString& name) override {
        if (name != pressAction()) return QAccessibleWidget::doAction(name);
        if (CanBePressed()) widget_.PressAndRelease();
    }

    QStringList keyBindingsForAction(const QString& name) const override {
        if (name == pressAction() && widget_.IsButton()) return {QStringLiteral("Space")};
        return QAccessibleWidget::keyBindingsForAction(name);
    }

  private:
    bool CanBePressed() const { return widget_.IsButton() && widget_.isEnabled(); }

    Widget& widget_;
};

Image::Image(Container& container, const std::string& name, int index)
    : Control(container, name, index, new Widget(ParentFor(container), *this)) {
    static const bool installed = [] {
        QAccessible::installFactory(&Widget::Accessible::Make);
        return true;
    }();
    Q_UNUSED(installed);
}

Image::Widget* Image::Mine() const {
    return static_cast<Widget*>(Native());
}

void Image::SetPicture(const Picture& picture) {
    picture_ = picture;
    TakePictureSize();
    Mine()->update();
}

void Image::SetStretch(bool stretch) {
    stretch_ = stretch;
    TakePictureSize();
    Mine()->update();
}

void Image::SetElastic(Elastic elastic) {
    Mine()->SetElastic(std::move(elastic));
}

void Image::TakePictureSize() {
    if (stretch_ || picture_.IsEmpty()) return;
    Move({Left(), Top(), static_cast<float>(picture_.PixelWidth()) * TwipsPerPixel,
          static_cast<float>(picture_.PixelHeight()) * TwipsPerPixel});
}

void MakeButton(Image& image) {
    image.Native()->setFocusPolicy(Qt::TabFocus);
    image.SetMousePointer(99);
}

}  // namespace larder
