#include "app/ScreenStates.h"

#include <QApplication>
#include <QColor>
#include <QImage>
#include <QString>
#include <QWidget>
#include <set>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

constexpr int Cod = 1;     // has no picture
constexpr int Salmon = 2;  // has one

class ScreenStatesTest : public MainWindowFixture {
  protected:
    ScreenStatesTest() {
        Book.AddStock("Cod");
        Book.AddStock("Salmon");
        Book.Numbers("MY FAVORITES") = " 2 1 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 2 ";
        Book.Numbers("WHITE") = " 1 ";
        Book.Numbers("WHALES") = " ";
        Folder.MakeFolder("Data/Food Photos");
    }

    MainControls& Ui() { return Main().ui; }

    std::set<std::string> VisibleNames() {
        std::set<std::string> names;
        for (const Control* control : Ui().window.Controls()) {
            if (!control->Visible()) continue;
            const std::string index =
                control->Index() == 0 ? "" : "(" + std::to_string(control->Index()) + ")";
            names.insert(control->Name() + index);
        }
        return names;
    }

    static std::string StateOf(const ImageButton& button) {
        return button.ButtonState() == ImageButton::Disabled ? "dimmed" : "normal";
    }

    // All that differs between the states of the screen.
    std::string Screen() {
        std::string page = "nothing";
        if (Ui().rtbSee.Visible()) page = "text of " + FirstLine();
        if (Ui().frPic.Visible()) page = "picture";
        std::string extras;
        for (const std::string& name : VisibleNames()) {
            if (Constant().count(name) == 0 && name != "rtbSee" && name != "frPic") {
                extras += " " + name;
            }
        }
        return Ui().lblCategory.Caption() + " | " + std::to_string(List(2).Count()) + " lines | " +
               page + (Main().screen.EncyclopediaMode() ? " (encyclopedia)" : "") + " | [" +
               Ui().lblRecipeNum.Caption() + "] Recipe " + StateOf(Ui().ibRecipeButton) +
               ", Photo " + StateOf(Ui().ibPhotoButton) + " |" + extras;
    }
    std::string FirstLine() {
        const std::string text = Ui().rtbSee.Text();
        return text.substr(0, text.find('\r'));
    }

    // What stands on the window in every state.
    static const std::set<std::string>& Constant() {
        static const std::set<std::string> names = {"imgBackGroundMain",
                                                    "imgWaterMark(1)",
                                                    "imgWaterMark(2)",
                                                    "imgWaterMark(3)",
                                                    "chkFocusCatcher",
                                                    "lblCategory",
                                                    "lblFound",
                                                    "lblTotal",
                                                    "lblRecipeNum",
                                                    "lvwX(1)",
                                                    "imgSortByNum",
                                                    "imgSortByName",
                                                    "lvwX(2)",
                                                    "ibRecipeButton",
                                                    "ibPhotoButton",
                                                    "imgAddToFavorites",
                                                    "ibBack",
                                                    "ibNext",
                                                    "imgPicture",
                                                    "ibReset",
                                                    "ibAdd",
                                                    "ibSearch",
                                                    "ibHelp",
                                                    "ibPrint",
                                                    "ibExit"};
        return names;
    }
    void ExpectConstant() {
        const std::set<std::string> visible = VisibleNames();
        for (const std::string& name : Constant()) {
            EXPECT_EQ(visible.count(name), 1U) << name << " in " << Screen();
        }
    }
    void ExpectScreen(const std::string& expected) {
        EXPECT_EQ(Screen(), expected);
        ExpectConstant();
    }
};

TEST_F(ScreenStatesTest, EveryStateOfTheScreenShowsAndEnablesWhatIsListedHere) {
    ASSERT_TRUE(Start());
    ExpectScreen(
        "MY FAVORITES | 2 lines | nothing (encyclopedia) | [# 2] Recipe normal, Photo normal |");

    PressLine(2, 2);  // another recipe, without a picture
    ExpectScreen("MY FAVORITES | 2 lines | text of Cod | [# 1] Recipe dimmed, Photo dimmed |");

    PressLine(2, 2);  // the current one again: there is no picture to flip to
    ExpectScreen("MY FAVORITES | 2 lines | text of Cod | [# 1] Recipe dimmed, Photo dimmed |");

    Click("ibPhotoButton");
    ExpectScreen("MY FAVORITES | 2 lines | text of Cod | [# 1] Recipe dimmed, Photo dimmed |");

    ClickCategory("WHITE");
    ExpectScreen(
        "     WHITE | 1 lines | nothing (encyclopedia) | [# 1] Recipe normal, Photo dimmed |");

    Click("ibRecipeButton");
    ExpectScreen("     WHITE | 1 lines | text of Cod | [# 1] Recipe dimmed, Photo dimmed |");

    ClickCategory("WHALES");  // a category without recipes
    ExpectScreen(
        "     WHALES | 0 lines | nothing (encyclopedia) | [] Recipe dimmed, Photo dimmed |");

    ClickCategory("ALL RECIPES");
    ExpectScreen(
        "ALL RECIPES | 2 lines | nothing (encyclopedia) | [# 1] Recipe normal, Photo dimmed |");

    Click("ibHelp");
    ExpectScreen("Help | 2 lines | nothing (encyclopedia) | [# 1] Recipe normal, Photo dimmed |");

    Click("ibReset");
    ExpectScreen(
        "MY FAVORITES | 2 lines | nothing (encyclopedia) | [# 2] Recipe normal, Photo normal |");
}

TEST_F(ScreenStatesTest, ARecipeWithAPictureHasItsPhotoButtonInTheNormalLook) {
    ASSERT_TRUE(Start());
    Main().viewer.ShowRecipe(Salmon);
    EXPECT_EQ(StateOf(Ui().ibRecipeButton), "dimmed");
    EXPECT_EQ(StateOf(Ui().ibPhotoButton), "normal");
    EXPECT_EQ(Ui().ibPhotoButton.CurrentLook(), ImageButton::Look::Normal);
    EXPECT_EQ(Ui().ibRecipeButton.CurrentLook(), ImageButton::Look::Disabled);
}

TEST_F(ScreenStatesTest, AllRecipesWithPicturesOpensItsFirstRecipeNotADescription) {
    ASSERT_TRUE(Start());
    ClickCategory("ALL RECIPES WITH PICTURES");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), Salmon);
    EXPECT_FALSE(Main().screen.EncyclopediaMode());
    EXPECT_TRUE(Ui().rtbSee.Visible() || Ui().frPic.Visible());
}

TEST_F(ScreenStatesTest, TheDimmedAndNormalLooksBringTheirToolTips) {
    ASSERT_TRUE(Start());
    ScreenStates& screen = Main().screen;
    screen.DimPhotoButton();
    screen.DimRecipeButton();
    EXPECT_EQ(Ui().ibPhotoButton.ButtonState(), 2);
    EXPECT_EQ(Ui().ibRecipeButton.ButtonState(), 2);
    EXPECT_EQ(Ui().ibPhotoButton.ToolTipText(), "");
    EXPECT_EQ(Ui().ibRecipeButton.ToolTipText(), "");
    screen.NormPhotoButton();
    screen.NormRecipeButton();
    EXPECT_EQ(Ui().ibPhotoButton.ButtonState(), 0);
    EXPECT_EQ(Ui().ibRecipeButton.ButtonState(), 0);
    EXPECT_EQ(Ui().ibPhotoButton.ToolTipText(), "Click to see recipe picture");
    EXPECT_EQ(Ui().ibRecipeButton.ToolTipText(), "Click to see recipe");
}

TEST_F(ScreenStatesTest, ADimmedRecipeButtonStillShowsTheRecipe) {
    ASSERT_TRUE(Start());
    Main().viewer.SetCurrentRecipe(Cod);
    Main().screen.DimRecipeButton();
    Click("ibRecipeButton");
    EXPECT_EQ(FirstLine(), "Cod");
    EXPECT_TRUE(Ui().rtbSee.Visible());
}

TEST_F(ScreenStatesTest, ThePhotoButtonDoesNothingOnARecipeWithoutAPicture) {
    ASSERT_TRUE(Start());
    ClickCategory("WHITE");
    const std::string before = Screen();
    Click("ibPhotoButton");
    EXPECT_EQ(Screen(), before);
}

TEST_F(ScreenStatesTest, ThePhotoButtonLeavesTheDescriptionOfARecipeWithAPicture) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Main().screen.EncyclopediaMode());
    Click("ibPhotoButton");
    EXPECT_FALSE(Main().screen.EncyclopediaMode());
    EXPECT_TRUE(Ui().rtbSee.Visible() || Ui().frPic.Visible());
}

TEST_F(ScreenStatesTest, AMissingOrBrokenSoundIsNoFailure) {
    ASSERT_TRUE(Start());
    Click("ibHelp");
    EXPECT_EQ(Ui().lblCategory.Caption(), "Help");
    Folder.Write("Click.wav", "no sound");
    Click("ibReset");
    EXPECT_EQ(Ui().lblCategory.Caption(), "MY FAVORITES");
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(ScreenStatesTest, ResetMovesTheCategoriesToTheTopAndSelectsTheFavourites) {
    for (int i = 0; i < 100; ++i)
        Book.Numbers("CATEGORY " + std::to_string(i)) = " 1 ";
    ASSERT_TRUE(Start());
    Focus(1);
    Key(Qt::Key_End);
    ASSERT_GT(Main().VList[0].CurrentIndex, 1);
    Click("ibReset");
    EXPECT_EQ(Main().VList[0].CurrentIndex, 1);
    EXPECT_EQ(SelectedLine(1), 1);
    EXPECT_EQ(Ui().lblCategory.Caption(), "MY FAVORITES");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 1}));
}

TEST_F(ScreenStatesTest, TheAddFindAndPrintButtonsLeaveTheScreenAsItIs) {
    ASSERT_TRUE(Start());
    const std::string before = Screen();
    for (const char* button : {"ibAdd", "ibSearch", "ibPrint"}) {
        Later([] {
            // The dialog behind Add holds the click until it is closed.
            if (QWidget* dialog = QApplication::activeModalWidget()) dialog->close();
        });
        Click(button);
        EXPECT_EQ(Screen(), before) << button;
    }
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(ScreenStatesTest, TheSpecialCategoriesShowTheirNameAndLeaveTheRecipesAsTheyAre) {
    ASSERT_TRUE(Start());
    for (const char* category : {"VIDEO", "KNOTS", "BUYING AND PREPARATION TIPS"}) {
        ClickCategory(category);
        EXPECT_EQ(Ui().lblCategory.Caption(), category);
        EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 1}));
        EXPECT_TRUE(List(2).Visible());
    }
}

TEST_F(ScreenStatesTest, ThePictureOfAnEmptyListDoesNothing) {
    ASSERT_TRUE(Start());
    ClickCategory("WHALES");
    const std::string before = Screen();
    Ui().imgPicture.OnClick();
    EXPECT_EQ(Screen(), before);
}

TEST_F(ScreenStatesTest, ThePictureBesideADescriptionOpensTheCurrentRecipe) {
    ASSERT_TRUE(Start());
    ClickCategory("WHITE");
    ASSERT_TRUE(Main().screen.EncyclopediaMode());
    Ui().imgPicture.OnClick();
    EXPECT_FALSE(Main().screen.EncyclopediaMode());
    EXPECT_EQ(FirstLine(), "Cod");
}

TEST_F(ScreenStatesTest, ThePictureOfARecipeGoesBackToItsText) {
    ASSERT_TRUE(Start());
    Main().viewer.SetCurrentRecipe(Salmon);
    Main().screen.SetEncyclopediaMode(false);
    Ui().rtbSee.SetVisible(false);
    Ui().frPic.SetVisible(true);
    Click("imgPicture");
    EXPECT_FALSE(Ui().frPic.Visible());
    EXPECT_TRUE(Ui().rtbSee.Visible());
    EXPECT_EQ(FirstLine(), "Salmon");
}

TEST_F(ScreenStatesTest, LeavingTheEncyclopediaTellsWhatAClickOnThePictureDoes) {
    ASSERT_TRUE(Start());
    Ui().imgPicture.SetToolTipText("");
    Main().screen.SetEncyclopediaMode(false);
    EXPECT_EQ(Ui().imgPicture.ToolTipText(), "Click to see recipe.");
}

TEST_F(ScreenStatesTest, TheLabelTicksTheBoxAndTakesTheTickAway) {
    ASSERT_TRUE(Start());
    Ui().lblJustWithPics.OnClick();
    EXPECT_EQ(Ui().chkJustWithPictures.Value(), 1);
    Ui().lblJustWithPics.OnClick();
    EXPECT_EQ(Ui().chkJustWithPictures.Value(), 0);
}

TEST_F(ScreenStatesTest, TickingTheBoxChangesNothingBeforeTheNextFill) {
    ASSERT_TRUE(Start());
    const std::string before = Screen();
    Ui().lblJustWithPics.OnClick();
    EXPECT_EQ(Screen(), before);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 1}));
}

TEST_F(ScreenStatesTest, HidingTakesEverythingOffTheScreen) {
    ASSERT_TRUE(Start());
    Main().screen.HideAll(true);
    EXPECT_TRUE(VisibleNames().empty());
    EXPECT_TRUE(Ui().window.Visible());
}

TEST_F(ScreenStatesTest, OnlyWhatWasVisibleComesBack) {
    ASSERT_TRUE(Start());
    const std::set<std::string> before = VisibleNames();
    Main().screen.HideAll(true);
    Main().screen.HideAll(false);
    EXPECT_EQ(VisibleNames(), before);
    PressLine(2, 2);
    const std::set<std::string> withText = VisibleNames();
    ASSERT_NE(withText, before);
    Main().screen.HideAll(true);
    Main().screen.HideAll(false);
    EXPECT_EQ(VisibleNames(), withText);
}

TEST_F(ScreenStatesTest, TheFocusComesBackWithWhatWasVisible) {
    ASSERT_TRUE(Start());
    Focus(2);
    Main().screen.HideAll(true);
    EXPECT_EQ(FocusedName(), "");
    Main().screen.HideAll(false);
    EXPECT_EQ(FocusedName(), "lvwX_2");
}

TEST_F(ScreenStatesTest, HidingTwiceRemembersWhatWasVisibleFirst) {
    ASSERT_TRUE(Start());
    const std::set<std::string> before = VisibleNames();
    Main().screen.HideAll(true);
    Main().screen.HideAll(true);
    Main().screen.HideAll(false);
    EXPECT_EQ(VisibleNames(), before);
}

TEST_F(ScreenStatesTest, AResizeDuringAHiddenStateRestoresOnlyWhatWasVisible) {
    ASSERT_TRUE(Start());
    const std::set<std::string> before = VisibleNames();
    Main().screen.HideAll(true);
    Main().layout.ResizeIt();
    Main().screen.HideAll(false);
    EXPECT_EQ(VisibleNames(), before);
}

TEST_F(ScreenStatesTest, AResizeDuringAHiddenStateShowsNothing) {
    ASSERT_TRUE(Start());
    PressLine(2, 2);
    Main().screen.HideAll(true);
    Main().layout.ResizeIt();
    EXPECT_TRUE(VisibleNames().empty());
}

TEST_F(ScreenStatesTest, AFlatButtonTakesThePictureOfItsKey) {
    ASSERT_TRUE(Start());
    Image& image = Ui().imgSortByName;
    Main().screen.DoButton(image, "ByNamePressed");
    EXPECT_EQ(image.Shown().Shared(), Ui().ImageList1.Item("ByNamePressed").Shared());
    Main().screen.DoButton(image, "ByName");
    EXPECT_EQ(image.Shown().Shared(), Ui().ImageList1.Item("ByName").Shared());
    EXPECT_NE(Ui().ImageList1.Item("ByName").Shared(),
              Ui().ImageList1.Item("ByNamePressed").Shared());
}

TEST_F(ScreenStatesTest, TheFamilyControlsTellThePlaceAndHideTheArrowsAtTheEnds) {
    ASSERT_TRUE(Start());
    ScreenStates& screen = Main().screen;
    screen.intFamilyFirst = 9;
    screen.intFamilyCount = 3;
    const auto shown = [&](int index) {
        screen.intFamilyIndex = static_cast<std::int16_t>(index);
        screen.ShowFamilyControls(true);
        return Ui().lblFamily.Caption() + (Ui().ibELeft.Visible() ? " left" : "") +
               (Ui().ibERight.Visible() ? " right" : "");
    };
    EXPECT_EQ(shown(8), "1 of 3 right");
    EXPECT_EQ(shown(7), "2 of 3 left right");
    EXPECT_EQ(shown(6), "3 of 3 left");
    screen.ShowFamilyControls(false);
    EXPECT_FALSE(Ui().lblFamily.Visible() || Ui().ibELeft.Visible() || Ui().ibERight.Visible());
    screen.intFamilyCount = 1;
    screen.ShowFamilyControls(true);
    EXPECT_FALSE(Ui().lblFamily.Visible() || Ui().ibELeft.Visible() || Ui().ibERight.Visible());
}

// The salmon's picture is there, and shows.
class ScreenStatesWithPhoto : public ScreenStatesTest {
  protected:
    void SetUp() override {
        QImage photo(80, 60, QImage::Format_RGB32);
        photo.fill(Qt::red);
        const std::string file = Folder.Native("Data/Food Photos/2.bmp");
        ASSERT_TRUE(photo.save(QString::fromStdString(file)));
        Book.Numbers("BOTH") = " 1 2 ";
        ASSERT_TRUE(Start());
    }
    // The whole screen with the picture on it, and its pixels within the frame.
    void ExpectPicture(const std::string& caption, int lines) {
        ExpectScreen(caption + " | " + std::to_string(lines) +
                     " lines | picture | [# 2] Recipe normal, Photo dimmed |");
        const QImage look = Ui().frPic.Native()->grab().toImage();
        ASSERT_FALSE(look.isNull());
        EXPECT_EQ(look.pixelColor(look.rect().center()), QColor(Qt::red));
    }
    void ExpectText(const std::string& caption, int lines) {
        ExpectScreen(caption + " | " + std::to_string(lines) +
                     " lines | text of Salmon | [# 2] Recipe dimmed, Photo normal |");
    }
};

TEST_F(ScreenStatesWithPhoto, AllRecipesWithPicturesOpensOnThePicture) {
    ClickCategory("ALL RECIPES WITH PICTURES");
    ExpectPicture("ALL RECIPES WITH PICTURES", 1);
}

TEST_F(ScreenStatesWithPhoto, AnotherRecipeOpensOnItsPictureOrElseOnItsText) {
    ClickCategory("BOTH");
    PressLine(2, 2);
    ExpectPicture("     BOTH", 2);
    PressLine(2, 1);
    ExpectScreen("     BOTH | 2 lines | text of Cod | [# 1] Recipe dimmed, Photo dimmed |");
    PressLine(2, 2);
    ExpectPicture("     BOTH", 2);
}

TEST_F(ScreenStatesWithPhoto, TheCurrentLineAgainGoesFromThePictureToTheTextAndBack) {
    ClickCategory("BOTH");
    PressLine(2, 2);
    PressLine(2, 2);
    ExpectText("     BOTH", 2);
    PressLine(2, 2);
    ExpectPicture("     BOTH", 2);
}

TEST_F(ScreenStatesWithPhoto, TheButtonsGoFromThePictureToTheTextAndBack) {
    ClickCategory("BOTH");
    PressLine(2, 2);
    Click("ibRecipeButton");
    ExpectText("     BOTH", 2);
    Click("ibPhotoButton");
    ExpectPicture("     BOTH", 2);
}

TEST_F(ScreenStatesWithPhoto, AClickOnThePictureGoesToTheText) {
    ClickCategory("BOTH");
    PressLine(2, 2);
    Click("imgPicture");
    ExpectText("     BOTH", 2);
}

TEST_F(ScreenStatesWithPhoto, ThePictureBesideADescriptionOpensThePicture) {
    ClickCategory("MY FAVORITES");
    ASSERT_TRUE(Main().screen.EncyclopediaMode());
    Ui().imgPicture.OnClick();
    ExpectPicture("MY FAVORITES", 2);
}

TEST_F(ScreenStatesWithPhoto, ALineBesideADescriptionOpensThePictureOfTheCurrentRecipeToo) {
    ClickCategory("MY FAVORITES");
    ASSERT_TRUE(Main().screen.EncyclopediaMode());
    ASSERT_EQ(Main().viewer.CurrentRecipe(), Salmon);
    PressLine(2, 1);
    ExpectPicture("MY FAVORITES", 2);
}

TEST_F(ScreenStatesWithPhoto, ThePhotoButtonLeavesADescriptionForThePicture) {
    ClickCategory("MY FAVORITES");
    Click("ibPhotoButton");
    ExpectPicture("MY FAVORITES", 2);
}

}  // namespace
}  // namespace larder::test
