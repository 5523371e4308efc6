#include "store/RecipeUpdater.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/Failure.h"
#include "support/DataFolder.h"
#include "support/DiskLimit.h"
#include "support/StoreSession.h"
#include "support/StoredRecipes.h"
#include "support/TempFolder.h"
#include "support/Unprivileged.h"

namespace larder::test {
namespace {

constexpr const char* ownText =
    "Eel\r\n{\\rtf1 Eel}\r\n"
    "Cod\r\n{\\rtf1 Cod}\r\n"
    "Ray\r\n{\\rtf1 Ray}\r\n";
const std::vector<std::int32_t> ownPositions = {1, 19, 37};

// Two stock recipes, and three of the user's of 18 bytes each: numbers 3, 4 and 5.
class RecipeUpdaterTest : public testing::Test {
  protected:
    RecipeUpdaterTest() {
        WriteFiles();
        session.Start();
    }
    void WriteFiles(const std::string& own = ownText) const {
        Database stock;
        stock.AddRecipe("Stock A", "{\\rtf1 A}");
        stock.AddRecipe("Stock B", "{\\rtf1 B}");
        folder.Write("Data/Recipes.ydb", stock.Text);
        folder.Write("Data/Recipes Index.ind", stock.Index());
        folder.Write("Data/Custom Recipes.ydb", own);
        folder.Write("Data/Custom Recipes Index.ind", IndexBytes(ownPositions));
    }
    std::string Own() const { return folder.Read("Data/Custom Recipes.ydb"); }
    std::string OwnIndex() const { return folder.Read("Data/Custom Recipes Index.ind"); }
    std::string Stock() const { return folder.Read("Data/Recipes.ydb"); }

    // How many files are renamed by what `act` does: two for the long way, none for the short.
    template <typename Act>
    int Renames(Act&& act) {
        int renames = 0;
        session.Files.Watch([&](const NumberedFiles::Access& access) {
            if (access.Kind == "rename") ++renames;
        });
        act();
        session.Files.Watch(nullptr);
        return renames;
    }
    void FailAt(const std::string& kind, int number, int failureNumber) {
        session.Files.Watch([=](const NumberedFiles::Access& access) {
            if (access.Kind == kind && access.Number == number) {
                throw Failure(failureNumber, "test");
            }
        });
    }

    TempFolder folder{TempFolder::InMemory()};
    StoreSession session{folder.Native("Data")};
};

// The short way

TEST_F(RecipeUpdaterTest, AChangeOfExactlyTheOldSizeTakesTheOldPlaceWithNoPadding) {
    EXPECT_EQ(Renames([&] { EXPECT_TRUE(session.Update(4, "Dab!", "{\\rtf1 Da}")); }), 0);
    EXPECT_EQ(Own(), "Eel\r\n{\\rtf1 Eel}\r\nDab!\r\n{\\rtf1 Da}\r\nRay\r\n{\\rtf1 Ray}\r\n");
    EXPECT_EQ(OwnIndex(), IndexBytes(ownPositions));
    EXPECT_TRUE(session.Messages.empty());
}

TEST_F(RecipeUpdaterTest, AShorterTextIsFilledUpWithBlanks) {
    EXPECT_TRUE(session.Update(4, "Ox", "{\\rtf1}"));
    EXPECT_EQ(Own(), "Eel\r\n{\\rtf1 Eel}\r\nOx\r\n{\\rtf1}     \r\nRay\r\n{\\rtf1 Ray}\r\n");
    EXPECT_EQ(OwnIndex(), IndexBytes(ownPositions));
    EXPECT_EQ(session.Store.GetRecipeRTF(4), "{\\rtf1}     ");
    EXPECT_EQ(session.Store.GetRecipeTitle(4), "Ox");
}

TEST_F(RecipeUpdaterTest, ADeletedRecordIsAnEmptyTitleLineAndBlanks) {
    EXPECT_TRUE(session.Update(3, "", ""));
    EXPECT_EQ(Own(), "\r\n              \r\nCod\r\n{\\rtf1 Cod}\r\nRay\r\n{\\rtf1 Ray}\r\n");
    EXPECT_EQ(OwnIndex(), IndexBytes(ownPositions));
}

TEST_F(RecipeUpdaterTest, TheLastRecordHasOneByteLessAndKeepsItsOldLastByte) {
    EXPECT_EQ(Renames([&] { EXPECT_TRUE(session.Update(5, "Ra", "{\\rtf1 Ray}")); }), 0);
    EXPECT_EQ(Own(), "Eel\r\n{\\rtf1 Eel}\r\nCod\r\n{\\rtf1 Cod}\r\nRa\r\n{\\rtf1 Ray}\r\n\n");
    EXPECT_EQ(session.Store.GetRecipeTitle(5), "Ra");
}

TEST_F(RecipeUpdaterTest, AnUnchangedLastRecordGoesTheLongWayAndComesOutTheSame) {
    EXPECT_EQ(Renames([&] { EXPECT_TRUE(session.Update(5, "Ray", "{\\rtf1 Ray}")); }), 2);
    EXPECT_EQ(Own(), ownText);
    EXPECT_EQ(OwnIndex(), IndexBytes(ownPositions));
}

TEST_F(RecipeUpdaterTest, AStockRecordIsWrittenOverInTheStockFiles) {
    EXPECT_TRUE(session.Update(1, "Stock", "{\\rtf1}"));
    EXPECT_EQ(Stock(), "Stock\r\n{\\rtf1}    \r\nStock B\r\n{\\rtf1 B}\r\n");
    EXPECT_EQ(Own(), ownText);
}

TEST_F(RecipeUpdaterTest, ANumberOutsideTheRecipesDoesNothing) {
    for (const std::int32_t number : {-1, 0, 6}) {
        EXPECT_FALSE(session.Update(number, "x", "y"));
        EXPECT_FALSE(session.Updater.UpdateRecipe_TheLongWay(number, "y", "x"));
        EXPECT_FALSE(session.Updater.UpdateRecipe_customOnly(number, "y", "x"));
    }
    EXPECT_EQ(Own(), ownText);
    EXPECT_TRUE(session.Messages.empty());
    EXPECT_EQ(session.HourglassesShown, 0);
}

TEST_F(RecipeUpdaterTest, FilesAreClosedAfterwardsAndNoTemporaryOneIsLeft) {
    session.Update(4, "Ox", "{\\rtf1}");
    EXPECT_FALSE(session.Files.IsOpen(21));
    EXPECT_FALSE(session.Files.IsOpen(22));
    session.Update(4, "Oxtail", "{\\rtf1 Soup}");
    EXPECT_FALSE(session.Files.IsOpen(21));
    EXPECT_FALSE(session.Files.IsOpen(22));
    EXPECT_FALSE(HasTemporaries(BytesOf(folder.Native("Data"))));
}

TEST_F(RecipeUpdaterTest, ATextInPlaceIsWrittenOverOnlyWhenItsOldBytesAreOnTheDisk) {
    std::vector<std::string> log;
    session.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind == "read" || access.Kind == "close" || access.Kind == "open") return;
        log.push_back(std::string(access.Kind) + " " + std::to_string(access.Number));
    });
    session.Update(4, "Ox", "{\\rtf1}");
    EXPECT_EQ(log, (std::vector<std::string>{"write 11", "flush 11", "flush 0", "write 21",
                                             "flush 21", "delete 0"}));
}

// The long way

TEST_F(RecipeUpdaterTest, OneByteMoreThanTheRoomMovesAllThatStandsBehind) {
    EXPECT_EQ(Renames([&] { EXPECT_TRUE(session.Update(4, "Dabs", "{\\rtf1 Dab}")); }), 2);
    EXPECT_EQ(Own(), "Eel\r\n{\\rtf1 Eel}\r\nDabs\r\n{\\rtf1 Dab}\r\nRay\r\n{\\rtf1 Ray}\r\n");
    EXPECT_EQ(OwnIndex(), IndexBytes({1, 19, 38}));
}

TEST_F(RecipeUpdaterTest, TheFirstRecordHasNothingInFrontOfIt) {
    EXPECT_TRUE(session.Updater.UpdateRecipe_TheLongWay(3, "{\\rtf1 Conger}", "Conger"));
    EXPECT_EQ(Own(), "Conger\r\n{\\rtf1 Conger}\r\nCod\r\n{\\rtf1 Cod}\r\nRay\r\n{\\rtf1 Ray}\r\n");
    EXPECT_EQ(OwnIndex(), IndexBytes({1, 25, 43}));
}

TEST_F(RecipeUpdaterTest, TheLastRecordHasNothingBehindIt) {
    EXPECT_TRUE(session.Update(5, "Skate", "{\\rtf1 Skate}"));
    EXPECT_EQ(Own(), "Eel\r\n{\\rtf1 Eel}\r\nCod\r\n{\\rtf1 Cod}\r\nSkate\r\n{\\rtf1 Skate}\r\n");
    EXPECT_EQ(OwnIndex(), IndexBytes(ownPositions));
}

TEST_F(RecipeUpdaterTest, AShorterTextOnTheLongWayMovesTheOthersForward) {
    EXPECT_TRUE(session.Updater.UpdateRecipe_TheLongWay(4, "{}", "D"));
    EXPECT_EQ(Own(), "Eel\r\n{\\rtf1 Eel}\r\nD\r\n{}\r\nRay\r\n{\\rtf1 Ray}\r\n");
    EXPECT_EQ(OwnIndex(), IndexBytes({1, 19, 26}));
}

TEST_F(RecipeUpdaterTest, TheLongWayOpensFilesThatAreClosed) {
    session.Files.CloseAll();
    EXPECT_TRUE(session.Updater.UpdateRecipe_TheLongWay(4, "{\\rtf1 Dab}", "Dabs"));
    EXPECT_EQ(OwnIndex(), IndexBytes({1, 19, 38}));
}

TEST_F(RecipeUpdaterTest, TheBytesBehindARecordThatWasWrittenOverComeAlongOnTheLongWay) {
    session.Update(5, "R", "{}");  // leaves an old byte at the end of the file
    session.Update(4, "C", "{}");
    const std::string before = session.Store.GetRecipeRTF(5);
    EXPECT_TRUE(session.Update(3, "Conger", "{\\rtf1 Conger}"));
    EXPECT_EQ(Own(), "Conger\r\n{\\rtf1 Conger}\r\nC\r\n{}           \r\nR\r\n{}          \r\r\n");
    EXPECT_EQ(session.Store.GetRecipeRTF(5), before);
}

TEST_F(RecipeUpdaterTest, TheMaintainerIsToldOfALongUpdateInEditModeOnly) {
    session.Update(4, "Dabs", "{\\rtf1 Dab}");
    EXPECT_TRUE(session.Told.empty());
    session.Edit = true;
    session.Update(4, "Da", "{\\rtf1 Dab}");
    EXPECT_TRUE(session.Told.empty());
    session.Update(4, "Dabsy", "{\\rtf1 Dab}");
    EXPECT_EQ(session.Told, std::vector<std::string>{"Doing a long update.\rPlease wait..."});
}

TEST_F(RecipeUpdaterTest, AnIndexWithoutOrderIsNotRewritten) {
    folder.Write("Data/Custom Recipes Index.ind", IndexBytes({1, 37, 19}));
    EXPECT_FALSE(session.Updater.UpdateRecipe_TheLongWay(4, "{\\rtf1 Long}", "Long"));
    EXPECT_EQ(session.Messages,
              std::vector<std::string>{"Error updating recipe\nBad record number"});
    EXPECT_EQ(Own(), ownText);
}

TEST_F(RecipeUpdaterTest, ARecordInWhichAnotherBeginsIsNotWrittenOver) {
    for (const auto& [number, entries] :
         std::vector<std::pair<int, std::vector<std::int32_t>>>{{3, {1, 0, 37}},
                                                                {3, {1, 37, 19}},
                                                                {4, {1, 37, 19}},
                                                                {5, {1, 37, 19}},
                                                                {4, {1, 1, 37}}}) {
        folder.Write("Data/Custom Recipes Index.ind", IndexBytes(entries));
        session.Messages.clear();
        EXPECT_FALSE(session.Update(number, "", ""));
        EXPECT_EQ(session.Messages,
                  std::vector<std::string>{"Error updating recipe\nBad record number"});
        EXPECT_EQ(Own(), ownText);
    }
}

TEST_F(RecipeUpdaterTest, AnIndexThatHasNotAnEntryForEachRecordWithinTheTextIsNotRewritten) {
    for (const std::vector<std::int32_t>& entries : std::vector<std::vector<std::int32_t>>{
             {1, 19}, {1, 19, 37, 40}, {1, 19, 370}, {0, 19, 37}, {1, 19, 19}}) {
        folder.Write("Data/Custom Recipes Index.ind", IndexBytes(entries));
        EXPECT_FALSE(session.Updater.UpdateRecipe_TheLongWay(4, "{\\rtf1 Long}", "Long"));
        EXPECT_EQ(OwnIndex(), IndexBytes(entries));
        EXPECT_EQ(Own(), ownText);
    }
}

// The earlier form

TEST_F(RecipeUpdaterTest, TheReferenceRoutineRewritesTheRecordsBehindOneByOne) {
    EXPECT_TRUE(session.Updater.UpdateRecipe_customOnly(4, "{\\rtf1 Dab}", "Dabs"));
    EXPECT_EQ(Own(), "Eel\r\n{\\rtf1 Eel}\r\n\r\nDabs\r\n{\\rtf1 Dab}\r\nRay\r\n{\\rtf1 Ray}\r\n");
    EXPECT_EQ(OwnIndex(), IndexBytes({1, 21, 40}));
}

TEST_F(RecipeUpdaterTest, TheReferenceRoutineStoresNothingForARecordThatItCannotRead) {
    FailAt("read", 21, failure::DeviceError);
    EXPECT_FALSE(session.Updater.UpdateRecipe_customOnly(3, "{\\rtf1 Dab}", "Dabs"));
    EXPECT_EQ(session.Messages,
              std::vector<std::string>{"Error updating recipe\nDevice I/O error"});
    EXPECT_EQ(Own(), ownText);
    EXPECT_EQ(OwnIndex(), IndexBytes(ownPositions));
}

TEST_F(RecipeUpdaterTest, TheReferenceRoutineKnowsCustomRecipesAlone) {
    const std::string stock = Stock();
    EXPECT_FALSE(session.Updater.UpdateRecipe_customOnly(1, "{\\rtf1 Dab}", "Dabs"));
    EXPECT_EQ(Stock(), stock);
}

// What the user sees

TEST_F(RecipeUpdaterTest, TheHourglassGoesAndTheNewTitleIsShown) {
    session.Update(4, "Ox", "{\\rtf1}");
    EXPECT_EQ(session.HourglassesShown, 1);
    EXPECT_FALSE(session.HourglassNow);
    session.Update(4, "Oxtail", "{\\rtf1 Soup}");
    EXPECT_FALSE(session.HourglassNow);
    EXPECT_EQ(session.Titles, (std::vector<std::string>{"4 Ox", "4 Oxtail"}));
}

TEST_F(RecipeUpdaterTest, AFailureShowsTheSystemsDescriptionAndKeepsTheRecord) {
    FailAt("write", 21, failure::DeviceError);
    EXPECT_FALSE(session.Update(4, "Ox", "{\\rtf1}"));
    EXPECT_EQ(session.Messages,
              std::vector<std::string>{"Error updating recipe\nDevice I/O error"});
    EXPECT_TRUE(session.Titles.empty());
    EXPECT_FALSE(session.HourglassNow);
    EXPECT_EQ(Own(), ownText);
}

TEST_F(RecipeUpdaterTest, AMessageIsShownWithoutTheHourglass) {
    FailAt("open", 11, failure::DiskFull);  // the journal, and the text of the long way
    EXPECT_FALSE(session.Update(4, "Ox", "{\\rtf1}"));
    EXPECT_FALSE(session.Update(4, "Oxtail", "{\\rtf1 Soup}"));
    EXPECT_EQ(session.Messages.size(), 2U);
    EXPECT_EQ(session.MessagesUnderHourglass, 0);
}

TEST_F(RecipeUpdaterTest, ARecordThatCannotBeReachedIsToldByItsNumber) {
    folder.Write("Data/Custom Recipes Index.ind", IndexBytes({1, 0, 37}));
    EXPECT_FALSE(session.Update(4, "Ox", "{\\rtf1}"));
    EXPECT_EQ(session.Messages, std::vector<std::string>{"Couldn't update recipe #4"});
    EXPECT_EQ(Own(), ownText);
}

TEST_F(RecipeUpdaterTest, ATextThatHasVanishedIsNotMadeAnew) {
    session.Files.CloseAll();
    folder.Delete("Data/Custom Recipes.ydb");
    EXPECT_FALSE(session.Update(4, "Ox", "{\\rtf1}"));
    EXPECT_FALSE(session.Update(4, "Oxtail", "{\\rtf1 Soup}"));
    EXPECT_FALSE(session.Updater.UpdateRecipe_TheLongWay(4, "{\\rtf1 Soup}", "Oxtail"));
    EXPECT_EQ(session.Messages,
              std::vector<std::string>(3, "Error updating recipe\nFile not found"));
    EXPECT_FALSE(folder.Exists("Data/Custom Recipes.ydb"));
    WriteFiles();
    EXPECT_TRUE(session.Update(4, "Ox", "{\\rtf1}"));
}

TEST_F(RecipeUpdaterTest, TheTemporaryFilesOfAFailedLongUpdateStayAndTheNextOneRemovesThem) {
    FailAt("rename", 0, failure::DiskFull);
    EXPECT_FALSE(session.Update(4, "Oxtail", "{\\rtf1 Soup}"));
    EXPECT_EQ(session.Messages, std::vector<std::string>{"Error updating recipe\nDisk full"});
    EXPECT_TRUE(folder.Exists("Data/Recipes Temp.ydb"));
    EXPECT_TRUE(folder.Exists("Data/Recipes Index Temp.ind"));
    EXPECT_EQ(Own(), ownText);
    session.Files.Watch(nullptr);
    EXPECT_TRUE(session.Update(4, "Dabs", "{\\rtf1 Dab}"));
    EXPECT_EQ(OwnIndex(), IndexBytes({1, 19, 38}));
    EXPECT_FALSE(HasTemporaries(BytesOf(folder.Native("Data"))));
}

TEST_F(RecipeUpdaterTest, AListThatCannotShowTheNewTitleSpoilsNoUpdate) {
    session.TitlesFail = true;
    EXPECT_TRUE(session.Update(4, "Dab", "{}"));
    EXPECT_TRUE(session.Update(4, "Oxtail", "{\\rtf1 Much longer than before}"));
    EXPECT_EQ(session.Titles, (std::vector<std::string>{"4 Dab", "4 Oxtail"}));
    EXPECT_TRUE(session.Messages.empty());
    EXPECT_EQ(session.Store.GetRecipeTitle(4), "Oxtail");
}

// The disk is full from a place within the record on.
TEST_F(RecipeUpdaterTest, AFullDiskIsToldByEitherWayAndCostsNothing) {
    const std::string old = "{\\rtf1 " + std::string(1000, 'o') + "}";
    ASSERT_TRUE(session.Add("Long", std::string(3000, 'l')));  // so that the journal has room
    ASSERT_TRUE(session.Add("Big", old));
    const std::int32_t number = session.Store.TotalNumRecords;
    const std::string text = Own();
    const std::string index = OwnIndex();
    for (const std::size_t size : {900U, 1100U}) {
        SCOPED_TRACE(size);
        session.Messages.clear();
        {
            const DiskLimit limit(text.size() - 200);
            EXPECT_FALSE(session.Update(number, "New", std::string(size, 'n')));
            EXPECT_EQ(session.Messages,
                      std::vector<std::string>{"Error updating recipe\nDisk full"});
            EXPECT_EQ(session.Store.GetRecipeTitle(number), "Big");
            EXPECT_EQ(session.Store.GetRecipeRTF(number), old);
        }
        session.Files.CloseAll();
        StoreSession(folder.Native("Data")).Start();
        EXPECT_EQ(Own(), text);
        EXPECT_EQ(OwnIndex(), index);
    }
    EXPECT_TRUE(session.Update(number, "New", std::string(1100, 'n')));
}

// Files that must not be written

class ProtectedFilesTest : public RecipeUpdaterTest {
  protected:
    void Protect(const std::string& name, mode_t mode) const {
        ASSERT_EQ(chmod(folder.Native("Data/" + name).c_str(), mode), 0);
    }
};

TEST_F(ProtectedFilesTest, AFileThatIsMarkedReadOnlyLosesItsMarkAndIsWritten) {
    const Unprivileged user;
    const TempFolder mine;
    mine.Write("Data/Recipes.ydb", Stock());
    mine.Write("Data/Recipes Index.ind", IndexBytes({1, 21}));
    ASSERT_EQ(chmod(mine.Native("Data/Recipes.ydb").c_str(), 0444), 0);
    ASSERT_EQ(chmod(mine.Native("Data/Recipes Index.ind").c_str(), 0444), 0);
    StoreSession run(mine.Native("Data"));
    run.Start();
    EXPECT_TRUE(run.Update(1, "New", "{}"));
    EXPECT_TRUE(run.Messages.empty());
    EXPECT_TRUE(mine.Read("Data/Recipes.ydb").starts_with("New\r\n{}"));
    EXPECT_FALSE(HasTemporaries(BytesOf(mine.Native("Data"))));
}

// StubbornMark has marks that stay whoever runs the tests.
TEST_F(ProtectedFilesTest, AFileThatStaysUnwritableIsTold) {
    if (!CanHaveFilesOfOthers()) return;
    Protect("", 0777);
    Protect("Custom Recipes.ydb", 0444);
    const Unprivileged somebodyElse;
    const FolderBytes before = BytesOf(folder.Native("Data"));
    EXPECT_FALSE(session.Update(4, "Ox", "{\\rtf1}"));
    EXPECT_FALSE(session.Update(4, "Oxtail", "{\\rtf1 Much longer than before}"));
    EXPECT_FALSE(session.Updater.UpdateRecipe_TheLongWay(4, "{\\rtf1}", "Ox"));
    EXPECT_EQ(session.Messages,
              std::vector<std::string>(3, "Error updating recipe\nPath/File access error"));
    EXPECT_EQ(BytesOf(folder.Native("Data")), before);
}

TEST_F(ProtectedFilesTest, AnIndexThatStaysUnwritableHindersTheLongWayAlone) {
    if (!CanHaveFilesOfOthers()) return;
    Protect("", 0777);
    Protect("Custom Recipes.ydb", 0666);
    Protect("Custom Recipes Index.ind", 0444);
    const Unprivileged somebodyElse;
    const FolderBytes before = BytesOf(folder.Native("Data"));
    EXPECT_FALSE(session.Update(4, "Oxtail", "{\\rtf1 Much longer than before}"));
    EXPECT_EQ(session.Messages,
              std::vector<std::string>{"Error updating recipe\nPath/File access error"});
    EXPECT_EQ(BytesOf(folder.Native("Data")), before);
    EXPECT_TRUE(session.Update(4, "Ox", "{\\rtf1}"));
}

TEST_F(ProtectedFilesTest, AFileThatItsOwnerMustNotWriteIsWrittenByWhoMay) {
    if (!CanHaveFilesOfOthers()) return;
    Protect("", 0777);
    Protect("Custom Recipes.ydb", 0466);
    Protect("Custom Recipes Index.ind", 0466);
    const Unprivileged somebodyElse;
    session.Files.CloseAll();
    EXPECT_TRUE(session.Update(4, "Ox", "{\\rtf1}"));
    EXPECT_TRUE(session.Update(4, "Oxtail", "{\\rtf1 Much longer than before}"));
    EXPECT_TRUE(session.Add("New", "{}"));
    EXPECT_TRUE(session.Messages.empty());
}

TEST_F(ProtectedFilesTest, AFileThatIsMarkedReadOnlyLosesItsMarkForALongerRecordToo) {
    const Unprivileged user;
    for (const std::string name : {"Data/Recipes.ydb", "Data/Recipes Index.ind"}) {
        const TempFolder mine;
        mine.Write("Data/Recipes.ydb", Stock());
        mine.Write("Data/Recipes Index.ind", IndexBytes({1, 21}));
        ASSERT_EQ(chmod(mine.Native(name).c_str(), 0444), 0);
        StoreSession run(mine.Native("Data"));
        run.Start();
        EXPECT_TRUE(run.Update(1, "New", "{\\rtf1 Much longer than before}")) << name;
        EXPECT_TRUE(run.Messages.empty());
        EXPECT_TRUE(mine.Read("Data/Recipes.ydb").starts_with("New\r\n{\\rtf1 Much longer"));
    }
}

TEST_F(ProtectedFilesTest, StorageThatCannotBeReachedAtAllIsToldInsteadOfTriedForEver) {
    FailAt("write", 21, failure::PathAccess);
    EXPECT_FALSE(session.Update(4, "Ox", "{\\rtf1}"));
    EXPECT_EQ(session.Messages.size(), 1U);
}

TEST_F(ProtectedFilesTest, AReadOnlyFolderIsToldAndCostsNothing) {
    Protect("", 0555);
    {
        const Unprivileged somebodyElse;
        EXPECT_FALSE(session.Add("New", "{\\rtf1}"));
        EXPECT_FALSE(session.Update(4, "Ox", "{\\rtf1}"));
        EXPECT_FALSE(session.Update(4, "Oxtail", "{\\rtf1 Soup}"));
        EXPECT_EQ(session.Messages,
                  (std::vector<std::string>{"Error adding recipe.\nPath/File access error",
                                            "Error updating recipe\nPath/File access error",
                                            "Error updating recipe\nPath/File access error"}));
        EXPECT_EQ(session.Store.GetRecipeTitle(4), "Cod");
    }
    Protect("", 0777);
    EXPECT_EQ(Own(), ownText);
    EXPECT_EQ(OwnIndex(), IndexBytes(ownPositions));
    EXPECT_TRUE(session.Update(4, "Ox", "{\\rtf1}"));
}

// Large ones

TEST_F(RecipeUpdaterTest, ARecipeOfFiveMegabytesIsAddedChangedAndMoved) {
    const std::string large = "{\\rtf1 " + std::string(5'000'000, 'x') + "}";
    ASSERT_TRUE(session.Add("Large", large));
    EXPECT_EQ(session.Store.GetRecipeRTF(6), large);
    ASSERT_TRUE(session.Update(3, "Conger", "{\\rtf1 Conger}"));
    EXPECT_EQ(session.Store.GetRecipeRTF(6), large);
    ASSERT_TRUE(session.Update(6, "Large", large.substr(0, 4'000'000) + "}"));
    EXPECT_EQ(session.Store.GetRecipeTitle(6), "Large");
    ASSERT_TRUE(session.Update(4, "Larger", large));
    EXPECT_EQ(session.Store.GetRecipeRTF(4), large);
    EXPECT_EQ(session.Store.GetRecipeRTF(5), "{\\rtf1 Ray}");
    RecordsIn(Own(), OwnIndex());
}

TEST_F(RecipeUpdaterTest, ANewRecipeAfterADeletionGetsANewNumberAndTheGapStays) {
    session.Update(5, "", "");
    ASSERT_TRUE(session.Add("Skate", "{\\rtf1}"));
    EXPECT_EQ(session.Store.TotalNumRecords, 6);
    EXPECT_EQ(session.Store.GetRecipeTitle(6), "Skate");
    session.Store.OpenYDB_IND_Normal();
    session.Store.RecalculateTotalRecipes();
    EXPECT_EQ(session.Store.TotalNumRecords, 6);
    EXPECT_EQ(session.Store.TotalRecipes(), 5);
    EXPECT_EQ(session.Store.GetRecipeTitle(5), "");
}

}  // namespace
}  // namespace larder::test
