#include "lists/Favorites.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "platform/Failure.h"
#include "support/Unprivileged.h"

namespace larder::test {
namespace {

class FavouritesOfTheUser : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(20);
        Book.AddOwn("My Chowder");
        Book.Numbers("OTHERS") = " 7 12 15 ";
        Book.Numbers("MY FAVORITES") = " 15 3 ";
        ASSERT_TRUE(Start());
    }
    void StartWith(const std::string& numbers) {
        Book.Numbers("MY FAVORITES") = numbers;
        ASSERT_TRUE(Start());
    }
    Favorites& It() { return Main().favorites; }
    std::string Set() { return Main().VList[0].PeekKey("MY FAVORITES")->Tag; }
    // The set as it stands on the disk.
    std::string Stored() {
        const std::string text = Folder.Read("Data/Categories.ctg");
        const std::string name = "\r\nMY FAVORITES\r\n";
        const std::size_t start = text.find(name) + name.size();
        return text.substr(start, text.find('\r', start) - start);
    }
};

TEST_F(FavouritesOfTheUser, ARecipeIsInTheSetOrNot) {
    EXPECT_TRUE(It().IsInFavorites(15));
    EXPECT_TRUE(It().IsInFavorites(3));
    EXPECT_FALSE(It().IsInFavorites(7));
}

TEST_F(FavouritesOfTheUser, TheNumberFiveIsNotFoundInFifteen) {
    EXPECT_FALSE(It().IsInFavorites(5));
    EXPECT_FALSE(It().IsInFavorites(1));
}

TEST_F(FavouritesOfTheUser, ASetOfOldDateWithoutItsFirstBlankIsRepairedInMemoryOnly) {
    StartWith("15 3 ");
    EXPECT_TRUE(It().IsInFavorites(15));
    EXPECT_EQ(Set(), " 15 3 ");
    EXPECT_EQ(Stored(), "15 3 ");
    StartWith("");
    EXPECT_FALSE(It().IsInFavorites(15));
    EXPECT_EQ(Set(), " ");
}

TEST_F(FavouritesOfTheUser, AddingPutsARecipeAtTheEndAndOnTheDisk) {
    It().AddToFavorites(7);
    EXPECT_EQ(Set(), " 15 3 7 ");
    EXPECT_EQ(Stored(), " 15 3 7 ");
    EXPECT_EQ(List(1).Item(1).Tag, " 15 3 7 ");
}

TEST_F(FavouritesOfTheUser, AddingKeepsWhoMayReadTheFile) {
    using std::filesystem::perms;
    const std::filesystem::path file = Folder.Native("Data/Categories.ctg");
    for (const perms others : {perms::none, perms::group_read | perms::group_write}) {
        const perms rights = perms::owner_read | perms::owner_write | others;
        std::filesystem::permissions(file, rights);
        It().AddToFavorites(7);
        EXPECT_TRUE(Stored().ends_with(" 7 "));
        EXPECT_EQ(std::filesystem::status(file).permissions(), rights);
        It().RemoveFromFavorites(7);
    }
}

TEST_F(FavouritesOfTheUser, AddingTwiceLeavesOneEntry) {
    It().AddToFavorites(7);
    It().AddToFavorites(7);
    EXPECT_EQ(Stored(), " 15 3 7 ");
}

TEST_F(FavouritesOfTheUser, AddingWhatIsThereWritesNothing) {
    int opened = 0;
    Main().files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind == "open") ++opened;
    });
    It().AddToFavorites(15);
    EXPECT_EQ(opened, 0);
}

TEST_F(FavouritesOfTheUser, TheFirstOneOfAnEmptySetHasABlankOnBothSides) {
    StartWith("");
    It().AddToFavorites(12);
    EXPECT_EQ(Stored(), " 12 ");
    StartWith(" ");
    It().AddToFavorites(12);
    EXPECT_EQ(Stored(), " 12 ");
}

TEST_F(FavouritesOfTheUser, NoRecipeIsNotAdded) {
    It().AddToFavorites(-1);
    It().AddToFavorites(0);
    It().AddToFavorites(22);
    EXPECT_EQ(Set(), " 15 3 ");
}

TEST_F(FavouritesOfTheUser, TheListOnShowStaysUntilTheCategoryIsShownAgain) {
    ASSERT_EQ(ShownNumbers(), (std::vector<int>{15, 3}));
    It().AddToFavorites(7);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{15, 3}));
    ClickCategory("MY FAVORITES");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{15, 3, 7}));
}

TEST_F(FavouritesOfTheUser, RemovingTakesARecipeOutOnTheDiskToo) {
    ClickCategory("OTHERS");
    It().RemoveFromFavorites(15);
    EXPECT_EQ(Set(), " 3 ");
    EXPECT_EQ(Stored(), " 3 ");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{7, 12, 15}));
}

TEST_F(FavouritesOfTheUser, RemovingTakesTheLineFromTheFavouritesOnShow) {
    PressLine(2, 1);
    It().RemoveFromFavorites(15);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{3}));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 3);
    EXPECT_TRUE(Main().ui.rtbSee.Visible());
}

TEST_F(FavouritesOfTheUser, RemovingWhatIsNotInTheSetChangesNothingOnTheDisk) {
    int opened = 0;
    Main().files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind == "open") ++opened;
    });
    It().RemoveFromFavorites(7);
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(Set(), " 15 3 ");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{15, 3}));
}

TEST_F(FavouritesOfTheUser, RemovingWhatIsShownButNotInTheSetTakesItsLineAway) {
    Main().VList[0].PeekKey("MY FAVORITES")->Tag = " 3 ";
    It().RemoveFromFavorites(15);
    EXPECT_EQ(Stored(), " 15 3 ");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{3}));
}

TEST_F(FavouritesOfTheUser, RemovingTheOnlyOneLeavesABlankAndAnEmptyCategory) {
    StartWith(" 15 ");
    PressLine(2, 1);
    It().RemoveFromFavorites(15);
    EXPECT_EQ(Set(), " ");
    EXPECT_EQ(Stored(), " ");
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_EQ(Main().ui.lblFound.Caption(), "0 recipes found ");
    It().AddToFavorites(12);
    EXPECT_EQ(Stored(), " 12 ");
}

TEST_F(FavouritesOfTheUser, TheStarAddsTheCurrentRecipe) {
    ClickCategory("OTHERS");
    PressLine(2, 2);
    Click("imgAddToFavorites");
    EXPECT_EQ(Stored(), " 15 3 12 ");
    Click("imgAddToFavorites");
    EXPECT_EQ(Stored(), " 15 3 12 ");
}

TEST_F(FavouritesOfTheUser, TheStarWithoutACurrentRecipeDoesNothing) {
    StartWith(" ");
    ASSERT_EQ(Main().viewer.CurrentRecipe(), -1);
    Click("imgAddToFavorites");
    EXPECT_EQ(Stored(), " ");
}

TEST_F(FavouritesOfTheUser, TheyComeBackWithTheNextStart) {
    It().AddToFavorites(21);
    It().RemoveFromFavorites(15);
    ASSERT_TRUE(Restart());
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{3, 21}));
}

TEST_F(FavouritesOfTheUser, AFailedWriteIsToldAndTheNextOneCarriesTheChange) {
    Main().files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "write") throw Failure(failure::PathAccess, "test");
    });
    It().AddToFavorites(7);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Error updating Favorites\n" + FailureText(failure::PathAccess));
    EXPECT_EQ(Boxes.Shown[0].Icon, Dialogs::Icon::Critical);
    EXPECT_EQ(Stored(), " 15 3 ");
    EXPECT_TRUE(It().IsInFavorites(7));
    Main().files.Watch(nullptr);
    It().AddToFavorites(12);
    EXPECT_EQ(Stored(), " 15 3 7 12 ");
}

TEST_F(FavouritesOfTheUser, OnAFullDiskARemovedOneIsGoneFromMemoryAndScreenOnly) {
    const std::string before = Folder.Read("Data/Categories.ctg");
    PressLine(2, 1);
    Main().files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "write") throw Failure(failure::DiskFull, "test");
    });
    It().RemoveFromFavorites(15);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Error updating Favorites\n" + FailureText(failure::DiskFull));
    EXPECT_EQ(Folder.Read("Data/Categories.ctg"), before);
    EXPECT_EQ(Set(), " 3 ");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{3}));
    Main().files.Watch(nullptr);
    It().AddToFavorites(12);
    EXPECT_EQ(Stored(), " 3 12 ");
}

TEST_F(FavouritesOfTheUser, AFailureAtAnyStepOfTheWriteLeavesTheOldFileWhole) {
    const std::string before = Folder.Read("Data/Categories.ctg");
    for (const char* kind : {"open", "write", "flush", "rename"}) {
        Main().VList[0].PeekKey("MY FAVORITES")->Tag = " 15 3 ";
        Boxes.Shown.clear();
        bool failed = false;
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            if (access.Kind != kind || access.Path.find("Categories") == std::string_view::npos) {
                return;
            }
            failed = true;
            throw Failure(failure::DiskFull, "test");
        });
        It().AddToFavorites(7);
        Main().files.Watch(nullptr);
        EXPECT_TRUE(failed) << kind;
        EXPECT_EQ(Boxes.Shown.size(), 1U) << kind;
        EXPECT_EQ(Folder.Read("Data/Categories.ctg"), before) << kind;
        EXPECT_EQ(Set(), " 15 3 7 ") << kind;
    }
}

TEST_F(FavouritesOfTheUser, AFolderThatCannotBeWrittenIsToldAndTheNextWriteCarriesTheChange) {
    using std::filesystem::perms;
    const std::string before = Folder.Read("Data/Categories.ctg");
    const std::filesystem::path data = Folder.Native("Data");
    std::filesystem::permissions(
        data, perms::owner_read | perms::owner_exec | perms::others_read | perms::others_exec);
    {
        const Unprivileged rights;
        It().AddToFavorites(7);
    }
    std::filesystem::permissions(data, perms::all);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Error updating Favorites\n" + FailureText(failure::PathAccess));
    EXPECT_EQ(Folder.Read("Data/Categories.ctg"), before);
    EXPECT_TRUE(It().IsInFavorites(7));
    It().RemoveFromFavorites(15);
    EXPECT_EQ(Stored(), " 3 7 ");
}

TEST_F(FavouritesOfTheUser, WithoutTheirCategoryEveryQuestionIsAFailure) {
    Book.Categories.erase(Book.Categories.begin());
    ASSERT_TRUE(Start());
    EXPECT_THROW(It().IsInFavorites(3), Failure);
    EXPECT_THROW(It().RemoveFromFavorites(3), Failure);
    Click("imgAddToFavorites");
    EXPECT_TRUE(Boxes.Shown.empty());
}

}  // namespace
}  // namespace larder::test
