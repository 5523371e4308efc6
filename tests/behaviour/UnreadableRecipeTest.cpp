// A recipe whose record cannot be read, for a reason that is no disc to wait for, is not taken for
// one that was deleted.

#include <gtest/gtest.h>

#include <QTest>
#include <string>

#include "behaviour/support/EditorBook.h"
#include "platform/Failure.h"
#include "store/FileNumbers.h"

namespace larder::test {
namespace {

class UnreadableRecipe : public EditorBook {
  protected:
    // From now on until `broken` is false a text cannot be read.
    void Break(int file = filenumber::CustomRecipes) {
        broken = true;
        Main().files.Watch([this, file](const NumberedFiles::Access& access) {
            if (broken && access.Kind == "read" && access.Number == file) {
                throw Failure(failure::DeviceError, std::string(access.Path));
            }
        });
        Boxes.Shown.clear();
    }
    std::string Seen() { return Main().ui.rtbSee.Text(); }
    std::string TitleOf(int number) { return Main().store.GetRecipeTitle(number); }
    bool broken = false;
};

TEST_F(UnreadableRecipe, IsNotSaidToBeDeleted) {
    Break();
    Main().viewer.ShowRecipe(4);
    EXPECT_EQ(Seen(), "Couldn't read recipe #4");
    EXPECT_TRUE(Main().ui.rtbSee.Visible());
    EXPECT_TRUE(Boxes.Shown.empty());
    broken = false;
    Main().viewer.ShowRecipe(-1);
    EXPECT_TRUE(Seen().starts_with("Own Hake"));
}

TEST_F(UnreadableRecipe, DoesNotOpenInTheEditorAndThatIsTold) {
    Break();
    Main().editor.LoadRecipeToUpdate(4);
    EXPECT_FALSE(EditorShown());
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Couldn't read recipe #4");
}

TEST_F(UnreadableRecipe, IsUpdatedFromTheEditorWhenItCanBeReadAgain) {
    OpenOn(4);
    Editor().rtbRecipe.SetFocus();
    Type("Very ");
    Break();
    ClickOn(Editor().ibAdd);
    EXPECT_TRUE(EditorShown());
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Error updating recipe\nDevice I/O error");
    broken = false;
    ClickOn(Editor().ibAdd);
    EXPECT_FALSE(EditorShown());
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
}

TEST_F(UnreadableRecipe, ThatIsToBeDeletedStaysWithItsFavouriteAndThatIsTold) {
    const std::string total = Main().ui.lblTotal.Caption();
    Break();
    Boxes.Then(Dialogs::Answer::Ok);
    Main().ownRecipes.DeleteRecipe(4, true, false);
    ASSERT_EQ(Boxes.Shown.size(), 2U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Permanently delete recipe #4?");
    EXPECT_EQ(Boxes.Shown[1].Text, "Error updating recipe\nDevice I/O error");
    broken = false;
    EXPECT_EQ(TitleOf(4), "Own Hake");
    EXPECT_TRUE(Main().favorites.IsInFavorites(4));
    EXPECT_EQ(Main().ui.lblTotal.Caption(), total);
}

TEST_F(UnreadableRecipe, KeepsItsLineInAllRecipes) {
    Break(filenumber::Recipes);
    ClickCategory("ALL RECIPES");
    ASSERT_EQ(ShownNumbers(), (std::vector<int>{1, 2, 3, 4, 5})) << "6 was deleted";
    EXPECT_EQ(Shown(2)[1], "");
    EXPECT_EQ(Shown(2)[3], "Own Hake");
}

TEST_F(UnreadableRecipe, IsNotPassedOverUpwards) {
    Book.AddManyStock(80);
    ASSERT_TRUE(Start());
    ClickCategory("ALL RECIPES");
    Main().lists.ShowListItems(2, 40, false);
    Main().lists.SelectLine(2, 1);
    Focus(2);
    ASSERT_EQ(ShownNumbers().front(), 40);
    Break(filenumber::Recipes);
    Key(Qt::Key_Up);
    EXPECT_EQ(ShownNumbers().front(), 39);
}

// With "/E"

class UnreadableInViewer : public UnreadableRecipe {
  protected:
    std::string CommandLine() const override { return "/E"; }
};

TEST_F(UnreadableInViewer, WhatWasTypedStaysUntilItCanBeStored) {
    ASSERT_TRUE(Main().viewer.ShowRecipe(4));
    Main().ui.rtbSee.SetFocus();
    QTest::keyClicks(Main().ui.rtbSee.Native(), "Very ");
    Break();
    EXPECT_FALSE(Main().viewer.ShowRecipe(5));
    ASSERT_EQ(Boxes.Shown.size(), 2U) << "the maintainer's notice, and the failure";
    EXPECT_EQ(Boxes.Shown[1].Text, "Error updating recipe\nDevice I/O error");
    EXPECT_TRUE(Main().viewer.Modified);
    EXPECT_TRUE(Seen().starts_with("Very Own Hake")) << Seen();
    broken = false;
    EXPECT_TRUE(Main().viewer.ShowRecipe(5));
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
}

TEST_F(UnreadableInViewer, IsNotOpenToTyping) {
    Break();
    Main().viewer.ShowRecipe(4);
    EXPECT_EQ(Main().viewer.RecipeInBox, 0);
    EXPECT_TRUE(Main().ui.rtbSee.Locked());
    broken = false;
    Main().viewer.ShowRecipe(4);
    EXPECT_EQ(Main().viewer.RecipeInBox, 4);
    EXPECT_FALSE(Main().ui.rtbSee.Locked());
}

}  // namespace
}  // namespace larder::test
