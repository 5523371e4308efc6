#include "platform/ButtonPress.h"

#include <QEvent>
#include <QMouseEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <utility>

#include "platform/Native.h"

namespace larder {

class ButtonPress::Watcher : public QObject {
  public:
    enum class By { Nobody, Mouse, Space, Program };

    Watcher(QWidget* widget, Lost lost) : widget_(widget), lost_(std::move(lost)) {
        widget->installEventFilter(this);
        // Without it, a widget is not told of a mouse that moves with no button held.
        widget->setMouseTracking(true);
    }

    Qt::MouseButton Button() const { return button_; }
    bool IsHeld(By by) const { return by_ == by; }

    bool Begin(By by, Qt::MouseButton button) {
        if (by_ != By::Nobody) return false;
        by_ = by;
        button_ = button;
        window_ = widget_->window();
        if (window_ != widget_) window_->installEventFilter(this);
        return true;
    }
    bool End(By by) {
        if (by_ != by) return false;
        Release();
        return true;
    }
    void Abandon() {
        if (by_ == By::Nobody) return;
        const Lost lost = lost_;  // which may destroy this
        const int button = ButtonMask(button_);
        Release();
        lost(button);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (by_ == By::Nobody || !Loses(watched, *event)) return false;
        const QPointer<QObject> alive(watched);
        Abandon();
        return alive.isNull();  // nobody is left for the event
    }

  private:
    void Release() {
        by_ = By::Nobody;
        button_ = Qt::NoButton;
        if (window_ != widget_) window_->removeEventFilter(this);
    }

    bool Loses(const QObject* watched, const QEvent& event) const {
        switch (event.type()) {
            case QEvent::WindowBlocked:
            case QEvent::WindowDeactivate:
                return watched == window_;
            case QEvent::Hide:
                return watched == widget_;
            case QEvent::EnabledChange:
                return watched == widget_ && !widget_->isEnabled();
            case QEvent::FocusOut:
                return watched == widget_ && by_ == By::Space;
            case QEvent::MouseMove:  // a menu had the mouse when the button was let go
                return watched == widget_ && by_ == By::Mouse &&
                       !static_cast<const QMouseEvent&>(event).buttons().testFlag(button_);
            default:
                return false;
        }
    }

    QWidget* widget_;
    QWidget* window_ = nullptr;  // that is watched, during a press
    Lost lost_;
    By by_ = By::Nobody;
    Qt::MouseButton button_ = Qt::NoButton;
};

ButtonPress::ButtonPress(QWidget* widget, Lost lost)
    : watcher_(std::make_unique<Watcher>(widget, std::move(lost))) {}

ButtonPress::~ButtonPress() = default;

bool ButtonPress::IsHeldByMouse() const {
    return watcher_->IsHeld(Watcher::By::Mouse);
}

bool ButtonPress::IsHeldBySpace() const {
    return watcher_->IsHeld(Watcher::By::Space);
}

bool ButtonPress::BeginByMouse(const QMouseEvent& event) {
    return watcher_->Begin(Watcher::By::Mouse, event.button());
}

bool ButtonPress::BeginBySpace() {
    return watcher_->Begin(Watcher::By::Space, Qt::LeftButton);
}

bool ButtonPress::BeginByProgram() {
    return watcher_->Begin(Watcher::By::Program, Qt::LeftButton);
}

bool ButtonPress::EndByMouse(const QMouseEvent& event) {
    return event.button() == watcher_->Button() && watcher_->End(Watcher::By::Mouse);
}

bool ButtonPress::EndBySpace() {
    return watcher_->End(Watcher::By::Space);
}

bool ButtonPress::EndByProgram() {
    return watcher_->End(Watcher::By::Program);
}

void ButtonPress::Abandon() {
    watcher_->Abandon();
}

}  // namespace larder
