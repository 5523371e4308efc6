#include "platform/PictureExport.h"

#include <QImage>
#include <QPainter>
#include <QString>

#include "platform/Failure.h"
#include "platform/Painting.h"

namespace larder {

void SaveAsJpeg(const Picture& picture, const std::string& nativePath, int width, int height,
                int quality) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        PaintPicture(painter, picture, image.rect());
    }
    if (!image.save(QString::fromStdString(nativePath), "JPEG", quality)) {
        throw Failure(failure::PathAccess, "SaveAsJpeg",
                      nativePath + "\n" + FailureText(failure::PathAccess));
    }
}

}  // namespace larder
