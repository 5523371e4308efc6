#include "platform/ElasticPicture.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QRect>
#include <QSize>
#include <vector>

#include "platform/Elastic.h"
#include "platform/PictureContent.h"

namespace larder {

namespace {

// A part of the picture in one direction, and the pixels of the device that it is drawn over.
struct Piece {
    double From, To;  // in the picture's own pixels
    int First, End;   // of the device
    double Scale() const { return (End - First) / (To - From); }
};

double LengthOf(const std::vector<Elastic::Span>& spans) {
    double sum = 0;
    for (const Elastic::Span& span : spans)
        sum += double{span.To} - span.From;
    return sum;
}

// The picture's length `own` over `pixels` of a device that has `ratio` of them to a pixel. The
// pieces begin and end at whole pixels, so that neighbours neither gap nor blend.
std::vector<Piece> Divide(const std::vector<Elastic::Span>& spans, double own, int pixels,
                          double ratio) {
    const double gives = LengthOf(spans);
    const double left = pixels - (own - gives) * ratio;
    if (spans.empty() || left <= 0) return {{0, own, 0, pixels}};
    std::vector<Piece> pieces;
    double from = 0;
    double end = 0;
    const auto add = [&](double to, double scale) {
        const int first = pieces.empty() ? 0 : pieces.back().End;
        end += (to - from) * scale;
        if (qRound(end) > first) pieces.push_back({from, to, first, qRound(end)});
        from = to;
    };
    for (const Elastic::Span& span : spans) {
        add(span.From, ratio);
        add(span.To, left / gives);
    }
    add(own, ratio);
    return pieces;
}

}  // namespace

QPixmap ElasticPixmapOf(const Picture& picture, const Elastic& elastic, const QSize& devicePixels,
                        double ratio) {
    const QSizeF own(picture.PixelWidth(), picture.PixelHeight());
    QImage image(devicePixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    for (const Piece& down : Divide(elastic.Down, own.height(), devicePixels.height(), ratio)) {
        for (const Piece& across :
             Divide(elastic.Across, own.width(), devicePixels.width(), ratio)) {
            painter.setClipRect(
                QRect(QPoint(across.First, down.First), QPoint(across.End - 1, down.End - 1)));
            picture.Shared()->Paint(
                painter,
                {across.First - across.From * across.Scale(), down.First - down.From * down.Scale(),
                 own.width() * across.Scale(), own.height() * down.Scale()});
        }
    }
    painter.end();
    return QPixmap::fromImage(image);
}

}  // namespace larder
