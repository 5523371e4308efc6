#include "platform/rtf/RichText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>

#include "core/rtf/Describe.h"
#include "platform/rtf/Rtf.h"
#include "support/Seed.h"

namespace larder {
namespace {

using test::Describe;

constexpr std::size_t kEnd = static_cast<std::size_t>(-1);

RichText Read(const std::string& body) {
    return *ReadRtf("{\\rtf1 " + body + "}");
}

TEST(RichText, AnEmptyDocumentHasOneEmptyParagraph) {
    const RichText document;
    EXPECT_EQ(document.Text(), "");
    EXPECT_EQ(document.Length(), 0u);
    EXPECT_EQ(document.Paragraphs().size(), 1u);
    EXPECT_TRUE(document.Runs().empty());
}

TEST(RichText, APictureIsReplacedInItsPlace) {
    RichText document = Read("a{\\pict\\pngblip 01}b{\\pict\\pngblip 02}");
    RichPicture other;
    other.kind = PictureKind::Jpeg;
    other.bytes = std::make_shared<const std::string>("\x03");
    other.goalWidth = kMostTwips + 1;
    document.SetPicture(0, other);
    EXPECT_EQ(document.Text(), "a b ");
    EXPECT_EQ(*document.Pictures().at(0).bytes, "\x03");
    EXPECT_EQ(document.Pictures().at(0).kind, PictureKind::Jpeg);
    EXPECT_EQ(document.Pictures().at(0).goalWidth, kMostTwips);
    EXPECT_EQ(*document.Pictures().at(1).bytes, "\x02");
}

TEST(RichText, PlainTextBreaksAtCrLfCrAndLf) {
    const RichText document = RichText::FromPlain("a\r\nb\rc\nd\r\re");
    EXPECT_EQ(Describe(document), "a|b|c|d||e");
    EXPECT_EQ(document.Text(), "a\r\nb\r\nc\r\nd\r\n\r\ne");
}

TEST(RichText, ControlCharactersInPlainTextKeepTheirPlace) {
    EXPECT_EQ(RichText::FromPlain(std::string("a\0b\tc\x01", 6)).Text(), "a b\tc ");
}

TEST(RichText, PlainTextTakesTheLookThatIsGiven) {
    CharFormat format;
    format.bold = true;
    const RichText document = RichText::FromPlain("a\r\n", format, {"Arial", FontFamily::Swiss, 0});
    EXPECT_EQ(Describe(document), "<b font=Arial>a|");
    EXPECT_TRUE(document.CharFormats()[document.EndFormat()].bold);
}

TEST(RichText, ABreakCountsTwoPositionsAndOneUnit) {
    const RichText document = RichText::FromPlain("ab\r\nc\r\n");
    EXPECT_EQ(document.Length(), 7u);
    EXPECT_EQ(document.Units().size(), 5u);
    const std::size_t units[] = {0, 1, 2, 2, 3, 4, 4, 5};
    for (std::size_t position = 0; position < 8; ++position) {
        EXPECT_EQ(document.UnitAt(position), units[position]) << position;
    }
    EXPECT_EQ(document.UnitAt(kEnd), 5u);
    const std::size_t positions[] = {0, 1, 2, 4, 5, 7};
    for (std::size_t unit = 0; unit < 6; ++unit) {
        EXPECT_EQ(document.PositionAt(unit), positions[unit]) << unit;
    }
}

TEST(RichText, CutTakesTextLooksAndLayout) {
    const RichText document = Read("\\qc one {\\b two}\\par\\pard\\qr{\\i three}\\par\\pard four");
    EXPECT_EQ(Describe(document.Cut(4, 11)), "[centre]<b>two|[right]<i>th");
    EXPECT_EQ(Describe(document.Cut(0, 3)), "[centre]one");
    EXPECT_EQ(Describe(document.Cut(0, 9)), "[centre]one <b>two|[right]");
    EXPECT_EQ(Describe(document.Cut(0, kEnd)), Describe(document));
    EXPECT_EQ(document.Cut(5, 5).Length(), 0u);
    EXPECT_EQ(document.Cut(9, 3).Length(), 0u);
    EXPECT_EQ(document.Cut(kEnd, kEnd).Length(), 0u);
}

TEST(RichText, ARangeThatEndsWithinABreakTakesItIn) {
    EXPECT_EQ(RichText::FromPlain("a\r\nb").Cut(0, 2).Text(), "a\r\n");
    EXPECT_EQ(RichText::FromPlain("a\r\nb").Cut(2, 4).Text(), "\r\nb");
}

TEST(RichText, ReplacePutsADocumentInTheMiddle) {
    RichText document = Read("abcd");
    EXPECT_EQ(document.Replace(1, 3, Read("{\\b x\\par y}")), 5u);
    EXPECT_EQ(Describe(document), "a<b>x|y<>d");
}

TEST(RichText, ReplaceBringsTheFontsOfTheOtherDocument) {
    RichText document = Read("ab");
    document.Replace(1, 1, *ReadRtf("{\\rtf1{\\fonttbl{\\f0 Arial;}}\\f0 x{\\pict\\pngblip 01}}"));
    EXPECT_EQ(Describe(document), "a<font=Arial>x{png 1 0x0}<>b");
}

TEST(RichText, ReplaceByNothingDeletes) {
    RichText document = Read("ab\\par cd");
    EXPECT_EQ(document.Replace(1, 5, RichText()), 1u);
    EXPECT_EQ(Describe(document), "ad");
    EXPECT_EQ(document.Replace(0, kEnd, RichText()), 0u);
    EXPECT_EQ(Describe(document), "");
    EXPECT_EQ(document.Paragraphs().size(), 1u);
}

TEST(RichText, TheJoinedParagraphHasTheLayoutOfTheBreakThatIsLeft) {
    RichText document = Read("\\qc ab\\par\\pard\\qr cd\\par\\pard e");
    document.Replace(1, 5, RichText());
    EXPECT_EQ(Describe(document), "[right]ad|e");
}

TEST(RichText, LayoutComesWithTheBreaksThatArePutIn) {
    RichText document = Read("\\qr ab\\par\\pard c");
    document.Replace(1, 1, Read("\\qc x\\par\\qj y"));
    EXPECT_EQ(Describe(document), "[centre]ax|[right]yb|c");
}

TEST(RichText, TextWithoutABreakBringsItsLayoutToAnEmptyParagraphOnly) {
    RichText document = Read("a\\par\\par b");
    document.Replace(3, 3, Read("\\qc x"));
    EXPECT_EQ(Describe(document), "a|[centre]x|b");
    document.Replace(0, 0, Read("\\qr y"));
    EXPECT_EQ(Describe(document), "ya|[centre]x|b");
}

TEST(RichText, ADocumentCanBePutIntoItself) {
    RichText document = Read("a{\\b b}");
    document.Replace(1, 1, document);
    EXPECT_EQ(Describe(document), "aa<b>bb");
}

TEST(RichText, ReplaceTextTakesTheLookAndLayoutAtThePlace) {
    RichText document = Read("\\qc a{\\b bc}d\\par\\pard e");
    EXPECT_EQ(document.ReplaceText(2, 3, "X\r\nY"), 6u);
    EXPECT_EQ(Describe(document), "[centre]a<b>bX|[centre]Y<>d|e");
    EXPECT_EQ(document.ReplaceText(1, 1, "q"), 2u);
    EXPECT_EQ(Describe(document), "[centre]aq<b>bX|[centre]Y<>d|e");
}

TEST(RichText, TwoCarriageReturnsAreTwoBreaks) {
    RichText document = Read("title body");
    EXPECT_EQ(document.ReplaceText(5, 6, "\r\r"), 9u);
    EXPECT_EQ(document.Text(), "title\r\n\r\nbody");
}

TEST(RichText, TextAtTheEndTakesTheLookOfTheEnd) {
    RichText document = Read("{\\b a\\par}\\i");
    document.ReplaceText(kEnd, kEnd, "x");
    EXPECT_EQ(Describe(document), "<b>a|<i>x");
}

TEST(RichText, ChangeLaysSomeFieldsOverARange) {
    RichText document = Read("ab{\\b cd\\par ef}");
    CharChange change;
    change.italic = true;
    change.colour = 0x0479A6u;
    change.font = RichFont{"Arial", FontFamily::Swiss, 0};
    document.Change(1, 7, change);
    EXPECT_EQ(Describe(document), "a<i bgr=0479a6 font=Arial>b<b i bgr=0479a6 font=Arial>cd|e<b>f");
    document.Change(3, 3, change);
    document.Change(0, kEnd, {.halfPoints = 40, .bold = false, .italic = false});
    EXPECT_EQ(Describe(document), "<fs40>a<fs40 bgr=0479a6 font=Arial>bcd|e<fs40>f");
    EXPECT_EQ(document.CharFormats()[document.EndFormat()].halfPoints, 40);
}

TEST(RichText, ChangeParagraphsTouchesThoseOfTheRange) {
    RichText document = Read("a\\par b\\par c\\par d");
    document.ChangeParagraphs(3, 7, {.alignment = Alignment::Right});
    EXPECT_EQ(Describe(document), "a|[right]b|[right]c|d");
    document.ChangeParagraphs(0, 0, {.left = 100});
    document.ChangeParagraphs(kEnd, kEnd, {.left = 200});
    EXPECT_EQ(Describe(document), "[li100]a|[right]b|[right]c|[li200]d");
    document.ChangeParagraphs(3, 6, {.alignment = Alignment::Left});
    EXPECT_EQ(Describe(document), "[li100]a|b|[right]c|[li200]d");
}

TEST(RichText, LinesOfAParagraphAreLaidTogether) {
    RichText document = Read("a\\par b\\line c\\line\\par d");
    for (const std::size_t at : {3u, 6u, 9u}) {
        document.ChangeParagraphs(at, at, {.alignment = Alignment::Right});
        EXPECT_EQ(Describe(document), "a|[right]b/[right]c/[right]|d") << at;
        document.ChangeParagraphs(0, kEnd, {.alignment = Alignment::Left});
    }
    document.ChangeParagraphs(0, 4, {.alignment = Alignment::Right});
    EXPECT_EQ(Describe(document), "[right]a|[right]b/[right]c/[right]|d");
    document.ChangeParagraphs(0, 3, {.alignment = Alignment::Left});
    EXPECT_EQ(Describe(document), "a|[right]b/[right]c/[right]|d");
}

TEST(RichText, TheLayoutOfAParagraphIsThatAtItsEnd) {
    EXPECT_EQ(Describe(Read("a\\line\\qc b\\line\\qr c\\par\\pard d\\line\\qc")),
              "[right]a/[right]b/[right]c|[centre]d/[centre]");
}

TEST(RichText, FormatsInARangeTellWhetherTheyAreMixed) {
    const RichText document = Read("a{\\b b}c\\par{\\i d}");
    EXPECT_EQ(document.FormatsIn(0, 1).size(), 1u);
    EXPECT_EQ(document.FormatsIn(0, 3).size(), 2u);
    EXPECT_EQ(document.FormatsIn(0, kEnd).size(), 3u);
    const auto bold = [&](std::size_t at) {
        return document.CharFormats()[document.FormatsIn(at, at).front()].bold;
    };
    EXPECT_FALSE(bold(0));
    EXPECT_FALSE(bold(1));
    EXPECT_TRUE(bold(2));
    EXPECT_TRUE(document.CharFormats()[document.FormatsIn(5, 5).front()].italic);
    EXPECT_EQ(document.ParaFormatsIn(0, kEnd).size(), 1u);
}

TEST(RichText, InternKeepsValuesWithinTheirLimits) {
    RichText document;
    const CharFormat format = document.CharFormats()[document.Intern(
        CharFormat{.font = 99, .halfPoints = 0, .colour = 0xFE123456, .highlight = 0x01000000})];
    EXPECT_EQ(format.font, 0);
    EXPECT_EQ(format.halfPoints, 1);
    EXPECT_EQ(format.colour, 0x123456u);
    ParaFormat layout;
    layout.spaceAfter = -4;
    for (int i = 100; i > 0; --i)
        layout.tabs.push_back({i % 50, TabKind::Left});
    const ParaFormat& kept = document.ParaFormats()[document.Intern(layout)];
    EXPECT_EQ(kept.spaceAfter, 0);
    EXPECT_EQ(kept.tabs.size(), kMostTabs);
    EXPECT_EQ(kept.tabs[1].position, 1);
    EXPECT_EQ(document.Fonts()[document.InternFont({" A;b\n ", FontFamily::Nil, 2})],
              (RichFont{"Ab", FontFamily::Nil, 0}));
}

// Cuts and replacements of random ranges against the same done to the plain text.
TEST(RichText, RandomEditsAgreeWithTheText) {
    std::mt19937 random(test::Seed());
    const auto below = [&random](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    RichText document = Read("\\qc start{\\b bold\\par}x{\\pict\\pngblip 01}\\line y\\par\\pard z");
    std::string text = document.Text();
    const RichText insertions[] = {Read(""), Read("{\\i i}"), Read("\\qr a\\par b"), Read("\\par"),
                                   Read("{\\pict\\jpegblip 0202}\\line q")};
    const auto withinBreak = [&](std::size_t at) { return at > 0 && text[at - 1] == '\r'; };
    for (int round = 0; round < 3000; ++round) {
        std::size_t from = below(text.size() + 1);
        std::size_t to = std::min(text.size(), from + below(text.size() > 60 ? 30 : 6));
        if (withinBreak(from)) --from;
        if (withinBreak(to)) ++to;
        ASSERT_EQ(document.Cut(from, to).Text(), text.substr(from, to - from));
        const RichText& with = insertions[below(std::size(insertions))];
        const std::size_t behind = document.Replace(from, to, with);
        text.replace(from, to - from, with.Text());
        ASSERT_EQ(document.Text(), text);
        ASSERT_EQ(behind, from + with.Length());
        const std::string rtf = WriteRtf(document);
        ASSERT_EQ(Describe(*ReadRtf(rtf)), Describe(document));
    }
}

}  // namespace
}  // namespace larder
