#include "platform/PictureContent.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QSize>
#include <QString>
#include <QSvgRenderer>
#include <algorithm>
#include <vector>

namespace larder {

namespace {

// The last renderings by size: a picture is on the window in one or two sizes at a time, and a
// resize asks for each size once.
class Renderings {
  public:
    template <typename Render>
    QPixmap At(const QSize& size, Render&& render) {
        const auto found = std::find_if(kept_.begin(), kept_.end(), [&](const QPixmap& pixmap) {
            return pixmap.size() == size;
        });
        if (found != kept_.end()) return *found;
        if (kept_.size() == Limit) kept_.erase(kept_.begin());
        kept_.push_back(QPixmap::fromImage(render()));
        return kept_.back();
    }

  private:
    static constexpr std::size_t Limit = 3;
    std::vector<QPixmap> kept_;
};

class Drawing : public Picture::Content {
  public:
    explicit Drawing(QString resource) : resource_(std::move(resource)) {}
    explicit Drawing(std::unique_ptr<QSvgRenderer> renderer) : renderer_(std::move(renderer)) {}

    QSize OwnSize() const override { return Renderer().defaultSize(); }
    QImage Photograph() const override { return {}; }

    QPixmap At(const QSize& size) const override {
        return renderings_.At(size, [&] {
            QImage image(size, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            Paint(painter, QRectF(QPointF(0, 0), QSizeF(size)));
            return image;
        });
    }

    void Paint(QPainter& painter, const QRectF& place) const override {
        Renderer().render(&painter, place);
    }

  private:
    QSvgRenderer& Renderer() const {
        if (renderer_ == nullptr) {
            renderer_ = std::make_unique<QSvgRenderer>(resource_);
            renderer_->setAspectRatioMode(Qt::IgnoreAspectRatio);
        }
        return *renderer_;
    }

    QString resource_;
    mutable std::unique_ptr<QSvgRenderer> renderer_;
    mutable Renderings renderings_;
};

class DecodedPhotograph : public Picture::Content {
  public:
    DecodedPhotograph(QImage image, QSize ownSize) : image_(std::move(image)), ownSize_(ownSize) {}

    QSize OwnSize() const override { return ownSize_; }
    QImage Photograph() const override { return image_; }

    QPixmap At(const QSize& size) const override {
        return renderings_.At(size, [&] {
            return image_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        });
    }

    void Paint(QPainter& painter, const QRectF& place) const override {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(place, image_);
    }

  private:
    QImage image_;
    QSize ownSize_;
    mutable Renderings renderings_;
};

}  // namespace

std::shared_ptr<const Picture::Content> ArtContent(const std::string& resource) {
    const QString path = QString::fromStdString(resource);
    if (!QFile::exists(path)) return nullptr;
    return std::make_shared<Drawing>(path);
}

std::shared_ptr<const Picture::Content> DrawingContent(const std::string& svg) {
    auto renderer = std::make_unique<QSvgRenderer>(QByteArray::fromStdString(svg));
    if (!renderer->isValid() || renderer->defaultSize().isEmpty()) return nullptr;
    renderer->setAspectRatioMode(Qt::IgnoreAspectRatio);
    return std::make_shared<Drawing>(std::move(renderer));
}

std::shared_ptr<const Picture::Content> PhotographContent(const QImage& image,
                                                          const QSize& ownSize) {
    return std::make_shared<DecodedPhotograph>(image, ownSize);
}

}  // namespace larder
