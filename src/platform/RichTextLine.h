#pragma once

#include <string>

#include "platform/RichTextBox.h"

namespace larder {

// A box of rich text for one line, such as a title. Text that is longer than the box scrolls
// sideways, and what the user pastes or drops into it comes in one line, so that nothing of it
// stands where nobody sees it. What Enter does is up to OnKeyDown; the program can put in any text.
class RichTextLine : public RichTextBox {
  public:
    RichTextLine(Container& container, const std::string& name);
};

}  // namespace larder
