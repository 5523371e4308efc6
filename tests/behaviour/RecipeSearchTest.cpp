#include "search/RecipeSearch.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "behaviour/support/SearchBook.h"
#include "platform/Text.h"
#include "store/FileNumbers.h"

namespace larder::test {
namespace {

using Numbers = std::vector<int>;

class Search : public SearchBook {
  protected:
    void SetUp() override {
        AddSmallBook();
        ASSERT_TRUE(StartWithIndex());
        OpenDialog();
    }
    std::int32_t Current() { return Main().viewer.CurrentRecipe(); }
    std::string Tag() { return Main().ui.lvwX2.Tag; }
    std::string Text() { return Main().ui.rtbSee.Text(); }
    std::int32_t ColorOf(const std::string& text, int nth = 1) {
        RichTextBox& box = Main().ui.rtbSee;
        std::size_t place = box.Text().find(text);
        for (int i = 1; i < nth; ++i)
            place = box.Text().find(text, place + 1);
        EXPECT_NE(place, std::string::npos) << text;
        box.SetSelStart(static_cast<std::int32_t>(place));
        box.SetSelLength(static_cast<std::int32_t>(text.size()));
        return box.SelColor().value_or(-1);
    }
};

constexpr std::int32_t FoundColor = 0xFF0000;

TEST_F(Search, TheResultIsOnTheScreenWithItsFirstRecipeShown) {
    FindWords("salmon dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 4, 7}));
    EXPECT_EQ(Shown(2), (std::vector<std::string>{"Salmon Steaks", "Smoked Trout", "My Salmon"}));
    EXPECT_EQ(Tag(), " 2 4 7 ");
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(Found(), "3 recipes found ");
    EXPECT_EQ(Current(), 2);
    EXPECT_TRUE(Text().starts_with("Salmon Steaks"));
    EXPECT_TRUE(Main().ui.lvwX2.Visible());
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(Search, TheListIsCalledSearch) {
    FindWords("salmon");
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
    EXPECT_EQ(Main().strLastRecipeCategory, "SEARCH");
}

TEST_F(Search, TheWordsAreColouredWhereTheyFirstStandBehindTheTitle) {
    FindWords("salmon dill");
    EXPECT_EQ(Main().strLastSearchWords, "salmon dill");
    EXPECT_NE(ColorOf("Salmon Steaks"), FoundColor) << "the title";
    EXPECT_EQ(ColorOf("dill", 1), FoundColor);
    EXPECT_EQ(ColorOf("salmon", 1), FoundColor);
    EXPECT_NE(ColorOf("dill", 2), FoundColor) << "only the first is coloured";
}

TEST_F(Search, StopWordsAreColouredToo) {
    FindWords("salmon and dill");
    EXPECT_EQ(ColorOf("and"), FoundColor);
}

TEST_F(Search, SalmonAndDillGivesTheStockOfSalmonCommaDill) {
    FindWords("salmon and dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 4}));
    FindWords("Salmon, dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 4, 7}));
    EXPECT_EQ(Dialog().rtbSearch1.Text(), "Salmon, dill") << "the query is worked on as a copy";
    FindWords("salmon AND dill");
    EXPECT_EQ(ShownNumbers(), Numbers{});
}

TEST_F(Search, ADeletedRecipeIsNoHit) {
    FindWords("salmon");
    EXPECT_EQ(ShownNumbers(), (Numbers{1, 2, 4, 6, 7}));
    EXPECT_EQ(Found(), "5 recipes found ");
}

TEST_F(Search, WithoutAHitTheListIsEmptyAndTheRecipeStays) {
    FindWords("dill");
    ASSERT_EQ(Current(), 2);
    FindWords("unicorn");
    EXPECT_EQ(Main().ui.lvwX2.Count(), 0);
    EXPECT_EQ(Tag(), "");
    EXPECT_EQ(Found(), "0 recipes found ");
    EXPECT_EQ(Current(), 2);
    EXPECT_TRUE(Text().starts_with("Salmon Steaks"));
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
}

TEST_F(Search, StopWordsAloneChangeOnlyCaptions) {
    ClickCategory("SAUCES");
    FindWords("and the");
    EXPECT_EQ(ShownNumbers(), (Numbers{3, 4, 7}));
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
    EXPECT_EQ(Tag(), " 3 4 7 ");
}

TEST_F(Search, TheSearchCanBeKeptWithinTheList) {
    ClickCategory("SAUCES");
    Press(Qt::Key_O, Qt::AltModifier);
    FindWords("salmon");
    EXPECT_EQ(ShownNumbers(), (Numbers{4, 7}));
}

TEST_F(Search, NarrowingASearchKeepsTheEarlierWordsColoured) {
    FindWords("salmon");
    Click("lblChkBox");
    FindWords("dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 4, 7}));
    EXPECT_EQ(Main().strLastSearchWords, "dill salmon");
    EXPECT_EQ(ColorOf("dill"), FoundColor);
    EXPECT_EQ(ColorOf("salmon", 1), FoundColor);
    Click("lblChkBox");
    FindWords("dill");
    EXPECT_EQ(Main().strLastSearchWords, "dill");
}

TEST_F(Search, WithinAllRecipesTheCheckBoxCountsAsOff) {
    ClickCategory("ALL RECIPES");
    ASSERT_EQ(Tag(), "*");
    Click("lblChkBox");
    FindWords("dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 3, 4, 7}));
}

TEST_F(Search, WithinTheFavouritesTheirOrderStaysAndTheFirstIsLost) {
    Click("lblChkBox");
    ASSERT_EQ(Main().strLastRecipeCategory, "MY FAVORITES");
    FindWords("salmon");
    EXPECT_EQ(ShownNumbers(), (Numbers{4, 2})) << "they are the shortest term here";
}

TEST_F(Search, WithinAnEmptyListNothingIsFound) {
    ClickCategory("EMPTY");
    Click("lblChkBox");
    FindWords("salmon");
    EXPECT_EQ(ShownNumbers(), Numbers{});
    EXPECT_EQ(Found(), "0 recipes found ");
}

TEST_F(Search, ARecipeWithAPictureIsMarked) {
    FindWords("sauce");
    ASSERT_EQ(ShownNumbers(), Numbers{3});
    EXPECT_EQ(List(2).Item(1).SmallIcon(), 2);
}

TEST_F(Search, ACategoryEndsTheSearchListAndItsColours) {
    FindWords("salmon");
    ClickCategory("SAUCES");
    EXPECT_EQ(ShownNumbers(), (Numbers{3, 4, 7}));
    EXPECT_EQ(Main().strLastSearchWords, "");
}

TEST_F(Search, TheSameWordsCanBeFoundAgain) {
    FindWords("dill");
    PressLine(2, 3);
    ASSERT_EQ(Current(), 4);
    FindWords("dill");
    EXPECT_EQ(ShownNumbers(), (Numbers{2, 3, 4, 7}));
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(Current(), 2);
}

TEST_F(Search, TheWaitLookEndsWithTheSearch) {
    FindWords("salmon");
    EXPECT_NE(Main().ui.window.Native()->cursor().shape(), Qt::WaitCursor);
    EXPECT_NE(Dialog().window.Native()->cursor().shape(), Qt::WaitCursor);
}

TEST_F(Search, ABrokenIndexIsNotTold) {
    Folder.Delete("Data/Search.ydb");
    FindWords("salmon");
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(ShownNumbers(), (Numbers{4, 2})) << "the list stays as it was";
}

TEST_F(Search, AnEmptyResultWithOnlyPicturesAskedForIsAQuestionOnce) {
    Main().ui.chkJustWithPictures.SetValue(1);
    Boxes.Then(Dialogs::Answer::No);
    FindWords("unicorn");
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text,
              "No recipes with pictures found in this set.\n"
              "Do you want to see the recipes without pictures?");
    EXPECT_EQ(Boxes.Shown[0].Title, "The Galley Almanac");
    EXPECT_EQ(Boxes.Shown[0].Buttons, Dialogs::Buttons::YesNo);
    EXPECT_EQ(Main().ui.chkJustWithPictures.Value(), 1);
    Main().layout.ResizeIt();
    EXPECT_EQ(Boxes.Shown.size(), 1U) << "showing it anew is no new search";
    Boxes.Then(Dialogs::Answer::Yes);
    FindWords("dragon");
    EXPECT_EQ(Boxes.Shown.size(), 2U) << "each search asks";
    EXPECT_EQ(Main().ui.chkJustWithPictures.Value(), 0);
    FindWords("unicorn");
    EXPECT_EQ(Boxes.Shown.size(), 2U);
}

TEST_F(Search, AResultWithRecipesIsNoQuestionThoughNoneHasAPicture) {
    Main().ui.chkJustWithPictures.SetValue(1);
    FindWords("salmon");
    FindWords("and the");
    EXPECT_EQ(ShownNumbers(), (Numbers{1, 2, 4, 6, 7}));
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(Search, EveryResultBeginsWithTheBarOnItsFirstLineAndTheBarStaysWithItsRecipe) {
    FindWords("salmon");
    PressLine(2, 4);
    ASSERT_EQ(Current(), 6);
    FindWords("dill");
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(Current(), 2);
    // From then on the bar is remembered by its recipe, so that it can be scrolled out of sight.
    EXPECT_EQ(Main().strSelectedKey[1], "k2");
}

// By number.

TEST_F(Search, ANumberShowsItsRecipeAndLeavesTheList) {
    const Numbers before = ShownNumbers();
    FindNumber("3");
    EXPECT_EQ(Current(), 3);
    EXPECT_TRUE(Text().starts_with("Dill Sauce"));
    EXPECT_EQ(ShownNumbers(), before);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
    EXPECT_EQ(Main().strLastRecipeCategory, "SEARCH");
}

TEST_F(Search, ANumberLeavesTheWordsOfTheLastSearch) {
    FindWords("salmon");
    FindNumber("2");
    EXPECT_EQ(Main().strLastSearchWords, "salmon");
    EXPECT_EQ(ColorOf("salmon"), FoundColor);
}

TEST_F(Search, TheLastNumberIsARecipe) {
    FindNumber("8");
    EXPECT_EQ(Current(), 8);
    EXPECT_TRUE(Text().starts_with("Own Eel"));
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(Search, ANumberThatNoRecipeHasIsTold) {
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

TEST_F(Search, TheRecipeShownStaysAfterAWrongNumberAndTheNextFindWorks) {
    FindNumber("0");
    FindNumber("3");
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Current(), 3);
}

TEST_F(Search, TextThatIsNoNumberShowsTheOldRecipe) {
    FindNumber("3");
    Main().ui.rtbSee.SetText("");
    FindNumber("salmon");
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(Current(), 3);
    EXPECT_TRUE(Text().starts_with("Dill Sauce"));
}

TEST_F(Search, TextThatIsNoNumberIsToldWhenThereIsNoOldRecipe) {
    Main().viewer.SetCurrentRecipe(-1);
    FindNumber("salmon");
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_TRUE(Boxes.Shown[0].Text.starts_with("Recipe number salmon does not exist."));
}

TEST_F(Search, AFractionIsRoundedBeforeItIsTested) {
    FindNumber("0.6");
    EXPECT_EQ(Current(), 1);
    FindNumber("8.4");
    EXPECT_EQ(Current(), 8);
    EXPECT_TRUE(Boxes.Shown.empty());
    FindNumber("8.6");
    EXPECT_EQ(Boxes.Shown.size(), 1U);
}

// Before the dialog is opened.

class SearchBeforeTheDialog : public SearchBook {
  protected:
    void SetUp() override {
        AddSmallBook();
        ASSERT_TRUE(StartWithIndex());
    }
    static bool DialogMade() {
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == "frmSearch") return true;
        }
        return false;
    }
};

TEST_F(SearchBeforeTheDialog, TheWaitLookDoesNotMakeTheDialog) {
    ClickCategory("SAUCES");
    EXPECT_FALSE(DialogMade());
    OpenDialog();
    EXPECT_TRUE(DialogMade()) << "or this would show nothing";
}

TEST_F(SearchBeforeTheDialog, TheCheckBoxIsOff) {
    OpenDialog();
    EXPECT_EQ(Dialog().chkOnly.Value(), 0);
}

// Long searches.

class LongSearch : public SearchBook {
  protected:
    static constexpr int Stock = 300;
    static constexpr int Own = 300;

    void SetUp() override {
        for (int i = 1; i <= Stock; ++i)
            AddStock("Fish " + std::to_string(i), "Bake it.");
        for (int i = 1; i <= Own; ++i)
            Book.AddOwn("Own Fish " + std::to_string(Stock + i), "Fry it.");
        Book.Numbers("ONE") = " 5 ";
        ASSERT_TRUE(StartWithIndex());
        OpenDialog();
    }
    std::string ShownTag() { return Main().ui.lvwX2.Tag; }
};

TEST_F(LongSearch, AResultLongerThanTheScreenShowsItsBeginning) {
    PressLine(1, 6);
    FindWords("fish");
    const int fit = Fit(2);
    ASSERT_LT(fit, Stock);
    EXPECT_EQ(ShownNumbers(), Range(1, fit));
    EXPECT_EQ(SelectedLine(2), 1);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 1);
    EXPECT_EQ(Found(), "600 recipes found ");
    EXPECT_EQ(ShownTag(), NumbersFrom(1, Stock + Own));
    EXPECT_EQ(Main().VList[1].CurrentIndex, 1);
}

TEST_F(LongSearch, AListThatWasScrolledShowsTheNextResultFromItsFirstLine) {
    FindWords("fish");
    Wheel(2, 5);
    ASSERT_GT(Main().VList[1].CurrentIndex, 1);
    FindWords("bake");
    EXPECT_EQ(ShownNumbers(), Range(1, Fit(2)));
    EXPECT_EQ(Found(), "300 recipes found ");
}

TEST_F(LongSearch, AfterASearchTheBarStaysWithItsRecipeWhenTheListIsScrolled) {
    FindWords("fish");
    Press(Qt::Key_Escape);
    Main().ui.window.BringToFront();
    ASSERT_TRUE(WaitUntil([&] { return Main().ui.window.Native()->isActiveWindow(); }));
    Wheel(2, 1);
    ASSERT_GT(Main().VList[1].CurrentIndex, 1);
    Focus(2);
    EXPECT_EQ(Main().VList[1].CurrentIndex, 1);
    EXPECT_EQ(SelectedLine(2), 1);
}

TEST_F(LongSearch, AClickOnACategoryEndsARunningSearch) {
    int countAtClick = 0;
    Later([&] {
        countAtClick = Main().VList[1].Count();
        ClickCategory("ONE");
    });
    FindWords("fish");
    EXPECT_GT(countAtClick, 0) << "events run during the search";
    EXPECT_LT(countAtClick, Stock);
    EXPECT_EQ(Main().VList[1].NumsToString(), " 5 ");
    EXPECT_EQ(ShownNumbers(), Numbers{5});
    EXPECT_EQ(Found(), "1 recipe found ");
    EXPECT_EQ(TrimBlanks(Main().strLastRecipeCategory), "ONE");
    EXPECT_EQ(TrimBlanks(Main().ui.lblCategory.Caption()), "ONE");
    EXPECT_TRUE(Main().ui.lvwX2.Visible());
}

TEST_F(LongSearch, AnotherFindEndsARunningSearch) {
    int countAtPress = 0;
    Later([&] {
        countAtPress = Main().VList[1].Count();
        FindWords("17");
    });
    FindWords("fish");
    EXPECT_GT(countAtPress, 0);
    EXPECT_LT(countAtPress, Stock);
    EXPECT_EQ(Main().VList[1].NumsToString(), " 17 ");
    EXPECT_EQ(ShownNumbers(), Numbers{17});
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 17);
}

TEST_F(LongSearch, ClosingTheDialogEndsARunningSearchAndKeepsWhatItFound) {
    int countAtClose = 0;
    Later([&] {
        countAtClose = Main().VList[1].Count();
        Press(Qt::Key_Escape);
    });
    FindWords("fish");
    ASSERT_GT(countAtClose, Fit(2));
    ASSERT_LT(countAtClose, Stock);
    EXPECT_FALSE(DialogShown());
    EXPECT_EQ(Main().VList[1].Count(), countAtClose);
    EXPECT_EQ(ShownNumbers(), Range(1, Fit(2)));
    EXPECT_EQ(Found(), std::to_string(countAtClose) + " recipes found ");
    EXPECT_EQ(ShownTag(), NumbersFrom(1, countAtClose));
    EXPECT_TRUE(Main().ui.lvwX2.Visible());
    EXPECT_NE(Main().ui.window.Native()->cursor().shape(), Qt::WaitCursor);
}

TEST_F(LongSearch, ClosingTheDialogAmongOwnRecipesEndsTheSearchThere) {
    bool closed = false;
    QTimer timer;
    timer.callOnTimeout([&] {
        if (closed || Main().VList[1].Count() <= Stock) return;
        closed = true;
        Press(Qt::Key_Escape);
    });
    timer.start(0);
    FindWords("fish");
    ASSERT_TRUE(closed);
    EXPECT_GT(Main().VList[1].Count(), Stock);
    EXPECT_LT(Main().VList[1].Count(), Stock + Own);
    EXPECT_EQ(Found(), std::to_string(Main().VList[1].Count()) + " recipes found ");
}

TEST_F(LongSearch, TheFirstScreenfulIsThereBeforeTheSearchHasEnded) {
    Numbers early;
    std::string caption;
    Later([&] {
        early = ShownNumbers();
        caption = Found();
    });
    FindWords("fish");
    EXPECT_EQ(early, Range(1, Fit(2)));
    EXPECT_TRUE(caption.ends_with("...")) << caption;
}

// Titles are read ahead between two looks at the events, not beyond one.
TEST_F(LongSearch, WhatIsWrittenWhileEventsRunIsInTheTitlesThatFollow) {
    const std::string name = Folder.Native("Data/Recipes.ydb");
    int countAtWrite = 0;
    Later([&] {
        countAtWrite = Main().VList[1].Count();
        std::fstream file(name, std::ios::in | std::ios::out | std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(file)), {});
        const std::size_t place = text.find("Fish 300");
        ASSERT_NE(place, std::string::npos);
        file.seekp(static_cast<std::streamoff>(place));
        file << "Carp";
        file.close();
        ASSERT_TRUE(file.good());
    });
    FindWords("fish");
    ASSERT_GT(countAtWrite, 0);
    ASSERT_LT(countAtWrite, Stock);
    EXPECT_EQ(Main().VList[1].Peek(Stock - 1)->Text, "Fish 299");
    EXPECT_EQ(Main().VList[1].Peek(Stock)->Text, "Carp 300");
}

TEST_F(LongSearch, TitlesCostAFewReads) {
    int reads = 0;
    Main().files.Watch([&](const NumberedFiles::Access& access) {
        const bool recipes =
            access.Number == filenumber::Recipes || access.Number == filenumber::RecipesIndex;
        if (access.Kind == "read" && recipes) ++reads;
    });
    FindWords("bake");
    Main().files.Watch(nullptr);
    EXPECT_EQ(Main().VList[1].Count(), Stock);
    EXPECT_LE(reads, Stock / 4) << "of both files, for the titles and the text on the screen";
}

}  // namespace
}  // namespace larder::test
