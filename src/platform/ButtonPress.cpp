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
    Watcher(QWidget* widget, Lost lost) : widget_(widget), lost_(std::move(lost)) {
        widget->installEventFilter(this);
    }

    Qt::MouseButton Button() const { return button_; }
    bool IsHeld() const { return button_ != Qt::NoButton; }
    bool BySpace() const { return bySpace_; }

    bool Begin(Qt::MouseButton button, bool bySpace) {
        if (IsHeld()) return false;
        button_ = button;
        bySpace_ = bySpace;
        window_ = widget_->window();
        if (window_ != widget_) window_->installEventFilter(this);
        return true;
    }
    bool End() {
        button_ = Qt::NoButton;
        if (window_ != widget_) window_->removeEventFilter(this);
        return true;
    }
    void Abandon() {
        if (!IsHeld()) return;
        const Lost lost = lost_;  // which may destroy this
        const int button = ButtonMask(button_);
        End();
        lost(button);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (!IsHeld() || !Loses(watched, *event)) return false;
        const QPointer<QObject> alive(watched);
        Abandon();
        return alive.isNull();  // nobody is left for the event
    }

  private:
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
                return watched == widget_ && bySpace_;
            case QEvent::MouseMove:  // a menu had the mouse when the button was let go
                return watched == widget_ && !bySpace_ &&
                       !static_cast<const QMouseEvent&>(event).buttons().testFlag(button_);
            default:
                return false;
        }
    }

    QWidget* widget_;
    QWidget* window_ = nullptr;  // that is watched, during a press
    Lost lost_;
    Qt::MouseButton button_ = Qt::NoButton;
    bool bySpace_ = false;
};

ButtonPress::ButtonPress(QWidget* widget, Lost lost)
    : watcher_(std::make_unique<Watcher>(widget, std::move(lost))) {}

ButtonPress::~ButtonPress() = default;

bool ButtonPress::IsHeld() const {
    return watcher_->IsHeld();
}

bool ButtonPress::IsHeldBySpace() const {
    return watcher_->IsHeld() && watcher_->BySpace();
}

bool ButtonPress::BeginByMouse(const QMouseEvent& event) {
    return watcher_->Begin(event.button(), false);
}

bool ButtonPress::BeginBySpace() {
    return watcher_->Begin(Qt::LeftButton, true);
}

bool ButtonPress::EndByMouse(const QMouseEvent& event) {
    const bool its = IsHeld() && !watcher_->BySpace() && event.button() == watcher_->Button();
    return its && watcher_->End();
}

bool ButtonPress::EndBySpace() {
    return IsHeldBySpace() && watcher_->End();
}

void ButtonPress::Abandon() {
    watcher_->Abandon();
}

}  // namespace larder
