#include "platform/Label.h"

#include <QToolTip>

#include "ShownWindow.h"
#include "platform/CheckBox.h"
#include "platform/Failure.h"
#include "platform/Image.h"
#include "platform/Keys.h"
#include "platform/PictureButton.h"

namespace larder {
namespace {

class ALabel : public test::ShownWindow {
  protected:
    ALabel() { label_.Move({0, 0, 3000, 300}); }

    // Where text is drawn: the box around all pixels that are not the window's ground.
    QRect Drawn() {
        const QImage look = Look(label_);
        const QRgb ground = QColor(0xFB, 0xF4, 0xE4).rgb();
        QRect drawn;
        for (int y = 0; y < look.height(); ++y) {
            for (int x = 0; x < look.width(); ++x) {
                if (look.pixel(x, y) != ground) drawn |= QRect(x, y, 1, 1);
            }
        }
        return drawn;
    }

    // What the pointer is told when it rests on the label.
    QString Tip() {
        QHelpEvent asks(QEvent::ToolTip, QPoint(1, 1), label_.Native()->mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(label_.Native(), &asks);
        return asks.isAccepted() ? QToolTip::text() : QString();
    }

    Label label_{window, "lblFound"};
};

TEST_F(ALabel, IsStaticTextToAssistiveTechnology) {
    label_.SetCaption("12 recipes found ");
    EXPECT_EQ(Accessible(label_)->role(), QAccessible::StaticText);
    EXPECT_EQ(AccessibleName(label_), QStringLiteral("12 recipes found "));
}

TEST_F(ALabel, ATextThatFitsHasItsOwnToolTipAlone) {
    label_.SetToolTipText("tip");
    label_.SetCaption("short");
    EXPECT_EQ(Tip(), QStringLiteral("tip"));
}

TEST_F(ALabel, ATextTooWideEndsInAnEllipsisAndJoinsTheToolTip) {
    const std::string text(200, 'x');
    label_.SetToolTipText("tip");
    label_.SetCaption(text);
    EXPECT_EQ(Tip(), QString::fromStdString(text + "\ntip"));
    EXPECT_EQ(label_.ToolTipText(), "tip");
    EXPECT_LE(Drawn().right(), 199);
    label_.SetWidth(60000);
    EXPECT_EQ(Tip(), QStringLiteral("tip"));
    label_.SetWidth(150);
    label_.SetFont({Font::Family::Serif, 1});
    label_.SetCaption("tiny");
    EXPECT_EQ(Tip(), QStringLiteral("tip"));
}

TEST_F(ALabel, NothingOfATextThatWasCutStaysBehindWhenTheTextIsAnother) {
    const std::string text(200, 'x');
    label_.SetToolTipText("tip");
    label_.SetCaption(text);
    ASSERT_EQ(Tip(), QString::fromStdString(text + "\ntip"));
    label_.SetCaption("short");
    EXPECT_EQ(Accessible(label_)->text(QAccessible::Description), QStringLiteral("tip"));
    label_.SetToolTipText("");
    label_.SetCaption(text);
    ASSERT_EQ(Tip(), QString::fromStdString(text));
    label_.SetCaption("short");
    EXPECT_EQ(Accessible(label_)->text(QAccessible::Description), QString());
}

TEST_F(ALabel, BreaksIntoAsManyLinesAsThereIsRoomFor) {
    label_.SetCaption("one two three four five six seven eight nine ten eleven twelve thirteen");
    Show();
    const int oneLine = Drawn().height();
    EXPECT_FALSE(Tip().isEmpty());
    label_.SetHeight(1500);
    EXPECT_GT(Drawn().height(), 2 * oneLine);
    EXPECT_TRUE(Tip().isEmpty());
}

TEST_F(ALabel, EveryLineEndBreaksALine) {
    label_.SetHeight(1500);
    label_.SetCaption("a\r\nb");
    Show();
    const int two = Drawn().height();
    label_.SetCaption("a\rb");
    EXPECT_EQ(Drawn().height(), two);
    label_.SetCaption("a\nb");
    EXPECT_EQ(Drawn().height(), two);
    label_.SetCaption("ab");
    EXPECT_LT(Drawn().height(), two);
}

TEST_F(ALabel, StandsAtTheSideItIsAlignedTo) {
    label_.SetCaption("iii");
    Show();
    EXPECT_LT(Drawn().right(), 60);
    label_.SetAlignment(Label::Alignment::Right);
    EXPECT_GT(Drawn().left(), 140);
    label_.SetAlignment(Label::Alignment::Center);
    EXPECT_NEAR(Drawn().center().x(), 100, 2);
}

TEST_F(ALabel, HasTheColourGivenWithRedInTheLowByte) {
    label_.SetFont({Font::Family::Sans, 14, true});
    label_.SetCaption("IIII");
    label_.SetForeColor(0x0000FF);
    Show();
    const QImage look = Look(label_);
    bool red = false;
    for (int x = 0; x < look.width(); ++x)
        red = red || look.pixelColor(x, 10) == QColor(Qt::red);
    EXPECT_TRUE(red);
}

TEST_F(ALabel, MarkUpAndAmpersandsAreText) {
    label_.SetCaption("<i>");
    Show();
    const int markUp = Drawn().width();
    label_.SetCaption("i");
    EXPECT_GT(markUp, 2 * Drawn().width());
}

TEST_F(ALabel, PressReleaseAndClick) {
    std::string told;
    label_.OnMouseDown = [&](int button, int, float, float) {
        told += "D" + std::to_string(button);
    };
    label_.OnMouseUp = [&](int, int, float, float) { told += "U"; };
    label_.OnClick = [&] { told += "C"; };
    Show();
    QTest::mouseClick(label_.Native(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(told, "D1UC");
    told.clear();
    QTest::mousePress(label_.Native(), Qt::LeftButton, {}, QPoint(5, 5));
    QTest::mouseRelease(label_.Native(), Qt::LeftButton, {}, QPoint(-5, 5));
    EXPECT_EQ(told, "D1U");
}

class AnImage : public test::ShownWindow {
  protected:
    Image image_{window, "imgPicture"};
};

TEST_F(AnImage, WithoutStretchItTakesOnThePicturesSize) {
    image_.Move({150, 150, 1500, 1500});
    const Picture picture = Picture::FromArt("icons/camera");
    image_.SetPicture(picture);
    EXPECT_EQ(image_.Width(), 1500);
    image_.SetStretch(false);
    EXPECT_EQ(image_.Width(), static_cast<float>(picture.PixelWidth()) * TwipsPerPixel);
    EXPECT_EQ(image_.Height(), static_cast<float>(picture.PixelHeight()) * TwipsPerPixel);
    EXPECT_EQ(image_.Left(), 150);
}

TEST_F(AnImage, AnEmptyPictureClearsIt) {
    image_.Move({0, 0, 1500, 1500});
    Show();
    const QImage empty = Look(image_);
    image_.SetPicture(Picture::FromArt("icons/camera"));
    EXPECT_NE(Look(image_), empty);
    EXPECT_FALSE(image_.Shown().IsEmpty());
    image_.SetPicture({});
    EXPECT_EQ(Look(image_), empty);
}

TEST_F(AnImage, IsAGraphicAndTellsTheMouse) {
    image_.Move({0, 0, 1500, 1500});
    image_.SetToolTipText("Click to see recipe");
    EXPECT_EQ(Accessible(image_)->role(), QAccessible::Graphic);
    std::string told;
    image_.OnMouseDown = [&](int, int shift, float x, float) {
        told += "D" + std::to_string(shift) + "@" + std::to_string(static_cast<int>(x));
    };
    image_.OnMouseUp = [&](int button, int, float, float) { told += "U" + std::to_string(button); };
    image_.OnClick = [&] { told += "C"; };
    Show();
    QTest::mouseClick(image_.Native(), Qt::LeftButton, Qt::ControlModifier, QPoint(5, 5));
    EXPECT_EQ(told, "D2@75U1C");
    told.clear();
    QTest::mouseClick(image_.Native(), Qt::RightButton, {}, QPoint(5, 5));
    EXPECT_EQ(told, "D0@75U2");
}

TEST_F(AnImage, TellsMovesWithTheButtonsHeld) {
    image_.Move({0, 0, 1500, 1500});
    std::vector<int> buttons;
    image_.OnMouseMove = [&](int button, int, float, float) { buttons.push_back(button); };
    Show();
    for (const Qt::MouseButtons held : {Qt::MouseButtons(), Qt::MouseButtons(Qt::LeftButton)}) {
        const QPointF place(5, 5);
        QMouseEvent move(QEvent::MouseMove, place, image_.Native()->mapToGlobal(place),
                         Qt::NoButton, held, Qt::NoModifier);
        QApplication::sendEvent(image_.Native(), &move);
    }
    EXPECT_EQ(buttons, (std::vector<int>{0, mouse::LeftButton}));
}

// A picture that is a button, behind a control that has the focus.
class APictureButton : public AnImage {
  protected:
    void SetUp() override {
        other_.Move({0, 1500, 1500, 300});
        image_.Move({0, 0, 1500, 600});
        image_.SetPicture(Picture::FromArt("buttons/star"));
        image_.OnMouseDown = [this](int button, int, float x, float) {
            told_ += "D" + std::to_string(button) + "@" + std::to_string(static_cast<int>(x));
        };
        image_.OnMouseUp = [this](int button, int, float, float) {
            told_ += "U" + std::to_string(button);
        };
        image_.OnClick = [this] { told_ += "C"; };
        MakeButton(image_);
        Show();
        other_.SetFocus();
    }
    void SendSpace(QEvent::Type type, bool repeat) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, QString(), repeat);
        QApplication::sendEvent(image_.Native(), &event);
    }

    CheckBox other_{window, "other"};
    std::string told_;
};

TEST_F(APictureButton, IsReachedByTabAndShowsARing) {
    const QImage plain = Look(image_);
    QTest::keyClick(other_.Native(), Qt::Key_Tab);
    ASSERT_TRUE(image_.HasFocus());
    EXPECT_NE(Look(image_), plain);
    other_.SetFocus();
    EXPECT_EQ(Look(image_), plain);
}

TEST_F(APictureButton, LeavesTheFocusWhereItIsAtAClick) {
    QTest::mouseClick(image_.Native(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(told_, "D1@75U1C");
    EXPECT_TRUE(other_.HasFocus());
}

TEST_F(APictureButton, IsPressedBySpaceAsByTheMouse) {
    image_.SetFocus();
    SendSpace(QEvent::KeyPress, false);
    EXPECT_EQ(told_, "D1@750");
    for (int i = 0; i < 3; ++i) {
        SendSpace(QEvent::KeyRelease, true);
        SendSpace(QEvent::KeyPress, true);
    }
    SendSpace(QEvent::KeyRelease, false);
    EXPECT_EQ(told_, "D1@750U1C") << "once, however long it is held";
}

TEST_F(APictureButton, IsLetGoWithoutAClickWhenTheFocusGoesOrItIsHidden) {
    image_.SetFocus();
    SendSpace(QEvent::KeyPress, false);
    other_.SetFocus();
    SendSpace(QEvent::KeyRelease, false);
    EXPECT_EQ(told_, "D1@750U1");
    image_.SetFocus();
    SendSpace(QEvent::KeyPress, false);
    image_.SetVisible(false);
    EXPECT_EQ(told_, "D1@750U1D1@750U1");
}

TEST_F(APictureButton, ThePressOfTheMouseEndsWhenItIsHidden) {
    QTest::mousePress(image_.Native(), Qt::LeftButton, {}, QPoint(5, 5));
    image_.SetVisible(false);
    EXPECT_EQ(told_, "D1@75U1");
    image_.SetVisible(true);
    QTest::mouseRelease(image_.Native(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(told_, "D1@75U1") << "the release is that of no press";
}

TEST_F(APictureButton, AnotherWindowThatComesToTheFrontLetsItGo) {
    QTest::mousePress(image_.Native(), Qt::LeftButton, {}, QPoint(5, 5));
    Window dialog("frmDialog", &window);
    ShowAndActivate(dialog);
    EXPECT_EQ(told_, "D1@75U1");
}

TEST_F(APictureButton, ADialogThatBlocksItsWindowLetsItGo) {
    QTest::mousePress(image_.Native(), Qt::LeftButton, {}, QPoint(5, 5));
    QEvent blocked(QEvent::WindowBlocked);
    QApplication::sendEvent(window.Native(), &blocked);
    EXPECT_EQ(told_, "D1@75U1");
    QApplication::sendEvent(window.Native(), &blocked);
    EXPECT_EQ(told_, "D1@75U1") << "once";
}

TEST_F(APictureButton, TheMouseIsNotHeardDuringAPressOfSpaceNorSpaceDuringOneOfTheMouse) {
    image_.SetFocus();
    SendSpace(QEvent::KeyPress, false);
    QTest::mouseClick(image_.Native(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(told_, "D1@750");
    SendSpace(QEvent::KeyRelease, false);
    EXPECT_EQ(told_, "D1@750U1C");
    told_.clear();
    QTest::mousePress(image_.Native(), Qt::LeftButton, {}, QPoint(5, 5));
    SendSpace(QEvent::KeyPress, false);
    SendSpace(QEvent::KeyRelease, false);
    Accessible(image_)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(told_, "D1@75");
    QTest::mouseRelease(image_.Native(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(told_, "D1@75U1C");
}

TEST_F(APictureButton, OnlyTheLeftMouseButtonPressesIt) {
    QTest::mouseClick(image_.Native(), Qt::RightButton, {}, QPoint(5, 5));
    EXPECT_EQ(told_, "");
    QTest::mousePress(image_.Native(), Qt::LeftButton, {}, QPoint(5, 5));
    QTest::mouseClick(image_.Native(), Qt::RightButton, {}, QPoint(5, 5));
    EXPECT_EQ(told_, "D1@75");
    QTest::mouseRelease(image_.Native(), Qt::LeftButton, {}, QPoint(-5, 5));
    EXPECT_EQ(told_, "D1@75U1") << "off the picture it is no click";
}

TEST_F(APictureButton, OtherKeysAreNotForIt) {
    image_.SetFocus();
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_Return, Qt::Key_Down})
        QTest::keyClick(image_.Native(), key);
    EXPECT_EQ(told_, "");
}

TEST_F(APictureButton, IsAButtonToAssistiveTechnologyAndCanBePressed) {
    QAccessibleInterface* accessible = Accessible(image_);
    EXPECT_EQ(accessible->role(), QAccessible::PushButton);
    const QString press = QAccessibleActionInterface::pressAction();
    EXPECT_TRUE(accessible->actionInterface()->actionNames().contains(press));
    accessible->actionInterface()->doAction(press);
    EXPECT_EQ(told_, "D1@750U1C");
}

TEST_F(APictureButton, ThatIsDisabledIsNotPressedByAssistiveTechnology) {
    const QString press = QAccessibleActionInterface::pressAction();
    QAccessibleActionInterface* actions = Accessible(image_)->actionInterface();
    image_.Native()->setEnabled(false);
    EXPECT_FALSE(actions->actionNames().contains(press));
    actions->doAction(press);
    EXPECT_EQ(told_, "");
    image_.Native()->setEnabled(true);
    actions->doAction(press);
    EXPECT_EQ(told_, "D1@750U1C");
}

TEST_F(AnImage, ThatIsNoButtonTakesNeitherFocusNorPress) {
    bool clicked = false;
    image_.Move({0, 0, 1500, 1500});
    image_.OnClick = [&] { clicked = true; };
    Show();
    EXPECT_NE(Ignoring([&] { image_.SetFocus(); }), 0);
    QTest::keyClick(image_.Native(), Qt::Key_Space);
    Accessible(image_)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(clicked);
}

}  // namespace
}  // namespace larder
