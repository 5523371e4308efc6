#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QWidget>
#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MeasuredLists.h"
#include "platform/Text.h"
#include "support/Seed.h"

namespace larder::test {
namespace {

// Whatever a user does, in whatever order and while whatever list is filled, the lists, the bars,
// the count and the recipe on view tell the same.
class AnyOrder : public MeasuredLists {
  protected:
    void SetUp() override {
        MeasuredLists::SetUp();
        Book.Numbers("BIG") = NumbersFrom(1, 200);
        Book.Numbers("MY FAVORITES") = " 202 3 9 204 1 ";
        ASSERT_TRUE(Start());
    }

    // What was done, for the trace.
    std::string Act() {
        switch (Below(14)) {
            case 0:
            case 1:
                return PressKey();
            case 2:
            case 3: {
                const int list = Below(2) + 1;
                Wheel(list, Below(13) - 6);
                return "wheel over list " + std::to_string(list);
            }
            case 4:
                return PressOn(1, Below(std::max(List(1).Count(), 1)) + 1);
            case 5:
            case 6:
                return PressOn(2, Below(Fit(2)) + 1);
            case 7:
                return StepOn();
            case 8:
                return ClickOn(Of<const char*>({"ibReset", "imgSortByName", "imgSortByNum",
                                                "imgAddToFavorites", "ibRecipeButton",
                                                "ibPhotoButton", "lblJustWithPics"}));
            case 9:
                return OpenMenu();
            case 10:
                return TakeOut();
            case 11:
                return Resize();
            case 12:
                return MoveFocus();
            default:
                ClickCategory(Of<const char*>({"ALL RECIPES", "LONG", "SHORT", "ONE", "NONE"}));
                return "category " + Main().ui.lblCategory.Caption();
        }
    }
    std::string ActWhileFilling() {
        acts_.clear();
        const int acts = Below(3) + 1;
        for (int i = 0; i < acts; ++i)
            Later([this] { acts_ += Act() + ", "; });
        ClickCategory("BIG");
        QApplication::processEvents();
        return "BIG, and meanwhile " + acts_;
    }

    void ExpectOneStory() {
        ExpectLinesOf(1);
        ExpectLinesOf(2);
        ExpectBar(1);
        ExpectBar(2);
        ExpectRecipe();
        EXPECT_TRUE(List(1).Visible());
        EXPECT_TRUE(List(2).Visible());
        EXPECT_FALSE(Main().VList[1].booSearching);
        EXPECT_NE(Main().ui.window.Native()->cursor().shape(), Qt::WaitCursor);
        const VirtualList& list = Main().VList[1];
        EXPECT_EQ(List(2).Tag, list.VirtualMode ? "*" : list.NumsToString());
        EXPECT_EQ(Main().ui.lblFound.Caption().find(std::to_string(list.Count()) + " recipe"), 0U)
            << Main().ui.lblFound.Caption();
        EXPECT_NE(Main().ui.window.ActiveControl(), nullptr);
    }

    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  private:
    // A menu that closes, or another state of the window, leaves it without the keyboard here.
    void BringToFront() {
        QWidget* window = Main().ui.window.Native();
        window->activateWindow();
        EXPECT_TRUE(WaitUntil([window] { return window->isActiveWindow(); }));
    }
    template <typename Value>
    Value Of(const std::vector<Value>& values) {
        return values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))];
    }
    std::string PressKey() {
        const Qt::Key key = Of<Qt::Key>({Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp,
                                         Qt::Key_Home, Qt::Key_End, Qt::Key_Return, Qt::Key_S});
        KeyDown(key);
        KeyUp(key);
        return "key " + std::to_string(key);
    }
    std::string PressOn(int list, int line) {
        if (!List(list).Visible()) return "nothing to press";
        PressLine(list, line);
        return "press on " + std::to_string(line) + " of list " + std::to_string(list);
    }
    std::string StepOn() {
        switch (Below(4)) {
            case 0:
                return ClickOn("ibNext");
            case 1:
                return ClickOn("ibBack");
            case 2:
                Key(Qt::Key_N, Qt::AltModifier);
                return "Alt+N";
            default:
                Key(Qt::Key_B, Qt::AltModifier);
                return "Alt+B";
        }
    }
    std::string ClickOn(const std::string& name) {
        Click(name);
        return name;
    }
    std::string OpenMenu() {
        const int line = Below(Fit(2)) + 1;
        if (!List(2).Visible() || line > List(2).Count()) return "no menu";
        WhenMenuPopsUp([](QMenu&) {});
        PressLine(2, line, Qt::RightButton);
        BringToFront();
        return "menu on " + std::to_string(line);
    }
    std::string TakeOut() {
        const std::int32_t current = Main().viewer.CurrentRecipe();
        if (current > 200 && Below(4) == 0) {
            Boxes.Then(Dialogs::Answer::Ok);
            Main().ownRecipes.DeleteRecipe(current, true, false);
            return "delete " + std::to_string(current);
        }
        Main().favorites.RemoveFromFavorites(current);
        return "no favourite: " + std::to_string(current);
    }
    std::string Resize() {
        const int height = 400 + 90 * Below(4);
        Main().ui.window.SetWindowState(Window::Normal);
        Main().ui.window.SetClientSize(1400 * TwipsPerPixel,
                                       static_cast<float>(height) * TwipsPerPixel);
        BringToFront();
        return "height " + std::to_string(height);
    }
    std::string MoveFocus() {
        const int where = Below(3);
        Ignoring([&] {
            if (where == 0) Main().ui.ibHelp.SetFocus();
            if (where > 0) Focus(where);
        });
        return "focus " + FocusedName();
    }

    // Sorted, as the user may have sorted the lines.
    void ExpectLinesOf(int list) {
        const VirtualList& behind = Main().VList[static_cast<std::size_t>(list - 1)];
        const int lines = std::min<int>(behind.Count(), Fit(list));
        std::vector<std::string> expected;
        for (std::int32_t place = behind.CurrentIndex; expected.size() != std::size_t(lines);
             ++place) {
            if (list == 2 && behind.VirtualMode) {
                if (place > Main().store.TotalNumRecords) break;
                const std::string title = Main().store.GetRecipeTitle(place);
                if (!title.empty()) expected.push_back(title);
            } else {
                const VirtualListItem* entry = behind.Peek(place);
                if (entry == nullptr) break;
                expected.push_back(entry->Text);
            }
        }
        std::vector<std::string> shown = Shown(list);
        std::ranges::sort(expected);
        std::ranges::sort(shown);
        EXPECT_EQ(shown, expected) << "list " << list;
        EXPECT_EQ(shown.size(), static_cast<std::size_t>(lines)) << "list " << list;
    }
    void ExpectBar(int list) {
        const std::string& key = Main().strSelectedKey[static_cast<std::size_t>(list - 1)];
        if (List(list).HideSelection() || List(list).Count() == 0) return;
        const ListItem* selected = List(list).SelectedItem();
        ASSERT_NE(selected, nullptr) << "list " << list;
        EXPECT_TRUE(EqualNoCase(TrimBlanks(selected->Key()), TrimBlanks(key)))
            << "list " << list << ": " << key << " has the bar, on the screen " << selected->Key();
    }
    void ExpectRecipe() {
        const RecipeViewer& viewer = Main().viewer;
        const std::int32_t current = viewer.CurrentRecipe();
        EXPECT_EQ(Main().ui.lblRecipeNum.Caption(),
                  current < 1 ? "" : "# " + std::to_string(current));
        const bool onView = Main().ui.rtbSee.Visible() && !Main().screen.EncyclopediaMode();
        if (onView && viewer.RecipeInBox != 0 && current >= 1) {
            EXPECT_EQ(viewer.RecipeInBox, current);
        }
        EXPECT_FALSE(Main().ui.rtbSee.Visible() && Main().ui.frPic.Visible());
    }

    std::mt19937 random_{Seed()};
    std::string acts_;
};

TEST_F(AnyOrder, OneThingAfterTheOther) {
    for (int step = 1; step <= 500 && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step) + ": " + Act());
        ExpectOneStory();
    }
}

TEST_F(AnyOrder, SomeThingsWhileAListIsFilled) {
    for (int step = 1; step <= 150 && !HasFailure(); ++step) {
        const bool filling = Below(2) == 0;
        SCOPED_TRACE("step " + std::to_string(step) + ": " + (filling ? ActWhileFilling() : Act()));
        ExpectOneStory();
    }
}

}  // namespace
}  // namespace larder::test
