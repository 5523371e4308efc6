#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "core/rtf/Describe.h"
#include "platform/rtf/Rtf.h"

namespace larder {
namespace {

constexpr const char* kHeader = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033";

std::string Rewritten(const std::string& rtf) {
    return WriteRtf(*ReadRtf(rtf));
}

TEST(RtfWriter, WritesInTheMannerOfARichEditControl) {
    const std::string rtf =
        "{\\rtf1{\\fonttbl{\\f4\\fswiss Arial;}{\\f2\\froman\\fcharset0 Times New Roman;}}"
        "{\\colortbl;\\red1\\green2\\blue3;\\red166\\green121\\blue4;}"
        "\\f2\\fs30\\cf2{\\b Stew}\\par\\pard\\qc\\li360\\f4\\fs20\\cf0 x{\\i y}\\par}";
    EXPECT_EQ(Rewritten(rtf), std::string(kHeader) +
                                  "{\\fonttbl{\\f0\\froman\\fcharset0 Times New Roman;}"
                                  "{\\f1\\fswiss\\fcharset0 Arial;}}\r\n"
                                  "{\\colortbl ;\\red166\\green121\\blue4;}\r\n"
                                  "\\viewkind4\\uc1\\pard\\f0\\fs30\\cf1\\b Stew\\b0\\par\r\n"
                                  "\\pard\\qc\\li360\\f1\\fs20\\cf0 x\\i y\\i0\\par\r\n}");
}

TEST(RtfWriter, AnEmptyDocumentKeepsItsLook) {
    EXPECT_EQ(WriteRtf(RichText()), std::string(kHeader) +
                                        "{\\fonttbl{\\f0\\froman\\fcharset0 Times New Roman;}}\r\n"
                                        "\\viewkind4\\uc1\\pard\\f0\\fs24}");
    const std::string once = Rewritten("{\\rtf1\\qc\\b\\fs40}");
    EXPECT_NE(once.find("\\pard\\qc\\f0\\fs40\\b}"), std::string::npos) << once;
}

TEST(RtfWriter, WritesAsciiAlone) {
    const std::string rtf =
        Rewritten("{\\rtf1{\\fonttbl{\\f0 \\u960?;}{\\f1\\fcharset204 C;}} \\'e9\\u960?\\f1\\'e9}");
    EXPECT_TRUE(std::all_of(rtf.begin(), rtf.end(), [](char c) {
        return (c >= 0x20 && c < 0x7F) || c == '\r' || c == '\n';
    })) << rtf;
    EXPECT_NE(rtf.find("\\'e9\\u960?"), std::string::npos) << rtf;
    EXPECT_NE(rtf.find("\\u1081?"), std::string::npos) << rtf;
}

TEST(RtfWriter, PicturesAreWrittenByteForByte) {
    std::string bytes;
    for (int i = 0; i < 300; ++i)
        bytes += static_cast<char>(i);
    RichText document;
    document.AppendPicture(
        {PictureKind::Jpeg, std::make_shared<const std::string>(bytes), 1440, 720}, 0);
    const auto read = ReadRtf(WriteRtf(document));
    ASSERT_EQ(read->Pictures().size(), 1u);
    EXPECT_EQ(*read->Pictures()[0].bytes, bytes);
    EXPECT_EQ(test::Describe(*read), "{jpeg 300 1440x720}");
}

TEST(RtfWriter, EveryCharacterOfTheCodePageSurvives) {
    std::string text;
    for (int c = 0x20; c < 0x100; ++c)
        text += static_cast<char>(c);
    text += "\t\\{}\r\n end";
    EXPECT_EQ(ReadRtf(WriteRtf(RichText::FromPlain(text)))->Text(), text);
}

TEST(RtfWriter, EveryUnitSurvives) {
    RichText document;
    for (int c = 0x20; c < 0x10000; ++c) {
        const char16_t unit = RichText::CleanUnit(static_cast<char16_t>(c));
        document.Append(std::u16string_view(&unit, 1), 0);
    }
    EXPECT_EQ(ReadRtf(WriteRtf(document))->Units(), document.Units());
}

TEST(RtfWriter, TheOrderInWhichFormatsCameAboutDoesNotShow) {
    RichText one;
    one.Append(u"ab", 0);
    RichText other(RichFont{"Courier", FontFamily::Modern, 0});
    const std::uint16_t times = other.InternFont({});
    CharFormat format;
    format.font = times;
    other.Append(u"ab", other.Intern(format));
    other.SetEndFormat(other.Intern(format));
    EXPECT_EQ(WriteRtf(one), WriteRtf(other));
}

}  // namespace
}  // namespace larder
