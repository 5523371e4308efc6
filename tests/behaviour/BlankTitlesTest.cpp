#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "platform/Failure.h"
#include "store/FileNumbers.h"

namespace larder::test {
namespace {

// All recipes of a stock with a run of records that cannot be read, as in a file cut short.
class BlankTitles : public MainWindowFixture {
  protected:
    void Open(int before, int blanks, int behind) {
        Book.AddManyStock(before);
        for (int i = 0; i < blanks; ++i)
            Book.AddStock("");
        Book.AddManyStock(behind);
        ASSERT_TRUE(Start());
        ASSERT_LT(Fit(2), before);
        ClickCategory("ALL RECIPES");
        Focus(2);
    }
    // Of the recipe that was pressed.
    void Delete(int recipe) {
        ASSERT_EQ(Main().viewer.CurrentRecipe(), recipe);
        Boxes.Then(Dialogs::Answer::Ok);
        Main().ownRecipes.DeleteRecipe(recipe, true, false);
    }
    void ExpectOnView(int recipe) {
        EXPECT_EQ(Main().viewer.CurrentRecipe(), recipe);
        EXPECT_EQ(Bar(), recipe);
        EXPECT_EQ(Main().strSelectedKey[1], "k" + std::to_string(recipe));
        EXPECT_FALSE(List(2).HideSelection());
        EXPECT_EQ(FocusedName(), "lvwX_2");
        EXPECT_TRUE(Main().ui.rtbSee.Text().starts_with("Stock recipe " + std::to_string(recipe)));
    }
    int Bar() {
        const ListItem* line = List(2).SelectedItem();
        return line == nullptr ? 0 : std::stoi(line->Tag);
    }
    void Press(Qt::Key key, int times = 1) {
        for (int i = 0; i < times; ++i)
            Key(key);
    }
    // How many titles are asked for while something is done.
    template <typename Act>
    int Titles(Act act) {
        int titles = 0;
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            if (access.Kind == "read" && access.Number == filenumber::RecipesIndex) ++titles;
        });
        act();
        Main().files.Watch(nullptr);
        return titles;
    }
};

TEST_F(BlankTitles, AtTheEndOfTheListDownStaysOnTheLastRecipe) {
    Open(40, 60, 0);
    Press(Qt::Key_Down, 45);
    EXPECT_EQ(Bar(), 40);
    EXPECT_FALSE(ShownNumbers().empty());
    Press(Qt::Key_Up);
    EXPECT_EQ(Bar(), 39);
}

TEST_F(BlankTitles, AtTheEndOfTheListNextStaysOnTheLastRecipe) {
    Open(40, 60, 0);
    for (int i = 0; i < 45; ++i)
        Click("ibNext");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 40);
    Click("ibBack");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 39);
}

TEST_F(BlankTitles, EndGoesToTheLastRecipe) {
    Open(40, 60, 0);
    Press(Qt::Key_End);
    EXPECT_EQ(Bar(), 40);
    EXPECT_EQ(ShownNumbers(), Range(40 - Fit(2) + 1, 40));
    Press(Qt::Key_Up);
    EXPECT_EQ(Bar(), 39);
    Press(Qt::Key_Home);
    EXPECT_EQ(Bar(), 1);
}

TEST_F(BlankTitles, PageDownGoesToTheLastRecipe) {
    Open(40, 160, 0);
    Press(Qt::Key_PageDown, 45);
    EXPECT_EQ(Bar(), 40);
    Press(Qt::Key_PageUp);
    EXPECT_GT(Bar(), 0);
    EXPECT_LT(Bar(), 40);
}

TEST_F(BlankTitles, TheWheelLeavesTheLastRecipeOnTheScreen) {
    Open(40, 160, 0);
    Wheel(2, 50);
    EXPECT_EQ(ShownNumbers(), Range(40, 40));
    Wheel(2, -1);
    EXPECT_EQ(ShownNumbers(), Range(37, 40));
}

TEST_F(BlankTitles, AWindowThatIsEmptyIsLeftUpwards) {
    Open(40, 160, 0);
    Main().strSelectedKey[1] = "0";  // no line that the focus would bring back
    Main().lists.ShowListItems(2, 90, false);
    ASSERT_TRUE(ShownNumbers().empty());
    Main().steps.SelectPrevious(2);
    EXPECT_EQ(Bar(), 40);
    Press(Qt::Key_Up);
    EXPECT_EQ(Bar(), 39);
}

TEST_F(BlankTitles, AStockWithoutATitleIsAnEmptyListForEveryKey) {
    Open(40, 0, 0);
    Folder.Write("Data/Recipes.ydb", "");
    ASSERT_TRUE(Restart());
    ClickCategory("ALL RECIPES");
    Focus(2);
    for (const Qt::Key key :
         {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_End, Qt::Key_Home}) {
        Press(key);
        EXPECT_EQ(List(2).Count(), 0);
    }
}

TEST_F(BlankTitles, AreCrossedWithOnePress) {
    Open(100, 30, 100);
    Press(Qt::Key_Down, 99);
    EXPECT_EQ(Bar(), 100);
    for (int recipe = 131; recipe < 200; ++recipe) {
        Press(Qt::Key_Down);
        ASSERT_EQ(Bar(), recipe);
    }
    for (int recipe = 198; recipe > 130; --recipe) {
        Press(Qt::Key_Up);
        ASSERT_EQ(Bar(), recipe);
    }
    Press(Qt::Key_Up);
    EXPECT_EQ(Bar(), 100);
}

TEST_F(BlankTitles, DeletingTheRecipeOfTheLastLineShowsTheOneBeforeIt) {
    Book.AddManyStock(3);
    Book.AddStock("");
    Book.AddManyStock(1);
    ASSERT_TRUE(Start("/E"));
    ClickCategory("ALL RECIPES");
    PressLine(2, 4);
    Delete(5);
    EXPECT_EQ(ShownNumbers(), Range(1, 3));
    ExpectOnView(3);
    PressLine(2, 1);
    Delete(1);
    EXPECT_EQ(ShownNumbers(), Range(2, 3));
    ExpectOnView(2);
    Delete(2);
    ExpectOnView(3);
    Delete(3);
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
}

TEST_F(BlankTitles, DeletingTheOnlyRecipeOfTheWindowBringsThoseBeforeItBack) {
    Open(40, 160, 0);
    ASSERT_TRUE(Start("/E"));
    ClickCategory("ALL RECIPES");
    Wheel(2, 50);
    ASSERT_EQ(ShownNumbers(), Range(40, 40));
    PressLine(2, 1);
    Delete(40);
    EXPECT_EQ(ShownNumbers(), Range(39 - Fit(2) + 1, 39));
    ExpectOnView(39);
}

TEST_F(BlankTitles, AThousandOfThemCostOneReadingOfEach) {
    constexpr int blanks = 1000;
    Open(100, blanks, 100);
    const int few = 3 * Fit(2);
    // From the last recipe before them, and with the top of the window before and among them.
    for (const std::int32_t start : {101 - Fit(2), 100, 101}) {
        Main().lists.ShowListItems(2, start, false);
        Main().lists.SelectLine(2, List(2).Count());
        Focus(2);
        const int bar = Bar();
        EXPECT_LE(Titles([&] { Key(Qt::Key_Down); }), blanks + few) << start;
        EXPECT_EQ(Bar(), bar == 100 ? 1101 : bar + 1) << start;
    }
    // Upwards the recipe before them is looked for, and then the window is read from there.
    Main().lists.ShowListItems(2, 1101, false);
    Main().lists.SelectLine(2, 1);
    Focus(2);
    EXPECT_LE(Titles([&] { Key(Qt::Key_Up); }), 2 * blanks + few);
    EXPECT_EQ(Bar(), 100);
}

}  // namespace
}  // namespace larder::test
