#include "platform/RichTextPaper.h"

#include <QBrush>
#include <QColor>
#include <QTextCharFormat>
#include <algorithm>
#include <cmath>

#include "platform/Native.h"

namespace larder {

namespace {

// Of a ground that is as good as white: a saturation and a value, of 255.
constexpr int kPale = 30;
constexpr int kBright = 235;
constexpr double kSeen = 2;  // the contrast of text that can still be made out

double Brightness(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

// From 1, for colours as bright as each other, to 21, for black on white.
double Contrast(const QColor& one, const QColor& other) {
    const auto [dark, bright] = std::minmax({Brightness(one), Brightness(other)});
    return (bright + 0.05) / (dark + 0.05);
}

// A colour that lets some of the paper through.
QColor Mixed(const QColor& color, const QColor& paper) {
    const auto mix = [&color](int top, int below) {
        return below + (top - below) * color.alpha() / 255;
    };
    return {mix(color.red(), paper.red()), mix(color.green(), paper.green()),
            mix(color.blue(), paper.blue())};
}

}  // namespace

QTextCharFormat OnPaper(const QTextCharFormat& native) {
    QTextCharFormat format = native;
    const QColor paper = NativeColor(house::Paper);
    bool marked = format.hasProperty(QTextFormat::BackgroundBrush);
    if (marked) {
        const QColor ground = Mixed(format.background().color(), paper);
        marked = ground.hsvSaturation() >= kPale || ground.value() <= kBright;
        marked ? format.setBackground(ground) : format.clearBackground();
    }
    const bool coloured = format.hasProperty(QTextFormat::ForegroundBrush);
    if (coloured && !marked && Contrast(format.foreground().color(), paper) < kSeen) {
        format.clearForeground();
    }
    return format;
}

}  // namespace larder
