#include "platform/RichTextBox.h"

#include <QApplication>
#include <QLabel>
#include <QWheelEvent>

#include "behaviour/support/RichTextBoxFixture.h"

namespace larder::test {
namespace {

using RichTextBoxViewTest = RichTextBoxTest;

TEST_F(RichTextBoxViewTest, ThePositionIsReadInLinesAndMovedByLines) {
    box_.SetText(Lines(40));
    Show();
    EXPECT_EQ(box_.LineCount(), 41);
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
    box_.LineScroll(3);
    EXPECT_EQ(box_.FirstVisibleLine(), 3);
    box_.LineScroll(-1);
    EXPECT_EQ(box_.FirstVisibleLine(), 2);
    box_.LineScroll(-100);
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
    box_.LineScroll(1000);
    const std::int32_t last = box_.FirstVisibleLine();
    EXPECT_GT(last, 30);
    EXPECT_LT(last, 40);
    box_.LineScroll(-1);
    EXPECT_EQ(box_.FirstVisibleLine(), last - 1);
}

TEST_F(RichTextBoxViewTest, TheCaretAtTheEndShowsTheLastPageAndAtTheStartTheFirst) {
    box_.SetText(Lines(40));
    Show();
    box_.LineScroll(1000);
    const std::int32_t last = box_.FirstVisibleLine();
    box_.SetSelStart(0);
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
    box_.SetSelStart(static_cast<std::int32_t>(box_.Text().size()));
    EXPECT_EQ(box_.FirstVisibleLine(), last);
    box_.PageUp();
    const std::int32_t page = last - box_.FirstVisibleLine();
    EXPECT_GE(page, 3);
    EXPECT_LE(page, 7);
    box_.PageDown();
    EXPECT_EQ(box_.FirstVisibleLine(), last);
}

TEST_F(RichTextBoxViewTest, ABoxParkedBesideTheScreenIsMeasuredAsOneInView) {
    box_.SetText(Lines(40));
    Show();
    const auto measure = [this] {
        box_.SetSelStart(static_cast<std::int32_t>(box_.Text().size()));
        const std::int32_t last = box_.FirstVisibleLine();
        box_.SetSelStart(0);
        return last;
    };
    const std::int32_t inView = measure();
    box_.SetLeft(60000);
    EXPECT_EQ(measure(), inView);
    box_.SetVisible(false);
    EXPECT_EQ(measure(), inView);
    box_.SetText(Lines(20));
    EXPECT_EQ(measure(), inView - 20);
    box_.SetHeight(3000);
    EXPECT_LT(measure(), inView - 20);
}

TEST_F(RichTextBoxViewTest, ATextThatFitsDoesNotScroll) {
    box_.SetText("one\r\ntwo");
    Show();
    box_.SetSelStart(8);
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
    box_.LineScroll(5);
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
}

TEST_F(RichTextBoxViewTest, NewTextIsShownFromItsTop) {
    box_.SetText(Lines(40));
    Show();
    box_.LineScroll(10);
    box_.SetText(Lines(30));
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
    OnScreen();
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
}

TEST_F(RichTextBoxViewTest, FormatsDoNotScrollTheText) {
    box_.SetText(Lines(40));
    Show();
    box_.LineScroll(10);
    box_.Span("\r", true, true);
    box_.SetSelColor(0x479A6);
    EXPECT_EQ(box_.FirstVisibleLine(), 10);
}

TEST_F(RichTextBoxViewTest, TheWheelScrollsAndTells) {
    box_.SetText(Lines(40));
    Show();
    OnScreen();
    int scrolls = 0;
    box_.OnScroll = [&] { ++scrolls; };
    QWheelEvent wheel(QPointF(20, 20), Edit().viewport()->mapToGlobal(QPointF(20, 20)), QPoint(),
                      QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(Edit().viewport(), &wheel);
    EXPECT_GT(box_.FirstVisibleLine(), 0);
    EXPECT_GE(scrolls, 1);
}

TEST_F(RichTextBoxViewTest, AHiddenSelectionIsNotMarkedWithoutTheFocus) {
    box_.SetText("word");
    Show();
    box_.SetSelLength(4);
    other_.SetFocus();
    const QImage marked = Edit().viewport()->grab().toImage();
    box_.SetHideSelection(true);
    const QImage hidden = Edit().viewport()->grab().toImage();
    EXPECT_NE(marked, hidden);
    box_.SetHideSelection(false);
    EXPECT_EQ(Edit().viewport()->grab().toImage(), hidden) << "the mark has gone for good";
    box_.SetSelStart(0);
    box_.SetSelLength(4);
    EXPECT_EQ(Edit().viewport()->grab().toImage(), marked);
}

TEST_F(RichTextBoxViewTest, ATransparentBoxLetsTheWindowShowThrough) {
    box_.SetText("x");
    Show();
    QLabel art(Edit().parentWidget());
    art.setStyleSheet(QStringLiteral("background: red"));
    art.setGeometry(Edit().geometry());
    art.lower();
    art.show();
    const auto ground = [this] { return window_.Native()->grab().toImage().pixelColor(250, 60); };
    EXPECT_NE(ground(), QColor(Qt::red));
    box_.SetTransparent(true);
    EXPECT_EQ(ground(), QColor(Qt::red));
    box_.SetTransparent(false);
    EXPECT_NE(ground(), QColor(Qt::red));
}

}  // namespace
}  // namespace larder::test
