#include "edit/frmAddChoice.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

// Recipes 1 to 3 are stock, 4 and 5 the cook's own; 2 and 5 are favourites.
class ChoiceDialog : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(3);
        Book.AddManyOwn(2);
        Book.Numbers("MY FAVORITES") = " 2 5 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 ";
        Book.Numbers("MIXED") = " 1 2 3 4 5 ";
        ASSERT_TRUE(Start());
    }

    void SetCurrent(std::int32_t number) { Main().viewer.SetCurrentRecipe(number); }
    bool IsFavorite(std::int32_t number) { return Main().favorites.IsInFavorites(number); }
    std::string CategoryFile() const { return Folder.Read("Data/Categories.ctg"); }

    // Opens the dialog with the mouse, and does `act` while it is open; returns when it has gone.
    void OpenAnd(const std::function<void()>& act) {
        bool opened = false;
        QTimer looking;
        QObject::connect(&looking, &QTimer::timeout, &looking, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog == nullptr || dialog->objectName() != "frmAddChoice") return;
            if (!dialog->isActiveWindow()) return;
            looking.stop();
            opened = true;
            shown_ = dialog;
            act();
            if (IsOpen()) dialog->close();
        });
        looking.start(1);
        Click("ibAdd");
        EXPECT_TRUE(opened);
        EXPECT_TRUE(shown_.isNull()) << "unloaded";
    }
    bool IsOpen() const { return !shown_.isNull() && shown_->isVisible(); }
    QWidget* Button(const std::string& name) {
        auto* button = shown_->findChild<QWidget*>(QString::fromStdString(name));
        EXPECT_NE(button, nullptr) << name;
        return button;
    }
    void ClickButton(const std::string& name) { QTest::mouseClick(Button(name), Qt::LeftButton); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(shown_->focusWidget(), key, modifiers);
    }
    std::string Focus() { return shown_->focusWidget()->objectName().toStdString(); }

    QPointer<QWidget> shown_;
};

std::vector<int> States(const frmAddChoice& it) {
    return {it.ibAddNewRecipe.ButtonState(), it.ibAddToFavorites.ButtonState(),
            it.ibEdit.ButtonState(), it.ibDelete.ButtonState(), it.CancelButton.ButtonState()};
}

TEST_F(ChoiceDialog, TheTitleAndTheFixedCaptions) {
    const frmAddChoice it(Main());
    EXPECT_EQ(it.window.Caption(), "Tidewell Larder");
    EXPECT_EQ(it.ibAddNewRecipe.Caption(), "Create New Recipe");
    EXPECT_EQ(it.CancelButton.Caption(), "Cancel");
}

TEST_F(ChoiceDialog, WithoutARecipeOnlyCreateAndCancelAreOpen) {
    for (const std::int32_t none : {-1, 0}) {
        SetCurrent(none);
        const frmAddChoice it(Main());
        EXPECT_EQ(States(it), (std::vector<int>{0, 2, 2, 2, 0})) << none;
    }
}

TEST_F(ChoiceDialog, AStockFavouriteCanBeRemovedFromTheFavouritesAndIsNotWritten) {
    SetCurrent(2);
    const frmAddChoice it(Main());
    EXPECT_EQ(it.ibAddToFavorites.Caption(), "&Remove Recipe #2 From Favorites");
    EXPECT_EQ(States(it), (std::vector<int>{0, 0, 2, 2, 0}));
}

TEST_F(ChoiceDialog, AnotherStockRecipeCanBeAddedToThem) {
    SetCurrent(3);
    const frmAddChoice it(Main());
    EXPECT_EQ(it.ibAddToFavorites.Caption(), "&Add Recipe #3 To Favorites");
    EXPECT_EQ(States(it), (std::vector<int>{0, 0, 2, 2, 0}));
}

TEST_F(ChoiceDialog, ForAnOwnRecipeAllButtonsAreOpen) {
    SetCurrent(4);
    const frmAddChoice it(Main());
    EXPECT_EQ(it.ibAddToFavorites.Caption(), "&Add Recipe #4 To Favorites");
    EXPECT_EQ(it.ibEdit.Caption(), "&Edit Recipe #4");
    EXPECT_EQ(it.ibDelete.Caption(), "&Delete Recipe #4");
    EXPECT_EQ(States(it), (std::vector<int>{0, 0, 0, 0, 0}));
}

TEST_F(ChoiceDialog, InMaintenanceStockRecipesCanBeWrittenToo) {
    ASSERT_TRUE(Start("/E"));
    SetCurrent(1);
    const frmAddChoice it(Main());
    EXPECT_EQ(it.ibEdit.Caption(), "&Edit Recipe #1");
    EXPECT_EQ(it.ibDelete.Caption(), "&Delete Recipe #1");
    EXPECT_EQ(States(it), (std::vector<int>{0, 0, 0, 0, 0}));
}

TEST_F(ChoiceDialog, InMaintenanceWithoutARecipeTheCaptionsEndInMinusOne) {
    ASSERT_TRUE(Start("/E"));
    SetCurrent(-1);
    const frmAddChoice it(Main());
    EXPECT_EQ(it.ibEdit.Caption(), "&Edit Recipe #-1");
    EXPECT_EQ(it.ibDelete.Caption(), "&Delete Recipe #-1");
    EXPECT_EQ(States(it), (std::vector<int>{0, 2, 0, 0, 0}));
}

TEST_F(ChoiceDialog, InMaintenanceWithoutARecipeEditingAndDeletingEndQuietly) {
    ASSERT_TRUE(Start("/E"));
    SetCurrent(-1);
    const std::string before = CategoryFile();
    for (const std::string name : {"ibEdit", "ibDelete"}) {
        OpenAnd([&] { ClickButton(name); });
        EXPECT_TRUE(Boxes.Shown.empty()) << name;
        EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            EXPECT_TRUE(!window->isVisible() || window == Main().ui.window.Native())
                << window->windowTitle().toStdString();
        }
    }
    EXPECT_EQ(CategoryFile(), before);
}

TEST_F(ChoiceDialog, ItsStateIsWorkedOutAnewEachTimeItOpens) {
    std::vector<std::string> names;
    const auto note = [&] {
        names.push_back(Button("ibAddToFavorites")->accessibleName().toStdString());
    };
    ClickCategory("MIXED");
    PressLine(2, 3);
    OpenAnd(note);
    PressLine(2, 5);
    OpenAnd(note);
    EXPECT_EQ(names, (std::vector<std::string>{"Add Recipe #3 To Favorites",
                                               "Remove Recipe #5 From Favorites"}));
}

TEST_F(ChoiceDialog, ItsStateIsWorkedOutAnewEachTimeItIsActivated) {
    SetCurrent(-1);
    frmAddChoice it(Main());
    it.window.Show();
    ASSERT_TRUE(WaitUntil([&] { return it.window.Native()->isActiveWindow(); }));
    Main().ui.window.BringToFront();
    ASSERT_TRUE(WaitUntil([&] { return !it.window.Native()->isActiveWindow(); }));
    SetCurrent(5);
    ASSERT_EQ(States(it), (std::vector<int>{0, 2, 2, 2, 0})) << "or this would show nothing";
    it.window.BringToFront();
    ASSERT_TRUE(WaitUntil([&] { return it.window.Native()->isActiveWindow(); }));
    EXPECT_EQ(States(it), (std::vector<int>{0, 0, 0, 0, 0}));
    EXPECT_EQ(it.ibEdit.Caption(), "&Edit Recipe #5");
}

TEST_F(ChoiceDialog, TheMainWindowWaitsForIt) {
    OpenAnd([&] {
        EXPECT_TRUE(shown_->isModal());
        EXPECT_EQ(shown_->parentWidget(), Main().ui.window.Native());
    });
}

TEST_F(ChoiceDialog, StandsInTheMiddleOfTheWorkArea) {
    const frmAddChoice it(Main());
    const Rectangle area = it.window.WorkArea();
    const Rectangle place = it.window.Place();
    EXPECT_NEAR(place.Left - area.Left, (area.Width - place.Width) / 2, TwipsPerPixel);
    EXPECT_NEAR(place.Top - area.Top, (area.Height - place.Height) / 2, TwipsPerPixel);
}

TEST_F(ChoiceDialog, AddingAddsTheCurrentRecipe) {
    ClickCategory("MIXED");
    PressLine(2, 3);
    OpenAnd([&] {
        ClickButton("ibAddToFavorites");
        EXPECT_FALSE(IsOpen());
    });
    EXPECT_TRUE(IsFavorite(3));
    EXPECT_NE(CategoryFile().find(" 2 5 3 "), std::string::npos) << "on the disk";
}

TEST_F(ChoiceDialog, RemovingRemovesIt) {
    ClickCategory("MIXED");
    PressLine(2, 2);
    OpenAnd([&] { ClickButton("ibAddToFavorites"); });
    EXPECT_FALSE(IsFavorite(2));
    EXPECT_TRUE(IsFavorite(5));
}

TEST_F(ChoiceDialog, AChoiceIsCarriedOutWhenTheDialogHasGone) {
    PressLine(2, 1);  // a favourite, so that its line goes with it
    bool openMeanwhile = true;
    OpenAnd([&] {
        ClickButton("ibAddToFavorites");
        openMeanwhile = IsOpen() || !IsFavorite(2);
    });
    EXPECT_FALSE(openMeanwhile) << "closed, and nothing done yet";
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{5}));
}

TEST_F(ChoiceDialog, CancelEscapeAndTheFrameChangeNothing) {
    PressLine(2, 1);
    const std::string before = CategoryFile();
    const std::vector<std::function<void()>> ways = {
        [&] { ClickButton("CancelButton"); },
        [&] { Press(Qt::Key_Escape); },
        [&] { shown_->close(); },
    };
    for (const auto& way : ways) {
        OpenAnd([&] {
            way();
            EXPECT_FALSE(IsOpen());
        });
        EXPECT_EQ(CategoryFile(), before);
        EXPECT_EQ(Main().viewer.CurrentRecipe(), 2);
    }
}

TEST_F(ChoiceDialog, ADimmedButtonDoesNothing) {
    SetCurrent(-1);
    const std::string before = CategoryFile();
    OpenAnd([&] {
        for (const std::string name : {"ibAddToFavorites", "ibEdit", "ibDelete"}) {
            ClickButton(name);
            EXPECT_TRUE(IsOpen()) << name;
            Button(name)->setFocus();
            Press(Qt::Key_Return);
            EXPECT_TRUE(IsOpen()) << name;
        }
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_R, Qt::Key_E, Qt::Key_D}) {
            Press(key, Qt::AltModifier);
            EXPECT_TRUE(IsOpen()) << key;
        }
    });
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(CategoryFile(), before);
}

TEST_F(ChoiceDialog, TheMarkedLetterWithAltPressesItsButton) {
    ClickCategory("MIXED");
    PressLine(2, 3);
    OpenAnd([&] {
        Press(Qt::Key_R, Qt::AltModifier);  // the letter of another caption
        EXPECT_TRUE(IsOpen());
        Press(Qt::Key_A);  // without Alt it is no access key
        EXPECT_TRUE(IsOpen());
        Press(Qt::Key_A, Qt::AltModifier);
        EXPECT_FALSE(IsOpen());
    });
    EXPECT_TRUE(IsFavorite(3));
    OpenAnd([&] { Press(Qt::Key_R, Qt::AltModifier); });
    EXPECT_FALSE(IsFavorite(3));
}

TEST_F(ChoiceDialog, TabGoesThroughTheOpenButtonsFromTheFirst) {
    const auto order = [&](std::int32_t current) {
        std::vector<std::string> names;
        SetCurrent(current);
        OpenAnd([&] {
            do {
                names.push_back(Focus());
                Press(Qt::Key_Tab);
            } while (Focus() != "ibAddNewRecipe" && names.size() < 10);
        });
        return names;
    };
    EXPECT_EQ(order(5), (std::vector<std::string>{"ibAddNewRecipe", "ibAddToFavorites", "ibEdit",
                                                  "ibDelete", "CancelButton"}));
    EXPECT_EQ(order(3),
              (std::vector<std::string>{"ibAddNewRecipe", "ibAddToFavorites", "CancelButton"}));
    EXPECT_EQ(order(-1), (std::vector<std::string>{"ibAddNewRecipe", "CancelButton"}));
}

TEST_F(ChoiceDialog, EnterPressesTheButtonWithTheFocus) {
    ClickCategory("MIXED");
    PressLine(2, 3);
    OpenAnd([&] {
        Press(Qt::Key_Tab);
        Press(Qt::Key_Return);
        EXPECT_FALSE(IsOpen());
    });
    EXPECT_TRUE(IsFavorite(3));
}

TEST_F(ChoiceDialog, AScreenReaderReadsTheCaptionsAndTheStates) {
    SetCurrent(2);
    OpenAnd([&] {
        const auto names = [&](const std::string& name) {
            return Button(name)->accessibleName().toStdString();
        };
        EXPECT_EQ(names("ibAddNewRecipe"), "Create New Recipe");
        EXPECT_EQ(names("ibAddToFavorites"), "Remove Recipe #2 From Favorites");
        EXPECT_EQ(names("ibEdit"), "Edit Recipe");
        EXPECT_EQ(names("ibDelete"), "Delete Recipe");
        EXPECT_EQ(names("CancelButton"), "Cancel");
        const auto dimmed = [&](const std::string& name) {
            return bool(QAccessible::queryAccessibleInterface(Button(name))->state().disabled);
        };
        EXPECT_FALSE(dimmed("ibAddToFavorites"));
        EXPECT_TRUE(dimmed("ibEdit"));
    });
}

}  // namespace
}  // namespace larder::test
