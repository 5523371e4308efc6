#include "platform/RichTextFormats.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QString>
#include <QStringList>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextOption>
#include <algorithm>
#include <array>
#include <cmath>

#include "platform/Fonts.h"
#include "platform/Native.h"

namespace larder {

namespace {

// The document's own font and size, kept with Qt's format.
enum Property { FontName = QTextFormat::UserProperty, FontKind, HalfPoints };

constexpr double kDotsPerInch = 96.0;

enum class Class { Serif, Sans, Mono };

Class ClassByName(const QString& name) {
    static const std::array mono = {QLatin1String("courier"), QLatin1String("mono"),
                                    QLatin1String("consolas"), QLatin1String("typewriter")};
    static const std::array sans = {QLatin1String("arial"),   QLatin1String("helvetica"),
                                    QLatin1String("sans"),    QLatin1String("tahoma"),
                                    QLatin1String("verdana"), QLatin1String("calibri"),
                                    QLatin1String("segoe"),   QLatin1String("carlito"),
                                    QLatin1String("lato"),    QLatin1String("trebuchet")};
    const auto holds = [&name](QLatin1String part) {
        return name.contains(part, Qt::CaseInsensitive);
    };
    if (std::any_of(mono.begin(), mono.end(), holds)) return Class::Mono;
    return std::any_of(sans.begin(), sans.end(), holds) ? Class::Sans : Class::Serif;
}

Class ClassOf(const RichFont& font, const QString& name) {
    switch (font.family) {
        case FontFamily::Roman:
            return Class::Serif;
        case FontFamily::Swiss:
            return Class::Sans;
        case FontFamily::Modern:
            return Class::Mono;
        default:
            return ClassByName(name);
    }
}

QStringList FamiliesOf(Class fontClass) {
    if (fontClass == Class::Mono) {
        return {QStringLiteral("DejaVu Sans Mono"), QStringLiteral("Liberation Mono"),
                QStringLiteral("monospace")};
    }
    const auto face = fontClass == Class::Sans ? Font::Family::Sans : Font::Family::Serif;
    return NativeFamilies(face);
}

void SetFont(QTextCharFormat& native, const RichFont& font) {
    const QString name = QString::fromStdString(font.name);
    native.setProperty(FontName, name);
    native.setProperty(FontKind, static_cast<int>(font.family) << 8 | font.charset);
    native.setFontFamilies(FamiliesOf(ClassOf(font, name)));
}

RichFont FontOf(const QTextCharFormat& native) {
    RichFont font;
    if (native.hasProperty(FontName)) {
        font.name = native.stringProperty(FontName).toStdString();
        font.family = static_cast<FontFamily>(native.intProperty(FontKind) >> 8);
        font.charset = static_cast<std::uint8_t>(native.intProperty(FontKind) & 0xFF);
        return font;
    }
    const QStringList families = native.fontFamilies().toStringList();
    if (families.isEmpty()) return font;
    font.name = families.front().toStdString();
    switch (ClassByName(families.front())) {
        case Class::Serif:
            font.family = FontFamily::Roman;
            break;
        case Class::Sans:
            font.family = FontFamily::Swiss;
            break;
        case Class::Mono:
            font.family = FontFamily::Modern;
            break;
    }
    return font;
}

std::uint16_t HalfPointsOf(const QTextCharFormat& native, double dotsPerInch) {
    if (native.hasProperty(HalfPoints)) {
        return static_cast<std::uint16_t>(native.intProperty(HalfPoints));
    }
    double points = 12.0;
    if (native.hasProperty(QTextFormat::FontPointSize)) {
        points = native.fontPointSize() * dotsPerInch / kDotsPerInch;
    } else if (native.hasProperty(QTextFormat::FontPixelSize)) {
        points = native.intProperty(QTextFormat::FontPixelSize) * 72.0 / kDotsPerInch;
    }
    return static_cast<std::uint16_t>(
        std::clamp(std::lround(points * 2), 1L, static_cast<long>(kMostHalfPoints)));
}

std::uint32_t ColourOf(const QBrush& brush) {
    const QColor color = brush.color();
    return static_cast<std::uint32_t>(color.red() | color.green() << 8 | color.blue() << 16);
}

double PixelsOf(std::int32_t twips) {
    return twips / static_cast<double>(TwipsPerPixel);
}

std::int32_t TwipsOf(double pixels) {
    const double twips = std::clamp(pixels * static_cast<double>(TwipsPerPixel), -1.0 * kMostTwips,
                                    1.0 * kMostTwips);
    return static_cast<std::int32_t>(std::lround(twips));
}

QTextOption::TabType NativeKind(TabKind kind) {
    switch (kind) {
        case TabKind::Right:
            return QTextOption::RightTab;
        case TabKind::Centre:
            return QTextOption::CenterTab;
        case TabKind::Decimal:
            return QTextOption::DelimiterTab;
        default:
            return QTextOption::LeftTab;
    }
}

TabKind KindOf(QTextOption::TabType type) {
    switch (type) {
        case QTextOption::RightTab:
            return TabKind::Right;
        case QTextOption::CenterTab:
            return TabKind::Centre;
        case QTextOption::DelimiterTab:
            return TabKind::Decimal;
        default:
            return TabKind::Left;
    }
}

Qt::Alignment NativeAlignment(Alignment alignment) {
    switch (alignment) {
        case Alignment::Right:
            return Qt::AlignRight;
        case Alignment::Centre:
            return Qt::AlignHCenter;
        case Alignment::Justify:
            return Qt::AlignJustify;
        default:
            return Qt::AlignLeft;
    }
}

Alignment AlignmentOf(Qt::Alignment native) {
    if (native & Qt::AlignRight) return Alignment::Right;
    if (native & Qt::AlignHCenter) return Alignment::Centre;
    return native & Qt::AlignJustify ? Alignment::Justify : Alignment::Left;
}

}  // namespace

QTextCharFormat NativeFormat(const RichText& document, const CharFormat& format,
                             double dotsPerInch) {
    QTextCharFormat native;
    SetFont(native, document.Fonts()[format.font]);
    native.setProperty(HalfPoints, format.halfPoints);
    native.setFontPointSize(format.halfPoints / 2.0 * kDotsPerInch / dotsPerInch);
    if (format.colour != kAutomaticColour) {
        native.setForeground(NativeColor(static_cast<std::int32_t>(format.colour)));
    }
    if (format.highlight != kAutomaticColour) {
        native.setBackground(NativeColor(static_cast<std::int32_t>(format.highlight)));
    }
    if (format.bold) native.setFontWeight(QFont::Bold);
    if (format.italic) native.setFontItalic(true);
    if (format.underline) native.setFontUnderline(true);
    if (format.strike) native.setFontStrikeOut(true);
    if (format.script == Script::Super) {
        native.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
    } else if (format.script == Script::Sub) {
        native.setVerticalAlignment(QTextCharFormat::AlignSubScript);
    }
    return native;
}

CharFormat CharFormatOf(const QTextCharFormat& native, RichText& document, double dotsPerInch) {
    CharFormat format;
    format.font = document.InternFont(FontOf(native));
    format.halfPoints = HalfPointsOf(native, dotsPerInch);
    if (native.hasProperty(QTextFormat::ForegroundBrush)) {
        format.colour = ColourOf(native.foreground());
    }
    if (native.hasProperty(QTextFormat::BackgroundBrush) &&
        native.background().style() != Qt::NoBrush) {
        format.highlight = ColourOf(native.background());
    }
    format.bold = native.fontWeight() >= QFont::DemiBold;
    format.italic = native.fontItalic();
    format.underline = native.fontUnderline();
    format.strike = native.fontStrikeOut();
    if (native.verticalAlignment() == QTextCharFormat::AlignSuperScript) {
        format.script = Script::Super;
    } else if (native.verticalAlignment() == QTextCharFormat::AlignSubScript) {
        format.script = Script::Sub;
    }
    return format;
}

QTextBlockFormat NativeFormat(const ParaFormat& format) {
    QTextBlockFormat native;
    native.setAlignment(NativeAlignment(format.alignment));
    native.setLeftMargin(PixelsOf(format.left));
    native.setRightMargin(PixelsOf(format.right));
    native.setTextIndent(PixelsOf(format.firstLine));
    native.setTopMargin(PixelsOf(format.spaceBefore));
    native.setBottomMargin(PixelsOf(format.spaceAfter));
    QList<QTextOption::Tab> tabs;
    for (const TabStop& tab : format.tabs) {
        tabs.append({PixelsOf(tab.position), NativeKind(tab.kind), QLatin1Char('.')});
    }
    if (!tabs.isEmpty()) native.setTabPositions(tabs);
    return native;
}

ParaFormat ParaFormatOf(const QTextBlockFormat& native) {
    ParaFormat format;
    format.alignment = AlignmentOf(native.alignment());
    format.left = TwipsOf(native.leftMargin());
    format.right = TwipsOf(native.rightMargin());
    format.firstLine = TwipsOf(native.textIndent());
    format.spaceBefore = TwipsOf(native.topMargin());
    format.spaceAfter = TwipsOf(native.bottomMargin());
    for (const QTextOption::Tab& tab : native.tabPositions()) {
        format.tabs.push_back({TwipsOf(tab.position), KindOf(tab.type)});
    }
    return format;
}

}  // namespace larder
