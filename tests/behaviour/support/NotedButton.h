#pragma once

#include <QAccessible>
#include <QPoint>
#include <QString>
#include <QWidget>
#include <string>

#include "behaviour/ShownWindow.h"
#include "platform/CheckBox.h"
#include "platform/ImageButton.h"

namespace larder::test {

// A button of 100 by 40 pixels with a note of its events, and another control for the focus.
class NotedButton : public ShownWindow {
  protected:
    NotedButton() {
        button_.Move({150, 150, 1500, 600});
        other_.Move({150, 1500, 1500, 300});
        button_.OnClick = [this] { events_ += "Click "; };
        button_.OnMouseDown = [this](int button, int, float, float) {
            events_ += "Down" + std::to_string(button) + " ";
        };
        button_.OnMouseUp = [this](int button, int, float, float) {
            events_ += "Up" + std::to_string(button) + " ";
        };
        window.SetClientSize(4500, 3000);
    }
    QWidget* Native() { return button_.Native(); }
    QPoint Inside() { return Native()->rect().center(); }

    const QString pressAction = QAccessibleActionInterface::pressAction();
    ImageButton button_{window, "ibNext"};
    CheckBox other_{window, "other"};
    std::string events_;
};

}  // namespace larder::test
