#include "search/WordIndexBuilder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "search/WordIndex.h"
#include "support/DataFolder.h"

namespace larder {
namespace {

class WordIndexBuilderTest : public testing::Test {
  protected:
    void Write() const {
        builder.Write(data.Folder.Native("Data/Search.ydb"), data.Folder.Native("Data/Search.ind"));
    }
    std::string Written() const {
        Write();
        return data.Folder.Read("Data/Search.ydb");
    }
    std::string LookUp(std::string word) { return index.LookUpWord(word); }

    test::DataFolder data;
    WordIndex index{data.Files, data.Paths};
    WordIndexBuilder builder;
};

TEST_F(WordIndexBuilderTest, EachWordIsFollowedByItsRecipesAndTheWordsAreSorted) {
    builder.Add(1, "salmon dill");
    builder.Add(2, "salmon butter");
    builder.Add(15, "salmon");
    EXPECT_EQ(Written(), "butter\r\n2\r\ndill\r\n1\r\nsalmon\r\n1 2 15\r\n");
}

TEST_F(WordIndexBuilderTest, WordsAreCutAsAQueryIsCut) {
    builder.Add(1, "Pan-fried cod, \"fresh\"\r\n\t(see 5)half_shell;caf\xE9's");
    EXPECT_EQ(Written(),
              "5\r\n1\r\ncaf\xE9\r\n1\r\ncod\r\n1\r\nfresh\r\n1\r\nfried\r\n1\r\n"
              "half_shell\r\n1\r\npan\r\n1\r\ns\r\n1\r\nsee\r\n1\r\n");
}

TEST_F(WordIndexBuilderTest, CaseIsFoldedWithAccentsKept) {
    builder.Add(1, "CR\xC8ME");
    builder.Add(2, "creme");
    EXPECT_EQ(Written(), "creme\r\n2\r\ncr\xE8me\r\n1\r\n");
}

TEST_F(WordIndexBuilderTest, StopWordsStayOutHoweverWritten) {
    builder.Add(1, "The cod AND a Half of or for");
    EXPECT_EQ(Written(), "cod\r\n1\r\nhalf\r\n1\r\n");
}

TEST_F(WordIndexBuilderTest, ARecipeStandsOnceInAWordsLine) {
    builder.Add(7, "cod cod\r\ncod");
    builder.Add(9, "cod");
    EXPECT_EQ(Written(), "cod\r\n7 9\r\n");
}

TEST_F(WordIndexBuilderTest, TheIndHasFourBytesAWordAndHoldsThePositions) {
    builder.Add(1, "cod dill");
    Write();
    EXPECT_EQ(data.Folder.Read("Data/Search.ind"), test::IndexBytes({1, 9}));
}

TEST_F(WordIndexBuilderTest, WithoutAWordBothFilesAreEmpty) {
    builder.Add(1, " , the and ");
    EXPECT_EQ(builder.WordCount(), 0U);
    EXPECT_EQ(Written(), "");
    EXPECT_TRUE(data.Folder.Exists("Data/Search.ind"));
    EXPECT_EQ(LookUp("cod"), "");
}

TEST_F(WordIndexBuilderTest, EveryWordIsFoundAgain) {
    builder.Add(1, "zander \xE9t\xE9 _x 12");
    builder.Add(2, "zander 12");
    Write();
    EXPECT_EQ(LookUp("zander"), "1 2");
    EXPECT_EQ(LookUp("\xC9T\xC9"), "1");
    EXPECT_EQ(LookUp("_x"), "1");
    EXPECT_EQ(LookUp("12"), "1 2");
}

TEST_F(WordIndexBuilderTest, AsManyWordsAs16BitsCountAreWritten) {
    for (std::size_t i = 0; i < WordIndexBuilder::MaxWords; ++i) {
        builder.Add(1, "w" + std::to_string(i));
    }
    Write();
    EXPECT_EQ(LookUp("w32766"), "1");
}

TEST_F(WordIndexBuilderTest, OneWordMoreIsAnErrorThatSaysSoAndWritesNothing) {
    for (std::size_t i = 0; i <= WordIndexBuilder::MaxWords; ++i) {
        builder.Add(1, "w" + std::to_string(i));
    }
    try {
        Write();
        FAIL() << "no error";
    } catch (const std::length_error& error) {
        const std::string text = error.what();
        EXPECT_NE(text.find("32767"), std::string::npos) << text;
        EXPECT_NE(text.find("32768"), std::string::npos) << text;
    }
    EXPECT_FALSE(data.Folder.Exists("Data/Search.ydb"));
    EXPECT_FALSE(data.Folder.Exists("Data/Search.ind"));
}

TEST_F(WordIndexBuilderTest, AFileThatCannotBeWrittenIsAnError) {
    builder.Add(1, "cod");
    data.Folder.MakeFolder("Data/Search.ind");
    EXPECT_THROW(Write(), std::runtime_error);
}

}  // namespace
}  // namespace larder
