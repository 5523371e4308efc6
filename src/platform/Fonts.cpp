#include "platform/Fonts.h"

#include <QFont>
#include <QList>
#include <QString>
#include <algorithm>
#include <cmath>

namespace larder {

QList<QString> NativeFamilies(Font::Family face) {
    if (face == Font::Family::Serif) {
        return {QStringLiteral("EB Garamond"), QStringLiteral("Gentium Book Basic"),
                QStringLiteral("Liberation Serif"), QStringLiteral("serif")};
    }
    return {QStringLiteral("Lato"), QStringLiteral("Carlito"), QStringLiteral("DejaVu Sans"),
            QStringLiteral("sans-serif")};
}

int FontPixels(float points) {
    return std::max(1, static_cast<int>(std::lround(points * 96.0F / 72.0F)));
}

QFont NativeFont(const Font& font) {
    QFont native;
    native.setFamilies(NativeFamilies(font.Face));
    native.setStyleHint(font.Face == Font::Family::Serif ? QFont::Serif : QFont::SansSerif);
    native.setPixelSize(FontPixels(font.Size));
    native.setBold(font.Bold);
    native.setItalic(font.Italic);
    return native;
}

}  // namespace larder
