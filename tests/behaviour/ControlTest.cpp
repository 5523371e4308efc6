#include "platform/Control.h"

#include <memory>
#include <optional>

#include "ShownWindow.h"
#include "platform/CheckBox.h"
#include "platform/Failure.h"
#include "platform/Image.h"
#include "platform/ImageButton.h"
#include "platform/Label.h"

namespace larder {
namespace {

class ControlInAWindow : public test::ShownWindow {
  protected:
    static int FailureOf(const std::function<void()>& statement) { return Ignoring(statement); }
};

TEST_F(ControlInAWindow, NeighboursNeitherGapNorOverlapAtAnyWidth) {
    Image left(window, "left");
    Image right(window, "right");
    for (float edge = 100.0F; edge < 200.0F; edge += 0.7F) {
        left.Move({10.3F, 0, edge - 10.3F, 150});
        right.Move({edge, 0, 333.3F, 150});
        ASSERT_EQ(left.Native()->geometry().right() + 1, right.Native()->geometry().left()) << edge;
    }
}

TEST_F(ControlInAWindow, FifteenTwipsAreAPixelAndHalvesRoundUp) {
    Image image(window, "image");
    image.Move({150, 300, 1500, 750});
    EXPECT_EQ(image.Native()->geometry(), QRect(10, 20, 100, 50));
    image.Move({7.5F, -7.5F, 15, 15});
    EXPECT_EQ(image.Native()->geometry(), QRect(1, 0, 1, 1));
}

TEST_F(ControlInAWindow, APlaceIsGivenBackAsItWasSet) {
    Label label(window, "label");
    label.Move({1.25F, 2.5F, 3.75F, 5.0F});
    label.SetLeft(7.125F);
    label.SetWidth(9.5F);
    EXPECT_EQ(label.Left(), 7.125F);
    EXPECT_EQ(label.Top(), 2.5F);
    EXPECT_EQ(label.Width(), 9.5F);
    EXPECT_EQ(label.Height(), 5.0F);
}

TEST_F(ControlInAWindow, TheObjectNameTellsTheElementOfAnArray) {
    Label single(window, "lblFound");
    Label second(window, "lblScroll", 2);
    EXPECT_EQ(single.Native()->objectName(), QStringLiteral("lblFound"));
    EXPECT_EQ(second.Native()->objectName(), QStringLiteral("lblScroll_2"));
    EXPECT_EQ(second.Name(), "lblScroll");
}

TEST_F(ControlInAWindow, AControlOfAHiddenFrameIsVisibleByItsOwnFlag) {
    Frame frame(window, "frPic");
    Label label(frame, "lblIn");
    Show();
    frame.SetVisible(false);
    EXPECT_TRUE(label.Visible());
    EXPECT_FALSE(label.Native()->isVisible());
    label.SetVisible(false);
    frame.SetVisible(true);
    EXPECT_FALSE(label.Visible());
    EXPECT_FALSE(label.Native()->isVisible());
}

TEST_F(ControlInAWindow, AControlMadeInAShownWindowIsShown) {
    Show();
    Label label(window, "lblLate");
    EXPECT_TRUE(label.Native()->isVisible());
}

TEST_F(ControlInAWindow, AWindowKnowsTheControlsOfItsFramesInTheOrderTheyWereMade) {
    Label first(window, "first");
    Frame frame(window, "frame");
    Label inner(frame, "inner");
    Label last(window, "last");
    EXPECT_EQ(window.Controls(), (std::vector<Control*>{&first, &frame, &inner, &last}));
    EXPECT_EQ(frame.Controls(), (std::vector<Control*>{&inner}));
}

TEST_F(ControlInAWindow, AControlThatGoesLeavesTheWindowsList) {
    Label stays(window, "stays");
    Frame frame(window, "frame");
    {
        Label goes(frame, "goes");
        EXPECT_EQ(window.Controls().size(), 3U);
    }
    EXPECT_EQ(window.Controls(), (std::vector<Control*>{&stays, &frame}));
    EXPECT_TRUE(frame.Controls().empty());
}

TEST_F(ControlInAWindow, AControlMayOutliveItsWindow) {
    auto other = std::make_unique<Window>("frmOther");
    auto frame = std::make_unique<Frame>(*other, "frame");
    auto inner = std::make_unique<ImageButton>(*frame, "inner");
    auto outer = std::make_unique<CheckBox>(*other, "outer");
    int lost = 0;
    outer->OnLostFocus = [&] { ++lost; };
    ShowAndActivate(*other);
    outer->SetFocus();
    other.reset();
    EXPECT_EQ(lost, 0);
    EXPECT_EQ(outer->Native(), nullptr);
    frame.reset();
    inner.reset();
    outer.reset();
}

TEST_F(ControlInAWindow, AControlMayOutliveItsFrame) {
    std::optional<Frame> frame(std::in_place, window, "frame");
    Label inner(*frame, "inner");
    frame.reset();
    EXPECT_EQ(inner.Native(), nullptr);
    EXPECT_TRUE(window.Controls().empty());
    EXPECT_TRUE(window.Native()->findChildren<QWidget*>().isEmpty());
}

TEST_F(ControlInAWindow, FocusOnAHiddenControlIsFailure5) {
    Frame frame(window, "frame");
    CheckBox inner(frame, "inner");
    CheckBox box(window, "box");
    Show();
    box.SetVisible(false);
    EXPECT_EQ(FailureOf([&] { box.SetFocus(); }), failure::InvalidArgument);
    frame.SetVisible(false);
    EXPECT_EQ(FailureOf([&] { inner.SetFocus(); }), failure::InvalidArgument);
    frame.SetVisible(true);
    EXPECT_EQ(FailureOf([&] { inner.SetFocus(); }), 0);
    EXPECT_TRUE(inner.HasFocus());
}

TEST_F(ControlInAWindow, FocusOnAControlThatTakesNoneIsFailure5) {
    Label label(window, "label");
    Show();
    EXPECT_EQ(FailureOf([&] { label.SetFocus(); }), failure::InvalidArgument);
}

TEST_F(ControlInAWindow, TheFocusThatMovesIsToldToBoth) {
    CheckBox a(window, "a");
    CheckBox b(window, "b");
    std::string told;
    a.OnGotFocus = [&] { told += "a+"; };
    a.OnLostFocus = [&] { told += "a-"; };
    b.OnGotFocus = [&] { told += "b+"; };
    Show();
    a.SetFocus();
    told.clear();
    b.SetFocus();
    EXPECT_EQ(told, "a-b+");
    EXPECT_EQ(window.ActiveControl(), &b);
}

TEST_F(ControlInAWindow, AnotherWindowInFrontIsNoMoveOfTheFocus) {
    CheckBox a(window, "a");
    std::string told;
    Show();
    a.SetFocus();
    a.OnGotFocus = [&] { told += "+"; };
    a.OnLostFocus = [&] { told += "-"; };
    Window dialog("frmDialog", &window);
    ShowAndActivate(dialog);
    dialog.Hide();
    ShowAndActivate(window);
    EXPECT_EQ(told, "");
    EXPECT_TRUE(a.HasFocus());
}

TEST_F(ControlInAWindow, HiddenAndShownAgainAControlHasItsFocusBackWithoutEvents) {
    CheckBox a(window, "a");
    CheckBox b(window, "b");
    Show();
    a.SetFocus();
    std::string told;
    for (CheckBox* box : {&a, &b}) {
        box->OnGotFocus = [&told, box] { told += box->Name() + "+"; };
        box->OnLostFocus = [&told, box] { told += box->Name() + "-"; };
    }
    a.SetVisible(false);
    EXPECT_EQ(window.ActiveControl(), nullptr);
    a.SetVisible(true);
    EXPECT_TRUE(a.HasFocus());
    EXPECT_EQ(told, "");
}

TEST_F(ControlInAWindow, TheFocusOfAHiddenControlMayBeTakenMeanwhile) {
    CheckBox a(window, "a");
    CheckBox b(window, "b");
    std::string told;
    Show();
    a.SetFocus();
    a.OnLostFocus = [&] { told += "a-"; };
    b.OnGotFocus = [&] { told += "b+"; };
    a.SetVisible(false);
    b.SetFocus();
    EXPECT_EQ(told, "a-b+");
    a.SetVisible(true);
    EXPECT_TRUE(b.HasFocus());
}

TEST_F(ControlInAWindow, TheFocusInAFrameComesBackWithTheFrame) {
    Frame frame(window, "frame");
    CheckBox inner(frame, "inner");
    CheckBox other(window, "other");
    Show();
    inner.SetFocus();
    frame.SetVisible(false);
    EXPECT_EQ(window.ActiveControl(), nullptr);
    frame.SetVisible(true);
    EXPECT_EQ(window.ActiveControl(), &inner);
}

TEST_F(ControlInAWindow, AToolTipIsNeverMarkUp) {
    Image image(window, "image");
    image.SetToolTipText("Fish <b>& chips");
    EXPECT_EQ(image.ToolTipText(), "Fish <b>& chips");
    EXPECT_FALSE(image.Native()->toolTip().contains(QStringLiteral("<b>")));
    image.SetToolTipText("Caf\xE9");
    EXPECT_EQ(image.Native()->toolTip(), QString(QChar(0xE9)).prepend(QStringLiteral("Caf")));
}

TEST_F(ControlInAWindow, TheAccessibleNameIsTheOneGivenElseTheCaptionElseTheToolTip) {
    Image image(window, "image");
    image.SetToolTipText("Click to see recipe");
    EXPECT_EQ(AccessibleName(image), QStringLiteral("Click to see recipe"));
    Label label(window, "label");
    label.SetToolTipText("tip");
    label.SetCaption("12 recipes found");
    EXPECT_EQ(AccessibleName(label), QStringLiteral("12 recipes found"));
    label.SetAccessibleName("Count");
    EXPECT_EQ(AccessibleName(label), QStringLiteral("Count"));
}

TEST_F(ControlInAWindow, MousePointersAreSetAndTakenAway) {
    Image image(window, "image");
    image.SetMousePointer(99);
    EXPECT_EQ(image.MousePointer(), 99);
    EXPECT_EQ(image.Native()->cursor().shape(), Qt::PointingHandCursor);
    image.SetMousePointer(0);
    EXPECT_EQ(image.Native()->cursor().shape(), Qt::ArrowCursor);
    window.SetMousePointer(11);
    EXPECT_EQ(window.Native()->cursor().shape(), Qt::WaitCursor);
}

TEST_F(ControlInAWindow, ControlsStandInFrontOfThoseMadeBefore) {
    Image below(window, "below");
    Image above(window, "above");
    below.Move({0, 0, 1500, 1500});
    above.Move({0, 0, 1500, 1500});
    Show();
    EXPECT_EQ(window.Native()->childAt(10, 10), above.Native());
    below.BringToFront();
    EXPECT_EQ(window.Native()->childAt(10, 10), below.Native());
    below.SendToBack();
    EXPECT_EQ(window.Native()->childAt(10, 10), above.Native());
}

}  // namespace
}  // namespace larder
