#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

// What a test hears: the click of buttons and list lines, and what it finds done by then.
class ClicksTest : public MainWindowFixture {
  protected:
    ClicksTest() {
        Book.AddManyStock(5);
        Book.Numbers("MY FAVORITES") = " 3 1 2 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 3 ";
        Book.Numbers("COD") = " 4 5 ";
    }
    void StartListening() {
        ASSERT_TRUE(Start());
        Main().sound.OnPlay = [this](const std::string& path) {
            heard_.push_back(path);
            if (atSound_) before_.push_back(atSound_());
        };
    }
    // How many clicks `act` gives.
    int Clicks(const std::function<void()>& act) {
        heard_.clear();
        act();
        return static_cast<int>(heard_.size());
    }
    MainControls& Ui() { return Main().ui; }

    std::vector<std::string> heard_;
    std::function<std::string()> atSound_;  // looks at the screen while the sound begins
    std::vector<std::string> before_;
};

TEST_F(ClicksTest, EveryButtonClicksOnceWhenItIsPressed) {
    StartListening();
    for (const char* button : {"ibRecipeButton", "ibPhotoButton", "ibReset", "ibAdd", "ibSearch",
                               "ibHelp", "ibPrint", "ibNext", "ibBack", "ibExit"}) {
        Later([] {
            // The dialog behind Add holds the click until it is closed.
            if (QWidget* dialog = QApplication::activeModalWidget()) dialog->close();
        });
        EXPECT_EQ(Clicks([&] { Click(button); }), 1) << button;
    }
    EXPECT_FALSE(Ui().window.Visible()) << "the last one ends the program";
}

TEST_F(ClicksTest, TheSoundComesBeforeWhatTheButtonDoes) {
    StartListening();
    atSound_ = [this] { return Ui().lblCategory.Caption() + Ui().lblRecipeNum.Caption(); };
    Focus(2);
    for (const char* button : {"ibNext", "ibHelp", "ibReset"})
        Click(button);
    EXPECT_EQ(before_, (std::vector<std::string>{"MY FAVORITES# 3", "MY FAVORITES# 1", "Help# 1"}));
}

TEST_F(ClicksTest, APressOnALineClicksBeforeTheLineOpens) {
    StartListening();
    atSound_ = [this] { return Ui().lblCategory.Caption() + Ui().lblRecipeNum.Caption(); };
    EXPECT_EQ(Clicks([&] { PressLine(2, 2); }), 1);
    EXPECT_EQ(Clicks([&] { ClickCategory("COD"); }), 1);
    EXPECT_EQ(before_, (std::vector<std::string>{"MY FAVORITES# 3", "MY FAVORITES# 1"}));
    EXPECT_EQ(Ui().lblCategory.Caption(), "     COD");
}

TEST_F(ClicksTest, APressBelowTheLastLineIsSilent) {
    StartListening();
    ASSERT_GT(Fit(2), 4);
    EXPECT_EQ(Clicks([&] { PressLine(2, 4); }), 0);
}

TEST_F(ClicksTest, ThePhotoButtonOfARecipeWithoutAPictureClicksAndDoesNothingElse) {
    StartListening();
    PressLine(2, 2);
    ASSERT_EQ(Main().viewer.CurrentRecipe(), 1);
    ASSERT_TRUE(Ui().rtbSee.Visible());
    EXPECT_EQ(Clicks([&] { Click("ibPhotoButton"); }), 1);
    EXPECT_TRUE(Ui().rtbSee.Visible());
    EXPECT_FALSE(Ui().frPic.Visible());
}

TEST_F(ClicksTest, ThePressedLookOfAFlatButtonIsSilentAndItsReturnSounds) {
    StartListening();
    EXPECT_EQ(Clicks([&] { Main().screen.DoButton(Ui().imgSortByName, "ByNamePressed"); }), 0);
    EXPECT_EQ(Clicks([&] { Main().screen.DoButton(Ui().imgSortByName, "bynumPRESSED"); }), 0);
    EXPECT_EQ(Clicks([&] { Main().screen.DoButton(Ui().imgSortByName, "ByName"); }), 1);
}

TEST_F(ClicksTest, ASortPictureClicksWhenItIsReleased) {
    StartListening();
    for (const char* picture : {"imgSortByName", "imgSortByNum"}) {
        EXPECT_EQ(Clicks([&] { QTest::mousePress(Widget(picture), Qt::LeftButton); }), 0);
        EXPECT_EQ(Clicks([&] { QTest::mouseRelease(Widget(picture), Qt::LeftButton); }), 1);
    }
}

TEST_F(ClicksTest, ThePictureTheStarAndTheMenuClick) {
    StartListening();
    PressLine(2, 2);
    EXPECT_EQ(Clicks([&] { Ui().imgPicture.OnClick(); }), 1);
    EXPECT_EQ(Clicks([&] { Click("imgAddToFavorites"); }), 1);
    EXPECT_EQ(Clicks([&] { Ui().mnuPopUpAddToFavorites.OnClick(); }), 1);
    EXPECT_EQ(Clicks([&] { Ui().mnuPopUpRemoveFromFavorites.OnClick(); }), 1);
}

TEST_F(ClicksTest, TheKeysOfButtonsClickAsTheButtonsDo) {
    StartListening();
    Focus(2);
    EXPECT_EQ(Clicks([&] { Key(Qt::Key_N, Qt::AltModifier); }), 1);
    EXPECT_EQ(Clicks([&] { Key(Qt::Key_B, Qt::AltModifier); }), 1);
    EXPECT_EQ(Clicks([&] { Key(Qt::Key_F1); }), 1);
    EXPECT_EQ(Clicks([&] { Key(Qt::Key_F, Qt::ControlModifier); }), 1);
}

TEST_F(ClicksTest, TheSoundIsTheFileBesideTheDataFolderInWhateverCase) {
    StartListening();
    Folder.Write("click.WAV", "a sound");
    Click("ibHelp");
    EXPECT_EQ(heard_, std::vector<std::string>{Folder.Native("click.WAV")});
    Folder.Write("Click.wav", "a sound");
    EXPECT_EQ(Clicks([&] { Click("ibHelp"); }), 1);
    EXPECT_EQ(heard_, std::vector<std::string>{Folder.Native("Click.wav")});
}

TEST_F(ClicksTest, TheSoundIsFoundInAFolderThatTheCodePageCannotSpell) {
    Book.WriteTo(Folder);
    Folder.MakeFolder("魚の本");
    Folder.Rename("Data", "魚の本/Data");
    Folder.Write("魚の本/CLICK.WAV", "a sound");
    application->StartAgain(Folder.Native("魚の本"), "");
    frmMain main(*application, Boxes, Machine);
    ASSERT_TRUE(main.Load());
    std::string heard;
    main.sound.OnPlay = [&](const std::string& path) { heard = path; };
    main.SoundClick();
    EXPECT_EQ(heard, Folder.Native("魚の本/CLICK.WAV"));
}

// A sound that raises a failure stands for whatever may go wrong in a handler.
class AFailureInAHandler : public ClicksTest {
  protected:
    void SetUp() override {
        ASSERT_TRUE(Start());
        Main().sound.OnPlay = [this](const std::string& path) {
            heard_.push_back(path);
            throw Failure(failure::FileNotFound, "test");
        };
        application->OnFailure = [this](const Failure& f) { reported_.push_back(f.Source); };
    }
    void TearDown() override { application->OnFailure = nullptr; }

    std::vector<std::string> reported_;
};

TEST_F(AFailureInAHandler, OfAButtonEndsItQuietly) {
    for (const char* button : {"ibRecipeButton", "ibPhotoButton", "ibReset", "ibAdd", "ibSearch",
                               "ibHelp", "ibPrint", "ibNext", "ibBack", "ibExit"}) {
        Click(button);
        EXPECT_EQ(heard_.size(), 1U) << button;
        EXPECT_TRUE(reported_.empty()) << button;
        heard_.clear();
        reported_.clear();
    }
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(AFailureInAHandler, OfAPictureEndsItQuietly) {
    for (const char* picture : {"imgSortByName", "imgSortByNum", "imgAddToFavorites"}) {
        Click(picture);
        EXPECT_GE(heard_.size(), 1U) << picture;
        EXPECT_TRUE(reported_.empty()) << picture;
        heard_.clear();
        reported_.clear();
    }
    EXPECT_NO_THROW(Ui().imgPicture.OnClick());
    EXPECT_NO_THROW(Ui().mnuPopUpAddToFavorites.OnClick());
    EXPECT_NO_THROW(Ui().mnuPopUpRemoveFromFavorites.OnClick());
    EXPECT_EQ(heard_.size(), 3U);
}

}  // namespace
}  // namespace larder::test
