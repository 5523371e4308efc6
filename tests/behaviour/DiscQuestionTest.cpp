#include "store/DiscQuestion.h"

#include <gtest/gtest.h>

#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "platform/Failure.h"

namespace larder::test {
namespace {

// A book whose stock text lies on a disc that comes and goes. ALL RECIPES reads the titles of its
// lines whenever it is filled.
class DiscQuestionTest : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(80);
        ASSERT_TRUE(Start());
        Main().ui.window.SetWindowState(Window::Normal);
        PassEvents();
        SetHeight(600);
        ClickCategory("ALL RECIPES");
        lines_ = List(2).Count();
        Main().files.Watch([this](const NumberedFiles::Access& access) {
            if (lost_ && access.Path.ends_with("\\Recipes.ydb")) {
                throw Failure(failure::PathAccess, std::string(access.Path));
            }
        });
    }
    void LoseDisc() { lost_ = true; }
    void FindDisc() { lost_ = false; }
    void SetHeight(float pixels) {
        Main().ui.window.SetClientSize(900 * TwipsPerPixel, pixels * TwipsPerPixel);
        PassEvents();
    }
    // The system tells the window its size in an event, and some more come with it.
    void PassEvents() {
        bool passed = false;
        Later([&] { Later([&] { Later([&] { passed = true; }); }); });
        EXPECT_TRUE(WaitUntil([&] { return passed; }));
    }
    bool IsFilled() { return List(2).Count() == Fit(2) && List(2).Count() > lines_; }

    bool lost_ = false;
    int lines_ = 0;  // of the recipe list before it grows
};

TEST_F(DiscQuestionTest, ADiscThatIsGoneDuringTheRunIsAskedForByTheNextRead) {
    LoseDisc();
    Boxes.Then(Dialogs::Answer::Ok);
    Boxes.Then(Dialogs::Answer::Ok, [&] { FindDisc(); });
    EXPECT_TRUE(Main().viewer.ShowRecipe(1));
    ASSERT_EQ(Boxes.Shown.size(), 2U);
    EXPECT_NE(Boxes.Shown[0].Text.find("\rPlease, make sure the CD is in the drive."),
              std::string::npos);
    EXPECT_NE(Main().ui.rtbSee.Text().find("Stock recipe 1"), std::string::npos);
}

TEST_F(DiscQuestionTest, CancelLooksAtNoDriveAndOkDoes) {
    const int before = Machine.Asked;
    EXPECT_FALSE(Main().AskOkCancel("The disc?"));
    EXPECT_EQ(Machine.Asked, before);
    Boxes.Then(Dialogs::Answer::Ok);
    EXPECT_TRUE(Main().AskOkCancel("The disc?"));
    EXPECT_EQ(Machine.Asked, before + 1);
}

TEST_F(DiscQuestionTest, AResizeUnderTheQuestionAsksNoSecondTime) {
    std::size_t boxes = 0;
    int fit = 0;
    LoseDisc();
    Boxes.Then(Dialogs::Answer::Cancel, [&] {
        SetHeight(900);
        boxes = Boxes.Shown.size();
        fit = Fit(2);
        FindDisc();
    });
    Main().viewer.ShowRecipe(1);
    EXPECT_EQ(boxes, 1U);
    EXPECT_GT(fit, lines_) << "the window is laid out all the same";
    EXPECT_EQ(Boxes.Shown.size(), 1U);
}

TEST_F(DiscQuestionTest, AfterTheAnswerTheListsAreFilledForTheNewSize) {
    for (const auto answer : {Dialogs::Answer::Ok, Dialogs::Answer::Cancel}) {
        SetHeight(600);
        ASSERT_FALSE(IsFilled());
        LoseDisc();
        Boxes.Then(answer, [&] {
            SetHeight(900);
            FindDisc();
        });
        Main().viewer.ShowRecipe(1);
        EXPECT_TRUE(WaitUntil([&] { return IsFilled(); }));
        EXPECT_EQ(Shown(2).back(), "Stock recipe " + std::to_string(List(2).Count()));
    }
    EXPECT_EQ(Boxes.Shown.size(), 2U);
}

TEST_F(DiscQuestionTest, WithoutAResizeTheListsStayAsTheyAre) {
    Boxes.Then(Dialogs::Answer::Cancel);
    EXPECT_FALSE(Main().AskOkCancel("The disc?"));
    List(2).Remove(List(2).Count());
    const int lines = List(2).Count();
    PassEvents();
    EXPECT_EQ(List(2).Count(), lines);
}

}  // namespace
}  // namespace larder::test
