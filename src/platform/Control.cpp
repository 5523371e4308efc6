#include "platform/Control.h"

#include <QCursor>
#include <QEvent>
#include <QFocusEvent>
#include <QObject>
#include <QString>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "platform/Failure.h"
#include "platform/Handlers.h"
#include "platform/Native.h"

namespace larder {

Container::~Container() {
    EmptyControls();
}

void Container::Dismiss(Control& control) {
    std::erase(controls_, &control);
}

void Container::EmptyControls() {
    for (Control* control : controls_) {
        control->watcher_.reset();  // the widget's own end is nobody's event
        control->container_ = nullptr;
        control->widget_ = nullptr;
    }
    controls_.clear();
}

// Tells a control of the focus that its widget gets and loses.
class Control::Watcher : public QObject {
  public:
    explicit Watcher(Control& control) : control_(control) {}

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::FocusIn) control_.TellGotFocus();
        if (event->type() == QEvent::FocusOut && MovesWithinWindow(*event)) {
            control_.TellLostFocus();
        }
        return false;
    }

  private:
    static bool MovesWithinWindow(const QEvent& event) {
        switch (static_cast<const QFocusEvent&>(event).reason()) {
            case Qt::ActiveWindowFocusReason:
            case Qt::PopupFocusReason:
            case Qt::MenuBarFocusReason:
                return false;
            default:
                return true;
        }
    }

    Control& control_;
};

Control::Control(Container& container, std::string name, int index, QWidget* widget)
    : container_(&container),
      name_(std::move(name)),
      index_(index),
      widget_(widget),
      watcher_(std::make_unique<Watcher>(*this)) {
    QString objectName = NativeText(name_);
    if (index_ != 0) objectName += QLatin1Char('_') + QString::number(index_);
    widget_->setObjectName(objectName);
    if (widget_->cursor().shape() == Qt::PointingHandCursor) pointer_ = 99;
    widget_->installEventFilter(watcher_.get());
    widget_->setGeometry(0, 0, 0, 0);
    widget_->show();
    container.Enlist(*this);
}

Control::~Control() {
    if (widget_ == nullptr) return;
    container_->Dismiss(*this);
    watcher_.reset();
    delete widget_;
}

void Control::SetVisible(bool visible) {
    visible_ = visible;
    if (visible == !widget_->isHidden()) return;
    if (visible) {
        widget_->show();
        ResumeFocus(container_->Outermost());
    } else {
        PutFocusAside();
        widget_->hide();
    }
}

// Qt would hand the focus to the next control, whose handlers would then act on a move that nobody
// made.
void Control::PutFocusAside() {
    const QWidget* focus = widget_->window()->focusWidget();
    if (focus == nullptr || (focus != widget_ && !widget_->isAncestorOf(focus))) return;
    for (Control* control : container_->Outermost().Controls()) {
        if (control->widget_ != focus) continue;
        const bool told = std::exchange(control->focusTold_, false);
        control->widget_->clearFocus();
        control->focusTold_ = told;
        control->focusWhenShown_ = true;
    }
}

void Control::ResumeFocus(Container& container) {
    for (Control* control : container.Controls()) {
        if (!control->focusWhenShown_) continue;
        const QWidget* window = control->widget_->window();
        if (!control->widget_->isVisibleTo(window)) continue;
        control->focusWhenShown_ = false;
        if (window->focusWidget() == nullptr) control->widget_->setFocus(Qt::OtherFocusReason);
        return;
    }
}

void Control::Move(const Rectangle& place) {
    rect_ = place;
    widget_->setGeometry(NativePlace(place));
}

void Control::SetLeft(float left) {
    Move({left, rect_.Top, rect_.Width, rect_.Height});
}
void Control::SetTop(float top) {
    Move({rect_.Left, top, rect_.Width, rect_.Height});
}
void Control::SetWidth(float width) {
    Move({rect_.Left, rect_.Top, width, rect_.Height});
}
void Control::SetHeight(float height) {
    Move({rect_.Left, rect_.Top, rect_.Width, height});
}

void Control::SetToolTipText(const std::string& text) {
    if (text == toolTip_) return;
    toolTip_ = text;
    widget_->setToolTip(NativeToolTip(text));
    TellName();
}

void Control::SetAccessibleName(const std::string& name) {
    accessibleName_ = name;
    TellName();
}

void Control::SetShownName(const std::string& text) {
    shownName_ = text;
    TellName();
}

void Control::TellName() {
    const std::string& name = !accessibleName_.empty() ? accessibleName_
                              : !shownName_.empty()    ? shownName_
                                                       : toolTip_;
    widget_->setAccessibleName(NativeText(name));
}

void Control::SetMousePointer(int pointer) {
    pointer_ = pointer;
    switch (pointer) {
        case 11:
            widget_->setCursor(Qt::WaitCursor);
            break;
        case 99:
            widget_->setCursor(Qt::PointingHandCursor);
            break;
        default:
            widget_->unsetCursor();
            break;
    }
}

bool Control::HasFocus() const {
    return widget_->window()->focusWidget() == widget_;
}

void Control::SetFocus() {
    const bool shown = widget_->isVisibleTo(widget_->window());
    if (!shown || widget_->focusPolicy() == Qt::NoFocus) {
        throw Failure(failure::InvalidArgument, "Control.SetFocus");
    }
    widget_->setFocus(Qt::OtherFocusReason);
}

void Control::BringToFront() {
    widget_->raise();
}
void Control::SendToBack() {
    widget_->lower();
}
void Control::Refresh() {
    widget_->repaint();
}

void Control::TellGotFocus() {
    // A control that lost the focus while the window was behind another, or hidden, learns it now.
    const std::vector<Control*> others = container_->Outermost().Controls();
    for (Control* other : others) {
        if (other == this) continue;
        other->focusWhenShown_ = false;
        other->TellLostFocus();
    }
    if (focusWaits_ || focusTold_) return;
    focusTold_ = true;
    Fire(OnGotFocus);
}

void Control::TellLostFocus() {
    if (!std::exchange(focusTold_, false)) return;
    Fire(OnLostFocus);
}

Control::FocusEventsWait::FocusEventsWait(Control& control) : control_(control) {
    control_.focusWaits_ = true;
}

Control::FocusEventsWait::~FocusEventsWait() {
    control_.focusWaits_ = false;
    if (control_.widget_ != nullptr && control_.HasFocus()) control_.TellGotFocus();
}

}  // namespace larder
