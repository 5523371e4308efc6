#include "platform/RichTextPictureView.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextImageFormat>
#include <QTextObjectInterface>
#include <QUrl>
#include <algorithm>
#include <cstring>
#include <map>

namespace larder {

namespace {

// The width between the margins of the paragraph at a position; 0 before the first layout.
double RoomAt(const QTextDocument& document, int position) {
    const QTextFrameFormat frame = document.rootFrame()->frameFormat();
    const QTextBlockFormat block = document.findBlock(position).blockFormat();
    const double margins = frame.leftMargin() + frame.rightMargin() + block.leftMargin() +
                           block.rightMargin() + std::max(block.textIndent(), 0.0);
    return std::max(document.pageSize().width() - margins, 0.0);
}

// Has each picture scaled for the screen once and not for every blink of the caret.
class PictureView : public QObject, public QTextObjectInterface {
  public:
    explicit PictureView(QObject* parent) : QObject(parent) {}

    void* qt_metacast(const char* name) override {
        if (std::strcmp(name, qobject_interface_iid<QTextObjectInterface*>()) == 0) {
            return static_cast<QTextObjectInterface*>(this);
        }
        return QObject::qt_metacast(name);
    }

    QSizeF intrinsicSize(QTextDocument* document, int position,
                         const QTextFormat& format) override {
        const QTextImageFormat picture = format.toImageFormat();
        const QSizeF size(picture.width(), picture.height());
        const double room = RoomAt(*document, position);
        return room > 0 && size.width() > room ? size * (room / size.width()) : size;
    }

    void drawObject(QPainter* painter, const QRectF& place, QTextDocument* document, int,
                    const QTextFormat& format) override {
        const QUrl url(format.toImageFormat().name());
        const auto image = document->resource(QTextDocument::ImageResource, url).value<QImage>();
        const double sharpness = painter->device()->devicePixelRatio();
        const QSize pixels = (place.size() * sharpness).toSize().expandedTo({1, 1});
        painter->drawImage(place, Scaled(image, url, pixels));
    }

  private:
    struct Shown {
        qint64 source = 0;
        QImage image;
    };

    const QImage& Scaled(const QImage& image, const QUrl& url, const QSize& pixels) {
        Shown& shown = shown_[url];
        if (shown.source != image.cacheKey() || shown.image.size() != pixels) {
            shown = {image.cacheKey(),
                     image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)};
        }
        return shown.image;
    }

    std::map<QUrl, Shown> shown_;
};

}  // namespace

void FitPicturesInto(QTextDocument& document) {
    document.documentLayout()->registerHandler(QTextFormat::ImageObject,
                                               new PictureView(&document));
}

}  // namespace larder
