#include "platform/Picture.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QPen>
#include <QPixmap>
#include <QSize>
#include <algorithm>
#include <array>
#include <cerrno>
#include <map>

#include "platform/Failure.h"
#include "platform/Native.h"
#include "platform/Painting.h"
#include "platform/PictureContent.h"

// Outside any namespace: the name of the resource's set-up routine is a global one.
static void InitializeArt() {
    Q_INIT_RESOURCE(art);
}

namespace larder {

namespace {

constexpr char Source[] = "Picture.FromFile";
// A photograph is kept at no more pixels than any screen has room for.
constexpr int KeptSide = 4096;
// What is larger than this on the device is rendered at this size and stretched.
constexpr int RenderedSide = 2 * KeptSide;
constexpr qint64 SvgLimit = 16 * 1024 * 1024;

bool IsFolder(int descriptor) {
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

// Remembers a failed read, after which a decoder may still deliver half a picture or say that the
// file holds none.
class PictureFile : public QFile {
  public:
    bool ReadFailed() const { return readFailed_; }

  protected:
    qint64 readData(char* to, qint64 count) override {
        const qint64 got = QFile::readData(to, count);
        if (got < 0) readFailed_ = true;
        return got;
    }

  private:
    bool readFailed_ = false;
};

void Open(QFile& file, const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        const int error = errno;
        switch (error) {
            case ENOENT:
            case ENOTDIR:
                throw Failure(failure::FileNotFound, Source);
            case ENOMEDIUM:
            case ENXIO:
            case ENODEV:
            case EIO:
                throw Failure(failure::DriveNotReady, Source);
            default:
                throw Failure(failure::PathAccess, Source);
        }
    }
    const bool opened = file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    if (!opened || IsFolder(descriptor)) throw Failure(failure::PathAccess, Source);
}

bool LooksLikeDrawing(QFile& file) {
    const QByteArray head = file.peek(4096).trimmed();
    return head.startsWith('<') || head.startsWith("\xEF\xBB\xBF<");
}

bool IsPhotographFormat(const QByteArray& format) {
    static constexpr std::array<const char*, 4> formats = {"jpeg", "bmp", "gif", "png"};
    return std::find(formats.begin(), formats.end(), format) != formats.end();
}

std::shared_ptr<const Picture::Content> ReadDrawing(QFile& file) {
    if (file.size() > SvgLimit) return nullptr;
    return DrawingContent(file.readAll().toStdString());
}

std::shared_ptr<const Picture::Content> ReadPhotograph(QFile& file) {
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    QSize size = reader.size();  // before anything is decoded, and before the turn
    const bool known = IsPhotographFormat(reader.format());
    if (!known || size.isEmpty()) return nullptr;
    if (!MayBeDecoded(size)) return nullptr;

    if (std::max(size.width(), size.height()) > KeptSide) {
        reader.setScaledSize(
            size.scaled(KeptSide, KeptSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    }
    const QImage image = reader.read();
    if (image.isNull()) return nullptr;
    if (reader.transformation() & QImageIOHandler::TransformationRotate90) size.transpose();
    return PhotographContent(image, size);
}

}  // namespace

bool MayBeDecoded(const QSize& pixels) {
    constexpr qint64 limit = 100'000'000;
    QImageReader::setAllocationLimit(static_cast<int>(limit * 8 / (1024 * 1024)));
    // A bitmap that begins at its top has a negative height.
    const qint64 count = qAbs(qint64{pixels.width()} * pixels.height());
    return count > 0 && count <= limit;
}

Picture Picture::FromArt(const std::string& name) {
    InitializeArt();
    static std::map<std::string, std::weak_ptr<const Content>> known;
    std::weak_ptr<const Content>& entry = known[name];
    auto content = entry.lock();
    if (content == nullptr) {
        content = ArtContent(":/art/" + name + ".svg");
        if (content == nullptr) {
            throw Failure(failure::FileNotFound, "Picture.FromArt", "No art named " + name);
        }
        entry = content;
    }
    return Picture(content);
}

Picture Picture::FromFile(const std::string& nativePath) {
    PictureFile file;
    Open(file, nativePath);
    auto content = LooksLikeDrawing(file) ? ReadDrawing(file) : ReadPhotograph(file);
    if (file.ReadFailed()) throw Failure(failure::DriveNotReady, Source);
    if (content == nullptr) throw Failure(failure::InvalidPicture, Source);
    return Picture(std::move(content));
}

int Picture::PixelWidth() const {
    return IsEmpty() ? 0 : content_->OwnSize().width();
}

int Picture::PixelHeight() const {
    return IsEmpty() ? 0 : content_->OwnSize().height();
}

QPixmap PixmapOf(const Picture& picture, const QSize& devicePixels) {
    if (picture.IsEmpty() || devicePixels.isEmpty()) return {};
    return picture.Shared()->At(devicePixels);
}

void PaintPicture(QPainter& painter, const Picture& picture, const QRect& place) {
    const qreal ratio = painter.device()->devicePixelRatioF();
    const QSize size(qRound(place.width() * ratio), qRound(place.height() * ratio));
    const QPixmap pixmap = PixmapOf(picture, size);
    if (!pixmap.isNull()) painter.drawPixmap(place, pixmap);
}

void PaintSilhouette(QPainter& painter, const Picture& picture, const QRect& place,
                     const QColor& color) {
    const qreal ratio = painter.device()->devicePixelRatioF();
    const QSize size(qRound(place.width() * ratio), qRound(place.height() * ratio));
    QPixmap shape = PixmapOf(picture, size);
    if (shape.isNull()) return;
    QPainter tint(&shape);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tint.fillRect(shape.rect(), color);
    tint.end();
    painter.drawPixmap(place, shape);
}

void PaintPart(QPainter& painter, const Picture& picture, const QRect& place, const QRect& seen) {
    const qreal ratio = painter.device()->devicePixelRatioF();
    QSize size(qRound(place.width() * ratio), qRound(place.height() * ratio));
    if (std::max(size.width(), size.height()) <= RenderedSide) {
        PaintPicture(painter, picture, place);
        return;
    }
    size = size.scaled(RenderedSide, RenderedSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    const QPixmap pixmap = PixmapOf(picture, size);
    if (pixmap.isNull()) return;
    const QRectF part = QRectF(seen & place).translated(-place.topLeft());
    const qreal across = qreal(size.width()) / place.width();
    const qreal down = qreal(size.height()) / place.height();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(
        QRectF(seen & place), pixmap,
        {part.x() * across, part.y() * down, part.width() * across, part.height() * down});
}

void PaintFocusRing(QPainter& painter, const QRect& place) {
    const qreal inset = std::clamp(std::min(place.width(), place.height()) / 8.0, 2.0, 6.0);
    const QRectF ring = QRectF(place).adjusted(inset, inset, -inset, -inset);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(NativeColor(house::Navy), 4));
    painter.drawRoundedRect(ring, 4, 4);
    painter.setPen(QPen(NativeColor(house::Brass), 2));
    painter.drawRoundedRect(ring, 4, 4);
}

Picture WithoutGround(const Picture& picture) {
    if (picture.IsEmpty()) return picture;
    const QImage photograph = picture.Shared()->Photograph();
    if (photograph.isNull() || photograph.hasAlphaChannel()) return picture;
    QImage cut = photograph.convertToFormat(QImage::Format_ARGB32);
    const QRgb ground = cut.pixel(0, 0);
    for (int y = 0; y < cut.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(cut.scanLine(y));
        std::replace(line, line + cut.width(), ground, qRgba(0, 0, 0, 0));
    }
    return Picture(PhotographContent(cut, picture.Shared()->OwnSize()));
}

}  // namespace larder
