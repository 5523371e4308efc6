#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QImage>
#include <QString>
#include <QWidget>
#include <set>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/EventCount.h"
#include "behaviour/support/MeasuredLists.h"

namespace larder::test {
namespace {

class Drawing : public MeasuredLists {
  protected:
    MainControls& Ui() { return Main().ui; }
    // How often the picture behind a list is drawn by a forced fill of it.
    int DrawnByFill(int list) {
        const EventCount paints(Ui().imgWaterMark(list).Native(), QEvent::Paint);
        Main().lists.ShowListItems(static_cast<std::int16_t>(list), 0, true);
        EXPECT_TRUE(List(list).Visible());
        return paints.Count;
    }
    int DrawnByFillWith(int list, std::string& tag) {
        tag = "dragged";
        const int drawn = DrawnByFill(list);
        tag.clear();
        return drawn;
    }
    // How often the lines of the recipes are drawn at once.
    int DrawnByRefresh(std::int16_t line) {
        const EventCount paints(Pressed(2), QEvent::Paint);
        Main().lists.RefreshListItem(2, line);
        return paints.Count;
    }
};

// While a thumb is dragged.

TEST_F(Drawing, AFillOfTheRecipesDrawsThePictureBehindThemWhileTheirThumbIsDragged) {
    ClickCategory("LONG");
    const int atRest = DrawnByFill(2);
    EXPECT_EQ(DrawnByFillWith(2, Ui().imgGarlic2.Tag), atRest + 1);
    EXPECT_EQ(DrawnByFillWith(2, Ui().lblScroll2.Tag), atRest + 1);
    EXPECT_EQ(DrawnByFillWith(2, Ui().imgGarlic1.Tag), atRest);
    EXPECT_EQ(DrawnByFillWith(2, Ui().lblScroll1.Tag), atRest);
    EXPECT_EQ(ShownNumbers(), Range(1, Fit2));
}

TEST_F(Drawing, AFillOfTheCategoriesLooksAtTheirThumbAndAtTheTrackOfTheRecipes) {
    const int atRest = DrawnByFill(1);
    EXPECT_EQ(DrawnByFillWith(1, Ui().imgGarlic1.Tag), atRest + 1);
    EXPECT_EQ(DrawnByFillWith(1, Ui().lblScroll2.Tag), atRest + 1);
    EXPECT_EQ(DrawnByFillWith(1, Ui().imgGarlic2.Tag), atRest);
    EXPECT_EQ(DrawnByFillWith(1, Ui().lblScroll1.Tag), atRest);
    EXPECT_EQ(Shown(1).front(), "MY FAVORITES");
}

TEST_F(Drawing, AFillThatChangesNothingDrawsNothing) {
    ClickCategory("LONG");
    for (const std::int16_t list : {std::int16_t{1}, std::int16_t{2}}) {
        const std::int32_t start = Main().VList[static_cast<std::size_t>(list - 1)].CurrentIndex;
        Main().lists.ShowListItems(list, start, false);  // remembers the key of the bar by now
        QApplication::processEvents();
        const EventCount lines(Pressed(list), QEvent::Paint);
        const EventCount behind(Ui().imgWaterMark(list).Native(), QEvent::Paint);
        Main().lists.ShowListItems(list, start, false);
        QApplication::processEvents();
        EXPECT_EQ(lines.Count, 0) << list;
        EXPECT_EQ(behind.Count, 0) << list;
        Main().lists.ShowListItems(list, start, true);
        QApplication::processEvents();
        EXPECT_GT(lines.Count, 0) << list;
    }
}

// A line drawn again.

TEST_F(Drawing, ALineOfTheWindowIsDrawnAgain) {
    ClickCategory("SHORT");
    EXPECT_EQ(DrawnByRefresh(1), 1);
    EXPECT_EQ(DrawnByRefresh(static_cast<std::int16_t>(Fit2 - 2)), 1);
}

TEST_F(Drawing, LineNoughtIsTheSelectedLine) {
    ClickCategory("SHORT");
    EXPECT_EQ(DrawnByRefresh(0), 1);
    List(2).ClearSelection();
    EXPECT_EQ(DrawnByRefresh(0), 0);
}

TEST_F(Drawing, ALineOutsideTheWindowIsNotDrawn) {
    ClickCategory("SHORT");
    EXPECT_EQ(DrawnByRefresh(static_cast<std::int16_t>(Fit2 - 1)), 0);
    EXPECT_EQ(DrawnByRefresh(-1), 0);
    ClickCategory("NONE");
    EXPECT_EQ(DrawnByRefresh(1), 0);
}

// Off the screen.

TEST_F(Drawing, AResizeShowsNothingOfAListThatIsOffTheScreen) {
    ClickCategory("LONG");
    for (const int list : {1, 2})
        List(list).SetVisible(false);
    const EventCount shown1(List(1).Native(), QEvent::Show);
    const EventCount shown2(List(2).Native(), QEvent::Show);
    Main().layout.ResizeIt();
    EXPECT_EQ(shown1.Count + shown2.Count, 0);
    EXPECT_FALSE(List(1).Visible() || List(2).Visible());
    Main().lists.ShowListItems(2, 0, true);
    EXPECT_TRUE(List(2).Visible()) << "the next fill shows it";
}

// The ground shows through.

class Ground : public Drawing {
  protected:
    void SetUp() override {
        QImage picture(256, 180, QImage::Format_RGB32);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                picture.setPixel(x, y, qRgb(x, y, 128));
        }
        Folder.MakeFolder("Data");
        ASSERT_TRUE(picture.save(QString::fromStdString(Folder.Native("Data/RecipeView.jpg"))));
        Drawing::SetUp();
    }
    QImage Look(const Control& control) {
        return Ui().window.Native()->grab(control.Native()->geometry()).toImage();
    }
    static std::set<QRgb> Colours(const QImage& image) {
        std::set<QRgb> colours;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                colours.insert(image.pixel(x, y));
        }
        return colours;
    }
    // The share of the control's pixels that are as without it.
    double SeenThrough(Control& control) {
        const QImage with = Look(control);
        control.SetVisible(false);
        const QImage without = Look(control);
        control.SetVisible(true);
        EXPECT_GT(Colours(without).size(), 100U) << "the ground is no single colour";
        int same = 0;
        for (int y = 0; y < with.height(); ++y) {
            for (int x = 0; x < with.width(); ++x)
                same += with.pixel(x, y) == without.pixel(x, y) ? 1 : 0;
        }
        return static_cast<double>(same) / (with.width() * with.height());
    }
};

TEST_F(Ground, ShowsThroughAnEmptyList) {
    ClickCategory("NONE");
    EXPECT_EQ(SeenThrough(Ui().lvwX2), 1);
}

TEST_F(Ground, ShowsThroughBetweenTheWordsOfTheLists) {
    ClickCategory("LONG");
    for (ListView* list : {&Ui().lvwX1, &Ui().lvwX2}) {
        const double share = SeenThrough(*list);
        EXPECT_GT(share, 0.5) << list->Index();
        EXPECT_LT(share, 1) << "there are words in it";
    }
}

TEST_F(Ground, ShowsThroughTheTextOfARecipe) {
    ClickCategory("LONG");
    PressLine(2, 1);
    ASSERT_TRUE(Ui().rtbSee.Visible());
    const double share = SeenThrough(Ui().rtbSee);
    EXPECT_GT(share, 0.8);
    EXPECT_LT(share, 1) << "there are words in it";
    Ui().rtbSee.SetText("");
    EXPECT_EQ(SeenThrough(Ui().rtbSee), 1);
}

}  // namespace
}  // namespace larder::test
