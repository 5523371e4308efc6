#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QWidget;

namespace larder {

class Control;

// Lengths on the screen are twips: 1/1440 inch, 15 to a pixel at 96 dots an inch.
inline constexpr float TwipsPerPixel = 15.0F;

struct Rectangle {
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
};

// The two type families of the house: a serif for recipes and headings, a humanist sans for
// buttons and lists. Sizes are in points at 96 dots an inch.
struct Font {
    enum class Family { Serif, Sans };
    Family Face = Family::Sans;
    float Size = 10.0F;
    bool Bold = false;
    bool Italic = false;
};

// What controls stand in: a window, or a frame within one. Owns nothing: controls are members of
// whoever builds the window. A control whose container has gone is empty: it may be destroyed and
// nothing else.
class Container {
  public:
    Container() = default;
    virtual ~Container();
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;
    // Every control that stands in it, in order of creation, frames' own controls included for a
    // window.
    const std::vector<Control*>& Controls() const { return controls_; }

  protected:
    friend class Control;
    friend class Frame;
    virtual QWidget* ClientWidget() const = 0;
    virtual void Enlist(Control& control) { controls_.push_back(&control); }
    virtual void Dismiss(Control& control);
    // The window's own container, around all frames.
    virtual Container& Outermost() { return *this; }
    // For a container whose widget goes before it: empties the controls.
    void EmptyControls();

    std::vector<Control*> controls_;
};

// What all controls have in common: a name, a place, a tool tip, and whether they are shown. The
// name is also the object name of the widget, by which tests and tools find it.
class Control {
  public:
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const std::string& Name() const { return name_; }
    // The element of a control array ("lvwX(2)" is 2), 0 for a single control. The widget's
    // object name is then "lvwX_2".
    int Index() const { return index_; }

    // State that handlers keep with the control; the control itself gives it no meaning.
    std::string Tag;

    // The control's own flag: a control shown in a hidden frame is visible by this.
    bool Visible() const { return visible_; }
    virtual void SetVisible(bool visible);

    // Place within the container, in twips.
    float Left() const { return rect_.Left; }
    float Top() const { return rect_.Top; }
    float Width() const { return rect_.Width; }
    float Height() const { return rect_.Height; }
    const Rectangle& Place() const { return rect_; }
    virtual void Move(const Rectangle& place);
    void SetLeft(float left);
    void SetTop(float top);
    void SetWidth(float width);
    void SetHeight(float height);

    const std::string& ToolTipText() const { return toolTip_; }
    virtual void SetToolTipText(const std::string& text);
    // What a screen reader calls it; without one, the tool tip or caption.
    void SetAccessibleName(const std::string& name);

    // 0 default, 11 hourglass, 99 pointing hand.
    void SetMousePointer(int pointer);
    int MousePointer() const { return pointer_; }

    // A control that is hidden while it has the focus leaves it to nobody, and gets it back when
    // it is shown again, without events, unless another control has taken it meanwhile.
    bool HasFocus() const;
    // Failure 5 for a control that is hidden (by itself or with its frame) or takes no focus.
    void SetFocus();
    // In front of the controls made before it, or behind all.
    void BringToFront();
    void SendToBack();
    // Draws it again at once.
    void Refresh();

    // The focus moves within the window. Another window that comes to the front, and goes, is no
    // reason.
    std::function<void()> OnGotFocus;
    std::function<void()> OnLostFocus;

    // The widget behind it, for the platform layer and tests of the real windows.
    QWidget* Native() const { return widget_; }

  protected:
    // Takes the widget over; `widget` has been made with the container's client widget as parent.
    Control(Container& container, std::string name, int index, QWidget* widget);
    static QWidget* ParentFor(const Container& container) { return container.ClientWidget(); }
    Container* Parent() const { return container_; }
    // What it is called by the text that it shows; see SetAccessibleName.
    void SetShownName(const std::string& text);

    // While one lives, OnGotFocus of this control waits until it ends, and does not come if the
    // focus has moved on by then: for a press, whose place counts before what the focus changes.
    class FocusEventsWait {
      public:
        explicit FocusEventsWait(Control& control);
        ~FocusEventsWait();
        FocusEventsWait(const FocusEventsWait&) = delete;
        FocusEventsWait& operator=(const FocusEventsWait&) = delete;

      private:
        Control& control_;
    };

  private:
    friend class Container;
    class Watcher;
    void TellGotFocus();
    void TellLostFocus();
    void TellName();
    void PutFocusAside();
    static void ResumeFocus(Container& container);

    Container* container_;
    std::string name_;
    int index_;
    QWidget* widget_;
    Rectangle rect_;
    std::string toolTip_;
    std::string accessibleName_;
    std::string shownName_;
    std::unique_ptr<Watcher> watcher_;
    bool visible_ = true;
    bool focusTold_ = false;       // OnGotFocus came, and OnLostFocus not yet
    bool focusWaits_ = false;      // see FocusEventsWait
    bool focusWhenShown_ = false;  // it had the focus when it was hidden
    int pointer_ = 0;
};

}  // namespace larder
