#include "store/AuthoringTools.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/Failure.h"
#include "platform/rtf/Rtf.h"
#include "store/FileNumbers.h"
#include "store/RecipeStore.h"
#include "support/DataFolder.h"
#include "support/ScriptedDisc.h"

namespace larder {
namespace {

// A maintainer at work in a data folder that holds two stock recipes.
class AuthoringToolsTest : public testing::Test {
  protected:
    AuthoringToolsTest() {
        test::Database stock;
        stock.AddRecipe("Old One", "{\\rtf1 Old One\\par}");
        stock.AddRecipe("Old Two", "{\\rtf1 Old Two\\par}");
        folder.WriteStock(stock);
        store.OpenYDB_IND_Normal();
        store.RecalculateTotalRecipes();
    }

    void StoreRecipes(const std::string& document) {
        folder.Folder.Write("Recipes.rtf", document);
        tools.strRecipesSourceFile = folder.NamePaths.Alias(folder.Folder.Native("Recipes.rtf"));
        tools.StoreRecipeisInFile();
        EXPECT_TRUE(messages.empty());
        store.OpenYDB_IND_Normal();
        store.RecalculateTotalRecipes();
    }

    void StoreDescriptions(const std::string& document) {
        folder.Folder.Write("Data/util/FISH DIRECTORY.rtf", document);
        tools.StoreCatDInFile();
    }

    static std::string PlainText(const std::string& rtf) {
        const std::optional<RichText> document = ReadRtf(rtf);
        EXPECT_TRUE(document.has_value()) << rtf;
        return document ? document->Text() : std::string();
    }

    test::DataFolder folder;
    test::ScriptedDisc disc;
    RecipeStore store{folder.Files, folder.Paths, disc};
    std::vector<std::string> messages;
    RecipeWriter writer{folder.Files, folder.Paths, store,
                        [this](const std::string& text) { messages.push_back(text); }};
    AuthoringTools tools{folder.Files, folder.NamePaths, folder.Paths, store, writer};
};

constexpr const char* TwoRecipes =
    "{\\rtf1\\ansi #A-17 Crab Cakes\\par Mix and {\\b fry}.\\par "
    "#x  \\tab Clam Bake\\par Steam.\\par}";

TEST_F(AuthoringToolsTest, EachRecipeOfTheDocumentBecomesACustomRecipe) {
    StoreRecipes(TwoRecipes);
    ASSERT_EQ(store.TotalNumRecords, 2);
    EXPECT_EQ(store.OriginalNumRecords, 0);
    EXPECT_EQ(store.GetRecipeTitle(1), "Crab Cakes");
    EXPECT_EQ(store.GetRecipeTitle(2), "Clam Bake");
}

TEST_F(AuthoringToolsTest, TheIdentifierAndTheGapBehindItAreNoPartOfTheRecipe) {
    StoreRecipes(TwoRecipes);
    EXPECT_EQ(PlainText(store.GetRecipeRTF(2)), "Clam Bake\r\nSteam.\r\n");
}

TEST_F(AuthoringToolsTest, ABodyOpensWithTheTitleAndEndsBeforeTheNextMarker) {
    StoreRecipes(TwoRecipes);
    EXPECT_EQ(PlainText(store.GetRecipeRTF(1)), "Crab Cakes\r\nMix and fry.\r\n");
}

TEST_F(AuthoringToolsTest, ABodyKeepsItsFormats) {
    StoreRecipes(TwoRecipes);
    const RichText body = ReadRtf(store.GetRecipeRTF(1)).value();
    std::string bold;
    body.ForEachPiece([&](const RichText::Piece& piece) {
        if (!body.CharFormats()[piece.format].bold) return;
        for (const char16_t unit : body.Units().substr(piece.start, piece.length)) {
            bold += static_cast<char>(unit);
        }
    });
    EXPECT_EQ(bold, "fry");
}

TEST_F(AuthoringToolsTest, ATitleEndsAtATab) {
    StoreRecipes("{\\rtf1 #1 Crab\\tab serves two\\par Text\\par}");
    EXPECT_EQ(store.GetRecipeTitle(1), "Crab");
    EXPECT_EQ(PlainText(store.GetRecipeRTF(1)), "Crab\tserves two\r\nText\r\n");
}

TEST_F(AuthoringToolsTest, TextBeforeTheFirstMarkerIsDropped) {
    StoreRecipes("{\\rtf1 Notes of the editor\\par #1 Crab\\par Text\\par}");
    ASSERT_EQ(store.TotalNumRecords, 1);
    EXPECT_EQ(store.GetRecipeTitle(1), "Crab");
}

TEST_F(AuthoringToolsTest, TheDocumentMayBePlainText) {
    StoreRecipes("#1 Crab\r\nText\r\n#2 Clam\r\nMore");
    ASSERT_EQ(store.TotalNumRecords, 2);
    EXPECT_EQ(PlainText(store.GetRecipeRTF(2)), "Clam\r\nMore");
}

TEST_F(AuthoringToolsTest, TheStockIsDeletedAndItsIndexIsLeftEmpty) {
    StoreRecipes(TwoRecipes);
    EXPECT_FALSE(folder.Folder.Exists("Data/Recipes.ydb"));
    EXPECT_TRUE(folder.Folder.Exists("Data/Recipes Index.ind"));
    EXPECT_EQ(folder.Folder.Read("Data/Recipes Index.ind"), "");
}

TEST_F(AuthoringToolsTest, NumbersCountOnFromTheCurrentTotal) {
    folder.Folder.Write("Recipes.rtf", TwoRecipes);
    tools.strRecipesSourceFile = folder.NamePaths.Alias(folder.Folder.Native("Recipes.rtf"));
    tools.StoreRecipeisInFile();
    EXPECT_EQ(store.TotalNumRecords, 4);
}

TEST_F(AuthoringToolsTest, RecipesComeBehindThoseThatTheCustomFilesHold) {
    StoreRecipes("{\\rtf1 #1 First\\par}");
    StoreRecipes("{\\rtf1 #1 Second\\par}");
    ASSERT_EQ(store.TotalNumRecords, 2);
    EXPECT_EQ(store.GetRecipeTitle(1), "First");
    EXPECT_EQ(store.GetRecipeTitle(2), "Second");
}

TEST_F(AuthoringToolsTest, ADocumentWithoutAMarkerYieldsNothing) {
    StoreRecipes("{\\rtf1 Just some text.\\par}");
    EXPECT_EQ(store.TotalNumRecords, 0);
    EXPECT_FALSE(folder.Folder.Exists("Data/Custom Recipes.ydb"));
}

TEST_F(AuthoringToolsTest, AMarkerWithNothingBehindItGivesAnEmptyTitle) {
    StoreRecipes("{\\rtf1 #}");
    ASSERT_EQ(store.TotalNumRecords, 1);
    EXPECT_EQ(store.GetRecipeTitle(1), "");
}

TEST_F(AuthoringToolsTest, AMarkerThatEndsTheDocumentBeginsNoFurtherRecipe) {
    StoreRecipes("{\\rtf1 #1 Crab\\par Text\\par #}");
    EXPECT_EQ(store.TotalNumRecords, 1);
    StoreRecipes("{\\rtf1 #1 Crab\\par Text\\par #\\par}");
    EXPECT_EQ(store.TotalNumRecords, 3) << "a line end belongs to it";
}

TEST_F(AuthoringToolsTest, AMissingDocumentIsAFailureThatNamesItAndCostsNothing) {
    tools.strRecipesSourceFile = folder.Paths.strPath + "nowhere.rtf";
    try {
        tools.StoreRecipeisInFile();
        FAIL() << "no failure";
    } catch (const Failure& f) {
        EXPECT_EQ(f.Number, failure::FileNotFound);
        EXPECT_NE(f.Description.find("nowhere.rtf"), std::string::npos);
    }
    EXPECT_EQ(store.GetRecipeTitle(2), "Old Two");
}

TEST_F(AuthoringToolsTest, ARecipeThatCannotBeAddedIsToldAndTheOthersFollow) {
    folder.Folder.Write("Recipes.rtf", "{\\rtf1 #1 Crab\\par #2 Clam\\par #3 Eel\\par}");
    tools.strRecipesSourceFile = folder.NamePaths.Alias(folder.Folder.Native("Recipes.rtf"));
    int journals = 0;
    folder.Files.Watch([&](const NumberedFiles::Access& access) {
        const bool journal = access.Number == filenumber::RecipesTemp && access.Kind == "write";
        if (journal && ++journals == 2) throw Failure(failure::DiskFull, "disk");
    });
    tools.StoreRecipeisInFile();
    EXPECT_EQ(messages, std::vector<std::string>{"Error adding recipe.\nDisk full"});
    store.OpenYDB_IND_Normal();
    store.RecalculateTotalRecipes();
    ASSERT_EQ(store.TotalNumRecords, 2);
    EXPECT_EQ(store.GetRecipeTitle(1), "Crab");
    EXPECT_EQ(store.GetRecipeTitle(2), "Eel");
}

TEST_F(AuthoringToolsTest, AMissingDocumentOfDescriptionsCostsNothing) {
    StoreDescriptions("{\\rtf1 @ Cod\\par A white one.\\par}");
    folder.Folder.Delete("Data/util/FISH DIRECTORY.rtf");
    const std::string before = folder.Folder.Read("Data/CategyD.ydb");
    ASSERT_FALSE(before.empty());
    EXPECT_EQ(Ignoring([this] { tools.StoreCatDInFile(); }), failure::FileNotFound);
    EXPECT_EQ(folder.Folder.Read("Data/CategyD.ydb"), before);
    EXPECT_EQ(folder.Folder.Read("Data/CategyD Index.ind"), test::IndexBytes({1}));
}

constexpr const char* TwoDescriptions =
    "{\\rtf1\\ansi @ Salmon\\par A {\\i noble} fish.\\par Of the north.\\par "
    "@ Cod\\par A white one.\\par}";

TEST_F(AuthoringToolsTest, EachDescriptionOfTheDocumentIsStoredUnderItsTitle) {
    StoreDescriptions(TwoDescriptions);
    store.OpenCategoryDescriptions();
    EXPECT_EQ(folder.Files.Length(filenumber::CatDIndex), 8);
    EXPECT_EQ(store.GetCatTitle(1), "Salmon");
    EXPECT_EQ(store.GetCatTitle(2), "Cod");
}

TEST_F(AuthoringToolsTest, TheTitleIsNoPartOfADescription) {
    StoreDescriptions(TwoDescriptions);
    store.OpenCategoryDescriptions();
    EXPECT_EQ(PlainText(store.GetCatRTF(1)), "A noble fish.\r\nOf the north.\r\n");
    EXPECT_EQ(PlainText(store.GetCatRTF(2)), "A white one.\r\n");
}

TEST_F(AuthoringToolsTest, TheCharacterBehindTheMarkerIsSkippedWhateverItIs) {
    StoreDescriptions("{\\rtf1 @*Salmon\\par Text\\par}");
    store.OpenCategoryDescriptions();
    EXPECT_EQ(store.GetCatTitle(1), "Salmon");
}

TEST_F(AuthoringToolsTest, EachDescriptionEndsWithAnEmptyLineAndTheEndMark) {
    StoreDescriptions(TwoDescriptions);
    const std::string text = folder.Folder.Read("Data/CategyD.ydb");
    const std::string end = "\r\n\r\n\\yyk\r\n";
    EXPECT_TRUE(text.starts_with("Salmon\r\n{\\rtf1"));
    const std::size_t first = text.find(end);
    ASSERT_NE(first, std::string::npos);
    EXPECT_TRUE(text.substr(first + end.size()).starts_with("Cod\r\n{\\rtf1"));
    EXPECT_TRUE(text.ends_with(end));
}

TEST_F(AuthoringToolsTest, EarlierDescriptionsAreReplaced) {
    StoreDescriptions(TwoDescriptions);
    StoreDescriptions("{\\rtf1 @ Tuna\\par Red.\\par}");
    store.OpenCategoryDescriptions();
    EXPECT_EQ(folder.Files.Length(filenumber::CatDIndex), 4);
    EXPECT_EQ(store.GetCatTitle(1), "Tuna");
}

TEST_F(AuthoringToolsTest, TheFilesOfTheDescriptionsAreLeftClosed) {
    StoreDescriptions(TwoDescriptions);
    EXPECT_FALSE(folder.Files.IsOpen(filenumber::CatD));
    EXPECT_FALSE(folder.Files.IsOpen(filenumber::CatDIndex));
}

TEST_F(AuthoringToolsTest, ADescriptionThatIsCutShortIsStoredAsFarAsItGoes) {
    StoreDescriptions("{\\rtf1 @ Salmon\\par Text\\par @\\par}");
    store.OpenCategoryDescriptions();
    EXPECT_EQ(folder.Files.Length(filenumber::CatDIndex), 8);
    EXPECT_EQ(store.GetCatTitle(2), "");
}

TEST_F(AuthoringToolsTest, TheIndexIsMadeAgainFromATextWithEndMarks) {
    folder.Folder.Write("Data/Recipes.ydb", "One\r\n1\r\n\\yyk\r\nTwo\r\n\\yyk\r\ntail\r\n");
    ASSERT_TRUE(folder.Files.IsOpen(filenumber::RecipesIndex));
    tools.MakeIndex();
    EXPECT_EQ(folder.Folder.Read("Data/Recipes Index.ind"), test::IndexBytes({1, 15}));
    EXPECT_FALSE(folder.Files.IsOpen(filenumber::RecipesIndex));
}

TEST_F(AuthoringToolsTest, AnIndexThatCannotBeMadeToItsEndIsLeftClosed) {
    folder.Folder.Write("Data/Recipes.ydb", "One\r\n1\r\n\\yyk\r\nTwo\r\n\\yyk\r\n");
    folder.Files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "write") throw Failure(failure::DiskFull, "disk");
    });
    EXPECT_EQ(Ignoring([this] { tools.MakeIndex(); }), failure::DiskFull);
    EXPECT_FALSE(folder.Files.IsOpen(filenumber::RecipesIndex));
    EXPECT_EQ(folder.Files.FreeNumber(), filenumber::RecipesIndex);
}

TEST_F(AuthoringToolsTest, ATextWithoutEndMarksGetsAnEmptyIndex) {
    folder.Files.CloseAll();
    tools.MakeIndex();
    EXPECT_EQ(folder.Folder.Read("Data/Recipes Index.ind"), "");
}

TEST_F(AuthoringToolsTest, ReMakeAllCountsDeletedRecordsTooBuildsNothingAndBeeps) {
    int beeps = 0;
    tools.OnBeep = [&] { ++beeps; };
    test::Database own;
    own.AddRecipe("Mine", "{\\rtf1}");
    own.AddRecipe("", "   ");
    folder.WriteCustom(own);
    tools.ReMakeAll();
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(store.OriginalNumRecords, 2);
    EXPECT_EQ(store.TotalNumRecords, 4);
    EXPECT_EQ(store.TotalRecipes(), 4);
    EXPECT_EQ(folder.Folder.Read("Data/Custom Recipes.ydb"), own.Text);
}

TEST_F(AuthoringToolsTest, ReMakeAllCatDStoresTheDescriptionsAndBeeps) {
    int beeps = 0;
    tools.OnBeep = [&] { ++beeps; };
    folder.Folder.Write("Data/util/FISH DIRECTORY.rtf", TwoDescriptions);
    tools.ReMakeAllCatD();
    EXPECT_EQ(beeps, 1);
    store.OpenCategoryDescriptions();
    EXPECT_EQ(store.GetCatTitle(2), "Cod");
}

}  // namespace
}  // namespace larder
