#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

namespace larder::test {

// The mouse moves over the middle of a widget with these buttons held, whatever was pressed before.
inline void MoveWith(QWidget* widget, Qt::MouseButtons held) {
    const QPointF place = widget->rect().center();
    QMouseEvent move(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton, held,
                     Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
}

}  // namespace larder::test
