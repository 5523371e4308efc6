#include "edit/TextTools.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QTextEdit>

#include "behaviour/support/EditorBook.h"

namespace larder {
namespace {

using test::EditorBook;

class TheTextTools : public EditorBook {
  protected:
    void SetUp() override {
        EditorBook::SetUp();
        OpenNew();
        Editor().rtbRecipe.SetText("Salt the fish\r\nBake it");
        Editor().rtbRecipe.SetFocus();
    }
    RichTextBox& Box() { return Editor().rtbRecipe; }
    void CaretAt(int position) { Box().SetSelStart(position); }
    void Select(int from, int length) {
        Box().SetSelStart(from);
        Box().SetSelLength(length);
    }
    static bool Latched(const ImageButton& button) {
        return button.ButtonState() == ImageButton::Latched;
    }
    static QString ClipboardText() { return QGuiApplication::clipboard()->text(); }
    static void PutOnClipboard(const QString& type, const QByteArray& bytes) {
        auto* data = new QMimeData;
        data->setData(type, bytes);
        QGuiApplication::clipboard()->setMimeData(data);
    }
};

TEST_F(TheTextTools, AFormatTakesTheWordUnderTheCaret) {
    CaretAt(6);
    ClickOn(Editor().ibBold);
    EXPECT_EQ(Box().SelText(), "the");
    EXPECT_EQ(Box().SelBold(), true);
    EXPECT_TRUE(Latched(Editor().ibBold));
    Select(0, 4);
    EXPECT_EQ(Box().SelBold(), false);
}

TEST_F(TheTextTools, TheSecondPressTakesTheFormatBack) {
    CaretAt(6);
    ClickOn(Editor().ibItalic);
    ClickOn(Editor().ibItalic);
    EXPECT_EQ(Box().SelItalic(), false);
    EXPECT_FALSE(Latched(Editor().ibItalic));
}

TEST_F(TheTextTools, AMixedSelectionCountsAsWithoutTheFormat) {
    Select(0, 4);
    ClickOn(Editor().ibUnderline);
    Select(0, 8);
    EXPECT_EQ(Box().SelUnderline(), std::nullopt);
    EXPECT_FALSE(Latched(Editor().ibUnderline));
    ClickOn(Editor().ibUnderline);
    EXPECT_EQ(Box().SelUnderline(), true);
}

TEST_F(TheTextTools, ASelectionStaysAsItIs) {
    Select(2, 5);
    Editor().tools.SelectWord(Box());
    EXPECT_EQ(Box().SelStart(), 2);
    EXPECT_EQ(Box().SelLength(), 5);
}

TEST_F(TheTextTools, TheWordIsFoundAtEveryPlaceOfTheTextAndTheCaretNeverStandsWithinALineEnd) {
    const std::string text = Box().Text();
    for (int at = 0; at <= static_cast<int>(text.size()); ++at) {
        CaretAt(at);
        Editor().tools.SelectWord(Box());
        const std::string word = Box().SelText();
        EXPECT_EQ(word.find_first_of(" \r\n"), std::string::npos) << at;
        for (const int end : {Box().SelStart(), Box().SelStart() + Box().SelLength()}) {
            EXPECT_FALSE(end > 0 && end < static_cast<int>(text.size()) &&
                         text[static_cast<std::size_t>(end)] == '\n')
                << at;
        }
    }
    CaretAt(13);
    Editor().tools.SelectWord(Box());
    EXPECT_EQ(Box().SelText(), "fish");
    CaretAt(15);
    Editor().tools.SelectWord(Box());
    EXPECT_EQ(Box().SelText(), "Bake");
}

TEST_F(TheTextTools, OnAnEmptyLineAFormatIsForWhatIsTypedNext) {
    Box().SetText("a\r\n\r\nb");
    CaretAt(3);
    ClickOn(Editor().ibBold);
    EXPECT_TRUE(Latched(Editor().ibBold));
    Type("new");
    Select(3, 3);
    EXPECT_EQ(Box().SelText(), "new");
    EXPECT_EQ(Box().SelBold(), true);
}

TEST_F(TheTextTools, AlignmentIsThatOfTheParagraphAndTheFocusStaysInTheText) {
    CaretAt(15);
    ClickOn(Editor().ibCenter);
    EXPECT_EQ(Box().SelAlignment(), RichTextBox::Alignment::Center);
    EXPECT_TRUE(Latched(Editor().ibCenter));
    EXPECT_FALSE(Latched(Editor().ibLeft));
    EXPECT_EQ(EditorFocus(), "rtbRecipe");
    ClickOn(Editor().ibRight);
    EXPECT_EQ(Box().SelAlignment(), RichTextBox::Alignment::Right);
    EXPECT_TRUE(Latched(Editor().ibRight));
    CaretAt(0);
    EXPECT_TRUE(Latched(Editor().ibLeft)) << "the buttons follow the caret";
    ClickOn(Editor().ibLeft);
    EXPECT_EQ(Box().SelAlignment(), RichTextBox::Alignment::Left);
}

TEST_F(TheTextTools, TheButtonsFollowTheCaretOfTheUser) {
    Select(0, 4);
    ClickOn(Editor().ibBold);
    Press(Qt::Key_Home, Qt::ControlModifier);
    Press(Qt::Key_Right);
    EXPECT_TRUE(Latched(Editor().ibBold));
    Press(Qt::Key_End);
    EXPECT_FALSE(Latched(Editor().ibBold));
    Type("x");
    EXPECT_FALSE(Latched(Editor().ibBold));
    Ctrl(Qt::Key_B);
    EXPECT_TRUE(Latched(Editor().ibBold));
}

TEST_F(TheTextTools, TheKeysOfTheMenuFormat) {
    CaretAt(1);
    Ctrl(Qt::Key_B);
    Ctrl(Qt::Key_I);
    Ctrl(Qt::Key_U);
    EXPECT_EQ(Box().SelText(), "Salt");
    EXPECT_EQ(Box().SelBold(), true);
    EXPECT_EQ(Box().SelItalic(), true);
    EXPECT_EQ(Box().SelUnderline(), true);
}

TEST_F(TheTextTools, AMenuOpensByItsLetterAndActs) {
    CaretAt(1);
    Press(Qt::Key_E, Qt::AltModifier);
    ASSERT_TRUE(WaitUntil([] { return QApplication::activePopupWidget() != nullptr; }));
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(Captions(*menu),
              (std::vector<std::string>{"Copy", "Cut", "Paste", "-", "Bold", "Underline", "Italic",
                                        "-", "Spell Check"}));
    EXPECT_FALSE(MenuEntry("mnuSpellCheck")->isEnabled());
    QTest::keyClick(menu, Qt::Key_B);
    EXPECT_EQ(Box().SelBold(), true);
}

TEST_F(TheTextTools, ToolsActOnTheBoxThatLastHadTheFocus) {
    Editor().rtbTitle.SetFocus();
    Editor().rtbTitle.SetText("Two words");
    Editor().rtbTitle.SetSelStart(1);
    ClickOn(Editor().ibItalic);
    EXPECT_EQ(Editor().rtbTitle.SelText(), "Two");
    EXPECT_EQ(Editor().rtbTitle.SelItalic(), true);
    EXPECT_EQ(EditorFocus(), "rtbTitle");
    EXPECT_EQ(Editor().rtbActive, &Editor().rtbTitle);
    Press(Qt::Key_Tab);
    EXPECT_EQ(Editor().rtbActive, &Editor().rtbRecipe);
    EXPECT_FALSE(Latched(Editor().ibItalic)) << "the buttons show the box that has the focus now";
}

TEST_F(TheTextTools, TheButtonsFollowTheCaretInTheTitleToo) {
    RichTextBox& title = Editor().rtbTitle;
    title.SetText("Two words");
    title.SetFocus();
    title.SetSelLength(3);
    ClickOn(Editor().ibBold);
    Press(Qt::Key_End);
    EXPECT_FALSE(Latched(Editor().ibBold));
    Press(Qt::Key_Home);
    Press(Qt::Key_Right);
    EXPECT_TRUE(Latched(Editor().ibBold));
}

TEST_F(TheTextTools, TheMarkOfTheSelectionGoesFromTheBoxThatIsLeft) {
    RichTextBox& title = Editor().rtbTitle;
    title.SetText("Salt the fish");
    const std::pair<RichTextBox*, RichTextBox*> ways[] = {{&Box(), &title}, {&title, &Box()}};
    for (const auto& [left, entered] : ways) {
        left->SetFocus();
        left->SetSelStart(0);
        left->SetSelLength(13);
        entered->SetFocus();
        EXPECT_EQ(left->SelLength(), 13) << "the selection itself stays";
        EXPECT_FALSE(left->HideSelection());
        QApplication::processEvents();
        const QImage behind = left->Native()->grab().toImage();
        left->SetSelLength(0);
        EXPECT_EQ(behind, left->Native()->grab().toImage()) << left->Name();
    }
}

TEST_F(TheTextTools, PressedByTheKeyboardAToolGivesTheFocusBackToTheText) {
    QGuiApplication::clipboard()->setText("x");
    for (ImageButton* tool :
         {&Editor().ibLeft, &Editor().ibCenter, &Editor().ibRight, &Editor().ibPaste}) {
        tool->SetFocus();
        ASSERT_EQ(EditorFocus(), tool->Name());
        Press(Qt::Key_Space);
        EXPECT_EQ(EditorFocus(), "rtbRecipe") << tool->Name();
    }
}

TEST_F(TheTextTools, CopyCutAndPasteOfTheMenuWorkAsTheKeys) {
    Select(0, 4);
    MenuEntry("mnuCopy")->trigger();
    EXPECT_EQ(ClipboardText(), "Salt");
    MenuEntry("mnuCut")->trigger();
    EXPECT_EQ(Box().Text(), " the fish\r\nBake it");
    CaretAt(9);
    MenuEntry("mnuPaste")->trigger();
    EXPECT_EQ(Box().Text(), " the fishSalt\r\nBake it");
    ClickOn(Editor().ibPaste);
    EXPECT_EQ(Box().Text(), " the fishSaltSalt\r\nBake it");
    EXPECT_EQ(EditorFocus(), "rtbRecipe");
}

TEST_F(TheTextTools, CopyGivesRtfHtmlAndPlainText) {
    Select(0, 4);
    ClickOn(Editor().ibBold);
    Ctrl(Qt::Key_C);
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    EXPECT_TRUE(data->data("text/rtf").contains("\\b"));
    EXPECT_TRUE(data->html().contains("Salt"));
    EXPECT_EQ(data->text(), "Salt");
}

TEST_F(TheTextTools, PasteTakesRtfHtmlAndPlainTextFromOtherPrograms) {
    Box().SetText("");
    PutOnClipboard("text/rtf", "{\\rtf1\\ansi\\b bold\\b0  and plain}");
    Ctrl(Qt::Key_V);
    EXPECT_EQ(Box().Text(), "bold and plain");
    Select(0, 4);
    EXPECT_EQ(Box().SelBold(), true);
    Box().SetText("");
    PutOnClipboard("text/html", "<p>One <i>two</i></p><p>three</p>");
    Ctrl(Qt::Key_V);
    EXPECT_EQ(Box().Text(), "One two\r\nthree");
    Select(4, 3);
    EXPECT_EQ(Box().SelItalic(), true);
    Box().SetText("");
    PutOnClipboard("text/plain", "a\nb");
    Ctrl(Qt::Key_V);
    EXPECT_EQ(Box().Text(), "a\r\nb");
}

TEST_F(TheTextTools, UndoAndRedoWalkThroughTypingByAllTheUsualKeys) {
    const std::string before = Box().Text();
    CaretAt(0);
    Type("Now ");
    const std::string typed = Box().Text();
    Ctrl(Qt::Key_Z);
    EXPECT_EQ(Box().Text(), before);
    Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Box().Text(), typed);
    Ctrl(Qt::Key_Z);
    Ctrl(Qt::Key_Y);
    EXPECT_EQ(Box().Text(), typed);
}

TEST_F(TheTextTools, AFormatOfTheWholeTextIsUndone) {
    Ctrl(Qt::Key_A);
    Ctrl(Qt::Key_B);
    EXPECT_EQ(Box().SelBold(), true);
    Ctrl(Qt::Key_Z);
    Ctrl(Qt::Key_A);
    EXPECT_EQ(Box().SelBold(), false);
    EXPECT_EQ(Box().Text(), "Salt the fish\r\nBake it");
    Ctrl(Qt::Key_Y);
    Ctrl(Qt::Key_A);
    EXPECT_EQ(Box().SelBold(), true);
}

TEST_F(TheTextTools, AnAlignmentIsUndone) {
    CaretAt(0);
    ClickOn(Editor().ibCenter);
    Ctrl(Qt::Key_Z);
    EXPECT_EQ(Box().SelAlignment(), RichTextBox::Alignment::Left);
    EXPECT_FALSE(Latched(Editor().ibCenter));
}

TEST_F(TheTextTools, APasteOverEverythingIsUndone) {
    Ctrl(Qt::Key_A);
    PutOnClipboard("text/plain", "other");
    Ctrl(Qt::Key_V);
    EXPECT_EQ(Box().Text(), "other");
    Ctrl(Qt::Key_Z);
    EXPECT_EQ(Box().Text(), "Salt the fish\r\nBake it");
}

TEST_F(TheTextTools, WhatTheProgramPutInIsNotUndone) {
    ClickOn(Editor().ibCancel);
    OpenNew();
    for (int i = 0; i < 5; ++i)
        Ctrl(Qt::Key_Z);
    EXPECT_EQ(Editor().rtbTitle.Text(), "TYPE THE TITLE HERE");
    Editor().rtbTitle.SetSelLength(4);
    EXPECT_EQ(Editor().rtbTitle.SelColor(), 293286);
    Press(Qt::Key_Tab);
    Type("x");
    for (int i = 0; i < 5; ++i)
        Ctrl(Qt::Key_Z);
    EXPECT_EQ(Box().Text().substr(0, 12), "COOKING TIME");
}

TEST_F(TheTextTools, FiveMegabytesCanBePasted) {
    Box().SetText("");
    const QByteArray line = QByteArray("A line of a very long recipe from somewhere else.\n");
    PutOnClipboard("text/plain", line.repeated(100'000));
    Ctrl(Qt::Key_V);
    EXPECT_EQ(Box().Text().size(), 100'000U * 51U);
}

}  // namespace
}  // namespace larder
