// What happens in a run whose data folder, or a file of it, is another one than at its start: the
// medium has left its mount point, or a copy was put in its place.

#include <filesystem>

#include "core/SwappedFixture.h"

namespace larder::test {
namespace {

TEST_F(SwappedFolder, NothingIsAddedToAnEmptyOneInItsPlace) {
    GoAway();
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(session.Add("New", "{}"));
        EXPECT_FALSE(session.Update(3, "Dab", "{}"));
        session.Store.OpenYDB_IND_Normal();
    }
    EXPECT_EQ(session.Messages.size(), 6U);
    EXPECT_FALSE(folder.Exists("Data/Custom Recipes.ydb"));
    ComeBack();
    session.Files.CloseAll();
    EXPECT_EQ(ReadIn(session), before);
    ExpectTheNextIsAdded(before);
}

TEST_F(SwappedFolder, NoFirstRecipeIsAddedToAnEmptyOneInItsPlace) {
    session.Files.CloseAll();
    folder.Delete("Data/Custom Recipes.ydb");
    folder.Write("Data/Custom Recipes Index.ind", "");
    session.Start();
    GoAway();
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(session.Add("New", "{}"));
        session.Store.OpenYDB_IND_Normal();
    }
    EXPECT_FALSE(folder.Exists("Data/Custom Recipes.ydb"));
    ComeBack();
    session.Files.CloseAll();
    ExpectTheNextIsAdded({before[0], before[1]});
}

TEST_F(SwappedFolder, ItsCopyTakesTextAndEntryOfANewRecipe) {
    std::filesystem::rename(data, folder.Native("Away"));
    std::filesystem::copy(folder.Native("Away"), data);
    ExpectTheNextIsAdded(before);
    EXPECT_EQ(RecipesIn(BytesOf(folder.Native("Away"))), before);
}

TEST_F(SwappedFolder, NothingIsWrittenByAnOlderIndexThatIsPutBack) {
    session.Files.CloseAll();
    folder.Write("Data/Custom Recipes Index.ind", own.Index().substr(0, 8));
    EXPECT_FALSE(session.Add("New", "{}"));
    EXPECT_FALSE(session.Update(4, "Dab", "{}"));
    EXPECT_FALSE(session.Update(4, "", ""));
    EXPECT_FALSE(session.Update(4, "Dab", "{\\rtf1 Longer than the cod}"));
    ASSERT_EQ(session.Messages.size(), 4U);
    for (const std::string& message : session.Messages)
        EXPECT_TRUE(message.ends_with("Custom Recipes Index.ind\nBad record number")) << message;
    EXPECT_EQ(Own(), own.Text);
    folder.Write("Data/Custom Recipes Index.ind", own.Index());
    session.Files.CloseAll();
    ExpectTheNextIsAdded(before);
}

TEST_F(SwappedFolder, NothingIsWrittenByAStockOfAnotherLength) {
    session.Files.CloseAll();
    folder.Write("Data/Recipes Index.ind", stock.Index().substr(0, 4));
    EXPECT_FALSE(session.Add("New", "{}"));
    EXPECT_FALSE(session.Update(4, "", ""));
    ASSERT_EQ(session.Messages.size(), 2U);
    for (const std::string& message : session.Messages)
        EXPECT_TRUE(message.ends_with("\\Recipes Index.ind\nBad record number")) << message;
    EXPECT_EQ(Own(), own.Text);
    folder.Write("Data/Recipes Index.ind", stock.Index());
    session.Files.CloseAll();
    ExpectTheNextIsAdded(before);
}

TEST_F(SwappedFolder, AnEmptyOneIsNotCountedWhenTheRecipesAreToBeCountedAnew) {
    RewriteTheText();
    broken = false;
    session.Store.OpenYDB_IND_Normal();  // finishes it, so that the next write has to count
    session.Files.CloseAll();
    GoAway();
    session.Store.OpenYDB_IND_Normal();
    EXPECT_FALSE(session.Add("New", "{}"));
    EXPECT_FALSE(session.Update(2, "", ""));
    EXPECT_EQ(session.Store.TotalNumRecords, 5);
    ComeBack();
    session.Files.CloseAll();
    ExpectTheNextIsAdded(rewritten);
}

TEST_F(SwappedFolder, AnOlderIndexIsNotCountedWhenTheRecipesAreToBeCountedAnew) {
    RewriteTheText();
    broken = false;
    session.Store.OpenYDB_IND_Normal();  // finishes it, so that the next write has to count
    session.Files.CloseAll();
    const std::string text = Own();
    const std::string index = folder.Read("Data/Custom Recipes Index.ind");
    for (const std::size_t records : {1, 2}) {
        SCOPED_TRACE(records);
        folder.Write("Data/Custom Recipes Index.ind", index.substr(0, records * 4));
        EXPECT_FALSE(session.Update(3, "", ""));
        EXPECT_FALSE(session.Update(4, "", ""));
        EXPECT_FALSE(session.Add("New", "{}"));
        EXPECT_EQ(session.Store.TotalNumRecords, 5);
        EXPECT_EQ(Own(), text);
    }
    folder.Write("Data/Custom Recipes Index.ind", index);
    session.Files.CloseAll();
    ExpectTheNextIsAdded(rewritten);
}

TEST_F(SwappedFolder, AnEmptyOneDoesNotMakeARewrittenTextForgetItsIndex) {
    RewriteTheText();
    GoAway();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(session.Store.LookUpTitle(4).Is, TitleIs::Unreadable);
        EXPECT_FALSE(session.Update(4, "Dab", "{}"));
        session.Files.CloseAll();
    }
    EXPECT_EQ(session.Store.TotalNumRecords, 5);
    ComeBack();
    session.Files.CloseAll();
    EXPECT_EQ(ReadIn(session), rewritten);
    broken = false;
    session.Files.CloseAll();
    ExpectTheNextIsAdded(rewritten);
}

TEST_F(SwappedFolder, ItsCopyDoesNotMakeARewrittenTextForgetItsIndex) {
    std::filesystem::copy(data, folder.Native("Copy"));
    RewriteTheText();
    GoAway();
    std::filesystem::remove(data);
    std::filesystem::rename(folder.Native("Copy"), data);
    EXPECT_EQ(ReadIn(session), before);
    session.Files.CloseAll();
    ComeBack();
    EXPECT_EQ(ReadIn(session), rewritten);
    broken = false;
    session.Files.CloseAll();
    ExpectTheNextIsAdded(rewritten);
}

}  // namespace
}  // namespace larder::test
