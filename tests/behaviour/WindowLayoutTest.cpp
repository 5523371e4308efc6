#include "layout/WindowLayout.h"

#include <QWidget>
#include <map>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

class WindowLayoutTest : public MainWindowFixture {
  protected:
    WindowLayoutTest() {
        Book.AddManyStock(100);
        Book.Numbers("MY FAVORITES") = NumbersFrom(1, 100);
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 ";
        for (int i = 0; i < 60; ++i)
            Book.Numbers("CATEGORY " + std::to_string(i)) = " 1 ";
    }

    MainControls& Ui() { return Main().ui; }

    // Gives the window this client area, in pixels, and waits until it has it.
    void Size(int width, int height) {
        Ui().window.SetWindowState(Window::Normal);
        Ui().window.SetClientSize(static_cast<float>(width) * TwipsPerPixel,
                                  static_cast<float>(height) * TwipsPerPixel);
        EXPECT_TRUE(WaitUntil([&] {
            return Pixels(Ui().window.ClientWidth()) == width &&
                   Pixels(Ui().window.ClientHeight()) == height;
        }));
        Main().layout.ResizeIt();
    }
    static int Pixels(float twips) { return static_cast<int>(twips / TwipsPerPixel + 0.5F); }
    static void ExpectPlace(const Rectangle& place, const Rectangle& expected) {
        EXPECT_NEAR(place.Left, expected.Left, 1);
        EXPECT_NEAR(place.Top, expected.Top, 1);
        EXPECT_NEAR(place.Width, expected.Width, 1);
        EXPECT_NEAR(place.Height, expected.Height, 1);
    }
};

TEST_F(WindowLayoutTest, EveryControlKeepsItsShareOfTheWindow) {
    const MainControls design;
    ASSERT_TRUE(Start());
    for (const auto& [width, height] : {std::pair{1024, 720}, {1536, 1080}, {800, 600}}) {
        Size(width, height);
        const float x = static_cast<float>(width) / 1024;
        const float y = static_cast<float>(height) / 720;
        for (const auto& [control, original] :
             {std::pair<const Control*, const Control*>{&Ui().lvwX1, &design.lvwX1},
              {&Ui().lvwX2, &design.lvwX2},
              {&Ui().ibExit, &design.ibExit},
              {&Ui().lblCategory, &design.lblCategory},
              {&Ui().imgBackGroundMain, &design.imgBackGroundMain},
              {&Ui().rtbSee, &design.rtbSee}}) {
            SCOPED_TRACE(control->Name());
            const Rectangle& place = original->Place();
            ExpectPlace(control->Place(),
                        {place.Left * x, place.Top * y, place.Width * x, place.Height * y});
        }
    }
}

TEST_F(WindowLayoutTest, PlacesDoNotDriftOverManyResizes) {
    ASSERT_TRUE(Start());
    Size(1024, 720);
    const Rectangle before = Ui().ibExit.Place();
    for (int i = 0; i < 10; ++i) {
        Size(701 + i, 511 + i);
        Size(1403 - i, 907 - i);
    }
    Size(1024, 720);
    ExpectPlace(Ui().ibExit.Place(), before);
}

TEST_F(WindowLayoutTest, AsManyLinesFitAsWholeRowsStandInTheList) {
    ASSERT_TRUE(Start());
    for (const auto& [width, height] : {std::pair{1024, 720}, {1536, 1080}, {640, 480}}) {
        Size(width, height);
        for (const int index : {1, 2}) {
            const int expected = static_cast<int>(List(index).Height() / List(index).RowHeight());
            EXPECT_EQ(Fit(index), expected) << index << " at " << height;
            EXPECT_EQ(List(index).Count(), expected) << index << " at " << height;
        }
    }
}

TEST_F(WindowLayoutTest, TheLinesAreKnownWithAnEmptyListToo) {
    Book.Numbers("MY FAVORITES") = " ";
    ASSERT_TRUE(Start());
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_GT(Fit(2), 1);
}

TEST_F(WindowLayoutTest, AtLeastOneLineFits) {
    ASSERT_TRUE(Start());
    Ui().lvwX1.SetFont({Font::Family::Sans, 2000.0F, false, false});
    Main().LinesInList[0] = 0;
    Ui().window.SetMinimumClientSize(0, 0);
    Size(100, 40);
    EXPECT_GE(Fit(1), 1);
    EXPECT_GE(Fit(2), 1);
}

TEST_F(WindowLayoutTest, ALargerWindowShowsMoreOfTheListsAndTheSelectionStays) {
    ASSERT_TRUE(Start());
    Size(800, 560);
    PressLine(2, 2);
    const int before = List(2).Count();
    Size(1000, 900);
    EXPECT_GE(List(2).Count(), before);
    EXPECT_EQ(ShownNumbers().front(), 1);
    EXPECT_EQ(SelectedLine(2), 2);
}

TEST_F(WindowLayoutTest, AResizeKeepsTheFocus) {
    ASSERT_TRUE(Start());
    for (const int index : {1, 2}) {
        Focus(index);
        const std::string before = FocusedName();
        Size(900 + index, 650);
        EXPECT_EQ(FocusedName(), before);
    }
}

TEST_F(WindowLayoutTest, AResizeKeepsTheRecipeOnShow) {
    ASSERT_TRUE(Start());
    PressLine(2, 3);
    const std::string text = Ui().rtbSee.Text();
    Size(900, 650);
    EXPECT_TRUE(Ui().rtbSee.Visible());
    EXPECT_EQ(Ui().rtbSee.Text(), text);
    EXPECT_FALSE(Main().viewer.Modified);
}

TEST_F(WindowLayoutTest, AMinimisedWindowIsLeftAsItIs) {
    ASSERT_TRUE(Start());
    Size(1024, 720);
    Main().LinesInList[0] = 3;
    Ui().window.SetWindowState(Window::Minimized);
    Main().layout.ResizeIt();
    EXPECT_EQ(Main().LinesInList[0], 3);
}

TEST_F(WindowLayoutTest, TheTextStandsOnThePlaceOfARecipe) {
    ASSERT_TRUE(Start());
    Size(1536, 1080);
    Main().layout.HideRTB(Ui().rtbSee);
    Main().layout.PlaceRtbRes();
    const Rectangle& shape = MainControls::Shape1;
    ExpectPlace(Ui().rtbSee.Place(),
                {shape.Left * 1.5F, shape.Top * 1.5F, shape.Width * 1.5F, shape.Height * 1.5F});
}

TEST_F(WindowLayoutTest, AParkedBoxIsOutOfSightAndStillCountsAsVisible) {
    ASSERT_TRUE(Start());
    Ui().rtbSee.SetVisible(true);
    Main().layout.HideRTB(Ui().rtbSee);
    EXPECT_TRUE(Ui().rtbSee.Visible());
    EXPECT_GE(Ui().rtbSee.Left(), Ui().window.WorkArea().Width);
}

TEST_F(WindowLayoutTest, TheWindowCannotBeMadeSmallerThanHalfItsDesign) {
    ASSERT_TRUE(Start());
    Ui().window.SetWindowState(Window::Normal);
    Ui().window.SetClientSize(10 * TwipsPerPixel, 10 * TwipsPerPixel);
    EXPECT_GE(Pixels(Ui().window.ClientWidth()), 512);
    EXPECT_GE(Pixels(Ui().window.ClientHeight()), 360);
}

TEST_F(WindowLayoutTest, TheColumnsOfTheListsFollowTheirWidth) {
    ASSERT_TRUE(Start());
    Size(1536, 1080);
    EXPECT_FLOAT_EQ(List(1).ColumnWidth(1), List(1).Width());
    EXPECT_FLOAT_EQ(List(2).ColumnWidth(1), 281);
    EXPECT_FLOAT_EQ(List(2).ColumnWidth(2), List(2).Width() * 0.25F);
    EXPECT_FLOAT_EQ(List(2).ColumnWidth(3), List(2).Width() * 0.8F);
}

}  // namespace
}  // namespace larder::test
