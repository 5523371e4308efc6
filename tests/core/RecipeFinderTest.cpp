#include "search/RecipeFinder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Failure.h"
#include "store/FileNumbers.h"
#include "support/SearchScene.h"

namespace larder {
namespace {

using Log = std::vector<std::string>;

// Twenty stock recipes and four own ones, 21 to 24, of which 23 is deleted.
class RecipeFinderTest : public testing::Test {
  protected:
    void SetUp() override {
        std::vector<std::string> stock;
        for (int i = 1; i <= 20; ++i)
            stock.push_back("Stock " + std::to_string(i));
        scene.Write(stock, {"My Salmon and Dill", "Salmons", "", "Dill, salmon"});
        scene.WriteIndex({{"butter", "15"},
                          {"cod", "5 15"},
                          {"dill", "2 4 5 9"},
                          {"salmon", "1 2 5 9 12"},
                          {"trout", "7 5 12"}});
    }
    // The list on the screen before the search.
    void ShowOnly(const std::string& numbers) {
        scene.List.StringToNums(numbers);
        scene.Only = true;
    }

    test::SearchScene scene;
};

TEST_F(RecipeFinderTest, AWordGivesItsStockRecipesAndThenTheOwn) {
    EXPECT_EQ(scene.Find("salmon"), " 1 2 5 9 12 21 24 ");
    EXPECT_EQ(scene.Finder.lngRecipesFound, 7);
    EXPECT_EQ(scene.Log, (Log{"hide guide art", "result, found"}));
}

TEST_F(RecipeFinderTest, EveryWordMustMatch) {
    EXPECT_EQ(scene.Find("salmon dill"), " 2 5 9 21 24 ");
    EXPECT_EQ(scene.Find("dill salmon trout"), " 5 ");
    EXPECT_EQ(scene.Finder.lngRecipesFound, 1) << "of the last search alone";
}

TEST_F(RecipeFinderTest, SalmonAndDillGivesTheStockRecipesOfSalmonCommaDill) {
    EXPECT_EQ(scene.Find("salmon and dill"), " 2 5 9 21 ");
    EXPECT_EQ(scene.Find("Salmon, dill"), " 2 5 9 21 24 ");
}

TEST_F(RecipeFinderTest, AndInCapitalsFindsNoStockRecipe) {
    EXPECT_EQ(scene.Find("salmon AND dill"), " 21 ");
    EXPECT_EQ(scene.Find("salmon And dill"), " 21 ");
}

TEST_F(RecipeFinderTest, OrAndNotAreNoOperators) {
    EXPECT_EQ(scene.Find("salmon or trout"), " 5 12 ");
    EXPECT_EQ(scene.Find("salmon not trout"), "");
}

TEST_F(RecipeFinderTest, StopWordsCountInOwnRecipes) {
    EXPECT_EQ(scene.Find("the dill"), " 2 4 5 9 ");
    EXPECT_EQ(scene.Find("and dill"), " 2 4 5 9 21 ");
}

TEST_F(RecipeFinderTest, ANumberIsNotFoundInsideALongerOne) {
    // 5 stands in " 15 " as a text only.
    EXPECT_EQ(scene.Find("butter dill"), "");
    EXPECT_EQ(scene.Find("butter cod"), " 15 ");
}

TEST_F(RecipeFinderTest, AWordThatNoRecipeHasFindsNothing) {
    EXPECT_EQ(scene.Find("salmon unicorn"), "");
    EXPECT_EQ(scene.Finder.lngRecipesFound, 0);
    EXPECT_EQ(scene.Log, (Log{"hide guide art", "result"}));
}

TEST_F(RecipeFinderTest, AllWordsAreLookedUpInOneWalk) {
    int walks = 0;
    scene.Data.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind == "open" && access.Number == filenumber::SearchYDB) ++walks;
    });
    EXPECT_EQ(scene.Find("dill and unicorn salmon trout"), "") << "no recipe has a unicorn";
    EXPECT_EQ(walks, 1);
    EXPECT_EQ(scene.Find("dill salmon trout"), " 5 ");
    EXPECT_EQ(walks, 2);
    EXPECT_EQ(scene.Find("my salmon dill"), " 21 ") << "own recipes are searched all the same";
    scene.Data.Files.Watch(nullptr);
}

TEST_F(RecipeFinderTest, TheOrderIsThatOfTheShortestTermAndOwnRecipesBehind) {
    EXPECT_EQ(scene.Find("trout salmon"), " 5 12 ");
    EXPECT_EQ(scene.Find("trout"), " 7 5 12 ");
}

TEST_F(RecipeFinderTest, OfEquallyShortTermsTheFirstGivesTheOrder) {
    scene.WriteIndex({{"eel", "3 4"}, {"ray", "4 3"}});
    EXPECT_EQ(scene.Find("eel ray"), " 3 4 ");
    EXPECT_EQ(scene.Find("ray eel"), " 4 3 ");
}

TEST_F(RecipeFinderTest, WordsAreFoundInWhateverCase) {
    EXPECT_EQ(scene.Find("SALMON Dill"), " 2 5 9 21 24 ");
}

TEST_F(RecipeFinderTest, OwnRecipesMatchWholeWords) {
    EXPECT_EQ(scene.Find("salmons"), " 22 ");
    EXPECT_EQ(scene.Log.back(), "result, found") << "though no stock recipe has the word";
}

TEST_F(RecipeFinderTest, DelimitersInTheQueryBecomeBlanksInPlace) {
    std::string query = "(salmon)-dill";
    scene.Finder.FindRecipes(query);
    EXPECT_EQ(query, " salmon  dill");
}

TEST_F(RecipeFinderTest, AnEmptyQueryDoesNothingAtAll) {
    scene.List.StringToNums(" 3 4 ");
    EXPECT_EQ(scene.Find(""), " 3 4 ");
    EXPECT_TRUE(scene.Log.empty());
}

TEST_F(RecipeFinderTest, StopWordsAloneLeaveTheListAsItIs) {
    scene.List.StringToNums(" 3 4 ");
    EXPECT_EQ(scene.Find("and the"), " 3 4 ");
    EXPECT_EQ(scene.Log, (Log{"hide guide art", "nothing to search"}));
    EXPECT_EQ(scene.TextsRead, 0);
    EXPECT_EQ(scene.Finder.lngRecipesFound, 0);
}

TEST_F(RecipeFinderTest, DelimitersAloneAreNoWord) {
    scene.List.StringToNums(" 3 4 ");
    EXPECT_EQ(scene.Find(" ,;- "), " 3 4 ");
    EXPECT_EQ(scene.Log, (Log{"hide guide art", "nothing to search"}));
}

TEST_F(RecipeFinderTest, ADeletedRecipeIsLeftOut) {
    scene.Write({"Cod", "", "Cod too"});
    scene.WriteIndex({{"cod", "1 2 3"}});
    EXPECT_EQ(scene.Find("cod"), " 1 3 ");
    EXPECT_EQ(scene.Finder.lngRecipesFound, 2);
}

TEST_F(RecipeFinderTest, ANumberBeyondTheBookIsLeftOut) {
    scene.WriteIndex({{"cod", "0 3 99 -4 99999999999 x 07 4"}});
    EXPECT_EQ(scene.Find("cod"), " 3 7 4 ");
}

TEST_F(RecipeFinderTest, NumbersOfTwoWordsAreComparedAsTheyAreWritten) {
    scene.WriteIndex({{"cod", "007 8 0009"}, {"eel", "7 8 0009"}});
    EXPECT_EQ(scene.Find("cod eel"), " 8 9 ");
}

TEST_F(RecipeFinderTest, OnlyTheListIsSearchedWhenAsked) {
    ShowOnly(" 2 3 5 21 22 ");
    EXPECT_EQ(scene.Find("salmon"), " 2 5 21 ");
    EXPECT_EQ(scene.TextsRead, 2);
}

TEST_F(RecipeFinderTest, TheLastStockRecipeOfALongListIsFoundBeforeItsOwnOnes) {
    ShowOnly(" 1 2 3 4 5 21 ");
    EXPECT_EQ(scene.Find("dill"), " 2 4 5 21 ") << "dill is the shortest term";
}

TEST_F(RecipeFinderTest, EachListIsCutByItself) {
    ShowOnly(" 2 5 21 22 ");
    EXPECT_EQ(scene.Find("salmon"), " 2 5 21 ");
    ShowOnly(" 2 9 21 24 ");
    EXPECT_EQ(scene.Find("salmon"), " 2 9 21 24 ");
}

TEST_F(RecipeFinderTest, AListWithoutOwnRecipesReadsNone) {
    ShowOnly(" 2 3 5 ");
    EXPECT_EQ(scene.Find("salmon"), " 2 5 ");
    EXPECT_EQ(scene.TextsRead, 0);
}

TEST_F(RecipeFinderTest, AListOfOwnRecipesAloneReadsThoseAlone) {
    ShowOnly(" 22 24 ");
    EXPECT_EQ(scene.Find("salmon"), " 24 ");
    EXPECT_EQ(scene.TextsRead, 2);
}

TEST_F(RecipeFinderTest, AnEmptyListStaysEmpty) {
    ShowOnly(" ");
    EXPECT_EQ(scene.Find("salmon"), "");
    EXPECT_EQ(scene.Log, (Log{"hide guide art", "nothing to search"}));
}

TEST_F(RecipeFinderTest, StopWordsAloneInAListKeepItsStockRecipes) {
    ShowOnly(" 2 3 21 24 ");
    EXPECT_EQ(scene.Find("and"), " 2 3 21 ");
}

TEST_F(RecipeFinderTest, TheFirstStockFavouriteNeverMatchesAWord) {
    scene.Favorites = true;
    ShowOnly(" 9 2 21 5 ");
    EXPECT_EQ(scene.Find("salmon"), " 9 2 5 21 ") << "the favourites are the shortest term";
    ShowOnly(" 9 2 21 5 1 3 4 6 7 8 10 ");
    EXPECT_EQ(scene.Find("salmon dill"), " 2 5 21 ") << "here dill is, and 9 is lost";
}

TEST_F(RecipeFinderTest, FavouritesKeepTheOrderOfTheUser) {
    scene.Favorites = true;
    ShowOnly(" 12 24 9 21 2 ");
    EXPECT_EQ(scene.Find("salmon"), " 12 9 2 24 21 ");
}

TEST_F(RecipeFinderTest, TheLastOfTheStockAmongTheFavouritesIsNoOwnRecipe) {
    scene.WriteIndex({{"cod", "12 20"}});
    scene.Favorites = true;
    ShowOnly(" 12 20 ");
    EXPECT_EQ(scene.Find("cod"), " 12 20 ");
    EXPECT_EQ(scene.TextsRead, 0);
}

TEST_F(RecipeFinderTest, FavouritesThatAreAllOwnReadThoseAlone) {
    scene.Favorites = true;
    ShowOnly(" 24 22 ");
    EXPECT_EQ(scene.Find("salmon"), " 24 ");
    EXPECT_EQ(scene.TextsRead, 2);
}

TEST_F(RecipeFinderTest, AFailedLookUpCountsAsNoWordOfTheQuery) {
    scene.WriteIndexFiles("dill\r\n2\r\n", 4 * 5);  // says five words, holds one
    EXPECT_EQ(scene.Find("dill zander"), " 2 ");
}

TEST_F(RecipeFinderTest, AfterAFailedLookUpTheIndexIsOutOfReach) {
    scene.WriteIndexFiles("dill\r\n2\r\n", 4 * 5);
    scene.List.StringToNums(" 3 ");
    EXPECT_EQ(scene.Find("zander"), " 3 ");
    EXPECT_EQ(scene.Find("dill"), " 3 ");
    EXPECT_EQ(scene.Log.back(), "nothing to search");
    EXPECT_TRUE(scene.Data.Files.IsOpen(filenumber::SearchYDB));
}

TEST_F(RecipeFinderTest, WithoutAnIndexTheListStaysAndNothingIsSaid) {
    scene.Data.Folder.Delete("Data/Search.ydb");
    scene.Data.Folder.Delete("Data/Search.ind");
    scene.List.StringToNums(" 3 ");
    EXPECT_EQ(scene.Find("salmon"), " 3 ");
}

TEST_F(RecipeFinderTest, AnOwnRecipeThatCannotBeReadIsNoHit) {
    // The second record begins behind the end of the file.
    scene.Data.Folder.Write("Data/Custom Recipes Index.ind", test::IndexBytes({1, 90000, 1}));
    scene.Store.OpenYDB_IND_Normal();
    scene.Store.RecalculateTotalRecipes();
    const std::string found = scene.Find("salmon");
    EXPECT_EQ(found.find(" 22 "), std::string::npos) << found;
    EXPECT_NE(found.find(" 1 2 5 9 12 "), std::string::npos) << found;
}

// The index lies on the hard disk and knows of recipes whose disc is out of its drive.
class FinderWithoutDisc : public RecipeFinderTest {
  protected:
    void TakeAway(int number) {
        scene.Data.Files.Watch([this, number](const NumberedFiles::Access& access) {
            const bool touches = access.Kind == "read" || access.Kind == "open";
            if (gone && touches && access.Number == number) {
                throw Failure(failure::PathAccess, "test");
            }
        });
    }
    void TearDown() override { scene.Data.Files.Watch(nullptr); }
    std::size_t Asked() const { return scene.Disc.Asked.size(); }

    bool gone = true;
};

TEST_F(FinderWithoutDisc, OneCancelCountsForTheWholeSearch) {
    TakeAway(filenumber::Recipes);
    EXPECT_EQ(scene.Find("salmon"), " 1 2 5 9 12 21 24 ");
    EXPECT_EQ(Asked(), 1U);
    EXPECT_EQ(scene.List.Peek(5)->Text, "No Disk Error");
    EXPECT_EQ(scene.List.Peek(6)->Text, "My Salmon and Dill") << "what can be read is read";
}

TEST_F(FinderWithoutDisc, OneCancelCountsForTheOwnRecipesToo) {
    TakeAway(filenumber::CustomRecipes);
    EXPECT_EQ(scene.Find("salmon"), " 1 2 5 9 12 ");
    EXPECT_EQ(Asked(), 1U);
    EXPECT_EQ(scene.TextsRead, 4) << "each is tried";
}

TEST_F(FinderWithoutDisc, OkWithTheDiscInItsDriveReadsOn) {
    TakeAway(filenumber::Recipes);
    scene.Disc.ThenOk([this] { gone = false; });
    EXPECT_EQ(scene.Find("salmon"), " 1 2 5 9 12 21 24 ");
    EXPECT_EQ(Asked(), 1U);
    EXPECT_EQ(scene.List.Peek(1)->Text, "Stock 1");
}

TEST_F(FinderWithoutDisc, TheNextSearchAsksAgain) {
    TakeAway(filenumber::Recipes);
    scene.Find("salmon");
    scene.Find("dill");
    EXPECT_EQ(Asked(), 2U);
}

TEST_F(FinderWithoutDisc, WhatTheUserOpensMeanwhileAsksByItself) {
    TakeAway(filenumber::Recipes);
    std::size_t before = 0;
    scene.OnEvents = [&] {
        if (scene.List.Count() != 2) return;
        before = Asked();
        scene.Store.GetRecipeRTF(3);
        EXPECT_EQ(Asked(), before + 1);
    };
    scene.Find("salmon");
    EXPECT_EQ(before, 1U);
    EXPECT_EQ(Asked(), 2U) << "the search goes on without another question";
}

TEST_F(RecipeFinderTest, EventsRunAfterEveryNumber) {
    int times = 0;
    scene.OnEvents = [&] { ++times; };
    scene.Find("salmon");
    EXPECT_EQ(times, 5 + 4);
}

TEST_F(RecipeFinderTest, ANewListEndsTheSearchAtOnce) {
    scene.OnEvents = [&] {
        if (scene.List.Count() == 2) scene.List.ClearAll();
    };
    EXPECT_EQ(scene.Find("salmon"), "");
    EXPECT_EQ(scene.Log, (Log{"hide guide art"})) << "the screen is somebody else's";
    EXPECT_EQ(scene.TextsRead, 0);
}

TEST_F(RecipeFinderTest, ACancelledSearchKeepsWhatItHasFound) {
    scene.OnEvents = [&] {
        if (scene.List.Count() == 2) scene.Ticket.Cancel();
    };
    EXPECT_EQ(scene.Find("salmon"), " 1 2 ");
    EXPECT_EQ(scene.Log, (Log{"hide guide art", "cancelled"}));
    EXPECT_EQ(scene.TextsRead, 0);
}

TEST_F(RecipeFinderTest, ASearchCancelledAmongOwnRecipesStopsThere) {
    scene.OnEvents = [&] {
        if (scene.TextsRead == 1) scene.Ticket.Cancel();
    };
    EXPECT_EQ(scene.Find("salmon"), " 1 2 5 9 12 21 ");
    EXPECT_EQ(scene.TextsRead, 1);
    EXPECT_EQ(scene.Log, (Log{"hide guide art", "cancelled"}));
}

TEST_F(RecipeFinderTest, ANewListEndsTheSearchThoughItsTicketIsTheSame) {
    scene.Ticket.Cancel();
    scene.OnEvents = [&] {
        if (scene.List.NumsToString() != " 1 2 ") return;
        const std::int16_t before = scene.Ticket.Value();
        scene.Ticket.Cancel();
        scene.List.ClearAll();
        ASSERT_EQ(scene.Ticket.Value(), before) << "or this would show nothing";
        scene.List.AddRecipe(7);
    };
    EXPECT_EQ(scene.Find("salmon"), " 7 ");
    EXPECT_EQ(scene.Log, (Log{"hide guide art"}));
    EXPECT_EQ(scene.TextsRead, 0);
}

TEST_F(RecipeFinderTest, ANewListAmongOwnRecipesEndsTheSearchThoughItsTicketIsTheSame) {
    scene.Ticket.Cancel();
    scene.OnEvents = [&] {
        if (scene.TextsRead != 1) return;
        scene.Ticket.Cancel();
        scene.List.ClearAll();
        scene.List.AddRecipe(7);
    };
    EXPECT_EQ(scene.Find("salmon"), " 7 ");
    EXPECT_EQ(scene.Log, (Log{"hide guide art"}));
    EXPECT_EQ(scene.TextsRead, 1);
}

TEST_F(RecipeFinderTest, ACancellationAfterANewListLeavesThatListAlone) {
    scene.OnEvents = [&] {
        if (scene.List.Count() != 2) return;
        scene.List.ClearAll();
        scene.Ticket.Cancel();
    };
    EXPECT_EQ(scene.Find("salmon"), "");
    EXPECT_EQ(scene.Log, (Log{"hide guide art"})) << "the list is somebody else's";
}

TEST_F(RecipeFinderTest, ASearchWithinASearchEndsTheOuterOne) {
    bool nested = false;
    scene.OnEvents = [&] {
        if (nested) return;
        nested = true;
        scene.Find("trout");
    };
    EXPECT_EQ(scene.Find("salmon"), " 7 5 12 ");
    EXPECT_EQ(scene.Log, (Log{"hide guide art", "hide guide art", "result, found"}));
}

TEST_F(RecipeFinderTest, TheFilesOfTheIndexAreClosedAfterASearch) {
    scene.Find("salmon dill");
    EXPECT_FALSE(scene.Data.Files.IsOpen(filenumber::SearchYDB));
    EXPECT_FALSE(scene.Data.Files.IsOpen(filenumber::SearchIND));
}

TEST_F(RecipeFinderTest, OwnRecipesAreReturnedAsTheirNumbers) {
    EXPECT_EQ(scene.Finder.FindInCustomRecipes("salmon", ""), " 21 24 ");
    EXPECT_EQ(scene.Finder.FindInCustomRecipes("salmon", " 24 22 "), " 24 ");
    EXPECT_EQ(scene.Finder.FindInCustomRecipes("unicorn", ""), "");
    EXPECT_EQ(scene.Finder.FindInCustomRecipes("", ""), "");
    EXPECT_EQ(scene.Finder.FindInCustomRecipes("salmon", " "), "");
}

TEST_F(RecipeFinderTest, AnOwnNumberBeyondTheBookEndsTheWalk) {
    EXPECT_EQ(scene.Finder.FindInCustomRecipes("salmon", " 21 99 24 "), " 21 ");
}

}  // namespace
}  // namespace larder
