#include "store/RecipeJournal.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "platform/Failure.h"
#include "support/DataFolder.h"
#include "support/PowerCut.h"
#include "support/StoreSession.h"
#include "support/StoredRecipes.h"
#include "support/TempFolder.h"
#include "support/Unprivileged.h"

namespace larder::test {
namespace {

// A start on a folder that an earlier run has left in the middle of a change.
class StartAfterACrash : public testing::Test {
  protected:
    StartAfterACrash() {
        own.AddRecipe("Eel", "{\\rtf1 Eel}");
        own.AddRecipe("Cod", "{\\rtf1 Cod}");
        stock.AddRecipe("Stock A", "{\\rtf1 A}");
        stock.AddRecipe("Stock B", "{\\rtf1 B}");
        stock.AddRecipe("Stock C", "{\\rtf1 C}");
        longer.AddRecipe("Conger", "{\\rtf1 Conger}");
        longer.AddRecipe("Cod", "{\\rtf1 Cod}");
        folder.Write("Data/Custom Recipes.ydb", own.Text);
        folder.Write("Data/Custom Recipes Index.ind", own.Index());
        folder.Write("Data/Recipes.ydb", stock.Text);
        folder.Write("Data/Recipes Index.ind", stock.Index());
    }

    void Start() { StoreSession(folder.Native("Data")).Start(); }
    FolderBytes Now() const { return BytesOf(folder.Native("Data")); }
    std::string Text() const { return folder.Read("Data/Custom Recipes.ydb"); }
    std::string Index() const { return folder.Read("Data/Custom Recipes Index.ind"); }
    void LeaveText(const std::string& bytes) const { folder.Write("Data/Recipes Temp.ydb", bytes); }
    void LeaveIndex(const std::string& bytes) const {
        folder.Write("Data/Recipes Index Temp.ind", bytes);
    }
    void ExpectUnchanged() const {
        EXPECT_EQ(Text(), own.Text);
        EXPECT_EQ(Index(), own.Index());
        EXPECT_EQ(folder.Read("Data/Recipes.ydb"), stock.Text);
        EXPECT_EQ(folder.Read("Data/Recipes Index.ind"), stock.Index());
        EXPECT_FALSE(HasTemporaries(Now()));
    }

    // Of writing "Dab" over the second recipe.
    RecordChange Overwriting() const {
        RecordChange change;
        change.TextLength = static_cast<std::int64_t>(own.Text.size());
        change.IndexLength = 8;
        change.Position = own.Positions[1];
        change.Old = own.Text.substr(static_cast<std::size_t>(change.Position) - 1);
        change.SetNew(Written);
        return change;
    }
    // The text with so much of the new record in it.
    std::string TextWith(std::size_t bytes) const {
        return std::string(own.Text).replace(static_cast<std::size_t>(own.Positions[1]) - 1, bytes,
                                             std::string(Written).substr(0, bytes));
    }
    static constexpr const char* Written = "Dab\r\n{\\rtf1 Dab}\r\n";

    Database own;
    Database stock;
    Database longer;  // own with a longer first record
    TempFolder folder{TempFolder::InMemory()};
};

TEST_F(StartAfterACrash, ARewriteThatWasNotFinishedIsDropped) {
    LeaveText(longer.Text);
    LeaveIndex(longer.Index());
    Start();
    ExpectUnchanged();
}

TEST_F(StartAfterACrash, ATemporaryTextAloneIsDropped) {
    for (const std::string& bytes : {std::string(), longer.Text, std::string(5000, '\0')}) {
        LeaveText(bytes);
        Start();
        ExpectUnchanged();
    }
}

TEST_F(StartAfterACrash, APairWhoseTextWasRenamedIsFinished) {
    folder.Write("Data/Custom Recipes.ydb", longer.Text);
    for (const char* mark : {"C", ""}) {
        folder.Write("Data/Custom Recipes Index.ind", own.Index());
        LeaveIndex(longer.Index() + mark);
        Start();
        EXPECT_EQ(Text(), longer.Text);
        EXPECT_EQ(Index(), longer.Index());
        EXPECT_FALSE(HasTemporaries(Now()));
    }
}

TEST_F(StartAfterACrash, ThePairOfTheStockIsFinishedToo) {
    Database longStock;
    longStock.AddRecipe("Longer stock A", "{\\rtf1 A}");
    longStock.AddRecipe("Stock B", "{\\rtf1 B}");
    longStock.AddRecipe("Stock C", "{\\rtf1 C}");
    folder.Write("Data/Recipes.ydb", longStock.Text);
    for (const char* mark : {"S", ""}) {
        folder.Write("Data/Recipes Index.ind", stock.Index());
        LeaveIndex(longStock.Index() + mark);
        Start();
        EXPECT_EQ(folder.Read("Data/Recipes Index.ind"), longStock.Index());
        EXPECT_EQ(Index(), own.Index());
        EXPECT_FALSE(HasTemporaries(Now()));
    }
}

TEST_F(StartAfterACrash, ATemporaryIndexThatFitsNeitherTextIsDropped) {
    LeaveIndex(IndexBytes({1, 7, 9, 11}));
    Start();
    ExpectUnchanged();
}

TEST_F(StartAfterACrash, TheMarkOfAnIndexThatHasJustBeenRenamedIsTakenOff) {
    folder.Write("Data/Custom Recipes Index.ind", own.Index() + "C");
    Start();
    ExpectUnchanged();
}

TEST_F(StartAfterACrash, ARecordThatIsHalfWrittenIsTakenBack) {
    const std::string whole = TextWith(std::string(Written).size());
    for (std::size_t bytes = 0; TextWith(bytes) != whole; ++bytes) {
        folder.Write("Data/Custom Recipes.ydb", TextWith(bytes));
        LeaveText(JournalOf(Overwriting()));
        Start();
        ExpectUnchanged();
    }
}

TEST_F(StartAfterACrash, ARecordThatIsWholeStays) {
    const std::string whole = TextWith(std::string(Written).size());
    folder.Write("Data/Custom Recipes.ydb", whole);
    LeaveText(JournalOf(Overwriting()));
    Start();
    EXPECT_EQ(Text(), whole);
    EXPECT_FALSE(HasTemporaries(Now()));
}

TEST_F(StartAfterACrash, AJournalThatIsNotWholeIsDroppedWhereverItEnds) {
    const std::string journal = JournalOf(Overwriting());
    for (std::size_t bytes = 0; bytes < journal.size(); ++bytes) {
        LeaveText(journal.substr(0, bytes));
        Start();
        ExpectUnchanged();
        LeaveText(journal.substr(0, bytes) + std::string(journal.size() - bytes, '\0'));
        Start();
        ExpectUnchanged();
    }
}

TEST_F(StartAfterACrash, AJournalOfOtherFilesUndoesNothing) {
    LeaveText(JournalOf(Overwriting()));
    folder.Write("Data/Custom Recipes.ydb", longer.Text);
    folder.Write("Data/Custom Recipes Index.ind", longer.Index());
    Start();
    EXPECT_EQ(Text(), longer.Text);
    EXPECT_EQ(Index(), longer.Index());
}

TEST_F(StartAfterACrash, AnAddedRecordIsThereWithItsEntryOrNotAtAll) {
    RecordChange change;
    change.Adds = true;
    change.TextLength = static_cast<std::int64_t>(own.Text.size());
    change.IndexLength = 8;
    change.Position = static_cast<std::int32_t>(own.Text.size()) + 1;
    change.SetNew(Written);
    const std::string index = own.Index() + IndexBytes({change.Position});
    for (std::size_t bytes = 0; bytes <= std::string(Written).size(); ++bytes) {
        for (std::size_t indexBytes = 0; indexBytes <= 4; ++indexBytes) {
            folder.Write("Data/Custom Recipes.ydb",
                         own.Text + std::string(Written).substr(0, bytes));
            folder.Write("Data/Custom Recipes Index.ind", index.substr(0, 8 + indexBytes));
            LeaveText(JournalOf(change));
            Start();
            if (bytes == std::string(Written).size() && indexBytes == 4) {
                EXPECT_EQ(Text(), own.Text + Written);
                EXPECT_EQ(Index(), index);
            } else {
                ExpectUnchanged();
            }
        }
    }
}

TEST_F(StartAfterACrash, WhatCannotBeTakenBackIsToldWithItsFileAndKept) {
    folder.Write("Data/Custom Recipes.ydb", TextWith(5));
    LeaveText(JournalOf(Overwriting()));
    StoreSession session(folder.Native("Data"));
    bool broken = true;
    session.Files.Watch([&](const NumberedFiles::Access& access) {
        if (broken && access.Kind == "write") throw Failure(failure::DeviceError, "disk");
    });
    try {
        session.Start();
        FAIL() << "no failure";
    } catch (const Failure& f) {
        EXPECT_NE(f.Description.find("Custom Recipes.ydb"), std::string::npos) << f.Description;
    }
    EXPECT_TRUE(HasTemporaries(Now()));
    session.Store.OpenYDB_IND_Normal();
    session.Store.RecalculateTotalRecipes();
    EXPECT_EQ(session.Store.GetRecipeTitle(4), "Eel") << "reading goes on";
    EXPECT_FALSE(session.Add("New", "{\\rtf1}")) << "writing does not";
    EXPECT_FALSE(session.Update(4, "New", "{\\rtf1}"));
    EXPECT_EQ(session.Messages.size(), 2U);
    EXPECT_EQ(Text(), TextWith(5));
    broken = false;
    EXPECT_TRUE(session.Add("New", "{\\rtf1}"));
    EXPECT_EQ(Text(), own.Text + "New\r\n{\\rtf1}\r\n");
}

// Kinds of access in their order: "rename", "flush Custom Recipes.ydb", ...
std::vector<std::string> AccessesOfStart(const std::filesystem::path& folder) {
    std::vector<std::string> accesses;
    StoreSession session(folder);
    session.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind == "open" || !Changes(access)) return;
        const std::string path(access.Path);
        accesses.push_back(std::string(access.Kind) + (access.Number == 0 ? " name " : " ") +
                           path.substr(path.rfind('\\') + 1));
    });
    session.Start();
    return accesses;
}

TEST_F(StartAfterACrash, TheRenamedTextIsOnTheDiskBeforeItsIndexIsRenamed) {
    folder.Write("Data/Custom Recipes.ydb", longer.Text);
    LeaveIndex(longer.Index() + "C");
    const std::vector<std::string> expected = {
        "flush name Custom Recipes.ydb", "rename name Custom Recipes Index.ind",
        "flush name Custom Recipes Index.ind", "truncate Custom Recipes Index.ind"};
    EXPECT_EQ(AccessesOfStart(folder.Native("Data")), expected);
}

TEST_F(StartAfterACrash, WhatTheJournalVouchesForIsOnTheDiskBeforeItGoes) {
    const std::vector<std::string> expected = {"flush Custom Recipes.ydb",
                                               "flush Custom Recipes Index.ind",
                                               "delete name Recipes Temp.ydb"};
    for (const std::size_t bytes : {std::string(Written).size(), std::size_t{0}}) {
        folder.Write("Data/Custom Recipes.ydb", TextWith(bytes));
        LeaveText(JournalOf(Overwriting()));
        EXPECT_EQ(AccessesOfStart(folder.Native("Data")), expected) << bytes;
    }
}

TEST_F(StartAfterACrash, AMarkedIndexThatDoesNotFitItsTextIsDropped) {
    for (const char* mark : {"C", "S"}) {
        LeaveIndex(IndexBytes({1, 7, 9}) + mark);
        Start();
        ExpectUnchanged();
    }
}

TEST_F(StartAfterACrash, AJournalStaysUntilItsTextIsBack) {
    folder.Write("Data/Custom Recipes.ydb", TextWith(5));
    const std::string torn = Text();
    LeaveText(JournalOf(Overwriting()));
    std::filesystem::remove(folder.Native("Data/Custom Recipes.ydb"));
    EXPECT_THROW(Start(), Failure);
    EXPECT_TRUE(HasTemporaries(Now()));
    folder.Write("Data/Custom Recipes.ydb", torn);
    Start();
    ExpectUnchanged();
}

TEST_F(StartAfterACrash, AChangeOfTheStockIsNotTakenBackOnADisc) {
    RecordChange change;
    change.Custom = false;
    change.TextLength = static_cast<std::int64_t>(stock.Text.size());
    change.IndexLength = 12;
    change.Position = 1;
    change.Old = "Stock Z";
    change.SetNew("Stock Y");
    folder.MakeFolder("Disc");
    folder.Write("Disc/Recipes.ydb", stock.Text);
    const auto startWithDisc = [&] {
        StoreSession session(folder.Native("Data"));
        session.Paths.Assign(session.Paths.strPath,
                             session.NamePaths.Alias(folder.Native("Disc")) + "\\");
        session.Start();
    };
    LeaveText(JournalOf(change));
    EXPECT_THROW(startWithDisc(), Failure);
    EXPECT_EQ(folder.Read("Disc/Recipes.ydb"), stock.Text);
    EXPECT_TRUE(HasTemporaries(Now()));
    change.Disc = true;
    LeaveText(JournalOf(change));
    EXPECT_THROW(Start(), Failure);
    EXPECT_EQ(folder.Read("Data/Recipes.ydb"), stock.Text);
    startWithDisc();
    EXPECT_EQ(folder.Read("Disc/Recipes.ydb"), "Stock Z" + stock.Text.substr(7));
    EXPECT_FALSE(HasTemporaries(Now()));
}

TEST_F(StartAfterACrash, AnIndexOfTheStockIsNotPutBesideTheTextOfADisc) {
    LeaveIndex(stock.Index() + "D");
    EXPECT_THROW(Start(), Failure);
    EXPECT_TRUE(HasTemporaries(Now()));
}

TEST_F(StartAfterACrash, AnAddedRecordIsTakenOffAFileThatIsReadOnlyNow) {
    const Unprivileged user;
    const TempFolder mine;
    RecordChange change;
    change.Adds = true;
    change.TextLength = static_cast<std::int64_t>(own.Text.size());
    change.IndexLength = 8;
    change.Position = static_cast<std::int32_t>(own.Text.size()) + 1;
    change.SetNew(Written);
    mine.Write("Data/Recipes.ydb", stock.Text);
    mine.Write("Data/Recipes Index.ind", stock.Index());
    mine.Write("Data/Custom Recipes.ydb", own.Text + "Dab");
    mine.Write("Data/Custom Recipes Index.ind", own.Index());
    mine.Write("Data/Recipes Temp.ydb", JournalOf(change));
    ASSERT_EQ(chmod(mine.Native("Data/Custom Recipes.ydb").c_str(), 0444), 0);
    StoreSession(mine.Native("Data")).Start();
    EXPECT_EQ(mine.Read("Data/Custom Recipes.ydb"), own.Text);
    EXPECT_FALSE(HasTemporaries(BytesOf(mine.Native("Data"))));
}

// At a start that could not so much as look at the files, the half of a recipe counts.
TEST_F(StartAfterACrash, RecipesAreCountedAnewWhenTheHalfOfOneIsTakenOffLater) {
    RecordChange change;
    change.Adds = true;
    change.TextLength = static_cast<std::int64_t>(own.Text.size());
    change.IndexLength = 8;
    change.Position = static_cast<std::int32_t>(own.Text.size()) + 1;
    change.SetNew(Written);
    folder.Write("Data/Custom Recipes.ydb", own.Text + "Dab");
    folder.Write("Data/Custom Recipes Index.ind", own.Index() + IndexBytes({change.Position}));
    LeaveText(JournalOf(change));
    StoreSession session(folder.Native("Data"));
    bool broken = true;
    session.Files.Watch([&](const NumberedFiles::Access& access) {
        if (broken && access.Number == filenumber::RecipesTemp) {
            throw Failure(failure::DeviceError, "disk");
        }
    });
    EXPECT_THROW(session.Start(), Failure);
    session.Store.OpenYDB_IND_Normal();
    session.Store.RecalculateTotalRecipes();
    EXPECT_EQ(session.Store.TotalNumRecords, 6);
    broken = false;
    EXPECT_FALSE(session.Update(6, "Dab", "{}")) << "it is gone by then";
    EXPECT_EQ(session.Store.TotalNumRecords, 5);
    EXPECT_EQ(session.Store.TotalRecipes(), 5);
    EXPECT_TRUE(session.Add("New", "{\\rtf1}"));
    EXPECT_EQ(session.Store.TotalNumRecords, 6);
    EXPECT_EQ(session.Store.GetRecipeTitle(6), "New");
}

TEST_F(StartAfterACrash, AFolderWithoutTemporaryFilesIsNotTouched) {
    StoreSession session(folder.Native("Data"));
    session.Files.Watch([](const NumberedFiles::Access& access) {
        EXPECT_TRUE(access.Kind == "open" || access.Kind == "close") << access.Kind;
    });
    session.Writer.Journal.SettleLastRun();
    ExpectUnchanged();
}

}  // namespace
}  // namespace larder::test
