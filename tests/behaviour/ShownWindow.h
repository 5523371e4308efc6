#pragma once

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <QWidget>

#include "platform/Window.h"

namespace larder::test {

// A window on the invisible screen, for controls to stand in.
class ShownWindow : public testing::Test {
  protected:
    void Show() { ShowAndActivate(window); }

    static void ShowAndActivate(Window& shown) {
        shown.Show();
        shown.BringToFront();
        // Not qWaitForWindowActive: to it a dialog is active when its owner is.
        ASSERT_TRUE(QTest::qWaitFor([&] { return shown.Native()->isActiveWindow(); }, 5000));
    }

    static QAccessibleInterface* Accessible(const Control& control) {
        return QAccessible::queryAccessibleInterface(control.Native());
    }

    static QString AccessibleName(const Control& control) {
        return Accessible(control)->text(QAccessible::Name);
    }

    // What the control's part of the window looks like.
    static QImage Look(const Control& control) { return control.Native()->grab().toImage(); }

    Window window{"frmTest"};
};

}  // namespace larder::test
