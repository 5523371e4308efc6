#pragma once

namespace larder {

class Image;

// For a picture that is a button, as those that sort a list are. Tab reaches it and shows a ring
// around it, and Space presses it as the left mouse button does: OnMouseDown at the press,
// OnMouseUp and OnClick at the release, OnMouseUp alone when the press ends without one (the
// picture is hidden, the window loses the mouse). There is one press at a time, and none by the
// other mouse buttons. The mouse leaves the focus where it is. A screen reader finds a button and
// can press it.
void MakeButton(Image& image);

}  // namespace larder
