// What happens in a run whose data folder, or a file of it, is another one than at its start: the
// medium has left its mount point, or a copy was put in its place.

#include <filesystem>

#include "core/UnsettledFixture.h"

namespace larder::test {
namespace {

class SwappedFolder : public UnsettledReads {
  protected:
    SwappedFolder() { broken = false; }

    // An empty folder in the place of the real one, and the real one again.
    void GoAway() const {
        std::filesystem::rename(data, folder.Native("Away"));
        std::filesystem::create_directory(data);
    }
    void ComeBack() {
        std::filesystem::remove_all(data);
        std::filesystem::rename(folder.Native("Away"), data);
        session.Disc.Asked.clear();  // for the recipes that were not there
    }
    // Recipe 3 becomes longer, and the index of the new text cannot take its place.
    void RewriteTheText() {
        broken = true;
        RefuseRenameTo(session, "Custom Recipes Index.ind");
        EXPECT_TRUE(session.Update(3, rewritten[2].Title, rewritten[2].Body));
        session.Files.CloseAll();
    }
    void ExpectTheNextIsAdded(Recipes expected) {
        session.Messages.clear();
        EXPECT_TRUE(session.Add("New", "{}"));
        expected.push_back({"New", "{}"});
        EXPECT_EQ(session.Store.TotalNumRecords, static_cast<std::int32_t>(expected.size()));
        EXPECT_EQ(ReadIn(session), expected);
        EXPECT_EQ(RecipesIn(BytesOf(data)), expected);
    }

    const std::filesystem::path data = folder.Native("Data");
    const Recipes rewritten = [this] {
        Recipes recipes = before;
        recipes[2] = {"Conger", "{\\rtf1 Conger}"};
        return recipes;
    }();
};

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

// A write and what would take it back have both failed. Before the disk is well again, other files
// stand where the half of it was.
class HalfAChange : public SwappedFolder {
  protected:
    void LeaveHalfAnUpdate() {
        broken = true;
        FailWriting(session, filenumber::CustomRecipes, 1, "XXXX");
        EXPECT_FALSE(session.Update(3, "Dab", "{}"));
        Mend();
    }
    void LeaveHalfAnAdd() {
        broken = true;
        FailWriting(session, filenumber::CustomRecipes, own.Text.size() + 1, "New\r\n");
        EXPECT_FALSE(session.Add("New", "{\\rtf1 new}"));
        Mend();
    }
    void Mend() {
        broken = false;
        session.Files.CloseAll();
        session.Messages.clear();
    }
    void WriteOwn(const std::string& text, const std::string& index) const {
        folder.Write("Data/Custom Recipes.ydb", text);
        folder.Write("Data/Custom Recipes Index.ind", index);
    }
    static Database Others(int recipes) {
        Database others;
        for (int i = 1; i <= recipes; ++i)
            others.AddRecipe("Recipe " + std::to_string(i), "{\\rtf1 of somebody else}");
        return others;
    }
    // Neither a reader nor a writer changes what is there. Both writers tell, the one that adds
    // with `name`.
    void ExpectUntouched(const std::string& name) {
        const FolderBytes there = BytesOf(data);
        session.Messages.clear();
        for (std::int32_t i = 1; i <= 5; ++i)
            session.Store.GetRecipeTitle(i);
        EXPECT_FALSE(session.Update(4, "Dab", "{}"));
        EXPECT_FALSE(session.Add("Next", "{}"));
        session.Files.CloseAll();
        EXPECT_EQ(BytesOf(data), there);
        ASSERT_EQ(session.Messages.size(), 2U);
        EXPECT_NE(session.Messages.back().find(name), std::string::npos) << session.Messages.back();
    }
};

TEST_F(HalfAChange, IsNotTakenBackInAnotherFolder) {
    LeaveHalfAnUpdate();
    GoAway();
    folder.Write("Data/Recipes.ydb", stock.Text);
    folder.Write("Data/Recipes Index.ind", stock.Index());
    WriteOwn(Others(3).Text, Others(3).Index());
    ExpectUntouched("Recipes Temp.ydb");
    ComeBack();
    EXPECT_EQ(ReadIn(session), before);
    ExpectTheNextIsAdded(before);
}

TEST_F(HalfAChange, IsNotTakenBackByTheJournalOfAnother) {
    LeaveHalfAnUpdate();
    const std::string left = Own();
    const std::string journal = folder.Read("Data/Recipes Temp.ydb");
    RecordChange other = *ChangeIn(journal);
    other.Old[0] = 'e';
    folder.Write("Data/Recipes Temp.ydb", JournalOf(other));
    ExpectUntouched("Recipes Temp.ydb");
    folder.Write("Data/Recipes Temp.ydb", journal);
    EXPECT_EQ(Own(), left);
    ExpectTheNextIsAdded(before);
}

TEST_F(HalfAChange, IsNotTakenBackInATextOfAnotherLength) {
    LeaveHalfAnUpdate();
    const std::string left = Own();
    WriteOwn(Others(3).Text, own.Index());
    ExpectUntouched("Custom Recipes.ydb");
    WriteOwn(left, own.Index());
    ExpectTheNextIsAdded(before);
}

TEST_F(HalfAChange, ThatAddsIsNotCutOffFromFilesThatHaveMoreOrLess) {
    LeaveHalfAnAdd();
    const std::string left = Own();
    const std::string index = folder.Read("Data/Custom Recipes Index.ind");
    for (const int recipes : {0, 1, 6}) {
        SCOPED_TRACE(recipes);
        WriteOwn(Others(recipes).Text, Others(recipes).Index());
        ExpectUntouched("Custom Recipes");
    }
    WriteOwn(left, own.Index().substr(0, 8));
    ExpectUntouched("Custom Recipes Index.ind");
    WriteOwn(left, index);
    ExpectTheNextIsAdded(before);
}

TEST_F(HalfAChange, ThatAddsWaitsForItsIndex) {
    LeaveHalfAnAdd();
    const std::string index = folder.Read("Data/Custom Recipes Index.ind");
    folder.Delete("Data/Custom Recipes Index.ind");
    ASSERT_FALSE(session.Add("Next", "{}"));
    EXPECT_NE(session.Messages.back().find("Custom Recipes Index.ind"), std::string::npos);
    folder.Write("Data/Custom Recipes Index.ind", index);
    session.Files.CloseAll();
    ExpectTheNextIsAdded(before);
}

TEST_F(HalfAChange, ThatAddsWaitsForItsIndexAtAStartToo) {
    LeaveHalfOfANewOne();
    const std::string left = Own();
    const std::string index = folder.Read("Data/Custom Recipes Index.ind");
    folder.Delete("Data/Custom Recipes Index.ind");
    for (int i = 0; i < 2; ++i) {  // the second finds the empty one that readers have made
        StoreSession next(data);
        StartAsFarAsItGoes(next);
        EXPECT_FALSE(next.Add("Next", "{}"));
        ASSERT_FALSE(next.Messages.empty());
        EXPECT_NE(next.Messages.back().find("Custom Recipes Index.ind"), std::string::npos);
    }
    EXPECT_EQ(Own(), left);
    folder.Write("Data/Custom Recipes Index.ind", index);
    StoreSession last(data);
    last.Start();
    EXPECT_EQ(ReadIn(last), before);
    EXPECT_EQ(RecipesIn(BytesOf(data)), before);
}

}  // namespace
}  // namespace larder::test
