// Whatever is done in a recipe with keys, tools and the clipboard can be taken back step by step
// and done again, and is stored as it is seen.

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>
#include <functional>
#include <random>

#include "behaviour/support/EditorBook.h"
#include "support/Seed.h"

namespace larder {
namespace {

using test::EditorBook;

class RandomWork : public EditorBook {
  protected:
    void SetUp() override {
        EditorBook::SetUp();
        OpenNew();
        Box().SetFocus();
    }
    RichTextBox& Box() { return Editor().rtbRecipe; }
    QTextEdit& Edit() { return *qobject_cast<QTextEdit*>(Box().Native()); }

    // Every character on the screen with its formats, every paragraph with its side.
    std::string Look() {
        std::string look;
        const QTextDocument& document = *Edit().document();
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            look += '[' + std::to_string(static_cast<int>(block.blockFormat().alignment())) + ']';
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const QTextCharFormat format = it.fragment().charFormat();
                std::string tag = format.fontWeight() > QFont::Medium ? "b" : "";
                if (format.fontItalic()) tag += 'i';
                if (format.fontUnderline()) tag += 'u';
                look += '<' + tag + '>' + it.fragment().text().toStdString();
            }
        }
        return look;
    }
    void Fill() {
        Box().SetTextRTF(
            "{\\rtf1\\ansi\\fs24 one two\\par\\qc\\b three\\b0  four\\par\\pard\\qr\\i five\\i0"
            "\\par\\pard six}");
        QApplication::processEvents();
        Box().SetSelStart(0);
    }
    void Paste(const QString& type, const QByteArray& bytes) {
        auto* data = new QMimeData;
        data->setData(type, bytes);
        QGuiApplication::clipboard()->setMimeData(data);
        Ctrl(Qt::Key_V);
    }
    void Press(Qt::Key key, unsigned times, Qt::KeyboardModifiers with = Qt::NoModifier) {
        for (unsigned i = 0; i < times; ++i)
            EditorBook::Press(key, with);
    }
    void Work() {
        for (unsigned left = 3 + random_() % 15; left > 0; --left)
            DoSomething();
    }
    void DoSomething() {
        const auto some = [this](unsigned below) {
            return static_cast<unsigned>(random_() % below);
        };
        const std::vector<std::function<void()>> acts = {
            [&] { Type("ab"); },
            [&] { Press(Qt::Key_Return, 1); },
            [&] { Press(Qt::Key_Backspace, 1 + some(3)); },
            [&] { Press(Qt::Key_Delete, 1 + some(3)); },
            [&] { Ctrl(Qt::Key_B); },
            [&] { Ctrl(Qt::Key_I); },
            [&] { ClickOn(Editor().ibUnderline); },
            [&] { ClickOn(some(2) == 0 ? Editor().ibCenter : Editor().ibRight); },
            [&] { Press(Qt::Key_Left, some(8)); },
            [&] { Press(Qt::Key_Right, some(8)); },
            [&] { Press(Qt::Key_Down, some(4)); },
            [&] { Press(Qt::Key_Right, some(8), Qt::ShiftModifier); },
            [&] { Paste("text/rtf", "{\\rtf1\\qc\\b X\\par\\ql\\b0 Y\\par}"); },
            [&] { Paste("text/plain", "p\nq"); },
            [&] { Ctrl(Qt::Key_X); },
        };
        acts[some(static_cast<unsigned>(acts.size()))]();
    }

    std::mt19937 random_{test::Seed()};
};

TEST_F(RandomWork, IsTakenBackAsAWholeAndDoneAgain) {
    constexpr int Most = 1000;  // far more steps than a walk can have
    std::size_t steps = 0;
    for (int walk = 0; walk < 40; ++walk) {
        SCOPED_TRACE(walk);
        Fill();
        const std::string before = Look();
        Work();
        const std::string after = Look();
        for (int i = 0; i < Most && Edit().document()->isUndoAvailable(); ++i, ++steps)
            Ctrl(Qt::Key_Z);
        ASSERT_EQ(Look(), before);
        for (int i = 0; i < Most && Edit().document()->isRedoAvailable(); ++i)
            Ctrl(Qt::Key_Y);
        ASSERT_EQ(Look(), after);
    }
    EXPECT_GT(steps, 40U) << "or there was hardly anything to take back";
}

TEST_F(RandomWork, IsStoredAsItIsSeen) {
    for (int walk = 0; walk < 40; ++walk) {
        SCOPED_TRACE(walk);
        Fill();
        Work();
        const std::string seen = Look();
        std::string text = Box().Text();
        std::erase(text, '\r');
        ASSERT_EQ(text, Edit().toPlainText().toStdString());
        Box().SetTextRTF(Box().TextRTF());
        QApplication::processEvents();
        ASSERT_EQ(Look(), seen);
    }
}

}  // namespace
}  // namespace larder
