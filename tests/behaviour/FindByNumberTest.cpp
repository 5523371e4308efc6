#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QString>
#include <string>
#include <vector>

#include "behaviour/support/SearchBook.h"

namespace larder::test {
namespace {

class ByNumber : public SearchBook {
  protected:
    void SetUp() override {
        AddSmallBook();
        ASSERT_TRUE(StartWithIndex());
        OpenDialog();
    }
    std::int32_t Current() { return Main().viewer.CurrentRecipe(); }
    std::string Text() { return Main().ui.rtbSee.Text(); }
};

TEST_F(ByNumber, ANumberShowsItsRecipeAndLeavesTheList) {
    const std::vector<int> before = ShownNumbers();
    FindNumber("3");
    EXPECT_EQ(Current(), 3);
    EXPECT_TRUE(Text().starts_with("Dill Sauce"));
    EXPECT_EQ(ShownNumbers(), before);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
    EXPECT_EQ(Main().strLastRecipeCategory, "SEARCH");
}

TEST_F(ByNumber, ARecipeWithAPictureOpensOnItAsItDoesAmongTheWords) {
    QImage photo(80, 60, QImage::Format_RGB32);
    photo.fill(Qt::blue);
    ASSERT_TRUE(photo.save(QString::fromStdString(Folder.Native("Data/Food Photos/3.bmp"))));
    const auto pictureOnView = [&] {
        return Main().ui.frPic.Visible() && !Main().ui.rtbSee.Visible();
    };
    FindNumber("3");
    EXPECT_TRUE(pictureOnView());
    FindNumber("2");
    EXPECT_FALSE(pictureOnView());
    Press(Qt::Key_W, Qt::AltModifier);
    FindWords("sauce");
    EXPECT_TRUE(pictureOnView());
}

TEST_F(ByNumber, ANumberPastedWithItsLineEndIsThatNumber) {
    FindNumber("2");
    QApplication::clipboard()->setText("3\n");
    TypeAnew("");
    Press(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(Dialog().rtbSearch2.Text(), "3\r\n");
    Press(Qt::Key_Return);
    EXPECT_EQ(Current(), 3);
}

TEST_F(ByNumber, ANumberLeavesTheWordsOfTheLastSearch) {
    FindWords("salmon");
    FindNumber("2");
    EXPECT_EQ(Main().strLastSearchWords, "salmon");
    RichTextBox& box = Main().ui.rtbSee;
    box.SetSelStart(static_cast<std::int32_t>(Text().find("salmon")));
    box.SetSelLength(6);
    EXPECT_EQ(box.SelColor(), 0xFF0000) << "they are coloured";
}

TEST_F(ByNumber, TheLastNumberIsARecipe) {
    FindNumber("8");
    EXPECT_EQ(Current(), 8);
    EXPECT_TRUE(Text().starts_with("Own Eel"));
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(ByNumber, ANumberThatNoRecipeHasIsTold) {
    FindNumber("2");
    const std::string shown = Text();
    int told = 0;
    for (const char* number : {"0", "-5", "400", "9", "99999999999", "1e40"}) {
        FindNumber(number);
        ASSERT_EQ(static_cast<int>(Boxes.Shown.size()), ++told) << number;
        const ScriptedDialogs::Box& box = Boxes.Shown.back();
        EXPECT_EQ(box.Text, "Recipe number " + std::string(number) +
                                " does not exist.\rA correct number should be between 1 and 8");
        EXPECT_EQ(Text(), shown) << number;
        EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
    }
}

// The current recipe takes a number that is none of the book's only where it is one that it may
// have: 0 and -1 stand for no recipe.
TEST_F(ByNumber, AWrongNumberIsTheCurrentRecipeOnlyWhenItStandsForNone) {
    struct Typed {
        const char* Text;
        std::int32_t Current;
    };
    for (const Typed& typed : {Typed{"0", 0},
                               {"-1", -1},
                               {"-5", 2},
                               {"400", 2},
                               {"9", 2},
                               {"99999999999", 2},
                               {"-99999999999", 2}}) {
        FindNumber("2");
        ASSERT_EQ(Current(), 2);
        const auto told = Boxes.Shown.size();
        FindNumber(typed.Text);
        EXPECT_EQ(Boxes.Shown.size(), told + 1) << typed.Text;
        EXPECT_EQ(Current(), typed.Current) << typed.Text;
        EXPECT_TRUE(Text().starts_with("Salmon Steaks")) << typed.Text;
    }
}

TEST_F(ByNumber, AWrongNumberLeavesTheListAndItsBar) {
    FindWords("salmon");
    PressLine(2, 3);
    const std::vector<int> before = ShownNumbers();
    const std::string found = Found();
    FindNumber("400");
    EXPECT_EQ(ShownNumbers(), before);
    EXPECT_EQ(SelectedLine(2), 3);
    EXPECT_EQ(Found(), found);
    EXPECT_EQ(Main().strLastSearchWords, "salmon");
}

TEST_F(ByNumber, TheRecipeShownStaysAfterAWrongNumberAndTheNextFindWorks) {
    FindNumber("0");
    FindNumber("3");
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Current(), 3);
}

TEST_F(ByNumber, TextThatIsNoNumberShowsTheOldRecipe) {
    FindNumber("3");
    Main().ui.rtbSee.SetText("");
    FindNumber("salmon");
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(Current(), 3);
    EXPECT_TRUE(Text().starts_with("Dill Sauce"));
}

TEST_F(ByNumber, TextThatIsNoNumberIsToldWhenThereIsNoOldRecipe) {
    Main().viewer.SetCurrentRecipe(-1);
    FindNumber("salmon");
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_TRUE(Boxes.Shown[0].Text.starts_with("Recipe number salmon does not exist."));
}

TEST_F(ByNumber, AFractionIsRoundedBeforeItIsTested) {
    FindNumber("0.6");
    EXPECT_EQ(Current(), 1);
    FindNumber("8.4");
    EXPECT_EQ(Current(), 8);
    EXPECT_TRUE(Boxes.Shown.empty());
    FindNumber("8.6");
    EXPECT_EQ(Boxes.Shown.size(), 1U);
}

}  // namespace
}  // namespace larder::test
