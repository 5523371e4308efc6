#include "platform/RichTextBox.h"

#include "behaviour/support/RichTextBoxFixture.h"
#include "platform/Failure.h"
#include "support/TempFolder.h"

namespace larder::test {
namespace {

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

TEST_F(RichTextBoxTest, FontNamesComeBackFromTheScreenUnchanged) {
    box_.SetTextRTF(R"({\rtf1{\fonttbl{\f0\fswiss\fcharset0 Verdana;}}\f0 text})");
    Show();
    Type("x");
    EXPECT_NE(box_.TextRTF().find("Verdana;"), std::string::npos) << box_.TextRTF();
    EXPECT_NE(Edit().currentCharFormat().fontFamilies().toStringList().front(),
              QStringLiteral("Verdana"));
}

TEST_F(RichTextBoxTest, AFileIsLoadedOrItsFailureTold) {
    const TempFolder folder;
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
}  // namespace larder::test
