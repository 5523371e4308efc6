#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/UnsettledFixture.h"

namespace larder::test {
namespace {

// A text that was renamed, and its index was not

TEST_F(UnsettledReads, ARewrittenTextIsReadByItsOwnIndexWhileThatCannotTakeItsPlace) {
    RefuseRenameTo(session, "Custom Recipes Index.ind");
    ASSERT_TRUE(session.Update(3, "Conger", "{\\rtf1 Conger}"));
    ASSERT_TRUE(folder.Exists("Data/Recipes Index Temp.ind"));
    EXPECT_EQ(session.Messages.size(), 1U);
    Recipes expected = before;
    expected[2] = {"Conger", "{\\rtf1 Conger}"};
    EXPECT_EQ(ReadIn(session), expected);
    EXPECT_FALSE(session.Update(4, "", "")) << "nothing is written before the index is in place";
    EXPECT_FALSE(session.Add("New", "{}"));
    EXPECT_EQ(ReadIn(session), expected);
    EXPECT_EQ(session.Store.TotalNumRecords, 5);
    broken = false;
    session.Files.CloseAll();
    EXPECT_EQ(ReadIn(session), expected);
    EXPECT_FALSE(folder.Exists("Data/Recipes Index Temp.ind"));
    EXPECT_TRUE(session.Update(4, "", ""));
}

TEST_F(UnsettledReads, ARewrittenTextIsReadByItsOwnIndexAfterAStartToo) {
    RefuseRenameTo(session, "Custom Recipes Index.ind");
    ASSERT_TRUE(session.Update(3, "Conger", "{\\rtf1 Conger}"));
    StoreSession next(folder.Native("Data"));
    RefuseRenameTo(next, "Custom Recipes Index.ind");
    StartAsFarAsItGoes(next);
    Recipes expected = before;
    expected[2] = {"Conger", "{\\rtf1 Conger}"};
    EXPECT_EQ(ReadIn(next), expected);
    EXPECT_EQ(next.Store.TotalRecipes(), 5);
    EXPECT_FALSE(next.Update(4, "Dab", "{}"));
    broken = false;
    EXPECT_TRUE(next.Update(4, "Dab", "{}"));
    expected[3] = {"Dab", "{}         "};
    EXPECT_EQ(ReadIn(next), expected);
}

TEST_F(UnsettledReads, ARewrittenTextIsNotReadByTheOldIndexWhenItsOwnCannotBeRead) {
    RefuseRenameTo(session, "Custom Recipes Index.ind");
    ASSERT_TRUE(session.Update(3, "Conger", "{\\rtf1 Conger}"));
    for (const std::uint64_t readable : {0, 1}) {  // bytes at once: nothing, or the mark alone
        SCOPED_TRACE(readable);
        StoreSession next(folder.Native("Data"));
        next.Files.Watch([=, this](const NumberedFiles::Access& access) {
            const bool index = access.Path.ends_with("Recipes Index Temp.ind");
            if (broken && index && access.Kind == "read" && access.Bytes > readable) {
                throw Failure(failure::PathAccess, "disk");
            }
        });
        StartAsFarAsItGoes(next);
        EXPECT_EQ(next.Store.TotalNumRecords, 5);
        EXPECT_EQ(next.Store.TotalRecipes(), 5);
        for (const std::int32_t number : {3, 4, 5}) {
            EXPECT_EQ(next.Store.LookUpTitle(number).Is, TitleIs::Unreadable);
            EXPECT_EQ(next.Store.GetRecipeRTF(number), "");
        }
        EXPECT_EQ(next.Store.GetRecipeTitle(2), "Stock B");
        EXPECT_FALSE(next.Update(4, "", ""));
    }
    broken = false;
    StoreSession last(folder.Native("Data"));
    last.Start();
    EXPECT_EQ(last.Store.GetRecipeTitle(3), "Conger");
    EXPECT_EQ(last.Store.GetRecipeTitle(4), "Cod");
}

// Where the path leads nowhere the system cannot tell whether there is a file; where the folder has
// gone, all of its files seem to be missing.
TEST_F(UnsettledReads, AnIndexThatIsOutOfReachForAWhileIsNotTakenForOneInItsPlace) {
    const std::filesystem::path data = folder.Native("Data");
    const auto index = data / "Recipes Index Temp.ind";
    const std::vector<std::function<void()>> hide = {
        [&] { std::filesystem::create_symlink(index.filename(), index); },
        [&] { std::filesystem::rename(data, folder.Native("Away")); },
    };
    const std::vector<std::function<void()>> bringBack = {
        [&] { std::filesystem::remove(index); },
        [&] { std::filesystem::rename(folder.Native("Away"), data); },
    };
    Recipes expected = before;
    for (std::size_t i = 0; i < hide.size(); ++i) {
        SCOPED_TRACE(i);
        broken = true;
        RefuseRenameTo(session, "Custom Recipes Index.ind");
        expected[2].Title += "-a-longer-title";
        ASSERT_TRUE(session.Update(3, expected[2].Title, expected[2].Body));
        const std::string bytes = folder.Read("Data/Recipes Index Temp.ind");
        folder.Delete("Data/Recipes Index Temp.ind");
        if (i == 1) folder.Write("Data/Recipes Index Temp.ind", bytes);
        hide[i]();
        session.Files.CloseAll();
        for (const std::int32_t number : {3, 4, 5})
            EXPECT_EQ(session.Store.LookUpTitle(number).Is, TitleIs::Unreadable);
        EXPECT_FALSE(session.Update(4, "Dab", "{}"));
        EXPECT_FALSE(session.Add("New", "{}"));
        EXPECT_NE(session.Messages.back().find(".ind"), std::string::npos);
        session.Disc.Asked.clear();
        bringBack[i]();
        if (i == 0) folder.Write("Data/Recipes Index Temp.ind", bytes);
        EXPECT_EQ(ReadIn(session), expected);
        broken = false;
        session.Files.CloseAll();
        EXPECT_EQ(ReadIn(session), expected);
        EXPECT_EQ(RecipesIn(BytesOf(data)), expected);
        EXPECT_FALSE(HasTemporaries(BytesOf(data)));
    }
}

TEST_F(UnsettledReads, AFolderThatGoesInTheMiddleOfAReplacementIsReadAsItIsWhenItComesBack) {
    const std::filesystem::path data = folder.Native("Data");
    for (const std::string name : {"Custom Recipes.ydb", "Custom Recipes Index.ind"}) {
        SCOPED_TRACE(name);
        session.Files.Watch([&](const NumberedFiles::Access& access) {
            if (access.Kind == "rename" && access.Path.ends_with(name))
                std::filesystem::rename(data, folder.Native("Away"));
        });
        EXPECT_FALSE(session.Update(3, "Conger", "{\\rtf1 Conger}")) << "the editor keeps it";
        EXPECT_EQ(session.Messages.size(), 1U);
        session.Messages.clear();
        session.Files.Watch(nullptr);
        std::filesystem::rename(folder.Native("Away"), data);
        Recipes expected = before;
        if (name.ends_with(".ind")) expected[2] = {"Conger", "{\\rtf1 Conger}"};
        EXPECT_EQ(ReadIn(session), expected);
        EXPECT_EQ(RecipesIn(BytesOf(data)), expected);
        EXPECT_FALSE(HasTemporaries(BytesOf(data)));
    }
}

TEST_F(UnsettledReads, AnIndexOfWhichNobodyCanTellWhereItIsIsLookedForUntilItIsFound) {
    const std::filesystem::path index = folder.Native("Data/Recipes Index Temp.ind");
    const std::filesystem::path aside = folder.Native("aside");
    session.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind != "rename" || !access.Path.ends_with("Custom Recipes Index.ind")) return;
        std::filesystem::rename(index, aside);
        std::filesystem::create_symlink(index.filename(), index);
        throw Failure(failure::DeviceError, "disk");
    });
    EXPECT_TRUE(session.Update(3, "Conger", "{\\rtf1 Conger}"));
    EXPECT_EQ(session.Store.LookUpTitle(4).Is, TitleIs::Unreadable);
    session.Disc.Asked.clear();
    session.Files.Watch(nullptr);
    std::filesystem::rename(aside, index);
    Recipes expected = before;
    expected[2] = {"Conger", "{\\rtf1 Conger}"};
    EXPECT_EQ(ReadIn(session), expected);
    EXPECT_EQ(RecipesIn(BytesOf(folder.Native("Data"))), expected);
}

TEST_F(UnsettledReads, ATextOfWhichNobodyCanTellWhetherItWasReplacedStaysWithTheUser) {
    const std::filesystem::path text = folder.Native("Data/Recipes Temp.ydb");
    const std::filesystem::path aside = folder.Native("aside");
    session.Files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind != "rename" || !access.Path.ends_with("Custom Recipes.ydb")) return;
        std::filesystem::rename(text, aside);
        std::filesystem::create_symlink(text.filename(), text);
        throw Failure(failure::DeviceError, "disk");
    });
    EXPECT_FALSE(session.Update(3, "Conger", "{\\rtf1 Conger}"));
    session.Files.Watch(nullptr);
    std::filesystem::rename(aside, text);
    EXPECT_EQ(ReadIn(session), before);
    EXPECT_FALSE(HasTemporaries(BytesOf(folder.Native("Data"))));
}

TEST_F(UnsettledReads, ARewrittenStockIsReadByItsOwnIndexToo) {
    RefuseRenameTo(session, "Recipes Index.ind");
    ASSERT_TRUE(session.Update(1, "Longer stock A", "{\\rtf1 A}"));
    ASSERT_TRUE(folder.Exists("Data/Recipes Index Temp.ind"));
    Recipes expected = before;
    expected[0].Title = "Longer stock A";
    EXPECT_EQ(ReadIn(session), expected);
    EXPECT_FALSE(session.Update(5, "R", ""));
    broken = false;
    EXPECT_TRUE(session.Update(5, "R", "x"));
    EXPECT_EQ(session.Store.GetRecipeTitle(2), "Stock B");
    EXPECT_EQ(session.Store.GetRecipeTitle(5), "R");
}

TEST_F(UnsettledReads, AnIndexThatTookItsPlaceThoughItsNameFailedToReachTheDiskIsRead) {
    session.Files.Watch([this](const NumberedFiles::Access& access) {
        const bool index = access.Path.ends_with("Custom Recipes Index.ind");
        if (broken && access.Kind == "flush" && index) throw Failure(failure::DeviceError, "disk");
    });
    ASSERT_TRUE(session.Update(3, "Conger", "{\\rtf1 Conger}"));
    Recipes expected = before;
    expected[2] = {"Conger", "{\\rtf1 Conger}"};
    EXPECT_EQ(ReadIn(session), expected);
    EXPECT_FALSE(folder.Exists("Data/Recipes Index Temp.ind")) << "a reader makes none";
    broken = false;
    EXPECT_TRUE(session.Add("New", "{}"));
    EXPECT_EQ(session.Store.GetRecipeTitle(6), "New");
}

TEST_F(UnsettledReads, ATextThatCouldNotBeReplacedIsReadByItsIndexAfterOneThatWas) {
    int renames = 0;
    session.Files.Watch([&](const NumberedFiles::Access& access) {
        if (!access.Path.ends_with("Custom Recipes Index.ind")) return;
        const bool refused = access.Kind == "rename" && ++renames == 1;
        const bool named = access.Kind == "flush" && access.Number == 0;
        if (refused || named) throw Failure(failure::DeviceError, "disk");
    });
    ASSERT_TRUE(session.Update(3, "Conger", "{\\rtf1 Conger}"));
    EXPECT_EQ(renames, 2);
    EXPECT_FALSE(HasTemporaries(BytesOf(folder.Native("Data"))));
    RefuseRenameTo(session, "Custom Recipes.ydb");
    EXPECT_FALSE(session.Update(3, "A much longer conger", "{\\rtf1 Conger}"));
    EXPECT_TRUE(folder.Exists("Data/Recipes Index Temp.ind"));
    Recipes expected = before;
    expected[2] = {"Conger", "{\\rtf1 Conger}"};
    EXPECT_EQ(ReadIn(session), expected);
    EXPECT_TRUE(session.Add("New", "{}"));
    expected.push_back({"New", "{}"});
    EXPECT_EQ(ReadIn(session), expected);
    EXPECT_EQ(RecipesIn(BytesOf(folder.Native("Data"))), expected);
}

TEST_F(UnsettledReads, RecipesAreCountedAnewByTheNextWriteWhenAReaderHasFinishedARewrite) {
    ASSERT_TRUE(session.Update(4, "", ""));
    RefuseRenameTo(session, "Custom Recipes Index.ind");
    ASSERT_TRUE(session.Update(3, "Conger", "{\\rtf1 Conger}"));
    StoreSession next(folder.Native("Data"));
    next.Files.Watch([this](const NumberedFiles::Access& access) {
        const bool index = access.Path.ends_with("Recipes Index Temp.ind");
        if (broken && index && access.Kind == "read") throw Failure(failure::DeviceError, "disk");
    });
    StartAsFarAsItGoes(next);
    EXPECT_EQ(next.Store.TotalRecipes(), 5) << "what cannot be read counts as present";
    broken = false;
    next.Files.CloseAll();
    EXPECT_EQ(next.Store.GetRecipeTitle(3), "Conger");
    EXPECT_FALSE(HasTemporaries(BytesOf(folder.Native("Data"))));
    EXPECT_TRUE(next.Update(5, "Ray", ""));
    EXPECT_EQ(next.Store.TotalRecipes(), 4);
}

// A record that was written over in part

TEST_F(UnsettledReads, ARecordThatIsWrittenInPartIsReadAsItWas) {
    for (const std::int32_t number : {3, 4, 5}) {
        SCOPED_TRACE(number);
        const auto start =
            static_cast<std::size_t>(own.Positions[static_cast<std::size_t>(number) - 3]);
        for (const char* part : {"", "D", "Dab", "Dab\r", "Dab\r\nSt", "Dab\r\n\r\n"}) {
            SCOPED_TRACE(part);
            torn = false;
            broken = true;
            FailWriting(session, 21, start, part);
            EXPECT_FALSE(session.Update(number, "Dab", "Stew"));
            EXPECT_EQ(session.Messages.back(), "Error updating recipe\nDevice I/O error");
            EXPECT_EQ(Own().substr(start - 1, std::string(part).size()), part);
            EXPECT_EQ(ReadIn(session), before);
            {
                StoreSession next(folder.Native("Data"));
                FailWriting(next, 21, start, part);
                StartAsFarAsItGoes(next);
                EXPECT_EQ(ReadIn(next), before);
            }
            broken = false;
            session.Files.CloseAll();
            EXPECT_EQ(ReadIn(session), before);
            EXPECT_EQ(Own(), own.Text) << "taken back by the next reader who opens the files";
            EXPECT_FALSE(HasTemporaries(BytesOf(folder.Native("Data"))));
        }
    }
}

TEST_F(UnsettledReads, ARecordInPartIsReadAsItWasUntilTheNextWriteTakesItBack) {
    FailWriting(session, 21, 1, "Dab\r\nSt");
    EXPECT_FALSE(session.Update(3, "Dab", "Stew"));
    EXPECT_EQ(ReadIn(session), before);
    broken = false;
    EXPECT_TRUE(session.Update(3, "Dab", "Stew"));
    EXPECT_EQ(session.Store.GetRecipeTitle(3), "Dab");
    EXPECT_TRUE(session.Store.GetRecipeRTF(3).starts_with("Stew"));
}

TEST_F(UnsettledReads, ATextThatHasVanishedIsNotMadeAnewByAReader) {
    FailWriting(session, 21, 1, "Dab\r\nSt");
    EXPECT_FALSE(session.Update(3, "Dab", "Stew"));
    broken = false;
    session.Files.CloseAll();
    const std::string left = Own();
    folder.Delete("Data/Custom Recipes.ydb");
    EXPECT_EQ(session.Store.LookUpTitle(3).Is, TitleIs::Unreadable);
    EXPECT_FALSE(folder.Exists("Data/Custom Recipes.ydb"));
    EXPECT_EQ(session.Disc.Asked.size(), 1U);
    session.Disc.Asked.clear();
    folder.Write("Data/Custom Recipes.ydb", left);
    EXPECT_EQ(ReadIn(session), before);
    EXPECT_EQ(Own(), own.Text);
}

// A new record that is there in part

TEST_F(UnsettledReads, ANewRecipeThatIsThereInPartIsNoRecipeAndNoPartOfTheLastOne) {
    const std::size_t end = own.Text.size() + 1;
    for (const int failing : {21, 22}) {
        SCOPED_TRACE(failing);
        torn = false;
        broken = true;
        FailWriting(session, failing, end, "New\r\nHalf of");
        EXPECT_FALSE(session.Add("New", "Half of what there is"));
        EXPECT_EQ(session.Messages.back(), "Error adding recipe.\nDevice I/O error");
        EXPECT_GT(Own().size(), own.Text.size());
        EXPECT_EQ(ReadIn(session), before);
        EXPECT_EQ(session.Store.GetRecipeTitle(6), "");
        broken = false;
        EXPECT_TRUE(session.Update(3, "Eel", "{\\rtf1 Eel}")) << "takes it back first";
        EXPECT_EQ(Own(), own.Text);
    }
}

TEST_F(UnsettledReads, ANewRecipeThatIsThereInPartIsNotCountedAtAStart) {
    LeaveHalfOfANewOne();
    StoreSession next(folder.Native("Data"));
    next.Files.Watch([this](const NumberedFiles::Access& access) {
        if (broken && access.Kind == "truncate") throw Failure(failure::DeviceError, "disk");
    });
    StartAsFarAsItGoes(next);
    EXPECT_EQ(next.Store.TotalNumRecords, 5);
    EXPECT_EQ(next.Store.TotalRecipes(), 5);
    EXPECT_EQ(ReadIn(next), before);
    EXPECT_EQ(next.Store.LookUpTitle(6).Is, TitleIs::Gone);
    EXPECT_FALSE(next.Update(6, "New", "{}")) << "there is no such recipe";
    broken = false;
    EXPECT_TRUE(next.Add("Other", "{}"));
    EXPECT_EQ(next.Store.TotalNumRecords, 6);
    EXPECT_EQ(next.Store.GetRecipeTitle(6), "Other");
    EXPECT_EQ(ReadIn(next).size(), 6U);
}

TEST_F(UnsettledReads, TheHalfOfANewRecipeWaitsForItsText) {
    LeaveHalfOfANewOne();
    folder.Write("Data/Custom Recipes Index.ind", own.Index());
    const std::string left = Own();
    folder.Delete("Data/Custom Recipes.ydb");
    EXPECT_THROW(StoreSession(folder.Native("Data")).Start(), Failure);
    folder.Write("Data/Custom Recipes.ydb", left);
    StoreSession next(folder.Native("Data"));
    next.Start();
    EXPECT_EQ(Own(), own.Text);
    EXPECT_EQ(ReadIn(next), before);
}

// The system may take what a failed flush was to carry to the disk for carried.
TEST_F(UnsettledReads, WhatAFailedFlushWasToCarryIsWrittenAnewBeforeTheNext) {
    FailWriting(session, filenumber::CustomRecipes, 1, "XXXX");
    EXPECT_FALSE(session.Update(3, "Dab", "{}"));
    session.Files.Watch([](const NumberedFiles::Access& access) {
        if (access.Number == 21 && access.Kind == "flush") {
            throw Failure(failure::DeviceError, "disk");
        }
    });
    session.Files.CloseAll();
    EXPECT_EQ(ReadIn(session), before);
    EXPECT_EQ(Own(), own.Text) << "as far as the system knows";
    std::vector<std::string> done;
    session.Files.Watch([&](const NumberedFiles::Access& access) {
        const bool counts = access.Kind == "write" || access.Kind == "flush";
        if (access.Number == 21 && counts) done.emplace_back(access.Kind);
    });
    session.Files.CloseAll();
    EXPECT_EQ(ReadIn(session), before);
    EXPECT_EQ(done, (std::vector<std::string>{"write", "flush"}));
    EXPECT_FALSE(folder.Exists("Data/Recipes Temp.ydb"));
}

TEST_F(UnsettledReads, AnIndexThatIsOfNoTextHindersNoFirstRecipe) {
    session.Files.CloseAll();
    folder.Delete("Data/Recipes.ydb");
    for (const bool stays : {false, true}) {
        SCOPED_TRACE(stays);
        folder.Delete("Data/Custom Recipes.ydb");
        folder.Delete("Data/Custom Recipes Index.ind");
        folder.Write("Data/Recipes Index Temp.ind", IndexBytes({1, 17}));
        StoreSession next(folder.Native("Data"));
        bool refused = stays;
        next.Files.Watch([&](const NumberedFiles::Access& access) {
            if (refused && access.Kind == "delete") throw Failure(failure::DeviceError, "disk");
        });
        EXPECT_EQ(Ignoring([&] { next.Writer.Journal.SettleLastRun(); }),
                  stays ? failure::DeviceError : 0);
        refused = false;
        next.Store.OpenYDB_IND_Normal();
        next.Store.RecalculateTotalRecipes();
        EXPECT_FALSE(folder.Exists("Data/Recipes Index Temp.ind"));
        EXPECT_TRUE(next.Add("New", "{}"));
        EXPECT_TRUE(next.Messages.empty());
        EXPECT_EQ(Own(), "New\r\n{}\r\n");
    }
}

TEST_F(UnsettledReads, WhatNobodyCanTellOfIsToldWithItsName) {
    const std::string name = "Recipes Temp.ydb";
    std::filesystem::create_symlink(name, std::filesystem::path(folder.Native("Data")) / name);
    StoreSession next(folder.Native("Data"));
    try {
        next.Writer.Journal.SettleLastRun();
        ADD_FAILURE() << "nothing told";
    } catch (const Failure& f) {
        EXPECT_NE(f.Description.find(name), std::string::npos);
    }
    next.Store.OpenYDB_IND_Normal();
    next.Store.RecalculateTotalRecipes();
    EXPECT_FALSE(next.Add("New", "{}"));
    EXPECT_FALSE(next.Update(3, "Dab", "{}"));
    ASSERT_EQ(next.Messages.size(), 2U);
    for (const std::string& message : next.Messages)
        EXPECT_NE(message.find(name), std::string::npos) << message;
    EXPECT_EQ(Own(), own.Text);
}

TEST_F(UnsettledReads, NothingIsWrittenWhileTheJournalCannotBeRead) {
    LeaveHalfOfANewOne();
    StoreSession next(folder.Native("Data"));
    next.Files.Watch([this](const NumberedFiles::Access& access) {
        const bool journal = access.Path.ends_with("Recipes Temp.ydb");
        if (broken && journal && access.Kind == "read") throw Failure(failure::DeviceError, "disk");
    });
    StartAsFarAsItGoes(next);
    const FolderBytes left = BytesOf(folder.Native("Data"));
    EXPECT_FALSE(next.Add("Other", "{}"));
    EXPECT_FALSE(next.Update(3, "Dab", "{}"));
    EXPECT_FALSE(next.Update(3, "Dab", "{\\rtf1 Much longer than it was}"));
    EXPECT_EQ(next.Messages.size(), 3U);
    EXPECT_EQ(BytesOf(folder.Native("Data")), left);
    broken = false;
    EXPECT_TRUE(next.Add("Other", "{}"));
    EXPECT_EQ(next.Store.GetRecipeTitle(6), "Other");
    EXPECT_EQ(next.Store.TotalNumRecords, 6);
}

}  // namespace
}  // namespace larder::test
