#pragma once

#include <QEvent>
#include <QObject>
#include <QWidget>

namespace larder::test {

// Counts the events of a kind that reach a widget while it lives.
class EventCount : public QObject {
  public:
    EventCount(QWidget* widget, QEvent::Type kind) : kind_(kind) {
        widget->installEventFilter(this);
    }
    int Count = 0;

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == kind_) ++Count;
        return false;
    }

  private:
    QEvent::Type kind_;
};

}  // namespace larder::test
