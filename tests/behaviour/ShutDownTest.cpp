#include <QWidget>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "search/frmSearch.h"
#include "store/FileNumbers.h"

namespace larder::test {
namespace {

class ShutDownTest : public MainWindowFixture {
  protected:
    ShutDownTest() {
        Book.AddStock("Cod");
        Book.AddStock("Eel");
        Book.Numbers("MY FAVORITES") = " 2 1 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 ";
    }
};

TEST_F(ShutDownTest, TheExitButtonClosesTheFilesAndTheWindowAndWritesNothing) {
    ASSERT_TRUE(Start("/E"));
    const std::string categories = Folder.Read("Data/Categories.ctg");
    const std::string recipes = Folder.Read("Data/Recipes.ydb");
    PressLine(2, 1);
    Main().viewer.Modified = true;
    Click("ibExit");
    EXPECT_FALSE(Main().ui.window.Visible());
    for (const int number : {1, 2, 3, 4, 21, 22}) {
        EXPECT_FALSE(Main().files.IsOpen(number)) << number;
    }
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(Folder.Read("Data/Categories.ctg"), categories);
    EXPECT_EQ(Folder.Read("Data/Recipes.ydb"), recipes);
    EXPECT_FALSE(Folder.Exists("Data/Custom Recipes.ydb"));
    EXPECT_EQ(application->Run(), 0);
}

TEST_F(ShutDownTest, ClosingTheWindowInAnotherWayEndsTheProgramAsTheExitButtonDoes) {
    ASSERT_TRUE(Start());
    Main().ui.window.Native()->close();
    EXPECT_FALSE(Main().ui.window.Visible());
    EXPECT_FALSE(Main().files.IsOpen(filenumber::Recipes));
    EXPECT_EQ(application->Run(), 0);
}

TEST_F(ShutDownTest, ClosingTheWindowTakesTheFindDialogWithItAndEndsTheProgram) {
    ASSERT_TRUE(Start());
    Click("ibSearch");
    const Window& dialog = Main().search.Dialog().window;
    ASSERT_TRUE(dialog.Visible());
    Main().ui.window.Native()->close();
    EXPECT_FALSE(dialog.Visible());
    EXPECT_FALSE(Main().ui.window.Visible());
    EXPECT_EQ(application->Run(), 0);
}

TEST_F(ShutDownTest, AClosedWindowAsksForNoDisc) {
    ASSERT_TRUE(Start());
    Main().ui.window.Close();
    Folder.Delete("Data/Recipes.ydb");
    EXPECT_EQ(Main().store.GetRecipeTitle(1), "No Disk Error");
    EXPECT_EQ(Main().store.GetRecipeRTF(1), "");
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(ShutDownTest, ClosingDuringAFillEndsTheFill) {
    Book.AddManyStock(200);
    Book.Numbers("LONG") = NumbersFrom(1, 200);
    ASSERT_TRUE(Start());
    Later([this] { Main().ui.window.Close(); });
    ClickCategory("LONG");
    EXPECT_LT(Main().VList[1].Count(), 200);
    EXPECT_FALSE(Main().files.IsOpen(filenumber::Recipes));
    EXPECT_EQ(application->Run(), 0);
}

}  // namespace
}  // namespace larder::test
