#include <QWidget>

#include "platform/Window.h"

namespace larder {

Frame::Frame(Container& container, const std::string& name)
    : Control(container, name, 0, new QWidget(ParentFor(container))) {}

Frame::~Frame() {
    if (Parent() == nullptr) return;
    for (Control* control : Controls())
        Parent()->Dismiss(*control);
}

void Frame::Enlist(Control& control) {
    Container::Enlist(control);
    Parent()->Enlist(control);
}

void Frame::Dismiss(Control& control) {
    Container::Dismiss(control);
    if (Parent() != nullptr) Parent()->Dismiss(control);
}

Container& Frame::Outermost() {
    return Parent()->Outermost();
}

}  // namespace larder
