#pragma once

#include <optional>
#include <string>
#include <variant>

#include "platform/RichTextDocument.h"
#include "platform/rtf/RichText.h"

class QMimeData;
class QTextCursor;

// What the text gives to the clipboard and takes from it, and drags likewise. For the Qt side of
// the platform layer only.
namespace larder {

// The text as RTF, and as Qt has it selected as HTML and plain. The caller owns it.
QMimeData* MimeOf(const RichText& text, const QTextCursor& selection);

// What comes in. Plain text has the format of the place that it is put in.
using Incoming = std::variant<RichText, std::u16string>;

bool CanTake(const QMimeData& source);
// The richest form that the source has: RTF, HTML with words, plain text, a picture. Nothing when
// it has none of them, or only what cannot be read. HTML is seldom particular about its font: the
// base is that of the place.
std::optional<Incoming> IncomingFrom(const QMimeData& source, const RichTextBase& base,
                                     double dotsPerInch);
// The same for a box of one line: line ends before and behind it go, and text of several lines
// comes plain, with a blank for each of its ends.
Incoming InOneLine(const Incoming& incoming);

}  // namespace larder
