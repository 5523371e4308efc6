#include "platform/ImageButton.h"

#include <QWindow>

#include "behaviour/support/NotedButton.h"
#include "platform/Keys.h"
#include "support/TempFolder.h"

namespace larder {
namespace {

constexpr QRgb Green = 0xFF00FF00;
constexpr QRgb Red = 0xFFFF0000;
constexpr QRgb Grey = 0xFF808080;

// Its looks are plain colours.
class AButton : public test::NotedButton {
  protected:
    Picture Plain(QRgb color) {
        QImage image(20, 10, QImage::Format_ARGB32);
        image.fill(color);
        // A ground of another colour would be taken away; this one has an alpha channel.
        const std::string path = folder_.Native("plain.png");
        image.save(QString::fromStdString(path));
        return Picture::FromFile(path);
    }

    void Design(bool withDisabled) {
        ImageButton::Design design;
        design.Image = Plain(Green);
        design.ImagePressed = Plain(Red);
        if (withDisabled) design.ImageDisabled = Plain(Grey);
        button_.SetDesign(design);
    }

    // On the green picture.
    void ShowCaption(const Font& font, std::int32_t color) {
        ImageButton::Design design;
        design.Image = Plain(Green);
        design.Caption = "Assign";
        design.CaptionFont = font;
        design.ForColor = color;
        button_.SetDesign(design);
        Show();
    }
    // The place of all that is not the picture.
    QRect Caption() {
        const QImage look = Look(button_);
        QRect place;
        for (int y = 0; y < look.height(); ++y) {
            for (int x = 0; x < look.width(); ++x) {
                if (look.pixel(x, y) != Green) place |= QRect(x, y, 1, 1);
            }
        }
        return place;
    }

    QRgb Colour() { return Look(button_).pixel(50, 5); }

    test::TempFolder folder_;
};

TEST_F(AButton, ShowsItsNormalPictureAndThePressedOneWhileTheMouseIsHeldOnIt) {
    Design(true);
    Show();
    EXPECT_EQ(Colour(), Green);
    QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(Colour(), Red);
    EXPECT_EQ(button_.CurrentLook(), ImageButton::Look::Pressed);
    QTest::mouseRelease(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(button_.CurrentLook(), ImageButton::Look::Normal);
}

TEST_F(AButton, ShowsThePressedPictureWhileItIsLatched) {
    Design(true);
    Show();
    button_.SetButtonState(ImageButton::Latched);
    EXPECT_EQ(Colour(), Red);
    button_.SetButtonState(ImageButton::Up);
    EXPECT_EQ(Colour(), Green);
}

TEST_F(AButton, ShowsTheDisabledPictureWhileItIsDisabledEvenWhenHeld) {
    Design(true);
    Show();
    button_.SetButtonState(ImageButton::Disabled);
    EXPECT_EQ(Colour(), Grey);
    QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(Colour(), Grey);
    QTest::mouseRelease(Native(), Qt::LeftButton, {}, Inside());
}

TEST_F(AButton, WithNoDisabledPictureLooksNormalWhenDisabled) {
    Design(false);
    Show();
    button_.SetButtonState(ImageButton::Disabled);
    EXPECT_EQ(Colour(), Green);
    EXPECT_EQ(button_.CurrentLook(), ImageButton::Look::Normal);
    QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(Colour(), Green) << "held, too";
    QTest::mouseRelease(Native(), Qt::LeftButton, {}, Inside());
}

TEST_F(AButton, ADisabledLookDoesNotStopEvents) {
    Design(true);
    Show();
    button_.SetButtonState(ImageButton::Disabled);
    QTest::mouseClick(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(events_, "Down1 Up1 Click ");
}

TEST_F(AButton, AnOpaquePictureLosesItsGroundColourWhenTransparent) {
    QImage image(10, 10, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    image.setPixel(5, 5, Green);
    const std::string path = folder_.Native("ground.bmp");
    image.save(QString::fromStdString(path));
    ImageButton::Design design;
    design.Image = Picture::FromFile(path);
    button_.Move({0, 0, 150, 150});
    button_.SetDesign(design);
    Show();
    // The window's ground shows through, and the picture's own dot stays.
    EXPECT_EQ(window.Native()->grab().toImage().pixelColor(1, 1), QColor(0xFB, 0xF4, 0xE4));
    EXPECT_EQ(window.Native()->grab().toImage().pixel(5, 5), Green);
    design.Transparent = false;
    button_.SetDesign(design);
    EXPECT_EQ(window.Native()->grab().toImage().pixelColor(1, 1), QColor(Qt::magenta));
}

TEST_F(AButton, DrawsItsCaptionInTheMiddle) {
    ShowCaption({}, 0);
    const QRect caption = Caption();
    ASSERT_FALSE(caption.isEmpty());
    EXPECT_NEAR(caption.left(), 99 - caption.right(), 3);
    EXPECT_NEAR(caption.top(), 39 - caption.bottom(), 5);
}

TEST_F(AButton, DrawsItsCaptionInItsFont) {
    ShowCaption({Font::Family::Sans, 8, false, false}, 0);
    const QRect small = Caption();
    ShowCaption({Font::Family::Sans, 16, false, false}, 0);
    const QRect large = Caption();
    ASSERT_FALSE(small.isEmpty());
    EXPECT_GT(large.height(), small.height() * 3 / 2);
    EXPECT_GT(large.width(), small.width() * 3 / 2);
    ShowCaption({Font::Family::Sans, 16, true, false}, 0);
    EXPECT_GT(Caption().width(), large.width()) << "bold";
}

TEST_F(AButton, DrawsItsCaptionInItsColour) {
    for (const std::int32_t color : {0x0000FF, 0xFF0000}) {  // red, blue
        ShowCaption({Font::Family::Sans, 20, true, false}, color);
        const QRgb expected = color == 0x0000FF ? 0xFFFF0000 : 0xFF0000FF;
        const QImage look = Look(button_);
        int strokes = 0;
        for (int y = 0; y < look.height(); ++y) {
            for (int x = 0; x < look.width(); ++x)
                strokes += look.pixel(x, y) == expected ? 1 : 0;
        }
        EXPECT_GT(strokes, 10) << color;
    }
}

TEST_F(AButton, PressingAndReleasingItGivesDownUpAndClick) {
    Show();
    QTest::mouseClick(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(events_, "Down1 Up1 Click ");
}

TEST_F(AButton, PressingMovingOffAndReleasingGivesMouseUpAndNoClick) {
    Design(true);
    Show();
    QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
    QMouseEvent off(QEvent::MouseMove, QPointF(-5, 5), Native()->mapToGlobal(QPointF(-5, 5)),
                    Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Native(), &off);
    EXPECT_EQ(button_.CurrentLook(), ImageButton::Look::Normal);
    QTest::mouseRelease(Native(), Qt::LeftButton, {}, QPoint(-5, 5));
    EXPECT_EQ(events_, "Down1 Up1 ");
}

TEST_F(AButton, MovingOffAndBackAgainStillClicks) {
    Design(true);
    Show();
    QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
    for (const QPointF place : {QPointF(-5, 5), QPointF(5, 5)}) {
        QMouseEvent move(QEvent::MouseMove, place, Native()->mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Native(), &move);
    }
    EXPECT_EQ(button_.CurrentLook(), ImageButton::Look::Pressed);
    QTest::mouseRelease(Native(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(events_, "Down1 Up1 Click ");
}

TEST_F(AButton, TheRightButtonPressesWithoutAClick) {
    Show();
    QTest::mouseClick(Native(), Qt::RightButton, {}, Inside());
    EXPECT_EQ(events_, "Down2 Up2 ");
}

TEST_F(AButton, AQuickSecondPressIsAPressLikeTheFirst) {
    Show();
    QTest::mouseClick(Native(), Qt::LeftButton, {}, Inside());
    QTest::mouseDClick(Native(), Qt::LeftButton, {}, Inside());
    QTest::mouseRelease(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(events_, "Down1 Up1 Click Down1 Up1 Click ");
}

TEST_F(AButton, ASecondMouseButtonDuringAPressIsNotSeen) {
    Show();
    QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
    QTest::mousePress(Native(), Qt::RightButton, {}, Inside());
    QTest::mouseRelease(Native(), Qt::RightButton, {}, Inside());
    QTest::mouseRelease(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(events_, "Down1 Up1 Click ");
}

TEST_F(AButton, EventsTellTheirPlaceInTwips) {
    Show();
    float x = 0;
    float y = 0;
    button_.OnMouseDown = [&](int, int, float atX, float atY) {
        x = atX;
        y = atY;
    };
    QTest::mouseClick(Native(), Qt::LeftButton, {}, QPoint(10, 20));
    EXPECT_EQ(x, 150);
    EXPECT_EQ(y, 300);
}

TEST_F(AButton, HiddenWhileItIsHeldItIsLetGoWithoutAClick) {
    Show();
    QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
    button_.SetVisible(false);
    EXPECT_EQ(events_, "Down1 Up1 ");
    button_.SetVisible(true);
    EXPECT_EQ(button_.CurrentLook(), ImageButton::Look::Normal);
}

TEST_F(AButton, AnotherWindowThatComesToTheFrontLetsItGo) {
    Show();
    QTest::mousePress(Native(), Qt::LeftButton, {}, Inside());
    Window dialog("frmDialog", &window);
    ShowAndActivate(dialog);
    EXPECT_EQ(events_, "Down1 Up1 ");
}

TEST_F(AButton, SpacePressesItAsTheMouseDoes) {
    Design(true);
    Show();
    button_.SetFocus();
    QTest::keyPress(Native(), Qt::Key_Space);
    EXPECT_EQ(button_.CurrentLook(), ImageButton::Look::Pressed);
    EXPECT_EQ(events_, "Down1 ");
    QTest::keyRelease(Native(), Qt::Key_Space);
    EXPECT_EQ(events_, "Down1 Up1 Click ");
}

TEST_F(AButton, SpaceHeldDownPressesOnce) {
    Show();
    button_.SetFocus();
    QTest::keyPress(Native(), Qt::Key_Space);
    for (int i = 0; i < 5; ++i) {
        QKeyEvent up(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, QString(), true);
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(Native(), &up);
        QApplication::sendEvent(Native(), &down);
    }
    EXPECT_EQ(events_, "Down1 ");
    QTest::keyRelease(Native(), Qt::Key_Space);
    EXPECT_EQ(events_, "Down1 Up1 Click ");
}

TEST_F(AButton, TheFocusThatGoesAwayEndsAPressOfSpaceWithoutAClick) {
    Show();
    button_.SetFocus();
    QTest::keyPress(Native(), Qt::Key_Space);
    other_.SetFocus();
    EXPECT_EQ(events_, "Down1 Up1 ");
}

TEST_F(AButton, EscapeEndsAPressOfSpaceWithoutAClick) {
    Show();
    button_.SetFocus();
    QTest::keyPress(Native(), Qt::Key_Space);
    QTest::keyClick(Native(), Qt::Key_Escape);
    EXPECT_EQ(events_, "Down1 Up1 ");
    QTest::keyRelease(Native(), Qt::Key_Space);
    EXPECT_EQ(events_, "Down1 Up1 ");
}

TEST_F(AButton, TakesTheFocusByTheMouseUnlessToldNotTo) {
    Show();
    other_.SetFocus();
    QTest::mouseClick(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_TRUE(button_.HasFocus());
    other_.SetFocus();
    button_.SetFocusOnClick(false);
    QTest::mouseClick(window.Native()->windowHandle(), Qt::LeftButton, {},
                      Native()->mapTo(window.Native(), Inside()));
    EXPECT_TRUE(other_.HasFocus());
    EXPECT_EQ(events_, "Down1 Up1 Click Down1 Up1 Click ");
    QTest::keyClick(other_.Native(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(button_.HasFocus());
}

TEST_F(AButton, IsNoTabStopWhileItIsDisabled) {
    CheckBox third(window, "third");
    third.Move({150, 2000, 1500, 300});
    Show();
    const auto tab = [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); };
    for (const bool byClick : {true, false}) {
        button_.SetFocusOnClick(byClick);
        button_.SetButtonState(ImageButton::Disabled);
        third.SetFocus();
        tab();
        EXPECT_TRUE(other_.HasFocus()) << byClick;
        button_.SetButtonState(ImageButton::Latched);
        third.SetFocus();
        tab();
        EXPECT_TRUE(button_.HasFocus()) << byClick;
    }
}

TEST_F(AButton, DisabledWhileItHasTheFocusKeepsItUntilTheUserGoesOn) {
    Show();
    button_.SetFocus();
    button_.SetButtonState(ImageButton::Disabled);
    EXPECT_TRUE(button_.HasFocus());
    QTest::keyClick(Native(), Qt::Key_Space);
    EXPECT_EQ(events_, "Down1 Up1 Click ") << "a look stops no events";
    QTest::keyClick(Native(), Qt::Key_Tab);
    EXPECT_TRUE(other_.HasFocus());
}

TEST_F(AButton, ShowsAFocusRingForTheKeyboardAndNoneForTheMouse) {
    Design(true);
    Show();
    other_.SetFocus();
    const QImage plain = Look(button_);
    QTest::mouseClick(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(Look(button_), plain);
    other_.SetFocus();
    QTest::keyClick(other_.Native(), Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_TRUE(button_.HasFocus());
    EXPECT_NE(Look(button_), plain);
}

TEST_F(AButton, HasAHandForAPointer) {
    EXPECT_EQ(Native()->cursor().shape(), Qt::PointingHandCursor);
}

TEST_F(AButton, IsAPushButtonToAssistiveTechnologyWithNameStateAndPress) {
    button_.SetToolTipText("Next recipe");
    Show();
    QAccessibleInterface* accessible = Accessible(button_);
    EXPECT_EQ(accessible->role(), QAccessible::PushButton);
    EXPECT_EQ(AccessibleName(button_), QStringLiteral("Next recipe"));
    EXPECT_FALSE(accessible->state().pressed);
    button_.SetButtonState(ImageButton::Latched);
    EXPECT_TRUE(accessible->state().pressed);
    button_.SetButtonState(ImageButton::Disabled);
    EXPECT_TRUE(accessible->state().disabled);
    accessible->actionInterface()->doAction(pressAction);
    EXPECT_EQ(events_, "Down1 Up1 Click ");
}

TEST_F(AButton, ThatIsDisabledIsNotPressedByAssistiveTechnology) {
    Show();
    Native()->setEnabled(false);
    QAccessibleInterface* accessible = Accessible(button_);
    EXPECT_TRUE(accessible->state().disabled);
    EXPECT_FALSE(accessible->actionInterface()->actionNames().contains(pressAction));
    accessible->actionInterface()->doAction(pressAction);
    EXPECT_EQ(events_, "");
    Native()->setEnabled(true);
    EXPECT_FALSE(accessible->state().disabled);
    EXPECT_TRUE(accessible->actionInterface()->actionNames().contains(pressAction));
    accessible->actionInterface()->doAction(pressAction);
    EXPECT_EQ(events_, "Down1 Up1 Click ");
}

TEST_F(AButton, IsCalledByItsCaptionWhenItHasOne) {
    button_.SetToolTipText("tip");
    button_.SetCaption("Change Picture");
    EXPECT_EQ(button_.Caption(), "Change Picture");
    EXPECT_EQ(AccessibleName(button_), QStringLiteral("Change Picture"));
}

TEST_F(AButton, HiddenByItsOwnMouseUpItStillClicks) {
    Show();
    button_.OnMouseUp = [this](int, int, float, float) { button_.SetVisible(false); };
    QTest::mouseClick(Native(), Qt::LeftButton, {}, Inside());
    EXPECT_EQ(events_, "Down1 Click ");
}

}  // namespace
}  // namespace larder
