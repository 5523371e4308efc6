#include "search/WordIndex.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/Failure.h"
#include "platform/Text.h"
#include "store/FileNumbers.h"
#include "support/DataFolder.h"
#include "support/Seed.h"

namespace larder {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* ThreeWords =
    "cod\r\n1 2 3\r\n"
    "dill\r\n2\r\n"
    "salmon\r\n12 40 77\r\n";

class WordIndexTest : public testing::Test {
  protected:
    void Write(const std::string& ydb, std::size_t indBytes) const {
        data.Folder.Write("Data/Search.ydb", ydb);
        data.Folder.Write("Data/Search.ind", std::string(indBytes, 'x'));
    }
    std::string LookUp(std::string word) { return index.LookUpWord(word); }
    int FailureOf(const std::string& word) {
        return Ignoring([&] { LookUp(word); });
    }
    bool AnyFileOpen() const {
        return data.Files.IsOpen(filenumber::SearchYDB) || data.Files.IsOpen(filenumber::SearchIND);
    }

    test::DataFolder data;
    WordIndex index{data.Files, data.Paths};
};

TEST_F(WordIndexTest, AWordGivesItsNumberLine) {
    Write(ThreeWords, 12);
    EXPECT_EQ(LookUp("cod"), "1 2 3");
    EXPECT_EQ(LookUp("dill"), "2");
}

TEST_F(WordIndexTest, TheLastWordIsFound) {
    Write(ThreeWords, 12);
    EXPECT_EQ(LookUp("salmon"), "12 40 77");
}

TEST_F(WordIndexTest, AWordBehindTheLastGivesNothing) {
    Write(ThreeWords, 12);
    EXPECT_EQ(LookUp("tuna"), "");
}

TEST_F(WordIndexTest, AWordBetweenTwoOrBeforeTheFirstGivesNothing) {
    Write(ThreeWords, 12);
    EXPECT_EQ(LookUp("crab"), "");
    EXPECT_EQ(LookUp("bass"), "");
    EXPECT_EQ(LookUp("salmo"), "");
    EXPECT_EQ(LookUp("salmons"), "");
}

TEST_F(WordIndexTest, UpperCaseFindsTheWordAndComesBackLower) {
    Write(ThreeWords, 12);
    std::string word = "SalMon";
    EXPECT_EQ(index.LookUpWord(word), "12 40 77");
    EXPECT_EQ(word, "salmon");
}

TEST_F(WordIndexTest, AccentsAreKeptAndFoldedInTheCodePage) {
    Write("creme\r\n1\r\ncr\xE8me\r\n2\r\n", 8);
    EXPECT_EQ(LookUp("CR\xC8ME"), "2");
    EXPECT_EQ(LookUp("creme"), "1");
}

TEST_F(WordIndexTest, WordsAreComparedByTheirBytes) {
    // An accented letter is behind every plain one, an underscore before the letters.
    Write("_x\r\n1\r\nzander\r\n2\r\n\xE9t\xE9\r\n3\r\n", 12);
    EXPECT_EQ(LookUp("_x"), "1");
    EXPECT_EQ(LookUp("zander"), "2");
    EXPECT_EQ(LookUp("\xE9t\xE9"), "3");
}

TEST_F(WordIndexTest, BothFilesAreClosedAfterwards) {
    Write(ThreeWords, 12);
    LookUp("cod");
    EXPECT_FALSE(AnyFileOpen());
    LookUp("tuna");
    EXPECT_FALSE(AnyFileOpen());
}

TEST_F(WordIndexTest, ReadingStopsAtTheFirstWordThatIsNotBelow) {
    std::string many = "aal\r\n1\r\ncod\r\n2\r\n";
    for (int i = 0; i < 100000; ++i)
        many += "x" + std::to_string(i) + "\r\n1\r\n";
    Write(many, 4 * 30000);
    std::uint64_t bytes = 0;
    data.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind == "read") bytes += access.Bytes;
    });
    EXPECT_EQ(LookUp("bass"), "");
    EXPECT_LT(bytes, 4096U);
}

TEST_F(WordIndexTest, AnEmptyIndFindsNothingWhateverTheWordsAre) {
    Write(ThreeWords, 0);
    EXPECT_EQ(LookUp("cod"), "");
    EXPECT_EQ(LookUp(""), "");
    EXPECT_FALSE(AnyFileOpen());
}

TEST_F(WordIndexTest, AShorterIndHidesTheWordsPastItsCount) {
    Write(ThreeWords, 8);
    EXPECT_EQ(LookUp("dill"), "2");
    EXPECT_EQ(LookUp("salmon"), "");
}

TEST_F(WordIndexTest, ALongerIndMakesTheReadRunPastTheEnd) {
    Write(ThreeWords, 16);
    EXPECT_EQ(LookUp("salmon"), "12 40 77");
    EXPECT_EQ(FailureOf("tuna"), failure::InputPastEnd);
}

TEST_F(WordIndexTest, ALengthThatIsNoMultipleOfFourIsRoundedHalvesToEven) {
    Write(ThreeWords, 9);  // 2.25
    EXPECT_EQ(LookUp("salmon"), "");
    Write(ThreeWords, 10);  // 2.5
    EXPECT_EQ(LookUp("salmon"), "");
    Write(ThreeWords, 11);  // 2.75
    EXPECT_EQ(LookUp("salmon"), "12 40 77");
}

TEST_F(WordIndexTest, MoreWordsThan16BitsCountIsAFailure) {
    Write(ThreeWords, 4 * 32767);
    EXPECT_EQ(LookUp("salmon"), "12 40 77");
    Write(ThreeWords, 4 * 32768);
    EXPECT_EQ(FailureOf("salmon"), failure::Overflow);
    EXPECT_TRUE(AnyFileOpen());
}

TEST_F(WordIndexTest, AnIndOfManyGigabytesIsAFailureLikeAnyOther) {
    Write(ThreeWords, 0);
    std::filesystem::resize_file(data.Folder.Native("Data/Search.ind"), 1ULL << 40);
    EXPECT_EQ(FailureOf("salmon"), failure::Overflow);
}

TEST_F(WordIndexTest, AfterAFailureTheFilesStayOpenAndLaterLookUpsFail) {
    Write(ThreeWords, 16);
    EXPECT_EQ(FailureOf("tuna"), failure::InputPastEnd);
    EXPECT_TRUE(data.Files.IsOpen(filenumber::SearchYDB));
    EXPECT_TRUE(data.Files.IsOpen(filenumber::SearchIND));
    EXPECT_EQ(FailureOf("cod"), failure::FileAlreadyOpen);
}

TEST_F(WordIndexTest, AMissingWordFileIsAFailure) {
    data.Folder.Write("Data/Search.ind", "1234");
    EXPECT_EQ(FailureOf("cod"), failure::FileNotFound);
}

TEST_F(WordIndexTest, AMissingIndFindsNothing) {
    data.Folder.Write("Data/Search.ydb", ThreeWords);
    EXPECT_EQ(LookUp("cod"), "");
}

TEST_F(WordIndexTest, UnsortedWordsAreLostBehindTheFirstThatIsNotBelow) {
    Write("cod\r\n1\r\nsalmon\r\n2\r\ndill\r\n3\r\n", 12);
    EXPECT_EQ(LookUp("cod"), "1");
    EXPECT_EQ(LookUp("dill"), "");
    EXPECT_EQ(LookUp("salmon"), "2");
}

TEST_F(WordIndexTest, AMissingLineShiftsWhatFollowsAndNothingWorse) {
    Write("cod\r\ndill\r\n2\r\nsalmon\r\n3\r\n", 12);  // the numbers of cod
    EXPECT_EQ(LookUp("cod"), "dill");
    EXPECT_EQ(FailureOf("dill"), failure::InputPastEnd) << "2 and 3 count as words";
}

TEST_F(WordIndexTest, AMissingLastNumberLineIsAFailure) {
    Write("cod\r\n1\r\nsalmon\r\n", 8);
    EXPECT_EQ(FailureOf("salmon"), failure::InputPastEnd);
}

TEST_F(WordIndexTest, ALastLineWithoutALineEndCounts) {
    Write("cod\r\n1\r\nsalmon\r\n2 3", 8);
    EXPECT_EQ(LookUp("salmon"), "2 3");
}

TEST_F(WordIndexTest, AWordLineOf50MegabytesIsReadAsOneWord) {
    Write("cod\r\n1\r\n" + std::string(50 << 20, 'm') + "\r\n2\r\nsalmon\r\n3\r\n", 12);
    EXPECT_EQ(LookUp("cod"), "1");
    EXPECT_EQ(LookUp("mussel"), "");
    EXPECT_EQ(LookUp("salmon"), "3");
}

TEST_F(WordIndexTest, ANumberLineOf50MegabytesIsSkippedOrReturnedWhole) {
    const std::string line(50 << 20, '7');
    Write("cod\r\n" + line + "\r\nsalmon\r\n3\r\n", 8);
    EXPECT_EQ(LookUp("salmon"), "3");
    EXPECT_EQ(LookUp("cod").size(), line.size());
}

TEST_F(WordIndexTest, AFileOfOneLineWithoutAnEndIsAFailureAtMost) {
    Write(std::string(1 << 20, 'a'), 4);
    EXPECT_EQ(FailureOf("cod"), failure::InputPastEnd);
}

TEST_F(WordIndexTest, SeveralWordsGiveTheirLinesInTheirOrder) {
    Write(ThreeWords, 12);
    EXPECT_EQ(index.LookUpWords({"salmon", "COD", "eel", "cod"}),
              (Lines{"12 40 77", "1 2 3", "", "1 2 3"}));
    EXPECT_FALSE(AnyFileOpen());
}

TEST_F(WordIndexTest, NoWordsOpenNoFile) {
    data.Files.Watch([&](const NumberedFiles::Access&) { FAIL(); });
    EXPECT_EQ(index.LookUpWords({}), Lines{});
}

TEST_F(WordIndexTest, SeveralWordsAreReadInOneWalkToTheLastOfThem) {
    std::string many;
    for (int i = 100000; i < 130000; ++i)
        many += "x" + std::to_string(i) + "\r\n" + std::to_string(i) + "\r\n";
    Write(many, 4 * 30000);
    std::uint64_t bytes = 0;
    int opened = 0;
    data.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind == "read") bytes += access.Bytes;
        if (access.Kind == "open") ++opened;
    });
    LookUp("x115000");
    const std::uint64_t forOne = bytes;
    bytes = 0;
    opened = 0;
    EXPECT_EQ(index.LookUpWords({"x100001", "x115000", "x114999"}),
              (Lines{"100001", "115000", "114999"}));
    EXPECT_EQ(opened, 2);
    EXPECT_EQ(bytes, forOne);
}

TEST_F(WordIndexTest, SeveralWordsFailFromTheFirstThatFailsOn) {
    Write(ThreeWords, 16);
    EXPECT_EQ(index.LookUpWords({"salmon", "tuna", "cod"}), Lines{"12 40 77"});
    EXPECT_TRUE(AnyFileOpen());
    EXPECT_EQ(index.LookUpWords({"cod"}), Lines{});
}

// Whatever stands in the files: unsorted, with lines missing, with a wrong count.
TEST_F(WordIndexTest, SeveralWordsGiveWhatEachGivesAlone) {
    std::mt19937 random(test::Seed());
    const auto below = [&](unsigned n) { return static_cast<std::size_t>(random() % n); };
    const auto letters = [&] {
        std::string word(1 + below(2), ' ');
        for (char& c : word)
            c = "abcdE"[below(5)];
        return word;
    };
    int failed = 0;
    for (int round = 0; round < 400; ++round) {
        std::vector<std::string> lines;
        const std::size_t records = below(8);
        for (std::size_t i = 0; i < records; ++i) {
            lines.push_back(LowerCase(letters()));
            lines.push_back(std::to_string(below(100)));
        }
        std::string text;
        for (std::size_t i = 0; i < lines.size(); ++i)
            text += below(30) == 0 ? "" : lines[i] + (below(30) == 0 ? "\n" : "\r\n");
        Write(text, 4 * (below(4) == 0 ? below(10) : records));
        std::vector<std::string> words(1 + below(4));
        for (std::string& word : words)
            word = letters();

        Lines alone;
        for (const std::string& word : words) {
            if (Ignoring([&] { alone.push_back(LookUp(word)); }) != 0) ++failed;
        }
        const bool openAlone = AnyFileOpen();
        data.Files.CloseAll();
        ASSERT_EQ(index.LookUpWords(words), alone) << text;
        ASSERT_EQ(AnyFileOpen(), openAlone) << text;
        data.Files.CloseAll();
    }
    EXPECT_GT(failed, 20) << "or this would show little";
}

TEST(StopWords, SixWordsAreStopWords) {
    for (const char* word : {"and", "or", "a", "the", "of", "for"})
        EXPECT_TRUE(IsStopWord(word));
    for (const char* word : {"not", "in", "with", "fo", "an", "salmon"}) {
        EXPECT_FALSE(IsStopWord(word));
    }
}

TEST(StopWords, AreStopWordsInSmallLettersOnly) {
    EXPECT_FALSE(IsStopWord("And"));
    EXPECT_FALSE(IsStopWord("AND"));
    EXPECT_FALSE(IsStopWord("THE"));
}

}  // namespace
}  // namespace larder
