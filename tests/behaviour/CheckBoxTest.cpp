#include "platform/CheckBox.h"

#include <QWindow>

#include "ShownWindow.h"
#include "platform/ImageButton.h"

namespace larder {
namespace {

class ACheckBox : public test::ShownWindow {
  protected:
    ACheckBox() {
        box_.Move({0, 0, 3000, 300});
        box_.OnClick = [this] { ++clicks_; };
    }
    CheckBox box_{window, "chkJustWithPictures"};
    int clicks_ = 0;
};

TEST_F(ACheckBox, IsTickedByTheMouseAndTheKeyboard) {
    Show();
    QTest::mouseClick(box_.Native(), Qt::LeftButton, {}, QPoint(8, 10));
    EXPECT_EQ(box_.Value(), 1);
    box_.SetFocus();
    QTest::keyClick(box_.Native(), Qt::Key_Space);
    EXPECT_EQ(box_.Value(), 0);
    EXPECT_EQ(clicks_, 2);
}

TEST_F(ACheckBox, SetByProgramItIsNotClicked) {
    box_.SetValue(1);
    EXPECT_EQ(box_.Value(), 1);
    box_.SetValue(-1);
    EXPECT_EQ(box_.Value(), 1);
    box_.SetValue(0);
    EXPECT_EQ(box_.Value(), 0);
    EXPECT_EQ(clicks_, 0);
}

TEST_F(ACheckBox, ItsAccessKeyTicksIt) {
    box_.SetCaption("&Just with pictures");
    Show();
    QTest::keyClick(window.Native()->windowHandle(), Qt::Key_J, Qt::AltModifier);
    // Shown as a press for a moment first.
    EXPECT_TRUE(QTest::qWaitFor([&] { return box_.Value() == 1; }, 5000));
    EXPECT_EQ(AccessibleName(box_), QStringLiteral("Just with pictures"));
    EXPECT_EQ(Accessible(box_)->role(), QAccessible::CheckBox);
}

TEST_F(ACheckBox, AFocusCatcherHoldsTheFocusUnseen) {
    box_.MakeFocusCatcher();
    Show();
    const QImage ground = Look(box_);
    box_.SetFocus();
    EXPECT_TRUE(box_.HasFocus());
    EXPECT_EQ(window.ActiveControl(), &box_);
    EXPECT_EQ(Look(box_), ground);
    for (int x = 0; x < ground.width(); ++x) {
        ASSERT_EQ(ground.pixelColor(x, 10), QColor(0xFB, 0xF4, 0xE4));
    }
}

TEST_F(ACheckBox, TabAndTheMousePassAFocusCatcherBy) {
    CheckBox first(window, "first");
    CheckBox catcher(window, "chkFocusCatcher");
    CheckBox last(window, "last");
    catcher.Move({0, 600, 3000, 300});
    catcher.MakeFocusCatcher();
    Show();
    first.SetFocus();
    QTest::keyClick(first.Native(), Qt::Key_Tab);
    EXPECT_TRUE(last.HasFocus());
    EXPECT_EQ(window.Native()->childAt(10, 50), nullptr);
}

TEST_F(ACheckBox, AFocusCatcherIsNothingToTickForAssistiveTechnology) {
    box_.MakeFocusCatcher();
    EXPECT_EQ(Accessible(box_)->role(), QAccessible::Pane);
    EXPECT_FALSE(Accessible(box_)->actionInterface()->actionNames().contains(
        QAccessibleActionInterface::toggleAction()));
}

TEST_F(ACheckBox, KeysLeaveAFocusCatcherAsItIs) {
    box_.MakeFocusCatcher();
    Show();
    box_.SetFocus();
    QTest::keyClick(box_.Native(), Qt::Key_Space);
    EXPECT_EQ(box_.Value(), 0);
    EXPECT_EQ(clicks_, 0);
}

}  // namespace
}  // namespace larder
