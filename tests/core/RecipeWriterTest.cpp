#include "store/RecipeWriter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "platform/Failure.h"
#include "support/DataFolder.h"
#include "support/DiskLimit.h"
#include "support/ScriptedDisc.h"

namespace larder {
namespace {

using test::Database;
using test::DataFolder;
using test::IndexBytes;

class RecipeWriterTest : public ::testing::Test {
  protected:
    RecipeWriterTest() {
        stock.AddRecipe("Baked Cod", "{\\rtf1 Baked Cod}");
        stock.AddRecipe("Eel Stew", "{\\rtf1 Eel Stew}");
        data.WriteStock(stock);
    }
    void Start() {
        store.OpenYDB_IND_Normal();
        store.RecalculateTotalRecipes();
    }
    std::string Custom() const { return data.Folder.Read("Data/Custom Recipes.ydb"); }
    std::string CustomIndex() const { return data.Folder.Read("Data/Custom Recipes Index.ind"); }
    void FailAt(const std::string& kind, int number, int failureNumber) {
        data.Files.Watch([=](const NumberedFiles::Access& access) {
            if (access.Kind == kind && access.Number == number) {
                throw Failure(failureNumber, "test");
            }
        });
    }

    Database stock;
    DataFolder data;
    test::ScriptedDisc disc;
    RecipeStore store{data.Files, data.Paths, disc};
    std::vector<std::string> messages;
    RecipeWriter writer{data.Files, data.Paths, store,
                        [this](const std::string& text) { messages.push_back(text); }};
};

// Recipes

TEST_F(RecipeWriterTest, TheFirstCustomRecipeCreatesItsFileAndFollowsTheStock) {
    Start();
    ASSERT_FALSE(data.Folder.Exists("Data/Custom Recipes.ydb"));
    writer.AddRecipeTo_YDB_IND("Sprats", "{\\rtf1 Sprats}", 21, 22);
    EXPECT_EQ(Custom(), "Sprats\r\n{\\rtf1 Sprats}\r\n");
    EXPECT_EQ(CustomIndex(), IndexBytes({1}));
    EXPECT_EQ(store.TotalNumRecords, store.OriginalNumRecords + 1);
    EXPECT_EQ(store.GetRecipeTitle(store.TotalNumRecords), "Sprats");
    EXPECT_TRUE(messages.empty());
}

TEST_F(RecipeWriterTest, RecordsFollowOneAnotherWithoutAGap) {
    Start();
    writer.AddRecipeTo_YDB_IND("One", "{\\rtf1 1}", 21, 22);
    writer.AddRecipeTo_YDB_IND("Two", "{\\rtf1 2}", 21, 22);
    writer.AddRecipeTo_YDB_IND("Three", "{\\rtf1 3}", 21, 22);
    EXPECT_EQ(CustomIndex(), IndexBytes({1, 17, 33}));
    for (const std::int32_t i : {1, 2, 3}) {
        EXPECT_EQ(store.GetRecipeRTF(2 + i), "{\\rtf1 " + std::to_string(i) + "}");
    }
    EXPECT_EQ(store.TotalNumRecords, 5);
}

TEST_F(RecipeWriterTest, BothFilesAreClosedAfterwardsAndTheNextReadOpensThem) {
    Start();
    writer.AddRecipeTo_YDB_IND("Sprats", "{\\rtf1 Sprats}", 21, 22);
    EXPECT_FALSE(data.Files.IsOpen(21));
    EXPECT_FALSE(data.Files.IsOpen(22));
    EXPECT_EQ(store.GetRecipeTitle(3), "Sprats");
    EXPECT_TRUE(data.Files.IsOpen(22));
}

TEST_F(RecipeWriterTest, AnIndexThatIsOpenStaysInUseAndOneThatIsClosedIsOpened) {
    Start();
    ASSERT_TRUE(data.Files.IsOpen(22));
    writer.AddRecipeTo_YDB_IND("One", "1", 21, 22);
    ASSERT_FALSE(data.Files.IsOpen(22));
    writer.AddRecipeTo_YDB_IND("Two", "2", 21, 22);
    EXPECT_EQ(CustomIndex(), IndexBytes({1, 9}));
    EXPECT_TRUE(messages.empty());
}

TEST_F(RecipeWriterTest, TheTemporaryFilesAreCreatedAndBeginAtPosition1) {
    Start();
    writer.AddRecipeTo_YDB_IND("One", "1", 11, 12);
    writer.AddRecipeTo_YDB_IND("", "", 11, 12);
    EXPECT_EQ(data.Folder.Read("Data/Recipes Temp.ydb"), "One\r\n1\r\n\r\n\r\n");
    EXPECT_EQ(data.Folder.Read("Data/Recipes Index Temp.ind"), IndexBytes({1, 9}));
    EXPECT_EQ(store.TotalNumRecords, 2) << "a rewrite makes no new numbers";
    EXPECT_FALSE(data.Files.IsOpen(11));
    EXPECT_FALSE(data.Files.IsOpen(12));
}

TEST_F(RecipeWriterTest, AnEmptyTemporaryFileBeginsAtPosition1Too) {
    data.Folder.Write("Data/Recipes Temp.ydb", "");
    Start();
    writer.AddRecipeTo_YDB_IND("One", "1", 11, 12);
    EXPECT_EQ(data.Folder.Read("Data/Recipes Index Temp.ind"), IndexBytes({1}));
}

TEST_F(RecipeWriterTest, NoOtherPairOfNumbersOpensAnything) {
    Start();
    const std::pair<std::int16_t, std::int16_t> pairs[] = {{1, 2}, {21, 12}, {11, 22}, {3, 4}};
    for (const auto& [text, index] : pairs) {
        messages.clear();
        writer.AddRecipeTo_YDB_IND("x", "y", text, index);
        EXPECT_EQ(messages,
                  (std::vector<std::string>{"Error adding recipe.\nBad file name or number"}));
        store.OpenYDB_IND_Normal();
    }
    EXPECT_FALSE(data.Folder.Exists("Data/Custom Recipes.ydb"));
    EXPECT_FALSE(data.Folder.Exists("Data/Recipes Temp.ydb"));
    EXPECT_EQ(data.Folder.Read("Data/Recipes.ydb"), stock.Text);
    EXPECT_EQ(store.TotalNumRecords, 2);
}

TEST_F(RecipeWriterTest, OfAPairThatIsNoneTheIndexStaysOpen) {
    data.Folder.Write("Data/CategyD.ydb", "");
    Start();
    store.OpenCategoryDescriptions();
    const std::pair<std::int16_t, std::int16_t> pairs[] = {{1, 2}, {3, 4}, {11, 22}, {21, 2}};
    for (const auto& [text, index] : pairs) {
        writer.AddRecipeTo_YDB_IND("x", "y", text, index);
        EXPECT_TRUE(data.Files.IsOpen(index)) << text << " and " << index;
    }
    EXPECT_EQ(messages.size(), 4U);
}

TEST_F(RecipeWriterTest, AFailureShowsTheSystemsDescription) {
    Start();
    FailAt("open", 21, failure::PathAccess);
    writer.AddRecipeTo_YDB_IND("Sprats", "x", 21, 22);
    const std::vector<std::string> expected = {"Error adding recipe.\nPath/File access error"};
    EXPECT_EQ(messages, expected);
    EXPECT_EQ(store.TotalNumRecords, 2);
}

TEST_F(RecipeWriterTest, AFailureBetweenTextAndIndexTakesTheTextBack) {
    Start();
    writer.AddRecipeTo_YDB_IND("One", "1", 21, 22);
    FailAt("write", 22, failure::DiskFull);
    writer.AddRecipeTo_YDB_IND("Lost", "x", 21, 22);
    EXPECT_EQ(messages, std::vector<std::string>{"Error adding recipe.\nDisk full"});
    EXPECT_EQ(Custom(), "One\r\n1\r\n");
    EXPECT_EQ(CustomIndex(), IndexBytes({1}));
    data.Files.Watch(nullptr);
    EXPECT_EQ(store.GetRecipeTitle(3), "One") << "no file stays open for appending";
    writer.AddRecipeTo_YDB_IND("Two", "2", 21, 22);
    EXPECT_EQ(store.GetRecipeTitle(4), "Two");
    EXPECT_EQ(store.GetRecipeRTF(4), "2");
    EXPECT_EQ(store.TotalNumRecords, 4);
}

TEST_F(RecipeWriterTest, AFullDiskIsToldAndCostsNoOtherRecipe) {
    Start();
    writer.AddRecipeTo_YDB_IND("One", "1", 21, 22);
    bool torn = false;
    data.Files.Watch([&](const NumberedFiles::Access& access) {
        torn = torn || (access.Kind == "write" && access.Number == 21);
    });
    {
        const test::DiskLimit limit(500);  // enough for the journal
        EXPECT_FALSE(
            writer.AddRecipeTo_YDB_IND("Big", "{\\rtf1 " + std::string(1000, 'x') + "}", 21, 22));
    }
    data.Files.Watch(nullptr);
    EXPECT_TRUE(torn);
    EXPECT_EQ(messages, std::vector<std::string>{"Error adding recipe.\nDisk full"});
    EXPECT_EQ(store.TotalNumRecords, 3);
    EXPECT_EQ(store.GetRecipeTitle(3), "One");
    EXPECT_EQ(store.GetRecipeRTF(3), "1");
    EXPECT_EQ(store.GetRecipeRTF(2), "{\\rtf1 Eel Stew}");
    EXPECT_TRUE(writer.AddRecipeTo_YDB_IND("Two", "2", 21, 22));
    EXPECT_EQ(store.TotalNumRecords, 4);
    EXPECT_EQ(store.GetRecipeTitle(4), "Two");
    EXPECT_EQ(store.GetRecipeRTF(4), "2");
    EXPECT_EQ(Custom(), "One\r\n1\r\nTwo\r\n2\r\n");
    EXPECT_EQ(CustomIndex(), IndexBytes({1, 9}));
}

// How often the outside fails: once, or for as long as the recipe is being added.
class LastStepsTest : public RecipeWriterTest, public testing::WithParamInterface<bool> {
  protected:
    void FailAtLastStep(const std::string& kind, int number) {
        data.Files.Watch([=, this, failed = false](const NumberedFiles::Access& access) mutable {
            if (access.Kind != kind || access.Number != number || (failed && GetParam())) return;
            failed = true;
            ++failures_;
            throw Failure(failure::DeviceError, "test");
        });
    }
    int failures_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Failing, LastStepsTest, testing::Values(true, false),
                         [](const auto& once) {
                             return once.param ? "Once" : "ForAsLongAsItLasts";
                         });

TEST_P(LastStepsTest, AnAddThatFailsThereLeavesNumberAndEntryInStep) {
    Start();
    std::int32_t total = store.TotalNumRecords;
    const std::pair<const char*, int> steps[] = {
        {"flush", 21}, {"flush", 22}, {"write", 22}, {"close", 21}, {"close", 22}};
    for (const auto& [kind, number] : steps) {
        SCOPED_TRACE(std::string(kind) + " " + std::to_string(number));
        failures_ = 0;
        FailAtLastStep(kind, number);
        if (writer.AddRecipeTo_YDB_IND("First", "1", 21, 22)) ++total;
        EXPECT_GT(failures_, 0);
        data.Files.Watch(nullptr);
        EXPECT_EQ(store.TotalNumRecords, total);
        ASSERT_TRUE(writer.AddRecipeTo_YDB_IND("Second", "2", 21, 22));
        ++total;
        EXPECT_EQ(store.TotalNumRecords, total);
        EXPECT_EQ(CustomIndex().size(),
                  static_cast<std::size_t>(4 * (total - store.OriginalNumRecords)));
        EXPECT_EQ(store.GetRecipeTitle(total), "Second");
        EXPECT_EQ(store.GetRecipeRTF(total), "2");
        store.OpenYDB_IND_Normal();
        store.RecalculateTotalRecipes();
        EXPECT_EQ(store.TotalNumRecords, total) << "as at the next start";
    }
}

TEST_F(RecipeWriterTest, ARecipeBeyondTheLastPositionIsRefusedWithNothingWritten) {
    data.Folder.Write("Data/Custom Recipes.ydb", "One\r\n1\r\n");
    data.Folder.Write("Data/Custom Recipes Index.ind", IndexBytes({1}));
    const std::string text = data.Folder.Native("Data/Custom Recipes.ydb");
    const std::uintmax_t full = std::numeric_limits<std::int32_t>::max();
    std::filesystem::resize_file(text, full);  // takes up no room on the disk
    Start();
    EXPECT_FALSE(writer.AddRecipeTo_YDB_IND("Two", "2", 21, 22));
    EXPECT_EQ(messages, std::vector<std::string>{"Error adding recipe.\nOverflow"});
    EXPECT_EQ(std::filesystem::file_size(text), full);
    EXPECT_EQ(CustomIndex(), IndexBytes({1}));
    EXPECT_EQ(store.TotalNumRecords, 3);
    EXPECT_FALSE(data.Folder.Exists("Data/Recipes Temp.ydb"));
}

TEST_F(RecipeWriterTest, AJournalReachesTheDiskBeforeARecipeIsAdded) {
    Start();
    std::vector<std::string> log;
    data.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind == "write" || access.Kind == "flush") {
            log.push_back(std::string(access.Kind) + " " + std::to_string(access.Number));
        }
    });
    writer.AddRecipeTo_YDB_IND("Sprats", "x", 21, 22);
    const std::vector<std::string> expected = {"write 11", "flush 11", "flush 0", "write 21",
                                               "write 22", "flush 21", "flush 22"};
    EXPECT_EQ(log, expected);
}

TEST_F(RecipeWriterTest, AnEntryThatIsCutShortIsWrittenOver) {
    data.Folder.Write("Data/Custom Recipes.ydb", "One\r\n1\r\n");
    data.Folder.Write("Data/Custom Recipes Index.ind", IndexBytes({1}) + "\x07\x07");
    Start();
    writer.AddRecipeTo_YDB_IND("Two", "2", 21, 22);
    EXPECT_EQ(CustomIndex(), IndexBytes({1, 9}));
}

// Descriptions

TEST_F(RecipeWriterTest, ADescriptionIsFourLinesAndAnEntry) {
    data.Folder.Write("Data/CategyD.ydb", "");
    store.OpenCategoryDescriptions();
    writer.AddCategoryTo_YDB_IND("BASS", "{\\rtf1 Bass}");
    writer.AddCategoryTo_YDB_IND("COD", "{\\rtf1 Cod}");
    EXPECT_EQ(data.Folder.Read("Data/CategyD.ydb"),
              "BASS\r\n{\\rtf1 Bass}\r\n\r\n\\yyk\r\nCOD\r\n{\\rtf1 Cod}\r\n\r\n\\yyk\r\n");
    EXPECT_EQ(data.Folder.Read("Data/CategyD Index.ind"), IndexBytes({1, 29}));
}

TEST_F(RecipeWriterTest, DescriptionsCanBeReadRightAfterOneIsAdded) {
    data.Folder.Write("Data/CategyD.ydb", "");
    store.OpenCategoryDescriptions();
    writer.AddCategoryTo_YDB_IND("BASS", "{\\rtf1 Bass}");
    EXPECT_EQ(store.GetCatTitle(1), "BASS");
}

TEST_F(RecipeWriterTest, AFailedDescriptionReachesTheCallerAndTheOthersStayReadable) {
    data.Folder.Write("Data/CategyD.ydb", "");
    store.OpenCategoryDescriptions();
    writer.AddCategoryTo_YDB_IND("BASS", "{\\rtf1 Bass}");
    FailAt("write", 3, failure::DiskFull);
    EXPECT_EQ(Ignoring([&] { writer.AddCategoryTo_YDB_IND("COD", "x"); }), failure::DiskFull);
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(store.GetCatTitle(1), "BASS");
    EXPECT_EQ(store.GetCatTitle(2), "");
    EXPECT_EQ(Ignoring([&] {
                  data.Files.Close(4);
                  writer.AddCategoryTo_YDB_IND("COD", "x");
              }),
              failure::BadFileNumber);
}

TEST_F(RecipeWriterTest, TheTextOfADescriptionReachesTheDiskBeforeItsEntry) {
    data.Folder.Write("Data/CategyD.ydb", "");
    store.OpenCategoryDescriptions();
    std::vector<std::string> log;
    data.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind != "write" && access.Kind != "flush") return;
        const std::string step = std::string(access.Kind) + " " + std::to_string(access.Number);
        if (log.empty() || log.back() != step) log.push_back(step);
    });
    writer.AddCategoryTo_YDB_IND("BASS", "{\\rtf1 Bass}");
    EXPECT_EQ(log, (std::vector<std::string>{"write 3", "flush 3", "write 4", "flush 4"}));
}

TEST_F(RecipeWriterTest, ADescriptionThatFailsIsNotThereAndTheNextOneStandsInItsPlace) {
    const std::pair<const char*, int> steps[] = {
        {"open", 3}, {"write", 3}, {"flush", 3}, {"write", 4}, {"flush", 4}};
    for (const auto& [kind, number] : steps) {
        SCOPED_TRACE(std::string(kind) + " " + std::to_string(number));
        data.Files.CloseAll();
        data.Folder.Write("Data/CategyD.ydb", "BASS\r\n1\r\n\r\n\\yyk\r\n");
        data.Folder.Write("Data/CategyD Index.ind", IndexBytes({1}));
        store.OpenCategoryDescriptions();
        FailAt(kind, number, failure::DeviceError);
        EXPECT_EQ(Ignoring([&] { writer.AddCategoryTo_YDB_IND("LOST", "x"); }),
                  failure::DeviceError);
        data.Files.Watch(nullptr);
        EXPECT_EQ(data.Folder.Read("Data/CategyD.ydb"), "BASS\r\n1\r\n\r\n\\yyk\r\n");
        EXPECT_EQ(data.Folder.Read("Data/CategyD Index.ind"), IndexBytes({1}));
        writer.AddCategoryTo_YDB_IND("COD", "2");
        EXPECT_EQ(data.Folder.Read("Data/CategyD Index.ind"), IndexBytes({1, 18}));
        EXPECT_EQ(store.GetCatTitle(1), "BASS");
        EXPECT_EQ(store.GetCatTitle(2), "COD");
    }
}

TEST_F(RecipeWriterTest, ACloseThatFailsCostsNoDescription) {
    data.Folder.Write("Data/CategyD.ydb", "");
    store.OpenCategoryDescriptions();
    FailAt("close", 3, failure::DeviceError);
    writer.AddCategoryTo_YDB_IND("BASS", "{\\rtf1 Bass}");
    data.Files.Watch(nullptr);
    EXPECT_EQ(data.Folder.Read("Data/CategyD Index.ind"), IndexBytes({1}));
    EXPECT_EQ(store.GetCatTitle(1), "BASS");
}

TEST_F(RecipeWriterTest, ADescriptionBeyondTheLastPositionIsRefusedWithNothingWritten) {
    data.Folder.Write("Data/CategyD.ydb", "");
    const std::string text = data.Folder.Native("Data/CategyD.ydb");
    const std::uintmax_t full = std::numeric_limits<std::int32_t>::max();
    std::filesystem::resize_file(text, full);
    store.OpenCategoryDescriptions();
    EXPECT_EQ(Ignoring([&] { writer.AddCategoryTo_YDB_IND("BASS", "x"); }), failure::Overflow);
    EXPECT_EQ(std::filesystem::file_size(text), full);
    EXPECT_EQ(data.Folder.Read("Data/CategyD Index.ind"), "");
}

// Records between separator lines

class NextRecordTest : public RecipeWriterTest {
  protected:
    std::string Next() { return writer.GetNextRecipieFromDisk(1, Position); }
    void Open(const std::string& text) {
        data.Folder.Write("Data/Recipes.ydb", text);
        data.Files.Open(1, data.Paths.strRecipesFile, FileMode::Input);
    }
    std::int32_t Position = 99;
};

TEST_F(NextRecordTest, TheLinesUpToTheSeparatorComeWithTheirPosition) {
    Open("One\r\n1\r\n\r\n\\yyk\r\nTwo\r\n\\yyk\r\n");
    EXPECT_EQ(Next(), "One\r1\r\r");
    EXPECT_EQ(Position, 1);
    EXPECT_EQ(Next(), "Two\r");
    EXPECT_EQ(Position, 17);
}

TEST_F(NextRecordTest, ATailWithoutASeparatorComesWithPositionMinusOne) {
    Open("One\r\n\\yyk\r\ntail\r\nmore");
    Next();
    EXPECT_EQ(Next(), "tail\rmore\r");
    EXPECT_EQ(Position, -1);
    EXPECT_EQ(Next(), "");
    EXPECT_EQ(Position, -1) << "at the end of the file too";
}

TEST_F(NextRecordTest, OnlyALineOfExactlyTheSeparatorCounts) {
    Open("a\\yyk\r\n\\yyk \r\n\\YYK\r\n\\yyk");
    EXPECT_EQ(Next(), "a\\yyk\r\\yyk \r\\YYK\r");
    EXPECT_EQ(Position, 1);
}

TEST_F(NextRecordTest, AClosedFileIsAFailure) {
    EXPECT_EQ(Ignoring([&] { Next(); }), failure::BadFileNumber);
}

}  // namespace
}  // namespace larder
