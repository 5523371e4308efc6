#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/DataFolder.h"
#include "support/StoreSession.h"
#include "support/StoredRecipes.h"
#include "support/TempFolder.h"

namespace larder::test {
namespace {

// The user's recipes 2 to 4 in a text and an index of which one is not what it was: away for a
// while, or cut short.
class MismatchedFiles : public testing::Test {
  protected:
    MismatchedFiles() {
        stock_.AddRecipe("Stock", "{\\rtf1 Stock}");
        own_.AddRecipe("Eel", "{\\rtf1 Eel}");
        own_.AddRecipe("Cod", "{\\rtf1 Cod}");
        own_.AddRecipe("Ray", "{\\rtf1 Ray}");
        PutBack();
    }
    // On whole files, none of which it has open then.
    void BeginRun() {
        session.Start();
        session.Files.CloseAll();
    }
    void PutBack() const {
        folder_.Write("Data/Recipes.ydb", stock_.Text);
        folder_.Write("Data/Recipes Index.ind", stock_.Index());
        folder_.Write(text, own_.Text);
        folder_.Write(index, own_.Index());
    }
    // Adding is refused by a run that began before, for a reason that ends with `told`, and by one
    // that begins now, with `toldNext`.
    void ExpectNothingAdded(const std::string& told, const std::string& toldNext) {
        ExpectRefused(session, told);
        StoreSession after(folder_.Native("Data"));
        after.Start();
        ExpectRefused(after, toldNext);
        PutBack();
        StoreSession next(folder_.Native("Data"));
        next.Start();
        EXPECT_TRUE(next.Add("New", "{}"));
        EXPECT_EQ(OwnIn(BytesOf(folder_.Native("Data"))),
                  (std::vector<StoredRecipe>{{"Eel", "{\\rtf1 Eel}"},
                                             {"Cod", "{\\rtf1 Cod}"},
                                             {"Ray", "{\\rtf1 Ray}"},
                                             {"New", "{}"}}));
    }

    void ExpectRefused(StoreSession& run, const std::string& told) {
        const FolderBytes left = BytesOf(folder_.Native("Data"));
        const std::int32_t records = run.Store.TotalNumRecords;
        EXPECT_FALSE(run.Add("New", "{}"));
        ASSERT_EQ(run.Messages.size(), 1U);
        EXPECT_TRUE(run.Messages[0].starts_with("Error adding recipe.\n"));
        EXPECT_TRUE(run.Messages[0].ends_with(told)) << run.Messages[0];
        EXPECT_EQ(run.Store.TotalNumRecords, records);
        EXPECT_EQ(BytesOf(folder_.Native("Data")), left);
    }

    static constexpr const char* text = "Data/Custom Recipes.ydb";
    static constexpr const char* index = "Data/Custom Recipes Index.ind";
    Database stock_;
    Database own_;
    TempFolder folder_{TempFolder::InMemory()};
    StoreSession session{folder_.Native("Data")};
};

TEST_F(MismatchedFiles, NoRecipeIsAddedWhileTheTextOfTheOthersIsMissing) {
    BeginRun();
    folder_.Delete(text);
    ExpectNothingAdded("\\Custom Recipes.ydb\nFile not found",
                       "\\Custom Recipes.ydb\nFile not found");
}

TEST_F(MismatchedFiles, NoRecipeIsAddedBehindATextThatLacksARecordOfItsIndex) {
    BeginRun();
    folder_.Write(text, own_.Text.substr(0, static_cast<std::size_t>(own_.Positions[2]) - 1));
    ExpectNothingAdded("\\Custom Recipes.ydb\nBad record number",
                       "\\Custom Recipes.ydb\nBad record number");
}

TEST_F(MismatchedFiles, NoRecipeTakesTheNumbersOfATextWhoseIndexIsMissing) {
    BeginRun();
    folder_.Delete(index);
    ExpectNothingAdded("\\Custom Recipes Index.ind\nFile not found",
                       "\\Custom Recipes.ydb\nBad record number");
}

// Without the stock's count the user's numbers begin at 1.
TEST_F(MismatchedFiles, NoRecipeTakesTheNumbersOfAStockWhoseIndexIsMissing) {
    BeginRun();
    folder_.Delete("Data/Recipes Index.ind");
    ExpectNothingAdded("\\Recipes Index.ind\nFile not found", "\\Recipes.ydb\nBad record number");
}

TEST_F(MismatchedFiles, NoRecipeIsChangedOrDeletedByTheNumberOfAnother) {
    folder_.Delete("Data/Recipes Index.ind");
    session.Start();
    ASSERT_EQ(session.Store.GetRecipeTitle(1), "Eel");
    const FolderBytes left = BytesOf(folder_.Native("Data"));
    EXPECT_FALSE(session.Update(1, "", ""));
    EXPECT_FALSE(session.Update(1, "Conger", "{\\rtf1 A longer conger}"));
    ASSERT_EQ(session.Messages.size(), 2U);
    for (const std::string& message : session.Messages) {
        EXPECT_TRUE(message.starts_with("Error updating recipe\n"));
        EXPECT_TRUE(message.ends_with("\\Recipes.ydb\nBad record number"));
    }
    EXPECT_EQ(BytesOf(folder_.Native("Data")), left);
}

TEST_F(MismatchedFiles, ARecipeIsAddedWithoutTheDiscOfTheStock) {
    folder_.Delete("Data/Recipes.ydb");
    session.Start();
    EXPECT_TRUE(session.Add("New", "{}"));
    EXPECT_EQ(session.Store.TotalNumRecords, 5);
}

TEST_F(MismatchedFiles, ARecipeIsAddedBesideAStockThatCannotBeRead) {
    BeginRun();
    session.Files.Watch([](const NumberedFiles::Access& access) {
        const bool stock = access.Path.ends_with("\\Recipes.ydb");
        if (stock && access.Kind != "close") throw Failure(failure::PathAccess, "disc");
    });
    EXPECT_TRUE(session.Add("New", "{}"));
    EXPECT_TRUE(session.Disc.Asked.empty());
}

TEST_F(MismatchedFiles, AnEmptyTextWithAnEmptyIndexTakesTheFirstRecipe) {
    folder_.Write(text, "");
    folder_.Write(index, "");
    session.Start();
    EXPECT_TRUE(session.Add("New", "{}"));
    EXPECT_EQ(folder_.Read(text), "New\r\n{}\r\n");
    EXPECT_EQ(folder_.Read(index), IndexBytes({1}));
}

}  // namespace
}  // namespace larder::test
