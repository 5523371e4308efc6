#include "search/frmSearch.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QScreen>
#include <QTest>
#include <QTextEdit>
#include <QWindow>
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "behaviour/support/SearchBook.h"
#include "platform/Text.h"

namespace larder::test {
namespace {

class FindDialog : public SearchBook {
  protected:
    void SetUp() override {
        AddSmallBook();
        ASSERT_TRUE(StartWithIndex());
        OpenDialog();
    }
    bool WordModeShown() {
        frmSearch& it = Dialog();
        const bool words = it.rtbSearch1.Visible();
        EXPECT_EQ(it.ibByWord.ButtonState(), words ? 1 : 0);
        EXPECT_EQ(it.ibByNum.ButtonState(), words ? 0 : 1);
        for (Control* control :
             {static_cast<Control*>(&it.lblPrompt1), static_cast<Control*>(&it.chkOnly),
              static_cast<Control*>(&it.lblChkBox), static_cast<Control*>(&it.linOnly)}) {
            EXPECT_EQ(control->Visible(), words) << control->Name();
        }
        EXPECT_EQ(it.rtbSearch2.Visible(), !words);
        EXPECT_EQ(it.lblPrompt2.Visible(), !words);
        EXPECT_EQ(DialogFocus(), words ? "rtbSearch_1" : "rtbSearch_2");
        return words;
    }
    void PasteBold(const std::string& text) {
        auto* mime = new QMimeData;
        mime->setHtml("<b><font size='7' color='red'>" + QString::fromStdString(text) +
                      "</font></b>");
        QApplication::clipboard()->setMimeData(mime);
        Press(Qt::Key_V, Qt::ControlModifier);
    }
};

TEST_F(FindDialog, TheTitleAndTheCaptions) {
    frmSearch& it = Dialog();
    EXPECT_EQ(it.window.Caption(), "Find Recipes");
    EXPECT_EQ(it.lblPrompt1.Caption(), "Enter the words that you are looking for:");
    EXPECT_EQ(it.lblPrompt2.Caption(), "Enter the number of the recipe:");
    EXPECT_EQ(it.lblChkBox.Caption(), "Only search recipes in the Fish Recipes box");
    EXPECT_EQ(Widget("chkOnly")->property("text").toString().toStdString(),
              "&Only search recipes in the Choices box");
}

TEST_F(FindDialog, TheBoxOfTheModeLetsTheArtShowThrough) {
    for (const bool words : {true, false}) {
        if (!words) Click("ibByNum");
        const QWidget* box = Widget(words ? "rtbSearch_1" : "rtbSearch_2");
        const QPoint free = box->geometry().center();  // no text there
        const QColor seen = Dialog().window.Native()->grab().toImage().pixelColor(
            free * Dialog().window.Native()->devicePixelRatio());
        const QColor art = Dialog().imgGround.Native()->grab().toImage().pixelColor(
            free * Dialog().window.Native()->devicePixelRatio());
        EXPECT_EQ(seen, art);
    }
}

TEST_F(FindDialog, WordsAreWrittenFromTheLeftAndNumbersFromTheRight) {
    EXPECT_EQ(Dialog().rtbSearch1.SelAlignment(), RichTextBox::Alignment::Left);
    EXPECT_EQ(Dialog().rtbSearch2.SelAlignment(), RichTextBox::Alignment::Right);
}

TEST_F(FindDialog, BeginsWithWords) {
    EXPECT_TRUE(WordModeShown());
}

TEST_F(FindDialog, AButtonLeadsToEachMode) {
    Click("ibByNum");
    EXPECT_FALSE(WordModeShown());
    Click("ibByWord");
    EXPECT_TRUE(WordModeShown());
}

TEST_F(FindDialog, AltNAndAltWLeadToEachMode) {
    Press(Qt::Key_N, Qt::AltModifier);
    EXPECT_FALSE(WordModeShown());
    Press(Qt::Key_W, Qt::AltModifier);
    EXPECT_TRUE(WordModeShown());
    EXPECT_EQ(Dialog().rtbSearch1.Text(), "") << "the keys are no text";
    EXPECT_EQ(Dialog().rtbSearch2.Text(), "");
}

TEST_F(FindDialog, LettersAloneAreText) {
    Type("wonf");
    EXPECT_EQ(Dialog().rtbSearch1.Text(), "wonf");
}

TEST_F(FindDialog, ComingBackToItPutsTheFocusInTheBoxOfTheMode) {
    Press(Qt::Key_N, Qt::AltModifier);
    Dialog().ibCancel.SetFocus();
    Main().ui.window.BringToFront();
    ASSERT_TRUE(WaitUntil([&] { return Main().ui.window.Native()->isActiveWindow(); }));
    Dialog().window.BringToFront();
    ASSERT_TRUE(WaitUntil([&] { return Dialog().window.Native()->isActiveWindow(); }));
    EXPECT_EQ(DialogFocus(), "rtbSearch_2");
}

TEST_F(FindDialog, EnterFindsAndIsNoText) {
    Type("salmon");
    Press(Qt::Key_Return);
    EXPECT_EQ(Dialog().rtbSearch1.Text(), "salmon");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1, 2, 4, 6, 7}));
    EXPECT_TRUE(DialogShown()) << "it stays open across finds";
}

TEST_F(FindDialog, EnterFindsWhateverControlHasTheFocus) {
    Type("salmon");
    Dialog().ibCancel.SetFocus();
    Press(Qt::Key_Enter);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "SEARCH");
    EXPECT_TRUE(DialogShown());
}

TEST_F(FindDialog, TheFindButtonAndAltFFindToo) {
    Type("salmon");
    Click("ibFind");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1, 2, 4, 6, 7}));
    TypeAnew("dill");
    Press(Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 3, 4, 7}));
}

TEST_F(FindDialog, EscapeHidesItAndKeepsWhatWasTyped) {
    Type("salmon");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(DialogShown());
    OpenDialog();
    EXPECT_EQ(Dialog().rtbSearch1.Text(), "salmon");
}

TEST_F(FindDialog, CancelAndTheFrameHideItToo) {
    Click("ibCancel");
    EXPECT_FALSE(DialogShown());
    OpenDialog();
    Dialog().window.Close();
    EXPECT_FALSE(DialogShown());
    OpenDialog();
    Type("salmon");
    EXPECT_EQ(Dialog().rtbSearch1.Text(), "salmon");
}

TEST_F(FindDialog, ClosingCancelsAFillButForAGrowingList) {
    Main().VList[1].booSearching = true;
    Main().intListTicket.Next();
    const std::int16_t ticket = Main().intListTicket.Value();
    Press(Qt::Key_Escape);
    EXPECT_EQ(Main().intListTicket.Value(), ticket);
    Main().VList[1].booSearching = false;
    OpenDialog();
    Press(Qt::Key_Escape);
    EXPECT_EQ(Main().intListTicket.Value(), 0);
}

TEST_F(FindDialog, TheFindButtonOfTheMainWindowOpensIt) {
    Press(Qt::Key_Escape);
    Click("ibSearch");
    EXPECT_TRUE(DialogShown());
}

TEST_F(FindDialog, TheMainWindowStaysUsable) {
    EXPECT_FALSE(Dialog().window.Native()->isModal());
    ClickCategory("SAUCES");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{3, 4, 7}));
    EXPECT_TRUE(DialogShown());
}

TEST_F(FindDialog, AltOTogglesTheCheckBoxAndGoesToIt) {
    QWindow* window = Dialog().window.Native()->windowHandle();
    QTest::keyClick(window, Qt::Key_O, Qt::AltModifier);
    EXPECT_EQ(Dialog().chkOnly.Value(), 1) << "at once, before the next key is handled";
    EXPECT_EQ(DialogFocus(), "chkOnly");
    QTest::keyClick(window, Qt::Key_O, Qt::AltModifier);
    EXPECT_EQ(Dialog().chkOnly.Value(), 0);
    QTest::qWait(200);
    EXPECT_EQ(Dialog().chkOnly.Value(), 0) << "and once";
}

TEST_F(FindDialog, AClickOnTheTextBesideTheCheckBoxTogglesIt) {
    Click("lblChkBox");
    EXPECT_EQ(Dialog().chkOnly.Value(), 1);
    Click("lblChkBox");
    EXPECT_EQ(Dialog().chkOnly.Value(), 0);
}

TEST_F(FindDialog, AClickOnTheCheckBoxItselfTogglesIt) {
    QWidget* box = Widget("chkOnly");
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, {box->height() / 2, box->height() / 2});
    EXPECT_EQ(Dialog().chkOnly.Value(), 1);
}

TEST_F(FindDialog, AnEmptyBoxFindsNothingAndChangesNothing) {
    const std::string category = Main().ui.lblCategory.Caption();
    const std::vector<int> before = ShownNumbers();
    Press(Qt::Key_Return);
    Press(Qt::Key_N, Qt::AltModifier);
    Press(Qt::Key_Return);
    EXPECT_EQ(Main().ui.lblCategory.Caption(), category);
    EXPECT_EQ(Main().strLastRecipeCategory, "MY FAVORITES");
    EXPECT_EQ(ShownNumbers(), before);
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(FindDialog, EveryButtonAndTheTextOfTheCheckBoxClickOnce) {
    int heard = 0;
    Main().sound.OnPlay = [&](const std::string&) { ++heard; };
    const auto clicks = [&](const std::function<void()>& act) {
        heard = 0;
        act();
        return heard;
    };
    for (const char* name : {"ibByNum", "ibByWord", "lblChkBox"})
        EXPECT_EQ(clicks([&] { Click(name); }), 1) << name;
    EXPECT_EQ(clicks([&] { Click("ibFind"); }), 1) << "with nothing typed";
    EXPECT_EQ(clicks([&] { Press(Qt::Key_Return); }), 1) << "the same";
    EXPECT_EQ(clicks([&] { Press(Qt::Key_F, Qt::AltModifier); }), 1);
    Type("salmon");
    EXPECT_EQ(clicks([&] { Click("ibFind"); }), 1);
    EXPECT_EQ(clicks([&] { Press(Qt::Key_Return); }), 1);
    EXPECT_EQ(clicks([&] { FindNumber("3"); }), 1) << "Alt+N is silent";
    EXPECT_EQ(clicks([&] {
                  TypeAnew("");
                  Press(Qt::Key_Return);
              }),
              1)
        << "no number typed";
    EXPECT_EQ(clicks([&] { Press(Qt::Key_W, Qt::AltModifier); }), 0);
    EXPECT_EQ(clicks([&] { Press(Qt::Key_O, Qt::AltModifier); }), 0);
    EXPECT_EQ(clicks([&] { Click("ibCancel"); }), 1);
    EXPECT_FALSE(DialogShown());
}

TEST_F(FindDialog, TheSoundOfFindComesBeforeWhatItDoes) {
    std::string category;
    Main().sound.OnPlay = [&](const std::string&) { category = Main().ui.lblCategory.Caption(); };
    FindWords("salmon");
    EXPECT_EQ(category, "MY FAVORITES");
}

TEST_F(FindDialog, LeavingABoxStripsTheFormatsOfWhatWasPasted) {
    PasteBold("salmon");
    Dialog().rtbSearch1.SetSelStart(0);
    Dialog().rtbSearch1.SetSelLength(6);
    ASSERT_EQ(Dialog().rtbSearch1.SelBold(), true) << "or this would show nothing";
    Dialog().ibCancel.SetFocus();
    RichTextBox& box = Dialog().rtbSearch1;
    EXPECT_EQ(box.Text(), "salmon");
    box.SetSelStart(0);
    box.SetSelLength(6);
    EXPECT_EQ(box.SelBold(), false);
    EXPECT_EQ(box.SelColor(), 0);
}

TEST_F(FindDialog, ANumberStaysOnTheRightWhenItsBoxIsLeft) {
    Press(Qt::Key_N, Qt::AltModifier);
    PasteBold("12");
    Dialog().ibCancel.SetFocus();
    Dialog().rtbSearch2.SetSelStart(0);
    EXPECT_EQ(Dialog().rtbSearch2.Text(), "12");
    EXPECT_EQ(Dialog().rtbSearch2.SelAlignment(), RichTextBox::Alignment::Right);
}

// A dialog that was not there before.
class NewFindDialog : public SearchBook {
  protected:
    void SetUp() override {
        AddSmallBook();
        ASSERT_TRUE(StartWithIndex());
    }
};

TEST_F(NewFindDialog, ItOpensBesideTheCategoryList) {
    OpenDialog();
    const Rectangle list = Main().ui.lvwX1.Place();
    const auto distance = static_cast<float>(RoundToLong(list.Height / 9));
    const Rectangle main = Main().ui.window.ClientPlace();
    const Rectangle place = Dialog().window.Place();
    const Rectangle screen = Dialog().window.WorkArea();
    EXPECT_NEAR(place.Left, main.Left + list.Left + distance, TwipsPerPixel);
    const float lowest = screen.Top + screen.Height - place.Height - 40 * TwipsPerPixel;
    EXPECT_NEAR(place.Top, std::min(main.Top + list.Top + distance, lowest), TwipsPerPixel);
}

TEST_F(FindDialog, OpensANinthOfTheCategoryListInsideItsCorner) {
    const Rectangle list = Main().ui.lvwX1.Place();
    const auto distance = static_cast<float>(RoundToLong(list.Height / 9));
    Main().ui.window.MoveTo(0, 0);
    Dialog().CenterIt();
    const Rectangle main = Main().ui.window.ClientPlace();
    const Rectangle screen = Dialog().window.WorkArea();
    const Rectangle place = Dialog().window.Place();
    const float left = main.Left + list.Left + distance;
    const float top = main.Top + list.Top + distance;
    ASSERT_LT(left + place.Width, screen.Left + screen.Width);
    EXPECT_NEAR(place.Left, left, TwipsPerPixel);
    if (top + place.Height + 40 * TwipsPerPixel <= screen.Top + screen.Height) {
        EXPECT_NEAR(place.Top, top, TwipsPerPixel);
    }
}

TEST_F(FindDialog, NeverHasAPartOffTheScreen) {
    const Rectangle screen = Dialog().window.WorkArea();
    for (const float where : {-60000.0F, -3000.0F, 9000.0F, 60000.0F}) {
        Main().ui.window.MoveTo(where, where);
        Dialog().CenterIt();
        const Rectangle place = Dialog().window.Place();
        EXPECT_GE(place.Left, screen.Left);
        EXPECT_GE(place.Top, screen.Top);
        EXPECT_LE(place.Left + place.Width, screen.Left + screen.Width);
        EXPECT_LE(place.Top + place.Height, screen.Top + screen.Height);
    }
}

TEST_F(FindDialog, StaysWhereTheUserHasPutIt) {
    Dialog().window.MoveTo(1500, 1500);
    const float left = Dialog().window.Place().Left;
    Press(Qt::Key_Escape);
    OpenDialog();
    EXPECT_EQ(Dialog().window.Place().Left, left);
}

TEST_F(FindDialog, TabGoesThroughTheControlsOfTheMode) {
    const auto round = [&](Qt::Key key) {
        std::vector<std::string> names;
        do {
            names.push_back(DialogFocus());
            Press(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        } while (names.front() != DialogFocus() && names.size() < 20);
        return names;
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(round(Qt::Key_Tab),
              (Names{"rtbSearch_1", "chkOnly", "ibFind", "ibCancel", "ibByWord", "ibByNum"}));
    EXPECT_EQ(round(Qt::Key_Backtab),
              (Names{"rtbSearch_1", "ibByNum", "ibByWord", "ibCancel", "ibFind", "chkOnly"}));
    Press(Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(round(Qt::Key_Tab),
              (Names{"rtbSearch_2", "ibFind", "ibCancel", "ibByWord", "ibByNum"}));
    EXPECT_EQ(Dialog().rtbSearch1.Text() + Dialog().rtbSearch2.Text(), "") << "no text";
}

TEST_F(FindDialog, EveryControlThatTakesTheFocusHasAName) {
    for (Control* control : Dialog().window.Controls()) {
        if (control->Native()->focusPolicy() == Qt::NoFocus) continue;
        EXPECT_FALSE(control->Native()->accessibleName().isEmpty()) << control->Name();
    }
}

TEST_F(FindDialog, GoesWithTheMainWindow) {
    Type("salmon");
    Close();
    ASSERT_TRUE(Restart());
    EXPECT_EQ(Dialog().rtbSearch1.Text(), "") << "a new run begins anew";
}

}  // namespace
}  // namespace larder::test
