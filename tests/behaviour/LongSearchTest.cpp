#include <gtest/gtest.h>

#include <QCursor>
#include <QTimer>
#include <QWidget>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "behaviour/support/SearchBook.h"
#include "platform/Text.h"
#include "store/FileNumbers.h"

namespace larder::test {
namespace {

using Numbers = std::vector<int>;

// Acts while a search runs, at its first look at the events with more than so many hits. How often
// a search looks depends on the clock too, and the first look may come at the first hit.
class OnceBeyond {
  public:
    OnceBeyond(const VirtualList& list, int hits, std::function<void()> act) {
        timer_.callOnTimeout([this, &list, hits, act = std::move(act)] {
            if (list.Count() <= hits) return;
            timer_.stop();
            act();
        });
        timer_.start(0);
    }

  private:
    QTimer timer_;
};

// Searches that last: what events do to them.
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

// Whether its recipe before stands in the result or not.
TEST_F(LongSearch, AListThatHadTheFocusHasItForTheResult) {
    const auto leaveDialog = [&] {
        Press(Qt::Key_Escape);
        Main().ui.window.BringToFront();
        return WaitUntil([&] { return Main().ui.window.Native()->isActiveWindow(); });
    };
    for (const char* words : {"fish", "own"}) {
        ASSERT_TRUE(leaveDialog());
        ClickCategory("ONE");
        PressLine(2, 1);
        ASSERT_EQ(FocusedName(), "lvwX_2");
        OpenDialog();
        FindWords(words);
        ASSERT_TRUE(leaveDialog());
        EXPECT_EQ(FocusedName(), "lvwX_2") << words;
        Key(Qt::Key_Down);
        EXPECT_EQ(SelectedLine(2), 2) << words;
        EXPECT_EQ(Main().VList[1].CurrentIndex, 1) << words;
    }
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
    const OnceBeyond closing(Main().VList[1], Fit(2), [&] {
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
    const OnceBeyond closing(Main().VList[1], Stock, [&] {
        closed = true;
        Press(Qt::Key_Escape);
    });
    FindWords("fish");
    ASSERT_TRUE(closed);
    EXPECT_GT(Main().VList[1].Count(), Stock);
    EXPECT_LT(Main().VList[1].Count(), Stock + Own);
    EXPECT_EQ(Found(), std::to_string(Main().VList[1].Count()) + " recipes found ");
}

// The ticket of the search comes again: it was 1, cancelled, and is 1 for the category.
TEST_F(LongSearch, EscapeAndACategoryAtOnceEndTheSearch) {
    Main().intListTicket.Cancel();
    bool acted = false;
    Later([&] {
        acted = true;
        const std::int16_t before = Main().intListTicket.Value();
        Press(Qt::Key_Escape);
        ClickCategory("ONE");
        EXPECT_EQ(Main().intListTicket.Value(), before) << "or this would show nothing";
    });
    FindWords("fish");
    ASSERT_TRUE(acted);
    EXPECT_EQ(Main().VList[1].NumsToString(), " 5 ");
    EXPECT_EQ(ShownNumbers(), Numbers{5});
    EXPECT_EQ(Found(), "1 recipe found ");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 5);
    EXPECT_EQ(TrimBlanks(Main().ui.lblCategory.Caption()), "ONE");
}

TEST_F(LongSearch, TheFirstScreenfulIsThereBeforeTheSearchHasEnded) {
    Numbers early;
    std::string caption;
    const OnceBeyond looking(Main().VList[1], Fit(2), [&] {
        early = ShownNumbers();
        caption = Found();
    });
    FindWords("fish");
    EXPECT_EQ(early, Range(1, Fit(2)));
    EXPECT_TRUE(caption.ends_with("...")) << caption;
}

// Recipes 1 to 200 hold one word, and others begin at 120 and at 150: a search for two of them
// looks at many numbers before its first hit, and events run meanwhile.
class LateHits : public SearchBook {
  protected:
    void SetUp() override {
        for (int i = 1; i <= 400; ++i) {
            AddStock("Fish " + std::to_string(i), std::string(i <= 200 ? "Alder " : "") +
                                                      (i >= 120 ? "cedar " : "") +
                                                      (i >= 150 ? "birch" : ""));
        }
        ASSERT_TRUE(StartWithIndex());
        OpenDialog();
    }
    static bool Waits(const Window& window) {
        return window.Native()->cursor().shape() == Qt::WaitCursor;
    }
    // Presses Esc while the search runs, as soon as it has that many hits.
    void EscapeAt(int hits) {
        Later([this, hits] {
            if (Main().VList[1].Count() < hits) return EscapeAt(hits);
            hitsAtEscape = Main().VList[1].Count();
            EXPECT_FALSE(List(2).Visible()) << "or this would show nothing";
            Press(Qt::Key_Escape);
        });
    }
    // The list on the screen is what there was of it.
    void ExpectAtRest() {
        EXPECT_FALSE(DialogShown());
        EXPECT_TRUE(List(2).Visible());
        EXPECT_FALSE(Waits(Main().ui.window));
        EXPECT_EQ(Main().VList[1].Count(), hitsAtEscape);
        EXPECT_EQ(Found(), std::to_string(hitsAtEscape) + " recipes found ");
    }
    int hitsAtEscape = -1;
};

TEST_F(LateHits, AreWaitedForWithTheBusyLook) {
    ASSERT_NE(Found(), "");
    bool looked = false;
    Later([&] {
        looked = true;
        ASSERT_EQ(Main().VList[1].Count(), 0) << "or this would show nothing";
        EXPECT_TRUE(Waits(Main().ui.window));
        EXPECT_TRUE(Waits(Dialog().window));
        EXPECT_FALSE(List(2).Visible());
        EXPECT_EQ(Found(), "");
        EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
        EXPECT_EQ(Main().strLastSearchWords, "alder birch");
    });
    FindWords("alder birch");
    ASSERT_TRUE(looked);
    EXPECT_EQ(Found(), "51 recipes found ");
    EXPECT_TRUE(List(2).Visible());
    EXPECT_FALSE(Waits(Main().ui.window));
    EXPECT_FALSE(Waits(Dialog().window));
}

TEST_F(LateHits, ThatAreNotWaitedForLeaveAnEmptyListOnTheScreen) {
    const std::int32_t before = Main().viewer.CurrentRecipe();
    EscapeAt(0);
    FindWords("alder birch");
    EXPECT_EQ(hitsAtEscape, 0);
    ExpectAtRest();
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_EQ(List(2).Tag, "");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), before);
}

TEST_F(LateHits, FewerThanTheScreenTakesAreShownWhenTheSearchIsCancelled) {
    EscapeAt(2);  // a single one is told in other words
    FindWords("alder cedar");
    ASSERT_GE(hitsAtEscape, 2);
    ASSERT_LT(hitsAtEscape, Fit(2));
    ExpectAtRest();
    EXPECT_EQ(ShownNumbers(), Range(120, 119 + hitsAtEscape));
}

// Titles are read ahead between two looks at the events, not beyond one.
TEST_F(LongSearch, WhatIsWrittenWhileEventsRunIsInTheTitlesThatFollow) {
    const std::string name = Folder.Native("Data/Recipes.ydb");
    int countAtWrite = 0;
    Later([&] {
        countAtWrite = Main().VList[1].Count();
        std::fstream file(name, std::ios::in | std::ios::out | std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(file)), {});
        for (const int number : {countAtWrite + 1, Stock}) {
            const std::size_t place = text.find("Fish " + std::to_string(number));
            ASSERT_NE(place, std::string::npos);
            file.seekp(static_cast<std::streamoff>(place));
            file << "Carp";
        }
        file.close();
        ASSERT_TRUE(file.good());
        // What comes next has been read ahead.
        EXPECT_EQ(Main().store.GetRecipeTitle(countAtWrite + 1),
                  "Carp " + std::to_string(countAtWrite + 1));
    });
    FindWords("fish");
    ASSERT_GT(countAtWrite, 0);
    ASSERT_LT(countAtWrite, Stock);
    EXPECT_EQ(Main().VList[1].Peek(Stock - 1)->Text, "Fish 299");
    EXPECT_EQ(Main().VList[1].Peek(Stock)->Text, "Carp 300");
}

TEST_F(LongSearch, TitlesCostAFewReads) {
    int looks = 0;
    QTimer atEachLook;
    atEachLook.callOnTimeout([&] { ++looks; });
    atEachLook.start(0);
    int reads = 0;
    Main().files.Watch([&](const NumberedFiles::Access& access) {
        const bool recipes =
            access.Number == filenumber::Recipes || access.Number == filenumber::RecipesIndex;
        if (access.Kind == "read" && recipes) ++reads;
    });
    FindWords("bake");
    Main().files.Watch(nullptr);
    EXPECT_EQ(Main().VList[1].Count(), Stock);
    // A look gives up what has been read ahead of either file, and a slow machine looks more often.
    EXPECT_LE(reads, Stock / 5 + 2 * looks)
        << "of both files, for the titles and the text on the screen, at " << looks << " looks";
}

}  // namespace
}  // namespace larder::test
