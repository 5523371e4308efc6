#pragma once

#include "platform/RichTextWidget.h"

class QMimeData;
class QTextCursor;

// What the text gives to the clipboard and takes from it, and drags likewise. For the Qt side of
// the platform layer only.
namespace larder {

// The text as RTF, and as Qt has it selected as HTML and plain. The caller owns it.
QMimeData* MimeOf(const RichText& text, const QTextCursor& selection);

bool CanTake(const QMimeData& source);
// The richest form that the source has is put into the host's selection: RTF, HTML, plain text,
// a picture.
void Take(const QMimeData& source, RichTextWidget::Host& host, double dotsPerInch);

}  // namespace larder
