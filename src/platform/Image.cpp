#include "platform/Image.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

#include "platform/Handlers.h"
#include "platform/Native.h"
#include "platform/Painting.h"

namespace larder {

class Image::Widget : public QWidget {
  public:
    Widget(QWidget* parent, Image& image) : QWidget(parent), image_(image) {
        SetAccessibleRole(*this, QAccessible::Graphic);
        setMouseTracking(true);
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        PaintPart(painter, image_.picture_, rect(), event->rect());
    }

    void mousePressEvent(QMouseEvent* event) override {
        event->setAccepted(image_.OnClick || image_.OnMouseDown || image_.OnMouseUp);
        FireMouse(image_.OnMouseDown, *event);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void mouseMoveEvent(QMouseEvent* event) override { FireMouse(image_.OnMouseMove, *event); }

    void mouseReleaseEvent(QMouseEvent* event) override {
        const bool clicks =
            event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
        FireMouse(image_.OnMouseUp, *event);
        if (clicks) Fire(image_.OnClick);
    }

  private:
    Image& image_;
};

Image::Image(Container& container, const std::string& name, int index)
    : Control(container, name, index, new Widget(ParentFor(container), *this)) {}

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

void Image::TakePictureSize() {
    if (stretch_ || picture_.IsEmpty()) return;
    Move({Left(), Top(), static_cast<float>(picture_.PixelWidth()) * TwipsPerPixel,
          static_cast<float>(picture_.PixelHeight()) * TwipsPerPixel});
}

}  // namespace larder
