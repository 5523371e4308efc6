#include "platform/Menu.h"

#include <QAction>
#include <QMenu>
#include <QTimer>

#include "ShownWindow.h"
#include "platform/CheckBox.h"

namespace larder {
namespace {

class AMenu : public test::ShownWindow {
  protected:
    AMenu() {
        for (MenuItem* item : {&edit_, &line_, &remove_, &line2_, &print_}) {
            item->OnClick = [this, item] { chosen_ += item->Name; };
            menu_.Add(*item);
        }
    }

    // Pops it up and does this to the menu that the user sees.
    void PopupAnd(const std::function<void(QMenu&)>& act) {
        QTimer::singleShot(0, [&] {
            auto* shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(shown, nullptr);
            place_ = shown->pos();
            texts_.clear();
            for (QAction* action : shown->actions()) {
                if (!shown->actionGeometry(action).isEmpty()) {
                    texts_ += action->isSeparator() ? "-" : action->text().toStdString();
                    texts_ += "|";
                }
            }
            act(*shown);
            shown->close();
        });
        menu_.Popup(window);
    }
    static void Nothing(QMenu&) {}

    MenuItem edit_{"mnuEdit", "&Edit"};
    MenuItem line_ = MenuItem::Separator("mnuLine");
    MenuItem remove_{"mnuRemove", "&Remove"};
    MenuItem line2_ = MenuItem::Separator("mnuLine2");
    MenuItem print_{"mnuPrint", "&Print"};
    PopupMenu menu_{"mnuPopup"};
    std::string chosen_;
    std::string texts_;
    QPoint place_;
};

TEST_F(AMenu, TheChosenEntryIsClickedWhenItHasClosed) {
    Show();
    bool openAtClick = true;
    remove_.OnClick = [&] {
        openAtClick = QApplication::activePopupWidget() != nullptr;
        chosen_ += "remove";
    };
    PopupAnd([](QMenu& menu) { QTest::keyClick(&menu, Qt::Key_R); });
    EXPECT_EQ(chosen_, "remove");
    EXPECT_FALSE(openAtClick);
    EXPECT_EQ(texts_, "&Edit|-|&Remove|-|&Print|");
}

TEST_F(AMenu, ClosedWithoutAChoiceItDoesNothing) {
    Show();
    PopupAnd([](QMenu& menu) { QTest::keyClick(&menu, Qt::Key_Escape); });
    EXPECT_EQ(chosen_, "");
}

TEST_F(AMenu, HiddenEntriesAndTheSeparatorsLeftOverAreLeftOut) {
    Show();
    remove_.Visible = false;
    PopupAnd(&Nothing);
    EXPECT_EQ(texts_, "&Edit|-|&Print|");
    remove_.Visible = true;
    edit_.Visible = print_.Visible = false;
    PopupAnd(&Nothing);
    EXPECT_EQ(texts_, "&Remove|");
}

TEST_F(AMenu, ADisabledEntryIsNotChosen) {
    Show();
    remove_.Enabled = false;
    PopupAnd([](QMenu& menu) { QTest::keyClick(&menu, Qt::Key_R); });
    EXPECT_EQ(chosen_, "");
}

TEST_F(AMenu, FromTheKeyboardItPopsUpAtTheControlWithTheFocus) {
    CheckBox box(window, "box");
    box.Move({1500, 1500, 1500, 300});
    window.SetClientSize(6000, 4500);
    Show();
    box.SetFocus();
    QTest::keyClick(box.Native(), Qt::Key_A);
    PopupAnd(&Nothing);
    EXPECT_EQ(place_, box.Native()->mapToGlobal(box.Native()->rect().center()));
}

}  // namespace
}  // namespace larder
