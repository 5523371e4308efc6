#include <gtest/gtest.h>

#include <QImage>
#include <QString>
#include <algorithm>
#include <array>
#include <functional>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "platform/Failure.h"
#include "support/Killer.h"
#include "support/PowerCut.h"
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
    OwnRecipes& It() { return Main().ownRecipes; }
};

// Deletions that were cut short

TEST_F(OwnRecipesTrustTest, ADeletionThatWasCutShortBehindItsRecordShowsNowhere) {
    Folder.MakeFolder("Data/Food Photos");
    QImage picture(20, 20, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(QString::fromStdString(Folder.Native("Data/Food Photos/5.jpg"))));
    ASSERT_TRUE(It().UpdateRecipe(5, "", ""));  // as far as a deletion had come
    const FolderBytes left = BytesOf(Data());
    ASSERT_TRUE(Restart());
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{4, 6}));
    EXPECT_EQ(Main().VList[1].Count(), 2);
    ClickCategory("ALL RECIPES WITH PICTURES");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1}));
    Main().viewer.SetCurrentRecipe(5);  // by its number
    Main().pictureView.ShowCurRecipePicture();
    EXPECT_FALSE(Main().ui.frPic.Visible());
    EXPECT_NE(Main().ui.rtbSee.Text().find("recipe 5 is unavailable"), std::string::npos);
    EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Disabled);
    EXPECT_EQ(BytesOf(Data()), left) << "a start writes nothing";
}

TEST_F(OwnRecipesTrustTest, AFavouriteThatIsTheOnlyOneAndDeletedLeavesAnEmptyList) {
    Book.Numbers("MY FAVORITES") = " 5 ";
    Folder.Write("Data/Categories.ctg", Book.CategoryFile());
    ASSERT_TRUE(It().UpdateRecipe(5, "", ""));
    ASSERT_TRUE(Restart());
    EXPECT_TRUE(ShownNumbers().empty());
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    ClickCategory("ALL RECIPES");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1, 2, 3, 4, 6}));
    ClickCategory("MY FAVORITES");
    EXPECT_TRUE(ShownNumbers().empty());
    Main().favorites.AddToFavorites(1);
    ClickCategory("ALL RECIPES");
    ClickCategory("MY FAVORITES");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1}));
}

// By an index of other stock recipes the numbers of the user's mean other recipes, and a blank one
// of his stands where a living one is.
TEST_F(OwnRecipesTrustTest, AStockOfAnotherLengthCostsNeitherAFavouriteNorAPicture) {
    Folder.Write("Data/Food Photos/3.jpg", "a picture");
    Folder.Write("Data/Food Photos/5.jpg", "another one");
    Boxes.Then(Dialogs::Answer::Ok);
    It().DeleteRecipe(6, true, false);
    Close();
    Book.Numbers("MY FAVORITES") = " 3 4 5 ";
    Book.Numbers("ALL RECIPES WITH PICTURES") = " 2 3 5 ";
    Folder.Write("Data/Categories.ctg", Book.CategoryFile());
    const std::string index = Folder.Read("Data/Recipes Index.ind");
    const auto shorter = index.substr(0, 4 * 2);
    for (const std::string& damaged : {std::string(), shorter, index.substr(0, 4), index + index}) {
        SCOPED_TRACE(damaged.size() / 4);
        Folder.Write("Data/Recipes Index.ind", damaged);
        if (damaged.empty()) Folder.Delete("Data/Recipes Index.ind");
        ASSERT_TRUE(Restart());
        Main().favorites.AddToFavorites(1);
        Main().favorites.RemoveFromFavorites(1);
        Close();
    }
    Folder.Write("Data/Recipes Index.ind", index);
    ASSERT_TRUE(Restart());
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{3, 4, 5}));
    EXPECT_EQ(CategoriesIn(BytesOf(Data()))["MY FAVORITES"], " 3 4 5 ");
    EXPECT_EQ(CategoriesIn(BytesOf(Data()))["ALL RECIPES WITH PICTURES"], " 2 3 5 ");
    EXPECT_EQ(Folder.Read("Data/Food Photos/3.jpg"), "a picture");
    EXPECT_EQ(Folder.Read("Data/Food Photos/5.jpg"), "another one");
}

TEST_F(OwnRecipesTrustTest, ARecipeThatCannotBeReadKeepsItsPlacesAndItsPicture) {
    Folder.Write("Data/Food Photos/5.jpg", "a picture");
    const std::string index = Folder.Read("Data/Custom Recipes Index.ind");
    const std::string text = Folder.Read("Data/Custom Recipes.ydb");
    const std::string emptyRecord = "\r\n\r\n";
    // Without its text; by an index of other numbers; cut short; with a title line that is empty.
    const std::vector<std::pair<std::string, std::string>> broken = {
        {"", index},
        {text, std::string(index.size(), '\0')},
        {text, std::string(index.size(), '\x7F')},
        {text.substr(0, 3), index},
        {emptyRecord + text, index},
    };
    for (const auto& [brokenText, brokenIndex] : broken) {
        Close();
        Folder.Write("Data/Custom Recipes.ydb", brokenText);
        Folder.Write("Data/Custom Recipes Index.ind", brokenIndex);
        if (brokenText.empty()) Folder.Delete("Data/Custom Recipes.ydb");
        Book.Numbers("MY FAVORITES") = " 4 5 6 ";
        Folder.Write("Data/Categories.ctg", Book.CategoryFile());
        ASSERT_TRUE(Restart());
        Main().favorites.AddToFavorites(1);
        auto now = CategoriesIn(BytesOf(Data()));
        EXPECT_EQ(now["MY FAVORITES"], " 4 5 6 1 ");
        EXPECT_EQ(now["ALL RECIPES WITH PICTURES"], " 1 5 ");
        EXPECT_TRUE(Folder.Exists("Data/Food Photos/5.jpg"));
    }
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

constexpr std::array failures{failure::DiskFull, failure::DeviceError, failure::PathAccess};

class OwnRecipesCrashTest : public OwnRecipesTrustTest {
  protected:
    // The window starts on what a crash has left: recipes and categories as before the operation,
    // as after it, or the recipes ahead of the categories, which have to name no recipe that is not
    // there yet, and to lose none that is there still.
    void CheckStart(const FolderBytes& left, const FolderBytes& before, const FolderBytes& after) {
        if (!checked_.insert(left).second) return;
        PutBytes(Data(), left);
        Boxes.Shown.clear();
        ASSERT_TRUE(Restart());
        EXPECT_TRUE(Boxes.Shown.empty());
        CheckFiles(before, after);
        EXPECT_EQ(ShownNumbers(), ExistingFavorites());
    }
    void CheckFiles(const FolderBytes& before, const FolderBytes& after) {
        const FolderBytes now = BytesOf(Data());
        EXPECT_FALSE(HasTemporaries(now));
        const auto recipes = RecipesIn(now);
        const std::string categories = FileIn(now, "Categories.ctg");
        if (recipes == RecipesIn(after)) {
            EXPECT_TRUE(known_.contains(categories)) << categories;
        } else {
            EXPECT_EQ(recipes, RecipesIn(before));
            EXPECT_EQ(categories, FileIn(before, "Categories.ctg"));
        }
    }
    // By the files, in their order.
    std::vector<int> ExistingFavorites() {
        const FolderBytes now = BytesOf(Data());
        const auto recipes = RecipesIn(now);
        std::istringstream favorites(CategoriesIn(now)["MY FAVORITES"]);
        std::vector<int> numbers;
        for (std::size_t number = 0; favorites >> number;) {
            EXPECT_LE(number, recipes.size());
            if (number <= recipes.size() && !recipes[number - 1].Title.empty())
                numbers.push_back(static_cast<int>(number));
        }
        return numbers;
    }
    // Runs the operation to its end once, to know every content of the categories on the way.
    FolderBytes Rehearse(const Operation& operation, const FolderBytes& before) {
        known_ = {FileIn(before, "Categories.ctg")};
        checked_.clear();
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
    // A window whose start fails at its access `at`. False when it has fewer.
    bool StartAndFail(int number, int at) {
        Close();
        application->StartAgain(Folder.Native(), "");
        int counted = 0;
        frmMain window(*application, Boxes, Machine);
        window.files.Watch([&](const NumberedFiles::Access& access) {
            if (Changes(access) && ++counted == at) throw Failure(number, "disk");
        });
        window.Load();
        return counted >= at;
    }
    void StartOn(const FolderBytes& files) {
        PutBytes(Data(), files);
        ASSERT_TRUE(Restart());
        Main().files.CloseAll();
    }
    // What the operation leaves when it is killed at any of its accesses, each state once. The
    // window stays what it was: it is a copy of it that is killed.
    std::set<FolderBytes> Kill(const Operation& operation, const FolderBytes& before) {
        std::set<FolderBytes> left;
        StartOn(before);
        for (const bool torn : {false, true}) {
            // No further: a forked process cannot go on with the window to the operation's end.
            for (int at = 1; at <= (torn ? writes_ : changes_); ++at) {
                PutBytes(Data(), before);
                const bool killed = KilledInAProcess([&] {
                    Killer killer(Data(), at, torn);
                    Main().files.Watch([&](const NumberedFiles::Access& it) { killer(it); });
                    operation.Run(Main());
                });
                EXPECT_TRUE(killed) << operation.Name << ", access " << at;
                left.insert(BytesOf(Data()));
                ++points_;
            }
        }
        return left;
    }

    std::set<std::string> known_;
    std::set<FolderBytes> checked_;  // what this operation left, and a start was good on
    int changes_ = 0;  // accesses of the operation up to the last that changes anything
    int writes_ = 0;
    int points_ = 0;
};

TEST_F(OwnRecipesCrashTest, AKillAtAnyAccessCostsNothing) {
    const FolderBytes before = BytesOf(Data());
    for (const Operation& operation : operations) {
        SCOPED_TRACE(operation.Name);
        const FolderBytes after = Rehearse(operation, before);
        for (const FolderBytes& left : Kill(operation, before)) {
            CheckStart(left, before, after);
            ASSERT_FALSE(HasFailure());
        }
        StartOn(before);
    }
    std::cout << points_ << " kills, no loss" << std::endl;
    EXPECT_GT(points_, 50);
}

TEST_F(OwnRecipesCrashTest, APowerCutAtAnyAccessCostsNothing) {
    const FolderBytes before = BytesOf(Data());
    for (const Operation& operation : operations) {
        SCOPED_TRACE(operation.Name);
        const FolderBytes after = Rehearse(operation, before);
        StartOn(before);
        PowerCut power(Data());
        std::set<FolderBytes> possible;
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            power.Follow(access);
            if (Changes(access)) possible.merge(power.Possible());
        });
        operation.Run(Main());
        power.Finish();
        const std::set<FolderBytes> last = power.Possible();
        Main().files.Watch(nullptr);
        points_ += static_cast<int>(possible.size() + last.size());
        for (const FolderBytes& left : AfterAStart(possible, Folder.Native("Scratch"))) {
            CheckStart(left, before, after);
            ASSERT_FALSE(HasFailure());
        }
        // What has been done stays done.
        for (const FolderBytes& left : AfterAStart(last, Folder.Native("Scratch"))) {
            CheckStart(left, before, after);
            EXPECT_EQ(RecipesIn(left), RecipesIn(after));
            EXPECT_EQ(FileIn(left, "Categories.ctg"), FileIn(after, "Categories.ctg"));
            ASSERT_FALSE(HasFailure());
        }
        StartOn(before);
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
        for (const int number : failures) {
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
                CheckFiles(before, after);
                ++points_;
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

TEST_F(OwnRecipesCrashTest, AFailureWhileAStartMendsIsToldAndCostsNothing) {
    const FolderBytes before = BytesOf(Data());
    std::size_t faults = 0;
    int told = 0;
    for (const char* name : {"add", "delete"}) {
        const Operation& operation = *std::ranges::find(operations, name, &Operation::Name);
        const FolderBytes after = Rehearse(operation, before);
        for (const FolderBytes& left : Kill(operation, before)) {
            if (!HasTemporaries(left)) continue;
            for (int at = 1;; ++at) {
                const int number = failures[faults % failures.size()];
                SCOPED_TRACE(operation.Name + ", failure " + std::to_string(number) +
                             " at access " + std::to_string(at));
                PutBytes(Data(), left);
                Boxes.Shown.clear();
                if (!StartAndFail(number, at)) break;
                ++faults;
                ASSERT_LE(Boxes.Shown.size(), 1U);
                for (const ScriptedDialogs::Box& box : Boxes.Shown) {
                    EXPECT_NE(box.Text.find(FailureText(number)), std::string::npos) << box.Text;
                    told +=
                        box.Text.starts_with("The last change of a recipe can't be finished.\n");
                }
                CheckStart(BytesOf(Data()), before, after);
                ASSERT_FALSE(HasFailure());
            }
        }
        StartOn(before);
    }
    std::cout << faults << " faults of a start, " << told << " told, no loss" << std::endl;
    EXPECT_GT(told, 10);
}

}  // namespace
}  // namespace larder::test
