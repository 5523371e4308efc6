#include "platform/RichTextBox.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QTextCursor>

#include "behaviour/support/RichTextBoxFixture.h"
#include "platform/Keys.h"

namespace larder::test {
namespace {

using RichTextBoxTypingTest = RichTextBoxTest;

TEST_F(RichTextBoxTypingTest, TypingIsToldAndStandsInTheText) {
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

TEST_F(RichTextBoxTypingTest, AFormatOnAnEmptySelectionIsThatOfWhatIsTypedNext) {
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

TEST_F(RichTextBoxTypingTest, TypingIntoAnEmptyParagraphTakesTheFormatOfItsOwnBreak) {
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

// What is typed behind the end takes its format; what is typed before leaves it alone.
TEST_F(RichTextBoxTypingTest, TypingWithinTheLastLineKeepsTheFormatOfTheEnd) {
    box_.SetTextRTF(R"({\rtf1 cods\i })");
    Show();
    const auto endIsItalic = [this] { return box_.TextRTF().find("\\i}") != std::string::npos; };
    Press(Qt::Key_Right);
    Type("o");
    EXPECT_EQ(box_.Text(), "coods");
    EXPECT_TRUE(endIsItalic());
    Press(Qt::Key_End);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(box_.Text(), "cood");
    EXPECT_TRUE(endIsItalic());
    Type("d");
    EXPECT_EQ(box_.Text(), "coodd");
    EXPECT_FALSE(endIsItalic());
}

TEST_F(RichTextBoxTypingTest, ShiftEnterIsALineBreak) {
    box_.SetText("ab");
    Show();
    Press(Qt::Key_Right);
    Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(box_.Text(), "a\r\nb");
    EXPECT_NE(box_.TextRTF().find("\\line"), std::string::npos);
}

TEST_F(RichTextBoxTypingTest, UndoTakesTypingBackAndTheProgramSeesIt) {
    box_.SetText("cod");
    Show();
    Type("big ");
    EXPECT_EQ(box_.Text(), "big cod");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), "cod");
    Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(box_.Text(), "big cod");
}

TEST_F(RichTextBoxTypingTest, UndoReachesTypingBehindAFormatOfTheProgram) {
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

TEST_F(RichTextBoxTypingTest, UndoDoesNotBringThePreviousRecipeBack) {
    box_.SetText("one");
    Show();
    Type("x");
    box_.SetText("two");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), "two");
    EXPECT_EQ(OnScreen(), "two");
}

TEST_F(RichTextBoxTypingTest, ALockedBoxCanBeSelectedInAndCopiedFromButNotTypedIn) {
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

TEST_F(RichTextBoxTypingTest, TheMouseSelects) {
    box_.SetText("word word");
    box_.SetLocked(true);
    Show();
    OnScreen();
    QTest::mouseDClick(Edit().viewport(), Qt::LeftButton, {}, QPoint(12, 12));
    EXPECT_EQ(box_.SelText(), "word");
    EXPECT_EQ(box_.SelStart(), 0);
}

TEST_F(RichTextBoxTypingTest, TabLeavesALockedBoxAndIsTextInAnOpenOne) {
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

TEST_F(RichTextBoxTypingTest, CopyAndPasteKeepTheFormats) {
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

TEST_F(RichTextBoxTypingTest, PasteTakesHtmlWithListsAndTables) {
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

TEST_F(RichTextBoxTypingTest, PasteOfHtmlCanBeReadOnThePaper) {
    auto* mime = new QMimeData;
    mime->setHtml(
        QStringLiteral("<p>0<span style='color:#000000;background-color:transparent'>1</span>"
                       "<span style='background-color:rgba(0,0,0,0)'>2</span>"
                       "<span style='color:#222222;background-color:#ffffff'>3</span>"
                       "<span style='color:#fefefe'>4</span>"
                       "<span style='color:#ffffff;background-color:#202020'>5</span>"
                       "<span style='color:#a67904'>6</span>"
                       "<span style='background-color:#ffff00'>7</span></p>"));
    QApplication::clipboard()->setMimeData(mime);
    Show();
    Press(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(box_.Text(), "01234567");
    const auto look = [this](int place) {
        QTextCursor cursor(Edit().document());
        cursor.setPosition(place + 1);
        const QTextCharFormat format = cursor.charFormat();
        const auto name = [&](QTextFormat::Property property, const QBrush& brush) {
            return format.hasProperty(property) ? brush.color().name().toStdString() : "none";
        };
        return name(QTextFormat::ForegroundBrush, format.foreground()) + " on " +
               name(QTextFormat::BackgroundBrush, format.background());
    };
    EXPECT_EQ(look(0), "none on none");
    EXPECT_EQ(look(1), "#000000 on none");
    EXPECT_EQ(look(2), "none on none");
    EXPECT_EQ(look(3), "#222222 on none") << "the white of another page";
    EXPECT_EQ(look(4), "none on none") << "would not be seen";
    EXPECT_EQ(look(5), "#ffffff on #202020");
    EXPECT_EQ(look(6), "#a67904 on none");
    EXPECT_EQ(look(7), "none on #ffff00");
}

TEST_F(RichTextBoxTypingTest, PasteOfPlainTextTakesTheFormatOfThePlaceAndKeepsForeignCharacters) {
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

TEST_F(RichTextBoxTypingTest, PasteOfAPictureKeepsIt) {
    QImage image(4, 3, QImage::Format_RGB32);
    image.fill(Qt::red);
    QApplication::clipboard()->setImage(image);
    Show();
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box_.Text(), " ");
    EXPECT_NE(box_.TextRTF().find("\\pngblip"), std::string::npos);
}

TEST_F(RichTextBoxTypingTest, PasteTakesAPictureThatABrowserNamesInHtmlToo) {
    QImage image(4, 3, QImage::Format_RGB32);
    image.fill(Qt::red);
    for (const bool words : {false, true}) {
        auto* mime = new QMimeData;
        mime->setImageData(image);
        mime->setHtml(QStringLiteral("<p>%1<img src=\"https://example.invalid/fish.png\"></p>")
                          .arg(words ? QStringLiteral("a fish") : QString()));
        mime->setText(QStringLiteral("https://example.invalid/fish.png"));
        QApplication::clipboard()->setMimeData(mime);
        box_.SetText("");
        Show();
        Press(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(box_.Text(), words ? "a fish" : " ");
        EXPECT_EQ(box_.TextRTF().find("\\pngblip") != std::string::npos, !words);
    }
}

TEST_F(RichTextBoxTypingTest, APictureComesBackByteForByteFromTheScreen) {
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

TEST_F(RichTextBoxTypingTest, AKeyThatTheProgramConsumesIsNotTyped) {
    box_.SetText("");
    Show();
    box_.OnKeyDown = [](int& code, int) {
        if (code == key::E) code = key::None;
    };
    Type("hE");
    Type("ex");
    EXPECT_EQ(box_.Text(), "hx");
}

TEST_F(RichTextBoxTypingTest, AnUpdateIsOneStepForUndo) {
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

// Qt takes out what is dragged and puts it in as one change, and tells of it only behind that.
TEST_F(RichTextBoxTypingTest, TextDraggedWithinTheBoxLeavesTheLayoutsThere) {
    box_.SetTextRTF(
        R"({\rtf1 a dragged \par\pard\qc b\par\pard c\par d\par e\par f\par g\par h\par i})");
    Show();
    QTextEdit& edit = Edit();
    QApplication::clipboard()->setText(QStringLiteral("dragged "));
    QTextCursor dragged = edit.textCursor();
    dragged.setPosition(2);
    dragged.setPosition(10, QTextCursor::KeepAnchor);
    QTextCursor place = edit.textCursor();
    place.setPosition(19);
    place.beginEditBlock();
    dragged.removeSelectedText();
    edit.setTextCursor(place);
    edit.paste();
    place.endEditBlock();
    EXPECT_EQ(box_.Text(), "a \r\nb\r\nc\r\nd\r\ne\r\ndragged f\r\ng\r\nh\r\ni");
    const std::string rtf = box_.TextRTF();
    EXPECT_NE(rtf.find("\\pard\\qc b\\par\r\n\\pard c\\par"), std::string::npos) << rtf;
    EXPECT_EQ(rtf.find("\\qc"), rtf.rfind("\\qc")) << rtf;
}

}  // namespace
}  // namespace larder::test
