#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "platform/Failure.h"
#include "support/Killer.h"
#include "support/PowerCut.h"
#include "support/Seed.h"
#include "support/StoreSession.h"
#include "support/StoredRecipes.h"

namespace larder::test {
namespace {

std::string Rtf(std::size_t bytes) {
    return "{\\rtf1 " + std::string(bytes, 'x') + "}";
}

// The categories of a file, by a reader of the test's own.
std::map<std::string, std::string> CategoriesIn(const FolderBytes& files) {
    std::map<std::string, std::string> categories;
    std::vector<std::string> lines;
    std::string text = FileIn(files, "Categories.ctg");
    for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n")) {
        lines.push_back(text.substr(0, end));
        text.erase(0, end + 2);
    }
    EXPECT_EQ(text, "") << "a line without an end";
    EXPECT_EQ(lines.size() % 2, 1U);
    for (std::size_t i = 1; i + 1 < lines.size(); i += 2)
        categories[lines[i]] = lines[i + 1];
    return categories;
}

// A window on three stock recipes and three of the user's, 4 to 6, all favourites.
class OwnRecipesTrustTest : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(3);
        Book.AddManyOwn(3);
        Book.Numbers("MY FAVORITES") = " 4 5 6 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 5 ";
        ASSERT_TRUE(Start());
    }
    std::filesystem::path Data() const { return Folder.Native("Data"); }
    std::filesystem::path Scratch() const { return Folder.Native("Scratch"); }
    OwnRecipes& It() { return Main().ownRecipes; }
};

// At random

TEST_F(OwnRecipesTrustTest, WhateverIsDoneTheFilesHoldWhatTheUserHasLeft) {
    constexpr int operations = 1000;
    std::mt19937 random(Seed());
    const auto pick = [&](int from, int to) {
        return std::uniform_int_distribution(from, to)(random);
    };
    std::vector<StoredRecipe> recipes = RecipesIn(BytesOf(Data()));
    std::vector<int> favorites = {4, 5, 6};
    std::set<int> pictured = {1, 5};
    std::map<std::string, int> done;
    for (int i = 0; i < operations; ++i) {
        const int kind = pick(0, 9);
        const int number = pick(4, static_cast<int>(recipes.size()));
        StoredRecipe& recipe = recipes[static_cast<std::size_t>(number) - 1];
        const std::string title = "Title " + std::to_string(i);
        const std::string rtf = Rtf(static_cast<std::size_t>(pick(0, 300)));
        if (kind == 0) {
            ++done["add"];
            ASSERT_TRUE(It().StoreNewRecipe(title, rtf));
            recipes.push_back({title, rtf});
            favorites.push_back(static_cast<int>(recipes.size()));
        } else if (kind <= 2 && !recipe.Title.empty()) {
            ++done["update"];
            ASSERT_TRUE(It().UpdateRecipe(number, rtf, title));
            recipe = {title, rtf};
        } else if (kind == 3 && recipe.Title.empty()) {
            ++done["delete again"];
            It().DeleteRecipe(number, true, false);
        } else if (kind == 3) {
            ++done["delete"];
            Boxes.Then(Dialogs::Answer::Ok);
            It().DeleteRecipe(number, true, false);
            recipe = {};
            std::erase(favorites, number);
            pictured.erase(number);
        } else if (kind == 4) {
            ++done["favourite added"];
            Main().favorites.AddToFavorites(number);
            if (!std::ranges::count(favorites, number)) favorites.push_back(number);
        } else if (kind == 5) {
            ++done["favourite removed"];
            Main().favorites.RemoveFromFavorites(number);
            std::erase(favorites, number);
        } else if (kind <= 7) {
            ++done["picture added"];
            Main().pictures.AddToAllWithPicture(number);
            pictured.insert(number);
        } else if (kind == 8) {
            ++done["picture removed"];
            Main().pictures.RemoveFromAllWithPicture(number);
            pictured.erase(number);
        } else {
            ++done["reopen"];
            ASSERT_TRUE(Restart());
        }
        const FolderBytes files = BytesOf(Data());
        const auto now = RecipesIn(files);
        ASSERT_EQ(now.size(), recipes.size());
        int there = 0;
        for (std::size_t k = 0; k < now.size(); ++k) {
            ASSERT_EQ(now[k].Title, recipes[k].Title) << "recipe " << k + 1;
            ASSERT_TRUE(now[k].Body.starts_with(recipes[k].Body)) << "recipe " << k + 1;
            there += now[k].Title.empty() && k >= 3 ? 0 : 1;
        }
        auto categories = CategoriesIn(files);
        std::string expected = " ";
        for (const int favorite : favorites)
            expected += std::to_string(favorite) + " ";
        ASSERT_EQ(categories["MY FAVORITES"], expected);
        for (int k = 1; k <= static_cast<int>(recipes.size()); ++k) {
            const bool has = categories["ALL RECIPES WITH PICTURES"].find(" " + std::to_string(k) +
                                                                          " ") != std::string::npos;
            ASSERT_EQ(has, pictured.contains(k)) << k;
        }
        ASSERT_EQ(Main().ui.lblTotal.Caption(), std::to_string(there));
        ASSERT_FALSE(HasTemporaries(files));
    }
    for (const auto& [name, count] : done)
        std::cout << name << ": " << count << std::endl;
}

// Crashes

struct Operation {
    std::string Name;
    std::function<void(frmMain&)> Run;
};

const std::vector<Operation> operations = {
    {"favourite added", [](frmMain& main) { main.favorites.AddToFavorites(2); }},
    {"favourite removed", [](frmMain& main) { main.favorites.RemoveFromFavorites(5); }},
    {"picture added", [](frmMain& main) { main.pictures.AddToAllWithPicture(4); }},
    {"picture removed", [](frmMain& main) { main.pictures.RemoveFromAllWithPicture(5); }},
    {"add", [](frmMain& main) { main.ownRecipes.StoreNewRecipe("New", Rtf(50)); }},
    {"delete", [](frmMain& main) { main.ownRecipes.DeleteRecipe(6, true, true); }},
};

class OwnRecipesCrashTest : public OwnRecipesTrustTest {
  protected:
    // A start on what the crash has left: recipes and categories before the operation, after it, or
    // one after the other.
    void CheckStart(const std::filesystem::path& folder, const FolderBytes& before,
                    const FolderBytes& after) {
        {
            StoreSession next(folder);
            next.Start();
        }
        const FolderBytes now = BytesOf(folder);
        EXPECT_FALSE(HasTemporaries(now));
        const auto recipes = RecipesIn(now);
        EXPECT_TRUE(recipes == RecipesIn(before) || recipes == RecipesIn(after));
        const std::string categories = FileIn(now, "Categories.ctg");
        EXPECT_TRUE(known_.contains(categories)) << categories;
        ++points_;
    }
    // Runs the operation to its end once, to know every content of the categories on the way.
    FolderBytes Rehearse(const Operation& operation, const FolderBytes& before) {
        known_ = {FileIn(before, "Categories.ctg")};
        int seen = 0;
        changes_ = 0;
        writes_ = 0;
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            if (Changes(access)) ++seen;
            if (Changes(access) && access.Kind != "open") changes_ = seen;
            if (access.Kind == "write") ++writes_;
            known_.insert(FileIn(BytesOf(Data()), "Categories.ctg"));
        });
        operation.Run(Main());
        Main().files.Watch(nullptr);
        const FolderBytes after = BytesOf(Data());
        known_.insert(FileIn(after, "Categories.ctg"));
        return after;
    }

    std::set<std::string> known_;
    int changes_ = 0;  // accesses of the operation up to the last that changes anything
    int writes_ = 0;
    int points_ = 0;
};

TEST_F(OwnRecipesCrashTest, AKillAtAnyAccessCostsNothing) {
    const FolderBytes before = BytesOf(Data());
    for (const Operation& operation : operations) {
        const FolderBytes after = Rehearse(operation, before);
        for (const bool torn : {false, true}) {
            // No further: a forked process cannot go on with the window to the operation's end.
            for (int at = 1; at <= (torn ? writes_ : changes_); ++at) {
                SCOPED_TRACE(operation.Name + ", access " + std::to_string(at));
                PutBytes(Data(), before);
                ASSERT_TRUE(Restart());
                const bool killed = KilledInAProcess([&] {
                    Killer killer(Data(), at, torn);
                    Main().files.Watch([&](const NumberedFiles::Access& it) { killer(it); });
                    operation.Run(Main());
                });
                ASSERT_TRUE(killed);
                CheckStart(Data(), before, after);
                ASSERT_FALSE(HasFailure());
            }
        }
        PutBytes(Data(), before);
        ASSERT_TRUE(Restart());
    }
    std::cout << points_ << " kills, no loss" << std::endl;
    EXPECT_GT(points_, 50);
}

TEST_F(OwnRecipesCrashTest, APowerCutAtAnyAccessCostsNothing) {
    const FolderBytes before = BytesOf(Data());
    for (const Operation& operation : operations) {
        const FolderBytes after = Rehearse(operation, before);
        PutBytes(Data(), before);
        ASSERT_TRUE(Restart());
        Main().files.CloseAll();
        PowerCut power(Data());
        std::set<FolderBytes> possible;
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            power.Follow(access);
            if (Changes(access)) possible.merge(power.Possible());
        });
        operation.Run(Main());
        power.Finish();
        possible.merge(power.Possible());
        Main().files.Watch(nullptr);
        for (const FolderBytes& folder : possible) {
            SCOPED_TRACE(operation.Name);
            PutBytes(Scratch(), folder);
            CheckStart(Scratch(), before, after);
            ASSERT_FALSE(HasFailure());
        }
        PutBytes(Data(), before);
        ASSERT_TRUE(Restart());
    }
    std::cout << points_ << " power cuts, no loss" << std::endl;
    EXPECT_GT(points_, 50);
}

// Failures of the storage

TEST_F(OwnRecipesCrashTest, AFailureWhileASetIsWrittenIsToldAndCostsNothing) {
    const FolderBytes before = BytesOf(Data());
    for (std::size_t i = 0; i < 4; ++i) {
        const Operation& operation = operations[i];
        const FolderBytes after = Rehearse(operation, before);
        for (const int number : {failure::DiskFull, failure::DeviceError, failure::PathAccess}) {
            for (int at = 1; at <= changes_; ++at) {
                SCOPED_TRACE(operation.Name + ", failure " + std::to_string(number) +
                             " at access " + std::to_string(at));
                PutBytes(Data(), before);
                ASSERT_TRUE(Restart());
                Boxes.Shown.clear();
                int counted = 0;
                Main().files.Watch([&](const NumberedFiles::Access& access) {
                    if (Changes(access) && ++counted == at) throw Failure(number, "disk");
                });
                operation.Run(Main());
                Main().files.Watch(nullptr);
                ASSERT_EQ(Boxes.Shown.size(), 1U);
                EXPECT_EQ(Boxes.Shown[0].Text, "Error updating Favorites\n" + FailureText(number));
                CheckStart(Data(), before, after);
                // The next write carries the change.
                Main().favorites.AddToFavorites(1);
                auto expected = CategoriesIn(after);
                expected["MY FAVORITES"] += "1 ";
                EXPECT_EQ(CategoriesIn(BytesOf(Data())), expected);
                ASSERT_FALSE(HasFailure());
            }
        }
        PutBytes(Data(), before);
        ASSERT_TRUE(Restart());
    }
    std::cout << points_ << " faults, no loss" << std::endl;
}

}  // namespace
}  // namespace larder::test
