#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "platform/Failure.h"
#include "store/FileNumbers.h"
#include "support/SearchScene.h"

namespace larder::test {
namespace {

// A title that could not be read, beside that of a deleted recipe. Three stock recipes and the
// user's 4 and 5, of which 5 is deleted.
class UnreadableTitles : public testing::Test {
  protected:
    void SetUp() override {
        scene.Write({"Baked Cod", "Eel Stew", "Crab"}, {"Sprats and cod", ""});
        scene.WriteIndex({{"cod", "1 3"}});
    }
    // From now on a text cannot be read.
    void Fail(int file, int failureNumber) {
        scene.Data.Files.Watch([=](const NumberedFiles::Access& access) {
            if (access.Kind == "read" && access.Number == file) {
                throw Failure(failureNumber, "test");
            }
        });
    }
    FoundTitle Title(std::int32_t number) { return scene.Store.LookUpTitle(number); }

    SearchScene scene;
};

TEST_F(UnreadableTitles, AnEmptyLineThatWasReadIsADeletedRecipe) {
    EXPECT_EQ(Title(4).Is, TitleIs::There);
    EXPECT_EQ(Title(4).Text, "Sprats and cod");
    EXPECT_EQ(Title(5).Is, TitleIs::Gone);
}

TEST_F(UnreadableTitles, ANumberWithoutARecordIsGone) {
    for (const std::int32_t number : {6, 0, -1, std::numeric_limits<std::int32_t>::max()})
        EXPECT_EQ(Title(number).Is, TitleIs::Gone) << number;
    scene.Data.Folder.Write("Data/Custom Recipes.ydb", "");
    EXPECT_EQ(Title(4).Is, TitleIs::Gone) << "the text was cut short";
}

TEST_F(UnreadableTitles, OnlyARecordThatIsThereAndHoldsBlanksIsBlank) {
    const std::string blanks(20, ' ');
    Database own;
    own.AddRecipe("Sprats and cod", "{}");
    own.AddRecipe("", blanks);
    own.AddRecipe("", "{\\rtf1 Its title is empty}");
    own.AddRecipe("", "");
    own.AddRecipe("A title alone", blanks);
    scene.Data.WriteCustom(own);
    scene.Data.Files.CloseAll();
    scene.Store.RecalculateTotalRecipes();
    for (const std::int32_t number : {4, 5, 6, 7, 8, 9, 0, -1})
        EXPECT_EQ(scene.Store.IsBlank(number), number == 5) << number;
    scene.Data.Folder.Write("Data/Custom Recipes.ydb", own.Text.substr(0, 20));
    EXPECT_FALSE(scene.Store.IsBlank(5)) << "the text was cut short";
    scene.Data.WriteCustom(own);
    Fail(filenumber::CustomRecipes, failure::DeviceError);
    EXPECT_FALSE(scene.Store.IsBlank(5));
}

TEST_F(UnreadableTitles, AFailureSaysNothingAboutARecipe) {
    Fail(filenumber::CustomRecipes, failure::DeviceError);
    for (const std::int32_t number : {4, 5}) {
        EXPECT_EQ(Title(number).Is, TitleIs::Unreadable);
        EXPECT_EQ(Title(number).Text, "");
    }
    EXPECT_TRUE(scene.Disc.Asked.empty());
}

TEST_F(UnreadableTitles, ADiscThatIsGivenUpSaysNothingAboutARecipe) {
    Fail(filenumber::Recipes, failure::PathAccess);
    EXPECT_EQ(Title(1).Is, TitleIs::Unreadable);
    EXPECT_EQ(Title(1).Text, "No Disk Error");
    EXPECT_EQ(scene.Disc.Asked.size(), 2U);
}

TEST_F(UnreadableTitles, TheyCountAsPresent) {
    ASSERT_EQ(scene.Store.TotalRecipes(), 4);
    Fail(filenumber::CustomRecipes, failure::DeviceError);
    scene.Store.RecalculateTotalRecipes();
    EXPECT_EQ(scene.Store.TotalRecipes(), 5);
    EXPECT_EQ(scene.Store.TotalNumRecords, 5);
}

TEST_F(UnreadableTitles, TheyStayAmongTheRecipesThatAreFound) {
    ASSERT_EQ(scene.Find("cod"), " 1 3 4 ");
    Fail(filenumber::Recipes, failure::DeviceError);
    EXPECT_EQ(scene.Find("cod"), " 1 3 4 ");
}

}  // namespace
}  // namespace larder::test
