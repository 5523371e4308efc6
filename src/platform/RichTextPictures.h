#pragma once

#include "platform/rtf/RichFormat.h"

class QImage;
class QSizeF;

// Pictures in rich text. For the Qt side of the platform layer only.
namespace larder {

// What is shown for the picture: a pale patch for one that cannot be read.
QImage ImageOf(const RichPicture& picture);

// The size on the screen in pixels: the goal of the document, else the picture's own.
QSizeF ShownSize(const RichPicture& picture, const QImage& image);

// A picture of the clipboard as a document keeps it, and one that came in with other text. Neither
// has more pixels than the page can use, and each is shown small enough to be seen whole.
RichPicture PictureOf(const QImage& image);
RichPicture WithinLimits(RichPicture picture);

}  // namespace larder
