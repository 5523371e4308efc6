#include "search/RecipeSearch.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <string>
#include <vector>

#include "behaviour/support/SearchBook.h"

namespace larder::test {
namespace {

using Numbers = std::vector<int>;

class Search : public SearchBook {
  protected:
    void SetUp() override {
        AddSmallBook();
        ASSERT_TRUE(StartWithIndex());
        OpenDialog();
    }
    std::int32_t Current() { return Main().viewer.CurrentRecipe(); }
    std::string Tag() { return Main().ui.lvwX2.Tag; }
    std::string Text() { return Main().ui.rtbSee.Text(); }
    std::int32_t ColorOf(const std::string& text, int nth = 1) {
        RichTextBox& box = Main().ui.rtbSee;
        std::size_t place = box.Text().find(text);
        for (int i = 1; i < nth; ++i)
            place = box.Text().find(text, place + 1);
        EXPECT_NE(place, std::string::npos) << text;
        box.SetSelStart(static_cast<std::int32_t>(place));
        box.SetSelLength(static_cast<std::int32_t>(text.size()));
        return box.SelColor().value_or(-1);
    }
};

constexpr std::int32_t FoundColor = 0xFF0000;

TEST_F(Search, TheResultIsOnTheScreenWithItsFirstRecipeShown) {
    FindWords("salmon dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 4, 7}));
    EXPECT_EQ(Shown(2), (std::vector<std::string>{"Salmon Steaks", "Smoked Trout", "My Salmon"}));
    EXPECT_EQ(Tag(), " 2 4 7 ");
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(Found(), "3 recipes found ");
    EXPECT_EQ(Current(), 2);
    EXPECT_TRUE(Text().starts_with("Salmon Steaks"));
    EXPECT_TRUE(Main().ui.lvwX2.Visible());
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(Search, WordsOfOwnRecipesAreFoundInWhateverOrder) {
    FindWords("dill salmon");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 4, 7}));
    FindWords("salmon my with");
    EXPECT_EQ(ShownNumbers(), Numbers{7});
    EXPECT_EQ(Current(), 7);
}

TEST_F(Search, TheResultHasTheColumnsOfRecipes) {
    Main().recipes.booRecipeColumns = false;
    FindWords("and the");
    EXPECT_TRUE(Main().recipes.booRecipeColumns);
}

TEST_F(Search, TheListIsCalledSearch) {
    FindWords("salmon");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
    EXPECT_EQ(Main().strLastRecipeCategory, "SEARCH");
}

TEST_F(Search, TheWordsAreColouredWhereTheyFirstStandBehindTheTitle) {
    FindWords("salmon dill");
    EXPECT_EQ(Main().strLastSearchWords, "salmon dill");
    EXPECT_NE(ColorOf("Salmon Steaks"), FoundColor) << "the title";
    EXPECT_EQ(ColorOf("dill", 1), FoundColor);
    EXPECT_EQ(ColorOf("salmon", 1), FoundColor);
    EXPECT_NE(ColorOf("dill", 2), FoundColor) << "only the first is coloured";
}

TEST_F(Search, StopWordsAreColouredToo) {
    FindWords("salmon and dill");
    EXPECT_EQ(ColorOf("and"), FoundColor);
}

TEST_F(Search, SalmonAndDillGivesTheStockOfSalmonCommaDill) {
    FindWords("salmon and dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 4}));
    FindWords("Salmon, dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 4, 7}));
    EXPECT_EQ(Dialog().rtbSearch1.Text(), "Salmon, dill") << "the query is worked on as a copy";
    FindWords("salmon AND dill");
    EXPECT_EQ(ShownNumbers(), Numbers{});
}

TEST_F(Search, ADeletedRecipeIsNoHit) {
    FindWords("salmon");
    EXPECT_EQ(ShownNumbers(), (Numbers{1, 2, 4, 6, 7}));
    EXPECT_EQ(Found(), "5 recipes found ");
}

TEST_F(Search, WithoutAHitTheListIsEmptyAndTheRecipeStays) {
    FindWords("dill");
    ASSERT_EQ(Current(), 2);
    FindWords("unicorn");
    EXPECT_EQ(Main().ui.lvwX2.Count(), 0);
    EXPECT_EQ(Tag(), "");
    EXPECT_EQ(Found(), "0 recipes found ");
    EXPECT_EQ(Current(), 2);
    EXPECT_TRUE(Text().starts_with("Salmon Steaks"));
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
}

TEST_F(Search, StopWordsAloneChangeOnlyCaptions) {
    ClickCategory("SAUCES");
    FindWords("and the");
    EXPECT_EQ(ShownNumbers(), (Numbers{3, 4, 7}));
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
    EXPECT_EQ(Tag(), " 3 4 7 ");
}

TEST_F(Search, TheSearchCanBeKeptWithinTheList) {
    ClickCategory("SAUCES");
    Press(Qt::Key_O, Qt::AltModifier);
    FindWords("salmon");
    EXPECT_EQ(ShownNumbers(), (Numbers{4, 7}));
}

TEST_F(Search, NarrowingASearchKeepsTheEarlierWordsColoured) {
    FindWords("salmon");
    Click("lblChkBox");
    FindWords("dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 4, 7}));
    EXPECT_EQ(Main().strLastSearchWords, "dill salmon");
    EXPECT_EQ(ColorOf("dill"), FoundColor);
    EXPECT_EQ(ColorOf("salmon", 1), FoundColor);
    Click("lblChkBox");
    FindWords("dill");
    EXPECT_EQ(Main().strLastSearchWords, "dill");
}

TEST_F(Search, WithinAllRecipesTheCheckBoxCountsAsOff) {
    ClickCategory("ALL RECIPES");
    ASSERT_EQ(Tag(), "*");
    Click("lblChkBox");
    FindWords("dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 3, 4, 7}));
}

TEST_F(Search, WithinTheFavouritesTheirOrderStaysAndTheFirstIsLost) {
    Click("lblChkBox");
    ASSERT_EQ(Main().strLastRecipeCategory, "MY FAVORITES");
    FindWords("salmon");
    EXPECT_EQ(ShownNumbers(), (Numbers{4, 2})) << "they are the shortest term here";
}

// They are told by the category at the press of Find, which a search then renames.
TEST_F(Search, WithinMoreFavouritesThanAWordHasRecipesTheirFirstIsLost) {
    for (const std::int32_t recipe : {1, 3, 6})
        Main().favorites.AddToFavorites(recipe);
    ClickCategory("MY FAVORITES");
    ASSERT_EQ(ShownNumbers(), (Numbers{4, 2, 1, 3, 6}));
    Click("lblChkBox");
    FindWords("dill salmon");
    EXPECT_EQ(ShownNumbers(), Numbers{2}) << "dill is the shortest term here, and 4 is lost";
}

TEST_F(Search, WithinAnEmptyListNothingIsFound) {
    ClickCategory("EMPTY");
    Click("lblChkBox");
    FindWords("salmon");
    EXPECT_EQ(ShownNumbers(), Numbers{});
    EXPECT_EQ(Found(), "0 recipes found ");
}

TEST_F(Search, ARecipeWithAPictureIsMarked) {
    FindWords("sauce");
    ASSERT_EQ(ShownNumbers(), Numbers{3});
    EXPECT_EQ(List(2).Item(1).SmallIcon(), 2);
}

TEST_F(Search, ACategoryEndsTheSearchListAndItsColours) {
    FindWords("salmon");
    ClickCategory("SAUCES");
    EXPECT_EQ(ShownNumbers(), (Numbers{3, 4, 7}));
    EXPECT_EQ(Main().strLastSearchWords, "");
}

TEST_F(Search, TheSameWordsCanBeFoundAgain) {
    FindWords("dill");
    PressLine(2, 3);
    ASSERT_EQ(Current(), 4);
    FindWords("dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 3, 4, 7}));
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(Current(), 2);
}

TEST_F(Search, TheWaitLookEndsWithTheSearch) {
    FindWords("salmon");
    EXPECT_NE(Main().ui.window.Native()->cursor().shape(), Qt::WaitCursor);
    EXPECT_NE(Dialog().window.Native()->cursor().shape(), Qt::WaitCursor);
}

TEST_F(Search, ABrokenIndexIsNotTold) {
    Folder.Delete("Data/Search.ydb");
    FindWords("salmon");
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(ShownNumbers(), (Numbers{4, 2})) << "the list stays as it was";
}

TEST_F(Search, AnEmptyResultWithOnlyPicturesAskedForIsAQuestionOnce) {
    Main().ui.chkJustWithPictures.SetValue(1);
    Boxes.Then(Dialogs::Answer::No);
    FindWords("unicorn");
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text,
              "No recipes with pictures found in this set.\n"
              "Do you want to see the recipes without pictures?");
    EXPECT_EQ(Boxes.Shown[0].Title, "The Galley Almanac");
    EXPECT_EQ(Boxes.Shown[0].Buttons, Dialogs::Buttons::YesNo);
    EXPECT_EQ(Main().ui.chkJustWithPictures.Value(), 1);
    Main().layout.ResizeIt();
    EXPECT_EQ(Boxes.Shown.size(), 1U) << "showing it anew is no new search";
    Boxes.Then(Dialogs::Answer::Yes);
    FindWords("dragon");
    EXPECT_EQ(Boxes.Shown.size(), 2U) << "each search asks";
    EXPECT_EQ(Main().ui.chkJustWithPictures.Value(), 0);
    FindWords("unicorn");
    EXPECT_EQ(Boxes.Shown.size(), 2U);
}

TEST_F(Search, AResultWithRecipesIsNoQuestionThoughNoneHasAPicture) {
    Main().ui.chkJustWithPictures.SetValue(1);
    FindWords("salmon");
    FindWords("and the");
    EXPECT_EQ(ShownNumbers(), (Numbers{1, 2, 4, 6, 7}));
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(Search, EveryResultBeginsWithTheBarOnItsFirstLineAndTheBarStaysWithItsRecipe) {
    FindWords("salmon");
    PressLine(2, 4);
    ASSERT_EQ(Current(), 6);
    FindWords("dill");
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(Current(), 2);
    // From then on the bar is remembered by its recipe, so that it can be scrolled out of sight.
    EXPECT_EQ(Main().strSelectedKey[1], "k2");
}

// Before the dialog is opened.

class SearchBeforeTheDialog : public SearchBook {
  protected:
    void SetUp() override {
        AddSmallBook();
        ASSERT_TRUE(StartWithIndex());
    }
    static bool DialogMade() {
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == "frmSearch") return true;
        }
        return false;
    }
};

TEST_F(SearchBeforeTheDialog, TheWaitLookDoesNotMakeTheDialog) {
    ClickCategory("SAUCES");
    EXPECT_FALSE(DialogMade());
    OpenDialog();
    EXPECT_TRUE(DialogMade()) << "or this would show nothing";
}

TEST_F(SearchBeforeTheDialog, TheCheckBoxIsOff) {
    OpenDialog();
    EXPECT_EQ(Dialog().chkOnly.Value(), 0);
}

}  // namespace
}  // namespace larder::test
