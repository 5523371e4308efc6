#include "store/RecipeStore.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/Failure.h"
#include "store/FileNumbers.h"
#include "support/DataFolder.h"
#include "support/ScriptedDisc.h"

namespace larder {
namespace {

using test::Database;
using test::DataFolder;
using test::IndexBytes;
using test::ScriptedDisc;

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
const std::string deviceQuestion =
    "Path/File access error\rPlease, make sure the CD is in the drive.";
const std::string titleQuestion = "Can't get recipe.\rPlease, make sure the CD is in the drive.";

// Three stock recipes, and two of the user's own of which the second is deleted.
class RecipeStoreTest : public ::testing::Test {
  protected:
    RecipeStoreTest() {
        stock.AddRecipe("Baked Cod", "{\\rtf1 Baked Cod\\par }");
        stock.AddRecipe("Eel Stew", "{\\rtf1 Eel\r\nStew\\par }");
        stock.AddRecipe("Cr\xE8me of Crab", "{\\rtf1 Crab\\par }");
        own.AddRecipe("Aunt Ada's Sprats", "{\\rtf1 Sprats\\par }");
        own.AddRecipe("", "          ");
        data.WriteStock(stock);
        data.WriteCustom(own);
    }
    void Start() {
        store.OpenYDB_IND_Normal();
        store.RecalculateTotalRecipes();
    }
    int BodyFailure(std::int32_t num) {
        return Ignoring([&] { store.GetRecipeRTF(num); });
    }
    // From now on the storage of a file is out of reach, for as long as `gone` is true.
    void TakeAway(int number) {
        data.Files.Watch([this, number](const NumberedFiles::Access& access) {
            const bool touches = access.Kind == "read" || access.Kind == "open";
            if (gone && touches && access.Number == number) {
                throw Failure(failure::PathAccess, "test");
            }
        });
    }

    Database stock;
    Database own;
    DataFolder data;
    ScriptedDisc disc;
    RecipeStore store{data.Files, data.Paths, disc};
    bool gone = true;
};

// Opening

TEST_F(RecipeStoreTest, OpeningOpensTheFourFilesOfTheRecipes) {
    store.OpenYDB_IND_Normal();
    for (const int number : {1, 2, 21, 22})
        EXPECT_TRUE(data.Files.IsOpen(number)) << number;
    EXPECT_EQ(data.Files.Length(2), 12);
    EXPECT_EQ(data.Files.Length(22), 8);
}

TEST_F(RecipeStoreTest, OpeningClosesTheCustomFilesOnlyAndKeepsTheStockFilesInUse) {
    store.OpenYDB_IND_Normal();
    for (const int number : {1, 21})
        data.Files.ReadLine(number);
    std::vector<int> closed;
    data.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind == "close") closed.push_back(access.Number);
    });
    store.OpenYDB_IND_Normal();
    EXPECT_EQ(closed, (std::vector<int>{21, 22}));
    EXPECT_GT(data.Files.Position(1), 1) << "the same handle as before";
    EXPECT_EQ(data.Files.Position(21), 1);
}

TEST_F(RecipeStoreTest, EveryStepOfOpeningGoesOnWhateverFails) {
    data.Files.Watch([](const NumberedFiles::Access& access) {
        if (access.Number == 1 || access.Number == 21) throw Failure(failure::DeviceError, "test");
    });
    EXPECT_EQ(Ignoring([&] { store.OpenYDB_IND_Normal(); }), 0);
    EXPECT_FALSE(data.Files.IsOpen(1));
    EXPECT_TRUE(data.Files.IsOpen(2));
    EXPECT_FALSE(data.Files.IsOpen(21));
    EXPECT_TRUE(data.Files.IsOpen(22));
}

TEST_F(RecipeStoreTest, AFirstRunCreatesAnEmptyCustomIndexAndNoCustomText) {
    data.Folder.Delete("Data/Custom Recipes.ydb");
    data.Folder.Delete("Data/Custom Recipes Index.ind");
    Start();
    EXPECT_TRUE(data.Folder.Exists("Data/Custom Recipes Index.ind"));
    EXPECT_EQ(data.Folder.Read("Data/Custom Recipes Index.ind"), "");
    EXPECT_FALSE(data.Folder.Exists("Data/Custom Recipes.ydb"));
    EXPECT_FALSE(data.Files.IsOpen(21));
    EXPECT_EQ(store.TotalNumRecords, 3) << "so that no custom number exists";
    EXPECT_EQ(store.TotalRecipes(), 3);
    EXPECT_TRUE(disc.Asked.empty());
}

TEST_F(RecipeStoreTest, AMissingStockIndexIsCreatedEmpty) {
    data.Folder.Delete("Data/Recipes Index.ind");
    Start();
    EXPECT_TRUE(data.Folder.Exists("Data/Recipes Index.ind"));
    EXPECT_EQ(store.OriginalNumRecords, 0);
}

TEST_F(RecipeStoreTest, AMissingStockTextIsNoFailureAtTheStart) {
    data.Folder.Delete("Data/Recipes.ydb");
    Start();
    EXPECT_FALSE(data.Files.IsOpen(1));
    EXPECT_FALSE(data.Folder.Exists("Data/Recipes.ydb"));
    EXPECT_EQ(store.OriginalNumRecords, 3);
    EXPECT_TRUE(disc.Asked.empty());
}

TEST_F(RecipeStoreTest, OpeningTheDescriptionsFailsWithoutTheirTextAndNamesIt) {
    try {
        store.OpenCategoryDescriptions();
        FAIL();
    } catch (const Failure& f) {
        EXPECT_EQ(f.Number, failure::FileNotFound);
        EXPECT_EQ(f.Source, data.Paths.strCatDFile);
    }
}

TEST_F(RecipeStoreTest, AMissingDescriptionIndexIsCreatedEmpty) {
    data.Folder.Write("Data/CategyD.ydb", "");
    store.OpenCategoryDescriptions();
    EXPECT_EQ(data.Files.Length(4), 0);
    EXPECT_TRUE(data.Folder.Exists("Data/CategyD Index.ind"));
}

TEST_F(RecipeStoreTest, TheStockTextAloneIsReadFromTheDisc) {
    data.Folder.Write("disc/Data/Recipes.ydb", stock.Text);
    data.Folder.Delete("Data/Recipes.ydb");
    data.NamePaths.MapDrive('E', data.Folder.Native("disc"));
    data.Paths.Assign(data.Paths.strPath, "E:\\Data\\");
    Start();
    EXPECT_EQ(store.GetRecipeTitle(2), "Eel Stew");
    EXPECT_EQ(store.GetRecipeTitle(4), "Aunt Ada's Sprats");
    EXPECT_FALSE(data.Folder.Exists("disc/Data/Recipes Index.ind"));
}

// Counting

TEST_F(RecipeStoreTest, NumbersAreCountedFromTheLengthsOfTheIndexes) {
    Start();
    EXPECT_EQ(store.OriginalNumRecords, 3);
    EXPECT_EQ(store.TotalNumRecords, 5);
}

TEST_F(RecipeStoreTest, DeletedCustomRecipesLowerTheCountOnScreenAndNotTheNumbers) {
    Start();
    EXPECT_EQ(store.TotalRecipes(), 4);
    EXPECT_EQ(store.TotalNumRecords, 5);
}

TEST_F(RecipeStoreTest, ABlankStockRecordStillCounts) {
    stock.AddRecipe("", "");
    data.WriteStock(stock);
    Start();
    EXPECT_EQ(store.TotalRecipes(), 5);
}

TEST_F(RecipeStoreTest, AnEntryThatIsCutShortIsNoRecord) {
    data.Folder.Write("Data/Recipes Index.ind", stock.Index() + "\x01\x02\x03");
    Start();
    EXPECT_EQ(store.OriginalNumRecords, 3);
}

TEST_F(RecipeStoreTest, TheCountIsToldToWhoShowsIt) {
    std::vector<std::int32_t> shown;
    store.OnTotalRecipes = [&](std::int32_t count) { shown.push_back(count); };
    Start();
    store.SetTotalRecipes(store.TotalRecipes() + 1);
    EXPECT_EQ(shown, (std::vector<std::int32_t>{4, 5}));
    EXPECT_EQ(store.TotalRecipes(), 5);
}

TEST_F(RecipeStoreTest, CountingOpensAnIndexThatIsClosed) {
    store.RecalculateTotalRecipes();
    EXPECT_TRUE(data.Files.IsOpen(filenumber::RecipesIndex));
    EXPECT_TRUE(data.Files.IsOpen(filenumber::CustomRecipesIndex));
    const std::int32_t total = store.TotalNumRecords;
    Start();
    EXPECT_EQ(store.TotalNumRecords, total);
}

TEST_F(RecipeStoreTest, CountingTellsWhyAnIndexCannotBeOpenedAndNamesIt) {
    Start();
    const std::int32_t total = store.TotalNumRecords;
    data.Files.Close(filenumber::CustomRecipesIndex);
    data.Files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "open") throw Failure(failure::PathAccess, std::string(access.Path));
    });
    try {
        store.RecalculateTotalRecipes();
        FAIL() << "no failure";
    } catch (const Failure& f) {
        EXPECT_EQ(f.Number, failure::PathAccess);
        EXPECT_EQ(f.Description, data.Paths.strCustomRecipesIndexFile + "\nPath/File access error");
    }
    EXPECT_EQ(store.TotalNumRecords, total) << "the numbers of own recipes are not given up";
}

TEST_F(RecipeStoreTest, CountingAsksForALostDiscOnceAndCountsWhatItCannotReadAsPresent) {
    data.Folder.Delete("Data/Custom Recipes.ydb");
    Start();
    EXPECT_EQ(disc.Asked.size(), 1u);
    EXPECT_EQ(store.TotalRecipes(), 5);
}

// Titles and bodies

TEST_F(RecipeStoreTest, ATitleIsTheFirstLineOfItsRecord) {
    Start();
    EXPECT_EQ(store.GetRecipeTitle(1), "Baked Cod");
    EXPECT_EQ(store.GetRecipeTitle(3), "Cr\xE8me of Crab");
    EXPECT_EQ(store.GetRecipeTitle(4), "Aunt Ada's Sprats") << "the first of the user's own";
}

TEST_F(RecipeStoreTest, ABodyRunsFromBehindTheTitleToTheLineEndBeforeTheNextRecord) {
    Start();
    EXPECT_EQ(store.GetRecipeRTF(1), "{\\rtf1 Baked Cod\\par }");
    EXPECT_EQ(store.GetRecipeRTF(2), "{\\rtf1 Eel\r\nStew\\par }");
    EXPECT_EQ(store.GetRecipeRTF(4), "{\\rtf1 Sprats\\par }");
}

TEST_F(RecipeStoreTest, TheLastBodyEndsExactlyBeforeTheFinalLineEndOfTheFile) {
    Start();
    EXPECT_EQ(store.GetRecipeRTF(3), "{\\rtf1 Crab\\par }");
}

TEST_F(RecipeStoreTest, PaddingOfARewrittenRecordComesWithTheBody) {
    stock.AddRecipe("Padded", "{\\rtf1 x}      ");
    stock.AddRecipe("Next", "{\\rtf1 y}");
    data.WriteStock(stock);
    Start();
    EXPECT_EQ(store.GetRecipeRTF(4), "{\\rtf1 x}      ");
}

TEST_F(RecipeStoreTest, ADeletedRecipeHasAnEmptyTitleAndTheBlanksThatRemain) {
    Start();
    EXPECT_EQ(store.GetRecipeTitle(5), "");
    EXPECT_EQ(store.GetRecipeRTF(5), "          ");
}

TEST_F(RecipeStoreTest, ANumberOfNoughtOrBelowHasNoTitleAndFailsAsABadRecord) {
    Start();
    for (const std::int32_t num : {0, -1, -largest - 1}) {
        EXPECT_EQ(store.GetRecipeTitle(num), "");
        EXPECT_EQ(BodyFailure(num), failure::BadRecordNumber);
    }
    EXPECT_TRUE(disc.Asked.empty());
}

TEST_F(RecipeStoreTest, ANumberAboveTheLastHasNoTitleAndFailsAsABadRecord) {
    Start();
    for (const std::int32_t num : {6, 7, 1000000, largest}) {
        EXPECT_EQ(store.GetRecipeTitle(num), "");
        EXPECT_EQ(BodyFailure(num), failure::BadRecordNumber);
    }
}

TEST_F(RecipeStoreTest, AReadCostsTwoIndexLookUpsOneLineAndOneBody) {
    Start();
    std::vector<int> reads;
    data.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind == "read") reads.push_back(access.Number);
    });
    store.GetRecipeTitle(2);
    EXPECT_EQ(reads, (std::vector<int>{2, 1}));
    reads.clear();
    store.GetRecipeRTF(2);
    EXPECT_EQ(reads, (std::vector<int>{2, 1, 2, 1}));
    store.GetRecipeRTF(2);
    EXPECT_EQ(reads.size(), 8u) << "nothing is kept from the first time";
}

TEST_F(RecipeStoreTest, GetRecipeTXTMovesTheStockFileAndGivesNothing) {
    Start();
    EXPECT_EQ(store.GetRecipeTXT(2), "");
    EXPECT_EQ(data.Files.Position(1), stock.Positions[1]);
    EXPECT_EQ(Ignoring([&] { store.GetRecipeTXT(4); }), failure::BadRecordNumber)
        << "it has no branch for the user's own";
}

TEST_F(RecipeStoreTest, GetRecipeTXTReopensClosedFilesAndPassesOtherFailuresOn) {
    Start();
    data.Files.CloseAll();
    EXPECT_EQ(store.GetRecipeTXT(2), "");
    TakeAway(2);
    EXPECT_EQ(Ignoring([&] { store.GetRecipeTXT(2); }), failure::PathAccess);
    data.Files.CloseAll();
    EXPECT_EQ(Ignoring([&] { store.GetRecipeTXT(2); }), failure::PathAccess);
    EXPECT_TRUE(disc.Asked.empty());
}

// Failures

TEST_F(RecipeStoreTest, FilesThatAWriterHasClosedAreOpenedAgain) {
    Start();
    for (const int number : {1, 2, 21, 22}) {
        for (const std::int32_t num : {2, 4}) {
            data.Files.Close(number);
            EXPECT_EQ(store.GetRecipeTitle(num), num == 2 ? "Eel Stew" : "Aunt Ada's Sprats");
            data.Files.Close(number);
            EXPECT_NE(store.GetRecipeRTF(num), "");
        }
    }
    data.Files.CloseAll();
    EXPECT_EQ(store.GetRecipeRTF(2), "{\\rtf1 Eel\r\nStew\\par }");
    EXPECT_TRUE(disc.Asked.empty());
}

TEST_F(RecipeStoreTest, ABadPositionIsPassedOnByTheBodyAndEmptyForTheTitle) {
    for (const std::int32_t position : {0, -1, -largest - 1}) {
        data.Folder.Write("Data/Recipes Index.ind", IndexBytes({position, 5, 9}));
        Start();
        EXPECT_EQ(BodyFailure(1), failure::BadRecordNumber);
        EXPECT_EQ(store.GetRecipeTitle(1), "");
        EXPECT_TRUE(disc.Asked.empty());
        data.Files.CloseAll();
    }
}

TEST_F(RecipeStoreTest, ABodyAsksForTheDiscWithTheSystemsDescription) {
    Start();
    TakeAway(1);
    EXPECT_EQ(store.GetRecipeRTF(2), "") << "cancelled";
    EXPECT_EQ(disc.Asked, std::vector<std::string>{deviceQuestion});
}

TEST_F(RecipeStoreTest, ATitleAsksForTheDiscAndBecomesNoDiskErrorWhenCancelled) {
    Start();
    TakeAway(1);
    EXPECT_EQ(store.GetRecipeTitle(2), "No Disk Error");
    EXPECT_EQ(disc.Asked, std::vector<std::string>{titleQuestion});
}

TEST_F(RecipeStoreTest, WithinOneDiscQuestionACancelCountsForTheTitlesThatFollow) {
    Start();
    TakeAway(1);
    {
        const RecipeStore::OneDiscQuestion asksOnce(store);
        for (const std::int32_t number : {1, 2, 3})
            EXPECT_EQ(store.GetRecipeTitle(number), "No Disk Error");
        EXPECT_EQ(disc.Asked.size(), 1u);
        EXPECT_EQ(store.GetRecipeRTF(2), "");
        EXPECT_EQ(disc.Asked.size(), 2u) << "a recipe that is opened is another matter";
        {
            const RecipeStore::OneDiscQuestion inner(store);
            store.GetRecipeTitle(1);
            EXPECT_EQ(disc.Asked.size(), 3u) << "an inner one begins afresh";
        }
        store.GetRecipeTitle(1);
        EXPECT_EQ(disc.Asked.size(), 3u);
        gone = false;
        EXPECT_EQ(store.GetRecipeTitle(2), "Eel Stew") << "what can be read again is read";
        gone = true;
    }
    store.GetRecipeTitle(1);
    store.GetRecipeTitle(2);
    EXPECT_EQ(disc.Asked.size(), 5u);
}

TEST_F(RecipeStoreTest, ACancelCountsForTitlesAndBodiesWhereBothAreRead) {
    Start();
    TakeAway(1);
    using Question = RecipeStore::OneDiscQuestion;
    const Question both(store, Question::Of::TitlesAndBodies);
    EXPECT_TRUE(store.GetRecipeRTF(1).empty() && store.GetRecipeTitle(2) == "No Disk Error");
    EXPECT_EQ(disc.Asked, std::vector<std::string>{deviceQuestion});
}

TEST_F(RecipeStoreTest, OkWithTheDiscBackInTheDriveReadsOn) {
    Start();
    TakeAway(1);
    disc.ThenOk([&] { gone = false; });
    EXPECT_EQ(store.GetRecipeTitle(2), "Eel Stew");
    gone = true;
    disc.ThenOk();
    disc.ThenOk([&] { gone = false; });
    EXPECT_EQ(store.GetRecipeRTF(2), "{\\rtf1 Eel\r\nStew\\par }");
    EXPECT_EQ(disc.Asked.size(), 3u);
}

TEST_F(RecipeStoreTest, OkWithoutADiscBringsTheSameMessageWithoutLimit) {
    Start();
    TakeAway(1);
    for (int i = 0; i < 50; ++i)
        disc.ThenOk();
    disc.ThenCancel();
    EXPECT_EQ(store.GetRecipeTitle(2), "No Disk Error");
    EXPECT_EQ(disc.Asked, std::vector<std::string>(51, titleQuestion));
    disc.Asked.clear();
    for (int i = 0; i < 50; ++i)
        disc.ThenOk();
    EXPECT_EQ(store.GetRecipeRTF(2), "");
    EXPECT_EQ(disc.Asked, std::vector<std::string>(51, deviceQuestion));
}

TEST_F(RecipeStoreTest, AFileThatStaysClosedAfterReopeningAsksForTheDisc) {
    data.Folder.Delete("Data/Recipes.ydb");
    Start();
    EXPECT_EQ(store.GetRecipeTitle(1), "No Disk Error");
    EXPECT_EQ(store.GetRecipeRTF(1), "");
    EXPECT_EQ(disc.Asked, (std::vector<std::string>{titleQuestion, deviceQuestion}));
}

TEST_F(RecipeStoreTest, ADiscThatComesWhileTheQuestionIsShownIsRead) {
    data.Folder.MakeFolder("drive");
    data.Folder.Rename("Data/Recipes.ydb", "Recipes.ydb");
    data.NamePaths.MapDrive('E', data.Folder.Native("drive"));
    data.Paths.Assign(data.Paths.strPath, "E:\\Data\\");
    Start();
    disc.ThenOk();
    disc.ThenOk([&] {
        data.Folder.MakeFolder("drive/DATA");
        data.Folder.Rename("Recipes.ydb", "drive/DATA/RECIPES.YDB");
    });
    EXPECT_EQ(store.GetRecipeTitle(2), "Eel Stew");
    EXPECT_EQ(disc.Asked.size(), 2u);
}

TEST_F(RecipeStoreTest, AnyOtherFailureIsAnEmptyTextWithoutAMessage) {
    Start();
    for (const int number : {failure::DeviceError, failure::InputPastEnd, failure::BadFileMode}) {
        data.Files.Watch([number](const NumberedFiles::Access& access) {
            if (access.Kind == "read") throw Failure(number, "test");
        });
        EXPECT_EQ(store.GetRecipeTitle(2), "");
        EXPECT_EQ(store.GetRecipeRTF(2), "");
    }
    EXPECT_TRUE(disc.Asked.empty());
}

// Descriptions

class DescriptionTest : public RecipeStoreTest {
  protected:
    DescriptionTest() {
        descriptions.AddDescription("  BASS  ", "{\\rtf1 Bass}");
        descriptions.AddDescription("COD", "{\\rtf1 Cod}");
        data.WriteDescriptions(descriptions);
    }
    Database descriptions;
};

TEST_F(DescriptionTest, ATitleComesWithoutBlanksAtItsEnds) {
    store.OpenCategoryDescriptions();
    EXPECT_EQ(store.GetCatTitle(1), "BASS");
    EXPECT_EQ(store.GetCatTitle(2), "COD");
}

TEST_F(DescriptionTest, ABodyCarriesTheLinesThatCloseItsRecord) {
    store.OpenCategoryDescriptions();
    EXPECT_EQ(store.GetCatRTF(1), "{\\rtf1 Bass}\r\n\r\n\\yyk\r\n");
}

TEST_F(DescriptionTest, TheLastBodyLosesItsLastByte) {
    store.OpenCategoryDescriptions();
    EXPECT_EQ(store.GetCatRTF(2), "{\\rtf1 Cod}\r\n\r\n\\yyk\r");
}

TEST_F(DescriptionTest, ATitleIsEmptyWhateverFails) {
    EXPECT_EQ(store.GetCatTitle(1), "") << "closed";
    store.OpenCategoryDescriptions();
    for (const std::int32_t num : {-1, 0, 3, largest})
        EXPECT_EQ(store.GetCatTitle(num), "");
    data.Files.Watch(
        [](const NumberedFiles::Access&) { throw Failure(failure::PathAccess, "test"); });
    EXPECT_EQ(store.GetCatTitle(1), "");
    EXPECT_TRUE(disc.Asked.empty());
}

TEST_F(DescriptionTest, ABodyPassesEveryFailureOn) {
    EXPECT_EQ(Ignoring([&] { store.GetCatRTF(1); }), failure::BadFileNumber);
    store.OpenCategoryDescriptions();
    for (const std::int32_t num : {-1, 0, 3, largest}) {
        EXPECT_EQ(Ignoring([&] { store.GetCatRTF(num); }), failure::BadRecordNumber);
    }
    data.Files.Watch(
        [](const NumberedFiles::Access&) { throw Failure(failure::PathAccess, "test"); });
    EXPECT_EQ(Ignoring([&] { store.GetCatRTF(1); }), failure::PathAccess);
    EXPECT_TRUE(disc.Asked.empty());
}

}  // namespace
}  // namespace larder
