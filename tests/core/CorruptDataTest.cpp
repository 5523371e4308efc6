// A small data folder is built, one of its files is damaged, and everything is read from it: every
// read has to end with a text or a failure, take no more than the file holds, and leave the records
// that the damage has not reached as they were.

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "platform/Failure.h"
#include "store/RecipeStore.h"
#include "support/DataFolder.h"
#include "support/ProcessorTime.h"
#include "support/ScriptedDisc.h"
#include "support/Seed.h"

namespace larder {
namespace {

using test::Database;
using test::DataFolder;
using test::IndexBytes;
using test::ScriptedDisc;

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();

const std::vector<std::string> files = {"Recipes.ydb",        "Recipes Index.ind",
                                        "Custom Recipes.ydb", "Custom Recipes Index.ind",
                                        "CategyD.ydb",        "CategyD Index.ind"};

class CorruptDataTest : public ::testing::Test {
  protected:
    CorruptDataTest() {
        for (int i = 1; i <= 3; ++i) {
            const std::string n = std::to_string(i);
            stock.AddRecipe("Stock " + n, "{\\rtf1 Stock " + n + "\\par }");
            own.AddRecipe("Own " + n, "{\\rtf1 Own " + n + "\\par }");
            descriptions.AddDescription("FISH " + n, "{\\rtf1 Fish " + n + "}");
        }
    }
    void Build() const {
        data.WriteStock(stock);
        data.WriteCustom(own);
        data.WriteDescriptions(descriptions);
    }
    std::string Bytes(const std::string& file) const { return data.Folder.Read("Data/" + file); }

    // Starts on the folder as it is and reads everything there is and a little more.
    void ReadEverything() {
        data.Files.CloseAll();
        disc.Asked.clear();
        RecipeStore store(data.Files, data.Paths, disc);
        store.OpenYDB_IND_Normal();
        Ignoring([&] { store.OpenCategoryDescriptions(); });
        ASSERT_EQ(Ignoring([&] { store.RecalculateTotalRecipes(); }), 0);
        ASSERT_LE(store.TotalRecipes(), store.TotalNumRecords);
        intact = 0;
        for (std::int32_t num = -1; num <= store.TotalNumRecords + 2; ++num)
            Read(store, num);
        for (const std::int32_t num : {smallest, largest})
            Read(store, num);
        for (std::int32_t num = -1; num <= 5; ++num)
            ReadDescription(store, num);
    }
    void Read(RecipeStore& store, std::int32_t num) {
        const std::string title = store.GetRecipeTitle(num);
        std::string body;
        const int failed = Ignoring([&] { body = store.GetRecipeRTF(num); });
        EXPECT_TRUE(failed == 0 || failed == failure::BadRecordNumber) << failed;
        EXPECT_LE(title.size(), maxLength);
        EXPECT_LE(body.size(), maxLength);
        for (const char* kind : {"Stock ", "Own "}) {
            for (int i = 1; i <= 3; ++i) {
                const std::string whole = kind + std::to_string(i);
                if (title == whole && body == "{\\rtf1 " + whole + "\\par }") ++intact;
            }
        }
    }
    void ReadDescription(RecipeStore& store, std::int32_t num) {
        const std::string title = store.GetCatTitle(num);
        std::string body;
        Ignoring([&] { body = store.GetCatRTF(num); });
        EXPECT_LE(title.size(), maxLength);
        EXPECT_LE(body.size(), maxLength);
        for (int i = 1; i <= 3; ++i) {
            const std::string n = std::to_string(i);
            const std::string whole = "{\\rtf1 Fish " + n + "}\r\n\r\n\\yyk\r";
            if (title == "FISH " + n && body.substr(0, whole.size()) == whole) ++intact;
        }
    }
    // How many records of a database end within the first `length` bytes of its text; the last
    // needs the end of the file to be where it was.
    static int WholeRecords(const Database& database, std::size_t length) {
        int whole = 0;
        for (std::size_t i = 0; i + 1 < database.Positions.size(); ++i) {
            if (static_cast<std::size_t>(database.Positions[i + 1]) - 1 <= length) ++whole;
        }
        return whole + (length == database.Text.size() ? 1 : 0);
    }

    Database stock;
    Database own;
    Database descriptions;
    DataFolder data;
    ScriptedDisc disc;
    std::size_t maxLength = 4096;
    int intact = 0;  // of the nine records, read whole by the last ReadEverything
};

TEST_F(CorruptDataTest, AWholeFolderGivesAllNineRecords) {
    Build();
    ReadEverything();
    EXPECT_EQ(intact, 9);
    EXPECT_TRUE(disc.Asked.empty());
}

TEST_F(CorruptDataTest, ATextFileCutAtAnyByteKeepsTheRecordsBeforeTheCut) {
    for (const std::string& file : {files[0], files[2]}) {
        const Database& database = file == files[0] ? stock : own;
        for (std::size_t length = 0; length <= database.Text.size(); ++length) {
            Build();
            data.Folder.Write("Data/" + file, database.Text.substr(0, length));
            ReadEverything();
            EXPECT_GE(intact, 6 + WholeRecords(database, length)) << file << " cut at " << length;
            EXPECT_TRUE(disc.Asked.empty());
        }
    }
}

TEST_F(CorruptDataTest, ADescriptionFileCutAtAnyByteKeepsTheRecordsBeforeTheCut) {
    for (std::size_t length = 0; length <= descriptions.Text.size(); ++length) {
        Build();
        data.Folder.Write("Data/CategyD.ydb", descriptions.Text.substr(0, length));
        ReadEverything();
        EXPECT_GE(intact, 6 + WholeRecords(descriptions, length)) << "cut at " << length;
    }
}

TEST_F(CorruptDataTest, AnIndexCutAtAnyByteKeepsTheEntriesBeforeTheLast) {
    for (const std::string& file : {files[1], files[3], files[5]}) {
        Build();
        const std::string whole = Bytes(file);
        for (std::size_t length = 0; length < whole.size(); ++length) {
            Build();
            data.Folder.Write("Data/" + file, whole.substr(0, length));
            ReadEverything();
            const int entries = static_cast<int>(length / 4);
            EXPECT_GE(intact, 6 + std::max(0, entries - 1)) << file << " cut at " << length;
        }
    }
}

TEST_F(CorruptDataTest, AMissingFileCostsItsOwnRecordsOnly) {
    for (const std::string& file : files) {
        Build();
        data.Files.CloseAll();
        data.Folder.Delete("Data/" + file);
        ReadEverything();
        EXPECT_EQ(intact, 6) << file;
    }
}

TEST_F(CorruptDataTest, AnEmptiedFileCostsItsOwnRecordsOnly) {
    for (const std::string& file : files) {
        Build();
        data.Folder.Write("Data/" + file, "");
        ReadEverything();
        EXPECT_EQ(intact, 6) << file;
        EXPECT_TRUE(disc.Asked.empty()) << file;
    }
}

TEST_F(CorruptDataTest, AFolderInThePlaceOfAFileCostsItsOwnRecordsOnly) {
    for (const std::string& file : {files[0], files[2], files[4], files[5]}) {
        Build();
        data.Files.CloseAll();
        data.Folder.Delete("Data/" + file);
        data.Folder.MakeFolder("Data/" + file);
        ReadEverything();
        EXPECT_GE(intact, 6) << file;
        data.Files.CloseAll();
        data.Folder.Delete("Data/" + file);
    }
}

TEST_F(CorruptDataTest, NoiseInAnyFileCostsItsOwnRecordsOnly) {
    std::mt19937 random(test::Seed());
    for (int round = 0; round < 25; ++round) {
        for (const std::string& file : files) {
            Build();
            std::string noise(random() % 400, '\0');
            for (char& c : noise)
                c = static_cast<char>(random());
            data.Folder.Write("Data/" + file, noise);
            ReadEverything();
            EXPECT_GE(intact, 6) << file;
        }
    }
}

TEST_F(CorruptDataTest, EveryHostileEntryAtEveryPlaceIsSurvived) {
    const std::vector<std::int32_t> hostile = {
        0, -1, 1, 2, 3, 30, 60, 10000, smallest, smallest + 1, largest - 1, largest};
    for (const std::string& file : {files[1], files[3], files[5]}) {
        const Database& database = file == files[1] ? stock : file == files[3] ? own : descriptions;
        for (std::size_t place = 0; place < 3; ++place) {
            for (const std::int32_t entry : hostile) {
                Build();
                std::vector<std::int32_t> positions = database.Positions;
                positions[place] = entry;
                data.Folder.Write("Data/" + file, IndexBytes(positions));
                ReadEverything();
                // The record itself and the one before it, which ends where this one begins.
                EXPECT_GE(intact, 7) << file << " entry " << place << " = " << entry;
            }
        }
    }
}

TEST_F(CorruptDataTest, EntriesOutOfOrderAreSurvived) {
    for (const std::string& file : {files[1], files[3], files[5]}) {
        Build();
        std::vector<std::int32_t> positions = stock.Positions;
        std::sort(positions.begin(), positions.end());
        do {
            data.Folder.Write("Data/" + file, IndexBytes(positions));
            ReadEverything();
            EXPECT_GE(intact, 6);
        } while (std::next_permutation(positions.begin(), positions.end()));
    }
}

TEST_F(CorruptDataTest, ATitleLineOfTenMegabytesIsReadOnceAndQuickly) {
    Build();
    const std::string line(10 * 1024 * 1024, 'x');
    data.Folder.Write("Data/Recipes.ydb", line);
    RecipeStore store(data.Files, data.Paths, disc);
    store.OpenYDB_IND_Normal();
    store.RecalculateTotalRecipes();
    std::uint64_t bytes = 0;
    data.Files.Watch([&](const NumberedFiles::Access& access) { bytes += access.Bytes; });
    const double begin = test::ProcessorTime();
    EXPECT_EQ(store.GetRecipeTitle(1).size(), line.size());
    EXPECT_LE(bytes, line.size() + 600000);
    EXPECT_EQ(store.GetRecipeRTF(1), "");
    EXPECT_LE(bytes, 2 * (line.size() + 600000));
    EXPECT_LT(test::ProcessorTime() - begin, 2.0);
}

TEST_F(CorruptDataTest, AnEntryFarBehindTheEndTakesNoMemoryForWhatIsNotThere) {
    Build();
    data.Folder.Write("Data/Recipes Index.ind", IndexBytes({1, largest, largest}));
    RecipeStore store(data.Files, data.Paths, disc);
    store.OpenYDB_IND_Normal();
    store.RecalculateTotalRecipes();
    std::uint64_t bytes = 0;
    data.Files.Watch([&](const NumberedFiles::Access& access) { bytes += access.Bytes; });
    EXPECT_EQ(store.GetRecipeRTF(1), "");
    EXPECT_EQ(store.GetRecipeTitle(2), "");
    EXPECT_EQ(store.GetRecipeRTF(2), "");
    EXPECT_LT(bytes, 4096u);
}

}  // namespace
}  // namespace larder
