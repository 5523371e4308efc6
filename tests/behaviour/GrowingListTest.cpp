#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "platform/Failure.h"

namespace larder::test {
namespace {

// What can be done with a list of recipes before it is complete.
class GrowingFill : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(600);
        Book.Numbers("BIG") = NumbersFrom(1, 600);
        ASSERT_TRUE(Start());
    }
    // Looks once while "BIG" is being filled, as soon as it has `count` recipes.
    void LookAt(int count, std::function<void()> look) {
        Later([this, count, look = std::move(look)] {
            if (!Main().VList[1].booSearching) return;
            if (Main().VList[1].Count() < count) {
                LookAt(count, look);
                return;
            }
            looked_ = true;
            look();
        });
    }
    bool looked_ = false;
};

TEST_F(GrowingFill, TheFirstScreenfulIsShownWhileTheListGrows) {
    LookAt(Fit(2) + 1, [&] {
        EXPECT_TRUE(List(2).Visible());
        EXPECT_EQ(ShownNumbers(), Range(1, Fit(2)));
        EXPECT_EQ(SelectedLine(2), 1);
        EXPECT_EQ(Main().ui.lblFound.Caption(), std::to_string(Fit(2)) + " recipes found ...");
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_EQ(Main().ui.lblFound.Caption(), "600 recipes found ");
}

TEST_F(GrowingFill, TheCountIsRefreshedEveryTwoHundred) {
    LookAt(399, [&] {
        EXPECT_EQ(Main().ui.lblFound.Caption(), "200 recipes found ...");
        LookAt(401, [&] { EXPECT_EQ(Main().ui.lblFound.Caption(), "400 recipes found ..."); });
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
}

TEST_F(GrowingFill, BeforeTheFirstScreenfulTheListIsHiddenAndTheCountEmpty) {
    LookAt(2, [&] {
        EXPECT_FALSE(List(2).Visible());
        EXPECT_EQ(Main().ui.lblFound.Caption(), "");
        EXPECT_EQ(List(2).Tag, " ");
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_TRUE(List(2).Visible());
}

TEST_F(GrowingFill, TheKeysWorkWhileTheListGrows) {
    LookAt(3 * Fit(2), [&] {
        Focus(2);
        Key(Qt::Key_PageDown);
        EXPECT_EQ(ShownNumbers(), Range(Fit(2) + 1, 2 * Fit(2)));
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_EQ(ShownNumbers(), Range(Fit(2) + 1, 2 * Fit(2)));
    EXPECT_EQ(List(2).SelectedItem()->Tag, std::to_string(Fit(2) + 1));
}

TEST_F(GrowingFill, ClearingTheListFromOutsideEndsTheGrowth) {
    LookAt(100, [&] {
        Main().VList[1].ClearAll();
        EXPECT_FALSE(Main().VList[1].booSearching);
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_EQ(Main().VList[1].Count(), 0);
    EXPECT_FALSE(Main().VList[1].booSearching);
    ClickCategory("BIG");
    EXPECT_EQ(Main().VList[1].Count(), 600);
}

TEST_F(GrowingFill, AResizeWhileTheListGrowsLeavesTheWindowFull) {
    Main().ui.window.SetWindowState(Window::Normal);
    ASSERT_TRUE(WaitUntil([&] { return Main().ui.window.WindowState() == Window::Normal; }));
    const int before = Fit(2);
    LookAt(2 * Fit(2),
           [&] { Main().ui.window.SetClientSize(1600 * TwipsPerPixel, 420 * TwipsPerPixel); });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_TRUE(WaitUntil([&] { return Fit(2) != before; }));
    EXPECT_EQ(ShownNumbers(), Range(1, Fit(2)));
}

TEST_F(GrowingFill, AResizeBelowWhatIsThereAlreadyShowsTheFirstScreenfulToo) {
    LookAt(Fit(2) - 2, [&] {
        ASSERT_FALSE(List(2).Visible());
        Main().LinesInList[1] = static_cast<std::int16_t>(Fit(2) / 2);
        LookAt(Fit(2) + 2, [&] {
            EXPECT_TRUE(List(2).Visible());
            EXPECT_EQ(ShownNumbers(), Range(1, Main().LinesInList[1]));
            looked_ = Main().ui.lblFound.Caption() != "";
        });
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
}

TEST_F(GrowingFill, NextWalksTheRecipesThatAreThere) {
    LookAt(3 * Fit(2), [&] {
        Focus(2);
        Key(Qt::Key_N, Qt::AltModifier);
        EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
        EXPECT_EQ(SelectedLine(2), 2);
        EXPECT_TRUE(Main().ui.rtbSee.Visible());
        Key(Qt::Key_B, Qt::AltModifier);
        EXPECT_EQ(Main().viewer.CurrentRecipe(), 1);
        Key(Qt::Key_N, Qt::AltModifier);
        EXPECT_TRUE(Main().VList[1].booSearching);
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_EQ(Main().VList[1].Count(), 600);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
    EXPECT_EQ(SelectedLine(2), 2);
    EXPECT_TRUE(Main().ui.rtbSee.Visible());
}

TEST_F(GrowingFill, NextOnTheLastLineMovesTheWindowOfAGrowingList) {
    LookAt(3 * Fit(2), [&] {
        Focus(2);
        for (int i = 0; i < Fit(2); ++i)
            Key(Qt::Key_N, Qt::AltModifier);
        EXPECT_EQ(ShownNumbers(), Range(2, Fit(2) + 1));
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_EQ(ShownNumbers(), Range(2, Fit(2) + 1));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), Fit(2) + 1);
    EXPECT_EQ(List(2).SelectedItem()->Tag, std::to_string(Fit(2) + 1));
}

TEST_F(GrowingFill, NextFromTheCategoriesGoesToTheNextOfThem) {
    Book.Numbers("SMALL") = " 7 8 ";
    ASSERT_TRUE(Start());
    LookAt(3 * Fit(2), [&] {
        ASSERT_EQ(FocusedName(), "lvwX_1");
        Key(Qt::Key_N, Qt::AltModifier);
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     SMALL");
    EXPECT_EQ(ShownNumbers(), Range(7, 8));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 7);
}

TEST_F(GrowingFill, ARecipeThatWasOpenedMeanwhileStaysCurrentWhereverTheBarHasGone) {
    Book.Numbers("ALL RECIPES WITH PICTURES") = NumbersFrom(1, 600);
    ASSERT_TRUE(Start());
    const std::function<void()> moves[] = {[&] { Key(Qt::Key_Down); }, [&] { Wheel(2, 5); }};
    for (const char* category : {"BIG", "ALL RECIPES WITH PICTURES"}) {
        for (const auto& move : moves) {
            looked_ = false;
            std::string bar;
            LookAt(3 * Fit(2) + 20, [&] {
                PressLine(2, 4);
                move();
                bar = Main().strSelectedKey[1];
                Main().ui.rtbSee.SetText("untouched");
            });
            ClickCategory(category);
            EXPECT_TRUE(looked_);
            EXPECT_EQ(Main().VList[1].Count(), 600);
            EXPECT_EQ(Main().viewer.CurrentRecipe(), 4) << category;
            EXPECT_EQ(Main().ui.lblRecipeNum.Caption(), "# 4");
            EXPECT_EQ(Main().ui.rtbSee.Text(), "untouched");
            EXPECT_EQ(Main().strSelectedKey[1], bar);
            EXPECT_NE(FocusedName(), "lvwX_1") << "the user is in the recipes";
            ClickCategory("MY FAVORITES");
        }
    }
}

TEST_F(GrowingFill, ARecipeThatWasAskedForMeanwhileInVainIsToldOnce) {
    ASSERT_TRUE(Start("/E"));
    ClickCategory("ALL RECIPES");
    PressLine(2, 7);
    Main().ui.rtbSee.SetFocus();
    Key(Qt::Key_X);
    ASSERT_TRUE(Main().viewer.Modified);
    Main().files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "write") throw Failure(failure::DiskFull, "disk");
    });
    std::size_t told = 0;
    LookAt(3 * Fit(2), [&] {
        PressLine(2, 4);
        told = Boxes.Shown.size();
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_GT(told, 0U) << "what was typed cannot be saved";
    EXPECT_EQ(Boxes.Shown.size(), told);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 7);
    EXPECT_TRUE(Main().viewer.Modified);
    EXPECT_EQ(FocusedName(), "lvwX_2") << "the user is in the recipes";
    Main().files.Watch(nullptr);
}

TEST_F(GrowingFill, ARecipeThatAButtonShowedMeanwhileStaysCurrent) {
    ClickCategory("ALL RECIPES");
    PressLine(2, 7);
    LookAt(3 * Fit(2), [&] { Click("ibRecipeButton"); });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 7);
    EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 14), "Stock recipe 7");
    EXPECT_TRUE(Main().ui.rtbSee.Visible());
    EXPECT_EQ(SelectedLine(2), 1);
}

TEST_F(GrowingFill, TheCategoryKeepsItsBarThoughItWasScrolledAwayMeanwhile) {
    for (int i = 1; i <= 40; ++i)
        Book.Numbers("MORE " + std::to_string(i)) = " 1 ";
    ASSERT_TRUE(Start());
    const auto open = [&] { ClickCategory("BIG"); };
    const auto stepTo = [&] {
        Focus(1);
        Key(Qt::Key_N, Qt::AltModifier);
    };
    for (const bool recipeOpened : {false, true}) {
        for (const auto& fill : {std::function<void()>(open), std::function<void()>(stepTo)}) {
            ClickCategory("ALL RECIPES");
            looked_ = false;
            LookAt(3 * Fit(2), [&] {
                if (recipeOpened) PressLine(2, 4);
                Wheel(1, 5);
                ASSERT_TRUE(List(1).HideSelection());
            });
            fill();
            EXPECT_TRUE(looked_);
            EXPECT_EQ(Main().strSelectedKey[0], "     BIG");
            Focus(1);
            EXPECT_EQ(List(1).SelectedItem()->Key(), "     BIG");
        }
    }
}

TEST_F(GrowingFill, BeforeTheFirstScreenfulTheRecipesOfTheListBeforeCannotBeOpened) {
    Book.Numbers("OLD") = " 501 502 503 ";
    ASSERT_TRUE(Start());
    ClickCategory("OLD");
    PressLine(2, 1);
    LookAt(2, [&] {
        Main().ui.chkFocusCatcher.SetFocus();
        Key(Qt::Key_N, Qt::AltModifier);
        EXPECT_EQ(Main().viewer.CurrentRecipe(), 501);
        Main().ui.rtbSee.SetText("untouched");
        Key(Qt::Key_Return);
        EXPECT_EQ(Main().ui.rtbSee.Text(), "untouched");
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
}

TEST_F(GrowingFill, BeforeTheFirstScreenfulNothingButForceShowsItsLines) {
    Book.Numbers("OLD") = " 501 502 503 ";
    ASSERT_TRUE(Start());
    ClickCategory("OLD");
    LookAt(2, [&] {
        Main().lists.ShowListItems(2, 1, false);
        EXPECT_FALSE(List(2).Visible());
        EXPECT_EQ(List(2).Tag, " ");
        Main().lists.ShowListItems(2, 1, true);
        EXPECT_TRUE(List(2).Visible());
        EXPECT_EQ(ShownNumbers(), Range(1, 2));
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_EQ(ShownNumbers(), Range(1, Fit(2)));
}

TEST_F(GrowingFill, AResizeBeforeTheFirstScreenfulShowsNothingOfTheList) {
    LookAt(2, [&] {
        Main().layout.ResizeIt();
        EXPECT_FALSE(List(2).Visible());
        EXPECT_TRUE(List(1).Visible());
    });
    ClickCategory("BIG");
    EXPECT_TRUE(looked_);
    EXPECT_TRUE(List(2).Visible());
    EXPECT_EQ(ShownNumbers(), Range(1, Fit(2)));
}

}  // namespace
}  // namespace larder::test
