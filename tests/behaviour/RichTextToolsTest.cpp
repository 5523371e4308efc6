#include <QScrollBar>
#include <QTextEdit>
#include <tuple>

#include "ShownWindow.h"
#include "platform/ImageButton.h"
#include "platform/RichTextBox.h"

namespace larder {
namespace {

// What an editor around a box asks of it: formats at the caret, undo, Tab and a scroll bar.
class ABoxWithTools : public test::ShownWindow {
  protected:
    void SetUp() override {
        box_.Move({0, 600, 4500, 2000});
        button_.Move({0, 0, 600, 500});
        window.SetClientSize(6000, 4000);
        box_.SetText("one two\r\nthree");
        Show();
        box_.SetFocus();
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(box_.Native(), key, modifiers);
    }
    void Select(int from, int length) {
        box_.SetSelStart(from);
        box_.SetSelLength(length);
    }
    QScrollBar& Bar() { return *static_cast<QTextEdit*>(box_.Native())->verticalScrollBar(); }

    ImageButton button_{window, "ibBefore"};
    RichTextBox box_{window, "rtbBox"};
};

TEST_F(ABoxWithTools, TellsTheFormatsAtTheCaretAlikeBeforeAndAfterItsTextIsRead) {
    const auto formats = [this] {
        return std::tuple(box_.SelBold(), box_.SelItalic(), box_.SelUnderline(), box_.SelFontSize(),
                          box_.SelColor(), box_.SelAlignment());
    };
    box_.SetSelStart(3);
    box_.SetSelBold(true);
    box_.SetSelColor(293286);
    box_.SetSelAlignment(RichTextBox::Alignment::Center);
    for (const char key : {'x', 'y', '\b', 'z', '\r', 'a'}) {
        QTest::keyClick(box_.Native(), key);
        const auto atOnce = formats();
        box_.Text();  // brings the text up to date with what was typed
        EXPECT_EQ(atOnce, formats()) << static_cast<int>(key);
    }
}

TEST_F(ABoxWithTools, UndoesAFormatOfAllThatItHoldsWhileItIsOpenToTyping) {
    Select(0, 14);
    box_.SetSelItalic(true);
    Key(Qt::Key_Z, Qt::ControlModifier);
    Select(0, 14);
    EXPECT_EQ(box_.SelItalic(), false);
    EXPECT_EQ(box_.Text(), "one two\r\nthree");
}

TEST_F(ABoxWithTools, DoesNotUndoWhatTheProgramGatheredInAnUpdate) {
    {
        const RichTextBox::Update gathered(box_);
        Select(0, 14);
        box_.SetSelItalic(true);
    }
    Key(Qt::Key_Z, Qt::ControlModifier);
    Select(0, 14);
    EXPECT_EQ(box_.SelItalic(), true);
}

TEST_F(ABoxWithTools, RedoesNothingWhileItIsLocked) {
    Key(Qt::Key_X);
    Key(Qt::Key_Z, Qt::ControlModifier);
    box_.SetLocked(true);
    Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), "one two\r\nthree");
}

TEST_F(ABoxWithTools, IsPassedOverByTabWhenItIsNoTabStop) {
    box_.SetTabStop(false);
    button_.SetFocus();
    QTest::keyClick(button_.Native(), Qt::Key_Tab);
    EXPECT_FALSE(box_.HasFocus());
    box_.SetTabStop(true);
    button_.SetFocus();
    QTest::keyClick(button_.Native(), Qt::Key_Tab);
    EXPECT_TRUE(box_.HasFocus());
}

TEST_F(ABoxWithTools, ShowsItsScrollBarOnlyForATextThatIsLongerThanItself) {
    box_.SetScrollBar(true);
    QApplication::processEvents();
    EXPECT_FALSE(Bar().isVisible());
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += "line\r\n";
    box_.SetText(text);
    QApplication::processEvents();
    EXPECT_TRUE(Bar().isVisible());
    box_.SetScrollBar(false);
    QApplication::processEvents();
    EXPECT_FALSE(Bar().isVisible());
}

}  // namespace
}  // namespace larder
