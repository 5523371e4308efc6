#include "app/MainEvents.h"

#include <QTest>
#include <QWidget>
#include <functional>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "behaviour/support/MouseMoves.h"
#include "platform/Keys.h"

namespace larder::test {
namespace {

class MainEventsTest : public MainWindowFixture {
  protected:
    MainEventsTest() {
        Book.AddManyStock(5);
        Book.Numbers("MY FAVORITES") = " 3 1 2 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 3 ";
        Book.Numbers("COD") = " 4 5 ";
    }

    MainControls& Ui() { return Main().ui; }

    // Counts the clicks of a button instead of what they do.
    int& CountClicks(ImageButton& button) {
        clicks_ = 0;
        button.OnClick = [this] { ++clicks_; };
        return clicks_;
    }

    // Brings the focus to each control that can have it, and calls `act` there.
    template <typename Act>
    void FromEverywhere(Act act) {
        Ui().rtbSee.SetVisible(true);
        int places = 0;
        for (Control* control : Ui().window.Controls()) {
            if (Ignoring([&] { control->SetFocus(); }) != 0 || !control->HasFocus()) continue;
            ++places;
            act(FocusedName());
        }
        EXPECT_GE(places, 10);
    }

    // What is left of a key after the window has looked at it.
    int Left(int code, int shiftKeys = 0) {
        Ui().window.OnKeyDown(code, shiftKeys);
        return code;
    }

  private:
    int clicks_ = 0;
};

TEST_F(MainEventsTest, EnterInTheCategoriesOpensTheSelectedCategory) {
    ASSERT_TRUE(Start());
    Focus(1);
    for (int i = 0; i < 6; ++i)
        Key(Qt::Key_Down);
    EXPECT_EQ(Ui().lblCategory.Caption(), "MY FAVORITES");
    Key(Qt::Key_Return);
    EXPECT_EQ(Ui().lblCategory.Caption(), "     COD");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{4, 5}));
}

TEST_F(MainEventsTest, EnterInTheRecipesOpensTheSelectedRecipe) {
    ASSERT_TRUE(Start());
    Focus(2);
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 1);
    EXPECT_TRUE(Ui().rtbSee.Visible());
}

TEST_F(MainEventsTest, EnterFromAnyOtherControlOpensTheSelectedRecipe) {
    ASSERT_TRUE(Start());
    Main().lists.SelectLine(2, 3);
    Ui().chkFocusCatcher.SetFocus();
    Key(Qt::Key_Enter);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
}

TEST_F(MainEventsTest, EnterOnAButtonDoesNotPressItToo) {
    ASSERT_TRUE(Start());
    int& clicks = CountClicks(Ui().ibPrint);
    Main().lists.SelectLine(2, 2);
    Ui().ibPrint.SetFocus();
    Key(Qt::Key_Return);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 1);
}

TEST_F(MainEventsTest, SpaceStillPressesTheButtonWithTheFocus) {
    ASSERT_TRUE(Start());
    int& clicks = CountClicks(Ui().ibPrint);
    Ui().ibPrint.SetFocus();
    Key(Qt::Key_Space);
    EXPECT_EQ(clicks, 1);
}

TEST_F(MainEventsTest, EnterWithAnEmptyListDoesNothing) {
    Book.Numbers("MY FAVORITES") = " ";
    ASSERT_TRUE(Start());
    Focus(2);
    Key(Qt::Key_Return);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_FALSE(Ui().rtbSee.Visible());
}

TEST_F(MainEventsTest, F1IsTheHelpButtonFromEverywhere) {
    ASSERT_TRUE(Start());
    int& clicks = CountClicks(Ui().ibHelp);
    FromEverywhere([&](const std::string& place) {
        clicks = 0;
        Key(Qt::Key_F1);
        EXPECT_EQ(clicks, 1) << place;
    });
}

TEST_F(MainEventsTest, CtrlFIsTheFindButtonFromEverywhere) {
    ASSERT_TRUE(Start());
    int& clicks = CountClicks(Ui().ibSearch);
    FromEverywhere([&](const std::string& place) {
        clicks = 0;
        Key(Qt::Key_F, Qt::ControlModifier);
        EXPECT_EQ(clicks, 1) << place;
    });
}

TEST_F(MainEventsTest, AltNAndAltBAreNextAndBackFromEverywhere) {
    ASSERT_TRUE(Start());
    FromEverywhere([&](const std::string& place) {
        int& next = CountClicks(Ui().ibNext);
        Key(Qt::Key_N, Qt::AltModifier);
        EXPECT_EQ(next, 1) << place;
        int& back = CountClicks(Ui().ibBack);
        Key(Qt::Key_B, Qt::AltModifier);
        EXPECT_EQ(back, 1) << place;
    });
}

TEST_F(MainEventsTest, TheLettersWithoutTheirShiftKeysDoNothing) {
    ASSERT_TRUE(Start());
    int& clicks = CountClicks(Ui().ibSearch);
    Ui().ibNext.OnClick = Ui().ibBack.OnClick = Ui().ibHelp.OnClick = Ui().ibSearch.OnClick;
    Focus(2);
    for (const Qt::Key letter : {Qt::Key_F, Qt::Key_N, Qt::Key_B, Qt::Key_E, Qt::Key_H}) {
        Key(letter);
        Key(letter, Qt::ShiftModifier);
    }
    EXPECT_EQ(clicks, 0);
}

TEST_F(MainEventsTest, AltNInTheCategoriesWalksToTheNextCategory) {
    ASSERT_TRUE(Start());
    Focus(1);
    Key(Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(SelectedLine(1), 2);
    EXPECT_EQ(Ui().lblCategory.Caption(), "BUYING AND PREPARATION TIPS");
    EXPECT_EQ(FocusedName(), "lvwX_1");
    Key(Qt::Key_B, Qt::AltModifier);
    EXPECT_EQ(Ui().lblCategory.Caption(), "MY FAVORITES");
}

TEST_F(MainEventsTest, AltNOutsideTheCategoriesWalksToTheNextRecipe) {
    ASSERT_TRUE(Start());
    Focus(2);
    Key(Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 1);
    EXPECT_TRUE(Ui().rtbSee.Visible());
    Key(Qt::Key_B, Qt::AltModifier);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 3);
}

TEST_F(MainEventsTest, AKeyThatTheWindowActsOnIsConsumed) {
    ASSERT_TRUE(Start());
    Focus(2);
    EXPECT_EQ(Left(key::Enter), key::None);
    EXPECT_EQ(Left(key::F1), key::None);
    EXPECT_EQ(Left(key::F, shift::Ctrl), key::None);
    EXPECT_EQ(Left(key::F, shift::Ctrl | shift::Shift), key::None);
    EXPECT_EQ(Left(key::N, shift::Alt), key::None);
    EXPECT_EQ(Left(key::B, shift::Alt), key::None);
}

TEST_F(MainEventsTest, AKeyThatTheWindowDoesNotActOnGoesToItsControl) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(Left(key::F), key::F);
    EXPECT_EQ(Left(key::N, shift::Ctrl), key::N);
    EXPECT_EQ(Left(key::B), key::B);
    EXPECT_EQ(Left(key::Down), key::Down);
    EXPECT_EQ(Left(key::Space), key::Space);
}

TEST_F(MainEventsTest, EInTheRecipesIsIgnoredOutsideTheMaintenanceMode) {
    ASSERT_TRUE(Start());
    PressLine(2, 2);
    const std::string before = Ui().rtbSee.TextRTF();
    Focus(2);
    Key(Qt::Key_E);
    EXPECT_EQ(Ui().rtbSee.TextRTF(), before);
    EXPECT_EQ(FocusedName(), "lvwX_2");
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(MainEventsTest, EInTheRecipesIsConsumedInTheMaintenanceMode) {
    ASSERT_TRUE(Start("/E"));
    Focus(2);
    EXPECT_EQ(Left(key::E), key::None);
    Focus(1);
    EXPECT_EQ(Left(key::E), key::E);
}

TEST_F(MainEventsTest, EInTheUnlockedViewerIsText) {
    ASSERT_TRUE(Start("/E"));
    PressLine(2, 2);
    Ui().rtbSee.SetFocus();
    Ui().rtbSee.SetSelStart(0);
    Key(Qt::Key_E);
    EXPECT_EQ(Ui().rtbSee.Text().substr(0, 6), "eStock");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 1);
}

TEST_F(MainEventsTest, EnterInTheUnlockedViewerIsText) {
    ASSERT_TRUE(Start("/E"));
    PressLine(2, 2);
    Ui().rtbSee.SetFocus();
    Ui().rtbSee.SetSelStart(5);
    Key(Qt::Key_Return);
    EXPECT_EQ(Ui().rtbSee.Text().substr(0, 8), "Stock\r\n ");
}

TEST_F(MainEventsTest, TypingMakesTheRecipeModifiedAndFillingDoesNot) {
    ASSERT_TRUE(Start("/E"));
    PressLine(2, 2);
    EXPECT_FALSE(Main().viewer.Modified);
    Ui().rtbSee.SetFocus();
    Key(Qt::Key_X);
    EXPECT_TRUE(Main().viewer.Modified);
    PressLine(2, 3);
    EXPECT_FALSE(Main().viewer.Modified);
}

TEST_F(MainEventsTest, AFailureInWhatAKeyDoesIsIgnored) {
    ASSERT_TRUE(Start());
    std::string reported;
    application->OnFailure = [&](const Failure& f) { reported = f.Source; };
    Ui().ibHelp.OnClick = [] { throw Failure(failure::FileNotFound, "help"); };
    Focus(2);
    Key(Qt::Key_F1);
    application->OnFailure = nullptr;
    EXPECT_EQ(reported, "");
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(MainEventsTest, NextAndBackPressedWithTheMouseLeaveTheFocusWhereItIs) {
    ASSERT_TRUE(Start());
    Focus(1);
    Click("ibNext");
    EXPECT_EQ(FocusedName(), "lvwX_1");
    EXPECT_EQ(SelectedLine(1), 2);
    Focus(2);
    Click("ibNext");
    EXPECT_EQ(FocusedName(), "lvwX_2");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 1);
    Click("ibBack");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 3);
}

TEST_F(MainEventsTest, TheStarAddsTheCurrentRecipeToTheFavourites) {
    ASSERT_TRUE(Start());
    ClickCategory("COD");
    PressLine(2, 2);
    Click("imgAddToFavorites");
    EXPECT_NE(Folder.Read("Data/Categories.ctg").find("MY FAVORITES\r\n 3 1 2 5 \r\n"),
              std::string::npos);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{4, 5}));
}

TEST_F(MainEventsTest, APictureThatIsAButtonShowsThatItIsPressed) {
    ASSERT_TRUE(Start());
    for (const Image* image : {&Ui().imgSortByName, &Ui().imgSortByNum, &Ui().imgAddToFavorites}) {
        const auto normal = image->Shown().Shared();
        QTest::mousePress(image->Native(), Qt::LeftButton);
        EXPECT_NE(image->Shown().Shared(), normal) << image->Name();
        QTest::mouseRelease(image->Native(), Qt::LeftButton);
        EXPECT_EQ(image->Shown().Shared(), normal) << image->Name();
    }
}

TEST_F(MainEventsTest, APictureWhoseReleaseIsLostDuringAPressDoesNotStayPressed) {
    ASSERT_TRUE(Start());
    for (const Image* image : {&Ui().imgSortByName, &Ui().imgSortByNum, &Ui().imgAddToFavorites}) {
        const std::vector<std::function<void()>> loseTheRelease = {
            [&] {
                Main().screen.HideAll(true);
                Main().screen.HideAll(false);
            },
            [&] {
                image->Native()->setEnabled(false);
                image->Native()->setEnabled(true);
            },
            [&] { MoveWith(image->Native(), Qt::NoButton); },
        };
        const auto normal = image->Shown().Shared();
        for (const auto& lose : loseTheRelease) {
            QTest::mousePress(image->Native(), Qt::LeftButton);
            ASSERT_NE(image->Shown().Shared(), normal) << image->Name();
            MoveWith(image->Native(), Qt::LeftButton);
            ASSERT_NE(image->Shown().Shared(), normal) << image->Name();
            lose();
            EXPECT_EQ(image->Shown().Shared(), normal) << image->Name();
            QTest::mouseRelease(image->Native(), Qt::LeftButton);
        }
    }
}

TEST_F(MainEventsTest, TheSortPicturesSortTheLinesAndASecondPressTurnsThemRound) {
    const int pike = Book.AddStock("Pike");
    const int bream = Book.AddStock("Bream");
    const int tench = Book.AddStock("Tench");
    const auto numbers = [](std::initializer_list<int> all) {
        std::string text = " ";
        for (const int number : all)
            text += std::to_string(number) + " ";
        return text;
    };
    Book.Numbers("MY FAVORITES") = numbers({tench, pike, bream});
    ASSERT_TRUE(Start());
    Click("imgSortByName");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{bream, pike, tench}));
    Click("imgSortByName");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{tench, pike, bream}));
    Click("imgSortByNum");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{pike, bream, tench}));
    Click("imgSortByNum");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{tench, bream, pike}));
}

TEST_F(MainEventsTest, AResizeLaysTheWindowOutAnew) {
    ASSERT_TRUE(Start());
    Ui().window.SetWindowState(Window::Normal);
    Ui().window.SetClientSize(900 * TwipsPerPixel, 640 * TwipsPerPixel);
    EXPECT_TRUE(WaitUntil([&] {
        return Ui().ibExit.Left() + Ui().ibExit.Width() < 900 * TwipsPerPixel &&
               Ui().ibExit.Left() > 700 * TwipsPerPixel;
    }));
}

}  // namespace
}  // namespace larder::test
