#include <gtest/gtest.h>

#include <QImage>
#include <QMenu>
#include <QString>
#include <QWidget>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

using Captions_ = std::vector<std::string>;

class RecipeLine : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(8);
        Book.AddOwn("My Chowder");
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 2 ";
        Book.Numbers("MY FAVORITES") = " 4 9 ";
        Book.Numbers("MIXED") = " 1 2 3 4 9 ";
        ASSERT_TRUE(Start());
        ClickCategory("MIXED");
    }
    // Presses a line with the right button; the captions of the menu that pops up.
    Captions_ MenuOn(int line) {
        Captions_ captions{"no menu"};
        WhenMenuPopsUp([&](QMenu& menu) { captions = Captions(menu); });
        PressLine(2, line, Qt::RightButton);
        return captions;
    }
    std::int32_t Current() { return Main().viewer.CurrentRecipe(); }
    RichTextBox& Box() { return Main().ui.rtbSee; }
};

TEST_F(RecipeLine, AClickOpensItsRecipe) {
    PressLine(2, 3);
    EXPECT_EQ(Current(), 3);
    EXPECT_TRUE(Box().Visible());
    EXPECT_EQ(Box().Text().substr(0, 14), "Stock recipe 3");
    EXPECT_EQ(Main().strSelectedKey[1], "k3");
    EXPECT_FALSE(Main().screen.EncyclopediaMode());
}

TEST_F(RecipeLine, AClickBringsTheCategoryOfTheListBackIntoTheCaption) {
    Main().ui.lblCategory.SetCaption("Help");
    PressLine(2, 1);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "     MIXED");
}

TEST_F(RecipeLine, AClickOnTheCurrentRecipeOfAnOpenedCategoryShowsIt) {
    ASSERT_EQ(Current(), 1);
    ASSERT_FALSE(Box().Visible());
    PressLine(2, 1);
    EXPECT_EQ(Current(), 1);
    EXPECT_TRUE(Box().Visible());
}

TEST_F(RecipeLine, ASecondClickOnARecipeWithoutAPictureShowsItsTextAgain) {
    PressLine(2, 3);
    Box().SetText("gone");
    PressLine(2, 3);
    EXPECT_EQ(Box().Text().substr(0, 14), "Stock recipe 3");
    EXPECT_TRUE(Box().Visible());
}

TEST_F(RecipeLine, AClickSelectsItsLineEvenFromTheCategoryList) {
    ASSERT_EQ(FocusedName(), "lvwX_1");
    PressLine(2, 4);
    EXPECT_EQ(SelectedLine(2), 4);
    EXPECT_EQ(FocusedName(), "lvwX_2");
}

TEST_F(RecipeLine, ADeletedRecipeThatIsListedStillOpensOnItsNotice) {
    Book.AddOwn("Eel");
    Book.Numbers("MIXED") = " 10 1 ";
    ASSERT_TRUE(Start());
    ClickCategory("MIXED");
    ASSERT_TRUE(Main().ownRecipes.UpdateRecipe(10, "", ""));  // the line stays
    PressLine(2, 1);
    EXPECT_NE(Box().Text().find("recipe 10 is unavailable"), std::string::npos);
}

TEST_F(RecipeLine, AFailureWithinAClickEndsQuietly) {
    List(2).Item(2).Tag = "99999";
    PressLine(2, 2);
    EXPECT_EQ(Current(), 1);
    List(2).Item(3).Tag = "no number";
    PressLine(2, 3);
    EXPECT_EQ(Current(), 1);
    EXPECT_TRUE(Boxes.Shown.empty());
}

// The menu.

TEST_F(RecipeLine, ARightClickOpensTheRecipeAndThenPopsUpTheMenu) {
    std::int32_t whenShown = 0;
    bool visible = false;
    WhenMenuPopsUp([&](QMenu&) {
        whenShown = Current();
        visible = Box().Visible();
    });
    PressLine(2, 3, Qt::RightButton);
    EXPECT_EQ(whenShown, 3);
    EXPECT_TRUE(visible);
    EXPECT_EQ(SelectedLine(2), 3);
    EXPECT_FALSE(Main().listInput.booRightClick);
}

TEST_F(RecipeLine, ARightClickOnTheCurrentRecipeFlipsItAndPopsUpTheMenu) {
    QImage photo(80, 60, QImage::Format_RGB32);
    photo.fill(Qt::blue);
    Folder.MakeFolder("Data/Food Photos");
    ASSERT_TRUE(photo.save(QString::fromStdString(Folder.Native("Data/Food Photos/2.bmp"))));
    const auto pressAndExpect = [&](int recipe, bool picture) {
        int menus = 0;
        WhenMenuPopsUp([&](QMenu&) {
            ++menus;
            EXPECT_EQ(Main().ui.frPic.Visible(), picture) << "flipped before the menu";
            EXPECT_EQ(Box().Visible(), !picture);
        });
        PressLine(2, recipe, Qt::RightButton);
        EXPECT_EQ(menus, 1);
        EXPECT_EQ(Current(), recipe);
    };
    PressLine(2, 2);
    ASSERT_TRUE(Main().ui.frPic.Visible());
    pressAndExpect(2, false);
    pressAndExpect(2, true);
    // One without a picture flips to its own text.
    PressLine(2, 3);
    Box().SetText("gone");
    pressAndExpect(3, false);
    EXPECT_EQ(Box().Text().substr(0, 14), "Stock recipe 3");
}

TEST_F(RecipeLine, AfterTheMenuALeftClickIsAPlainOneAgain) {
    MenuOn(3);
    bool menu = false;
    WhenMenuPopsUp([&](QMenu&) { menu = true; });
    PressLine(2, 1);
    EXPECT_EQ(Current(), 1);
    EXPECT_FALSE(menu);
}

TEST_F(RecipeLine, TheMenuOfAStockRecipeOffersTheFavouritesOnly) {
    EXPECT_EQ(MenuOn(1), (Captions_{"Add to Favorites"}));
}

TEST_F(RecipeLine, TheMenuOfAFavouriteOffersToRemoveIt) {
    EXPECT_EQ(MenuOn(4), (Captions_{"Remove from Favorites"}));
}

TEST_F(RecipeLine, AmongTheFavouritesTheMenuOffersToRemove) {
    ClickCategory("MY FAVORITES");
    EXPECT_EQ(MenuOn(1), (Captions_{"Remove from Favorites"}));
    EXPECT_EQ(MenuOn(2), (Captions_{"Remove from Favorites", "-", "Edit", "Delete"}));
}

TEST_F(RecipeLine, TheMenuOfAnOwnRecipeHasEditAndDelete) {
    Book.Numbers("MY FAVORITES") = " ";
    ASSERT_TRUE(Start());
    ClickCategory("MIXED");
    EXPECT_EQ(MenuOn(5), (Captions_{"Add to Favorites", "-", "Edit", "Delete"}));
}

TEST_F(RecipeLine, TheMenuOfAnOwnFavouriteHasNoSeparator) {
    EXPECT_EQ(MenuOn(5), (Captions_{"Remove from Favorites", "Edit", "Delete"}));
}

TEST_F(RecipeLine, InMaintenanceEveryRecipeHasEditAndDelete) {
    ASSERT_TRUE(Start("/e"));
    ClickCategory("MIXED");
    EXPECT_EQ(MenuOn(1), (Captions_{"Add to Favorites", "-", "Edit", "Delete"}));
}

TEST_F(RecipeLine, InMaintenanceAStockFavouriteHasEditAndDeleteAndNoSeparator) {
    ASSERT_TRUE(Start("/E"));
    ClickCategory("MIXED");
    EXPECT_EQ(MenuOn(4), (Captions_{"Remove from Favorites", "Edit", "Delete"}));
    ClickCategory("MY FAVORITES");
    EXPECT_EQ(MenuOn(1), (Captions_{"Remove from Favorites", "-", "Edit", "Delete"}));
}

TEST_F(RecipeLine, GuideHeadingsHaveNoMenu) {
    Main().recipes.booRecipeColumns = false;
    EXPECT_EQ(MenuOn(1), (Captions_{"no menu"}));
    EXPECT_FALSE(Main().listInput.booRightClick);
}

TEST_F(RecipeLine, ARightClickBelowTheLastLineHasNoMenu) {
    EXPECT_EQ(MenuOn(7), (Captions_{"no menu"}));
}

TEST_F(RecipeLine, ARightClickOnACategoryIsAClick) {
    PressLine(1, 1, Qt::RightButton);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "MY FAVORITES");
    EXPECT_FALSE(Main().listInput.booRightClick);
}

TEST_F(RecipeLine, AddingFromTheMenuAddsTheLinesRecipe) {
    WhenMenuPopsUp([](QMenu& menu) { Choose(menu, "mnuPopUpAddToFavorites"); });
    PressLine(2, 3, Qt::RightButton);
    EXPECT_TRUE(Main().favorites.IsInFavorites(3));
    EXPECT_EQ(MenuOn(3), (Captions_{"Remove from Favorites"}));
}

TEST_F(RecipeLine, RemovingFromTheMenuRemovesTheLinesRecipe) {
    ClickCategory("MY FAVORITES");
    WhenMenuPopsUp([](QMenu& menu) { Choose(menu, "mnuPopUpRemoveFromFavorites"); });
    PressLine(2, 1, Qt::RightButton);
    EXPECT_FALSE(Main().favorites.IsInFavorites(4));
    EXPECT_EQ(ShownNumbers(), Range(9, 9));
    EXPECT_EQ(Current(), 9);
}

TEST_F(RecipeLine, ClosingTheMenuWithoutAChoiceChangesNothing) {
    const std::string before = Folder.Read("Data/Categories.ctg");
    MenuOn(1);
    EXPECT_EQ(Folder.Read("Data/Categories.ctg"), before);
    EXPECT_FALSE(Main().favorites.IsInFavorites(1));
}

}  // namespace
}  // namespace larder::test
