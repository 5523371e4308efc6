#include "store/OwnRecipes.h"

#include <gtest/gtest.h>

#include <QImage>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "platform/Failure.h"
#include "platform/Text.h"
#include "store/RecordChange.h"
#include "support/StoredRecipes.h"

namespace larder::test {
namespace {

// Five stock recipes; the user's are 6 "Chowder", 7 deleted, 8 "Eel Pie", 9 "Dumplings". His are
// favourites, and 8 has a picture.
class OwnRecipesTest : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(5);
        Book.AddOwn("Chowder");
        Book.AddOwn("");
        Book.AddOwn("Eel Pie");
        Book.AddOwn("Dumplings");
        Book.Numbers("MY FAVORITES") = " 6 8 9 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 2 8 ";
        Book.Numbers("OTHERS") = " 2 3 8 ";
        Folder.MakeFolder("Data/Food Photos");
        QImage picture(40, 30, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        picture.save(QString::fromStdString(Folder.Native("Data/Food Photos/8.jpg")));
        ASSERT_TRUE(Start());
        Boxes.Shown.clear();
    }
    OwnRecipes& It() { return Main().ownRecipes; }
    std::string Stored(const std::string& category) {
        const std::string text = Folder.Read("Data/Categories.ctg");
        const std::string name = "\r\n" + category + "\r\n";
        const std::size_t start = text.find(name) + name.size();
        return text.substr(start, text.find('\r', start) - start);
    }
    std::vector<StoredRecipe> OnDisk() { return RecipesIn(BytesOf(Folder.Native("Data"))); }
    std::string Total() { return Main().ui.lblTotal.Caption(); }
    std::string Seen() { return Main().ui.rtbSee.Text(); }
    void FailWrites(int failureNumber) {
        Main().files.Watch([=](const NumberedFiles::Access& access) {
            if (access.Kind == "write") throw Failure(failureNumber, "disk");
        });
    }
    void Select(int number) { Main().categories.SimulateChoiceClick(std::to_string(number)); }

    static constexpr const char* Soup = "{\\rtf1 Soup\\par Stir.\\par}";
};

// Adding

TEST_F(OwnRecipesTest, ANewRecipeIsAFavouriteAndTheUserLandsOnIt) {
    ClickCategory("OTHERS");
    ASSERT_TRUE(It().StoreNewRecipe("Soup", Soup));
    EXPECT_EQ(OnDisk().back(), (StoredRecipe{"Soup", Soup}));
    EXPECT_EQ(Stored("MY FAVORITES"), " 6 8 9 10 ");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "MY FAVORITES");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{6, 8, 9, 10}));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 10);
    EXPECT_TRUE(Seen().starts_with("Soup"));
    EXPECT_EQ(Total(), "9");
    EXPECT_EQ(Main().ui.lblTotal.ToolTipText(), "9 recipes in the database");
    EXPECT_TRUE(Folder.Read("Data/Categories.ctg").starts_with(" 9 \r\n"));
}

TEST_F(OwnRecipesTest, TheTitleIsTheFirstLineThatHasACharacter) {
    ASSERT_TRUE(It().StoreNewRecipe("\r\n\r\nSoup\r\nof the day", Soup));
    EXPECT_EQ(Main().store.GetRecipeTitle(10), "Soup");
}

TEST_F(OwnRecipesTest, ATitleBoxWithNothingButLineEndsAddsNothing) {
    const auto before = OnDisk();
    EXPECT_FALSE(It().StoreNewRecipe("", Soup));
    EXPECT_FALSE(It().StoreNewRecipe("\r\n\r\n", Soup));
    EXPECT_EQ(OnDisk(), before);
    EXPECT_EQ(Total(), "8");
}

TEST_F(OwnRecipesTest, CharactersThatTheCodePageLacksAreQuestionMarks) {
    ASSERT_TRUE(It().StoreNewRecipe(FromUtf8("Crème Щи"), Soup));
    EXPECT_EQ(Main().store.GetRecipeTitle(10), "Cr\xE8me ??");
    EXPECT_EQ(Shown(2).back(), "Cr\xE8me ??");
}

TEST_F(OwnRecipesTest, AnAddThatFailsTouchesNoFavouriteAndNoCount) {
    const auto before = OnDisk();
    FailWrites(failure::DiskFull);
    EXPECT_FALSE(It().StoreNewRecipe("Soup", Soup));
    Main().files.Watch(nullptr);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Error adding recipe.\nDisk full");
    EXPECT_EQ(Boxes.Shown[0].Icon, Dialogs::Icon::Critical);
    EXPECT_EQ(OnDisk(), before);
    EXPECT_EQ(Stored("MY FAVORITES"), " 6 8 9 ");
    EXPECT_EQ(Total(), "8");
    ASSERT_TRUE(It().StoreNewRecipe("Soup", Soup)) << "the program goes on";
    EXPECT_EQ(Main().store.TotalNumRecords, 10);
}

TEST_F(OwnRecipesTest, ARecipeIsAsItWasLeftAfterARestart) {
    ASSERT_TRUE(It().StoreNewRecipe("Soup", Soup));
    ASSERT_TRUE(Restart());
    EXPECT_EQ(Main().store.GetRecipeRTF(10), Soup);
    EXPECT_EQ(Total(), "9");
}

// Changing

TEST_F(OwnRecipesTest, ANewTitleIsInTheLineAndInTheListBehindIt) {
    ClickCategory("OTHERS");
    ASSERT_TRUE(It().UpdateRecipe(8, Soup, "Soup"));
    EXPECT_EQ(Shown(2).back(), "Soup");
    Main().lists.ShowListItems(2, 1, true);
    EXPECT_EQ(Shown(2).back(), "Soup");
    ASSERT_TRUE(It().UpdateRecipe(8, std::string(5000, 'x'), "A much longer soup"));
    EXPECT_EQ(Shown(2).back(), "A much longer soup");
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(OwnRecipesTest, ATitleThatIsNotOnShowChangesNoLine) {
    ClickCategory("OTHERS");
    const auto before = Shown(2);
    ASSERT_TRUE(It().UpdateRecipe(9, Soup, "Soup"));
    EXPECT_EQ(Shown(2), before);
    EXPECT_EQ(Main().store.GetRecipeTitle(9), "Soup");
}

TEST_F(OwnRecipesTest, ATitleOfSeveralLinesEndsWithTheFirst) {
    ASSERT_TRUE(It().UpdateRecipe(8, Soup, "Soup\rMore"));
    EXPECT_EQ(Main().store.GetRecipeTitle(8), "Soup");
}

TEST_F(OwnRecipesTest, AnUpdateThatFailsIsToldAndKeepsTheOldRecipe) {
    ClickCategory("OTHERS");
    const auto before = OnDisk();
    FailWrites(failure::DeviceError);
    EXPECT_FALSE(It().UpdateRecipe(8, Soup, "Soup"));
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Error updating recipe\nDevice I/O error");
    EXPECT_EQ(OnDisk(), before);
    EXPECT_EQ(Shown(2).back(), "Eel Pie");
}

TEST_F(OwnRecipesTest, ALongUpdateIsToldToTheMaintainerInEditMode) {
    ASSERT_TRUE(Restart("/E"));
    Boxes.Shown.clear();
    ASSERT_TRUE(It().UpdateRecipe(2, std::string(5000, 'x'), "Long"));
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Doing a long update.\rPlease wait...");
    EXPECT_EQ(Main().store.GetRecipeTitle(2), "Long");
    EXPECT_EQ(Main().store.GetRecipeTitle(3), "Stock recipe 3");
}

// Deleting

TEST_F(OwnRecipesTest, DeletingAsksAndCancelKeepsTheRecipe) {
    Boxes.Then(Dialogs::Answer::Cancel);
    It().DeleteRecipe(8, true, false);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Permanently delete recipe #8?");
    EXPECT_EQ(Boxes.Shown[0].Buttons, Dialogs::Buttons::OkCancel);
    EXPECT_EQ(Main().store.GetRecipeTitle(8), "Eel Pie");
    EXPECT_TRUE(Folder.Exists("Data/Food Photos/8.jpg"));
}

TEST_F(OwnRecipesTest, ADeletedRecipeLosesItsTextPictureAndPlaces) {
    Boxes.Then(Dialogs::Answer::Ok);
    It().DeleteRecipe(8, true, false);
    const auto recipes = OnDisk();
    EXPECT_EQ(recipes[7].Title, "");
    EXPECT_EQ(recipes[7].Body.find_first_not_of(' '), std::string::npos);
    EXPECT_FALSE(Folder.Exists("Data/Food Photos/8.jpg"));
    EXPECT_EQ(Stored("MY FAVORITES"), " 6 9 ");
    EXPECT_EQ(Stored("ALL RECIPES WITH PICTURES"), " 2 ");
    EXPECT_FALSE(Main().pictures.HasPicture("8"));
    EXPECT_EQ(Total(), "7");
    EXPECT_TRUE(Folder.Read("Data/Categories.ctg").starts_with(" 7 \r\n"));
}

TEST_F(OwnRecipesTest, ADeletedRecipeKeepsItsNumberAndTheNextOneGetsANewNumber) {
    It().DeleteRecipe(9, true, true);
    ASSERT_TRUE(It().StoreNewRecipe("Soup", Soup));
    EXPECT_EQ(Main().store.GetRecipeTitle(9), "");
    EXPECT_EQ(Main().store.GetRecipeTitle(10), "Soup");
    ASSERT_TRUE(Restart());
    EXPECT_EQ(Main().store.TotalNumRecords, 10);
    EXPECT_EQ(Total(), "8");
}

TEST_F(OwnRecipesTest, DeletingTwiceStopsAtTheEmptyTitle) {
    It().DeleteRecipe(8, true, true);
    It().DeleteRecipe(8, true, false);
    It().DeleteRecipe(7, true, false);
    It().DeleteRecipe(99, true, false);
    EXPECT_TRUE(Boxes.Shown.empty()) << "no question";
    EXPECT_EQ(Total(), "7");
}

TEST_F(OwnRecipesTest, DeletingTheRecipeOnViewShowsItsNeighbour) {
    ClickCategory("OTHERS");
    Select(8);
    ASSERT_EQ(Main().viewer.CurrentRecipe(), 8);
    Boxes.Then(Dialogs::Answer::Ok);
    It().DeleteRecipe(8, true, false);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 3}));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 3);
    EXPECT_TRUE(Seen().starts_with("Stock recipe 3")) << Seen();
    ASSERT_EQ(Boxes.Shown.size(), 1U) << "the question alone, not: " << Boxes.Shown[0].Text;
}

TEST_F(OwnRecipesTest, DeletingTheOnlyRecipeOfTheListEmptiesTheText) {
    for (const int number : {6, 8, 9}) {
        Select(number);
        Boxes.Then(Dialogs::Answer::Ok);
        It().DeleteRecipe(number, true, false);
    }
    EXPECT_TRUE(ShownNumbers().empty());
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_EQ(Seen(), "");
    EXPECT_FALSE(Main().viewer.Modified);
}

TEST_F(OwnRecipesTest, DeletingTheLastRecipeTakesItsPictureOffTheScreen) {
    Main().favorites.RemoveFromFavorites(6);
    Main().favorites.RemoveFromFavorites(9);
    ASSERT_EQ(ShownNumbers(), (std::vector<int>{8}));
    Main().pictureView.ShowCurRecipePicture();
    ASSERT_EQ(Main().viewer.CurrentRecipe(), 8);
    ASSERT_TRUE(Main().ui.frPic.Visible());
    Boxes.Then(Dialogs::Answer::Ok);
    It().DeleteRecipe(8, true, false);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_FALSE(Main().ui.frPic.Visible());
    Main().layout.ResizeIt();
    EXPECT_FALSE(Main().ui.frPic.Visible());
}

TEST_F(OwnRecipesTest, DeletingARecipeOnViewThatTheListDoesNotHoldEmptiesTheText) {
    Select(9);
    ASSERT_EQ(Main().viewer.CurrentRecipe(), 9);
    ClickCategory("OTHERS");
    Main().viewer.ShowRecipe(9);
    Boxes.Then(Dialogs::Answer::Ok);
    It().DeleteRecipe(9, true, false);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_EQ(Seen(), "");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 3, 8}));
}

TEST_F(OwnRecipesTest, ASilentDeleteAsksNothingAndLeavesTheList) {
    ClickCategory("OTHERS");
    It().DeleteRecipe(8, true, true);
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 3, 8}));
    EXPECT_EQ(Main().store.GetRecipeTitle(8), "");
}

TEST_F(OwnRecipesTest, ASilentDeleteOfTheRecipeOnViewEmptiesTheViewer) {
    ClickCategory("OTHERS");
    PressLine(2, 3);
    ASSERT_EQ(Main().viewer.CurrentRecipe(), 8);
    It().DeleteRecipe(8, true, true);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_EQ(Seen(), "");
}

TEST_F(OwnRecipesTest, AStockRecipeIsDeletedOutsideEditModeWhereThatIsAskedFor) {
    Boxes.Then(Dialogs::Answer::Ok);
    It().DeleteRecipe(3, false, false);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Permanently delete recipe #3?");
    EXPECT_EQ(Main().store.GetRecipeTitle(3), "");
    EXPECT_EQ(Main().store.GetRecipeTitle(4), "Stock recipe 4");
}

TEST_F(OwnRecipesTest, AStockRecipeIsDeletedInEditModeOnly) {
    It().DeleteRecipe(3, true, false);
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(Main().store.GetRecipeTitle(3), "Stock recipe 3");
    ASSERT_TRUE(Restart("/E"));
    Boxes.Shown.clear();
    Boxes.Then(Dialogs::Answer::Ok);
    It().DeleteRecipe(3, true, false);
    EXPECT_EQ(Main().store.GetRecipeTitle(3), "");
    EXPECT_EQ(Main().store.GetRecipeTitle(4), "Stock recipe 4");
    EXPECT_EQ(Total(), "7");
}

TEST_F(OwnRecipesTest, ADeleteThatFailsTouchesNoPictureFavouriteOrCount) {
    FailWrites(failure::PathAccess);
    It().DeleteRecipe(8, true, true);
    Main().files.Watch(nullptr);
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Main().store.GetRecipeTitle(8), "Eel Pie");
    EXPECT_TRUE(Folder.Exists("Data/Food Photos/8.jpg"));
    EXPECT_EQ(Stored("MY FAVORITES"), " 6 8 9 ");
    EXPECT_EQ(Stored("ALL RECIPES WITH PICTURES"), " 2 8 ");
    EXPECT_EQ(Total(), "8");
}

TEST_F(OwnRecipesTest, APictureThatCannotBeDeletedKeepsNothingElse) {
    Main().files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "delete" && access.Path.ends_with(".jpg")) {
            throw Failure(failure::PathAccess, "disk");
        }
    });
    It().DeleteRecipe(8, true, true);
    EXPECT_EQ(Main().store.GetRecipeTitle(8), "");
    EXPECT_EQ(Stored("MY FAVORITES"), " 6 9 ");
    EXPECT_TRUE(Boxes.Shown.empty());
}

// The start after a crash

TEST_F(OwnRecipesTest, AChangeThatWasCutOffIsTakenBackBeforeTheFirstScreen) {
    Close();
    const std::string own = Folder.Read("Data/Custom Recipes.ydb");
    RecordChange change;
    change.Adds = true;
    change.TextLength = static_cast<std::int64_t>(own.size());
    change.IndexLength = 16;
    change.Position = static_cast<std::int32_t>(own.size()) + 1;
    change.SetNew("Soup\r\nNot whole\r\n");
    Folder.Write("Data/Recipes Temp.ydb", JournalOf(change));
    Folder.Write("Data/Custom Recipes.ydb", own + "Soup\r\nNot");
    ASSERT_TRUE(Restart());
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(Folder.Read("Data/Custom Recipes.ydb"), own);
    EXPECT_FALSE(Folder.Exists("Data/Recipes Temp.ydb"));
    EXPECT_EQ(Total(), "8");
}

TEST_F(OwnRecipesTest, CopiesOfPicturesThatARunLeftUnfinishedAreGoneSoonAfterTheStart) {
    const std::string photos = "Data/Food Photos/";
    for (const char* left : {"6.jpg.new", "8.bmp.new", "9.gif.new"})
        Folder.Write(photos + left, "half a picture");
    const char* const others[] = {"8.new", "jpg.new", ".jpg.new", "8.txt.new", "my8.jpg.new"};
    for (const char* other : others)
        Folder.Write(photos + other, "the user's");
    ASSERT_TRUE(Restart());
    EXPECT_TRUE(WaitUntil([&] { return !Folder.Exists(photos + "9.gif.new"); }));
    EXPECT_FALSE(Folder.Exists(photos + "6.jpg.new"));
    EXPECT_FALSE(Folder.Exists(photos + "8.bmp.new"));
    EXPECT_TRUE(Folder.Exists(photos + "8.jpg"));
    for (const char* other : others)
        EXPECT_TRUE(Folder.Exists(photos + other)) << other;
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(OwnRecipesTest, WithoutAFolderOfPicturesNothingIsMissed) {
    Folder.Delete("Data/Food Photos/8.jpg");
    Folder.Delete("Data/Food Photos");
    It().DeleteUnfinishedCopies();
    EXPECT_FALSE(Folder.Exists("Data/Food Photos"));
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(OwnRecipesTest, AChangeThatCannotBeTakenBackIsToldWithItsFileAndTheProgramGoesOn) {
    Close();
    const std::string own = Folder.Read("Data/Custom Recipes.ydb");
    // Of a stock on a disc, which is not there.
    RecordChange change;
    change.Custom = false;
    change.Disc = true;
    change.Position = 1;
    change.TextLength = 100;
    change.Old = "Old";
    change.SetNew("New");
    Folder.Write("Data/Recipes Temp.ydb", JournalOf(change));
    ASSERT_TRUE(Restart());
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_TRUE(
        Boxes.Shown[0].Text.starts_with("The last change of a recipe can't be finished.\n"));
    EXPECT_NE(Boxes.Shown[0].Text.find("Recipes.ydb"), std::string::npos);
    EXPECT_EQ(Folder.Read("Data/Recipes Temp.ydb"), JournalOf(change));
    EXPECT_EQ(Total(), "8");
    EXPECT_FALSE(It().StoreNewRecipe("Soup", Soup)) << "nothing is written until it is";
    EXPECT_EQ(Folder.Read("Data/Custom Recipes.ydb"), own);
}

}  // namespace
}  // namespace larder::test
