#include <gtest/gtest.h>

#include <QCursor>
#include <QWidget>
#include <algorithm>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/SearchBook.h"
#include "platform/Failure.h"
#include "store/FileNumbers.h"

namespace larder::test {
namespace {

// The disc with the stock recipes is out of its drive while `gone` is true.
void TakeOut(NumberedFiles& files, const bool& gone) {
    files.Watch([&gone](const NumberedFiles::Access& access) {
        const bool touches = access.Kind == "read" || access.Kind == "open";
        if (gone && touches && access.Number == filenumber::Recipes) {
            throw Failure(failure::PathAccess, "test");
        }
    });
}

// Filling the list while the disc with the stock recipes is out of its drive.
class FillWithoutDisc : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(60);
        Book.AddManyOwn(2);
        Book.Numbers("SOME") = " 3 5 7 61 ";
        Book.Numbers("OTHERS") = " 4 6 ";
        ASSERT_TRUE(Start());
        TakeOut(Main().files, gone_);
        Boxes.Shown.clear();
    }
    void TearDown() override { Main().files.Watch(nullptr); }
    int Lost() {
        const auto titles = Shown(2);
        return static_cast<int>(std::count(titles.begin(), titles.end(), "No Disk Error"));
    }
    bool Waits() { return Main().ui.window.Native()->cursor().shape() == Qt::WaitCursor; }
    bool gone_ = true;
};

TEST_F(FillWithoutDisc, OneCancelCountsForTheWholeFill) {
    ClickCategory("SOME");
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Lost(), 3);
    EXPECT_EQ(Shown(2).back(), "Own recipe 61") << "what can be read is read";
}

TEST_F(FillWithoutDisc, OneCancelCountsForAllRecipesToo) {
    ClickCategory("ALL RECIPES");
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Lost(), Fit(2));
}

TEST_F(FillWithoutDisc, TheNextFillAsksAgain) {
    ClickCategory("SOME");
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    ClickCategory("OTHERS");
    EXPECT_EQ(Boxes.Shown.size(), 2U);
    Boxes.Then(Dialogs::Answer::Ok, [this] { gone_ = false; });
    ClickCategory("SOME");
    EXPECT_EQ(Boxes.Shown.size(), 3U);
    EXPECT_EQ(Lost(), 0);
}

TEST_F(FillWithoutDisc, ARecipeThatIsOpenedAfterwardsAsksAgain) {
    ClickCategory("SOME");
    const std::size_t asked = Boxes.Shown.size();
    PressLine(2, 2);
    EXPECT_GT(Boxes.Shown.size(), asked);
}

TEST_F(FillWithoutDisc, TheListOfAllRecipesIsOffTheScreenWhileItIsAskedFor) {
    bool looked = false;
    Boxes.Then(Dialogs::Answer::Ok, [&] {
        looked = true;
        gone_ = false;
        EXPECT_FALSE(List(2).Visible());
        EXPECT_TRUE(Waits());
    });
    ClickCategory("ALL RECIPES");
    EXPECT_TRUE(looked);
    EXPECT_TRUE(List(2).Visible());
    EXPECT_FALSE(Waits());
    EXPECT_EQ(ShownNumbers(), Range(1, Fit(2)));
    EXPECT_EQ(Main().ui.lblFound.Caption(), "62 recipes found ");
}

// A search whose hits lie on the disc that is out; the index is on the hard disk.
class FindWithoutDisc : public SearchBook {
  protected:
    void SetUp() override {
        AddSmallBook();
        ASSERT_TRUE(StartWithIndex());
        OpenDialog();
        TakeOut(Main().files, gone_);
        Boxes.Shown.clear();
    }
    void TearDown() override { Main().files.Watch(nullptr); }
    bool gone_ = true;
};

TEST_F(FindWithoutDisc, OneCancelCountsForTheListAndTheRecipeThatItOpens) {
    FindWords("salmon");
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Can't get recipe.\rPlease, make sure the CD is in the drive.");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1, 2, 4, 5, 6, 7}));
    EXPECT_EQ(Shown(2).front(), "No Disk Error");
    EXPECT_EQ(Shown(2).back(), "My Salmon");
    EXPECT_EQ(Found(), "6 recipes found ");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 1);
    EXPECT_EQ(Main().ui.rtbSee.Text(), "");
    PressLine(2, 2);
    EXPECT_GT(Boxes.Shown.size(), 1U) << "a recipe that is opened afterwards asks again";
}

TEST_F(FindWithoutDisc, WithTheDiscBackTheListAndTheRecipeAreThere) {
    Boxes.Then(Dialogs::Answer::Ok);
    Boxes.Then(Dialogs::Answer::Ok, [this] { gone_ = false; });
    FindWords("salmon dill");
    EXPECT_EQ(Boxes.Shown.size(), 2U);
    EXPECT_EQ(Shown(2), (std::vector<std::string>{"Salmon Steaks", "Smoked Trout", "My Salmon"}));
    EXPECT_TRUE(Main().ui.rtbSee.Text().starts_with("Salmon Steaks"));
}

}  // namespace
}  // namespace larder::test
