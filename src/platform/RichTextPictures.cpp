#include "platform/RichTextPictures.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageReader>
#include <QSize>
#include <QSizeF>
#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <string>

#include "platform/Native.h"
#include "platform/PictureContent.h"

namespace larder {

namespace {

constexpr int kFileHeader = 14;  // bytes before the bitmap in a bitmap file
constexpr double kUnreadableSize = 32.0;

// Of a picture that comes in. The pixels are those of the book's own photographs: three to each of
// the page's at the largest size below, enough for print and for any screen, where those of a
// camera would make the text of a recipe some hundred megabytes long. The size on the screen is
// what the page of the main window has room for in its width, and the editor's sheet in its height,
// when the screen has 1024 x 768.
constexpr QSize kMostPixels(1280, 960);
constexpr QSizeF kMostShown(384, 400);
constexpr int kJpegQuality = 90;

// How far behind the start of a bitmap its pixels begin: behind the header and its colour table.
quint32 PixelOffset(const QByteArray& dib) {
    if (dib.size() < 40) return static_cast<quint32>(dib.size());
    const auto* bytes = reinterpret_cast<const uchar*>(dib.constData());
    const auto header = qFromLittleEndian<quint32>(bytes);
    const auto depth = qFromLittleEndian<quint16>(bytes + 14);
    const auto compression = qFromLittleEndian<quint32>(bytes + 16);
    const auto used = qFromLittleEndian<quint32>(bytes + 32);
    quint32 entries = depth <= 8 ? (used > 0 && used <= 256 ? used : 1U << depth) : 0;
    if (header == 40 && compression == 3) entries = 3;  // the masks of the colours
    return header + entries * 4;
}

QImage Decoded(QByteArray bytes, const char* format) {
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, format);
    return MayBeDecoded(reader.size()) ? reader.read() : QImage();
}

QImage ImageOfDib(const QByteArray& dib) {
    QByteArray file(kFileHeader, '\0');
    auto* bytes = reinterpret_cast<uchar*>(file.data());
    bytes[0] = 'B';
    bytes[1] = 'M';
    qToLittleEndian(static_cast<quint32>(dib.size() + kFileHeader), bytes + 2);
    qToLittleEndian(PixelOffset(dib) + kFileHeader, bytes + 10);
    return Decoded(file + dib, "BMP");
}

bool IsWithin(const QSizeF& size, const QSizeF& limit) {
    return size.width() <= limit.width() && size.height() <= limit.height();
}

// The image itself where it is within the limit.
QImage WithinLimits(const QImage& image) {
    const bool alpha = image.hasAlphaChannel();
    const QImage plain = image.depth() > 32 ? image.convertToFormat(alpha ? QImage::Format_ARGB32
                                                                          : QImage::Format_RGB32)
                                            : image;
    if (IsWithin(plain.size(), kMostPixels)) return plain;
    return plain.scaled(kMostPixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

QSizeF WithinLimits(const QSizeF& size) {
    return IsWithin(size, kMostShown) ? size : size.scaled(kMostShown, Qt::KeepAspectRatio);
}

void SetImage(RichPicture& picture, const QImage& image, PictureKind kind) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (kind == PictureKind::Jpeg) {
        image.save(&buffer, "JPG", kJpegQuality);
    } else {
        image.save(&buffer, "PNG");
    }
    picture.kind = kind;
    picture.bytes = std::make_shared<const std::string>(bytes.constData(),
                                                        static_cast<std::size_t>(bytes.size()));
}

void SetSize(RichPicture& picture, const QSizeF& pixels) {
    const auto twips = [](double side) {
        return static_cast<std::int32_t>(std::lround(std::max(side, 1.0) * TwipsPerPixel));
    };
    picture.goalWidth = twips(pixels.width());
    picture.goalHeight = twips(pixels.height());
}

}  // namespace

QImage ImageOf(const RichPicture& picture) {
    QImage image;
    const bool fits =
        picture.bytes && picture.bytes->size() <= std::size_t{std::numeric_limits<int>::max()} / 2;
    if (fits) {
        const auto bytes = QByteArray::fromRawData(picture.bytes->data(),
                                                   static_cast<qsizetype>(picture.bytes->size()));
        switch (picture.kind) {
            case PictureKind::Png:
                image = Decoded(bytes, "PNG");
                break;
            case PictureKind::Jpeg:
                image = Decoded(bytes, "JPG");
                break;
            case PictureKind::Dib:
                image = ImageOfDib(bytes);
                break;
            case PictureKind::Placeholder:
                break;
        }
    }
    if (image.isNull()) {
        image = QImage(1, 1, QImage::Format_RGB32);
        image.fill(NativeColor(house::PaleBar));
    }
    return image;
}

QSizeF ShownSize(const RichPicture& picture, const QImage& image) {
    const bool patch = image.width() == 1 && image.height() == 1;
    const auto side = [patch](std::int32_t goal, int own) {
        if (goal > 0) return goal / static_cast<double>(TwipsPerPixel);
        return patch ? kUnreadableSize : static_cast<double>(own);
    };
    return {side(picture.goalWidth, image.width()), side(picture.goalHeight, image.height())};
}

RichPicture PictureOf(const QImage& image) {
    RichPicture picture;
    SetImage(picture, WithinLimits(image), PictureKind::Png);
    SetSize(picture, WithinLimits(QSizeF(image.size())));
    return picture;
}

RichPicture WithinLimits(RichPicture picture) {
    const QImage image = ImageOf(picture);
    const QSizeF size = ShownSize(picture, image);
    const QImage kept = WithinLimits(image);
    const bool isLimited = kept.cacheKey() != image.cacheKey();
    if (isLimited) {
        const bool photograph = picture.kind == PictureKind::Jpeg;
        SetImage(picture, kept, photograph ? PictureKind::Jpeg : PictureKind::Png);
    }
    if (const QSizeF shown = WithinLimits(size); isLimited || shown != size) {
        SetSize(picture, shown);
    }
    return picture;
}

}  // namespace larder
