#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Control.h"

namespace larder {

// A top-level window. The main window has no owner; a dialog is owned by another window, stays in
// front of it, and may be modal.
class Window : public Container {
  public:
    explicit Window(const std::string& name, Window* owner = nullptr);
    ~Window() override;

    enum State { Normal = 0, Minimized = 1, Maximized = 2 };

    const std::string& Caption() const { return caption_; }
    void SetCaption(const std::string& caption);
    void SetIcon(const std::string& art);  // an art name, see Picture

    State WindowState() const;
    void SetWindowState(State state);

    // The client area, in twips.
    float ClientWidth() const;
    float ClientHeight() const;
    void SetClientSize(float width, float height);
    // The smallest client area that the user can drag the window to.
    void SetMinimumClientSize(float width, float height);
    // The user cannot change its size.
    void SetFixedSize();
    // Place of the window on the screen, in twips.
    Rectangle Place() const;
    // Where its client area lies on the screen, in twips.
    Rectangle ClientPlace() const;
    void MoveTo(float left, float top);
    // The part of the screen that a window may cover, in twips.
    Rectangle WorkArea() const;

    void Show();
    void ShowModal();  // returns when the window is hidden or closed
    void Hide();
    bool Visible() const;
    // Active, raised and no longer minimised; a modal dialog of the program stays before it.
    void BringToFront();
    // Before all windows of the screen from now on, also when another one is active.
    void SetTopmost();
    // Draws it again at once. Nothing before the system has put it on the screen.
    void Refresh();
    // As the user closes it: OnQueryUnload may refuse; OnUnload runs, then the window is gone from
    // the screen, and with it the windows that it owns. It can be shown again.
    void Close();

    // The control of this window that has the focus; null when none has.
    Control* ActiveControl() const;
    // 0 default, 11 hourglass.
    void SetMousePointer(int pointer);

    // The window sees each key before its controls. Setting the code to key::None consumes it. A
    // key that is held comes again and again. Keys without a code (platform/Keys.h) do not come.
    // The access keys of the controls are the window's own affair then.
    std::function<void(int& KeyCode, int Shift)> OnKeyDown;
    std::function<void()> OnResize;  // the client area has another size; also when first shown
    std::function<void()> OnActivate;
    // False keeps the window open.
    std::function<bool()> OnQueryUnload;
    std::function<void()> OnUnload;
    // The first paint of the client area has reached the screen.
    std::function<void()> OnFirstPaint;

    QWidget* Native() const;

  protected:
    QWidget* ClientWidget() const override;

  private:
    class Widget;
    std::unique_ptr<Widget> widget_;
    std::string name_;
    std::string caption_;
};

// A clipping frame that holds controls of its own.
class Frame : public Control, public Container {
  public:
    Frame(Container& container, const std::string& name);
    ~Frame() override;

  protected:
    QWidget* ClientWidget() const override { return Native(); }
    void Enlist(Control& control) override;
    void Dismiss(Control& control) override;
    Container& Outermost() override;
};

}  // namespace larder
