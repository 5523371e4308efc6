#pragma once

#include "platform/rtf/RichText.h"

class QTextBlockFormat;
class QTextCharFormat;

// The formats of rich text in Qt's terms and back. For the Qt side of the platform layer only.
namespace larder {

// A line break inside a paragraph, in Qt's text.
inline constexpr char16_t kLineSeparator = u'\u2028';
// The property of Qt's formats, behind those that carry the font, that numbers a picture.
inline constexpr int kPictureProperty = 0x100000 + 16;

// Sizes are points at 96 dots an inch; `dotsPerInch` is what the screen takes for an inch. The
// house's fonts stand in for the document's, whose name is kept beside and comes back unchanged.
QTextCharFormat NativeFormat(const RichText& document, const CharFormat& format,
                             double dotsPerInch);
QTextBlockFormat NativeFormat(const ParaFormat& format);

// Formats of foreign origin (pasted text) too. The font goes into the document's table.
CharFormat CharFormatOf(const QTextCharFormat& native, RichText& document, double dotsPerInch);
ParaFormat ParaFormatOf(const QTextBlockFormat& native);

}  // namespace larder
