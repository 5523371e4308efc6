#pragma once

#include <memory>
#include <string>

#include "platform/Picture.h"

class QImage;
class QPainter;
class QPixmap;
class QRectF;
class QSize;

namespace larder {

// What a picture holds. For the Qt side of the platform layer only.
struct Picture::Content {
    virtual ~Content() = default;
    virtual QSize OwnSize() const = 0;
    virtual QPixmap At(const QSize& devicePixels) const = 0;
    // Draws it over the place, which may be larger than what the painter clips to.
    virtual void Paint(QPainter& painter, const QRectF& place) const = 0;
    // The decoded photograph; null for a drawing.
    virtual QImage Photograph() const = 0;
};

// Whether a photograph of so many pixels is decoded at all. Qt's own limit, which is lower, gives
// way to this one.
bool MayBeDecoded(const QSize& pixels);

// A drawing from a resource or file that is read and parsed at the first need; and one from its
// text. The text that is no drawing gives null.
std::shared_ptr<const Picture::Content> ArtContent(const std::string& resource);
std::shared_ptr<const Picture::Content> DrawingContent(const std::string& svg);
std::shared_ptr<const Picture::Content> PhotographContent(const QImage& image,
                                                          const QSize& ownSize);

}  // namespace larder
