#include "platform/RichTextBox.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QTest>
#include <QTextEdit>
#include <QWheelEvent>

#include "platform/Application.h"
#include "platform/Failure.h"
#include "platform/Keys.h"
#include "platform/Window.h"
#include "support/TempFolder.h"

namespace larder {
namespace {

constexpr char kRecipe[] =
    R"({\rtf1\ansi\deff0{\fonttbl{\f0\froman Times New Roman;}{\f1\fswiss Arial;}})"
    R"(\b\fs30 Baked Cod\b0\fs24\par\par 1 whole cod\par 2 lemons\par\i Bake it.\i0\par})";

std::string Lines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "line " + std::to_string(i) + "\r\n";
    return text + "end";
}

class RichTextBoxTest : public testing::Test {
  protected:
    RichTextBoxTest() {
        window_.SetClientSize(9000, 6000);
        box_.Move({0, 0, 4500, 1500});
        box_.OnChange = [this] { ++changes_; };
        box_.OnSelChange = [this] { ++moves_; };
    }
    void Show() {
        window_.Show();
        box_.SetFocus();
        Application::DoEvents();
    }
    QTextEdit& Edit() { return *static_cast<QTextEdit*>(box_.Native()); }
    void Type(const char* text) { QTest::keyClicks(&Edit(), QString::fromLatin1(text)); }
    void Press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QTest::keyClick(&Edit(), key, with);
    }
    std::string OnScreen() {
        Edit().viewport()->repaint();
        return Edit().toPlainText().toStdString();
    }

    Window window_{"frmTest"};
    RichTextBox box_{window_, "rtbSee"};
    RichTextBox other_{window_, "rtbOther"};
    int changes_ = 0;
    int moves_ = 0;
};

TEST_F(RichTextBoxTest, ABreakCountsTwoInTextAndPositions) {
    box_.SetTextRTF(kRecipe);
    EXPECT_EQ(box_.Text(), "Baked Cod\r\n\r\n1 whole cod\r\n2 lemons\r\nBake it.\r\n");
    EXPECT_EQ(box_.Find("lemons"), 28);
    EXPECT_EQ(box_.SelStart(), 28);
    EXPECT_EQ(box_.SelLength(), 6);
}

TEST_F(RichTextBoxTest, TextThatIsNotRtfIsTakenAsPlain) {
    box_.SetTextRTF("no RTF\rat all");
    EXPECT_EQ(box_.Text(), "no RTF\r\nat all");
    box_.SetTextRTF("");
    EXPECT_EQ(box_.Text(), "");
}

TEST_F(RichTextBoxTest, SettingTextDropsAllFormats) {
    box_.SetTextRTF(kRecipe);
    box_.SetText("plain");
    box_.SetSelLength(5);
    EXPECT_EQ(box_.SelBold(), false);
    EXPECT_EQ(box_.SelFontSize(), 12.0F);
}

TEST_F(RichTextBoxTest, ACharacterOutsideTheCodePageShowsAsAQuestionMarkAndSurvives) {
    box_.SetTextRTF(R"({\rtf1 a\u20320?b})");
    EXPECT_EQ(box_.Text(), "a?b");
    EXPECT_NE(box_.TextRTF().find("\\u20320"), std::string::npos);
    Show();
    EXPECT_EQ(OnScreen(), "a\u4F60b");
    Type("x");
    EXPECT_EQ(box_.Text(), "xa?b");
    EXPECT_NE(box_.TextRTF().find("\\u20320"), std::string::npos);
}

TEST_F(RichTextBoxTest, PositionsAreKeptWithinTheTextAndOutOfBreaks) {
    box_.SetText("ab\r\ncd");
    box_.SetSelStart(100);
    EXPECT_EQ(box_.SelStart(), 6);
    box_.SetSelStart(-5);
    EXPECT_EQ(box_.SelStart(), 0);
    box_.SetSelStart(3);
    EXPECT_EQ(box_.SelStart(), 2);
    box_.SetSelStart(0);
    box_.SetSelLength(3);
    EXPECT_EQ(box_.SelLength(), 4);
    box_.SetSelLength(100);
    EXPECT_EQ(box_.SelLength(), 6);
}

TEST_F(RichTextBoxTest, SettingTheStartEmptiesTheSelection) {
    box_.SetText("some text");
    box_.SetSelLength(4);
    box_.SetSelStart(2);
    EXPECT_EQ(box_.SelLength(), 0);
}

TEST_F(RichTextBoxTest, CrCrIsTwoBreaksAndCrLfIsOne) {
    box_.SetText("ab");
    box_.SetSelStart(1);
    box_.SetSelText("\r\r");
    EXPECT_EQ(box_.Text(), "a\r\n\r\nb");
    EXPECT_EQ(box_.SelStart(), 5);
    box_.SetSelText("\r\n");
    EXPECT_EQ(box_.Text(), "a\r\n\r\n\r\nb");
    box_.SetSelText("\n");
    EXPECT_EQ(box_.Text(), "a\r\n\r\n\r\n\r\nb");
    EXPECT_EQ(box_.SelStart(), 9);
}

TEST_F(RichTextBoxTest, NewTextTakesTheFormatOfItsPlace) {
    box_.SetTextRTF(kRecipe);
    box_.SetSelStart(5);
    box_.SetSelText(" Atlantic");
    box_.SetSelStart(5);
    box_.SetSelLength(9);
    EXPECT_EQ(box_.SelText(), " Atlantic");
    EXPECT_EQ(box_.SelBold(), true);
    EXPECT_EQ(box_.SelFontSize(), 15.0F);
}

TEST_F(RichTextBoxTest, AMixedSelectionHasNoFormat) {
    box_.SetTextRTF(kRecipe);
    box_.SetSelLength(20);
    EXPECT_EQ(box_.SelBold(), std::nullopt);
    EXPECT_EQ(box_.SelFontSize(), std::nullopt);
    EXPECT_EQ(box_.SelItalic(), false);
}

TEST_F(RichTextBoxTest, OneSizeThenAnotherMakesTheWholeTextThatSize) {
    box_.SetTextRTF(kRecipe);
    box_.SetSelLength(static_cast<std::int32_t>(box_.Text().size()));
    box_.SetSelFontSize(3);
    box_.SetSelFontSize(16);
    EXPECT_EQ(box_.SelFontSize(), 16.0F);
    EXPECT_EQ(box_.SelBold(), std::nullopt);
}

TEST_F(RichTextBoxTest, ASizeThatNoFontHasIsRefused) {
    for (const float size : {0.0F, -3.0F, 5000.0F}) {
        EXPECT_EQ(Ignoring([&] { box_.SetSelFontSize(size); }), failure::InvalidArgument);
    }
}

TEST_F(RichTextBoxTest, ColoursHaveRedInTheLowByteAndTextWithoutOneIsBlack) {
    box_.SetText("red");
    box_.SetSelLength(3);
    EXPECT_EQ(box_.SelColor(), 0);
    box_.SetSelColor(0x0000FF);
    EXPECT_EQ(box_.SelColor(), 0x0000FF);
    Show();
    OnScreen();
    QTextCursor cursor = Edit().textCursor();
    EXPECT_EQ(cursor.charFormat().foreground().color(), QColor(255, 0, 0));
}

TEST_F(RichTextBoxTest, AlignmentIsThatOfTheParagraph) {
    box_.SetTextRTF(R"({\rtf1\qc mid\par\pard\qr right\par\pard left\par\qj both})");
    EXPECT_EQ(box_.SelAlignment(), RichTextBox::Alignment::Center);
    box_.SetSelStart(5);
    EXPECT_EQ(box_.SelAlignment(), RichTextBox::Alignment::Right);
    box_.SetSelStart(12);
    EXPECT_EQ(box_.SelAlignment(), RichTextBox::Alignment::Left);
    box_.SetSelStart(18);
    EXPECT_EQ(box_.SelAlignment(), std::nullopt);
    box_.SetSelStart(0);
    box_.SetSelLength(10);
    EXPECT_EQ(box_.SelAlignment(), std::nullopt);
}

TEST_F(RichTextBoxTest, AligningALineAlignsTheWholeParagraph) {
    box_.SetTextRTF(R"({\rtf1 one\line two\par three})");
    box_.SetSelAlignment(RichTextBox::Alignment::Center);
    box_.SetSelStart(6);
    EXPECT_EQ(box_.SelAlignment(), RichTextBox::Alignment::Center);
    box_.SetSelStart(11);
    EXPECT_EQ(box_.SelAlignment(), RichTextBox::Alignment::Left);
}

TEST_F(RichTextBoxTest, FindHonoursItsRangeAndOptions) {
    box_.SetText("Codfish cod COD");
    EXPECT_EQ(box_.Find("cod"), 0);
    EXPECT_EQ(box_.Find("cod", 1), 8);
    EXPECT_EQ(box_.Find("cod", 0, -1, RichTextBox::WholeWord), 8);
    EXPECT_EQ(box_.Find("COD", 0, -1, RichTextBox::MatchCase), 12);
    EXPECT_EQ(box_.Find("cod", 1, 10), -1);
    EXPECT_EQ(box_.Find("cod", 1, 11), 8);
    EXPECT_EQ(box_.Find("trout"), -1);
    EXPECT_EQ(box_.SelStart(), 8);
    EXPECT_EQ(box_.SelLength(), 3);
}

TEST_F(RichTextBoxTest, FindWithoutAStartBeginsAtTheSelection) {
    box_.SetText("cod and cod");
    box_.SetSelStart(1);
    EXPECT_EQ(box_.Find("cod"), 8);
}

TEST_F(RichTextBoxTest, FindingTheEndOfTheFirstLineGivesItsPosition) {
    box_.SetTextRTF(kRecipe);
    EXPECT_EQ(box_.Find("\r", 1), 9);
}

TEST_F(RichTextBoxTest, SpanSelectsTheFirstLineWithoutItsBreak) {
    box_.SetTextRTF(kRecipe);
    box_.Span("\r", true, true);
    EXPECT_EQ(box_.SelText(), "Baked Cod");
}

TEST_F(RichTextBoxTest, SpanBackwardStopsBehindABreak) {
    box_.SetText("one\r\ntwo words");
    box_.SetSelStart(7);
    box_.Span(" \r", false, true);
    EXPECT_EQ(box_.SelStart(), 5);
    EXPECT_EQ(box_.SelText(), "tw");
    box_.SetSelLength(0);
    box_.Span(" \r", true, true);
    EXPECT_EQ(box_.SelText(), "two");
}

TEST_F(RichTextBoxTest, SpanTakesLeadingWhiteSpaceAndSelRtfDeletesIt) {
    box_.SetText("  \r\n\tTitle\r\nBody");
    box_.Span(" \r\n\t", true, false);
    box_.SetSelRTF("");
    EXPECT_EQ(box_.Text(), "Title\r\nBody");
}

TEST_F(RichTextBoxTest, ATitleGoesInFrontOfTheBodyWithItsFormat) {
    other_.SetTextRTF(R"({\rtf1\b\fs40 My Chowder\b0})");
    other_.Span("\r\n\t", true, true);
    box_.SetTextRTF(R"({\rtf1\fs30 COOKING TIME:\par\i fish\i0\par})");
    box_.SetSelStart(0);
    box_.SetSelRTF(other_.SelRTF());
    box_.SetSelStart(static_cast<std::int32_t>(other_.SelText().size()));
    box_.SetSelText("\r\r");
    EXPECT_EQ(box_.Text(), "My Chowder\r\n\r\nCOOKING TIME:\r\nfish\r\n");
    box_.SetSelStart(0);
    box_.SetSelLength(10);
    EXPECT_EQ(box_.SelBold(), true);
    EXPECT_EQ(box_.SelFontSize(), 20.0F);
    box_.Find("COOKING");
    EXPECT_EQ(box_.SelBold(), false);
    EXPECT_EQ(box_.SelFontSize(), 15.0F);
}

TEST_F(RichTextBoxTest, SelRtfOfARangeHoldsThatRangeOnly) {
    box_.SetTextRTF(kRecipe);
    box_.Find("2 lemons");
    other_.SetTextRTF(box_.SelRTF());
    EXPECT_EQ(other_.Text(), "2 lemons");
}

TEST_F(RichTextBoxTest, ChangesByProgramAreTold) {
    box_.SetText("text");
    EXPECT_EQ(changes_, 1);
    box_.SetSelLength(2);
    EXPECT_EQ(moves_, 1);
    box_.SetSelBold(true);
    EXPECT_EQ(changes_, 2);
    box_.SetSelText("x");
    EXPECT_EQ(changes_, 3);
    EXPECT_EQ(moves_, 2);
    box_.SetSelStart(1);
    EXPECT_EQ(moves_, 2) << "the caret was there";
    EXPECT_EQ(box_.Find("nowhere"), -1);
    EXPECT_EQ(moves_, 2);
}

TEST_F(RichTextBoxTest, TypingIsToldAndStandsInTheText) {
    box_.SetText("cod");
    Show();
    changes_ = moves_ = 0;
    Press(Qt::Key_End);
    EXPECT_EQ(moves_, 1);
    EXPECT_EQ(changes_, 0);
    Type("s");
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(moves_, 2);
    Press(Qt::Key_Return);
    Type("x");
    EXPECT_EQ(box_.Text(), "cods\r\nx");
    EXPECT_EQ(box_.SelStart(), 7);
}

TEST_F(RichTextBoxTest, AFormatOnAnEmptySelectionIsThatOfWhatIsTypedNext) {
    box_.SetText("plain ");
    Show();
    box_.SetSelStart(6);
    box_.SetSelBold(true);
    EXPECT_EQ(box_.SelBold(), true);
    Type("bold");
    box_.SetSelStart(6);
    box_.SetSelLength(4);
    EXPECT_EQ(box_.SelText(), "bold");
    EXPECT_EQ(box_.SelBold(), true);
    box_.SetSelStart(0);
    box_.SetSelLength(6);
    EXPECT_EQ(box_.SelBold(), false);
}

TEST_F(RichTextBoxTest, TypingIntoAnEmptyParagraphTakesTheFormatOfItsOwnBreak) {
    box_.SetTextRTF(kRecipe);
    Show();
    Press(Qt::Key_Down);
    EXPECT_EQ(box_.SelBold(), false);
    Type("x");
    box_.SetSelStart(11);
    box_.SetSelLength(1);
    EXPECT_EQ(box_.SelText(), "x");
    EXPECT_EQ(box_.SelBold(), false);
    EXPECT_EQ(box_.SelFontSize(), 12.0F);
}

TEST_F(RichTextBoxTest, ShiftEnterIsALineBreak) {
    box_.SetText("ab");
    Show();
    Press(Qt::Key_Right);
    Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(box_.Text(), "a\r\nb");
    EXPECT_NE(box_.TextRTF().find("\\line"), std::string::npos);
}

TEST_F(RichTextBoxTest, UndoTakesTypingBackAndTheProgramSeesIt) {
    box_.SetText("cod");
    Show();
    Type("big ");
    EXPECT_EQ(box_.Text(), "big cod");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), "cod");
    Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(box_.Text(), "big cod");
}

TEST_F(RichTextBoxTest, UndoReachesTypingBehindAFormatOfTheProgram) {
    box_.SetText("cod");
    Show();
    Type("big ");
    box_.SetSelStart(0);
    box_.SetSelLength(7);
    box_.SetSelBold(true);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), "big cod");
    box_.SetSelLength(7);
    EXPECT_EQ(box_.SelBold(), false);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), "cod");
}

TEST_F(RichTextBoxTest, UndoDoesNotBringThePreviousRecipeBack) {
    box_.SetText("one");
    Show();
    Type("x");
    box_.SetText("two");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), "two");
    EXPECT_EQ(OnScreen(), "two");
}

TEST_F(RichTextBoxTest, ALockedBoxCanBeSelectedInAndCopiedFromButNotTypedIn) {
    box_.SetTextRTF(kRecipe);
    box_.SetLocked(true);
    Show();
    const std::string before = box_.Text();
    Type("x");
    Press(Qt::Key_Delete);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), before);
    Press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(box_.SelText(), "Baked Cod");
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Baked Cod"));
}

TEST_F(RichTextBoxTest, TheMouseSelects) {
    box_.SetText("word word");
    box_.SetLocked(true);
    Show();
    OnScreen();
    QTest::mouseDClick(Edit().viewport(), Qt::LeftButton, {}, QPoint(12, 12));
    EXPECT_EQ(box_.SelText(), "word");
    EXPECT_EQ(box_.SelStart(), 0);
}

TEST_F(RichTextBoxTest, TabLeavesALockedBoxAndIsTextInAnOpenOne) {
    box_.SetText("a");
    other_.Move({0, 2000, 4500, 1500});
    Show();
    Press(Qt::Key_Tab);
    EXPECT_EQ(box_.Text(), "\ta");
    box_.SetLocked(true);
    Press(Qt::Key_Tab);
    EXPECT_TRUE(other_.HasFocus());
    EXPECT_EQ(box_.Text(), "\ta");
}

TEST_F(RichTextBoxTest, CopyAndPasteKeepTheFormats) {
    box_.SetTextRTF(kRecipe);
    Show();
    box_.SetSelLength(9);
    Press(Qt::Key_C, Qt::ControlModifier);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_TRUE(copied->hasFormat(QStringLiteral("text/rtf")));
    EXPECT_TRUE(copied->hasFormat(QStringLiteral("application/rtf")));
    EXPECT_TRUE(copied->hasHtml());
    EXPECT_EQ(copied->text(), QStringLiteral("Baked Cod"));
    box_.SetText("plain");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), "Baked Codplain");
    box_.SetSelStart(0);
    box_.SetSelLength(9);
    EXPECT_EQ(box_.SelBold(), true);
    EXPECT_EQ(box_.SelFontSize(), 15.0F);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), "plain");
}

TEST_F(RichTextBoxTest, PasteTakesHtmlWithListsAndTables) {
    auto* mime = new QMimeData;
    mime->setHtml(
        QStringLiteral("<p>A <b>bold</b> word</p><ol><li>cut</li><li>cook</li></ol>"
                       "<table><tr><td>1</td><td>cod</td></tr></table>"));
    QApplication::clipboard()->setMimeData(mime);
    Show();
    Press(Qt::Key_V, Qt::ControlModifier);
    const std::string text = box_.Text();
    EXPECT_NE(text.find("A bold word\r\n1.\tcut\r\n2.\tcook"), std::string::npos) << text;
    EXPECT_NE(text.find("1\tcod"), std::string::npos) << text;
    box_.Find("bold", 0);
    EXPECT_EQ(box_.SelBold(), true);
}

TEST_F(RichTextBoxTest, PasteOfPlainTextTakesTheFormatOfThePlaceAndKeepsForeignCharacters) {
    QApplication::clipboard()->setText(QString::fromUtf8("\u4F60\ny"));
    box_.SetTextRTF(R"({\rtf1\b bold})");
    Show();
    Press(Qt::Key_End);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), "bold?\r\ny");
    EXPECT_EQ(OnScreen(), "bold\u4F60\ny");
    box_.SetSelStart(4);
    box_.SetSelLength(4);
    EXPECT_EQ(box_.SelBold(), true);
}

TEST_F(RichTextBoxTest, PasteOfAPictureKeepsIt) {
    QImage image(4, 3, QImage::Format_RGB32);
    image.fill(Qt::red);
    QApplication::clipboard()->setImage(image);
    Show();
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), " ");
    EXPECT_NE(box_.TextRTF().find("\\pngblip"), std::string::npos);
}

TEST_F(RichTextBoxTest, APictureComesBackByteForByteFromTheScreen) {
    const std::string rtf =
        R"({\rtf1 a{\pict\pngblip\picwgoal300\pichgoal150 89504e470d0a1a0a00}b})";
    box_.SetTextRTF(rtf);
    const std::string before = box_.TextRTF();
    ASSERT_NE(before.find("89504e470d0a1a0a00"), std::string::npos) << before;
    Show();
    Type("x");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(box_.TextRTF(), before);
}

TEST_F(RichTextBoxTest, FontNamesComeBackFromTheScreenUnchanged) {
    box_.SetTextRTF(R"({\rtf1{\fonttbl{\f0\fswiss\fcharset0 Verdana;}}\f0 text})");
    Show();
    Type("x");
    EXPECT_NE(box_.TextRTF().find("Verdana;"), std::string::npos) << box_.TextRTF();
    EXPECT_NE(Edit().currentCharFormat().fontFamilies().toStringList().front(),
              QStringLiteral("Verdana"));
}

TEST_F(RichTextBoxTest, ThePositionIsReadInLinesAndMovedByLines) {
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

TEST_F(RichTextBoxTest, TheCaretAtTheEndShowsTheLastPageAndAtTheStartTheFirst) {
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

TEST_F(RichTextBoxTest, ABoxParkedBesideTheScreenIsMeasuredAsOneInView) {
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

TEST_F(RichTextBoxTest, ATextThatFitsDoesNotScroll) {
    box_.SetText("one\r\ntwo");
    Show();
    box_.SetSelStart(8);
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
    box_.LineScroll(5);
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
}

TEST_F(RichTextBoxTest, NewTextIsShownFromItsTop) {
    box_.SetText(Lines(40));
    Show();
    box_.LineScroll(10);
    box_.SetText(Lines(30));
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
    OnScreen();
    EXPECT_EQ(box_.FirstVisibleLine(), 0);
}

TEST_F(RichTextBoxTest, FormatsDoNotScrollTheText) {
    box_.SetText(Lines(40));
    Show();
    box_.LineScroll(10);
    box_.Span("\r", true, true);
    box_.SetSelColor(0x479A6);
    EXPECT_EQ(box_.FirstVisibleLine(), 10);
}

TEST_F(RichTextBoxTest, TheWheelScrollsAndTells) {
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

TEST_F(RichTextBoxTest, AKeyThatTheProgramConsumesIsNotTyped) {
    box_.SetText("");
    Show();
    box_.OnKeyDown = [](int& code, int) {
        if (code == key::E) code = key::None;
    };
    Type("hE");
    Type("ex");
    EXPECT_EQ(box_.Text(), "hx");
}

TEST_F(RichTextBoxTest, AHiddenSelectionIsNotMarkedWithoutTheFocus) {
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

TEST_F(RichTextBoxTest, ATransparentBoxLetsTheWindowShowThrough) {
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

TEST_F(RichTextBoxTest, AnUpdateIsOneStepForUndo) {
    box_.SetText("one two");
    Show();
    Type("x");
    {
        const RichTextBox::Update update(box_);
        box_.SetSelStart(0);
        box_.SetSelLength(4);
        box_.SetSelBold(true);
        box_.SetSelItalic(true);
    }
    Press(Qt::Key_Z, Qt::ControlModifier);
    box_.SetSelStart(0);
    box_.SetSelLength(4);
    EXPECT_EQ(box_.SelBold(), false);
    EXPECT_EQ(box_.SelItalic(), false);
    EXPECT_EQ(box_.Text(), "xone two");
}

TEST_F(RichTextBoxTest, AFileIsLoadedOrItsFailureTold) {
    const test::TempFolder folder;
    folder.Write("a.rtf", kRecipe);
    box_.LoadFile(folder.Native("a.rtf"));
    EXPECT_EQ(box_.Find("lemons"), 28);
    EXPECT_EQ(Ignoring([&] { box_.LoadFile(folder.Native("b.rtf")); }), failure::FileNotFound);
    EXPECT_EQ(Ignoring([&] { box_.LoadFile(folder.Native()); }), failure::PathAccess);
}

TEST_F(RichTextBoxTest, ABoxMayOutliveItsWindow) {
    auto window = std::make_unique<Window>("frmGone");
    auto box = std::make_unique<RichTextBox>(*window, "rtbGone");
    box->SetText("text");
    window->Show();
    Application::DoEvents();
    window.reset();
    EXPECT_EQ(box->Native(), nullptr);
    box.reset();
}

}  // namespace
}  // namespace larder
