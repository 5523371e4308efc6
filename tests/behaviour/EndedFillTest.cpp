#include <gtest/gtest.h>

#include <QCursor>
#include <QWidget>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/SearchBook.h"

namespace larder::test {
namespace {

using Numbers = std::vector<int>;

// A list of recipes whose fill is ended by something other than a category before it is complete.
class EndedFill : public SearchBook {
  protected:
    static constexpr int All = 400;

    void SetUp() override {
        for (int i = 1; i <= All; ++i) {
            AddStock("Fish " + std::to_string(i), i == 300 ? "Bake it with leek." : "Bake it.");
        }
        Book.Numbers("ALL RECIPES WITH PICTURES") = NumbersFrom(1, All);
        Book.Numbers("BIG") = NumbersFrom(1, All);
        Book.Numbers("SOME") = " 5 6 ";
        ASSERT_TRUE(StartWithIndex());
        OpenDialog();
        ClickCategory("SOME");
        PressLine(2, 1);
        ASSERT_EQ(Current(), 5);
    }
    // Acts once while a list is being filled, as soon as it has `count` recipes.
    void At(int count, std::function<void()> act) {
        Later([this, count, act = std::move(act)] {
            if (!Main().VList[1].booSearching) return;
            if (Main().VList[1].Count() < count) {
                At(count, act);
                return;
            }
            acted_ = true;
            act();
        });
    }
    std::int32_t Current() { return Main().viewer.CurrentRecipe(); }
    std::string FirstWords() { return Main().ui.rtbSee.Text().substr(0, 7); }
    // The list on the screen is what there is of it, and nobody waits for more.
    void ExpectAtRest() {
        const int count = Main().VList[1].Count();
        EXPECT_FALSE(Main().VList[1].booSearching);
        EXPECT_TRUE(List(2).Visible());
        EXPECT_NE(Main().ui.window.Native()->cursor().shape(), Qt::WaitCursor);
        EXPECT_EQ(Found(), std::to_string(count) + " recipes found ");
        EXPECT_EQ(ShownNumbers(), Range(1, count < Fit(2) ? count : Fit(2)));
        EXPECT_EQ(List(2).Tag, NumbersFrom(1, count));
    }
    bool acted_ = false;
};

TEST_F(EndedFill, ClosingTheWindowOpensNothingMore) {
    for (const char* category : {"BIG", "ALL RECIPES WITH PICTURES"}) {
        acted_ = false;
        int accesses = 0;
        At(100, [&] {
            Main().ui.window.Close();
            Main().files.Watch([&](const NumberedFiles::Access&) { ++accesses; });
        });
        ClickCategory(category);
        EXPECT_TRUE(acted_);
        EXPECT_EQ(Current(), 5) << category;
        EXPECT_EQ(accesses, 0) << category;
        ASSERT_TRUE(Start());
        ClickCategory("SOME");
    }
}

TEST_F(EndedFill, ClosingTheWindowDuringASearchOpensNothingMore) {
    int countAtClose = 0;
    int accesses = 0;
    Later([&] {
        countAtClose = Main().VList[1].Count();
        Main().ui.window.Close();
        Main().files.Watch([&](const NumberedFiles::Access&) { ++accesses; });
    });
    FindWords("fish");
    EXPECT_GT(countAtClose, 0);
    EXPECT_EQ(Main().VList[1].Count(), countAtClose);
    EXPECT_EQ(Current(), 5);
    EXPECT_EQ(accesses, 0);
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(EndedFill, AFindByWordsOwnsTheList) {
    At(100, [&] { FindWords("leek"); });
    ClickCategory("ALL RECIPES WITH PICTURES");
    EXPECT_TRUE(acted_);
    EXPECT_EQ(ShownNumbers(), Numbers{300});
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
    EXPECT_EQ(Current(), 300);
    EXPECT_EQ(Found(), "1 recipe found ");
}

TEST_F(EndedFill, AFindWithoutAHitLeavesTheRecipe) {
    At(100, [&] { FindWords("unicorn"); });
    ClickCategory("BIG");
    EXPECT_TRUE(acted_);
    EXPECT_EQ(List(2).Count(), 0);
    EXPECT_EQ(Current(), 5);
    EXPECT_EQ(Found(), "0 recipes found ");
}

TEST_F(EndedFill, AFindByNumberShowsItsRecipeAndLetsTheListGrow) {
    for (const char* category : {"BIG", "ALL RECIPES WITH PICTURES"}) {
        for (const int count : {2, 100}) {
            acted_ = false;
            At(count, [&] {
                FindNumber("77");
                EXPECT_EQ(FirstWords(), "Fish 77");
                EXPECT_TRUE(Main().VList[1].booSearching) << "the list grows on";
            });
            ClickCategory(category);
            EXPECT_TRUE(acted_);
            EXPECT_EQ(Main().VList[1].Count(), All) << category;
            EXPECT_EQ(Current(), 77) << category;
            EXPECT_EQ(FirstWords(), "Fish 77") << category;
            EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
            ExpectAtRest();
            ClickCategory("SOME");
            EXPECT_EQ(Current(), 5) << "a later category opens on its first recipe";
        }
    }
}

TEST_F(EndedFill, AfterAFindByNumberBarAndFocusAreThoseThatTheUserLeft) {
    const std::function<void()> moves[] = {[&] { Key(Qt::Key_PageDown); }, [&] { Wheel(2, 5); }};
    for (const char* category : {"BIG", "ALL RECIPES WITH PICTURES"}) {
        for (const auto& move : moves) {
            acted_ = false;
            std::string bar;
            std::string focus;
            bool scrolledAway = false;
            At(100, [&] {
                Focus(2);
                FindNumber("77");
                move();
                bar = Main().strSelectedKey[1];
                focus = FocusedName();
                scrolledAway = List(2).HideSelection();
            });
            ClickCategory(category);
            EXPECT_TRUE(acted_);
            EXPECT_NE(focus, "lvwX_1");
            EXPECT_EQ(Current(), 77) << category;
            EXPECT_EQ(Main().strSelectedKey[1], bar) << category;
            EXPECT_EQ(List(2).HideSelection(), scrolledAway) << category;
            EXPECT_EQ(FocusedName(), focus) << category;
            ClickCategory("SOME");
        }
    }
}

TEST_F(EndedFill, AWrongNumberChangesNothingButItsMessage) {
    for (const char* category : {"BIG", "ALL RECIPES WITH PICTURES"}) {
        for (const char* number : {"0", "9999"}) {
            acted_ = false;
            Boxes.Shown.clear();
            At(100, [&] { FindNumber(number); });
            ClickCategory(category);
            EXPECT_TRUE(acted_);
            EXPECT_EQ(Boxes.Shown.size(), 1U) << number;
            EXPECT_EQ(Main().VList[1].Count(), All) << number;
            EXPECT_EQ(Current(), 1) << "the first of the category, as ever";
            EXPECT_EQ(SelectedLine(2), 1);
            EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
            ExpectAtRest();
            ClickCategory("SOME");
        }
    }
    EXPECT_EQ(FirstWords().substr(0, 5), "Fish ");
}

TEST_F(EndedFill, AFindByNumberDuringASearchShowsItsRecipeAndLetsTheSearchEnd) {
    int countAtFind = 0;
    Later([&] {
        countAtFind = Main().VList[1].Count();
        FindNumber("77");
    });
    FindWords("fish");
    EXPECT_GT(countAtFind, 0);
    EXPECT_LT(countAtFind, All);
    EXPECT_EQ(Main().VList[1].Count(), All);
    EXPECT_EQ(Current(), 77);
    EXPECT_EQ(FirstWords(), "Fish 77");
    ExpectAtRest();
    FindNumber("78");
    Press(Qt::Key_W, Qt::AltModifier);
    FindWords("fish");
    EXPECT_EQ(Current(), 1) << "a later search opens on its first recipe";
}

TEST_F(EndedFill, AWrongNumberDuringASearchLetsItEndAsEver) {
    int countAtFind = 0;
    Later([&] {
        countAtFind = Main().VList[1].Count();
        FindNumber("9999");
    });
    FindWords("fish");
    EXPECT_GT(countAtFind, 0);
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Main().VList[1].Count(), All);
    EXPECT_EQ(Current(), 1);
    EXPECT_EQ(FirstWords(), "Fish 1\r");
    ExpectAtRest();
}

TEST_F(EndedFill, ACancellationBeforeTheFirstScreenfulLeavesNoListHidden) {
    At(2, [&] { Main().intListTicket.Cancel(); });
    ClickCategory("BIG");
    EXPECT_TRUE(acted_);
    EXPECT_EQ(Main().VList[1].Count(), 2);
    ExpectAtRest();
    EXPECT_EQ(Current(), 5);
}

TEST_F(EndedFill, TheCategoryIsCompleteWhenItIsClickedAgain) {
    At(100, [&] { Main().intListTicket.Cancel(); });
    ClickCategory("BIG");
    ASSERT_LT(Main().VList[1].Count(), All);
    ClickCategory("BIG");
    EXPECT_EQ(Main().VList[1].Count(), All);
    EXPECT_EQ(Current(), 1);
    ExpectAtRest();
}

}  // namespace
}  // namespace larder::test
