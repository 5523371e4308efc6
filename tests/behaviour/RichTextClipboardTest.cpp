#include "platform/RichTextClipboard.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>

#include "behaviour/support/RichTextBoxFixture.h"

namespace larder::test {
namespace {

class WhatIsPasted : public RichTextBoxTest {
  protected:
    void SetUp() override {
        box_.SetTextRTF(
            R"({\rtf1{\fonttbl{\f0\froman Georgia;}{\f1\fswiss Arial;}}\f0\fs30 before\par\f1\fs20 after})");
        Show();
    }
    void PasteHtml(const char* html, const char* behind) {
        auto* mime = new QMimeData;
        mime->setHtml(QString::fromUtf8(html));
        QApplication::clipboard()->setMimeData(mime);
        box_.Find(behind, 0);
        Press(Qt::Key_Right);
        Press(Qt::Key_V, Qt::ControlModifier);
    }
    float SizeOf(const char* what) {
        EXPECT_GE(box_.Find(what, 0), 0) << what << " in " << box_.Text();
        return box_.SelFontSize().value_or(-1);
    }
    std::string RtfOf(const char* what) {
        EXPECT_GE(box_.Find(what, 0), 0) << what << " in " << box_.Text();
        return box_.SelRTF();
    }
};

TEST_F(WhatIsPasted, AsHtmlWithoutASizeHasThatOfItsPlace) {
    PasteHtml("<p> one <b>bold</b> leek</p>", "before");
    for (const char* what : {"before", "one", "bold", "leek"})
        EXPECT_EQ(SizeOf(what), 15.0F) << what;
    box_.Find("bold", 0);
    EXPECT_EQ(box_.SelBold(), true);
    PasteHtml("<p> two eggs</p>", "after");
    EXPECT_EQ(SizeOf("eggs"), 10.0F);
    EXPECT_EQ(SizeOf("leek"), 15.0F);
}

TEST_F(WhatIsPasted, AsHtmlWithoutAFontHasThatOfItsPlace) {
    PasteHtml("<p> leek <code>code</code> <span style='font-family:Verdana'>roman</span></p>",
              "before");
    PasteHtml("<p> eggs</p>", "after");
    EXPECT_NE(RtfOf("leek").find("Georgia"), std::string::npos);
    EXPECT_EQ(RtfOf("code").find("Georgia"), std::string::npos);
    EXPECT_NE(RtfOf("roman").find("Verdana"), std::string::npos);
    EXPECT_NE(RtfOf("eggs").find("Arial"), std::string::npos);
}

TEST_F(WhatIsPasted, AsHtmlOverASelectionLooksAsItsBeginning) {
    box_.SetSelStart(2);
    box_.SetSelLength(9);
    auto* mime = new QMimeData;
    mime->setHtml(QStringLiteral("<p>leek</p>"));
    QApplication::clipboard()->setMimeData(mime);
    Press(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(box_.Text(), "beleeker");
    EXPECT_EQ(SizeOf("leek"), 15.0F);
    EXPECT_NE(RtfOf("leek").find("Georgia"), std::string::npos);
}

TEST_F(WhatIsPasted, AsAHeadingIsLargerThanItsPlace) {
    PasteHtml("<h1>first</h1><h2>second</h2><h3>third</h3><p>leek <small>little</small></p>",
              "before");
    EXPECT_EQ(SizeOf("first"), 30.0F);
    EXPECT_EQ(SizeOf("second"), 22.5F);
    EXPECT_EQ(SizeOf("third"), 18.0F);
    EXPECT_EQ(SizeOf("leek"), 15.0F);
    EXPECT_EQ(SizeOf("little"), 12.0F);
    box_.Find("first", 0);
    EXPECT_EQ(box_.SelBold(), true);
}

TEST_F(WhatIsPasted, AsHtmlWithASizeKeepsIt) {
    PasteHtml(
        "<p> <span style='font-size:9pt'>points</span> <span style='font-size:16px'>pixels</span>"
        "</p><h1 style='font-size:14pt'>heading</h1>",
        "before");
    EXPECT_EQ(SizeOf("points"), 9.0F);
    EXPECT_EQ(SizeOf("pixels"), 12.0F);
    EXPECT_EQ(SizeOf("heading"), 14.0F);
}

TEST_F(WhatIsPasted, AsHtmlLetsTypingGoOnInTheFormatOfThePlace) {
    PasteHtml("<p> leek</p><p></p>", "before");
    Type("x");
    EXPECT_EQ(SizeOf("x"), 15.0F);
    PasteHtml("<p> eggs</p>", "after");
    Type("y");
    EXPECT_EQ(SizeOf("y"), 10.0F);
    EXPECT_NE(RtfOf("y").find("Arial"), std::string::npos);
}

TEST_F(WhatIsPasted, AsAListWithoutNumbersHasBullets) {
    box_.SetText("");
    PasteHtml(
        "<ul><li>leek<ul><li>white part</li></ul></li><li>cream</li></ul>"
        "<ul style='list-style-type:square'><li>square</li></ul>"
        "<ol><li>cut</li></ol><ul style='list-style-type:none'><li>bare</li></ul>",
        "");
    const std::string text = box_.Text();
    EXPECT_EQ(text,
              "\x95\tleek\r\n\x95\twhite part\r\n\x95\tcream\r\n\x95\tsquare\r\n1.\tcut\r\nbare");
    EXPECT_EQ(OnScreen().find("\xE2\x80\xA2\tleek"), 0U);
}

}  // namespace
}  // namespace larder::test
