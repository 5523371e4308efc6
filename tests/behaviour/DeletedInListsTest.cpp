#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/SearchBook.h"

namespace larder::test {
namespace {

using Numbers = std::vector<int>;

// Lists of numbers that have deleted recipes among them. Stock recipe 5 and own recipe 9 are
// deleted.
class DeletedInLists : public SearchBook {
  protected:
    void SetUp() override {
        AddSmallBook();
        Book.AddOwn("");
        Book.AddOwn("Salmon Pie", "Bake it.");
        Book.Numbers("MIXED") = " 4 5 6 9 10 ";
        Book.Numbers("DELETED") = " 5 9 ";
        Book.Numbers("MY FAVORITES") = " 9 10 5 4 2 ";
        ASSERT_TRUE(StartWithIndex());
    }
    std::int32_t Current() { return Main().viewer.CurrentRecipe(); }
    std::string FavouritesOnDisk() {
        const std::string text = Folder.Read("Data/Categories.ctg");
        const std::string name = "\r\nMY FAVORITES\r\n";
        const std::size_t start = text.find(name) + name.size();
        return text.substr(start, text.find('\r', start) - start);
    }
};

TEST_F(DeletedInLists, TheyAreNeitherShownNorCounted) {
    EXPECT_EQ(ShownNumbers(), (Numbers{10, 4, 2})) << "the favourites, on which the program opens";
    EXPECT_EQ(Current(), 10);
    ClickCategory("MIXED");
    EXPECT_EQ(ShownNumbers(), (Numbers{4, 6, 10}));
    EXPECT_EQ(Found(), "3 recipes found ");
    EXPECT_EQ(List(2).Tag, " 4 6 10 ");
}

TEST_F(DeletedInLists, ACategoryOfNothingElseIsEmpty) {
    ClickCategory("DELETED");
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_EQ(Found(), "0 recipes found ");
    EXPECT_EQ(Current(), -1);
    for (const char* button : {"ibNext", "ibBack"}) {
        Focus(2);
        Click(button);
        EXPECT_EQ(Current(), -1) << button;
    }
    ClickCategory("DELETED");
    EXPECT_EQ(List(2).Count(), 0);
    ClickCategory("MIXED");
    EXPECT_EQ(Current(), 4);
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(DeletedInLists, NextAndBackKnowNothingOfThem) {
    ClickCategory("MIXED");
    PressLine(2, 1);
    for (const int recipe : {6, 10, 10}) {
        Click("ibNext");
        EXPECT_EQ(Current(), recipe);
    }
    for (const int recipe : {6, 4, 4}) {
        Click("ibBack");
        EXPECT_EQ(Current(), recipe);
    }
}

TEST_F(DeletedInLists, SortingPutsTheOthersInOrder) {
    Click("imgSortByNum");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 4, 10}));
    Click("imgSortByName");
    EXPECT_EQ(ShownNumbers(), (Numbers{10, 2, 4})) << "Salmon Pie, Salmon Steaks, Smoked Trout";
}

TEST_F(DeletedInLists, AFavouriteAmongThemIsRemovedAndTheyStayInTheFile) {
    PressLine(2, 2);
    ASSERT_EQ(Current(), 4);
    Main().favorites.RemoveFromFavorites(4);
    EXPECT_EQ(ShownNumbers(), (Numbers{10, 2}));
    EXPECT_EQ(Current(), 2);
    EXPECT_EQ(Found(), "2 recipes found ");
    EXPECT_EQ(FavouritesOnDisk(), " 9 10 5 2 ");
    Main().favorites.RemoveFromFavorites(5);
    EXPECT_EQ(ShownNumbers(), (Numbers{10, 2})) << "it was not in the list on view";
    EXPECT_EQ(Current(), 2);
    EXPECT_EQ(FavouritesOnDisk(), " 9 10 2 ");
}

TEST_F(DeletedInLists, TakingARecipeOutOfASortedListFindsItsPlace) {
    ClickCategory("MIXED");
    PressLine(2, 2);
    Main().recipes.RemoveFrom_lvwX2(6);
    EXPECT_EQ(ShownNumbers(), (Numbers{4, 10}));
    EXPECT_EQ(Current(), 10);
    Main().recipes.RemoveFrom_lvwX2(5);
    EXPECT_EQ(ShownNumbers(), (Numbers{4, 10}));
    EXPECT_EQ(Current(), 10);
}

TEST_F(DeletedInLists, ASearchWithinTheListFindsTheOthers) {
    for (const char* category : {"MIXED", "MY FAVORITES", "DELETED"}) {
        ClickCategory(category);
        OpenDialog();
        Dialog().chkOnly.SetValue(1);
        FindWords("salmon");
        const Numbers expected = std::string(category) == "MIXED"     ? Numbers{4, 6, 10}
                                 : std::string(category) == "DELETED" ? Numbers{}
                                                                      : Numbers{4, 2, 10};
        Numbers found = ShownNumbers();
        EXPECT_EQ(found, expected) << category;
        Dialog().window.Close();
    }
}

TEST_F(DeletedInLists, ARecipeThatIsDeletedLeavesEveryListOnItsNextShowing) {
    for (const int recipe : {10, 8}) {
        Boxes.Then(Dialogs::Answer::Ok);
        Main().ownRecipes.DeleteRecipe(recipe, true, false);
    }
    ClickCategory("MIXED");
    EXPECT_EQ(ShownNumbers(), (Numbers{4, 6}));
    Book.Numbers("MIXED") = " 7 8 9 10 ";
    Folder.Write("Data/Categories.ctg", Book.CategoryFile());
    ASSERT_TRUE(Restart());
    ClickCategory("MIXED");
    EXPECT_EQ(ShownNumbers(), Numbers{7}) << "10, the last record, too";
}

TEST_F(DeletedInLists, AScreenfulIsOneOfTheOthers) {
    const int lines = Fit(2);
    Book.AddManyOwn(2 * lines);
    std::string& numbers = Book.Numbers("MIXED");
    const auto add = [&](int first, int last) {
        numbers = " ";
        for (int number = first; number <= last; ++number)
            numbers += std::to_string(number) + " 9 5 ";
    };
    for (const int count : {lines - 1, lines, lines + 1}) {
        add(11, 10 + count);
        ASSERT_TRUE(Start());
        ClickCategory("MIXED");
        EXPECT_EQ(ShownNumbers(), Range(11, 10 + std::min(count, lines))) << count;
        EXPECT_EQ(Found(), std::to_string(count) + " recipes found ");
        Focus(2);
        Key(Qt::Key_End);
        EXPECT_EQ(List(2).SelectedItem()->Tag, std::to_string(10 + count));
    }
}

}  // namespace
}  // namespace larder::test
