#include "platform/KeyPreview.h"

#include <QEvent>
#include <QKeyEvent>
#include <QWidget>

namespace larder::KeyPreview {

namespace {

bool lastInputWasKey = false;

}  // namespace

bool Consumes(const QWidget& receiver, QKeyEvent& event) {
    auto* window = dynamic_cast<Previewer*>(receiver.window());
    return window != nullptr && window->Previews(event);
}

void NoteInput(const QEvent& event) {
    if (event.type() == QEvent::KeyPress) lastInputWasKey = true;
    if (event.type() == QEvent::MouseButtonPress) lastInputWasKey = false;
}

bool LastInputWasKey() {
    return lastInputWasKey;
}

}  // namespace larder::KeyPreview
