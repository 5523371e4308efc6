#include <gtest/gtest.h>

#include <QCursor>
#include <QEvent>
#include <QWidget>

#include "behaviour/support/EventCount.h"
#include "behaviour/support/SearchBook.h"

namespace larder::test {
namespace {

// The busy look of the main window and the find dialog, around a search.
class BusyLook : public SearchBook {
  protected:
    void SetUp() override {
        AddSmallBook();
        ASSERT_TRUE(StartWithIndex());
    }
    void Decorate(bool start) { Main().recipes.DecorateWait(start, ""); }
    static bool Waits(const Window& window) {
        return window.Native()->cursor().shape() == Qt::WaitCursor;
    }
};

TEST_F(BusyLook, TheHourglassStandsOnBothWindows) {
    OpenDialog();
    Decorate(true);
    EXPECT_TRUE(Waits(Main().ui.window));
    EXPECT_TRUE(Waits(Dialog().window));
    Decorate(false);
    EXPECT_FALSE(Waits(Main().ui.window));
    EXPECT_FALSE(Waits(Dialog().window));
}

TEST_F(BusyLook, DoesNotMakeTheFindDialog) {
    Decorate(true);
    Decorate(false);
    EXPECT_EQ(Main().ui.window.Native()->findChild<QWidget*>("frmSearch"), nullptr);
}

TEST_F(BusyLook, TheListIsHiddenAndTheCountEmptiedAtOnce) {
    ASSERT_NE(Found(), "");
    const EventCount paints(Widget("lblFound"), QEvent::Paint);
    Decorate(true);
    EXPECT_EQ(paints.Count, 1) << "before any event runs";
    EXPECT_EQ(Found(), "");
    EXPECT_FALSE(List(2).Visible());
    EXPECT_TRUE(List(1).Visible());
}

TEST_F(BusyLook, AfterwardsTheListAndItsCountAreBack) {
    const std::string count = Found();
    Decorate(true);
    Decorate(false);
    EXPECT_TRUE(List(2).Visible());
    EXPECT_EQ(Found(), count);
}

TEST_F(BusyLook, AfterASearchThatFoundNothingTheListIsShownAndNothingReported) {
    OpenDialog();
    FindWords("bouillabaisse");
    ASSERT_TRUE(ShownNumbers().empty());
    Decorate(true);
    Decorate(false);
    EXPECT_TRUE(List(2).Visible());
    EXPECT_EQ(Found(), "0 recipes found ");
}

}  // namespace
}  // namespace larder::test
