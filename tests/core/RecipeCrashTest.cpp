#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "support/DataFolder.h"
#include "support/Killer.h"
#include "support/PowerCut.h"
#include "support/Rounds.h"
#include "support/StoreSession.h"
#include "support/StoredRecipes.h"
#include "support/TempFolder.h"

namespace larder::test {
namespace {

std::string Rtf(std::size_t bytes) {
    return "{\\rtf1 " + std::string(bytes, 'x') + "}";
}

// One change of one recipe.
struct Operation {
    std::string Name;
    std::int32_t Number;  // of the recipe that is changed
    std::function<bool(StoreSession&)> Run;
};

Operation Updating(const std::string& name, std::int32_t number, const std::string& title,
                   const std::string& rtf) {
    return {name, number,
            [=](StoreSession& session) { return session.Update(number, title, rtf); }};
}

Operation Adding(std::int32_t number) {
    return {"add", number, [=](StoreSession& session) {
                return session.Add("Added " + std::to_string(number), Rtf(70));
            }};
}

// Two stock recipes and five of the user's, 3 to 7, of which 4 is deleted. The operations follow
// one another, so that what an earlier one has not flushed is there when a later one is cut off.
std::vector<Operation> Operations() {
    return {Adding(8),
            Adding(9),
            Updating("short way, shorter", 5, "Five", Rtf(10)),
            Updating("short way, the same room again", 5, "Five", Rtf(30)),
            Updating("long way in the middle", 5, "Longer five", Rtf(200)),
            Updating("short way right behind a long one", 5, "Five again", Rtf(100)),
            Updating("long way of the first", 3, "Longer three", Rtf(90)),
            Updating("delete", 6, "", ""),
            Updating("long way of the last", 9, "Longer nine", Rtf(300)),
            Adding(10),
            Updating("short way of the last", 10, "Ten", Rtf(5)),
            Updating("delete the last", 10, "", ""),
            Updating("short way in the stock", 1, "One", Rtf(3)),
            Updating("long way in the stock", 1, "Longer one", Rtf(150)),
            Updating("long way back among the own", 7, "Seven", Rtf(150)),
            Adding(11)};
}

FolderBytes FirstFolder() {
    Database stock;
    stock.AddRecipe("Stock one", Rtf(40));
    stock.AddRecipe("Stock two", Rtf(30));
    Database own;
    for (const char* title : {"Three", "", "Five", "Six", "Seven"}) {
        own.AddRecipe(title, *title == '\0' ? std::string(12, ' ') : Rtf(40));
    }
    return {{"Recipes.ydb", stock.Text},
            {"Recipes Index.ind", stock.Index()},
            {"Custom Recipes.ydb", own.Text},
            {"Custom Recipes Index.ind", own.Index()},
            {"Categories.ctg", " 6 \r\n"}};
}

// A stock and nothing of the user's; his first recipes are 3 and 4.
FolderBytes NewFolder() {
    FolderBytes folder = FirstFolder();
    folder.erase("Custom Recipes.ydb");
    folder.erase("Custom Recipes Index.ind");
    return folder;
}

std::vector<Operation> FirstOperations() {
    return {Adding(3), Updating("long way of the only one", 3, "Longer three", Rtf(90)), Adding(4),
            Updating("delete", 3, "", "")};
}

class RecipeCrashTest : public testing::Test {
  protected:
    explicit RecipeCrashTest(std::vector<Operation> operations = Operations(),
                             const FolderBytes& first = FirstFolder())
        : operations_(std::move(operations)) {
        // What the folder holds before the first operation and after each.
        PutBytes(Data(), first);
        folders_.push_back(BytesOf(Data()));
        StoreSession session(Data());
        session.Start();
        for (const Operation& operation : operations_) {
            EXPECT_TRUE(operation.Run(session)) << operation.Name;
            folders_.push_back(BytesOf(Data()));
        }
        EXPECT_TRUE(session.Messages.empty());
    }

    std::filesystem::path Data() const { return folder_.Native("Data"); }
    std::filesystem::path Scratch() const { return folder_.Native("Scratch"); }

    // A new start on the folder: every recipe but the one that was being changed is as it was, that
    // one old or new, and the counts are right. With `done`, it is new.
    void CheckNewStart(const std::filesystem::path& folder, std::size_t step, bool done) {
        {
            StoreSession next(folder);
            next.Start();
            CheckCounts(next, folder);
        }
        const FolderBytes files = BytesOf(folder);
        EXPECT_FALSE(HasTemporaries(files));
        CheckRecipes(files, step, done);
        if (testing::Test::HasFailure()) ++losses_;
    }

    void CheckCounts(const StoreSession& session, const std::filesystem::path& folder) {
        std::int32_t there = 0;
        const auto recipes = RecipesIn(BytesOf(folder));
        for (const StoredRecipe& recipe : recipes)
            there += recipe.Title.empty() ? 0 : 1;
        EXPECT_EQ(session.Store.TotalNumRecords, static_cast<std::int32_t>(recipes.size()));
        EXPECT_EQ(session.Store.TotalRecipes(), there);
    }

    void CheckRecipes(const FolderBytes& files, std::size_t step, bool done) {
        const auto before = RecipesIn(folders_[step]);
        const auto after = RecipesIn(folders_[step + 1]);
        const auto now = RecipesIn(files);
        const auto changed = static_cast<std::size_t>(operations_[step].Number - 1);
        ASSERT_TRUE(now.size() == after.size() || (!done && now.size() == before.size()))
            << now.size() << " recipes";
        for (std::size_t i = 0; i < now.size(); ++i) {
            const bool asBefore = i < before.size() && now[i] == before[i];
            const bool sound = i != changed ? asBefore : now[i] == after[i] || (asBefore && !done);
            EXPECT_TRUE(sound) << "recipe " << i + 1 << ": " << now[i].Title << "\n" << now[i].Body;
        }
        EXPECT_EQ(FileIn(files, "Categories.ctg"), " 6 \r\n");
    }

    // The next operations work on what the crash has left.
    void CheckNextWrites(const std::filesystem::path& folder) {
        StoreSession session(folder);
        session.Start();
        const auto before = RecipesIn(BytesOf(folder));
        ASSERT_TRUE(session.Add("Next", Rtf(9)));
        ASSERT_TRUE(session.Update(3, "Next three", Rtf(400)));
        EXPECT_TRUE(session.Messages.empty());
        const auto after = RecipesIn(BytesOf(folder));
        ASSERT_EQ(after.size(), before.size() + 1);
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (i == 2) continue;
            EXPECT_EQ(after[i], before[i]) << "recipe " << i + 1;
        }
    }

    TempFolder folder_{TempFolder::InMemory()};
    const std::vector<Operation> operations_;
    std::vector<FolderBytes> folders_;
    int points_ = 0;
    int losses_ = 0;
};

TEST_F(RecipeCrashTest, AnOperationChangesTheBytesOfNoOtherRecipe) {
    for (std::size_t step = 0; step < operations_.size(); ++step) {
        SCOPED_TRACE(operations_[step].Name);
        CheckRecipes(folders_[step + 1], step, true);
        EXPECT_FALSE(HasTemporaries(folders_[step + 1]));
    }
}

// The process is killed

class KilledProcessTest : public RecipeCrashTest {
  protected:
    using RecipeCrashTest::RecipeCrashTest;

    // Runs an operation in a process that is killed at its access `at`. False when it ended by
    // itself.
    bool RunAndKill(const Operation& operation, int at, bool torn) {
        return KilledInAProcess([&] {
            StoreSession session(Data());
            session.Start();
            Killer killer(Data(), at, torn);
            session.Files.Watch([&](const NumberedFiles::Access& access) { killer(access); });
            EXPECT_TRUE(operation.Run(session));
        });
    }

    // The start that mends what a kill has left is killed too, at each of its accesses.
    void KillWhileItRecovers(std::size_t step) {
        const FolderBytes left = BytesOf(Data());
        for (int at = 1; HasTemporaries(left); ++at) {
            SCOPED_TRACE("recovering, killed at access " + std::to_string(at));
            PutBytes(Data(), left);
            const bool killed = KilledInAProcess([&] {
                StoreSession session(Data());
                Killer killer(Data(), at, false);
                session.Files.Watch([&](const NumberedFiles::Access& access) { killer(access); });
                session.Start();
            });
            if (!killed || HasFailure()) break;
            ++points_;
            CheckNewStart(Data(), step, false);
        }
        PutBytes(Data(), left);
    }

    void KillEverywhere(bool torn) {
        for (std::size_t step = 0; step < operations_.size(); ++step) {
            int at = 1;
            for (;; ++at) {
                SCOPED_TRACE(operations_[step].Name + ", killed at access " + std::to_string(at));
                PutBytes(Data(), folders_[step]);
                if (!RunAndKill(operations_[step], at, torn)) break;
                ++points_;
                if (IsGoneInto(at)) KillWhileItRecovers(step);
                CheckNewStart(Data(), step, false);
                CheckNextWrites(Data());
                if (HasFailure()) return;
            }
            // The journal, the record; all that stands around them.
            EXPECT_GT(at, torn ? 2 : 8) << operations_[step].Name;
        }
        std::cout << points_ << (torn ? " torn writes, " : " kills, ") << losses_ << " losses"
                  << std::endl;
        EXPECT_GT(points_, (torn ? 2 : 8) * static_cast<int>(operations_.size()));
    }
};

TEST_F(KilledProcessTest, AKillAtAnyAccessCostsNothing) {
    KillEverywhere(false);
}

TEST_F(KilledProcessTest, AKillInTheMiddleOfAnyWriteCostsNothing) {
    KillEverywhere(true);
}

class KilledFirstRecipes : public KilledProcessTest {
  protected:
    KilledFirstRecipes() : KilledProcessTest(FirstOperations(), NewFolder()) {}
};

TEST_F(KilledFirstRecipes, AKillAtAnyAccessCostsNothing) {
    KillEverywhere(false);
}

TEST_F(KilledFirstRecipes, AKillInTheMiddleOfAnyWriteCostsNothing) {
    KillEverywhere(true);
}

// The power fails

class FailedPowerTest : public RecipeCrashTest {
  protected:
    using RecipeCrashTest::RecipeCrashTest;

    // Every folder that the disk may have now leads to a sound one.
    void CheckAll(const std::set<FolderBytes>& possible, std::size_t step, bool done) {
        for (const FolderBytes& files : possible) {
            if (HasFailure()) return;
            ++points_;
            SCOPED_TRACE(Described(files));
            PutBytes(Scratch(), files);
            CheckNewStart(Scratch(), step, done);
            CheckNextWrites(Scratch());
            if (HasTemporaries(files) && IsGoneInto(points_))
                CheckPowerFailsAgain(files, step, done);
        }
    }

    static std::string Described(const FolderBytes& files) {
        std::string text;
        for (const auto& [name, bytes] : files) {
            text += name + ", " + std::to_string(bytes.size()) + " bytes" +
                    (name.starts_with("Recipes Temp") ? ": " + bytes : "") + "\n";
        }
        return text;
    }

    // The start that mends it is cut off too.
    void CheckPowerFailsAgain(const FolderBytes& files, std::size_t step, bool done) {
        std::set<FolderBytes> possible;
        {
            PutBytes(Scratch(), files);
            PowerCut power(Scratch());
            StoreSession session(Scratch());
            session.Files.Watch([&](const NumberedFiles::Access& access) {
                power.Follow(access);
                if (Changes(access)) possible.merge(power.Possible());
            });
            session.Start();
            power.Finish();
            possible.merge(power.Possible());
        }
        for (const FolderBytes& again : possible) {
            if (again == files || !mended_.insert(again).second) continue;
            ++points_;
            SCOPED_TRACE("cut off again\n" + Described(again));
            PutBytes(Scratch(), again);
            CheckNewStart(Scratch(), step, done);
            if (HasFailure()) return;
        }
    }

    struct Killed {};

    // The operation is killed at its access `at`, the next start mends the folder, and the power
    // fails during that or right behind it: what the killed run has not flushed may be lost then.
    // False when the operation has fewer accesses.
    bool KillStartAndCut(std::size_t step, int at) {
        PutBytes(Data(), folders_[step]);
        PowerCut power(Data());
        if (!RunAndKill(step, at, power)) return false;
        std::set<FolderBytes> possible = power.Possible();
        StoreSession session(Data());
        session.Files.Watch([&](const NumberedFiles::Access& access) {
            power.Follow(access);
            if (Changes(access)) possible.merge(power.Possible());
        });
        session.Start();
        power.Finish();
        possible.merge(power.Possible());
        for (const FolderBytes& files : possible) {
            if (!mended_.insert(files).second || HasFailure()) continue;
            ++points_;
            SCOPED_TRACE(Described(files));
            PutBytes(Scratch(), files);
            CheckNewStart(Scratch(), step, false);
        }
        return true;
    }

    bool RunAndKill(std::size_t step, int at, PowerCut& power) {
        StoreSession session(Data());
        session.Start();
        session.Files.CloseAll();
        int counted = 0;
        session.Files.Watch([&](const NumberedFiles::Access& access) {
            power.Follow(access);
            if (!Changes(access) || ++counted != at) return;
            power.Forget();
            throw Killed();
        });
        try {
            EXPECT_TRUE(operations_[step].Run(session));
            return false;
        } catch (const Killed&) {
            session.Files.Watch(nullptr);
            return true;
        }
    }

    void CutEverywhere() {
        PutBytes(Data(), folders_.front());
        StoreSession session(Data());
        PowerCut power(Data());
        std::size_t step = 0;
        int access = 0;
        session.Files.Watch([&](const NumberedFiles::Access& next) {
            power.Follow(next);
            if (!Changes(next) || HasFailure()) return;
            SCOPED_TRACE(operations_[step].Name + ", access " + std::to_string(++access) + ": " +
                         std::string(next.Kind) + " " + std::string(next.Path));
            CheckAll(power.Possible(), step, false);
        });
        session.Start();
        for (; step < operations_.size() && !HasFailure(); ++step) {
            access = 0;
            mended_.clear();
            SCOPED_TRACE(operations_[step].Name + ", done");
            ASSERT_TRUE(operations_[step].Run(session));
            power.Finish();
            EXPECT_EQ(BytesOf(Data()), folders_[step + 1]);
            mended_.clear();
            CheckAll(power.Possible(), step, true);
        }
        std::cout << points_ << " power cuts, " << losses_ << " losses" << std::endl;
        EXPECT_GT(points_, 50 * static_cast<int>(operations_.size()));
    }

    void CutAfterKills() {
        for (std::size_t step = 0; step < operations_.size(); ++step) {
            mended_.clear();
            for (int at = 1; !HasFailure(); ++at) {
                SCOPED_TRACE(operations_[step].Name + ", killed at access " + std::to_string(at));
                if (!KillStartAndCut(step, at)) break;
            }
        }
        std::cout << points_ << " power cuts after a kill, " << losses_ << " losses" << std::endl;
        EXPECT_GT(points_, 15 * static_cast<int>(operations_.size()));
    }

    std::set<FolderBytes> mended_;  // within one step
};

TEST_F(FailedPowerTest, APowerCutAtAnyAccessCostsNothing) {
    CutEverywhere();
}

TEST_F(FailedPowerTest, APowerCutDuringTheStartAfterAKillCostsNothing) {
    CutAfterKills();
}

class FailedPowerAtFirstRecipes : public FailedPowerTest {
  protected:
    FailedPowerAtFirstRecipes() : FailedPowerTest(FirstOperations(), NewFolder()) {}
};

TEST_F(FailedPowerAtFirstRecipes, APowerCutAtAnyAccessCostsNothing) {
    CutEverywhere();
}

TEST_F(FailedPowerAtFirstRecipes, APowerCutDuringTheStartAfterAKillCostsNothing) {
    CutAfterKills();
}

}  // namespace
}  // namespace larder::test
