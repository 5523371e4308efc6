#include "platform/ButtonPress.h"

#include <QEvent>
#include <functional>
#include <memory>
#include <string>

#include "behaviour/support/MouseMoves.h"
#include "behaviour/support/NotedButton.h"

namespace larder::test {
namespace {

// The press of a button of the program, from its beginning to its end.
class AHeldButton : public NotedButton {};

TEST_F(AHeldButton, DisabledWhileItIsHeldItIsLetGoWithoutAClick) {
    Show();
    QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
    Native()->setEnabled(false);
    EXPECT_EQ(events_, "Down1 Up1 ");
    Native()->setEnabled(true);
    QTest::mouseRelease(Native(), Qt::LeftButton, {}, Inside());
    QTest::mouseClick(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(events_, "Down1 Up1 Down1 Up1 Click ");
}

TEST_F(AHeldButton, ThatMissedTheReleaseIsLetGoWhenTheMouseIsSeenWithoutTheButton) {
    Show();
    QTest::mousePress(Native(), Qt::RightButton, {}, Inside());
    MoveWith(Native(), Qt::LeftButton | Qt::RightButton);
    EXPECT_EQ(events_, "Down2 ");
    MoveWith(Native(), Qt::LeftButton);
    EXPECT_EQ(events_, "Down2 Up2 ");
    EXPECT_EQ(button_.CurrentLook(), ImageButton::Look::Normal);
    QTest::mouseRelease(Native(), Qt::RightButton, {}, Inside());
    EXPECT_EQ(events_, "Down2 Up2 ");
}

TEST_F(AHeldButton, ThatMissedTheReleaseIsLetGoByAMouseThatMovesWithNoButton) {
    Show();
    QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
    MoveWith(Native(), Qt::NoButton);
    EXPECT_EQ(events_, "Down1 Up1 ");
    EXPECT_EQ(button_.CurrentLook(), ImageButton::Look::Normal);
}

TEST_F(AHeldButton, TheFocusThatGoesAwayLeavesAPressOfTheMouse) {
    Show();
    QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
    ASSERT_TRUE(button_.HasFocus());
    other_.SetFocus();
    EXPECT_EQ(events_, "Down1 ");
    QTest::mouseRelease(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(events_, "Down1 Up1 Click ");
}

TEST_F(AHeldButton, ThereIsOnePressAtATimeHoweverItIsMade) {
    button_.SetCaption("&Go");
    Show();
    button_.SetFocus();
    const std::function<void()> others[] = {
        [&] { QTest::keyClick(Native(), Qt::Key_Return); },
        [&] { QTest::keyClick(Native(), Qt::Key_G, Qt::AltModifier); },
        [&] { Accessible(button_)->actionInterface()->doAction(pressAction); },
    };
    for (const auto& press : others) {
        events_.clear();
        press();
        EXPECT_EQ(events_, "Down1 Up1 Click ");
        events_.clear();
        QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
        press();
        EXPECT_EQ(events_, "Down1 ");
        QTest::mouseRelease(Native(), Qt::LeftButton, {}, Inside());
        QTest::keyPress(Native(), Qt::Key_Space);
        press();
        EXPECT_EQ(events_, "Down1 Up1 Click Down1 ");
        QTest::keyRelease(Native(), Qt::Key_Space);
        EXPECT_EQ(events_, "Down1 Up1 Click Down1 Up1 Click ");
    }
}

TEST_F(AHeldButton, APressFromWithinAnotherIsNotSeen) {
    Show();
    button_.OnMouseDown = [this](int, int, float, float) {
        events_ += "Down ";
        if (events_ != "Down ") return;
        QTest::mouseClick(Native(), Qt::LeftButton, {}, Inside());
        Accessible(button_)->actionInterface()->doAction(pressAction);
    };
    Accessible(button_)->actionInterface()->doAction(pressAction);
    EXPECT_EQ(events_, "Down Up1 Click ");
}

TEST_F(AHeldButton, EnterClicksItThoughTheFocusGoesAwayAtThePress) {
    Show();
    button_.SetFocus();
    button_.OnMouseDown = [this](int, int, float, float) { other_.SetFocus(); };
    QTest::keyClick(Native(), Qt::Key_Return);
    EXPECT_EQ(events_, "Up1 Click ");
}

TEST_F(AHeldButton, TakenAwayByItsOwnPressItIsLetGoWithoutAClick) {
    Show();
    button_.OnMouseDown = [this](int, int, float, float) { button_.SetVisible(false); };
    Accessible(button_)->actionInterface()->doAction(pressAction);
    EXPECT_EQ(events_, "Up1 ");
}

TEST_F(AHeldButton, MayBeDestroyedByWhatItsPressDoes) {
    Show();
    const auto press = [](QWidget* native) { QTest::mousePress(native, Qt::LeftButton); };
    const std::function<void(QWidget*)> ways[] = {
        [&](QWidget* native) {
            press(native);
            QEvent blocked(QEvent::WindowBlocked);
            QApplication::sendEvent(window.Native(), &blocked);
        },
        [&](QWidget* native) {
            press(native);
            MoveWith(native, Qt::NoButton);
        },
        [&](QWidget* native) {
            QAccessible::queryAccessibleInterface(native)->actionInterface()->doAction(pressAction);
        },
    };
    for (const auto& way : ways) {
        auto mortal = std::make_unique<ImageButton>(window, "ibMortal");
        mortal->Move({150, 2100, 1500, 600});
        mortal->OnMouseUp = [&](int, int, float, float) { mortal.reset(); };
        bool clicked = false;
        mortal->OnClick = [&] { clicked = true; };
        way(mortal->Native());
        EXPECT_EQ(mortal, nullptr);
        EXPECT_FALSE(clicked);
    }
}

}  // namespace
}  // namespace larder::test
