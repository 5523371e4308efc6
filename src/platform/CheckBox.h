#pragma once

#include <functional>
#include <string>

#include "platform/Control.h"

namespace larder {

// A box to tick. An '&' in the caption marks its access key.
class CheckBox : public Control {
  public:
    CheckBox(Container& container, const std::string& name);

    void SetCaption(const std::string& caption);
    int Value() const;  // 0 or 1
    void SetValue(int value);
    // Invisible on the screen but able to hold the focus while it is not hidden: a place to put
    // the focus when no other control may show it. Tab and the mouse pass it by, and keys leave it
    // as it is.
    void MakeFocusCatcher();

    void SetFont(const Font& font);

    std::function<void()> OnClick;  // the user ticked it or took the tick away

  private:
    class Widget;
    Widget* Mine() const;
};

}  // namespace larder
