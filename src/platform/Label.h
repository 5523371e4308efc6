#pragma once

#include <functional>
#include <string>

#include "platform/Control.h"

namespace larder {

// Text on the window, with a transparent ground, in the middle of its height. It breaks into as
// many lines as there is room for; a text that does not fit ends in an ellipsis and is then part of
// the tool tip.
class Label : public Control {
  public:
    enum class Alignment { Left, Right, Center };

    Label(Container& container, const std::string& name, int index = 0);

    const std::string& Caption() const { return caption_; }
    void SetCaption(const std::string& caption);
    void SetFont(const Font& font);
    const Font& LabelFont() const { return font_; }
    void SetForeColor(std::int32_t color);
    void SetAlignment(Alignment alignment);

    std::function<void()> OnClick;
    std::function<void(int Button, int Shift, float X, float Y)> OnMouseDown;
    std::function<void(int Button, int Shift, float X, float Y)> OnMouseUp;

  private:
    class Widget;
    Widget* Mine() const;
    void TellToolTip();
    std::string caption_;
    Font font_;
};

}  // namespace larder
