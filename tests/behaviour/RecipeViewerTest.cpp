#include "browse/RecipeViewer.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QWidget>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "platform/Failure.h"
#include "platform/Text.h"

namespace larder::test {
namespace {

constexpr std::int32_t TitleColor = 293286;
constexpr std::int32_t FoundColor = 0xFF0000;

class Viewer : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddStock("Salt Cod", "Soak the cod in water.\nAdd salt, pepper and more salt.");
        Book.AddStock("Fried Plaice", "Flour the plaice.");
        Book.AddOwn("My Chowder", "Clams and cream.");
        Book.AddOwn("");
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 2 ";
        Book.Numbers("MY FAVORITES") = " 1 2 3 ";
        Book.Numbers("NONE") = " ";
        ASSERT_TRUE(Start());
    }
    RecipeViewer& It() { return Main().viewer; }
    RichTextBox& Box() { return Main().ui.rtbSee; }
    std::string Label() { return Main().ui.lblRecipeNum.Caption(); }
    // Colour and size of the first letter of the nth occurrence of a text.
    void Select(const std::string& text, int nth) {
        std::size_t place = Box().Text().find(text);
        for (int i = 1; i < nth; ++i)
            place = Box().Text().find(text, place + 1);
        ASSERT_NE(place, std::string::npos) << text;
        Box().SetSelStart(static_cast<std::int32_t>(place));
        Box().SetSelLength(static_cast<std::int32_t>(text.size()));
    }
    std::int32_t ColorOf(const std::string& text, int nth = 1) {
        Select(text, nth);
        return Box().SelColor().value_or(-1);
    }
    float SizeOf(const std::string& text) {
        Select(text, 1);
        return Box().SelFontSize().value_or(-1);
    }
    std::int32_t Plain() { return ColorOf("Soak"); }
    void ShowWithWords(const std::string& words) {
        Main().strLastSearchWords = words;
        ASSERT_TRUE(It().ShowRecipe(1));
    }
};

// The current recipe.

TEST_F(Viewer, ANumberBeyondTheLastIsABadRecipeNumber) {
    for (const std::int32_t number : {5, 1000000, -2}) {
        try {
            It().SetCurrentRecipe(number);
            ADD_FAILURE() << number;
        } catch (const Failure& f) {
            EXPECT_EQ(f.Number, 63);
            EXPECT_EQ(f.Source, "CurrentRecipe");
            EXPECT_EQ(f.Description, "Bad Recipe Number");
        }
        EXPECT_EQ(It().CurrentRecipe(), 1);
    }
}

TEST_F(Viewer, TheLastNumberIsAllowed) {
    It().SetCurrentRecipe(4);
    EXPECT_EQ(It().CurrentRecipe(), 4);
}

TEST_F(Viewer, TheNumberIsShownWithItsSign) {
    It().SetCurrentRecipe(2);
    EXPECT_EQ(Label(), "# 2");
    EXPECT_EQ(Main().ui.lblRecipeNum.ToolTipText(), "#2 is the current recipe.");
}

TEST_F(Viewer, ZeroAndMinusOneAreAllowedAndBlankTheLabel) {
    for (const std::int32_t number : {0, -1}) {
        It().SetCurrentRecipe(2);
        It().SetCurrentRecipe(number);
        EXPECT_EQ(It().CurrentRecipe(), number);
        EXPECT_EQ(Label(), "");
        EXPECT_EQ(Main().ui.lblRecipeNum.ToolTipText(), "");
        EXPECT_EQ(Main().ui.ibRecipeButton.ButtonState(), ImageButton::Disabled);
        EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Disabled);
    }
}

TEST_F(Viewer, WithoutACurrentRecipeThereIsNoPicture) {
    It().SetCurrentRecipe(2);
    ASSERT_TRUE(It().booRecipeHasPicture);
    It().SetCurrentRecipe(-1);
    EXPECT_FALSE(It().booRecipeHasPicture);
}

TEST_F(Viewer, TheButtonsTellWhatTheRecipeHas) {
    It().SetCurrentRecipe(2);
    EXPECT_TRUE(It().booRecipeHasPicture);
    EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Up);
    EXPECT_EQ(Main().ui.ibRecipeButton.ButtonState(), ImageButton::Up);
    It().SetCurrentRecipe(1);
    EXPECT_FALSE(It().booRecipeHasPicture);
    EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Disabled);
    EXPECT_EQ(Main().ui.ibRecipeButton.ButtonState(), ImageButton::Up);
}

TEST_F(Viewer, SettingTheNumberShowsNothing) {
    It().SetCurrentRecipe(2);
    EXPECT_FALSE(Box().Visible());
}

// Showing.

TEST_F(Viewer, ShowingMakesARecipeCurrentAndItsTextVisible) {
    EXPECT_TRUE(It().ShowRecipe(3));
    EXPECT_EQ(It().CurrentRecipe(), 3);
    EXPECT_EQ(Box().Text().substr(0, 28), "My Chowder\r\nClams and cream.");
    EXPECT_TRUE(Box().Visible());
    EXPECT_FALSE(Main().ui.frPic.Visible());
    EXPECT_FALSE(Main().screen.EncyclopediaMode());
    EXPECT_EQ(Box().SelStart(), 0);
    EXPECT_EQ(Box().SelLength(), 0);
    EXPECT_LT(Box().Place().Left, Main().ui.window.ClientWidth());
}

TEST_F(Viewer, MinusOneShowsTheCurrentRecipe) {
    It().SetCurrentRecipe(2);
    EXPECT_TRUE(It().ShowRecipe(-1));
    EXPECT_EQ(Box().Text().substr(0, 12), "Fried Plaice");
    EXPECT_EQ(It().CurrentRecipe(), 2);
}

TEST_F(Viewer, ShowingTheTextDimsItsButtonAndOffersThePicture) {
    It().ShowRecipe(2);
    EXPECT_EQ(Main().ui.ibRecipeButton.ButtonState(), ImageButton::Disabled);
    EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Up);
    It().ShowRecipe(1);
    EXPECT_EQ(Main().ui.ibRecipeButton.ButtonState(), ImageButton::Disabled);
    EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Disabled);
}

TEST_F(Viewer, ShowingTakesTheOtherModesOffTheScreen) {
    Main().ui.frPic.SetVisible(true);
    Main().ui.ibELeft.SetVisible(true);
    Main().ui.ibERight.SetVisible(true);
    Main().screen.SetEncyclopediaMode(true);
    It().ShowRecipe(1);
    EXPECT_FALSE(Main().ui.frPic.Visible());
    EXPECT_FALSE(Main().ui.ibELeft.Visible());
    EXPECT_FALSE(Main().ui.ibERight.Visible());
    EXPECT_FALSE(Main().screen.EncyclopediaMode());
}

TEST_F(Viewer, WithoutACurrentRecipeShowingEndsQuietlyAndTells) {
    ClickCategory("NONE");
    ASSERT_EQ(It().CurrentRecipe(), -1);
    EXPECT_FALSE(It().ShowRecipe(-1));
    EXPECT_EQ(Label(), "");
    EXPECT_TRUE(Boxes.Shown.empty());
    It().SetCurrentRecipe(0);
    EXPECT_FALSE(It().ShowRecipe(-1));
}

TEST_F(Viewer, ANumberOutOfRangeEndsQuietlyAndTells) {
    EXPECT_FALSE(It().ShowRecipe(1000));
    EXPECT_FALSE(It().ShowRecipe(-5));
    EXPECT_EQ(It().CurrentRecipe(), 1);
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(Viewer, ARecipeThatCannotBeShownLeavesNoOtherOnTheScreenAfterAResize) {
    It().ShowRecipe(1);
    It().SetCurrentRecipe(-1);
    It().ShowRecipe(-1);
    Main().layout.ResizeIt();
    EXPECT_FALSE(Box().Visible() && Box().Place().Left < Main().ui.window.ClientWidth());
}

TEST_F(Viewer, ARecipeThatCannotBeShownOffersItsPictureAgain) {
    Main().files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "read" && access.Number == 1) throw Failure(63, "damaged");
    });
    It().SetCurrentRecipe(2);
    Main().screen.DimPhotoButton();  // as while the picture is on the screen
    Main().ui.frPic.SetVisible(true);
    ASSERT_FALSE(It().ShowRecipe(-1));
    EXPECT_FALSE(Main().ui.frPic.Visible());
    EXPECT_FALSE(Box().Visible());
    EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Up);
    EXPECT_EQ(Main().ui.ibRecipeButton.ButtonState(), ImageButton::Up);
}

TEST_F(Viewer, ATextThatCannotBeShownAgainIsOfferedAgain) {
    ASSERT_TRUE(It().ShowRecipe(1));
    Main().files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "read" && access.Number == 1) throw Failure(63, "damaged");
    });
    ASSERT_FALSE(It().ShowRecipe(-1));
    EXPECT_EQ(Main().ui.ibRecipeButton.ButtonState(), ImageButton::Up);
    EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Disabled) << "it has no picture";
}

TEST_F(Viewer, ADeletedRecipeIsToldInTheText) {
    EXPECT_TRUE(It().ShowRecipe(4));
    EXPECT_EQ(Box().Text(),
              "The recipe 4 is unavailable because it was permanently deleted from the database.");
    EXPECT_TRUE(Box().Visible());
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(Viewer, WithoutAParagraphEndNothingIsColoured) {
    Main().strLastSearchWords = "recipe deleted";
    It().ShowRecipe(4);
    EXPECT_EQ(ColorOf("deleted"), TitleColor);
    EXPECT_EQ(ColorOf("recipe"), TitleColor);
}

TEST_F(Viewer, ARecipeThatIsNotRtfIsShownAsPlainText) {
    const std::string bytes = "Plain Fish\r\nNo braces here.\r\n";
    Folder.Write("Data/Recipes.ydb", bytes);
    Folder.Write("Data/Recipes Index.ind", IndexBytes({1}));
    Folder.Delete("Data/Custom Recipes.ydb");
    Folder.Delete("Data/Custom Recipes Index.ind");
    ASSERT_TRUE(Restart());
    EXPECT_TRUE(It().ShowRecipe(1));
    EXPECT_EQ(Box().Text().substr(0, 15), "No braces here.");
}

// Modified.

TEST_F(Viewer, FillingTheBoxIsNoModification) {
    It().Modified = true;
    It().ShowRecipe(1);
    EXPECT_FALSE(It().Modified);
    QTest::qWait(0);
    EXPECT_FALSE(It().Modified);
    It().ShowRecipe(4);
    EXPECT_FALSE(It().Modified);
}

TEST_F(Viewer, AFailedShowIsNoModification) {
    It().ShowRecipe(1);
    It().ShowRecipe(1000);
    EXPECT_FALSE(It().Modified);
}

TEST_F(Viewer, OtherSizesAreNoModification) {
    It().ShowRecipe(1);
    Main().layout.ResizeIt();
    QTest::qWait(0);
    EXPECT_FALSE(It().Modified);
}

TEST_F(Viewer, TypingIsAModificationThatAResizeKeeps) {
    Box().SetLocked(false);
    It().ShowRecipe(1);
    Box().SetFocus();
    QTest::keyClick(Box().Native(), Qt::Key_X);
    EXPECT_TRUE(It().Modified);
    Main().layout.ResizeIt();
    EXPECT_TRUE(It().Modified);
}

// Formats.

TEST_F(Viewer, TheTitleIsBrownAndLarger) {
    It().ShowRecipe(1);
    const float size = static_cast<float>(Val(Box().Tag));
    EXPECT_EQ(ColorOf("Salt Cod"), TitleColor);
    EXPECT_NEAR(SizeOf("Salt Cod"), size * 1.3F, 0.26F);
    EXPECT_NEAR(SizeOf("Soak the cod"), size, 0.01F);
    EXPECT_NE(ColorOf("Soak the cod"), TitleColor);
}

TEST_F(Viewer, TheSizeIsThatOfTheBoxTag) {
    Box().Tag = "20";
    It().ShowRecipe(1);
    EXPECT_NEAR(SizeOf("Soak the cod"), 20, 0.01F);
    EXPECT_EQ(Box().Tag, "20");
}

TEST_F(Viewer, WithoutATagTheSizeIsTwelve) {
    Box().Tag = "";
    It().ShowRecipe(1);
    EXPECT_NEAR(SizeOf("Soak the cod"), 12, 0.01F);
    EXPECT_EQ(Box().Tag, "12");
}

TEST_F(Viewer, ATagThatIsNoNumberLeavesTheSizeOfTheTitle) {
    It().ShowRecipe(1);
    const float before = SizeOf("Soak the cod");
    Box().SetText("Title\r\nBody");
    const float title = SizeOf("Title");
    Box().Tag = "large";
    It().FormatFirstLine(Box());
    EXPECT_NEAR(SizeOf("Title"), title, 0.01F);
    EXPECT_EQ(ColorOf("Title"), TitleColor);
    EXPECT_GT(before, 0);
}

TEST_F(Viewer, ATagThatIsNoNumberLeavesTheSizesOfTheText) {
    Book.AddOwn("Large Eel", "{\\fs40 Skin it.}");
    ASSERT_TRUE(Start());
    Box().Tag = "large";
    ASSERT_TRUE(It().ShowRecipe(5));
    EXPECT_NEAR(SizeOf("Skin it."), 20, 0.01F);
    EXPECT_EQ(Box().Tag, "large");
}

TEST_F(Viewer, InMaintenanceTheTextKeepsItsOwnSizes) {
    Main().booEditMode = true;
    Box().Tag = "20";
    It().ShowRecipe(1);
    EXPECT_NEAR(SizeOf("Soak the cod"), 12, 0.01F);
}

// The words of the last search.

TEST_F(Viewer, TheFirstOccurrenceOfEachWordIsBlue) {
    It().ShowRecipe(1);
    const std::int32_t plain = Plain();
    ShowWithWords("cod salt");
    EXPECT_EQ(ColorOf("cod"), FoundColor);
    EXPECT_EQ(ColorOf("salt", 1), FoundColor);
    EXPECT_EQ(ColorOf("salt", 2), plain);
    EXPECT_EQ(ColorOf("pepper"), plain);
}

TEST_F(Viewer, AfterColouringTheTextStandsAtItsBeginning) {
    ShowWithWords("cod salt");
    EXPECT_EQ(Box().SelStart(), 0);
    EXPECT_EQ(Box().SelLength(), 0);
}

TEST_F(Viewer, AWordThatIsOnlyInTheTitleIsNotColoured) {
    Main().strLastSearchWords = "Fried";
    It().ShowRecipe(2);
    EXPECT_EQ(ColorOf("Fried"), TitleColor);
}

TEST_F(Viewer, AWordInTitleAndTextIsColouredInTheTextAlone) {
    Main().strLastSearchWords = "plaice";
    It().ShowRecipe(2);
    EXPECT_EQ(ColorOf("Plaice"), TitleColor);
    EXPECT_EQ(ColorOf("plaice"), FoundColor);
}

TEST_F(Viewer, CaseMakesNoDifferenceToAWord) {
    ShowWithWords("PEPPER");
    EXPECT_EQ(ColorOf("pepper"), FoundColor);
}

TEST_F(Viewer, APartOfAWordIsNotColoured) {
    It().ShowRecipe(1);
    const std::int32_t plain = Plain();
    ShowWithWords("pep wat");
    EXPECT_EQ(ColorOf("pepper"), plain);
    EXPECT_EQ(ColorOf("water"), plain);
}

TEST_F(Viewer, SeparatorsBetweenWordsAreBlanks) {
    ShowWithWords("water,pepper;(more)");
    EXPECT_EQ(ColorOf("water"), FoundColor);
    EXPECT_EQ(ColorOf("pepper"), FoundColor);
    EXPECT_EQ(ColorOf("more"), FoundColor);
}

TEST_F(Viewer, AWordThatIsNotThereKeepsNoOtherFromBeingColoured) {
    ShowWithWords("lobster pepper");
    EXPECT_EQ(ColorOf("pepper"), FoundColor);
}

TEST_F(Viewer, TheWordsOfTheSearchAreLeftAsTheyAre) {
    ShowWithWords("water,pepper");
    EXPECT_EQ(Main().strLastSearchWords, "water,pepper");
    EXPECT_EQ(Box().SelLength(), 0);
}

TEST_F(Viewer, TheNamesOfTheCategoriesOfAllRecipesAreNoWords) {
    Book = CookBook();
    Book.AddStock("Title", "All recipes with pictures are here.");
    ASSERT_TRUE(Start());
    It().ShowRecipe(1);
    const std::int32_t plain = ColorOf("here");
    for (const char* words : {"ALL RECIPES", "ALL RECIPES WITH PICTURES"}) {
        ShowWithWords(words);
        EXPECT_EQ(ColorOf("All"), plain);
        EXPECT_EQ(ColorOf("recipes"), plain);
        EXPECT_EQ(ColorOf("pictures"), plain);
    }
}

TEST_F(Viewer, InMaintenanceNothingIsColoured) {
    Main().booEditMode = true;
    It().ShowRecipe(1);
    const std::int32_t plain = Plain();
    ShowWithWords("pepper");
    EXPECT_EQ(ColorOf("pepper"), plain);
}

// Next and Back.

TEST_F(Viewer, NextAndBackWalkTheRecipes) {
    Focus(2);
    Click("ibNext");
    EXPECT_EQ(It().CurrentRecipe(), 2);
    EXPECT_TRUE(Box().Visible());
    EXPECT_EQ(FocusedName(), "lvwX_2");
    Click("ibNext");
    EXPECT_EQ(It().CurrentRecipe(), 3);
    Click("ibBack");
    EXPECT_EQ(It().CurrentRecipe(), 2);
    EXPECT_EQ(SelectedLine(2), 2);
}

TEST_F(Viewer, NextAndBackWalkTheCategoriesWhenTheseHaveTheFocus) {
    Focus(1);
    Click("ibNext");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "BUYING AND PREPARATION TIPS");
    EXPECT_EQ(FocusedName(), "lvwX_1");
    for (int i = 0; i < 4; ++i)
        Key(Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "ALL RECIPES");
    EXPECT_EQ(List(2).Tag, "*");
    Click("ibBack");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "ALL RECIPES WITH PICTURES");
    EXPECT_EQ(ShownNumbers(), Range(2, 2));
}

TEST_F(Viewer, NextWalksTheRecipesFromAnyOtherControl) {
    It().ShowRecipe(1);
    Box().SetFocus();
    Click("ibNext");
    EXPECT_EQ(It().CurrentRecipe(), 2);
    EXPECT_EQ(FocusedName(), "lvwX_2");
}

TEST_F(Viewer, NextAtTheEndOfTheListDoesNothing) {
    Focus(2);
    for (int i = 0; i < 2; ++i)
        Click("ibNext");
    ASSERT_EQ(It().CurrentRecipe(), 3);
    Box().SetText("untouched");
    Click("ibNext");
    EXPECT_EQ(It().CurrentRecipe(), 3);
    EXPECT_EQ(SelectedLine(2), 3);
    EXPECT_EQ(Box().Text(), "untouched");
    EXPECT_EQ(FocusedName(), "lvwX_2");
}

TEST_F(Viewer, BackAtTheBeginningOfTheListDoesNothing) {
    Focus(2);
    PressLine(2, 1);
    Box().SetText("untouched");
    Click("ibBack");
    EXPECT_EQ(It().CurrentRecipe(), 1);
    EXPECT_EQ(Box().Text(), "untouched");
}

TEST_F(Viewer, NextAndBackInAnEmptyListDoNothing) {
    ClickCategory("NONE");
    Focus(2);
    Click("ibNext");
    Click("ibBack");
    EXPECT_EQ(It().CurrentRecipe(), -1);
    EXPECT_FALSE(Box().Visible());
}

}  // namespace
}  // namespace larder::test
