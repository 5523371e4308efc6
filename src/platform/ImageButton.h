#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/Control.h"
#include "platform/Picture.h"

namespace larder {

// The push button of the program: a picture with a normal, a pressed and, optionally, a disabled
// look, and a caption centred on it. Alt with the letter behind a '&' in the caption presses it.
//
// MouseDown comes at the press; MouseUp at the release, wherever that is, and also when the press
// ends without one (the button is hidden, the window loses the mouse); then Click, if the left
// button was released over it. There is one press at a time. A disabled look does not stop the
// events: handlers guard themselves. Space presses as the left mouse button does, Enter clicks; a
// button takes the focus by Tab unless it looks disabled, and by the mouse unless
// SetFocusOnClick(false).
class ImageButton : public Control {
  public:
    // Design-time properties.
    struct Design {
        Picture Image;  // normal look
        Picture ImagePressed;
        Picture ImageDisabled;  // optional: without it the button looks normal when disabled
        std::string Caption;    // often empty: the picture has the text
        larder::Font CaptionFont;
        std::int32_t ForColor = 0;
        bool Transparent = true;  // the picture's ground lets the window show through
    };

    enum State { Up = 0, Latched = 1, Disabled = 2 };

    explicit ImageButton(Container& container, const std::string& name);
    ImageButton(Container& container, const std::string& name, Design design);

    void SetDesign(Design design);
    std::int32_t ButtonState() const { return state_; }
    void SetButtonState(std::int32_t state);
    const std::string& Caption() const { return design_.Caption; }
    void SetCaption(const std::string& caption);
    void SetFocusOnClick(bool takes);
    // Which look is painted at this moment; for tests and accessibility.
    enum class Look { Normal, Pressed, Disabled };
    Look CurrentLook() const;

    std::function<void()> OnClick;
    std::function<void(int Button, int Shift, float X, float Y)> OnMouseDown;
    std::function<void(int Button, int Shift, float X, float Y)> OnMouseUp;

  private:
    class Widget;
    class Accessible;
    Widget* Mine() const;
    void TellCaption();
    void TellFocusPolicy();
    Design design_;
    std::int32_t state_ = Up;
    bool focusOnClick_ = true;
    bool pressed_ = false;  // a mouse button is held on it, or Space
};

}  // namespace larder
