#include "browse/ListWindow.h"

#include <gtest/gtest.h>

#include <QWidget>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MeasuredLists.h"
#include "platform/Failure.h"

namespace larder::test {
namespace {

class WindowOnAList : public MeasuredLists {
  protected:
    ListWindow& Lists() { return Main().lists; }
    std::string& Remembered(int list) {
        return Main().strSelectedKey[static_cast<std::size_t>(list - 1)];
    }
};

TEST_F(WindowOnAList, HoldsTheWholeLinesThatFit) {
    for (const int list : {1, 2}) {
        const float lines = List(list).Height() / List(list).RowHeight();
        EXPECT_EQ(Fit(list), static_cast<int>(lines)) << list;
    }
    ClickCategory("LONG");
    EXPECT_EQ(List(2).Count(), Fit2);
}

TEST_F(WindowOnAList, IsKnownForAnEmptyListToo) {
    Book.Numbers("MY FAVORITES") = " ";
    ASSERT_TRUE(Start());
    ASSERT_EQ(List(2).Count(), 0);
    EXPECT_EQ(Fit(2), Fit2);
}

TEST_F(WindowOnAList, FollowsTheSizeOfTheWindowWhereTheListsStand) {
    ClickCategory("LONG");
    Wheel(2, 1);
    Wheel(1, 1);
    const int categoriesAt = Main().VList[0].CurrentIndex;
    Main().ui.window.SetWindowState(Window::Normal);
    ASSERT_TRUE(WaitUntil([&] { return Main().ui.window.WindowState() == Window::Normal; }));
    const int before = Fit(2);
    Main().ui.window.SetClientSize(1600 * TwipsPerPixel, 400 * TwipsPerPixel);
    ASSERT_TRUE(WaitUntil([&] { return Fit(2) != before; }));
    EXPECT_EQ(List(2).Count(), Fit(2));
    EXPECT_EQ(List(1).Count(), Fit(1));
    EXPECT_EQ(ShownNumbers(), Range(4, 3 + Fit(2)));
    EXPECT_EQ(Main().VList[0].CurrentIndex, categoriesAt);
}

TEST_F(WindowOnAList, IsNeverLessThanOneLine) {
    Main().ui.lvwX1.SetFont({Font::Family::Sans, 900.0F, false, false});
    Main().ui.window.SetWindowState(Window::Normal);
    Main().ui.window.SetMinimumClientSize(0, 0);
    Main().ui.window.SetClientSize(200 * TwipsPerPixel, 20 * TwipsPerPixel);
    ASSERT_TRUE(WaitUntil([&] { return Fit(2) < 2; }));
    EXPECT_EQ(Fit(1), 1);
    EXPECT_EQ(Fit(2), 1);
    EXPECT_EQ(List(1).Count(), 1);
}

TEST_F(WindowOnAList, TakesLinesFromTheEndAndAddsBareOnes) {
    ClickCategory("LONG");
    const ListItem* first = &List(2).Item(1);
    Main().LinesInList[1] = 3;
    Lists().EnsureLinesAvailable(2);
    EXPECT_EQ(List(2).Count(), 3);
    EXPECT_EQ(&List(2).Item(1), first);
    Main().LinesInList[1] = 5;
    Lists().EnsureLinesAvailable(2);
    EXPECT_EQ(List(2).Count(), 5);
    EXPECT_EQ(List(2).Item(5).SubItems(2), "");
    for (int line = 1; line <= 5; ++line)
        EXPECT_EQ(List(2).Item(line).Key(), "");
}

TEST_F(WindowOnAList, HasNoMoreLinesThanTheList) {
    ClickCategory("SHORT");
    EXPECT_EQ(List(2).Count(), Fit2 - 2);
    ClickCategory("LONG");
    EXPECT_EQ(List(2).Count(), Fit2);
    ClickCategory("ONE");
    EXPECT_EQ(List(2).Count(), 1);
}

TEST_F(WindowOnAList, WithNoKeyRememberedTheFirstLineIsSelectedAndRemembered) {
    OpenWithKeys("LONG");
    Key(Qt::Key_Down);
    Remembered(2).clear();
    Lists().HighlightSelected(2, false);
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(Remembered(2), "k1");
}

TEST_F(WindowOnAList, ARememberedNumberIsALineOfTheWindow) {
    OpenWithKeys("LONG");
    Wheel(2, 1);
    Remembered(2) = "3";
    Lists().HighlightSelected(2, false);
    EXPECT_EQ(SelectedLine(2), 3);
    EXPECT_EQ(Remembered(2), "k6");
}

TEST_F(WindowOnAList, ARememberedKeyIsSelectedWhereverItsLineIs) {
    ClickCategory("LONG");
    Remembered(2) = "k4";
    Lists().HighlightSelected(2, false);
    EXPECT_EQ(SelectedLine(2), 4);
    EXPECT_FALSE(List(2).HideSelection());
}

TEST_F(WindowOnAList, OutsideTheWindowNoLineShowsAsSelected) {
    OpenWithKeys("LONG");
    Remembered(2) = "k" + std::to_string(2 * Fit2);
    Lists().HighlightSelected(2, false);
    EXPECT_TRUE(List(2).HideSelection());
    EXPECT_EQ(FocusedName(), "chkFocusCatcher");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
}

TEST_F(WindowOnAList, WithForceTheWindowMovesToTheRememberedKey) {
    ClickCategory("LONG");
    Remembered(2) = "k" + std::to_string(2 * Fit2);
    Lists().HighlightSelected(2, true);
    EXPECT_EQ(List(2).SelectedItem()->Tag, std::to_string(2 * Fit2));
    EXPECT_EQ(Main().VList[1].CurrentIndex, 2 * Fit2);
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_FALSE(List(2).HideSelection());
}

TEST_F(WindowOnAList, WithForceAVirtualListMovesToTheNumberInTheKey) {
    ClickCategory("ALL RECIPES");
    Remembered(2) = "k57";
    Lists().HighlightSelected(2, true);
    EXPECT_EQ(List(2).SelectedItem()->Tag, "57");
    EXPECT_EQ(Main().VList[1].CurrentIndex, 57);
}

TEST_F(WindowOnAList, TheKeyZeroNeverScrolls) {
    OpenWithKeys("LONG");
    Wheel(2, 1);
    Remembered(2) = "0";
    Lists().HighlightSelected(2, true);
    EXPECT_EQ(ShownNumbers(), Range(4, 3 + Fit2));
    ClickCategory("ALL RECIPES");
    Wheel(2, 1);
    Remembered(2) = "0";
    Lists().HighlightSelected(2, true);
    EXPECT_EQ(ShownNumbers(), Range(4, 3 + Fit2));
}

TEST_F(WindowOnAList, AnUnknownKeyMovesNothing) {
    ClickCategory("LONG");
    Remembered(2) = "k9999";
    Lists().HighlightSelected(2, true);
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
}

TEST_F(WindowOnAList, TheFocusComesBackOnlyWhileTheBarIsShown) {
    OpenWithKeys("LONG");
    Main().lists.DivertFocusFrom(2);
    EXPECT_TRUE(List(2).HideSelection());
    EXPECT_EQ(FocusedName(), "chkFocusCatcher");
    Lists().RestoreLvwFocus(2);
    EXPECT_EQ(FocusedName(), "chkFocusCatcher");
    List(2).SetHideSelection(false);
    Lists().RestoreLvwFocus(2);
    EXPECT_EQ(FocusedName(), "lvwX_2");
    Lists().RestoreLvwFocus(3);
    EXPECT_EQ(FocusedName(), "lvwX_2");
}

TEST_F(WindowOnAList, DivertingTheFocusFromAListTakesItFromNoOtherControl) {
    ClickCategory("LONG");
    ASSERT_EQ(FocusedName(), "lvwX_1");
    Lists().DivertFocusFrom(2);
    EXPECT_EQ(FocusedName(), "lvwX_1");
}

TEST_F(WindowOnAList, AListThatGetsTheFocusShowsItsSelectedLine) {
    OpenWithKeys("LONG");
    for (int i = 0; i < 20; ++i)
        Wheel(2, 1);
    ASSERT_TRUE(List(2).HideSelection());
    Focus(2);
    EXPECT_EQ(List(2).SelectedItem()->Tag, "1");
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_FALSE(List(2).HideSelection());
}

TEST_F(WindowOnAList, TheLastStartLeavesTheWindowFull) {
    ClickCategory("LONG");
    EXPECT_EQ(Lists().LastStart(2), 2 * Fit2 + 2);
    ClickCategory("EXACT");
    EXPECT_EQ(Lists().LastStart(2), 1);
    ClickCategory("SHORT");
    EXPECT_EQ(Lists().LastStart(2), 1);
    ClickCategory("NONE");
    EXPECT_EQ(Lists().LastStart(2), 1);
}

TEST_F(WindowOnAList, AStartOfZeroIsTheFirstPlaceWhenTheListStandsNowhere) {
    ClickCategory("LONG");
    for (const int list : {1, 2}) {
        Wheel(list, 1);
        VirtualList& behind = Main().VList[static_cast<std::size_t>(list - 1)];
        ASSERT_EQ(behind.CurrentIndex, 4) << list;
        behind.CurrentIndex = 0;
        Lists().ShowListItems(static_cast<std::int16_t>(list), 0, true);
        EXPECT_EQ(behind.CurrentIndex, 1) << list;
    }
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
    EXPECT_EQ(List(1).Item(1).Text(), "MY FAVORITES");
}

TEST_F(WindowOnAList, SelectingALineThatIsNotThereIsAFailure) {
    ClickCategory("ONE");
    EXPECT_THROW(Lists().SelectLine(2, 2), Failure);
    EXPECT_EQ(SelectedLine(2), 1);
}

}  // namespace
}  // namespace larder::test
