#pragma once

class QPixmap;
class QSize;

namespace larder {

class Picture;
struct Elastic;

// The picture over this many pixels of a device that has `ratio` of them to a pixel, given way
// where it may; as sharp as the device can show. For the Qt side of the platform layer only.
QPixmap ElasticPixmapOf(const Picture& picture, const Elastic& elastic, const QSize& devicePixels,
                        double ratio);

}  // namespace larder
