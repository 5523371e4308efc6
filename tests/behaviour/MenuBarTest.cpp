#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "ShownWindow.h"
#include "platform/Failure.h"
#include "platform/ImageButton.h"
#include "platform/Menu.h"
#include "platform/RichTextBox.h"
#include "platform/SendKeys.h"

namespace larder {
namespace {

class AMenuBar : public test::ShownWindow {
  protected:
    void SetUp() override {
        first_.Shortcut = "Ctrl+J";
        first_.OnClick = [this] { ++firstChosen_; };
        second_.OnClick = [this] { ++secondChosen_; };
        bar_.Add("mnuTest", "&Test", {&first_, &line_, &second_});
        bar_.Move({0, 0, 6000, bar_.RowHeight()});
        box_.Move({0, 1000, 6000, 3000});
        window.SetClientSize(6000, 4000);
        Show();
        box_.SetFocus();
    }
    QMenu* Opened() {
        QTest::keyClick(box_.Native(), Qt::Key_T, Qt::AltModifier);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    MenuItem first_{"mnuFirst", "&First"};
    MenuItem line_ = MenuItem::Separator("mnuLine");
    MenuItem second_{"mnuSecond", "&Second"};
    MenuBar bar_{window, "mnuBar"};
    RichTextBox box_{window, "rtbBox"};
    int firstChosen_ = 0;
    int secondChosen_ = 0;
};

TEST_F(AMenuBar, OpensByItsAccessKeyAndAnEntryActsByItsLetter) {
    QMenu* menu = Opened();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 3);
    EXPECT_TRUE(menu->actions()[1]->isSeparator());
    QTest::keyClick(menu, Qt::Key_S);
    EXPECT_EQ(secondChosen_, 1);
    EXPECT_TRUE(box_.HasFocus()) << "the focus comes back";
}

TEST_F(AMenuBar, AKeyActsWithoutTheMenu) {
    QTest::keyClick(box_.Native(), Qt::Key_J, Qt::ControlModifier);
    EXPECT_EQ(firstChosen_, 1);
    first_.Enabled = false;
    QTest::keyClick(box_.Native(), Qt::Key_J, Qt::ControlModifier);
    EXPECT_EQ(firstChosen_, 1);
}

TEST_F(AMenuBar, ShowsWhatIsDimmedOrHiddenWhenItOpens) {
    first_.Enabled = false;
    second_.Visible = false;
    QMenu* menu = Opened();
    ASSERT_NE(menu, nullptr);
    EXPECT_FALSE(menu->actions()[0]->isEnabled());
    EXPECT_FALSE(menu->actions()[2]->isVisible());
    menu->close();
}

TEST_F(AMenuBar, TakesOneRow) {
    EXPECT_GT(bar_.RowHeight(), 15 * TwipsPerPixel);
    EXPECT_LT(bar_.RowHeight(), 60 * TwipsPerPixel);
}

TEST_F(AMenuBar, SentKeysAreTyped) {
    SendKeys(box_, "{A}{B}^{A}^{X}{C}^{V}");
    EXPECT_EQ(box_.Text(), "CAB");
    EXPECT_THROW(SendKeys(box_, "^V"), Failure);
    EXPECT_THROW(SendKeys(box_, "{?}"), Failure);
}

TEST_F(AMenuBar, AButtonIsPressedByTheLetterInItsCaption) {
    ImageButton button(window, "ibTest");
    button.Move({0, 0, 600, 600});
    int clicks = 0;
    button.OnClick = [&] { ++clicks; };
    button.SetCaption("&Update");
    QTest::keyClick(box_.Native(), Qt::Key_U, Qt::AltModifier);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(AccessibleName(button), "Update");
    button.SetCaption("Add");
    QTest::keyClick(box_.Native(), Qt::Key_U, Qt::AltModifier);
    EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace larder
