#include "tools/DataBuilder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/Picture.h"
#include "platform/rtf/Rtf.h"
#include "store/RecipeStore.h"
#include "support/ScriptedDisc.h"
#include "tools/SourceFolder.h"

namespace larder {
namespace {

namespace fs = std::filesystem;

// What the program reads in a data folder that was built.
class BuiltData {
  public:
    explicit BuiltData(const std::string& out) {
        const std::string root = system_.Alias(out) + "\\Data\\";
        paths_.Assign(root, root);
        Store.OpenYDB_IND_Normal();
        Store.OpenCategoryDescriptions();
        Store.RecalculateTotalRecipes();
    }

  private:
    Paths system_;
    DataPaths paths_;
    NumberedFiles files_{system_};
    test::ScriptedDisc disc_;

  public:
    RecipeStore Store{files_, paths_, disc_};
};

class DataBuilderTest : public testing::Test {
  protected:
    void Build(const std::string& out = "out") const {
        DataBuilder(sources.Source(), sources.Out(out)).Build();
    }
    std::string Built(const std::string& file) const { return sources.Folder.Read("out/" + file); }
    // What the maintainer is told when he builds.
    std::string Mistake() const {
        try {
            Build();
        } catch (const SourceError& error) {
            return error.what();
        }
        return "no mistake";
    }
    bool AnythingBuilt() const { return sources.Folder.Exists("out/Data"); }

    test::SourceFolder sources;
};

TEST_F(DataBuilderTest, RecipesAreTheStockInTheOrderOfTheirNumbers) {
    Build();
    BuiltData data(sources.Out());
    EXPECT_EQ(data.Store.OriginalNumRecords, 3);
    EXPECT_EQ(data.Store.TotalNumRecords, 3);
    EXPECT_EQ(data.Store.GetRecipeTitle(1), "Cod Cakes");
    EXPECT_EQ(data.Store.GetRecipeTitle(2), "Baked Salmon");
    EXPECT_EQ(data.Store.GetRecipeTitle(3), "Baked Cod");
}

TEST_F(DataBuilderTest, ABodyIsTheRecipeAsItIsToBeShown) {
    Build();
    BuiltData data(sources.Out());
    EXPECT_EQ(RtfToPlainUtf8(data.Store.GetRecipeRTF(1)),
              "Cod Cakes\nServes 4 · 30 minutes\nIngredients\n•\t500 g cod\nMethod\n"
              "1.\tFry the cakes.\n");
    EXPECT_EQ(RtfToPlainUtf8(data.Store.GetRecipeRTF(3)), "Baked Cod\nBake.\n");
}

TEST_F(DataBuilderTest, DescriptionsAreStoredUnderTheirTitles) {
    Build();
    BuiltData data(sources.Out());
    EXPECT_EQ(data.Store.GetCatTitle(1), "Cod");
    EXPECT_EQ(data.Store.GetCatTitle(2), "Salmon");
    EXPECT_EQ(RtfToPlainUtf8(data.Store.GetCatRTF(2)), "Salmon\nA red one.\n");
}

TEST_F(DataBuilderTest, TheTopCategoriesComeInTheirFixedOrderAndTheOthersBehind) {
    Build();
    EXPECT_EQ(Built("Data/Categories.ctg"),
              " 3 \r\n"
              "MY FAVORITES\r\n \r\n"
              "BUYING AND PREPARATION TIPS\r\n\r\n"
              "VIDEO\r\n\r\n"
              "KNOTS\r\n\r\n"
              "ALL RECIPES WITH PICTURES\r\n 2 \r\n"
              "ALL RECIPES\r\n*\r\n"
              "Cod\r\n 1 3 \r\n"
              "Salmon\r\n 2 \r\n"
              "Baked\r\n 2 3 \r\n");
}

TEST_F(DataBuilderTest, ACategoryWithoutARecipeIsAmongTheNamesOnly) {
    Build();
    EXPECT_EQ(Built("Data/Category Names.txt"), "Cod\r\nSalmon\r\nWhale\r\nBaked\r\n");
    EXPECT_EQ(Built("Data/Categories.ctg").find("Whale"), std::string::npos);
}

TEST_F(DataBuilderTest, CategoryNamesAreStoredInTheCodePage) {
    sources.Folder.Write("source/Category Names.txt", "Cod\nSalmon\nBaked\nCrème\n");
    sources.WriteRecipe("004-x.txt", "title: Crème\ncategories: Crème\n\nText\n");
    Build();
    EXPECT_NE(Built("Data/Categories.ctg").find("Cr\xE8me\r\n 4 \r\n"), std::string::npos);
}

TEST_F(DataBuilderTest, PicturesBecomePhotosByRecipeNumber) {
    Build();
    const Picture photo = Picture::FromFile(sources.Out() + "/Data/Food Photos/2.jpg");
    EXPECT_EQ(photo.PixelWidth(), 1280);
    EXPECT_EQ(photo.PixelHeight(), 960);
}

TEST_F(DataBuilderTest, TheGroundOfTheWindowAndTheSoundOfTheButtonsAreThere) {
    Build();
    EXPECT_FALSE(Picture::FromFile(sources.Out() + "/Data/RecipeView.jpg").IsEmpty());
    EXPECT_TRUE(Built("Click.wav").starts_with("RIFF"));
}

TEST_F(DataBuilderTest, NothingElseIsLeftBehind) {
    Build();
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(sources.Out())) {
        names.insert(fs::relative(entry.path(), sources.Out()).string());
    }
    EXPECT_EQ(names, (std::set<std::string>{
                         "Click.wav", "Data", "Data/Categories.ctg", "Data/Category Names.txt",
                         "Data/CategyD Index.ind", "Data/CategyD.ydb", "Data/Food Photos",
                         "Data/Food Photos/2.jpg", "Data/RecipeView.jpg", "Data/Recipes Index.ind",
                         "Data/Recipes.ydb", "Data/Search.ind", "Data/Search.ydb"}));
}

TEST_F(DataBuilderTest, TheCountsAreThoseOfTheSources) {
    DataBuilder builder(sources.Source(), sources.Out());
    builder.Build();
    EXPECT_EQ(builder.RecipeCount(), 3U);
    EXPECT_EQ(builder.PictureCount(), 1U);
    EXPECT_EQ(builder.CategoryCount(), 4U);
}

TEST_F(DataBuilderTest, TheOutputMayLieInAFolderThatTheCodePageCannotSpell) {
    Build("魚の本");
    EXPECT_EQ(BuiltData(sources.Out("魚の本")).Store.OriginalNumRecords, 3);
}

TEST_F(DataBuilderTest, AnExistingDataFolderIsLeftAsItIs) {
    sources.Folder.Write("out/Data/Categories.ctg", "the user's");
    EXPECT_NE(Mistake().find("exists already"), std::string::npos);
    EXPECT_EQ(Built("Data/Categories.ctg"), "the user's");
}

TEST_F(DataBuilderTest, AnUnknownCategoryIsAMistakeThatNamesTheRecipe) {
    sources.WriteRecipe("003-baked-cod.txt", "title: Baked Cod\ncategories: Dodo\n\nBake.\n");
    const std::string mistake = Mistake();
    EXPECT_NE(mistake.find("003-baked-cod.txt"), std::string::npos) << mistake;
    EXPECT_NE(mistake.find("Dodo"), std::string::npos) << mistake;
    EXPECT_FALSE(AnythingBuilt());
}

TEST_F(DataBuilderTest, ARecipeWithoutTheWordOfItsCategoryIsAMistakeThatNamesIt) {
    sources.WriteRecipe("003-baked-cod.txt", "title: Baked Cod\ncategories: Salmon\n\nBake.\n");
    const std::string mistake = Mistake();
    EXPECT_NE(mistake.find("003-baked-cod.txt"), std::string::npos) << mistake;
    EXPECT_NE(mistake.find("Salmon"), std::string::npos) << mistake;
    EXPECT_FALSE(AnythingBuilt());
}

TEST_F(DataBuilderTest, SourcesWithoutARecipeAreAMistake) {
    for (const char* name : {"001-cod-cakes", "002-baked-salmon", "003-baked-cod"}) {
        sources.Folder.Delete("source/recipes/" + std::string(name) + ".txt");
    }
    EXPECT_NE(Mistake().find("no recipe"), std::string::npos);
}

TEST_F(DataBuilderTest, SourcesWithoutAPictureAreAMistake) {
    sources.Folder.Delete("source/pictures");
    EXPECT_NE(Mistake().find("no picture"), std::string::npos);
}

TEST_F(DataBuilderTest, APictureOfNoRecipeIsAMistake) {
    sources.WritePicture("4-shark.svg");
    EXPECT_NE(Mistake().find("one of no recipe"), std::string::npos);
}

TEST_F(DataBuilderTest, TwoPicturesOfOneRecipeAreAMistake) {
    sources.WritePicture("2-again.svg");
    EXPECT_NE(Mistake().find("two pictures"), std::string::npos) << Mistake();
}

TEST_F(DataBuilderTest, APictureWithoutANumberIsAMistakeThatNamesIt) {
    sources.WritePicture("shark.svg");
    EXPECT_NE(Mistake().find("shark.svg"), std::string::npos);
}

TEST_F(DataBuilderTest, MissingCategoryNamesAreAMistakeThatNamesTheFile) {
    sources.Folder.Delete("source/Category Names.txt");
    EXPECT_NE(Mistake().find("Category Names.txt"), std::string::npos);
}

TEST_F(DataBuilderTest, WhatWasBegunIsTakenAwayAfterAFailure) {
    sources.Folder.Write("source/pictures/003.svg", "no drawing");
    EXPECT_THROW(Build(), Failure);
    EXPECT_FALSE(AnythingBuilt());
}

}  // namespace
}  // namespace larder
