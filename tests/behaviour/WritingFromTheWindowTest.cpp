#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

// The ways from the main window to writing in recipes: the dialog behind Add, the menu of a line,
// the key E. Recipes 1 to 3 are stock, 4 and 5 the cook's own.
class WritingFromTheWindow : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(3);
        Book.AddManyOwn(2);
        Book.Numbers("MY FAVORITES") = " 2 5 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 ";
        Book.Numbers("MIXED") = " 1 2 3 4 5 ";
        Open("");
    }
    void Open(const std::string& commandLine) {
        ASSERT_TRUE(Start(commandLine));
        ClickCategory("MIXED");
    }

    static QWidget* ShownWindow(const std::string& title) {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->windowTitle().toStdString() == title) return window;
        }
        return nullptr;
    }
    // Opens the dialog behind Add with the mouse, and clicks one of its buttons.
    void Choose(const std::string& button) {
        QTimer looking;
        QObject::connect(&looking, &QTimer::timeout, &looking, [&] {
            const QWidget* dialog = QApplication::activeModalWidget();
            if (dialog == nullptr || dialog->objectName() != "frmAddChoice") return;
            if (!dialog->isActiveWindow()) return;
            looking.stop();
            auto* found = dialog->findChild<QWidget*>(QString::fromStdString(button));
            QTest::mouseClick(found, Qt::LeftButton);
        });
        looking.start(1);
        Click("ibAdd");
    }
    void ChooseFromMenu(int line, const std::string& entry) {
        WhenMenuPopsUp([&](QMenu& menu) { MainWindowFixture::Choose(menu, entry); });
        PressLine(2, line, Qt::RightButton);
    }
};

TEST_F(WritingFromTheWindow, CreateNewRecipeOpensTheEditor) {
    Choose("ibAddNewRecipe");
    EXPECT_NE(ShownWindow("Add Recipe"), nullptr);
}

TEST_F(WritingFromTheWindow, EditOfTheDialogOpensTheEditorOnTheCurrentRecipe) {
    PressLine(2, 4);
    Choose("ibEdit");
    EXPECT_NE(ShownWindow("Edit Recipe #4"), nullptr);
    EXPECT_NE(Main().editor.RecipeRTF().find("Own recipe 4"), std::string::npos);
}

TEST_F(WritingFromTheWindow, EditOfTheMenuOpensTheEditorOnTheLinesRecipe) {
    PressLine(2, 4);
    ChooseFromMenu(5, "mnuPopUpEdit");
    EXPECT_NE(ShownWindow("Edit Recipe #5"), nullptr);
}

TEST_F(WritingFromTheWindow, DeleteOfTheDialogAsksWhenTheDialogHasGone) {
    PressLine(2, 4);
    bool dialogShown = true;
    Boxes.Then(Dialogs::Answer::Cancel,
               [&] { dialogShown = QApplication::activeModalWidget() != nullptr; });
    Choose("ibDelete");
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Permanently delete recipe #4?");
    EXPECT_FALSE(dialogShown);
    EXPECT_EQ(ShownNumbers(), Range(1, 5));
}

TEST_F(WritingFromTheWindow, DeleteOfTheDialogDeletesTheCurrentRecipe) {
    PressLine(2, 4);
    Boxes.Then(Dialogs::Answer::Ok);
    Choose("ibDelete");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1, 2, 3, 5}));
    EXPECT_EQ(Main().store.GetRecipeTitle(4), "");
}

TEST_F(WritingFromTheWindow, DeleteOfTheMenuAsksForTheLinesRecipe) {
    PressLine(2, 4);
    Boxes.Then(Dialogs::Answer::Ok);
    ChooseFromMenu(5, "mnuPopUpDelete");
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Permanently delete recipe #5?");
    EXPECT_EQ(ShownNumbers(), Range(1, 4));
    EXPECT_FALSE(Main().favorites.IsInFavorites(5));
}

TEST_F(WritingFromTheWindow, EInTheRecipesOpensTheViewerToTypingInMaintenance) {
    Open("/E");
    PressLine(2, 2);
    Focus(2);
    Key(Qt::Key_E);
    EXPECT_TRUE(Main().editor.InPlaceEdit());
    EXPECT_FALSE(Main().ui.rtbSee.Locked());
    EXPECT_EQ(FocusedName(), "rtbSee");
    EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 14), "Stock recipe 2") << "the key is no text";
}

TEST_F(WritingFromTheWindow, ClosingTheMainWindowTakesTheEditorAlong) {
    Choose("ibAddNewRecipe");
    ASSERT_NE(ShownWindow("Add Recipe"), nullptr);
    Main().ui.window.Close();
    EXPECT_EQ(ShownWindow("Add Recipe"), nullptr);
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(WritingFromTheWindow, AFailureOfWhatWasChosenIsTold) {
    PressLine(2, 4);
    ASSERT_EQ(Main().viewer.CurrentRecipe(), 4);
    const auto counted = Main().store.OnTotalRecipes;
    Main().store.OnTotalRecipes = [](std::int32_t) { throw Failure(failure::DeviceError, "test"); };
    Boxes.Then(Dialogs::Answer::Ok);
    Choose("ibDelete");
    Main().store.OnTotalRecipes = counted;
    ASSERT_EQ(Boxes.Shown.size(), 2U);
    EXPECT_EQ(Boxes.Shown[1].Text, FailureText(failure::DeviceError));
}

TEST_F(WritingFromTheWindow, EveryButtonOfTheDialogBehindAddClicksOnce) {
    PressLine(2, 4);
    int clicks = 0;
    Main().sound.OnPlay = [&](const std::string&) { ++clicks; };
    for (const char* button :
         {"ibAddToFavorites", "ibDelete", "CancelButton", "ibEdit", "ibAddNewRecipe"}) {
        clicks = 0;
        Choose(button);
        EXPECT_EQ(clicks, 2) << button << ": the window's Add before it";
    }
}

}  // namespace
}  // namespace larder::test
