#include "platform/RichTextLine.h"

#include "platform/RichTextWidget.h"

namespace larder {

RichTextLine::RichTextLine(Container& container, const std::string& name)
    : RichTextBox(container, name) {
    RichTextWidget::KeepOneLine(*Native());
}

}  // namespace larder
