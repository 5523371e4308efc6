#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/Failure.h"
#include "store/FileNumbers.h"
#include "store/RecipeStore.h"
#include "support/DataFolder.h"
#include "support/ScriptedDisc.h"

namespace larder {
namespace {

// The way back after the files of the recipes were closed, or after their storage was gone.
class ReopeningTest : public ::testing::Test {
  protected:
    ReopeningTest() {
        stock.AddRecipe("Baked Cod", "{\\rtf1 Baked Cod}");
        stock.AddRecipe("Eel Stew", "{\\rtf1 Eel Stew}");
        data.WriteStock(stock);
        store.OpenYDB_IND_Normal();
        store.RecalculateTotalRecipes();
    }
    // What is open under the number reads nothing any more, as a file of a disc that has left its
    // drive does; one that is opened anew does.
    void KillHandle(int number) {
        data.Files.Watch([number, dead = true](const NumberedFiles::Access& access) mutable {
            if (access.Number != number) return;
            if (access.Kind == "close") dead = false;
            if (access.Kind == "read" && dead) throw Failure(failure::PathAccess, "test");
        });
    }
    void RefuseToOpen(int number) {
        data.Files.Watch([number](const NumberedFiles::Access& access) {
            if (access.Number == number && access.Kind == "open") {
                throw Failure(failure::PathAccess, "test");
            }
        });
    }

    test::Database stock;
    test::DataFolder data;
    test::ScriptedDisc disc;
    RecipeStore store{data.Files, data.Paths, disc};
};

TEST_F(ReopeningTest, AfterOkTheFilesAreOpenedAnewAlthoughTheyWereOpen) {
    for (const int number : {filenumber::Recipes, filenumber::RecipesIndex}) {
        disc.Asked.clear();
        disc.ThenOk();
        KillHandle(number);
        EXPECT_EQ(store.GetRecipeTitle(2), "Eel Stew") << number;
        EXPECT_EQ(disc.Asked.size(), 1U) << number;
        disc.ThenOk();
        KillHandle(number);
        EXPECT_EQ(store.GetRecipeRTF(2), "{\\rtf1 Eel Stew}") << number;
        EXPECT_EQ(disc.Asked.size(), 2U) << number;
    }
}

TEST_F(ReopeningTest, AnIndexThatStaysClosedAfterReopeningAsksForTheDisc) {
    data.Files.Close(filenumber::RecipesIndex);
    RefuseToOpen(filenumber::RecipesIndex);
    EXPECT_EQ(store.GetRecipeTitle(1), "No Disk Error");
    EXPECT_EQ(store.GetRecipeRTF(1), "");
    EXPECT_EQ(disc.Asked.size(), 2U);
    data.Files.Watch(nullptr);
    EXPECT_EQ(store.GetRecipeTitle(1), "Baked Cod");
}

TEST_F(ReopeningTest, AnIndexOfMoreRecordsThanThereAreNumbersIsRefusedAndNamed) {
    data.Files.CloseAll();
    const std::string index = data.Folder.Native("Data/Recipes Index.ind");
    // Takes up no room on the disk.
    std::filesystem::resize_file(index, (std::uintmax_t{1} << 31) * 4);
    try {
        store.RecalculateTotalRecipes();
        FAIL() << "no failure";
    } catch (const Failure& f) {
        EXPECT_EQ(f.Number, failure::Overflow);
        EXPECT_NE(f.Description.find("Recipes Index.ind"), std::string::npos) << f.Description;
    }
    EXPECT_EQ(store.OriginalNumRecords, 2) << "as they were";
}

}  // namespace
}  // namespace larder
