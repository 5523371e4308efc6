// A box that is on the screen and one that nobody sees answer alike. Random operations go to both;
// after each, everything that a program can ask is compared, and the document on the screen with
// the text that the box says it holds.

#include <gtest/gtest.h>

#include <QTest>
#include <QTextEdit>
#include <array>
#include <random>

#include "platform/Application.h"
#include "platform/RichTextBox.h"
#include "platform/RichTextDocument.h"
#include "platform/Window.h"
#include "platform/rtf/Rtf.h"
#include "support/Seed.h"

namespace larder {
namespace {

constexpr std::array kDocuments = {
    R"({\rtf1\ansi\deff0{\fonttbl{\f0\froman Georgia;}{\f1\fswiss Arial;}}{\colortbl;\red166\green121\blue4;}\b\fs30\cf1 Baked Cod\b0\cf0\fs24\par\par \f1 1 cod\line 2 lemons\par\i Bake.\i0\par})",
    R"({\rtf1\ansi{\fonttbl{\f0 Times New Roman;}}\qc Title\par\pard\ql\li720\fi-360 one\tab two\par\pard\qr\sb120\sa60 right \u8531? end\par})",
    R"({\rtf1\ansi{\fonttbl{\f0\fmodern Courier New;}}\ul x\ulnone  y\strike z\strike0\super 2\nosupersub\par\par\b\par\b0\par tail})",
    R"({\rtf1 })",
    "plain text\r\nwithout any RTF",
    ""};

constexpr std::array kTexts = {"cod",    "",          " ",  "\r",       "\r\n",
                               "a\r\rb", "two words", "\n", "\xE9t\xE9"};
constexpr std::array kSets = {"\r", " \r", "\r\n\t", " ", "abcdefgh", "\n"};

class Pair {
  public:
    Pair() {
        window_.SetClientSize(9000, 6000);
        shown_.Move({0, 0, 6000, 3000});
        hidden_.SetVisible(false);
        window_.Show();
        shown_.SetFocus();
        Application::DoEvents();
    }

    template <typename Operation>
    void Both(Operation&& operation) {
        operation(shown_);
        operation(hidden_);
    }
    void Type(const std::string& text) {
        QTest::keyClicks(shown_.Native(), QString::fromStdString(text));
        hidden_.SetSelText(text);
    }
    void PressEnter() {
        QTest::keyClick(shown_.Native(), Qt::Key_Return);
        hidden_.SetSelText("\r");
    }

    void ExpectAlike() {
        EXPECT_EQ(shown_.Text(), hidden_.Text());
        EXPECT_EQ(shown_.SelStart(), hidden_.SelStart());
        EXPECT_EQ(shown_.SelLength(), hidden_.SelLength());
        EXPECT_EQ(shown_.SelText(), hidden_.SelText());
        EXPECT_EQ(shown_.SelColor(), hidden_.SelColor());
        EXPECT_EQ(shown_.SelFontSize(), hidden_.SelFontSize());
        EXPECT_EQ(shown_.SelBold(), hidden_.SelBold());
        EXPECT_EQ(shown_.SelItalic(), hidden_.SelItalic());
        EXPECT_EQ(shown_.SelUnderline(), hidden_.SelUnderline());
        EXPECT_EQ(shown_.SelAlignment(), hidden_.SelAlignment());
        EXPECT_EQ(shown_.TextRTF(), hidden_.TextRTF());
        EXPECT_EQ(shown_.SelRTF(), hidden_.SelRTF());
    }
    // The document that the user sees is the text that the box says.
    void ExpectScreenAgrees() {
        auto* edit = static_cast<QTextEdit*>(shown_.Native());
        edit->viewport()->repaint();
        const std::string rtf = shown_.TextRTF();
        const RichTextDocument document(*edit->document(), edit->logicalDpiY());
        EXPECT_EQ(WriteRtf(document.Read(*ReadRtf(rtf), false)), rtf);
    }
    std::string State() {
        return std::to_string(hidden_.SelStart()) + "+" + std::to_string(hidden_.SelLength()) +
               " of " + hidden_.TextRTF();
    }
    std::int32_t Length() { return static_cast<std::int32_t>(hidden_.Text().size()); }

  private:
    Window window_{"frmPair"};
    RichTextBox shown_{window_, "rtbShown"};
    RichTextBox hidden_{window_, "rtbHidden"};
};

class Session {
  public:
    Session(std::uint32_t seed, std::uint32_t number) {
        std::seed_seq sequence{seed, number};
        random_.seed(sequence);
    }

    void Run(int steps) {
        boxes_.Both([](RichTextBox& box) { box.SetTextRTF(kDocuments[0]); });
        for (int step = 0; step < steps; ++step) {
            const std::string before = boxes_.State();
            const std::string done = Step();
            SCOPED_TRACE("step " + std::to_string(step) + ": " + done + " at " + before);
            boxes_.ExpectAlike();
            boxes_.ExpectScreenAgrees();
            if (testing::Test::HasFailure()) return;
        }
    }

  private:
    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
    template <typename Table>
    std::string Any(const Table& table) {
        return table[static_cast<std::size_t>(Below(static_cast<int>(table.size())))];
    }

    std::string Step() {
        const int kind = Below(20);
        if (kind < 7) return Select(kind);
        if (kind < 13) return Format(kind);
        if (kind < 17) return Replace(kind);
        return kind < 19 ? Type() : Load();
    }

    std::string Select(int kind) {
        const int start = Below(boxes_.Length() + 3);
        const int length = Below(12);
        const std::string set = Any(kSets);
        const std::string what = Any(kTexts);
        const bool forward = Below(2) == 0;
        const bool negate = Below(2) == 0;
        boxes_.Both([&](RichTextBox& box) {
            if (kind < 4) box.SetSelStart(start);
            if (kind >= 2 && kind < 4) box.SetSelLength(length);
            if (kind >= 4 && kind < 6) box.Span(set, forward, negate);
            if (kind == 6) box.Find(what, start, -1, length % 4 * 2);
        });
        return "select " + std::to_string(kind) + " " + std::to_string(start);
    }

    std::string Format(int kind) {
        const int value = Below(3);
        boxes_.Both([&](RichTextBox& box) {
            switch (kind) {
                case 7:
                    box.SetSelBold(value > 0);
                    break;
                case 8:
                    box.SetSelItalic(value > 0);
                    break;
                case 9:
                    box.SetSelUnderline(value > 0);
                    break;
                case 10:
                    box.SetSelColor(value * 0x2050F0);
                    break;
                case 11:
                    box.SetSelFontSize(8.5F + static_cast<float>(value));
                    break;
                default:
                    box.SetSelAlignment(static_cast<RichTextBox::Alignment>(value));
                    break;
            }
        });
        return "format " + std::to_string(kind) + " " + std::to_string(value);
    }

    std::string Replace(int kind) {
        const std::string text = kind < 15 ? Any(kTexts) : Any(kDocuments);
        boxes_.Both([&](RichTextBox& box) {
            if (kind < 15) {
                box.SetSelText(text);
            } else {
                box.SetSelRTF(text);
            }
        });
        return "replace by " + text;
    }

    std::string Type() {
        if (Below(3) == 0) {
            boxes_.PressEnter();
            return "Enter";
        }
        boxes_.Type("fish");
        return "type";
    }

    std::string Load() {
        const std::string document = Any(kDocuments);
        boxes_.Both([&](RichTextBox& box) { box.SetTextRTF(document); });
        return "load " + document;
    }

    std::mt19937 random_;
    Pair boxes_;
};

TEST(RichTextEquivalence, ABoxOnTheScreenAndAHiddenOneAnswerAlike) {
    const std::uint32_t seed = test::Seed();
    for (std::uint32_t session = 0; session < 8 && !HasFailure(); ++session) {
        SCOPED_TRACE("session " + std::to_string(session));
        Session(seed, session).Run(150);
    }
}

}  // namespace
}  // namespace larder
