#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/SearchBook.h"
#include "support/DataFolder.h"

namespace larder::test {
namespace {

// The same damage at each run, so that a failure comes back by itself.
constexpr std::uint32_t Seed = 4099;

// What may stand in a file instead of `whole`: nothing, a part of it, noise.
std::vector<std::string> DamagesOf(const std::string& whole) {
    std::mt19937 random(Seed);
    const auto noise = [&](std::size_t length) {
        std::string bytes(length, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        return bytes;
    };
    std::vector<std::string> damages = {"", noise(1), noise(64), noise(600), whole + whole};
    for (std::size_t i = 1; i <= 6; ++i)
        damages.push_back(whole.substr(0, whole.size() * i / 7));
    damages.push_back(whole.substr(0, whole.size() - 1));
    std::string hit = whole;
    hit[random() % hit.size()] = static_cast<char>(random());
    damages.push_back(hit);
    return damages;
}

class BrokenSideFiles : public SearchBook {
  protected:
    void SetUp() override {
        AddSmallBook();
        ASSERT_TRUE(StartWithIndex());
        Close();
        for (const char* name : {"Recipes.ydb", "Recipes Index.ind", "Custom Recipes.ydb",
                                 "Custom Recipes Index.ind", "Categories.ctg"}) {
            recipes_[name] = Folder.Read(std::string("Data/") + name);
        }
    }
    void ExpectNoRecipeTouched() {
        for (const auto& [name, bytes] : recipes_)
            EXPECT_EQ(Folder.Read("Data/" + name), bytes) << name;
    }

    std::map<std::string, std::string> recipes_;
};

// What a crash may have left of a rewritten text is no reason not to start, and never takes the
// place of a recipe.
TEST_F(BrokenSideFiles, ATemporaryTextOfAnyContentCostsNoRecipe) {
    for (const std::string& bytes : DamagesOf(recipes_["Custom Recipes.ydb"])) {
        SCOPED_TRACE(bytes.size());
        Folder.Write("Data/Recipes Temp.ydb", bytes);
        ASSERT_TRUE(Restart());
        EXPECT_EQ(ShownNumbers(), (std::vector<int>{4, 2}));
        Close();
        ExpectNoRecipeTouched();
        EXPECT_FALSE(Folder.Exists("Data/Recipes Temp.ydb"));
    }
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(BrokenSideFiles, ATemporaryIndexOfAnyContentCostsNoRecipe) {
    for (const std::string& bytes : DamagesOf(recipes_["Custom Recipes Index.ind"] + "C")) {
        SCOPED_TRACE(bytes.size());
        Folder.Write("Data/Recipes Index Temp.ind", bytes);
        ASSERT_TRUE(Restart());
        Close();
        ExpectNoRecipeTouched();
        EXPECT_FALSE(Folder.Exists("Data/Recipes Index Temp.ind"));
    }
    EXPECT_TRUE(Boxes.Shown.empty());
}

// A word that cannot be looked up counts for nothing, so a search of it alone leaves the list.
TEST_F(BrokenSideFiles, AWordIndexOfAnyContentFindsTheUsersOwnOrLeavesTheList) {
    const std::vector<int> favorites = {4, 2};
    int searched = 0;
    for (const char* name : {"Search.ydb", "Search.ind"}) {
        const std::string whole = Folder.Read(std::string("Data/") + name);
        for (const std::string& bytes : DamagesOf(whole)) {
            SCOPED_TRACE(std::string(name) + " of " + std::to_string(bytes.size()));
            Folder.Write(std::string("Data/") + name, bytes);
            ASSERT_TRUE(Restart());
            Main().search.FindByWords("lemon", false);
            const std::vector<int> found = ShownNumbers();
            if (found != favorites) {
                ++searched;
                ASSERT_FALSE(found.empty());
                EXPECT_EQ(found.back(), 8);
            }
            EXPECT_TRUE(List(2).Visible());
            PressLine(2, 1);
            Close();
        }
        Folder.Write(std::string("Data/") + name, whole);
    }
    EXPECT_GT(searched, 10);
    ExpectNoRecipeTouched();
    EXPECT_TRUE(Boxes.Shown.empty());
}

}  // namespace
}  // namespace larder::test
