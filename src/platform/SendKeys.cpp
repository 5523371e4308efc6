#include "platform/SendKeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "platform/Control.h"
#include "platform/Failure.h"

namespace larder {

namespace {

bool IsKey(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

void TypeKey(QWidget& widget, char key, bool ctrl) {
    const Qt::KeyboardModifiers modifiers = ctrl ? Qt::ControlModifier : Qt::NoModifier;
    const QString text = ctrl ? QString() : QString(QLatin1Char(key));
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers, text);  // Qt's codes of these are their characters
        QApplication::sendEvent(&widget, &event);
    }
}

}  // namespace

void SendKeys(Control& to, const std::string& keys) {
    for (std::size_t i = 0; i < keys.size(); i += 3) {
        const bool ctrl = keys[i] == '^';
        if (ctrl) ++i;
        const bool written = i + 2 < keys.size() && keys[i] == '{' && keys[i + 2] == '}';
        if (!written || !IsKey(keys[i + 1])) throw Failure(failure::InvalidArgument, "SendKeys");
        TypeKey(*to.Native(), keys[i + 1], ctrl);
    }
}

}  // namespace larder
