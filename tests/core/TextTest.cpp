#include "platform/Text.h"

#include <gtest/gtest.h>

#include <clocale>

#include "platform/Failure.h"

namespace larder {
namespace {

int FailureOf(const char* text) {
    return Ignoring([&] { ToLong(text); });
}

TEST(Text, EveryByteSurvivesTheWayToUnicodeAndBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        const auto c = static_cast<unsigned char>(byte);
        EXPECT_EQ(ByteOf(UnicodeOf(c)), c) << byte;
        all += static_cast<char>(c);
    }
    EXPECT_EQ(FromUtf8(ToUtf8(all)), all);
    EXPECT_EQ(FromUtf16(ToUtf16(all)), all);
}

TEST(Text, TheUpperControlBytesAreTypographicCharacters) {
    EXPECT_EQ(UnicodeOf(0x80), 0x20AC);
    EXPECT_EQ(UnicodeOf(0x93), 0x201C);
    EXPECT_EQ(UnicodeOf(0x96), 0x2013);
    EXPECT_EQ(UnicodeOf(0x9F), 0x0178);
    EXPECT_EQ(ToUtf8("\x80 \xE9"), "€ é");
    EXPECT_EQ(FromUtf8("½ cup – “crème”"),
              "\xBD cup \x96 \x93"
              "cr\xE8me\x94");
}

TEST(Text, TheFiveOpenBytesStandForTheControlCharactersOfTheirValue) {
    for (const unsigned char byte : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
        EXPECT_EQ(UnicodeOf(byte), byte);
    }
    EXPECT_EQ(ByteOf(0x80), std::nullopt) << "the place is taken by the euro sign";
}

TEST(Text, ACharacterOutsideTheCodePageBecomesOneQuestionMark) {
    EXPECT_EQ(ByteOf(0x4E2D), std::nullopt);
    EXPECT_EQ(FromUtf8("a\xE4\xB8\xAD"
                       "b"),
              "a?b");
    EXPECT_EQ(FromUtf8("a\xF0\x9F\x90\x9F"
                       "b"),
              "a?b");
    EXPECT_EQ(FromUtf16(u"a\xD83D\xDC1F"
                        u"b"),
              "a?b");
}

TEST(Text, MalformedInputBecomesQuestionMarksAndNeverSwallowsWhatFollows) {
    EXPECT_EQ(FromUtf8("\xE9"
                       "a"),
              "?a");
    EXPECT_EQ(FromUtf8("\xE2\x82"), "?");
    EXPECT_EQ(FromUtf8("\xC0\x80"
                       "a"),
              "??a");
    EXPECT_EQ(FromUtf8("\xED\xA0\x80"), "?");
    EXPECT_EQ(FromUtf8("\xF5"
                       "a\x80"),
              "?a?");
    EXPECT_EQ(FromUtf8("\xE0\x80\x80"
                       "a"),
              "?a");
    EXPECT_EQ(FromUtf16(std::u16string{0xD83D, u'a', 0xDC1F}), "?a?");
}

TEST(Text, CaseFoldingKeepsAccentsAndKnowsThePairsOfTheCodePage) {
    EXPECT_EQ(LowerCase("\xC9"
                        "CREVISSE \x8A\x8C\x8E\x9F"),
              "\xE9"
              "crevisse \x9A\x9C\x9E\xFF");
    EXPECT_EQ(UpperCase("\xE9t\xE9 \x9A\x9C\x9E\xFF"), "\xC9T\xC9 \x8A\x8C\x8E\x9F");
    EXPECT_EQ(UpperCase("\xDF\xB5\xF7"), "\xDF\xB5\xF7") << "sharp s, micro and division stay";
    EXPECT_EQ(LowerCase("\xD7"), "\xD7") << "the multiplication sign stays";
    EXPECT_TRUE(EqualNoCase("B\xC6kkel", "b\xE6KKEL"));
    EXPECT_FALSE(EqualNoCase("e", "\xE9"));
    EXPECT_FALSE(EqualNoCase("a", "ab"));
}

TEST(Text, TrimBlanksTakesBlanksAlone) {
    EXPECT_EQ(TrimBlanks("  a b  "), "a b");
    EXPECT_EQ(TrimBlanks("\t a\r\n"), "\t a\r\n");
    EXPECT_EQ(TrimBlanks("   "), "");
    EXPECT_EQ(TrimBlanks(""), "");
}

TEST(Text, NumbersRoundWithHalvesToTheEvenNeighbour) {
    EXPECT_EQ(RoundToInteger(2.5), 2);
    EXPECT_EQ(RoundToInteger(3.5), 4);
    EXPECT_EQ(RoundToInteger(-2.5), -2);
    EXPECT_EQ(RoundToLong(0.5), 0);
    EXPECT_EQ(RoundToLong(1.5), 2);
    EXPECT_EQ(ToLong("4.5"), 4);
    EXPECT_EQ(ToInteger("5.5"), 6);
}

TEST(Text, AValueOutsideTheTypeIsAnOverflow) {
    EXPECT_EQ(RoundToInteger(32767.4), 32767);
    EXPECT_EQ(Ignoring([] { RoundToInteger(32767.5); }), failure::Overflow);
    EXPECT_EQ(RoundToInteger(-32768.5), -32768);
    EXPECT_EQ(Ignoring([] { RoundToInteger(-32769); }), failure::Overflow);
    EXPECT_EQ(ToLong("2147483647"), 2147483647);
    EXPECT_EQ(FailureOf("2147483648"), failure::Overflow);
    EXPECT_EQ(FailureOf("1e400"), failure::Overflow);
    EXPECT_EQ(Ignoring([] { RoundToLong(std::stod("nan")); }), failure::Overflow);
}

TEST(Text, ANumberIsASignDigitsAFractionAndAnExponentWithBlanksAround) {
    for (const char* text : {"0", " 12 ", "-3", "+3", "1.5", ".5", "5.", "1e3", "1E-3", "-.5e+1"}) {
        EXPECT_TRUE(IsNumeric(text)) << text;
    }
    for (const char* text : {"", " ", "k12", "1 2", "1,5", "-", ".", "1e", "0x10", "12a", "--1",
                             "inf", "nan", "1\t"}) {
        EXPECT_FALSE(IsNumeric(text)) << text;
        EXPECT_EQ(FailureOf(text), failure::TypeMismatch) << text;
    }
    EXPECT_DOUBLE_EQ(ToDouble(" -1.25e1 "), -12.5);
    EXPECT_EQ(ToLong("+7"), 7);
}

TEST(Text, ANumberTooSmallForTheTypeIsNought) {
    EXPECT_EQ(ToDouble("1e-400"), 0);
    EXPECT_EQ(ToDouble("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(ToDouble("0e999999999999"), 0);
    EXPECT_EQ(Ignoring([] { ToDouble("1" + std::string(400, '0') + "e-50"); }), failure::Overflow);
}

TEST(Text, ValReadsTheNumberAtTheBeginningAndNeverFails) {
    EXPECT_EQ(Val(" 40 "), 40);
    EXPECT_EQ(Val("12abc"), 12);
    EXPECT_EQ(Val("-1.5e"), -1.5);
    EXPECT_EQ(Val("abc"), 0);
    EXPECT_EQ(Val(""), 0);
    EXPECT_GT(Val("1e999"), 1e300);
}

TEST(Text, NumbersTakeNoNoticeOfTheUsersLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_ALL, name);
        EXPECT_EQ(ToDouble("1.5"), 1.5) << name;
        EXPECT_FALSE(IsNumeric("1,5")) << name;
    }
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace larder
