#include <gtest/gtest.h>

#include <string>

#include "core/rtf/Describe.h"
#include "core/rtf/Documents.h"
#include "platform/rtf/Rtf.h"

namespace larder {
namespace {

using test::Describe;
using test::RtfDocument;

class RtfDocuments : public testing::TestWithParam<RtfDocument> {};

TEST_P(RtfDocuments, ReadsAsExpected) {
    const auto document = ReadRtf(GetParam().rtf);
    ASSERT_TRUE(document);
    EXPECT_EQ(document->PlainUtf8(), GetParam().text);
    EXPECT_EQ(Describe(*document), test::ExpectedLooks(GetParam()));
}

TEST_P(RtfDocuments, IsTheSameAfterWritingAndReading) {
    const std::string once = WriteRtf(*ReadRtf(GetParam().rtf));
    const auto again = ReadRtf(once);
    ASSERT_TRUE(again);
    EXPECT_EQ(Describe(*again), test::ExpectedLooks(GetParam()));
    EXPECT_EQ(WriteRtf(*again), once);
}

TEST_P(RtfDocuments, CountsPositionsAsItsText) {
    const auto document = ReadRtf(GetParam().rtf);
    EXPECT_EQ(document->Text().size(), document->Length());
    std::size_t runs = 0;
    for (const RichText::Run& run : document->Runs())
        runs += run.length;
    EXPECT_EQ(runs, document->Units().size());
    std::size_t units = document->Paragraphs().size() - 1;
    for (const RichText::Paragraph& paragraph : document->Paragraphs())
        units += paragraph.length;
    EXPECT_EQ(units, document->Units().size());
}

INSTANTIATE_TEST_SUITE_P(Table, RtfDocuments, testing::ValuesIn(test::kRtfDocuments),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(RtfReader, TextThatDoesNotBeginAsRtfIsNotRtf) {
    EXPECT_FALSE(ReadRtf(""));
    EXPECT_FALSE(ReadRtf("plain"));
    EXPECT_FALSE(ReadRtf(" {\\rtf1 a}"));
    EXPECT_FALSE(ReadRtf("{\\rt"));
    EXPECT_TRUE(ReadRtf("{\\rtf"));
}

TEST(RtfReader, AFinalParagraphEndIsInTheText) {
    EXPECT_EQ(ReadRtf("{\\rtf1 abc\\par}")->Text(), "abc\r\n");
    EXPECT_EQ(ReadRtf("{\\rtf1 abc}")->Text(), "abc");
}

TEST(RtfReader, TextLacksWhatTheCodePageLacks) {
    EXPECT_EQ(ReadRtf("{\\rtf1 \\u960?\\'e9\\u8364?{\\pict\\pngblip 01}}")->Text(), "?\xe9\x80 ");
}

TEST(RtfReader, TheLookBehindTheTextIsKept) {
    const auto document = ReadRtf("{\\rtf1{\\fonttbl{\\f0 A;}{\\f1 B;}}\\b\\fs30 a\\b0\\f1\\fs20}");
    const CharFormat& end = document->CharFormats()[document->EndFormat()];
    EXPECT_EQ(end.halfPoints, 20);
    EXPECT_FALSE(end.bold);
    EXPECT_EQ(document->Fonts()[end.font].name, "B");
}

TEST(RtfPlainText, LinesEndByLf) {
    EXPECT_EQ(RtfToPlainUtf8("{\\rtf1 a\\par b}"), "a\nb\n");
    EXPECT_EQ(RtfToPlainUtf8("{\\rtf1 a\\par b\\par}"), "a\nb\n");
    EXPECT_EQ(RtfToPlainUtf8("{\\rtf1}"), "");
}

TEST(RtfPlainText, TakesOtherTextAsPlain) {
    EXPECT_EQ(RtfToPlainUtf8("caf\xe9\r\nb"), "café\nb\n");
}

}  // namespace
}  // namespace larder
