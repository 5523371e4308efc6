#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QWidget>
#include <algorithm>
#include <csignal>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

constexpr const char* FileName = "Data/Categories.ctg";

// The program is killed while it changes the categories: a child process does what a user does and
// kills itself right before its k-th step on the disk, for every k until it comes through.
class KilledProgram : public MainWindowFixture {
  protected:
    using Act = std::function<void()>;

    void SetUp() override {
        Book.AddManyStock(30);
        Book.AddOwn("My Chowder");
        Book.Numbers("MY FAVORITES") = " 15 3 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 2 4 ";
        for (int i = 1; i <= 12; ++i)
            Book.Numbers("SOUPS " + std::to_string(i)) = NumbersFrom(i, i + 9);
        ASSERT_TRUE(Start());
    }

    static bool ChangesTheDisk(std::string_view kind) { return kind != "read"; }

    // Runs the act in a child that is killed before step `k`, the first being 1. True when the
    // child was killed, false when it had no such step and came through.
    bool KilledBefore(int k, const Act& act) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::alarm(60);
            // Painting is divided among threads, of which a child has none.
            Main().ui.window.Native()->setUpdatesEnabled(false);
            int steps = 0;
            Main().files.Watch([&steps, k](const NumberedFiles::Access& access) {
                if (ChangesTheDisk(access.Kind) && ++steps == k) ::raise(SIGKILL);
            });
            act();
            ::_exit(0);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        if (WIFSIGNALED(status)) {
            EXPECT_EQ(WTERMSIG(status), SIGKILL);
            return true;
        }
        EXPECT_EQ(WEXITSTATUS(status), 0);
        return false;
    }

    // What the act does to the disk, step by step.
    std::vector<std::string> StepsOf(const Act& act) {
        std::vector<std::string> steps;
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            if (ChangesTheDisk(access.Kind)) steps.emplace_back(access.Kind);
        });
        act();
        Main().files.Watch(nullptr);
        return steps;
    }

    // The file as it was, without what a killed write has left beside it.
    void StartFrom(const std::string& before) {
        Folder.Write(FileName, before);
        Folder.Delete(std::string(FileName) + ".new");
    }

    void ExpectOldOrNewAtEveryPoint(const std::string& name, const Act& act) {
        const std::string before = Folder.Read(FileName);
        std::vector<std::string> seen;
        int points = 0;
        int old = 0;
        while (points < 1000 && KilledBefore(points + 1, act)) {
            ++points;
            const std::string now = Folder.Read(FileName);
            seen.push_back(now);
            if (now == before) ++old;
            StartFrom(before);
        }
        const std::string after = Folder.Read(FileName);  // the last child came through
        ASSERT_NE(after, before) << name;
        for (const std::string& text : seen)
            EXPECT_TRUE(text == before || text == after) << name << " left:\n" << text;
        EXPECT_GT(old, 0) << name;
        std::cout << name << ": killed at " << points << " points, " << old
                  << " times the old file, " << points - old << " times the new one\n";

        // The points were those of the whole act, and the window can do it now.
        StartFrom(before);
        const std::vector<std::string> steps = StepsOf(act);
        EXPECT_EQ(points, static_cast<int>(steps.size())) << name;
        for (const char* kind : {"write", "flush", "rename"})
            EXPECT_NE(std::ranges::find(steps, kind), steps.end()) << name << ": no " << kind;
        EXPECT_EQ(Folder.Read(FileName), after) << name;
    }
};

TEST_F(KilledProgram, WhileAFavouriteIsAddedOrRemovedLeavesTheOldOrTheNewFile) {
    ExpectOldOrNewAtEveryPoint("adding a favourite",
                               [this] { Main().favorites.AddToFavorites(7); });
    ExpectOldOrNewAtEveryPoint("removing a favourite",
                               [this] { Main().favorites.RemoveFromFavorites(15); });
}

TEST_F(KilledProgram, WhileAPictureIsAddedOrRemovedLeavesTheOldOrTheNewFile) {
    ExpectOldOrNewAtEveryPoint("adding a picture",
                               [this] { Main().pictures.AddToAllWithPicture(21); });
    ExpectOldOrNewAtEveryPoint("removing a picture",
                               [this] { Main().pictures.RemoveFromAllWithPicture(2); });
}

TEST_F(KilledProgram, StartsAgainAfterEveryPointAndWritesAsEver) {
    const std::string before = Folder.Read(FileName);
    const Act add = [this] { Main().favorites.AddToFavorites(7); };
    int starts = 0;
    for (int k = 1; KilledBefore(k, add); k += 5) {
        ASSERT_TRUE(Restart()) << "after point " << k;
        const bool added = Main().favorites.IsInFavorites(7);
        EXPECT_EQ(ShownNumbers(), added ? (std::vector<int>{15, 3, 7}) : (std::vector<int>{15, 3}));
        Main().favorites.AddToFavorites(12);
        ASSERT_TRUE(Restart()) << "after point " << k;
        EXPECT_TRUE(Main().favorites.IsInFavorites(12));
        EXPECT_TRUE(Boxes.Shown.empty());
        Folder.Write(FileName, before);
        ASSERT_TRUE(Restart());
        ++starts;
    }
    EXPECT_GT(starts, 3);
}

}  // namespace
}  // namespace larder::test
