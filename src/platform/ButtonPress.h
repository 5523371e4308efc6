#pragma once

#include <functional>
#include <memory>

class QMouseEvent;
class QWidget;

namespace larder {

// One press of a button, from its beginning to its end: by a mouse button, by Space or as a whole
// by the program, never by two at a time. The widget tells what it gets of the mouse and of Space;
// this looks out for all that keeps the release from coming: the widget is hidden or disabled, the
// window is blocked by a dialog or no longer the active one, a menu took the mouse, Space loses the
// focus.
class ButtonPress {
  public:
    // Called with the mouse button (as in platform/Keys.h) of a press that has ended without its
    // release; Space counts as the left one. May destroy the widget, unless it is just being
    // hidden.
    using Lost = std::function<void(int button)>;

    // For a widget that owns the press; it gets mouse moves without a button, too.
    ButtonPress(QWidget* widget, Lost lost);
    ~ButtonPress();
    ButtonPress(const ButtonPress&) = delete;
    ButtonPress& operator=(const ButtonPress&) = delete;

    bool IsHeldByMouse() const;
    bool IsHeldBySpace() const;

    // False when there is a press already.
    bool BeginByMouse(const QMouseEvent& event);
    bool BeginBySpace();
    // What Enter, an access key or assistive technology makes: whatever is done in between, another
    // press is not begun.
    bool BeginByProgram();
    // True when that was the release of this press, which has ended then.
    bool EndByMouse(const QMouseEvent& event);
    bool EndBySpace();
    bool EndByProgram();
    // The press, if there is one, ends as if its release were lost.
    void Abandon();

  private:
    class Watcher;
    std::unique_ptr<Watcher> watcher_;
};

}  // namespace larder
