#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MeasuredLists.h"
#include "support/Seed.h"

namespace larder::test {
namespace {

// A list of recipes without its lines: where the window stands, and which recipe has the bar.
struct WalkModel {
    std::vector<int> Recipes;
    int Lines = 0;  // that fit
    int Start = 1;  // first place of the window
    int Bar = 1;    // place
    int Current = 0;

    int Count() const { return static_cast<int>(Recipes.size()); }
    int Shown() const { return std::min(Lines, Count()); }
    int Last() const { return std::max(Count() - Lines + 1, 1); }
    int Row() const { return Bar - Start + 1; }
    bool BarInWindow() const { return Row() >= 1 && Row() <= Shown(); }
    int At(int place) const { return Recipes.at(static_cast<std::size_t>(place - 1)); }
    std::vector<int> Window() const {
        const auto first = Recipes.begin() + (Start - 1);
        return {first, first + Shown()};
    }

    void ToBar() {
        if (!BarInWindow()) Start = std::min(Bar, Last());
    }
    void Down() {
        ToBar();
        if (Row() < Lines) {
            Bar = std::min(Bar + 1, Count());
        } else {
            Start = std::min(Start + 1, Last());
            Bar = Start + Lines - 1;
        }
    }
    void Up() {
        ToBar();
        Start = std::max(1, std::min(Start, Bar - 1));
        Bar = std::max(1, Bar - 1);
    }
    void PageDown() {
        ToBar();
        const int stood = Start;
        int row = Bar + Lines > Count() ? Shown() : Row();
        Start = std::min(Start + Lines, Last());
        if (Start == stood) row = Shown();
        Bar = Start + row - 1;
    }
    void PageUp() {
        ToBar();
        const int row = Bar - Lines < 1 ? 1 : Row();
        Start = std::max(Start - Lines, 1);
        Bar = Start + row - 1;
    }
    void Home() { Start = Bar = 1; }
    void End() {
        Start = Last();
        Bar = Count();
    }
    void Scroll(int lines) { Start = std::clamp(Start + lines, 1, Last()); }
    void Press(int row) {
        Bar = Start + row - 1;
        Current = At(Bar);
    }
    void Open() {
        ToBar();
        Current = At(Bar);
    }
    void Step(const std::function<void()>& step) {
        ToBar();
        const int before = Bar;
        step();
        if (Bar != before) Current = At(Bar);
    }
    // What follows takes its place, or, where the window must stay full, what was before it.
    void RemoveCurrent() {
        Bar = static_cast<int>(std::ranges::find(Recipes, Current) - Recipes.begin()) + 1;
        ToBar();
        const int row = Row();
        Recipes.erase(Recipes.begin() + (Bar - 1));
        Start = std::min(Start, Last());
        Bar = std::min(Start + row - 1, Count());
        Current = At(Bar);
    }
};

class ListWalk : public MeasuredLists {
  protected:
    void Open(const std::string& category, std::vector<int> recipes) {
        model = {std::move(recipes), Fit2, 1, 1, 0};
        model.Current = model.At(1);
        OpenWithKeys(category);
    }
    // One thing that a user does, in the window and in the model; what it was.
    std::string Act(bool mayRemove) {
        switch (Below(mayRemove ? 12 : 11)) {
            case 0:
                Press(Qt::Key_Down);
                model.Down();
                return "Down";
            case 1:
                Press(Qt::Key_Up);
                model.Up();
                return "Up";
            case 2:
                Press(Qt::Key_PageDown);
                model.PageDown();
                return "Page Down";
            case 3:
                Press(Qt::Key_PageUp);
                model.PageUp();
                return "Page Up";
            case 4:
                Press(Qt::Key_Home);
                model.Home();
                return "Home";
            case 5:
                Press(Qt::Key_End);
                model.End();
                return "End";
            case 6:
            case 7:
                return TurnWheel(Below(17) - 8);
            case 8:
                return PressOn(Below(model.Shown()) + 1);
            case 9:
                Press(Qt::Key_Return);
                model.Open();
                return "Enter";
            case 10:
                return NextOrBack(Below(2) == 0);
            default:
                return Remove();
        }
    }
    std::string TurnWheel(int notches) {
        Wheel(2, notches);
        model.Scroll(3 * notches);
        return "wheel " + std::to_string(notches);
    }
    std::string PressOn(int row) {
        PressLine(2, row);
        model.Press(row);
        return "press on " + std::to_string(row);
    }
    std::string NextOrBack(bool next) {
        Click(next ? "ibNext" : "ibBack");
        model.Step([&] { next ? model.Down() : model.Up(); });
        return next ? "Next" : "Back";
    }
    std::string Remove() {
        Main().recipes.RemoveFrom_lvwX2(model.Current);
        Focus(2);
        model.RemoveCurrent();
        return "remove";
    }
    // The release goes to the control that has the focus by then.
    void Press(Qt::Key key) {
        KeyDown(key);
        KeyUp(key);
    }
    void ExpectAsInModel() {
        ASSERT_EQ(ShownNumbers(), model.Window());
        EXPECT_EQ(Main().VList[1].Count(), model.Count());
        EXPECT_EQ(Main().VList[1].CurrentIndex, model.Start);
        EXPECT_EQ(Main().strSelectedKey[1], "k" + std::to_string(model.At(model.Bar)));
        EXPECT_EQ(Main().viewer.CurrentRecipe(), model.Current);
        EXPECT_EQ(List(2).HideSelection(), !model.BarInWindow());
        if (model.BarInWindow()) {
            EXPECT_EQ(SelectedLine(2), model.Row());
            EXPECT_EQ(FocusedName(), "lvwX_2");
        } else {
            EXPECT_EQ(FocusedName(), "chkFocusCatcher");
        }
        EXPECT_TRUE(List(2).Visible());
    }
    void Walk(const std::string& category, int count, int steps, bool mayRemove) {
        SCOPED_TRACE(category);
        Open(category, Range(1, count));
        ExpectAsInModel();
        for (int step = 1; step <= steps && !HasFailure(); ++step) {
            const bool enough = model.Count() > 2;
            const std::string act = Act(mayRemove && enough);
            SCOPED_TRACE("step " + std::to_string(step) + ": " + act);
            ExpectAsInModel();
        }
    }
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    WalkModel model;

  private:
    std::mt19937 random_{Seed()};
};

TEST_F(ListWalk, WhateverTheUserDoesTheLinesAndTheBarAreThoseOfASimpleModel) {
    Walk("LONG", 3 * Fit2 + 1, 400, false);
    Walk("ONE MORE", Fit2 + 1, 200, false);
    Walk("SHORT", Fit2 - 2, 100, false);
}

TEST_F(ListWalk, RecipesThatAreTakenOutOnTheWayAreMissedByNoStep) {
    Walk("LONG", 3 * Fit2 + 1, 500, true);
    Walk("EXACT", Fit2, 200, true);
}

TEST_F(ListWalk, AllRecipesAreNoDifferent) {
    Book = CookBook();
    Book.AddManyStock(120);
    Book.AddManyOwn(3);
    ASSERT_TRUE(Start());
    Walk("ALL RECIPES", 123, 400, false);
}

}  // namespace
}  // namespace larder::test
