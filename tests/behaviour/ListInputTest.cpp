#include "browse/ListInput.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QTest>
#include <QWidget>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MeasuredLists.h"
#include "platform/Keys.h"

namespace larder::test {
namespace {

class Input : public MeasuredLists {
  protected:
    int Row(int list) { return static_cast<int>(List(list).RowHeight() / TwipsPerPixel); }
    void PressAt(int list, int y) {
        QTest::mouseClick(Pressed(list), Qt::LeftButton, Qt::NoModifier, QPoint(10, y));
    }
    void MoveTo(int list, int y) {
        const QPoint place(10, y);
        QMouseEvent move(QEvent::MouseMove, place, Pressed(list)->mapToGlobal(place), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(Pressed(list), &move);
    }
    std::string Tip(int list) { return List(list).Native()->toolTip().toStdString(); }
};

TEST_F(Input, APressOpensTheRecipeOfItsLine) {
    ClickCategory("LONG");
    PressLine(2, 3);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 3);
    EXPECT_EQ(SelectedLine(2), 3);
    EXPECT_EQ(Main().strSelectedKey[1], "k3");
    EXPECT_EQ(FocusedName(), "lvwX_2");
    EXPECT_TRUE(Main().ui.rtbSee.Visible());
}

TEST_F(Input, TheLineIsDecidedByTheHeightOfThePress) {
    ClickCategory("LONG");
    PressAt(2, 2 * Row(2) - 1);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
    PressAt(2, 2 * Row(2));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 3);
    PressAt(2, 0);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 1);
}

TEST_F(Input, ThePressAloneDecides) {
    ClickCategory("LONG");
    QTest::mousePress(Pressed(2), Qt::LeftButton, Qt::NoModifier, PointOnLine(2, 4));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 4);
    QTest::mouseRelease(Pressed(2), Qt::LeftButton, Qt::NoModifier, PointOnLine(2, 2));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 4);
}

TEST_F(Input, APressBelowTheLastLineDoesNothing) {
    ClickCategory("SHORT");
    PressLine(2, 2);
    Focus(1);
    const auto expectNothingDone = [&] {
        EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
        EXPECT_EQ(SelectedLine(2), 2);
        EXPECT_EQ(Main().strSelectedKey[1], "remembered");
        EXPECT_TRUE(Main().listInput.booRightClick);
        EXPECT_TRUE(List(2).HideSelection());
        EXPECT_TRUE(Main().ui.tmrScrolls.Enabled());
    };
    // What the press brings by itself: the list gets the focus, and looks for the remembered line.
    Focus(2);
    Main().strSelectedKey[1] = "remembered";
    Main().listInput.booRightClick = true;
    List(2).SetHideSelection(true);
    Main().ui.tmrScrolls.OnTimer = nullptr;  // however long the rest takes
    Main().ui.tmrScrolls.SetEnabled(true);
    PressAt(2, (Fit2 - 2) * Row(2) + 1);
    expectNothingDone();
    PressAt(2, Pressed(2)->height() - 1);
    expectNothingDone();
}

TEST_F(Input, ARightClickBelowTheLastLineLeavesEnterAndNextAsTheyAre) {
    for (const int list : {1, 2}) {
        SCOPED_TRACE(list);
        Book.Categories.resize(8);
        ASSERT_TRUE(Start());
        ASSERT_GT(Fit(1), 8);
        ClickCategory("SHORT");
        PressLine(2, 2);
        int menus = 0;
        WhenMenuPopsUp([&](QMenu&) { ++menus; });
        QTest::mouseClick(Pressed(list), Qt::RightButton, Qt::NoModifier,
                          QPoint(10, Pressed(list)->height() - 1));
        EXPECT_FALSE(Main().listInput.booRightClick);
        Focus(2);
        Key(Qt::Key_N, Qt::AltModifier);
        EXPECT_EQ(Main().viewer.CurrentRecipe(), 3);
        Key(Qt::Key_Return);
        EXPECT_EQ(menus, 0);
    }
}

TEST_F(Input, APressBelowTheWholeLinesOfTheWindowDoesNothing) {
    ClickCategory("LONG");
    PressLine(2, 2);
    PressAt(2, Fit2 * Row(2) + 1);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
}

TEST_F(Input, APressInAnEmptyListDoesNothing) {
    ClickCategory("NONE");
    PressLine(2, 1);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(Input, APressBelowTheLastCategoryDoesNothing) {
    Book.Categories.resize(7);
    ASSERT_TRUE(Start());
    ASSERT_GT(Fit(1), 7);
    ClickCategory("SHORT");
    PressAt(1, 7 * Row(1) + 1);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     SHORT");
}

TEST_F(Input, APressCountsForTheLineUnderItThoughTheBarIsScrolledAway) {
    OpenWithKeys("LONG");
    for (int i = 0; i < Fit2; ++i)
        Wheel(2, 1);
    ASSERT_TRUE(List(2).HideSelection());
    const int third = ShownNumbers().at(2);
    PressLine(2, 3);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), third);
    EXPECT_EQ(SelectedLine(2), 3);
    EXPECT_FALSE(List(2).HideSelection());
}

TEST_F(Input, APressOnACategoryCountsThoughItsBarIsScrolledAway) {
    Focus(1);
    for (int i = 0; i < Fit1; ++i)
        Wheel(1, 1);
    ASSERT_TRUE(List(1).HideSelection());
    const std::string name = List(1).Item(2).Text();
    Focus(2);
    PressLine(1, 2);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), name);
    EXPECT_EQ(SelectedLine(1), 2);
}

TEST_F(Input, APressAfterASearchThatRemembersNoLineStaysWhereItIs) {
    OpenWithKeys("LONG");
    Wheel(2, 1);
    Main().strSelectedKey[1] = "0";
    Focus(1);
    const int fourth = ShownNumbers().at(3);
    PressLine(2, 4);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), fourth);
}

TEST_F(Input, TheToolTipOfACategoryIsItsNameWithoutIndentation) {
    MoveTo(1, 6 * Row(1) + 2);
    EXPECT_EQ(Tip(1), "SHORT");
    MoveTo(1, 2);
    EXPECT_EQ(Tip(1), "MY FAVORITES");
}

TEST_F(Input, TheToolTipOfARecipeIsItsTitle) {
    ClickCategory("LONG");
    MoveTo(2, 2 * Row(2) + 2);
    EXPECT_EQ(Tip(2), "Stock recipe 3");
}

TEST_F(Input, BelowTheLastLineThereIsNoToolTip) {
    ClickCategory("SHORT");
    MoveTo(2, 2);
    ASSERT_EQ(Tip(2), "Stock recipe 1");
    MoveTo(2, (Fit2 - 2) * Row(2) + 2);
    EXPECT_EQ(Tip(2), "");
}

TEST_F(Input, AHeldKeyActsOnEverySecondRepeat) {
    OpenWithKeys("LONG");
    KeyDown(Qt::Key_Down);
    EXPECT_EQ(SelectedLine(2), 2);
    KeyDown(Qt::Key_Down, true);
    EXPECT_EQ(SelectedLine(2), 2);
    KeyDown(Qt::Key_Down, true);
    EXPECT_EQ(SelectedLine(2), 3);
    KeyDown(Qt::Key_Down, true);
    EXPECT_EQ(SelectedLine(2), 3);
    KeyDown(Qt::Key_Down, true);
    EXPECT_EQ(SelectedLine(2), 4);
}

TEST_F(Input, AReleasedKeyActsAtOnceWhenItIsPressedAgain) {
    OpenWithKeys("LONG");
    for (int i = 0; i < 4; ++i) {
        KeyDown(Qt::Key_Down);
        KeyUp(Qt::Key_Down);
    }
    EXPECT_EQ(SelectedLine(2), 5);
}

TEST_F(Input, AHeldKeyKeepsItsRateWhereTheWindowMoves) {
    for (const int list : {1, 2}) {
        OpenWithKeys("LONG");
        Focus(list);
        Key(Qt::Key_Home);
        const std::int32_t& start = Main().VList[static_cast<std::size_t>(list - 1)].CurrentIndex;
        for (int i = 1; i < Fit(list); ++i)
            Key(Qt::Key_Down);
        ASSERT_EQ(start, 1);
        KeyDown(Qt::Key_Down);
        EXPECT_EQ(start, 2) << list;
        KeyDown(Qt::Key_Down, true);
        EXPECT_EQ(start, 2) << list;
        KeyDown(Qt::Key_Down, true);
        EXPECT_EQ(start, 3) << list;
        KeyUp(Qt::Key_Down);
    }
}

TEST_F(Input, AKeyThatIsReleasedInAnotherControlActsAtOnceTheNextTime) {
    OpenWithKeys("LONG");
    KeyDown(Qt::Key_Down);
    Main().ui.ibHelp.SetFocus();
    KeyUp(Qt::Key_Down);
    Focus(2);
    KeyDown(Qt::Key_Down);
    EXPECT_EQ(SelectedLine(2), 3);
}

TEST_F(Input, EveryKeyOfAListIsConsumed) {
    OpenWithKeys("LONG");
    for (const int pressed : {key::Down, key::Up, key::Home, key::End, int{'X'}}) {
        int code = pressed;
        List(2).OnKeyDown(code, 0);
        EXPECT_EQ(code, key::None);
        code = pressed;
        List(2).OnKeyDown(code, 0);
        EXPECT_EQ(code, key::None);
        List(2).OnKeyUp(pressed, 0);
    }
}

TEST_F(Input, ALetterMovesNoBar) {
    OpenWithKeys("LONG");
    Key(Qt::Key_Down);
    Key(Qt::Key_S);
    EXPECT_EQ(SelectedLine(2), 2);
    EXPECT_EQ(Main().strSelectedKey[1], "k2");
}

TEST_F(Input, ANotchOfTheWheelMovesTheWindowByThreeLines) {
    OpenWithKeys("LONG");
    Key(Qt::Key_End);
    Key(Qt::Key_Home);
    Wheel(2, 1);
    EXPECT_EQ(ShownNumbers(), Range(4, 3 + Fit2));
    Wheel(2, 2);
    EXPECT_EQ(ShownNumbers(), Range(10, 9 + Fit2));
    Wheel(2, -1);
    EXPECT_EQ(ShownNumbers(), Range(7, 6 + Fit2));
}

TEST_F(Input, TheWheelStopsAtTheEnds) {
    OpenWithKeys("ONE MORE");
    Wheel(2, -1);
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
    Wheel(2, 5);
    EXPECT_EQ(ShownNumbers(), Range(2, Fit2 + 1));
}

TEST_F(Input, TheWheelLeavesTheBarOnItsRecipe) {
    OpenWithKeys("LONG");
    for (int i = 0; i < 4; ++i)
        Key(Qt::Key_Down);
    Wheel(2, 1);
    EXPECT_EQ(SelectedLine(2), 2);
    EXPECT_EQ(List(2).SelectedItem()->Tag, "5");
    EXPECT_FALSE(List(2).HideSelection());
    EXPECT_EQ(FocusedName(), "lvwX_2");
    Wheel(2, 1);
    EXPECT_TRUE(List(2).HideSelection());
    EXPECT_NE(FocusedName(), "lvwX_2");
    Wheel(2, -1);
    EXPECT_FALSE(List(2).HideSelection());
    EXPECT_EQ(List(2).SelectedItem()->Tag, "5");
}

TEST_F(Input, TheWheelOverOneListTakesNoFocusFromTheOther) {
    ClickCategory("LONG");
    ASSERT_EQ(FocusedName(), "lvwX_1");
    Wheel(2, 1);
    EXPECT_EQ(FocusedName(), "lvwX_1");
    Wheel(2, -1);
    EXPECT_EQ(FocusedName(), "lvwX_1");
}

TEST_F(Input, TheWheelScrollsTheCategories) {
    Wheel(1, 1);
    EXPECT_EQ(Main().VList[0].CurrentIndex, 4);
    EXPECT_EQ(List(1).Item(1).Text(), "KNOTS");
}

}  // namespace
}  // namespace larder::test
