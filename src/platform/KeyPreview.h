#pragma once

class QEvent;
class QKeyEvent;
class QWidget;

// The windows' look at each key before their controls. For the Qt side of the platform layer only.
namespace larder::KeyPreview {

// What a window's widget is besides, to see the keys.
class Previewer {
  public:
    virtual ~Previewer() = default;
    // True when the window has consumed the key.
    virtual bool Previews(QKeyEvent& event) = 0;
};

// Shows a key press on its way to `receiver` to the window around it; true when it is consumed.
bool Consumes(const QWidget& receiver, QKeyEvent& event);

// Keeps in mind whether the user's last action was a key, for menus that pop up by one.
void NoteInput(const QEvent& event);
bool LastInputWasKey();

}  // namespace larder::KeyPreview
