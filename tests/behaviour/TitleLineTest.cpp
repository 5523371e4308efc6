#include "edit/TitleLine.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QTextEdit>
#include <functional>
#include <memory>

#include "behaviour/support/EditorBook.h"

namespace larder {
namespace {

using test::EditorBook;

// What the cook pastes or drops into the box for the title.
class TheTitleOfANewRecipe : public EditorBook {
  protected:
    void SetUp() override {
        EditorBook::SetUp();
        OpenNew();
    }
    RichTextBox& Box() { return Editor().rtbTitle; }
    QTextEdit& Edit() { return *qobject_cast<QTextEdit*>(Box().Native()); }
    static QMimeData* Data(const QString& type, const QByteArray& bytes) {
        auto* data = new QMimeData;
        data->setData(type, bytes);
        return data;
    }
    void PasteAnew(const QString& type, const QByteArray& bytes) {
        QGuiApplication::clipboard()->setMimeData(Data(type, bytes));
        Box().SetFocus();
        Ctrl(Qt::Key_A);
        Ctrl(Qt::Key_V);
    }
    // Drags a text to the front of the box; `during` happens before it is let go.
    void Drop(const QByteArray& text, const std::function<void()>& during) {
        const std::unique_ptr<QMimeData> data(Data("text/plain", text));
        const QPoint place(1, 10);
        QDragEnterEvent enter(place, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Edit().viewport(), &enter);
        during();
        QDropEvent drop(place, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Edit().viewport(), &drop);
    }
};

TEST_F(TheTitleOfANewRecipe, PastedInSeveralLinesComesInOneAndNothingOfItIsLost) {
    PasteAnew("text/plain", "Fish pie\r\n\r\nBake it.\nServe.\r\n");
    EXPECT_EQ(Box().Text(), "Fish pie Bake it. Serve.");
    Editor().rtbRecipe.SetText("With peas.");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(Main().store.GetRecipeTitle(7), "Fish pie Bake it. Serve.");
    EXPECT_NE(Main().store.GetRecipeRTF(7).find("Fish pie Bake it. Serve."), std::string::npos);
}

TEST_F(TheTitleOfANewRecipe, PastedWithLineSeparatorsComesInOneLine) {
    for (const auto& [type, bytes] : {std::pair{"text/plain",
                                                "\xE2\x80\xA8"
                                                "Fish\xE2\x80\xA8\xE2\x80\xA8pie"},
                                      std::pair{"text/html", "<p>Fish<br>pie</p>"},
                                      std::pair{"text/rtf", "{\\rtf1 Fish\\line pie}"}}) {
        PasteAnew(type, bytes);
        EXPECT_EQ(Box().Text(), "Fish pie") << type;
    }
}

// Behind a tab a title ends.
TEST_F(TheTitleOfANewRecipe, PastedFromAListOrATableHasNoTabs) {
    for (const auto& [type, bytes] : {std::pair{"text/html", "<ol><li>Clam chowder</li></ol>"},
                                      std::pair{"text/rtf", "{\\rtf1 1.\\tab Clam chowder\\par}"},
                                      std::pair{"text/plain", "1.\t\tClam chowder"}}) {
        PasteAnew(type, bytes);
        EXPECT_EQ(Box().Text(), "1. Clam chowder") << type;
    }
    Editor().rtbRecipe.SetText("With peas.");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(Main().store.GetRecipeTitle(7), "1. Clam chowder");
}

TEST_F(TheTitleOfANewRecipe, PastedAsRichTextOfSeveralLinesHasTheFormatOfItsPlace) {
    for (const auto& [type, bytes] :
         {std::pair{"text/rtf", "{\\rtf1\\i Fish\\par\\par\\line pie\\par}"},
          std::pair{"text/html", "<h1>Fish</h1><ul><li>pie</li></ul>"}}) {
        TypeAnew(Box(), "x");
        PasteAnew(type, bytes);
        EXPECT_EQ(Box().Text().substr(0, 5), "Fish ") << type;
        EXPECT_EQ(Box().Text().find_first_of("\r\n"), std::string::npos) << type;
        EXPECT_NE(Box().Text().find("pie"), std::string::npos) << type;
        Box().SetSelStart(0);
        Box().SetSelLength(4);
        EXPECT_EQ(Box().SelItalic(), false) << type;
    }
}

TEST_F(TheTitleOfANewRecipe, PastedWithItsLineEndKeepsItsFormatAndLosesTheEnd) {
    for (const auto& [type, bytes] : {std::pair{"text/rtf", "{\\rtf1\\par\\i Fish pie\\par}"},
                                      std::pair{"text/html", "<p><i>Fish pie</i></p>"}}) {
        PasteAnew(type, bytes);
        EXPECT_EQ(Box().Text(), "Fish pie") << type;
        EXPECT_EQ(Box().SelStart(), 8) << type;
        Box().SetSelStart(0);
        Box().SetSelLength(8);
        EXPECT_EQ(Box().SelItalic(), true) << type;
    }
}

TEST_F(TheTitleOfANewRecipe, PastedInSeveralLinesIsTakenBackAtOnce) {
    PasteAnew("text/plain", "Fish pie\nBake it.");
    Ctrl(Qt::Key_Z);
    EXPECT_EQ(Box().Text(), "TYPE THE TITLE HERE");
}

TEST_F(TheTitleOfANewRecipe, OfNothingButLineEndsChangesOnlyTheSelection) {
    PasteAnew("text/plain", "\r\n\n");
    EXPECT_EQ(Box().Text(), "");
}

TEST_F(TheTitleOfANewRecipe, DroppedInSeveralLinesComesInOneToo) {
    TypeAnew(Box(), "x");
    Drop("Fish\npie", [] {});
    EXPECT_EQ(Box().Text(), "Fish piex");
}

TEST_F(TheTitleOfANewRecipe, ChangedByTheProgramDuringADragTakesTheDropAsWell) {
    TypeAnew(Box(), "Soup of something");
    Drop("Fish ", [this] { Box().SetText("pie"); });
    EXPECT_EQ(Box().Text(), "Fish pie");
}

TEST_F(TheTitleOfANewRecipe, LongerThanItsBoxScrollsSidewaysWithTheCaret) {
    TypeAnew(Box(), std::string(150, 'W'));
    EXPECT_EQ(Box().LineCount(), 1);
    EXPECT_TRUE(Edit().viewport()->rect().contains(Edit().cursorRect().center()));
    Press(Qt::Key_Home);
    EXPECT_TRUE(Edit().viewport()->rect().contains(Edit().cursorRect().center()));
}

TEST_F(TheTitleOfANewRecipe, StandsInTheMiddleOfItsBoxWhenItIsCentred) {
    TypeAnew(Box(), "Fish");
    Press(Qt::Key_Home);
    ClickOn(Editor().ibCenter);
    const int middle = Edit().viewport()->width() / 2;
    EXPECT_GT(Edit().cursorRect().left(), middle - 80);
    EXPECT_LT(Edit().cursorRect().left(), middle);
    ClickOn(Editor().ibRight);
    EXPECT_GT(Edit().cursorRect().left(), middle + 80);
}

TEST(ATitleLine, EndsWithItsLineOrAtATabAndBeginsBehindWhiteSpace) {
    const auto of = [](const std::string& text) {
        const TitleLine line = TitleLineOf(text);
        return text.substr(line.From, line.Length);
    };
    EXPECT_EQ(of("Fish pie"), "Fish pie");
    EXPECT_EQ(of(" \t\r\n Fish pie \r\nBake."), "Fish pie ");
    EXPECT_EQ(of("Fish\tpie"), "Fish");
    EXPECT_EQ(of("\r\n \t"), "");
    EXPECT_EQ(of(""), "");
}

}  // namespace
}  // namespace larder
