#include "edit/frmProgress.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QTest>
#include <QWidget>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/EventCount.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

class ProgressDialog : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(1);
        ASSERT_TRUE(Start());
    }
    frmProgress& Dialog() { return Main().editDialogs.Progress(); }
    std::string Title() { return Dialog().window.Caption(); }
    int Bar() { return Dialog().ProgressBar1.Value(); }
    bool IsShown() { return Dialog().window.Visible(); }
    QWidget* Native() { return Dialog().window.Native(); }

    void ShowIt(const std::string& task = "Looking at all recipes") {
        Dialog().ShowIt(task);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(Native()));
        ASSERT_TRUE(WaitUntil([&] { return Native()->isActiveWindow(); }));
    }
};

TEST_F(ProgressDialog, IsNotOnTheScreenUntilATaskShowsIt) {
    EXPECT_FALSE(IsShown());
    ShowIt();
    EXPECT_TRUE(IsShown());
}

TEST_F(ProgressDialog, ShowingItNamesTheTask) {
    ShowIt("Looking at all recipes");
    EXPECT_EQ(Dialog().Description(), "Looking at all recipes");
    EXPECT_EQ(Title(), "Looking at all recipes...");
    EXPECT_EQ(Bar(), 0);
}

TEST_F(ProgressDialog, TheTaskCanTakeAnotherName) {
    ShowIt();
    Dialog().SetDescription("Looking at the pictures");
    EXPECT_EQ(Dialog().Description(), "Looking at the pictures");
    EXPECT_EQ(Title(), "Looking at the pictures...");
}

TEST_F(ProgressDialog, StaysBeforeAllOtherWindows) {
    ShowIt();
    EXPECT_TRUE(Native()->windowFlags() & Qt::WindowStaysOnTopHint);
    Dialog().ShowIt("And again");
    EXPECT_TRUE(IsShown());
}

TEST_F(ProgressDialog, StandsInTheMiddleOfTheWorkArea) {
    ShowIt();
    const Rectangle area = Dialog().window.WorkArea();
    const Rectangle place = Dialog().window.Place();
    // Its frame is not known before it is on the screen.
    const float frame = 20 * TwipsPerPixel;
    EXPECT_NEAR(place.Left - area.Left, (area.Width - place.Width) / 2, frame);
    EXPECT_NEAR(place.Top - area.Top, (area.Height - place.Height) / 2, frame);
}

TEST_F(ProgressDialog, APercentageIsShownInTheLabelTheBarAndTheTitle) {
    ShowIt("Looking");
    Dialog().SetValue(7);
    EXPECT_EQ(Dialog().Value(), 7);
    EXPECT_EQ(Dialog().lblDone.Caption(), "7%");
    EXPECT_EQ(Bar(), 7);
    EXPECT_EQ(Title(), "Looking ... 7% done.");
    Dialog().SetValue(3);  // a task may find that there is more to do
    EXPECT_EQ(Bar(), 3);
    EXPECT_EQ(Title(), "Looking ... 3% done.");
}

TEST_F(ProgressDialog, TheSamePercentageAgainDoesNothing) {
    ShowIt();
    Dialog().SetValue(50);
    Dialog().window.SetCaption("as it was");
    const EventCount window(Native(), QEvent::Paint);
    const EventCount bar(Dialog().ProgressBar1.Native(), QEvent::Paint);
    Dialog().SetValue(50);
    EXPECT_EQ(Title(), "as it was") << "the title is written once";
    EXPECT_EQ(window.Count + bar.Count, 0);
}

TEST_F(ProgressDialog, EachChangeIsPaintedBeforeTheCallReturns) {
    ShowIt();
    const EventCount window(Native(), QEvent::Paint);
    const EventCount label(Dialog().lblDone.Native(), QEvent::Paint);
    const EventCount bar(Dialog().ProgressBar1.Native(), QEvent::Paint);
    for (const std::int16_t percent : {1, 2, 3}) {
        const int windowBefore = window.Count;
        const int labelBefore = label.Count;
        const int barBefore = bar.Count;
        Dialog().SetValue(percent);  // and no event runs
        EXPECT_GT(window.Count, windowBefore);
        EXPECT_GT(label.Count, labelBefore);
        EXPECT_GT(bar.Count, barBefore);
    }
    const int before = window.Count;
    Dialog().SetDescription("Something else");
    EXPECT_GT(window.Count, before);
}

TEST_F(ProgressDialog, IsPaintedAgainWheneverItIsActivated) {
    ShowIt();
    const EventCount window(Native(), QEvent::Paint);
    QEvent activated(QEvent::WindowActivate);
    QApplication::sendEvent(Native(), &activated);  // and no other event runs
    EXPECT_EQ(window.Count, 1);
}

TEST_F(ProgressDialog, AHundredLeavesItOpen) {
    ShowIt("Looking");
    Dialog().SetValue(100);
    EXPECT_TRUE(IsShown());
    EXPECT_EQ(Title(), "Looking ... 100% done.");
}

TEST_F(ProgressDialog, MoreThanAHundredClosesIt) {
    ShowIt();
    Dialog().SetValue(101);
    EXPECT_FALSE(IsShown());
}

TEST_F(ProgressDialog, MoreThanAHundredClosesItFromAHundredToo) {
    ShowIt();
    Dialog().SetValue(100);
    Dialog().SetValue(101);
    EXPECT_FALSE(IsShown());
}

TEST_F(ProgressDialog, DoneClosesItWhateverThePercentage) {
    for (const std::int16_t percent : {0, 40, 100}) {
        ShowIt();
        Dialog().SetValue(percent);
        Dialog().Done();
        EXPECT_FALSE(IsShown()) << percent;
    }
}

TEST_F(ProgressDialog, TheNextTaskBeginsAnew) {
    ShowIt("Looking");
    Dialog().SetValue(60);
    Dialog().Done();
    ShowIt("Looking again");
    EXPECT_EQ(Title(), "Looking again...");
    EXPECT_EQ(Dialog().lblDone.Caption(), "0%");
    EXPECT_EQ(Bar(), 0);
}

TEST_F(ProgressDialog, ClosedByTheUserItStaysAwayWhileTheTaskGoesOn) {
    ShowIt();
    Native()->close();
    Dialog().SetValue(60);
    EXPECT_FALSE(IsShown());
    Dialog().Done();
    EXPECT_FALSE(IsShown());
}

TEST_F(ProgressDialog, TheNextTaskBeginsAnewAfterOneThatWentOnUnseen) {
    for (const bool done : {false, true}) {
        ShowIt("Looking");
        Dialog().SetValue(30);
        Native()->close();
        Dialog().SetValue(60);
        if (done) Dialog().Done();
        ShowIt("Looking again");
        EXPECT_EQ(Title(), "Looking again...");
        EXPECT_EQ(Dialog().lblDone.Caption(), "0%");
        EXPECT_EQ(Dialog().Value(), 0);
        Dialog().Done();
    }
}

TEST_F(ProgressDialog, AScreenReaderIsToldHowMuchIsDone) {
    ShowIt();
    Dialog().SetValue(42);
    QAccessibleInterface* bar =
        QAccessible::queryAccessibleInterface(Dialog().ProgressBar1.Native());
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->role(), QAccessible::ProgressBar);
    EXPECT_EQ(bar->text(QAccessible::Name), "Done");
    ASSERT_NE(bar->valueInterface(), nullptr);
    EXPECT_EQ(bar->valueInterface()->currentValue().toInt(), 42);
}

TEST_F(ProgressDialog, GoesWithTheMainWindow) {
    ShowIt();
    Close();
    ASSERT_TRUE(Restart());
    EXPECT_FALSE(IsShown());
}

TEST_F(ProgressDialog, TheBarHoldsItsValueBetweenNothingAndAll) {
    ProgressBar& bar = Dialog().ProgressBar1;
    for (const auto& [given, held] : {std::pair{-5, 0}, {0, 0}, {99, 99}, {100, 100}, {250, 100}}) {
        bar.SetValue(given);
        EXPECT_EQ(bar.Value(), held) << given;
    }
}

TEST_F(ProgressDialog, TheBarFillsFromTheLeft) {
    ProgressBar& bar = Dialog().ProgressBar1;
    const auto seaAt = [&](double part) {
        const QImage look = bar.Native()->grab().toImage();
        return look.pixelColor(static_cast<int>(look.width() * part), look.height() / 2).red() <
               0x80;
    };
    bar.SetValue(50);
    EXPECT_TRUE(seaAt(0.1));
    EXPECT_TRUE(seaAt(0.45));
    EXPECT_FALSE(seaAt(0.55));
    bar.SetValue(0);
    EXPECT_FALSE(seaAt(0.02));
    bar.SetValue(100);
    EXPECT_TRUE(seaAt(0.98));
}

}  // namespace
}  // namespace larder::test
