#include "search/ReplaceInRichText.h"

#include <gtest/gtest.h>

#include <string>

#include "behaviour/ShownWindow.h"
#include "platform/RichTextBox.h"

namespace larder::test {
namespace {

class Replacing : public ShownWindow {
  protected:
    std::int32_t Replace(const std::string& what, const std::string& with, int options = 0,
                         std::int16_t italic = AnyItalic) {
        return ReplaceInRichText(box, what, with, static_cast<std::int16_t>(options), italic);
    }

    RichTextBox box{window, "rtb"};
};

TEST_F(Replacing, EveryOccurrenceBehindTheFirstLineIsReplaced) {
    box.SetText("Title\r\ncod and cod.\r\nMore cod here.");
    EXPECT_EQ(Replace("cod", "eel"), 3);
    EXPECT_EQ(box.Text(), "Title\r\neel and eel.\r\nMore eel here.");
}

TEST_F(Replacing, TheTitleIsNeverTouched) {
    box.SetText("cod cod\r\ncod is good.");
    EXPECT_EQ(Replace("cod", "eel"), 1);
    EXPECT_EQ(box.Text(), "cod cod\r\neel is good.");
}

TEST_F(Replacing, TheTitleEndsAtATab) {
    box.SetText("cod\tcod here\r\nend");
    EXPECT_EQ(Replace("cod", "eel"), 0) << "the search begins a place behind the character that "
                                           "stands after the title";
    box.SetText("cod\t cod here\r\nend");
    EXPECT_EQ(Replace("cod", "eel"), 1);
}

TEST_F(Replacing, AnOccurrenceThatEndsWithTheTextIsLeftAlone) {
    box.SetText("Title\r\ncod and cod");
    EXPECT_EQ(Replace("cod", "eel"), 1);
    EXPECT_EQ(box.Text(), "Title\r\neel and cod");
}

TEST_F(Replacing, NothingIsReplacedInATitleAlone) {
    box.SetText("cod and cod");
    EXPECT_EQ(Replace("cod", "eel"), 0);
    box.SetText("");
    EXPECT_EQ(Replace("cod", "eel"), 0);
    EXPECT_EQ(box.Text(), "");
}

TEST_F(Replacing, TheOptionsOfFindCount) {
    box.SetText("Title\r\nCod codling cod Cod end");
    EXPECT_EQ(Replace("cod", "eel", RichTextBox::WholeWord + RichTextBox::MatchCase), 1);
    EXPECT_EQ(box.Text(), "Title\r\nCod codling eel Cod end");
    EXPECT_EQ(Replace("cod", "eel", RichTextBox::WholeWord), 2);
}

TEST_F(Replacing, TheStateOfItalicsCounts) {
    const std::string rtf = "{\\rtf1 Title\\par cod {\\i cod} c{\\i od} cod end\\par}";
    box.SetTextRTF(rtf);
    EXPECT_EQ(Replace("cod", "eel", 0, -1), 1);
    EXPECT_EQ(box.Text(), "Title\r\ncod eel cod cod end\r\n");
    box.SetTextRTF(rtf);
    EXPECT_EQ(Replace("cod", "eel", 0, 0), 2);
    EXPECT_EQ(box.Text(), "Title\r\neel cod cod eel end\r\n");
    box.SetTextRTF(rtf);
    EXPECT_EQ(Replace("cod", "eel", 0, AnyItalic), 4);
}

TEST_F(Replacing, FormatsOfTheTextAroundStay) {
    box.SetTextRTF("{\\rtf1 Title\\par {\\b bold} cod end\\par}");
    EXPECT_EQ(Replace("cod", "eel"), 1);
    box.SetSelStart(7);
    box.SetSelLength(4);
    EXPECT_EQ(box.SelText(), "bold");
    EXPECT_EQ(box.SelBold(), true);
}

TEST_F(Replacing, AnEmptyTextTakesTheOccurrenceOut) {
    box.SetText("Title\r\n\\i cod, \\i eel end");
    EXPECT_EQ(Replace("\\i ", ""), 2);
    EXPECT_EQ(box.Text(), "Title\r\ncod, eel end");
}

TEST_F(Replacing, ANewTextThatHoldsTheOldOneIsNotReplacedAgain) {
    box.SetText("Title\r\ncod cod end");
    EXPECT_EQ(Replace("cod", "salt cod cod"), 2);
    EXPECT_EQ(box.Text(), "Title\r\nsalt cod cod salt cod cod end");
}

TEST_F(Replacing, ALoneLineEndInTheNewTextCountsAsItStandsInTheBox) {
    box.SetText("Title\r\ncod, cod end");
    EXPECT_EQ(Replace("cod", "\n\n\n\ncod"), 2) << "the new text is not searched";
    EXPECT_EQ(box.Text(), "Title\r\n\r\n\r\n\r\n\r\ncod, \r\n\r\n\r\n\r\ncod end");
    box.SetText("Title\r\ncod, cod end");
    EXPECT_EQ(Replace("cod", "\r\r\r\rcod"), 2);
}

TEST_F(Replacing, AnOccurrenceThatEndsTheGrownOrShrunkTextIsLeftAlone) {
    box.SetText("Title\r\ncod, cod, cod");
    EXPECT_EQ(Replace("cod", "a codling"), 2);
    EXPECT_EQ(box.Text(), "Title\r\na codling, a codling, cod");
    box.SetText("Title\r\ncod, cod, cod");
    EXPECT_EQ(Replace("cod", "c"), 2);
    EXPECT_EQ(box.Text(), "Title\r\nc, c, cod");
    box.SetText("Title\r\ncod, cod, cod.");
    EXPECT_EQ(Replace("cod", "c"), 3);
}

TEST_F(Replacing, AnEmptyTextToFindIsFoundNowhere) {
    box.SetText("Title\r\ncod end");
    EXPECT_EQ(Replace("", "eel"), 0);
}

}  // namespace
}  // namespace larder::test
