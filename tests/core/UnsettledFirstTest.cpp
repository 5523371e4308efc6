#include <filesystem>

#include "core/UnsettledFixture.h"

namespace larder::test {
namespace {

// A first recipe, whose text comes into being with it. Neither text nor index can be flushed or
// cut.
class UnsettledFirst : public UnsettledReads {
  protected:
    UnsettledFirst() {
        session.Files.CloseAll();
        folder.Delete("Data/Custom Recipes.ydb");
        folder.Write("Data/Custom Recipes Index.ind", "");
        session.Start();
        session.Files.Watch([this](const NumberedFiles::Access& access) {
            const bool users = access.Number == 21 || access.Number == 22;
            const bool fails = access.Kind == "flush" || access.Kind == "truncate";
            if (broken && users && fails) throw Failure(failure::DeviceError, "disk");
        });
        EXPECT_FALSE(session.Add("New", "{}"));
        session.Files.CloseAll();
        broken = false;
    }
    std::string OwnIndex() const { return folder.Read("Data/Custom Recipes Index.ind"); }
    // The one recipe of the user's that there is.
    void ExpectOnly(StoreSession& run, const StoredRecipe& recipe) {
        EXPECT_EQ(ReadIn(run), Recipes({before[0], before[1], recipe}));
        EXPECT_EQ(RecipesIn(BytesOf(folder.Native("Data"))), ReadIn(run));
        EXPECT_FALSE(HasTemporaries(BytesOf(folder.Native("Data"))));
    }
};

TEST_F(UnsettledFirst, IsNotGivenUpWhileItsTextIsMissing) {
    const std::string text = Own();
    ASSERT_EQ(text, "New\r\n{}\r\n");
    ASSERT_EQ(OwnIndex(), IndexBytes({1}));
    folder.Delete("Data/Custom Recipes.ydb");
    EXPECT_FALSE(session.Add("Other", "{}"));
    EXPECT_NE(session.Messages.back().find("Custom Recipes.ydb"), std::string::npos);
    StoreSession next(folder.Native("Data"));
    StartAsFarAsItGoes(next);
    EXPECT_FALSE(next.Add("Other", "{}"));
    EXPECT_EQ(OwnIndex(), IndexBytes({1}));
    EXPECT_FALSE(folder.Exists("Data/Custom Recipes.ydb"));
    EXPECT_TRUE(folder.Exists("Data/Recipes Temp.ydb"));
    folder.Write("Data/Custom Recipes.ydb", text);
    StoreSession last(folder.Native("Data"));
    last.Start();
    ExpectOnly(last, {"New", "{}"});
}

TEST_F(UnsettledFirst, IsTakenBackByTheNextWriteOfTheSameRun) {
    EXPECT_TRUE(session.Add("Other", "{}"));
    EXPECT_EQ(session.Store.TotalNumRecords, 3);
    ExpectOnly(session, {"Other", "{}"});
}

TEST_F(UnsettledFirst, IsNotForgottenWhileAnEmptyFolderIsInThePlaceOfItsOwn) {
    const std::filesystem::path data = folder.Native("Data");
    std::filesystem::rename(data, folder.Native("Away"));
    std::filesystem::create_directory(data);
    for (int i = 0; i < 2; ++i)
        EXPECT_FALSE(session.Add("Other", "{}"));
    std::filesystem::remove_all(data);
    std::filesystem::rename(folder.Native("Away"), data);
    broken = true;  // nothing is taken back as yet
    session.Files.CloseAll();
    session.Store.OpenYDB_IND_Normal();
    session.Store.RecalculateTotalRecipes();
    EXPECT_EQ(ReadIn(session), Recipes({before[0], before[1]}));
    broken = false;
    EXPECT_TRUE(session.Add("Other", "{}"));
    ExpectOnly(session, {"Other", "{}"});
}

TEST_F(UnsettledFirst, WithNothingWrittenIsForgottenWithItsText) {
    folder.Delete("Data/Custom Recipes.ydb");
    folder.Write("Data/Custom Recipes Index.ind", "");
    session.Files.Open(22, session.Paths.strCustomRecipesIndexFile, FileMode::Random);  // a reader
    EXPECT_TRUE(session.Add("Other", "{}"));
    ExpectOnly(session, {"Other", "{}"});
}

TEST_F(UnsettledFirst, WithLessThanAnEntryWrittenIsForgottenByTheNextStart) {
    folder.Delete("Data/Custom Recipes.ydb");
    folder.Write("Data/Custom Recipes Index.ind", "abc");
    StoreSession next(folder.Native("Data"));
    next.Start();
    EXPECT_TRUE(next.Add("Other", "{}"));
    ExpectOnly(next, {"Other", "{}"});
}

TEST_F(UnsettledFirst, WithNothingWrittenIsForgottenByTheNextStart) {
    folder.Delete("Data/Custom Recipes.ydb");
    folder.Delete("Data/Custom Recipes Index.ind");
    StoreSession next(folder.Native("Data"));
    next.Start();
    EXPECT_TRUE(next.Add("Other", "{}"));
    ExpectOnly(next, {"Other", "{}"});
}

}  // namespace
}  // namespace larder::test
