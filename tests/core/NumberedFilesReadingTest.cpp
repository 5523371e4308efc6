#include "platform/NumberedFiles.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "core/NumberedFilesFixture.h"

namespace larder::test {
namespace {

using NumberedFilesReadingTest = NumberedFilesTest;

constexpr std::size_t largestBlock = 256 * 1024;  // that a walk over a file reads at once

// Lines

TEST_F(NumberedFilesReadingTest, ALineEndsWithCrLfOrLfOrCr) {
    OpenInput("one\r\ntwo\nthree\rfour");
    for (const char* line : {"one", "two", "three", "four"})
        EXPECT_EQ(files.ReadLine(1), line);
    EXPECT_EQ(ReadLineFailure(1), failure::InputPastEnd);
}

TEST_F(NumberedFilesReadingTest, PositionStandsBehindTheLineEnd) {
    OpenInput("one\r\n\r\nthree\r");
    EXPECT_EQ(files.Position(1), 1);
    files.ReadLine(1);
    EXPECT_EQ(files.Position(1), 6);
    EXPECT_EQ(files.ReadLine(1), "");
    EXPECT_EQ(files.Position(1), 8);
    files.ReadLine(1);
    EXPECT_EQ(files.Position(1), 14);
    EXPECT_TRUE(files.AtEnd(1));
}

TEST_F(NumberedFilesReadingTest, AnEmptyFileIsAtItsEnd) {
    OpenInput("");
    EXPECT_TRUE(files.AtEnd(1));
    EXPECT_EQ(files.Length(1), 0);
    EXPECT_EQ(ReadLineFailure(1), failure::InputPastEnd);
}

TEST_F(NumberedFilesReadingTest, LinesOfEveryLengthAroundTheBlocksAreReadWhole) {
    for (const char* lineEnd : {"\r\n", "\r", "\n"}) {
        for (std::size_t length = 500; length <= 520; ++length) {
            const std::string line(length, 'x');
            const std::string next(1030, 'y');
            OpenInput(line + lineEnd + next + lineEnd + "end");
            EXPECT_EQ(files.ReadLine(1), line);
            EXPECT_EQ(files.Position(1),
                      static_cast<std::int64_t>(length + std::string(lineEnd).size()) + 1);
            EXPECT_EQ(files.ReadLine(1), next);
            EXPECT_EQ(files.ReadLine(1), "end");
        }
    }
}

TEST_F(NumberedFilesReadingTest, BytesOfEveryValuePassThrough) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != '\r' && byte != '\n') all += static_cast<char>(byte);
    }
    OpenInput(all + "\r\n" + all);
    EXPECT_EQ(files.ReadLine(1), all);
    EXPECT_EQ(files.ReadLine(1), all);
}

TEST_F(NumberedFilesReadingTest, AShortLineAfterASeekCostsOneReadOfAFewHundredBytes) {
    OpenInput(std::string(5000, 'x') + "\r\nTitle\r\n" + std::string(100000, 'y'));
    for (int i = 0; i < 3; ++i) {
        Count("read");
        files.Seek(1, 5003);
        EXPECT_EQ(files.ReadLine(1), "Title");
        EXPECT_EQ(counted, 1);
        EXPECT_LE(bytes, 512u);
    }
}

TEST_F(NumberedFilesReadingTest, AWalkOverAWholeFileReadsItInLargeBlocks) {
    std::string text;
    for (int i = 0; i < 20000; ++i)
        text += "a line of forty characters or about that\r\n";
    OpenInput(text);
    Count("read");
    int lines = 0;
    while (!files.AtEnd(1)) {
        files.ReadLine(1);
        ++lines;
    }
    EXPECT_EQ(lines, 20000);
    EXPECT_LE(counted, static_cast<int>(text.size() / largestBlock) + 12);
    EXPECT_LE(bytes, text.size() + 2 * largestBlock);
}

TEST_F(NumberedFilesReadingTest, ALineOfTenMegabytesIsReadOnce) {
    const std::string line(10 * 1024 * 1024, 'x');
    OpenInput(line);
    Count("read");
    EXPECT_EQ(files.ReadLine(1), line);
    EXPECT_LE(bytes, line.size() + 2 * largestBlock);
    EXPECT_LE(counted, static_cast<int>(line.size() / largestBlock) + 12);
}

TEST_F(NumberedFilesReadingTest, ALineMayBeReadIntoAStringInUseOrSkipped) {
    OpenInput("one\r\n" + std::string(2000, 'x') + "\r\n\r\nfour");
    std::string line = "something longer that was there before";
    files.ReadLineInto(1, line);
    EXPECT_EQ(line, "one");
    files.SkipLine(1);
    EXPECT_EQ(files.Position(1), 2008);
    files.ReadLineInto(1, line);
    EXPECT_EQ(line, "");
    files.SkipLine(1);
    EXPECT_TRUE(files.AtEnd(1));
    EXPECT_EQ(Ignoring([&] { files.SkipLine(1); }), failure::InputPastEnd);
    EXPECT_EQ(Ignoring([&] { files.ReadLineInto(1, line); }), failure::InputPastEnd);
}

TEST_F(NumberedFilesReadingTest, WhatAnotherNumberWritesIsSeenAtOnce) {
    OpenInput("one\r\ntwo\r\nthree\r\n");
    EXPECT_EQ(files.ReadLine(1), "one");
    files.Open(2, At("a.txt"), FileMode::Binary);
    files.Seek(2, 6);
    files.Write(2, "TWO");
    EXPECT_EQ(files.ReadLine(1), "TWO");
    files.Seek(2, files.Length(2) + 1);
    files.WriteLine(2, "four");
    EXPECT_EQ(files.ReadLine(1), "three");
    EXPECT_FALSE(files.AtEnd(1));
    EXPECT_EQ(files.ReadLine(1), "four");
    EXPECT_TRUE(files.AtEnd(1));
    files.Open(3, At("a.txt"), FileMode::Output);
    files.Seek(1, 1);
    EXPECT_TRUE(files.AtEnd(1)) << "emptied by its opening for output";
}

TEST_F(NumberedFilesReadingTest, WhatAnotherProgramWritesIsSeenAfterASeek) {
    OpenInput("one\r\ntwo\r\n");
    EXPECT_EQ(files.ReadLine(1), "one");
    folder.Write("a.txt", "ONE\r\nTWO\r\n");
    files.Seek(1, 1);
    EXPECT_EQ(files.ReadLine(1), "ONE");
}

// Positions and characters

TEST_F(NumberedFilesReadingTest, APositionBelow1Is63AndOneBehindTheEndReadsPastIt) {
    OpenInput("abc");
    for (const std::int64_t position :
         {std::int64_t{0}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::min()}) {
        EXPECT_EQ(Ignoring([&] { files.Seek(1, position); }), failure::BadRecordNumber);
    }
    files.Seek(1, 100);
    EXPECT_TRUE(files.AtEnd(1));
    EXPECT_EQ(ReadLineFailure(1), failure::InputPastEnd);
    files.Seek(1, std::int64_t{1} << 40);
    EXPECT_EQ(ReadLineFailure(1), failure::InputPastEnd);
    EXPECT_EQ(Ignoring([&] { files.Seek(1, std::numeric_limits<std::int64_t>::max()); }),
              failure::Overflow);
    files.Seek(1, 2);
    EXPECT_EQ(files.ReadLine(1), "bc");
}

TEST_F(NumberedFilesReadingTest, ReadCharsGivesExactlySoManyInOneRead) {
    OpenInput(std::string(3000, 'x') + "\r\nabc");
    files.Seek(1, 2999);
    Count("read");
    EXPECT_EQ(files.ReadChars(1, 6), std::string("xx\r\nab"));
    EXPECT_EQ(counted, 1);
    EXPECT_EQ(bytes, 6u);
    EXPECT_EQ(files.Position(1), 3005);
    EXPECT_EQ(files.ReadChars(1, 0), "");
    EXPECT_EQ(files.ReadChars(1, 1), "c");
}

TEST_F(NumberedFilesReadingTest, CharactersBehindTheEndAre62AndANegativeCount5) {
    OpenInput("abc");
    EXPECT_EQ(Ignoring([&] { files.ReadChars(1, 4); }), failure::InputPastEnd);
    EXPECT_EQ(Ignoring([&] { files.ReadChars(1, std::numeric_limits<std::int64_t>::max()); }),
              failure::InputPastEnd)
        << "no memory is taken for what is not there";
    EXPECT_EQ(Ignoring([&] { files.ReadChars(1, -1); }), failure::InvalidArgument);
    EXPECT_EQ(files.ReadChars(1, 3), "abc") << "the position has not moved";
}

TEST_F(NumberedFilesReadingTest, LinesAndCharactersMix) {
    OpenInput("one\r\nabcdef\r\nlast\r\n");
    EXPECT_EQ(files.ReadLine(1), "one");
    EXPECT_EQ(files.ReadChars(1, 3), "abc");
    EXPECT_EQ(files.ReadLine(1), "def");
    EXPECT_EQ(files.ReadLine(1), "last");
}

// Numbers

TEST_F(NumberedFilesReadingTest, ReadNumberTakesTheLineOfANumberWithBlanksAround) {
    OpenInput(" 40 \r\n-5 \r\n7, 8\r\n\r\nsome text\r\n1.5\r\nlast");
    for (const double number : {40.0, -5.0, 7.0, 0.0, 0.0, 1.5}) {
        EXPECT_EQ(files.ReadNumber(1), number);
    }
    EXPECT_EQ(files.ReadLine(1), "last");
    EXPECT_EQ(Ignoring([&] { files.ReadNumber(1); }), failure::InputPastEnd);
}

TEST_F(NumberedFilesReadingTest, ANumberIsWrittenWithABlankOrItsSignBeforeAndABlankBehind) {
    files.Open(1, At("n.txt"), FileMode::Output);
    files.WriteNumberLine(1, 40);
    files.WriteNumberLine(1, -5);
    EXPECT_EQ(folder.Read("n.txt"), " 40 \r\n-5 \r\n");
}

}  // namespace
}  // namespace larder::test
