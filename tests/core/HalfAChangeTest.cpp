// Half a change, in a run that goes on.

#include <filesystem>

#include "core/SwappedFixture.h"

namespace larder::test {
namespace {

// A write and what would take it back have both failed. Before the disk is well again, other files
// stand where the half of it was.
class HalfAChange : public SwappedFolder {
  protected:
    void LeaveHalfAnUpdate() {
        broken = true;
        torn = false;
        FailWriting(session, filenumber::CustomRecipes, 1, "XXXX");
        EXPECT_FALSE(session.Update(3, "Dab", "{}"));
        Mend();
    }
    void LeaveHalfAnAdd() {
        broken = true;
        torn = false;
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
    WriteOwn(left, own.Index() + IndexBytes({40, 41}));
    ExpectUntouched("Custom Recipes");
    WriteOwn(left, index);
    ExpectTheNextIsAdded(before);
}

TEST_F(HalfAChange, ThatAddsWaitsForItsIndex) {
    LeaveHalfAnAdd();
    const std::string index = folder.Read("Data/Custom Recipes Index.ind");
    folder.Delete("Data/Custom Recipes Index.ind");
    ASSERT_FALSE(session.Add("Next", "{}"));
    EXPECT_TRUE(session.Messages.back().ends_with("Custom Recipes Index.ind\nFile not found"))
        << session.Messages.back();
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

TEST_F(HalfAChange, IsNotTakenBackInATextThatIsShorter) {
    for (const bool adds : {true, false}) {
        SCOPED_TRACE(adds);
        adds ? LeaveHalfAnAdd() : LeaveHalfAnUpdate();
        const std::string left = Own();
        const std::string index = folder.Read("Data/Custom Recipes Index.ind");
        WriteOwn(own.Text.substr(0, own.Text.size() - 3), own.Index());
        ExpectUntouched("Custom Recipes.ydb");
        WriteOwn(left, index);
        EXPECT_TRUE(session.Update(3, "Eel", "{\\rtf1 Eel}"));
        EXPECT_EQ(Own(), own.Text);
    }
}

TEST_F(HalfAChange, LeavesNoFileOpenToBeWrittenWhenItIsRefused) {
    LeaveHalfAnUpdate();
    const std::string left = Own();
    WriteOwn(left + "more", own.Index());
    session.Store.OpenYDB_IND_Normal();
    EXPECT_NE(Ignoring([&] {
                  session.Files.Seek(21, 1);
                  session.Files.Write(21, "x");
              }),
              0);
    EXPECT_EQ(Own(), left + "more");
}

TEST_F(HalfAChange, ThatIsCompleteLeavesNoFileOpenToBeWrittenWhenItsFlushFails) {
    const std::string bytes = "Dab\r\n";
    RecordChange change;
    change.TextLength = static_cast<std::int64_t>(own.Text.size());
    change.IndexLength = 12;
    change.Position = 1;
    change.Old = own.Text.substr(0, bytes.size());
    change.SetNew(bytes);
    session.Files.CloseAll();
    folder.Write("Data/Recipes Temp.ydb", JournalOf(change));
    Overwrite(1, bytes);
    const std::string text = Own();
    session.Files.Watch([](const NumberedFiles::Access& access) {
        if (access.Number == 21 && access.Kind == "flush") {
            throw Failure(failure::DeviceError, "disk");
        }
    });
    session.Store.OpenYDB_IND_Normal();
    EXPECT_TRUE(folder.Exists("Data/Recipes Temp.ydb"));
    EXPECT_NE(Ignoring([&] {
                  session.Files.Seek(21, 1);
                  session.Files.Write(21, "x");
              }),
              0);
    EXPECT_EQ(Own(), text);
}

TEST_F(HalfAChange, ThatAnotherRunHasTakenBackHindersNothing) {
    for (const bool adds : {true, false}) {
        SCOPED_TRACE(adds);
        adds ? LeaveHalfAnAdd() : LeaveHalfAnUpdate();
        StoreSession(data).Start();
        ASSERT_FALSE(folder.Exists("Data/Recipes Temp.ydb"));
        EXPECT_EQ(ReadIn(session), before);
        EXPECT_TRUE(session.Update(4, "Cod", "{\\rtf1 Cod}"));
    }
    ExpectTheNextIsAdded(before);
}

// Another run may find the change complete, though this one could not flush it.
TEST_F(HalfAChange, ThatAnotherRunHasKeptHindersNothing) {
    broken = true;
    const std::string padding(own.Text.find("Cod") - 9, ' ');  // "Dab", "{}" and two line ends
    FailWriting(session, filenumber::CustomRecipes, 1, "Dab\r\n{}" + padding + "\r\n");
    EXPECT_FALSE(session.Update(3, "Dab", "{}"));
    Mend();
    StoreSession other(data);
    other.Start();
    ASSERT_FALSE(folder.Exists("Data/Recipes Temp.ydb"));
    const Recipes kept = ReadIn(other);
    ASSERT_EQ(kept[2].Title, "Dab");
    EXPECT_EQ(ReadIn(session), kept);
    EXPECT_TRUE(session.Update(4, "Cod", "{\\rtf1 Cod}"));
}

TEST_F(HalfAChange, WhoseJournalIsGoneStaysAsItIsAndIsReadAsItWas) {
    LeaveHalfAnUpdate();
    folder.Delete("Data/Recipes Temp.ydb");
    ExpectUntouched("Recipes Temp.ydb");
    EXPECT_EQ(ReadIn(session), before);
}

TEST_F(HalfAChange, ThatWasTakenBackInACopyIsTakenBackInTheOriginalToo) {
    for (const bool adds : {true, false}) {
        SCOPED_TRACE(adds);
        adds ? LeaveHalfAnAdd() : LeaveHalfAnUpdate();
        std::filesystem::copy(data, folder.Native("Copy"));
        GoAway();
        std::filesystem::remove(data);
        std::filesystem::rename(folder.Native("Copy"), data);
        EXPECT_EQ(ReadIn(session), before);
        session.Files.CloseAll();
        ComeBack();
        EXPECT_EQ(ReadIn(session), before);
        EXPECT_EQ(Own(), own.Text);
    }
    ExpectTheNextIsAdded(before);
}

TEST_F(HalfAChange, ThatOverwritesNeedsNoIndex) {
    for (const bool empty : {false, true}) {
        SCOPED_TRACE(empty);
        LeaveHalfAnUpdate();
        folder.Delete("Data/Custom Recipes Index.ind");
        if (empty) folder.Write("Data/Custom Recipes Index.ind", "");
        EXPECT_NO_THROW(StoreSession(data).Writer.Journal.SettleLastRun());
        EXPECT_EQ(Own(), own.Text);
        folder.Write("Data/Custom Recipes Index.ind", own.Index());
        session.Files.CloseAll();
        EXPECT_EQ(ReadIn(session), before);
        EXPECT_TRUE(session.Update(4, "Cod", "{\\rtf1 Cod}"));
    }
}

// By an index that is one shorter than the one that was counted, 4 would be the last recipe.
TEST_F(HalfAChange, ThatIsTakenBackLetsNoOlderIndexPass) {
    for (const bool adds : {true, false}) {
        SCOPED_TRACE(adds);
        adds ? LeaveHalfAnAdd() : LeaveHalfAnUpdate();
        session.Store.OpenYDB_IND_Normal();
        session.Files.CloseAll();
        ASSERT_EQ(Own(), own.Text);
        WriteOwn(own.Text, own.Index().substr(0, 8));
        ExpectUntouched("Custom Recipes Index.ind");
        EXPECT_EQ(session.Store.TotalNumRecords, 5);
        WriteOwn(own.Text, own.Index());
        EXPECT_TRUE(session.Update(3, "Eel", "{\\rtf1 Eel}"));
    }
}

TEST_F(HalfAChange, ThatWasCountedLetsAShorterIndexPassOnce) {
    LeaveHalfOfANewOne();
    StoreSession next(data);
    next.Files.Watch([this](const NumberedFiles::Access& access) {
        const bool journal = access.Path.ends_with("Recipes Temp.ydb");
        if (broken && journal && access.Kind == "read") throw Failure(failure::DeviceError, "disk");
    });
    broken = true;
    StartAsFarAsItGoes(next);
    ASSERT_EQ(next.Store.TotalNumRecords, 6);
    broken = false;
    EXPECT_TRUE(next.Update(3, "Eel", "{\\rtf1 Eel}"));
    EXPECT_EQ(next.Store.TotalNumRecords, 5);
    next.Files.CloseAll();
    WriteOwn(own.Text, own.Index().substr(0, 8));
    EXPECT_FALSE(next.Update(4, "", ""));
    EXPECT_EQ(Own(), own.Text);
    EXPECT_EQ(next.Store.TotalNumRecords, 5);
}

TEST_F(HalfAChange, WhoseJournalCannotBeReadForAWhileIsTakenBackThen) {
    LeaveHalfAnUpdate();
    session.Files.Watch([this](const NumberedFiles::Access& access) {
        const bool journal = access.Path.ends_with("Recipes Temp.ydb");
        if (broken && journal && access.Kind == "read") throw Failure(failure::DeviceError, "disk");
    });
    broken = true;
    EXPECT_FALSE(session.Update(4, "Dab", "{}"));
    broken = false;
    session.Messages.clear();
    ExpectTheNextIsAdded(before);
}

TEST_F(HalfAChange, OfOtherFilesIsForgottenBesideAnyIndex) {
    session.Files.CloseAll();
    for (const bool index : {true, false}) {
        SCOPED_TRACE(index);
        LeaveHalfOfANewOne();
        Database others;
        others.AddRecipe("One", "{\\rtf1 " + std::string(200, 'x') + "}");
        WriteOwn(others.Text, others.Index());
        if (!index) folder.Delete("Data/Custom Recipes Index.ind");
        StoreSession next(data);
        EXPECT_NO_THROW(next.Writer.Journal.SettleLastRun());
        EXPECT_FALSE(folder.Exists("Data/Recipes Temp.ydb"));
        EXPECT_EQ(Own(), others.Text);
    }
}

// After a flush that has failed, what was put back is written again. Once is enough.
TEST_F(HalfAChange, ThatIsOnTheDiskAtLastIsNotWrittenAgainByTheNext) {
    LeaveHalfAnUpdate();
    broken = true;
    session.Files.Watch([this](const NumberedFiles::Access& access) {
        if (broken && access.Number == 21 && access.Kind == "flush") {
            throw Failure(failure::DeviceError, "disk");
        }
    });
    session.Store.OpenYDB_IND_Normal();
    broken = false;
    session.Store.OpenYDB_IND_Normal();
    int writes = 0;
    session.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Number != 21 || access.Kind != "write") return;
        ++writes;
        throw Failure(failure::DiskFull, "disk");
    });
    EXPECT_FALSE(session.Update(4, "Dab", "{}"));
    EXPECT_EQ(writes, 1);
    EXPECT_FALSE(folder.Exists("Data/Recipes Temp.ydb")) << "nothing was to be put back";
}

}  // namespace
}  // namespace larder::test
