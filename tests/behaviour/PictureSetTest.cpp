#include "lists/PictureSet.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "platform/Failure.h"
#include "support/Unprivileged.h"

namespace larder::test {
namespace {

// Recipes 1 to 20 of the stock and 21 of the user's own. The photographs of the stock lie in a
// folder of their own, as on a disc. What a file holds counts for nobody here, only its name.
class PicturesOfRecipes : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(20);
        Book.AddOwn("My Chowder");
        StartWith(" 2 12 15 ");
    }
    void StartWith(const std::string& numbers) {
        Book.Numbers("ALL RECIPES WITH PICTURES") = numbers;
        ASSERT_TRUE(Start());
        Folder.MakeFolder("Data/Food Photos");
        Folder.MakeFolder("Disc/Food Photos");
        Main().paths.strPhotosPathCD =
            Main().objFSO.Alias(Folder.Native("Disc/Food Photos")) + "\\";
    }
    PictureSet& It() { return Main().pictures; }

    // The file found, as a name below the test's folder.
    std::string Find(const std::string& number) {
        const std::string found = It().CheckForAPicture(number);
        EXPECT_EQ(It().strPictureFileName, found);
        if (found.empty()) return found;
        return Main().objFSO.Native(found).substr(Folder.Native().size() + 1);
    }
    void Stock(const std::string& name) { Folder.Write("Disc/Food Photos/" + name, "photo"); }
    void Own(const std::string& name) { Folder.Write("Data/Food Photos/" + name, "photo"); }

    std::string Set() { return Main().VList[0].PeekKey("ALL RECIPES WITH PICTURES")->Tag; }
    // The set as it stands on the disk.
    std::string Stored() {
        const std::string text = Folder.Read("Data/Categories.ctg");
        const std::string name = "\r\nALL RECIPES WITH PICTURES\r\n";
        const std::size_t start = text.find(name) + name.size();
        return text.substr(start, text.find('\r', start) - start);
    }
    int Accesses(const std::function<void()>& act) {
        int count = 0;
        Main().files.Watch([&](const NumberedFiles::Access&) { ++count; });
        act();
        Main().files.Watch(nullptr);
        return count;
    }
};

// Where a picture is found.

TEST_F(PicturesOfRecipes, AStockRecipeHasItsPictureOnTheDisc) {
    Stock("2.jpg");
    Own("3.jpg");
    Own("20.jpg");
    EXPECT_EQ(Find("2"), "Disc/Food Photos/2.jpg");
    EXPECT_EQ(Find("3"), "") << "own pictures are for own recipes";
    EXPECT_EQ(Find("20"), "") << "the last of the stock";
}

TEST_F(PicturesOfRecipes, AnOwnRecipeHasItsPictureBesideTheUsersData) {
    Own("21.jpg");
    EXPECT_EQ(Find("21"), "Data/Food Photos/21.jpg");
}

TEST_F(PicturesOfRecipes, JpgComesBeforeBmpAndBmpBeforeGif) {
    Stock("2.gif");
    EXPECT_EQ(Find("2"), "Disc/Food Photos/2.gif");
    Stock("2.bmp");
    EXPECT_EQ(Find("2"), "Disc/Food Photos/2.bmp");
    Stock("2.jpg");
    EXPECT_EQ(Find("2"), "Disc/Food Photos/2.jpg");
}

TEST_F(PicturesOfRecipes, OtherEndingsAndFoldersAreNoPictures) {
    Stock("2.png");
    Stock("2");
    Folder.MakeFolder("Disc/Food Photos/2.jpg");
    EXPECT_EQ(Find("2"), "");
}

TEST_F(PicturesOfRecipes, FourDotsAreTheCurrentRecipe) {
    Stock("5.jpg");
    Main().viewer.SetCurrentRecipe(5);
    EXPECT_EQ(Find("...."), "Disc/Food Photos/5.jpg");
    Main().viewer.SetCurrentRecipe(6);
    EXPECT_EQ(Find("...."), "");
}

TEST_F(PicturesOfRecipes, APictureIsFoundByItsNameOnTheDisc) {
    Stock("Salmon Family.jpg");
    Own("Trout.jpg");
    EXPECT_EQ(Find("Salmon Family"), "Disc/Food Photos/Salmon Family.jpg");
    EXPECT_EQ(Find("Trout"), "");
    EXPECT_EQ(Find(""), "");
}

TEST_F(PicturesOfRecipes, ANameWithBlanksAroundItIsFoundWithoutThem) {
    Stock("Salmon Family.gif");
    EXPECT_EQ(Find("  Salmon Family "), "Disc/Food Photos/Salmon Family.gif");
}

TEST_F(PicturesOfRecipes, AStockRecipeWithoutAFileHasNone) {
    Stock("12.jpg");
    EXPECT_EQ(Find("12"), "Disc/Food Photos/12.jpg");
    EXPECT_EQ(Find("2"), "") << "what was found before is forgotten";
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(PicturesOfRecipes, ANumberWithBlanksIsFirstTakenAsItStandsAndThenWithoutThem) {
    Stock("2.jpg");
    EXPECT_EQ(Find(" 2 "), "Disc/Food Photos/2.jpg");
    Stock(" 2 .gif");
    EXPECT_EQ(Find(" 2 "), "Disc/Food Photos/ 2 .gif");
}

TEST_F(PicturesOfRecipes, TheSecondRoundForAnOwnRecipeLooksOnTheDisc) {
    Stock("21.gif");
    EXPECT_EQ(Find("21"), "Disc/Food Photos/21.gif");
    Own("21.gif");
    EXPECT_EQ(Find("21"), "Data/Food Photos/21.gif");
}

TEST_F(PicturesOfRecipes, TheSecondRoundForBlanksLooksOnTheDiscOnly) {
    Own("21.jpg");
    EXPECT_EQ(Find(" 21 "), "");
    Stock("21.bmp");
    EXPECT_EQ(Find(" 21 "), "Disc/Food Photos/21.bmp");
}

TEST_F(PicturesOfRecipes, ANumberTooLongForARecipeHasNoPictureAndAsksForNothing) {
    Stock("99999999999.jpg");
    Folder.Rename("Disc", "Drawer");
    EXPECT_EQ(Find("99999999999"), "");
    Folder.Rename("Drawer", "Disc");
    EXPECT_EQ(Find("99999999999"), "");
    EXPECT_TRUE(Boxes.Shown.empty());
}

// The disc.

TEST_F(PicturesOfRecipes, WithoutTheFolderOfTheDiscTheUserIsAskedForIt) {
    Stock("2.jpg");
    Folder.Rename("Disc", "Drawer");
    Boxes.Then(Dialogs::Answer::Ok);
    Boxes.Then(Dialogs::Answer::Ok, [this] { Folder.Rename("Drawer", "Disc"); });
    EXPECT_EQ(Find("2"), "Disc/Food Photos/2.jpg");
    ASSERT_EQ(Boxes.Shown.size(), 2U) << "OK looks again";
    EXPECT_EQ(Boxes.Shown[0].Text,
              "Can't find picture folder.\rPlease, make sure the CD is in the drive.");
    EXPECT_EQ(Boxes.Shown[0].Buttons, Dialogs::Buttons::OkCancel);
}

TEST_F(PicturesOfRecipes, CancelEndsTheSearchWithoutAPicture) {
    Stock("2.jpg");
    Folder.Rename("Disc", "Drawer");
    Boxes.Then(Dialogs::Answer::Cancel, [this] { Folder.Rename("Drawer", "Disc"); });
    EXPECT_EQ(Find("2"), "");
    EXPECT_EQ(Boxes.Shown.size(), 1U);
}

TEST_F(PicturesOfRecipes, OwnRecipesAndNamesDoNotAskForTheDisc) {
    Own("21.jpg");
    Folder.Delete("Disc");
    EXPECT_EQ(Find("21"), "Data/Food Photos/21.jpg");
    EXPECT_EQ(Find("Salmon Family"), "");
    Folder.Delete("Data/Food Photos/21.jpg");
    EXPECT_EQ(Find("21"), "");
    EXPECT_TRUE(Boxes.Shown.empty());
}

// The set.

TEST_F(PicturesOfRecipes, ARecipeIsInTheSetOrNot) {
    EXPECT_TRUE(It().HasPicture("12"));
    EXPECT_TRUE(It().HasPicture("2"));
    EXPECT_FALSE(It().HasPicture("1"));
    EXPECT_FALSE(It().HasPicture("5"));
}

TEST_F(PicturesOfRecipes, AskingTheSetTouchesNoFile) {
    Folder.Delete("Disc");
    EXPECT_EQ(Accesses([this] {
                  EXPECT_TRUE(It().HasPicture("2"));
                  EXPECT_FALSE(It().HasPicture("3"));
              }),
              0);
    StartWith("");
    EXPECT_EQ(Accesses([this] { EXPECT_FALSE(It().HasPicture("2")); }), 0);
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(PicturesOfRecipes, AnAddedRecipeIsInTheSetAtOnceAndOnTheDisk) {
    It().AddToAllWithPicture(7);
    EXPECT_TRUE(It().HasPicture("7"));
    EXPECT_EQ(Set(), " 2 12 15 7 ");
    EXPECT_EQ(Stored(), " 2 12 15 7 ");
}

TEST_F(PicturesOfRecipes, AddingTwiceLeavesOneEntryAndWritesOnce) {
    It().AddToAllWithPicture(7);
    EXPECT_EQ(Accesses([this] { It().AddToAllWithPicture(7); }), 0);
    EXPECT_EQ(Stored(), " 2 12 15 7 ");
}

TEST_F(PicturesOfRecipes, TheFirstOneOfAnEmptySetIsNotFoundInIt) {
    StartWith("");
    It().AddToAllWithPicture(7);
    EXPECT_EQ(Stored(), "7 ");
    EXPECT_FALSE(It().HasPicture("7"));
    It().AddToAllWithPicture(9);
    EXPECT_EQ(Stored(), "7 9 ");
    EXPECT_TRUE(It().HasPicture("9"));
    EXPECT_FALSE(It().HasPicture("7"));
}

TEST_F(PicturesOfRecipes, TheFirstOneOfASetOfOneBlankIsFound) {
    StartWith(" ");
    It().AddToAllWithPicture(7);
    EXPECT_EQ(Stored(), " 7 ");
    EXPECT_TRUE(It().HasPicture("7"));
}

TEST_F(PicturesOfRecipes, ARemovedRecipeIsOutOfTheSetAtOnceAndOnTheDisk) {
    It().RemoveFromAllWithPicture(12);
    EXPECT_FALSE(It().HasPicture("12"));
    EXPECT_TRUE(It().HasPicture("15"));
    EXPECT_EQ(Set(), " 2 15 ");
    EXPECT_EQ(Stored(), " 2 15 ");
}

TEST_F(PicturesOfRecipes, RemovingWhatIsNotInTheSetWritesNothing) {
    EXPECT_EQ(Accesses([this] { It().RemoveFromAllWithPicture(5); }), 0);
    EXPECT_EQ(Set(), " 2 12 15 ");
}

TEST_F(PicturesOfRecipes, RemovingTheOnlyOneLeavesABlank) {
    StartWith(" 2 ");
    It().RemoveFromAllWithPicture(2);
    EXPECT_EQ(Stored(), " ");
    EXPECT_FALSE(It().HasPicture("2"));
}

TEST_F(PicturesOfRecipes, TheSetComesBackWithTheNextStart) {
    It().AddToAllWithPicture(21);
    It().RemoveFromAllWithPicture(2);
    ASSERT_TRUE(Restart());
    EXPECT_TRUE(It().HasPicture("21"));
    EXPECT_FALSE(It().HasPicture("2"));
}

TEST_F(PicturesOfRecipes, TheSetFollowsItsCategoryWhenThatIsTakenAnew) {
    Main().VList[0].PeekKey("ALL RECIPES WITH PICTURES")->Tag = " 3 ";
    EXPECT_FALSE(It().HasPicture("3"));
    It().TakeFromCategories();
    EXPECT_TRUE(It().HasPicture("3"));
    EXPECT_FALSE(It().HasPicture("2"));
}

TEST_F(PicturesOfRecipes, ChangesLeaveTheOtherCategoriesAlone) {
    Book.Numbers("SOUPS") = " 4 7 ";
    StartWith(" 2 ");
    It().AddToAllWithPicture(7);
    EXPECT_NE(Folder.Read("Data/Categories.ctg").find("\r\nSOUPS\r\n 4 7 \r\n"), std::string::npos);
    EXPECT_NE(Folder.Read("Data/Categories.ctg").find("\r\nALL RECIPES\r\n*\r\n"),
              std::string::npos);
}

// The disk refuses.

TEST_F(PicturesOfRecipes, AFullDiskIsToldAndTheSetInMemoryStays) {
    const std::string before = Folder.Read("Data/Categories.ctg");
    Main().files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "write") throw Failure(failure::DiskFull, "test");
    });
    It().AddToAllWithPicture(7);
    It().RemoveFromAllWithPicture(2);
    ASSERT_EQ(Boxes.Shown.size(), 2U);
    for (const ScriptedDialogs::Box& box : Boxes.Shown) {
        EXPECT_EQ(box.Text, "Error updating Favorites\n" + FailureText(failure::DiskFull));
        EXPECT_EQ(box.Icon, Dialogs::Icon::Critical);
    }
    EXPECT_EQ(Folder.Read("Data/Categories.ctg"), before);
    EXPECT_TRUE(It().HasPicture("7"));
    EXPECT_FALSE(It().HasPicture("2"));
    EXPECT_EQ(Set(), " 12 15 7 ");
    Main().files.Watch(nullptr);
    It().AddToAllWithPicture(8);
    EXPECT_EQ(Stored(), " 12 15 7 8 ");
}

TEST_F(PicturesOfRecipes, AFolderThatCannotBeWrittenIsToldAndTheSetInMemoryStays) {
    const std::string before = Folder.Read("Data/Categories.ctg");
    using std::filesystem::perms;
    const std::filesystem::path data = Folder.Native("Data");
    {
        std::filesystem::permissions(
            data, perms::owner_read | perms::owner_exec | perms::others_read | perms::others_exec);
        const Unprivileged rights;
        It().RemoveFromAllWithPicture(2);
    }
    std::filesystem::permissions(data, perms::all);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Error updating Favorites\n" + FailureText(failure::PathAccess));
    EXPECT_EQ(Folder.Read("Data/Categories.ctg"), before);
    EXPECT_FALSE(It().HasPicture("2"));
    It().AddToAllWithPicture(8);
    EXPECT_EQ(Stored(), " 12 15 8 ");
}

// The check box and its label.

TEST_F(PicturesOfRecipes, TheCheckBoxFiltersNothing) {
    Book.Numbers("SOUPS") = " 2 3 ";
    StartWith(" 2 ");
    Main().ui.chkJustWithPictures.SetValue(1);
    ClickCategory("SOUPS");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 3}));
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(PicturesOfRecipes, AClickOnTheLabelTogglesTheCheckBox) {
    EXPECT_EQ(Main().ui.lblJustWithPics.Caption(), "Show only recipes with pictures.");
    for (Control* control : {static_cast<Control*>(&Main().ui.chkJustWithPictures),
                             static_cast<Control*>(&Main().ui.lblJustWithPics)}) {
        control->SetVisible(true);
    }
    Click("lblJustWithPics");
    EXPECT_EQ(Main().ui.chkJustWithPictures.Value(), 1);
    Click("lblJustWithPics");
    EXPECT_EQ(Main().ui.chkJustWithPictures.Value(), 0);
    Click("chkJustWithPictures");
    EXPECT_EQ(Main().ui.chkJustWithPictures.Value(), 1);
}

// Lines without a picture.

TEST_F(PicturesOfRecipes, TakingLinesWithoutAPicturePassesOverTheLineBehindEachThatGoes) {
    Book.Numbers("SOUPS") = " 1 2 3 4 5 6 7 ";
    StartWith(" 2 ");
    ClickCategory("SOUPS");
    for (const int line : {2, 6})
        List(2).Item(line).SetBold(true);
    It().QueryPicturesOnly();
    // 1 goes and 2 is passed over; 3 goes and 4 is passed over; 5 goes and 6 is passed over.
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 4, 6}));
}

TEST_F(PicturesOfRecipes, TakingLinesFromAnEmptyListIsNoFailure) {
    ClickCategory("MY FAVORITES");
    It().QueryPicturesOnly();
    EXPECT_EQ(List(2).Count(), 0);
}

}  // namespace
}  // namespace larder::test
