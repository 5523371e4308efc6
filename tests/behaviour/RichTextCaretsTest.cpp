#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QTextEdit>
#include <algorithm>
#include <random>
#include <vector>

#include "behaviour/support/EditorBook.h"
#include "support/Seed.h"

namespace larder {
namespace {

using test::EditorBook;

// Where the cook types on, having taken something back or made it again.
class TheCaretAfterUndo : public EditorBook {
  protected:
    void SetUp() override {
        EditorBook::SetUp();
        OpenNew();
        std::string text;
        for (int line = 0; line < 60; ++line)
            text += "Salt the fish\r\n";
        Box().SetText(text + "Bake it");
        Box().SetFocus();
        end_ = static_cast<int>(Box().Text().size());
        Application::DoEvents();
    }
    RichTextBox& Box() { return Editor().rtbRecipe; }
    QTextEdit& Edit() { return *qobject_cast<QTextEdit*>(Box().Native()); }
    // As a press with the mouse leaves it.
    void CaretAt(int position) {
        Box().SetSelStart(position);
        Edit().ensureCursorVisible();
    }
    void Select(int from, int length) {
        CaretAt(from);
        Box().SetSelLength(length);
    }
    void Undo() { Ctrl(Qt::Key_Z); }
    void Redo() { Ctrl(Qt::Key_Y); }
    void ExpectCaret(int position, const std::string& when) {
        EXPECT_EQ(Box().SelStart(), position) << when;
        EXPECT_EQ(Box().SelLength(), 0) << when;
        const QRect caret = Edit().cursorRect();
        EXPECT_TRUE(Edit().viewport()->rect().intersects(caret)) << when << ": out of sight";
    }
    void ExpectCarets(int undone, int redone, const std::string& what) {
        Undo();
        ExpectCaret(undone, what + " undone");
        Redo();
        ExpectCaret(redone, what + " redone");
        Edit().verticalScrollBar()->setValue(0);
        Undo();
        ExpectCaret(undone, what + " undone again");
    }
    void Clip(const char* type, const char* bytes) {
        auto* data = new QMimeData;
        data->setData(type, bytes);
        QGuiApplication::clipboard()->setMimeData(data);
    }
    static constexpr int Line = 15;  // positions of a line
    int end_ = 0;
};

TEST_F(TheCaretAfterUndo, OfAFormatStandsBehindTheWord) {
    for (ImageButton* tool : {&Editor().ibBold, &Editor().ibItalic, &Editor().ibUnderline}) {
        CaretAt(end_);
        ClickOn(*tool);
        ExpectCarets(end_, end_, tool->Name() + " at the end");
        CaretAt(40 * Line + 6);
        ClickOn(*tool);
        ExpectCarets(40 * Line + 8, 40 * Line + 8, tool->Name() + " in the middle");
    }
    Type("X");
    EXPECT_EQ(Box().Text().substr(40 * Line, 10), "Salt theX ");
}

TEST_F(TheCaretAfterUndo, OfAFormatOverSeveralFormatsStandsAtItsEnd) {
    Select(40 * Line + 2, 4);
    ClickOn(Editor().ibItalic);
    Select(40 * Line, 13);
    ClickOn(Editor().ibBold);
    ExpectCarets(40 * Line + 13, 40 * Line + 13, "bold");
}

TEST_F(TheCaretAfterUndo, OfAnAlignmentStaysInItsParagraph) {
    for (ImageButton* tool : {&Editor().ibCenter, &Editor().ibRight}) {
        for (const int place : {0, 40 * Line, 40 * Line + 5, 40 * Line + 13, end_ - 7, end_}) {
            CaretAt(place);
            ClickOn(*tool);
            ExpectCarets(place, place, tool->Name() + " at " + std::to_string(place));
        }
    }
    Type("X");
    EXPECT_TRUE(Box().Text().ends_with("Bake itX"));
}

TEST_F(TheCaretAfterUndo, TheToolsShowTheFormatThere) {
    CaretAt(40 * Line);
    ClickOn(Editor().ibCenter);
    Undo();
    EXPECT_NE(Editor().ibCenter.ButtonState(), ImageButton::Latched);
    EXPECT_EQ(Editor().ibLeft.ButtonState(), ImageButton::Latched);
    Redo();
    EXPECT_EQ(Editor().ibCenter.ButtonState(), ImageButton::Latched);
}

TEST_F(TheCaretAfterUndo, OfTypingOverASelectionStandsBehindIt) {
    Select(40 * Line + 5, 3);
    Type("a big");
    ExpectCarets(40 * Line + 8, 40 * Line + 10, "typing");
    EXPECT_EQ(Box().Text().substr(40 * Line, 13), "Salt the fish");
}

TEST_F(TheCaretAfterUndo, OfAPasteStandsBehindWhatStoodThere) {
    Clip("text/plain", "one\ntwo");
    Select(40 * Line + 5, 3);
    Ctrl(Qt::Key_V);
    ExpectCarets(40 * Line + 8, 40 * Line + 13, "plain text over a word");
    CaretAt(end_);
    Ctrl(Qt::Key_V);
    ExpectCarets(end_, end_ + 8, "plain text at the end");
    Clip("text/rtf", "{\\rtf1\\qc one\\par two\\par}");
    CaretAt(40 * Line + 5);
    Ctrl(Qt::Key_V);
    ExpectCarets(40 * Line + 5, 40 * Line + 15, "centred lines");
}

TEST_F(TheCaretAfterUndo, OfReturnStandsWhereItWasPressed) {
    CaretAt(40 * Line + 4);
    Press(Qt::Key_Return);
    ExpectCarets(40 * Line + 4, 40 * Line + 6, "return");
    ClickOn(Editor().ibCenter);
    Press(Qt::Key_Return);
    ExpectCarets(40 * Line + 4, 40 * Line + 6, "return in a centred line");
}

TEST_F(TheCaretAfterUndo, OfADeletionStandsBehindWhatCameBack) {
    Select(40 * Line + 5, 20);
    Press(Qt::Key_Delete);
    ExpectCarets(40 * Line + 25, 40 * Line + 5, "delete");
    Select(40 * Line + 5, 20);
    Ctrl(Qt::Key_X);
    ExpectCarets(40 * Line + 25, 40 * Line + 5, "cut");
}

// What Qt does when a word is let go: it tells of nothing before the word is put in.
TEST_F(TheCaretAfterUndo, OfADragStandsBehindTheWordInItsOldPlace) {
    Clip("text/plain", "the ");
    Select(40 * Line + 5, 4);
    QTextCursor place = Edit().textCursor();
    place.setPosition(10);
    place.beginEditBlock();
    {
        const QSignalBlocker quiet(Edit());
        Edit().textCursor().removeSelectedText();
        Edit().setTextCursor(place);
    }
    Edit().paste();
    place.endEditBlock();
    ASSERT_EQ(Box().Text().substr(0, 17), "Salt the fthe ish");
    ExpectCarets(40 * Line + 9, 14, "drag");
}

TEST_F(TheCaretAfterUndo, OfAChangeOfTheProgramStandsAtTheChange) {
    CaretAt(end_);
    Type("x");  // which is kept, and all that comes behind it with it
    {
        const RichTextBox::Update update(Box());
        for (const int line : {30, 40}) {
            Box().SetSelStart(line * Line + 5);
            Box().SetSelLength(3);
            Box().SetSelText("every");
        }
    }
    ExpectCarets(30 * Line + 8, 40 * Line + 10, "replacement");
}

TEST_F(TheCaretAfterUndo, FollowsStepByStep) {
    CaretAt(20 * Line);
    ClickOn(Editor().ibCenter);
    Select(30 * Line, 4);
    Type("Fry");
    CaretAt(40 * Line + 1);
    ClickOn(Editor().ibBold);
    Undo();
    ExpectCaret(40 * Line + 3, "bold undone");
    Undo();
    ExpectCaret(30 * Line + 4, "typing undone");
    Undo();
    ExpectCaret(20 * Line, "centre undone");
    Redo();
    ExpectCaret(20 * Line, "centre redone");
    Redo();
    ExpectCaret(30 * Line + 3, "typing redone");
}

TEST_F(TheCaretAfterUndo, IsNotThatOfAStepThatCannotBeMadeAgain) {
    CaretAt(40 * Line);
    ClickOn(Editor().ibCenter);
    Undo();
    CaretAt(10 * Line);
    Type("a");
    ExpectCarets(10 * Line, 10 * Line + 1, "typing");
}

// Steps that a cook makes in any order, each with the places that the caret is to have when it is
// taken back and made again: where the change ended before, and after.
class AnyHistory : public TheCaretAfterUndo {
  protected:
    int Below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random_); }
    int Steps() { return Edit().document()->availableUndoSteps(); }
    int EndOfSelection() { return Box().SelStart() + Box().SelLength(); }

    void Act() {
        Select(Below(static_cast<int>(Box().Text().size()) + 1), Below(2) * Below(40));
        const std::string text = Box().Text();
        const int from = Steps();
        int before = EndOfSelection();
        switch (Below(6)) {
            case 0:
                Type("big fish");
                break;
            case 1:
                Press(Qt::Key_Return);
                break;
            case 2:
                Press(Qt::Key_Backspace);
                break;
            case 3:
                Clip("text/rtf", "{\\rtf1\\qr one\\par\\b two}");
                Ctrl(Qt::Key_V);
                break;
            case 4:
                ClickOn(Editor().ibItalic);
                before = EndOfSelection();  // the word, where nothing was selected
                break;
            default:
                ClickOn(Below(2) == 0 ? Editor().ibCenter : Editor().ibLeft);
                break;
        }
        const int to = Steps();
        while (!made_.empty() && made_.back().To > from)
            made_.pop_back();
        if (to > from) {
            made_.push_back({from, to, before, EndOfSelection()});
        } else if (Box().Text() != text && !made_.empty() && made_.back().To == from) {
            made_.pop_back();  // went into the step before
        }
    }
    // Whether there was a step whose places are known.
    bool Walk(bool back) {
        const int from = Steps();
        back ? Undo() : Redo();
        const int to = Steps();
        for (const Step& step : made_) {
            if (step.From != std::min(from, to) || step.To != std::max(from, to)) continue;
            EXPECT_EQ(Box().SelStart(), back ? step.Before : step.After)
                << (back ? "undo" : "redo");
            EXPECT_EQ(Box().SelLength(), 0);
            return true;
        }
        return false;
    }

  private:
    struct Step {
        int From = 0;  // of the steps that the document counts
        int To = 0;
        int Before = 0;
        int After = 0;
    };
    std::mt19937 random_{test::Seed()};
    std::vector<Step> made_;
};

TEST_F(AnyHistory, LeavesTheCaretAtTheEndOfEachChange) {
    Box().SetText("Salt the fish\r\n\r\nBake it\r\n");
    int walked = 0;
    for (int step = 0; step < 300 && !HasFailure(); ++step) {
        const int kind = Below(10);
        if (kind < 5) {
            Act();
        } else {
            walked += Walk(kind < 8) ? 1 : 0;
        }
    }
    EXPECT_GT(walked, 50);
}

TEST_F(TheCaretAfterUndo, ByTheMenuOfTheBoxIsTheSame) {
    CaretAt(40 * Line);
    ClickOn(Editor().ibCenter);
    const auto choose = [this](const char* name) {
        Edit().verticalScrollBar()->setValue(0);
        const QPoint at(5, 5);
        QContextMenuEvent press(QContextMenuEvent::Mouse, at, Edit().mapToGlobal(at));
        QApplication::sendEvent(Edit().viewport(), &press);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        auto* entry = menu->findChild<QAction*>(QString::fromLatin1(name));
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_TRUE(entry->isEnabled()) << name;
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                          menu->actionGeometry(entry).center());
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    };
    choose("edit-undo");
    ExpectCaret(40 * Line, "undone");
    EXPECT_EQ(Box().SelAlignment(), RichTextBox::Alignment::Left);
    choose("edit-redo");
    ExpectCaret(40 * Line, "redone");
    EXPECT_EQ(Box().SelAlignment(), RichTextBox::Alignment::Center);
}

}  // namespace
}  // namespace larder
