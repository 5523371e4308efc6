#pragma once

class QColor;
class QPainter;
class QPixmap;
class QRect;
class QSize;

namespace larder {

class Picture;

// Pictures on the Qt side of the platform layer.

// The picture at exactly this many pixels of the device; kept for the next time. Null when the
// picture is empty.
QPixmap PixmapOf(const Picture& picture, const QSize& devicePixels);

// Draws it over the place, stretched, as sharp as the device can show.
void PaintPicture(QPainter& painter, const Picture& picture, const QRect& place);

// The same for a place of any size, of which the window shows the part `seen`: a narrow strip that
// covers a wide frame is a thousand times longer than the screen.
void PaintPart(QPainter& painter, const Picture& picture, const QRect& place, const QRect& seen);

// Its shape in one colour: an icon on a ground that its own colours would be lost on.
void PaintSilhouette(QPainter& painter, const Picture& picture, const QRect& place,
                     const QColor& color);

// Tells that a control of this place has the focus: brass on a line of navy, within the edge that
// the art may draw, seen on paper and on dark wood.
void PaintFocusRing(QPainter& painter, const QRect& place);

// The picture with the colour of its first pixel taken away, for a photograph without a
// transparent ground of its own; any other picture as it is.
Picture WithoutGround(const Picture& picture);

}  // namespace larder
