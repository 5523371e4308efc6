#include "tools/RecipeSource.h"

#include <gtest/gtest.h>

#include <string>

#include "support/TempFolder.h"

namespace larder {
namespace {

class RecipeSourceTest : public testing::Test {
  protected:
    std::vector<SourceText> Read() const { return ReadSources(folder.Native("recipes"), "#"); }
    SourceText ReadOne(const std::string& text) const {
        folder.Write("recipes/1-a.txt", text);
        return Read().at(0);
    }
    // What the maintainer is told about a file of this content.
    std::string MistakeIn(const std::string& text) const {
        try {
            ReadOne(text);
        } catch (const SourceError& error) {
            return error.what();
        }
        return "no mistake";
    }

    test::TempFolder folder;
};

TEST_F(RecipeSourceTest, TheHeadGivesTitleCategoriesServingsAndTime) {
    const SourceText source = ReadOne(
        "title: Salmon with Dill\ncategories: Salmon, Baked\nserves: 4\ntime: 35 minutes\n\nText");
    EXPECT_EQ(source.Number, 1);
    EXPECT_EQ(source.Title, "Salmon with Dill");
    EXPECT_EQ(source.Categories, (std::vector<std::string>{"Salmon", "Baked"}));
    EXPECT_EQ(source.Serves, "4");
    EXPECT_EQ(source.Time, "35 minutes");
}

TEST_F(RecipeSourceTest, TheTextIsTheLinesBehindTheHeadWithoutEmptyOnes) {
    const SourceText source = ReadOne("title: A\n\nIngredients\n- salt\n\nMethod\n1. Stir.\n");
    EXPECT_EQ(source.Lines,
              (std::vector<std::string>{"Ingredients", "- salt", "Method", "1. Stir."}));
}

TEST_F(RecipeSourceTest, OnlyTheTitleIsNeeded) {
    const SourceText source = ReadOne("title: A\n\nText");
    EXPECT_TRUE(source.Categories.empty());
    EXPECT_TRUE(source.Serves.empty());
    EXPECT_TRUE(source.Time.empty());
}

TEST_F(RecipeSourceTest, LineEndsMayBeThoseOfWindows) {
    const SourceText source = ReadOne("title: A\r\n\r\nText\r\n");
    EXPECT_EQ(source.Title, "A");
    EXPECT_EQ(source.Lines, (std::vector<std::string>{"Text"}));
}

TEST_F(RecipeSourceTest, BlanksAroundCategoriesAndEmptyOnesDoNotCount) {
    EXPECT_EQ(ReadOne("title: A\ncategories:  Cod ,, Baked ,\n\nText").Categories,
              (std::vector<std::string>{"Cod", "Baked"}));
}

TEST_F(RecipeSourceTest, ATextLineMayHoldAColon) {
    EXPECT_EQ(ReadOne("title: A\n\nNote: wash it.").Lines,
              (std::vector<std::string>{"Note: wash it."}));
}

TEST_F(RecipeSourceTest, SourcesComeInTheOrderOfTheirNumbersNotOfTheirNames) {
    for (const int number : {10, 9, 8, 7, 6, 5, 4, 3, 2, 1}) {
        folder.Write("recipes/" + std::to_string(number) + ".txt",
                     "title: T" + std::to_string(number) + "\n\nText");
    }
    const std::vector<SourceText> sources = Read();
    ASSERT_EQ(sources.size(), 10U);
    EXPECT_EQ(sources[1].Title, "T2");
    EXPECT_EQ(sources[9].Title, "T10");
}

TEST_F(RecipeSourceTest, OtherFilesOfTheFolderAreLeftAlone) {
    folder.Write("recipes/notes.md", "no recipe");
    EXPECT_EQ(ReadOne("title: A\n\nText").Title, "A");
    EXPECT_EQ(Read().size(), 1U);
}

TEST_F(RecipeSourceTest, AGapInTheNumbersIsAMistakeThatNamesTheFile) {
    folder.Write("recipes/3-c.txt", "title: C\n\nText");
    const std::string mistake = MistakeIn("title: A\n\nText");
    EXPECT_NE(mistake.find("3-c.txt"), std::string::npos) << mistake;
    EXPECT_NE(mistake.find("gap"), std::string::npos) << mistake;
}

TEST_F(RecipeSourceTest, ANumberGivenTwiceIsAMistake) {
    folder.Write("recipes/01-b.txt", "title: B\n\nText");
    EXPECT_NE(MistakeIn("title: A\n\nText").find("double"), std::string::npos);
}

TEST_F(RecipeSourceTest, AFileWithoutANumberIsAMistake) {
    folder.Write("recipes/crab.txt", "title: Crab\n\nText");
    EXPECT_NE(MistakeIn("title: A\n\nText").find("crab.txt"), std::string::npos);
}

TEST_F(RecipeSourceTest, AMissingTitleIsAMistake) {
    EXPECT_NE(MistakeIn("serves: 4\n\nText").find("no title"), std::string::npos);
    EXPECT_NE(MistakeIn("").find("no title"), std::string::npos);
}

TEST_F(RecipeSourceTest, AMissingTextIsAMistake) {
    EXPECT_NE(MistakeIn("title: A\n\n").find("no text"), std::string::npos);
}

TEST_F(RecipeSourceTest, AnUnknownHeadLineIsAMistakeThatIsQuoted) {
    EXPECT_NE(MistakeIn("title: A\ncolour: red\n\nText").find("colour: red"), std::string::npos);
}

TEST_F(RecipeSourceTest, AHeadLineWithoutAValueIsAMistake) {
    EXPECT_NE(MistakeIn("title:\n\nText").find("without a value"), std::string::npos);
    EXPECT_NE(MistakeIn("title: A\nserves\n\nText").find("without a value"), std::string::npos);
}

TEST_F(RecipeSourceTest, ACharacterOutsideTheCodePageIsAMistake) {
    EXPECT_NE(MistakeIn("title: A\n\nfish 魚").find("Windows-1252"), std::string::npos);
    EXPECT_NE(MistakeIn("title: A\n\nbroken \xC3").find("UTF-8"), std::string::npos);
    EXPECT_EQ(MistakeIn("title: Crème fraîche – ½ €\n\nText"), "no mistake");
}

TEST_F(RecipeSourceTest, AMarkerCharacterIsAMistake) {
    EXPECT_NE(MistakeIn("title: A\n\nThe #1 fish").find("marker"), std::string::npos);
}

TEST_F(RecipeSourceTest, AMissingFolderIsAMistakeThatNamesIt) {
    try {
        ReadSources(folder.Native("nowhere"), "#");
        FAIL() << "no mistake";
    } catch (const SourceError& error) {
        EXPECT_NE(std::string(error.what()).find("nowhere"), std::string::npos);
    }
}

TEST_F(RecipeSourceTest, AnEmptyFolderGivesNoSources) {
    folder.MakeFolder("recipes");
    EXPECT_TRUE(Read().empty());
}

}  // namespace
}  // namespace larder
