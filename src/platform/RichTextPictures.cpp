#include "platform/RichTextPictures.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QSizeF>
#include <QtEndian>
#include <cmath>
#include <limits>
#include <memory>
#include <string>

#include "platform/Native.h"

namespace larder {

namespace {

constexpr int kFileHeader = 14;  // bytes before the bitmap in a bitmap file
constexpr double kUnreadableSize = 32.0;

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

QImage ImageOfDib(const QByteArray& dib) {
    QByteArray file(kFileHeader, '\0');
    auto* bytes = reinterpret_cast<uchar*>(file.data());
    bytes[0] = 'B';
    bytes[1] = 'M';
    qToLittleEndian(static_cast<quint32>(dib.size() + kFileHeader), bytes + 2);
    qToLittleEndian(PixelOffset(dib) + kFileHeader, bytes + 10);
    return QImage::fromData(file + dib, "BMP");
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
                image = QImage::fromData(bytes, "PNG");
                break;
            case PictureKind::Jpeg:
                image = QImage::fromData(bytes, "JPG");
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
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    RichPicture picture;
    picture.kind = PictureKind::Png;
    picture.bytes =
        std::make_shared<const std::string>(png.constData(), static_cast<std::size_t>(png.size()));
    picture.goalWidth = static_cast<std::int32_t>(image.width() * TwipsPerPixel);
    picture.goalHeight = static_cast<std::int32_t>(image.height() * TwipsPerPixel);
    return picture;
}

}  // namespace larder
