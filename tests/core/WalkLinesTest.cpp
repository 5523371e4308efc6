#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Failure.h"
#include "platform/NumberedFiles.h"
#include "platform/Paths.h"
#include "support/TempFolder.h"

namespace larder {
namespace {

using AfterLine = NumberedFiles::AfterLine;

class WalkLinesTest : public testing::Test {
  protected:
    void OpenInput(const std::string& content) {
        folder.Write("a.txt", content);
        files.Close(1);
        files.Open(1, paths.Alias(folder.Native()) + "\\a.txt", FileMode::Input);
    }
    // The first `count` lines that are handed over, with `after` asked for behind each.
    std::vector<std::string> Walk(std::size_t count, AfterLine after = AfterLine::Next) {
        std::vector<std::string> lines;
        files.WalkLines(1, [&](std::string_view line) {
            lines.emplace_back(line);
            return lines.size() == count ? AfterLine::End : after;
        });
        return lines;
    }

    test::TempFolder folder;
    Paths paths;
    NumberedFiles files{paths};
};

TEST_F(WalkLinesTest, LinesEndWithCrLfOrLfAndTheLastMayHaveNoEnd) {
    OpenInput("one\r\n\ntwo\rtoo\nthree\r\nend");
    EXPECT_EQ(Walk(5), (std::vector<std::string>{"one", "", "two\rtoo", "three", "end"}));
    EXPECT_TRUE(files.AtEnd(1));
}

TEST_F(WalkLinesTest, EveryOtherLineMayBeLeftOut) {
    OpenInput("a\r\n1\r\nb\r\n2\r\nc\r\n3\r\n");
    EXPECT_EQ(Walk(2, AfterLine::SkipOne), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(files.ReadLine(1), "2") << "the position is behind the last line handed over";
    EXPECT_EQ(Walk(1), std::vector<std::string>{"c"});
}

TEST_F(WalkLinesTest, LinesOfEveryLengthAroundTheBlocksAreWhole) {
    for (const std::string lineEnd : {"\r\n", "\n"}) {
        for (std::size_t length = 500; length <= 520; ++length) {
            const std::string line(length, 'x');
            const std::string next(4090, 'y');
            OpenInput(line + lineEnd + next + lineEnd + "z" + lineEnd + line + lineEnd + "end");
            EXPECT_EQ(Walk(3, AfterLine::SkipOne), (std::vector<std::string>{line, "z", "end"}));
            files.Seek(1, 1);
            EXPECT_EQ(Walk(5), (std::vector<std::string>{line, next, "z", line, "end"}));
        }
    }
}

TEST_F(WalkLinesTest, ALineAskedForAtTheEndIs62WhetherItIsWantedOrNot) {
    for (const AfterLine after : {AfterLine::Next, AfterLine::SkipOne}) {
        OpenInput("one\r\n");
        EXPECT_EQ(Ignoring([&] { Walk(5, after); }), failure::InputPastEnd);
    }
    OpenInput("");
    EXPECT_EQ(Ignoring([&] { Walk(1); }), failure::InputPastEnd);
}

TEST_F(WalkLinesTest, ALongLineMayBeLeftOut) {
    OpenInput("a\r\n" + std::string(5'000'000, 'x') + "\r\nb\r\n");
    EXPECT_EQ(Walk(2, AfterLine::SkipOne), (std::vector<std::string>{"a", "b"}));
}

TEST_F(WalkLinesTest, AFileThatIsNotReadAsTextIs54) {
    files.Open(1, paths.Alias(folder.Native()) + "\\b.ind", FileMode::Random);
    EXPECT_EQ(Ignoring([&] { Walk(1); }), failure::BadFileMode);
    files.Close(1);
    EXPECT_EQ(Ignoring([&] { Walk(1); }), failure::BadFileNumber);
}

}  // namespace
}  // namespace larder
