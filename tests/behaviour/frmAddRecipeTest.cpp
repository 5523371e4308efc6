#include "edit/frmAddRecipe.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>

#include "behaviour/support/EditorBook.h"

namespace larder {
namespace {

using test::EditorBook;

class TheEditor : public EditorBook {
  protected:
    static QString NameOf(const Control& control) {
        return QAccessible::queryAccessibleInterface(control.Native())->text(QAccessible::Name);
    }
    static QMenuBar& MenuBarOf(const frmAddRecipe& form) {
        return *qobject_cast<QMenuBar*>(form.mnuBar.Native());
    }
    std::vector<std::string> Menus() {
        std::vector<std::string> captions;
        for (const QAction* menu : MenuBarOf(Editor()).actions())
            captions.push_back(menu->text().toStdString());
        return captions;
    }
    // What a failing disk does to whoever writes.
    void FailWrites() {
        Main().files.Watch([](const NumberedFiles::Access& access) {
            if (access.Kind == "write") throw Failure(failure::DiskFull, std::string(access.Path));
        });
    }
};

TEST_F(TheEditor, ANewRecipeBeginsWithTheTemplatesInBothBoxes) {
    OpenNew();
    EXPECT_EQ(Editor().window.Caption(), "Add Recipe");
    EXPECT_EQ(Editor().lngRecipeNum, 7) << "deleted numbers stay used";
    EXPECT_EQ(Editor().rtbTitle.Text(), "TYPE THE TITLE HERE");
    EXPECT_EQ(
        Editor().rtbRecipe.Text(),
        "COOKING TIME:  x Minutes\r\n\r\nx amt. first ingredient\r\ny amt. second ingredient\r\n"
        "z amt. third ingredient\r\nAdd any additional ingredients for your recipe\r\n\r\n"
        "Type the recipe instructions here ...\r\n\r\nSERVINGS PER RECIPE:  x \r\n");
    EXPECT_EQ(Editor().picture.NewPictureFileName(), "");
    EXPECT_EQ(EditorFocus(), "rtbTitle");
    EXPECT_FALSE(Editor().imgTitleHide.Visible());
}

TEST_F(TheEditor, TheTemplateTitleIsBoldUnderlinedAndBrown) {
    OpenNew();
    RichTextBox& title = Editor().rtbTitle;
    EXPECT_EQ(title.SelLength(), 0);
    title.SetSelLength(19);
    EXPECT_EQ(title.SelColor(), 293286);
    EXPECT_EQ(title.SelBold(), true);
    EXPECT_EQ(title.SelUnderline(), true);
    EXPECT_EQ(title.SelFontSize(), 15.0F);
}

TEST_F(TheEditor, TheIngredientsOfTheTemplateAreItalic) {
    OpenNew();
    RichTextBox& recipe = Editor().rtbRecipe;
    recipe.Find("y amt. second ingredient", 0);
    EXPECT_EQ(recipe.SelItalic(), true);
    recipe.Find("Type the recipe", 0);
    EXPECT_EQ(recipe.SelItalic(), false);
}

TEST_F(TheEditor, CaptionsToolTipsAndMenusAreThoseOfTheDesign) {
    OpenNew();
    const frmAddRecipe& form = Editor();
    EXPECT_EQ(form.ibAdd.Caption(), "Add");
    EXPECT_EQ(form.ibAdd.ToolTipText(), "Add the recipe to the database");
    EXPECT_EQ(form.ibAssignPicture.Caption(), "Assign Picture");
    EXPECT_EQ(form.ibAssignPicture.ToolTipText(), "Assign a picture to this recipe");
    EXPECT_EQ(form.ibRemovePicture.Caption(), "Remove Picture");
    EXPECT_EQ(form.ibPrint.ToolTipText(), "Print");
    EXPECT_EQ(form.ibSpell.ToolTipText(), "Spell Checker");
    EXPECT_EQ(form.ibPaste.ToolTipText(), "Paste");
    EXPECT_EQ(form.ibBold.ToolTipText(), "Bold");
    EXPECT_EQ(form.ibItalic.ToolTipText(), "Italic");
    EXPECT_EQ(form.ibUnderline.ToolTipText(), "Underline");
    EXPECT_EQ(form.ibLeft.ToolTipText(), "Left Align");
    EXPECT_EQ(form.ibCenter.ToolTipText(), "Center");
    EXPECT_EQ(form.ibRight.ToolTipText(), "Right Align");
    const std::vector<std::pair<const char*, const char*>> entries = {
        {"mnuAdd", "&Add"},
        {"mnuCancel", "&Cancel"},
        {"mnuCopy", "&Copy"},
        {"mnuCut", "Cu&t"},
        {"mnuPaste", "&Paste"},
        {"mnuBold", "&Bold"},
        {"mnuUnderline", "&Underline"},
        {"mnuItalic", "&Italic"},
        {"mnuSpellCheck", "&Spell Check"}};
    for (const auto& [name, caption] : entries) {
        ASSERT_NE(MenuEntry(name), nullptr) << name;
        EXPECT_EQ(MenuEntry(name)->text().toStdString(), caption);
    }
    EXPECT_EQ(Menus(), (std::vector<std::string>{"&Recipe", "&Edit"}));
    const QList<QAction*> recipe = MenuBarOf(Editor()).actions()[0]->menu()->actions();
    ASSERT_EQ(recipe.size(), 3);
    EXPECT_TRUE(recipe[1]->isSeparator());
    EXPECT_EQ(MenuEntry("mnuBold")->shortcut().toString().toStdString(), "Ctrl+B");
    EXPECT_EQ(MenuEntry("mnuUnderline")->shortcut().toString().toStdString(), "Ctrl+U");
    EXPECT_EQ(MenuEntry("mnuItalic")->shortcut().toString().toStdString(), "Ctrl+I");
}

TEST_F(TheEditor, EveryButtonAndBoxHasANameForAScreenReader) {
    OpenNew();
    for (const Control* control : Editor().window.Controls()) {
        const std::string& name = control->Name();
        if (name.rfind("ib", 0) != 0 && name.rfind("rtb", 0) != 0) continue;
        EXPECT_FALSE(NameOf(*control).isEmpty()) << name;
    }
    OpenOn(4);
    EXPECT_EQ(NameOf(Editor().ibAdd), "Update") << "without the mark of its access key";
}

TEST_F(TheEditor, ButtonsWithNothingToDoYetLookDisabledAndDoNothing) {
    OpenNew();
    for (const ImageButton* button : {&Editor().ibPrint, &Editor().ibSpell}) {
        EXPECT_EQ(button->CurrentLook(), ImageButton::Look::Disabled) << button->Name();
        ClickOn(*button);
    }
    EXPECT_TRUE(EditorShown());
    EXPECT_FALSE(Editor().mnuSpellCheck.Enabled);
}

TEST_F(TheEditor, AnOwnRecipeOpensWithItsTitleAsTheFirstLine) {
    OpenOn(4);
    EXPECT_EQ(Editor().window.Caption(), "Edit Recipe #4");
    EXPECT_EQ(Editor().rtbRecipe.Text(), "Own Hake\r\nFry it.\r\nServe with lemon.\r\n");
    EXPECT_EQ(Editor().ibAdd.Caption(), "&Update");
    EXPECT_EQ(Editor().ibAdd.ToolTipText(), "Click to Update the recipe");
    EXPECT_TRUE(Editor().imgTitleHide.Visible());
    EXPECT_FALSE(Editor().rtbTitle.Visible());
    EXPECT_EQ(EditorFocus(), "rtbRecipe");
    EXPECT_FALSE(Editor().booRecipeChanged);
    EXPECT_FALSE(Editor().picture.booPictureChanged);
    Editor().rtbRecipe.SetSelStart(0);
    Editor().rtbRecipe.SetSelLength(8);
    EXPECT_EQ(Editor().rtbRecipe.SelColor(), 293286);
}

TEST_F(TheEditor, AStockRecipeOpensNothingOutsideEditMode) {
    Main().editor.LoadRecipeToUpdate(2);
    EXPECT_FALSE(EditorShown());
}

TEST_F(TheEditor, NumbersWithoutARecipeOpenNothing) {
    for (const int number : {-1, 0, 6, 7, 100}) {
        Main().editor.LoadRecipeToUpdate(number);
        EXPECT_FALSE(EditorShown()) << number;
    }
}

TEST_F(TheEditor, OpeningARecipeLocksTheViewer) {
    Main().editor.SetInPlaceEdit(true);
    OpenOn(4);
    EXPECT_FALSE(Main().editor.InPlaceEdit());
    EXPECT_TRUE(Main().ui.rtbSee.Locked());
}

TEST_F(TheEditor, AnEmptyTitleIsRefusedAndTheWindowStays) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "");
    Type("");
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Please, enter recipe title.");
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(EditorFocus(), "rtbTitle");
    EXPECT_EQ(Editor().window.Caption(), "Add Recipe");
    EXPECT_EQ(Editor().window.Native()->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(Main().ui.window.Native()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(TheEditor, ATitleOfNothingButLineEndsIsEmpty) {
    OpenNew();
    Editor().rtbTitle.SetText("\r\n\r\n \r\n");
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Please, enter recipe title.");
    EXPECT_TRUE(EditorShown());
}

TEST_F(TheEditor, TheTitleIsTheFirstLineThatHasSomethingInIt) {
    OpenNew();
    Editor().rtbTitle.SetText("\r\nGrilled Ling\r\nand more");
    EXPECT_EQ(Main().editor.Title(), "Grilled Ling");
    Editor().rtbTitle.SetText(" Ling ");
    EXPECT_EQ(Main().editor.Title(), "Ling ");
}

TEST_F(TheEditor, AClearedRecipeIsNotUpdatedAndTheSameMessageTellsWhy) {
    OpenOn(4);
    TypeAnew(Editor().rtbRecipe, "");
    WatchFiles();
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Please, enter recipe title.");
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(Editor().window.Caption(), "Edit Recipe #4");
    EXPECT_TRUE(Changes.empty());
}

TEST_F(TheEditor, ATextOfWhiteSpaceAloneIsACleared) {
    OpenOn(4);
    Editor().rtbRecipe.SetText(" \r\n\t \r\n");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(Editor().rtbRecipe.Text(), " \r\n\t \r\n");
}

TEST_F(TheEditor, AnUnchangedUpdateWritesNothingAndCloses) {
    OpenOn(4);
    WatchFiles();
    ClickOn(Editor().ibAdd);
    EXPECT_FALSE(EditorShown());
    EXPECT_TRUE(Changes.empty());
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(TheEditor, AFailedAddKeepsTheWindowWithWhatWasTyped) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Grilled Ling");
    TypeAnew(Editor().rtbRecipe, "Grill it.");
    FailWrites();
    ClickOn(Editor().ibAdd);
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(Editor().rtbTitle.Text(), "Grilled Ling");
    EXPECT_EQ(Editor().rtbRecipe.Text(), "Grill it.") << "the title must not stand in it twice";
    EXPECT_EQ(Editor().window.Caption(), "Add Recipe");
    EXPECT_EQ(Editor().window.Native()->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(Main().store.TotalNumRecords, 6);
}

TEST_F(TheEditor, AFailedUpdateKeepsTheWindowWithWhatWasTyped) {
    OpenOn(4);
    TypeAnew(Editor().rtbRecipe, "  Own Hake, better");
    FailWrites();
    ClickOn(Editor().ibAdd);
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(Editor().rtbRecipe.Text(), "  Own Hake, better");
    EXPECT_EQ(Editor().window.Caption(), "Edit Recipe #4");
    EXPECT_TRUE(Editor().booRecipeChanged);
}

TEST_F(TheEditor, CancelLeavesWithoutAQuestionAndTheNextOpeningIsNew) {
    OpenOn(4);
    Type("changed ");
    Main().ui.window.SetWindowState(Window::Minimized);
    ClickOn(Editor().ibCancel);
    EXPECT_FALSE(EditorShown());
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(Editor().lngRecipeNum, 0);
    EXPECT_EQ(Editor().rtbTitle.Text(), "");
    EXPECT_EQ(Editor().rtbRecipe.Text(), "");
    EXPECT_NE(Main().ui.window.WindowState(), Window::Minimized);
    OpenNew();
    EXPECT_EQ(Editor().window.Caption(), "Add Recipe");
    EXPECT_EQ(Editor().ibAdd.Caption(), "Add");
    EXPECT_EQ(Editor().ibAdd.ToolTipText(), "Add the recipe to the database");
    EXPECT_TRUE(Editor().rtbTitle.Visible());
    EXPECT_FALSE(Editor().imgTitleHide.Visible());
    EXPECT_EQ(Editor().rtbTitle.Text(), "TYPE THE TITLE HERE");
}

TEST_F(TheEditor, TheWindowManagersCloseIsACancel) {
    OpenOn(4);
    Editor().window.Close();
    EXPECT_FALSE(EditorShown());
    EXPECT_EQ(Editor().lngRecipeNum, 0);
}

TEST_F(TheEditor, EscapeDoesNotThrowTypedTextAway) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Half a title");
    Press(Qt::Key_Escape);
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(Editor().rtbTitle.Text(), "Half a title");
}

TEST_F(TheEditor, OutOfSightItAddsNothingAndOnlyClicks) {
    int clicks = 0;
    Main().sound.OnPlay = [&](const std::string&) { ++clicks; };
    OpenNew();
    Editor().window.Hide();
    WatchFiles();
    Main().editor.ClickAdd();
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(Changes.empty());
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(TheEditor, TheMenusCancelAndAddDoWhatTheButtonsDo) {
    OpenNew();
    MenuEntry("mnuCancel")->trigger();
    EXPECT_FALSE(EditorShown());
    OpenOn(5);
    MenuEntry("mnuAdd")->trigger();
    EXPECT_FALSE(EditorShown()) << "an unchanged update";
}

TEST_F(TheEditor, AltWithItsLetterPressesUpdate) {
    OpenOn(5);
    Press(Qt::Key_U, Qt::AltModifier);
    EXPECT_FALSE(EditorShown());
}

TEST_F(TheEditor, OpenForANewRecipeItComesToTheFrontAsItIs) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Half a title");
    Main().editor.ShowNew();
    EXPECT_EQ(Editor().rtbTitle.Text(), "Half a title");
}

TEST_F(TheEditor, UnsavedWorkIsAskedForBeforeAnotherRecipeTakesItsPlace) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Half a title");
    Boxes.Then(Dialogs::Answer::No);
    Main().editor.LoadRecipeToUpdate(4);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Editor().rtbTitle.Text(), "Half a title");
    EXPECT_EQ(Editor().lngRecipeNum, 7);
    Boxes.Then(Dialogs::Answer::Yes);
    Main().editor.LoadRecipeToUpdate(4);
    EXPECT_EQ(Editor().lngRecipeNum, 4);
    Main().editor.LoadRecipeToUpdate(5);
    EXPECT_EQ(Boxes.Shown.size(), 2U) << "nothing was typed in between";
    EXPECT_EQ(Editor().lngRecipeNum, 5);
}

TEST_F(TheEditor, TheSameRecipeOpenedAgainComesToTheFrontAsItIs) {
    OpenOn(4);
    Type("Very ");
    Main().editor.LoadRecipeToUpdate(4);
    EXPECT_EQ(Editor().rtbRecipe.Text().substr(0, 13), "Very Own Hake");
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(TheEditor, TabAndEnterGoOnFromTheTitleToTheRecipe) {
    OpenNew();
    Press(Qt::Key_Tab);
    EXPECT_EQ(EditorFocus(), "rtbRecipe");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(EditorFocus(), "rtbTitle");
    Press(Qt::Key_Return);
    EXPECT_EQ(EditorFocus(), "rtbRecipe");
    EXPECT_EQ(Editor().rtbTitle.Text(), "TYPE THE TITLE HERE");
}

TEST_F(TheEditor, InTheRecipeTabIsTextAndCtrlTabLeadsToTheTools) {
    OpenNew();
    TypeAnew(Editor().rtbRecipe, "a");
    Press(Qt::Key_Tab);
    Type("b");
    EXPECT_EQ(Editor().rtbRecipe.Text(), "a\tb");
    Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(EditorFocus(), "ibPaste");
}

TEST_F(TheEditor, EveryOpenButtonIsReachedByTab) {
    OpenNew();
    Editor().ibPaste.SetFocus();
    std::vector<std::string> reached;
    for (int i = 0; i < 20 && EditorFocus() != "rtbTitle"; ++i) {
        reached.push_back(EditorFocus());
        Press(Qt::Key_Tab);
    }
    EXPECT_EQ(reached, (std::vector<std::string>{"ibPaste", "ibBold", "ibItalic", "ibUnderline",
                                                 "ibLeft", "ibCenter", "ibRight", "ibAssignPicture",
                                                 "ibAdd", "ibCancel"}))
        << "and those that are dimmed are passed over";
}

TEST_F(TheEditor, TheContextMenuOfABoxPalesWhatCannotBeDone) {
    OpenNew();
    QWidget* box = Editor().rtbRecipe.Native();
    QTest::mouseClick(Focused(), Qt::RightButton);
    QContextMenuEvent asked(QContextMenuEvent::Mouse, {20, 20}, box->mapToGlobal(QPoint(20, 20)));
    QApplication::sendEvent(box->findChild<QWidget*>("qt_scrollarea_viewport"), &asked);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    const QImage look = menu->grab().toImage();
    // How dark the darkest spot of an entry is, from 0 for black.
    const auto darkest = [&](const QAction* action) {
        const QRect place = menu->actionGeometry(const_cast<QAction*>(action));
        int found = 255;
        for (int y = place.top(); y <= place.bottom(); ++y) {
            for (int x = place.left(); x <= place.right(); ++x)
                found = std::min(found, qGray(look.pixel(x, y)));
        }
        return found;
    };
    int open = 0;
    int shut = 0;
    for (const QAction* action : menu->actions()) {
        if (action->isSeparator()) continue;
        const std::string text = action->text().toStdString();
        if (action->isEnabled()) {
            ++open;
            EXPECT_LT(darkest(action), 70) << text;
        } else {
            ++shut;
            EXPECT_GT(darkest(action), 120) << text;
        }
    }
    menu->close();
    EXPECT_GT(open, 0);
    EXPECT_GT(shut, 2) << "nothing to undo, and nothing is selected";
}

}  // namespace
}  // namespace larder
