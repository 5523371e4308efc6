#pragma once

#include <functional>
#include <string>

#include "platform/Control.h"
#include "platform/Elastic.h"
#include "platform/Picture.h"

namespace larder {

// A picture on the window. With Stretch it fills the control; without, the control takes on the
// picture's own size.
class Image : public Control {
  public:
    Image(Container& container, const std::string& name, int index = 0);

    // `Picture` of the original property; an empty one clears it.
    void SetPicture(const Picture& picture);
    const Picture& Shown() const { return picture_; }
    bool Stretch() const { return stretch_; }
    void SetStretch(bool stretch);
    // Where it gives way when it is stretched.
    void SetElastic(Elastic elastic);

    std::function<void()> OnClick;
    std::function<void(int Button, int Shift, float X, float Y)> OnMouseDown;
    std::function<void(int Button, int Shift, float X, float Y)> OnMouseMove;
    std::function<void(int Button, int Shift, float X, float Y)> OnMouseUp;

  private:
    class Widget;
    Widget* Mine() const;
    void TakePictureSize();
    Picture picture_;
    bool stretch_ = true;
};

}  // namespace larder
