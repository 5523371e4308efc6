#include <gtest/gtest.h>

#include <random>
#include <string>

#include "core/rtf/Describe.h"
#include "core/rtf/Documents.h"
#include "platform/rtf/Rtf.h"
#include "support/ProcessorTime.h"
#include "support/Seed.h"

namespace larder {
namespace {

std::string Repeated(const std::string& text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

// Reads, and checks what holds for any document.
RichText Survive(const std::string& rtf) {
    auto document = ReadRtf(rtf).value_or(RichText::FromPlain(rtf));
    EXPECT_EQ(document.Text().size(), document.Length());
    EXPECT_LE(document.Units().size(), rtf.size());
    const std::string once = WriteRtf(document);
    const std::string twice = WriteRtf(*ReadRtf(once));
    EXPECT_EQ(once, twice);
    return document;
}

TEST(RtfHostileInput, EveryDocumentMayBeCutAnywhere) {
    for (const auto& document : test::kRtfDocuments) {
        const std::string rtf = document.rtf;
        for (std::size_t cut = 0; cut <= rtf.size(); ++cut)
            Survive(rtf.substr(0, cut));
        if (HasFailure()) FAIL() << document.name;
    }
}

TEST(RtfHostileInput, ACutDocumentKeepsWhatStandsBeforeTheCut) {
    EXPECT_EQ(Survive("{\\rtf1 one\\par {\\b two").PlainUtf8(), "one\ntwo");
    EXPECT_EQ(test::Describe(Survive("{\\rtf1 a{\\pict\\pngblip 8950")), "a{png 2 0x0}");
}

TEST(RtfHostileInput, GroupsNestedAHundredThousandDeep) {
    const std::size_t deep = 100'000;
    EXPECT_EQ(Survive("{\\rtf1 a" + Repeated("{\\b ", deep) + "x" + Repeated("}", deep) + "b}")
                  .PlainUtf8(),
              "ab");
    EXPECT_EQ(Survive("{\\rtf1 a" + Repeated("{", deep)).PlainUtf8(), "a");
    EXPECT_EQ(
        Survive("{\\rtf1 a{\\info" + Repeated("{", deep) + Repeated("}", deep) + "}b}").PlainUtf8(),
        "ab");
}

TEST(RtfHostileInput, ClosingBracesWithoutAnOpening) {
    EXPECT_EQ(Survive("{\\rtf1 a" + Repeated("}", 100'000)).PlainUtf8(), "a");
}

TEST(RtfHostileInput, BinaryDataOfAbsurdLength) {
    EXPECT_EQ(Survive("{\\rtf1 a\\bin999999999999999 bcd}").PlainUtf8(), "a");
    EXPECT_EQ(Survive("{\\rtf1 a\\bin-5 bcd}").PlainUtf8(), "abcd");
    EXPECT_EQ(Survive("{\\rtf1 a{\\info\\bin2147483648 }}bcd}").PlainUtf8(), "a");
    EXPECT_EQ(Survive("{\\rtf1 a\\bin2 }}b}").PlainUtf8(), "ab");
}

TEST(RtfHostileInput, UnicodeOfAbsurdValue) {
    EXPECT_EQ(Survive("{\\rtf1 \\u99999999999?a\\u-99999999999?b\\u1114112?}").PlainUtf8(),
              "\uFFFDa\uFFFDb\uFFFD");
    EXPECT_EQ(Survive("{\\rtf1\\uc99999999999\\u233 gone\\par gone\\uc-7\\u233 b}").PlainUtf8(),
              "é\ngoneéb");
    EXPECT_EQ(Survive("{\\rtf1 \\u-10179?a\\u-8704?}").PlainUtf8(), "\uFFFDa\uFFFD");
}

TEST(RtfHostileInput, NumbersOfAbsurdValue) {
    for (const char* word : {"f", "fs", "cf", "highlight", "li", "ri", "fi", "sb", "sa", "tx", "up",
                             "dn", "uc", "deff", "ansicpg", "qc", "b", "emdash"}) {
        for (const char* number : {"99999999999999999999", "-99999999999999999999", "-1"}) {
            const std::string rtf = std::string("{\\rtf1{\\fonttbl{\\f0 A;}}{\\colortbl;;}\\") +
                                    word + number + " a\\'e9\\par}";
            Survive(rtf);
            if (HasFailure()) FAIL() << rtf;
        }
    }
}

TEST(RtfHostileInput, NulBytesEverywhere) {
    const std::string rtf = "{\\rtf1\\b a\\par\\u233?b}";
    std::string spread;
    for (const char c : rtf)
        spread += std::string(1, c) + '\0';
    Survive(spread);
    EXPECT_EQ(Survive("{\\rtf1 a" + std::string(1000, '\0') + "b}").PlainUtf8(), "ab");
}

TEST(RtfHostileInput, ALineOfTenMegabytes) {
    const std::string line(10'000'000, 'x');
    EXPECT_EQ(Survive("{\\rtf1 " + line + "}").Units().size(), line.size());
    EXPECT_EQ(Survive("{\\rtf1\\" + line + " a}").PlainUtf8(), "a");
    EXPECT_EQ(Survive("{\\rtf1{\\fonttbl{\\f0 " + line + ";}}a}").PlainUtf8(), "a");
}

struct Flood {
    const char* name;
    const char* before;
    const char* repeated;  // '#' stands for a running number
};
class RtfFloods : public testing::TestWithParam<Flood> {};

// A megabyte that asks for as much work as it can is done within a second. The limit here is
// wide, since tests run in debug builds and under sanitizers too; work that grows with the square
// of the input would take minutes.
TEST_P(RtfFloods, IsReadAndWrittenInTime) {
    std::string rtf = std::string("{\\rtf1 ") + GetParam().before;
    for (int number = 1; rtf.size() < 1'000'000; ++number) {
        std::string piece = GetParam().repeated;
        for (auto at = piece.find('#'); at != std::string::npos; at = piece.find('#')) {
            piece.replace(at, 1, std::to_string(number));
        }
        rtf += piece;
    }
    const double start = test::ProcessorTime();
    Survive(rtf);
    EXPECT_LT(test::ProcessorTime() - start, 20.0);
}

INSTANTIATE_TEST_SUITE_P(
    Table, RtfFloods,
    testing::Values(Flood{"Fonts", "", "{\\fonttbl{\\f# F#;}}\\f# a"},
                    Flood{"Colours", "", "{\\colortbl;\\red#;}\\cf1\\fs# a"},
                    Flood{"Sizes", "{\\colortbl;;;;\\red1;}", "\\fs#\\cf4 a\\b#"},
                    Flood{"Layouts", "\\tx1\\tx2\\tx3\\tx4\\tx5\\tx6\\tx7\\tx8\\tx9", "\\li#\\par"},
                    Flood{"CodePages", "", "\\ansicpg# \\'e9"}, Flood{"Cells", "", "\\cell"},
                    Flood{"Rows", "", "\\row"}, Flood{"Pictures", "", "{\\pict\\pngblip 0}"},
                    Flood{"Skipped", "", "{\\*\\x"}, Flood{"DamagedHex", "", "\\'"},
                    Flood{"TabStops", "", "\\tx#"}, Flood{"Groups", "", "{}"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(RtfHostileInput, DocumentsWithRandomChanges) {
    std::mt19937 random(test::Seed());
    const auto below = [&random](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    const std::string pieces[] = {"{",       "}",      "\\",     "\\par ",  "\\'",    "\\u",
                                  "\\bin3 ", "\\cell", "\\row ", "{\\pict", "\\uc2 ", "{\\*"};
    for (int round = 0; round < 4000; ++round) {
        std::string rtf = test::kRtfDocuments[below(std::size(test::kRtfDocuments))].rtf;
        const std::size_t head = std::string("{\\rtf").size();
        for (std::size_t changes = 1 + below(6); changes > 0; --changes) {
            const std::size_t at = head + below(rtf.size() - head + 1);
            switch (below(4)) {
                case 0:
                    rtf.insert(at, 1, static_cast<char>(below(256)));
                    break;
                case 1:
                    rtf.insert(at, pieces[below(std::size(pieces))]);
                    break;
                case 2:
                    rtf.erase(at, below(8));
                    break;
                default: {
                    const std::string other =
                        test::kRtfDocuments[below(std::size(test::kRtfDocuments))].rtf;
                    rtf.insert(at, other.substr(below(other.size()), below(40)));
                }
            }
        }
        Survive(rtf);
        ASSERT_FALSE(HasFailure()) << rtf;
    }
}

}  // namespace
}  // namespace larder
