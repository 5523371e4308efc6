#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "platform/Failure.h"
#include "support/DataFolder.h"
#include "support/PowerCut.h"
#include "support/StoreSession.h"
#include "support/StoredRecipes.h"
#include "support/TempFolder.h"

namespace larder::test {
namespace {

std::string Rtf(std::size_t bytes) {
    return "{\\rtf1 " + std::string(bytes, 'x') + "}";
}

struct Operation {
    std::string Name;
    std::size_t Changed;  // index of the recipe that it changes, from 0
    std::string Message;  // what a failure of it is told with
    std::function<bool(StoreSession&)> Run;
};

// On two stock recipes and four of the user's.
const std::vector<Operation> operations = {
    {"add", 6, "Error adding recipe.\n", [](StoreSession& it) { return it.Add("New", Rtf(50)); }},
    {"short way", 3, "Error updating recipe\n",
     [](StoreSession& it) { return it.Update(4, "Four", Rtf(5)); }},
    {"long way", 3, "Error updating recipe\n",
     [](StoreSession& it) { return it.Update(4, "Four", Rtf(500)); }},
    {"delete", 4, "Error updating recipe\n", [](StoreSession& it) { return it.Update(5, "", ""); }},
    {"long way in the stock", 0, "Error updating recipe\n",
     [](StoreSession& it) { return it.Update(1, "One", Rtf(500)); }},
};

constexpr int failures[] = {failure::DiskFull, failure::DeviceError, failure::PathAccess};

// How the storage fails.
struct Trouble {
    int Number;
    bool Onwards;  // so do all later accesses
    bool InPart;   // a write that fails has written half of its bytes
};

class RecipeFaultTest : public testing::Test {
  protected:
    RecipeFaultTest() {
        Database stock;
        stock.AddRecipe("Stock one", Rtf(40));
        stock.AddRecipe("Stock two", Rtf(30));
        Database own;
        for (const char* title : {"Three", "Four", "Five", "Six"})
            own.AddRecipe(title, Rtf(60));
        first_ = {{"Recipes.ydb", stock.Text},
                  {"Recipes Index.ind", stock.Index()},
                  {"Custom Recipes.ydb", own.Text},
                  {"Custom Recipes Index.ind", own.Index()}};
    }

    std::filesystem::path Data() const { return folder_.Native("Data"); }

    // The recipes after an operation that nothing disturbs. Remembers what each access has done.
    std::vector<StoredRecipe> Undisturbed(const Operation& operation) {
        PutBytes(Data(), first_);
        StoreSession session(Data());
        session.Start();
        kinds_ = {""};
        states_.clear();
        session.Files.Watch([&](const NumberedFiles::Access& access) {
            if (!Changes(access)) return;
            states_.push_back(BytesOf(Data()));
            kinds_.emplace_back(access.Kind);
        });
        EXPECT_TRUE(operation.Run(session));
        session.Files.Watch(nullptr);
        states_.push_back(BytesOf(Data()));
        return RecipesIn(states_.back());
    }

    // Writes half of what makes a file what it is in a folder.
    void WriteHalf(const FolderBytes& to, std::string_view path) const {
        const std::string name(path.substr(path.rfind('\\') + 1));
        const std::string now = FileIn(BytesOf(Data()), name);
        const std::string then = FileIn(to, name);
        if (now == then || now.size() > then.size()) return;
        const auto first = std::ranges::mismatch(now, then).in1 - now.begin();
        const std::size_t middle = (static_cast<std::size_t>(first) + then.size() + 1) / 2;
        const std::string rest = middle < now.size() ? now.substr(middle) : "";
        std::ofstream(Data() / name, std::ios::binary) << then.substr(0, middle) + rest;
    }

    static std::vector<StoredRecipe> ReadIn(StoreSession& session) {
        std::vector<StoredRecipe> recipes;
        for (std::int32_t i = 1; i <= session.Store.TotalNumRecords; ++i)
            recipes.push_back({session.Store.GetRecipeTitle(i), session.Store.GetRecipeRTF(i)});
        return recipes;
    }

    // What is read before the next write, in the same run and after a start: recipes that were
    // there, whole.
    void CheckReads(StoreSession& session, const std::vector<StoredRecipe>& after, bool changed,
                    const Trouble& trouble) {
        const auto before = RecipesIn(first_);
        const auto failing = [&](const NumberedFiles::Access& access) {
            if (Changes(access) && access.Kind != "open") throw Failure(trouble.Number, "disk");
        };
        if (trouble.Onwards) session.Files.Watch(failing);
        EXPECT_TRUE(ReadIn(session) == (changed ? after : before));
        session.Files.Watch(nullptr);
        if (!trouble.Onwards) return;
        StoreSession next(Data());
        next.Files.Watch(failing);
        Ignoring([&] { next.Writer.Journal.SettleLastRun(); });
        next.Store.OpenYDB_IND_Normal();
        next.Store.RecalculateTotalRecipes();
        const auto now = ReadIn(next);
        EXPECT_TRUE(now == before || now == after);
    }

    void CheckRecipes(const Operation& operation, const std::vector<StoredRecipe>& after,
                      bool changed) {
        const auto before = RecipesIn(first_);
        auto now = RecipesIn(BytesOf(Data()));
        ASSERT_GE(now.size(), changed ? after.size() : before.size());
        for (std::size_t i = 0; i < (changed ? after : before).size(); ++i) {
            const bool here = i == operation.Changed;
            const StoredRecipe& expected = here && changed ? after[i] : before[i];
            EXPECT_EQ(now[i].Title, expected.Title);
            EXPECT_EQ(now[i].Body, expected.Body);
        }
    }

    // Access `at` of an operation fails. False when the operation has fewer.
    bool Disturb(const Operation& operation, const std::vector<StoredRecipe>& after, std::size_t at,
                 const Trouble& trouble) {
        if (trouble.InPart && at < kinds_.size() && kinds_[at] != "write") return true;
        PutBytes(Data(), first_);
        StoreSession session(Data());
        session.Start();
        std::size_t counted = 0;
        session.Files.Watch([&](const NumberedFiles::Access& access) {
            if (!Changes(access)) return;
            ++counted;
            if (counted != at && (!trouble.Onwards || counted < at)) return;
            // A later write is one that takes back what the operation did.
            const bool half = trouble.InPart && access.Kind == "write";
            if (half) WriteHalf(counted == at ? states_[at] : first_, access.Path);
            throw Failure(trouble.Number, "disk");
        });
        const bool changed = operation.Run(session);
        session.Files.Watch(nullptr);
        if (counted < at) return false;
        ++points_;
        CheckMessage(session, operation, trouble.Number, changed);
        CheckReads(session, after, changed, trouble);
        CheckGoesOn(session, operation, after, changed);
        return true;
    }

    static void CheckMessage(const StoreSession& session, const Operation& operation, int number,
                             bool changed) {
        if (changed && session.Messages.empty()) return;  // what failed had no part in the change
        ASSERT_EQ(session.Messages.size(), 1U);
        EXPECT_EQ(session.Messages[0], operation.Message + FailureText(number));
        EXPECT_FALSE(session.HourglassNow);
    }

    // The next operation in the same run, and the next start.
    void CheckGoesOn(StoreSession& session, const Operation& operation,
                     const std::vector<StoredRecipe>& after, bool changed) {
        session.Messages.clear();
        const std::int32_t next = session.Store.TotalNumRecords + 1;
        EXPECT_TRUE(session.Add("Next", Rtf(7)));
        EXPECT_EQ(session.Store.TotalNumRecords, next);
        EXPECT_EQ(session.Store.GetRecipeTitle(next), "Next");
        EXPECT_EQ(session.Messages, std::vector<std::string>());
        EXPECT_FALSE(HasTemporaries(BytesOf(Data())));
        StoreSession again(Data());
        again.Start();
        CheckRecipes(operation, after, changed);
        EXPECT_EQ(again.Store.TotalNumRecords, next);
        EXPECT_EQ(again.Store.TotalRecipes(),
                  session.Store.TotalNumRecords - (changed && operation.Name == "delete" ? 1 : 0));
    }

    void DisturbEverywhere(bool onwards, bool inPart) {
        for (const Operation& operation : operations) {
            const auto after = Undisturbed(operation);
            for (const int number : failures) {
                for (std::size_t at = 1;; ++at) {
                    SCOPED_TRACE(operation.Name + ", failure " + std::to_string(number) +
                                 " at access " + std::to_string(at));
                    if (!Disturb(operation, after, at, {number, onwards, inPart})) break;
                    if (HasFailure()) return;
                }
            }
        }
        std::cout << points_ << " faults, no loss" << std::endl;
        EXPECT_GT(points_, inPart ? 50 : 150);
    }

    TempFolder folder_{TempFolder::InMemory()};
    FolderBytes first_;
    std::vector<std::string> kinds_;   // of the accesses of an operation, from 1
    std::vector<FolderBytes> states_;  // behind each of them; before the first one at 0
    int points_ = 0;
};

TEST_F(RecipeFaultTest, AFailureOfAnyAccessIsToldAndCostsNothing) {
    DisturbEverywhere(false, false);
}

TEST_F(RecipeFaultTest, AStorageThatFailsFromSomeMomentOnIsToldAndCostsNothing) {
    DisturbEverywhere(true, false);
}

TEST_F(RecipeFaultTest, AWriteThatFailsHalfDoneIsToldAndCostsNothing) {
    DisturbEverywhere(false, true);
}

TEST_F(RecipeFaultTest, AStorageThatFailsInTheMiddleOfAWriteIsToldAndCostsNothing) {
    DisturbEverywhere(true, true);
}

// A start that has to mend what a killed run has left

class FaultyStartTest : public RecipeFaultTest {
  protected:
    struct Killed {};
    enum class Then { StartsAnew, Writes };

    // Every folder that has to be mended after the operation was killed, each once.
    std::set<FolderBytes> LeftBy(const Operation& operation) {
        std::set<FolderBytes> all;
        for (int at = 1;; ++at) {
            PutBytes(Data(), first_);
            StoreSession session(Data());
            session.Start();
            int counted = 0;
            session.Files.Watch([&](const NumberedFiles::Access& access) {
                if (Changes(access) && ++counted == at) throw Killed();
            });
            try {
                operation.Run(session);
                return all;
            } catch (const Killed&) {
                session.Files.Watch(nullptr);
                const FolderBytes left = BytesOf(Data());
                if (HasTemporaries(left)) all.insert(left);
            }
        }
    }

    // Access `at` of the start fails, and with `onwards` every one behind it until the storage is
    // back. False when the start has fewer.
    bool Disturb(const FolderBytes& left, const std::vector<StoredRecipe>& after, int at,
                 int number, bool onwards, Then then) {
        PutBytes(Data(), left);
        StoreSession session(Data());
        int counted = 0;
        session.Files.Watch([&](const NumberedFiles::Access& access) {
            if (!Changes(access)) return;
            ++counted;
            if (counted == at || (onwards && counted > at)) throw Failure(number, "disk");
        });
        bool runs = false;
        const std::string told = StartAndTell(session, runs);
        if (!runs) then = Then::StartsAnew;
        if (counted < at) return false;
        ++points_;
        // What is mended all the same need not be told.
        EXPECT_TRUE(!told.empty() || !HasTemporaries(BytesOf(Data())));
        if (!told.empty()) {
            ++told_;
            EXPECT_NE(told.find(FailureText(number)), std::string::npos) << told;
        }
        if (then == Then::Writes && onwards) ExpectNothingIsWritten(session, number);
        session.Files.Watch(nullptr);
        if (then == Then::Writes) WriteTheNext(session);
        StoreSession again(Data());
        again.Start();
        ExpectOldOrNew(after, then, again);
        return true;
    }

    // As the program does: what cannot be settled is told, and it goes on, unless it cannot open
    // the files either.
    static std::string StartAndTell(StoreSession& session, bool& runs) {
        std::string told;
        try {
            session.Writer.Journal.SettleLastRun();
        } catch (const Failure& f) {
            told = f.Description;
        }
        const int failed = Ignoring([&] {
            session.Store.OpenYDB_IND_Normal();
            session.Store.RecalculateTotalRecipes();
        });
        runs = failed == 0;
        return told;
    }
    static void ExpectNothingIsWritten(StoreSession& session, int number) {
        EXPECT_FALSE(session.Add("Never", Rtf(7)));
        ASSERT_EQ(session.Messages.size(), 1U);
        EXPECT_TRUE(session.Messages[0].starts_with("Error adding recipe.\n"));
        EXPECT_NE(session.Messages[0].find(FailureText(number)), std::string::npos);
        session.Messages.clear();
    }
    static void WriteTheNext(StoreSession& session) {
        EXPECT_TRUE(session.Add("Next", Rtf(7)));
        EXPECT_EQ(session.Store.GetRecipeTitle(session.Store.TotalNumRecords), "Next");
        EXPECT_TRUE(session.Messages.empty());
    }
    void ExpectOldOrNew(const std::vector<StoredRecipe>& after, Then then,
                        const StoreSession& session) {
        const FolderBytes files = BytesOf(Data());
        EXPECT_FALSE(HasTemporaries(files));
        auto now = RecipesIn(files);
        EXPECT_EQ(session.Store.TotalNumRecords, static_cast<std::int32_t>(now.size()));
        if (then == Then::Writes) {
            ASSERT_FALSE(now.empty());
            EXPECT_EQ(now.back().Title, "Next");
            now.pop_back();
        }
        EXPECT_TRUE(now == after || now == RecipesIn(first_));
    }

    void DisturbEverywhere(bool onwards) {
        for (const Operation& operation : operations) {
            const auto after = Undisturbed(operation);
            const std::set<FolderBytes> folders = LeftBy(operation);
            EXPECT_GE(folders.size(), 2U) << operation.Name;
            for (const FolderBytes& left : folders) {
                for (const int number : failures) {
                    for (const Then then : {Then::StartsAnew, Then::Writes}) {
                        for (int at = 1; Disturb(left, after, at, number, onwards, then); ++at) {
                            ASSERT_FALSE(HasFailure())
                                << operation.Name << ", failure " << number << " at access " << at;
                        }
                    }
                }
            }
        }
        std::cout << points_ << " faults of a start, " << told_ << " told, no loss" << std::endl;
        EXPECT_GT(points_, 500);
        EXPECT_GT(told_, points_ / 4);
    }

    int told_ = 0;
};

TEST_F(FaultyStartTest, AFailureOfAnyAccessIsToldAndCostsNothing) {
    DisturbEverywhere(false);
}

TEST_F(FaultyStartTest, AStorageThatFailsFromSomeMomentOnIsToldUntilItIsBackAndCostsNothing) {
    DisturbEverywhere(true);
}

}  // namespace
}  // namespace larder::test
